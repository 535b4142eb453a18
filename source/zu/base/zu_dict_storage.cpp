// An array is bad at insertion and deletion ahead of many pairs.  Where a single pair would make thousands move, it is cut
// into rings of one size, all full but the last.  There an insertion moves pairs within one ring and one pair of each ring
// behind it, which just becomes the first of the next, about the root of the length instead of half of it.  A position
// still tells where its pair is, without a search, so that rings look like an array to all but the few functions that move
// pairs.  At 100,000 keys an insertion takes a ninth of the time, most of it for the search; at 640,000 moving takes as
// long as the search, and grows with the root of the length from there on.

#include "zu/base/zu_dict_storage_internal.h"
#include "zu/runtime/zu_obj_internal.h"
#include "zu/sys/zu_mem.h"

static constexpr ZU_INT INLINE_PAIRS = ZU___DICT_INLINE_PAIRS;
static constexpr ZU_INT SLACK = 32;                   // pairs that new storage has room for beyond what is asked
static constexpr ZU_INT SLACK_MAX = 2 * INLINE_PAIRS; // that a deletion leaves
static constexpr ZU_INT ARRAY_MOVES = 1024;           // pairs; moving more than that for a single one brings rings
static constexpr ZU_INT RING_SHIFT = 9;               // of new rings

static inline void dictMovePairs( ZU___DICT_PAIR *dest, const ZU___DICT_PAIR *src, ZU_INT count )
{
    if ( count > 0 && dest != src ) {
        memmove( dest, src, (size_t)count * sizeof( ZU___DICT_PAIR ) );
    }
}

ZU_INT zu___DictGrownAlloc( ZU_INT alloc, ZU_INT length )
{
    if ( length <= alloc ) {
        return alloc;
    }
    return ZU_INT_ADD_OK( length, SLACK ) ? length + SLACK : length;
}

// Returns the size of the block behind a capacity of `alloc` pairs: the same rounded up, by a quarter of it at most.
// The capacity rises by a constant, and a block that rose with it would be copied once for every few pairs.
static ZU_INT dictBlockPairs( ZU_INT alloc )
{
    ZU_INT step = (ZU_INT)1 << ( zuIntBitHighest( alloc ) - 2 );
    return ZU_INT_ADD_OK( alloc, step - 1 ) ? ( alloc + step - 1 ) / step * step : alloc;
}

void zu___DictCopyAll( ZU___DICT_PAIR *dest, const ZU_DICT *dict )
{
    if ( dict->items ) {
        zu___DictCopyPairs( dest, dict->items, dict->length );
        return;
    }
    ZU_INT size = zu___DictRingSize( dict );
    for ( ZU_INT idx = 0; idx < dict->length; ) {
        const ZU___DICT_PAIR *from = zu___DictPair( dict, idx );
        ZU_INT toEnd = size - ( from - dict->rings.items[ idx / size ].pairs );
        ZU_INT count = zuIntMin( zuIntMin( toEnd, size - idx % size ), dict->length - idx );
        zu___DictCopyPairs( dest + idx, from, count );
        idx += count;
    }
}
void zu___DictFreeStorage( ZU_DICT *dict )
{
    if ( !dict->items ) {
        for ( ZU_INT i = 0; i < dict->rings.count; i++ ) {
            zuMemFree( dict->rings.items[ i ].pairs );
        }
        zuMemFree( dict->rings.items );
    } else if ( dict->items != dict->inlineItems ) {
        zuMemFree( dict->items );
    }
}

void zu___DictFlatten( ZU_DICT *dict )
{
    if ( !dict->items ) {
        ZU___DICT_PAIR *items =
            (ZU___DICT_PAIR *)zuMemAllocN( dictBlockPairs( dict->alloc ), sizeof( ZU___DICT_PAIR ) );
        zu___DictCopyAll( items, dict );
        zu___DictFreeStorage( dict );
        dict->items = items;
    }
}

static void dictAddRing( ZU___DICT_RINGS *rings )
{
    if ( rings->count == rings->alloc ) {
        rings->alloc = 2 * rings->alloc + 8;
        rings->items = (ZU___DICT_RING *)zuMemReallocN( rings->items, rings->alloc, sizeof( ZU___DICT_RING ) );
    }
    ZU_INT size = (ZU_INT)1 << rings->shift;
    rings->items[ rings->count++ ] = { (ZU___DICT_PAIR *)zuMemAllocN( size, sizeof( ZU___DICT_PAIR ) ), 0 };
}
void zu___DictSpread( ZU_DICT *dict, ZU_INT shift )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( ZU_REF_RETAIN_COUNT( dict ) == 1 );
    ZU_ASSERT( dict->alloc > INLINE_PAIRS );
    zu___DictFlatten( dict );
    ZU___DICT_RINGS rings = { nullptr, 0, 0, shift };
    ZU_INT size = (ZU_INT)1 << shift;
    for ( ZU_INT idx = 0; idx < dict->alloc; idx += size ) { // what has been reserved stays so
        dictAddRing( &rings );
        zu___DictCopyPairs( rings.items[ idx >> shift ].pairs, dict->items + idx,
                            zuIntMin( size, dict->length - idx ) );
    }
    zu___DictFreeStorage( dict );
    dict->rings = rings;
    dict->items = nullptr;
}
// Tells whether there would be too many rings of this size: passing one by takes as long as moving 16 pairs.
static inline bool dictRingsAreSmall( const ZU_DICT *dict, ZU_INT shift )
{
    return ( dict->alloc >> shift ) * 16 >= (ZU_INT)1 << shift;
}
static void dictSpreadFrom( ZU_DICT *dict, ZU_INT shift )
{
    while ( dictRingsAreSmall( dict, shift ) ) {
        shift++;
    }
    zu___DictSpread( dict, shift );
}
void zu___DictRoomInRings( ZU_DICT *dict, ZU_INT length )
{
    if ( dict->rings.count << dict->rings.shift < length && dictRingsAreSmall( dict, dict->rings.shift ) ) {
        dictSpreadFrom( dict, dict->rings.shift );
    }
    while ( dict->rings.count << dict->rings.shift < length ) {
        dictAddRing( &dict->rings );
    }
}

void zu___DictGrow( ZU_DICT *dict, ZU_INT alloc )
{
    ZU_INT blockPairs = dictBlockPairs( alloc );
    if ( dict->items == dict->inlineItems ) {
        dict->items = (ZU___DICT_PAIR *)zuMemAllocN( blockPairs, sizeof( ZU___DICT_PAIR ) );
        zu___DictCopyPairs( dict->items, dict->inlineItems, dict->length );
    } else if ( dict->items && blockPairs > dictBlockPairs( dict->alloc ) ) {
        dict->items = (ZU___DICT_PAIR *)zuMemReallocN( dict->items, blockPairs, sizeof( ZU___DICT_PAIR ) );
    }
    dict->alloc = alloc;
    zu___ObjDbgSetAllocationSizeN( &dict->obj, alloc, sizeof( ZU___DICT_PAIR ) );
}

// Moves the `count` pairs from slot `from` on by one slot up or down.  Slots are those of a ring of `size`.
static void dictSlotsUp( ZU___DICT_PAIR *pairs, ZU_INT size, ZU_INT from, ZU_INT count )
{
    from &= size - 1;
    ZU_INT behindEnd = from + count - size; // of those that move, how many stand ahead of `from`
    if ( behindEnd >= 0 ) {
        dictMovePairs( pairs + 1, pairs, behindEnd );
        pairs[ 0 ] = pairs[ size - 1 ];
        count = size - 1 - from;
    }
    dictMovePairs( pairs + from + 1, pairs + from, count );
}
static void dictSlotsDown( ZU___DICT_PAIR *pairs, ZU_INT size, ZU_INT from, ZU_INT count )
{
    from &= size - 1;
    ZU_INT toEnd = zuIntMin( count, size - from );
    if ( from > 0 ) {
        dictMovePairs( pairs + from - 1, pairs + from, toEnd );
        count -= toEnd;
    }
    if ( count > 0 ) {
        pairs[ size - 1 ] = pairs[ 0 ];
        dictMovePairs( pairs, pairs + 1, count - 1 );
    }
}
// In a ring that holds `used` pairs with the gap, moves the gap from `gap` ahead to `to`, or behind to it.  Where many
// pairs stand between, those on either side move the other way, and the first slot with all.
static void dictGapAhead( ZU___DICT_RING *ring, ZU_INT size, ZU_INT used, ZU_INT gap, ZU_INT to )
{
    if ( gap - to <= to + used - 1 - gap ) {
        dictSlotsUp( ring->pairs, size, ring->first + to, gap - to );
        return;
    }
    ring->first = ( ring->first - 1 ) & ( size - 1 );
    dictSlotsDown( ring->pairs, size, ring->first + gap + 2, used - 1 - gap );
    dictSlotsDown( ring->pairs, size, ring->first + 1, to );
}
static void dictGapBehind( ZU___DICT_RING *ring, ZU_INT size, ZU_INT used, ZU_INT gap, ZU_INT to )
{
    if ( to - gap <= gap + used - 1 - to ) {
        dictSlotsDown( ring->pairs, size, ring->first + gap + 1, to - gap );
        return;
    }
    dictSlotsUp( ring->pairs, size, ring->first, gap );
    dictSlotsUp( ring->pairs, size, ring->first + to + 1, used - 1 - to );
    ring->first = ( ring->first + 1 ) & ( size - 1 );
}

// Moves a gap of one pair: those between `gap` and `to` move over it.  All positions below `used`, the gap among them,
// are in use.
static void dictMoveGap( ZU_DICT *dict, ZU_INT used, ZU_INT gap, ZU_INT to )
{
    if ( dict->items ) {
        ZU___DICT_PAIR *items = dict->items;
        if ( to < gap ) {
            dictMovePairs( items + to + 1, items + to, gap - to );
        } else {
            dictMovePairs( items + gap, items + gap + 1, to - gap );
        }
        return;
    }
    ZU_ASSERT( dict->rings.items );
    const ZU_INT size = zu___DictRingSize( dict );
    const ZU_INT mask = size - 1;
    ZU_INT at = gap >> dict->rings.shift;
    const ZU_INT last = to >> dict->rings.shift;
    ZU___DICT_RING *ring = dict->rings.items + at;
    gap &= mask;
    to &= mask;
    if ( at > last ) {
        dictGapAhead( ring, size, std::min( size, used - at * size ), gap, 0 );
        for ( ; at > last; at--, ring-- ) { // a ring that is passed moves its last slot ahead of all
            ring[ 0 ].pairs[ ring[ 0 ].first ] = ring[ -1 ].pairs[ ( ring[ -1 ].first - 1 ) & mask ];
            ring[ -1 ].first = ( ring[ -1 ].first - 1 ) & mask;
        }
        ring->first = ( ring->first + 1 ) & mask;
        gap = mask;
    } else if ( at < last ) {
        dictGapBehind( ring, size, size, gap, mask );
        for ( ; at < last; at++, ring++ ) {
            ring[ 0 ].pairs[ ( ring[ 0 ].first - 1 ) & mask ] = ring[ 1 ].pairs[ ring[ 1 ].first ];
            ring[ 1 ].first = ( ring[ 1 ].first + 1 ) & mask;
        }
        ring->first = ( ring->first - 1 ) & mask;
        gap = 0;
    }
    if ( to < gap ) {
        dictGapAhead( ring, size, std::min( size, used - at * size ), gap, to );
    } else {
        dictGapBehind( ring, size, std::min( size, used - at * size ), gap, to );
    }
}
// Ahead of moving `count` pairs for one that comes, goes or moves.
static void dictPrepareMove( ZU_DICT *dict, ZU_INT count )
{
    if ( count > ARRAY_MOVES && dict->items ) {
        dictSpreadFrom( dict, RING_SHIFT );
    }
}

ZU___DICT_PAIR *zu___DictMakeRoom( ZU_DICT *dict, ZU_INT atIndex, ZU_INT count )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( ZU_REF_RETAIN_COUNT( dict ) == 1 );
    ZU_ASSERT( atIndex >= 0 );
    ZU_ASSERT( atIndex <= dict->length );
    ZU_ASSERT( count >= 0 );
    if ( count == 0 ) {
        return nullptr;
    }
    ZU_ASSERT( ZU_INT_ADD_OK( dict->length, count ) );
    ZU_INT alloc = zu___DictGrownAlloc( dict->alloc, dict->length + count );
    if ( alloc > dict->alloc ) {
        zu___DictGrow( dict, alloc );
    }
    ZU_ASSERT( dict->length + count <= dict->alloc );
    if ( count > 1 ) {
        zu___DictFlatten( dict );
        dictMovePairs( dict->items + atIndex + count, dict->items + atIndex, dict->length - atIndex );
    } else {
        dictPrepareMove( dict, dict->length - atIndex );
        if ( !dict->items ) {
            zu___DictRoomInRings( dict, dict->length + 1 );
        }
        dictMoveGap( dict, dict->length + 1, dict->length, atIndex );
    }
    dict->length += count;
    return zu___DictPair( dict, atIndex );
}
void zu___DictMovePair( ZU_DICT *dict, ZU_INT from, ZU_INT to )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( ZU_REF_RETAIN_COUNT( dict ) == 1 );
    dictPrepareMove( dict, zuIntMax( from, to ) - zuIntMin( from, to ) );
    ZU___DICT_PAIR pair = *zu___DictPair( dict, from );
    dictMoveGap( dict, dict->length, from, to );
    *zu___DictPair( dict, to ) = pair;
}
void zu___DictMove( ZU_DICT *dict, ZU_INT dest, ZU_INT src, ZU_INT count )
{
    if ( dict->items ) {
        dictMovePairs( dict->items + dest, dict->items + src, count );
    } else if ( dest < src ) {
        for ( ZU_INT i = 0; i < count; i++ ) {
            *zu___DictPair( dict, dest + i ) = *zu___DictPair( dict, src + i );
        }
    } else if ( dest > src ) {
        for ( ZU_INT i = count - 1; i >= 0; i-- ) {
            *zu___DictPair( dict, dest + i ) = *zu___DictPair( dict, src + i );
        }
    }
}

ZU_INT zu___DictCompactAlloc( ZU_INT alloc, ZU_INT length )
{
    if ( alloc - length <= SLACK_MAX ) {
        return alloc;
    }
    return zuIntMax( length, INLINE_PAIRS );
}

void zu___DictShrink( ZU_DICT *dict, ZU_INT alloc )
{
    if ( alloc == dict->alloc ) {
        return;
    }
    dict->alloc = alloc;
    if ( !dict->items ) {
        if ( alloc > ARRAY_MOVES ) {
            while ( dict->rings.count > ( dict->length >> dict->rings.shift ) + 1 ) {
                zuMemFree( dict->rings.items[ --dict->rings.count ].pairs );
            }
            zu___ObjDbgSetAllocationSizeN( &dict->obj, alloc, sizeof( ZU___DICT_PAIR ) );
            return;
        }
        zu___DictFlatten( dict );
    }
    if ( alloc == INLINE_PAIRS ) {
        zu___DictCopyPairs( dict->inlineItems, dict->items, dict->length );
        zuMemFree( dict->items );
        dict->items = dict->inlineItems;
        zu___ObjDbgSetAllocationSize( &dict->obj, 0 );
    } else {
        dict->items = (ZU___DICT_PAIR *)zuMemReallocN( dict->items, dictBlockPairs( alloc ), sizeof( ZU___DICT_PAIR ) );
        zu___ObjDbgSetAllocationSizeN( &dict->obj, alloc, sizeof( ZU___DICT_PAIR ) );
    }
}

void zu___DictCompact( ZU_DICT *dict )
{
    ZU_ASSERT( dict );
    zu___DictShrink( dict, zu___DictCompactAlloc( dict->alloc, dict->length ) );
}

void zu___DictReserve( ZU_DICT **dict, ZU_INT count )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    ZU_ASSERT( ZU_INT_ADD_OK( ( *dict )->length, count ) );
    zu___DictUnshare( dict );
    ZU_DICT *own = *dict;
    const ZU_INT alloc = zu___DictGrownAlloc( own->alloc, own->length + count );
    if ( alloc > own->alloc ) {
        zu___DictGrow( own, alloc );
    }
    if ( !own->items ) {
        zu___DictRoomInRings( own, own->length + count );
    }
}
