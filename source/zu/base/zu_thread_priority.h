// zu_thread_priority.h: how much of the processor a thread gets beside others, an enumeration of seven values.
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

typedef ZU_INT ZU_THREAD_PRIORITY;

/// Runs when nothing else wants to.
#define ZU_THREAD_PRIORITY_IDLE     ( (ZU_THREAD_PRIORITY)0 )
#define ZU_THREAD_PRIORITY_LOWEST   ( (ZU_THREAD_PRIORITY)1 )
#define ZU_THREAD_PRIORITY_LOW      ( (ZU_THREAD_PRIORITY)2 )
/// What threads have that the library has not started.
#define ZU_THREAD_PRIORITY_NORMAL   ( (ZU_THREAD_PRIORITY)3 )
#define ZU_THREAD_PRIORITY_HIGH     ( (ZU_THREAD_PRIORITY)4 )
#define ZU_THREAD_PRIORITY_HIGHEST  ( (ZU_THREAD_PRIORITY)5 )
#define ZU_THREAD_PRIORITY_CRITICAL ( (ZU_THREAD_PRIORITY)6 )

/// Tells whether `prio` is a priority.
#define ZU_THREAD_PRIORITY_OK( prio ) ( ( prio ) >= ZU_THREAD_PRIORITY_IDLE && ( prio ) <= ZU_THREAD_PRIORITY_CRITICAL )

/// Returns the priority with the name or, in digits, the number `zus`, such as "ZU_THREAD_PRIORITY_LOW", as an
/// enumeration reads it; -1 if there is none.
ZU_API ZU_THREAD_PRIORITY zuThreadPriorityFromString( ZU_STRING *zus );
/// Returns the name of `prio`; what is no priority aborts.
ZU_API ZU_STRING *zuThreadPriorityToString( ZU_THREAD_PRIORITY prio );

// For authors of classes and modules
/// Makes the enumeration of the names.
ZU_API void zu___ThreadPriorityStartup( void );
/// Releases what zu___ThreadPriorityStartup made.
ZU_API void zu___ThreadPriorityShutdown( void );

ZU_END_DECLS
