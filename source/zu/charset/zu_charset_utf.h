// zu_charset_utf.h: the streams of UTF-8, UTF-16 and UTF-32.
//
// Programs make them by zuCharsetCreateCharSink and zuCharsetCreateCharSource; what holds for all of them, zu_charset.h
// tells.  What each does with invalid input and with a byte order mark is particular to it.
#pragma once

#include "zu/charset/zu_charset_flags.h"
#include "zu/io/zu_byte_sink.h"
#include "zu/io/zu_byte_source.h"
#include "zu/io/zu_char_sink.h"
#include "zu/io/zu_char_source.h"

ZU_BEGIN_DECLS

// For authors of classes and modules
//
// `flags` are normalised.  Each stream retains the byte stream below it.

// UTF-8 (RFC 3629).  Surrogates are characters like others in both directions.  Invalid in a sink are values above
// 0x10FFFF.  Invalid in a source are bytes that begin no sequence, together with all continuations behind them;
// sequences that break off, together with the byte that breaks them, even if that is ASCII; values above 0x10FFFF; and
// a sequence that the end of the input cuts off.  Overlong forms pass.  A byte order mark at the very front is dropped.
/// Returns a new sink that encodes into `byteSink`.
ZU_API ZU_CHAR_SINK *zu___CharsetUtf8CharSinkCreate( ZU_BYTE_SINK *byteSink, ZU_CHARSET_FLAGS flags );
/// Returns a new source that decodes from `byteSource`.
ZU_API ZU_CHAR_SOURCE *zu___CharsetUtf8CharSourceCreate( ZU_BYTE_SOURCE *byteSource, ZU_CHARSET_FLAGS flags );

// UTF-16.  A sink writes of each unit the bits 0 to 7, and for the other byte the bits 16 to 23 in place of 8 to 15,
// which a unit of 16 bits has not: that byte is 0, and only characters up to U+00FF arrive as they are.  That is the
// contract of these sinks.  No value is invalid to them.  A source delivers each unit as a
// character, so surrogate pairs stay two; invalid is an odd byte at the end.
//
// Without BE or LE in the name a sink is little-endian, and a source is so unless the input begins with a byte order
// mark that says otherwise; the mark is dropped.  With BE or LE a source takes U+FEFF for a character everywhere.
/// Returns a new little-endian sink into `byteSink`.
ZU_API ZU_CHAR_SINK *zu___CharsetUtf16CharSinkCreate( ZU_BYTE_SINK *byteSink, ZU_CHARSET_FLAGS flags );
/// Returns a new source from `byteSource` that heeds a byte order mark.
ZU_API ZU_CHAR_SOURCE *zu___CharsetUtf16CharSourceCreate( ZU_BYTE_SOURCE *byteSource, ZU_CHARSET_FLAGS flags );
/// Returns a new big-endian sink into `byteSink`.
ZU_API ZU_CHAR_SINK *zu___CharsetUtf16BECharSinkCreate( ZU_BYTE_SINK *byteSink, ZU_CHARSET_FLAGS flags );
/// Returns a new big-endian source from `byteSource`.
ZU_API ZU_CHAR_SOURCE *zu___CharsetUtf16BECharSourceCreate( ZU_BYTE_SOURCE *byteSource, ZU_CHARSET_FLAGS flags );
/// Returns a new little-endian sink into `byteSink`.
ZU_API ZU_CHAR_SINK *zu___CharsetUtf16LECharSinkCreate( ZU_BYTE_SINK *byteSink, ZU_CHARSET_FLAGS flags );
/// Returns a new little-endian source from `byteSource`.
ZU_API ZU_CHAR_SOURCE *zu___CharsetUtf16LECharSourceCreate( ZU_BYTE_SOURCE *byteSource, ZU_CHARSET_FLAGS flags );

// UTF-32.  A sink writes the lowest 24 bits of each value, and no value is invalid to it.  Invalid in a source are
// values above 0x10FFFF, and one to three bytes at the end.  Endianness and byte order marks are as for UTF-16.
/// Returns a new little-endian sink into `byteSink`.
ZU_API ZU_CHAR_SINK *zu___CharsetUtf32CharSinkCreate( ZU_BYTE_SINK *byteSink, ZU_CHARSET_FLAGS flags );
/// Returns a new source from `byteSource` that heeds a byte order mark.
ZU_API ZU_CHAR_SOURCE *zu___CharsetUtf32CharSourceCreate( ZU_BYTE_SOURCE *byteSource, ZU_CHARSET_FLAGS flags );
/// Returns a new big-endian sink into `byteSink`.
ZU_API ZU_CHAR_SINK *zu___CharsetUtf32BECharSinkCreate( ZU_BYTE_SINK *byteSink, ZU_CHARSET_FLAGS flags );
/// Returns a new big-endian source from `byteSource`.
ZU_API ZU_CHAR_SOURCE *zu___CharsetUtf32BECharSourceCreate( ZU_BYTE_SOURCE *byteSource, ZU_CHARSET_FLAGS flags );
/// Returns a new little-endian sink into `byteSink`.
ZU_API ZU_CHAR_SINK *zu___CharsetUtf32LECharSinkCreate( ZU_BYTE_SINK *byteSink, ZU_CHARSET_FLAGS flags );
/// Returns a new little-endian source from `byteSource`.
ZU_API ZU_CHAR_SOURCE *zu___CharsetUtf32LECharSourceCreate( ZU_BYTE_SOURCE *byteSource, ZU_CHARSET_FLAGS flags );

ZU_END_DECLS
