// A timer is a public object and a closure.  The schedules hold closures only, so that the end of the public object
// can take a closure out of its schedule, and a lingering one stays in.
//
// What is filed by a timestamp stands in a heap, of which each closure knows its place: filing, moving and dropping one of
// 100,000 takes a few steps and no search.  A heap has no order but for what comes first, and nobody asks for another.
// A closure that is moved on to a later time stays where it is, with a note of that time, until it has come first: of many
// timers the heap is in no cache, and half of what moving one at random takes is to look at it.
//
// The thread of the timers sleeps until the first relative timer is due or the calendar has to be looked at.  It
// closes its barrier ahead of looking at the schedules, and whoever changes them opens it afterwards: no change is
// missed.
//
// Most timers are time-outs, scheduled for later and moved on again and again before they are due, so waking the
// thread for each would cost ten times as much as filing it.  The thread tells until when it sleeps, and stays asleep
// where it could only look, find nothing and sleep on: if what has been filed is not due before it wakes, and there
// is no calendar whose next look would come at another time for having been looked at now.

#include "zu/base/zu_timer.h"

#include "zu/base/zu_dict.h"
#include "zu/base/zu_thread_internal.h"
#include "zu/base/zu_threading_fork_internal.h"
#include "zu/base/zu_timestamp.h"
#include "zu/runtime/zu_module.h"
#include "zu/runtime/zu_obj_internal.h"
#include "zu/runtime/zu_ref_internal.h"
#include "zu/sys/zu_happens_internal.h"
#include "zu/sys/zu_mem.h"

// How far ahead of a time of the calendar the looks come closer, in seconds, and how long the thread sleeps between
// them.
static constexpr ZU_INT NEAR_SECONDS = 10;
static constexpr ZU_INT NEAR_WAIT = 1000; // milliseconds
static constexpr ZU_INT FAR_WAIT = 10000;

// What happens.  One of the targets is set; none changes once there is a timer.
struct ZU___TIMER_CLOSURE {
    ZU_OBJ obj;
    ZU_TIMER_FUNC func;
    ZU_OBJ *arg;
    ZU_SIGNAL *sig;
    ZU_ALERT *alert;
    ZU_BARRIER *barrier;
    ZU_EVENT_QUEUE *eq;
    ZU_OBJ *evt;
    ZU_THREAD *abortThread;
    uint32_t sched;   // 1: the timer is to fire; atomic
    ZU_BOOL schedAbs; // filed in timerAbsDict; guarded by timerMonitor, as are the next three
    ZU_BOOL schedRel; // filed in timerHeap
    ZU_INT place;     // where in timerHeap, if schedRel
    ZU_TIME *at;      // its time in timerAbsDict, where a later timer may have taken the place; null if not schedAbs
    ZU_INT due;       // its timestamp, if schedRel; not earlier than the one in timerHeap
};
struct ZU_TIMER {
    ZU_OBJ obj;
    ZU___TIMER_CLOSURE *tcl;
    ZU_BOOL linger; // fires also when nobody holds it any more; guarded by timerMonitor
};

// A closure and the timestamp that it is due at, unless it has been moved on since.
struct TIMER_DUE {
    ZU_INT timestamp;
    ZU___TIMER_CLOSURE *tcl; // owned

    // Closures due at one time fire in the order of their objects.
    bool isAhead( const TIMER_DUE &other ) const
    {
        return timestamp != other.timestamp ? timestamp < other.timestamp
                                            : zu___ObjCompareInline( &tcl->obj, &other.tcl->obj ) < 0;
    }
};
// Each of `items` is ahead of the CHILDREN whose parent it is.
struct TIMER_HEAP {
    TIMER_DUE *items; // an array of zuMemAllocN, or null
    ZU_INT length;
    ZU_INT alloc; // that `items` has room for
};

static ZU_MONITOR *timerMonitor = nullptr; // guards the next four
static TIMER_HEAP timerHeap = {};
static ZU_DICT *timerAbsDict = nullptr; // from times to closures
static bool timerShutdown = false;
static ZU_INT timerWakeUp = ZU_INT_MAX; // the timestamp that the thread sleeps to; the maximum also while it is awake
static ZU_BARRIER *timerBarrier = nullptr; // open: look at the schedules again
static ZU_THREAD *timerThread = nullptr;   // null in a forked child, where nothing fires
static ZU_TIME *timerNow = nullptr;        // what the thread takes the time into

static void timerClosureFree( ZU_OBJ *thisObj );
static void timerFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU___TIMER_CLOSURE =
    ZU___SORT_INITIALIZER( "ZU___TIMER_CLOSURE", &zu___module, timerClosureFree, nullptr, nullptr );
ZU___STDFUNCS_PRIVATE( ZU___TIMER_CLOSURE, timerClosure )

static ZU_SORT zu___sort_ZU_TIMER = ZU___SORT_INITIALIZER( "ZU_TIMER", &zu___module, timerFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_TIMER, zuTimer )

// Closures
static ZU_BOOL timerClosureTakeSched( ZU___TIMER_CLOSURE *tcl )
{
    return (ZU_BOOL)__atomic_exchange_n( &tcl->sched, 0, __ATOMIC_ACQ_REL );
}
static void timerClosureFree( ZU_OBJ *thisObj )
{
    ZU___TIMER_CLOSURE *tcl = timerClosureFrom( thisObj );
    ZU_ASSERT( tcl );
    ZU_REF_RELEASE_OPT( tcl->arg );
    ZU_REF_POISON( tcl->arg );
    ZU_REF_RELEASE_OPT( tcl->sig );
    ZU_REF_POISON( tcl->sig );
    ZU_REF_RELEASE_OPT( tcl->alert );
    ZU_REF_POISON( tcl->alert );
    ZU_REF_RELEASE_OPT( tcl->barrier );
    ZU_REF_POISON( tcl->barrier );
    ZU_REF_RELEASE_OPT( tcl->eq );
    ZU_REF_POISON( tcl->eq );
    ZU_REF_RELEASE_OPT( tcl->evt );
    ZU_REF_POISON( tcl->evt );
    ZU_REF_RELEASE_OPT( tcl->abortThread );
    ZU_REF_POISON( tcl->abortThread );
    ZU_ASSERT( !tcl->sched );
    ZU_ASSERT( !tcl->schedAbs );
    ZU_ASSERT( !tcl->schedRel );
}
static void timerClosureFire( ZU___TIMER_CLOSURE *tcl )
{
    if ( tcl->func ) {
        tcl->func( tcl->arg );
    }
    if ( tcl->sig ) {
        zuSignalAssert( tcl->sig );
    }
    if ( tcl->alert ) {
        zuAlertSet( tcl->alert );
    }
    if ( tcl->barrier ) {
        zuBarrierUnblock( tcl->barrier );
    }
    if ( tcl->eq ) {
        zuEventQueueWriteEvent( tcl->eq, tcl->evt );
    }
    if ( tcl->abortThread ) {
        zu___ThreadTryFreeze( tcl->abortThread );
        ZU_ABORT();
    }
}

// Creation.  Each form sets its one target.
static ZU_TIMER *timerCreate()
{
    ZU___TIMER_CLOSURE *tcl =
        (ZU___TIMER_CLOSURE *)zu___ObjCreate( sizeof( ZU___TIMER_CLOSURE ), &zu___sort_ZU___TIMER_CLOSURE );
    tcl->func = nullptr;
    tcl->arg = nullptr;
    tcl->sig = nullptr;
    tcl->alert = nullptr;
    tcl->barrier = nullptr;
    tcl->eq = nullptr;
    tcl->evt = nullptr;
    tcl->abortThread = nullptr;
    tcl->sched = 0;
    tcl->schedAbs = ZU_FALSE;
    tcl->schedRel = ZU_FALSE;
    tcl->place = 0;
    tcl->at = nullptr;
    tcl->due = 0;
    ZU_TIMER *timer = (ZU_TIMER *)zu___ObjCreate( sizeof( ZU_TIMER ), &zu___sort_ZU_TIMER );
    timer->tcl = tcl;
    timer->linger = ZU_FALSE;
    return timer;
}
ZU_TIMER *zuTimerCreate( ZU_TIMER_FUNC func, ZU_OBJ *arg )
{
    ZU_TIMER *timer = timerCreate();
    timer->tcl->func = func;
    timer->tcl->arg = arg ? zuObjRetain( arg ) : nullptr;
    return timer;
}
ZU_TIMER *zuTimerCreateSignal( ZU_SIGNAL *sig )
{
    ZU_ASSERT( sig );
    ZU_TIMER *timer = timerCreate();
    timer->tcl->sig = zuSignalRetain( sig );
    return timer;
}
ZU_TIMER *zuTimerCreateAlert( ZU_ALERT *alert )
{
    ZU_ASSERT( alert );
    ZU_TIMER *timer = timerCreate();
    timer->tcl->alert = zuAlertRetain( alert );
    return timer;
}
ZU_TIMER *zuTimerCreateBarrier( ZU_BARRIER *barrier )
{
    ZU_ASSERT( barrier );
    ZU_TIMER *timer = timerCreate();
    timer->tcl->barrier = zuBarrierRetain( barrier );
    return timer;
}
ZU_TIMER *zuTimerCreateEventQueue( ZU_EVENT_QUEUE *eq, ZU_OBJ *evt )
{
    ZU_ASSERT( eq );
    ZU_ASSERT( evt );
    ZU_TIMER *timer = timerCreate();
    timer->tcl->eq = zuEventQueueRetain( eq );
    timer->tcl->evt = zuObjRetain( evt );
    return timer;
}
ZU_TIMER *zu___TimerCreateAbort( void )
{
    ZU_THREAD *thread = zuThreadThis();
    ZU_TIMER *timer = timerCreate();
    timer->tcl->abortThread = thread;
    return timer;
}

// The heap; the caller is inside timerMonitor
static constexpr ZU_INT CHILDREN = 4; // in one cache line, most often
static constexpr ZU_INT HEAP_MIN = 64;
static void timerHeapPutLocked( ZU_INT place, TIMER_DUE due )
{
    timerHeap.items[ place ] = due;
    due.tcl->place = place;
}
// Puts `due` where it belongs, on the way up or down from `place`, which is free.
static void timerHeapSettleLocked( ZU_INT place, TIMER_DUE due )
{
    const TIMER_DUE *items = timerHeap.items;
    while ( place > 0 && due.isAhead( items[ ( place - 1 ) / CHILDREN ] ) ) {
        timerHeapPutLocked( place, items[ ( place - 1 ) / CHILDREN ] );
        place = ( place - 1 ) / CHILDREN;
    }
    for ( ;; ) {
        ZU_INT child = CHILDREN * place + 1;
        ZU_INT end = zuIntMin( child + CHILDREN, timerHeap.length );
        ZU_INT first = child;
        for ( child++; child < end; child++ ) {
            first = items[ child ].isAhead( items[ first ] ) ? child : first;
        }
        if ( first >= end || !items[ first ].isAhead( due ) ) {
            break;
        }
        timerHeapPutLocked( place, items[ first ] );
        place = first;
    }
    timerHeapPutLocked( place, due );
}
static void timerHeapResizeLocked( ZU_INT alloc )
{
    timerHeap.items = (TIMER_DUE *)zuMemReallocN( timerHeap.items, alloc, sizeof( TIMER_DUE ) );
    timerHeap.alloc = alloc;
}
// Files a closure, or moves it.
static void timerHeapSetLocked( ZU___TIMER_CLOSURE *tcl, ZU_INT timestamp )
{
    const bool stays = tcl->schedRel && timestamp >= tcl->due;
    tcl->due = timestamp;
    if ( stays ) {
        return;
    }
    if ( !tcl->schedRel ) {
        if ( timerHeap.length == timerHeap.alloc ) {
            timerHeapResizeLocked( zuIntMax( 2 * timerHeap.alloc, HEAP_MIN ) );
        }
        tcl->schedRel = ZU_TRUE;
        tcl->place = timerHeap.length++;
        zuObjRetain( &tcl->obj );
    }
    timerHeapSettleLocked( tcl->place, { timestamp, tcl } );
}
// Takes a closure out, and leaves its reference to the caller.
static void timerHeapTakeLocked( ZU___TIMER_CLOSURE *tcl )
{
    tcl->schedRel = ZU_FALSE;
    TIMER_DUE last = timerHeap.items[ --timerHeap.length ];
    if ( last.tcl != tcl ) {
        timerHeapSettleLocked( tcl->place, last );
    }
    if ( timerHeap.alloc > HEAP_MIN && timerHeap.length <= timerHeap.alloc / 4 ) {
        timerHeapResizeLocked( timerHeap.alloc / 2 );
    }
}

// Schedules; the caller is inside timerMonitor
static bool timerIsAtLocked( ZU___TIMER_CLOSURE *tcl, ZU_INT idx )
{
    zu___Owned check( zuDictValueAt( timerAbsDict, idx ) );
    ZU_ASSERT( check );
    return check == &tcl->obj;
}
static void timerLeaveCalendarLocked( ZU___TIMER_CLOSURE *tcl )
{
    tcl->schedAbs = ZU_FALSE;
    ZU_REF_RELEASE( tcl->at );
    tcl->at = nullptr;
}
static void timerDropByTimeLocked( ZU___TIMER_CLOSURE *tcl )
{
    ZU_INT idx = zuDictIndexOfObjKey( timerAbsDict, zuTimeObj( tcl->at ) );
    if ( idx >= 0 && timerIsAtLocked( tcl, idx ) ) {
        zuDictDelAt( &timerAbsDict, idx );
    }
    timerLeaveCalendarLocked( tcl );
}
// A closure that is filed has a reference in its schedule, which may be the last but the caller's.
static void timerDropScheduleLocked( ZU___TIMER_CLOSURE *tcl )
{
    if ( !tcl->schedRel && !tcl->schedAbs ) {
        return;
    }
    ZU_ASSERT( tcl->schedRel != tcl->schedAbs );
    timerClosureTakeSched( tcl );
    if ( tcl->schedRel ) {
        timerHeapTakeLocked( tcl );
        zuObjRelease( &tcl->obj ); // not the last
    } else {
        timerDropByTimeLocked( tcl );
    }
}
static void timerFree( ZU_OBJ *thisObj )
{
    ZU_TIMER *timer = zuTimerFrom( thisObj );
    ZU_ASSERT( timer );
    zuMonitorEnter( timerMonitor );
    if ( !timer->linger ) {
        timerDropScheduleLocked( timer->tcl );
    }
    zuMonitorLeave( timerMonitor );
    ZU_REF_RELEASE( timer->tcl );
    ZU_REF_POISON( timer->tcl );
}
void zu___TimerSetLinger( ZU_TIMER *timer, ZU_BOOL linger )
{
    ZU_ASSERT( timer );
    zuMonitorEnter( timerMonitor );
    timer->linger = linger;
    zuMonitorLeave( timerMonitor );
}

// Ends a schedule by the calendar.  One by a timestamp stays for the time being, since filing moves a closure.
static void timerDropOtherLocked( ZU___TIMER_CLOSURE *tcl )
{
    if ( tcl->schedAbs ) {
        timerDropScheduleLocked( tcl );
    }
}
// Files the closure by a timestamp; tells whether the thread has to look at the schedules for that.
static bool timerFileLocked( ZU___TIMER_CLOSURE *tcl, ZU_INT timestamp )
{
    ZU_ASSERT( timerThread );
    timerHeapSetLocked( tcl, timestamp );
    ZU___HAPPENS_STORE( &tcl->sched, 1, __ATOMIC_RELEASE );
    return timestamp < timerWakeUp || zuDictLength( timerAbsDict ) > 0;
}
static bool timerIsFirstLocked( ZU___TIMER_CLOSURE *tcl )
{
    return timerHeap.items[ 0 ].tcl == tcl;
}
void zuTimerSchedule( ZU_TIMER *timer, ZU_INT milliseconds )
{
    ZU_ASSERT( timer );
    ZU_ASSERT( milliseconds >= 0 );
    zuMonitorEnter( timerMonitor );
    timerDropOtherLocked( timer->tcl );
    ZU_INT currentTimestamp = zuTimestamp();
    ZU_ASSERT( ZU_INT_ADD_OK( currentTimestamp, milliseconds ) );
    bool wake = timerFileLocked( timer->tcl, currentTimestamp + milliseconds );
    zuMonitorLeave( timerMonitor );
    if ( wake ) {
        zuBarrierUnblock( timerBarrier );
    }
}
void zuTimerScheduleAt( ZU_TIMER *timer, ZU_INT timestamp )
{
    ZU_ASSERT( timer );
    ZU_ASSERT( timestamp >= 0 );
    zuMonitorEnter( timerMonitor );
    timerDropOtherLocked( timer->tcl );
    bool wake = timerFileLocked( timer->tcl, timestamp ) && timerIsFirstLocked( timer->tcl );
    zuMonitorLeave( timerMonitor );
    if ( wake ) {
        zuBarrierUnblock( timerBarrier );
    }
}
void zuTimerScheduleAtTime( ZU_TIMER *timer, ZU_TIME *at )
{
    ZU_ASSERT( timer );
    ZU_ASSERT( at );
    zuMonitorEnter( timerMonitor );
    ZU_ASSERT( timerThread );
    timerDropScheduleLocked( timer->tcl );
    zuDictSetObjKey( &timerAbsDict, zuTimeObj( at ), &timer->tcl->obj );
    bool isFirst = timerIsAtLocked( timer->tcl, 0 );
    ZU___HAPPENS_STORE( &timer->tcl->sched, 1, __ATOMIC_RELEASE );
    timer->tcl->schedAbs = ZU_TRUE;
    timer->tcl->at = zuTimeRetain( at );
    zuMonitorLeave( timerMonitor );
    if ( isFirst ) {
        zuBarrierUnblock( timerBarrier );
    }
}
ZU_BOOL zuTimerScheduled( ZU_TIMER *timer )
{
    ZU_ASSERT( timer );
    return (ZU_BOOL)__atomic_load_n( &timer->tcl->sched, __ATOMIC_ACQUIRE );
}
ZU_BOOL zuTimerUnschedule( ZU_TIMER *timer )
{
    ZU_ASSERT( timer );
    return timerClosureTakeSched( timer->tcl );
}

// The thread of the timers

// Fires a closure that has been taken out of its schedule, unless it was unscheduled, and takes its reference.
// Outside of the monitor, so that what fires, or is released, can schedule.
static void timerFireTaken( ZU___TIMER_CLOSURE *tcl )
{
    ZU_BOOL sched = timerClosureTakeSched( tcl );
    zuMonitorLeave( timerMonitor );
    if ( sched ) {
        timerClosureFire( tcl );
    }
    ZU_REF_RELEASE( tcl );
    zuMonitorEnter( timerMonitor );
}
// Fires what is due by `timestamp`; returns the milliseconds to what is due next.
static ZU_INT timerFireRelative( ZU_INT timestamp )
{
    while ( timerHeap.length > 0 ) {
        TIMER_DUE first = timerHeap.items[ 0 ];
        if ( first.timestamp < first.tcl->due ) {
            timerHeapSettleLocked( 0, { first.tcl->due, first.tcl } );
            continue;
        }
        if ( first.timestamp > timestamp ) {
            return first.timestamp - timestamp;
        }
        timerHeapTakeLocked( first.tcl );
        timerFireTaken( first.tcl );
    }
    return ZU_INT_MAX;
}
// Fires what is due by the calendar; returns the milliseconds until it must be looked at again.  Leaves timerNow
// anywhere.
static ZU_INT timerFireAbsolute()
{
    zuTimeSetNow( &timerNow );
    while ( zuDictLength( timerAbsDict ) > 0 ) {
        ZU_TIME *due = zuTimeFrom( zuDictKeyAt( timerAbsDict, 0 ) );
        bool isDue = zuTimeCompare( due, timerNow ) <= 0;
        ZU_INT wait = 0;
        if ( !isDue ) {
            zuTimeShiftSeconds( &timerNow, NEAR_SECONDS );
            wait = zuTimeCompare( due, timerNow ) < 0 ? NEAR_WAIT : FAR_WAIT;
        }
        zuTimeRelease( due );
        if ( !isDue ) {
            return wait;
        }
        ZU___TIMER_CLOSURE *tcl = timerClosureFrom( zuDictValueAt( timerAbsDict, 0 ) );
        zuDictDelAt( &timerAbsDict, 0 );
        timerLeaveCalendarLocked( tcl );
        timerFireTaken( tcl );
    }
    return ZU_INT_MAX;
}
static void zu___TimerThreadFunc( void )
{
    ZU_INT limit = -1;
    bool shutdown;
    do {
        zuBarrierPassTimed( timerBarrier, limit );
        zuBarrierBlock( timerBarrier );
        zuMonitorEnter( timerMonitor );
        // The monitor is left for each firing, and what is filed meanwhile may be looked at already.
        timerWakeUp = ZU_INT_MAX;
        shutdown = timerShutdown;
        ZU_INT timestamp = zuTimestamp();
        ZU_INT relative = timerFireRelative( timestamp );
        ZU_INT absolute = timerFireAbsolute();
        ZU_INT wakeUp = zuIntAddSaturating( timestamp, zuIntMin( relative, absolute ) );
        timerWakeUp = wakeUp;
        zuMonitorLeave( timerMonitor );
        limit = zuIntMax( wakeUp - zuTimestamp(), 0 );
    } while ( !shutdown );
}

// Start-up
void zu___TimerStartup( void )
{
    timerMonitor = zuMonitorCreate();
    timerHeap = {};
    timerAbsDict = zuDictCreate();
    timerShutdown = false;
    timerWakeUp = ZU_INT_MAX;
    timerBarrier = zuBarrierCreate( ZU_TRUE );
    timerNow = zuTimeNow(); // not by the thread, which would begin with a heap of its own for that
    timerThread = zu___ThreadTrySpawnDeaf( "zu___TimerThreadFunc()", zu___TimerThreadFunc, ZU_THREAD_PRIORITY_HIGHEST );
    ZU_ASSERT( timerThread );
}
static void timerStopThread()
{
    zuMonitorEnter( timerMonitor );
    timerShutdown = true;
    zuMonitorLeave( timerMonitor );
    zuBarrierUnblock( timerBarrier );
    zuThreadJoin( timerThread );
    ZU___ASSERT_AS( timerHeap.length == 0, "!zuPriorityMapLength( timerRelPrioMap )" );
    ZU_ASSERT( !zuDictLength( timerAbsDict ) );
    ZU_REF_RELEASE( timerThread );
    ZU_REF_POISON( timerThread );
}
// Drops the schedules that a forked child has from its parent, whose timers they are.
static void timerDropAll()
{
    while ( timerHeap.length > 0 ) {
        ZU___TIMER_CLOSURE *tcl = timerClosureFrom( zuObjRetain( &timerHeap.items[ 0 ].tcl->obj ) );
        zuMonitorEnter( timerMonitor );
        timerDropScheduleLocked( tcl );
        zuMonitorLeave( timerMonitor );
        ZU_REF_RELEASE( tcl );
    }
    while ( zuDictLength( timerAbsDict ) > 0 ) {
        ZU___TIMER_CLOSURE *tcl = timerClosureFrom( zuDictValueAt( timerAbsDict, 0 ) );
        zuMonitorEnter( timerMonitor );
        timerDropScheduleLocked( tcl );
        zuMonitorLeave( timerMonitor );
        ZU_REF_RELEASE( tcl );
    }
}
// The thread of the timers, and what it holds, are nobody's in the child.
void zu___TimerFork( ZU___FORK_STEP step )
{
    zu___MonitorFork( timerMonitor, step );
    if ( step == ZU___FORK_CHILD ) {
        timerThread = nullptr;
    }
}
void zu___TimerShutdown( void )
{
    if ( timerThread ) {
        timerStopThread();
    } else {
        timerDropAll();
    }
    ZU_REF_RELEASE( timerNow );
    ZU_REF_POISON( timerNow );
    ZU_REF_RELEASE( timerBarrier );
    ZU_REF_POISON( timerBarrier );
    ZU_REF_RELEASE( timerAbsDict );
    ZU_REF_POISON( timerAbsDict );
    zuMemFree( timerHeap.items );
    timerHeap = {};
    ZU_REF_RELEASE( timerMonitor );
    ZU_REF_POISON( timerMonitor );
}
