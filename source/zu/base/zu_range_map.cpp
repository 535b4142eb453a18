// Ranges stand in one sorted array: maps have few ranges, are read far more often than changed, and mostly filled in
// ascending order.  Setting and deleting are the same but for what takes the place of the covered keys: the range that
// crosses the first key is split there, the one that crosses the last key is cut back, and those in between go.

#include "zu/base/zu_range_map.h"

#include "zu/base/zu_string_format.h"
#include "zu/runtime/zu_module.h"
#include "zu/runtime/zu_ref_internal.h"
#include "zu/sys/zu_mem.h"

#include <cstring>

static constexpr ZU_INT ALLOC_MORE = 32; // ranges that there is room for beyond those that asked for it
static constexpr ZU_INT ALLOC_LESS = 64; // ranges that there must be room for in vain before room is given back

struct RANGE {
    ZU_INT startingKey;
    ZU_INT endingKey; // >= startingKey
    ZU_OBJ *value;
};
// The ranges are ascending: each ends ahead of where the next one starts.
struct ZU_RANGE_MAP {
    ZU_OBJ obj;
    ZU_BOOL autoCollapse;
    ZU_INT alloc;  // ranges that `ranges` has room for
    ZU_INT length; // 0 <= length <= alloc
    RANGE *ranges; // null if alloc is 0
};

static void rangeMapFree( ZU_OBJ *thisObj );
static ZU_INT rangeMapCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj );
static ZU_STRING *rangeMapToString( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_RANGE_MAP =
    ZU___SORT_INITIALIZER( "ZU_RANGE_MAP", &zu___module, rangeMapFree, rangeMapCompare, rangeMapToString );
ZU___STDFUNCS( ZU_RANGE_MAP, zuRangeMap )

// Storage

static void rangeMapSetAlloc( ZU_RANGE_MAP *map, ZU_INT alloc )
{
    map->alloc = alloc;
    map->ranges = (RANGE *)zuMemReallocN( map->ranges, alloc, sizeof( RANGE ) );
    zu___ObjDbgSetAllocationSizeN( &map->obj, alloc, sizeof( RANGE ) );
}

// Opens a gap of `count` ranges at `idx` and returns it for the caller to fill.
static RANGE *rangeMapMakeRoom( ZU_RANGE_MAP *map, ZU_INT idx, ZU_INT count )
{
    ZU_INT alloc = count - ( map->alloc - map->length );
    if ( alloc > 0 ) {
        if ( ZU_INT_ADD_OK( map->alloc, zuIntAddSaturating( alloc, ALLOC_MORE ) ) ) {
            alloc += ALLOC_MORE;
        }
        ZU_ASSERT( ZU_INT_ADD_OK( map->alloc, alloc ) );
        rangeMapSetAlloc( map, map->alloc + alloc );
    }
    RANGE *gap = map->ranges + idx;
    if ( idx < map->length ) {
        memmove( gap + count, gap, (size_t)( map->length - idx ) * sizeof( RANGE ) );
    }
    map->length += count;
    return gap;
}

// Gives room back after ranges have gone, one portion at a time.
static void rangeMapCompact( ZU_RANGE_MAP *map )
{
    if ( map->alloc > ALLOC_LESS && map->alloc - ALLOC_LESS >= map->length ) {
        rangeMapSetAlloc( map, map->alloc - ALLOC_LESS );
    }
}

// Removes the `count` ranges from `idx` on.
static void rangeMapRemove( ZU_RANGE_MAP *map, ZU_INT idx, ZU_INT count, zu___Taken *taken )
{
    if ( count == 0 ) {
        return;
    }
    RANGE *gone = map->ranges + idx;
    for ( ZU_INT i = 0; i < count; i++ ) {
        taken->add( gone[ i ].value );
    }
    memmove( gone, gone + count, (size_t)( map->length - idx - count ) * sizeof( RANGE ) );
    map->length -= count;
    rangeMapCompact( map );
}

// Creation
static ZU_RANGE_MAP *rangeMapCreate( ZU_BOOL autoCollapse )
{
    ZU_RANGE_MAP *map = (ZU_RANGE_MAP *)zu___ObjCreate( sizeof( ZU_RANGE_MAP ), &zu___sort_ZU_RANGE_MAP );
    map->autoCollapse = autoCollapse;
    map->alloc = 0;
    map->length = 0;
    map->ranges = nullptr;
    return map;
}
ZU_RANGE_MAP *zuRangeMapCreate( void )
{
    return rangeMapCreate( ZU_FALSE );
}
ZU_RANGE_MAP *zuRangeMapCreateAutoCollapsing( void )
{
    return rangeMapCreate( ZU_TRUE );
}
ZU_RANGE_MAP *zuRangeMapCreateFrom( ZU_RANGE_MAP *src )
{
    ZU_ASSERT( src );
    ZU_RANGE_MAP *map = rangeMapCreate( src->autoCollapse );
    if ( src->length > 0 ) {
        RANGE *ranges = rangeMapMakeRoom( map, 0, src->length );
        for ( ZU_INT i = 0; i < src->length; i++ ) {
            ranges[ i ] = src->ranges[ i ];
            zuObjRetain( ranges[ i ].value );
        }
    }
    return map;
}

static void rangeMapUnshare( ZU_RANGE_MAP **map )
{
    if ( ZU_REF_RETAIN_COUNT( *map ) > 1 ) {
        ZU_RANGE_MAP *old = *map;
        *map = zuRangeMapCreateFrom( old );
        ZU_REF_RELEASE( old );
    }
}

// Standard functions
static void rangeMapFree( ZU_OBJ *thisObj )
{
    ZU_RANGE_MAP *map = zuRangeMapFrom( thisObj );
    ZU_ASSERT( map );
    for ( ZU_INT i = 0; i < map->length; i++ ) {
        ZU_REF_RELEASE( map->ranges[ i ].value );
    }
    zuMemFree( map->ranges );
    zu___ObjDbgSetAllocationSize( thisObj, 0 );
    ZU_REF_POISON( map->ranges );
}
static ZU_INT rangeMapCompareInts( ZU_INT a, ZU_INT b )
{
    return ( a > b ) - ( a < b );
}
static ZU_INT rangeMapCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    ZU_RANGE_MAP *mapA = zuRangeMapFrom( thisObj );
    ZU_RANGE_MAP *mapB = zuRangeMapFrom( thatObj );
    ZU_ASSERT( mapA );
    ZU_ASSERT( mapB );
    ZU_INT common = zuIntMin( mapA->length, mapB->length );
    for ( ZU_INT i = 0; i < common; i++ ) {
        const RANGE &a = mapA->ranges[ i ];
        const RANGE &b = mapB->ranges[ i ];
        ZU_INT order = rangeMapCompareInts( a.startingKey, b.startingKey );
        order = order != 0 ? order : rangeMapCompareInts( a.endingKey, b.endingKey );
        order = order != 0 ? order : zuObjCompare( a.value, b.value );
        if ( order != 0 ) {
            return order;
        }
    }
    return rangeMapCompareInts( mapA->length, mapB->length );
}
static ZU_STRING *rangeMapToString( ZU_OBJ *thisObj )
{
    ZU_RANGE_MAP *map = zuRangeMapFrom( thisObj );
    ZU_ASSERT( map );
    zu___Owned held( zuRangeMapRetain( map ) ); // a value's text may change the map
    ZU_STRING *text = zuStringCreate();
    zuStringAppendChar( &text, '{' );
    for ( ZU_INT i = 0; i < map->length; i++ ) {
        if ( i > 0 ) {
            zuStringAppendChar( &text, ',' );
            zuStringAppendChar( &text, ' ' );
        }
        const RANGE &range = map->ranges[ i ];
        zuStringAppendFormatCstr( &text, "[%i,%i]=%o", -1, range.startingKey, range.endingKey, range.value );
    }
    zuStringAppendChar( &text, '}' );
    return text;
}

// Collapsing

static bool rangeMapAbut( const RANGE &first, const RANGE &second )
{
    return first.endingKey + 1 == second.startingKey; // no overflow: the first ends ahead of the second
}

static bool rangeMapCollapses( const RANGE &first, const RANGE &second )
{
    return rangeMapAbut( first, second ) && zuObjCompare( first.value, second.value ) == 0;
}

// Collapses the ranges from the one at `first` on, none of which collapse behind the one at `changed`, and so neither
// do those behind the first that stays as it is there.
static void rangeMapCollapseFrom( ZU_RANGE_MAP *map, ZU_INT first, ZU_INT changed, zu___Taken *taken )
{
    RANGE *ranges = map->ranges;
    ZU_INT last = first; // the range that the next one may become part of
    ZU_INT i = first + 1;
    for ( ; i < map->length; i++ ) {
        if ( rangeMapCollapses( ranges[ last ], ranges[ i ] ) ) {
            ranges[ last ].endingKey = ranges[ i ].endingKey;
            taken->add( ranges[ i ].value );
        } else if ( i > changed ) {
            break;
        } else {
            last++;
            ranges[ last ] = ranges[ i ];
        }
    }
    ZU_INT gone = i - ( last + 1 );
    if ( gone > 0 ) {
        memmove( ranges + last + 1, ranges + i, (size_t)( map->length - i ) * sizeof( RANGE ) );
        map->length -= gone;
    }
    rangeMapCompact( map );
}

ZU_BOOL zuRangeMapAutoCollapse( ZU_RANGE_MAP *map )
{
    ZU_ASSERT( map );
    return map->autoCollapse;
}
void zuRangeMapSetAutoCollapse( ZU_RANGE_MAP **map, ZU_BOOL autoCollapse )
{
    ZU_ASSERT( map );
    ZU_ASSERT( *map );
    ZU_BOOL value = autoCollapse ? ZU_TRUE : ZU_FALSE;
    if ( value == ( *map )->autoCollapse ) {
        return;
    }
    rangeMapUnshare( map );
    ( *map )->autoCollapse = value;
    if ( value ) {
        zuRangeMapCollapse( map );
    }
}
void zuRangeMapCollapse( ZU_RANGE_MAP **map )
{
    ZU_ASSERT( map );
    ZU_ASSERT( *map );
    const RANGE *ranges = ( *map )->ranges;
    for ( ZU_INT i = 1; i < ( *map )->length; i++ ) {
        if ( rangeMapCollapses( ranges[ i - 1 ], ranges[ i ] ) ) {
            rangeMapUnshare( map );
            zu___Taken taken;
            rangeMapCollapseFrom( *map, 0, ( *map )->length, &taken );
            return;
        }
    }
}

// Access by position
ZU_INT zuRangeMapLength( ZU_RANGE_MAP *map )
{
    ZU_ASSERT( map );
    return map->length;
}
ZU_INT zuRangeMapStartingKeyAt( ZU_RANGE_MAP *map, ZU_INT idx )
{
    ZU_ASSERT( map );
    ZU_ASSERT( idx >= 0 );
    ZU_ASSERT( idx < map->length );
    return map->ranges[ idx ].startingKey;
}
ZU_INT zuRangeMapEndingKeyAt( ZU_RANGE_MAP *map, ZU_INT idx )
{
    ZU_ASSERT( map );
    ZU_ASSERT( idx >= 0 );
    ZU_ASSERT( idx < map->length );
    return map->ranges[ idx ].endingKey;
}
ZU_OBJ *zuRangeMapObjAt( ZU_RANGE_MAP *map, ZU_INT idx )
{
    ZU_ASSERT( map );
    ZU_ASSERT( idx >= 0 );
    ZU_ASSERT( idx < map->length );
    return zuObjRetain( map->ranges[ idx ].value );
}

// Access by key

// Returns the index of the first range that ends at or behind `key`, -1 if there is none.
static ZU_INT rangeMapFirstEnding( ZU_RANGE_MAP *map, ZU_INT key )
{
    const RANGE *ranges = map->ranges;
    ZU_INT high = map->length - 1;
    if ( map->length == 0 || ranges[ high ].endingKey < key ) {
        return -1;
    }
    if ( ranges[ 0 ].endingKey >= key ) {
        return 0;
    }
    ZU_INT low = 0;
    while ( high - low > 1 ) { // `low` ends ahead of the key, `high` does not
        ZU_INT middle = low + ( high - low ) / 2;
        ( ranges[ middle ].endingKey < key ? low : high ) = middle;
    }
    return high;
}
// Returns the index of the range that holds `key`, -1 if there is none.
static ZU_INT rangeMapIndexOf( ZU_RANGE_MAP *map, ZU_INT key )
{
    ZU_INT idx = rangeMapFirstEnding( map, key );
    return idx != -1 && map->ranges[ idx ].startingKey <= key ? idx : -1;
}
ZU_BOOL zuRangeMapHasIntKey( ZU_RANGE_MAP *map, ZU_INT key )
{
    ZU_ASSERT( map );
    return rangeMapIndexOf( map, key ) != -1;
}
ZU_OBJ *zuRangeMapIntKey( ZU_RANGE_MAP *map, ZU_INT key )
{
    ZU_ASSERT( map );
    ZU_INT idx = rangeMapIndexOf( map, key );
    return idx != -1 ? zuObjRetain( map->ranges[ idx ].value ) : nullptr;
}

// Makes ranges begin and end where the keys from `startingKey` to `endingKey` do: splits the one at `*idx` if it
// begins ahead of them, and cuts back the one that ends behind them.  `*idx` becomes the index of the first range at
// or behind the starting key.  Returns the number of ranges from there on that lie within the keys.
static ZU_INT rangeMapIsolate( ZU_RANGE_MAP *map, ZU_INT *idx, ZU_INT startingKey, ZU_INT endingKey )
{
    if ( map->ranges[ *idx ].startingKey < startingKey ) {
        RANGE *head = rangeMapMakeRoom( map, *idx, 1 );
        *head = head[ 1 ];
        head->endingKey = startingKey - 1;
        zuObjRetain( head->value );
        head[ 1 ].startingKey = startingKey;
        ++*idx;
    }
    ZU_INT end = *idx;
    for ( ; end < map->length && map->ranges[ end ].startingKey <= endingKey; end++ ) {
        if ( map->ranges[ end ].endingKey > endingKey ) {
            map->ranges[ end ].startingKey = endingKey + 1;
            break;
        }
    }
    return end - *idx;
}

void zuRangeMapSetRangeKey( ZU_RANGE_MAP **map, ZU_INT startingKey, ZU_INT endingKey, ZU_OBJ *value )
{
    ZU_ASSERT( map );
    ZU_ASSERT( *map );
    ZU_ASSERT( endingKey >= startingKey );
    ZU_ASSERT( value );
    // Retained first: if it is the map itself, that forces the copy.
    const RANGE range = { startingKey, endingKey, zuObjRetain( value ) };
    rangeMapUnshare( map );
    zu___Taken taken;
    ZU_RANGE_MAP *own = *map;
    ZU_INT idx = 0;
    if ( own->length == 0 || startingKey > own->ranges[ own->length - 1 ].endingKey ) {
        idx = own->length;
        *rangeMapMakeRoom( own, idx, 1 ) = range;
    } else if ( endingKey < own->ranges[ 0 ].startingKey ) {
        *rangeMapMakeRoom( own, 0, 1 ) = range;
    } else {
        ZU_INT startingIndex = rangeMapFirstEnding( own, startingKey );
        ZU_ASSERT( startingIndex != -1 );
        idx = startingIndex;
        ZU_INT covered = rangeMapIsolate( own, &idx, startingKey, endingKey );
        if ( covered == 0 ) {
            *rangeMapMakeRoom( own, idx, 1 ) = range;
        } else {
            taken.add( own->ranges[ idx ].value );
            own->ranges[ idx ] = range;
            rangeMapRemove( own, idx + 1, covered - 1, &taken );
        }
    }
    if ( own->autoCollapse ) {
        ZU_INT first = idx > 0 && rangeMapAbut( own->ranges[ idx - 1 ], own->ranges[ idx ] ) ? idx - 1 : idx;
        rangeMapCollapseFrom( own, first, idx, &taken );
    }
}
void zuRangeMapSetIntKey( ZU_RANGE_MAP **map, ZU_INT key, ZU_OBJ *value )
{
    zuRangeMapSetRangeKey( map, key, key, value );
}
void zuRangeMapDelRangeKey( ZU_RANGE_MAP **map, ZU_INT startingKey, ZU_INT endingKey )
{
    ZU_ASSERT( map );
    ZU_ASSERT( *map );
    ZU_ASSERT( endingKey >= startingKey );
    ZU_INT length = ( *map )->length;
    if ( length == 0 || endingKey < ( *map )->ranges[ 0 ].startingKey ||
         startingKey > ( *map )->ranges[ length - 1 ].endingKey ) {
        return;
    }
    rangeMapUnshare( map );
    ZU_INT idx = rangeMapFirstEnding( *map, startingKey );
    if ( idx == -1 ) {
        return;
    }
    ZU_INT covered = rangeMapIsolate( *map, &idx, startingKey, endingKey );
    zu___Taken taken;
    rangeMapRemove( *map, idx, covered, &taken );
}
void zuRangeMapDelIntKey( ZU_RANGE_MAP **map, ZU_INT key )
{
    zuRangeMapDelRangeKey( map, key, key );
}
void zuRangeMapClear( ZU_RANGE_MAP **map )
{
    ZU_ASSERT( map );
    ZU_ASSERT( *map );
    ZU_RANGE_MAP *old = *map;
    *map = zuRangeMapCreate();
    ZU_REF_RELEASE( old );
}
