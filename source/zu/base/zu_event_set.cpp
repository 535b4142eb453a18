// A sorted array in pieces: a queue may hold a hundred thousand events, and what a change moves must not grow with them.
// Events mostly come and go in the order of their making, so either end is tried first, and a piece gives room at its
// front without moving anything.
//
// Objects that are equal to themselves only are ordered by address, which takes no look at them.

#include "zu/base/zu_event_set_internal.h"

#include "zu/runtime/zu_sort.h"
#include "zu/sys/zu_mem.h"

#include <cstring>

static constexpr ZU_INT CHUNK_EVENTS = 126; // makes 1 KiB: what an insertion moves at most
static constexpr ZU_INT CHUNKS_SLACK = 16;  // beyond what is needed, when the array of chunks grows by a half

struct ZU___EVENT_CHUNK {
    ZU_INT begin; // the events are those from `begin` up to `end`
    ZU_INT end;
    ZU_OBJ *events[ CHUNK_EVENTS ];
};

// Where an event is or, if it is not there, belongs.
struct EVENT_PLACE {
    ZU_INT chunk;
    ZU_INT at;
    bool found;
};

// Moves `count` elements.
template <typename T>
static void eventMove( T *dest, const T *src, ZU_INT count )
{
    memmove( dest, src, (size_t)count * sizeof( T ) );
}

// Orders.  Only equality counts, so classes need not be told apart by name.
struct EVENT_IDENTITIES {
    static ZU_INT compare( ZU_OBJ *stored, ZU_OBJ *event )
    {
        return ( (uintptr_t)stored > (uintptr_t)event ) - ( (uintptr_t)stored < (uintptr_t)event );
    }
};
struct EVENT_VALUES {
    static ZU_INT compare( ZU_OBJ *stored, ZU_OBJ *event )
    {
        ZU_SORT *storedSort = zuObjSort( stored );
        ZU_SORT *eventSort = zuObjSort( event );
        if ( storedSort == eventSort ) {
            return stored == event ? 0 : storedSort->compareFunc( stored, event );
        }
        return (uintptr_t)storedSort > (uintptr_t)eventSort ? 1 : -1;
    }
};

// Search
template <typename ORDER>
static EVENT_PLACE eventOrderFind( const ZU___EVENT_ORDER *order, ZU_OBJ *event )
{
    ZU_INT chunk = order->count - 1;
    if ( chunk < 0 || order->chunks[ chunk ]->begin == order->chunks[ chunk ]->end ) {
        return { 0, 0, false };
    }
    const ZU___EVENT_CHUNK *last = order->chunks[ chunk ];
    ZU_INT sign = ORDER::compare( last->events[ last->end - 1 ], event );
    if ( sign <= 0 ) {
        return { chunk, sign < 0 ? last->end : last->end - 1, sign == 0 };
    }
    const ZU___EVENT_CHUNK *first = order->chunks[ 0 ];
    sign = ORDER::compare( first->events[ first->begin ], event );
    if ( sign >= 0 ) {
        return { 0, first->begin, sign == 0 };
    }
    // The chunk sought begins at or below the event, and the one behind it above.
    ZU_INT lo = 0;
    for ( ZU_INT hi = order->count; hi - lo > 1; ) {
        ZU_INT mid = lo + ( hi - lo ) / 2;
        const ZU___EVENT_CHUNK *middle = order->chunks[ mid ];
        ( ORDER::compare( middle->events[ middle->begin ], event ) <= 0 ? lo : hi ) = mid;
    }
    const ZU___EVENT_CHUNK *home = order->chunks[ lo ];
    ZU_INT from = home->begin;
    for ( ZU_INT to = home->end; from < to; ) {
        ZU_INT mid = from + ( to - from ) / 2;
        sign = ORDER::compare( home->events[ mid ], event );
        if ( sign == 0 ) {
            return { lo, mid, true };
        }
        if ( sign < 0 ) {
            from = mid + 1;
        } else {
            to = mid;
        }
    }
    return { lo, from, false };
}

// Changes

// Puts a new, empty chunk at `idx`.
static ZU___EVENT_CHUNK *eventOrderAddChunk( ZU___EVENT_ORDER *order, ZU_INT idx )
{
    if ( order->count == order->alloc ) {
        order->alloc += order->alloc / 2 + CHUNKS_SLACK;
        order->chunks = (ZU___EVENT_CHUNK **)zuMemReallocN( order->chunks, order->alloc, sizeof( ZU___EVENT_CHUNK * ) );
    }
    ZU___EVENT_CHUNK *chunk = (ZU___EVENT_CHUNK *)zuMemAlloc( sizeof( ZU___EVENT_CHUNK ) );
    chunk->begin = 0;
    chunk->end = 0;
    eventMove( order->chunks + idx + 1, order->chunks + idx, order->count - idx );
    order->chunks[ idx ] = chunk;
    order->count++;
    return chunk;
}
static void eventOrderDelChunk( ZU___EVENT_ORDER *order, ZU_INT idx )
{
    zuMemFree( order->chunks[ idx ] );
    order->count--;
    eventMove( order->chunks + idx, order->chunks + idx + 1, order->count - idx );
}

static void eventOrderInsert( ZU___EVENT_ORDER *order, EVENT_PLACE place, ZU_OBJ *event )
{
    ZU___EVENT_CHUNK *chunk = order->count == 0 ? eventOrderAddChunk( order, 0 ) : order->chunks[ place.chunk ];
    if ( chunk->begin == 0 && chunk->end == CHUNK_EVENTS ) {
        // At the very end there will be more of that kind: nothing moves over, and chunks get full.
        bool atEnd = place.chunk == order->count - 1 && place.at == chunk->end;
        ZU_INT keep = atEnd ? CHUNK_EVENTS : CHUNK_EVENTS / 2;
        ZU___EVENT_CHUNK *next = eventOrderAddChunk( order, place.chunk + 1 );
        next->end = CHUNK_EVENTS - keep;
        eventMove( next->events, chunk->events + keep, next->end );
        chunk->end = keep;
        if ( atEnd || place.at > keep ) {
            place.at -= keep;
            chunk = next;
        }
    }
    if ( chunk->end < CHUNK_EVENTS ) {
        eventMove( chunk->events + place.at + 1, chunk->events + place.at, chunk->end - place.at );
        chunk->end++;
    } else {
        eventMove( chunk->events + chunk->begin - 1, chunk->events + chunk->begin, place.at - chunk->begin );
        chunk->begin--;
        place.at--;
    }
    chunk->events[ place.at ] = event;
}

static void eventOrderRemove( ZU___EVENT_ORDER *order, EVENT_PLACE place )
{
    ZU___EVENT_CHUNK *chunk = order->chunks[ place.chunk ];
    if ( place.at == chunk->begin ) {
        chunk->begin++;
    } else {
        eventMove( chunk->events + place.at, chunk->events + place.at + 1, chunk->end - place.at - 1 );
        chunk->end--;
    }
    if ( chunk->begin < chunk->end ) {
        return;
    }
    if ( order->count > 1 ) {
        eventOrderDelChunk( order, place.chunk );
    } else {
        chunk->begin = 0; // the only one stays, for a queue that is short all the time
        chunk->end = 0;
    }
}

static void eventOrderFree( ZU___EVENT_ORDER *order )
{
    for ( ZU_INT idx = 0; idx < order->count; idx++ ) {
        zuMemFree( order->chunks[ idx ] );
    }
    zuMemFree( order->chunks );
    *order = {};
}

// The set
static ZU___EVENT_ORDER *eventSetFind( ZU___EVENT_SET *set, ZU_OBJ *event, EVENT_PLACE *place )
{
    if ( zuObjSort( event )->compareFunc ) {
        *place = eventOrderFind<EVENT_VALUES>( &set->values, event );
        return &set->values;
    }
    *place = eventOrderFind<EVENT_IDENTITIES>( &set->identities, event );
    return &set->identities;
}
ZU_BOOL zu___EventSetInsert( ZU___EVENT_SET *set, ZU_OBJ *event )
{
    EVENT_PLACE place;
    ZU___EVENT_ORDER *order = eventSetFind( set, event, &place );
    if ( place.found ) {
        return ZU_FALSE;
    }
    eventOrderInsert( order, place, event );
    return ZU_TRUE;
}
void zu___EventSetRemove( ZU___EVENT_SET *set, ZU_OBJ *event )
{
    EVENT_PLACE place;
    ZU___EVENT_ORDER *order = eventSetFind( set, event, &place );
    if ( place.found ) {
        eventOrderRemove( order, place );
    }
}
void zu___EventSetFree( ZU___EVENT_SET *set )
{
    eventOrderFree( &set->identities );
    eventOrderFree( &set->values );
}
