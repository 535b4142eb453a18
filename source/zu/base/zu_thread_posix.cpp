// A POSIX thread waits at a gate until it is resumed, and then applies its priority itself: that is ahead of its first
// instruction as well, and takes no knowledge of another thread's number.
//
// Any number of threads may wait for an end, but POSIX lets one join; so the first joins and the others sleep until it
// has.

#include "zu/base/zu_thread_internal.h"
#include "zu/sys/zu_happens_internal.h"
#include "zu/sys/zu_mem.h"
#include "zu/sys/zu_wait_internal.h"

#include <pthread.h>
#include <sched.h>
#include <signal.h>
#include <unistd.h>

enum THREAD_JOIN : uint32_t { NOT_JOINED, JOINING, JOINED };

struct ZU___THREAD_HANDLE {
    pthread_t thread;
    pid_t process; // that the thread belongs to
    void ( *entry )( void *argument );
    void *argument;
    ZU_THREAD_PRIORITY prio;
    uint32_t gate; // 0: closed
    uint32_t join; // one of THREAD_JOIN
};

static void *threadRun( void *argument )
{
    ZU___THREAD_HANDLE *handle = (ZU___THREAD_HANDLE *)argument;
    // Pairs with the opening: what was set up before it is seen behind it.
    while ( __atomic_load_n( &handle->gate, __ATOMIC_ACQUIRE ) == 0 ) {
        zu___WaitOnWord( &handle->gate, 0, -1 );
    }
    ZU___HAPPENS_AFTER( &handle->gate );
    zu___ThreadApplyPriority( handle->prio );
    handle->entry( handle->argument ); // the handle may be closed by now
    return nullptr;
}

// Freezing.  A handler that never returns holds the thread wherever the signal meets it.
static int threadFreezeSignal()
{
    return SIGRTMIN + 6; // away from those that runtimes take from either end
}
static void threadFreezeHandler( int )
{
    sigset_t all;
    sigfillset( &all );
    for ( ;; ) {
        sigsuspend( &all );
    }
}

// All signals but those that a thread's own doing raises, and the one that freezes it.
static sigset_t threadDeafMask()
{
    sigset_t mask;
    sigfillset( &mask );
    const int heard[] = { SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGSYS, SIGABRT, threadFreezeSignal() };
    for ( int signal : heard ) {
        sigdelset( &mask, signal );
    }
    return mask;
}
// A thread begins with the mask of the one that makes it: there is no moment at which it hears something.
static bool threadMake( ZU___THREAD_HANDLE *handle, bool deaf )
{
    sigset_t before;
    if ( deaf ) {
        sigset_t mask = threadDeafMask();
        pthread_sigmask( SIG_BLOCK, &mask, &before );
    }
    bool made = pthread_create( &handle->thread, nullptr, threadRun, handle ) == 0;
    if ( deaf ) {
        pthread_sigmask( SIG_SETMASK, &before, nullptr );
    }
    return made;
}
ZU___THREAD_HANDLE *zu___ThreadHandleTryCreate( void ( *entry )( void *argument ), void *argument, ZU_BOOL deaf )
{
    ZU___THREAD_HANDLE *handle = (ZU___THREAD_HANDLE *)zuMemAlloc( sizeof( ZU___THREAD_HANDLE ) );
    handle->process = getpid();
    handle->entry = entry;
    handle->argument = argument;
    handle->prio = ZU_THREAD_PRIORITY_NORMAL;
    handle->gate = 0;
    handle->join = NOT_JOINED;
    if ( !threadMake( handle, deaf ) ) {
        zuMemFree( handle );
        return nullptr;
    }
    return handle;
}
ZU_BOOL zu___ThreadHandleTrySetPriority( ZU___THREAD_HANDLE *handle, ZU_THREAD_PRIORITY prio )
{
    if ( !ZU_THREAD_PRIORITY_OK( prio ) ) {
        zu___Abort( "invalid thread priority", __FILE__, __LINE__, nullptr );
    }
    handle->prio = prio;
    return ZU_TRUE;
}
ZU_INT zu___ThreadHandleResume( ZU___THREAD_HANDLE *handle )
{
    ZU___HAPPENS_BEFORE( &handle->gate );
    uint32_t before = __atomic_exchange_n( &handle->gate, 1, __ATOMIC_RELEASE );
    // The thread may have run through and freed the handle by now; waking reads nothing.
    zu___WaitWakeOne( &handle->gate );
    return before == 0;
}

ZU_BOOL zu___ThreadHandleWait( ZU___THREAD_HANDLE *handle )
{
    if ( !handle ) {
        sleep( 1 ); // there is nothing to wait for, and the caller asks again
        return ZU_FALSE;
    }
    uint32_t join = NOT_JOINED;
    if ( __atomic_compare_exchange_n( &handle->join, &join, JOINING, false, __ATOMIC_ACQUIRE, __ATOMIC_ACQUIRE ) ) {
        bool joined = pthread_join( handle->thread, nullptr ) == 0;
        // The other waiters see what the thread has done before its end.
        ZU___HAPPENS_BEFORE( &handle->join );
        ZU___HAPPENS_STORE( &handle->join, joined ? JOINED : NOT_JOINED, __ATOMIC_RELEASE );
        zu___WaitWakeAll( &handle->join );
        return joined;
    }
    while ( join == JOINING ) {
        zu___WaitOnWord( &handle->join, JOINING, -1 );
        join = __atomic_load_n( &handle->join, __ATOMIC_ACQUIRE );
    }
    ZU___HAPPENS_AFTER( &handle->join );
    return join == JOINED;
}
ZU_BOOL zu___ThreadHandleIsLost( ZU___THREAD_HANDLE *handle )
{
    return handle && handle->process != getpid();
}
void zu___ThreadHandleClose( ZU___THREAD_HANDLE *handle )
{
    if ( !zu___ThreadHandleIsLost( handle ) && __atomic_load_n( &handle->join, __ATOMIC_ACQUIRE ) != JOINED ) {
        pthread_detach( handle->thread );
    }
    zuMemFree( handle );
}

ZU_BOOL zu___ThreadHandleTrySuspend( ZU___THREAD_HANDLE *handle )
{
    if ( !handle ) {
        return ZU_FALSE;
    }
    struct sigaction action = {};
    action.sa_handler = threadFreezeHandler;
    sigfillset( &action.sa_mask );
    return sigaction( threadFreezeSignal(), &action, nullptr ) == 0 &&
           pthread_kill( handle->thread, threadFreezeSignal() ) == 0;
}

void zu___ThreadSystemBegin( void )
{
}
void zu___ThreadSystemEnd( void )
{
}

void zuThreadYield( void )
{
    sched_yield();
}
