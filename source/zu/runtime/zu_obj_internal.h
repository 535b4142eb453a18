// zu_obj_internal.h: the object database and the object logs, for the files that keep and show them, and the order of
// objects without a call, for containers.
#pragma once

#include "zu/runtime/zu_obj.h"
#include "zu/runtime/zu_sort.h"
#include "zu/sys/zu_chars.h"
#include "zu/sys/zu_fork_internal.h"
#include "zu/sys/zu_unique.h"

ZU_BEGIN_DECLS

// A line of an object's log, or the origin of the object, which stands for a line of each function and an empty one.
// It holds characters, not a string: a log refers to no object and keeps none alive.
struct ZU___OBJ_LOG_ENTRY {
    ZU_INT length;     // code points, or addresses
    ZU_CHAR *chars;    // behind the entry; null if the line is empty, or there is an origin
    uintptr_t *origin; // behind the entry: where each function goes on that was being called, the innermost first
    ZU___OBJ_LOG_ENTRY *next;
};

// A snapshot on the way: zeroed, it is filled between zu___ObjOdbLock and zu___ObjOdbUnlock, and becomes a vector then.
typedef struct ZU___OBJ_SNAPSHOT {
    ZU_OBJ **objs; // with a reference each; of zuMemAllocN, null if there are none
    ZU_INT count;
    ZU_INT capacity;
} ZU___OBJ_SNAPSHOT;
// Appends an object, unless it is dying already.
void zu___ObjSnapshotAppendLocked( ZU___OBJ_SNAPSHOT *snapshot, ZU_OBJ *obj );
// Appends all objects of a sort.
void zu___ObjSnapshotAppendSortLocked( ZU___OBJ_SNAPSHOT *snapshot, ZU_SORT *sort );
// Appends the active sorts of a module, or all their objects.
void zu___ModuleSnapshotAppendSortsLocked( ZU___OBJ_SNAPSHOT *snapshot, ZU_MODULE *module );
void zu___ModuleSnapshotAppendObjectsLocked( ZU___OBJ_SNAPSHOT *snapshot, ZU_MODULE *module );
// Returns a new vector of what has been collected, and takes it over.
ZU_VECTOR *zu___ObjSnapshotVector( ZU___OBJ_SNAPSHOT *snapshot );

// As zuObjCompare.  Two objects of one class, as nearly all keys are, take no detour to its order or to their numbers.
static inline ZU_INT zu___ObjCompareInline( ZU_OBJ *objA, ZU_OBJ *objB )
{
    if ( ZU___LIKELY( objA && objB && objA->sort && objA->sort == objB->sort ) ) {
        if ( ZU___LIKELY( objA->sort->compareFunc ) ) {
            return objA == objB ? 0 : objA->sort->compareFunc( objA, objB );
        }
        ZU_INT uniqueA = __atomic_load_n( &objA->unique, __ATOMIC_ACQUIRE );
        ZU_INT uniqueB = __atomic_load_n( &objB->unique, __ATOMIC_ACQUIRE );
        if ( uniqueA != ZU___UNIQUE_INVALID && uniqueB != ZU___UNIQUE_INVALID ) {
            return ( uniqueA > uniqueB ) - ( uniqueA < uniqueB );
        }
    }
    return zuObjCompare( objA, objB );
}

// Holds the object database and the logs together over a fork.
void zu___ObjFork( ZU___FORK_STEP step );

// Declares as zu___ObjDbgSetAllocationSize does, for an object that nobody but the caller holds: nobody else can
// declare at the same time, so that there is nothing to detect, and a store is enough.
static inline void zu___ObjDeclareAllocationSizePrivate( ZU_OBJ *thisObj, ZU_INT size )
{
    __atomic_store_n( &thisObj->dbgAllocationSize, size, __ATOMIC_RELEASE );
}

// Defines the checked downcast <prefix>From, and no more, for a class that only its own source file knows.
#define ZU___STDFUNCS_PRIVATE( type, prefix )  \
    static type *prefix##From( ZU_OBJ *obj )   \
    {                                          \
        ZU___STDFUNCS_CHECK_FROM( obj, type ); \
        return (type *)obj;                    \
    }

ZU_END_DECLS
