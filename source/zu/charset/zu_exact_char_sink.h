// ZU_EXACT_CHAR_SINK: writes a character set by the letter of its standard.
//
// The sinks of zu_charset.h write half of each unit of UTF-16, write surrogates as if they were characters, encode
// ISO 8859-8 by the tables of 8859-7, and may lose what stands ahead of a failure, by contract.  These do none of that;
// docs/streams.md has both side by side.
//
// A surrogate, a value above 0x10FFFF and, in a single-byte set, a character that the set lacks are faults.  A fault
// makes the sink fail under ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER, once everything ahead of it has gone to the
// byte sink; under ZU_CHARSET_FLAG_IGNORE_INVALID_CHARACTERS it is skipped; otherwise U+FFFD stands for it, or "?"
// where the set has no U+FFFD.  However the text comes in pieces, the bytes are the same.
//
// A single-byte set gets what it has as it is.  Of the rest, a mark is composed with the letter ahead of it, across up
// to seven marks of other classes that the set has, and what can be decomposed is written in parts, if that gives
// characters which the set has, and canonically equivalent text.  So "e" and U+0301 become an "é" of ISO 8859-1, and
// U+1EAD, or "a", U+0323 and U+0302, the "â" and U+0323 of windows-1258.
#pragma once

#include "zu/charset/zu_charset.h"

ZU_BEGIN_DECLS

typedef struct ZU_EXACT_CHAR_SINK ZU_EXACT_CHAR_SINK;
// zuExactCharSinkRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_EXACT_CHAR_SINK, zuExactCharSink )

/// Returns a new object that encodes into `byteSink`, which it keeps, up to 4096 bytes at a time.  The sets of the UTF
/// family begin with a byte order mark under ZU_CHARSET_FLAG_INSERT_BYTE_ORDER_MARK; UTF-16 and UTF-32 without BE or LE
/// are little-endian.  A set that is out of range aborts.
ZU_API ZU_EXACT_CHAR_SINK *zuExactCharSinkCreate( ZU_BYTE_SINK *byteSink, ZU_CHARSET charset, ZU_CHARSET_FLAGS flags );
/// Returns a new sink that writes to `ecs`; there may be several.  A flush, such as the one at the last release, hands
/// on all that was written, so that a mark that comes later composes with nothing ahead of it.
ZU_API ZU_CHAR_SINK *zuExactCharSinkCharSink( ZU_EXACT_CHAR_SINK *ecs );
/// Returns how many characters were written ahead of the first fault; -1 if there was none.  A sink that has failed
/// without a fault has failed with its byte sink.
ZU_API ZU_INT zuExactCharSinkFault( ZU_EXACT_CHAR_SINK *ecs );

/// Returns `zus` encoded, and stores in `fault`, which may be null, the position of the first fault, or -1.  Null only
/// if there is a fault and the flags say that it shall fail.
ZU_API ZU_BUFFER *zuExactCharSinkStringToBuffer( ZU_STRING *zus, ZU_CHARSET charset, ZU_CHARSET_FLAGS flags,
                                                 ZU_INT *fault );

ZU_END_DECLS
