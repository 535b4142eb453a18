// The narrow encoding is UTF-8, whatever the locale: file names, arguments and the environment are in it everywhere by
// now, and a library must not depend on whether its program has called setlocale.
//
// Broken sequences are replaced as the Unicode Standard recommends (section 3.9, "U+FFFD Substitution of Maximal
// Subparts"): one U+FFFD for each longest beginning of a valid sequence, one for each other byte.
//
// Nearly all text is sound, and goes through the conversions of UTF-8 piece by piece.  Those are more tolerant: where
// they have let through what is not sound here, the piece is taken again, one character at a time.

#include "zu/sys/zu_chars_internal.h"
#include "zu/sys/zu_surrogate_internal.h"

#include <cstring>

static constexpr ZU_CHAR REPLACEMENT = ZU_CHAR_REPLACEMENT_CHARACTER;
static constexpr ZU_INT PIECE_CHARS = 256;
static constexpr ZU_INT TAIL_BYTES = 16; // no more are taken one at a time, as nearly all would be in any case

// Takes one character from `*src`, or what replaces a broken subpart.
static ZU_CHAR ecsTakeCharacter( const uint8_t **src, const uint8_t *end )
{
    ZU_CHAR ch = zu___CharsTakeUtf8( src, end );
    return ch == ZU___CHARS_UTF8_BROKEN ? REPLACEMENT : ch;
}

// What is told of a piece of decoded text.
struct ECS_PIECE {
    ZU_INT longer;     // bytes that the shortest sequences have beyond one each: an overlong form has taken more
    ZU_INT surrogates; // none if this is 0
    ZU_INT pairs;      // characters that take two units
};
typedef int32_t ECS_LANES __attribute__( ( vector_size( 16 ) ) );
static constexpr ZU_INT LANES = 4;

// Looks at `count` characters of a piece, which has room for them in whole vectors.
static ECS_PIECE ecsLookAt( ZU_CHAR *chars, ZU_INT count )
{
    memset( chars + count, 0, ( LANES - 1 ) * sizeof( ZU_CHAR ) );
    ECS_LANES longer = {};
    ECS_LANES surrogates = {};
    ECS_LANES pairs = {};
    for ( ZU_INT i = 0; i < count; i += LANES ) {
        ECS_LANES lanes;
        memcpy( &lanes, chars + i, sizeof lanes );
        ECS_LANES inPairs = lanes > 0xFFFF; // -1 where that is so
        longer += ( lanes > 0x7F ) + ( lanes > 0x7FF ) + inPairs;
        pairs += inPairs;
        surrogates |= ( lanes & ~0x7FF ) == (int32_t)ZU___SURROGATE_FIRST;
    }
    ECS_PIECE piece = { 0, 0, 0 };
    for ( int i = 0; i < LANES; i++ ) {
        piece.longer -= longer[ i ];
        piece.surrogates -= surrogates[ i ];
        piece.pairs -= pairs[ i ];
    }
    return piece;
}

// Stores `count` characters as units; writes one element behind them.
static ZU_CHAR *ecsPutUnits( ZU_CHAR *dest, const ZU_CHAR *chars, ZU_INT count )
{
    for ( ZU_INT i = 0; i < count; i++ ) {
        ZU_CHAR ch = chars[ i ];
        ZU_INT inPairs = ch > 0xFFFF;
        dest[ 0 ] = inPairs ? zu___HighSurrogate( ch ) : ch;
        dest[ 1 ] = zu___LowSurrogate( ch );
        dest += 1 + inPairs;
    }
    return dest;
}

ZU_INT zu___CharsEcsToUnits( ZU_CHAR *dest, ZU_INT destLength, const char *src, ZU_INT srcLength )
{
    const uint8_t *pos = (const uint8_t *)src;
    const uint8_t *end = pos + srcLength;
    ZU_INT length = 0;
    auto put = [ & ]( ZU_CHAR unit ) {
        if ( length < destLength ) {
            dest[ length ] = unit;
        }
        length++;
    };
    auto putCharacter = [ & ]( ZU_CHAR ch ) {
        if ( ch > 0xFFFF ) {
            put( zu___HighSurrogate( ch ) );
            put( zu___LowSurrogate( ch ) );
        } else {
            put( ch );
        }
    };
    while ( pos < end ) {
        ZU_CHAR chars[ PIECE_CHARS + LANES ];
        const uint8_t *begin = pos;
        ZU_INT count = end - pos > TAIL_BYTES ? zu___CharsDecodeUtf8( chars, PIECE_CHARS, &pos, end ) : 0;
        ECS_PIECE piece = ecsLookAt( chars, count );
        ZU_INT room = length < destLength ? destLength - length : 0;
        if ( count == 0 || piece.surrogates > 0 || count + piece.longer != pos - begin ) {
            const uint8_t *stop = end - begin > TAIL_BYTES ? pos : end;
            pos = begin;
            do {
                putCharacter( ecsTakeCharacter( &pos, end ) );
            } while ( pos < stop );
        } else if ( room == 0 ) {
            length += count + piece.pairs;
        } else if ( room >= count && piece.pairs == 0 ) {
            memcpy( dest + length, chars, (size_t)count * sizeof( ZU_CHAR ) );
            length += count;
        } else if ( room > count + piece.pairs ) {
            length = ecsPutUnits( dest + length, chars, count ) - dest;
        } else {
            for ( ZU_INT i = 0; i < count; i++ ) {
                putCharacter( chars[ i ] );
            }
        }
    }
    return length;
}

// Takes what one character in UTF-16 is made of from `src` at `*idx`.
static ZU_CHAR ecsTakeElements( const ZU_CHAR *src, ZU_INT srcLength, ZU_INT *idx )
{
    ZU_CHAR ch = src[ ( *idx )++ ];
    if ( zu___IsHighSurrogate( ch ) && *idx < srcLength && zu___IsLowSurrogate( src[ *idx ] ) ) {
        return zu___SurrogatesJoin( ch, src[ ( *idx )++ ] );
    }
    return ch == 0 || !ZU_CHAR_OK( ch ) || zu___IsSurrogate( ch ) ? REPLACEMENT : ch;
}
static bool ecsStayAsTheyAre( const ZU_CHAR *chars, ZU_INT count )
{
    ECS_LANES others = {};
    ZU_INT i = 0;
    for ( ; i + LANES <= count; i += LANES ) {
        ECS_LANES lanes;
        memcpy( &lanes, chars + i, sizeof lanes );
        others |= ( lanes <= 0 ) | ( lanes > 0x10FFFF ) | ( ( lanes & ~0x7FF ) == (int32_t)ZU___SURROGATE_FIRST );
    }
    for ( ; i < count; i++ ) {
        others[ 0 ] |= chars[ i ] == 0 || !ZU_CHAR_OK( chars[ i ] ) || zu___IsSurrogate( chars[ i ] );
    }
    return ( others[ 0 ] | others[ 1 ] | others[ 2 ] | others[ 3 ] ) == 0;
}

ZU_INT zu___CharsEcsFromChars( char *dest, ZU_INT destLength, const ZU_CHAR *src, ZU_INT srcLength )
{
    ZU_INT length = 0;
    for ( ZU_INT idx = 0; idx < srcLength; ) {
        ZU_CHAR taken[ PIECE_CHARS ];
        const ZU_CHAR *piece = src + idx;
        ZU_INT count = zuIntMin( PIECE_CHARS, srcLength - idx );
        if ( ecsStayAsTheyAre( piece, count ) ) {
            idx += count;
        } else {
            piece = taken;
            for ( count = 0; count < PIECE_CHARS && idx < srcLength; count++ ) {
                taken[ count ] = ecsTakeElements( src, srcLength, &idx );
            }
        }
        ZU_INT room = length < destLength ? destLength - length : 0;
        length += zuCharsConvertToUtf8( room > 0 ? dest + length : nullptr, room, piece, count, ZU_FALSE );
    }
    return length;
}
