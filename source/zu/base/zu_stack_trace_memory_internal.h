// zu_stack_trace_memory_internal.h: the memory of libbacktrace, which never gives its state back by itself.
#pragma once

#include "zu/sys/zu_int.h"

ZU_BEGIN_DECLS

// Has libbacktrace get memory of the crash report's from here on, on this thread, or again of the symbol engine's.
void zu___StackTraceMemoryChoose( ZU_BOOL forReport );

// Gives back to the system all that libbacktrace has got since the last call, parts of files that it has mapped
// included: its state is gone.  Under the lock of the symbol engine, as all calls of libbacktrace.
void zu___StackTraceMemoryRelease( void );

ZU_END_DECLS
