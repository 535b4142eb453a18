// The current thread stands in one thread-local word.  All threads are counted, spawned ones by who spawns them and
// before they run, so that the library's end cannot miss one.

#include "zu/base/zu_thread.h"

#include "zu/base/zu_dict.h"
#include "zu/base/zu_thread_internal.h"
#include "zu/base/zu_threading_fork_internal.h"
#include "zu/runtime/zu_module.h"
#include "zu/runtime/zu_ref_internal.h"
#include "zu/sys/zu_abort_internal.h"
#include "zu/sys/zu_mem.h"

static constexpr ZU_INT SYSTEM_NAME_BYTES = 31; // of a thread's name, for debuggers

struct ZU_THREAD {
    ZU_OBJ obj;
    ZU_STRING *threadName;
    ZU_THREAD_FUNC threadFunc; // null: encapsulated
    ZU_THREAD_PRIORITY prio;
    ZU_OBJ *argument; // latched; null: none, or handed out.  For the thread alone.
    ZU_SIGNAL *endSignal;
    ZU___THREAD_HANDLE *handle;               // null: encapsulated, or refused by the system
    ZU_MONITOR *monitor;                      // guards the next two
    ZU_BOOL stateAborted;                     // to end without a call of the function
    ZU_BOOL stateTerminated;                  // ended, or never begun
    ZU_THREAD *previous;                      // what the encapsulation has covered
    char systemName[ SYSTEM_NAME_BYTES + 1 ]; // for debuggers
    ZU_DICT *keys;                            // for the thread alone
};

static thread_local ZU_THREAD *current __attribute__( ( tls_model( "initial-exec" ) ) ) = nullptr;
static ZU_COUNTER *threadCounter = nullptr; // of all threads; null ahead of start-up and behind shut-down
static bool threadForked = false;           // the counted threads are those of a forked child

static void threadFree( ZU_OBJ *thisObj );
static ZU_STRING *threadToString( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_THREAD =
    ZU___SORT_INITIALIZER( "ZU_THREAD", &zu___module, threadFree, nullptr, threadToString );
ZU___STDFUNCS( ZU_THREAD, zuThread )

// Standard functions
static ZU_THREAD *threadCreate( ZU_STRING *threadName, ZU_THREAD_FUNC threadFunc, ZU_OBJ *argument,
                                ZU_THREAD_PRIORITY prio )
{
    ZU_THREAD *thread = (ZU_THREAD *)zu___ObjCreate( sizeof( ZU_THREAD ), &zu___sort_ZU_THREAD );
    thread->threadName = zuStringRetain( threadName );
    thread->threadFunc = threadFunc;
    thread->prio = prio;
    thread->argument = argument ? zuObjRetain( argument ) : nullptr;
    thread->endSignal = zuSignalCreate();
    thread->handle = nullptr;
    thread->monitor = zuMonitorCreate();
    thread->stateAborted = ZU_FALSE;
    thread->stateTerminated = ZU_FALSE;
    thread->previous = nullptr;
    thread->systemName[ 0 ] = 0;
    thread->keys = zuDictCreate();
    return thread;
}
static void threadFree( ZU_OBJ *thisObj )
{
    ZU_THREAD *thread = zuThreadFrom( thisObj );
    ZU_ASSERT( thread );
    ZU_ASSERT( thread->stateTerminated );
    ZU_REF_RELEASE( thread->threadName );
    ZU_REF_POISON( thread->threadName );
    ZU_REF_RELEASE_OPT( thread->argument );
    ZU_REF_POISON( thread->argument );
    ZU_REF_RELEASE( thread->endSignal );
    ZU_REF_POISON( thread->endSignal );
    ZU_REF_RELEASE( thread->monitor );
    ZU_REF_POISON( thread->monitor );
    ZU_REF_RELEASE_OPT( thread->keys );
    ZU_REF_POISON( thread->keys );
    if ( thread->handle ) {
        zu___ThreadHandleClose( thread->handle );
    }
}
static ZU_STRING *threadToString( ZU_OBJ *thisObj )
{
    ZU_THREAD *thread = zuThreadFrom( thisObj );
    ZU_ASSERT( thread );
    return zuStringRetain( thread->threadName );
}

// The end of a thread or of an encapsulation

static void threadTerminate( ZU_THREAD *thread )
{
    zuMonitorEnter( thread->monitor );
    thread->stateTerminated = ZU_TRUE;
    zuMonitorLeave( thread->monitor );
}
// Releases the values that the thread has kept by keys.  Each may ask for keys, and set some, when it ends: none of the
// values that go can be found any more, and those that come go in the next round.
static void threadReleaseKeys( ZU_THREAD *thread )
{
    while ( zuDictLength( thread->keys ) > 0 ) {
        ZU_DICT *keys = thread->keys;
        thread->keys = zuDictCreate();
        ZU_REF_RELEASE( keys );
    }
    ZU_REF_RELEASE( thread->keys );
    thread->keys = nullptr;
}
// Gives up what belongs to the thread, and its reference to itself, and tells that it has ended.
static void threadFinish( ZU_THREAD *thread )
{
    ZU_OBJ *argument = thread->argument;
    thread->argument = nullptr;
    ZU_REF_RELEASE_OPT( argument );
    threadReleaseKeys( thread );
    zu___ThreadSystemEnd();

    ZU_SIGNAL *endSignal = zuSignalRetain( thread->endSignal ); // the thread may go ahead of it
    threadTerminate( thread );
    ZU_REF_RELEASE( thread );
    zuSignalAssert( endSignal );
    ZU_REF_RELEASE( endSignal );
    if ( threadCounter ) {
        zuCounterDecrement( threadCounter );
    }
}

// Starting

// The new thread itself takes no memory: the C library gives a heap of its own to each that does, or looks for one.
static void threadNameForDebuggers( ZU_THREAD *thread )
{
    char *name = zuStringConvertToCstr( thread->threadName, ZU_TRUE, nullptr );
    if ( name ) {
        ZU_INT length = zuIntMin( (ZU_INT)__builtin_strlen( name ), SYSTEM_NAME_BYTES );
        zuMemCopy( thread->systemName, name, length );
        thread->systemName[ length ] = 0;
        zuMemFree( name );
    }
}
// Such a thread keeps its reference to itself.
static bool threadEndsAborted( ZU_THREAD *thread )
{
    zuMonitorEnter( thread->monitor );
    bool aborted = thread->stateAborted;
    thread->stateTerminated = aborted;
    zuMonitorLeave( thread->monitor );
    return aborted;
}
static void threadEntry( void *argument )
{
    ZU_THREAD *thread = (ZU_THREAD *)argument;
    ZU_ASSERT( thread );
    ZU_ASSERT( thread->threadName );
    ZU_ASSERT( thread->threadFunc );
    current = thread;
    zu___AbortPrepareThread();
    zu___ThreadSetSystemName( thread->systemName );
    if ( threadEndsAborted( thread ) ) {
        current = nullptr;
        return;
    }
    zu___ThreadSystemBegin();
    thread->threadFunc();
    // Not if the function has forked, and has stopped the library in the child.
    if ( current == thread ) {
        threadFinish( thread );
    }
    current = nullptr;
}

static void threadResume( ZU_THREAD *thread )
{
    if ( zu___ThreadHandleResume( thread->handle ) != 1 ) {
        zu___Abort( "failed to resume thread", __FILE__, __LINE__, nullptr );
    }
}
static void threadAbort( ZU_THREAD *thread )
{
    zuMonitorEnter( thread->monitor );
    thread->stateAborted = ZU_TRUE;
    zuMonitorLeave( thread->monitor );
    threadResume( thread );
    zuThreadJoin( thread );
    zuThreadRelease( thread );
}
static ZU_THREAD *threadTrySpawn( ZU_STRING *threadName, ZU_THREAD_FUNC threadFunc, ZU_OBJ *argument,
                                  ZU_THREAD_PRIORITY prio, ZU_BOOL deaf )
{
    ZU_THREAD *thread = threadCreate( threadName, threadFunc, argument, prio );
    threadNameForDebuggers( thread );
    thread->handle = zu___ThreadHandleTryCreate( threadEntry, thread, deaf );
    if ( !thread->handle ) {
        thread->stateTerminated = ZU_TRUE;
        zuThreadRelease( thread );
        return nullptr;
    }
    zuThreadRetain( thread ); // for the new thread
    if ( !zu___ThreadHandleTrySetPriority( thread->handle, prio ) ) {
        threadAbort( thread );
        return nullptr;
    }
    zuCounterIncrement( threadCounter );
    threadResume( thread );
    return thread;
}
ZU_THREAD *zuThreadTrySpawn( ZU_STRING *threadName, ZU_THREAD_FUNC threadFunc, ZU_OBJ *argument,
                             ZU_THREAD_PRIORITY prio )
{
    ZU_ASSERT( threadName );
    ZU_ASSERT( threadFunc );
    ZU_ASSERT( ZU_THREAD_PRIORITY_OK( prio ) );
    return threadTrySpawn( threadName, threadFunc, argument, prio, ZU_FALSE );
}
ZU_THREAD *zu___ThreadTrySpawnDeaf( const char *threadName, ZU_THREAD_FUNC threadFunc, ZU_THREAD_PRIORITY prio )
{
    ZU_STRING *name = zuStringCreateFromCstr( threadName, -1 );
    ZU_THREAD *thread = threadTrySpawn( name, threadFunc, nullptr, prio, ZU_TRUE );
    zuStringRelease( name );
    return thread;
}
ZU_THREAD *zuThreadTrySpawnCstr( const char *threadName, ZU_INT threadNameLength, ZU_THREAD_FUNC threadFunc,
                                 ZU_OBJ *argument, ZU_THREAD_PRIORITY prio )
{
    zu___Owned name( zuStringCreateFromCstr( threadName, threadNameLength ) );
    return zuThreadTrySpawn( name, threadFunc, argument, prio );
}
ZU_THREAD *zuThreadTrySpawnWcstr( const char16_t *threadName, ZU_INT threadNameLength, ZU_THREAD_FUNC threadFunc,
                                  ZU_OBJ *argument, ZU_THREAD_PRIORITY prio )
{
    zu___Owned name( zuStringCreateFromWcstr( threadName, threadNameLength ) );
    return zuThreadTrySpawn( name, threadFunc, argument, prio );
}

// Any thread
void zuThreadJoin( ZU_THREAD *thread )
{
    ZU_ASSERT( thread );
    ZU_THREAD *thisThread = current;
    ZU_ASSERT( thisThread );
    ZU_ASSERT( thisThread != thread );
    ZU_ASSERT( !zu___ThreadHandleIsLost( thread->handle ) );
    while ( !zu___ThreadHandleWait( thread->handle ) ) {}
}
ZU_BOOL zuThreadEnd( ZU_THREAD *thread )
{
    ZU_ASSERT( thread );
    return zuSignalAsserted( thread->endSignal );
}
void zuThreadEndAddSignalable( ZU_THREAD *thread, ZU_SIGNALABLE *sigb )
{
    ZU_ASSERT( thread );
    ZU_ASSERT( sigb );
    zuSignalAddSignalable( thread->endSignal, sigb );
}
void zuThreadEndDelSignalable( ZU_THREAD *thread, ZU_SIGNALABLE *sigb )
{
    ZU_ASSERT( thread );
    ZU_ASSERT( sigb );
    zuSignalDelSignalable( thread->endSignal, sigb );
}
ZU_STRING *zuThreadName( ZU_THREAD *thread )
{
    ZU_ASSERT( thread );
    return zuStringRetain( thread->threadName );
}
ZU_BOOL zu___ThreadTryFreeze( ZU_THREAD *thread )
{
    ZU_ASSERT( thread );
    if ( thread == current || zu___ThreadHandleIsLost( thread->handle ) ) {
        return ZU_FALSE; // who wants a thread still has something to do then
    }
    // A thread does not get past its end while somebody else is inside the monitor, so the system's thread is there.
    zuMonitorEnter( thread->monitor );
    ZU_BOOL frozen = !thread->stateTerminated && zu___ThreadHandleTrySuspend( thread->handle );
    zuMonitorLeave( thread->monitor );
    return frozen;
}

// The current thread
static ZU_THREAD *threadCurrentNoRetain()
{
    ZU_THREAD *thisThread = current;
    ZU_ASSERT( thisThread );
    return thisThread;
}
ZU_THREAD *zuThreadThis( void )
{
    return zuThreadRetain( threadCurrentNoRetain() );
}
ZU_THREAD_PRIORITY zuThreadPriority( void )
{
    return threadCurrentNoRetain()->prio;
}
ZU_OBJ *zuThreadUnlatchArgument( void )
{
    ZU_THREAD *thisThread = threadCurrentNoRetain();
    ZU_OBJ *argument = thisThread->argument;
    thisThread->argument = nullptr;
    return argument;
}
ZU_OBJ *zuThreadKey( ZU_OBJ *key )
{
    ZU_ASSERT( key );
    return zuDictObjKey( threadCurrentNoRetain()->keys, key );
}
ZU_BOOL zuThreadHasKey( ZU_OBJ *key )
{
    ZU_ASSERT( key );
    return zuDictHasObjKey( threadCurrentNoRetain()->keys, key );
}
void zuThreadSetKey( ZU_OBJ *key, ZU_OBJ *val )
{
    ZU_ASSERT( key );
    ZU_ASSERT( val );
    zuDictSetObjKey( &threadCurrentNoRetain()->keys, key, val );
}
void zuThreadDelKey( ZU_OBJ *key )
{
    ZU_ASSERT( key );
    zuDictDelObjKey( &threadCurrentNoRetain()->keys, key );
}

// Encapsulation
void zu___ThreadEncapsulateBegin( ZU_OBJ *argument )
{
    ZU_ASSERT( !zuThreadEncapsulated() );
    ZU_STRING *threadName = zuStringCreateFromCstr( "zu___ThreadEncapsulateBegin", -1 );
    ZU_THREAD *thread = threadCreate( threadName, nullptr, argument, ZU_THREAD_PRIORITY_NORMAL );
    zuStringRelease( threadName );
    thread->previous = current;
    current = thread;
    zu___AbortPrepareThread();
    if ( threadCounter ) {
        zuCounterIncrement( threadCounter );
    }
    zu___ThreadSystemBegin();
}
void zu___ThreadEncapsulateEnd( void )
{
    ZU_THREAD *thisThread = threadCurrentNoRetain();
    current = thisThread->previous;
    threadFinish( thisThread );
}
void zuThreadEncapsulate( ZU_THREAD_FUNC threadFunc, ZU_OBJ *argument )
{
    ZU_ASSERT( threadFunc );
    zu___ThreadEncapsulateBegin( argument );
    threadFunc();
    zu___ThreadEncapsulateEnd();
}
ZU_BOOL zuThreadEncapsulated( void )
{
    return current != nullptr;
}
void zuThreadCheckEncapsulated( void )
{
    ZU_ASSERT( zuThreadEncapsulated() );
}

// Start-up.  The caller's own encapsulation lies around the counter's life, so that it neither counts nor waits for
// itself.
void zu___ThreadStartup( void )
{
    zu___ThreadEncapsulateBegin( nullptr );
    threadCounter = zuCounterCreate();
    threadForked = false;
    zuCounterIncrement( threadCounter );
}
void zu___ThreadShutdown( void )
{
    // A forked child may be that of a thread that is none to the library.
    bool counted = !threadForked || current;
    if ( counted ) {
        zuCounterDecrement( threadCounter );
    }
    zuCounterWaitZero( threadCounter );
    ZU_COUNTER *counter = threadCounter;
    threadCounter = nullptr;
    ZU_REF_RELEASE( counter );
    if ( counted ) {
        zu___ThreadEncapsulateEnd();
    }
}
// The child has the caller only, whether that has started the library, was started by it, or is encapsulated.
void zu___ThreadFork( ZU___FORK_STEP step )
{
    zu___CounterFork( threadCounter, step, current ? 1 : 0 );
    if ( step == ZU___FORK_CHILD ) {
        threadForked = true;
        if ( current ) {
            zu___MonitorFork( current->monitor, step );
        }
    }
}

// Waiting.  A sleeper waits on a signal of its own behind the caller's, which is none of its business otherwise.
void zuSleep( ZU_SIGNAL *signal )
{
    zuSleepTimed( signal, -1 );
}
ZU_BOOL zuSleepTimed( ZU_SIGNAL *signal, ZU_INT millisec )
{
    (void)threadCurrentNoRetain();
    ZU_SIGNAL *wakeUp = zuSignalCreate();
    if ( signal ) {
        zuSignalAddSignal( signal, wakeUp );
    }
    ZU_BOOL asserted = zuSignalWaitTimed( wakeUp, millisec );
    if ( signal ) {
        zuSignalDelSignal( signal, wakeUp );
    }
    zuSignalRelease( wakeUp );
    return asserted;
}
