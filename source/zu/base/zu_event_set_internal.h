// zu_event_set_internal.h: the set of the events that wait in an event queue.
//
// It tells in logarithmic time whether an equal event waits, however many do, and holds no references: the queue does.
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

typedef struct ZU___EVENT_CHUNK ZU___EVENT_CHUNK;

// Events in ascending order, in chunks of limited size that are in order too.
typedef struct ZU___EVENT_ORDER {
    ZU___EVENT_CHUNK **chunks; // none is empty, but for the only one; null: none yet
    ZU_INT count;              // chunks in use
    ZU_INT alloc;              // chunks that there is room for
} ZU___EVENT_ORDER;

typedef struct ZU___EVENT_SET {
    ZU___EVENT_ORDER identities; // events of classes without an order of their own: each equals itself alone
    ZU___EVENT_ORDER values;     // the others
} ZU___EVENT_SET;

// Adds `event` and returns true; returns false if an equal one is there.
ZU_BOOL zu___EventSetInsert( ZU___EVENT_SET *set, ZU_OBJ *event );
// Removes the event that equals `event`, if there is one.
void zu___EventSetRemove( ZU___EVENT_SET *set, ZU_OBJ *event );
// Frees the storage; the set is empty then.
void zu___EventSetFree( ZU___EVENT_SET *set );

ZU_END_DECLS
