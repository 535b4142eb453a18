// ZU_NLF_LINE_SOURCE: splits what comes from a character source into lines, at newline functions.
//
// With ZU_NLF_FLAG_CRLF a carriage return and the line feed behind it are one end of a line, whatever else is set;
// alone, each of them is one only if its own flag is set, and text otherwise.  Text behind the last end of a line is a
// line; nothing behind it is none.  A line may have any length; a value above 0x10FFFF in it aborts.  Text is read 1024
// code points ahead.
#pragma once

#include "zu/io/zu_char_source.h"
#include "zu/io/zu_line_source.h"
#include "zu/io/zu_nlf_flags.h"

ZU_BEGIN_DECLS

typedef struct ZU_NLF_LINE_SOURCE ZU_NLF_LINE_SOURCE;
// zuNlfLineSourceRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_NLF_LINE_SOURCE, zuNlfLineSource )

/// Returns a new object that reads from `src` and ends lines at the newline functions of `nlfFlags`.
ZU_API ZU_NLF_LINE_SOURCE *zuNlfLineSourceCreate( ZU_CHAR_SOURCE *src, ZU_NLF_FLAGS nlfFlags );
/// Returns a new object that reads from the string `zus`, likewise.
ZU_API ZU_NLF_LINE_SOURCE *zuNlfLineSourceCreateFromString( ZU_STRING *zus, ZU_NLF_FLAGS nlfFlags );
/// Returns a new source that reads from `nls`; there may be several, and they share what has been read ahead.
ZU_API ZU_LINE_SOURCE *zuNlfLineSourceLineSource( ZU_NLF_LINE_SOURCE *nls );
/// Returns the flags, normalized.
ZU_API ZU_NLF_FLAGS zuNlfLineSourceNlfFlags( ZU_NLF_LINE_SOURCE *nls );

ZU_END_DECLS
