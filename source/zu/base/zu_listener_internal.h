// zu_listener_internal.h: what the classes of listeners and of sources share.
//
// A listener that somebody owns is a shell around what the sources hold.  ZU___ALERTABLE_IMP and ZU___SIGNALABLE_IMP
// are that, and differ in nothing but their names.
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

typedef struct ZU_ALERT ZU_ALERT;
typedef struct ZU_BARRIER ZU_BARRIER;
typedef struct ZU_DICT ZU_DICT;
typedef struct ZU_SIGNAL ZU_SIGNAL;
typedef struct ZU___EVENT_QUEUE_IMP ZU___EVENT_QUEUE_IMP;

// What happens when a listener fires, in this order; null: nothing.  References are owned.
struct ZU___LISTENER_TARGETS {
    void ( *func )( ZU_OBJ *arg ) = nullptr; // called with `arg`
    ZU_OBJ *arg = nullptr;
    ZU_BARRIER *barrier = nullptr;      // opened
    ZU___EVENT_QUEUE_IMP *eq = nullptr; // written `evt`
    ZU_OBJ *evt = nullptr;
    ZU_SIGNAL *sig = nullptr;  // asserted
    ZU_ALERT *alert = nullptr; // set
};

// The layout of both classes.
typedef struct ZU___LISTENER {
    ZU_OBJ obj;                    // its lock is held while the listener fires
    ZU___LISTENER_TARGETS targets; // guarded by the lock
} ZU___LISTENER;

// Returns a new listener of the class `sort`, which adds references of its own to the targets.
ZU___LISTENER *zu___ListenerCreate( ZU_SORT *sort, const ZU___LISTENER_TARGETS *targets );
// Does what a listener is for.
void zu___ListenerFire( ZU___LISTENER *listener );
// Lets go of all targets, after which firing does nothing.  Waits for a firing that is under way.
void zu___ListenerHalt( ZU___LISTENER *listener );
// Releases what a dying listener still holds.
void zu___ListenerFree( ZU___LISTENER *listener );

// The objects of one class that a source notifies.  The first one goes into the slot, so that the ordinary source
// needs no dict; further ones go into the dict, each as a key that is its own value.  An object that stands in the
// dict gets into the slot too when it is added again while the slot is free, and is notified twice then.
//
// The source's lock guards it.
typedef struct ZU___LISTENER_SET {
    ZU_OBJ *slot;  // null: none
    ZU_DICT *dict; // null: not needed so far
} ZU___LISTENER_SET;

// Adds `obj`, unless it is in the slot.
void zu___ListenerSetAddLocked( ZU___LISTENER_SET *set, ZU_OBJ *obj );
// Removes `obj` from both places, if it is there.
void zu___ListenerSetDelLocked( ZU___LISTENER_SET *set, ZU_OBJ *obj );
// Tells whether there is anything.
ZU_BOOL zu___ListenerSetHasAnyLocked( ZU___LISTENER_SET *set );
// Calls `fire` with the object in the slot, then with those in the dict in the order of their numbers, and leaves the
// set empty.  The dict keeps its storage for the next time, unless there is none because the source fires `once`.
void zu___ListenerSetFireLocked( ZU___LISTENER_SET *set, void ( *fire )( ZU_OBJ *obj ), ZU_BOOL once );
// Releases all that is in the set of a dying source.
void zu___ListenerSetFree( ZU___LISTENER_SET *set );

ZU_END_DECLS
