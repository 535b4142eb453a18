// The barrier is worked inside the monitor, so that outside of it gate and count always agree.

#include "zu/base/zu_counter.h"

#include "zu/base/zu_threading_fork_internal.h"
#include "zu/runtime/zu_module.h"

struct ZU_COUNTER {
    ZU_OBJ obj;
    ZU_MONITOR *monitor; // guards `value`
    ZU_BARRIER *barrier; // open while `value` is 0
    ZU_INT value;        // never negative
};

static void counterFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_COUNTER =
    ZU___SORT_INITIALIZER( "ZU_COUNTER", &zu___module, counterFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_COUNTER, zuCounter )

ZU_COUNTER *zuCounterCreate( void )
{
    ZU_COUNTER *ctr = (ZU_COUNTER *)zu___ObjCreate( sizeof( ZU_COUNTER ), &zu___sort_ZU_COUNTER );
    ctr->monitor = zuMonitorCreate();
    ctr->barrier = zuBarrierCreate( ZU_FALSE );
    ctr->value = 0;
    return ctr;
}
static void counterFree( ZU_OBJ *thisObj )
{
    ZU_COUNTER *ctr = zuCounterFrom( thisObj );
    ZU_ASSERT( ctr );
    // Whoever has let the last waiter go may still be on its way out.
    zuMonitorEnter( ctr->monitor );
    zuMonitorLeave( ctr->monitor );
    ZU_REF_RELEASE( ctr->monitor );
    ZU_REF_POISON( ctr->monitor );
    ZU_REF_RELEASE( ctr->barrier );
    ZU_REF_POISON( ctr->barrier );
}

void zuCounterIncrement( ZU_COUNTER *ctr )
{
    ZU_ASSERT( ctr );
    zuMonitorEnter( ctr->monitor );
    ZU_ASSERT( ctr->value >= 0 );
    ZU_ASSERT( ctr->value < ZU_INT_MAX );
    ctr->value++;
    zuBarrierBlock( ctr->barrier );
    zuMonitorLeave( ctr->monitor );
}
void zuCounterDecrement( ZU_COUNTER *ctr )
{
    ZU_ASSERT( ctr );
    zuMonitorEnter( ctr->monitor );
    ZU_ASSERT( ctr->value > 0 );
    ctr->value--;
    if ( ctr->value == 0 ) {
        zuBarrierUnblock( ctr->barrier );
    }
    zuMonitorLeave( ctr->monitor );
}
ZU_INT zuCounterValue( ZU_COUNTER *ctr )
{
    ZU_ASSERT( ctr );
    zuMonitorEnter( ctr->monitor );
    ZU_INT value = ctr->value;
    zuMonitorLeave( ctr->monitor );
    return value;
}

void zuCounterWaitZero( ZU_COUNTER *ctr )
{
    ZU_ASSERT( ctr );
    zuBarrierPass( ctr->barrier );
}
ZU_BOOL zuCounterWaitZeroTimed( ZU_COUNTER *ctr, ZU_INT millisec )
{
    ZU_ASSERT( ctr );
    return zuBarrierPassTimed( ctr->barrier, millisec );
}

void zu___CounterFork( ZU_COUNTER *ctr, ZU___FORK_STEP step, ZU_INT childValue )
{
    zu___MonitorFork( ctr->monitor, step );
    if ( step == ZU___FORK_CHILD ) {
        ctr->value = childValue;
        zu___BarrierForkChild( ctr->barrier, childValue == 0 );
    }
}
