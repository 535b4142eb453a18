// zu_thread_internal.h: what a platform must provide for ZU_THREAD.
#pragma once

#include "zu/base/zu_thread.h"

ZU_BEGIN_DECLS

// A thread of the system.
typedef struct ZU___THREAD_HANDLE ZU___THREAD_HANDLE;

// Makes a thread that will run `entry` with `argument`, and that does not begin before it is resumed.  Null if the
// system refuses.
ZU___THREAD_HANDLE *zu___ThreadHandleTryCreate( void ( *entry )( void *argument ), void *argument );
// Sets the priority of a thread that has not been resumed.  False if the system refuses for another reason than a lack
// of privilege.
ZU_BOOL zu___ThreadHandleTrySetPriority( ZU___THREAD_HANDLE *handle, ZU_THREAD_PRIORITY prio );
// Lets the thread begin.  Returns how often it had been kept from running: 1.
ZU_INT zu___ThreadHandleResume( ZU___THREAD_HANDLE *handle );
// Stops the thread, which does not end meanwhile, for good.  Tells whether that worked; with a null handle it does
// not.
ZU_BOOL zu___ThreadHandleTrySuspend( ZU___THREAD_HANDLE *handle );
// Waits until the thread has ended; any number of threads may.  True if it has; false if waiting failed, as it does
// after a while with a null handle.
ZU_BOOL zu___ThreadHandleWait( ZU___THREAD_HANDLE *handle );
// Gives the handle up; nobody waits any more.  The thread runs on, and may be the caller.
void zu___ThreadHandleClose( ZU___THREAD_HANDLE *handle );

// Applies `prio` to the calling thread.  False if the system refuses for another reason than a lack of privilege.
ZU_BOOL zu___ThreadApplyPriority( ZU_THREAD_PRIORITY prio );
// Names the calling thread for debuggers; what is too long for the system is cut.
void zu___ThreadSetSystemName( const char *name );

ZU_END_DECLS
