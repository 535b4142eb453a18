// The environment's narrow encoding is the platform's business.  Text in plain ASCII, which is most of it, comes back
// from the platform as it went there, and stays here.

#include "zu/sys/zu_chars_internal.h"

#include <cstring>

static constexpr ZU_INT STEP = 8; // units looked at together
static constexpr uint64_t HIGH_BITS = 0x8080808080808080;

static bool charsIsNarrowAscii( const char *src, ZU_INT srcLength )
{
    ZU_INT i = 0;
    for ( ; srcLength - i >= STEP; i += STEP ) {
        uint64_t bytes;
        memcpy( &bytes, src + i, sizeof bytes );
        if ( bytes & HIGH_BITS ) {
            return false;
        }
    }
    uint8_t all = 0;
    for ( ; i < srcLength; i++ ) {
        all |= (uint8_t)src[ i ];
    }
    return all < 0x80;
}

ZU_INT zuCharsConvertFromCstr( ZU_CHAR *dest, ZU_INT destLength, const char *src, ZU_INT srcLength )
{
    ZU___CHARS_ASSERT_FROM( dest, destLength, src, srcLength );
    srcLength = zu___CharsMeasureCstr( src, srcLength );
    if ( srcLength == 0 ) {
        return 0;
    }
    ZU_ASSERT( ZU_INT_TO_SIGNED_INT_CONV_OK( srcLength ) );
    if ( charsIsNarrowAscii( src, srcLength ) ) {
        return zuCharsConvertFromAscii( dest, destLength, src, srcLength );
    }
    ZU_INT len = zu___CharsEcsToUnits( dest, destLength, src, srcLength );
    ZU_ASSERT( len >= 1 );
    return len;
}

// Whether every character, and so every byte of the result, is ASCII and not 0, which the detour replaces.
static bool charsIsWideAscii( const ZU_CHAR *src, ZU_INT srcLength )
{
    bool isAscii = true;
    ZU_INT i = 0;
    for ( ; isAscii && srcLength - i >= STEP; i += STEP ) {
        for ( ZU_INT j = 0; j < STEP; j++ ) {
            isAscii &= src[ i + j ] - 1 < 0x7F;
        }
    }
    for ( ; isAscii && i < srcLength; i++ ) {
        isAscii = src[ i ] - 1 < 0x7F;
    }
    return isAscii;
}

ZU_INT zuCharsConvertToCstr( char *dest, ZU_INT destLength, const ZU_CHAR *src, ZU_INT srcLength, ZU_BOOL addNul )
{
    ZU___CHARS_ASSERT_TO( dest, destLength, src, srcLength );
    if ( srcLength <= INT32_MAX - 1 && charsIsWideAscii( src, srcLength ) ) {
        return zuCharsConvertToAscii( dest, destLength, src, srcLength, addNul );
    }
    if ( srcLength >= INT32_MAX / 2 ) { // each takes two units at most
        ZU_INT wcsLength = zuCharsConvertToWcstr( nullptr, 0, src, srcLength, addNul );
        ZU_ASSERT( wcsLength > 0 );
        if ( wcsLength > INT32_MAX ) {
            return 0;
        }
    }
    ZU_INT length = zu___CharsEcsFromChars( dest, destLength, src, srcLength );
    if ( length > 0 && addNul ) {
        if ( length < destLength ) {
            dest[ length ] = '\0';
        }
        length++;
    }
    return length;
}
