// Text is read into a cache.  One run over each piece notes the few places that could end a line, without a branch for
// any of them, since where lines end is not foreseen; what a place does depends on the flags and is decided when a line
// comes to it.  A carriage return at the end of the cache is the one place where what follows has to be read first: it
// stays in the cache, ahead of the next piece.

#include "zu/io/zu_nlf_line_source.h"

#include "zu/base/zu_string_internal.h"
#include "zu/io/zu_string_char_source.h"
#include "zu/runtime/zu_module.h"
#include "zu/sys/zu_char_names.h"

#include <cstring>

static constexpr ZU_INT CACHE_CHARS = 1024;
static constexpr ZU_NLF_FLAGS BEYOND_CONTROLS = ZU_NLF_FLAG_NEL | ZU_NLF_FLAG_LS | ZU_NLF_FLAG_PS;

struct ZU_NLF_LINE_SOURCE {
    ZU_OBJ obj;
    ZU_CHAR_SOURCE *src;
    ZU_NLF_FLAGS nlfFlags;
    ZU_INT cacheLength; // code points in the cache
    ZU_INT cachePos;    // of the first that has not gone into a line, 0 <= cachePos <= cacheLength
    ZU_BOOL sourceEnd;  // the last refill was short
    ZU_BOOL cacheOk;    // it holds code points and nothing else
    ZU_CHAR cache[ CACHE_CHARS ];
    uint64_t ends[ CACHE_CHARS / 64 ]; // a bit for each code point of the cache that could end a line, lowest bit first
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

// Four code points side by side; the compiler has instructions for these on all processors that count.
typedef int32_t NLF_LANES __attribute__( ( vector_size( 16 ) ) );

// Returns a bit for each of 32 code points that could end a line: the controls up to U+000D, of which the others are
// rare, and with ALL the newline functions beyond them.  Unites the bits of all with `*united`.
template <bool ALL>
static inline uint32_t nlfFindEnds( const ZU_CHAR *chars, NLF_LANES *united )
{
    NLF_LANES found = {};
    NLF_LANES laneBits = { 1, 2, 4, 8 };
    for ( const ZU_CHAR *end = chars + 32; chars < end; chars += 4 ) {
        NLF_LANES lanes;
        memcpy( &lanes, chars, sizeof lanes );
        NLF_LANES could = lanes < ZU_CHAR_CARRIAGE_RETURN + 1;
        if ( ALL ) {
            could |= ( lanes == ZU_CHAR_NEXT_LINE ) | ( ( lanes | 1 ) == ZU_CHAR_PARAGRAPH_SEPARATOR );
        }
        found |= could & laneBits;
        laneBits <<= 4;
        *united |= lanes;
    }
    return (uint32_t)( found[ 0 ] | found[ 1 ] | found[ 2 ] | found[ 3 ] );
}

// Notes where lines could end in the cache, and whether it holds code points.
template <bool ALL>
static void nlfLineSourceNoteEnds( ZU_NLF_LINE_SOURCE *nls )
{
    NLF_LANES united = {};
    ZU_INT i = nls->cacheLength;
    for ( ; i % 64 != 0; i++ ) {
        nls->cache[ i ] = ZU_CHAR_SPACE; // fills the last word
    }
    for ( ZU_INT pos = 0; pos < i; pos += 64 ) {
        uint64_t low = nlfFindEnds<ALL>( nls->cache + pos, &united );
        uint64_t high = nlfFindEnds<ALL>( nls->cache + pos + 32, &united );
        nls->ends[ pos / 64 ] = low | high << 32;
    }
    // A bit that no element has is in no union of elements.
    ZU_CHAR all = (ZU_CHAR)( united[ 0 ] | united[ 1 ] | united[ 2 ] | united[ 3 ] );
    nls->cacheOk = ZU_CHAR_OK( all ) || zuCharsAllOk( nls->cache, nls->cacheLength );
}

// Returns the next place from `i` on that could end a line, the length of the cache if there is none.
static inline ZU_INT nlfLineSourceNextEnd( ZU_NLF_LINE_SOURCE *nls, ZU_INT i )
{
    if ( i < nls->cacheLength ) {
        ZU_INT word = i / 64;
        uint64_t bits = nls->ends[ word ] >> ( i % 64 );
        if ( bits != 0 ) {
            return i + __builtin_ctzll( bits );
        }
        for ( word++; word * 64 < nls->cacheLength; word++ ) {
            if ( nls->ends[ word ] != 0 ) {
                return word * 64 + __builtin_ctzll( nls->ends[ word ] );
            }
        }
    }
    return nls->cacheLength;
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
    for ( ZU_INT i = nls->cachePos; ( i = nlfLineSourceNextEnd( nls, i ) ) < length; i++ ) {
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
    nls->nlfFlags &BEYOND_CONTROLS ? nlfLineSourceNoteEnds<true>( nls ) : nlfLineSourceNoteEnds<false>( nls );
}

// Appends `count` elements of the cache to the line, which is private; makes it if it is null.
static void nlfLineSourceAppend( ZU_NLF_LINE_SOURCE *nls, ZU_STRING **zus, ZU_INT count )
{
    const ZU_CHAR *chars = nls->cache + nls->cachePos;
    if ( !*zus ) {
        *zus = zu___StringCreateEmpty();
    }
    if ( nls->cacheOk ) {
        memcpy( zu___StringMakeRoom( *zus, ( *zus )->length, count ), chars, (size_t)count * sizeof( ZU_CHAR ) );
    } else {
        zuStringAppendChars( zus, chars, count ); // aborts if it is this line that has what is no code point
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
