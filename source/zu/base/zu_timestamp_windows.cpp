#include "zu/base/zu_timestamp_internal.h"

#include <windows.h>

ZU_INT zu___TimestampFrequency( void )
{
    LARGE_INTEGER frequency;
    return QueryPerformanceFrequency( &frequency ) ? frequency.QuadPart : 0;
}
ZU_INT zu___TimestampCounter( void )
{
    LARGE_INTEGER counter;
    QueryPerformanceCounter( &counter );
    return counter.QuadPart;
}
