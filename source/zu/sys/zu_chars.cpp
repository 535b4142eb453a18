#include "zu/sys/zu_chars.h"

static constexpr ZU_CHAR HIGH_SURROGATE_FIRST = 0xD800;
static constexpr ZU_CHAR LOW_SURROGATE_FIRST = 0xDC00;
static constexpr ZU_CHAR SURROGATES_PER_HALF = 0x400;
static constexpr ZU_CHAR SUPPLEMENTARY_FIRST = 0x10000;
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
        if ( ch - HIGH_SURROGATE_FIRST < SURROGATES_PER_HALF ) {
            pending = ch;
            continue;
        }
        if ( ch - LOW_SURROGATE_FIRST < SURROGATES_PER_HALF ) {
            if ( !pending ) {
                continue;
            }
            ch = SUPPLEMENTARY_FIRST + ( ( pending - HIGH_SURROGATE_FIRST ) << 10 ) + ( ch - LOW_SURROGATE_FIRST );
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
