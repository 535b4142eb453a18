// zu_event_set_internal.h: the set of the events that wait in an event queue.
//
// It tells quickly whether an equal event waits, however many do: in constant time where an object equals itself
// alone, in logarithmic time where a class has an order by value.  It holds no references: the queue does.
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

typedef struct ZU___EVENT_CHUNK ZU___EVENT_CHUNK;

// Events of classes without an order of their own, in a table by address.
typedef struct ZU___EVENT_TABLE {
    ZU_OBJ **slots; // null: free; null instead of an array: none yet
    int bits;       // there are 2 to this power
    ZU_INT count;   // slots in use, half of them at most
} ZU___EVENT_TABLE;

// The others in ascending order, in chunks of limited size that are in order too.
typedef struct ZU___EVENT_ORDER {
    ZU___EVENT_CHUNK **chunks; // none is empty, but for the only one; null: none yet
    ZU_INT count;              // chunks in use
    ZU_INT alloc;              // chunks that there is room for
} ZU___EVENT_ORDER;

typedef struct ZU___EVENT_SET {
    ZU___EVENT_TABLE identities;
    ZU___EVENT_ORDER values;
} ZU___EVENT_SET;

// Adds `event` and returns true; returns false if an equal one is there.
ZU_BOOL zu___EventSetInsert( ZU___EVENT_SET *set, ZU_OBJ *event );
// Removes `event`, which has been added.
void zu___EventSetRemove( ZU___EVENT_SET *set, ZU_OBJ *event );
// Frees the storage; the set is empty then.
void zu___EventSetFree( ZU___EVENT_SET *set );

ZU_END_DECLS
