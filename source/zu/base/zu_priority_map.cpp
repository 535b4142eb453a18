// Two dicts answer the two questions: one is sorted by priority, the other one finds an object's place in it.  They are
// values themselves, so that a copy shares both until either map is changed.

#include "zu/base/zu_priority_map_internal.h"

#include "zu/runtime/zu_module.h"

static void priorityMapFree( ZU_OBJ *thisObj );
static ZU_INT priorityMapCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj );

static ZU_SORT zu___sort_ZU_PRIORITY_MAP =
    ZU___SORT_INITIALIZER( "ZU_PRIORITY_MAP", &zu___module, priorityMapFree, priorityMapCompare, nullptr );
ZU___STDFUNCS( ZU_PRIORITY_MAP, zuPriorityMap )

static void priorityMapEntryFree( ZU_OBJ *thisObj );
static ZU_INT priorityMapEntryCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj );

static ZU_SORT zu___sort_ZU___PRIORITY_MAP_ENTRY = ZU___SORT_INITIALIZER(
    "ZU___PRIORITY_MAP_ENTRY", &zu___module, priorityMapEntryFree, priorityMapEntryCompare, nullptr );

// Entries
static ZU___PRIORITY_MAP_ENTRY *priorityMapEntryCreate( ZU_INT priority, ZU_OBJ *value )
{
    ZU___PRIORITY_MAP_ENTRY *entry = (ZU___PRIORITY_MAP_ENTRY *)zu___ObjCreate( sizeof( ZU___PRIORITY_MAP_ENTRY ),
                                                                                &zu___sort_ZU___PRIORITY_MAP_ENTRY );
    entry->priority = priority;
    entry->value = zuObjRetain( value );
    return entry;
}
static ZU___PRIORITY_MAP_ENTRY *priorityMapEntryFrom( ZU_OBJ *obj )
{
    ZU_ASSERT( obj );
    ZU_ASSERT( zuObjSort( obj ) == &zu___sort_ZU___PRIORITY_MAP_ENTRY );
    return (ZU___PRIORITY_MAP_ENTRY *)obj;
}
static void priorityMapEntryFree( ZU_OBJ *thisObj )
{
    ZU___PRIORITY_MAP_ENTRY *entry = priorityMapEntryFrom( thisObj );
    ZU_REF_RELEASE_OPT( entry->value );
    ZU_REF_POISON( entry->value );
}
static ZU_INT priorityMapEntryCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    ZU___PRIORITY_MAP_ENTRY *entryA = priorityMapEntryFrom( thisObj );
    ZU___PRIORITY_MAP_ENTRY *entryB = priorityMapEntryFrom( thatObj );
    if ( entryA->priority != entryB->priority ) {
        return entryA->priority < entryB->priority ? -1 : 1;
    }
    if ( !entryA->value || !entryB->value ) {
        return ( entryA->value != nullptr ) - ( entryB->value != nullptr );
    }
    return zuObjCompare( entryA->value, entryB->value );
}

// Creation
static ZU_PRIORITY_MAP *priorityMapCreate( ZU_DICT *entryDict, ZU_DICT *objDict )
{
    ZU_PRIORITY_MAP *map = (ZU_PRIORITY_MAP *)zu___ObjCreate( sizeof( ZU_PRIORITY_MAP ), &zu___sort_ZU_PRIORITY_MAP );
    map->entryDict = entryDict;
    map->objDict = objDict;
    return map;
}
ZU_PRIORITY_MAP *zuPriorityMapCreate( void )
{
    return priorityMapCreate( zuDictCreate(), zuDictCreate() );
}
ZU_PRIORITY_MAP *zuPriorityMapCreateFrom( ZU_PRIORITY_MAP *map )
{
    ZU_ASSERT( map );
    return priorityMapCreate( zuDictRetain( map->entryDict ), zuDictRetain( map->objDict ) );
}

static void priorityMapUnshare( ZU_PRIORITY_MAP **map )
{
    if ( ZU_REF_RETAIN_COUNT( *map ) > 1 ) {
        ZU_PRIORITY_MAP *old = *map;
        *map = zuPriorityMapCreateFrom( old );
        ZU_REF_RELEASE( old );
    }
}

// Standard functions
static void priorityMapFree( ZU_OBJ *thisObj )
{
    ZU_PRIORITY_MAP *map = zuPriorityMapFrom( thisObj );
    ZU_ASSERT( map );
    ZU_REF_RELEASE( map->entryDict );
    ZU_REF_POISON( map->entryDict );
    ZU_REF_RELEASE( map->objDict );
    ZU_REF_POISON( map->objDict );
}
static ZU_INT priorityMapCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    ZU_PRIORITY_MAP *mapA = zuPriorityMapFrom( thisObj );
    ZU_PRIORITY_MAP *mapB = zuPriorityMapFrom( thatObj );
    ZU_ASSERT( mapA );
    ZU_ASSERT( mapB );
    return zuDictCompare( mapA->entryDict, mapB->entryDict );
}

// Access by object
ZU_BOOL zuPriorityMapHas( ZU_PRIORITY_MAP *map, ZU_OBJ *obj )
{
    ZU_ASSERT( map );
    ZU_ASSERT( obj );
    return zuDictHasObjKey( map->objDict, obj );
}
ZU_INT zuPriorityMapIndexOf( ZU_PRIORITY_MAP *map, ZU_OBJ *obj )
{
    ZU_ASSERT( map );
    ZU_ASSERT( obj );
    ZU_OBJ *entry = zuDictObjKey( map->objDict, obj );
    if ( !entry ) {
        return -1;
    }
    ZU_INT idx = zuDictIndexOfObjKey( map->entryDict, entry );
    ZU_REF_RELEASE( entry );
    return idx;
}

// Access by position
ZU_INT zuPriorityMapLength( ZU_PRIORITY_MAP *map )
{
    ZU_ASSERT( map );
    return zuDictLength( map->entryDict );
}
ZU_INT zuPriorityMapPriorityAt( ZU_PRIORITY_MAP *map, ZU_INT idx )
{
    ZU_ASSERT( map );
    ZU_OBJ *entry = zuDictKeyAt( map->entryDict, idx );
    ZU_INT priority = priorityMapEntryFrom( entry )->priority;
    ZU_REF_RELEASE( entry );
    return priority;
}
ZU_OBJ *zuPriorityMapValueAt( ZU_PRIORITY_MAP *map, ZU_INT idx )
{
    ZU_ASSERT( map );
    return zuDictValueAt( map->entryDict, idx );
}
ZU_VECTOR *zuPriorityMapValuesVector( ZU_PRIORITY_MAP *map )
{
    ZU_ASSERT( map );
    return zuDictValuesVector( map->entryDict );
}

// Ends and neighbours

// Returns the object at `idx` and its priority; null and 0 for a position outside.
static ZU_OBJ *priorityMapTake( ZU_PRIORITY_MAP *map, ZU_INT idx, ZU_INT *priority )
{
    bool found = idx >= 0 && idx < zuDictLength( map->entryDict );
    if ( priority ) {
        *priority = found ? zuPriorityMapPriorityAt( map, idx ) : 0;
    }
    return found ? zuPriorityMapValueAt( map, idx ) : nullptr;
}
ZU_OBJ *zuPriorityMapLowest( ZU_PRIORITY_MAP *map, ZU_INT *priority )
{
    ZU_ASSERT( map );
    return priorityMapTake( map, 0, priority );
}
ZU_OBJ *zuPriorityMapHighest( ZU_PRIORITY_MAP *map, ZU_INT *priority )
{
    ZU_ASSERT( map );
    return priorityMapTake( map, zuDictLength( map->entryDict ) - 1, priority );
}
ZU_OBJ *zuPriorityMapLower( ZU_PRIORITY_MAP *map, ZU_OBJ *obj, ZU_INT *priority )
{
    ZU_ASSERT( map );
    ZU_ASSERT( obj );
    ZU_INT idx = zuPriorityMapIndexOf( map, obj );
    return priorityMapTake( map, idx == -1 ? -1 : idx - 1, priority );
}
ZU_OBJ *zuPriorityMapHigher( ZU_PRIORITY_MAP *map, ZU_OBJ *obj, ZU_INT *priority )
{
    ZU_ASSERT( map );
    ZU_ASSERT( obj );
    ZU_INT idx = zuPriorityMapIndexOf( map, obj );
    return priorityMapTake( map, idx == -1 ? -1 : idx + 1, priority );
}

// Change

// Removes an entry from the entry dict of a private map.
static void priorityMapDelEntry( ZU_PRIORITY_MAP *map, ZU_OBJ *entry )
{
    ZU_INT idx = zuDictIndexOfObjKey( map->entryDict, entry );
    ZU_ASSERT( idx != -1 );
    zuDictDelAt( &map->entryDict, idx );
}

void zuPriorityMapSet( ZU_PRIORITY_MAP **map, ZU_INT priority, ZU_OBJ *obj )
{
    ZU_ASSERT( map );
    ZU_ASSERT( *map );
    ZU_ASSERT( obj );
    // Held meanwhile: if it is the map itself, that forces the copy, which might else be its end.
    ZU_OBJ *held = obj == zuPriorityMapObj( *map ) ? zuObjRetain( obj ) : nullptr;
    priorityMapUnshare( map );
    ZU_PRIORITY_MAP *own = *map;
    ZU_INT idx = zuDictIndexOfObjKey( own->objDict, obj );
    bool same = false;
    if ( idx != -1 ) {
        ZU_OBJ *old = zuDictValueAt( own->objDict, idx );
        same = priorityMapEntryFrom( old )->priority == priority;
        if ( !same ) {
            zuDictDelAt( &own->objDict, idx );
            priorityMapDelEntry( own, old );
        }
        ZU_REF_RELEASE( old );
    }
    if ( !same ) {
        ZU___PRIORITY_MAP_ENTRY *entry = priorityMapEntryCreate( priority, obj );
        zuDictSetObjKey( &own->entryDict, &entry->obj, obj );
        zuDictSetObjKey( &own->objDict, obj, &entry->obj );
        ZU_REF_RELEASE( entry );
    }
    ZU_REF_RELEASE_OPT( held );
}
void zuPriorityMapDel( ZU_PRIORITY_MAP **map, ZU_OBJ *obj )
{
    ZU_ASSERT( map );
    ZU_ASSERT( *map );
    ZU_ASSERT( obj );
    ZU_INT idx = zuDictIndexOfObjKey( ( *map )->objDict, obj );
    if ( idx == -1 ) {
        return;
    }
    ZU_OBJ *entry = zuDictValueAt( ( *map )->objDict, idx );
    priorityMapUnshare( map );
    zuDictDelAt( &( *map )->objDict, idx );
    priorityMapDelEntry( *map, entry );
    ZU_REF_RELEASE( entry );
}
void zuPriorityMapDelAt( ZU_PRIORITY_MAP **map, ZU_INT idx )
{
    ZU_ASSERT( map );
    ZU_ASSERT( *map );
    priorityMapUnshare( map );
    ZU_OBJ *obj = zuDictValueAt( ( *map )->entryDict, idx );
    zuDictDelAt( &( *map )->entryDict, idx );
    zuDictDelObjKey( &( *map )->objDict, obj );
    ZU_REF_RELEASE( obj );
}
void zuPriorityMapClear( ZU_PRIORITY_MAP **map )
{
    ZU_ASSERT( map );
    ZU_ASSERT( *map );
    ZU_PRIORITY_MAP *old = *map;
    *map = zuPriorityMapCreate();
    ZU_REF_RELEASE( old );
}
