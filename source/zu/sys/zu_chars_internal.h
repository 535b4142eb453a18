// zu_chars_internal.h: what a platform must provide for the environment's narrow encoding, and the steps of UTF-8 that
// the conversions share with the streams.
#pragma once

#include "zu/sys/zu_chars.h"

ZU_BEGIN_DECLS

// Both are measuring copies like those of zu_chars.h, without a terminator: they return the number of units that the
// whole result needs and store as many as fit.  `dest` may be null if `destLength` is 0.  The encoding extends ASCII.
// Narrow text travels through UTF-16 both ways, or comes out as if it had: a platform whose own functions speak UTF-16
// uses them and zuCharsConvertFromWcstr or zuCharsConvertToWcstr, one that knows the encoding spares the detour.

// Converts narrow text to UTF-16, and stores each unit as an element; what cannot be read becomes U+FFFD.  A result of
// 0 for text that is not empty says that the platform failed.
ZU_INT zu___CharsEcsToUnits( ZU_CHAR *dest, ZU_INT destLength, const char *src, ZU_INT srcLength );

// Converts elements to narrow text: two surrogates in a row that make a pair are one character, and 0, what is above
// 0x10FFFF, other surrogates and what the encoding lacks are replaced.  A failure of the platform yields 0.
ZU_INT zu___CharsEcsFromChars( char *dest, ZU_INT destLength, const ZU_CHAR *src, ZU_INT srcLength );

// The conditions that all functions from a text share, in the order in which they are told.
#define ZU___CHARS_ASSERT_FROM( dest, destLength, src, srcLength ) \
    do {                                                           \
        ZU_ASSERT( srcLength >= -1 );                              \
        ZU_ASSERT( destLength >= 0 );                              \
        ZU_ASSERT( srcLength == 0 || src );                        \
        ZU_ASSERT( destLength == 0 || dest );                      \
    } while ( 0 )

// The same for the functions to a text, which may append a terminator.
#define ZU___CHARS_ASSERT_TO( dest, destLength, src, srcLength ) \
    do {                                                         \
        ZU_ASSERT( srcLength >= 0 );                             \
        ZU_ASSERT( destLength >= 0 );                            \
        ZU_ASSERT( srcLength == 0 || src );                      \
        ZU_ASSERT( destLength == 0 || dest );                    \
        ZU_ASSERT( srcLength < ZU_INT_MAX );                     \
    } while ( 0 )

// Returns `srcLength`, or the length of the terminated text `src` if that is -1.
static inline ZU_INT zu___CharsMeasureCstr( const char *src, ZU_INT srcLength )
{
    if ( srcLength >= 0 ) {
        return srcLength;
    }
    size_t st = __builtin_strlen( src );
    ZU_ASSERT( ZU_INT_FROM_SIZET_CONV_OK( st ) );
    return (ZU_INT)st;
}

// UTF-8
#define ZU___CHARS_UTF8_SEQUENCE_MAX ( (ZU_INT)4 ) // bytes of one code point

static inline bool zu___CharsIsUtf8Continuation( uint8_t byte )
{
    return ( byte & 0xC0 ) == 0x80;
}

// Stores the sequence of `ch` at `pos` and returns its end; a value above 0x10FFFF becomes U+FFFD.
static inline uint8_t *zu___CharsPutUtf8( uint8_t *pos, ZU_CHAR ch )
{
    if ( ch < 0x80 ) {
        *pos++ = (uint8_t)ch;
        return pos;
    }
    if ( ch < 0x800 ) {
        *pos++ = (uint8_t)( 0xC0 | ch >> 6 );
        *pos++ = (uint8_t)( 0x80 | ( ch & 0x3F ) );
        return pos;
    }
    if ( ZU___UNLIKELY( !ZU_CHAR_OK( ch ) ) ) {
        ch = ZU_CHAR_REPLACEMENT_CHARACTER;
    }
    if ( ch < 0x10000 ) {
        *pos++ = (uint8_t)( 0xE0 | ch >> 12 );
    } else {
        *pos++ = (uint8_t)( 0xF0 | ch >> 18 );
        *pos++ = (uint8_t)( 0x80 | ( ch >> 12 & 0x3F ) );
    }
    *pos++ = (uint8_t)( 0x80 | ( ch >> 6 & 0x3F ) );
    *pos++ = (uint8_t)( 0x80 | ( ch & 0x3F ) );
    return pos;
}

// Takes one character or one broken subpart from `*src`, which is not at its end, by the letter of the Unicode Standard:
// the second byte's range depends on the first (table 3-7), and a subpart is the longest beginning of a sequence, or
// else one byte.
#define ZU___CHARS_UTF8_BROKEN ( (ZU_CHAR)UINT32_MAX ) // instead of a character
static inline ZU_CHAR zu___CharsTakeUtf8( const uint8_t **src, const uint8_t *end )
{
    uint8_t lead = *( *src )++;
    if ( lead < 0x80 ) {
        return lead;
    }
    if ( lead < 0xC2 || lead > 0xF4 ) {
        return ZU___CHARS_UTF8_BROKEN;
    }
    uint8_t lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    uint8_t highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    int missing = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
    ZU_CHAR ch = lead & ( 0x3Fu >> missing );
    for ( ; missing > 0; missing-- ) {
        if ( *src == end || **src < lowest || **src > highest ) {
            return ZU___CHARS_UTF8_BROKEN;
        }
        ch = ch << 6 | ( *( *src )++ & 0x3Fu );
        lowest = 0x80;
        highest = 0xBF;
    }
    return ch;
}

// Decodes well-formed sequences from `*src`, and stops at what is odd and where `*src` or the `room` for code points
// could end within the next one; `*src` moves on.  Returns the number of code points.
ZU_INT zu___CharsDecodeUtf8( ZU_CHAR *dest, ZU_INT room, const uint8_t **src, const uint8_t *end );

// Encodes from `*src` as long as whole sequences are sure to fit between `dest` and `destEnd`; `*src` moves on.
// Returns the end of what was stored.
uint8_t *zu___CharsEncodeUtf8( uint8_t *dest, const uint8_t *destEnd, const ZU_CHAR **src, const ZU_CHAR *end );

ZU_END_DECLS
