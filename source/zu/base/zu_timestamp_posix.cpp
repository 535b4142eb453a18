#include "zu/base/zu_timestamp_internal.h"

#include <time.h>

static constexpr ZU_INT NANOSECONDS_PER_SECOND = 1000000000;

ZU_INT zu___TimestampFrequency( void )
{
    timespec now;
    return clock_gettime( CLOCK_MONOTONIC, &now ) == 0 ? NANOSECONDS_PER_SECOND : 0;
}
ZU_INT zu___TimestampCounter( void )
{
    timespec now;
    clock_gettime( CLOCK_MONOTONIC, &now );
    return now.tv_sec * NANOSECONDS_PER_SECOND + now.tv_nsec;
}
