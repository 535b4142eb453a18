// zu_file_exact.h: files as streams of characters and lines, by the letter of the standards.
//
// The functions of zu_file.h take the lenient streams of zu_charset.h.  These take ZU_EXACT_CHAR_SOURCE and
// ZU_EXACT_CHAR_SINK, and are the ones for whatever comes from outside or goes there.  All else is as zu_file.h has it:
// each returns a new stream, or null if the file cannot be opened; flushing a sink hands everything to the system.
//
// `exact`, which may be null, receives a reference to the object that tells where the first fault is, or null if the file
// cannot be opened; what it held before is overwritten.
//
// All functions are callable from any thread.
#pragma once

#include "zu/charset/zu_exact_char_sink.h"
#include "zu/charset/zu_exact_char_source.h"
#include "zu/io/zu_file.h"

ZU_BEGIN_DECLS

/// Opens `fn` for reading characters.
ZU_API ZU_CHAR_SOURCE *zuFileOpenExactCharSource( ZU_STRING *fn, ZU_CHARSET charset, ZU_CHARSET_FLAGS flags,
                                                  ZU_EXACT_CHAR_SOURCE **exact );
/// Opens `fn` for writing characters.
ZU_API ZU_CHAR_SINK *zuFileOpenExactCharSink( ZU_STRING *fn, ZU_CHARSET charset, ZU_CHARSET_FLAGS flags,
                                              ZU_EXACT_CHAR_SINK **exact );
/// Opens `fn` for reading lines, which end at the newline functions of `nlfFlags`.
ZU_API ZU_LINE_SOURCE *zuFileOpenExactLineSource( ZU_STRING *fn, ZU_CHARSET charset, ZU_CHARSET_FLAGS flags,
                                                  ZU_NLF_FLAGS nlfFlags, ZU_EXACT_CHAR_SOURCE **exact );
/// Opens `fn` for writing lines, with the newline function that zuNlfFlagsNlfString tells of.
ZU_API ZU_LINE_SINK *zuFileOpenExactLineSink( ZU_STRING *fn, ZU_CHARSET charset, ZU_CHARSET_FLAGS flags,
                                              ZU_NLF_FLAGS nlfFlags, ZU_EXACT_CHAR_SINK **exact );

ZU_END_DECLS
