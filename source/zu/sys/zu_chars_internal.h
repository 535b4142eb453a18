// zu_chars_internal.h: what a platform must provide for the environment's narrow encoding.
#pragma once

#include "zu/sys/zu_chars.h"

ZU_BEGIN_DECLS

// Both are measuring copies like those of zu_chars.h, without a terminator: they return the number of units that the
// whole result needs and store as many as fit.  `dest` may be null if `destLength` is 0.  The encoding extends ASCII.

// Converts narrow text to UTF-16; what cannot be read becomes U+FFFD.  A result of 0 for text that is not empty says
// that the platform failed.
ZU_INT zu___CharsEcsToWide( char16_t *dest, ZU_INT destLength, const char *src, ZU_INT srcLength );

// Converts UTF-16 to narrow text; what the encoding lacks is replaced.  A failure of the platform yields 0.
ZU_INT zu___CharsEcsFromWide( char *dest, ZU_INT destLength, const char16_t *src, ZU_INT srcLength );

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

ZU_END_DECLS
