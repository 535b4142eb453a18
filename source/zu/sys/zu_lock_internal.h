// zu_lock_internal.h: the plain lock's fast ways, inlined where a call would cost as much as they do.
#pragma once

#include "zu/sys/zu_lock.h"

ZU_BEGIN_DECLS

#define ZU___LOCK_FREE      UINT32_C( 0 ) // as in fresh static memory
#define ZU___LOCK_HELD      UINT32_C( 1 )
#define ZU___LOCK_CONTENDED UINT32_C( 2 ) // held, and somebody may be asleep

// Waits for a lock that was not free, and takes it.
void zu___LockWait( ZU___LOCK *lock );
// Wakes a sleeper of a lock that has just been freed.
void zu___LockWake( ZU___LOCK *lock );

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
}
static inline void zu___LockReleaseInline( ZU___LOCK *lock )
{
    if ( ZU___UNLIKELY( __atomic_exchange_n( &lock->state, ZU___LOCK_FREE, __ATOMIC_RELEASE ) ==
                        ZU___LOCK_CONTENDED ) ) {
        zu___LockWake( lock );
    }
}

ZU_END_DECLS
