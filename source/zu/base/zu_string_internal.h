// zu_string_internal.h: the inside of ZU_STRING, for the files that share it.
#pragma once

#include "zu/base/zu_slack_internal.h"
#include "zu/base/zu_string.h"
#include "zu/sys/zu_chars_compare_internal.h"

ZU_BEGIN_DECLS

// Elements that live in the object.
#define ZU___STRING_INLINE_CHARS ( (ZU_INT)64 )

// The text is the `length` elements of `chars` from `fspace` on; `bspace` free elements follow.
struct ZU_STRING {
    ZU_OBJ obj;
    ZU_INT length;
    ZU_INT fspace;
    ZU_INT bspace;
    ZU_CHAR *chars; // never null: inlineChars, or an array in the block
    union {
        ZU_CHAR inlineChars[ ZU___STRING_INLINE_CHARS ];
        ZU___SLACK_BLOCK block; // while there is an array
    };
};

// What zuStringSort returns, for comparisons in loops.
extern ZU_SORT zu___sort_ZU_STRING __attribute__( ( visibility( "hidden" ) ) );

// Returns a new, private, empty string.
ZU_STRING *zu___StringCreateEmpty( void );

// Returns a new, private string of `count` code points, more than none; that they are code points is the caller's word.
// As many elements may be read as live in an object, whatever `count` is.
ZU_STRING *zu___StringCreateOf( const ZU_CHAR *chars, ZU_INT count );

// Returns a new, private string of `length` elements from `chars` on, which the caller fills; some free ones follow.
ZU_STRING *zu___StringCreateToFill( ZU_INT length );

// Opens a gap of `count` elements ahead of `atIndex` in a private string, raises its length by `count` and returns the
// gap, which the caller fills.
ZU_CHAR *zu___StringMakeRoom( ZU_STRING *zus, ZU_INT atIndex, ZU_INT count );

// Gives storage back after a private string has shrunk; its text may move.
void zu___StringCompact( ZU_STRING *zus );

// Replaces a shared string by a private copy.
void zu___StringUnshare( ZU_STRING **zus );

// Returns two adjacent elements such that the order of the results is that of the texts.
static inline uint64_t zu___StringLoadTwo( const ZU_CHAR *chars )
{
    uint64_t two;
    __builtin_memcpy( &two, chars, sizeof two );
#if __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
    two = two << 32 | two >> 32;
#endif
    return two;
}

// Orders two texts by code point: -1, 0 or 1.  The first `*same` elements of both are known to be equal; `*same` is
// raised to what has been found equal.  Keys of dicts go through here, and share long beginnings more often than not.
static inline ZU_INT zu___StringCompareCharsFrom( const ZU_CHAR *charsA, ZU_INT lengthA, const ZU_CHAR *charsB,
                                                  ZU_INT lengthB, ZU_INT *same )
{
    ZU_INT common = lengthA < lengthB ? lengthA : lengthB;
    ZU_INT i = *same;
    for ( ; i < common - 1; i += 2 ) {
        uint64_t twoA = zu___StringLoadTwo( charsA + i );
        uint64_t twoB = zu___StringLoadTwo( charsB + i );
        if ( twoA != twoB ) {
            *same = i;
            return twoA < twoB ? -1 : 1;
        }
    }
    *same = i;
    if ( i < common && charsA[ i ] != charsB[ i ] ) {
        return charsA[ i ] < charsB[ i ] ? -1 : 1;
    }
    return ( lengthA > lengthB ) - ( lengthA < lengthB );
}
// The same from the front on; zu___StringCompareCharsAny is for all lengths, and the other one does without a call for
// short texts.
ZU_INT zu___StringCompareCharsAny( const ZU_CHAR *charsA, ZU_INT lengthA, const ZU_CHAR *charsB, ZU_INT lengthB );
[[gnu::always_inline]] static inline ZU_INT zu___StringCompareChars( const ZU_CHAR *charsA, ZU_INT lengthA,
                                                                     const ZU_CHAR *charsB, ZU_INT lengthB )
{
    ZU_INT common = lengthA < lengthB ? lengthA : lengthB;
    if ( ZU___LIKELY( zu___CharsAreShort( common ) ) ) {
        ZU_INT first = zu___CharsFirst( ZU___CHARS_DIFFERENCE{ charsA, charsB }, common );
        return first < 0 ? ( lengthA > lengthB ) - ( lengthA < lengthB ) : charsA[ first ] < charsB[ first ] ? -1 : 1;
    }
    return zu___StringCompareCharsAny( charsA, lengthA, charsB, lengthB );
}

ZU_END_DECLS
