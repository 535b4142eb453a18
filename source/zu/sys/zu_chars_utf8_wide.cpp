// With vectors of 64 bytes, of which masks say what counts, no sequence needs a shape.  The places of all first bytes are
// brought together, the four bytes from each of them on are gathered into a lane, and the first half byte tells what of
// them belongs to the sequence and how far that is to be shifted.  What stands behind a text is masked off and not read,
// so that a short text is decoded in one go wherever it ends.  Encoding spreads each code point over a lane and drops the
// bytes that its sequence has not.

#include "zu/sys/zu_chars_utf8_shuffle_internal.h"
#include "zu/sys/zu_surrogate_internal.h"

#ifdef ZU___CHARS_UTF8_HAS_WIDE

#include <algorithm>
#include <cpuid.h>
#include <immintrin.h>

// The address sanitizer of gcc 12 keeps vectors of 64 bytes where they are not aligned; of loads and stores by masks it
// knows nothing anyway.
#define WIDE __attribute__( ( target( "avx512f,avx512bw,avx512vbmi,avx512vbmi2,popcnt,bmi" ), no_sanitize_address ) )

static constexpr ZU_INT BLOCK = 64;       // bytes of a vector, and bits of a mask
static constexpr ZU_INT LANES = 16;       // code points of a vector
static constexpr ZU_INT SEQUENCE_MAX = 4; // bytes

// Of forms with and without a mask, those without begin with what is not initialized, which some compilers warn of.
static constexpr __mmask64 ALL = UINT64_MAX;
static constexpr __mmask16 ALL_LANES = UINT16_MAX;

bool zu___CharsUtf8CanWiden( void )
{
    static constexpr unsigned STATES = 0xE6; // of vectors and masks, which the system must keep whole
    unsigned states, higher;
    __asm__( "xgetbv" : "=a"( states ), "=d"( higher ) : "c"( 0 ) );
    if ( ( states & STATES ) != STATES ) {
        return false;
    }
    unsigned eax, ebx, ecx, edx;
    __cpuid_count( 7, 0, eax, ebx, ecx, edx ); // there are masks, and so there is this leaf
    return ( ebx & bit_AVX512F ) && ( ebx & bit_AVX512BW ) && ( ebx & bit_BMI ) && ( ecx & bit_AVX512VBMI ) &&
           ( ecx & bit_AVX512VBMI2 );
}

// Returns the first `count` bits, 0 to 64.
static inline uint64_t wideBits( ZU_INT count )
{
    return count < BLOCK ? ( UINT64_C( 1 ) << count ) - 1 : UINT64_MAX;
}

struct WIDE_TABLES {
    // The bytes of a vector, and the first, second, third and fourth 16 of them, each four times
    uint8_t places[ BLOCK ];
    uint8_t fours[ BLOCK / LANES ][ BLOCK ];
    // By the first half byte of a sequence: which bits of its bytes and what is behind them remain, how far these are to
    // be shifted, and the least code point that needs so many bytes
    uint32_t bits[ LANES ];
    uint32_t shift[ LANES ];
    uint32_t least[ LANES ];
};
alignas( 64 ) static constexpr WIDE_TABLES TABLES = [] {
    WIDE_TABLES tables = {};
    for ( int i = 0; i < BLOCK; i++ ) {
        tables.places[ i ] = (uint8_t)i;
        for ( int k = 0; k < BLOCK / LANES; k++ ) {
            tables.fours[ k ][ i ] = (uint8_t)( LANES * k + i / 4 );
        }
    }
    for ( int half = 0; half < LANES; half++ ) {
        const int length = half < 0xC ? 1 : half < 0xE ? 2 : half == 0xE ? 3 : 4;
        const unsigned lead[] = { 0x7F, 0x1F, 0x0F, 0x07 };
        const unsigned least[] = { 0, 0x80, 0x800, 0x10000 };
        tables.bits[ half ] = lead[ length - 1 ] << 24 | 0x3F3F3F;
        tables.shift[ half ] = (unsigned)( 6 * ( SEQUENCE_MAX - length ) );
        tables.least[ half ] = least[ length - 1 ];
    }
    return tables;
}();

struct WIDE_CHARS {
    __m512i chars;
    bool good; // none is overlong, a surrogate or too large
};
// Decodes 16 sequences of `bytes`, which begin at the places that `fours` picks out of `places`.
template <bool EXACT>
WIDE static inline WIDE_CHARS wideDecodeLanes( __m512i bytes, __m512i places, const uint8_t *fours )
{
    const __m512i order = _mm512_add_epi8( _mm512_maskz_permutexvar_epi8( ALL, _mm512_load_si512( fours ), places ),
                                           _mm512_set1_epi32( 0x00010203 ) ); // the first byte comes to the top
    const __m512i lanes = _mm512_maskz_permutexvar_epi8( ALL, order, bytes );
    const __m512i halves = _mm512_maskz_srli_epi32( ALL_LANES, lanes, 28 );
    const __m512i bits = _mm512_and_si512(
        lanes, _mm512_maskz_permutexvar_epi32( ALL_LANES, halves, _mm512_load_si512( TABLES.bits ) ) );
    const __m512i pairs = _mm512_maddubs_epi16( bits, _mm512_set1_epi16( 0x4001 ) ); // first times 64, second
    const __m512i whole = _mm512_madd_epi16( pairs, _mm512_set1_epi32( 0x10000001 ) );
    const __m512i chars = _mm512_maskz_srlv_epi32(
        ALL_LANES, whole, _mm512_maskz_permutexvar_epi32( ALL_LANES, halves, _mm512_load_si512( TABLES.shift ) ) );
    if constexpr ( !EXACT ) {
        return { chars, true };
    }
    const __m512i least = _mm512_maskz_permutexvar_epi32( ALL_LANES, halves, _mm512_load_si512( TABLES.least ) );
    const __m512i high = _mm512_and_si512( chars, _mm512_set1_epi32( ~0x7FF ) );
    return { chars, ( _mm512_cmplt_epu32_mask( chars, least ) |
                      _mm512_cmpgt_epu32_mask( chars, _mm512_set1_epi32( 0x10FFFF ) ) |
                      _mm512_cmpeq_epi32_mask( high, _mm512_set1_epi32( (int)ZU___SURROGATE_FIRST ) ) ) == 0 };
}

// Stores up to 16 of `count` code points.
WIDE static inline void wideStore( ZU_CHAR *dest, ZU_INT count, __m512i chars )
{
    if ( count >= LANES ) {
        _mm512_storeu_si512( dest, chars );
    } else {
        _mm512_mask_storeu_epi32( dest, (__mmask16)wideBits( count ), chars );
    }
}
template <bool EXACT>
WIDE static inline ZU_INT wideDecode( ZU_CHAR *dest, ZU_INT room, const uint8_t **src, const uint8_t *end )
{
    const uint8_t *pos = *src;
    ZU_INT length = 0;
    while ( pos < end && length < room ) {
        const ZU_INT rest = std::min( end - pos, BLOCK );
        const __m512i bytes = _mm512_maskz_loadu_epi8( wideBits( rest ), pos );
        const uint64_t notAscii = _mm512_movepi8_mask( bytes );
        if ( notAscii == 0 ) {
            const ZU_INT count = std::min( rest, room - length );
            const uint8_t *from = rest == BLOCK ? pos : (const uint8_t *)&bytes;
            for ( ZU_INT i = 0; i < count; i += LANES ) {
                const __m128i sixteen = _mm_loadu_si128( (const __m128i *)( from + i ) );
                wideStore( dest + length + i, count - i, _mm512_maskz_cvtepu8_epi32( ALL_LANES, sixteen ) );
            }
            pos += count;
            length += count;
            continue;
        }
        // The last sequences of a whole block may not be whole.
        const uint64_t starts = _mm512_cmpgt_epi8_mask( bytes, _mm512_set1_epi8( -65 ) );
        uint64_t expected = ( notAscii & starts ) << 1;
        uint64_t odd = 0; // what may be above U+10FFFF
        if ( const uint64_t longLeads = _mm512_cmpge_epu8_mask( bytes, _mm512_set1_epi8( (char)0xE0 ) ) ) {
            const uint64_t longestLeads = _mm512_cmpge_epu8_mask( bytes, _mm512_set1_epi8( (char)0xF0 ) );
            expected |= longLeads << 2 | longestLeads << 3;
            odd = _mm512_cmpge_epu8_mask( bytes, _mm512_set1_epi8( (char)( EXACT ? 0xF8 : 0xF4 ) ) );
        }
        ZU_INT limit = rest < BLOCK ? rest : BLOCK - SEQUENCE_MAX + 1; // for the places of first bytes
        ZU_INT next = BLOCK;
        const uint64_t bad = ( ( notAscii & ~starts ) ^ expected ) | odd;
        if ( ZU___UNLIKELY( bad ) ) {
            next = __builtin_ctzll( bad );
            limit = std::min( limit, next - SEQUENCE_MAX + 1 );
            if ( EXACT || limit <= 0 ) {
                break;
            }
        }
        uint64_t taken = starts & wideBits( limit );
        const uint64_t behind = starts & ~wideBits( limit );
        next = behind ? std::min<ZU_INT>( next, __builtin_ctzll( behind ) ) : next;
        ZU_INT count = __builtin_popcountll( taken );
        const __m512i places = _mm512_maskz_compress_epi8( taken, _mm512_load_si512( TABLES.places ) );
        if ( ZU___UNLIKELY( count > room - length ) ) {
            count = room - length;
            next = ( (const uint8_t *)&places )[ count ];
        }
        bool good = true;
        for ( ZU_INT i = 0; i < count; i += LANES ) {
            const WIDE_CHARS sixteen = wideDecodeLanes<EXACT>( bytes, places, TABLES.fours[ i / LANES ] );
            wideStore( dest + length + i, count - i, sixteen.chars );
            good &= sixteen.good;
        }
        if ( EXACT && !good ) {
            break;
        }
        pos += next;
        length += count;
    }
    *src = pos;
    return length;
}
WIDE ZU_INT zu___CharsUtf8WideCountStarts( const uint8_t *src, const uint8_t *end )
{
    ZU_INT count = 0;
    for ( ; end - src >= BLOCK; src += BLOCK ) {
        count += __builtin_popcountll( _mm512_cmpgt_epi8_mask( _mm512_loadu_si512( src ), _mm512_set1_epi8( -65 ) ) );
    }
    const __m512i rest = _mm512_mask_loadu_epi8( _mm512_set1_epi8( -128 ), wideBits( end - src ), src );
    return count + __builtin_popcountll( _mm512_cmpgt_epi8_mask( rest, _mm512_set1_epi8( -65 ) ) );
}
WIDE ZU_INT zu___CharsUtf8WideDecode( ZU_CHAR *dest, ZU_INT room, const uint8_t **src, const uint8_t *end )
{
    return wideDecode<false>( dest, room, src, end );
}
WIDE ZU_INT zu___CharsUtf8WideDecodeExact( ZU_CHAR *dest, ZU_INT room, const uint8_t **src, const uint8_t *end )
{
    return wideDecode<true>( dest, room, src, end );
}

template <bool EXACT>
WIDE static inline uint8_t *wideEncode( uint8_t *dest, const uint8_t *destEnd, const ZU_CHAR **src, const ZU_CHAR *end )
{
    const ZU_CHAR *pos = *src;
    while ( pos < end ) {
        ZU_INT count = std::min( end - pos, LANES );
        const __m512i chars = _mm512_maskz_loadu_epi32( (__mmask16)wideBits( count ), pos );
        const __mmask16 two = _mm512_cmpgt_epu32_mask( chars, _mm512_set1_epi32( 0x7F ) ); // bytes and more
        if ( two == 0 && destEnd - dest >= LANES ) {
            _mm_storeu_si128( (__m128i *)dest, _mm512_maskz_cvtepi32_epi8( ALL_LANES, chars ) );
            dest += count;
            pos += count;
            continue;
        }
        const __mmask16 three = _mm512_cmpgt_epu32_mask( chars, _mm512_set1_epi32( 0x7FF ) );
        const __mmask16 four = _mm512_cmpgt_epu32_mask( chars, _mm512_set1_epi32( 0xFFFF ) );
        unsigned faults = _mm512_cmpgt_epu32_mask( chars, _mm512_set1_epi32( 0x10FFFF ) );
        if constexpr ( EXACT ) {
            const __m512i high = _mm512_and_si512( chars, _mm512_set1_epi32( ~0x7FF ) );
            faults |= _mm512_cmpeq_epi32_mask( high, _mm512_set1_epi32( (int)ZU___SURROGATE_FIRST ) );
        }
        // A lane ends with the last byte of its sequence, and has 0 bytes ahead of it.
        __m512i lanes = _mm512_maskz_srli_epi32( ALL_LANES, chars, 18 );
        lanes = _mm512_or_si512(
            lanes, _mm512_and_si512( _mm512_maskz_srli_epi32( ALL_LANES, chars, 4 ), _mm512_set1_epi32( 0x3F00 ) ) );
        lanes = _mm512_or_si512(
            lanes, _mm512_and_si512( _mm512_maskz_slli_epi32( ALL_LANES, chars, 10 ), _mm512_set1_epi32( 0x3F0000 ) ) );
        __m512i last = _mm512_maskz_slli_epi32( ALL_LANES, chars, 24 );
        last = _mm512_mask_and_epi32( last, two, last, _mm512_set1_epi32( 0x3F000000 ) );
        lanes = _mm512_mask_or_epi32( last, two, lanes, last );
        __m512i marks = _mm512_maskz_set1_epi32( two, (int)0x80C00000 );
        marks = _mm512_mask_mov_epi32( marks, three, _mm512_set1_epi32( (int)0x8080E000 ) );
        marks = _mm512_mask_mov_epi32( marks, four, _mm512_set1_epi32( (int)0x808080F0 ) );
        lanes = _mm512_or_si512( lanes, marks );
        count = faults ? __builtin_ctz( faults ) : count;
        static constexpr uint64_t LAST = 0x8888888888888888; // which counts even if it is 0
        const uint64_t kept = ( LAST | _mm512_test_epi8_mask( lanes, lanes ) ) & wideBits( SEQUENCE_MAX * count );
        const ZU_INT byteCount = __builtin_popcountll( kept );
        if ( count == 0 || byteCount > destEnd - dest ) {
            break;
        }
        const __m512i bytes = _mm512_maskz_compress_epi8( kept, lanes );
        if ( destEnd - dest >= BLOCK ) {
            _mm512_storeu_si512( dest, bytes );
        } else {
            _mm512_mask_storeu_epi8( dest, wideBits( byteCount ), bytes );
        }
        dest += byteCount;
        pos += count;
    }
    *src = pos;
    return dest;
}
WIDE uint8_t *zu___CharsUtf8WideEncode( uint8_t *dest, const uint8_t *destEnd, const ZU_CHAR **src, const ZU_CHAR *end )
{
    return wideEncode<false>( dest, destEnd, src, end );
}
WIDE uint8_t *zu___CharsUtf8WideEncodeExact( uint8_t *dest, const uint8_t *destEnd, const ZU_CHAR **src,
                                             const ZU_CHAR *end )
{
    return wideEncode<true>( dest, destEnd, src, end );
}

#else

uint8_t *zu___CharsUtf8WideEncode( uint8_t *dest, const uint8_t *, const ZU_CHAR **, const ZU_CHAR * )
{
    return dest;
}
uint8_t *zu___CharsUtf8WideEncodeExact( uint8_t *dest, const uint8_t *, const ZU_CHAR **, const ZU_CHAR * )
{
    return dest;
}
bool zu___CharsUtf8CanWiden( void )
{
    return false;
}
ZU_INT zu___CharsUtf8WideCountStarts( const uint8_t *, const uint8_t * )
{
    return 0;
}
ZU_INT zu___CharsUtf8WideDecode( ZU_CHAR *, ZU_INT, const uint8_t **, const uint8_t * )
{
    return 0;
}
ZU_INT zu___CharsUtf8WideDecodeExact( ZU_CHAR *, ZU_INT, const uint8_t **, const uint8_t * )
{
    return 0;
}

#endif
