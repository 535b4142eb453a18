// A signal has no condition of its own: the first thread that waits makes a barrier, which all share.  Most signals
// are never waited for, and one that is needs the barrier until it is asserted only.

#include "zu/base/zu_signal.h"

#include "zu/base/zu_alert.h"
#include "zu/base/zu_barrier.h"
#include "zu/base/zu_listener_internal.h"
#include "zu/base/zu_signalable.h"
#include "zu/runtime/zu_module.h"
#include "zu/sys/zu_happens_internal.h"
#include "zu/sys/zu_lock_internal.h"

// The kinds of object that can be attached, in the order in which they are told.
enum SIGNAL_KIND { SIGNALABLES, SIGNALS, ALERTS, BARRIERS, KINDS };

struct ZU_SIGNAL {
    ZU_OBJ obj;              // its lock guards what follows
    uint32_t asserted;       // atomic, since it is read without the lock too
    ZU_BARRIER *waitBarrier; // closed; null: nobody has waited so far, or the signal is asserted
    ZU___LISTENER_SET sets[ KINDS ];
};

static void signalFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_SIGNAL = ZU___SORT_INITIALIZER( "ZU_SIGNAL", &zu___module, signalFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_SIGNAL, zuSignal )

ZU_SIGNAL *zuSignalCreate( void )
{
    ZU_SIGNAL *sig = (ZU_SIGNAL *)zu___ObjCreate( sizeof( ZU_SIGNAL ), &zu___sort_ZU_SIGNAL );
    sig->asserted = 0;
    sig->waitBarrier = nullptr;
    for ( ZU___LISTENER_SET &set : sig->sets ) {
        set = {};
    }
    return sig;
}
static void signalFree( ZU_OBJ *thisObj )
{
    ZU_SIGNAL *sig = zuSignalFrom( thisObj );
    ZU_ASSERT( sig );
    ZU_REF_RELEASE_OPT( sig->waitBarrier );
    ZU_REF_POISON( sig->waitBarrier );
    for ( ZU___LISTENER_SET &set : sig->sets ) {
        zu___ListenerSetFree( &set );
    }
}

// Asserting
static void signalTellSignalable( ZU_OBJ *imp )
{
    zu___SignalableImpSignal( (ZU___SIGNALABLE_IMP *)imp );
}
static void signalTellSignal( ZU_OBJ *sig )
{
    zuSignalAssert( (ZU_SIGNAL *)sig );
}
static void signalTellAlert( ZU_OBJ *al )
{
    zuAlertSet( (ZU_ALERT *)al );
}
static void signalTellBarrier( ZU_OBJ *barrier )
{
    zuBarrierUnblock( (ZU_BARRIER *)barrier );
}
static void ( *const TELL[ KINDS ] )( ZU_OBJ *obj ) = { signalTellSignalable, signalTellSignal, signalTellAlert,
                                                        signalTellBarrier };

ZU_BOOL zuSignalAsserted( ZU_SIGNAL *sig )
{
    ZU_ASSERT( sig );
    bool asserted = __atomic_load_n( &sig->asserted, __ATOMIC_SEQ_CST ) != 0;
    ZU___HAPPENS_AFTER( &sig->asserted );
    return asserted;
}
void zuSignalAssert( ZU_SIGNAL *sig )
{
    ZU_ASSERT( sig );
    zu___LockAcquireInline( &sig->obj.lock );
    ZU___HAPPENS_BEFORE( &sig->asserted );
    if ( __atomic_exchange_n( &sig->asserted, 1, __ATOMIC_SEQ_CST ) == 0 ) {
        if ( sig->waitBarrier ) {
            zuBarrierUnblock( sig->waitBarrier );
            ZU_BARRIER *opened = sig->waitBarrier;
            sig->waitBarrier = nullptr;
            ZU_REF_RELEASE( opened );
        }
        for ( int kind = 0; kind < KINDS; kind++ ) {
            zu___ListenerSetFireLocked( &sig->sets[ kind ], TELL[ kind ], ZU_TRUE );
        }
    }
    zu___LockReleaseInline( &sig->obj.lock );
}

// Waiting

// Returns the barrier that the caller has to wait at, with a reference; null if the signal is asserted.
static ZU_BARRIER *signalWaitBarrier( ZU_SIGNAL *sig )
{
    ZU_BARRIER *barrier = nullptr;
    zu___LockAcquireInline( &sig->obj.lock );
    if ( !zuSignalAsserted( sig ) ) {
        if ( !sig->waitBarrier ) {
            sig->waitBarrier = zuBarrierCreate( ZU_TRUE );
        }
        barrier = zuBarrierRetain( sig->waitBarrier );
    }
    zu___LockReleaseInline( &sig->obj.lock );
    return barrier;
}
void zuSignalWait( ZU_SIGNAL *sig )
{
    ZU_ASSERT( sig );
    ZU_BARRIER *barrier = signalWaitBarrier( sig );
    if ( barrier ) {
        zuBarrierPass( barrier );
        ZU_REF_RELEASE( barrier );
    }
}
ZU_BOOL zuSignalWaitTimed( ZU_SIGNAL *sig, ZU_INT millisec )
{
    ZU_ASSERT( sig );
    ZU_BARRIER *barrier = signalWaitBarrier( sig );
    if ( !barrier ) {
        return ZU_TRUE;
    }
    ZU_BOOL result = zuBarrierPassTimed( barrier, millisec );
    ZU_REF_RELEASE( barrier );
    return result;
}

// Attaching and detaching
static void signalAdd( ZU_SIGNAL *sig, SIGNAL_KIND kind, ZU_OBJ *obj )
{
    zu___LockAcquireInline( &sig->obj.lock );
    if ( zuSignalAsserted( sig ) ) {
        TELL[ kind ]( obj );
    } else {
        zu___ListenerSetAddLocked( &sig->sets[ kind ], obj );
    }
    zu___LockReleaseInline( &sig->obj.lock );
}
static void signalDel( ZU_SIGNAL *sig, SIGNAL_KIND kind, ZU_OBJ *obj )
{
    zu___LockAcquireInline( &sig->obj.lock );
    zu___ListenerSetDelLocked( &sig->sets[ kind ], obj );
    zu___LockReleaseInline( &sig->obj.lock );
}
void zuSignalAddSignalable( ZU_SIGNAL *sig, ZU_SIGNALABLE *sigb )
{
    ZU_ASSERT( sig );
    ZU_ASSERT( sigb );
    ZU___SIGNALABLE_IMP *imp = zu___SignalableImp( sigb );
    signalAdd( sig, SIGNALABLES, zu___SignalableImpObj( imp ) );
    ZU_REF_RELEASE( imp );
}
void zuSignalDelSignalable( ZU_SIGNAL *sig, ZU_SIGNALABLE *sigb )
{
    ZU_ASSERT( sig );
    ZU_ASSERT( sigb );
    ZU___SIGNALABLE_IMP *imp = zu___SignalableImp( sigb );
    signalDel( sig, SIGNALABLES, zu___SignalableImpObj( imp ) );
    ZU_REF_RELEASE( imp );
}
void zuSignalAddSignal( ZU_SIGNAL *sig, ZU_SIGNAL *chainedSignal )
{
    ZU_ASSERT( sig );
    ZU_ASSERT( chainedSignal );
    signalAdd( sig, SIGNALS, zuSignalObj( chainedSignal ) );
}
void zuSignalDelSignal( ZU_SIGNAL *sig, ZU_SIGNAL *chainedSignal )
{
    ZU_ASSERT( sig );
    ZU_ASSERT( chainedSignal );
    signalDel( sig, SIGNALS, zuSignalObj( chainedSignal ) );
}
void zuSignalAddAlert( ZU_SIGNAL *sig, ZU_ALERT *al )
{
    ZU_ASSERT( sig );
    ZU_ASSERT( al );
    signalAdd( sig, ALERTS, zuAlertObj( al ) );
}
void zuSignalDelAlert( ZU_SIGNAL *sig, ZU_ALERT *al )
{
    ZU_ASSERT( sig );
    ZU_ASSERT( al );
    signalDel( sig, ALERTS, zuAlertObj( al ) );
}
void zuSignalAddBarrier( ZU_SIGNAL *sig, ZU_BARRIER *waitBarrier )
{
    ZU_ASSERT( sig );
    ZU_ASSERT( waitBarrier );
    signalAdd( sig, BARRIERS, zuBarrierObj( waitBarrier ) );
}
void zuSignalDelBarrier( ZU_SIGNAL *sig, ZU_BARRIER *waitBarrier )
{
    ZU_ASSERT( sig );
    ZU_ASSERT( waitBarrier );
    signalDel( sig, BARRIERS, zuBarrierObj( waitBarrier ) );
}
ZU_BOOL zuSignalHasSignalables( ZU_SIGNAL *sig )
{
    ZU_ASSERT( sig );
    zu___LockAcquireInline( &sig->obj.lock );
    ZU_BOOL result = ZU_FALSE;
    if ( !zuSignalAsserted( sig ) ) {
        for ( ZU___LISTENER_SET &set : sig->sets ) {
            result = result || zu___ListenerSetHasAnyLocked( &set );
        }
    }
    zu___LockReleaseInline( &sig->obj.lock );
    return result;
}
