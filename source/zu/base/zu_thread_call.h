// zu_thread_call.h: threads whose function takes an argument of the caller's, which need not be an object.
#pragma once

#include "zu/base/zu_thread.h"

ZU_BEGIN_DECLS

/// What such a thread does.
typedef void ( *ZU_THREAD_CALL_FUNC )( void *argument );

/// Starts a thread that calls `threadFunc( argument )`; null if the system refuses.  `argument` is the caller's and may be
/// null; what it points to must live until the function is done with it.  Such a thread has no argument to unlatch.
ZU_API ZU_THREAD *zuThreadTrySpawnCall( ZU_STRING *threadName, ZU_THREAD_CALL_FUNC threadFunc, void *argument,
                                        ZU_THREAD_PRIORITY prio );
/// Starts such a thread; the name is narrow text of `threadNameLength` bytes, -1: terminated.
ZU_API ZU_THREAD *zuThreadTrySpawnCallCstr( const char *threadName, ZU_INT threadNameLength,
                                            ZU_THREAD_CALL_FUNC threadFunc, void *argument, ZU_THREAD_PRIORITY prio );

ZU_END_DECLS
