// A queue may hold a hundred thousand events, and what a change costs must not grow with them.  Objects that equal
// themselves alone stand in a table by address.  The others stand in a sorted array in pieces, of which a change
// moves one at most; such events often come and go in ascending order, so the ends are tried first, and a piece gives
// room at its front without moving anything.

#include "zu/base/zu_event_set_internal.h"

#include "zu/runtime/zu_sort.h"
#include "zu/sys/zu_mem.h"

#include <cstring>

// Identities: linear probing, without marks for what has been removed, since the events behind it move up.
static constexpr int TABLE_BITS_MIN = 5;   // 256 bytes: enough for a queue that is short all the time
static constexpr int TABLE_BITS_STEP = 2;  // by a factor of 4: most moves are those of the last step
static constexpr ZU_INT TABLE_SPARSE = 64; // slots for each event, above which the table shrinks
static constexpr uint64_t HASH_FACTOR = UINT64_C( 0x9E3779B97F4A7C15 ); // 2^64 by the golden ratio

static ZU_INT eventTableSize( const ZU___EVENT_TABLE *table )
{
    return table->slots ? (ZU_INT)1 << table->bits : 0;
}
// Returns where the search for an event begins: the upper bits of the product, which all bits of the address reach.
static ZU_INT eventTableHome( const ZU___EVENT_TABLE *table, ZU_OBJ *event )
{
    return (ZU_INT)( (uint64_t)(uintptr_t)event * HASH_FACTOR >> ( 64 - table->bits ) );
}
// Returns the slot of `event` or, if it is not there, the free one where it belongs.
static ZU_INT eventTableFind( const ZU___EVENT_TABLE *table, ZU_OBJ *event )
{
    ZU_INT mask = eventTableSize( table ) - 1;
    ZU_INT idx = eventTableHome( table, event );
    while ( table->slots[ idx ] && table->slots[ idx ] != event ) {
        idx = ( idx + 1 ) & mask;
    }
    return idx;
}
static void eventTableResize( ZU___EVENT_TABLE *table, int bits )
{
    ZU_OBJ **oldSlots = table->slots;
    ZU_INT oldSize = eventTableSize( table );
    ZU_INT size = (ZU_INT)1 << bits;
    table->slots = (ZU_OBJ **)zuMemAllocN( size, sizeof( ZU_OBJ * ) );
    table->bits = bits;
    zuMemSetN( table->slots, 0, size, sizeof( ZU_OBJ * ) );
    for ( ZU_INT i = 0; i < oldSize; i++ ) {
        if ( oldSlots[ i ] ) {
            table->slots[ eventTableFind( table, oldSlots[ i ] ) ] = oldSlots[ i ];
        }
    }
    zuMemFree( oldSlots );
}
static bool eventTableInsert( ZU___EVENT_TABLE *table, ZU_OBJ *event )
{
    if ( 2 * table->count >= eventTableSize( table ) ) {
        eventTableResize( table, table->slots ? table->bits + TABLE_BITS_STEP : TABLE_BITS_MIN );
    }
    ZU_INT idx = eventTableFind( table, event );
    if ( table->slots[ idx ] ) {
        return false;
    }
    table->slots[ idx ] = event;
    table->count++;
    return true;
}
static void eventTableRemove( ZU___EVENT_TABLE *table, ZU_OBJ *event )
{
    ZU_INT mask = eventTableSize( table ) - 1;
    ZU_INT gap = eventTableFind( table, event );
    for ( ZU_INT idx = ( gap + 1 ) & mask; table->slots[ idx ]; idx = ( idx + 1 ) & mask ) {
        // What would not be found across the gap moves into it.
        ZU_INT home = eventTableHome( table, table->slots[ idx ] );
        if ( ( ( idx - home ) & mask ) >= ( ( idx - gap ) & mask ) ) {
            table->slots[ gap ] = table->slots[ idx ];
            gap = idx;
        }
    }
    table->slots[ gap ] = nullptr;
    table->count--;
    if ( table->bits > TABLE_BITS_MIN && table->count * TABLE_SPARSE < eventTableSize( table ) ) {
        eventTableResize( table, table->bits - TABLE_BITS_STEP );
    }
}

// Values
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

// As zuObjSort, without a call for all but sorts and modules.
static inline ZU_SORT *eventSortOf( ZU_OBJ *event )
{
    return ZU___LIKELY( event->sort != nullptr ) ? event->sort : zuObjSort( event );
}
// Compares with an event of the set.  Only equality counts, so classes need not be told apart by name.
static ZU_INT eventCompare( ZU_OBJ *stored, ZU_OBJ *event )
{
    ZU_SORT *storedSort = eventSortOf( stored );
    ZU_SORT *eventSort = eventSortOf( event );
    if ( storedSort == eventSort ) {
        return stored == event ? 0 : storedSort->compareFunc( stored, event );
    }
    return (uintptr_t)storedSort > (uintptr_t)eventSort ? 1 : -1;
}

static EVENT_PLACE eventOrderFind( const ZU___EVENT_ORDER *order, ZU_OBJ *event )
{
    ZU_INT chunk = order->count - 1;
    if ( chunk < 0 || order->chunks[ chunk ]->begin == order->chunks[ chunk ]->end ) {
        return { 0, 0, false };
    }
    const ZU___EVENT_CHUNK *last = order->chunks[ chunk ];
    ZU_INT sign = eventCompare( last->events[ last->end - 1 ], event );
    if ( sign <= 0 ) {
        return { chunk, sign < 0 ? last->end : last->end - 1, sign == 0 };
    }
    const ZU___EVENT_CHUNK *first = order->chunks[ 0 ];
    sign = eventCompare( first->events[ first->begin ], event );
    if ( sign >= 0 ) {
        return { 0, first->begin, sign == 0 };
    }
    // The chunk sought begins at or below the event, and the one behind it above.
    ZU_INT lo = 0;
    for ( ZU_INT hi = order->count; hi - lo > 1; ) {
        ZU_INT mid = lo + ( hi - lo ) / 2;
        const ZU___EVENT_CHUNK *middle = order->chunks[ mid ];
        ( eventCompare( middle->events[ middle->begin ], event ) <= 0 ? lo : hi ) = mid;
    }
    const ZU___EVENT_CHUNK *home = order->chunks[ lo ];
    ZU_INT from = home->begin;
    for ( ZU_INT to = home->end; from < to; ) {
        ZU_INT mid = from + ( to - from ) / 2;
        sign = eventCompare( home->events[ mid ], event );
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

// Finds an event that is there, itself and none that equals it.  The oldest event is often the first.  An order that
// contradicts itself, as that of reals does within its tolerance, may mislead the search, which then looks everywhere.
static EVENT_PLACE eventOrderFindItself( const ZU___EVENT_ORDER *order, ZU_OBJ *event )
{
    ZU_INT begin = order->chunks[ 0 ]->begin;
    if ( order->chunks[ 0 ]->events[ begin ] == event ) {
        return { 0, begin, true };
    }
    EVENT_PLACE place = eventOrderFind( order, event );
    if ( !place.found || order->chunks[ place.chunk ]->events[ place.at ] != event ) {
        place = { 0, begin, true };
        while ( order->chunks[ place.chunk ]->events[ place.at ] != event ) {
            if ( ++place.at == order->chunks[ place.chunk ]->end ) {
                place.chunk++;
                place.at = order->chunks[ place.chunk ]->begin;
            }
        }
    }
    return place;
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
static bool eventIsValue( ZU_OBJ *event )
{
    return eventSortOf( event )->compareFunc != nullptr;
}
ZU_BOOL zu___EventSetInsert( ZU___EVENT_SET *set, ZU_OBJ *event )
{
    if ( !eventIsValue( event ) ) {
        return eventTableInsert( &set->identities, event );
    }
    EVENT_PLACE place = eventOrderFind( &set->values, event );
    if ( place.found ) {
        return ZU_FALSE;
    }
    eventOrderInsert( &set->values, place, event );
    return ZU_TRUE;
}
void zu___EventSetRemove( ZU___EVENT_SET *set, ZU_OBJ *event )
{
    if ( eventIsValue( event ) ) {
        eventOrderRemove( &set->values, eventOrderFindItself( &set->values, event ) );
    } else {
        eventTableRemove( &set->identities, event );
    }
}
void zu___EventSetFree( ZU___EVENT_SET *set )
{
    zuMemFree( set->identities.slots );
    set->identities = {};
    eventOrderFree( &set->values );
}
