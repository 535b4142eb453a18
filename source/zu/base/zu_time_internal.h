// zu_time_internal.h: what a platform must provide for ZU_TIME.
#pragma once

#include "zu/base/zu_time.h"

ZU_BEGIN_DECLS

// Returns the seconds since the beginning of 1970 in UTC by the wall clock, rounded down and without leap seconds.
ZU_INT zu___TimeWallClock( void );

ZU_END_DECLS
