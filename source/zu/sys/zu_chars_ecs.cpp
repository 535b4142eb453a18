// The environment's narrow encoding is the platform's business; it speaks UTF-16, and so all narrow text goes through
// that.  Text in plain ASCII, which is most of it, comes out of the detour as it went in, and is spared it.

#include "zu/sys/zu_chars_internal.h"
#include "zu/sys/zu_mem.h"

static constexpr ZU_INT STACK_UNITS = 96; // wide units that need no heap

static bool charsIsNarrowAscii( const char *src, ZU_INT srcLength )
{
    uint8_t all = 0;
    for ( ZU_INT i = 0; i < srcLength; i++ ) {
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
    char16_t stackWide[ STACK_UNITS ];
    ZU_INT len = zu___CharsEcsToWide( stackWide, STACK_UNITS, src, srcLength );
    ZU_ASSERT( len >= 1 );
    if ( len <= STACK_UNITS ) {
        return zuCharsConvertFromWcstr( dest, destLength, stackWide, len );
    }
    if ( destLength == 0 ) {
        return len;
    }
    char16_t *wide = (char16_t *)zuMemAllocN( len, sizeof( char16_t ) );
    zu___CharsEcsToWide( wide, len, src, srcLength );
    ZU_INT length = zuCharsConvertFromWcstr( dest, destLength, wide, len );
    zuMemFree( wide );
    return length;
}

// Whether every character, and so every byte of the result, is ASCII and not 0, which the detour replaces.
static bool charsIsWideAscii( const ZU_CHAR *src, ZU_INT srcLength )
{
    bool isAscii = true;
    for ( ZU_INT i = 0; i < srcLength; i++ ) {
        isAscii &= src[ i ] - 1 < 0x7F;
    }
    return isAscii;
}

ZU_INT zuCharsConvertToCstr( char *dest, ZU_INT destLength, const ZU_CHAR *src, ZU_INT srcLength, ZU_BOOL addNul )
{
    ZU___CHARS_ASSERT_TO( dest, destLength, src, srcLength );
    if ( srcLength <= INT32_MAX - 1 && charsIsWideAscii( src, srcLength ) ) {
        return zuCharsConvertToAscii( dest, destLength, src, srcLength, addNul );
    }
    ZU_INT wcsLength = zuCharsConvertToWcstr( nullptr, 0, src, srcLength, addNul );
    ZU_ASSERT( wcsLength > 0 );
    if ( wcsLength > INT32_MAX ) {
        return 0;
    }
    char16_t *wide = (char16_t *)zuMemAllocN( wcsLength, sizeof( char16_t ) );
    zuCharsConvertToWcstr( wide, wcsLength, src, srcLength, addNul );
    ZU_INT length = zu___CharsEcsFromWide( dest, destLength, wide, wcsLength );
    zuMemFree( wide );
    return length;
}
