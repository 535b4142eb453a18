// ZU_NLF_FLAGS: which newline functions end a line, one bit for each.
//
// Newline functions are the characters that the Unicode standard, in section 5.8, lists as ends of lines.  Any mixture
// of flags is valid, none included.  Callable from any thread.
#pragma once

#include "zu/sys/zu_int.h"

ZU_BEGIN_DECLS

typedef struct ZU_STRING ZU_STRING;

typedef ZU_INT ZU_NLF_FLAGS;

/// U+000A, line feed.
#define ZU_NLF_FLAG_LF   ( (ZU_NLF_FLAGS)1 )
/// U+000D, carriage return, by itself.
#define ZU_NLF_FLAG_CR   ( (ZU_NLF_FLAGS)2 )
/// U+000D and U+000A as one end of a line, whatever else is set.
#define ZU_NLF_FLAG_CRLF ( (ZU_NLF_FLAGS)4 )
/// U+0085, next line.
#define ZU_NLF_FLAG_NEL  ( (ZU_NLF_FLAGS)8 )
/// U+000B, line tabulation.
#define ZU_NLF_FLAG_VT   ( (ZU_NLF_FLAGS)16 )
/// U+000C, form feed.
#define ZU_NLF_FLAG_FF   ( (ZU_NLF_FLAGS)32 )
/// U+2028, line separator.
#define ZU_NLF_FLAG_LS   ( (ZU_NLF_FLAGS)64 )
/// U+2029, paragraph separator.
#define ZU_NLF_FLAG_PS   ( (ZU_NLF_FLAGS)128 )

/// Returns `flags` without bits that have no meaning.
ZU_API ZU_NLF_FLAGS zuNlfFlagsNormalize( ZU_NLF_FLAGS flags );
/// Reads flags as zuFlagsetParse does, "ZU_NLF_FLAG_LF|ZU_NLF_FLAG_CRLF", and normalizes them.
ZU_API ZU_NLF_FLAGS zuNlfFlagsFromString( ZU_STRING *zus );
/// Returns the names of the flags as zuFlagsetGenerate does; a bit without a meaning aborts.
ZU_API ZU_STRING *zuNlfFlagsToString( ZU_NLF_FLAGS flags );
/// Returns the one newline function that a sink with these flags writes: that of the lowest flag; the empty string if
/// there is none.
ZU_API ZU_STRING *zuNlfFlagsNlfString( ZU_NLF_FLAGS flags );

// For authors of classes and modules
/// Makes the names of the flags.
ZU_API void zu___NlfFlagsStartup( void );
/// Releases the names of the flags.
ZU_API void zu___NlfFlagsShutdown( void );

ZU_END_DECLS
