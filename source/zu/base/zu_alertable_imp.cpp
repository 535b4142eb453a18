#include "zu/base/zu_alertable_imp.h"

#include "zu/base/zu_listener_internal.h"
#include "zu/runtime/zu_module.h"

struct ZU___ALERTABLE_IMP {
    ZU___LISTENER listener;
};

static void alertableImpFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU___ALERTABLE_IMP =
    ZU___SORT_INITIALIZER( "ZU___ALERTABLE_IMP", &zu___module, alertableImpFree, nullptr, nullptr );
ZU___STDFUNCS( ZU___ALERTABLE_IMP, zu___AlertableImp )

// Creation
static ZU___ALERTABLE_IMP *alertableImpCreate( const ZU___LISTENER_TARGETS &targets )
{
    return (ZU___ALERTABLE_IMP *)zu___ListenerCreate( &zu___sort_ZU___ALERTABLE_IMP, &targets );
}
ZU___ALERTABLE_IMP *zu___AlertableImpCreate( ZU_ALERTABLE_FUNC func, ZU_OBJ *arg )
{
    return alertableImpCreate( { .func = func, .arg = arg } );
}
ZU___ALERTABLE_IMP *zu___AlertableImpCreateBarrier( ZU_BARRIER *barrier )
{
    ZU_ASSERT( barrier );
    return alertableImpCreate( { .barrier = barrier } );
}
ZU___ALERTABLE_IMP *zu___AlertableImpCreateEventQueue( ZU___EVENT_QUEUE_IMP *eq, ZU_OBJ *evt )
{
    ZU_ASSERT( eq );
    ZU_ASSERT( evt );
    return alertableImpCreate( { .eq = eq, .evt = evt } );
}
ZU___ALERTABLE_IMP *zu___AlertableImpCreateSignal( ZU_SIGNAL *sig )
{
    ZU_ASSERT( sig );
    return alertableImpCreate( { .sig = sig } );
}
ZU___ALERTABLE_IMP *zu___AlertableImpCreateAlert( ZU_ALERT *alert )
{
    ZU_ASSERT( alert );
    return alertableImpCreate( { .alert = alert } );
}
static void alertableImpFree( ZU_OBJ *thisObj )
{
    ZU___ALERTABLE_IMP *imp = zu___AlertableImpFrom( thisObj );
    ZU_ASSERT( imp );
    zu___ListenerFree( &imp->listener );
}

void zu___AlertableImpAlert( ZU___ALERTABLE_IMP *imp )
{
    ZU_ASSERT( imp );
    zu___ListenerFire( &imp->listener );
}
void zu___AlertableImpHalt( ZU___ALERTABLE_IMP *imp )
{
    ZU_ASSERT( imp );
    zu___ListenerHalt( &imp->listener );
}
