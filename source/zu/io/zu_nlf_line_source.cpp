// Text is read into a cache.  One run over each piece lists the few places that could end a line, without a branch for
// any of them, since where lines end is not foreseen; what a place does depends on the flags and is decided when a line
// comes to it.  For the same reason the text of a line that the string has room for is copied by a fixed length.  A
// carriage return at the end of the cache is the one place where what follows has to be read first: it stays in the cache,
// ahead of the next piece.

#include "zu/io/zu_nlf_line_source.h"

#include "zu/base/zu_string_internal.h"
#include "zu/io/zu_string_char_source.h"
#include "zu/runtime/zu_module.h"
#include "zu/sys/zu_char_names.h"
#include "zu/sys/zu_chars_ascii_internal.h"

#include <cstring>

static constexpr ZU_INT CACHE_CHARS = 1024;
static constexpr ZU_INT ENDS_STEP = 4; // places that are stored together: lines are seldom shorter than 16 code points
static constexpr ZU_NLF_FLAGS BEYOND_CONTROLS = ZU_NLF_FLAG_NEL | ZU_NLF_FLAG_LS | ZU_NLF_FLAG_PS;

struct ZU_NLF_LINE_SOURCE {
    ZU_OBJ obj;
    ZU_CHAR_SOURCE *src;
    ZU_NLF_FLAGS nlfFlags;
    ZU_INT cacheLength;      // code points in the cache
    ZU_INT cachePos;         // of the first that has not gone into a line, 0 <= cachePos <= cacheLength
    ZU_BOOL sourceEnd;       // the last refill was short
    ZU_BOOL cacheOk;         // it holds code points and nothing else
    const uint16_t *nextEnd; // the first of `ends` that is not passed
    ZU_CHAR cache[ CACHE_CHARS + ZU___STRING_INLINE_CHARS ]; // and what a string of its own room takes along
    uint16_t ends[ CACHE_CHARS + ENDS_STEP ]; // places in the cache that could end a line, then its length
};

static void nlfLineSourceFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_NLF_LINE_SOURCE =
    ZU___SORT_INITIALIZER( "ZU_NLF_LINE_SOURCE", &zu___module, nlfLineSourceFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_NLF_LINE_SOURCE, zuNlfLineSource )

// Creation
ZU_NLF_LINE_SOURCE *zuNlfLineSourceCreate( ZU_CHAR_SOURCE *src, ZU_NLF_FLAGS nlfFlags )
{
    ZU_ASSERT( src );
    ZU_NLF_LINE_SOURCE *nls =
        (ZU_NLF_LINE_SOURCE *)zu___ObjCreate( sizeof( ZU_NLF_LINE_SOURCE ), &zu___sort_ZU_NLF_LINE_SOURCE );
    nls->src = zuCharSourceRetain( src );
    nls->nlfFlags = zuNlfFlagsNormalize( nlfFlags );
    nls->cacheLength = 0;
    nls->cachePos = 0;
    nls->sourceEnd = ZU_FALSE;
    nls->cacheOk = ZU_TRUE;
    nls->ends[ 0 ] = 0;
    nls->nextEnd = nls->ends;
    return nls;
}
ZU_NLF_LINE_SOURCE *zuNlfLineSourceCreateFromString( ZU_STRING *zus, ZU_NLF_FLAGS nlfFlags )
{
    ZU_ASSERT( zus );
    ZU_STRING_CHAR_SOURCE *scs = zuStringCharSourceCreate( zus );
    ZU_CHAR_SOURCE *src = zuStringCharSourceCharSource( scs );
    ZU_NLF_LINE_SOURCE *nls = zuNlfLineSourceCreate( src, nlfFlags );
    ZU_REF_RELEASE( src );
    ZU_REF_RELEASE( scs );
    return nls;
}
static void nlfLineSourceFree( ZU_OBJ *thisObj )
{
    ZU_NLF_LINE_SOURCE *nls = zuNlfLineSourceFrom( thisObj );
    ZU_ASSERT( nls );
    ZU_REF_RELEASE( nls->src );
    ZU_REF_POISON( nls->src );
}

// The function of the sources

// Returns a bit for each of 16 code points that could end a line: the controls up to U+000D, of which the others are
// rare, and with ALL the newline functions beyond them.  Unites the bits of all with `*united`.
#if defined( __SSE2__ )
template <bool ALL>
static inline unsigned nlfFindEnds( const ZU_CHAR *chars, ZU___CHARS_LANES *united )
{
    __m128i lanes[ 4 ];
    memcpy( lanes, chars, sizeof lanes );
    *united |= (ZU___CHARS_LANES)( ( lanes[ 0 ] | lanes[ 1 ] ) | ( lanes[ 2 ] | lanes[ 3 ] ) );
    // What is too large for a byte becomes 255, and what is none at all may become anything.
    const __m128i low = _mm_packs_epi32( lanes[ 0 ], lanes[ 1 ] );
    const __m128i high = _mm_packs_epi32( lanes[ 2 ], lanes[ 3 ] );
    const __m128i bytes = _mm_packus_epi16( low, high );
    __m128i could = _mm_cmpeq_epi8( _mm_min_epu8( bytes, _mm_set1_epi8( ZU_CHAR_CARRIAGE_RETURN ) ), bytes );
    if ( ALL ) {
        const __m128i one = _mm_set1_epi16( 1 );
        const __m128i separator = _mm_set1_epi16( ZU_CHAR_PARAGRAPH_SEPARATOR ); // and the one for lines ahead of it
        could = _mm_or_si128( could, _mm_cmpeq_epi8( bytes, _mm_set1_epi8( (char)ZU_CHAR_NEXT_LINE ) ) );
        could = _mm_or_si128( could, _mm_packs_epi16( _mm_cmpeq_epi16( _mm_or_si128( low, one ), separator ),
                                                      _mm_cmpeq_epi16( _mm_or_si128( high, one ), separator ) ) );
    }
    return (unsigned)_mm_movemask_epi8( could );
}
#else
template <bool ALL>
static inline unsigned nlfFindEnds( const ZU_CHAR *chars, ZU___CHARS_LANES *united )
{
    ZU___CHARS_LANES found = {};
    ZU___CHARS_LANES laneBits = { 1, 2, 4, 8 };
    for ( const ZU_CHAR *end = chars + 16; chars < end; chars += 4 ) {
        const ZU___CHARS_LANES lanes = zu___CharsLoadLanes( chars );
        ZU___CHARS_LANES could = (ZU___CHARS_LANES)( lanes < ZU_CHAR_CARRIAGE_RETURN + 1 );
        if ( ALL ) {
            could |= (ZU___CHARS_LANES)( lanes == ZU_CHAR_NEXT_LINE );
            could |= (ZU___CHARS_LANES)( ( lanes | 1 ) == ZU_CHAR_PARAGRAPH_SEPARATOR );
        }
        found |= could & laneBits;
        laneBits <<= 4;
        *united |= lanes;
    }
    return found[ 0 ] | found[ 1 ] | found[ 2 ] | found[ 3 ];
}
#endif

// Not the compiler's, which without the instruction is a call.
static inline ZU_INT nlfCountBits( uint64_t bits )
{
    bits -= bits >> 1 & UINT64_C( 0x5555555555555555 );
    bits = ( bits & UINT64_C( 0x3333333333333333 ) ) + ( bits >> 2 & UINT64_C( 0x3333333333333333 ) );
    bits = ( bits + ( bits >> 4 ) ) & UINT64_C( 0x0F0F0F0F0F0F0F0F );
    return (ZU_INT)( bits * UINT64_C( 0x0101010101010101 ) >> 56 );
}
// Stores the places of the bits, counted from `pos`, and returns where they end.  As many as a word mostly has are
// stored without a look at how many it has.
static inline uint16_t *nlfStoreEnds( uint16_t *dest, uint64_t bits, ZU_INT pos )
{
    const ZU_INT count = nlfCountBits( bits );
    ZU_INT i = 0;
    do {
        for ( ZU_INT k = 0; k < ENDS_STEP; k++ ) {
            dest[ i + k ] = (uint16_t)( pos + __builtin_ctzll( bits | UINT64_C( 1 ) << 63 ) );
            bits &= bits - 1;
        }
        i += ENDS_STEP;
    } while ( ZU___UNLIKELY( i < count ) );
    return dest + count;
}
// Lists where lines could end in the cache, and notes whether it holds code points.
template <bool ALL>
static void nlfLineSourceListEnds( ZU_NLF_LINE_SOURCE *nls )
{
    ZU___CHARS_LANES united = {};
    uint16_t *ends = nls->ends;
    ZU_INT i = nls->cacheLength;
    for ( ; i % 64 != 0; i++ ) {
        nls->cache[ i ] = ZU_CHAR_SPACE; // fills the last word
    }
    for ( ZU_INT pos = 0; pos < i; pos += 64 ) {
        uint64_t bits = 0;
        for ( ZU_INT k = 0; k < 64; k += 16 ) {
            bits |= (uint64_t)nlfFindEnds<ALL>( nls->cache + pos + k, &united ) << k;
        }
        ends = nlfStoreEnds( ends, bits, pos );
    }
    *ends = (uint16_t)nls->cacheLength;
    nls->nextEnd = nls->ends;
    // A bit that no element has is in no union of elements.
    ZU_CHAR all = united[ 0 ] | united[ 1 ] | united[ 2 ] | united[ 3 ];
    nls->cacheOk = ZU_CHAR_OK( all ) || zuCharsAllOk( nls->cache, nls->cacheLength );
}

// Returns the flag of the newline function that `ch` is, 0 if it is none.
static ZU_NLF_FLAGS nlfFlagOfChar( ZU_CHAR ch )
{
    switch ( ch ) {
    case ZU_CHAR_LINE_FEED:
        return ZU_NLF_FLAG_LF;
    case ZU_CHAR_LINE_TABULATION:
        return ZU_NLF_FLAG_VT;
    case ZU_CHAR_FORM_FEED:
        return ZU_NLF_FLAG_FF;
    case ZU_CHAR_CARRIAGE_RETURN:
        return ZU_NLF_FLAG_CR;
    case ZU_CHAR_NEXT_LINE:
        return ZU_NLF_FLAG_NEL;
    case ZU_CHAR_LINE_SEPARATOR:
        return ZU_NLF_FLAG_LS;
    case ZU_CHAR_PARAGRAPH_SEPARATOR:
        return ZU_NLF_FLAG_PS;
    default:
        return 0;
    }
}

// Looks for the end of the line that begins at cachePos.  Returns where its text ends in the cache, and stores the
// length of the newline function there: 0 if the cache does not have it, or cannot tell.
static ZU_INT nlfLineSourceFindEnd( ZU_NLF_LINE_SOURCE *nls, ZU_INT *nlfLength )
{
    const ZU_CHAR *cache = nls->cache;
    ZU_INT length = nls->cacheLength;
    *nlfLength = 0;
    while ( *nls->nextEnd < length ) {
        ZU_INT i = *nls->nextEnd++;
        if ( i < nls->cachePos ) {
            continue; // the line feed of a pair
        }
        ZU_NLF_FLAGS flag = nlfFlagOfChar( cache[ i ] );
        if ( flag == ZU_NLF_FLAG_CR && nls->nlfFlags & ZU_NLF_FLAG_CRLF ) {
            if ( i + 1 < length && cache[ i + 1 ] == ZU_CHAR_LINE_FEED ) {
                *nlfLength = 2;
                return i;
            }
            if ( i + 1 == length && !nls->sourceEnd ) {
                return i;
            }
        }
        if ( nls->nlfFlags & flag ) {
            *nlfLength = 1;
            return i;
        }
    }
    return length;
}

// Reads the next piece, behind `kept` code points that stay at the front of the cache.
static void nlfLineSourceRefill( ZU_NLF_LINE_SOURCE *nls, ZU_INT kept )
{
    nls->cachePos = 0;
    nls->cacheLength = kept + zuCharSourceReadChars( nls->src, nls->cache + kept, CACHE_CHARS - kept );
    if ( nls->cacheLength < CACHE_CHARS ) {
        nls->sourceEnd = ZU_TRUE;
    }
    if ( nls->nlfFlags & BEYOND_CONTROLS ) {
        nlfLineSourceListEnds<true>( nls );
    } else {
        nlfLineSourceListEnds<false>( nls );
    }
}

// Appends `count` elements of the cache to the line, which is private; makes it if it is null.
static void nlfLineSourceAppend( ZU_NLF_LINE_SOURCE *nls, ZU_STRING **zus, ZU_INT count )
{
    const ZU_CHAR *chars = nls->cache + nls->cachePos;
    if ( ZU___UNLIKELY( !nls->cacheOk ) ) {
        *zus = *zus ? *zus : zuStringCreate();
        zuStringAppendChars( zus, chars, count ); // aborts if it is this line that has what is no code point
    } else if ( *zus ) {
        memcpy( zu___StringMakeRoom( *zus, ( *zus )->length, count ), chars, (size_t)count * sizeof( ZU_CHAR ) );
    } else {
        *zus = zu___StringCreateOf( chars, count );
    }
}

static ZU_BOOL nlfLineSourceRead( ZU_OBJ *closure, ZU_STRING **zus )
{
    ZU_NLF_LINE_SOURCE *nls = zuNlfLineSourceFrom( closure );
    ZU_ASSERT( nls );
    ZU_ASSERT( zus );
    ZU_ASSERT( !*zus );
    ZU_NLF_LINE_SOURCE *held = nullptr; // once the backend has been called, which may release the streams above it
    ZU_BOOL ok = ZU_TRUE;
    for ( ;; ) {
        if ( nls->cachePos == nls->cacheLength ) {
            if ( nls->sourceEnd ) {
                ok = !zuCharSourceError( nls->src );
                break;
            }
            held = held ? held : zuNlfLineSourceRetain( nls );
            nlfLineSourceRefill( nls, 0 );
        } else if ( nls->nlfFlags & ZU_NLF_FLAG_CRLF && nls->cachePos == nls->cacheLength - 1 &&
                    nls->cache[ nls->cachePos ] == ZU_CHAR_CARRIAGE_RETURN ) {
            held = held ? held : zuNlfLineSourceRetain( nls );
            nls->cache[ 0 ] = ZU_CHAR_CARRIAGE_RETURN;
            nlfLineSourceRefill( nls, 1 );
        }
        ZU_INT nlfLength;
        ZU_INT textEnd = nlfLineSourceFindEnd( nls, &nlfLength );
        ZU_INT count = textEnd - nls->cachePos;
        if ( count > 0 ) {
            nlfLineSourceAppend( nls, zus, count );
        }
        nls->cachePos = textEnd + nlfLength;
        if ( nlfLength > 0 ) {
            if ( !*zus ) {
                *zus = zuStringCreate();
            }
            break;
        }
    }
    ZU_REF_RELEASE_OPT( held );
    return ok;
}

ZU_LINE_SOURCE *zuNlfLineSourceLineSource( ZU_NLF_LINE_SOURCE *nls )
{
    ZU_ASSERT( nls );
    return zu___LineSourceCreate( nlfLineSourceRead, zuNlfLineSourceObj( nls ) );
}
ZU_NLF_FLAGS zuNlfLineSourceNlfFlags( ZU_NLF_LINE_SOURCE *nls )
{
    ZU_ASSERT( nls );
    return nls->nlfFlags;
}
