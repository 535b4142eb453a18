#include "zu/base/zu_alertable.h"

#include "zu/base/zu_event_queue.h"
#include "zu/runtime/zu_module.h"

struct ZU_ALERTABLE {
    ZU_OBJ obj;
    ZU___ALERTABLE_IMP *imp; // halted when the owner's object ends
};

static void alertableFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_ALERTABLE =
    ZU___SORT_INITIALIZER( "ZU_ALERTABLE", &zu___module, alertableFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_ALERTABLE, zuAlertable )

// Creation; takes over the reference to `imp`.
static ZU_ALERTABLE *alertableCreate( ZU___ALERTABLE_IMP *imp )
{
    ZU_ALERTABLE *alb = (ZU_ALERTABLE *)zu___ObjCreate( sizeof( ZU_ALERTABLE ), &zu___sort_ZU_ALERTABLE );
    alb->imp = imp;
    return alb;
}
ZU_ALERTABLE *zuAlertableCreate( ZU_ALERTABLE_FUNC func, ZU_OBJ *arg )
{
    return alertableCreate( zu___AlertableImpCreate( func, arg ) );
}
ZU_ALERTABLE *zuAlertableCreateBarrier( ZU_BARRIER *barrier )
{
    ZU_ASSERT( barrier );
    return alertableCreate( zu___AlertableImpCreateBarrier( barrier ) );
}
ZU_ALERTABLE *zuAlertableCreateEventQueue( ZU_EVENT_QUEUE *eq, ZU_OBJ *evt )
{
    ZU_ASSERT( eq );
    ZU_ASSERT( evt );
    ZU___EVENT_QUEUE_IMP *eqImp = zu___EventQueueImp( eq );
    ZU_ALERTABLE *alb = alertableCreate( zu___AlertableImpCreateEventQueue( eqImp, evt ) );
    ZU_REF_RELEASE( eqImp );
    return alb;
}
ZU_ALERTABLE *zuAlertableCreateSignal( ZU_SIGNAL *sig )
{
    ZU_ASSERT( sig );
    return alertableCreate( zu___AlertableImpCreateSignal( sig ) );
}
ZU_ALERTABLE *zuAlertableCreateAlert( ZU_ALERT *alert )
{
    ZU_ASSERT( alert );
    return alertableCreate( zu___AlertableImpCreateAlert( alert ) );
}
static void alertableFree( ZU_OBJ *thisObj )
{
    ZU_ALERTABLE *alb = zuAlertableFrom( thisObj );
    ZU_ASSERT( alb );
    zu___AlertableImpHalt( alb->imp );
    ZU_REF_RELEASE( alb->imp );
    ZU_REF_POISON( alb->imp );
}

ZU___ALERTABLE_IMP *zu___AlertableImp( ZU_ALERTABLE *alb )
{
    ZU_ASSERT( alb );
    return zu___AlertableImpRetain( alb->imp );
}
void zu___AlertableAlert( ZU_ALERTABLE *alb )
{
    ZU_ASSERT( alb );
    zu___AlertableImpAlert( alb->imp );
}
