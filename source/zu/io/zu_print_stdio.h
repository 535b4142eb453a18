// zu_print_stdio.h: print functions for zuRuntimeStartup, on the standard streams of C.
//
// They write UTF-8 with U+FFFD for surrogates, and join pairs, as narrow text brings them.  Nothing is flushed, so that
// what is printed keeps its place among what the program writes by itself.  Callable from any thread, and while the
// library is stopped.
#pragma once

#include "zu/sys/zu_chars.h"

ZU_BEGIN_DECLS

/// Writes `chsLength` code points to the standard output; a negative length aborts, and so does null with any other
/// length than 0.  What cannot be written is lost; ferror( stdout ) tells.
ZU_API void zuPrintToStdout( const ZU_CHAR *chs, ZU_INT chsLength );
/// Writes them to the standard error stream.
ZU_API void zuPrintToStderr( const ZU_CHAR *chs, ZU_INT chsLength );

ZU_END_DECLS
