// Waiters share the lock, so that none holds another up on the way to sleep or back.  An open barrier is passed, and
// looked at, without it, in 2 ns instead of 5: who finds it open has seen all that its opener did before, since the word
// is stored with release order and loaded with acquire order.

#include "zu/base/zu_barrier.h"

#include "zu/base/zu_threading_fork_internal.h"
#include "zu/base/zu_timestamp.h"
#include "zu/runtime/zu_module.h"
#include "zu/sys/zu_happens_internal.h"
#include "zu/sys/zu_srw_internal.h"

#include <algorithm>

// Milliseconds that a timed wait sleeps in one go: whatever the limit, the system is asked for times that it can count.
static constexpr ZU_INT SLICE = 600000;

struct ZU_BARRIER {
    ZU_OBJ obj;
    ZU___SRW_LOCK srw;
    ZU___CONDITION cond; // woken at each opening
    ZU_BOOL open;        // changed under `srw` only; atomic
};

static ZU_SORT zu___sort_ZU_BARRIER = ZU___SORT_INITIALIZER( "ZU_BARRIER", &zu___module, nullptr, nullptr, nullptr );
ZU___STDFUNCS( ZU_BARRIER, zuBarrier )

ZU_BARRIER *zuBarrierCreate( ZU_BOOL blocked )
{
    ZU_BARRIER *barrier = (ZU_BARRIER *)zu___ObjCreate( sizeof( ZU_BARRIER ), &zu___sort_ZU_BARRIER );
    zu___SrwLockInitialize( &barrier->srw );
    zu___ConditionInitialize( &barrier->cond );
    barrier->open = !blocked;
    return barrier;
}

// Opening and closing
static inline bool barrierIsOpen( ZU_BARRIER *barrier )
{
    bool open = __atomic_load_n( &barrier->open, __ATOMIC_ACQUIRE ) != ZU_FALSE;
    ZU___HAPPENS_AFTER( &barrier->open );
    return open;
}
static void barrierSetOpen( ZU_BARRIER *barrier, ZU_BOOL open )
{
    zu___SrwLockAcquireExclusive( &barrier->srw );
    ZU___HAPPENS_BEFORE( &barrier->open );
    ZU___HAPPENS_STORE( &barrier->open, open, __ATOMIC_RELEASE );
    zu___SrwLockReleaseExclusive( &barrier->srw );
}
void zuBarrierBlock( ZU_BARRIER *barrier )
{
    ZU_ASSERT( barrier );
    barrierSetOpen( barrier, ZU_FALSE );
}
void zuBarrierUnblock( ZU_BARRIER *barrier )
{
    ZU_ASSERT( barrier );
    barrierSetOpen( barrier, ZU_TRUE );
    zu___ConditionWakeAll( &barrier->cond );
}
ZU_BOOL zuBarrierIsBlocked( ZU_BARRIER *barrier )
{
    ZU_ASSERT( barrier );
    return !barrierIsOpen( barrier );
}

// Passing
void zuBarrierPass( ZU_BARRIER *barrier )
{
    ZU_ASSERT( barrier );
    if ( barrierIsOpen( barrier ) ) {
        return;
    }
    zu___SrwLockAcquireShared( &barrier->srw );
    while ( !barrierIsOpen( barrier ) ) {
        ZU_ASSERT( zu___ConditionWaitShared( &barrier->cond, &barrier->srw, -1 ) );
    }
    zu___SrwLockReleaseShared( &barrier->srw );
}
ZU_BOOL zuBarrierPassTimed( ZU_BARRIER *barrier, ZU_INT millisec )
{
    ZU_ASSERT( barrier );
    if ( millisec == -1 ) {
        zuBarrierPass( barrier );
        return ZU_TRUE;
    }
    ZU_ASSERT( millisec == -1 || millisec >= 0 );
    if ( barrierIsOpen( barrier ) ) {
        return ZU_TRUE;
    }
    ZU_INT start = zuTimestamp();
    zu___SrwLockAcquireShared( &barrier->srw );
    bool open;
    while ( !( open = barrierIsOpen( barrier ) ) ) {
        ZU_INT elapsed = zuTimestamp() - start;
        if ( elapsed >= millisec ) {
            break;
        }
        if ( !zu___ConditionWaitShared( &barrier->cond, &barrier->srw, std::min( millisec - elapsed, SLICE ) ) ) {
            ZU_ABORT();
        }
    }
    zu___SrwLockReleaseShared( &barrier->srw );
    return open;
}

void zu___BarrierForkChild( ZU_BARRIER *barrier, ZU_BOOL open )
{
    zu___SrwLockInitialize( &barrier->srw );
    zu___ConditionInitialize( &barrier->cond );
    barrier->open = open;
}
