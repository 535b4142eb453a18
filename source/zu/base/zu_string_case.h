// zu_string_case.h: upper and lower case, and comparison without regard to case.
//
// Mappings and foldings are the full ones of the Unicode Standard, which hold in every language and context: one code
// point becomes up to three, and there is no rule for a sigma at the end of a word.  Comparison is by folded text, code
// point by code point.
#pragma once

#include "zu/base/zu_string.h"

ZU_BEGIN_DECLS

// Mapping; a text that stays as it is is left alone, and stays shared
/// Maps the text to lower case.
ZU_API void zuStringToLower( ZU_STRING **zus );
/// Maps the text to upper case: "ß" becomes "SS".
ZU_API void zuStringToUpper( ZU_STRING **zus );
/// Folds the case of the text: two texts that differ only in case become equal.
ZU_API void zuStringToCaseFold( ZU_STRING **zus );

// Comparison of folded texts, which are not made
/// Orders two texts: -1, 0 or 1.
ZU_API ZU_INT zuStringCompareCaseFold( ZU_STRING *zusA, ZU_STRING *zusB );
/// Tells whether two texts are equal.
ZU_API ZU_BOOL zuStringEqualsCaseFold( ZU_STRING *zusA, ZU_STRING *zusB );
/// Tells whether `zus` equals the one code point `ch`.
ZU_API ZU_BOOL zuStringEqualsCharCaseFold( ZU_STRING *zus, ZU_CHAR ch );
/// Tells whether `zus` equals `chsLen` code points.
ZU_API ZU_BOOL zuStringEqualsCharsCaseFold( ZU_STRING *zus, const ZU_CHAR *chs, ZU_INT chsLen );
/// Tells whether `zus` equals narrow text of `srcLength` bytes, -1: terminated.
ZU_API ZU_BOOL zuStringEqualsCaseFoldCstr( ZU_STRING *zus, const char *src, ZU_INT srcLength );
/// Tells whether `zus` equals UTF-16 text of `srcLength` units, -1: terminated.
ZU_API ZU_BOOL zuStringEqualsCaseFoldWcstr( ZU_STRING *zus, const char16_t *src, ZU_INT srcLength );

ZU_END_DECLS
