// The narrow encoding is UTF-8, whatever the locale: file names, arguments and the environment are in it everywhere by
// now, and a library must not depend on whether its program has called setlocale.
//
// Broken sequences are replaced as the Unicode Standard recommends (section 3.9, "U+FFFD Substitution of Maximal
// Subparts"): one U+FFFD for each longest beginning of a valid sequence, one for each other byte.

#include "zu/sys/zu_chars_internal.h"

static constexpr ZU_CHAR REPLACEMENT = ZU_CHAR_REPLACEMENT_CHARACTER;

// Takes one character or one broken subpart from `*src`; the second byte's range depends on the first (table 3-7 of the
// standard).
static ZU_CHAR ecsTakeCharacter( const uint8_t **src, const uint8_t *end )
{
    uint8_t lead = *( *src )++;
    if ( lead < 0x80 ) {
        return lead;
    }
    if ( lead < 0xC2 || lead > 0xF4 ) {
        return REPLACEMENT;
    }
    uint8_t lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    uint8_t highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    int missing = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
    ZU_CHAR ch = lead & ( 0x3Fu >> missing );
    for ( ; missing > 0; missing-- ) {
        if ( *src == end || **src < lowest || **src > highest ) {
            return REPLACEMENT;
        }
        ch = ch << 6 | ( *( *src )++ & 0x3Fu );
        lowest = 0x80;
        highest = 0xBF;
    }
    return ch;
}

ZU_INT zu___CharsEcsToWide( char16_t *dest, ZU_INT destLength, const char *src, ZU_INT srcLength )
{
    const uint8_t *pos = (const uint8_t *)src;
    const uint8_t *end = pos + srcLength;
    ZU_INT length = 0;
    auto put = [ & ]( ZU_CHAR unit ) {
        if ( length < destLength ) {
            dest[ length ] = (char16_t)unit;
        }
        length++;
    };
    while ( pos < end ) {
        ZU_CHAR ch = ecsTakeCharacter( &pos, end );
        if ( ch > 0xFFFF ) {
            put( 0xD800 + ( ( ch - 0x10000 ) >> 10 ) );
            put( 0xDC00 + ( ch & 0x3FF ) );
        } else {
            put( ch );
        }
    }
    return length;
}

ZU_INT zu___CharsEcsFromWide( char *dest, ZU_INT destLength, const char16_t *src, ZU_INT srcLength )
{
    ZU_INT length = 0;
    for ( ZU_INT i = 0; i < srcLength; i++ ) {
        ZU_CHAR ch = src[ i ];
        if ( ch - 0xD800 < 0x400 && i + 1 < srcLength && src[ i + 1 ] - 0xDC00u < 0x400 ) {
            ch = 0x10000 + ( ( ch - 0xD800 ) << 10 ) + ( src[ ++i ] - 0xDC00u );
        } else if ( ch - 0xD800 < 0x800 ) {
            ch = REPLACEMENT; // half a pair
        }
        ZU_INT room = length < destLength ? destLength - length : 0;
        length += zuCharsConvertToUtf8( room > 0 ? dest + length : nullptr, room, &ch, 1, ZU_FALSE );
    }
    return length;
}
