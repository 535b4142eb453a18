// zu_string_internal.h: the inside of ZU_STRING, for the files that share it.
#pragma once

#include "zu/base/zu_slack_internal.h"
#include "zu/base/zu_string.h"

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

// Returns a new, private, empty string.
ZU_STRING *zu___StringCreateEmpty( void );

// Opens a gap of `count` elements ahead of `atIndex` in a private string, raises its length by `count` and returns the
// gap, which the caller fills.
ZU_CHAR *zu___StringMakeRoom( ZU_STRING *zus, ZU_INT atIndex, ZU_INT count );

// Gives storage back after a private string has shrunk; its text may move.
void zu___StringCompact( ZU_STRING *zus );

// Replaces a shared string by a private copy.
void zu___StringUnshare( ZU_STRING **zus );

// Orders two texts by code point: -1, 0 or 1.  Keys of dicts go through here, and share long beginnings more often than
// not, so that equal elements are passed four at a time.
static inline ZU_INT zu___StringCompareChars( const ZU_CHAR *charsA, ZU_INT lengthA, const ZU_CHAR *charsB,
                                              ZU_INT lengthB )
{
    ZU_INT common = lengthA < lengthB ? lengthA : lengthB;
    ZU_INT i = 0;
    for ( ; common - i >= 4; i += 4 ) {
        uint64_t a[ 2 ];
        uint64_t b[ 2 ];
        __builtin_memcpy( a, charsA + i, sizeof a );
        __builtin_memcpy( b, charsB + i, sizeof b );
        if ( ( ( a[ 0 ] ^ b[ 0 ] ) | ( a[ 1 ] ^ b[ 1 ] ) ) != 0 ) {
            break;
        }
    }
    for ( ; i < common; i++ ) {
        if ( charsA[ i ] != charsB[ i ] ) {
            return charsA[ i ] < charsB[ i ] ? -1 : 1;
        }
    }
    return ( lengthA > lengthB ) - ( lengthA < lengthB );
}

ZU_END_DECLS
