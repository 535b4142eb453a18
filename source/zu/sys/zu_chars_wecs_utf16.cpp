#include "zu/sys/zu_chars_internal.h"
#include "zu/sys/zu_surrogate_internal.h"

ZU_INT zuCharsConvertFromWcstr( ZU_CHAR *dest, ZU_INT destLength, const char16_t *src, ZU_INT srcLength )
{
    ZU___CHARS_ASSERT_FROM( dest, destLength, src, srcLength );
    if ( srcLength == -1 ) {
        srcLength = 0;
        while ( src[ srcLength ] ) {
            srcLength++;
        }
    }
    ZU_INT stored = zuIntMin( srcLength, destLength );
    for ( ZU_INT i = 0; i < stored; i++ ) {
        dest[ i ] = src[ i ];
    }
    return srcLength;
}

ZU_INT zuCharsConvertToWcstr( char16_t *dest, ZU_INT destLength, const ZU_CHAR *src, ZU_INT srcLength, ZU_BOOL addNul )
{
    ZU___CHARS_ASSERT_TO( dest, destLength, src, srcLength );
    ZU_INT j = 0;
    auto put = [ & ]( ZU_CHAR unit ) {
        if ( j < destLength ) {
            dest[ j ] = (char16_t)unit;
        }
        j++;
    };
    for ( ZU_INT i = 0; i < srcLength; i++ ) {
        ZU_CHAR ch = src[ i ];
        if ( ch == 0 || !ZU_CHAR_OK( ch ) ) {
            ch = ZU_CHAR_REPLACEMENT_CHARACTER;
        }
        if ( ch > 0xFFFF ) {
            ZU_ASSERT( ZU_INT_ADD_OK( j, 2 ) );
            put( zu___HighSurrogate( ch ) );
            put( zu___LowSurrogate( ch ) );
        } else {
            ZU_ASSERT( ZU_INT_ADD_OK( j, 1 ) );
            put( ch );
        }
    }
    if ( addNul ) {
        ZU_ASSERT( ZU_INT_ADD_OK( j, 1 ) );
        put( 0 );
    }
    return j;
}
