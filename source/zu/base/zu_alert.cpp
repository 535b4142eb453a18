#include "zu/base/zu_alert.h"

#include "zu/base/zu_alertable.h"
#include "zu/base/zu_listener_internal.h"
#include "zu/runtime/zu_module.h"
#include "zu/sys/zu_happens_internal.h"
#include "zu/sys/zu_lock_internal.h"

// The flag goes up under the object's lock and down without; it is atomic, and full order makes it the one thing that
// all threads agree on.
struct ZU_ALERT {
    ZU_OBJ obj; // its lock guards `alertables`
    uint32_t set;
    ZU___LISTENER_SET alertables; // ZU___ALERTABLE_IMP
};

static void alertFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_ALERT = ZU___SORT_INITIALIZER( "ZU_ALERT", &zu___module, alertFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_ALERT, zuAlert )

ZU_ALERT *zuAlertCreate( void )
{
    ZU_ALERT *al = (ZU_ALERT *)zu___ObjCreate( sizeof( ZU_ALERT ), &zu___sort_ZU_ALERT );
    al->set = 0;
    al->alertables = {};
    return al;
}
static void alertFree( ZU_OBJ *thisObj )
{
    ZU_ALERT *al = zuAlertFrom( thisObj );
    ZU_ASSERT( al );
    zu___ListenerSetFree( &al->alertables );
}

ZU_BOOL zuAlertIsSet( ZU_ALERT *al )
{
    ZU_ASSERT( al );
    bool set = __atomic_load_n( &al->set, __ATOMIC_SEQ_CST ) != 0;
    ZU___HAPPENS_AFTER( &al->set );
    return set;
}
static void alertFire( ZU_OBJ *imp )
{
    zu___AlertableImpAlert( (ZU___ALERTABLE_IMP *)imp );
}
void zuAlertSet( ZU_ALERT *al )
{
    ZU_ASSERT( al );
    zu___LockAcquireInline( &al->obj.lock );
    ZU___HAPPENS_BEFORE( &al->set );
    if ( __atomic_exchange_n( &al->set, 1, __ATOMIC_SEQ_CST ) == 0 ) {
        zu___ListenerSetFireLocked( &al->alertables, alertFire, ZU_FALSE );
    }
    zu___LockReleaseInline( &al->obj.lock );
}
ZU_BOOL zuAlertUnset( ZU_ALERT *al )
{
    ZU_ASSERT( al );
    ZU___HAPPENS_BEFORE( &al->set );
    bool set = __atomic_exchange_n( &al->set, 0, __ATOMIC_SEQ_CST ) != 0;
    ZU___HAPPENS_AFTER( &al->set );
    return set;
}

void zuAlertAddAlertable( ZU_ALERT *al, ZU_ALERTABLE *alb )
{
    ZU_ASSERT( al );
    ZU_ASSERT( alb );
    ZU___ALERTABLE_IMP *imp = zu___AlertableImp( alb );
    zu___LockAcquireInline( &al->obj.lock );
    if ( zuAlertIsSet( al ) ) {
        zu___AlertableImpAlert( imp );
    } else {
        zu___ListenerSetAddLocked( &al->alertables, zu___AlertableImpObj( imp ) );
    }
    zu___LockReleaseInline( &al->obj.lock );
    ZU_REF_RELEASE( imp );
}
void zuAlertDelAlertable( ZU_ALERT *al, ZU_ALERTABLE *alb )
{
    ZU_ASSERT( al );
    ZU_ASSERT( alb );
    ZU___ALERTABLE_IMP *imp = zu___AlertableImp( alb );
    zu___LockAcquireInline( &al->obj.lock );
    zu___ListenerSetDelLocked( &al->alertables, zu___AlertableImpObj( imp ) );
    zu___LockReleaseInline( &al->obj.lock );
    ZU_REF_RELEASE( imp );
}
