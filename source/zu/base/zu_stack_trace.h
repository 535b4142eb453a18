// ZU_STACK_TRACE: where its creator was, a backtrace with one line of text for each function that was being called.
//
// An immutable object.  Each line is a text of the form
//
//     <file>(<line>+0x<offset>): <symbol>+0x<offset> [<address>]
//     <symbol>+0x<offset> [<address>]
//
// the second where no source line is known, with offsets and address in hexadecimal: from the beginning of the code of
// the source line, and of the function.  An unknown symbol is "???".  The address is where the function will go on.
// Whatever cannot be found out shortens a line or the trace; nothing fails.
#pragma once

#include "zu/base/zu_vector.h"

ZU_BEGIN_DECLS

typedef struct ZU_STACK_TRACE ZU_STACK_TRACE;
// zuStackTraceRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_STACK_TRACE, zuStackTrace )

/// Returns a trace of at most `maxLength` lines, -1: no limit, and 4000 in any case.  It leaves out the innermost
/// `skip` functions; with 0 the first line is zuStackTraceCreate itself.  Slow, and one thread at a time: not for a
/// busy path.
ZU_API ZU_STACK_TRACE *zuStackTraceCreate( ZU_INT skip, ZU_INT maxLength );
/// Returns the number of lines.
ZU_API ZU_INT zuStackTraceLength( ZU_STACK_TRACE *st );
/// Returns the line at `idx`, counted from the innermost function, as a new string; a position outside aborts.
ZU_API ZU_STRING *zuStackTraceAt( ZU_STACK_TRACE *st, ZU_INT idx );
/// Returns a new vector of all lines as strings.
ZU_API ZU_VECTOR *zuStackTraceVector( ZU_STACK_TRACE *st );

// For authors of classes and modules

/// Makes the lock of the symbol engine ready; the engine itself starts with the first trace.
ZU_API void zu___StackTraceStartup( void );
/// Stops the symbol engine.
ZU_API void zu___StackTraceShutdown( void );
/// Lets the next trace know files that the process has loaded meanwhile.
ZU_API void zu___StackTraceUpdateSymbols( void );

ZU_END_DECLS
