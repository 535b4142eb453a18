// zu_chars.h: code points, and arrays of them from and to external encodings.
//
// All conversions are measuring copies.  They convert the whole of `src` and return the number of units that the whole
// result needs; the first `destLength` of them are stored in `dest`, the rest is dropped.  So a call with a null `dest`
// and a `destLength` of 0 measures, and a second call fills an array of that size.  What a longer array holds behind
// the result is not told.  `src` may be null if it is empty.  The functions from a byte or 16-bit text take a
// `srcLength` of -1 for text that a 0 unit terminates.  With `addNul` the functions to a text append a 0 unit, which is
// part of the result and of its count.
//
// Broken input is replaced or dropped, as told at each function, never refused.  All functions are callable from any
// thread.
#pragma once

#include "zu/sys/zu_char_names.h"
#include "zu/sys/zu_int.h"

ZU_BEGIN_DECLS

/// A Unicode code point.  zu_char_names.h has constants for many of them.
typedef uint32_t ZU_CHAR;

/// Tells whether `ch` is a code point: at most 0x10FFFF.  Surrogates and noncharacters are code points.
#define ZU_CHAR_OK( ch ) ( (uint64_t)( ch ) < 0x110000 )

/// Tells whether every element passes ZU_CHAR_OK; an empty array does.
ZU_API ZU_BOOL zuCharsAllOk( const ZU_CHAR *src, ZU_INT srcLength );

/// Joins surrogate pairs and drops lone surrogates and all values above 0x10FFFF.  `dest` may be `src`.
ZU_API ZU_INT zuCharsSanitize( ZU_CHAR *dest, ZU_INT destLength, const ZU_CHAR *src, ZU_INT srcLength );

// ASCII
/// Converts from ASCII; a byte of 0x80 or above becomes U+FFFD.
ZU_API ZU_INT zuCharsConvertFromAscii( ZU_CHAR *dest, ZU_INT destLength, const char *src, ZU_INT srcLength );
/// Converts to ASCII; any other character becomes "?".
ZU_API ZU_INT zuCharsConvertToAscii( char *dest, ZU_INT destLength, const ZU_CHAR *src, ZU_INT srcLength,
                                     ZU_BOOL addNul );

// UTF-8 (RFC 3629), with a tolerance: overlong forms and surrogates in three bytes pass in both directions.
/// Converts from UTF-8.  A sequence that breaks off, and a run of bytes that cannot begin one, become one U+FFFD each;
/// a sequence for a value above 0x10FFFF, and one that the end of the source cuts off, vanish.
ZU_API ZU_INT zuCharsConvertFromUtf8( ZU_CHAR *dest, ZU_INT destLength, const char *src, ZU_INT srcLength );
/// Converts to UTF-8; a value above 0x10FFFF becomes U+FFFD.  A `dest` that ends within a sequence holds the bytes of
/// it that had room.
ZU_API ZU_INT zuCharsConvertToUtf8( char *dest, ZU_INT destLength, const ZU_CHAR *src, ZU_INT srcLength,
                                    ZU_BOOL addNul );

// The environment's narrow encoding, which is UTF-8 on Linux and macOS.  The text travels through UTF-16, so that a
// character beyond U+FFFF arrives as two elements, a surrogate pair: zuCharsSanitize joins them, and the UTF-8
// functions avoid them.  At most 0x7FFFFFFF units can be converted.
/// Converts from the narrow encoding; broken sequences become U+FFFD.
ZU_API ZU_INT zuCharsConvertFromCstr( ZU_CHAR *dest, ZU_INT destLength, const char *src, ZU_INT srcLength );
/// Converts to the narrow encoding, as by zuCharsConvertToWcstr on the way; returns 0 if the text is too long.
ZU_API ZU_INT zuCharsConvertToCstr( char *dest, ZU_INT destLength, const ZU_CHAR *src, ZU_INT srcLength,
                                    ZU_BOOL addNul );

// UTF-16
/// Widens each 16-bit unit to an element and nothing else: surrogate pairs stay two elements.
ZU_API ZU_INT zuCharsConvertFromWcstr( ZU_CHAR *dest, ZU_INT destLength, const char16_t *src, ZU_INT srcLength );
/// Converts to UTF-16; 0 and values above 0x10FFFF become U+FFFD, so that nothing ends a terminated text early.
ZU_API ZU_INT zuCharsConvertToWcstr( char16_t *dest, ZU_INT destLength, const ZU_CHAR *src, ZU_INT srcLength,
                                     ZU_BOOL addNul );

ZU_END_DECLS
