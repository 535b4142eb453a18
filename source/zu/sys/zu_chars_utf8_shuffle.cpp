// A branch that is not foreseen costs as much as several characters, and in most languages the lengths of sequences are
// not foreseen.  Here they are looked up: where the sequences of the next 12 bytes end tells by way of a table where in
// a vector each byte goes, and then all sequences are decoded at a time.  Encoding goes the other way: the lengths of
// four sequences tell how the bytes of four wide ones close up.
//
// The idea is that of Lemire and Muła, "Transcoding Billions of Unicode Characters per Second with SIMD Instructions",
// 2021.  As everywhere here, overlong forms and surrogates pass; whoever wants neither has the text checked first, by
// the way of Keiser and Lemire, "Validating UTF-8 In Less Than One Instruction Per Byte", 2020.

#include "zu/sys/zu_chars_utf8_shuffle_internal.h"

#if defined( __x86_64__ )

#include <cpuid.h>
#include <cstring>
#include <tmmintrin.h>

#define SHUFFLES __attribute__( ( target( "ssse3" ) ) )

static constexpr uint8_t NOTHING = 0x80; // in an order: a 0 byte
static constexpr ZU_INT VECTOR = 16;     // bytes

bool zu___CharsUtf8CanShuffle( void )
{
    unsigned eax, ebx, ecx, edx;
    return __get_cpuid( 1, &eax, &ebx, &ecx, &edx ) && ( ecx & bit_SSSE3 );
}

// Decoding

// A shape is what the lengths of the first sequences are: of six that are of up to two bytes, else of four of up to
// three, else of three of up to four.  So each takes up to WINDOW bytes.
static constexpr int WINDOW = 12;
struct SHAPES {
    int first;   // number of the first shape of this kind
    int count;   // sequences
    int longest; // of them
    int lane;    // bytes of the vector for each
};
static constexpr SHAPES SIX = { 0, 6, 2, 2 };
static constexpr SHAPES FOUR = { 64, 4, 3, 4 };
static constexpr SHAPES THREE = { 145, 3, 4, 4 };
static constexpr int SHAPE_COUNT = 209;

struct DECODE_TABLES {
    // By which of the next bytes end a sequence; 0 bytes are taken where there is no shape.
    uint8_t shape[ 1 << WINDOW ] = {};
    uint8_t bytes[ 1 << WINDOW ] = {};
    // By shape: each sequence goes to a lane, its last byte ahead.
    uint8_t order[ SHAPE_COUNT ][ VECTOR ] = {};
};
static constexpr DECODE_TABLES DECODE = [] {
    DECODE_TABLES tables;
    const SHAPES kinds[] = { THREE, FOUR, SIX }; // a later kind takes what an earlier one has
    for ( const SHAPES &shapes : kinds ) {
        int shapesEnd = 1;
        for ( int i = 0; i < shapes.count; i++ ) {
            shapesEnd *= shapes.longest;
        }
        shapesEnd += shapes.first;
        for ( int shape = shapes.first; shape < shapesEnd; shape++ ) {
            uint8_t *order = tables.order[ shape ];
            for ( int i = 0; i < VECTOR; i++ ) {
                order[ i ] = NOTHING;
            }
            int begin = 0;
            int ends = 0;
            for ( int i = 0, rest = shape - shapes.first; i < shapes.count; i++, rest /= shapes.longest ) {
                int length = 1 + rest % shapes.longest;
                for ( int k = 0; k < length; k++ ) {
                    order[ shapes.lane * i + k ] = (uint8_t)( begin + length - 1 - k );
                }
                begin += length;
                ends |= 1 << ( begin - 1 );
            }
            for ( int behind = 0; behind < 1 << ( WINDOW - begin ); behind++ ) {
                tables.shape[ ends | behind << begin ] = (uint8_t)shape;
                tables.bytes[ ends | behind << begin ] = (uint8_t)begin;
            }
        }
    }
    return tables;
}();

SHUFFLES static inline unsigned shuffleAbove( __m128i bytes, char limit )
{
    return (unsigned)_mm_movemask_epi8( _mm_cmpgt_epi8( bytes, _mm_set1_epi8( limit ) ) );
}
// Stores 8 halves as code points.
SHUFFLES static inline void shuffleStoreHalves( ZU_CHAR *dest, __m128i halves )
{
    const __m128i zero = _mm_setzero_si128();
    _mm_storeu_si128( (__m128i *)dest, _mm_unpacklo_epi16( halves, zero ) );
    _mm_storeu_si128( (__m128i *)dest + 1, _mm_unpackhi_epi16( halves, zero ) );
}

// What bytes are, a bit for each.  Signed, continuations are the lowest bytes, from -128 to -65, and the marks of
// longer sequences the greater.
struct KINDS {
    unsigned continuations;
    unsigned expected; // the places of continuations by what the first bytes say, also behind the vector
    unsigned odd;      // first bytes of what may be above U+10FFFF

    SHUFFLES explicit KINDS( __m128i bytes )
    {
        const unsigned notAscii = (unsigned)_mm_movemask_epi8( bytes );
        continuations = ~shuffleAbove( bytes, -65 ) & 0xFFFF;
        const unsigned longLeads = notAscii & shuffleAbove( bytes, (char)0xDF );
        const unsigned longestLeads = notAscii & shuffleAbove( bytes, (char)0xEF );
        expected = ( notAscii & ~continuations ) << 1 | longLeads << 2 | longestLeads << 3;
        odd = notAscii & shuffleAbove( bytes, (char)0xF3 );
    }
    // Tells whether the first `count` bytes are whole sequences, of which the byte behind them is no part.
    SHUFFLES bool good( unsigned count ) const
    {
        return ( ( ( continuations ^ expected ) | odd ) & ( ( 2u << count ) - 1 ) ) == 0;
    }
};

// Decodes sequences of a shape and returns their number.
SHUFFLES static inline ZU_INT shuffleStoreShape( ZU_CHAR *dest, __m128i bytes, int shape )
{
    const __m128i lanes = _mm_shuffle_epi8( bytes, _mm_loadu_si128( (const __m128i *)DECODE.order[ shape ] ) );
    if ( shape < FOUR.first ) {
        const __m128i higher = _mm_srli_epi16( _mm_and_si128( lanes, _mm_set1_epi16( 0x1F00 ) ), 2 );
        shuffleStoreHalves( dest, _mm_or_si128( _mm_and_si128( lanes, _mm_set1_epi16( 0x7F ) ), higher ) );
        return SIX.count;
    }
    // Six bits of each byte, seven of the last.  A third last byte that begins a sequence has a bit too many, above
    // which stands one that a continuation has not.
    const __m128i third =
        _mm_xor_si128( lanes, _mm_srli_epi32( _mm_and_si128( lanes, _mm_set1_epi32( 0x400000 ) ), 1 ) );
    __m128i chars = _mm_and_si128( lanes, _mm_set1_epi32( 0x7F ) );
    chars = _mm_or_si128( chars, _mm_srli_epi32( _mm_and_si128( lanes, _mm_set1_epi32( 0x3F00 ) ), 2 ) );
    chars = _mm_or_si128( chars, _mm_srli_epi32( _mm_and_si128( third, _mm_set1_epi32( 0x3F0000 ) ), 4 ) );
    chars = _mm_or_si128( chars, _mm_srli_epi32( _mm_and_si128( lanes, _mm_set1_epi32( 0x7000000 ) ), 6 ) );
    _mm_storeu_si128( (__m128i *)dest, chars );
    return FOUR.count - ( shape >= THREE.first );
}

static constexpr unsigned TRIPLES = 0x924; // ends of four sequences of three bytes

SHUFFLES ZU_INT zu___CharsUtf8ShuffleDecode( ZU_CHAR *dest, ZU_INT room, const uint8_t **src, const uint8_t *end )
{
    const uint8_t *pos = *src;
    ZU_INT length = 0;
    while ( end - pos > VECTOR && room - length >= VECTOR ) {
        const __m128i bytes = _mm_loadu_si128( (const __m128i *)pos );
        const unsigned notAscii = (unsigned)_mm_movemask_epi8( bytes );
        // In ASCII, and in languages that have few other letters, nothing needs to be looked up.
        if ( ( notAscii & notAscii >> 1 & notAscii >> 2 & 0x3F ) == 0 ) {
            const __m128i zero = _mm_setzero_si128();
            shuffleStoreHalves( dest + length, _mm_unpacklo_epi8( bytes, zero ) );
            shuffleStoreHalves( dest + length + 8, _mm_unpackhi_epi8( bytes, zero ) );
            if ( notAscii == 0 ) {
                pos += VECTOR;
                length += VECTOR;
                continue;
            }
            int ascii = __builtin_ctz( notAscii );
            pos += ascii;
            length += ascii;
            if ( ( pos[ 0 ] & 0xE0 ) == 0xC0 && ( pos[ 1 ] & 0xC0 ) == 0x80 ) {
                dest[ length++ ] = ( pos[ 0 ] & 0x1Fu ) << 6 | ( pos[ 1 ] & 0x3Fu );
                pos += 2;
                continue;
            }
            if ( ascii > 0 ) {
                continue;
            }
        }
        const KINDS kinds( bytes );
        const unsigned ends = ~kinds.continuations >> 1 & ( ( 1 << WINDOW ) - 1 );
        const unsigned taken = DECODE.bytes[ ends ];
        if ( taken == 0 || !kinds.good( taken ) ) {
            break;
        }
        // Chinese is foreseen to be Chinese: so the next step need not wait for the table.
        if ( ends == TRIPLES ) {
            length += shuffleStoreShape( dest + length, bytes, DECODE.shape[ TRIPLES ] );
            pos += WINDOW;
        } else {
            length += shuffleStoreShape( dest + length, bytes, DECODE.shape[ ends ] );
            pos += taken;
        }
    }
    *src = pos;
    return length;
}

// Counting needs no order: it goes from vector to vector, whatever sequences lie across.
SHUFFLES ZU_INT zu___CharsUtf8ShuffleCount( const uint8_t **src, const uint8_t *end )
{
    const uint8_t *pos = *src;
    __m128i starts = _mm_setzero_si128(); // two sums
    unsigned expected = 0;
    while ( end - pos >= VECTOR ) {
        const __m128i bytes = _mm_loadu_si128( (const __m128i *)pos );
        const KINDS kinds( bytes );
        expected |= kinds.expected;
        if ( ( kinds.continuations ^ ( expected & 0xFFFF ) ) | kinds.odd ) {
            break;
        }
        const __m128i ones = _mm_and_si128( _mm_cmpgt_epi8( bytes, _mm_set1_epi8( -65 ) ), _mm_set1_epi8( 1 ) );
        starts = _mm_add_epi64( starts, _mm_sad_epu8( ones, _mm_setzero_si128() ) );
        expected >>= VECTOR;
        pos += VECTOR;
    }
    ZU_INT sums[ 2 ];
    _mm_storeu_si128( (__m128i *)sums, starts );
    ZU_INT length = sums[ 0 ] + sums[ 1 ];
    // A sequence that goes on is left to who goes on.
    if ( pos > *src && ( pos[ -1 ] & 0x80 ) ) {
        do {
            pos--;
        } while ( ( *pos & 0xC0 ) == 0x80 );
        length--;
    }
    *src = pos;
    return length;
}

// Checking

// What may be wrong with two bytes in a row, a bit for each fault.  Half a byte each of the first one and the first
// half of the second one tell which faults it may be part of; a fault is what all three allow.
enum : uint8_t {
    TOO_SHORT = 0x01,  // a sequence breaks off
    TOO_LONG = 0x02,   // a continuation that nothing begins
    OVERLONG_3 = 0x04, // E0 80 to E0 9F
    TOO_LARGE = 0x08,  // F4 90 and above
    SURROGATE = 0x10,  // ED A0 and above
    OVERLONG_2 = 0x20, // C0 and C1
    OVERLONG_4 = 0x40, // F0 80 to F0 8F, and F5 80 and above
    TWO_MORE = 0x80,   // two continuations, which are right where a sequence of three bytes and more goes on
    ALWAYS = TOO_SHORT | TOO_LONG | TWO_MORE,
};
struct CHECK_TABLES {
    uint8_t firstHigh[ VECTOR ] = {};
    uint8_t firstLow[ VECTOR ] = {};
    uint8_t secondHigh[ VECTOR ] = {};
};
static constexpr CHECK_TABLES CHECK = [] {
    CHECK_TABLES tables;
    for ( int half = 0; half < VECTOR; half++ ) {
        tables.firstHigh[ half ] = half < 0x8    ? TOO_LONG
                                   : half < 0xC  ? TWO_MORE
                                   : half == 0xC ? TOO_SHORT | OVERLONG_2
                                   : half == 0xD ? TOO_SHORT
                                   : half == 0xE ? TOO_SHORT | OVERLONG_3 | SURROGATE
                                                 : TOO_SHORT | TOO_LARGE | OVERLONG_4;
        tables.firstLow[ half ] = half == 0     ? ALWAYS | OVERLONG_2 | OVERLONG_3 | OVERLONG_4
                                  : half == 1   ? ALWAYS | OVERLONG_2
                                  : half < 0x4  ? ALWAYS
                                  : half == 0x4 ? ALWAYS | TOO_LARGE
                                  : half == 0xD ? ALWAYS | TOO_LARGE | OVERLONG_4 | SURROGATE
                                                : ALWAYS | TOO_LARGE | OVERLONG_4;
        const int more = TOO_LONG | TWO_MORE | OVERLONG_2;
        tables.secondHigh[ half ] = half < 0x8 || half > 0xB ? TOO_SHORT
                                    : half == 0x8            ? more | OVERLONG_3 | OVERLONG_4
                                    : half == 0x9            ? more | OVERLONG_3 | TOO_LARGE
                                                             : more | SURROGATE | TOO_LARGE;
    }
    return tables;
}();

SHUFFLES static inline __m128i checkLookUp( const uint8_t ( &table )[ VECTOR ], __m128i halves )
{
    return _mm_shuffle_epi8( _mm_loadu_si128( (const __m128i *)table ), halves );
}
// Returns a vector that is not 0 if something is wrong in `bytes`, with what the bytes ahead of them have begun.
SHUFFLES static inline __m128i checkVector( __m128i bytes, __m128i ahead )
{
    const __m128i half = _mm_set1_epi8( 0x0F );
    const __m128i first = _mm_alignr_epi8( bytes, ahead, VECTOR - 1 );
    const __m128i faults =
        _mm_and_si128( _mm_and_si128( checkLookUp( CHECK.firstHigh, _mm_and_si128( _mm_srli_epi16( first, 4 ), half ) ),
                                      checkLookUp( CHECK.firstLow, _mm_and_si128( first, half ) ) ),
                       checkLookUp( CHECK.secondHigh, _mm_and_si128( _mm_srli_epi16( bytes, 4 ), half ) ) );
    // The third byte of three, and the third and fourth of four, are continuations behind a continuation.
    const __m128i third = _mm_subs_epu8( _mm_alignr_epi8( bytes, ahead, VECTOR - 2 ), _mm_set1_epi8( 0xE0 - 0x80 ) );
    const __m128i fourth = _mm_subs_epu8( _mm_alignr_epi8( bytes, ahead, VECTOR - 3 ), _mm_set1_epi8( 0xF0 - 0x80 ) );
    const __m128i expected = _mm_and_si128( _mm_or_si128( third, fourth ), _mm_set1_epi8( (char)TWO_MORE ) );
    return _mm_xor_si128( expected, faults );
}
SHUFFLES void zu___CharsUtf8ShuffleCheck( const uint8_t **src, const uint8_t *end, ZU_INT *count )
{
    static constexpr ZU_INT BLOCK = 4; // vectors
    const uint8_t *pos = *src;
    __m128i ahead = _mm_setzero_si128();
    __m128i starts = _mm_setzero_si128(); // two sums
    while ( end - pos >= BLOCK * VECTOR ) {
        __m128i bytes[ BLOCK ];
        for ( int i = 0; i < BLOCK; i++ ) {
            bytes[ i ] = _mm_loadu_si128( (const __m128i *)pos + i );
        }
        const __m128i all =
            _mm_or_si128( _mm_or_si128( bytes[ 0 ], bytes[ 1 ] ), _mm_or_si128( bytes[ 2 ], bytes[ 3 ] ) );
        // What the bytes ahead have begun goes on in the first of these.
        if ( _mm_movemask_epi8( _mm_or_si128( all, _mm_srli_si128( ahead, VECTOR - 3 ) ) ) == 0 ) {
            starts = _mm_add_epi64( starts, _mm_set_epi64x( 0, BLOCK * VECTOR ) );
        } else {
            __m128i faults = checkVector( bytes[ 0 ], ahead );
            __m128i ones = _mm_cmpgt_epi8( bytes[ 0 ], _mm_set1_epi8( -65 ) );
            for ( int i = 1; i < BLOCK; i++ ) {
                faults = _mm_or_si128( faults, checkVector( bytes[ i ], bytes[ i - 1 ] ) );
                ones = _mm_add_epi8( ones, _mm_cmpgt_epi8( bytes[ i ], _mm_set1_epi8( -65 ) ) );
            }
            if ( _mm_movemask_epi8( _mm_cmpeq_epi8( faults, _mm_setzero_si128() ) ) != 0xFFFF ) {
                break;
            }
            const __m128i sums = _mm_sub_epi8( _mm_setzero_si128(), ones );
            starts = _mm_add_epi64( starts, _mm_sad_epu8( sums, _mm_setzero_si128() ) );
        }
        ahead = bytes[ BLOCK - 1 ];
        pos += BLOCK * VECTOR;
    }
    while ( end - pos >= VECTOR ) {
        const __m128i bytes = _mm_loadu_si128( (const __m128i *)pos );
        const __m128i faults = checkVector( bytes, ahead );
        if ( _mm_movemask_epi8( _mm_cmpeq_epi8( faults, _mm_setzero_si128() ) ) != 0xFFFF ) {
            break;
        }
        const __m128i ones = _mm_and_si128( _mm_cmpgt_epi8( bytes, _mm_set1_epi8( -65 ) ), _mm_set1_epi8( 1 ) );
        starts = _mm_add_epi64( starts, _mm_sad_epu8( ones, _mm_setzero_si128() ) );
        ahead = bytes;
        pos += VECTOR;
    }
    // What is less than a vector gets 0 bytes behind it, so that a sequence which is cut off breaks off.
    bool whole = false;
    if ( end - pos < VECTOR && end > pos ) {
        static constexpr uint8_t LATER[ 2 * VECTOR ] = { 0,       1,       2,       3,       4,       5,       6,
                                                         7,       8,       9,       10,      11,      12,      13,
                                                         14,      15,      NOTHING, NOTHING, NOTHING, NOTHING, NOTHING,
                                                         NOTHING, NOTHING, NOTHING, NOTHING, NOTHING, NOTHING, NOTHING,
                                                         NOTHING, NOTHING, NOTHING, NOTHING };
        const ZU_INT left = end - pos;
        __m128i bytes;
        if ( end - *src >= VECTOR ) {
            bytes = _mm_shuffle_epi8( _mm_loadu_si128( (const __m128i *)( end - VECTOR ) ),
                                      _mm_loadu_si128( (const __m128i *)( LATER + VECTOR - left ) ) );
        } else {
            bytes = _mm_setzero_si128();
            memcpy( &bytes, pos, (size_t)left );
        }
        if ( _mm_movemask_epi8( _mm_cmpeq_epi8( checkVector( bytes, ahead ), _mm_setzero_si128() ) ) == 0xFFFF ) {
            *count += __builtin_popcount( shuffleAbove( bytes, -65 ) ) - ( VECTOR - left );
            pos = end;
            whole = true;
        }
    }
    ZU_INT sums[ 2 ];
    _mm_storeu_si128( (__m128i *)sums, starts );
    *count += sums[ 0 ] + sums[ 1 ];
    // Of the last sequence it is not known whether it goes on.
    if ( !whole && pos > *src && ( pos[ -1 ] & 0x80 ) ) {
        do {
            pos--;
        } while ( ( *pos & 0xC0 ) == 0x80 );
        --*count;
    }
    *src = pos;
}

// Encoding

// Eight characters come as two bytes each, of which the first ones count, or four as four bytes, of which the last ones
// do.
struct ENCODE_TABLES {
    // By the lengths: eight less 1, or the lower bits of four less 1 and then the higher ones
    uint8_t bytes[ 256 ] = {};
    uint8_t order[ 256 ][ VECTOR ] = {};
};
static constexpr ENCODE_TABLES ENCODE_SHORT = [] {
    ENCODE_TABLES tables;
    for ( int lengths = 0; lengths < 256; lengths++ ) {
        int end = 0;
        for ( int i = 0; i < 8; i++ ) {
            tables.order[ lengths ][ end++ ] = (uint8_t)( 2 * i );
            if ( lengths >> i & 1 ) {
                tables.order[ lengths ][ end++ ] = (uint8_t)( 2 * i + 1 );
            }
        }
        tables.bytes[ lengths ] = (uint8_t)end;
    }
    return tables;
}();
static constexpr ENCODE_TABLES ENCODE = [] {
    ENCODE_TABLES tables;
    for ( int lengths = 0; lengths < 256; lengths++ ) {
        int end = 0;
        for ( int i = 0; i < 4; i++ ) {
            int length = 1 + ( lengths >> i & 1 ) + 2 * ( lengths >> ( i + 4 ) & 1 );
            for ( int k = 4 - length; k < 4; k++ ) {
                tables.order[ lengths ][ end++ ] = (uint8_t)( 4 * i + k );
            }
        }
        tables.bytes[ lengths ] = (uint8_t)end;
    }
    return tables;
}();

// Stores the sequences of eight characters below 0x800 and returns their end.
SHUFFLES static inline uint8_t *shuffleEncodeEight( uint8_t *dest, __m128i chars )
{
    const __m128i two = _mm_cmpgt_epi16( chars, _mm_set1_epi16( 0x7F ) ); // bytes
    __m128i bits =
        _mm_or_si128( _mm_srli_epi16( chars, 6 ), _mm_slli_epi16( _mm_and_si128( chars, _mm_set1_epi16( 0x3F ) ), 8 ) );
    bits = _mm_or_si128( bits, _mm_set1_epi16( (short)0x80C0 ) );
    const __m128i sequences = _mm_or_si128( _mm_and_si128( two, bits ), _mm_andnot_si128( two, chars ) );
    const int lengths = _mm_movemask_epi8( _mm_packs_epi16( two, _mm_setzero_si128() ) );
    const __m128i order = _mm_loadu_si128( (const __m128i *)ENCODE_SHORT.order[ lengths ] );
    _mm_storeu_si128( (__m128i *)dest, _mm_shuffle_epi8( sequences, order ) );
    return dest + ENCODE_SHORT.bytes[ lengths ];
}

// Returns a vector whose lanes are `mask` where those of `lanes` are set, else 0.
SHUFFLES static inline __m128i shuffleWhere( __m128i lanes, unsigned mask )
{
    return _mm_and_si128( lanes, _mm_set1_epi32( (int)mask ) );
}
// Stores the sequences of four characters and returns their end, null if one is none.
SHUFFLES static inline uint8_t *shuffleEncodeFour( uint8_t *dest, __m128i chars )
{
    const __m128i two = _mm_cmpgt_epi32( chars, _mm_set1_epi32( 0x7F ) ); // bytes or more, and so on
    const __m128i three = _mm_cmpgt_epi32( chars, _mm_set1_epi32( 0x7FF ) );
    const __m128i four = _mm_cmpgt_epi32( chars, _mm_set1_epi32( 0xFFFF ) );
    const __m128i tooLarge = _mm_cmpgt_epi32( chars, _mm_set1_epi32( 0x10FFFF ) );
    if ( _mm_movemask_ps( _mm_castsi128_ps( _mm_or_si128( chars, tooLarge ) ) ) ) { // or, signed, negative
        return nullptr;
    }
    __m128i bits = _mm_srli_epi32( chars, 18 );
    bits = _mm_or_si128( bits, _mm_and_si128( _mm_srli_epi32( chars, 4 ), _mm_set1_epi32( 0x3F00 ) ) );
    bits = _mm_or_si128( bits, _mm_and_si128( _mm_slli_epi32( chars, 10 ), _mm_set1_epi32( 0x3F0000 ) ) );
    bits = _mm_or_si128( bits, _mm_and_si128( _mm_slli_epi32( chars, 24 ), _mm_set1_epi32( 0x3F000000 ) ) );
    __m128i marks = _mm_set1_epi32( (int)0x80C00000 );
    marks = _mm_xor_si128( marks, shuffleWhere( three, 0x80C00000 ^ 0x8080E000 ) );
    marks = _mm_xor_si128( marks, shuffleWhere( four, 0x8080E000 ^ 0x808080F0 ) );
    const __m128i sequences = _mm_or_si128( _mm_and_si128( two, _mm_or_si128( bits, marks ) ),
                                            _mm_andnot_si128( two, _mm_slli_epi32( chars, 24 ) ) );
    const __m128i lower = _mm_xor_si128( _mm_xor_si128( two, three ), four );
    const int lengths = _mm_movemask_ps( _mm_castsi128_ps( lower ) ) | _mm_movemask_ps( _mm_castsi128_ps( three ) )
                                                                           << 4;
    const __m128i order = _mm_loadu_si128( (const __m128i *)ENCODE.order[ lengths ] );
    _mm_storeu_si128( (__m128i *)dest, _mm_shuffle_epi8( sequences, order ) );
    return dest + ENCODE.bytes[ lengths ];
}

// Tells whether all lanes are below a power of two.
SHUFFLES static inline bool shuffleAllBelow( __m128i lanes, int power )
{
    const __m128i above = _mm_and_si128( lanes, _mm_set1_epi32( -power ) );
    return _mm_movemask_epi8( _mm_cmpeq_epi32( above, _mm_setzero_si128() ) ) == 0xFFFF;
}
SHUFFLES uint8_t *zu___CharsUtf8ShuffleEncode( uint8_t *dest, const uint8_t *destEnd, const ZU_CHAR **src,
                                               const ZU_CHAR *end )
{
    static constexpr ZU_INT STEP = 16; // characters
    const ZU_CHAR *pos = *src;
    while ( end - pos >= STEP && destEnd - dest >= 4 * STEP ) {
        __m128i chars[ 4 ];
        for ( int i = 0; i < 4; i++ ) {
            chars[ i ] = _mm_loadu_si128( (const __m128i *)pos + i );
        }
        const __m128i all =
            _mm_or_si128( _mm_or_si128( chars[ 0 ], chars[ 1 ] ), _mm_or_si128( chars[ 2 ], chars[ 3 ] ) );
        if ( shuffleAllBelow( all, 0x800 ) ) {
            const __m128i low = _mm_packs_epi32( chars[ 0 ], chars[ 1 ] );
            const __m128i high = _mm_packs_epi32( chars[ 2 ], chars[ 3 ] );
            pos += STEP;
            if ( shuffleAllBelow( all, 0x80 ) ) {
                _mm_storeu_si128( (__m128i *)dest, _mm_packus_epi16( low, high ) );
                dest += STEP;
            } else {
                dest = shuffleEncodeEight( shuffleEncodeEight( dest, low ), high );
            }
            continue;
        }
        for ( int i = 0; i < 4; i++ ) {
            uint8_t *next = shuffleEncodeFour( dest, chars[ i ] );
            if ( !next ) {
                *src = pos;
                return dest;
            }
            dest = next;
            pos += 4;
        }
    }
    *src = pos;
    return dest;
}

#else

bool zu___CharsUtf8CanShuffle( void )
{
    return false;
}
ZU_INT zu___CharsUtf8ShuffleDecode( ZU_CHAR *, ZU_INT, const uint8_t **, const uint8_t * )
{
    return 0;
}
ZU_INT zu___CharsUtf8ShuffleCount( const uint8_t **, const uint8_t * )
{
    return 0;
}
void zu___CharsUtf8ShuffleCheck( const uint8_t **, const uint8_t *, ZU_INT * )
{
}
uint8_t *zu___CharsUtf8ShuffleEncode( uint8_t *dest, const uint8_t *, const ZU_CHAR **, const ZU_CHAR * )
{
    return dest;
}

#endif
