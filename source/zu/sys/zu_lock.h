// zu_lock.h: the plain lock that every object carries.
#pragma once

#include "zu/sys/zu_int.h"

ZU_BEGIN_DECLS

// For authors of classes and modules

/// An exclusive lock of the size of a pointer, for critical sections that are short and never block.  It is not
/// recursive: a thread that takes it twice waits for itself.
typedef union ZU___LOCK {
    uint32_t state; // the word that threads wait on; zero: free
    void *cell;     // what gives the lock its size
} ZU___LOCK;

/// Makes `lock` a free lock; cannot fail.
ZU_API void zu___LockInitialize( ZU___LOCK *lock );
/// Ends the use of `lock`, which must be free.
ZU_API void zu___LockFinalize( ZU___LOCK *lock );
/// Takes `lock`, waiting until it is free.
ZU_API void zu___LockAcquire( ZU___LOCK *lock );
/// Frees `lock`, which the caller must hold.
ZU_API void zu___LockRelease( ZU___LOCK *lock );

ZU_END_DECLS
