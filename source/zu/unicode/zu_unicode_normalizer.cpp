// The text passes three stages: decomposing, ordering of marks, composing.  Characters come to rest in two places: those
// that marks may still follow wait as elements in `pending`, and behind the stages there is the string `reorder`, or
// `compose`, which holds the output.
//
// Nearly all text is in the form already, or has a few characters that are not.  Two ways lead through the stages:
//
// - One character at a time, with the state between characters in the object.  It takes what may be continued by the
//   next write, and all that is long or strange.
// - Whole stretches of an array that begin and end at a boundary, a character that never interacts with those ahead of
//   it.  There characters that the quick check of UAX #15 passes are copied as they are, and the few others go through
//   the stages in an array on the stack, from the boundary ahead to the one behind them.
//
// As nothing interacts across a boundary, the result is the same.  An array leaves its last two stretches to the first
// way, so that what can be read afterwards is also what it would be after one character at a time: two, as a C form
// holds back two starters.

#include "zu/unicode/zu_unicode_normalizer.h"

#include "zu/base/zu_string_internal.h"
#include "zu/runtime/zu_module.h"
#include "zu/sys/zu_mem.h"
#include "zu/unicode/zu_unicode_db_internal.h"
#include "zu/unicode/zu_unicode_normalizer_internal.h"
#include "zu/unicode/zu_unicode_properties.h"

#include <algorithm>
#include <cstring>

static constexpr ZU_INT RUN_MAX = 4096;         // characters that wait for a starter, in either stage
static constexpr ZU_INT DECOMPOSITION_MAX = 18; // elements: U+FDFA
static constexpr ZU_INT INLINE_ELEMENTS = 64;   // more than any text has that means something
static constexpr ZU_INT INSERTION_MAX = 16;     // elements; longer runs are sorted by counting
static constexpr ZU_INT BULK_MIN = 8;           // characters; fewer are not worth the search for boundaries
static constexpr uint32_t RANKS = 64;
static constexpr uint32_t RANK_BEGIN = RANKS - 1; // above all classes: nothing to compose with

// From this character on there may be some that do not pass the quick check on sight, by form.
static constexpr ZU_CHAR FIRST_TO_CHECK[] = { 0x300, 0xA0, 0xC0, 0xA0 };

struct ZU_UNICODE_NORMALIZER {
    ZU_OBJ obj;
    ZU_UNICODE_NORMAL_FORM normalForm;
    ZU_CHAR highSurrogate; // waits for its partner; 0: none

    // The last starter and what is behind it, or marks alone.  `starter` is not 0 only within the writing of a character.
    ZU_INT pendingLength;
    ZU_INT pendingCapacity; // the array on the heap is twice as long, with room for sorting behind
    ZU_INT starter;         // where the last starter stands in `pending`; -1: there is none
    bool unsorted;          // `pending` may have marks out of order
    uint32_t *pending;      // inlinePending, or an array of zuMemAllocN
    uint32_t inlinePending[ INLINE_ELEMENTS ];

    ZU_STRING *reorder;  // the output of the D forms
    ZU_STRING *compose;  // the output of the C forms, whose part from composeStart on may still compose; else null
    ZU_INT composeStart; // where the current starter stands in `compose`, if it is below its length
    ZU_CHAR lastStarter; // the character there; 0 at the beginning
    uint32_t lastRank;   // the highest rank behind the starter
};

static void normalizerFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_UNICODE_NORMALIZER =
    ZU___SORT_INITIALIZER( "ZU_UNICODE_NORMALIZER", &zu___module, normalizerFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_UNICODE_NORMALIZER, zuUnicodeNormalizer )

// Creation
ZU_UNICODE_NORMALIZER *zuUnicodeNormalizerCreate( ZU_UNICODE_NORMAL_FORM normalForm )
{
    ZU_ASSERT( ZU_UNICODE_NORMAL_FORM_OK( normalForm ) );
    bool composes = normalForm == ZU_UNICODE_NORMAL_FORM_NFC || normalForm == ZU_UNICODE_NORMAL_FORM_NFKC;
    ZU_UNICODE_NORMALIZER *norm =
        (ZU_UNICODE_NORMALIZER *)zu___ObjCreate( sizeof( ZU_UNICODE_NORMALIZER ), &zu___sort_ZU_UNICODE_NORMALIZER );
    norm->normalForm = normalForm;
    norm->highSurrogate = 0;
    norm->pendingLength = 0;
    norm->pendingCapacity = INLINE_ELEMENTS;
    norm->starter = -1;
    norm->unsorted = false;
    norm->pending = norm->inlinePending;
    norm->reorder = zuStringCreate();
    norm->compose = composes ? zuStringCreate() : nullptr;
    norm->composeStart = 0;
    norm->lastStarter = 0;
    norm->lastRank = RANK_BEGIN;
    return norm;
}
static void normalizerFree( ZU_OBJ *thisObj )
{
    ZU_UNICODE_NORMALIZER *norm = zuUnicodeNormalizerFrom( thisObj );
    ZU_ASSERT( norm );
    if ( norm->pending != norm->inlinePending ) {
        zuMemFree( norm->pending );
    }
    ZU_REF_RELEASE( norm->reorder );
    ZU_REF_RELEASE_OPT( norm->compose );
    ZU_REF_POISON( norm->pending );
    ZU_REF_POISON( norm->reorder );
    ZU_REF_POISON( norm->compose );
}

// Table entries, which zu_unicode_db_internal.h describes

// The bits of the entries that matter in one form.
struct NORMAL_FORM_BITS {
    uint32_t work;
    uint32_t inner;
    uint32_t decomposes; // works in the D form beside it
    bool compatible;

    explicit NORMAL_FORM_BITS( ZU_UNICODE_NORMAL_FORM form )
        : work( ZU___UNICODE_NORM_WORK << form ), inner( ZU___UNICODE_NORM_INNER << form ),
          decomposes( ZU___UNICODE_NORM_WORK << ( form | ZU_UNICODE_NORMAL_FORM_NFD ) ),
          compatible( form == ZU_UNICODE_NORMAL_FORM_NFKC || form == ZU_UNICODE_NORMAL_FORM_NFKD )
    {
    }
};
static_assert( ( ZU_UNICODE_NORMAL_FORM_NFC | ZU_UNICODE_NORMAL_FORM_NFD ) == ZU_UNICODE_NORMAL_FORM_NFD );
static_assert( ( ZU_UNICODE_NORMAL_FORM_NFKC | ZU_UNICODE_NORMAL_FORM_NFD ) == ZU_UNICODE_NORMAL_FORM_NFKD );

// The entry of surrogates, and of values that are no code points: in all forms they work and are inner.
static constexpr uint32_t ENTRY_STRANGE = ZU___UNICODE_NORM_WORK * 0xF | ZU___UNICODE_NORM_INNER * 0xF;

static inline uint32_t entryGet( ZU_CHAR ch )
{
    return ZU___LIKELY( ZU_CHAR_OK( ch ) ) ? ZU___UNICODE_TABLE_FETCH( Norm, ch ) : ENTRY_STRANGE;
}
static inline bool charIsStrange( ZU_CHAR ch, uint32_t entry )
{
    return ZU___UNLIKELY( ( entry & ENTRY_STRANGE ) == ENTRY_STRANGE ) && ( ( ch >> 11 ) == 0x1B || !ZU_CHAR_OK( ch ) );
}

static inline uint32_t elementMake( ZU_CHAR ch, uint32_t entry )
{
    constexpr int SECOND_SHIFT = 6;
    static_assert( ZU___UNICODE_NORM_SECOND << SECOND_SHIFT == ZU___UNICODE_ELEMENT_SECOND );
    return ch | ( entry & ZU___UNICODE_NORM_SECOND ) << SECOND_SHIFT | entry << ZU___UNICODE_ELEMENT_RANK_SHIFT;
}
static inline uint32_t elementRank( uint32_t element )
{
    return element >> ZU___UNICODE_ELEMENT_RANK_SHIFT;
}
static inline ZU_CHAR elementChar( uint32_t element )
{
    return element & ZU___UNICODE_ELEMENT_CHAR;
}

// Decomposing

// Hangul syllables are computed (Unicode Standard, section 3.12).
static constexpr ZU_CHAR HANGUL_S = 0xAC00;
static constexpr ZU_CHAR HANGUL_L = 0x1100;
static constexpr ZU_CHAR HANGUL_V = 0x1161;
static constexpr ZU_CHAR HANGUL_T = 0x11A7; // one ahead of the first: 0 stands for a syllable without
static constexpr ZU_CHAR HANGUL_LS = 19;
static constexpr ZU_CHAR HANGUL_VS = 21;
static constexpr ZU_CHAR HANGUL_TS = 28;
static constexpr ZU_CHAR HANGUL_SYLLABLES = HANGUL_LS * HANGUL_VS * HANGUL_TS;

// Hands the elements of what `ch` decomposes to in the form to `put`, in order.
template <typename PUT>
static inline __attribute__( ( always_inline ) ) void charDecompose( ZU_CHAR ch, uint32_t entry,
                                                                     const NORMAL_FORM_BITS &bits, PUT put )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    if ( !( entry & bits.decomposes ) ) {
        put( elementMake( ch, entry ) );
    } else if ( entry & ZU___UNICODE_NORM_HANGUL ) {
        ZU_CHAR syllable = ch - HANGUL_S;
        ZU_CHAR t = syllable % HANGUL_TS;
        put( HANGUL_L + syllable / ( HANGUL_VS * HANGUL_TS ) );
        put( ( HANGUL_V + syllable / HANGUL_TS % HANGUL_VS ) | ZU___UNICODE_ELEMENT_SECOND );
        if ( t ) {
            put( ( HANGUL_T + t ) | ZU___UNICODE_ELEMENT_SECOND );
        }
    } else {
        const uint32_t *element =
            zu___unicodeNormRuns + ( entry >> ZU___UNICODE_NORM_PLACE_SHIFT & ZU___UNICODE_NORM_PLACE );
        if ( ( entry & ZU___UNICODE_NORM_BOTH ) && bits.compatible ) {
            while ( !( *element++ & ZU___UNICODE_ELEMENT_LAST ) ) {}
        }
        uint32_t last;
        do {
            last = *element & ZU___UNICODE_ELEMENT_LAST;
            put( *element++ & ~ZU___UNICODE_ELEMENT_LAST );
        } while ( !last );
    }
}

// Ordering: a stable sort of each run of marks by their classes

// Inserts `element` behind `length` others that are in order.  A starter never moves, and nothing moves over one.
static inline void elementsInsert( uint32_t *elements, ZU_INT length, uint32_t element )
{
    uint32_t rank = elementRank( element );
    if ( rank ) {
        for ( ; length > 0 && elementRank( elements[ length - 1 ] ) > rank; length-- ) {
            elements[ length ] = elements[ length - 1 ];
        }
    }
    elements[ length ] = element;
}

// Sorts one run of marks by counting, for which `scratch` has room.
static void elementsSortRun( uint32_t *run, ZU_INT length, uint32_t *scratch )
{
    if ( length <= INSERTION_MAX ) {
        for ( ZU_INT i = 1; i < length; i++ ) {
            elementsInsert( run, i, run[ i ] );
        }
        return;
    }
    uint32_t places[ RANKS ] = {}; // first how many, then where the next one of a rank goes
    for ( ZU_INT i = 0; i < length; i++ ) {
        places[ elementRank( run[ i ] ) ]++;
    }
    uint32_t place = 0;
    for ( uint32_t &each : places ) {
        uint32_t count = each;
        each = place;
        place += count;
    }
    for ( ZU_INT i = 0; i < length; i++ ) {
        scratch[ places[ elementRank( run[ i ] ) ]++ ] = run[ i ];
    }
    memcpy( run, scratch, (size_t)length * sizeof( uint32_t ) );
}
static void elementsSort( uint32_t *elements, ZU_INT length, uint32_t *scratch )
{
    for ( ZU_INT i = 0; i < length; ) {
        ZU_INT begin = i;
        while ( i < length && elementRank( elements[ i ] ) ) {
            i++;
        }
        if ( i - begin > 1 ) {
            elementsSortRun( elements + begin, i - begin, scratch );
        }
        while ( i < length && !elementRank( elements[ i ] ) ) {
            i++;
        }
    }
}

// Composing
struct COMPOSER {
    ZU_CHAR *cursor;  // behind the text
    ZU_CHAR *starter; // the current starter; at the cursor: there is none
    ZU_CHAR lastStarter;
    uint32_t lastRank;
};

// Returns what a starter and a second character make, 0 if they do not compose.
static inline ZU_CHAR pairCompose( ZU_CHAR starter, ZU_CHAR ch )
{
    if ( ch - HANGUL_V < HANGUL_VS && starter - HANGUL_L < HANGUL_LS ) {
        return HANGUL_S + ( ( starter - HANGUL_L ) * HANGUL_VS + ( ch - HANGUL_V ) ) * HANGUL_TS;
    }
    // U+11A7 is within the range, and vanishes in the syllable.
    if ( ch - HANGUL_T < HANGUL_TS && starter - HANGUL_S < HANGUL_SYLLABLES &&
         ( starter - HANGUL_S ) % HANGUL_TS == 0 ) {
        return starter + ( ch - HANGUL_T );
    }
    ZU_CHAR composeTo = zu___UnicodeCompDbFetch( starter, ch );
    if ( composeTo ) {
        ZU_ASSERT( zuUnicodeHasCccvSpacing( composeTo ) );
    }
    return composeTo;
}

// Composes an element with the current starter or appends it, for which there is room.
static inline void composerPut( COMPOSER &composer, uint32_t element )
{
    uint32_t rank = elementRank( element );
    ZU_CHAR ch = elementChar( element );
    if ( ( element & ZU___UNICODE_ELEMENT_SECOND ) && composer.starter < composer.cursor &&
         ( composer.lastRank < rank || ( composer.lastRank | rank ) == 0 ) ) {
        ZU_CHAR composeTo = pairCompose( composer.lastStarter, ch );
        if ( composeTo ) {
            *composer.starter = composeTo;
            composer.lastStarter = composeTo;
            return;
        }
    }
    if ( rank == 0 ) {
        composer.starter = composer.cursor;
        composer.lastStarter = ch;
        composer.lastRank = 0;
    } else if ( rank > composer.lastRank ) {
        composer.lastRank = rank;
    }
    *composer.cursor++ = ch;
}

// Output
static inline ZU_STRING **normalizerOutput( ZU_UNICODE_NORMALIZER *norm )
{
    return norm->compose ? &norm->compose : &norm->reorder;
}

// Returns the end of the output, with room for `count` characters and for half as many as there are.
static ZU_CHAR *normalizerGrowOutput( ZU_UNICODE_NORMALIZER *norm, ZU_INT count )
{
    ZU_STRING **output = normalizerOutput( norm );
    if ( ZU_REF_RETAIN_COUNT( *output ) > 1 ) { // the shared empty string
        ZU_REF_RELEASE( *output );
        *output = zu___StringCreateEmpty();
    }
    ZU_STRING *own = *output;
    if ( own->bspace < count ) {
        ZU_INT room = std::max( count, own->length / 2 );
        zu___StringMakeRoom( own, own->length, room );
        own->length -= room;
        own->bspace += room;
    }
    return own->chars + own->fspace + own->length;
}
static inline ZU_CHAR *normalizerReserve( ZU_UNICODE_NORMALIZER *norm, ZU_INT count )
{
    ZU_STRING *output = *normalizerOutput( norm );
    if ( ZU___UNLIKELY( output->length == 0 || output->bspace < count ) ) {
        return normalizerGrowOutput( norm, count );
    }
    return output->chars + output->fspace + output->length;
}
// Takes over what has been written behind the output.
static inline void normalizerSetEnd( ZU_UNICODE_NORMALIZER *norm, const ZU_CHAR *end )
{
    ZU_STRING *output = *normalizerOutput( norm );
    ZU_INT count = end - ( output->chars + output->fspace + output->length );
    output->length += count;
    output->bspace -= count;
}

// One character at a time

// Sends the first `count` elements that wait through the other stages.
static void normalizerSettle( ZU_UNICODE_NORMALIZER *norm, ZU_INT count )
{
    if ( norm->unsorted ) {
        uint32_t scratch[ INLINE_ELEMENTS ];
        elementsSort( norm->pending, count,
                      norm->pending == norm->inlinePending ? scratch : norm->pending + norm->pendingCapacity );
        norm->unsorted = false;
    }
    ZU_CHAR *cursor = normalizerReserve( norm, count );
    if ( norm->compose ) {
        ZU_CHAR *text = cursor - norm->compose->length;
        COMPOSER composer = { cursor, text + norm->composeStart, norm->lastStarter, norm->lastRank };
        for ( ZU_INT i = 0; i < count; i++ ) {
            composerPut( composer, norm->pending[ i ] );
        }
        normalizerSetEnd( norm, composer.cursor );
        bool full = composer.cursor - composer.starter >= RUN_MAX;
        norm->composeStart = ( full ? composer.cursor : composer.starter ) - text;
        norm->lastStarter = composer.lastStarter;
        norm->lastRank = composer.lastRank;
    } else {
        for ( ZU_INT i = 0; i < count; i++ ) {
            cursor[ i ] = elementChar( norm->pending[ i ] );
        }
        normalizerSetEnd( norm, cursor + count );
    }
    norm->pendingLength -= count;
    if ( norm->pendingLength > 0 ) {
        memmove( norm->pending, norm->pending + count, (size_t)norm->pendingLength * sizeof( uint32_t ) );
    }
    norm->starter = norm->pendingLength > 0 ? 0 : -1;
}

static void normalizerGrowPending( ZU_UNICODE_NORMALIZER *norm )
{
    constexpr ZU_INT CAPACITY = RUN_MAX + DECOMPOSITION_MAX;
    uint32_t *pending = (uint32_t *)zuMemAllocN( 2 * CAPACITY, sizeof( uint32_t ) );
    memcpy( pending, norm->pending, (size_t)norm->pendingLength * sizeof( uint32_t ) );
    norm->pending = pending;
    norm->pendingCapacity = CAPACITY;
    zu___ObjDbgSetAllocationSizeN( &norm->obj, 2 * CAPACITY, sizeof( uint32_t ) );
}

// Takes a character that is not strange.
static inline void normalizerPut( ZU_UNICODE_NORMALIZER *norm, const NORMAL_FORM_BITS &bits, ZU_CHAR ch,
                                  uint32_t entry )
{
    if ( ZU___UNLIKELY( norm->pendingLength > norm->pendingCapacity - DECOMPOSITION_MAX ) ) {
        normalizerGrowPending( norm );
    }
    charDecompose( ch, entry, bits, [ norm ]( uint32_t element ) {
        ZU_INT length = norm->pendingLength;
        uint32_t rank = elementRank( element );
        if ( rank == 0 ) {
            norm->starter = length;
        } else if ( length > 0 && elementRank( norm->pending[ length - 1 ] ) > rank ) {
            norm->unsorted = true;
        }
        norm->pending[ length ] = element;
        norm->pendingLength = length + 1;
    } );
    if ( norm->starter > 0 ) {
        normalizerSettle( norm, norm->starter );
    } else if ( norm->pendingLength >= RUN_MAX ) {
        normalizerSettle( norm, norm->pendingLength );
    }
}

// Takes any value, and joins surrogates.
static inline void normalizerPutAny( ZU_UNICODE_NORMALIZER *norm, const NORMAL_FORM_BITS &bits, ZU_CHAR ch )
{
    uint32_t entry = entryGet( ch );
    ZU_CHAR high = norm->highSurrogate;
    norm->highSurrogate = 0;
    if ( charIsStrange( ch, entry ) ) {
        if ( ch >> 10 == 0x36 ) {
            norm->highSurrogate = ch;
            return;
        }
        if ( ch >> 10 != 0x37 || !high ) {
            return;
        }
        ch = ( high << 10 ) + ch - 0x35FDC00;
        entry = entryGet( ch );
    }
    normalizerPut( norm, bits, ch, entry );
}

// Settles all that has been written.
static void normalizerFinish( ZU_UNICODE_NORMALIZER *norm )
{
    norm->highSurrogate = 0;
    if ( norm->pendingLength > 0 ) {
        normalizerSettle( norm, norm->pendingLength );
    }
    if ( norm->compose ) {
        norm->composeStart = norm->compose->length;
        norm->lastStarter = 0;
        norm->lastRank = RANK_BEGIN;
    }
}

// Whole stretches

// Characters that wait to be looked at or copied, and the last boundary among them.
struct STRETCH {
    const ZU_CHAR *at;
    const ZU_CHAR *end;
    const ZU_CHAR *boundary;
    uint32_t rank; // of the character ahead of `at`
};

typedef uint32_t CHARS_VECTOR __attribute__( ( vector_size( 16 ) ) );

static inline bool charsAllBelow( const ZU_CHAR *chs, ZU_CHAR limit )
{
    CHARS_VECTOR a, b;
    memcpy( &a, chs, sizeof a );
    memcpy( &b, chs + 4, sizeof b );
    CHARS_VECTOR above = ( a >= limit ) | ( b >= limit );
    uint64_t halves[ 2 ];
    memcpy( halves, &above, sizeof above );
    return ( halves[ 0 ] | halves[ 1 ] ) == 0;
}

// Moves `at` over all characters that stay as they are: that the quick check passes, with marks in order.
static inline void stretchSkip( STRETCH &stretch, uint32_t work, ZU_CHAR firstToCheck )
{
    const ZU_CHAR *at = stretch.at;
    for ( ;; ) {
        const ZU_CHAR *begin = at;
        while ( stretch.end - at >= 8 && charsAllBelow( at, firstToCheck ) ) {
            at += 8;
        }
        if ( at != begin ) {
            stretch.boundary = at - 1;
            stretch.rank = 0;
        }
        for ( int i = 0; i < 16; i++ ) {
            if ( at == stretch.end ) {
                stretch.at = at;
                return;
            }
            uint32_t entry = entryGet( *at );
            uint32_t rank = entry & ZU___UNICODE_NORM_RANK;
            if ( ( entry & work ) || ( rank && rank < stretch.rank ) ) {
                stretch.at = at;
                return;
            }
            stretch.rank = rank;
            stretch.boundary = rank ? stretch.boundary : at;
            at++;
        }
    }
}

ZU_INT zu___UnicodeNormalizerSettledLength( ZU_UNICODE_NORMAL_FORM form, const ZU_CHAR *chs, ZU_INT chsLength )
{
    STRETCH stretch = { chs, chs + chsLength, chs, 0 };
    stretchSkip( stretch, ZU___UNICODE_NORM_WORK << form, FIRST_TO_CHECK[ form ] );
    return stretch.at - chs;
}

// Returns the boundary behind `at`, or `end`.
static inline const ZU_CHAR *boundaryFind( const ZU_CHAR *at, const ZU_CHAR *end, uint32_t inner )
{
    while ( at < end && ( entryGet( *at ) & inner ) ) {
        at++;
    }
    return at;
}

// Sends the characters from the boundary on through the stages, up to the next boundary, which becomes the beginning of
// the stretch.
static void stretchNormalize( STRETCH &stretch, ZU_UNICODE_NORMALIZER *norm, const NORMAL_FORM_BITS &bits )
{
    uint32_t elements[ INSERTION_MAX + DECOMPOSITION_MAX ];
    ZU_INT length = 0;
    const ZU_CHAR *at = stretch.boundary;
    uint32_t entry = entryGet( *at );
    do {
        if ( length > INSERTION_MAX || charIsStrange( *at, entry ) ) {
            length = -1;
            break;
        }
        charDecompose( *at, entry, bits, [ & ]( uint32_t element ) { elementsInsert( elements, length++, element ); } );
        at++;
        entry = at < stretch.end ? entryGet( *at ) : 0;
    } while ( entry & bits.inner );
    if ( length >= 0 ) {
        ZU_CHAR *cursor = normalizerReserve( norm, length );
        if ( norm->compose ) {
            COMPOSER composer = { cursor, cursor, 0, RANK_BEGIN };
            for ( ZU_INT i = 0; i < length; i++ ) {
                composerPut( composer, elements[ i ] );
            }
            cursor = composer.cursor;
        } else {
            for ( ZU_INT i = 0; i < length; i++ ) {
                *cursor++ = elementChar( elements[ i ] );
            }
        }
        normalizerSetEnd( norm, cursor );
    } else {
        const ZU_CHAR *next = boundaryFind( stretch.boundary + 1, stretch.end, bits.inner );
        if ( norm->compose ) {
            norm->composeStart = norm->compose->length;
        }
        for ( at = stretch.boundary; at < next; at++ ) {
            normalizerPutAny( norm, bits, *at );
        }
        normalizerFinish( norm );
    }
    stretch.at = at;
    stretch.boundary = at;
    stretch.rank = 0;
}

// Appends the characters from `begin` to `end`.
static inline void normalizerCopy( ZU_UNICODE_NORMALIZER *norm, const ZU_CHAR *begin, const ZU_CHAR *end )
{
    ZU_INT count = end - begin;
    if ( count > 0 ) {
        ZU_CHAR *cursor = normalizerReserve( norm, count );
        memcpy( cursor, begin, (size_t)count * sizeof( ZU_CHAR ) );
        normalizerSetEnd( norm, cursor + count );
    }
}

// Takes the characters from the boundary `begin` to the boundary `end`; nothing waits.
static void normalizerPutStretches( ZU_UNICODE_NORMALIZER *norm, const NORMAL_FORM_BITS &bits, const ZU_CHAR *begin,
                                    const ZU_CHAR *end )
{
    ZU_CHAR firstToCheck = FIRST_TO_CHECK[ norm->normalForm ];
    normalizerReserve( norm, end - begin );
    STRETCH stretch = { begin, end, begin, 0 };
    ZU_INT lengthAtBoundary = 0; // of the output, if the character at the boundary has been decomposed already
    for ( const ZU_CHAR *copied = begin;; ) {
        stretchSkip( stretch, bits.work, firstToCheck );
        if ( stretch.at == end ) {
            normalizerCopy( norm, copied, end );
            break;
        }
        ZU_CHAR ch = *stretch.at;
        uint32_t entry = entryGet( ch );
        if ( !norm->compose && !( entry & bits.inner ) ) {
            // Decomposed at once: seldom does it meet a mark that goes ahead of its own.
            normalizerCopy( norm, copied, stretch.at );
            stretch.boundary = stretch.at;
            lengthAtBoundary = norm->reorder->length;
            ZU_CHAR *cursor = normalizerReserve( norm, DECOMPOSITION_MAX );
            charDecompose( ch, entry, bits, [ & ]( uint32_t element ) {
                stretch.rank = elementRank( element );
                *cursor++ = elementChar( element );
            } );
            normalizerSetEnd( norm, cursor );
            copied = ++stretch.at;
            continue;
        }
        if ( stretch.boundary < copied ) {
            norm->reorder->bspace += norm->reorder->length - lengthAtBoundary;
            norm->reorder->length = lengthAtBoundary;
        } else {
            normalizerCopy( norm, copied, stretch.boundary );
        }
        stretchNormalize( stretch, norm, bits );
        copied = stretch.at;
        if ( copied == end ) {
            break;
        }
    }
    if ( norm->compose ) {
        norm->composeStart = norm->compose->length;
    }
}

// Returns the boundary behind which there is only one more; `begin` if there is none.
static const ZU_CHAR *lastBoundaryButOne( const ZU_CHAR *begin, const ZU_CHAR *end, uint32_t inner )
{
    for ( int boundaries = 0; end > begin; ) {
        end--;
        if ( !( entryGet( *end ) & inner ) && ++boundaries == 2 ) {
            return end;
        }
    }
    return begin;
}

// Writing
void zuUnicodeNormalizerWriteChar( ZU_UNICODE_NORMALIZER *norm, ZU_CHAR ch )
{
    ZU_ASSERT( norm );
    normalizerPutAny( norm, NORMAL_FORM_BITS( norm->normalForm ), ch );
}
void zuUnicodeNormalizerWriteChars( ZU_UNICODE_NORMALIZER *norm, const ZU_CHAR *chs, ZU_INT chsLength )
{
    ZU_ASSERT( norm );
    ZU_ASSERT( chsLength >= 0 );
    ZU_ASSERT( chs || chsLength == 0 );
    NORMAL_FORM_BITS bits( norm->normalForm );
    const ZU_CHAR *at = chs;
    const ZU_CHAR *end = chs + chsLength;
    if ( chsLength >= BULK_MIN ) {
        const ZU_CHAR *settled = lastBoundaryButOne( at, end, bits.inner );
        while ( at < settled && ( entryGet( *at ) & bits.inner ) ) {
            normalizerPutAny( norm, bits, *at++ );
        }
        if ( at < settled ) {
            normalizerFinish( norm );
            normalizerPutStretches( norm, bits, at, settled );
            at = settled;
        }
    }
    while ( at < end ) {
        normalizerPutAny( norm, bits, *at++ );
    }
}
void zuUnicodeNormalizerWrite( ZU_UNICODE_NORMALIZER *norm, ZU_STRING *src )
{
    ZU_ASSERT( src );
    zuUnicodeNormalizerWriteInner( norm, src, 0, zuStringLength( src ) );
}
void zuUnicodeNormalizerWriteInner( ZU_UNICODE_NORMALIZER *norm, ZU_STRING *src, ZU_INT offset, ZU_INT count )
{
    ZU_ASSERT( norm );
    ZU_ASSERT( src );
    ZU_ASSERT( offset >= 0 );
    ZU_ASSERT( count >= 0 );
    ZU_ASSERT( ZU_INT_ADD_OK( offset, count ) );
    ZU_ASSERT( offset + count <= zuStringLength( src ) );
    zuUnicodeNormalizerWriteChars( norm, zuStringBacking( src ) + offset, count );
}
void zuUnicodeNormalizerWriteOuter( ZU_UNICODE_NORMALIZER *norm, ZU_STRING *src, ZU_INT offset, ZU_INT count )
{
    ZU_ASSERT( norm );
    ZU_ASSERT( src );
    ZU_ASSERT( offset >= 0 );
    ZU_ASSERT( count >= 0 );
    ZU_ASSERT( ZU_INT_ADD_OK( offset, count ) );
    ZU_ASSERT( offset + count <= zuStringLength( src ) );
    zuUnicodeNormalizerWriteInner( norm, src, 0, offset );
    zuUnicodeNormalizerWriteInner( norm, src, offset + count, zuStringLength( src ) - offset - count );
}
void zuUnicodeNormalizerWriteLeading( ZU_UNICODE_NORMALIZER *norm, ZU_STRING *src, ZU_INT count )
{
    zuUnicodeNormalizerWriteInner( norm, src, 0, count );
}
void zuUnicodeNormalizerWriteTrailing( ZU_UNICODE_NORMALIZER *norm, ZU_STRING *src, ZU_INT count )
{
    ZU_ASSERT( norm );
    ZU_ASSERT( src );
    ZU_ASSERT( count >= 0 );
    ZU_ASSERT( count <= zuStringLength( src ) );
    zuUnicodeNormalizerWriteInner( norm, src, zuStringLength( src ) - count, count );
}
void zuUnicodeNormalizerFlush( ZU_UNICODE_NORMALIZER *norm )
{
    ZU_ASSERT( norm );
    normalizerFinish( norm );
}
void zuUnicodeNormalizerClear( ZU_UNICODE_NORMALIZER *norm )
{
    ZU_ASSERT( norm );
    norm->highSurrogate = 0;
    norm->pendingLength = 0;
    norm->starter = -1;
    norm->unsorted = false;
    norm->composeStart = 0;
    norm->lastStarter = 0;
    norm->lastRank = RANK_BEGIN;
    zuStringClear( &norm->reorder );
    zuStringClear( &norm->compose ); // null in the D forms, where this ends the process
}

// Reading

// Removes the first `count` characters of the output.  What is left is moved once as much has been read: that keeps the
// cost of a character constant, however small the reads are.
static void normalizerDropRead( ZU_UNICODE_NORMALIZER *norm, ZU_INT count )
{
    ZU_STRING *output = *normalizerOutput( norm );
    if ( count == 0 ) {
        return;
    }
    output->length -= count;
    output->fspace += count;
    if ( norm->compose ) {
        norm->composeStart -= count;
    }
    if ( output->fspace > output->length ) {
        zu___StringCompact( output );
    }
}

ZU_INT zuUnicodeNormalizerReadable( ZU_UNICODE_NORMALIZER *norm )
{
    ZU_ASSERT( norm );
    return norm->compose ? norm->composeStart : norm->reorder->length;
}
ZU_INT zuUnicodeNormalizerRead( ZU_UNICODE_NORMALIZER *norm, ZU_STRING **dest, ZU_INT maxLen )
{
    ZU_ASSERT( norm );
    ZU_ASSERT( dest );
    ZU_ASSERT( *dest );
    ZU_ASSERT( maxLen == -1 || maxLen >= 0 );
    ZU_INT readable = zuUnicodeNormalizerReadable( norm );
    ZU_INT count = maxLen == -1 ? readable : std::min( readable, maxLen );
    ZU_STRING **output = normalizerOutput( norm );
    if ( ( *dest )->length == 0 && count == ( *output )->length && count > ZU___STRING_INLINE_CHARS ) {
        // All of a long text: the string itself goes.
        ZU_REF_RELEASE( *dest );
        *dest = *output;
        *output = zuStringCreate();
        norm->composeStart = 0;
        zu___StringCompact( *dest );
        return count;
    }
    zuStringAppendInner( dest, *output, 0, count );
    normalizerDropRead( norm, count );
    return count;
}
ZU_INT zuUnicodeNormalizerReadChars( ZU_UNICODE_NORMALIZER *norm, ZU_CHAR *dest, ZU_INT destLen )
{
    ZU_ASSERT( norm );
    ZU_ASSERT( destLen >= 0 );
    ZU_ASSERT( dest || destLen == 0 );
    ZU_INT count = std::min( zuUnicodeNormalizerReadable( norm ), destLen );
    if ( count > 0 ) {
        memcpy( dest, zuStringBacking( *normalizerOutput( norm ) ), (size_t)count * sizeof( ZU_CHAR ) );
    }
    normalizerDropRead( norm, count );
    return count;
}
