// zu_nanoseconds.h: spans of time in nanoseconds, a ZU_INT that is not negative, and in milliseconds.
//
// Pure functions, callable from any thread; a negative argument aborts.
#pragma once

#include "zu/sys/zu_int.h"

ZU_BEGIN_DECLS

/// Tells whether `nanoseconds` is a span of time: 0 or above.
#define ZU_NANOSECONDS_OK( nanoseconds ) ( ( nanoseconds ) >= 0 )

/// Returns `milliseconds` in nanoseconds, -1 if that is more than a ZU_INT holds.
ZU_API ZU_INT zuNanosecondsTryConvertFromMilliseconds( ZU_INT milliseconds );
/// Returns `milliseconds` in nanoseconds, ZU_INT_MAX if that is more than a ZU_INT holds.
ZU_API ZU_INT zuNanosecondsConvertFromMillisecondsSaturating( ZU_INT milliseconds );
/// Returns `nanoseconds` in milliseconds, rounded down.
ZU_API ZU_INT zuNanosecondsConvertToMillisecondsTruncate( ZU_INT nanoseconds );
/// Returns `nanoseconds` in milliseconds, rounded up.
ZU_API ZU_INT zuNanosecondsConvertToMillisecondsExtend( ZU_INT nanoseconds );

ZU_END_DECLS
