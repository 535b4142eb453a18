// zu_chars_ascii_internal.h: code points that are stored as bytes, and bytes as code points, several at a time.
#pragma once

#include "zu/sys/zu_chars.h"

#include <bit>
#include <cstring>
#if defined( __SSE2__ )
#include <emmintrin.h>
#endif

typedef uint8_t ZU___CHARS_BYTES __attribute__( ( vector_size( 16 ) ) );
typedef uint16_t ZU___CHARS_HALVES __attribute__( ( vector_size( 16 ) ) );
typedef uint32_t ZU___CHARS_LANES __attribute__( ( vector_size( 16 ) ) );
typedef uint64_t ZU___CHARS_WORDS __attribute__( ( vector_size( 16 ) ) );

static_assert( std::endian::native == std::endian::little );

// Stores each byte of a word as a code point.
static inline void zu___CharsStoreBytes( ZU_CHAR *dest, uint64_t word )
{
    const ZU___CHARS_WORDS words = { word, 0 };
    const ZU___CHARS_BYTES none = {};
    const ZU___CHARS_HALVES halves = (ZU___CHARS_HALVES)__builtin_shufflevector(
        (ZU___CHARS_BYTES)words, none, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23 );
    const ZU___CHARS_HALVES zeros = (ZU___CHARS_HALVES)none;
    const ZU___CHARS_HALVES low = __builtin_shufflevector( halves, zeros, 0, 8, 1, 9, 2, 10, 3, 11 );
    const ZU___CHARS_HALVES high = __builtin_shufflevector( halves, zeros, 4, 12, 5, 13, 6, 14, 7, 15 );
    memcpy( dest, &low, sizeof low );
    memcpy( dest + 4, &high, sizeof high );
}

// Each stores so many code points as bytes and unites them with `*all`; if a lane of that comes to 0x80 or above, the
// bytes mean nothing.
static inline void zu___CharsPackFour( uint8_t *dest, const ZU_CHAR *src, uint64_t *all )
{
    uint64_t pairs[ 2 ];
    memcpy( pairs, src, sizeof pairs );
    *all |= pairs[ 0 ] | pairs[ 1 ];
    uint64_t bytes = pairs[ 0 ] | pairs[ 1 ] << 16;
    uint32_t packed = (uint32_t)( bytes | bytes >> 24 );
    memcpy( dest, &packed, sizeof packed );
}
static inline ZU___CHARS_LANES zu___CharsLoadLanes( const ZU_CHAR *src )
{
    ZU___CHARS_LANES lanes;
    memcpy( &lanes, src, sizeof lanes );
    return lanes;
}
#if defined( __SSE2__ )
static inline ZU___CHARS_BYTES zu___CharsPackLanes( ZU___CHARS_LANES a, ZU___CHARS_LANES b, ZU___CHARS_LANES c,
                                                    ZU___CHARS_LANES d )
{
    const __m128i low = _mm_packs_epi32( (__m128i)a, (__m128i)b );
    const __m128i high = _mm_packs_epi32( (__m128i)c, (__m128i)d );
    return (ZU___CHARS_BYTES)_mm_packus_epi16( low, high );
}
#else
static inline ZU___CHARS_BYTES zu___CharsPackLanes( ZU___CHARS_LANES a, ZU___CHARS_LANES b, ZU___CHARS_LANES c,
                                                    ZU___CHARS_LANES d )
{
    const ZU___CHARS_HALVES low =
        __builtin_shufflevector( (ZU___CHARS_HALVES)a, (ZU___CHARS_HALVES)b, 0, 2, 4, 6, 8, 10, 12, 14 );
    const ZU___CHARS_HALVES high =
        __builtin_shufflevector( (ZU___CHARS_HALVES)c, (ZU___CHARS_HALVES)d, 0, 2, 4, 6, 8, 10, 12, 14 );
    return __builtin_shufflevector( (ZU___CHARS_BYTES)low, (ZU___CHARS_BYTES)high, 0, 2, 4, 6, 8, 10, 12, 14, 16, 18,
                                    20, 22, 24, 26, 28, 30 );
}
#endif
static inline void zu___CharsPackSixteen( uint8_t *dest, const ZU_CHAR *src, ZU___CHARS_LANES *all )
{
    const ZU___CHARS_LANES a = zu___CharsLoadLanes( src );
    const ZU___CHARS_LANES b = zu___CharsLoadLanes( src + 4 );
    const ZU___CHARS_LANES c = zu___CharsLoadLanes( src + 8 );
    const ZU___CHARS_LANES d = zu___CharsLoadLanes( src + 12 );
    *all |= ( a | b ) | ( c | d );
    const ZU___CHARS_BYTES bytes = zu___CharsPackLanes( a, b, c, d );
    memcpy( dest, &bytes, sizeof bytes );
}

// Stores code points as bytes and tells whether all of them are ASCII; if not, the bytes mean nothing.
[[gnu::always_inline]] static inline bool zu___CharsPackAscii( uint8_t *dest, const ZU_CHAR *src, ZU_INT length )
{
    // What is left behind whole steps is the end of a last one, which takes some once more.
    static constexpr ZU_INT STEP = 16;
    static constexpr ZU_INT SMALL_STEP = 4;
    uint64_t all = 0; // two lanes
    if ( length >= STEP ) {
        ZU___CHARS_LANES lanes = {};
        for ( ZU_INT i = 0; i < length - STEP; i += STEP ) {
            zu___CharsPackSixteen( dest + i, src + i, &lanes );
        }
        zu___CharsPackSixteen( dest + length - STEP, src + length - STEP, &lanes );
        const ZU___CHARS_WORDS words = (ZU___CHARS_WORDS)lanes;
        all = words[ 0 ] | words[ 1 ];
    } else if ( length >= SMALL_STEP ) {
        for ( ZU_INT i = 0; i < length - SMALL_STEP; i += SMALL_STEP ) {
            zu___CharsPackFour( dest + i, src + i, &all );
        }
        zu___CharsPackFour( dest + length - SMALL_STEP, src + length - SMALL_STEP, &all );
    } else {
        for ( ZU_INT i = 0; i < length; i++ ) {
            all |= src[ i ];
            dest[ i ] = (uint8_t)src[ i ];
        }
    }
    return ( all & UINT64_C( 0xFFFFFF80FFFFFF80 ) ) == 0;
}
