// A branch that is not foreseen costs as much as several characters, and in most languages the lengths of sequences are
// not foreseen.  Here they are looked up: where the sequences of the next 12 bytes end tells by way of a table where in
// a vector each byte goes, and then all sequences are decoded at a time.  What kinds the bytes are is found out for 64 at
// once, so that from step to step there is a shift and a look-up and no more, and which kind of step there is, whose
// branch would not be foreseen either, is decided for all of them.  The last bytes of a text are taken with 0 bytes
// behind them, so that short texts are no exception.  Encoding goes the other way: the lengths of four sequences tell how
// the bytes of four wide ones close up.
//
// The idea is that of Lemire and Muła, "Transcoding Billions of Unicode Characters per Second with SIMD Instructions",
// 2021.  As everywhere here, overlong forms and surrogates pass; whoever wants neither has the text checked first, by
// the way of Keiser and Lemire, "Validating UTF-8 In Less Than One Instruction Per Byte", 2020.

#include "zu/sys/zu_chars_utf8_shuffle_internal.h"

#if defined( __x86_64__ )

#include <algorithm>
#include <cpuid.h>
#include <cstring>
#include <tmmintrin.h>

#define SHUFFLES __attribute__( ( target( "ssse3,popcnt" ) ) )

static constexpr uint8_t NOTHING = 0x80; // in an order: a 0 byte
static constexpr ZU_INT VECTOR = 16;     // bytes

int zu___CharsUtf8CanShuffle( void )
{
    // Not __get_cpuid, which asks for the highest leaf each time: this one is there, and each question costs a virtual
    // machine some 4 us.
    unsigned eax, ebx, ecx, edx;
    __cpuid( 1, eax, ebx, ecx, edx );
    if ( !( ecx & bit_SSSE3 ) || !( ecx & bit_POPCNT ) ) {
        return 0;
    }
    return ( ecx & bit_OSXSAVE ) && zu___CharsUtf8CanWiden() ? ZU___CHARS_UTF8_WIDE : ZU___CHARS_UTF8_SHUFFLE;
}

// Vectors at the end of a text

static constexpr uint8_t LATER[ 2 * VECTOR ] = {
    0,       1,       2,       3,       4,       5,       6,       7,       8,       9,       10,
    11,      12,      13,      14,      15,      NOTHING, NOTHING, NOTHING, NOTHING, NOTHING, NOTHING,
    NOTHING, NOTHING, NOTHING, NOTHING, NOTHING, NOTHING, NOTHING, NOTHING, NOTHING, NOTHING
};

SHUFFLES static inline __m128i shuffleLoad( const void *place )
{
    return _mm_loadu_si128( (const __m128i *)place );
}
// Returns `bytes` without the first `count` of them, 16 at most, and 0 bytes behind.
SHUFFLES static inline __m128i shuffleDrop( __m128i bytes, ZU_INT count )
{
    return _mm_shuffle_epi8( bytes, shuffleLoad( LATER + count ) );
}
// Returns the bytes of a text that is shorter than a vector, behind 0 bytes.
SHUFFLES static inline __m128i shuffleLoadShort( const uint8_t *src, ZU_INT count )
{
    uint64_t first = 0, last = 0;
    if ( count >= 8 ) {
        memcpy( &first, src, 8 );
        memcpy( &last, src + count - 8, 8 );
        first = first << 4 * ( VECTOR - count ) << 4 * ( VECTOR - count ); // by 64 bits in all if there are just 8
    } else if ( count >= 4 ) {
        uint32_t halves[ 2 ];
        memcpy( &halves[ 0 ], src, 4 );
        memcpy( &halves[ 1 ], src + count - 4, 4 );
        last = (uint64_t)halves[ 1 ] << 32 | (uint64_t)halves[ 0 ] << 8 * ( 8 - count );
    } else {
        for ( ZU_INT i = 0; i < count; i++ ) {
            last = last >> 8 | (uint64_t)src[ i ] << 56;
        }
    }
    return _mm_set_epi64x( (long long)last, (long long)first );
}

// Bytes in blocks, a bit for each

static constexpr ZU_INT BLOCK = 4 * VECTOR; // bytes, and bits of a word

SHUFFLES static inline unsigned shuffleAbove( __m128i bytes, char limit )
{
    return (unsigned)_mm_movemask_epi8( _mm_cmpgt_epi8( bytes, _mm_set1_epi8( limit ) ) );
}
// Tells whether any byte is as great as `least`, unsigned.
SHUFFLES static inline bool shuffleAny( __m128i bytes, uint8_t least )
{
    const __m128i greater = _mm_max_epu8( bytes, _mm_set1_epi8( (char)least ) );
    return _mm_movemask_epi8( _mm_cmpeq_epi8( greater, bytes ) ) != 0;
}
// Returns the vector `at` so many bytes behind `pos`, where `rest` bytes are there; behind them stand 0 bytes.  `last` is
// the place of the last vector that is there.
SHUFFLES static inline __m128i shuffleLoadAt( const uint8_t *pos, ZU_INT at, ZU_INT rest, const uint8_t *last )
{
    if ( at + VECTOR <= rest ) {
        return shuffleLoad( pos + at );
    }
    return at < rest ? shuffleDrop( shuffleLoad( last ), at + VECTOR - rest ) : _mm_setzero_si128();
}
// Loops are written out here, which compilers do not do.
struct BYTES {
    __m128i a, b, c, d;

    SHUFFLES BYTES( const uint8_t *pos, ZU_INT rest, const uint8_t *last )
    {
        a = shuffleLoadAt( pos, 0 * VECTOR, rest, last );
        b = shuffleLoadAt( pos, 1 * VECTOR, rest, last );
        c = shuffleLoadAt( pos, 2 * VECTOR, rest, last );
        d = shuffleLoadAt( pos, 3 * VECTOR, rest, last );
    }
    SHUFFLES explicit BYTES( const uint8_t *pos )
        : a( shuffleLoad( pos ) ), b( shuffleLoad( pos + VECTOR ) ), c( shuffleLoad( pos + 2 * VECTOR ) ),
          d( shuffleLoad( pos + 3 * VECTOR ) )
    {
    }
    SHUFFLES static uint64_t join( unsigned a, unsigned b, unsigned c, unsigned d )
    {
        return a | (uint64_t)b << VECTOR | (uint64_t)c << 2 * VECTOR | (uint64_t)d << 3 * VECTOR;
    }
    SHUFFLES bool isAscii() const
    {
        return _mm_movemask_epi8( _mm_or_si128( _mm_or_si128( a, b ), _mm_or_si128( c, d ) ) ) == 0;
    }
    SHUFFLES uint64_t notAscii() const
    {
        return join( (unsigned)_mm_movemask_epi8( a ), (unsigned)_mm_movemask_epi8( b ),
                     (unsigned)_mm_movemask_epi8( c ), (unsigned)_mm_movemask_epi8( d ) );
    }
    SHUFFLES uint64_t above( char limit ) const
    {
        return join( shuffleAbove( a, limit ), shuffleAbove( b, limit ), shuffleAbove( c, limit ),
                     shuffleAbove( d, limit ) );
    }
    SHUFFLES __m128i greatest() const
    {
        return _mm_max_epu8( _mm_max_epu8( a, b ), _mm_max_epu8( c, d ) );
    }
};
// Signed, continuations are the lowest bytes, from -128 to -65, and the marks of longer sequences the greater.
struct KINDS {
    uint64_t starts;           // of sequences
    uint64_t leads;            // of two bytes and more
    uint64_t longLeads = 0;    // of three and more
    uint64_t longestLeads = 0; // of four
    uint64_t odd = 0;          // of what may be above U+10FFFF

    SHUFFLES explicit KINDS( const BYTES &bytes )
    {
        const uint64_t notAscii = bytes.notAscii();
        const __m128i greatest = bytes.greatest();
        starts = bytes.above( -65 );
        leads = notAscii & starts;
        if ( shuffleAny( greatest, 0xE0 ) ) {
            longLeads = notAscii & bytes.above( (char)0xDF );
            if ( shuffleAny( greatest, 0xF0 ) ) {
                longestLeads = notAscii & bytes.above( (char)0xEF );
                odd = notAscii & bytes.above( (char)0xF3 );
            }
        }
    }
    // Where sequences are broken; `ahead` are the continuations that the block ahead has left to this one.
    uint64_t bad( uint64_t ahead ) const
    {
        return ~( starts ^ ( ahead | leads << 1 | longLeads << 2 | longestLeads << 3 ) ) | odd;
    }
    // The continuations that are left to the next block.
    uint64_t left() const
    {
        return leads >> 63 | longLeads >> 62 | longestLeads >> 61;
    }
};
// Returns the first `count` bits of a word, less than all of them.
static inline uint64_t shuffleBits( ZU_INT count )
{
    return ( UINT64_C( 1 ) << count ) - 1;
}

// Decoding

// A shape is what the lengths of the first sequences are: six of up to two bytes; or, where there are longer ones, four
// of up to three, else three of up to four.  So each takes up to WINDOW bytes.
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
    struct STEP {
        uint8_t shape;
        uint8_t bytes;
        uint8_t count;
    };
    // By which of the next bytes have a continuation behind them: where no sequence has more than two bytes, and where
    // one may have
    STEP shorts[ 1 << WINDOW ] = {};
    STEP longs[ 1 << WINDOW ] = {};
    // By shape: each sequence goes to a lane, its last byte ahead.
    uint8_t order[ SHAPE_COUNT ][ VECTOR ] = {};
};
static constexpr DECODE_TABLES DECODE = [] {
    DECODE_TABLES tables;
    const SHAPES kinds[] = { THREE, FOUR, SIX }; // four take what three have
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
            DECODE_TABLES::STEP *steps = shapes.first == SIX.first ? tables.shorts : tables.longs;
            for ( int behind = 0; behind < 1 << ( WINDOW - begin ); behind++ ) {
                steps[ ~( ends | behind << begin ) & ( ( 1 << WINDOW ) - 1 ) ] = { (uint8_t)shape, (uint8_t)begin,
                                                                                   (uint8_t)shapes.count };
            }
        }
    }
    return tables;
}();

// Each stores as many code points as its name says.
SHUFFLES static inline void shuffleStoreEight( ZU_CHAR *dest, __m128i halves )
{
    const __m128i zero = _mm_setzero_si128();
    _mm_storeu_si128( (__m128i *)dest, _mm_unpacklo_epi16( halves, zero ) );
    _mm_storeu_si128( (__m128i *)dest + 1, _mm_unpackhi_epi16( halves, zero ) );
}
SHUFFLES static inline void shuffleStoreSixteen( ZU_CHAR *dest, __m128i bytes )
{
    const __m128i zero = _mm_setzero_si128();
    shuffleStoreEight( dest, _mm_unpacklo_epi8( bytes, zero ) );
    shuffleStoreEight( dest + 8, _mm_unpackhi_epi8( bytes, zero ) );
}

static constexpr ZU_INT STORED = 8;        // code points of a step at most, those that do not count among them
static constexpr unsigned TRIPLES = 0x6DB; // what four sequences of three bytes look like

struct DECODING {
    const uint8_t *pos;
    const uint8_t *last; // the place of the last vector
    ZU_CHAR *dest;
    const ZU_CHAR *destLast; // the last place with room for a step
};
// Decodes steps as long as they begin ahead of `limit` and have room; `goesOn` has a bit for each byte that a continuation
// is behind.  AT_END reads no further than the last vector; the sequences of 0 bytes behind it count as well.
template <bool LONG, bool AT_END>
SHUFFLES static inline void shuffleDecodeSteps( DECODING *decoding, uint64_t goesOn, const uint8_t *limit )
{
    const uint8_t *pos = decoding->pos;
    ZU_CHAR *dest = decoding->dest;
    while ( pos < limit && dest <= decoding->destLast ) {
        const unsigned window = goesOn & ( ( 1 << WINDOW ) - 1 );
        const DECODE_TABLES::STEP &step = ( LONG ? DECODE.longs : DECODE.shorts )[ window ];
        const uint8_t *from = AT_END ? std::min( pos, decoding->last ) : pos;
        __m128i lanes = shuffleLoad( from );
        if constexpr ( AT_END ) {
            lanes = shuffleDrop( lanes, pos - from );
        }
        lanes = _mm_shuffle_epi8( lanes, shuffleLoad( DECODE.order[ step.shape ] ) );
        if constexpr ( LONG ) {
            // Six bits of each byte, seven of the last.  A third last byte that begins a sequence has a bit too many,
            // above which stands one that a continuation has not.
            const __m128i third =
                _mm_xor_si128( lanes, _mm_srli_epi32( _mm_and_si128( lanes, _mm_set1_epi32( 0x400000 ) ), 1 ) );
            __m128i chars = _mm_and_si128( lanes, _mm_set1_epi32( 0x7F ) );
            chars = _mm_or_si128( chars, _mm_srli_epi32( _mm_and_si128( lanes, _mm_set1_epi32( 0x3F00 ) ), 2 ) );
            chars = _mm_or_si128( chars, _mm_srli_epi32( _mm_and_si128( third, _mm_set1_epi32( 0x3F0000 ) ), 4 ) );
            chars = _mm_or_si128( chars, _mm_srli_epi32( _mm_and_si128( lanes, _mm_set1_epi32( 0x7000000 ) ), 6 ) );
            _mm_storeu_si128( (__m128i *)dest, chars );
            // Chinese is foreseen to be Chinese: so the next step need not wait for the table.
            if ( window == TRIPLES ) {
                dest += FOUR.count;
                pos += WINDOW;
                goesOn >>= WINDOW;
                continue;
            }
            dest += step.count;
        } else {
            const __m128i higher = _mm_srli_epi16( _mm_and_si128( lanes, _mm_set1_epi16( 0x1F00 ) ), 2 );
            shuffleStoreEight( dest, _mm_or_si128( _mm_and_si128( lanes, _mm_set1_epi16( 0x7F ) ), higher ) );
            dest += SIX.count;
        }
        pos += step.bytes;
        goesOn >>= step.bytes;
    }
    decoding->pos = pos;
    decoding->dest = dest;
}
// Decodes from a block, of which `rest` bytes are there, and tells whether to go on behind it.
template <bool AT_END>
SHUFFLES static inline bool shuffleDecodeBlock( DECODING *decoding, const BYTES &bytes, ZU_INT rest )
{
    // Where the last byte of a block ends a sequence is not known, unless 0 bytes stand behind the text: the steps stop
    // short of it, and of what is bad.
    const DECODING begin = *decoding;
    const KINDS kinds( bytes );
    const uint64_t bad = kinds.bad( 0 );
    ZU_INT steps = rest < BLOCK ? rest : BLOCK - WINDOW;
    if ( ZU___UNLIKELY( bad ) ) {
        steps = std::min<ZU_INT>( steps, __builtin_ctzll( bad ) - WINDOW );
        if ( steps <= 0 ) {
            return false;
        }
    }
    if ( kinds.longLeads ) {
        shuffleDecodeSteps<true, AT_END>( decoding, ~kinds.starts >> 1, begin.pos + steps );
    } else {
        shuffleDecodeSteps<false, AT_END>( decoding, ~kinds.starts >> 1, begin.pos + steps );
    }
    if ( AT_END && decoding->pos >= begin.pos + rest ) { // whatever the last step has taken
        decoding->pos = begin.pos + rest;
        decoding->dest = begin.dest + __builtin_popcountll( kinds.starts & shuffleBits( rest ) );
        return false;
    }
    return !bad && decoding->pos > begin.pos;
}
// Stores a block of ASCII, of which `count` bytes are wanted, if there is room for whole vectors; tells whether.
SHUFFLES static inline bool shuffleDecodeAscii( DECODING *decoding, const BYTES &bytes, ZU_INT count )
{
    ZU_CHAR *dest = decoding->dest;
    if ( ( count + VECTOR - 1 ) / VECTOR * VECTOR > decoding->destLast + STORED - dest ) {
        return false;
    }
    shuffleStoreSixteen( dest, bytes.a );
    if ( count > VECTOR ) {
        shuffleStoreSixteen( dest + VECTOR, bytes.b );
    }
    if ( count > 2 * VECTOR ) {
        shuffleStoreSixteen( dest + 2 * VECTOR, bytes.c );
    }
    if ( count > 3 * VECTOR ) {
        shuffleStoreSixteen( dest + 3 * VECTOR, bytes.d );
    }
    decoding->pos += count;
    decoding->dest += count;
    return true;
}
SHUFFLES ZU_INT zu___CharsUtf8ShuffleDecode( ZU_CHAR *dest, ZU_INT room, const uint8_t **src, const uint8_t *end )
{
    uint8_t copy[ VECTOR ];
    if ( room < STORED ) {
        return 0;
    }
    DECODING decoding = { *src, nullptr, dest, dest + room - STORED };
    if ( const ZU_INT count = end - *src; count >= VECTOR ) {
        decoding.last = end - VECTOR;
    } else {
        _mm_storeu_si128( (__m128i *)copy, shuffleLoadShort( *src, count ) );
        decoding.pos = copy + VECTOR - count;
        decoding.last = copy;
    }
    bool more = true;
    ZU_INT rest;
    while ( more && ( rest = decoding.last + VECTOR - decoding.pos ) >= BLOCK + VECTOR ) {
        const BYTES bytes( decoding.pos );
        more = bytes.isAscii() ? shuffleDecodeAscii( &decoding, bytes, BLOCK )
                               : shuffleDecodeBlock<false>( &decoding, bytes, rest );
    }
    while ( more && ( rest = decoding.last + VECTOR - decoding.pos ) > 0 ) {
        const BYTES bytes( decoding.pos, rest, decoding.last );
        more = bytes.isAscii() ? shuffleDecodeAscii( &decoding, bytes, std::min( rest, BLOCK ) )
                               : shuffleDecodeBlock<true>( &decoding, bytes, rest );
    }
    *src = end - ( decoding.last + VECTOR - decoding.pos );
    return decoding.dest - dest;
}

// Counting needs no order: it goes from block to block, whatever sequences lie across.
SHUFFLES ZU_INT zu___CharsUtf8ShuffleCount( const uint8_t **src, const uint8_t *end )
{
    const uint8_t *pos = *src;
    uint64_t ahead = 0;
    ZU_INT length = 0;
    while ( pos < end && end - *src >= VECTOR ) {
        const ZU_INT rest = end - pos;
        const KINDS kinds( BYTES( pos, rest, end - VECTOR ) );
        if ( kinds.bad( ahead ) ) {
            break;
        }
        if ( rest < BLOCK ) {
            *src = end;
            return length + __builtin_popcountll( kinds.starts & shuffleBits( rest ) );
        }
        ahead = kinds.left();
        length += __builtin_popcountll( kinds.starts );
        pos += BLOCK;
    }
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
    const uint8_t *pos = *src;
    __m128i ahead = _mm_setzero_si128();
    __m128i starts = _mm_setzero_si128(); // two sums
    while ( end - pos >= BLOCK ) {
        __m128i bytes[ BLOCK / VECTOR ];
        for ( int i = 0; i < BLOCK / VECTOR; i++ ) {
            bytes[ i ] = _mm_loadu_si128( (const __m128i *)pos + i );
        }
        const __m128i all =
            _mm_or_si128( _mm_or_si128( bytes[ 0 ], bytes[ 1 ] ), _mm_or_si128( bytes[ 2 ], bytes[ 3 ] ) );
        // What the bytes ahead have begun goes on in the first of these.
        if ( _mm_movemask_epi8( _mm_or_si128( all, _mm_srli_si128( ahead, VECTOR - 3 ) ) ) == 0 ) {
            starts = _mm_add_epi64( starts, _mm_set_epi64x( 0, BLOCK ) );
        } else {
            __m128i faults = checkVector( bytes[ 0 ], ahead );
            __m128i ones = _mm_cmpgt_epi8( bytes[ 0 ], _mm_set1_epi8( -65 ) );
            for ( int i = 1; i < BLOCK / VECTOR; i++ ) {
                faults = _mm_or_si128( faults, checkVector( bytes[ i ], bytes[ i - 1 ] ) );
                ones = _mm_add_epi8( ones, _mm_cmpgt_epi8( bytes[ i ], _mm_set1_epi8( -65 ) ) );
            }
            if ( _mm_movemask_epi8( _mm_cmpeq_epi8( faults, _mm_setzero_si128() ) ) != 0xFFFF ) {
                break;
            }
            const __m128i sums = _mm_sub_epi8( _mm_setzero_si128(), ones );
            starts = _mm_add_epi64( starts, _mm_sad_epu8( sums, _mm_setzero_si128() ) );
        }
        ahead = bytes[ BLOCK / VECTOR - 1 ];
        pos += BLOCK;
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
        const ZU_INT left = end - pos;
        const __m128i last = end - *src >= VECTOR ? shuffleLoad( end - VECTOR ) : shuffleLoadShort( *src, left );
        const __m128i bytes = shuffleDrop( last, VECTOR - left );
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

int zu___CharsUtf8CanShuffle( void )
{
    return 0;
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
