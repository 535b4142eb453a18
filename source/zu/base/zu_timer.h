// ZU_TIMER: makes something happen once at a given time: a call, a signal, an alert, a barrier's opening, or an event.
//
// A timer is scheduled by one of two clocks, relative to zuTimestamp in milliseconds or at a time of the calendar,
// and fires once; then it can be scheduled again.  Scheduling replaces an earlier schedule of either kind.  All
// timers fire on one thread of the library, one after the other: who blocks it holds up all timers of the process.  A
// call may schedule timers, its own included.
//
// The relative clock is exact to about a millisecond.  The calendar is looked at every second within the last ten
// seconds and every ten seconds before, so that changes of the system's time are followed.  Of two timers set for the
// same second of the calendar only the later one fires; the other stays scheduled until it is scheduled anew or
// released.
//
// Any number of threads may schedule and unschedule one timer.  Scheduling takes the logarithm of the number of
// scheduled timers at most; unscheduling takes no lock.
//
// The last release of a timer drops its schedule, and does not wait for a call that is under way, which has the argument
// for as long as it takes but must not count on the timer.  All must be dropped or have fired before the library stops.
// In a forked child nothing fires, and scheduling aborts.
#pragma once

#include "zu/base/zu_alert.h"
#include "zu/base/zu_barrier.h"
#include "zu/base/zu_event_queue.h"
#include "zu/base/zu_signal.h"
#include "zu/base/zu_time.h"

ZU_BEGIN_DECLS

typedef struct ZU_TIMER ZU_TIMER;
typedef struct ZU___TIMER_CLOSURE ZU___TIMER_CLOSURE;
// zuTimerRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_TIMER, zuTimer )

/// Called when a timer fires.
typedef void ( *ZU_TIMER_FUNC )( ZU_OBJ *arg );

// Creation.  A timer keeps what it is to act on.
/// Returns a timer that calls `func` with `arg`; either may be null.
ZU_API ZU_TIMER *zuTimerCreate( ZU_TIMER_FUNC func, ZU_OBJ *arg );
/// Returns a timer that asserts `sig`.
ZU_API ZU_TIMER *zuTimerCreateSignal( ZU_SIGNAL *sig );
/// Returns a timer that sets `alert`.
ZU_API ZU_TIMER *zuTimerCreateAlert( ZU_ALERT *alert );
/// Returns a timer that opens `barrier`.
ZU_API ZU_TIMER *zuTimerCreateBarrier( ZU_BARRIER *barrier );
/// Returns a timer that writes `evt` into `eq`.
ZU_API ZU_TIMER *zuTimerCreateEventQueue( ZU_EVENT_QUEUE *eq, ZU_OBJ *evt );

// Scheduling
/// Lets `timer` fire in `milliseconds`, which are not negative.
ZU_API void zuTimerSchedule( ZU_TIMER *timer, ZU_INT milliseconds );
/// Lets `timer` fire when zuTimestamp is `timestamp`, which is not negative.
ZU_API void zuTimerScheduleAt( ZU_TIMER *timer, ZU_INT timestamp );
/// Lets `timer` fire at the time `at` of the calendar.
ZU_API void zuTimerScheduleAtTime( ZU_TIMER *timer, ZU_TIME *at );
/// Tells whether `timer` is going to fire.
ZU_API ZU_BOOL zuTimerScheduled( ZU_TIMER *timer );
/// Keeps `timer` from firing.  True if it was going to; false also if it is firing now.
ZU_API ZU_BOOL zuTimerUnschedule( ZU_TIMER *timer );

// For authors of classes and modules
/// Returns a watchdog over the calling thread: when it fires, it stops the thread where it is, and aborts.  Over the
/// thread of the timers itself it only aborts, as soon as that comes to it.
ZU_API ZU_TIMER *zu___TimerCreateAbort( void );
/// Says whether `timer` still fires after its last release.  One that has lost its second of the calendar to another
/// by then, or loses it later, aborts: nothing is left to fire it.
ZU_API void zu___TimerSetLinger( ZU_TIMER *timer, ZU_BOOL linger );
/// Starts the thread of the timers.
ZU_API void zu___TimerStartup( void );
/// Stops the thread of the timers; a timer that is scheduled aborts.
ZU_API void zu___TimerShutdown( void );

ZU_END_DECLS
