// A listener calls its target under its own lock, so that its end, which takes the lock, waits for a call that is under
// way: once it has been released no call begins or goes on.  What it refers to is let go outside of the lock.
//
// A source of events has one listener nearly always, and many at times.  So a set has a slot for one, which costs two
// words, and a dict that is made for the second; the listeners in that are in the order of their unique numbers, and to
// take one off takes a bisection.

#include "zu/base/zu_listener_internal.h"

#include "zu/base/zu_alert.h"
#include "zu/base/zu_barrier.h"
#include "zu/base/zu_dict.h"
#include "zu/base/zu_event_queue_imp.h"
#include "zu/base/zu_signal.h"
#include "zu/sys/zu_lock_internal.h"

// Listeners

// Calls `change` with the address of each reference among the targets.
template <typename CHANGE>
static void listenerEachReference( ZU___LISTENER_TARGETS *targets, CHANGE change )
{
    change( &targets->arg );
    change( &targets->barrier );
    change( &targets->eq );
    change( &targets->evt );
    change( &targets->sig );
    change( &targets->alert );
}

ZU___LISTENER *zu___ListenerCreate( ZU_SORT *sort, const ZU___LISTENER_TARGETS *targets )
{
    ZU___LISTENER *listener = (ZU___LISTENER *)zu___ObjCreate( sizeof( ZU___LISTENER ), sort );
    listener->targets = *targets;
    listenerEachReference( &listener->targets, []( auto **target ) {
        if ( *target ) {
            zuObjRetain( (ZU_OBJ *)*target );
        }
    } );
    return listener;
}
void zu___ListenerFire( ZU___LISTENER *listener )
{
    zu___LockAcquireInline( &listener->obj.lock );
    const ZU___LISTENER_TARGETS *targets = &listener->targets;
    if ( targets->func ) {
        targets->func( targets->arg );
    }
    if ( targets->barrier ) {
        zuBarrierUnblock( targets->barrier );
    }
    if ( targets->eq ) {
        zu___EventQueueImpWriteEvent( targets->eq, targets->evt );
    }
    if ( targets->sig ) {
        zuSignalAssert( targets->sig );
    }
    if ( targets->alert ) {
        zuAlertSet( targets->alert );
    }
    zu___LockReleaseInline( &listener->obj.lock );
}
void zu___ListenerHalt( ZU___LISTENER *listener )
{
    zu___LockAcquireInline( &listener->obj.lock );
    ZU___LISTENER_TARGETS targets = listener->targets;
    listener->targets = {};
    zu___LockReleaseInline( &listener->obj.lock );
    // Not under the lock: the end of a target may come round to a source that fires this listener.
    listenerEachReference( &targets, []( auto **target ) { ZU_REF_RELEASE_OPT( *target ); } );
}
void zu___ListenerFree( ZU___LISTENER *listener )
{
    listenerEachReference( &listener->targets, []( auto **target ) {
        ZU_REF_RELEASE_OPT( *target );
        ZU_REF_POISON( *target );
    } );
}

// Sets
void zu___ListenerSetAddLocked( ZU___LISTENER_SET *set, ZU_OBJ *obj )
{
    if ( !set->slot ) {
        set->slot = zuObjRetain( obj );
    } else if ( set->slot != obj ) {
        if ( !set->dict ) {
            set->dict = zuDictCreate();
        }
        zuDictSetObjKey( &set->dict, obj, obj );
    }
}
void zu___ListenerSetDelLocked( ZU___LISTENER_SET *set, ZU_OBJ *obj )
{
    if ( set->slot == obj ) {
        set->slot = nullptr;
        zuObjRelease( obj );
    }
    if ( set->dict ) {
        zuDictDelObjKey( &set->dict, obj );
    }
}
ZU_BOOL zu___ListenerSetHasAnyLocked( ZU___LISTENER_SET *set )
{
    return set->slot || ( set->dict && zuDictLength( set->dict ) > 0 );
}
void zu___ListenerSetFireLocked( ZU___LISTENER_SET *set, void ( *fire )( ZU_OBJ *obj ), ZU_BOOL once )
{
    if ( set->slot ) {
        fire( set->slot );
        ZU_OBJ *fired = set->slot;
        set->slot = nullptr;
        ZU_REF_RELEASE( fired );
    }
    if ( set->dict ) {
        for ( ZU_INT idx = 0; idx < zuDictLength( set->dict ); idx++ ) {
            ZU_OBJ *obj = zuDictKeyAt( set->dict, idx );
            fire( obj );
            ZU_REF_RELEASE( obj );
        }
        zu___DictClear( &set->dict );
        if ( once ) {
            ZU_DICT *fired = set->dict;
            set->dict = nullptr;
            ZU_REF_RELEASE( fired );
        }
    }
}
void zu___ListenerSetFree( ZU___LISTENER_SET *set )
{
    ZU_REF_RELEASE_OPT( set->slot );
    ZU_REF_POISON( set->slot );
    ZU_REF_RELEASE_OPT( set->dict );
    ZU_REF_POISON( set->dict );
}
