// ZU_LINE_SINK: where text is written to line by line.
//
// A line is a string without its end, which the backend adds as it sees fit; zu_nlf_line_sink.h has the usual one.
// Once the backend has failed, the sink has failed for good: it refuses everything and calls the backend no more.  The
// last release of a sink that has not failed flushes it.  One thread at a time uses a sink.
#pragma once

#include "zu/base/zu_string.h"
#include "zu/base/zu_vector.h"

ZU_BEGIN_DECLS

typedef struct ZU_LINE_SINK ZU_LINE_SINK;
// zuLineSinkRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_LINE_SINK, zuLineSink )

/// Tells whether the sink has failed.
ZU_API ZU_BOOL zuLineSinkError( ZU_LINE_SINK *ls );
/// Returns how many lines have been written; counting stops at ZU_INT_MAX.
ZU_API ZU_INT zuLineSinkLinesWritten( ZU_LINE_SINK *ls );
/// Lets the backend pass on whatever it holds back, and returns whether that succeeded.
ZU_API ZU_BOOL zuLineSinkFlush( ZU_LINE_SINK *ls );

// Writing one line
//
//     Write             all of `zus`
//     WriteInner        the `count` code points of `zus` from `offset` on
//     WriteOuter        `zus` without the `count` code points from `offset` on
//     WriteLeading      the first `count` code points of `zus`
//     WriteTrailing     the last `count` code points of `zus`
//     WriteCstr         narrow text of `length` bytes, -1: terminated
//     WriteWcstr        UTF-16 text of `length` units, -1: terminated
//     WriteFormat       text made by a format and further arguments
//     WriteFormatCstr   the same by a narrow format of `length` bytes, -1: terminated
//     WriteFormatWcstr  the same by a UTF-16 format of `length` units, -1: terminated
//
// return whether the sink took the line; false is returned if it has failed before.  The text is made first, even then.
// A range outside `zus` aborts.  An empty text is a line too, and nobody looks for ends of lines in a text.
/// Writes all of `zus`.
ZU_API ZU_BOOL zuLineSinkWrite( ZU_LINE_SINK *ls, ZU_STRING *zus );
/// Writes the `count` code points of `zus` from `offset` on.
ZU_API ZU_BOOL zuLineSinkWriteInner( ZU_LINE_SINK *ls, ZU_STRING *zus, ZU_INT offset, ZU_INT count );
/// Writes `zus` without the `count` code points from `offset` on.
ZU_API ZU_BOOL zuLineSinkWriteOuter( ZU_LINE_SINK *ls, ZU_STRING *zus, ZU_INT offset, ZU_INT count );
/// Writes the first `count` code points of `zus`.
ZU_API ZU_BOOL zuLineSinkWriteLeading( ZU_LINE_SINK *ls, ZU_STRING *zus, ZU_INT count );
/// Writes the last `count` code points of `zus`.
ZU_API ZU_BOOL zuLineSinkWriteTrailing( ZU_LINE_SINK *ls, ZU_STRING *zus, ZU_INT count );
/// Writes narrow text of `length` bytes, -1: terminated.
ZU_API ZU_BOOL zuLineSinkWriteCstr( ZU_LINE_SINK *ls, const char *cstr, ZU_INT length );
/// Writes UTF-16 text of `length` units, -1: terminated.
ZU_API ZU_BOOL zuLineSinkWriteWcstr( ZU_LINE_SINK *ls, const char16_t *wcstr, ZU_INT length );
/// Writes text made by `format` and further arguments; zu_string_format.h tells how.
ZU_API ZU_BOOL zuLineSinkWriteFormat( ZU_LINE_SINK *ls, ZU_STRING *format, ... );
/// Writes text made by a narrow `format` and further arguments.
ZU_API ZU_BOOL zuLineSinkWriteFormatCstr( ZU_LINE_SINK *ls, const char *format, ZU_INT length, ... );
/// Writes text made by a UTF-16 `format` and further arguments.
ZU_API ZU_BOOL zuLineSinkWriteFormatWcstr( ZU_LINE_SINK *ls, const char16_t *format, ZU_INT length, ... );

// Writing several lines
//
//     WriteLines          all items of `vec`
//     WriteLinesInner     the `count` items from `offset` on
//     WriteLinesOuter     all items but the `count` from `offset` on
//     WriteLinesLeading   the first `count` items
//     WriteLinesTrailing  the last `count` items
//
// write each of these items, which must be strings, as one line, and return whether the sink took them all; the first
// failure ends it.  A range outside `vec` aborts.
/// Writes all items of `vec`.
ZU_API ZU_BOOL zuLineSinkWriteLines( ZU_LINE_SINK *ls, ZU_VECTOR *vec );
/// Writes the `count` items of `vec` from `offset` on.
ZU_API ZU_BOOL zuLineSinkWriteLinesInner( ZU_LINE_SINK *ls, ZU_VECTOR *vec, ZU_INT offset, ZU_INT count );
/// Writes the items of `vec` but the `count` from `offset` on.
ZU_API ZU_BOOL zuLineSinkWriteLinesOuter( ZU_LINE_SINK *ls, ZU_VECTOR *vec, ZU_INT offset, ZU_INT count );
/// Writes the first `count` items of `vec`.
ZU_API ZU_BOOL zuLineSinkWriteLinesLeading( ZU_LINE_SINK *ls, ZU_VECTOR *vec, ZU_INT count );
/// Writes the last `count` items of `vec`.
ZU_API ZU_BOOL zuLineSinkWriteLinesTrailing( ZU_LINE_SINK *ls, ZU_VECTOR *vec, ZU_INT count );

// For authors of classes and modules

/// Takes a line, and returns whether it could.
typedef ZU_BOOL ( *ZU_LINE_SINK_WRITE_FUNC )( ZU_OBJ *closure, ZU_STRING *line );
/// Passes on what it holds back, and returns whether it could.
typedef ZU_BOOL ( *ZU_LINE_SINK_FLUSH_FUNC )( ZU_OBJ *closure );
/// Returns a sink that hands `closure`, which it keeps and which may be null, to each call of its two functions.
ZU_API ZU_LINE_SINK *zu___LineSinkCreate( ZU_LINE_SINK_WRITE_FUNC writeFunc, ZU_LINE_SINK_FLUSH_FUNC flushFunc,
                                          ZU_OBJ *closure );

ZU_END_DECLS
