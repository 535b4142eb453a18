// A sorted array of pairs, searched by bisection: a pair takes 16 bytes, and nothing beside the object while there are
// few; keys need an order but no hash; walking in order is walking an array.
//
// What an array is bad at is insertion and deletion ahead of many pairs.  Whatever takes many pairs at once sorts or
// merges them and moves each once; and where a single pair would make thousands move, the array is cut into rings of
// one size, all full but the last.  There an insertion moves pairs within one ring and one pair of each ring behind it,
// which just becomes the first of the next, about the root of the length instead of half of it.  A position still tells
// where its pair is, without a search, so that rings look like an array to all but the few functions that move pairs.
// At 100,000 keys an insertion takes a ninth of the time, most of it for the search; at 640,000 moving takes as long as
// the search, and grows with the root of the length from there on.
//
// The storage that a run of single calls would leave is part of the contract, so operations on whole dicts compute it
// without going through it.

#include "zu/base/zu_dict_internal.h"

#include "zu/base/zu_boxed_bool.h"
#include "zu/base/zu_boxed_int.h"
#include "zu/base/zu_boxed_null.h"
#include "zu/base/zu_boxed_real.h"
#include "zu/base/zu_nested_internal.h"
#include "zu/base/zu_string_internal.h"
#include "zu/base/zu_vector.h"
#include "zu/runtime/zu_module.h"
#include "zu/runtime/zu_obj_internal.h"
#include "zu/runtime/zu_ref_internal.h"
#include "zu/sys/zu_happens_internal.h"
#include "zu/sys/zu_mem.h"
#include "zu/sys/zu_real.h"

#include <algorithm>
#include <cstring>
#include <utility>

static constexpr ZU_INT INLINE_PAIRS = ZU___DICT_INLINE_PAIRS;
static constexpr ZU_INT SLACK = 32;                   // pairs that new storage has room for beyond what is asked
static constexpr ZU_INT SLACK_MAX = 2 * INLINE_PAIRS; // that a deletion leaves
static constexpr ZU_INT ARRAY_MOVES = 1024;           // pairs; moving more than that for a single one brings rings
static constexpr ZU_INT RING_SHIFT = 9;               // of new rings

static ZU_DICT *emptyDict = nullptr; // shared by everybody who holds an empty dict

static void dictFree( ZU_OBJ *thisObj );
static ZU_INT dictCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj );
static ZU_STRING *dictToString( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_DICT =
    ZU___SORT_INITIALIZER( "ZU_DICT", &zu___module, dictFree, dictCompare, dictToString );
ZU___STDFUNCS( ZU_DICT, zuDict )

// Start-up
void zu___DictStartup( void )
{
    emptyDict = nullptr;
    emptyDict = zu___DictCreateEmpty();
}
void zu___DictShutdown( void )
{
    ZU_REF_RELEASE( emptyDict );
    ZU_REF_POISON( emptyDict );
}

// Pairs
static inline ZU_INT dictRingSize( const ZU_DICT *dict )
{
    return (ZU_INT)1 << dict->rings.shift;
}
static inline void dictCopyPairs( ZU___DICT_PAIR *dest, const ZU___DICT_PAIR *src, ZU_INT count )
{
    if ( count > 0 ) {
        memcpy( dest, src, (size_t)count * sizeof( ZU___DICT_PAIR ) );
    }
}
static inline void dictMovePairs( ZU___DICT_PAIR *dest, const ZU___DICT_PAIR *src, ZU_INT count )
{
    if ( count > 0 && dest != src ) {
        memmove( dest, src, (size_t)count * sizeof( ZU___DICT_PAIR ) );
    }
}
static inline void dictReleasePair( ZU___DICT_PAIR pair )
{
    ZU_REF_RELEASE( pair.key );
    ZU_REF_RELEASE( pair.val );
}
// Takes the references of a pair out of its dict.
static inline void dictTakePair( zu___Taken *taken, ZU___DICT_PAIR pair )
{
    taken->add( pair.key );
    taken->add( pair.val );
}

// Notes the sort of a key that comes in.
static inline void dictNoteKey( ZU_DICT *dict, bool isFirst, ZU_OBJ *key )
{
    if ( isFirst ) {
        dict->keySort = key->sort;
    } else if ( dict->keySort != key->sort ) {
        dict->keySort = nullptr;
    }
}

// Storage

// Returns the room that a dict with `alloc` takes to hold `length` pairs.
static ZU_INT dictGrownAlloc( ZU_INT alloc, ZU_INT length )
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

// Copies all pairs of a dict to `dest`.
static void dictCopyAll( ZU___DICT_PAIR *dest, const ZU_DICT *dict )
{
    if ( dict->items ) {
        dictCopyPairs( dest, dict->items, dict->length );
        return;
    }
    ZU_INT size = dictRingSize( dict );
    for ( ZU_INT idx = 0; idx < dict->length; ) {
        const ZU___DICT_PAIR *from = zu___DictPair( dict, idx );
        ZU_INT toEnd = size - ( from - dict->rings.items[ idx / size ].pairs );
        ZU_INT count = zuIntMin( zuIntMin( toEnd, size - idx % size ), dict->length - idx );
        dictCopyPairs( dest + idx, from, count );
        idx += count;
    }
}
// Frees the storage beside the object, not the pairs.
static void dictFreeStorage( ZU_DICT *dict )
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

// Brings the pairs of a dict in rings back into an array.
static void dictFlatten( ZU_DICT *dict )
{
    if ( !dict->items ) {
        ZU___DICT_PAIR *items =
            (ZU___DICT_PAIR *)zuMemAllocN( dictBlockPairs( dict->alloc ), sizeof( ZU___DICT_PAIR ) );
        dictCopyAll( items, dict );
        dictFreeStorage( dict );
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
    dictFlatten( dict );
    ZU___DICT_RINGS rings = { nullptr, 0, 0, shift };
    ZU_INT size = (ZU_INT)1 << shift;
    for ( ZU_INT idx = 0; idx < dict->alloc; idx += size ) { // what has been reserved stays so
        dictAddRing( &rings );
        dictCopyPairs( rings.items[ idx >> shift ].pairs, dict->items + idx, zuIntMin( size, dict->length - idx ) );
    }
    dictFreeStorage( dict );
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
// Sees to it that there are rings for `length` pairs.
static void dictRoomInRings( ZU_DICT *dict, ZU_INT length )
{
    if ( dict->rings.count << dict->rings.shift < length && dictRingsAreSmall( dict, dict->rings.shift ) ) {
        dictSpreadFrom( dict, dict->rings.shift );
    }
    while ( dict->rings.count << dict->rings.shift < length ) {
        dictAddRing( &dict->rings );
    }
}

// Gives a dict storage of `alloc` pairs, more than it has.
static void dictGrow( ZU_DICT *dict, ZU_INT alloc )
{
    ZU_INT blockPairs = dictBlockPairs( alloc );
    if ( dict->items == dict->inlineItems ) {
        dict->items = (ZU___DICT_PAIR *)zuMemAllocN( blockPairs, sizeof( ZU___DICT_PAIR ) );
        dictCopyPairs( dict->items, dict->inlineItems, dict->length );
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
    const ZU_INT size = dictRingSize( dict );
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
    ZU_INT alloc = dictGrownAlloc( dict->alloc, dict->length + count );
    if ( alloc > dict->alloc ) {
        dictGrow( dict, alloc );
    }
    ZU_ASSERT( dict->length + count <= dict->alloc );
    if ( count > 1 ) {
        dictFlatten( dict );
        dictMovePairs( dict->items + atIndex + count, dict->items + atIndex, dict->length - atIndex );
    } else {
        dictPrepareMove( dict, dict->length - atIndex );
        if ( !dict->items ) {
            dictRoomInRings( dict, dict->length + 1 );
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
// Moves `count` pairs of a dict, ahead or behind, over what they need not keep.
static void dictMove( ZU_DICT *dict, ZU_INT dest, ZU_INT src, ZU_INT count )
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

// Returns the room that compacting leaves.  A dict that keeps its pairs in the object is always within the bound.
static ZU_INT dictCompactAlloc( ZU_INT alloc, ZU_INT length )
{
    if ( alloc - length <= SLACK_MAX ) {
        return alloc;
    }
    return zuIntMax( length, INLINE_PAIRS );
}

// Gives a dict storage of `alloc` pairs, no more than it has.
static void dictShrink( ZU_DICT *dict, ZU_INT alloc )
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
        dictFlatten( dict );
    }
    if ( alloc == INLINE_PAIRS ) {
        dictCopyPairs( dict->inlineItems, dict->items, dict->length );
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
    dictShrink( dict, dictCompactAlloc( dict->alloc, dict->length ) );
}

// Replaces a shared dict by a private copy.
static void dictUnshare( ZU_DICT **dict )
{
    if ( ZU_REF_RETAIN_COUNT( *dict ) > 1 ) {
        ZU_DICT *old = *dict;
        *dict = zuDictCreateFrom( old );
        ZU_REF_RELEASE( old );
    }
}

void zu___DictReserve( ZU_DICT **dict, ZU_INT count )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    ZU_ASSERT( ZU_INT_ADD_OK( ( *dict )->length, count ) );
    dictUnshare( dict );
    ZU_DICT *own = *dict;
    const ZU_INT alloc = dictGrownAlloc( own->alloc, own->length + count );
    if ( alloc > own->alloc ) {
        dictGrow( own, alloc );
    }
    if ( !own->items ) {
        dictRoomInRings( own, own->length + count );
    }
}

// Standard functions
static void dictFree( ZU_OBJ *thisObj )
{
    ZU_DICT *dict = zuDictFrom( thisObj );
    ZU_ASSERT( dict );
    // What is held lies anywhere in memory, and is fetched ahead: that saves a quarter of what it takes to fill a store
    // with 10,000 settings in any order and to release it.
    static constexpr ZU_INT AHEAD = 8;
    for ( ZU_INT i = 0; i < dict->length; i++ ) {
        if ( i + AHEAD < dict->length ) {
            ZU___DICT_PAIR ahead = *zu___DictPair( dict, i + AHEAD );
            __builtin_prefetch( &ahead.key->retainCount, 1 );
            __builtin_prefetch( &ahead.val->retainCount, 1 );
        }
        dictReleasePair( *zu___DictPair( dict, i ) );
    }
    if ( dict->items != dict->inlineItems ) {
        dictFreeStorage( dict );
        zu___ObjDbgSetAllocationSize( thisObj, 0 );
    }
    ZU_REF_POISON( dict->items );
}
static ZU_INT dictCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    ZU_DICT *dictA = zuDictFrom( thisObj );
    ZU_DICT *dictB = zuDictFrom( thatObj );
    ZU_ASSERT( dictA );
    ZU_ASSERT( dictB );
    return zu___NestedCompare( thisObj, thatObj );
}
static ZU_STRING *dictToString( ZU_OBJ *thisObj )
{
    ZU_DICT *dict = zuDictFrom( thisObj );
    ZU_ASSERT( dict );
    return zu___NestedToString( thisObj );
}

// Creation
ZU_DICT *zu___DictCreateEmpty( void )
{
    ZU_DICT *dict = (ZU_DICT *)zu___ObjCreate( sizeof( ZU_DICT ), &zu___sort_ZU_DICT );
    dict->alloc = INLINE_PAIRS;
    dict->length = 0;
    dict->items = dict->inlineItems;
    dict->keySort = nullptr;
    dict->walk = 0;
    return dict;
}
ZU_DICT *zuDictCreate( void )
{
    return emptyDict ? zuDictRetain( emptyDict ) : nullptr;
}
ZU_DICT *zuDictCreateFrom( ZU_DICT *src )
{
    ZU_ASSERT( src );
    ZU_DICT *dict = zu___DictCreateEmpty();
    ZU___DICT_PAIR *gap = zu___DictMakeRoom( dict, 0, src->length );
    dictCopyAll( gap, src );
    for ( ZU_INT i = 0; i < src->length; i++ ) {
        zuObjRetain( gap[ i ].key );
        zuObjRetain( gap[ i ].val );
    }
    dict->keySort = src->keySort;
    return dict;
}

// Fetches what comparing a string from element `from` on needs; of an object of another class, what is near it.
static inline void dictPrefetchText( ZU_OBJ *key, ZU_INT from )
{
    __builtin_prefetch( &( (ZU_STRING *)key )->length );
    __builtin_prefetch( &( (ZU_STRING *)key )->inlineChars[ std::min( from, ZU___STRING_INLINE_CHARS - 1 ) ] );
}
static inline void dictPrefetchKey( ZU_OBJ *key )
{
    __builtin_prefetch( key );
    dictPrefetchText( key, 8 );
}

// As zuObjCompare; strings, the most usual keys, without a call.
static inline ZU_INT dictOrderKeys( ZU_OBJ *keyA, ZU_OBJ *keyB )
{
    if ( keyA->sort == &zu___sort_ZU_STRING && keyB->sort == &zu___sort_ZU_STRING ) {
        ZU_STRING *zusA = (ZU_STRING *)keyA;
        ZU_STRING *zusB = (ZU_STRING *)keyB;
        return zu___StringCompareChars( zusA->chars + zusA->fspace, zusA->length, zusB->chars + zusB->fspace,
                                        zusB->length );
    }
    return zu___ObjCompareInline( keyA, keyB );
}

// Merges `left` and `right`, each in order, into `dest`.  Of equal keys those of `left` come first.
static void dictMergePairs( ZU___DICT_PAIR *dest, const ZU___DICT_PAIR *left, ZU_INT leftCount,
                            const ZU___DICT_PAIR *right, ZU_INT rightCount )
{
    // Keys in any order lie anywhere in memory: fetched ahead, 200,000 of them take 180 ms in place of 440.
    static constexpr ZU_INT AHEAD = 4;
    while ( leftCount > 0 && rightCount > 0 ) {
        if ( dictOrderKeys( left->key, right->key ) <= 0 ) {
            dictPrefetchKey( left[ zuIntMin( AHEAD, leftCount - 1 ) ].key );
            *dest++ = *left++;
            leftCount--;
        } else {
            dictPrefetchKey( right[ zuIntMin( AHEAD, rightCount - 1 ) ].key );
            *dest++ = *right++;
            rightCount--;
        }
    }
    dictCopyPairs( dest, left, leftCount );
    dictCopyPairs( dest + leftCount, right, rightCount );
}

// Sorts pairs by key, equal keys in the order in which they stand.  A merge sort stays within the array even where the
// order of a class contradicts itself; std::sort need not.
static void dictSortPairs( ZU___DICT_PAIR *pairs, ZU_INT count )
{
    static constexpr ZU_INT RUN = 8; // runs by insertion, which passes ascending keys with one comparison each
    for ( ZU_INT i = 1; i < count; i++ ) {
        ZU___DICT_PAIR pair = pairs[ i ];
        ZU_INT at = i;
        while ( at % RUN > 0 && dictOrderKeys( pairs[ at - 1 ].key, pair.key ) > 0 ) {
            pairs[ at ] = pairs[ at - 1 ];
            at--;
        }
        pairs[ at ] = pair;
    }
    bool ascending = true;
    for ( ZU_INT at = RUN; ascending && at < count; at += RUN ) {
        ascending = dictOrderKeys( pairs[ at - 1 ].key, pairs[ at ].key ) <= 0;
    }
    if ( ascending ) {
        return;
    }
    ZU___DICT_PAIR *scratch = (ZU___DICT_PAIR *)zuMemAllocN( count, sizeof( ZU___DICT_PAIR ) );
    ZU___DICT_PAIR *from = pairs;
    ZU___DICT_PAIR *to = scratch;
    for ( ZU_INT run = RUN; run < count; run *= 2 ) {
        for ( ZU_INT at = 0; at < count; at += 2 * run ) {
            ZU_INT leftCount = zuIntMin( run, count - at );
            ZU_INT rightCount = zuIntMin( run, count - at - leftCount );
            dictMergePairs( to + at, from + at, leftCount, from + at + leftCount, rightCount );
        }
        std::swap( from, to );
    }
    if ( from == scratch ) {
        dictCopyPairs( pairs, scratch, count );
    }
    zuMemFree( scratch );
}

void zu___DictSort( ZU_DICT *dict, bool lastWins )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( ZU_REF_RETAIN_COUNT( dict ) == 1 );
    dictFlatten( dict );
    dictSortPairs( dict->items, dict->length );
    ZU___DICT_PAIR *items = dict->items;
    ZU_INT kept = 0;
    for ( ZU_INT i = 0; i < dict->length; i++ ) {
        dictNoteKey( dict, i == 0, items[ i ].key );
        if ( kept > 0 && dictOrderKeys( items[ kept - 1 ].key, items[ i ].key ) == 0 ) {
            if ( lastWins ) {
                std::swap( items[ kept - 1 ], items[ i ] );
            }
            dictReleasePair( items[ i ] );
        } else {
            items[ kept++ ] = items[ i ];
        }
    }
    dict->length = kept;
}

// Tells whether the order of keys like this one depends on which are compared first: reals are not always in order, as
// dictHasReals tells, and an object without an order of its class gets its number when it is first compared.
static bool dictOrderDependsOnSteps( ZU_OBJ *key )
{
    return key->sort && ( key->sort == zuBoxedRealSort() || !key->sort->compareFunc );
}
ZU_DICT *zuDictCreateWithKeysAndValues( ZU_VECTOR *keysVector, ZU_VECTOR *valuesVector )
{
    ZU_ASSERT( keysVector );
    ZU_ASSERT( valuesVector );
    ZU_ASSERT( zuVectorLength( keysVector ) == zuVectorLength( valuesVector ) );
    ZU_DICT *dict = zu___DictCreateEmpty();
    ZU_INT count = zuVectorLength( keysVector );
    ZU_OBJ *const *keys = zuVectorBacking( keysVector );
    ZU_OBJ *const *values = zuVectorBacking( valuesVector );
    ZU___DICT_PAIR *gap = zu___DictMakeRoom( dict, 0, count );
    if ( std::any_of( keys, keys + count, dictOrderDependsOnSteps ) ) {
        dict->length = 0;
        for ( ZU_INT i = count - 1; i >= 0; i-- ) {
            zuDictSetObjKey( &dict, keys[ i ], values[ i ] );
        }
        return dict;
    }
    for ( ZU_INT i = 0; i < count; i++ ) {
        gap[ i ] = { zuObjRetain( keys[ i ] ), zuObjRetain( values[ i ] ) };
    }
    zu___DictSort( dict, false );
    return dict;
}

// Access by position
ZU_INT zuDictLength( ZU_DICT *dict )
{
    ZU_ASSERT( dict );
    return dict->length;
}
ZU_OBJ *zuDictKeyAt( ZU_DICT *dict, ZU_INT idx )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( idx >= 0 );
    ZU_ASSERT( idx < dict->length );
    return zuObjRetain( zu___DictPair( dict, idx )->key );
}
ZU_OBJ *zuDictValueAt( ZU_DICT *dict, ZU_INT idx )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( idx >= 0 );
    ZU_ASSERT( idx < dict->length );
    return zuObjRetain( zu___DictPair( dict, idx )->val );
}
void zuDictSetValueAt( ZU_DICT **dict, ZU_INT idx, ZU_OBJ *value )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    ZU_ASSERT( idx >= 0 );
    ZU_ASSERT( idx < (*dict)->length );
    ZU_ASSERT( value );
    zuObjRetain( value ); // ahead of the copy: it may be the dict itself
    dictUnshare( dict );
    ZU_OBJ *old = zu___DictPair( *dict, idx )->val;
    zu___DictPair( *dict, idx )->val = value;
    ZU_REF_RELEASE( old );
}
void zuDictDelAt( ZU_DICT **dict, ZU_INT idx )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    ZU_ASSERT( idx >= 0 );
    ZU_ASSERT( idx < (*dict)->length );
    if ( ( *dict )->length == 1 ) {
        zuDictClear( dict );
        return;
    }
    dictUnshare( dict );
    ZU___ASSERT_AS( zu___DictPair( *dict, idx )->key, "(*dict)->items[ idx ].key" );
    ZU___ASSERT_AS( zu___DictPair( *dict, idx )->val, "(*dict)->items[ idx ].val" );
    ZU_DICT *own = *dict;
    dictPrepareMove( own, own->length - idx - 1 );
    ZU___DICT_PAIR pair = *zu___DictPair( own, idx );
    dictMoveGap( own, own->length, idx, own->length - 1 );
    own->length--;
    zu___DictCompact( own );
    dictReleasePair( pair );
}

// Returns the keys or the values, whichever `member` names.
static ZU_VECTOR *dictVector( ZU_DICT *dict, ZU_OBJ *ZU___DICT_PAIR::*member )
{
    if ( dict->length == 0 ) {
        return zuVectorCreate();
    }
    ZU_OBJ **objs = (ZU_OBJ **)zuMemAllocN( dict->length, sizeof( ZU_OBJ * ) );
    for ( ZU_INT i = 0; i < dict->length; i++ ) {
        objs[ i ] = zuObjRetain( zu___DictPair( dict, i )->*member );
    }
    return zuVectorCreateFromObjsUse( objs, dict->length );
}
ZU_VECTOR *zuDictKeysVector( ZU_DICT *dict )
{
    ZU_ASSERT( dict );
    return dictVector( dict, &ZU___DICT_PAIR::key );
}
ZU_VECTOR *zuDictValuesVector( ZU_DICT *dict )
{
    ZU_ASSERT( dict );
    return dictVector( dict, &ZU___DICT_PAIR::val );
}

// Searching.  A key is whatever has an order() that tells how a stored key stands to it, as zuObjCompare( stored, key )
// would if the key were an object.
struct DICT_OBJ_KEY {
    ZU_OBJ *key;

    ZU_INT order( ZU_OBJ *stored ) const
    {
        return zu___ObjCompareInline( stored, key );
    }
};

// Returns the text of a stored key.  Most are within the string, and to guess so lets the processor fetch the text
// before it has read where it is.
static inline const ZU_CHAR *dictStoredText( ZU_STRING *zus )
{
    if ( ZU___LIKELY( zus->chars == zus->inlineChars && zus->fspace == 0 ) ) {
        return zus->inlineChars;
    }
    return zus->chars + zus->fspace;
}
struct DICT_TEXT_KEY {
    const ZU_CHAR *chars;
    ZU_INT length;

    ZU_INT order( ZU_OBJ *stored ) const
    {
        if ( ZU___UNLIKELY( stored->sort != &zu___sort_ZU_STRING ) ) {
            return zuSortCompare( zuObjSort( stored ), &zu___sort_ZU_STRING );
        }
        ZU_INT same = 0;
        return orderText( stored, &same );
    }
    // The same for a string; `same` as in zu___StringCompareCharsFrom.
    ZU_INT orderText( ZU_OBJ *stored, ZU_INT *same ) const
    {
        ZU_STRING *zus = (ZU_STRING *)stored;
        return zu___StringCompareCharsFrom( dictStoredText( zus ), zus->length, chars, length, same );
    }
};
struct DICT_INT_KEY {
    ZU_INT value;
    ZU_SORT *sort = zuBoxedIntSort();

    ZU_INT order( ZU_OBJ *stored ) const
    {
        if ( ZU___UNLIKELY( stored->sort != sort ) ) {
            return zuSortCompare( zuObjSort( stored ), sort );
        }
        ZU_INT storedValue = zuBoxedIntValue( (ZU_BOXED_INT *)stored );
        return ( storedValue > value ) - ( storedValue < value );
    }
};
struct DICT_REAL_KEY {
    double value;
    ZU_SORT *sort = zuBoxedRealSort();

    ZU_INT order( ZU_OBJ *stored ) const
    {
        if ( ZU___UNLIKELY( stored->sort != sort ) ) {
            return zuSortCompare( zuObjSort( stored ), sort );
        }
        return zuRealCompare( zuBoxedRealValue( (ZU_BOXED_REAL *)stored ), value );
    }
};

// Searches between the pairs at `below` and `above`, which the key is known to lie between.  Each may be beside the
// array.
template <typename KEY>
static ZU___DICT_PLACE dictBisect( ZU_DICT *dict, ZU_INT below, ZU_INT above, KEY key )
{
    while ( above - below > 1 ) {
        ZU_INT mid = below + ( above - below ) / 2;
        ZU_INT order = key.order( zu___DictPair( dict, mid )->key );
        if ( order == 0 ) {
            return { mid, true };
        }
        ( order < 0 ? below : above ) = mid;
    }
    return { above, false };
}

// What looks like an array of all pairs
struct DICT_RINGS_ITEMS {
    const ZU___DICT_RING *rings;
    ZU_INT shift;
    ZU_INT mask;

    const ZU___DICT_PAIR &operator[]( ZU_INT idx ) const
    {
        const ZU___DICT_RING *ring = rings + ( idx >> shift );
        return ring->pairs[ ( ring->first + idx ) & mask ];
    }
};

// Among strings the search keeps count of what the key has in common with its neighbours on either side so far:
// whatever lies between them has that in common too, and is compared from there on.  The keys of a large dict are in no
// cache, so that those that may come next are fetched meanwhile.
template <bool LARGE, typename ITEMS>
static inline ZU___DICT_PLACE dictBisectTexts( ITEMS items, ZU_INT below, ZU_INT above, DICT_TEXT_KEY key )
{
    ZU_INT begin = below + 1;
    ZU_INT sameBelow = 0;
    ZU_INT sameAbove = 0;
    while ( begin < above ) {
        ZU_INT mid = ( begin + above ) >> 1;
        ZU_INT same = sameBelow < sameAbove ? sameBelow : sameAbove;
        if ( LARGE ) {
            dictPrefetchText( items[ ( begin + mid ) >> 1 ].key, same );
            dictPrefetchText( items[ ( mid + above ) >> 1 ].key, same );
        }
        ZU_INT order = key.orderText( items[ mid ].key, &same );
        if ( order == 0 ) {
            return { mid, true };
        }
        if ( order < 0 ) {
            begin = mid + 1;
            sameBelow = same;
        } else {
            above = mid;
            sameAbove = same;
        }
    }
    return { above, false };
}
static ZU___DICT_PLACE dictBisect( ZU_DICT *dict, ZU_INT below, ZU_INT above, DICT_TEXT_KEY key )
{
    if ( ZU___UNLIKELY( dict->keySort != &zu___sort_ZU_STRING ) ) {
        return dictBisect<DICT_TEXT_KEY>( dict, below, above, key );
    }
    static constexpr ZU_INT LARGE = 1024; // strings of that many keys fill the cache that a core has for itself
    if ( !dict->items ) {
        DICT_RINGS_ITEMS items = { dict->rings.items, dict->rings.shift, dictRingSize( dict ) - 1 };
        return dictBisectTexts<true>( items, below, above, key );
    }
    return above - below < LARGE ? dictBisectTexts<false>( dict->items, below, above, key )
                                 : dictBisectTexts<true>( dict->items, below, above, key );
}

// Searches the pairs from `begin` on, the ends first: keys often come in order.
template <typename KEY>
static ZU___DICT_PLACE dictFindFrom( ZU_DICT *dict, ZU_INT begin, KEY key )
{
    if ( begin == dict->length ) {
        return { begin, false };
    }
    ZU_INT order = key.order( zu___DictPair( dict, begin )->key );
    if ( order >= 0 ) {
        return { begin, order == 0 };
    }
    ZU_INT last = dict->length - 1;
    order = key.order( zu___DictPair( dict, last )->key );
    if ( order <= 0 ) {
        return { order == 0 ? last : dict->length, order == 0 };
    }
    return dictBisect( dict, begin, last, key );
}
static inline DICT_TEXT_KEY dictTextKey( ZU_STRING *zus )
{
    return { zus->chars + zus->fspace, zus->length };
}
static ZU___DICT_PLACE dictFindObjFrom( ZU_DICT *dict, ZU_INT begin, ZU_OBJ *key )
{
    if ( key->sort == &zu___sort_ZU_STRING ) {
        return dictFindFrom( dict, begin, dictTextKey( (ZU_STRING *)key ) );
    }
    if ( key->sort == zuBoxedIntSort() ) {
        return dictFindFrom( dict, begin, DICT_INT_KEY{ zuBoxedIntValue( (ZU_BOXED_INT *)key ) } );
    }
    return dictFindFrom( dict, begin, DICT_OBJ_KEY{ key } );
}

static inline ZU_INT dictFoundIdx( ZU___DICT_PLACE place )
{
    return place.found ? place.idx : -1;
}
template <typename KEY>
static ZU_INT dictIndexOf( ZU_DICT *dict, KEY key )
{
    return dictFoundIdx( dictFindFrom( dict, 0, key ) );
}
// A reader's strings come in any order, so that its search leaves the ends alone, or in that of the dict, as the
// addresses of a list do: whoever has found the first key is walking, and is expected at the next one as long as its
// keys ascend.  Several readers may get in each other's way, which costs them a search and no more.
static ZU_INT dictIndexOf( ZU_DICT *dict, DICT_TEXT_KEY key )
{
    static constexpr ZU_INT WALK_MIN = 64; // keys; in fewer a search costs little more
    if ( dict->length < WALK_MIN ) {
        return dictFoundIdx( dictBisect( dict, -1, dict->length, key ) );
    }
    ZU_INT next = __atomic_load_n( &dict->walk, __ATOMIC_RELAXED );
    if ( next > 0 && next < dict->length && key.order( zu___DictPair( dict, next )->key ) == 0 ) {
        ZU___HAPPENS_STORE( &dict->walk, next + 1, __ATOMIC_RELAXED );
        return next;
    }
    ZU_INT idx = dictFoundIdx( dictBisect( dict, -1, dict->length, key ) );
    if ( idx == 0 || ( next > 0 && idx > 0 ) ) {
        ZU___HAPPENS_STORE( &dict->walk, idx == 0 || idx > next ? idx + 1 : 0, __ATOMIC_RELAXED );
    }
    return idx;
}
static ZU_INT dictIndexOfObj( ZU_DICT *dict, ZU_OBJ *key )
{
    if ( key->sort == &zu___sort_ZU_STRING ) {
        return dictIndexOf( dict, dictTextKey( (ZU_STRING *)key ) );
    }
    return dictFoundIdx( dictFindObjFrom( dict, 0, key ) );
}
static ZU_INT dictIndexOfBool( ZU_DICT *dict, ZU_BOOL key )
{
    return dictIndexOfObj( dict, zu___Owned( zuBoxedBoolObj( zuBoxedBoolCreate( key ) ) ) );
}
static ZU_INT dictIndexOfNull( ZU_DICT *dict )
{
    return dictIndexOfObj( dict, zu___Owned( zuBoxedNullObj( zuBoxedNullCreate() ) ) );
}
ZU_INT zu___DictIndexOfChars( ZU_DICT *dict, const ZU_CHAR *chars, ZU_INT length )
{
    ZU_ASSERT( dict );
    return dictIndexOf( dict, DICT_TEXT_KEY{ chars, length } );
}
static bool dictKeyBeginsWith( ZU_DICT *dict, ZU_INT idx, const ZU_CHAR *chars, ZU_INT length )
{
    return idx < dict->length && zuStringBeginsWithChars( (ZU_STRING *)zu___DictPair( dict, idx )->key, chars, length );
}
ZU_INT zu___DictIndexOfAbbreviation( ZU_DICT *dict, const ZU_CHAR *chars, ZU_INT length, bool *exact )
{
    ZU_ASSERT( dict );
    ZU___DICT_PLACE place = dictBisect( dict, -1, dict->length, DICT_TEXT_KEY{ chars, length } );
    *exact = place.found;
    if ( place.found ) {
        return place.idx;
    }
    // What begins with the text stands behind the place of the text, all together.
    if ( !dictKeyBeginsWith( dict, place.idx, chars, length ) ) {
        return -1;
    }
    return dictKeyBeginsWith( dict, place.idx + 1, chars, length ) ? -2 : place.idx;
}
// Searches for an encoded text, of which no string is made.
template <typename UNIT>
static ZU_INT dictIndexOfEncoded( ZU_DICT *dict, ZU_INT ( *convert )( ZU_CHAR *, ZU_INT, const UNIT *, ZU_INT ),
                                  const UNIT *src, ZU_INT srcLength )
{
    static constexpr ZU_INT LOCAL_CHARS = 128; // few keys are longer
    ZU_CHAR local[ LOCAL_CHARS ];
    ZU_INT length = convert( local, LOCAL_CHARS, src, srcLength );
    if ( length <= LOCAL_CHARS ) {
        return dictIndexOf( dict, DICT_TEXT_KEY{ local, length } );
    }
    ZU_CHAR *chars = (ZU_CHAR *)zuMemAllocN( length, sizeof( ZU_CHAR ) );
    convert( chars, length, src, srcLength );
    ZU_INT idx = dictIndexOf( dict, DICT_TEXT_KEY{ chars, length } );
    zuMemFree( chars );
    return idx;
}
static ZU_INT dictIndexOfCstr( ZU_DICT *dict, const char *src, ZU_INT srcLength )
{
    return dictIndexOfEncoded( dict, zuCharsConvertFromCstr, src, srcLength );
}
static ZU_INT dictIndexOfWcstr( ZU_DICT *dict, const char16_t *src, ZU_INT srcLength )
{
    return dictIndexOfEncoded( dict, zuCharsConvertFromWcstr, src, srcLength );
}

// Reading
static ZU_OBJ *dictValueOpt( ZU_DICT *dict, ZU_INT idx )
{
    if ( idx < 0 ) {
        return nullptr;
    }
    ZU_OBJ *value = zu___DictPair( dict, idx )->val;
    ZU___RETAIN_COUNT_INCREMENT( value->retainCount );
    return value;
}
ZU_OBJ *zuDictObjKey( ZU_DICT *dict, ZU_OBJ *key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( key );
    return dictValueOpt( dict, dictIndexOfObj( dict, key ) );
}
ZU_OBJ *zuDictBoolKey( ZU_DICT *dict, ZU_BOOL key )
{
    ZU_ASSERT( dict );
    return dictValueOpt( dict, dictIndexOfBool( dict, key ) );
}
ZU_OBJ *zuDictIntKey( ZU_DICT *dict, ZU_INT key )
{
    ZU_ASSERT( dict );
    return dictValueOpt( dict, dictIndexOf( dict, DICT_INT_KEY{ key } ) );
}
ZU_OBJ *zuDictRealKey( ZU_DICT *dict, double key )
{
    ZU_ASSERT( dict );
    return dictValueOpt( dict, dictIndexOf( dict, DICT_REAL_KEY{ key } ) );
}
ZU_OBJ *zuDictNullKey( ZU_DICT *dict )
{
    ZU_ASSERT( dict );
    return dictValueOpt( dict, dictIndexOfNull( dict ) );
}
ZU_OBJ *zuDictStringKey( ZU_DICT *dict, ZU_STRING *key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( key );
    return dictValueOpt( dict, dictIndexOf( dict, dictTextKey( key ) ) );
}
ZU_OBJ *zuDictStringKeyCstr( ZU_DICT *dict, const char *src, ZU_INT srcLength )
{
    ZU_ASSERT( dict );
    return dictValueOpt( dict, dictIndexOfCstr( dict, src, srcLength ) );
}
ZU_OBJ *zuDictStringKeyWcstr( ZU_DICT *dict, const char16_t *src, ZU_INT srcLength )
{
    ZU_ASSERT( dict );
    return dictValueOpt( dict, dictIndexOfWcstr( dict, src, srcLength ) );
}
ZU_OBJ *zuDictSortKey( ZU_DICT *dict, ZU_SORT *key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( key );
    return dictValueOpt( dict, dictIndexOfObj( dict, zuSortObj( key ) ) );
}

// Testing
ZU_BOOL zuDictHasObjKey( ZU_DICT *dict, ZU_OBJ *key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( key );
    return dictIndexOfObj( dict, key ) >= 0;
}
ZU_BOOL zuDictHasBoolKey( ZU_DICT *dict, ZU_BOOL key )
{
    ZU_ASSERT( dict );
    return dictIndexOfBool( dict, key ) >= 0;
}
ZU_BOOL zuDictHasIntKey( ZU_DICT *dict, ZU_INT key )
{
    ZU_ASSERT( dict );
    return dictIndexOf( dict, DICT_INT_KEY{ key } ) >= 0;
}
ZU_BOOL zuDictHasRealKey( ZU_DICT *dict, double key )
{
    ZU_ASSERT( dict );
    return dictIndexOf( dict, DICT_REAL_KEY{ key } ) >= 0;
}
ZU_BOOL zuDictHasNullKey( ZU_DICT *dict )
{
    ZU_ASSERT( dict );
    return dictIndexOfNull( dict ) >= 0;
}
ZU_BOOL zuDictHasStringKey( ZU_DICT *dict, ZU_STRING *key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( key );
    return dictIndexOf( dict, dictTextKey( key ) ) >= 0;
}
ZU_BOOL zuDictHasStringKeyCstr( ZU_DICT *dict, const char *src, ZU_INT srcLength )
{
    ZU_ASSERT( dict );
    return dictIndexOfCstr( dict, src, srcLength ) >= 0;
}
ZU_BOOL zuDictHasStringKeyWcstr( ZU_DICT *dict, const char16_t *src, ZU_INT srcLength )
{
    ZU_ASSERT( dict );
    return dictIndexOfWcstr( dict, src, srcLength ) >= 0;
}
ZU_BOOL zuDictHasSortKey( ZU_DICT *dict, ZU_SORT *key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( key );
    return dictIndexOfObj( dict, zuSortObj( key ) ) >= 0;
}

// Finding
ZU_INT zuDictIndexOfObjKey( ZU_DICT *dict, ZU_OBJ *key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( key );
    return dictIndexOfObj( dict, key );
}
ZU_INT zuDictIndexOfBoolKey( ZU_DICT *dict, ZU_BOOL key )
{
    ZU_ASSERT( dict );
    return dictIndexOfBool( dict, key );
}
ZU_INT zuDictIndexOfIntKey( ZU_DICT *dict, ZU_INT key )
{
    ZU_ASSERT( dict );
    return dictIndexOf( dict, DICT_INT_KEY{ key } );
}
ZU_INT zuDictIndexOfRealKey( ZU_DICT *dict, double key )
{
    ZU_ASSERT( dict );
    return dictIndexOf( dict, DICT_REAL_KEY{ key } );
}
ZU_INT zuDictIndexOfNullKey( ZU_DICT *dict )
{
    ZU_ASSERT( dict );
    return dictIndexOfNull( dict );
}
ZU_INT zuDictIndexOfStringKey( ZU_DICT *dict, ZU_STRING *key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( key );
    return dictIndexOf( dict, dictTextKey( key ) );
}
ZU_INT zuDictIndexOfStringKeyCstr( ZU_DICT *dict, const char *src, ZU_INT srcLength )
{
    ZU_ASSERT( dict );
    return dictIndexOfCstr( dict, src, srcLength );
}
ZU_INT zuDictIndexOfStringKeyWcstr( ZU_DICT *dict, const char16_t *src, ZU_INT srcLength )
{
    ZU_ASSERT( dict );
    return dictIndexOfWcstr( dict, src, srcLength );
}
ZU_INT zuDictIndexOfSortKey( ZU_DICT *dict, ZU_SORT *key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( key );
    return dictIndexOfObj( dict, zuSortObj( key ) );
}

// Writing.  zuDictSetObjKey does the work; the other forms make the key an object.
static inline ZU___DICT_PAIR dictHoldPair( ZU_DICT **dict, ZU_OBJ *key, ZU_OBJ *value )
{
    // Ahead of the copy, since either may be the dict itself
    ZU___DICT_PAIR pair = { zuObjRetain( key ), zuObjRetain( value ) };
    dictUnshare( dict );
    return pair;
}
static void dictPutPair( ZU_DICT *own, ZU___DICT_PLACE place, ZU___DICT_PAIR pair )
{
    if ( place.found ) {
        ZU___DICT_PAIR old = *zu___DictPair( own, place.idx );
        *zu___DictPair( own, place.idx ) = pair;
        dictReleasePair( old );
    } else {
        dictNoteKey( own, own->length == 0, pair.key );
        *zu___DictMakeRoom( own, place.idx, 1 ) = pair;
    }
}
void zuDictSetObjKey( ZU_DICT **dict, ZU_OBJ *key, ZU_OBJ *value )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    ZU_ASSERT( key );
    ZU_ASSERT( value );
    ZU___DICT_PAIR pair = dictHoldPair( dict, key, value ); // ahead of the search, whose callbacks see what is held
    dictPutPair( *dict, dictFindObjFrom( *dict, 0, key ), pair );
}
ZU___DICT_PLACE zu___DictPlaceOfString( ZU_DICT *dict, ZU_STRING *key )
{
    return dictFindFrom( dict, 0, dictTextKey( key ) );
}
void zu___DictSetAt( ZU_DICT **dict, ZU___DICT_PLACE place, ZU_OBJ *key, ZU_OBJ *value )
{
    ZU___DICT_PAIR pair = dictHoldPair( dict, key, value );
    dictPutPair( *dict, place, pair );
}
void zuDictSetBoolKey( ZU_DICT **dict, ZU_BOOL key, ZU_OBJ *value )
{
    zuDictSetObjKey( dict, zu___Owned( zuBoxedBoolObj( zuBoxedBoolCreate( key ) ) ), value );
}
void zuDictSetIntKey( ZU_DICT **dict, ZU_INT key, ZU_OBJ *value )
{
    zuDictSetObjKey( dict, zu___Owned( zuBoxedIntObj( zuBoxedIntCreate( key ) ) ), value );
}
void zuDictSetRealKey( ZU_DICT **dict, double key, ZU_OBJ *value )
{
    zuDictSetObjKey( dict, zu___Owned( zuBoxedRealObj( zuBoxedRealCreate( key ) ) ), value );
}
void zuDictSetNullKey( ZU_DICT **dict, ZU_OBJ *value )
{
    zuDictSetObjKey( dict, zu___Owned( zuBoxedNullObj( zuBoxedNullCreate() ) ), value );
}
void zuDictSetStringKey( ZU_DICT **dict, ZU_STRING *key, ZU_OBJ *value )
{
    zuDictSetObjKey( dict, zuStringObj( key ), value );
}
void zuDictSetStringKeyCstr( ZU_DICT **dict, const char *src, ZU_INT srcLength, ZU_OBJ *value )
{
    zuDictSetObjKey( dict, zu___Owned( zuStringObj( zuStringCreateFromCstr( src, srcLength ) ) ), value );
}
void zuDictSetStringKeyWcstr( ZU_DICT **dict, const char16_t *src, ZU_INT srcLength, ZU_OBJ *value )
{
    zuDictSetObjKey( dict, zu___Owned( zuStringObj( zuStringCreateFromWcstr( src, srcLength ) ) ), value );
}
void zuDictSetSortKey( ZU_DICT **dict, ZU_SORT *key, ZU_OBJ *value )
{
    zuDictSetObjKey( dict, zuSortObj( key ), value );
}

// Deletion
static void dictDelOpt( ZU_DICT **dict, ZU_INT idx )
{
    if ( idx >= 0 ) {
        zuDictDelAt( dict, idx );
    }
}
void zuDictDelObjKey( ZU_DICT **dict, ZU_OBJ *key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    ZU_ASSERT( key );
    dictDelOpt( dict, dictIndexOfObj( *dict, key ) );
}
void zuDictDelBoolKey( ZU_DICT **dict, ZU_BOOL key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    dictDelOpt( dict, dictIndexOfBool( *dict, key ) );
}
void zuDictDelIntKey( ZU_DICT **dict, ZU_INT key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    dictDelOpt( dict, dictIndexOf( *dict, DICT_INT_KEY{ key } ) );
}
void zuDictDelRealKey( ZU_DICT **dict, double key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    dictDelOpt( dict, dictIndexOf( *dict, DICT_REAL_KEY{ key } ) );
}
void zuDictDelNullKey( ZU_DICT **dict )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    dictDelOpt( dict, dictIndexOfNull( *dict ) );
}
void zuDictDelStringKey( ZU_DICT **dict, ZU_STRING *key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    ZU_ASSERT( key );
    dictDelOpt( dict, dictIndexOf( *dict, dictTextKey( key ) ) );
}
void zuDictDelStringKeyCstr( ZU_DICT **dict, const char *src, ZU_INT srcLength )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    dictDelOpt( dict, dictIndexOfCstr( *dict, src, srcLength ) );
}
void zuDictDelStringKeyWcstr( ZU_DICT **dict, const char16_t *src, ZU_INT srcLength )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    dictDelOpt( dict, dictIndexOfWcstr( *dict, src, srcLength ) );
}
void zuDictDelSortKey( ZU_DICT **dict, ZU_SORT *key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    ZU_ASSERT( key );
    dictDelOpt( dict, dictIndexOfObj( *dict, zuSortObj( key ) ) );
}

// Whole dicts

// The order of reals contradicts itself, within their tolerance and at NaN.  What a run of single calls makes of that
// depends on each of its steps, so that what takes many keys takes just those steps if there are reals among them.
struct DICT_SORT_KEY {
    ZU_SORT *sort;

    ZU_INT order( ZU_OBJ *stored ) const
    {
        return zuSortCompare( zuObjSort( stored ), sort );
    }
};
static bool dictHasReals( ZU_DICT *dict )
{
    if ( dict->length == 0 || dict->keySort ) {
        return dict->length > 0 && dict->keySort == zuBoxedRealSort();
    }
    return dictBisect( dict, -1, dict->length, DICT_SORT_KEY{ zuBoxedRealSort() } ).found;
}

void zuDictClear( ZU_DICT **dict )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    ZU_DICT *old = *dict;
    *dict = zuDictCreate();
    ZU_REF_RELEASE( old );
}
void zu___DictClear( ZU_DICT **dict )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    if ( ZU_REF_RETAIN_COUNT( *dict ) > 1 ) {
        zuDictClear( dict );
        return;
    }
    ZU_DICT *own = *dict;
    zu___Taken taken;
    for ( ZU_INT i = 0; i < own->length; i++ ) {
        dictTakePair( &taken, std::exchange( *zu___DictPair( own, i ), { nullptr, nullptr } ) );
    }
    own->length = 0;
}

// Ends an operation that has left the first `length` pairs of a private dict, with the room of `alloc` pairs.
static void dictCut( ZU_DICT **dict, ZU_INT length, ZU_INT alloc )
{
    ( *dict )->length = length;
    if ( length == 0 ) {
        zuDictClear( dict );
    } else {
        dictShrink( *dict, alloc );
    }
}
void zuDictDelValue( ZU_DICT **dict, ZU_OBJ *value, ZU_BOOL useCompare )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    ZU_ASSERT( value );
    if ( ( *dict )->length == 0 ) {
        return;
    }
    zu___Owned held( zuObjRetain( value ) ); // ahead of the copy: it may be the dict itself
    dictUnshare( dict );
    zu___Taken taken;
    ZU_INT length = ( *dict )->length;
    ZU_INT kept = 0;
    for ( ZU_INT i = 0; i < length; i++ ) {
        ZU___DICT_PAIR pair = *zu___DictPair( *dict, i );
        if ( pair.val == value || ( useCompare && zu___ObjCompareInline( pair.val, value ) == 0 ) ) {
            dictTakePair( &taken, pair );
        } else {
            *zu___DictPair( *dict, kept++ ) = pair;
        }
    }
    dictCut( dict, kept, dictCompactAlloc( ( *dict )->alloc, kept ) );
}
void zuDictInclude( ZU_DICT **dest, ZU_DICT *src, ZU_BOOL overwrite )
{
    ZU_ASSERT( dest );
    ZU_ASSERT( *dest );
    ZU_ASSERT( src );
    if ( src->length == 0 ) {
        return;
    }
    zu___Owned held( zuDictRetain( src ) ); // it may be *dest
    dictUnshare( dest );
    if ( dictHasReals( src ) ) {
        for ( ZU_INT i = 0; i < src->length; i++ ) {
            ZU___DICT_PAIR pair = *zu___DictPair( src, i );
            if ( overwrite || !zuDictHasObjKey( *dest, pair.key ) ) {
                zuDictSetObjKey( dest, pair.key, pair.val );
            }
        }
        return;
    }
    zu___Taken taken;
    ZU_DICT *own = *dest;

    // Where each new key belongs among the present ones, -1 for a key that is there already
    static constexpr ZU_INT LOCAL_PLACES = 64;
    ZU_INT local[ LOCAL_PLACES ];
    ZU_INT *places = src->length <= LOCAL_PLACES ? local : (ZU_INT *)zuMemAllocN( src->length, sizeof( ZU_INT ) );
    ZU_INT length = own->length;
    ZU_INT alloc = own->alloc;
    ZU_INT begin = 0;
    for ( ZU_INT i = 0; i < src->length; i++ ) {
        ZU___DICT_PAIR pair = *zu___DictPair( src, i );
        ZU___DICT_PLACE place = dictFindObjFrom( own, begin, pair.key );
        begin = place.idx + place.found;
        places[ i ] = place.found ? -1 : place.idx;
        if ( !place.found ) {
            ZU_ASSERT( ZU_INT_ADD_OK( length, 1 ) );
            dictNoteKey( own, length == 0, pair.key );
            length++;
            alloc = dictGrownAlloc( alloc, length );
        } else if ( overwrite ) {
            dictTakePair( &taken, std::exchange( *zu___DictPair( own, place.idx ),
                                                 { zuObjRetain( pair.key ), zuObjRetain( pair.val ) } ) );
        }
    }

    // From the end on, each present pair moves once.
    if ( alloc > own->alloc ) {
        dictGrow( own, alloc );
    }
    if ( !own->items ) {
        dictRoomInRings( own, length );
    }
    ZU_INT tail = own->length;
    own->length = length;
    for ( ZU_INT i = src->length - 1; tail < length; i-- ) {
        if ( places[ i ] >= 0 ) {
            ZU_INT added = length - tail;
            dictMove( own, places[ i ] + added, places[ i ], tail - places[ i ] );
            length -= tail - places[ i ] + 1;
            tail = places[ i ];
            *zu___DictPair( own, length ) = { zuObjRetain( zu___DictPair( src, i )->key ),
                                              zuObjRetain( zu___DictPair( src, i )->val ) };
        }
    }
    if ( places != local ) {
        zuMemFree( places );
    }
}
void zuDictExclude( ZU_DICT **dest, ZU_DICT *src )
{
    ZU_ASSERT( dest );
    ZU_ASSERT( *dest );
    ZU_ASSERT( src );
    if ( ( *dest )->length == 0 || src->length == 0 ) {
        return;
    }
    if ( *dest == src ) {
        zuDictClear( dest );
        return;
    }
    if ( dictHasReals( src ) ) {
        zu___Owned held( zuDictRetain( src ) );
        for ( ZU_INT i = 0; i < src->length; i++ ) {
            zuDictDelObjKey( dest, zu___DictPair( src, i )->key );
        }
        return;
    }
    // The pairs behind each removed one move ahead when the next is found.
    zu___Taken taken;
    ZU_INT length = ( *dest )->length;
    ZU_INT left = length;
    ZU_INT alloc = ( *dest )->alloc;
    ZU_INT kept = 0; // pairs in their new place
    ZU_INT run = 0;  // first pair that is not
    ZU_INT begin = 0;
    for ( ZU_INT i = 0; i < src->length; i++ ) {
        ZU___DICT_PLACE place = dictFindObjFrom( *dest, begin, zu___DictPair( src, i )->key );
        begin = place.idx + place.found;
        if ( place.found ) {
            if ( left == length ) {
                dictUnshare( dest );
                alloc = ( *dest )->alloc;
            }
            ZU___DICT_PAIR pair = *zu___DictPair( *dest, place.idx );
            dictMove( *dest, kept, run, place.idx - run );
            kept += place.idx - run;
            run = place.idx + 1;
            left--;
            alloc = dictCompactAlloc( alloc, left );
            dictTakePair( &taken, pair );
        }
    }
    if ( left < length ) {
        dictMove( *dest, kept, run, length - run );
        dictCut( dest, left, alloc );
    }
}
void zuDictIntersect( ZU_DICT **dest, ZU_DICT *src, ZU_BOOL useSrcValues )
{
    ZU_ASSERT( dest );
    ZU_ASSERT( *dest );
    ZU_ASSERT( src );
    ZU_DICT *old = *dest;
    if ( old == src || old->length == 0 ) {
        return;
    }
    if ( src->length == 0 ) {
        zuDictClear( dest );
        return;
    }
    ZU_DICT *result = zu___DictCreateEmpty();
    result->keySort = old->keySort;
    const bool hasReals = dictHasReals( old );
    ZU_INT begin = 0;
    for ( ZU_INT i = 0; i < old->length; i++ ) {
        ZU___DICT_PAIR pair = *zu___DictPair( old, i );
        ZU___DICT_PLACE place = dictFindObjFrom( src, begin, pair.key );
        begin = hasReals ? 0 : place.idx + place.found;
        if ( place.found ) {
            ZU_OBJ *value = useSrcValues ? zu___DictPair( src, place.idx )->val : pair.val;
            if ( hasReals ) {
                zuDictSetObjKey( &result, pair.key, value );
                continue;
            }
            *zu___DictMakeRoom( result, result->length, 1 ) = { zuObjRetain( pair.key ), zuObjRetain( value ) };
        }
    }
    *dest = result;
    ZU_REF_RELEASE( old );
}
ZU_INT zu___DictCommonKeys( ZU_DICT *dictA, ZU_DICT *dictB, ZU_INT most )
{
    ZU_DICT *smaller = dictB->length < dictA->length ? dictB : dictA;
    ZU_DICT *larger = smaller == dictA ? dictB : dictA;
    const bool hasReals = dictHasReals( smaller );
    ZU_INT common = 0;
    ZU_INT begin = 0;
    for ( ZU_INT i = 0; i < smaller->length && common < most; i++ ) {
        ZU___DICT_PLACE place = dictFindObjFrom( larger, begin, zu___DictPair( smaller, i )->key );
        begin = hasReals ? 0 : place.idx + place.found;
        common += place.found;
    }
    return common;
}
ZU_BOOL zuDictDisjoint( ZU_DICT *dictA, ZU_DICT *dictB )
{
    ZU_ASSERT( dictA );
    ZU_ASSERT( dictB );
    return zu___DictCommonKeys( dictA, dictB, 1 ) == 0;
}
