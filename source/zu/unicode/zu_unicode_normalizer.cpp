// The text passes three stages: decomposing, ordering of marks, composing.  Characters come to rest in two places:
// those that marks may still follow wait as elements in `pending`, and behind the stages there is the string `reorder`,
// or `compose`, which holds the output.
//
// Nearly all text is in the form already, or has a few characters that are not.  Two ways lead through the stages:
//
// - One character at a time, with the state between characters in the object.  It takes what may be continued by the
//   next write, and all that is long or strange.
// - Whole stretches of an array that begin and end at a boundary, a character that never interacts with those ahead of
//   it.  Characters that the quick check of UAX #15 passes are copied as they are.  Others go through all stages on the
//   spot, as long as marks come in order; if not, the few characters between two boundaries go through one stage after
//   the other.
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
static constexpr ZU_INT SORT_FEW_MAX = 16;      // marks; for more, comparing each with each takes longer
static constexpr ZU_INT SINGLES = 16;           // characters looked at one by one, ahead of more at a time
static constexpr ZU_INT SEGMENT_MAX = 64;       // characters that are looked at together between two boundaries
static constexpr ZU_INT ROOM_MIN = 256;         // characters by which the output grows
static constexpr ZU_INT BULK_MIN = 8;           // characters; fewer are not worth the search for boundaries
static constexpr uint32_t RANKS = 64;
static constexpr uint32_t RANK_BEGIN = RANKS - 1; // above all classes: nothing to compose with

// From this character on there may be some that do not pass the quick check on sight, by form.
static constexpr ZU_CHAR FIRST_TO_CHECK[] = { 0x300, 0xA0, 0xC0, 0xA0 };

struct ZU_UNICODE_NORMALIZER {
    ZU_OBJ obj;
    ZU_UNICODE_NORMAL_FORM normalForm;
    ZU_CHAR highSurrogate; // waits for its partner; 0: none

    // The last starter and what is behind it, or marks alone.  `starter` is not 0 only within the writing of a
    // character.
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
    if ( ZU___LIKELY( ch < zu___unicodeNormEnd ) ) {
        return zu___UnicodeNormFetch( ch );
    }
    return ZU_CHAR_OK( ch ) ? 0 : ENTRY_STRANGE;
}
static inline bool charIsStrange( ZU_CHAR ch, uint32_t entry )
{
    return ZU___UNLIKELY( ( entry & ENTRY_STRANGE ) == ENTRY_STRANGE ) && ( ( ch >> 11 ) == 0x1B || !ZU_CHAR_OK( ch ) );
}

static inline uint32_t elementMake( ZU_CHAR ch, uint32_t entry )
{
    return ch | ( entry & ( ZU___UNICODE_NORM_SECOND | ZU___UNICODE_NORM_RANK ) );
}
// Tells the rank of an element or of an entry.
static inline uint32_t elementRank( uint32_t element )
{
    return element >> ZU___UNICODE_ELEMENT_RANK_SHIFT;
}
static inline ZU_CHAR elementChar( uint32_t element )
{
    return element & ZU___UNICODE_ELEMENT_CHAR;
}
static inline uint32_t elementLeft( uint32_t element )
{
    return element >> ZU___UNICODE_ELEMENT_LEFT_SHIFT & ZU___UNICODE_ELEMENT_LEFT;
}

// Four characters or elements at a time
struct FOUR_ENTRIES {
    uint32_t a, b, c, d;
    uint32_t any() const // the bits that any of them has
    {
        return a | b | c | d;
    }
    uint32_t all() const // the bits that they all have
    {
        return a & b & c & d;
    }
    bool haveRanks() const
    {
        return elementRank( a ) && elementRank( b ) && elementRank( c ) && elementRank( d );
    }
};
static inline FOUR_ENTRIES entriesGet( const ZU_CHAR *chs )
{
    constexpr ZU_CHAR LIMIT = 0x20000;
    static_assert( LIMIT <= zu___unicodeNormEnd );
    if ( ZU___UNLIKELY( ( chs[ 0 ] | chs[ 1 ] | chs[ 2 ] | chs[ 3 ] ) >= LIMIT ) ) {
        return { entryGet( chs[ 0 ] ), entryGet( chs[ 1 ] ), entryGet( chs[ 2 ] ), entryGet( chs[ 3 ] ) };
    }
    return { zu___UnicodeNormFetch( chs[ 0 ] ), zu___UnicodeNormFetch( chs[ 1 ] ), zu___UnicodeNormFetch( chs[ 2 ] ),
             zu___UnicodeNormFetch( chs[ 3 ] ) };
}

typedef uint32_t CHARS_VECTOR __attribute__( ( vector_size( 16 ) ) );

static inline CHARS_VECTOR charsLoad( const uint32_t *chs )
{
    CHARS_VECTOR vector;
    memcpy( &vector, chs, sizeof vector );
    return vector;
}
static inline bool vectorIsZero( CHARS_VECTOR vector )
{
    uint64_t halves[ 2 ];
    memcpy( halves, &vector, sizeof vector );
    return ( halves[ 0 ] | halves[ 1 ] ) == 0;
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

// What a character decomposes to.
struct DECOMPOSITION {
    const uint32_t *elements; // if there is more than `ch` itself, at least QUICK_ELEMENTS can be read
    ZU_INT length;
};
static constexpr ZU_INT QUICK_ELEMENTS = 4; // copied without counting

// Decomposes `ch` in the form; `scratch` is for what no table has.
static inline DECOMPOSITION charDecompose( ZU_CHAR ch, uint32_t entry, const NORMAL_FORM_BITS &bits,
                                           uint32_t ( &scratch )[ QUICK_ELEMENTS ] )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    if ( !( entry & bits.decomposes ) ) {
        scratch[ 0 ] = elementMake( ch, entry );
        return { scratch, 1 };
    }
    if ( entry & ZU___UNICODE_NORM_HANGUL ) {
        ZU_CHAR syllable = ch - HANGUL_S;
        ZU_CHAR t = syllable % HANGUL_TS;
        scratch[ 0 ] = HANGUL_L + syllable / ( HANGUL_VS * HANGUL_TS );
        scratch[ 1 ] = ( HANGUL_V + syllable / HANGUL_TS % HANGUL_VS ) | ZU___UNICODE_ELEMENT_SECOND;
        scratch[ 2 ] = ( HANGUL_T + t ) | ZU___UNICODE_ELEMENT_SECOND;
        scratch[ 3 ] = 0;
        return { scratch, 2 + ( t != 0 ) };
    }
    const uint32_t *elements = zu___unicodeNormRuns + ( entry & ZU___UNICODE_NORM_PLACE );
    if ( ( entry & ZU___UNICODE_NORM_BOTH ) && bits.compatible ) {
        elements += elementLeft( *elements );
    }
    ZU_INT length = elementLeft( *elements );
    if ( length == ZU___UNICODE_ELEMENT_LEFT ) {
        while ( elementLeft( elements[ length - 1 ] ) > 1 ) {
            length++;
        }
    }
    return { elements, length };
}

// Ordering: a stable sort of each run of marks by their classes

// A few: by counting, for each, how many go ahead of it.  That takes no branch that could be guessed wrong.
static inline void marksSortFew( uint32_t *run, ZU_INT length, uint32_t *scratch )
{
    uint32_t places[ SORT_FEW_MAX ] = {};
    for ( ZU_INT i = 1; i < length; i++ ) {
        uint32_t place = 0;
        for ( ZU_INT j = 0; j < i; j++ ) {
            uint32_t stays = elementRank( run[ j ] ) <= elementRank( run[ i ] );
            place += stays;
            places[ j ] += 1 - stays;
        }
        places[ i ] = place;
    }
    for ( ZU_INT i = 0; i < length; i++ ) {
        scratch[ places[ i ] ] = run[ i ];
    }
}

// Many: by counting the marks of each rank, so that no order takes longer than others.  Both halves are counted and
// moved side by side: the next mark of a rank has to wait for the count that has just been stored.
static void marksSortMany( uint32_t *run, ZU_INT length, uint32_t *scratch )
{
    struct {
        uint32_t first, second; // how many there are of a rank in each half, then where the next one goes
    } places[ RANKS ] = {};
    const uint32_t *middle = run + length / 2;
    const uint32_t *end = run + length;
    const uint32_t *second = middle;
    for ( const uint32_t *first = run; first < middle; first++, second++ ) {
        places[ elementRank( *first ) ].first++;
        places[ elementRank( *second ) ].second++;
    }
    if ( second < end ) {
        places[ elementRank( *second ) ].second++;
    }
    uint32_t place = 0;
    for ( auto &each : places ) {
        uint32_t begin = place;
        place += each.first;
        each.first = begin;
        begin = place;
        place += each.second;
        each.second = begin;
    }
    second = middle;
    for ( const uint32_t *first = run; first < middle; first++, second++ ) {
        scratch[ places[ elementRank( *first ) ].first++ ] = *first;
        scratch[ places[ elementRank( *second ) ].second++ ] = *second;
    }
    if ( second < end ) {
        scratch[ places[ elementRank( *second ) ].second ] = *second;
    }
}

// Tells whether all four elements from `elements` on have ranks from 1 to `most`.
static inline bool fourHaveRanks( const uint32_t *elements, uint32_t most )
{
    CHARS_VECTOR four = charsLoad( elements ) >> ZU___UNICODE_ELEMENT_RANK_SHIFT;
    return vectorIsZero( (CHARS_VECTOR)( four - 1 >= most ) );
}

// Sorts each run in `elements`; `scratch` has room for as many.
static void elementsSort( uint32_t *elements, ZU_INT length, uint32_t *scratch )
{
    for ( ZU_INT i = 0; i < length; i++ ) {
        uint32_t *run = elements + i;
        while ( length - i >= 4 && fourHaveRanks( elements + i, RANKS ) ) {
            i += 4;
        }
        while ( i < length && elementRank( elements[ i ] ) ) {
            i++;
        }
        ZU_INT marks = elements + i - run;
        if ( marks > 1 ) {
            ( marks <= SORT_FEW_MAX ? marksSortFew : marksSortMany )( run, marks, scratch );
            memcpy( run, scratch, (size_t)marks * sizeof( uint32_t ) );
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

static inline void composerPutAll( COMPOSER &composer, const uint32_t *elements, ZU_INT length )
{
    for ( ZU_INT i = 0; i < length; i++ ) {
        composerPut( composer, elements[ i ] );
        // Marks of no higher class are blocked: in a long run nearly all.
        for ( ; length - i > 4 && fourHaveRanks( elements + i + 1, composer.lastRank ); i += 4 ) {
            CHARS_VECTOR four = charsLoad( elements + i + 1 ) & ZU___UNICODE_ELEMENT_CHAR;
            memcpy( composer.cursor, &four, sizeof four );
            composer.cursor += 4;
        }
        for ( ; i + 1 < length && elementRank( elements[ i + 1 ] ) - 1 < composer.lastRank; i++ ) {
            *composer.cursor++ = elementChar( elements[ i + 1 ] );
        }
    }
}
// Stores the characters of `length` elements at `dest`.  Returns the end of them.
static ZU_CHAR *elementsCopy( const uint32_t *elements, ZU_INT length, ZU_CHAR *dest )
{
    for ( ZU_INT i = 0; i < length; i++ ) {
        dest[ i ] = elementChar( elements[ i ] );
    }
    return dest + length;
}

// Output
static inline ZU_STRING **normalizerOutput( ZU_UNICODE_NORMALIZER *norm )
{
    return norm->compose ? &norm->compose : &norm->reorder;
}

// Returns the end of the output, with room for `count` characters.
static ZU_CHAR *normalizerGrowOutput( ZU_UNICODE_NORMALIZER *norm, ZU_INT count )
{
    ZU_STRING **output = normalizerOutput( norm );
    if ( ZU_REF_RETAIN_COUNT( *output ) > 1 ) { // the shared empty string
        ZU_REF_RELEASE( *output );
        *output = zu___StringCreateEmpty();
    }
    ZU_STRING *own = *output;
    if ( own->bspace < count ) {
        ZU_INT room = std::max( count, ROOM_MIN );
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
// Returns the end of the room behind the output.
static inline const ZU_CHAR *normalizerLimit( ZU_UNICODE_NORMALIZER *norm )
{
    ZU_STRING *output = *normalizerOutput( norm );
    return output->chars + output->fspace + output->length + output->bspace;
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
        composerPutAll( composer, norm->pending, count );
        normalizerSetEnd( norm, composer.cursor );
        bool full = composer.cursor - composer.starter >= RUN_MAX;
        norm->composeStart = ( full ? composer.cursor : composer.starter ) - text;
        norm->lastStarter = composer.lastStarter;
        norm->lastRank = composer.lastRank;
    } else {
        normalizerSetEnd( norm, elementsCopy( norm->pending, count, cursor ) );
    }
    norm->pendingLength -= count;
    if ( norm->pendingLength > 0 ) {
        memmove( norm->pending, norm->pending + count, (size_t)norm->pendingLength * sizeof( uint32_t ) );
    }
    norm->starter = norm->pendingLength > 0 ? 0 : -1;
}

static void normalizerGrowPending( ZU_UNICODE_NORMALIZER *norm )
{
    constexpr ZU_INT CAPACITY = RUN_MAX + DECOMPOSITION_MAX; // no run comes to more
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
    uint32_t scratch[ QUICK_ELEMENTS ];
    DECOMPOSITION decomposition = charDecompose( ch, entry, bits, scratch );
    for ( ZU_INT i = 0; i < decomposition.length; i++ ) {
        uint32_t element = decomposition.elements[ i ];
        ZU_INT length = norm->pendingLength;
        uint32_t rank = elementRank( element );
        if ( rank == 0 ) {
            norm->starter = length;
        } else if ( length > 0 && elementRank( norm->pending[ length - 1 ] ) > rank ) {
            norm->unsorted = true;
        }
        norm->pending[ length ] = element;
        norm->pendingLength = length + 1;
    }
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

// Marks on their way from a text to `pending`.
struct MARKS {
    const ZU_CHAR *at;
    uint32_t *cursor;
    uint32_t last;     // the element ahead of the cursor; 0: there is none
    uint32_t descents; // the highest bit tells whether marks were out of order

    void put( ZU_CHAR ch, uint32_t entry )
    {
        *cursor++ = elementMake( ch, entry );
        descents |= elementRank( entry ) - elementRank( last );
        last = entry;
    }
    // A mark may decompose, to one or two marks.  Whether it does is not guessed: both ways are computed and joined by
    // a mask, and two elements are stored.
    void putDecomposed( ZU_CHAR ch, uint32_t entry, uint32_t decomposes )
    {
        const uint32_t *run = zu___unicodeNormRuns + ( entry & ZU___UNICODE_NORM_PLACE );
        uint32_t itself = elementMake( ch, entry ) | 1 << ZU___UNICODE_ELEMENT_LEFT_SHIFT;
        uint32_t mask = -(uint32_t)( ( entry & decomposes ) != 0 );
        uint32_t first = ( run[ 0 ] & mask ) | ( itself & ~mask );
        cursor[ 0 ] = first;
        cursor[ 1 ] = run[ 1 ];
        cursor += elementLeft( first );
        descents |= elementRank( first ) - elementRank( last );
        last = cursor[ -1 ];
    }
};

// Moves marks as long as there are any, up to the end of the text or to about `limit`.
static inline MARKS marksGather( MARKS marks, const ZU_CHAR *end, const uint32_t *limit, uint32_t decomposes )
{
    while ( marks.at < end && marks.cursor < limit ) {
        while ( end - marks.at >= 4 && limit - marks.cursor >= 4 ) {
            FOUR_ENTRIES four = entriesGet( marks.at );
            if ( !four.haveRanks() || ( four.any() & decomposes ) ) {
                break;
            }
            marks.put( marks.at[ 0 ], four.a );
            marks.put( marks.at[ 1 ], four.b );
            marks.put( marks.at[ 2 ], four.c );
            marks.put( marks.at[ 3 ], four.d );
            marks.at += 4;
        }
        const ZU_CHAR *pause = end - marks.at > 4 ? marks.at + 4 : end;
        for ( ; marks.at < pause && marks.cursor < limit; marks.at++ ) {
            uint32_t entry = entryGet( *marks.at );
            if ( elementRank( entry ) == 0 ) {
                return marks;
            }
            marks.putDecomposed( *marks.at, entry, decomposes );
        }
    }
    return marks;
}

// Takes the marks that the text begins with, and returns where it goes on.
static const ZU_CHAR *normalizerPutMarks( ZU_UNICODE_NORMALIZER *norm, const NORMAL_FORM_BITS &bits, const ZU_CHAR *at,
                                          const ZU_CHAR *end )
{
    for ( ;; ) {
        uint32_t *first = norm->pending + norm->pendingLength;
        const uint32_t *limit = norm->pending + norm->pendingCapacity - DECOMPOSITION_MAX;
        uint32_t last = norm->pendingLength > 0 ? first[ -1 ] : 0;
        MARKS marks = marksGather( { at, first, last, 0 }, end, limit, bits.decomposes );
        norm->highSurrogate = marks.cursor > first ? 0 : norm->highSurrogate;
        norm->unsorted |= marks.descents >> 31 != 0;
        norm->pendingLength = marks.cursor - norm->pending;
        at = marks.at;
        if ( norm->pendingLength >= RUN_MAX ) {
            normalizerSettle( norm, norm->pendingLength );
        } else if ( marks.cursor >= limit ) {
            normalizerGrowPending( norm );
        } else {
            return at;
        }
    }
}
static void normalizerPutChars( ZU_UNICODE_NORMALIZER *norm, const NORMAL_FORM_BITS &bits, const ZU_CHAR *at,
                                const ZU_CHAR *end )
{
    while ( at < end ) {
        normalizerPutAny( norm, bits, *at++ );
        at = normalizerPutMarks( norm, bits, at, end );
    }
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

// Where the way through a text has come to.
struct STRETCH {
    const ZU_CHAR *at;  // all ahead of it is settled, as far as nothing behind it interferes
    const ZU_CHAR *end; // a boundary, or the end of the text
    uint32_t lastRank;  // the rank of the last character ahead of `at`, decomposed
    ZU_CHAR *cursor;    // where the character at `at` goes
};

static inline bool charsAllBelow( const ZU_CHAR *chs, ZU_CHAR limit )
{
    return vectorIsZero( (CHARS_VECTOR)( charsLoad( chs ) >= limit ) |
                         (CHARS_VECTOR)( charsLoad( chs + 4 ) >= limit ) );
}

// Moves over all characters that stay as they are: that the quick check passes, with marks in order.  Where COPIES, the
// output has room for the whole text.
template <bool COPIES>
static inline __attribute__( ( always_inline ) ) void stretchSkip( STRETCH &stretch, uint32_t work,
                                                                   ZU_CHAR firstToCheck )
{
    const ZU_CHAR *at = stretch.at;
    const ZU_CHAR *end = stretch.end;
    uint32_t lastRank = stretch.lastRank;
    ZU_CHAR *cursor = stretch.cursor;
    uint32_t marks = lastRank && at < end ? elementRank( entryGet( *at ) ) : 0;
    lastRank = marks ? lastRank : 0;
    for ( ;; ) {
        // One by one: a few, as the next that needs something is often near.
        const ZU_CHAR *pause = end - at < SINGLES ? end : at + SINGLES;
        for ( ; at < pause && !marks; at++ ) {
            uint32_t entry = entryGet( *at );
            if ( entry & ( work | ZU___UNICODE_NORM_RANK ) ) {
                if ( entry & work ) {
                    goto done;
                }
                marks = 1;
                break;
            }
            if ( COPIES ) {
                *cursor++ = *at;
            }
        }
        // As long as there are marks, which come as they like, nothing is guessed about them.
        while ( marks && at < end ) {
            marks = 0;
            pause = end - at < SINGLES ? end : at + SINGLES;
            for ( ; at < pause; at++ ) {
                uint32_t entry = entryGet( *at );
                uint32_t rank = elementRank( entry );
                if ( ( entry & work ) | ( ( rank != 0 ) & ( rank < lastRank ) ) ) {
                    goto done;
                }
                if ( COPIES ) {
                    *cursor++ = *at;
                }
                lastRank = rank;
                marks |= rank;
            }
        }
        const ZU_CHAR *begin = at;
        while ( end - at >= 8 ) {
            if ( charsAllBelow( at, firstToCheck ) ) {
                if ( COPIES ) {
                    memcpy( cursor, at, 8 * sizeof( ZU_CHAR ) );
                    cursor += 8;
                }
                at += 8;
            } else if ( !( entriesGet( at ).any() & ( work | ZU___UNICODE_NORM_RANK ) ) ) {
                if ( COPIES ) {
                    memcpy( cursor, at, 4 * sizeof( ZU_CHAR ) );
                    cursor += 4;
                }
                at += 4;
            } else {
                break;
            }
        }
        if ( at != begin ) {
            lastRank = 0;
        }
        if ( at == end ) {
            break;
        }
    }
done:
    stretch.at = at;
    stretch.lastRank = lastRank;
    stretch.cursor = cursor;
}

ZU_INT zu___UnicodeNormalizerSettledLength( ZU_UNICODE_NORMAL_FORM form, const ZU_CHAR *chs, ZU_INT chsLength )
{
    STRETCH stretch = { chs, chs + chsLength, 0, nullptr };
    stretchSkip<false>( stretch, ZU___UNICODE_NORM_WORK << form, FIRST_TO_CHECK[ form ] );
    return stretch.at - chs;
}

// Returns the boundary behind the one at `at`, or `end`.
static inline const ZU_CHAR *boundaryBehind( const ZU_CHAR *at, const ZU_CHAR *end, uint32_t inner )
{
    do {
        at++;
    } while ( at < end && ( entryGet( *at ) & inner ) );
    return at;
}
// Returns the boundary ahead of `at`, where all in between are marks that are settled.
static inline const ZU_CHAR *boundaryAhead( const ZU_CHAR *at )
{
    do {
        at--;
    } while ( entryGet( *at ) & ZU___UNICODE_NORM_RANK );
    return at;
}

// Sends the characters from `boundary` to `next`, which are in trouble, through the stages in turn.
static void normalizerPutSegment( ZU_UNICODE_NORMALIZER *norm, const NORMAL_FORM_BITS &bits, const ZU_CHAR *boundary,
                                  const ZU_CHAR *next )
{
    uint32_t elements[ SEGMENT_MAX + DECOMPOSITION_MAX ];
    uint32_t scratch[ SEGMENT_MAX + DECOMPOSITION_MAX ];
    ZU_INT length = next - boundary <= SEGMENT_MAX ? 0 : -1; // -1: takes the other way
    for ( const ZU_CHAR *at = boundary; at < next && length >= 0; at++ ) {
        uint32_t entry = entryGet( *at );
        if ( length > SEGMENT_MAX || charIsStrange( *at, entry ) ) {
            length = -1;
            break;
        }
        uint32_t quick[ QUICK_ELEMENTS ];
        DECOMPOSITION decomposition = charDecompose( *at, entry, bits, quick );
        for ( ZU_INT i = 0; i < decomposition.length; i++ ) {
            elements[ length++ ] = decomposition.elements[ i ];
        }
    }
    if ( length >= 0 ) {
        elementsSort( elements, length, scratch );
        ZU_CHAR *cursor = normalizerReserve( norm, length );
        if ( norm->compose ) {
            COMPOSER composer = { cursor, cursor, 0, RANK_BEGIN };
            composerPutAll( composer, elements, length );
            normalizerSetEnd( norm, composer.cursor );
        } else {
            normalizerSetEnd( norm, elementsCopy( elements, length, cursor ) );
        }
        return;
    }
    if ( norm->compose ) {
        norm->composeStart = norm->compose->length;
    }
    normalizerPutChars( norm, bits, boundary, next );
    normalizerFinish( norm );
}

// Composes Hangul syllables, the first of which has its vowel at `at`.  Returns false if there are none.
static inline bool stretchComposeHangul( STRETCH &stretch, uint32_t inner )
{
    const ZU_CHAR *at = stretch.at - 1;
    ZU_CHAR *cursor = stretch.cursor - 1;
    while ( stretch.end - at > 3 && at[ 0 ] - HANGUL_L < HANGUL_LS && at[ 1 ] - HANGUL_V < HANGUL_VS ) {
        ZU_CHAR t = at[ 2 ] - HANGUL_T;
        ZU_INT length = 2 + ( t < HANGUL_TS );
        if ( entryGet( at[ length ] ) & inner ) {
            break; // more than a syllable
        }
        *cursor++ = HANGUL_S + ( ( at[ 0 ] - HANGUL_L ) * HANGUL_VS + ( at[ 1 ] - HANGUL_V ) ) * HANGUL_TS +
                    ( length == 3 ? t : 0 );
        at += length;
    }
    if ( at < stretch.at ) {
        return false;
    }
    stretch.at = at;
    stretch.cursor = cursor;
    return true;
}

// Sends the characters from `at` on through the stages on the spot, until there are two that need nothing.  Returns
// false if there are marks out of order, or anything else that wants more than that; `at` goes back to the boundary
// then.
static bool stretchCompose( STRETCH &stretch, const NORMAL_FORM_BITS &bits )
{
    const ZU_CHAR *at = stretch.at;
    uint32_t needs = bits.work | bits.inner;
    uint32_t next = entryGet( *at );
    const ZU_CHAR *boundary = next & bits.inner ? boundaryAhead( at ) : at;
    uint32_t entry = entryGet( *boundary );
    COMPOSER composer = { stretch.cursor, stretch.cursor, 0, RANK_BEGIN };
    uint32_t lastRank = stretch.lastRank;
    ZU_CHAR *cursorAtBoundary = stretch.cursor - ( at - boundary );
    bool inOrder = true;
    if ( next & bits.inner ) {
        composer = { stretch.cursor, cursorAtBoundary, *boundary, lastRank };
        inOrder = !( entry & bits.decomposes ) || ( entry & ZU___UNICODE_NORM_HANGUL );
    }
    while ( inOrder ) {
        entry = next;
        ZU_CHAR ch = *at;
        if ( !( entry & bits.inner ) ) {
            boundary = at;
            cursorAtBoundary = composer.cursor;
            lastRank = 0;
        } else if ( charIsStrange( ch, entry ) || at - boundary >= SEGMENT_MAX ) {
            inOrder = false;
            break;
        }
        uint32_t quick[ QUICK_ELEMENTS ] = { elementMake( ch, entry ) };
        DECOMPOSITION decomposition = { quick, 1 };
        if ( entry & bits.work ) {
            decomposition = charDecompose( ch, entry, bits, quick );
        }
        for ( ZU_INT i = 0; i < decomposition.length; i++ ) {
            uint32_t element = decomposition.elements[ i ];
            uint32_t rank = elementRank( element );
            inOrder = inOrder && ( rank == 0 || rank >= lastRank );
            lastRank = rank;
            composerPut( composer, element );
        }
        // What passes the quick check is not decomposed, but may have marks that others would go ahead of.
        if ( ( entry & ( bits.work | bits.decomposes | ZU___UNICODE_NORM_HANGUL ) ) == bits.decomposes ) {
            lastRank = RANK_BEGIN;
        }
        at++;
        next = at < stretch.end ? entryGet( *at ) : 0;
        if ( at == stretch.end ||
             ( !( next & bits.inner ) && ( at - stretch.at >= SEGMENT_MAX || !( ( entry | next ) & needs ) ) ) ) {
            break;
        }
    }
    stretch.at = inOrder ? at : boundary;
    stretch.cursor = inOrder ? composer.cursor : cursorAtBoundary;
    stretch.lastRank = 0;
    return inOrder;
}

// Returns how many characters `count` ones need room for: as many, and what two segments may add meanwhile.
static inline ZU_INT stretchRoom( ZU_INT count )
{
    return count + std::min( count, 2 * SEGMENT_MAX ) * DECOMPOSITION_MAX;
}

// Takes the characters from the boundary `begin` to the boundary `end`; nothing waits.
template <bool COMPOSES>
static void normalizerPutStretches( ZU_UNICODE_NORMALIZER *norm, const NORMAL_FORM_BITS &bits, const ZU_CHAR *begin,
                                    const ZU_CHAR *end )
{
    const ZU_CHAR firstToCheck = FIRST_TO_CHECK[ norm->normalForm ];
    ZU_INT growth = COMPOSES ? 0 : ( end - begin ) / 2; // as much as most decomposed texts need
    STRETCH stretch = { begin, end, 0, normalizerReserve( norm, stretchRoom( end - begin ) + growth ) };
    const ZU_CHAR *limit = normalizerLimit( norm );
    for ( ;; ) {
        stretchSkip<true>( stretch, bits.work, firstToCheck );
        if ( stretch.at == end ) {
            break;
        }
        bool done = true;
        if ( COMPOSES ) {
            done = ( *stretch.at - HANGUL_V < HANGUL_VS && stretchComposeHangul( stretch, bits.inner ) ) ||
                   stretchCompose( stretch, bits );
        } else {
            uint32_t entry = entryGet( *stretch.at );
            uint32_t quick[ QUICK_ELEMENTS ];
            if ( entry & bits.inner ) {
                const ZU_CHAR *boundary = boundaryAhead( stretch.at );
                stretch.cursor -= stretch.at - boundary - 1;
                stretch.cursor -= charDecompose( *boundary, entryGet( *boundary ), bits, quick ).length;
                stretch.at = boundary;
                done = false;
            } else {
                DECOMPOSITION decomposition = charDecompose( *stretch.at, entry, bits, quick );
                for ( ZU_INT i = 0; i < QUICK_ELEMENTS; i++ ) {
                    stretch.cursor[ i ] = elementChar( decomposition.elements[ i ] );
                }
                if ( decomposition.length > QUICK_ELEMENTS ) {
                    elementsCopy( decomposition.elements, decomposition.length, stretch.cursor );
                }
                stretch.cursor += decomposition.length;
                stretch.lastRank = elementRank( decomposition.elements[ decomposition.length - 1 ] );
                stretch.at++;
            }
        }
        if ( !done ) {
            normalizerSetEnd( norm, stretch.cursor );
            const ZU_CHAR *boundary = stretch.at;
            stretch.at = boundaryBehind( boundary, end, bits.inner );
            normalizerPutSegment( norm, bits, boundary, stretch.at );
            stretch.lastRank = 0;
            stretch.cursor = normalizerReserve( norm, 0 );
            limit = normalizerLimit( norm );
        }
        if ( ZU___UNLIKELY( limit - stretch.cursor < stretchRoom( end - stretch.at ) ) ) {
            normalizerSetEnd( norm, stretch.cursor );
            stretch.cursor = normalizerReserve( norm, 2 * stretchRoom( end - stretch.at ) );
            limit = normalizerLimit( norm );
        }
    }
    normalizerSetEnd( norm, stretch.cursor );
    if ( COMPOSES ) {
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
        while ( end - begin >= 4 && ( entriesGet( end - 4 ).all() & inner ) ) {
            end -= 4;
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
        const ZU_CHAR *boundary = at;
        while ( boundary < settled && ( entryGet( *boundary ) & bits.inner ) ) {
            boundary++;
        }
        if ( boundary < settled ) {
            normalizerPutChars( norm, bits, at, boundary );
            at = boundary;
            normalizerFinish( norm );
            if ( norm->compose ) {
                normalizerPutStretches<true>( norm, bits, at, settled );
            } else {
                normalizerPutStretches<false>( norm, bits, at, settled );
            }
            at = settled;
        }
    }
    if ( at < end ) {
        normalizerReserve( norm, end - at );
        normalizerPutChars( norm, bits, at, end );
    }
}
void zuUnicodeNormalizerWrite( ZU_UNICODE_NORMALIZER *norm, ZU_STRING *src )
{
    ZU_ASSERT( norm );
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
