// ZU_PRIORITY_MAP: objects in the order of priorities that are given to them.
//
// A copy-on-write value; zu_obj.h tells what holds for all of them.  Each object is in a map at most once, objects
// that compare equal counting as one; its priority is any integer.  Positions go by ascending priority, and among
// objects of the same priority by zuObjCompare.  Looking up an object, a position or either end takes logarithmic
// time at most; a change moves what is behind or, where only a priority changes, between the two places, and in a large
// map about the root of the length, as a dict does.  Copying a shared map costs no more than an object, whatever its
// length.
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

typedef struct ZU_VECTOR ZU_VECTOR;

typedef struct ZU_PRIORITY_MAP ZU_PRIORITY_MAP;
// zuPriorityMapRetain, Release, From, Obj, Sort, ToString, Compare, Equals
//
// Maps are ordered object by object, by priority and then by the objects.
ZU_STDFUNCS_DECLARE( ZU_PRIORITY_MAP, zuPriorityMap )

// Creation
/// Returns a new, empty map.
ZU_API ZU_PRIORITY_MAP *zuPriorityMapCreate( void );
/// Returns a new object with the objects and priorities of `map`.
ZU_API ZU_PRIORITY_MAP *zuPriorityMapCreateFrom( ZU_PRIORITY_MAP *map );

// Access by object
/// Tells whether `obj` is in the map.
ZU_API ZU_BOOL zuPriorityMapHas( ZU_PRIORITY_MAP *map, ZU_OBJ *obj );
/// Returns the position of `obj`; -1 if it is not in the map.
ZU_API ZU_INT zuPriorityMapIndexOf( ZU_PRIORITY_MAP *map, ZU_OBJ *obj );

// Access by position; a position outside aborts
/// Returns the number of objects.
ZU_API ZU_INT zuPriorityMapLength( ZU_PRIORITY_MAP *map );
/// Returns the priority of the object at `idx`.
ZU_API ZU_INT zuPriorityMapPriorityAt( ZU_PRIORITY_MAP *map, ZU_INT idx );
/// Returns the object at `idx`.
ZU_API ZU_OBJ *zuPriorityMapValueAt( ZU_PRIORITY_MAP *map, ZU_INT idx );
/// Returns all objects in their order.
ZU_API ZU_VECTOR *zuPriorityMapValuesVector( ZU_PRIORITY_MAP *map );

// Ends and neighbours
//
// Each returns null if there is no such object.  `priority`, which may be null, receives the priority of the one that
// is returned, 0 with null.
/// Returns the first object, which has the lowest priority.
ZU_API ZU_OBJ *zuPriorityMapLowest( ZU_PRIORITY_MAP *map, ZU_INT *priority );
/// Returns the last object, which has the highest priority.
ZU_API ZU_OBJ *zuPriorityMapHighest( ZU_PRIORITY_MAP *map, ZU_INT *priority );
/// Returns the object ahead of `obj`; null also if that is not in the map.
ZU_API ZU_OBJ *zuPriorityMapLower( ZU_PRIORITY_MAP *map, ZU_OBJ *obj, ZU_INT *priority );
/// Returns the object behind `obj`; null also if that is not in the map.
ZU_API ZU_OBJ *zuPriorityMapHigher( ZU_PRIORITY_MAP *map, ZU_OBJ *obj, ZU_INT *priority );

// Change
/// Puts `obj` in with this priority, or gives it this one instead of its own; with its own one already the object
/// that is in the map stays.
ZU_API void zuPriorityMapSet( ZU_PRIORITY_MAP **map, ZU_INT priority, ZU_OBJ *obj );
/// Removes `obj`, if it is in the map.
ZU_API void zuPriorityMapDel( ZU_PRIORITY_MAP **map, ZU_OBJ *obj );
/// Removes the object at `idx`; a position outside aborts.
ZU_API void zuPriorityMapDelAt( ZU_PRIORITY_MAP **map, ZU_INT idx );
/// Replaces the map by a new, empty one.
ZU_API void zuPriorityMapClear( ZU_PRIORITY_MAP **map );

ZU_END_DECLS
