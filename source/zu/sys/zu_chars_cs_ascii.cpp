#include "zu/sys/zu_chars_internal.h"

static constexpr ZU_CHAR ASCII_END = 0x80;

ZU_INT zuCharsConvertFromAscii( ZU_CHAR *dest, ZU_INT destLength, const char *src, ZU_INT srcLength )
{
    ZU___CHARS_ASSERT_FROM( dest, destLength, src, srcLength );
    srcLength = zu___CharsMeasureCstr( src, srcLength );
    ZU_INT stored = zuIntMin( srcLength, destLength );
    for ( ZU_INT i = 0; i < stored; i++ ) {
        ZU_CHAR ch = (uint8_t)src[ i ];
        dest[ i ] = ch < ASCII_END ? ch : ZU_CHAR_REPLACEMENT_CHARACTER;
    }
    return srcLength;
}

ZU_INT zuCharsConvertToAscii( char *dest, ZU_INT destLength, const ZU_CHAR *src, ZU_INT srcLength, ZU_BOOL addNul )
{
    ZU___CHARS_ASSERT_TO( dest, destLength, src, srcLength );
    ZU_INT stored = zuIntMin( srcLength, destLength );
    for ( ZU_INT i = 0; i < stored; i++ ) {
        dest[ i ] = src[ i ] < ASCII_END ? (char)src[ i ] : '?';
    }
    if ( !addNul ) {
        return srcLength;
    }
    if ( srcLength < destLength ) {
        dest[ srcLength ] = 0;
    }
    return srcLength + 1;
}
