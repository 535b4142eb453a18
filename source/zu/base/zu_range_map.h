// ZU_RANGE_MAP: a map from ranges of integers to objects.
//
// A copy-on-write value; zu_obj.h tells what holds for all of them.  Ranges include both ends, do not overlap, and
// stand in ascending order; positions and the length count ranges, not keys.  A range that is set cuts back or
// replaces what was there.  Ranges that abut and have equal values stay apart unless the map collapses them, on
// demand or by itself.  Looking a key up takes logarithmic time, and so does appending at the end; other changes move
// what is behind.
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

typedef struct ZU_RANGE_MAP ZU_RANGE_MAP;
// zuRangeMapRetain, Release, From, Obj, Sort, ToString, Compare, Equals
//
// Maps are ordered range by range, by starting key, ending key and value, and a map ahead of its continuation; whether
// they collapse plays no part.  The text is as in "{[1,4]=a, [6,6]=b}".
ZU_STDFUNCS_DECLARE( ZU_RANGE_MAP, zuRangeMap )

// Creation
/// Returns a new, empty map that collapses on demand only.
ZU_API ZU_RANGE_MAP *zuRangeMapCreate( void );
/// Returns a new, empty map that collapses by itself.
ZU_API ZU_RANGE_MAP *zuRangeMapCreateAutoCollapsing( void );
/// Returns a new object with the ranges of `src`, which collapses by itself if `src` does.
ZU_API ZU_RANGE_MAP *zuRangeMapCreateFrom( ZU_RANGE_MAP *src );

// Collapsing: ranges that abut and have equal values become one, with the value of the first
/// Tells whether the map collapses by itself whenever a range is set.
ZU_API ZU_BOOL zuRangeMapAutoCollapse( ZU_RANGE_MAP *map );
/// Lets the map collapse by itself from now on, and at once, or on demand only, which changes no range.
ZU_API void zuRangeMapSetAutoCollapse( ZU_RANGE_MAP **map, ZU_BOOL autoCollapse );
/// Collapses the whole map.
ZU_API void zuRangeMapCollapse( ZU_RANGE_MAP **map );

// Access by position; a position outside aborts
/// Returns the number of ranges.
ZU_API ZU_INT zuRangeMapLength( ZU_RANGE_MAP *map );
/// Returns the first key of the range at `idx`.
ZU_API ZU_INT zuRangeMapStartingKeyAt( ZU_RANGE_MAP *map, ZU_INT idx );
/// Returns the last key of the range at `idx`.
ZU_API ZU_INT zuRangeMapEndingKeyAt( ZU_RANGE_MAP *map, ZU_INT idx );
/// Returns the value of the range at `idx`.
ZU_API ZU_OBJ *zuRangeMapObjAt( ZU_RANGE_MAP *map, ZU_INT idx );

// Access by key
/// Tells whether a range holds `key`.
ZU_API ZU_BOOL zuRangeMapHasIntKey( ZU_RANGE_MAP *map, ZU_INT key );
/// Returns the value of the range that holds `key`; null if there is none.
ZU_API ZU_OBJ *zuRangeMapIntKey( ZU_RANGE_MAP *map, ZU_INT key );
/// Maps the keys from `startingKey` to `endingKey` to `value`, whatever they were mapped to.  A reversed range aborts.
ZU_API void zuRangeMapSetRangeKey( ZU_RANGE_MAP **map, ZU_INT startingKey, ZU_INT endingKey, ZU_OBJ *value );
/// Maps the one key `key` to `value`.
ZU_API void zuRangeMapSetIntKey( ZU_RANGE_MAP **map, ZU_INT key, ZU_OBJ *value );
/// Removes the keys from `startingKey` to `endingKey`, as far as they are there.  A reversed range aborts.
ZU_API void zuRangeMapDelRangeKey( ZU_RANGE_MAP **map, ZU_INT startingKey, ZU_INT endingKey );
/// Removes the one key `key`, if it is there.
ZU_API void zuRangeMapDelIntKey( ZU_RANGE_MAP **map, ZU_INT key );
/// Replaces the map by a new, empty one, which collapses on demand only, even if the old one did so by itself.
ZU_API void zuRangeMapClear( ZU_RANGE_MAP **map );

ZU_END_DECLS
