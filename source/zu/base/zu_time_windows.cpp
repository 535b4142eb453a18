#include "zu/base/zu_time_internal.h"

#include <time.h>

ZU_INT zu___TimeWallClock( void )
{
    return _time64( nullptr );
}
