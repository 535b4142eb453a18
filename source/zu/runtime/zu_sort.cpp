// Sorts are static records of the modules that have the classes, never created and never freed: an object points to its
// own, and to find out its class is to read one word.

#include "zu/runtime/zu_sort.h"

#include "zu/base/zu_name.h"
#include "zu/runtime/zu_module.h"
#include "zu/runtime/zu_obj_internal.h"

#include <cstring>

static void sortFree( ZU_OBJ *thisObj );
static ZU_INT sortCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj );
static ZU_STRING *sortToString( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_SORT =
    ZU___SORT_INITIALIZER( "ZU_SORT", &zu___module, sortFree, sortCompare, sortToString );
ZU___STDFUNCS( ZU_SORT, zuSort )

// Sorts are static and never die.
static void sortFree( ZU_OBJ *thisObj )
{
    ZU_ASSERT( &zu___sort_ZU_SORT == zuObjSort( thisObj ) );
    zu___Abort( "sort free", __FILE__, __LINE__, nullptr );
}
// A name identifies a sort, so two records of one name are a fault.
static ZU_INT sortCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    ZU_SORT *sortA = zuSortFrom( thisObj );
    ZU_SORT *sortB = zuSortFrom( thatObj );
    ZU_ASSERT( sortA );
    ZU_ASSERT( sortB );
    ZU_ASSERT( sortA->name );
    ZU_ASSERT( sortB->name );
    if ( sortA == sortB ) {
        return 0;
    }
    int order = strcmp( sortA->name, sortB->name );
    if ( order == 0 ) {
        ZU_ABORT();
    }
    return order < 0 ? -1 : 1;
}
static ZU_STRING *sortToString( ZU_OBJ *thisObj )
{
    return zuSortName( zuSortFrom( thisObj ) );
}

ZU_STRING *zuSortName( ZU_SORT *sort )
{
    ZU_ASSERT( sort );
    ZU_ASSERT( sort->name );
    ZU_STRING *zus = zuStringCreateFromCstr( sort->name, -1 );
    ZU_ASSERT( zuNameUpperCaseOk( zus, ZU_TRUE ) );
    return zus;
}
ZU_MODULE *zuSortModule( ZU_SORT *sort )
{
    ZU_ASSERT( sort );
    return sort->module;
}
ZU_BOOL zuSortHasModule( ZU_SORT *sort )
{
    ZU_ASSERT( sort );
    return sort->module != nullptr;
}
ZU_INT zuSortObjects( ZU_SORT *sort )
{
    ZU_ASSERT( sort );
    return __atomic_load_n( &sort->objects, __ATOMIC_ACQUIRE );
}

ZU_VECTOR *zuSortSnapshot( ZU_SORT *sort )
{
    ZU_ASSERT( sort );
    if ( !zu___ObjOdbEnabled() ) {
        return nullptr;
    }
    ZU___OBJ_SNAPSHOT snapshot = {};
    zu___ObjOdbLock();
    zu___ObjSnapshotAppendSortLocked( &snapshot, sort );
    zu___ObjOdbUnlock();
    return zu___ObjSnapshotVector( &snapshot );
}
