// zu_abort_internal.h: what a platform must provide for the failure path.
//
// The process may be broken when these are called: they allocate nothing, take no lock and use no object.
#pragma once

#include "zu/sys/zu_int.h"

ZU_BEGIN_DECLS

// Writes all of `text` to the error stream of the process, as far as that takes it.
void zu___AbortWrite( const char *text, size_t length );

// Tells whether a debugger is attached to the process.
ZU_BOOL zu___AbortDebuggerPresent( void );

// Stops in the debugger; when the developer goes on, it returns.
void zu___AbortBreak( void );

ZU_END_DECLS
