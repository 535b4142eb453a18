// It is not foreseen which of the next characters are long, and a wrong guess costs as much as all of them.  So four are
// looked at together: which of them are long tells by way of a table where each byte goes, and how many bytes there are.
// Going back the same is told by the highest bits of the next ten bytes, since four characters begin within these.
//
// Where the processor does not put bytes into any order at once, characters go one by one.

#include "zu/base/zu_wire_chars_internal.h"

#include "zu/sys/zu_chars_utf8_shuffle_internal.h"

#include <bit>
#include <cstring>

static_assert( std::endian::native == std::endian::little );

static constexpr ZU_CHAR LONG_BIT = 0x800000; // of a long character's bytes, taken as a number

// Stores a character, and a byte or three behind it.
static inline uint8_t *wirePutChar( uint8_t *dest, ZU_CHAR ch )
{
    bool isLong = ch >= ZU___WIRE_ASCII_END;
    uint32_t word = __builtin_bswap32( isLong ? ( LONG_BIT | ch ) << 8 : ch << 24 );
    memcpy( dest, &word, sizeof word );
    return dest + ( isLong ? ZU___WIRE_CHAR_BYTES : 1 );
}

#if defined( __x86_64__ )

#include <tmmintrin.h>

#define SHUFFLES __attribute__( ( target( "ssse3" ) ) )

static constexpr uint8_t NOTHING = 0x80; // in an order: a 0 byte
static constexpr int VECTOR = 16;        // bytes
static constexpr int LANES = 4;          // characters of a step
static constexpr int WINDOW = 10;        // bytes that four characters begin within

// By shape, a bit for each of four characters that is long
struct WIRE_TABLES {
    uint8_t bytes[ 1 << LANES ] = {};
    uint8_t put[ 1 << LANES ][ VECTOR ] = {};  // from lanes
    uint8_t take[ 1 << LANES ][ VECTOR ] = {}; // to lanes
    uint8_t shape[ 1 << WINDOW ] = {};         // by which of the next bytes have the highest bit set
};
static constexpr WIRE_TABLES WIRE = [] {
    WIRE_TABLES tables;
    for ( int shape = 0; shape < 1 << LANES; shape++ ) {
        int end = 0;
        for ( int i = 0; i < LANES; i++ ) {
            int length = shape >> i & 1 ? (int)ZU___WIRE_CHAR_BYTES : 1;
            for ( int k = 0; k < LANES; k++ ) {
                tables.take[ shape ][ LANES * i + k ] = k < length ? (uint8_t)( end + length - 1 - k ) : NOTHING;
            }
            for ( int k = length - 1; k >= 0; k-- ) {
                tables.put[ shape ][ end++ ] = (uint8_t)( LANES * i + k );
            }
        }
        tables.bytes[ shape ] = (uint8_t)end;
        for ( ; end < VECTOR; end++ ) {
            tables.put[ shape ][ end ] = NOTHING;
        }
    }
    for ( int bits = 0; bits < 1 << WINDOW; bits++ ) {
        int shape = 0;
        for ( int i = 0, at = 0; i < LANES; i++ ) {
            shape |= ( bits >> at & 1 ) << i;
            at += bits >> at & 1 ? (int)ZU___WIRE_CHAR_BYTES : 1;
        }
        tables.shape[ bits ] = (uint8_t)shape;
    }
    return tables;
}();

SHUFFLES static inline __m128i wireOrder( __m128i bytes, const uint8_t ( &order )[ VECTOR ] )
{
    return _mm_shuffle_epi8( bytes, _mm_loadu_si128( (const __m128i *)order ) );
}
SHUFFLES static inline __m128i wireLoad( const void *src )
{
    return _mm_loadu_si128( (const __m128i *)src );
}
SHUFFLES static inline uint8_t *wirePutFour( uint8_t *dest, __m128i chars )
{
    const __m128i longs = _mm_cmpgt_epi32( chars, _mm_set1_epi32( ZU___WIRE_ASCII_END - 1 ) );
    const int shape = _mm_movemask_ps( _mm_castsi128_ps( longs ) );
    chars = _mm_or_si128( chars, _mm_and_si128( longs, _mm_set1_epi32( LONG_BIT ) ) );
    _mm_storeu_si128( (__m128i *)dest, wireOrder( chars, WIRE.put[ shape ] ) );
    return dest + WIRE.bytes[ shape ];
}
SHUFFLES static uint8_t *wireShufflePut( uint8_t *dest, const ZU_CHAR **src, const ZU_CHAR *end )
{
    const ZU_CHAR *pos = *src;
    for ( ; end - pos >= 4 * LANES; pos += 4 * LANES ) {
        const __m128i a = wireLoad( pos );
        const __m128i b = wireLoad( pos + LANES );
        const __m128i c = wireLoad( pos + 2 * LANES );
        const __m128i d = wireLoad( pos + 3 * LANES );
        const __m128i all = _mm_or_si128( _mm_or_si128( a, b ), _mm_or_si128( c, d ) );
        if ( _mm_movemask_epi8( _mm_cmpgt_epi32( all, _mm_set1_epi32( ZU___WIRE_ASCII_END - 1 ) ) ) == 0 ) {
            const __m128i bytes = _mm_packus_epi16( _mm_packs_epi32( a, b ), _mm_packs_epi32( c, d ) );
            _mm_storeu_si128( (__m128i *)dest, bytes );
            dest += VECTOR;
        } else {
            dest = wirePutFour( wirePutFour( wirePutFour( wirePutFour( dest, a ), b ), c ), d );
        }
    }
    for ( ; end - pos >= LANES; pos += LANES ) {
        dest = wirePutFour( dest, wireLoad( pos ) );
    }
    *src = pos;
    return dest;
}
SHUFFLES static ZU_INT wireShuffleTake( ZU_CHAR *dest, ZU_INT length, const uint8_t **src, const uint8_t *end,
                                        ZU_CHAR charsEnd )
{
    static constexpr unsigned FIRST_OF_ALL_LONG = 0x249;
    const __m128i zero = _mm_setzero_si128();
    const __m128i last = _mm_set1_epi32( (int)( charsEnd - 1 ) );
    const uint8_t *pos = *src;
    __m128i faults = zero;
    ZU_INT i = 0;
    while ( end - pos >= VECTOR && length - i >= LANES ) {
        const __m128i bytes = wireLoad( pos );
        const unsigned bits = (unsigned)_mm_movemask_epi8( bytes );
        if ( bits == 0 && length - i >= VECTOR ) {
            const __m128i low = _mm_unpacklo_epi8( bytes, zero );
            const __m128i high = _mm_unpackhi_epi8( bytes, zero );
            _mm_storeu_si128( (__m128i *)( dest + i ), _mm_unpacklo_epi16( low, zero ) );
            _mm_storeu_si128( (__m128i *)( dest + i ) + 1, _mm_unpackhi_epi16( low, zero ) );
            _mm_storeu_si128( (__m128i *)( dest + i ) + 2, _mm_unpacklo_epi16( high, zero ) );
            _mm_storeu_si128( (__m128i *)( dest + i ) + 3, _mm_unpackhi_epi16( high, zero ) );
            pos += VECTOR;
            i += VECTOR;
            continue;
        }
        // Words of long characters alone are foreseen, and then the next step need not wait for the tables.
        __m128i lanes;
        if ( ( bits & FIRST_OF_ALL_LONG ) == FIRST_OF_ALL_LONG ) {
            lanes = wireOrder( bytes, WIRE.take[ ( 1 << LANES ) - 1 ] );
            pos += LANES * ZU___WIRE_CHAR_BYTES;
        } else {
            const int shape = WIRE.shape[ bits & ( ( 1 << WINDOW ) - 1 ) ];
            lanes = wireOrder( bytes, WIRE.take[ shape ] );
            pos += WIRE.bytes[ shape ];
        }
        const __m128i chars = _mm_andnot_si128( _mm_set1_epi32( LONG_BIT ), lanes );
        faults = _mm_or_si128( faults, _mm_cmpgt_epi32( chars, last ) ); // so are all with a bit that is to be clear
        _mm_storeu_si128( (__m128i *)( dest + i ), chars );
        i += LANES;
    }
    *src = pos;
    return _mm_movemask_epi8( faults ) == 0 ? i : -1;
}

#else

static uint8_t *wireShufflePut( uint8_t *dest, const ZU_CHAR **, const ZU_CHAR * )
{
    return dest;
}
static ZU_INT wireShuffleTake( ZU_CHAR *, ZU_INT, const uint8_t **, const uint8_t *, ZU_CHAR )
{
    return 0;
}

#endif

uint8_t *zu___WirePutChars( uint8_t *dest, const ZU_CHAR *src, ZU_INT length )
{
    const ZU_CHAR *end = src + length;
    if ( zu___CharsUtf8Shuffles() ) {
        dest = wireShufflePut( dest, &src, end );
    }
    while ( src < end ) {
        dest = wirePutChar( dest, *src++ );
    }
    return dest;
}
ZU_INT zu___WireTakeChars( ZU_CHAR *dest, ZU_INT length, const uint8_t **src, const uint8_t *end, ZU_CHAR charsEnd )
{
    return zu___CharsUtf8Shuffles() ? wireShuffleTake( dest, length, src, end, charsEnd ) : 0;
}
