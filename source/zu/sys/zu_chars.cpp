#include "zu/sys/zu_chars.h"

static constexpr ZU_CHAR HIGH_SURROGATE_FIRST = 0xD800;
static constexpr ZU_CHAR LOW_SURROGATE_FIRST = 0xDC00;
static constexpr ZU_CHAR SURROGATES_PER_HALF = 0x400;
static constexpr ZU_CHAR SUPPLEMENTARY_FIRST = 0x10000;

ZU_BOOL zuCharsAllOk( const ZU_CHAR *src, ZU_INT srcLength )
{
    ZU_ASSERT( srcLength >= 0 );
    ZU_ASSERT( srcLength == 0 || src );
    // Without a way out in the middle the loop works on many elements at a time; bad ones are a bug, not a case.
    bool allOk = true;
    for ( ZU_INT i = 0; i < srcLength; i++ ) {
        allOk &= ZU_CHAR_OK( src[ i ] );
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
