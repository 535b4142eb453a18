#include "zu/sys/zu_chars.h"

#include "zu/sys/zu_surrogate_internal.h"

static constexpr ZU_INT CHECKED_BLOCK = 16;

ZU_BOOL zuCharsAllOk( const ZU_CHAR *src, ZU_INT srcLength )
{
    ZU_ASSERT( srcLength >= 0 );
    ZU_ASSERT( srcLength == 0 || src );
    // A bit that no element has is in no union of elements, so that a block whose union is a code point is done; blocks
    // of a fixed size are what the compiler makes work on several elements at a time.
    bool allOk = true;
    for ( ZU_INT i = 0; i < srcLength; ) {
        if ( srcLength - i >= CHECKED_BLOCK ) {
            ZU_CHAR all = 0;
            for ( ZU_INT k = 0; k < CHECKED_BLOCK; k++ ) {
                all |= src[ i + k ];
            }
            if ( ZU_CHAR_OK( all ) ) {
                i += CHECKED_BLOCK;
                continue;
            }
        }
        allOk &= ZU_CHAR_OK( src[ i ] );
        i++;
    }
    return allOk;
}

ZU_INT zuCharsSanitize( ZU_CHAR *dest, ZU_INT destLength, const ZU_CHAR *src, ZU_INT srcLength )
{
    ZU_ASSERT( srcLength >= 0 );
    ZU_ASSERT( destLength >= 0 );
    ZU_ASSERT( srcLength == 0 || src );
    ZU_ASSERT( destLength == 0 || dest );
    ZU_INT length = 0;
    ZU_CHAR pending = 0; // a high surrogate that waits for its other half; 0: none
    for ( ZU_INT i = 0; i < srcLength; i++ ) {
        ZU_CHAR ch = src[ i ];
        if ( zu___IsHighSurrogate( ch ) ) {
            pending = ch;
            continue;
        }
        if ( zu___IsLowSurrogate( ch ) ) {
            if ( !pending ) {
                continue;
            }
            ch = zu___SurrogatesJoin( pending, ch );
        }
        pending = 0;
        if ( ZU_CHAR_OK( ch ) ) {
            if ( length < destLength ) {
                dest[ length ] = ch;
            }
            length++;
        }
    }
    return length;
}
