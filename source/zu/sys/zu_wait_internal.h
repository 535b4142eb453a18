// zu_wait_internal.h: what a platform must provide for threads that wait.
//
// A thread sleeps on a word of 32 bits, at no cost, as long as the word holds what the thread saw last; who changes the
// word wakes sleepers.  All locks and gates of the library are made of that.
#pragma once

#include "zu/sys/zu_int.h"

ZU_BEGIN_DECLS

// Sleeps while `word` holds `value`, for `millisec` milliseconds of a monotonic clock at most (-1: no limit).  The
// comparison and the falling asleep are one step to those who wake.  May also return for no reason: callers look
// again.  False if the system refuses, which neither an expiry nor an interruption is.
ZU_BOOL zu___WaitOnWord( const uint32_t *word, uint32_t value, ZU_INT millisec );

// Wakes one thread, or all, asleep on `word`.  The memory may be another object's by now: nothing is read from it, and
// at worst a sleeper there looks again for nothing.
void zu___WaitWakeOne( const uint32_t *word );
void zu___WaitWakeAll( const uint32_t *word );

// A thread that has just been woken is slower than one that runs and comes by, and can lose a lock to such ones again and
// again; with sections of a millisecond that took seconds.  One that has lost this often has the lock reserved: nobody
// else gets it next.  Handing every lock on in order would have all wait for each thread to wake up; losing a few times
// first costs no throughput that can be measured.
#define ZU___WAIT_LOSSES_MAX 4

// Returns the word that the thread sleeps on for which the lock at `lock` is reserved.  Other locks may share it: the
// sleeper looks at its lock, and the word moves after that.
uint32_t *zu___WaitReservedWord( const void *lock );
// Moves that word and wakes who sleeps on it.
void zu___WaitWakeReserved( const void *lock );

// Who finds a lock taken looks at it for a while before it sleeps: sections are a few dozen instructions long, which is
// less than a sleep costs.  The pause between two looks doubles from 1 to this number, so that looking hardly disturbs
// the holder.
#define ZU___WAIT_LONGEST_PAUSE 64

// Passes the time between two looks: `count` times as long as the processor recommends.
static inline void zu___WaitPause( int count )
{
    for ( int i = 0; i < count; i++ ) {
#if defined( __x86_64__ ) || defined( __i386__ )
        __builtin_ia32_pause();
#elif defined( __aarch64__ )
        __asm__ volatile( "yield" );
#else
        __asm__ volatile( "" );
#endif
    }
}

ZU_END_DECLS
