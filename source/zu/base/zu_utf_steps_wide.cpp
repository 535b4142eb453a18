// With vectors of 64 bytes, a mask says which units begin a code point.  Those are brought together, and so are the units
// behind them; where the first is the half of a pair, both are joined, in all lanes at once.  The other way, each lane
// gets both halves, and what is none is dropped.

#include "zu/base/zu_utf_internal.h"

#include "zu/sys/zu_chars_utf8_shuffle_internal.h"

#ifdef ZU___CHARS_UTF8_HAS_WIDE

#include "zu/sys/zu_surrogate_internal.h"

#include <algorithm>
#include <immintrin.h>

// The address sanitizer of gcc 12 keeps vectors of 64 bytes where they are not aligned; of loads and stores by masks it
// knows nothing anyway.
#define WIDE __attribute__( ( target( "avx512f,avx512bw,avx512vbmi2,popcnt,bmi" ), no_sanitize_address ) )

static constexpr ZU_INT UNITS = 32; // of a vector, and bits of a mask
static constexpr ZU_INT LANES = 16; // code points of a vector

// As in zu_chars_utf8_wide.cpp, the forms with masks
static constexpr __mmask32 ALL = UINT32_MAX;
static constexpr __mmask16 ALL_LANES = UINT16_MAX;

// Returns the first `count` bits, 0 to 32.
static inline uint32_t wideBits( ZU_INT count )
{
    return (uint32_t)( ( UINT64_C( 1 ) << count ) - 1 );
}
template <bool SWAP>
WIDE static inline __m512i wideOrder( __m512i units )
{
    if constexpr ( SWAP ) {
        return _mm512_or_si512( _mm512_maskz_slli_epi16( ALL, units, 8 ), _mm512_maskz_srli_epi16( ALL, units, 8 ) );
    }
    return units;
}

struct UNIT_KINDS {
    uint32_t high; // first halves of pairs
    uint32_t low;  // second ones
    ZU_INT good;   // units at the front that are well-formed, and whole

    // Of `count` units at the front, with 0 behind them
    WIDE UNIT_KINDS( __m512i units, ZU_INT count )
    {
        const __m512i top = _mm512_and_si512( units, _mm512_set1_epi16( (short)0xFC00 ) );
        high = _mm512_cmpeq_epi16_mask( top, _mm512_set1_epi16( (short)ZU___SURROGATE_FIRST ) );
        low = _mm512_cmpeq_epi16_mask( top, _mm512_set1_epi16( (short)zu___LowSurrogate( 0 ) ) );
        const uint32_t bad = high << 1 ^ low;
        good = count - ( count == UNITS && high >> ( UNITS - 1 ) );
        if ( bad ) {
            const int first = __builtin_ctz( bad );
            good = first - !( low >> first & 1 );
        }
    }
};

WIDE static inline __m512i wideLoad( const void *src, ZU_INT count )
{
    return _mm512_maskz_loadu_epi16( wideBits( count ), src );
}
// Stores up to 16 of `count` code points.
WIDE static inline void wideStore( ZU_CHAR *dest, ZU_INT count, __m512i chars )
{
    if ( count >= LANES ) {
        _mm512_storeu_si512( dest, chars );
    } else if ( count > 0 ) {
        _mm512_mask_storeu_epi32( dest, (__mmask16)wideBits( count ), chars );
    }
}
template <int HALF>
WIDE static inline __m512i wideLanes( __m512i units )
{
    return _mm512_maskz_cvtepu16_epi32( ALL_LANES, _mm512_maskz_extracti64x4_epi64( 0xF, units, HALF ) );
}
// Joins a unit with the one behind it where it is half of a pair.
WIDE static inline __m512i wideJoin( __m512i units, __m512i behind )
{
    static constexpr ZU_CHAR EXCESS = ( ZU___SURROGATE_FIRST << 10 ) + 0xDC00 - ZU___SUPPLEMENTARY_FIRST;
    const __m512i top = _mm512_and_si512( units, _mm512_set1_epi32( 0xFC00 ) );
    const __mmask16 pairs = _mm512_cmpeq_epi32_mask( top, _mm512_set1_epi32( (int)ZU___SURROGATE_FIRST ) );
    const __m512i low = _mm512_sub_epi32( behind, _mm512_set1_epi32( (int)EXCESS ) );
    return _mm512_mask_add_epi32( units, pairs, _mm512_maskz_slli_epi32( ALL_LANES, units, 10 ), low );
}

WIDE const char16_t *zu___UtfWideWellFormed16( const char16_t *src, const char16_t *end, ZU_INT *count )
{
    while ( src < end ) {
        const ZU_INT rest = std::min( end - src, UNITS );
        const UNIT_KINDS kinds( wideLoad( src, rest ), rest );
        *count += kinds.good - __builtin_popcount( kinds.low & wideBits( kinds.good ) );
        src += kinds.good;
        if ( kinds.good < rest - 1 || ( kinds.good < rest && rest < UNITS ) || kinds.good == 0 ) {
            break;
        }
    }
    return src;
}

template <bool SWAP>
WIDE static inline ZU_INT wideDecode16( ZU_CHAR *dest, ZU_INT room, const uint8_t **src, const uint8_t *end )
{
    static constexpr struct NEXT {
        uint16_t units[ UNITS ];
    } NEXT = [] {
        struct NEXT next = {};
        for ( int i = 0; i < UNITS; i++ ) {
            next.units[ i ] = (uint16_t)( i + 1 );
        }
        return next;
    }();
    const uint8_t *pos = *src;
    ZU_INT taken = 0;
    while ( end - pos >= 2 ) {
        const ZU_INT rest = std::min( ( end - pos ) / 2, UNITS );
        const __m512i units = wideOrder<SWAP>( wideLoad( pos, rest ) );
        const UNIT_KINDS kinds( units, rest );
        const uint32_t starts = ~kinds.low & wideBits( kinds.good );
        const ZU_INT count = __builtin_popcount( starts );
        if ( count == 0 || count > room - taken ) {
            break;
        }
        if ( kinds.high == 0 ) {
            wideStore( dest + taken, count, wideLanes<0>( units ) );
            wideStore( dest + taken + LANES, count - LANES, wideLanes<1>( units ) );
        } else {
            const __m512i next = _mm512_maskz_permutexvar_epi16( ALL, _mm512_loadu_si512( NEXT.units ), units );
            const __m512i first = _mm512_maskz_compress_epi16( starts, units );
            const __m512i behind = _mm512_maskz_compress_epi16( starts, next );
            wideStore( dest + taken, count, wideJoin( wideLanes<0>( first ), wideLanes<0>( behind ) ) );
            wideStore( dest + taken + LANES, count - LANES, wideJoin( wideLanes<1>( first ), wideLanes<1>( behind ) ) );
        }
        pos += 2 * kinds.good;
        taken += count;
    }
    *src = pos;
    return taken;
}
WIDE ZU_INT zu___UtfWideDecode16( ZU_CHAR *dest, ZU_INT room, const uint8_t **src, const uint8_t *end, bool swap )
{
    return swap ? wideDecode16<true>( dest, room, src, end ) : wideDecode16<false>( dest, room, src, end );
}

template <bool SWAP>
WIDE static inline uint8_t *wideEncode16( uint8_t *dest, const uint8_t *destEnd, const ZU_CHAR **src,
                                          const ZU_CHAR *end )
{
    static constexpr uint32_t EVEN = 0x55555555;
    const ZU_CHAR *pos = *src;
    while ( pos < end ) {
        ZU_INT count = std::min( end - pos, LANES );
        const __m512i chars = _mm512_maskz_loadu_epi32( (__mmask16)wideBits( count ), pos );
        const __m512i high = _mm512_and_si512( chars, _mm512_set1_epi32( ~0x7FF ) );
        const uint32_t faults = _mm512_cmpgt_epu32_mask( chars, _mm512_set1_epi32( 0x10FFFF ) ) |
                                _mm512_cmpeq_epi32_mask( high, _mm512_set1_epi32( (int)ZU___SURROGATE_FIRST ) );
        const __mmask16 pairs = _mm512_cmpgt_epu32_mask( chars, _mm512_set1_epi32( 0xFFFF ) );
        count = faults ? __builtin_ctz( faults ) : count;
        const ZU_INT unitCount = count + __builtin_popcount( pairs & wideBits( count ) );
        if ( count == 0 || 2 * unitCount > destEnd - dest ) {
            break;
        }
        // Both halves, of which the second is 0 where there is none: 0xD7C0 + ( chars >> 10 ), 0xDC00 + ( chars & 0x3FF )
        const __m512i firsts = _mm512_add_epi32( _mm512_maskz_srli_epi32( ALL_LANES, chars, 10 ),
                                                 _mm512_set1_epi32( (int)zu___HighSurrogate( 0 ) ) );
        const __m512i seconds = _mm512_maskz_slli_epi32( ALL_LANES, chars, 16 );
        const __m512i halves =
            _mm512_or_si512( firsts, _mm512_or_si512( _mm512_and_si512( seconds, _mm512_set1_epi32( 0x3FF0000 ) ),
                                                      _mm512_set1_epi32( (int)( zu___LowSurrogate( 0 ) << 16 ) ) ) );
        const __m512i lanes = _mm512_mask_mov_epi32( chars, pairs, halves );
        const uint32_t kept = ( EVEN | _mm512_test_epi16_mask( lanes, lanes ) ) & wideBits( 2 * count );
        const __m512i units = wideOrder<SWAP>( _mm512_maskz_compress_epi16( kept, lanes ) );
        if ( destEnd - dest >= 2 * UNITS ) {
            _mm512_storeu_si512( dest, units );
        } else {
            _mm512_mask_storeu_epi16( dest, wideBits( unitCount ), units );
        }
        dest += 2 * unitCount;
        pos += count;
    }
    *src = pos;
    return dest;
}
WIDE uint8_t *zu___UtfWideEncode16( uint8_t *dest, const uint8_t *destEnd, const ZU_CHAR **src, const ZU_CHAR *end,
                                    bool swap )
{
    return swap ? wideEncode16<true>( dest, destEnd, src, end ) : wideEncode16<false>( dest, destEnd, src, end );
}

#else

const char16_t *zu___UtfWideWellFormed16( const char16_t *src, const char16_t *, ZU_INT * )
{
    return src;
}
ZU_INT zu___UtfWideDecode16( ZU_CHAR *, ZU_INT, const uint8_t **, const uint8_t *, bool )
{
    return 0;
}
uint8_t *zu___UtfWideEncode16( uint8_t *dest, const uint8_t *, const ZU_CHAR **, const ZU_CHAR *, bool )
{
    return dest;
}

#endif
