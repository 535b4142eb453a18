// zu_lock_internal.h: the plain lock's fast ways, inlined where a call would cost as much as they do.
#pragma once

#include "zu/sys/zu_happens_internal.h"
#include "zu/sys/zu_lock.h"

ZU_BEGIN_DECLS

#define ZU___LOCK_FREE      UINT32_C( 0 ) // as in fresh static memory
#define ZU___LOCK_HELD      UINT32_C( 1 )
#define ZU___LOCK_CONTENDED UINT32_C( 2 ) // held, and somebody may be asleep
#define ZU___LOCK_RESERVED  UINT32_C( 3 ) // held, and one that has lost often gets it next
#define ZU___LOCK_PROMISED  UINT32_C( 4 ) // free for that one

// Waits for a lock that was not free, and takes it.
void zu___LockWait( ZU___LOCK *lock );
// Frees a lock that somebody may sleep at, and wakes who gets it or may try.
void zu___LockReleaseContended( ZU___LOCK *lock );

// Nobody else knows the lock yet, and who makes it known orders this ahead.
static inline void zu___LockInitializeInline( ZU___LOCK *lock )
{
    lock->cell = NULL; // all of it, the free state included
}
// Acquires pair with the releases in zu___LockReleaseInline: what one holder wrote, the next one sees.
static inline ZU_BOOL zu___LockTry( ZU___LOCK *lock )
{
    uint32_t expected = ZU___LOCK_FREE;
    return __atomic_compare_exchange_n( &lock->state, &expected, ZU___LOCK_HELD, 0, __ATOMIC_ACQUIRE,
                                        __ATOMIC_RELAXED );
}
static inline void zu___LockAcquireInline( ZU___LOCK *lock )
{
    if ( ZU___UNLIKELY( !zu___LockTry( lock ) ) ) {
        zu___LockWait( lock );
    }
    ZU___HAPPENS_AFTER( lock );
}
static inline void zu___LockReleaseInline( ZU___LOCK *lock )
{
    ZU___HAPPENS_BEFORE( lock );
    uint32_t expected = ZU___LOCK_HELD;
    if ( ZU___UNLIKELY( !__atomic_compare_exchange_n( &lock->state, &expected, ZU___LOCK_FREE, 0, __ATOMIC_RELEASE,
                                                      __ATOMIC_RELAXED ) ) ) {
        zu___LockReleaseContended( lock );
    }
}

ZU_END_DECLS
