// zu_time_internal.h: the calendar by fields, and what a platform must provide for ZU_TIME.
#pragma once

#include "zu/base/zu_time.h"

ZU_BEGIN_DECLS

// The fields of a ZU_TIME while there is no object.
typedef struct ZU___TIME_FIELDS {
    ZU_INT year;
    ZU_INT month;
    ZU_INT day;
    ZU_INT hour;
    ZU_INT minute;
    ZU_INT second;
} ZU___TIME_FIELDS;

// Stores the fields of the moment that is `*seconds` behind the beginning of 1970.  Returns 0, or another number if the
// year is out of range.  Computes and nothing else: the crash report calls it.
int zu___TimeBreakDown( ZU___TIME_FIELDS *fields, const ZU_INT *seconds );

// Returns the seconds since the beginning of 1970 in UTC by the wall clock, rounded down and without leap seconds.
ZU_INT zu___TimeWallClock( void );

ZU_END_DECLS
