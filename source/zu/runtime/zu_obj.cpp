// Creation and destruction take no lock while the object database is off: the header is set with plain stores, and the
// sort's counter is the only shared word that is touched.
//
// What the atomic words of objects rest on:
//
// A retain count that has come to 0 stays there: to add a reference takes one, and there is none.  Each release but the
// last one releases, in the sense of the memory model too, what its thread has done with the object, and the last one
// acquires all that, since changes of one word that are read-modify-writes continue each other's release sequences.  So
// zu___ObjFree and the free function run behind every other use, and read and write the object plainly.
//
// A sort's `objects` and a module's `sorts` serve those who wait for a module to be done (zuRuntimeUnloadAllModules).
// An object is taken off the count when its free function has returned.  The release in that is acquired by whoever
// takes the last one off, and by its own release from `sorts` by whoever reads 0 there: all free functions of the module
// have ended before.
//
// The two counts are changed one after the other, so that `sorts` can lag behind: one thread takes the last object of a
// sort off while another one creates the next.  But 0 is final, once a module's activity has ended: from then on objects
// of a module are only created by who holds one.  If that is of the same sort, the sort's count does not come to 0
// meanwhile; if it is of another, that one is in `sorts` for as long as it is held.  With the object database both steps
// are under its lock.
//
// Creation publishes nothing.  Who hands a new object to another thread orders that by the way in which it does so.
//
// An origin is kept as addresses, and becomes text only when somebody reads the log.  As text it would be some 20 KiB
// and some hundred microseconds an object, which no test suite bears; so it is a word a function and a walk.  Files are
// not unloaded once they have served, so that addresses keep their meaning.

#include "zu/runtime/zu_obj.h"

#include "zu/base/zu_buffer.h"
#include "zu/base/zu_dict.h"
#include "zu/base/zu_stack_trace_internal.h"
#include "zu/base/zu_string_format.h"
#include "zu/base/zu_vector.h"
#include "zu/runtime/zu_module.h"
#include "zu/runtime/zu_obj_internal.h"
#include "zu/runtime/zu_ref_internal.h"
#include "zu/runtime/zu_runtime_internal.h"
#include "zu/sys/zu_chars.h"
#include "zu/sys/zu_happens_internal.h"
#include "zu/sys/zu_lock_internal.h"
#include "zu/sys/zu_mem_internal.h"
#include "zu/sys/zu_unique.h"

// Stores `newValue` if the word still holds `oldValue`; returns what it held.
#define ZU___ATOMIC_INT_COMPARE_EXCHANGE( word, oldValue, newValue ) \
    __sync_val_compare_and_swap( ( word ), ( oldValue ), ( newValue ) )

static constexpr ZU_INT SNAPSHOT_CAPACITY = 256; // objects that a snapshot begins with room for

// Start-up
static bool odbEnabled = false;
static bool originEnabled = false; // only with the database
static ZU___LOCK odbLock;          // guards the chains of objects and of active sorts
static ZU___LOCK logLock;          // guards all logs

void zu___ObjStartup( void )
{
    zu___LockInitialize( &odbLock );
    zu___LockInitialize( &logLock );
    odbEnabled = ( zu___RuntimeFlags & ZU_RUNTIME_FLAG_OBJECT_DATABASE ) != 0;
    originEnabled = ( zu___RuntimeFlags & ZU_RUNTIME_FLAG_OBJECT_ORIGIN ) != 0;
}
void zu___ObjShutdown( void )
{
    originEnabled = false;
    odbEnabled = false;
    zu___LockFinalize( &logLock );
    zu___LockFinalize( &odbLock );
}

void zu___ObjFork( ZU___FORK_STEP step )
{
    zu___LockFork( &odbLock, step );
    zu___LockFork( &logLock, step );
}

// The object database: the live objects of each sort, and the sorts with live objects of each module, in the order in
// which they came.
static void odbAppendObjectLocked( ZU_OBJ *obj )
{
    ZU_SORT *sort = obj->sort;
    obj->objectsPrevious = sort->objectsLast;
    ( sort->objectsLast ? sort->objectsLast->objectsNext : sort->objectsFirst ) = obj;
    sort->objectsLast = obj;
}
static void odbUnlinkObjectLocked( ZU_OBJ *obj )
{
    ZU_SORT *sort = obj->sort;
    ( obj->objectsPrevious ? obj->objectsPrevious->objectsNext : sort->objectsFirst ) = obj->objectsNext;
    ( obj->objectsNext ? obj->objectsNext->objectsPrevious : sort->objectsLast ) = obj->objectsPrevious;
    obj->objectsPrevious = nullptr;
    obj->objectsNext = nullptr;
}
static void odbAppendSortLocked( ZU_SORT *sort )
{
    ZU_MODULE *module = sort->module;
    sort->sortsPrevious = module->sortsLast;
    ( module->sortsLast ? module->sortsLast->sortsNext : module->sortsFirst ) = sort;
    module->sortsLast = sort;
}
static void odbUnlinkSortLocked( ZU_SORT *sort )
{
    ZU_MODULE *module = sort->module;
    ( sort->sortsPrevious ? sort->sortsPrevious->sortsNext : module->sortsFirst ) = sort->sortsNext;
    ( sort->sortsNext ? sort->sortsNext->sortsPrevious : module->sortsLast ) = sort->sortsPrevious;
    sort->sortsPrevious = nullptr;
    sort->sortsNext = nullptr;
}

// Counts a new object, and its sort if that was not active; tells whether it does the latter.  No order is needed here;
// as changes of the same words these stay full barriers like all others, which authors of classes are promised.
static inline bool objCountUp( ZU_SORT *sort )
{
    if ( __atomic_add_fetch( &sort->objects, 1, __ATOMIC_ACQ_REL ) != 1 || !sort->module ) {
        return false;
    }
    __atomic_add_fetch( &sort->module->sorts, 1, __ATOMIC_ACQ_REL );
    return true;
}
// Takes a dead object off the count; tells whether the sort is one of a module, which is not active any more.  Releases
// what the free function has done, and acquires what those of the sort's other objects have.
static inline bool objCountDown( ZU_SORT *sort )
{
    return __atomic_sub_fetch( &sort->objects, 1, __ATOMIC_ACQ_REL ) == 0 && sort->module;
}

// The counts are kept under the lock too, so that the chain of active sorts is in step with them.
[[gnu::noinline]] static void odbEnter( ZU_OBJ *result )
{
    zu___LockAcquire( &odbLock );
    if ( objCountUp( result->sort ) ) {
        ZU_ASSERT( result->sort->sortsNext == NULL );
        ZU_ASSERT( result->sort->sortsPrevious == NULL );
        odbAppendSortLocked( result->sort );
    }
    odbAppendObjectLocked( result );
    zu___LockRelease( &odbLock );
}
[[gnu::noinline]] static void odbLeave( ZU_OBJ *obj )
{
    zu___LockAcquire( &odbLock );
    odbUnlinkObjectLocked( obj );
    zu___LockRelease( &odbLock );
}
[[gnu::noinline]] static void odbCountDown( ZU_SORT *sort )
{
    zu___LockAcquire( &odbLock );
    if ( objCountDown( sort ) ) {
        odbUnlinkSortLocked( sort );
        __atomic_sub_fetch( &sort->module->sorts, 1, __ATOMIC_ACQ_REL );
    }
    zu___LockRelease( &odbLock );
}

ZU_BOOL zu___ObjOdbEnabled( void )
{
    return odbEnabled;
}
void zu___ObjOdbLock( void )
{
    ZU_ASSERT( odbEnabled );
    zu___LockAcquire( &odbLock );
}
void zu___ObjOdbUnlock( void )
{
    ZU_ASSERT( odbEnabled );
    zu___LockRelease( &odbLock );
}

// Snapshots.  Under the lock no object may be created, and a vector that were there already would be in the chains, for
// other snapshots to share.  So they collect into an array, which then becomes a vector.

// Adds a reference unless the last one has gone, which another thread may give up at this moment.
static bool objTryRetain( ZU_OBJ *obj )
{
    ZU___RETAIN_COUNT count = ZU___RETAIN_COUNT_VALUE( obj->retainCount );
    while ( count > 0 && !__atomic_compare_exchange_n( &obj->retainCount, &count, count + 1, true, __ATOMIC_ACQ_REL,
                                                       __ATOMIC_ACQUIRE ) ) {}
    return count > 0;
}
void zu___ObjSnapshotAppendLocked( ZU___OBJ_SNAPSHOT *snapshot, ZU_OBJ *obj )
{
    if ( !objTryRetain( obj ) ) {
        return;
    }
    if ( snapshot->count == snapshot->capacity ) {
        ZU_OBJ **old = snapshot->objs;
        snapshot->capacity += snapshot->capacity + SNAPSHOT_CAPACITY;
        snapshot->objs = (ZU_OBJ **)zuMemAllocN( snapshot->capacity, sizeof( ZU_OBJ * ) );
        zuMemCopyN( snapshot->objs, old, snapshot->count, sizeof( ZU_OBJ * ) );
        zuMemFree( old );
    }
    snapshot->objs[ snapshot->count++ ] = obj;
}
void zu___ObjSnapshotAppendSortLocked( ZU___OBJ_SNAPSHOT *snapshot, ZU_SORT *sort )
{
    for ( ZU_OBJ *obj = sort->objectsFirst; obj; obj = obj->objectsNext ) {
        zu___ObjSnapshotAppendLocked( snapshot, obj );
    }
}
ZU_VECTOR *zu___ObjSnapshotVector( ZU___OBJ_SNAPSHOT *snapshot )
{
    return snapshot->count > 0 ? zuVectorCreateFromObjsUse( snapshot->objs, snapshot->count ) : zuVectorCreate();
}

// Logs.  Texts are made ahead of the lock, so that to-string functions may create objects and write to logs themselves.
struct OBJ_LOG_CHAIN {
    ZU___OBJ_LOG_ENTRY *first;
    ZU___OBJ_LOG_ENTRY *last;
};
static void objLogChainAppend( OBJ_LOG_CHAIN *chain, ZU___OBJ_LOG_ENTRY *entry )
{
    ( chain->last ? chain->last->next : chain->first ) = entry;
    chain->last = entry;
}
static void objLogLink( ZU_OBJ *obj, OBJ_LOG_CHAIN chain )
{
    zu___LockAcquire( &logLock );
    ( obj->logLast ? obj->logLast->next : obj->logFirst ) = chain.first;
    obj->logLast = chain.last;
    zu___LockRelease( &logLock );
}
static ZU___OBJ_LOG_ENTRY *objLogRead( ZU___OBJ_LOG_ENTRY *const *link )
{
    zu___LockAcquire( &logLock );
    ZU___OBJ_LOG_ENTRY *entry = *link;
    zu___LockRelease( &logLock );
    return entry;
}
// Creates an entry with copies of `count` elements behind it, to which its field `elements` points; null for none.
template <typename ELEMENT>
static ZU___OBJ_LOG_ENTRY *objLogEntryCreate( ELEMENT *ZU___OBJ_LOG_ENTRY::*elements, const ELEMENT *src, ZU_INT count )
{
    static_assert( sizeof( ZU___OBJ_LOG_ENTRY ) % alignof( ELEMENT ) == 0 );
    ZU_INT size = (ZU_INT)sizeof( ZU___OBJ_LOG_ENTRY ) + count * (ZU_INT)sizeof( ELEMENT );
    ZU___OBJ_LOG_ENTRY *entry = (ZU___OBJ_LOG_ENTRY *)zuMemAlloc( size );
    *entry = { count, nullptr, nullptr, nullptr };
    if ( count > 0 ) {
        entry->*elements = (ELEMENT *)( entry + 1 );
        zuMemCopyN( entry->*elements, src, count, sizeof( ELEMENT ) );
    }
    return entry;
}
static void objLogFree( ZU_OBJ *obj )
{
    for ( ZU___OBJ_LOG_ENTRY *entry = obj->logFirst; entry; ) {
        ZU___OBJ_LOG_ENTRY *next = entry->next;
        zuMemFree( entry );
        entry = next;
    }
}

ZU_VECTOR *zu___ObjLog( ZU_OBJ *thisObj )
{
    ZU_ASSERT( thisObj );
    ZU___OBJ_LOG_ENTRY *entry = objLogRead( &thisObj->logFirst );
    if ( !entry ) {
        return nullptr;
    }
    ZU_VECTOR *vec = zuVectorCreate();
    for ( ; entry; entry = objLogRead( &entry->next ) ) {
        if ( entry->origin ) {
            ZU_STACK_TRACE *st = zu___StackTraceCreateFromAddresses( entry->origin, entry->length );
            ZU_VECTOR *lines = zuStackTraceVector( st );
            zuVectorAppend( &vec, lines );
            zuVectorRelease( lines );
            zuStackTraceRelease( st );
            zuVectorAppendStringCstr( &vec, "", 0 );
        } else {
            ZU_STRING *line = zuStringCreateFromCharsCopy( entry->chars, entry->length );
            zuVectorAppendString( &vec, line );
            zuStringRelease( line );
        }
    }
    return vec;
}
void zu___ObjLogAppend( ZU_OBJ *thisObj, ZU_STRING *logMessage )
{
    ZU_ASSERT( logMessage );
    ZU_VECTOR *vec = zuVectorCreateFromObj( zuStringObj( logMessage ) );
    zu___ObjLogAppendVector( thisObj, vec );
    zuVectorRelease( vec );
}
void zu___ObjLogAppendVector( ZU_OBJ *thisObj, ZU_VECTOR *vec )
{
    ZU_ASSERT( thisObj );
    ZU_ASSERT( vec );
    zu___Owned held( zuVectorRetain( vec ) ); // an item's text may change the vector
    OBJ_LOG_CHAIN chain = {};
    for ( ZU_INT i = 0; i < zuVectorLength( vec ); i++ ) {
        ZU_STRING *line = zuObjToString( zuVectorBacking( vec )[ i ] );
        objLogChainAppend(
            &chain, objLogEntryCreate( &ZU___OBJ_LOG_ENTRY::chars, zuStringBacking( line ), zuStringLength( line ) ) );
        zuStringRelease( line );
    }
    if ( chain.first ) {
        objLogLink( thisObj, chain );
    }
}
void zu___ObjLogAppendCallStack( ZU_OBJ *thisObj, ZU_INT skip, ZU_INT depth )
{
    ZU_ASSERT( thisObj );
    ZU_ASSERT( skip >= 0 );
    ZU_ASSERT( ZU_INT_ADD_OK( skip, 1 ) );
    ZU_STACK_TRACE *st = zuStackTraceCreate( skip + 1, depth );
    ZU_VECTOR *lines = zuStackTraceVector( st );
    zuVectorAppendStringCstr( &lines, "", 0 );
    zu___ObjLogAppendVector( thisObj, lines );
    zuVectorRelease( lines );
    zuStackTraceRelease( st );
}

// Origins.  Those of the classes that traces and logs are made of would say little, and are not kept.
static bool objHasOrigin( ZU_SORT *sort )
{
    return sort != zuStringSort() && sort != zuVectorSort() && sort != zuDictSort() && sort != zuBufferSort() &&
           sort != zuStackTraceSort();
}
struct OBJ_ORIGIN_WALK {
    ZU_INT skip;          // functions still to be passed over
    ZU_INT count;         // addresses found
    ZU_INT capacity;      // addresses that there is room for
    uintptr_t *addresses; // near, or an array of zuMemAllocN
    uintptr_t near[ 256 ];
};
static ZU_BOOL objOriginAdd( uintptr_t address, void *closure )
{
    OBJ_ORIGIN_WALK *walk = (OBJ_ORIGIN_WALK *)closure;
    if ( walk->skip > 0 ) {
        walk->skip--;
        return ZU_TRUE;
    }
    if ( walk->count == ZU___STACK_TRACE_LENGTH_MAX ) {
        return ZU_FALSE;
    }
    if ( walk->count == walk->capacity ) {
        uintptr_t *old = walk->addresses;
        walk->capacity *= 2;
        walk->addresses = (uintptr_t *)zuMemAllocN( walk->capacity, sizeof( uintptr_t ) );
        zuMemCopyN( walk->addresses, old, walk->count, sizeof( uintptr_t ) );
        if ( old != walk->near ) {
            zuMemFree( old );
        }
    }
    walk->addresses[ walk->count++ ] = address;
    return ZU_TRUE;
}
// Writes to the log where the object comes from: who has called zu___ObjCreate.  Not inlined, since its frame is
// counted.
[[gnu::noinline]] static void objLogOrigin( ZU_OBJ *obj )
{
    OBJ_ORIGIN_WALK walk;
    walk.skip = 2; // this function and zu___ObjCreate
    walk.count = 0;
    walk.capacity = sizeof walk.near / sizeof walk.near[ 0 ];
    walk.addresses = walk.near;
    zu___StackTraceWalk( objOriginAdd, &walk );
    ZU___OBJ_LOG_ENTRY *entry = objLogEntryCreate( &ZU___OBJ_LOG_ENTRY::origin, walk.addresses, walk.count );
    objLogLink( obj, { entry, entry } );
    if ( walk.addresses != walk.near ) {
        zuMemFree( walk.addresses );
    }
}

// Life
ZU_OBJ *zu___ObjCreate( ZU_INT size, ZU_SORT *sort )
{
    ZU_ASSERT( sort );
    ZU_OBJ *result = (ZU_OBJ *)zu___MemAllocInline( size );
    ZU_ASSERT( ((uintptr_t)&result->retainCount) % __alignof( ZU___RETAIN_COUNT ) == 0 );
    result->type = ZU___OBJ_TYPE_OBJECT;
    result->sort = sort;
    zu___LockInitializeInline( &result->lock );
    result->unique = ZU___UNIQUE_INVALID;
    result->retainCount = 1;
    result->objectSize = size;
    result->dbgAllocationSize = 0;
    result->logFirst = nullptr;
    result->logLast = nullptr;
    result->objectsPrevious = nullptr;
    result->objectsNext = nullptr;

    if ( ZU___UNLIKELY( odbEnabled ) ) {
        odbEnter( result );
        if ( originEnabled && objHasOrigin( sort ) ) {
            objLogOrigin( result );
        }
    } else {
        objCountUp( sort );
    }
    return result;
}

// Ends an object that is in no chain and has nothing left but its memory.
static inline void objBury( ZU_OBJ *obj )
{
    ZU_SORT *sort = obj->sort;
    if ( objCountDown( sort ) ) {
        __atomic_sub_fetch( &sort->module->sorts, 1, __ATOMIC_ACQ_REL );
    }
    zu___MemFreeInline( obj );
}
// Destroys an object that is in no chain any more.
static void objDestroy( ZU_OBJ *obj )
{
    if ( obj->sort->freeFunc ) {
        obj->sort->freeFunc( obj );
    }
    objLogFree( obj );
    // Plain: nobody else has the object to ask for its number.
    if ( obj->unique != ZU___UNIQUE_INVALID ) {
        zu___UniquePut( obj->unique );
    }
    if ( ZU___UNLIKELY( odbEnabled ) ) {
        odbCountDown( obj->sort );
        zuMemFree( obj );
    } else {
        objBury( obj );
    }
}

// A free function releases what its object held, and so destruction recurses through the object graph.  That is the
// order that classes may rely on, down to a depth; from there on dying objects queue, and the deepest level takes them
// one after the other, so that the depth of a graph never decides on the depth of the stack.
static constexpr int DESTROY_DEPTH_MAX = 32; // levels of about 300 bytes in this library; authors may need some 1 KiB
struct OBJ_DYING {
    int depth;     // levels of objDestroy on this thread
    ZU_OBJ *first; // the queue, linked by objectsNext, which no chain uses any more
    ZU_OBJ *last;
};
static thread_local OBJ_DYING dying __attribute__( ( tls_model( "initial-exec" ) ) );

static void objDestroyQueued()
{
    while ( dying.first ) {
        ZU_OBJ *obj = dying.first;
        dying.first = obj->objectsNext;
        objDestroy( obj );
    }
}

[[gnu::noinline]] static void objFreeNested( ZU_OBJ *thisObj )
{
    if ( ZU___UNLIKELY( odbEnabled ) ) {
        odbLeave( thisObj );
    }
    if ( dying.depth == DESTROY_DEPTH_MAX ) {
        ( dying.first ? dying.last->objectsNext : dying.first ) = thisObj;
        dying.last = thisObj;
        return;
    }
    dying.depth++;
    objDestroy( thisObj );
    if ( dying.depth == DESTROY_DEPTH_MAX ) {
        objDestroyQueued();
    }
    dying.depth--;
}
void zu___ObjFree( ZU_OBJ *thisObj )
{
    ZU_ASSERT( thisObj );
    if ( thisObj->type != ZU___OBJ_TYPE_OBJECT ) {
        return;
    }
    ZU___ASSERT_AS( ZU___RETAIN_COUNT_VALUE( thisObj->retainCount ) == 0,
                    "thisObj->type != ZU___OBJ_TYPE_OBJECT || ZU___RETAIN_COUNT_VALUE( thisObj->retainCount ) == 0" );
    ZU___ASSERT_AS( thisObj->sort, "thisObj->type != ZU___OBJ_TYPE_OBJECT || thisObj->sort" );
    // A number or another small value holds nothing, so that its end is no level of a graph: 2 ns of 14.
    if ( !thisObj->sort->freeFunc && thisObj->unique == ZU___UNIQUE_INVALID && !thisObj->logFirst && !odbEnabled ) {
        objBury( thisObj );
    } else {
        objFreeNested( thisObj );
    }
}

// References
ZU_OBJ *zuObjRetain( ZU_OBJ *obj )
{
    ZU_ASSERT( obj );
    ZU___RETAIN_COUNT_INCREMENT( obj->retainCount );
    return obj;
}
void zuObjRelease( ZU_OBJ *obj )
{
    ZU_ASSERT( obj );
    zu___RefRelease( obj );
}
ZU___RETAIN_COUNT zu___RetainCountIncrement( ZU___RETAIN_COUNT *count )
{
    return __atomic_add_fetch( count, 1, __ATOMIC_ACQ_REL );
}
ZU___RETAIN_COUNT zu___RetainCountDecrement( ZU___RETAIN_COUNT *count )
{
    ZU___HAPPENS_BEFORE( count );
    ZU___RETAIN_COUNT left = __atomic_sub_fetch( count, 1, __ATOMIC_ACQ_REL );
    ZU___HAPPENS_AFTER( count );
    return left;
}
ZU___RETAIN_COUNT zu___RetainCountValue( ZU___RETAIN_COUNT *count )
{
    ZU___RETAIN_COUNT value = __atomic_load_n( count, __ATOMIC_ACQUIRE );
    ZU___HAPPENS_AFTER( count );
    return value;
}

// Identity and order
ZU_SORT *zuObjSort( ZU_OBJ *thisObj )
{
    ZU_ASSERT( thisObj );
    if ( thisObj->sort ) {
        return thisObj->sort;
    }
    if ( thisObj->type == ZU___OBJ_TYPE_SORT ) {
        return zuSortSort();
    }
    if ( thisObj->type == ZU___OBJ_TYPE_MODULE ) {
        return zuModuleSort();
    }
    ZU_ABORT();
}

ZU_INT zu___ObjUnique( ZU_OBJ *thisObj )
{
    ZU_ASSERT( thisObj );
    ZU_ASSERT( thisObj->sort || thisObj->type != ZU___OBJ_TYPE_OBJECT );
    if ( thisObj->type != ZU___OBJ_TYPE_OBJECT ) {
        return ZU___UNIQUE_INVALID;
    }
    // The number is all that is told by the word, which changes once: all threads agree on it, whatever they see of other
    // words.  A number that was given back is only given out again behind the death of its object, by the allocator's lock.
    ZU_INT unique = __atomic_load_n( &thisObj->unique, __ATOMIC_ACQUIRE );
    if ( unique != ZU___UNIQUE_INVALID ) {
        return unique;
    }
    unique = zu___UniqueGet();
    ZU_INT installed = ZU___ATOMIC_INT_COMPARE_EXCHANGE( &thisObj->unique, ZU___UNIQUE_INVALID, unique );
    if ( installed == ZU___UNIQUE_INVALID ) {
        return unique;
    }
    zu___UniquePut( unique ); // another thread was first
    return installed;
}

static ZU_INT objCompareByIdentity( ZU_OBJ *objA, ZU_OBJ *objB )
{
    ZU_INT uniqueA = zu___ObjUnique( objA );
    ZU_INT uniqueB = zu___ObjUnique( objB );
    return ( uniqueA > uniqueB ) - ( uniqueA < uniqueB );
}
ZU_INT zuObjCompare( ZU_OBJ *objA, ZU_OBJ *objB )
{
    ZU_ASSERT( objA );
    ZU_ASSERT( objB );
    if ( objA == objB ) {
        return 0;
    }
    ZU_SORT *objASort = zuObjSort( objA );
    ZU_SORT *objBSort = zuObjSort( objB );
    ZU_ASSERT( objASort );
    ZU_ASSERT( objBSort );
    if ( objASort == objBSort && objASort->compareFunc ) {
        return objASort->compareFunc( objA, objB );
    }
    ZU_INT order = zuSortCompare( objASort, objBSort );
    return order != 0 ? order : objCompareByIdentity( objA, objB );
}
ZU_INT zuObjDefaultCompareFunc( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    ZU_ASSERT( thisObj );
    ZU_ASSERT( thatObj );
    ZU_INT order = zuSortCompare( zuObjSort( thisObj ), zuObjSort( thatObj ) );
    return order != 0 ? order : objCompareByIdentity( thisObj, thatObj );
}

// Text
ZU_STRING *zuObjToString( ZU_OBJ *thisObj )
{
    ZU_ASSERT( thisObj );
    ZU_SORT *thisObjSort = zuObjSort( thisObj );
    ZU_ASSERT( thisObjSort );
    zuSortRetain( thisObjSort );
    ZU_STRING *result =
        thisObjSort->toStringFunc ? thisObjSort->toStringFunc( thisObj ) : zuObjDefaultToStringFunc( thisObj );
    ZU_ASSERT( result );
    zuSortRelease( thisObjSort );
    return result;
}
ZU_STRING *zuObjDefaultToStringFunc( ZU_OBJ *thisObj )
{
    ZU_ASSERT( thisObj );
    return zuStringCreateFromFormatCstr( "%~s(%^!16i)", -1, zuSortName( zuObjSort( thisObj ) ),
                                         zu___ObjUnique( thisObj ) );
}

// The header's lock, for classes; static records have none of use
void zuObjLockAcquire( ZU_OBJ *thisObj )
{
    ZU_ASSERT( thisObj );
    ZU_ASSERT( thisObj->sort );
    zu___LockAcquire( &thisObj->lock );
}
void zuObjLockRelease( ZU_OBJ *thisObj )
{
    ZU_ASSERT( thisObj );
    ZU_ASSERT( thisObj->sort );
    zu___LockRelease( &thisObj->lock );
}

// Sizes for diagnostics
ZU_INT zu___ObjDbgObjectSize( ZU_OBJ *thisObj )
{
    ZU_ASSERT( thisObj );
    return thisObj->objectSize;
}
ZU_INT zu___ObjDbgAllocationSize( ZU_OBJ *thisObj )
{
    ZU_ASSERT( thisObj );
    return __atomic_load_n( &thisObj->dbgAllocationSize, __ATOMIC_ACQUIRE );
}
void zu___ObjDbgSetAllocationSize( ZU_OBJ *thisObj, ZU_INT size )
{
    ZU_ASSERT( thisObj );
    ZU_ASSERT( size >= 0 );
    ZU_INT old = zu___ObjDbgAllocationSize( thisObj );
    ZU_INT found = ZU___ATOMIC_INT_COMPARE_EXCHANGE( &thisObj->dbgAllocationSize, old, size );
    ZU___ASSERT_AS( old == found, "old == ZU___ATOMIC_INT_COMPARE_EXCHANGE( &thisObj->dbgAllocationSize, old, size )" );
}
void zu___ObjDbgSetAllocationSizeN( ZU_OBJ *thisObj, ZU_INT count, ZU_INT size )
{
    ZU_ASSERT( thisObj );
    ZU_ASSERT( count >= 0 );
    ZU_ASSERT( size >= 0 );
    ZU_ASSERT( ZU_INT_MUL_OK( count, size ) );
    zu___ObjDbgSetAllocationSize( thisObj, count * size );
}
