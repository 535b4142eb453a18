// zu_format.h: truth values, numbers and texts to formatted text, and text back to values.
//
// `flags` are those of zu_format_flags.h; `minWidth` is the least number of code points of the result, which blanks, or
// zeros if the flags say so, fill up.  A `base` is 2 to 36, its digits are 0 to 9 and a to z; another one aborts.  Text
// that stands between others is better made by a format, for which see zu_string_format.h.
#pragma once

#include "zu/base/zu_format_flags.h"
#include "zu/base/zu_string.h"

ZU_BEGIN_DECLS

// Encoding
/// Returns "true" or "false", without padding the same object each time.  A negative `minWidth` aborts.
ZU_API ZU_STRING *zuFormatEncodeBool( ZU_BOOL value, ZU_INT minWidth, ZU_INT flags );
/// Returns a copy of `srcLength` code points.  A negative `minWidth` and a value above 0x10FFFF abort.
ZU_API ZU_STRING *zuFormatEncodeChars( const ZU_CHAR *src, ZU_INT srcLength, ZU_INT minWidth, ZU_INT flags );
/// Returns an integer in digits.  A negative `minWidth` counts as none.
ZU_API ZU_STRING *zuFormatEncodeInt( ZU_INT value, ZU_INT base, ZU_INT minWidth, ZU_INT flags );
/// Returns a real number with `precision` digits behind the point, -1: six, 0: no point either.  A negative `minWidth`
/// and a `precision` below -1 abort.
///
/// Digits are cut off, never rounded: 2.9 with precision 0 is "2".  There is no exponent; each digit is computed from
/// the double of the one before, so that digits beyond those that a double holds carry no meaning.  NaN is "NAN", and
/// both infinities are "INF", padded with blanks only and without a sign.
ZU_API ZU_STRING *zuFormatEncodeReal( double value, ZU_INT base, ZU_INT minWidth, ZU_INT precision, ZU_INT flags );

// Decoding
//
//     Int   a sign, digits of `base`
//     Real  "-", digits of `base` with up to one "." or "," among them; no exponent, and a lone separator is 0.0
//     Bool  "true" or "false" in letters of either case; with `numeric` also a real number, true unless it is 0
//
// read a value from the front of the source, with white space ahead of it, between its parts and behind it, and return
// whether there was one.  A `base` of -1 is found from a prefix, "0b", "0o", "0d", "0x" (or with upper-case letters) or
// "2:" to "36:", and is 10 without one; the sign may then also follow where the prefix would end, and there Real takes
// "+" too.  Digits are those that zuUnicodeBaseNDigitValue knows.
//
// `value` receives the value, 0 if there is none.  `consumed` receives the number of code points read, white space
// included: less than the length if the source goes on differently, or with a digit that would overflow the integer;
// without a value it tells how far reading came, but is 0 where a number has nothing behind white space and sign.
// Either pointer may be null.  Nothing in the source aborts, not even values that are no code points; a range outside
// the string does.
/// Reads an integer from `srcLength` code points.
ZU_API ZU_BOOL zuFormatTryDecodeIntChars( const ZU_CHAR *src, ZU_INT srcLength, ZU_INT base, ZU_INT *value,
                                          ZU_INT *consumed );
/// Reads an integer from the `srcLength` code points of `src` from `srcOffset` on.
ZU_API ZU_BOOL zuFormatTryDecodeInt( ZU_STRING *src, ZU_INT srcOffset, ZU_INT srcLength, ZU_INT base, ZU_INT *value,
                                     ZU_INT *consumed );
/// Reads a real number from `srcLength` code points.
ZU_API ZU_BOOL zuFormatTryDecodeRealChars( const ZU_CHAR *src, ZU_INT srcLength, ZU_INT base, double *value,
                                           ZU_INT *consumed );
/// Reads a real number from the `srcLength` code points of `src` from `srcOffset` on.
ZU_API ZU_BOOL zuFormatTryDecodeReal( ZU_STRING *src, ZU_INT srcOffset, ZU_INT srcLength, ZU_INT base, double *value,
                                      ZU_INT *consumed );
/// Reads a truth value from `srcLength` code points.
ZU_API ZU_BOOL zuFormatTryDecodeBoolChars( const ZU_CHAR *src, ZU_INT srcLength, ZU_BOOL numeric, ZU_BOOL *value,
                                           ZU_INT *consumed );
/// Reads a truth value from the `srcLength` code points of `src` from `srcOffset` on.
ZU_API ZU_BOOL zuFormatTryDecodeBool( ZU_STRING *src, ZU_INT srcOffset, ZU_INT srcLength, ZU_BOOL numeric,
                                      ZU_BOOL *value, ZU_INT *consumed );

// For authors of classes and modules
/// Appends to `*dest` what zuFormatEncodeChars returns.
ZU_API void zu___FormatEncodeChars( ZU_STRING **dest, const ZU_CHAR *src, ZU_INT srcLength, ZU_INT minWidth,
                                    ZU_INT flags );

/// Makes the strings that stand for truth values.
ZU_API void zu___FormatStartup( void );
/// Releases what zu___FormatStartup made.
ZU_API void zu___FormatShutdown( void );

ZU_END_DECLS
