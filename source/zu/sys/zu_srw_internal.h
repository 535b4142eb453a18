// zu_srw_internal.h: a slim reader/writer lock and a condition variable that goes with it.
//
// Both are plain words: nothing is allocated, making one cannot fail, and ending one takes nothing.
#pragma once

#include "zu/sys/zu_int.h"

ZU_BEGIN_DECLS

// Any number of threads hold the lock in shared mode, or one in exclusive mode.  Neither mode is recursive, nor does
// one turn into the other.  A writer waits for the readers that are inside and goes ahead of those that come; the
// readers that have waited for a writer go ahead of the next one; and a writer that others have overtaken a few times is
// the next one: nobody starves.
typedef struct ZU___SRW_LOCK {
    uint64_t state;      // who holds the lock and how many wait, as zu_srw.cpp tells
    uint32_t readerGate; // what waiting readers sleep on
    uint32_t writerGate; // what waiting writers sleep on
} ZU___SRW_LOCK;

typedef struct ZU___CONDITION {
    uint32_t sequence; // what the waiters sleep on; odd: somebody may be asleep
} ZU___CONDITION;

void zu___SrwLockInitialize( ZU___SRW_LOCK *lock );
void zu___SrwLockAcquireShared( ZU___SRW_LOCK *lock );
void zu___SrwLockAcquireExclusive( ZU___SRW_LOCK *lock );
void zu___SrwLockReleaseShared( ZU___SRW_LOCK *lock );
void zu___SrwLockReleaseExclusive( ZU___SRW_LOCK *lock );

void zu___ConditionInitialize( ZU___CONDITION *cond );
// Gives up `lock`, held in shared mode, sleeps until woken, for `millisec` milliseconds at most (-1: no limit), and
// takes the lock again.  A waking by a thread that has held the lock in exclusive mode since the caller took it is
// never lost.  May return for no reason.  False if the system refuses, not at expiry.
ZU_BOOL zu___ConditionWaitShared( ZU___CONDITION *cond, ZU___SRW_LOCK *lock, ZU_INT millisec );
// Wakes all waiters; without any, that is a look at a word.
void zu___ConditionWakeAll( ZU___CONDITION *cond );

ZU_END_DECLS
