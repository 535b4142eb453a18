// ZU_UNICODE_NORMALIZER: brings a stream of characters into a normalization form.
//
// Characters are written, in pieces of any size, and what has become final can be read.  The result is the same however
// the text is cut.  What may still change waits: a D form holds back the last starter, a character of combining class
// 0, and the marks behind it; a C form holds back one starter more, with which the last one may compose.  Only
// zuUnicodeNormalizerFlush brings the rest out.
//
// Surrogate pairs are joined; lone surrogates and values above 0x10FFFF vanish, and nothing that is written aborts.
// Memory is bounded: of marks without end, a starter and those behind it are let go 4096 at a time, and are ordered
// only within such a piece.  The rest of a text is normalized as the standard says, with two exceptions in C forms:
// U+11A7 behind a Hangul syllable without a final consonant vanishes; and behind a starter that the limit has let go, the
// first mark may be lost: what a later character composes to with that starter takes the place of the mark.
//
// A normalizer is used by one thread at a time.
#pragma once

#include "zu/base/zu_string.h"
#include "zu/unicode/zu_unicode_normal_form.h"

ZU_BEGIN_DECLS

typedef struct ZU_UNICODE_NORMALIZER ZU_UNICODE_NORMALIZER;
// zuUnicodeNormalizerRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_UNICODE_NORMALIZER, zuUnicodeNormalizer )

/// Returns a new normalizer for the form.
ZU_API ZU_UNICODE_NORMALIZER *zuUnicodeNormalizerCreate( ZU_UNICODE_NORMAL_FORM normalForm );
/// Drops all text and goes back to the beginning.  The D forms lack this, and abort.
ZU_API void zuUnicodeNormalizerClear( ZU_UNICODE_NORMALIZER *norm );

// Writing
//
//     Write          all of `src`
//     WriteInner     the `count` code points of `src` from `offset` on
//     WriteLeading   the first `count` code points of `src`
//     WriteTrailing  the last `count` code points of `src`
//     WriteOuter     `src` without the `count` code points from `offset` on
//     WriteChar      one value
//     WriteChars     an array of values
//
// A range outside aborts.
/// Takes one value, which may be anything.
ZU_API void zuUnicodeNormalizerWriteChar( ZU_UNICODE_NORMALIZER *norm, ZU_CHAR ch );
/// Takes `chsLength` values, which may be anything.
ZU_API void zuUnicodeNormalizerWriteChars( ZU_UNICODE_NORMALIZER *norm, const ZU_CHAR *chs, ZU_INT chsLength );
/// Takes all of `src`.
ZU_API void zuUnicodeNormalizerWrite( ZU_UNICODE_NORMALIZER *norm, ZU_STRING *src );
/// Takes the `count` code points of `src` from `offset` on.
ZU_API void zuUnicodeNormalizerWriteInner( ZU_UNICODE_NORMALIZER *norm, ZU_STRING *src, ZU_INT offset, ZU_INT count );
/// Takes `src` without the `count` code points from `offset` on.
ZU_API void zuUnicodeNormalizerWriteOuter( ZU_UNICODE_NORMALIZER *norm, ZU_STRING *src, ZU_INT offset, ZU_INT count );
/// Takes the first `count` code points of `src`.
ZU_API void zuUnicodeNormalizerWriteLeading( ZU_UNICODE_NORMALIZER *norm, ZU_STRING *src, ZU_INT count );
/// Takes the last `count` code points of `src`.
ZU_API void zuUnicodeNormalizerWriteTrailing( ZU_UNICODE_NORMALIZER *norm, ZU_STRING *src, ZU_INT count );
/// Ends the text: everything becomes readable, and what is written next composes with nothing ahead of it.
ZU_API void zuUnicodeNormalizerFlush( ZU_UNICODE_NORMALIZER *norm );

// Reading
/// Returns the number of code points that can be read now.
ZU_API ZU_INT zuUnicodeNormalizerReadable( ZU_UNICODE_NORMALIZER *norm );
/// Appends up to `maxLen` code points to `*dest`, -1: all that can be read, and returns their number.
ZU_API ZU_INT zuUnicodeNormalizerRead( ZU_UNICODE_NORMALIZER *norm, ZU_STRING **dest, ZU_INT maxLen );
/// Stores up to `destLen` code points at `dest` and returns their number.
ZU_API ZU_INT zuUnicodeNormalizerReadChars( ZU_UNICODE_NORMALIZER *norm, ZU_CHAR *dest, ZU_INT destLen );

ZU_END_DECLS
