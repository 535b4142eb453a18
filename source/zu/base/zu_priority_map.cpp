// Two dicts answer the two questions: one is sorted by priority, the other one finds an object's place in it.  They
// are values themselves, so that a copy shares both until either map is changed.
//
// A map that nobody shares gives an object another priority where it stands: its entry moves, with what lies between
// the two places, and the dict of the objects is not touched.  Schedules do little else.

#include "zu/base/zu_priority_map_internal.h"

#include "zu/base/zu_dict_internal.h"
#include "zu/runtime/zu_module.h"
#include "zu/runtime/zu_obj_internal.h"
#include "zu/runtime/zu_ref_internal.h"

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
// Tells how an entry stands to one of this priority and value.
static ZU_INT priorityMapEntryOrder( const ZU___PRIORITY_MAP_ENTRY *entry, ZU_INT priority, ZU_OBJ *value )
{
    if ( entry->priority != priority ) {
        return entry->priority < priority ? -1 : 1;
    }
    if ( !entry->value || !value ) {
        return ( entry->value != nullptr ) - ( value != nullptr );
    }
    return zu___ObjCompareInline( entry->value, value );
}
static ZU_INT priorityMapEntryCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    ZU___PRIORITY_MAP_ENTRY *entryA = priorityMapEntryFrom( thisObj );
    ZU___PRIORITY_MAP_ENTRY *entryB = priorityMapEntryFrom( thatObj );
    return priorityMapEntryOrder( entryA, entryB->priority, entryB->value );
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
    zu___Owned entry( zuDictObjKey( map->objDict, obj ) );
    return entry ? zuDictIndexOfObjKey( map->entryDict, entry ) : -1;
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
    return priorityMapEntryFrom( zu___Owned( zuDictKeyAt( map->entryDict, idx ) ) )->priority;
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

// Returns where an entry of this priority and value stands or belongs.  The ends are tried first, as a dict does.
static ZU_INT priorityMapFind( const ZU_DICT *entryDict, ZU_INT priority, ZU_OBJ *value )
{
    auto isAhead = [ = ]( ZU_INT idx ) {
        return priorityMapEntryOrder( (ZU___PRIORITY_MAP_ENTRY *)zu___DictPair( entryDict, idx )->key, priority,
                                      value ) < 0;
    };
    ZU_INT last = entryDict->length - 1;
    if ( last < 0 || !isAhead( 0 ) ) {
        return 0;
    }
    if ( isAhead( last ) ) {
        return last + 1;
    }
    ZU_INT ahead = 0; // `last` is not
    while ( last - ahead > 1 ) {
        ZU_INT mid = ahead + ( last - ahead ) / 2;
        ( isAhead( mid ) ? ahead : last ) = mid;
    }
    return last;
}
// Gives an entry of a private map another priority.  False if that cannot be done in place: another map has it too.
static bool priorityMapTryMove( ZU_PRIORITY_MAP *map, ZU___PRIORITY_MAP_ENTRY *entry, ZU_INT priority )
{
    if ( ZU_REF_RETAIN_COUNT( map->entryDict ) > 1 || ZU_REF_RETAIN_COUNT( map->objDict ) > 1 ||
         ZU_REF_RETAIN_COUNT( entry ) > 2 ) {
        return false;
    }
    ZU_INT from = priorityMapFind( map->entryDict, entry->priority, entry->value );
    if ( from == map->entryDict->length || zu___DictPair( map->entryDict, from )->key != &entry->obj ) {
        return false; // the order of the objects contradicts itself
    }
    ZU_INT to = priorityMapFind( map->entryDict, priority, entry->value );
    zu___DictMovePair( map->entryDict, from, to > from ? to - 1 : to );
    entry->priority = priority;
    return true;
}

void zuPriorityMapSet( ZU_PRIORITY_MAP **map, ZU_INT priority, ZU_OBJ *obj )
{
    ZU_ASSERT( map );
    ZU_ASSERT( *map );
    ZU_ASSERT( obj );
    auto held = zu___HeldIf( obj == zuPriorityMapObj( *map ), obj );
    priorityMapUnshare( map );
    zu___Taken taken;
    ZU_PRIORITY_MAP *own = *map;
    ZU_INT idx = zuDictIndexOfObjKey( own->objDict, obj );
    ZU___PRIORITY_MAP_ENTRY *old =
        idx != -1 ? priorityMapEntryFrom( zu___DictPair( own->objDict, idx )->val ) : nullptr;
    bool done =
        old && ( old->priority == priority || ( old->value == obj && priorityMapTryMove( own, old, priority ) ) );
    if ( !done ) {
        if ( old ) {
            taken.add( zuObjRetain( &old->obj ) ); // which holds the object too
            zuDictDelAt( &own->objDict, idx );
            priorityMapDelEntry( own, &old->obj );
        }
        zu___Owned entry( priorityMapEntryCreate( priority, obj ) );
        zuDictSetObjKey( &own->entryDict, &entry->obj, obj );
        zuDictSetObjKey( &own->objDict, obj, &entry->obj );
    }
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
    zu___Owned entry( zuDictValueAt( ( *map )->objDict, idx ) );
    priorityMapUnshare( map );
    zuDictDelAt( &( *map )->objDict, idx );
    priorityMapDelEntry( *map, entry );
}
void zuPriorityMapDelAt( ZU_PRIORITY_MAP **map, ZU_INT idx )
{
    ZU_ASSERT( map );
    ZU_ASSERT( *map );
    priorityMapUnshare( map );
    zu___Owned obj( zuDictValueAt( ( *map )->entryDict, idx ) );
    zuDictDelAt( &( *map )->entryDict, idx );
    zuDictDelObjKey( &( *map )->objDict, obj );
}
void zuPriorityMapClear( ZU_PRIORITY_MAP **map )
{
    ZU_ASSERT( map );
    ZU_ASSERT( *map );
    ZU_PRIORITY_MAP *old = *map;
    *map = zuPriorityMapCreate();
    ZU_REF_RELEASE( old );
}
