// The lock is the word that its waiters sleep on (Drepper, "Futexes Are Tricky", the second mutex): a release enters
// the kernel only if somebody may be asleep.

#include "zu/sys/zu_lock_internal.h"

#include "zu/sys/zu_wait_internal.h"

static_assert( sizeof( ZU___LOCK ) == sizeof( void * ) );

void zu___LockWait( ZU___LOCK *lock )
{
    for ( int pause = 1; pause <= ZU___WAIT_LONGEST_PAUSE; pause *= 2 ) {
        zu___WaitPause( pause );
        if ( __atomic_load_n( &lock->state, __ATOMIC_RELAXED ) == ZU___LOCK_FREE && zu___LockTry( lock ) ) {
            return;
        }
    }
    // Who has slept cannot know whether others still do, and takes the lock as contended.
    while ( __atomic_exchange_n( &lock->state, ZU___LOCK_CONTENDED, __ATOMIC_ACQUIRE ) != ZU___LOCK_FREE ) {
        zu___WaitOnWord( &lock->state, ZU___LOCK_CONTENDED, -1 );
    }
}
void zu___LockWake( ZU___LOCK *lock )
{
    zu___WaitWakeOne( &lock->state );
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
