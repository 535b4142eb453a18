#include "zu/base/zu_signalable_imp.h"

#include "zu/base/zu_listener_internal.h"
#include "zu/runtime/zu_module.h"

struct ZU___SIGNALABLE_IMP {
    ZU___LISTENER listener;
};

static void signalableImpFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU___SIGNALABLE_IMP =
    ZU___SORT_INITIALIZER( "ZU___SIGNALABLE_IMP", &zu___module, signalableImpFree, nullptr, nullptr );
ZU___STDFUNCS( ZU___SIGNALABLE_IMP, zu___SignalableImp )

// Creation
static ZU___SIGNALABLE_IMP *signalableImpCreate( const ZU___LISTENER_TARGETS &targets )
{
    return (ZU___SIGNALABLE_IMP *)zu___ListenerCreate( &zu___sort_ZU___SIGNALABLE_IMP, &targets );
}
ZU___SIGNALABLE_IMP *zu___SignalableImpCreate( ZU_SIGNALABLE_FUNC func, ZU_OBJ *arg )
{
    return signalableImpCreate( { .func = func, .arg = arg } );
}
ZU___SIGNALABLE_IMP *zu___SignalableImpCreateBarrier( ZU_BARRIER *barrier )
{
    ZU_ASSERT( barrier );
    return signalableImpCreate( { .barrier = barrier } );
}
ZU___SIGNALABLE_IMP *zu___SignalableImpCreateEventQueue( ZU___EVENT_QUEUE_IMP *eq, ZU_OBJ *evt )
{
    ZU_ASSERT( eq );
    ZU_ASSERT( evt );
    return signalableImpCreate( { .eq = eq, .evt = evt } );
}
ZU___SIGNALABLE_IMP *zu___SignalableImpCreateSignal( ZU_SIGNAL *sig )
{
    ZU_ASSERT( sig );
    return signalableImpCreate( { .sig = sig } );
}
ZU___SIGNALABLE_IMP *zu___SignalableImpCreateAlert( ZU_ALERT *alert )
{
    ZU_ASSERT( alert );
    return signalableImpCreate( { .alert = alert } );
}
static void signalableImpFree( ZU_OBJ *thisObj )
{
    ZU___SIGNALABLE_IMP *imp = zu___SignalableImpFrom( thisObj );
    ZU_ASSERT( imp );
    zu___ListenerFree( &imp->listener );
}

void zu___SignalableImpSignal( ZU___SIGNALABLE_IMP *imp )
{
    ZU_ASSERT( imp );
    zu___ListenerFire( &imp->listener );
}
void zu___SignalableImpHalt( ZU___SIGNALABLE_IMP *imp )
{
    ZU_ASSERT( imp );
    zu___ListenerHalt( &imp->listener );
}
