// Well-formedness is looked at apart from decoding: once it is known, the lenient decoder of zu_chars_internal.h, which
// vectors make fast, decodes exactly.  Of UTF-16 and UTF-32 eight units are taken at a time as long as none needs a
// thought.

#include "zu/base/zu_utf_internal.h"
#include "zu/sys/zu_chars_internal.h"

#include <cstring>

static constexpr ZU_INT STEP = 8; // units at a time
static constexpr ZU_CHAR HIGH_SURROGATE = 0xD800, LOW_SURROGATE = 0xDC00, SUPPLEMENTARY_FIRST = 0x10000;

static inline bool utfIsSurrogate( ZU_CHAR ch )
{
    return ( ch & 0xFFFFF800 ) == HIGH_SURROGATE;
}
static inline bool utfIsFault( ZU_CHAR ch )
{
    return utfIsSurrogate( ch ) || !ZU_CHAR_OK( ch );
}

// UTF-8
const uint8_t *zu___UtfWellFormed( const uint8_t *src, const uint8_t *end )
{
    const uint8_t *pos = src;
    while ( pos < end ) {
        for ( uint64_t eight; end - pos >= 8; pos += 8 ) {
            memcpy( &eight, pos, 8 );
            if ( eight & 0x8080808080808080 ) {
                break;
            }
        }
        for ( int i = 0; i < 16 && pos < end; i++ ) {
            const uint8_t *next = pos;
            if ( zu___CharsTakeUtf8( &next, end ) == ZU___CHARS_UTF8_BROKEN ) {
                return pos;
            }
            pos = next;
        }
    }
    return pos;
}
ZU_INT zu___UtfDecode8( ZU_CHAR *dest, ZU_INT room, const uint8_t **src, const uint8_t *end )
{
    ZU_INT taken = zu___CharsDecodeUtf8( dest, room, src, end );
    while ( taken < room && *src < end ) {
        dest[ taken++ ] = zu___CharsTakeUtf8( src, end );
    }
    return taken;
}
uint8_t *zu___UtfEncode8( uint8_t *dest, const uint8_t *destEnd, const ZU_CHAR **src, const ZU_CHAR *end )
{
    // What does not fit is not looked at: each code point takes a byte at least.
    const ZU_CHAR *good = *src;
    const ZU_CHAR *last = end - *src > destEnd - dest ? *src + ( destEnd - dest ) : end;
    while ( good < last && !utfIsFault( *good ) ) {
        good++;
    }
    return zu___CharsEncodeUtf8( dest, destEnd, src, good );
}

// Units of UTF-16 and UTF-32 in either order of their bytes
template <typename UNIT, bool SWAP>
static inline ZU_CHAR utfLoad( const uint8_t *src )
{
    UNIT unit;
    memcpy( &unit, src, sizeof unit );
    if constexpr ( SWAP ) {
        unit = sizeof unit == 2 ? (UNIT)__builtin_bswap16( (uint16_t)unit ) : (UNIT)__builtin_bswap32( unit );
    }
    return unit;
}
template <typename UNIT, bool SWAP>
static inline void utfStore( uint8_t *dest, ZU_CHAR value )
{
    UNIT unit = (UNIT)value;
    if constexpr ( SWAP ) {
        unit = sizeof unit == 2 ? (UNIT)__builtin_bswap16( (uint16_t)unit ) : (UNIT)__builtin_bswap32( unit );
    }
    memcpy( dest, &unit, sizeof unit );
}
static bool utfSwaps( bool littleEndian )
{
    return littleEndian != ( __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ );
}

template <bool SWAP>
static ZU_INT utfDecode16( ZU_CHAR *dest, ZU_INT room, const uint8_t **src, const uint8_t *end )
{
    const uint8_t *bytes = *src;
    const ZU_INT units = ( end - bytes ) / 2;
    ZU_INT pos = 0;
    ZU_INT taken = 0;
    auto load = [ bytes ]( ZU_INT i ) { return utfLoad<uint16_t, SWAP>( bytes + 2 * i ); };
    bool good = true;
    while ( good && taken < room && pos < units ) {
        if ( room - taken >= STEP && units - pos >= STEP ) {
            ZU_CHAR surrogates = 0;
            for ( ZU_INT i = 0; i < STEP; i++ ) {
                const ZU_CHAR unit = load( pos + i );
                dest[ taken + i ] = unit;
                surrogates |= utfIsSurrogate( unit );
            }
            if ( !surrogates ) {
                pos += STEP;
                taken += STEP;
                continue;
            }
        }
        for ( ZU_INT i = 0; i < STEP && taken < room && pos < units; i++ ) {
            ZU_CHAR ch = load( pos );
            if ( utfIsSurrogate( ch ) ) {
                const ZU_CHAR low = pos + 1 < units ? load( pos + 1 ) : 0;
                good = ch < LOW_SURROGATE && ( low & 0xFC00 ) == LOW_SURROGATE;
                if ( !good ) {
                    break;
                }
                ch = SUPPLEMENTARY_FIRST + ( ( ch - HIGH_SURROGATE ) << 10 ) + ( low - LOW_SURROGATE );
                pos++;
            }
            dest[ taken++ ] = ch;
            pos++;
        }
    }
    *src = bytes + 2 * pos;
    return taken;
}
ZU_INT zu___UtfDecode16( ZU_CHAR *dest, ZU_INT room, const uint8_t **src, const uint8_t *end, bool littleEndian )
{
    return utfSwaps( littleEndian ) ? utfDecode16<true>( dest, room, src, end )
                                    : utfDecode16<false>( dest, room, src, end );
}

template <bool SWAP>
static uint8_t *utfEncode16( uint8_t *dest, const uint8_t *destEnd, const ZU_CHAR **src, const ZU_CHAR *end )
{
    const ZU_CHAR *pos = *src;
    bool good = true;
    while ( good && pos < end && destEnd - dest >= 4 ) {
        if ( end - pos >= STEP && destEnd - dest >= 4 * STEP ) {
            ZU_CHAR odd = 0;
            for ( ZU_INT i = 0; i < STEP; i++ ) {
                utfStore<uint16_t, SWAP>( dest + 2 * i, pos[ i ] );
                odd |= utfIsSurrogate( pos[ i ] ) | ( pos[ i ] >= SUPPLEMENTARY_FIRST );
            }
            if ( !odd ) {
                pos += STEP;
                dest += 2 * STEP;
                continue;
            }
        }
        for ( ZU_INT i = 0; i < STEP && pos < end && destEnd - dest >= 4; i++ ) {
            const ZU_CHAR ch = *pos;
            good = !utfIsFault( ch );
            if ( !good ) {
                break;
            }
            if ( ch < SUPPLEMENTARY_FIRST ) {
                utfStore<uint16_t, SWAP>( dest, ch );
                dest += 2;
            } else {
                utfStore<uint16_t, SWAP>( dest, HIGH_SURROGATE + ( ( ch - SUPPLEMENTARY_FIRST ) >> 10 ) );
                utfStore<uint16_t, SWAP>( dest + 2, LOW_SURROGATE + ( ch & 0x3FF ) );
                dest += 4;
            }
            pos++;
        }
    }
    *src = pos;
    return dest;
}
uint8_t *zu___UtfEncode16( uint8_t *dest, const uint8_t *destEnd, const ZU_CHAR **src, const ZU_CHAR *end,
                           bool littleEndian )
{
    return utfSwaps( littleEndian ) ? utfEncode16<true>( dest, destEnd, src, end )
                                    : utfEncode16<false>( dest, destEnd, src, end );
}

template <bool SWAP>
static ZU_INT utfDecode32( ZU_CHAR *dest, ZU_INT room, const uint8_t **src, const uint8_t *end )
{
    const ZU_INT count = zuIntMin( ( end - *src ) / 4, room );
    ZU_INT taken = 0;
    for ( ; taken < count; taken++ ) {
        const ZU_CHAR ch = utfLoad<uint32_t, SWAP>( *src + 4 * taken );
        if ( utfIsFault( ch ) ) {
            break;
        }
        dest[ taken ] = ch;
    }
    *src += 4 * taken;
    return taken;
}
ZU_INT zu___UtfDecode32( ZU_CHAR *dest, ZU_INT room, const uint8_t **src, const uint8_t *end, bool littleEndian )
{
    return utfSwaps( littleEndian ) ? utfDecode32<true>( dest, room, src, end )
                                    : utfDecode32<false>( dest, room, src, end );
}
template <bool SWAP>
static uint8_t *utfEncode32( uint8_t *dest, const uint8_t *destEnd, const ZU_CHAR **src, const ZU_CHAR *end )
{
    const ZU_CHAR *pos = *src;
    for ( ; pos < end && destEnd - dest >= 4 && !utfIsFault( *pos ); pos++ ) {
        utfStore<uint32_t, SWAP>( dest, *pos );
        dest += 4;
    }
    *src = pos;
    return dest;
}
uint8_t *zu___UtfEncode32( uint8_t *dest, const uint8_t *destEnd, const ZU_CHAR **src, const ZU_CHAR *end,
                           bool littleEndian )
{
    return utfSwaps( littleEndian ) ? utfEncode32<true>( dest, destEnd, src, end )
                                    : utfEncode32<false>( dest, destEnd, src, end );
}
