#include "zu/base/zu_signalable.h"

#include "zu/base/zu_event_queue.h"
#include "zu/runtime/zu_module.h"

struct ZU_SIGNALABLE {
    ZU_OBJ obj;
    ZU___SIGNALABLE_IMP *imp; // halted when the owner's object ends
};

static void signalableFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_SIGNALABLE =
    ZU___SORT_INITIALIZER( "ZU_SIGNALABLE", &zu___module, signalableFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_SIGNALABLE, zuSignalable )

// Creation; takes over the reference to `imp`.
static ZU_SIGNALABLE *signalableCreate( ZU___SIGNALABLE_IMP *imp )
{
    ZU_SIGNALABLE *sigb = (ZU_SIGNALABLE *)zu___ObjCreate( sizeof( ZU_SIGNALABLE ), &zu___sort_ZU_SIGNALABLE );
    sigb->imp = imp;
    return sigb;
}
ZU_SIGNALABLE *zuSignalableCreate( ZU_SIGNALABLE_FUNC func, ZU_OBJ *arg )
{
    return signalableCreate( zu___SignalableImpCreate( func, arg ) );
}
ZU_SIGNALABLE *zuSignalableCreateBarrier( ZU_BARRIER *barrier )
{
    ZU_ASSERT( barrier );
    return signalableCreate( zu___SignalableImpCreateBarrier( barrier ) );
}
ZU_SIGNALABLE *zuSignalableCreateEventQueue( ZU_EVENT_QUEUE *eq, ZU_OBJ *evt )
{
    ZU_ASSERT( eq );
    ZU_ASSERT( evt );
    ZU___EVENT_QUEUE_IMP *eqImp = zu___EventQueueImp( eq );
    ZU_SIGNALABLE *sigb = signalableCreate( zu___SignalableImpCreateEventQueue( eqImp, evt ) );
    ZU_REF_RELEASE( eqImp );
    return sigb;
}
ZU_SIGNALABLE *zuSignalableCreateSignal( ZU_SIGNAL *sig )
{
    ZU_ASSERT( sig );
    return signalableCreate( zu___SignalableImpCreateSignal( sig ) );
}
ZU_SIGNALABLE *zuSignalableCreateAlert( ZU_ALERT *alert )
{
    ZU_ASSERT( alert );
    return signalableCreate( zu___SignalableImpCreateAlert( alert ) );
}
static void signalableFree( ZU_OBJ *thisObj )
{
    ZU_SIGNALABLE *sigb = zuSignalableFrom( thisObj );
    ZU_ASSERT( sigb );
    zu___SignalableImpHalt( sigb->imp );
    ZU_REF_RELEASE( sigb->imp );
    ZU_REF_POISON( sigb->imp );
}

ZU___SIGNALABLE_IMP *zu___SignalableImp( ZU_SIGNALABLE *sigb )
{
    ZU_ASSERT( sigb );
    return zu___SignalableImpRetain( sigb->imp );
}
void zu___SignalableSignal( ZU_SIGNALABLE *sigb )
{
    ZU_ASSERT( sigb );
    zu___SignalableImpSignal( sigb->imp );
}
