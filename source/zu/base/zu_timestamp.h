// zu_timestamp.h: the clock of all timed waits and relative timers, a ZU_INT of milliseconds.
//
// It starts at no defined moment, never goes back and is not set by anybody, so that only differences mean anything.
// ZU_TIME is the time of the calendar.
#pragma once

#include "zu/sys/zu_int.h"

ZU_BEGIN_DECLS

/// Returns the milliseconds that have passed since the clock's start, rounded down.  Runs ahead of zuRuntimeStartup too.
ZU_API ZU_INT zuTimestamp( void );

// For authors of classes and modules
/// Asks the platform how fast its counter runs.
ZU_API void zu___TimestampStartup( void );
/// Does nothing.
ZU_API void zu___TimestampShutdown( void );

ZU_END_DECLS
