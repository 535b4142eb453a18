#include "zu/base/zu_time_internal.h"

#include <time.h>

ZU_INT zu___TimeWallClock( void )
{
    timespec now;
    clock_gettime( CLOCK_REALTIME, &now );
    return now.tv_sec;
}
