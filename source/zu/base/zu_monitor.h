// ZU_MONITOR: mutual exclusion of threads, a mutex.
//
// At most one thread is inside at a time; the others wait, at no cost.  Who comes by when it has just been left may
// overtake those that wait, but none of them more than a few times.  A monitor is not re-entrant: a thread that enters
// what it is inside of waits for itself.  Monitors are ordered by identity.
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

typedef struct ZU_MONITOR ZU_MONITOR;
// zuMonitorRetain, Release, From, Obj, Sort, ToString, Compare, Equals.  The last release of a monitor that a thread is
// inside of aborts.
ZU_STDFUNCS_DECLARE( ZU_MONITOR, zuMonitor )

/// Returns a new monitor with nobody inside.
ZU_API ZU_MONITOR *zuMonitorCreate( void );
/// Enters, waiting until nobody else is inside; a thread that is inside already waits for ever.
ZU_API void zuMonitorEnter( ZU_MONITOR *monitor );
/// Leaves; aborts if nobody is inside.  For the thread that has entered, which is not checked.
ZU_API void zuMonitorLeave( ZU_MONITOR *monitor );

ZU_END_DECLS
