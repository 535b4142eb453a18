// ZU_SORT: a class, as a record of its name and of up to three functions.
//
// Sorts are static objects: they are never freed, and need not be retained.  They are ordered by name.
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

typedef struct ZU_MODULE ZU_MODULE;

// zuSortRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_SORT, zuSort )

/// Returns the sort's name, such as "ZU_STRING"; one that is not in upper-case style aborts.
ZU_API ZU_STRING *zuSortName( ZU_SORT *sort );
/// Returns the module that defines the sort, not retained; null if there is none.
ZU_API ZU_MODULE *zuSortModule( ZU_SORT *sort );
/// Tells whether a module defines the sort.
ZU_API ZU_BOOL zuSortHasModule( ZU_SORT *sort );
/// Returns the number of live objects of the sort.
ZU_API ZU_INT zuSortObjects( ZU_SORT *sort );
/// Returns a new vector of the sort's live objects, oldest first and itself not among them; null unless the process
/// keeps the object database.  The vector keeps them alive.
///
/// For quiet moments: an object that another thread is just creating may be among them, and is not to be touched beyond
/// its header; and a thread that is just changing a value which nobody else held can abort over the reference to it.
ZU_API ZU_VECTOR *zuSortSnapshot( ZU_SORT *sort );

// For authors of classes and modules

/// Releases and frees all that a dying object owns, but not the object itself.  Its retain count is 0.
typedef void ( *ZU___SORT_FREE_FUNC )( ZU_OBJ *thisObj );
/// Orders two different objects of the sort: negative, 0 or positive.  Containers call it amid a search or a change, so
/// that it must not change what the objects are in.
typedef ZU_INT ( *ZU___SORT_COMPARE_FUNC )( ZU_OBJ *thisObj, ZU_OBJ *thatObj );
/// Returns a text for an object of the sort.
typedef ZU_STRING *( *ZU___SORT_TO_STRING_FUNC )( ZU_OBJ *thisObj );

struct ZU_SORT {
    ZU_OBJ obj;
    ZU_MODULE *module;                     // null: none
    const char *name;                      // upper-case style; identifies the class within a process
    ZU___SORT_FREE_FUNC freeFunc;          // each of the three may be null
    ZU___SORT_COMPARE_FUNC compareFunc;    // null: ordered by identity
    ZU___SORT_TO_STRING_FUNC toStringFunc; // null: prints as zuObjDefaultToStringFunc tells
    uint32_t objects;                      // live objects; atomic
    ZU_OBJ *objectsFirst;                  // the live objects and, among the module's active sorts, the neighbours:
    ZU_OBJ *objectsLast;                   // kept with the object database
    ZU_SORT *sortsPrevious;
    ZU_SORT *sortsNext;
};

// The header of a static object of the given kind.
#define ZU___OBJ_STATIC_INITIALIZER( type )                    \
    {                                                          \
        type, NULL, { 0 }, -1, 1, 0, 0, NULL, NULL, NULL, NULL \
    }

/// Initialises a sort record; nothing registers it:
///
///     static ZU_SORT zu___sort_ZU_GAUGE =
///         ZU___SORT_INITIALIZER( "ZU_GAUGE", &zu___module, gaugeFree, gaugeCompare, gaugeToString );
#define ZU___SORT_INITIALIZER( name, module, freeFunc, compareFunc, toStringFunc )                                     \
    {                                                                                                                  \
        ZU___OBJ_STATIC_INITIALIZER( ZU___OBJ_TYPE_SORT ), module, name, freeFunc, compareFunc, toStringFunc, 0, NULL, \
            NULL, NULL, NULL                                                                                           \
    }

ZU_END_DECLS
