// zu_obj.h: reference-counted objects of declared sorts.
//
// Every class is a sort (zu_sort.h), and every object begins with the header ZU_OBJ.  What holds for all classes:
//
// - A function that returns an object returns a reference that the caller must release, whether the object is new or
//   not.  Only functions that return a sort or a module's static record hand out no reference.
// - An object given as an argument is borrowed for the call; a class that keeps it retains it.  Null aborts unless the
//   function says otherwise.
// - Any object may be retained and released by any thread.  The last release frees the object before it returns, on the
//   releasing thread, with all that only this object held.
// - A copy-on-write value may be held by any number of threads.  The functions that change it take the address of the
//   holder's reference, and replace that by a private copy first if anybody else holds the value: retaining is copying.
//   One holder's variable is changed by one thread at a time.
//
// docs/objects.md tells more, and docs/sorts.md how to declare a sort.
#pragma once

#include "zu/sys/zu_lock.h"

ZU_BEGIN_DECLS

typedef struct ZU_OBJ ZU_OBJ;
typedef struct ZU_SORT ZU_SORT;
typedef struct ZU_STRING ZU_STRING;
typedef struct ZU_VECTOR ZU_VECTOR;
typedef struct ZU___OBJ_LOG_ENTRY ZU___OBJ_LOG_ENTRY;
typedef uint32_t ZU___RETAIN_COUNT;

// The standard operations
//
// Each class ZU_X with the prefix zuX has these eight, declared by ZU_STDFUNCS_DECLARE:
//
//     ZU_X *zuXRetain( ZU_X *obj )                    adds a reference and returns obj
//     void zuXRelease( ZU_X *obj )                    gives a reference up
//     ZU_X *zuXFrom( ZU_OBJ *obj )                    casts down; null stays null, another sort aborts; does not retain
//     ZU_OBJ *zuXObj( ZU_X *obj )                     casts up; null stays null
//     ZU_SORT *zuXSort( void )                        returns the class's sort, not retained
//     ZU_STRING *zuXToString( ZU_X *obj )             returns a text, as zuObjToString does
//     ZU_INT zuXCompare( ZU_X *objA, ZU_X *objB )     orders as zuObjCompare does: -1, 0 or 1 by custom
//     ZU_BOOL zuXEquals( ZU_X *objA, ZU_X *objB )     tells whether that order has them equal
//
// Retain and release are inlined at the call.

// Objects of any sort
/// Adds a reference and returns `obj`.
ZU_API ZU_OBJ *zuObjRetain( ZU_OBJ *obj );
/// Gives a reference up; the last one frees the object.
ZU_API void zuObjRelease( ZU_OBJ *obj );
/// Returns the object's sort, not retained.
ZU_API ZU_SORT *zuObjSort( ZU_OBJ *thisObj );
/// Compares in the total order over all objects: by the class's own order within a sort that has one, by identity
/// within one that has none, and by the names of the sorts otherwise.  Negative, 0 or positive; -1, 0 or 1 by custom.
/// The order by identity holds as long as both objects live.
ZU_API ZU_INT zuObjCompare( ZU_OBJ *objA, ZU_OBJ *objB );
/// Compares by the names of the sorts, then by identity: the order of classes that have none of their own.
ZU_API ZU_INT zuObjDefaultCompareFunc( ZU_OBJ *thisObj, ZU_OBJ *thatObj );
/// Returns a text for the object: what its class makes of it, or zuObjDefaultToStringFunc.
ZU_API ZU_STRING *zuObjToString( ZU_OBJ *thisObj );
/// Returns the sort's name and, in parentheses, the object's number in hexadecimal: "ZU_GAUGE(1F)".
ZU_API ZU_STRING *zuObjDefaultToStringFunc( ZU_OBJ *thisObj );
/// Takes the object's own lock; a static object aborts.  The lock is not recursive.
ZU_API void zuObjLockAcquire( ZU_OBJ *thisObj );
/// Frees the object's own lock; a static object aborts.
ZU_API void zuObjLockRelease( ZU_OBJ *thisObj );

// For authors of classes and modules

// Kinds of object; the two static kinds have no `sort`, which their kind implies, and are never freed.
#define ZU___OBJ_TYPE_OBJECT ( (ZU_INT)0 ) // made by zu___ObjCreate
#define ZU___OBJ_TYPE_SORT   ( (ZU_INT)1 ) // a ZU_SORT
#define ZU___OBJ_TYPE_MODULE ( (ZU_INT)2 ) // a ZU_MODULE

// The header.  A class only ever touches `lock`, by the functions above; the layout is public for the sake of inlining.
struct ZU_OBJ {
    ZU_INT type;   // one of ZU___OBJ_TYPE_...
    ZU_SORT *sort; // null in the static kinds
    ZU___LOCK lock;
    ZU_INT unique;                 // -1 until asked for; atomic
    ZU___RETAIN_COUNT retainCount; // atomic
    ZU_INT objectSize;             // in bytes, header included
    ZU_INT dbgAllocationSize;      // bytes that the class keeps beside the object; atomic
    ZU___OBJ_LOG_ENTRY *logFirst;
    ZU___OBJ_LOG_ENTRY *logLast;
    ZU_OBJ *objectsPrevious; // neighbours among the live objects of the sort, kept with the object database
    ZU_OBJ *objectsNext;
};

// References.  The decrement orders every holder's last use ahead of the free; the reading acquires, so that a holder
// that reads 1 sees what the others did.  The increment needs no order, since who retains has the object already; it is
// a full barrier like all changes of atomic words in the header, which classes may rely on, and on x86 costs nothing.
#ifdef ZU_HELGRIND // the library's functions, which tell helgrind of that order: docs/debugging.md
#define ZU___RETAIN_COUNT_VALUE( count )     zu___RetainCountValue( &( count ) )
#define ZU___RETAIN_COUNT_INCREMENT( count ) zu___RetainCountIncrement( &( count ) )
#define ZU___RETAIN_COUNT_DECREMENT( count ) zu___RetainCountDecrement( &( count ) )
#else
#define ZU___RETAIN_COUNT_VALUE( count )     __atomic_load_n( &( count ), __ATOMIC_ACQUIRE )
#define ZU___RETAIN_COUNT_INCREMENT( count ) __atomic_add_fetch( &( count ), 1, __ATOMIC_ACQ_REL )
#define ZU___RETAIN_COUNT_DECREMENT( count ) __atomic_sub_fetch( &( count ), 1, __ATOMIC_ACQ_REL )
#endif

/// Reads the retain count of `obj`.  To a holder 1 means that nobody else has a reference, until it shares its own.
#define ZU_REF_RETAIN_COUNT( obj ) ZU___RETAIN_COUNT_VALUE( ( (ZU_OBJ *)( obj ) )->retainCount )

/// Releases the reference `expr`, of any class; null aborts.
#define ZU_REF_RELEASE( expr )                             \
    do {                                                   \
        ZU_OBJ *zu___ref_release_tmp = (ZU_OBJ *)( expr ); \
        ZU_ASSERT( zu___ref_release_tmp );                 \
        zu___RefRelease( zu___ref_release_tmp );           \
    } while ( 0 )

/// Releases the reference `expr`, of any class; null is skipped.
#define ZU_REF_RELEASE_OPT( expr )                         \
    do {                                                   \
        ZU_OBJ *zu___ref_release_tmp = (ZU_OBJ *)( expr ); \
        if ( zu___ref_release_tmp ) {                      \
            zu___RefRelease( zu___ref_release_tmp );       \
        }                                                  \
    } while ( 0 )

/// Overwrites a pointer variable that must not be used again by all bits set, so that a later use faults at once.
#define ZU_REF_POISON( variable )                                                    \
    do {                                                                             \
        void *zu___ref_poison_tmp = (void *)UINTPTR_MAX;                             \
        __builtin_memcpy( &( variable ), &zu___ref_poison_tmp, sizeof( variable ) ); \
    } while ( 0 )

/// Creates an object of `size` bytes, header included, with a retain count of 1.  Behind the header the memory comes
/// as it is: the class sets every field.
ZU_API ZU_OBJ *zu___ObjCreate( ZU_INT size, ZU_SORT *sort );
/// Frees an object whose retain count has come to 0; does nothing to a static one.
ZU_API void zu___ObjFree( ZU_OBJ *thisObj );
/// Returns the object's number, which is given out on first demand and belongs to the object for its lifetime; -1 for a
/// static object.
ZU_API ZU_INT zu___ObjUnique( ZU_OBJ *thisObj );
/// Adds 1 to a retain count and returns the new value.
ZU_API ZU___RETAIN_COUNT zu___RetainCountIncrement( ZU___RETAIN_COUNT *count );
/// Takes 1 from a retain count and returns the new value.
ZU_API ZU___RETAIN_COUNT zu___RetainCountDecrement( ZU___RETAIN_COUNT *count );
/// Reads a retain count.
ZU_API ZU___RETAIN_COUNT zu___RetainCountValue( ZU___RETAIN_COUNT *count );

// Memory that a class keeps beside its object, told to diagnostics after every change of it
/// Returns the size that was given at the object's creation.
ZU_API ZU_INT zu___ObjDbgObjectSize( ZU_OBJ *thisObj );
/// Returns the size that was declared last, 0 at first.
ZU_API ZU_INT zu___ObjDbgAllocationSize( ZU_OBJ *thisObj );
/// Declares `size` bytes; two threads that do it at a time abort.
ZU_API void zu___ObjDbgSetAllocationSize( ZU_OBJ *thisObj, ZU_INT size );
/// Declares `count` elements of `size` bytes.
ZU_API void zu___ObjDbgSetAllocationSizeN( ZU_OBJ *thisObj, ZU_INT count, ZU_INT size );

// Logs: lines of text that an object carries until it dies, for whoever looks for what keeps it alive.  An object that
// is created under ZU_RUNTIME_FLAG_OBJECT_ORIGIN begins with the lines of a stack trace, from the function that created
// it outwards, and an empty one; strings, vectors, dicts, buffers and stack traces do not.
/// Returns the lines as a new vector of strings; null if there are none.
ZU_API ZU_VECTOR *zu___ObjLog( ZU_OBJ *thisObj );
/// Appends `logMessage` as one line.
ZU_API void zu___ObjLogAppend( ZU_OBJ *thisObj, ZU_STRING *logMessage );
/// Appends a line for each element of `vec`, its text; lines of other threads do not come in between.
ZU_API void zu___ObjLogAppendVector( ZU_OBJ *thisObj, ZU_VECTOR *vec );
/// Appends the lines of a stack trace and an empty one.  The trace leaves out the innermost `skip` functions, of which
/// the first is this one, and has at most `depth` lines, -1: no limit.
ZU_API void zu___ObjLogAppendCallStack( ZU_OBJ *thisObj, ZU_INT skip, ZU_INT depth );

// The object database, kept with ZU_RUNTIME_FLAG_OBJECT_DATABASE: which objects of a sort live, and which sorts of a
// module have such
/// Tells whether it is kept.
ZU_API ZU_BOOL zu___ObjOdbEnabled( void );
/// Keeps the chains of objects and sorts as they are until zu___ObjOdbUnlock; aborts if they are not kept.  Meanwhile
/// the caller must neither create nor release objects.
ZU_API void zu___ObjOdbLock( void );
/// Ends what zu___ObjOdbLock began.
ZU_API void zu___ObjOdbUnlock( void );

/// Reads the runtime flags that concern objects, and makes the locks of the object database and of the logs ready.
ZU_API void zu___ObjStartup( void );
/// Ends what zu___ObjStartup began.
ZU_API void zu___ObjShutdown( void );

// Behind ZU_REF_RELEASE and the releases of all classes.  Not static: C does not let an inline function that has
// external linkage refer to one that has none.
ZU___INLINE_TWIN void zu___RefRelease( ZU_OBJ *obj )
{
    if ( ZU___RETAIN_COUNT_DECREMENT( obj->retainCount ) == 0 ) {
        zu___ObjFree( obj );
    }
}

// For templates in C++: the cast down, overloaded by class.
#ifdef __cplusplus
#define ZU___STDFUNCS_OVERLOAD( type, prefix )          \
    extern "C++" {                                      \
    inline type *zu___From( ZU_OBJ *obj, const type * ) \
    {                                                   \
        return prefix##From( obj );                     \
    }                                                   \
    }
#else
#define ZU___STDFUNCS_OVERLOAD( type, prefix )
#endif

/// Declares the standard operations of the class `type` with the prefix `prefix`; for a header.
#define ZU_STDFUNCS_DECLARE( type, prefix )                                                  \
    ZU_API type *prefix##Retain( type *obj );                                                \
    ZU_API void prefix##Release( type *obj );                                                \
    ZU_API type *prefix##From( ZU_OBJ *obj );                                                \
    ZU_API ZU_OBJ *prefix##Obj( type *obj );                                                 \
    ZU_API ZU_SORT *prefix##Sort( void );                                                    \
    ZU_API ZU_STRING *prefix##ToString( type *obj );                                         \
    ZU_API ZU_INT prefix##Compare( type *objA, type *objB );                                 \
    ZU_API ZU_BOOL prefix##Equals( type *objA, type *objB );                                 \
    ZU_API type *zu___outlined_##prefix##Retain( type *obj ) ZU___SYMBOL( prefix##Retain );  \
    ZU_API void zu___outlined_##prefix##Release( type *obj ) ZU___SYMBOL( prefix##Release ); \
    ZU___INLINE_TWIN type *prefix##Retain( type *obj )                                       \
    {                                                                                        \
        if ( ZU___UNLIKELY( !obj ) ) {                                                       \
            return zu___outlined_##prefix##Retain( obj );                                    \
        }                                                                                    \
        ZU___RETAIN_COUNT_INCREMENT( ( (ZU_OBJ *)obj )->retainCount );                       \
        return obj;                                                                          \
    }                                                                                        \
    ZU___INLINE_TWIN void prefix##Release( type *obj )                                       \
    {                                                                                        \
        if ( ZU___UNLIKELY( !obj ) ) {                                                       \
            zu___outlined_##prefix##Release( obj );                                          \
            return;                                                                          \
        }                                                                                    \
        zu___RefRelease( (ZU_OBJ *)obj );                                                    \
    }                                                                                        \
    ZU___STDFUNCS_OVERLOAD( type, prefix )

/// Defines the standard operations of the class `type`, whose sort record zu___sort_<type> stands above; for the
/// class's source file.  Failed checks in all of them name this one line.
#define ZU___STDFUNCS( type, prefix )                               \
    ZU___STDFUNCS_BUT_ORDER( type, prefix )                         \
    ZU_INT prefix##Compare( type *objA, type *objB )                \
    {                                                               \
        ZU___STDFUNCS_CHECK( objA, "stdfunc compare a", "objA" );   \
        ZU___STDFUNCS_CHECK( objB, "stdfunc compare b", "objB" );   \
        return zuObjCompare( (ZU_OBJ *)objA, (ZU_OBJ *)objB );      \
    }                                                               \
    ZU_BOOL prefix##Equals( type *objA, type *objB )                \
    {                                                               \
        return zuObjCompare( (ZU_OBJ *)objA, (ZU_OBJ *)objB ) == 0; \
    }

// The same without comparison and equality, for a class that has faster ones of its own.
#define ZU___STDFUNCS_BUT_ORDER( type, prefix )                        \
    type *zu___outlined_##prefix##Retain( type *obj )                  \
    {                                                                  \
        ZU___STDFUNCS_CHECK( obj, "stdfunc retain", "obj" );           \
        ZU___RETAIN_COUNT_INCREMENT( ( (ZU_OBJ *)obj )->retainCount ); \
        return obj;                                                    \
    }                                                                  \
    void zu___outlined_##prefix##Release( type *obj )                  \
    {                                                                  \
        ZU___STDFUNCS_CHECK( obj, "stdfunc release", "obj" );          \
        zu___RefRelease( (ZU_OBJ *)obj );                              \
    }                                                                  \
    type *prefix##From( ZU_OBJ *obj )                                  \
    {                                                                  \
        ZU___STDFUNCS_CHECK_FROM( obj, type );                         \
        return (type *)obj;                                            \
    }                                                                  \
    ZU_OBJ *prefix##Obj( type *obj )                                   \
    {                                                                  \
        return (ZU_OBJ *)obj;                                          \
    }                                                                  \
    ZU_SORT *prefix##Sort( void )                                      \
    {                                                                  \
        return &zu___sort_##type;                                      \
    }                                                                  \
    ZU_STRING *prefix##ToString( type *obj )                           \
    {                                                                  \
        ZU___STDFUNCS_CHECK( obj, "stdfunc tostring", "obj" );         \
        return zuObjToString( (ZU_OBJ *)obj );                         \
    }

// A check of a standard operation: these alone have both a message and an expression.
#define ZU___STDFUNCS_CHECK( condition, message, expression )      \
    do {                                                           \
        if ( ZU___UNLIKELY( !( condition ) ) ) {                   \
            zu___Abort( message, __FILE__, __LINE__, expression ); \
        }                                                          \
    } while ( 0 )

// The check of a cast.  The first two conditions are what the sort comes to nearly always, and save the call.
#define ZU___STDFUNCS_CHECK_FROM( obj, type )                                                             \
    ZU___STDFUNCS_CHECK( !obj || obj->sort == &zu___sort_##type || zuObjSort( obj ) == &zu___sort_##type, \
                         "stdfunc from", "!obj || zuObjSort(obj)==&zu___sort_" #type )

ZU_END_DECLS
