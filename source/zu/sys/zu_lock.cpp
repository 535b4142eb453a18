// The lock is the word that its waiters sleep on (Drepper, "Futexes Are Tricky", the second mutex): a release enters
// the kernel only if somebody may be asleep.
//
// A waiter that has lost ZU___WAIT_LOSSES_MAX times reserves the lock, if nobody has yet, by the state RESERVED.  The
// release makes that PROMISED, and nobody but this one waiter takes it from there, so that it comes in next.  It sleeps
// on a word of its own, where the wake-up finds it alone.  The others keep sleeping on the state: who has taken the
// reserved lock holds it as contended, and wakes the next.

#include "zu/sys/zu_lock_internal.h"

#include "zu/sys/zu_fork_internal.h"
#include "zu/sys/zu_wait_internal.h"

static_assert( sizeof( ZU___LOCK ) == sizeof( void * ) );

static bool lockTryChange( ZU___LOCK *lock, uint32_t *state, uint32_t newState, int order )
{
    return __atomic_compare_exchange_n( &lock->state, state, newState, false, order, __ATOMIC_RELAXED );
}
// The state that one makes of `state` who has lost so often: taken if that is free, marked otherwise.
static uint32_t lockStateWithWaiter( uint32_t state, int losses )
{
    switch ( state ) {
    case ZU___LOCK_FREE:
        return ZU___LOCK_CONTENDED;
    case ZU___LOCK_HELD:
    case ZU___LOCK_CONTENDED:
        return losses < ZU___WAIT_LOSSES_MAX ? ZU___LOCK_CONTENDED : ZU___LOCK_RESERVED;
    default:
        return state;
    }
}
// Waits for the lock that the caller has reserved.
static void lockWaitReserved( ZU___LOCK *lock )
{
    uint32_t *word = zu___WaitReservedWord( lock );
    for ( ;; ) {
        uint32_t seen = __atomic_load_n( word, __ATOMIC_ACQUIRE );
        uint32_t state = ZU___LOCK_PROMISED;
        if ( lockTryChange( lock, &state, ZU___LOCK_CONTENDED, __ATOMIC_ACQUIRE ) ) {
            return;
        }
        zu___WaitOnWord( word, seen, -1 );
    }
}
void zu___LockWait( ZU___LOCK *lock )
{
    for ( int pause = 1; pause <= ZU___WAIT_LONGEST_PAUSE; pause *= 2 ) {
        zu___WaitPause( pause );
        if ( __atomic_load_n( &lock->state, __ATOMIC_RELAXED ) == ZU___LOCK_FREE && zu___LockTry( lock ) ) {
            return;
        }
    }
    uint32_t state = __atomic_load_n( &lock->state, __ATOMIC_RELAXED );
    for ( int losses = 0;; losses++ ) {
        // Who has slept cannot know whether others still do, and takes the lock as contended.
        uint32_t newState;
        do {
            newState = lockStateWithWaiter( state, losses );
        } while ( newState != state && !lockTryChange( lock, &state, newState, __ATOMIC_ACQUIRE ) );
        if ( state == ZU___LOCK_FREE ) {
            return;
        }
        if ( state != ZU___LOCK_RESERVED && newState == ZU___LOCK_RESERVED ) {
            lockWaitReserved( lock );
            return;
        }
        zu___WaitOnWord( &lock->state, newState, -1 );
        state = __atomic_load_n( &lock->state, __ATOMIC_RELAXED );
    }
}
void zu___LockReleaseContended( ZU___LOCK *lock )
{
    uint32_t state = __atomic_load_n( &lock->state, __ATOMIC_RELAXED );
    while ( !lockTryChange( lock, &state, state == ZU___LOCK_RESERVED ? ZU___LOCK_PROMISED : ZU___LOCK_FREE,
                            __ATOMIC_RELEASE ) ) {}
    // The lock may be gone by now; waking reads nothing of it.
    if ( state == ZU___LOCK_RESERVED ) {
        zu___WaitWakeReserved( lock );
    } else {
        zu___WaitWakeOne( &lock->state );
    }
}

void zu___LockInitialize( ZU___LOCK *lock )
{
    ZU_ASSERT( lock );
    zu___LockInitializeInline( lock );
}
void zu___LockFinalize( ZU___LOCK * )
{
}
void zu___LockAcquire( ZU___LOCK *lock )
{
    zu___LockAcquireInline( lock );
}
void zu___LockRelease( ZU___LOCK *lock )
{
    zu___LockReleaseInline( lock );
}

void zu___LockFork( ZU___LOCK *lock, ZU___FORK_STEP step )
{
    switch ( step ) {
    case ZU___FORK_PREPARE:
        zu___LockAcquireInline( lock );
        break;
    case ZU___FORK_PARENT:
        zu___LockReleaseInline( lock );
        break;
    case ZU___FORK_CHILD:
        zu___LockInitializeInline( lock ); // it may be reserved for a thread that is not here
        break;
    }
}
