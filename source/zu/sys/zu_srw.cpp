// All that decides is in one word, so that every step is one atomic change of it:
//
//     bits 0 to 19   readers that hold the lock
//     bits 20 to 39  readers that wait
//     bits 40 to 59  writers that wait
//     bit 60         phase, which turns over whenever waiting readers are let in
//     bit 61         a writer holds the lock
//     bit 62         the lock is reserved for one of the writers that wait
//
// A writer that leaves hands the lock to all readers that wait by then: their count moves over and the phase turns, by
// which each knows that it is in.  The phase cannot turn again before they have left, so one bit is enough.  Otherwise
// the lock becomes free and a waiting writer is woken; until that one has come and gone, new readers wait.  A million
// threads are the limit of each count.
//
// Until the woken writer is there, others may come by and take the lock.  One that has lost ZU___WAIT_LOSSES_MAX times
// reserves it while it is taken, if nobody has yet.  A reserved lock is closed to everybody else, but for the readers
// that are let in ahead of any next writer, so that the one comes in as soon as it is free.  It sleeps on a word of its
// own, and is what the next waking wakes.
//
// Sleepers look at the state between reading their gate and sleeping on it, and the gate moves after the state: either
// the look shows the new state, or the gate has moved and there is no sleep.

#include "zu/sys/zu_srw_internal.h"

#include "zu/sys/zu_happens_internal.h"
#include "zu/sys/zu_wait_internal.h"

static constexpr int COUNT_BITS = 20;
static constexpr uint64_t COUNT_MASK = ( UINT64_C( 1 ) << COUNT_BITS ) - 1;
static constexpr uint64_t READER = 1;
static constexpr uint64_t READER_WAITING = READER << COUNT_BITS;
static constexpr uint64_t WRITER_WAITING = READER_WAITING << COUNT_BITS;
static constexpr uint64_t PHASE = WRITER_WAITING << COUNT_BITS;
static constexpr uint64_t HELD = PHASE << 1;
static constexpr uint64_t RESERVED = HELD << 1;

static constexpr uint64_t READERS = READER * COUNT_MASK;
static constexpr uint64_t READERS_WAITING = READER_WAITING * COUNT_MASK;
static constexpr uint64_t WRITERS_WAITING = WRITER_WAITING * COUNT_MASK;

// The acquiring changes pair with the releasing ones: who comes in sees what those wrote who have left.
static bool srwTryChange( ZU___SRW_LOCK *lock, uint64_t *state, uint64_t newState, int order )
{
    return __atomic_compare_exchange_n( &lock->state, state, newState, true, order, __ATOMIC_RELAXED );
}
static uint64_t srwLook( ZU___SRW_LOCK *lock )
{
    return __atomic_load_n( &lock->state, __ATOMIC_RELAXED );
}
static bool srwOpenToReaders( uint64_t state )
{
    return ( state & ( HELD | WRITERS_WAITING ) ) == 0;
}
static bool srwOpenToWriters( uint64_t state )
{
    return ( state & ( HELD | READERS | RESERVED ) ) == 0;
}
static bool srwOpenToReserver( uint64_t state )
{
    return ( state & ( HELD | READERS ) ) == 0;
}

// Looks until `open` says that the lock can be had, or the patience ends; returns what it saw last.
static uint64_t srwSpin( ZU___SRW_LOCK *lock, bool ( *open )( uint64_t state ) )
{
    uint64_t state = srwLook( lock );
    for ( int pause = 1; pause <= ZU___WAIT_LONGEST_PAUSE && !open( state ); pause *= 2 ) {
        zu___WaitPause( pause );
        state = srwLook( lock );
    }
    return state;
}

// Wakes the writer whose turn it is by `state`, in which the lock has become free.
static void srwWakeWriter( ZU___SRW_LOCK *lock, uint64_t state )
{
    if ( state & RESERVED ) {
        zu___WaitWakeReserved( lock );
        return;
    }
    __atomic_add_fetch( &lock->writerGate, 1, __ATOMIC_RELEASE );
    zu___WaitWakeOne( &lock->writerGate );
}

void zu___SrwLockInitialize( ZU___SRW_LOCK *lock )
{
    lock->state = 0;
    lock->readerGate = 0;
    lock->writerGate = 0;
}

// Shared mode
static void srwWaitShared( ZU___SRW_LOCK *lock )
{
    uint64_t state = srwSpin( lock, srwOpenToReaders );
    for ( ;; ) {
        bool open = srwOpenToReaders( state );
        if ( srwTryChange( lock, &state, state + ( open ? READER : READER_WAITING ), __ATOMIC_ACQUIRE ) ) {
            if ( open ) {
                return;
            }
            break;
        }
    }
    uint64_t phase = state & PHASE;
    for ( ;; ) {
        uint32_t gate = __atomic_load_n( &lock->readerGate, __ATOMIC_ACQUIRE );
        if ( ( __atomic_load_n( &lock->state, __ATOMIC_ACQUIRE ) & PHASE ) != phase ) {
            return;
        }
        zu___WaitOnWord( &lock->readerGate, gate, -1 );
    }
}
void zu___SrwLockAcquireShared( ZU___SRW_LOCK *lock )
{
    uint64_t state = srwLook( lock );
    while ( ZU___LIKELY( srwOpenToReaders( state ) ) ) {
        if ( ZU___LIKELY( srwTryChange( lock, &state, state + READER, __ATOMIC_ACQUIRE ) ) ) {
            ZU___HAPPENS_AFTER( lock );
            return;
        }
    }
    srwWaitShared( lock );
    ZU___HAPPENS_AFTER( lock );
}
void zu___SrwLockReleaseShared( ZU___SRW_LOCK *lock )
{
    ZU___HAPPENS_BEFORE( lock );
    uint64_t state = __atomic_sub_fetch( &lock->state, READER, __ATOMIC_RELEASE );
    if ( ZU___UNLIKELY( ( state & READERS ) == 0 && ( state & WRITERS_WAITING ) != 0 ) ) {
        srwWakeWriter( lock, state );
    }
}

// Exclusive mode

// Reserves the lock for the caller, who waits; false if it is free or reserved.
static bool srwTryReserve( ZU___SRW_LOCK *lock, uint64_t state )
{
    while ( !srwOpenToReserver( state ) && ( state & RESERVED ) == 0 ) {
        if ( srwTryChange( lock, &state, state | RESERVED, __ATOMIC_RELAXED ) ) {
            return true;
        }
    }
    return false;
}
// Waits for the lock that the caller has reserved.
static void srwWaitReserved( ZU___SRW_LOCK *lock )
{
    uint32_t *word = zu___WaitReservedWord( lock );
    for ( ;; ) {
        uint32_t seen = __atomic_load_n( word, __ATOMIC_ACQUIRE );
        uint64_t state = srwLook( lock );
        while ( srwOpenToReserver( state ) ) {
            if ( srwTryChange( lock, &state, ( state - WRITER_WAITING - RESERVED ) | HELD, __ATOMIC_ACQUIRE ) ) {
                return;
            }
        }
        zu___WaitOnWord( word, seen, -1 );
    }
}
static void srwWaitExclusive( ZU___SRW_LOCK *lock )
{
    uint64_t state = srwSpin( lock, srwOpenToWriters );
    for ( ;; ) {
        bool open = srwOpenToWriters( state );
        if ( srwTryChange( lock, &state, open ? state | HELD : state + WRITER_WAITING, __ATOMIC_ACQUIRE ) ) {
            if ( open ) {
                return;
            }
            break;
        }
    }
    for ( int losses = 0;; losses++ ) {
        uint32_t gate = __atomic_load_n( &lock->writerGate, __ATOMIC_ACQUIRE );
        state = srwLook( lock );
        while ( srwOpenToWriters( state ) ) {
            if ( srwTryChange( lock, &state, ( state - WRITER_WAITING ) | HELD, __ATOMIC_ACQUIRE ) ) {
                return;
            }
        }
        if ( losses >= ZU___WAIT_LOSSES_MAX && srwTryReserve( lock, state ) ) {
            srwWaitReserved( lock );
            return;
        }
        zu___WaitOnWord( &lock->writerGate, gate, -1 );
    }
}
void zu___SrwLockAcquireExclusive( ZU___SRW_LOCK *lock )
{
    uint64_t state = srwLook( lock );
    if ( ZU___UNLIKELY( !srwOpenToWriters( state ) ||
                        !srwTryChange( lock, &state, state | HELD, __ATOMIC_ACQUIRE ) ) ) {
        srwWaitExclusive( lock );
    }
    ZU___HAPPENS_AFTER( lock );
}
void zu___SrwLockReleaseExclusive( ZU___SRW_LOCK *lock )
{
    ZU___HAPPENS_BEFORE( lock );
    uint64_t state = srwLook( lock );
    uint64_t newState;
    do {
        uint64_t waiting = ( state & READERS_WAITING ) / READER_WAITING;
        newState = state - HELD;
        if ( waiting ) {
            newState = ( newState - waiting * READER_WAITING + waiting * READER ) ^ PHASE;
        }
    } while ( !srwTryChange( lock, &state, newState, __ATOMIC_RELEASE ) );
    if ( ZU___UNLIKELY( ( newState & READERS ) != 0 ) ) {
        __atomic_add_fetch( &lock->readerGate, 1, __ATOMIC_RELEASE );
        zu___WaitWakeAll( &lock->readerGate );
    } else if ( ZU___UNLIKELY( ( newState & WRITERS_WAITING ) != 0 ) ) {
        srwWakeWriter( lock, newState );
    }
}

// Condition.  The sequence needs no order of its own: waiters make it odd with the lock in hand, and who wakes has held
// the lock since.  It would have to run through all its values within one waiter's step into sleep to deceive that one.
static constexpr uint32_t SLEEPERS = 1;

void zu___ConditionInitialize( ZU___CONDITION *cond )
{
    cond->sequence = 0;
}
ZU_BOOL zu___ConditionWaitShared( ZU___CONDITION *cond, ZU___SRW_LOCK *lock, ZU_INT millisec )
{
    uint32_t sequence = __atomic_or_fetch( &cond->sequence, SLEEPERS, __ATOMIC_RELAXED );
    zu___SrwLockReleaseShared( lock );
    ZU_BOOL result = zu___WaitOnWord( &cond->sequence, sequence, millisec );
    zu___SrwLockAcquireShared( lock );
    return result;
}
void zu___ConditionWakeAll( ZU___CONDITION *cond )
{
    uint32_t sequence = __atomic_load_n( &cond->sequence, __ATOMIC_RELAXED );
    do {
        if ( ( sequence & SLEEPERS ) == 0 ) {
            return;
        }
    } while ( !__atomic_compare_exchange_n( &cond->sequence, &sequence, sequence + 1, true, __ATOMIC_RELAXED,
                                            __ATOMIC_RELAXED ) );
    zu___WaitWakeAll( &cond->sequence );
}
