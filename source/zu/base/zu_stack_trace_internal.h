// zu_stack_trace_internal.h: stack traces made of addresses, and what a platform must provide for ZU_STACK_TRACE.
//
// All calls of the platform but the walk are made under the lock of the symbol engine, one at a time.  Memory may be short when they
// are made: nothing aborts, and what cannot be had is left out.
#pragma once

#include "zu/base/zu_stack_trace.h"

ZU_BEGIN_DECLS

// What is known of an address.  The texts hold until the next call of the symbol engine.
typedef struct ZU___STACK_TRACE_PLACE {
    const char *symbol;       // null: not known
    uintptr_t symbolOffset;   // of the address in the function
    const char *file;         // null: no source line is known
    unsigned long line;       // counted from 1
    unsigned long lineOffset; // of the address in the code of the line
} ZU___STACK_TRACE_PLACE;

// Lines of a trace at most; a deeper stack is cut.
#define ZU___STACK_TRACE_LENGTH_MAX ( (ZU_INT)4000 )

// Returns a trace made of what a walk has found, from the innermost function on.
ZU_STACK_TRACE *zu___StackTraceCreateFromAddresses( const uintptr_t *addresses, ZU_INT count );

// Receives the address where a function will go on; false ends the walk.
typedef ZU_BOOL ( *ZU___STACK_TRACE_FRAME_FUNC )( uintptr_t address, void *closure );

// Calls `func` for each function that is being called on this thread, from the caller of this one outwards.
void zu___StackTraceWalk( ZU___STACK_TRACE_FRAME_FUNC func, void *closure );

// Makes the symbol engine know what is loaded now; false if it cannot be had.
ZU_BOOL zu___StackTraceEngineStart( void );
// Ends what zu___StackTraceEngineStart began.
void zu___StackTraceEngineStop( void );
// Stores in `place` what is known of the function that goes on at `address`.
void zu___StackTraceEngineFind( uintptr_t address, ZU___STACK_TRACE_PLACE *place );

// The same for the crash report.  There, symbols are as the linker knows them.
ZU_BOOL zu___StackTraceReportStart( void );
void zu___StackTraceReportFind( uintptr_t address, ZU___STACK_TRACE_PLACE *place );

ZU_END_DECLS
