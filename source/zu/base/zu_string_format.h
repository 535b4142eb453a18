// zu_string_format.h: strings made by formats, and what a format may hold.
//
// A format is text with conversions in it.  Each begins with "%", has parts in this order, all but the last optional,
//
//     % flags width .precision !base name
//
// and is replaced by what it makes of the arguments, which are read from left to right.  Width, precision and base are
// decimal numbers, blanks behind them are skipped, or "*", which takes a ZU_INT from the arguments ahead of the value.
// A format without any conversion aborts, and so do unknown names; text that may lack one goes through "%s".
//
// A format is a part of the program and must never come from outside: it decides which arguments are read, and as
// what, and how much memory the text takes, such as 4 GB for "%999999999i".
//
//     name  arguments         result
//     b     ZU_BOOL           "true" or "false"
//     c     ZU_CHAR           the code point
//     i     ZU_INT            an integer in digits of the base
//     X     ZU_INT            as i, but in base 16 where none is given; lower case without "^"
//     A     ZU_INT            as i, with as many digits as the precision, which is the greatest value that may come and
//                             ZU_INT_MAX where none is given, so that texts have the order of their numbers; a negative
//                             value and a greater one abort, "-" has no effect
//     r     double            a real number with `precision` digits behind the point, 6 without one, cut off, not
//                             rounded; "NAN" and "INF"
//     s     ZU_STRING *       the string
//     o     any object        its text, as zuObjToString makes it
//     lc    const char *      text in the narrow encoding, terminated
//     lC    the same, ZU_INT  text in the narrow encoding with its length in bytes, -1: terminated
//     lw    const char16_t *  text in UTF-16, terminated
//     lW    the same, ZU_INT  text in UTF-16 with its length in units, -1: terminated
//     m     none              the code point whose number is the precision, 9 (TAB) without one, `width` times
//     %     none              a "%", which does not count as a conversion; "%#%" makes nothing, and counts
//
//     flag   effect
//     -      blanks behind the text instead of ahead of it
//     0      zeros between sign and digits of a number; "-" cancels it
//     +      "+" on numbers that are not negative
//     blank  a blank on numbers that are not negative; "+" cancels it
//     _      no sign; cancels both
//     ^      upper case of digits, base and truth values
//     #      the base of a number: "0b", "0o", "0d", "0x", else as by "##"; nothing for null instead of "null"
//     ##     the base of a number as "7:"; three or more show none
//     '      lets "#" and "##" show base 10 too, which they do not by themselves
//     ~      gives the argument up: s and o release the object, lc to lW free the block by zuMemFree
//
// The width is the least number of code points.  A negative one from "*" counts as none in i, X and A, and aborts
// elsewhere.  The base of i, X, A and r is 2 to 36, 10 where none is given.  Of the text in s, o and lc to lW,
// `precision` code points are kept at most, none or a negative one keeps all; null makes "null".
//
//     "%s: %i of %i"       "jobs: 3 of 12"
//     "%-6i|%06.2r"        "42    |003.14"
//     "%#X %^!2i %!*i"     "0xff 101 zz" from 255, 5, 36, 1295
//     "%.*A"               "007" from 100, 7
//     "%~s"                the text of a string that was made for the call
//
// Every argument takes one slot of 64 bits.  A C compiler does not know that: integers, truth values and code points
// must be passed as ZU_INT, so `(ZU_INT)count` for an int, and null as a pointer.  zu.hpp has templates that widen by
// themselves.
#pragma once

#include "zu/base/zu_string.h"

#include <stdarg.h>

ZU_BEGIN_DECLS

// Formatted text
//
//     Format              by a string and further arguments
//     FormatArgList       by a string and a cursor of arguments
//     FormatCstr          by narrow text of `fmtLength` bytes, -1: terminated, and further arguments
//     FormatCstrArgList   by the same and a cursor of arguments
//     FormatWcstr         by UTF-16 text of `fmtLength` units, -1: terminated, and further arguments
//     FormatWcstrArgList  by the same and a cursor of arguments
//
// After a form with a cursor, `args` is indeterminate, as after vprintf.  Inserting forms make the whole text first;
// the changed string may be among the arguments.
/// Returns a new string made by `fmt` and further arguments.
ZU_API ZU_STRING *zuStringCreateFromFormat( ZU_STRING *fmt, ... );
/// Returns a new string made by `fmt` and a cursor.
ZU_API ZU_STRING *zuStringCreateFromFormatArgList( ZU_STRING *fmt, va_list args );
/// Returns a new string made by a narrow `fmt` and further arguments.
ZU_API ZU_STRING *zuStringCreateFromFormatCstr( const char *fmt, ZU_INT fmtLength, ... );
/// Returns a new string made by a narrow `fmt` and a cursor.
ZU_API ZU_STRING *zuStringCreateFromFormatCstrArgList( const char *fmt, ZU_INT fmtLength, va_list args );
/// Returns a new string made by a UTF-16 `fmt` and further arguments.
ZU_API ZU_STRING *zuStringCreateFromFormatWcstr( const char16_t *fmt, ZU_INT fmtLength, ... );
/// Returns a new string made by a UTF-16 `fmt` and a cursor.
ZU_API ZU_STRING *zuStringCreateFromFormatWcstrArgList( const char16_t *fmt, ZU_INT fmtLength, va_list args );

/// Inserts text made by `fmt` and further arguments ahead of position `idx`.
ZU_API void zuStringInsertFormat( ZU_STRING **dest, ZU_INT idx, ZU_STRING *fmt, ... );
/// Inserts text made by `fmt` and a cursor ahead of position `idx`.
ZU_API void zuStringInsertFormatArgList( ZU_STRING **dest, ZU_INT idx, ZU_STRING *fmt, va_list args );
/// Inserts text made by a narrow `fmt` and further arguments ahead of position `idx`.
ZU_API void zuStringInsertFormatCstr( ZU_STRING **dest, ZU_INT idx, const char *fmt, ZU_INT fmtLength, ... );
/// Inserts text made by a narrow `fmt` and a cursor ahead of position `idx`.
ZU_API void zuStringInsertFormatCstrArgList( ZU_STRING **dest, ZU_INT idx, const char *fmt, ZU_INT fmtLength,
                                             va_list args );
/// Inserts text made by a UTF-16 `fmt` and further arguments ahead of position `idx`.
ZU_API void zuStringInsertFormatWcstr( ZU_STRING **dest, ZU_INT idx, const char16_t *fmt, ZU_INT fmtLength, ... );
/// Inserts text made by a UTF-16 `fmt` and a cursor ahead of position `idx`.
ZU_API void zuStringInsertFormatWcstrArgList( ZU_STRING **dest, ZU_INT idx, const char16_t *fmt, ZU_INT fmtLength,
                                              va_list args );

/// Appends text made by `fmt` and further arguments.
ZU_API void zuStringAppendFormat( ZU_STRING **dest, ZU_STRING *fmt, ... );
/// Appends text made by `fmt` and a cursor.
ZU_API void zuStringAppendFormatArgList( ZU_STRING **dest, ZU_STRING *fmt, va_list args );
/// Appends text made by a narrow `fmt` and further arguments.
ZU_API void zuStringAppendFormatCstr( ZU_STRING **dest, const char *fmt, ZU_INT fmtLength, ... );
/// Appends text made by a narrow `fmt` and a cursor.
ZU_API void zuStringAppendFormatCstrArgList( ZU_STRING **dest, const char *fmt, ZU_INT fmtLength, va_list args );
/// Appends text made by a UTF-16 `fmt` and further arguments.
ZU_API void zuStringAppendFormatWcstr( ZU_STRING **dest, const char16_t *fmt, ZU_INT fmtLength, ... );
/// Appends text made by a UTF-16 `fmt` and a cursor.
ZU_API void zuStringAppendFormatWcstrArgList( ZU_STRING **dest, const char16_t *fmt, ZU_INT fmtLength, va_list args );

/// Inserts text made by `fmt` and further arguments at the front.
ZU_API void zuStringPrependFormat( ZU_STRING **dest, ZU_STRING *fmt, ... );
/// Inserts text made by `fmt` and a cursor at the front.
ZU_API void zuStringPrependFormatArgList( ZU_STRING **dest, ZU_STRING *fmt, va_list args );
/// Inserts text made by a narrow `fmt` and further arguments at the front.
ZU_API void zuStringPrependFormatCstr( ZU_STRING **dest, const char *fmt, ZU_INT fmtLength, ... );
/// Inserts text made by a narrow `fmt` and a cursor at the front.
ZU_API void zuStringPrependFormatCstrArgList( ZU_STRING **dest, const char *fmt, ZU_INT fmtLength, va_list args );
/// Inserts text made by a UTF-16 `fmt` and further arguments at the front.
ZU_API void zuStringPrependFormatWcstr( ZU_STRING **dest, const char16_t *fmt, ZU_INT fmtLength, ... );
/// Inserts text made by a UTF-16 `fmt` and a cursor at the front.
ZU_API void zuStringPrependFormatWcstrArgList( ZU_STRING **dest, const char16_t *fmt, ZU_INT fmtLength, va_list args );

ZU_END_DECLS
