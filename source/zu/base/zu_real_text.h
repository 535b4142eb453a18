// zu_real_text.h: real numbers as text that keeps them, beside the conversions of the format language.
//
// Formats cut digits off and read back with an error in the last bits, as their contract has it.  What is written and
// read here is exact: a double comes back as the same double, and digits are rounded correctly.  None of it depends on
// the locale; the point is ".".  An infinity is "inf" or "-inf", what is no number "nan".
//
// All functions are pure and callable from any thread at any time.
#pragma once

#include "zu/base/zu_string.h"

ZU_BEGIN_DECLS

/// Characters that zuRealTextWriteShortest stores at most, without a terminator.
#define ZU_REAL_TEXT_SHORTEST_MAX 24
/// Digits that a caller can ask for at most: no double has more behind its point.
#define ZU_REAL_TEXT_DIGITS_MAX   1100

// Writing
/// Returns the shortest text that reads back to `value`, of several the one that is nearest to it: 0.1, 1e-9, 1e22,
/// 12345.015625.  It has an exponent where the text would be longer without, even if the exponent had a sign and two
/// digits; so 1000 has none.  By Raffaello Giulietti, "The Schubfach way to render doubles" (2020).
ZU_API ZU_STRING *zuRealTextShortest( double value );
/// Stores the same in ASCII and returns how many characters it has.
ZU_API ZU_INT zuRealTextWriteShortest( char dest[ ZU_REAL_TEXT_SHORTEST_MAX ], double value );
/// Returns `value` with `decimals` digits behind the point, 0 (and no point) to ZU_REAL_TEXT_DIGITS_MAX: the exact value
/// rounded to nearest, halves to even.
ZU_API ZU_STRING *zuRealTextFixed( double value, ZU_INT decimals );
/// Returns `value` with `digits` digits in all, 1 to ZU_REAL_TEXT_DIGITS_MAX, and an exponent: 1.25e-9; rounded likewise.
ZU_API ZU_STRING *zuRealTextScientific( double value, ZU_INT digits );

// Reading
//
// A number is an optional sign, digits with a point among them, at their end or ahead of them, and an optional exponent:
// "e" or "E", an optional sign, digits; or, in any case of letters, "inf", "infinity" or "nan".  There are no blanks.
// What is too large is an infinity, what is too small a zero; all else is the double nearest to the exact value, halves
// to even.  By Daniel Lemire, "Number parsing at a gigabyte per second" (2021).
/// Reads all of `zus`; false, and a value of 0, if it is no number.  `value` may be null.
ZU_API ZU_BOOL zuRealTextTryRead( ZU_STRING *zus, double *value );
/// Reads as many of the `length` code points as belong to a number; false, and 0 for both, if none does.  `value` and
/// `consumed` may be null, `chars` too for a length of 0.
ZU_API ZU_BOOL zuRealTextTryReadChars( const ZU_CHAR *chars, ZU_INT length, double *value, ZU_INT *consumed );
/// Reads text in ASCII or UTF-8, `length` bytes, -1: terminated, likewise.
ZU_API ZU_BOOL zuRealTextTryReadUtf8( const char *utf8, ZU_INT length, double *value, ZU_INT *consumed );

ZU_END_DECLS
