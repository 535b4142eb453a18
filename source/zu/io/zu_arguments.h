// zu_arguments.h: the words of a command line as strings.
//
// Many of them name files, and so they come as names do in zu_file.h: whatever the user has typed can be opened.  On
// POSIX systems a byte 0xNN that is no part of valid UTF-8 is the character U+DCNN.  On Windows main gets what is left
// of the command line in a code page; the system keeps the whole, and that is read.
#pragma once

#include "zu/base/zu_vector.h"

ZU_BEGIN_DECLS

/// Returns the words behind the name of the program as a vector of strings, such as ZU_OPT_SEQ and ZU_TOOL_SWITCH take.
/// `argc` and `argv` are those of main.  On Windows they are not looked at.  Callable from any thread.
ZU_API ZU_VECTOR *zuArguments( int argc, char *const *argv );

ZU_END_DECLS
