// ZU_THREAD: a thread, as the library sees it.
//
// Whoever calls into the library where it says "the current thread" needs to be one: either the library has started
// the thread, or the thread wraps its work in an encapsulation.  The thread that starts the library is encapsulated
// from then on.  The library does not stop before all other threads and encapsulations have ended; to make them end
// is up to the program.
//
// A thread has an argument, which it takes over once, and values of its own under any keys.  Both are for the thread
// alone, and are released on it when its function has returned.  When all that is done its end signal is asserted, on
// the ending thread: what listens there must not ask for the current thread.  Threads are ordered by identity and
// print as their names.
#pragma once

#include "zu/base/zu_signal.h"
#include "zu/base/zu_string.h"
#include "zu/base/zu_thread_priority.h"

ZU_BEGIN_DECLS

typedef struct ZU_THREAD ZU_THREAD;
// zuThreadRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_THREAD, zuThread )

/// What a thread does.
typedef void ( *ZU_THREAD_FUNC )( void );

// Starting
//
// A new thread runs `threadFunc` with `argument`, which it keeps and which may be null, at the priority `prio`.  Null
// if the system refuses.  A raised priority that the process may not have is no refusal: the thread runs without it.
// On Windows it is one; the object of the thread, which ends at once, then stays allocated.
/// Starts a thread.
ZU_API ZU_THREAD *zuThreadTrySpawn( ZU_STRING *threadName, ZU_THREAD_FUNC threadFunc, ZU_OBJ *argument,
                                    ZU_THREAD_PRIORITY prio );
/// Starts a thread; the name is narrow text of `threadNameLength` bytes, -1: terminated.
ZU_API ZU_THREAD *zuThreadTrySpawnCstr( const char *threadName, ZU_INT threadNameLength, ZU_THREAD_FUNC threadFunc,
                                        ZU_OBJ *argument, ZU_THREAD_PRIORITY prio );
/// Starts a thread; the name is UTF-16 of `threadNameLength` units, -1: terminated.
ZU_API ZU_THREAD *zuThreadTrySpawnWcstr( const char16_t *threadName, ZU_INT threadNameLength, ZU_THREAD_FUNC threadFunc,
                                         ZU_OBJ *argument, ZU_THREAD_PRIORITY prio );

// Any thread
/// Waits until `thread` has ended.  Needs a current thread, which must be another one.  An encapsulated thread has no
/// end that could be waited for: joining it never returns.
ZU_API void zuThreadJoin( ZU_THREAD *thread );
/// Tells whether the end signal of `thread` is asserted.
ZU_API ZU_BOOL zuThreadEnd( ZU_THREAD *thread );
/// Attaches `sigb` to the end signal of `thread`; it is fired at once if the thread has ended.
ZU_API void zuThreadEndAddSignalable( ZU_THREAD *thread, ZU_SIGNALABLE *sigb );
/// Detaches `sigb` from the end signal of `thread`.
ZU_API void zuThreadEndDelSignalable( ZU_THREAD *thread, ZU_SIGNALABLE *sigb );
/// Returns the name.
ZU_API ZU_STRING *zuThreadName( ZU_THREAD *thread );

// The current thread; a thread that is none aborts
/// Returns the current thread.
ZU_API ZU_THREAD *zuThreadThis( void );
/// Returns the priority that the current thread was started with.
ZU_API ZU_THREAD_PRIORITY zuThreadPriority( void );
/// Returns the argument of the current thread and leaves its reference to the caller; null from the second call on.
ZU_API ZU_OBJ *zuThreadUnlatchArgument( void );
/// Returns the current thread's value under `key`; null if there is none.
ZU_API ZU_OBJ *zuThreadKey( ZU_OBJ *key );
/// Tells whether the current thread has a value under `key`.
ZU_API ZU_BOOL zuThreadHasKey( ZU_OBJ *key );
/// Sets the current thread's value under `key`.  The values go with the thread, on the thread; what they set while they
/// go, goes next.  At the end of an encapsulation nothing is the current thread by then.
ZU_API void zuThreadSetKey( ZU_OBJ *key, ZU_OBJ *val );
/// Removes the current thread's value under `key`; it need not be there.
ZU_API void zuThreadDelKey( ZU_OBJ *key );

// Threads that the library has not started
/// Runs `threadFunc` on the calling thread, as the current thread with `argument`, which it keeps and which may be
/// null. Encapsulations do not nest.
ZU_API void zuThreadEncapsulate( ZU_THREAD_FUNC threadFunc, ZU_OBJ *argument );
/// Tells whether the caller is a thread of the library or encapsulated.
ZU_API ZU_BOOL zuThreadEncapsulated( void );
/// Aborts if the caller is neither a thread of the library nor encapsulated.
ZU_API void zuThreadCheckEncapsulated( void );

// Waiting
/// Lets other threads run first.
ZU_API void zuThreadYield( void );
/// Waits until `signal` is asserted; with null for ever.
ZU_API void zuSleep( ZU_SIGNAL *signal );
/// Waits until `signal`, which may be null, is asserted, for `millisec` milliseconds at most, -1: no limit.  Tells
/// whether it is.
ZU_API ZU_BOOL zuSleepTimed( ZU_SIGNAL *signal, ZU_INT millisec );

// For authors of classes and modules
/// Makes the caller the current thread, with `argument`, until zu___ThreadEncapsulateEnd.
ZU_API void zu___ThreadEncapsulateBegin( ZU_OBJ *argument );
/// Ends what zu___ThreadEncapsulateBegin began.
ZU_API void zu___ThreadEncapsulateEnd( void );
/// Stops `thread` for good wherever it is, also amid a change of something shared; for processes about to end.  Tells
/// whether that worked; it does not on an encapsulated thread, nor on the caller's own.
ZU_API ZU_BOOL zu___ThreadTryFreeze( ZU_THREAD *thread );
/// Encapsulates the caller and begins to count threads.
ZU_API void zu___ThreadStartup( void );
/// Waits until all other threads have ended, and ends the caller's encapsulation.
ZU_API void zu___ThreadShutdown( void );

ZU_END_DECLS
