// zu_thread_internal.h: what a platform must provide for ZU_THREAD, and the library's own threads.
#pragma once

#include "zu/base/zu_thread.h"

ZU_BEGIN_DECLS

// A thread of the system.
typedef struct ZU___THREAD_HANDLE ZU___THREAD_HANDLE;

// Makes a thread that will run `entry` with `argument`, and that does not begin before it is resumed.  Null if the
// system refuses.  A `deaf` thread never receives what the system sends to the process as a whole, such as the wish
// that it end, not even before it begins: that is for the program's own threads.
ZU___THREAD_HANDLE *zu___ThreadHandleTryCreate( void ( *entry )( void *argument ), void *argument, ZU_BOOL deaf );
// Sets the priority of a thread that has not been resumed.  False if the thread must not run without it; where a program
// needs a privilege to raise a priority, the thread does without.
ZU_BOOL zu___ThreadHandleTrySetPriority( ZU___THREAD_HANDLE *handle, ZU_THREAD_PRIORITY prio );
// Lets the thread begin.  Returns how often it had been kept from running: 1.
ZU_INT zu___ThreadHandleResume( ZU___THREAD_HANDLE *handle );
// Stops the thread, which does not end meanwhile, for good.  Tells whether that worked; with a null handle it does
// not.
ZU_BOOL zu___ThreadHandleTrySuspend( ZU___THREAD_HANDLE *handle );
// Waits until the thread has ended; any number of threads may.  True if it has; false if waiting failed, as it does
// after a while with a null handle.
ZU_BOOL zu___ThreadHandleWait( ZU___THREAD_HANDLE *handle );
// Whether the thread is one of the process that this one was forked from, and so does not exist here; a null handle's is
// not.
ZU_BOOL zu___ThreadHandleIsLost( ZU___THREAD_HANDLE *handle );
// Gives the handle up; nobody waits any more.  The thread runs on, and may be the caller.
void zu___ThreadHandleClose( ZU___THREAD_HANDLE *handle );

// Applies `prio` to the calling thread, as far as the system lets it.
void zu___ThreadApplyPriority( ZU_THREAD_PRIORITY prio );
// Names the calling thread for debuggers; what is too long for the system is cut.
void zu___ThreadSetSystemName( const char *name );

// Sets up, for the calling thread, what the system wants set up for each thread that uses its components, and takes it
// down again; in pairs, from the thread's beginning or that of an encapsulation to its end.
void zu___ThreadSystemBegin( void );
void zu___ThreadSystemEnd( void );

// As zuThreadTrySpawnCstr with a terminated name, for the library's own threads, which are deaf.
ZU_THREAD *zu___ThreadTrySpawnDeaf( const char *threadName, ZU_THREAD_FUNC threadFunc, ZU_THREAD_PRIORITY prio );

ZU_END_DECLS
