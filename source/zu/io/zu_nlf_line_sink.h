// ZU_NLF_LINE_SINK: writes lines to a character sink, each with a newline function behind it.
#pragma once

#include "zu/io/zu_char_sink.h"
#include "zu/io/zu_line_sink.h"
#include "zu/io/zu_nlf_flags.h"

ZU_BEGIN_DECLS

typedef struct ZU_NLF_LINE_SINK ZU_NLF_LINE_SINK;
// zuNlfLineSinkRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_NLF_LINE_SINK, zuNlfLineSink )

/// Returns a new object that writes to `dest`, with the newline function that zuNlfFlagsNlfString tells of.
ZU_API ZU_NLF_LINE_SINK *zuNlfLineSinkCreate( ZU_CHAR_SINK *dest, ZU_NLF_FLAGS nlfFlags );
/// Returns a new sink that writes to `nls`; there may be several.  It fails when `dest` does, and flushes `dest`.
ZU_API ZU_LINE_SINK *zuNlfLineSinkLineSink( ZU_NLF_LINE_SINK *nls );
/// Returns the flags, normalized.
ZU_API ZU_NLF_FLAGS zuNlfLineSinkNlfFlags( ZU_NLF_LINE_SINK *nls );

ZU_END_DECLS
