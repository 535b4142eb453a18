// Well-formedness is looked at apart from decoding: once it is known, the lenient decoder of zu_chars_internal.h, which
// vectors make fast, decodes exactly.  Of UTF-16 and UTF-32 eight units are taken at a time as long as none needs a
// thought.

#include "zu/base/zu_utf_internal.h"

#include "zu/sys/zu_chars_ascii_internal.h"
#include "zu/sys/zu_chars_internal.h"
#include "zu/sys/zu_chars_utf8_shuffle_internal.h"
#include "zu/sys/zu_surrogate_internal.h"

#include <algorithm>
#include <cstring>

static constexpr ZU_INT STEP = 8;                         // units at a time
static constexpr uint64_t HIGH_BITS = 0x8080808080808080; // of all bytes of a step

static inline bool utfIsFault( ZU_CHAR ch )
{
    return zu___IsSurrogate( ch ) || !ZU_CHAR_OK( ch );
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
// Eight units of UTF-16
template <bool SWAP>
static inline ZU___CHARS_HALVES utfOrder( ZU___CHARS_HALVES eight )
{
    return SWAP ? eight << 8 | eight >> 8 : eight;
}
template <bool SWAP>
static inline ZU___CHARS_HALVES utfLoadEight( const uint8_t *src )
{
    ZU___CHARS_HALVES eight;
    memcpy( &eight, src, sizeof eight );
    return utfOrder<SWAP>( eight );
}
static inline bool utfAnySurrogate( ZU___CHARS_HALVES eight )
{
    const ZU___CHARS_WORDS surrogates = (ZU___CHARS_WORDS)( ( eight & 0xF800 ) == (uint16_t)ZU___SURROGATE_FIRST );
    return ( surrogates[ 0 ] | surrogates[ 1 ] ) != 0;
}
static inline void utfStoreEight( ZU_CHAR *dest, ZU___CHARS_HALVES eight )
{
    const ZU___CHARS_HALVES zeros = {};
    const ZU___CHARS_HALVES low = __builtin_shufflevector( eight, zeros, 0, 8, 1, 9, 2, 10, 3, 11 );
    const ZU___CHARS_HALVES high = __builtin_shufflevector( eight, zeros, 4, 12, 5, 13, 6, 14, 7, 15 );
    memcpy( dest, &low, sizeof low );
    memcpy( dest + STEP / 2, &high, sizeof high );
}
// Joins eight code points into units, if all are single ones; tells whether.
static inline bool utfLoadSingles( const ZU_CHAR *src, ZU___CHARS_HALVES *eight )
{
    const ZU___CHARS_LANES low = zu___CharsLoadLanes( src );
    const ZU___CHARS_LANES high = zu___CharsLoadLanes( src + STEP / 2 );
    *eight = __builtin_shufflevector( (ZU___CHARS_HALVES)low, (ZU___CHARS_HALVES)high, 0, 2, 4, 6, 8, 10, 12, 14 );
    const ZU___CHARS_WORDS all = (ZU___CHARS_WORDS)( ( low | high ) & 0xFFFF0000 );
    return ( all[ 0 ] | all[ 1 ] ) == 0 && !utfAnySurrogate( *eight );
}
static bool utfIsWide( void )
{
    return zu___CharsUtf8Shuffles() == ZU___CHARS_UTF8_WIDE;
}
static bool utfSwaps( bool littleEndian )
{
    return littleEndian != ( __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ );
}

// Testing

// Names, numbers and the like: text of 8 to 64 bytes that needs nothing prepared.
static inline bool utfIsShortAscii( const uint8_t *src, ZU_INT length )
{
    if ( length < STEP || length > 8 * STEP ) {
        return false;
    }
    uint64_t all, eight;
    memcpy( &all, src + length - STEP, STEP );
    for ( ZU_INT i = 0; i < length - STEP; i += STEP ) {
        memcpy( &eight, src + i, STEP );
        all |= eight;
    }
    return ( all & HIGH_BITS ) == 0;
}
const uint8_t *zu___UtfWellFormed( const uint8_t *src, const uint8_t *end, ZU_INT *count )
{
    const uint8_t *pos = src;
    if ( utfIsShortAscii( src, end - src ) ) {
        *count += end - src;
        return end;
    }
    if ( zu___CharsUtf8Shuffles() ) {
        zu___CharsUtf8ShuffleCheck( &pos, end, count );
    }
    while ( pos < end ) {
        for ( uint64_t eight; end - pos >= STEP; pos += STEP, *count += STEP ) {
            memcpy( &eight, pos, STEP );
            if ( eight & HIGH_BITS ) {
                break;
            }
        }
        for ( ZU_INT i = 0; i < 2 * STEP && pos < end; i++ ) {
            const uint8_t *next = pos;
            if ( zu___CharsTakeUtf8( &next, end ) == ZU___CHARS_UTF8_BROKEN ) {
                return pos;
            }
            pos = next;
            ++*count;
        }
    }
    return pos;
}
const char16_t *zu___UtfWellFormed16( const char16_t *src, const char16_t *end, ZU_INT *count )
{
    const char16_t *pos = utfIsWide() ? zu___UtfWideWellFormed16( src, end, count ) : src;
    while ( pos < end ) {
        if ( end - pos >= STEP ) {
            if ( !utfAnySurrogate( utfLoadEight<false>( (const uint8_t *)pos ) ) ) {
                pos += STEP;
                *count += STEP;
                continue;
            }
        } else if ( end - src >= STEP && !utfAnySurrogate( utfLoadEight<false>( (const uint8_t *)( end - STEP ) ) ) ) {
            *count += end - pos;
            return end;
        }
        for ( ZU_INT i = 0; i < STEP && pos < end; i++, ++*count ) {
            if ( !zu___IsSurrogate( *pos ) ) {
                pos++;
            } else if ( zu___IsHighSurrogate( *pos ) && end - pos > 1 && zu___IsLowSurrogate( pos[ 1 ] ) ) {
                pos += 2;
            } else {
                return pos;
            }
        }
    }
    return pos;
}
// What each code point needs more than one of.
enum COUNTED { NOTHING, BYTES, UNITS };
template <COUNTED COUNTED>
static const ZU_CHAR *utfWellFormed32( const ZU_CHAR *src, const ZU_CHAR *end, ZU_INT *count )
{
    typedef int32_t LANES __attribute__( ( vector_size( 16 ) ) );
    static constexpr ZU_INT WIDTH = sizeof( LANES ) / sizeof( ZU_CHAR );
    static constexpr ZU_INT BLOCK = 16; // vectors; so few that a fault in them costs little
    const ZU_CHAR *pos = src;
    ZU_INT more = 0;
    while ( end - pos >= WIDTH ) {
        const ZU_CHAR *begin = pos;
        const ZU_CHAR *blockEnd = pos + zuIntMin( ( end - pos ) / WIDTH, BLOCK ) * WIDTH;
        LANES lanes = {}, bad = {};
        for ( ; pos < blockEnd; pos += WIDTH ) {
            LANES chars;
            memcpy( &chars, pos, sizeof chars );
            bad |= ( chars > 0x10FFFF ) | ( chars < 0 ) | ( ( chars & ~0x7FF ) == (int32_t)ZU___SURROGATE_FIRST );
            if constexpr ( COUNTED == BYTES ) {
                lanes -= ( chars > 0x7F ) + ( chars > 0x7FF );
            }
            if constexpr ( COUNTED != NOTHING ) {
                lanes -= chars > 0xFFFF;
            }
        }
        if ( bad[ 0 ] | bad[ 1 ] | bad[ 2 ] | bad[ 3 ] ) {
            pos = begin;
            break;
        }
        more += (ZU_INT)lanes[ 0 ] + lanes[ 1 ] + lanes[ 2 ] + lanes[ 3 ];
    }
    for ( ; pos < end && !utfIsFault( *pos ); pos++ ) {
        more += COUNTED == BYTES ? ( *pos > 0x7F ) + ( *pos > 0x7FF ) + ( *pos > 0xFFFF ) : *pos > 0xFFFF;
    }
    if ( COUNTED != NOTHING ) {
        *count += pos - src + more;
    }
    return pos;
}
const ZU_CHAR *zu___UtfWellFormed32( const ZU_CHAR *src, const ZU_CHAR *end )
{
    return utfWellFormed32<NOTHING>( src, end, nullptr );
}
const ZU_CHAR *zu___UtfCountBytes( const ZU_CHAR *src, const ZU_CHAR *end, ZU_INT *bytes )
{
    return utfWellFormed32<BYTES>( src, end, bytes );
}
const ZU_CHAR *zu___UtfCountUnits( const ZU_CHAR *src, const ZU_CHAR *end, ZU_INT *units )
{
    return utfWellFormed32<UNITS>( src, end, units );
}

// UTF-8
ZU_INT zu___UtfDecode8( ZU_CHAR *dest, ZU_INT room, const uint8_t **src, const uint8_t *end )
{
    ZU_INT taken = zu___CharsDecodeUtf8( dest, room, src, end );
    const uint8_t *pos = *src;
    while ( taken < room && pos < end ) {
        const uint8_t lead = pos[ 0 ];
        if ( lead < 0x80 ) {
            dest[ taken++ ] = lead;
            pos += 1;
        } else if ( lead < 0xE0 ) {
            dest[ taken++ ] = ( lead & 0x1Fu ) << 6 | ( pos[ 1 ] & 0x3Fu );
            pos += 2;
        } else if ( lead < 0xF0 ) {
            dest[ taken++ ] = ( lead & 0x0Fu ) << 12 | ( pos[ 1 ] & 0x3Fu ) << 6 | ( pos[ 2 ] & 0x3Fu );
            pos += 3;
        } else {
            dest[ taken++ ] =
                ( lead & 0x07u ) << 18 | ( pos[ 1 ] & 0x3Fu ) << 12 | ( pos[ 2 ] & 0x3Fu ) << 6 | ( pos[ 3 ] & 0x3Fu );
            pos += 4;
        }
    }
    *src = pos;
    return taken;
}
uint8_t *zu___UtfEncode8( uint8_t *dest, const uint8_t *destEnd, const ZU_CHAR **src, const ZU_CHAR *end )
{
    // What does not fit is not looked at: each code point takes a byte at least.
    const ZU_CHAR *last = end - *src > destEnd - dest ? *src + ( destEnd - dest ) : end;
    return zu___CharsEncodeUtf8( dest, destEnd, src, zu___UtfWellFormed32( *src, last ) );
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
        // The last few are taken with some of those ahead of them once more, if all these are single units.
        const ZU_INT step = std::min( STEP, units - pos );
        if ( room - taken >= step && units >= STEP ) {
            const ZU___CHARS_HALVES eight = utfLoadEight<SWAP>( bytes + 2 * ( pos + step - STEP ) );
            if ( !utfAnySurrogate( eight ) ) {
                utfStoreEight( dest + taken + step - STEP, eight );
                pos += step;
                taken += step;
                for ( ; room - taken >= STEP && units - pos >= STEP; pos += STEP, taken += STEP ) {
                    const ZU___CHARS_HALVES next = utfLoadEight<SWAP>( bytes + 2 * pos );
                    if ( utfAnySurrogate( next ) ) {
                        break;
                    }
                    utfStoreEight( dest + taken, next );
                }
                continue;
            }
        }
        for ( ZU_INT i = 0; i < STEP && taken < room && pos < units; i++ ) {
            ZU_CHAR ch = load( pos );
            if ( zu___IsSurrogate( ch ) ) {
                const ZU_CHAR low = pos + 1 < units ? load( pos + 1 ) : 0;
                good = zu___IsHighSurrogate( ch ) && zu___IsLowSurrogate( low );
                if ( !good ) {
                    break;
                }
                ch = zu___SurrogatesJoin( ch, low );
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
    const bool swap = utfSwaps( littleEndian );
    const ZU_INT taken = utfIsWide() ? zu___UtfWideDecode16( dest, room, src, end, swap ) : 0;
    return taken + ( swap ? utfDecode16<true>( dest + taken, room - taken, src, end )
                          : utfDecode16<false>( dest + taken, room - taken, src, end ) );
}

template <bool SWAP>
static uint8_t *utfEncode16( uint8_t *dest, const uint8_t *destEnd, const ZU_CHAR **src, const ZU_CHAR *end )
{
    const ZU_CHAR *pos = *src;
    bool good = true;
    while ( good && pos < end && destEnd - dest >= 4 ) {
        const ZU_INT step = std::min( STEP, end - pos );
        ZU___CHARS_HALVES eight;
        if ( end - *src >= STEP && destEnd - dest >= 2 * step && utfLoadSingles( pos + step - STEP, &eight ) ) {
            eight = utfOrder<SWAP>( eight );
            memcpy( dest + 2 * ( step - STEP ), &eight, sizeof eight );
            pos += step;
            dest += 2 * step;
            while ( end - pos >= STEP && destEnd - dest >= 2 * STEP && utfLoadSingles( pos, &eight ) ) {
                eight = utfOrder<SWAP>( eight );
                memcpy( dest, &eight, sizeof eight );
                pos += STEP;
                dest += 2 * STEP;
            }
            continue;
        }
        for ( ZU_INT i = 0; i < STEP && pos < end && destEnd - dest >= 4; i++ ) {
            const ZU_CHAR ch = *pos;
            good = !utfIsFault( ch );
            if ( !good ) {
                break;
            }
            if ( ch < ZU___SUPPLEMENTARY_FIRST ) {
                utfStore<uint16_t, SWAP>( dest, ch );
                dest += 2;
            } else {
                utfStore<uint16_t, SWAP>( dest, zu___HighSurrogate( ch ) );
                utfStore<uint16_t, SWAP>( dest + 2, zu___LowSurrogate( ch ) );
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
    const bool swap = utfSwaps( littleEndian );
    dest = utfIsWide() ? zu___UtfWideEncode16( dest, destEnd, src, end, swap ) : dest;
    return swap ? utfEncode16<true>( dest, destEnd, src, end ) : utfEncode16<false>( dest, destEnd, src, end );
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
