// ZU_CHAR_SINK: where text is written to, code point by code point, such as an encoder or a string in memory.
//
// A sink is a thin object around the functions of its backend and holds nothing back itself.  Offsets and counts are in
// code points, which nobody checks on the way: a backend gets what was written.  Once the backend has failed, the sink
// has failed for good: it refuses everything and calls the backend no more.  The last release of a sink that has not
// failed flushes it.  One thread at a time uses a sink.
#pragma once

#include "zu/base/zu_string.h"

ZU_BEGIN_DECLS

typedef struct ZU_CHAR_SINK ZU_CHAR_SINK;
// zuCharSinkRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_CHAR_SINK, zuCharSink )

/// Tells whether the sink has failed.
ZU_API ZU_BOOL zuCharSinkError( ZU_CHAR_SINK *cs );
/// Lets the backend pass on whatever it holds back, and returns whether that succeeded.
ZU_API ZU_BOOL zuCharSinkFlush( ZU_CHAR_SINK *cs );

// Writing
//
//     Write             all of `zus`
//     WriteInner        the `charCount` code points of `zus` from `charOffset` on
//     WriteOuter        `zus` without the `charCount` code points from `charOffset` on
//     WriteLeading      the first `charCount` code points of `zus`
//     WriteTrailing     the last `charCount` code points of `zus`
//     WriteChar         one code point
//     WriteChars        an array of code points
//     WriteCstr         narrow text of `length` bytes, -1: terminated
//     WriteWcstr        UTF-16 text of `length` units, -1: terminated
//     WriteFormat       text made by a format and further arguments
//     WriteFormatCstr   the same by a narrow format of `length` bytes, -1: terminated
//     WriteFormatWcstr  the same by a UTF-16 format of `length` units, -1: terminated
//
// return whether the sink took everything; false is returned if it has failed before.  The backend gets the memory of
// `zus` itself, in one call, or in two for Outer, and none for nothing.  A range outside `zus` aborts; `zus` may be
// null where offset and count are 0.  Text from a format or another encoding is made first, even if the sink has
// failed.
/// Writes all of `zus`.
ZU_API ZU_BOOL zuCharSinkWrite( ZU_CHAR_SINK *cs, ZU_STRING *zus );
/// Writes the `charCount` code points of `zus` from `charOffset` on.
ZU_API ZU_BOOL zuCharSinkWriteInner( ZU_CHAR_SINK *cs, ZU_STRING *zus, ZU_INT charOffset, ZU_INT charCount );
/// Writes `zus` without the `charCount` code points from `charOffset` on.
ZU_API ZU_BOOL zuCharSinkWriteOuter( ZU_CHAR_SINK *cs, ZU_STRING *zus, ZU_INT charOffset, ZU_INT charCount );
/// Writes the first `charCount` code points of `zus`.
ZU_API ZU_BOOL zuCharSinkWriteLeading( ZU_CHAR_SINK *cs, ZU_STRING *zus, ZU_INT charCount );
/// Writes the last `charCount` code points of `zus`.
ZU_API ZU_BOOL zuCharSinkWriteTrailing( ZU_CHAR_SINK *cs, ZU_STRING *zus, ZU_INT charCount );
/// Writes the code point `chr`.
ZU_API ZU_BOOL zuCharSinkWriteChar( ZU_CHAR_SINK *cs, ZU_CHAR chr );
/// Writes `charCount` code points, null only if there are none.
ZU_API ZU_BOOL zuCharSinkWriteChars( ZU_CHAR_SINK *cs, const ZU_CHAR *chars, ZU_INT charCount );
/// Writes narrow text of `length` bytes, -1: terminated.
ZU_API ZU_BOOL zuCharSinkWriteCstr( ZU_CHAR_SINK *cs, const char *cstr, ZU_INT length );
/// Writes UTF-16 text of `length` units, -1: terminated.
ZU_API ZU_BOOL zuCharSinkWriteWcstr( ZU_CHAR_SINK *cs, const char16_t *wcstr, ZU_INT length );
/// Writes text made by `format` and further arguments; zu_string_format.h tells how.
ZU_API ZU_BOOL zuCharSinkWriteFormat( ZU_CHAR_SINK *cs, ZU_STRING *format, ... );
/// Writes text made by a narrow `format` and further arguments.
ZU_API ZU_BOOL zuCharSinkWriteFormatCstr( ZU_CHAR_SINK *cs, const char *format, ZU_INT length, ... );
/// Writes text made by a UTF-16 `format` and further arguments.
ZU_API ZU_BOOL zuCharSinkWriteFormatWcstr( ZU_CHAR_SINK *cs, const char16_t *format, ZU_INT length, ... );

// For authors of classes and modules

/// Takes `charCount` code points, never 0, and returns whether it could.
typedef ZU_BOOL ( *ZU_CHAR_SINK_WRITE_FUNC )( ZU_OBJ *closure, const ZU_CHAR *chars, ZU_INT charCount );
/// Passes on what it holds back, and returns whether it could.
typedef ZU_BOOL ( *ZU_CHAR_SINK_FLUSH_FUNC )( ZU_OBJ *closure );
/// Returns a sink that hands `closure`, which it keeps and which may be null, to each call of its two functions.
ZU_API ZU_CHAR_SINK *zu___CharSinkCreate( ZU_CHAR_SINK_WRITE_FUNC writeFunc, ZU_CHAR_SINK_FLUSH_FUNC flushFunc,
                                          ZU_OBJ *closure );

ZU_END_DECLS
