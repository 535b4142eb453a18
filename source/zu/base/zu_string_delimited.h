// zu_string_delimited.h: lists in a string, such as "a, b, c".
//
//     DelimitedAppend   adds an element behind the others: the delimiter, if there is any text, and `src`
//     DelimitedPrepend  adds it ahead of them: `src`, and the delimiter if there is any text
//
// Each has forms that take the delimiter, the element or both as something else than a string:
//
//     CharDelimiter, CharsDelimiter   the delimiter is a code point, or an array of them
//     CstrDelimiter, WcstrDelimiter   the delimiter is narrow text, or UTF-16
//     CstrSource, WcstrSource         the element is narrow text, or UTF-16
//     Cstr, Wcstr                     both are
//
// `src` and `delimiter` may be the changed string itself, and are read as it stood before the call.
#pragma once

#include "zu/base/zu_string.h"

ZU_BEGIN_DECLS

/// Adds `src` behind the others.
ZU_API void zuStringDelimitedAppend( ZU_STRING **dest, ZU_STRING *src, ZU_STRING *delimiter );
/// Adds `src` with the delimiter `ch`.
ZU_API void zuStringDelimitedAppendCharDelimiter( ZU_STRING **dest, ZU_STRING *src, ZU_CHAR ch );
/// Adds `src` with a delimiter of `chsLength` code points.
ZU_API void zuStringDelimitedAppendCharsDelimiter( ZU_STRING **dest, ZU_STRING *src, const ZU_CHAR *chs,
                                                   ZU_INT chsLength );
/// Adds `src` with a narrow delimiter of `delimiterLength` bytes, -1: terminated.
ZU_API void zuStringDelimitedAppendCstrDelimiter( ZU_STRING **dest, ZU_STRING *src, const char *delimiter,
                                                  ZU_INT delimiterLength );
/// Adds `src` with a delimiter of `delimiterLength` UTF-16 units, -1: terminated.
ZU_API void zuStringDelimitedAppendWcstrDelimiter( ZU_STRING **dest, ZU_STRING *src, const char16_t *delimiter,
                                                   ZU_INT delimiterLength );
/// Adds narrow text of `srcLength` bytes, -1: terminated.
ZU_API void zuStringDelimitedAppendCstrSource( ZU_STRING **dest, const char *src, ZU_INT srcLength,
                                               ZU_STRING *delimiter );
/// Adds UTF-16 text of `srcLength` units, -1: terminated.
ZU_API void zuStringDelimitedAppendWcstrSource( ZU_STRING **dest, const char16_t *src, ZU_INT srcLength,
                                                ZU_STRING *delimiter );
/// Adds narrow text with a narrow delimiter.
ZU_API void zuStringDelimitedAppendCstr( ZU_STRING **dest, const char *src, ZU_INT srcLength, const char *delimiter,
                                         ZU_INT delimiterLength );
/// Adds UTF-16 text with a delimiter in UTF-16.
ZU_API void zuStringDelimitedAppendWcstr( ZU_STRING **dest, const char16_t *src, ZU_INT srcLength,
                                          const char16_t *delimiter, ZU_INT delimiterLength );

/// Adds `src` ahead of the others.
ZU_API void zuStringDelimitedPrepend( ZU_STRING **dest, ZU_STRING *src, ZU_STRING *delimiter );
/// Adds `src` with the delimiter `ch`.
ZU_API void zuStringDelimitedPrependCharDelimiter( ZU_STRING **dest, ZU_STRING *src, ZU_CHAR ch );
/// Adds `src` with a delimiter of `chsLength` code points.
ZU_API void zuStringDelimitedPrependCharsDelimiter( ZU_STRING **dest, ZU_STRING *src, const ZU_CHAR *chs,
                                                    ZU_INT chsLength );
/// Adds `src` with a narrow delimiter of `delimiterLength` bytes, -1: terminated.
ZU_API void zuStringDelimitedPrependCstrDelimiter( ZU_STRING **dest, ZU_STRING *src, const char *delimiter,
                                                   ZU_INT delimiterLength );
/// Adds `src` with a delimiter of `delimiterLength` UTF-16 units, -1: terminated.
ZU_API void zuStringDelimitedPrependWcstrDelimiter( ZU_STRING **dest, ZU_STRING *src, const char16_t *delimiter,
                                                    ZU_INT delimiterLength );
/// Adds narrow text of `srcLength` bytes, -1: terminated.
ZU_API void zuStringDelimitedPrependCstrSource( ZU_STRING **dest, const char *src, ZU_INT srcLength,
                                                ZU_STRING *delimiter );
/// Adds UTF-16 text of `srcLength` units, -1: terminated.
ZU_API void zuStringDelimitedPrependWcstrSource( ZU_STRING **dest, const char16_t *src, ZU_INT srcLength,
                                                 ZU_STRING *delimiter );
/// Adds narrow text with a narrow delimiter.
ZU_API void zuStringDelimitedPrependCstr( ZU_STRING **dest, const char *src, ZU_INT srcLength, const char *delimiter,
                                          ZU_INT delimiterLength );
/// Adds UTF-16 text with a delimiter in UTF-16.
ZU_API void zuStringDelimitedPrependWcstr( ZU_STRING **dest, const char16_t *src, ZU_INT srcLength,
                                           const char16_t *delimiter, ZU_INT delimiterLength );

ZU_END_DECLS
