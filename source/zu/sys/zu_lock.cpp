// The lock is the word that its waiters sleep on (Drepper, "Futexes Are Tricky", the second mutex): a release enters the
// kernel only if somebody may be asleep.

#include "zu/sys/zu_lock.h"

#include "zu/sys/zu_wait_internal.h"

static constexpr uint32_t FREE = 0;
static constexpr uint32_t HELD = 1;
static constexpr uint32_t CONTENDED = 2; // held, and somebody may be asleep

// Tries before a waiter sleeps: the sections are a few dozen instructions long, which is less than a sleep costs.
static constexpr int SPINS = 64;

static_assert( sizeof( ZU___LOCK ) == sizeof( void * ) );

// Acquires pair with the releases in zu___LockRelease: what one holder wrote, the next one sees.
static bool lockTry( ZU___LOCK *lock )
{
    uint32_t expected = FREE;
    return __atomic_compare_exchange_n( &lock->state, &expected, HELD, false, __ATOMIC_ACQUIRE, __ATOMIC_RELAXED );
}

static void lockWait( ZU___LOCK *lock )
{
    for ( int spin = 0; spin < SPINS; spin++ ) {
        zu___WaitPause();
        if ( __atomic_load_n( &lock->state, __ATOMIC_RELAXED ) == FREE && lockTry( lock ) ) {
            return;
        }
    }
    // Who has slept cannot know whether others still do, and takes the lock as contended.
    while ( __atomic_exchange_n( &lock->state, CONTENDED, __ATOMIC_ACQUIRE ) != FREE ) {
        zu___WaitOnWord( &lock->state, CONTENDED, -1 );
    }
}

void zu___LockInitialize( ZU___LOCK *lock )
{
    ZU_ASSERT( lock );
    lock->cell = nullptr;
    __atomic_store_n( &lock->state, FREE, __ATOMIC_RELAXED );
}
void zu___LockFinalize( ZU___LOCK * )
{
}
void zu___LockAcquire( ZU___LOCK *lock )
{
    if ( ZU___UNLIKELY( !lockTry( lock ) ) ) {
        lockWait( lock );
    }
}
void zu___LockRelease( ZU___LOCK *lock )
{
    if ( ZU___UNLIKELY( __atomic_exchange_n( &lock->state, FREE, __ATOMIC_RELEASE ) == CONTENDED ) ) {
        zu___WaitWakeOne( &lock->state );
    }
}
