// zu_unicode_normalizer_stages_internal.h: the three stages of a normalizer as functions of what they are given:
// decomposing, ordering of marks, composing.
//
//     entry     what the table has of a character; zu_unicode_db_internal.h describes its bits
//     rank      the place of a combining class among all that occur: marks have one from 1 on, all else has 0
//     element   a character that is decomposed, with its rank, and the bit that tells whether it may be a second one
//     work      a character that works in a form may not stand in text of that form, or not everywhere
//     inner     a character that is inner in a form may interact with those ahead of it
//     boundary  a character that is not inner: nothing interacts across the place ahead of it
//     strange   a surrogate, or no code point at all; such values have an entry that works and is inner in all forms
//     segment   the characters from one boundary to the next
//     stretch   any number of segments, taken at once
//     run       marks that follow one another
#pragma once

#include "zu/sys/zu_chars_ascii_internal.h"
#include "zu/unicode/zu_unicode_db_internal.h"
#include "zu/unicode/zu_unicode_normal_form.h"
#include "zu/unicode/zu_unicode_properties.h"

#include <cstring>

static constexpr ZU_INT ZU___NORM_DECOMPOSITION_MAX = 18; // elements: U+FDFA
static constexpr uint32_t ZU___NORM_RANKS = 64;
static constexpr uint32_t ZU___NORM_RANK_BEGIN = ZU___NORM_RANKS - 1; // above all ranks: nothing to compose with

// Table entries, which zu_unicode_db_internal.h describes

// The bits of the entries that matter in one form.
struct ZU___NORM_BITS {
    uint32_t work;
    uint32_t inner;
    uint32_t decomposes; // works in the D form beside it
    bool compatible;

    explicit ZU___NORM_BITS( ZU_UNICODE_NORMAL_FORM form )
        : work( ZU___UNICODE_NORM_WORK << form ), inner( ZU___UNICODE_NORM_INNER << form ),
          decomposes( ZU___UNICODE_NORM_WORK << ( form | ZU_UNICODE_NORMAL_FORM_NFD ) ),
          compatible( form == ZU_UNICODE_NORMAL_FORM_NFKC || form == ZU_UNICODE_NORMAL_FORM_NFKD )
    {
    }
};
static_assert( ( ZU_UNICODE_NORMAL_FORM_NFC | ZU_UNICODE_NORMAL_FORM_NFD ) == ZU_UNICODE_NORMAL_FORM_NFD );
static_assert( ( ZU_UNICODE_NORMAL_FORM_NFKC | ZU_UNICODE_NORMAL_FORM_NFD ) == ZU_UNICODE_NORMAL_FORM_NFKD );

// The entry of surrogates, and of values that are no code points: in all forms they work and are inner.
static constexpr uint32_t ZU___NORM_STRANGE = ZU___UNICODE_NORM_WORK * 0xF | ZU___UNICODE_NORM_INNER * 0xF;

static inline uint32_t zu___NormEntry( ZU_CHAR ch )
{
    if ( ZU___LIKELY( ch < zu___unicodeNormEnd ) ) {
        return zu___UnicodeNormFetch( ch );
    }
    return ZU_CHAR_OK( ch ) ? 0 : ZU___NORM_STRANGE;
}
static inline bool zu___NormIsStrange( ZU_CHAR ch, uint32_t entry )
{
    return ZU___UNLIKELY( ( entry & ZU___NORM_STRANGE ) == ZU___NORM_STRANGE ) &&
           ( ( ch >> 11 ) == 0x1B || !ZU_CHAR_OK( ch ) );
}

static inline uint32_t zu___NormElement( ZU_CHAR ch, uint32_t entry )
{
    return ch | ( entry & ( ZU___UNICODE_NORM_SECOND | ZU___UNICODE_NORM_RANK ) );
}
// Tells the rank of an element or of an entry.
static inline uint32_t zu___NormRank( uint32_t element )
{
    return element >> ZU___UNICODE_ELEMENT_RANK_SHIFT;
}
static inline ZU_CHAR zu___NormChar( uint32_t element )
{
    return element & ZU___UNICODE_ELEMENT_CHAR;
}
static inline uint32_t zu___NormLeft( uint32_t element )
{
    return element >> ZU___UNICODE_ELEMENT_LEFT_SHIFT & ZU___UNICODE_ELEMENT_LEFT;
}

// Four characters or elements at a time
struct ZU___NORM_FOUR {
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
        return zu___NormRank( a ) && zu___NormRank( b ) && zu___NormRank( c ) && zu___NormRank( d );
    }
};
static inline ZU___NORM_FOUR zu___NormEntries( const ZU_CHAR *chs )
{
    constexpr ZU_CHAR LIMIT = 0x20000;
    static_assert( LIMIT <= zu___unicodeNormEnd );
    if ( ZU___UNLIKELY( ( chs[ 0 ] | chs[ 1 ] | chs[ 2 ] | chs[ 3 ] ) >= LIMIT ) ) {
        return { zu___NormEntry( chs[ 0 ] ), zu___NormEntry( chs[ 1 ] ), zu___NormEntry( chs[ 2 ] ),
                 zu___NormEntry( chs[ 3 ] ) };
    }
    return { zu___UnicodeNormFetch( chs[ 0 ] ), zu___UnicodeNormFetch( chs[ 1 ] ), zu___UnicodeNormFetch( chs[ 2 ] ),
             zu___UnicodeNormFetch( chs[ 3 ] ) };
}

static inline bool zu___NormIsZero( ZU___CHARS_LANES vector )
{
    uint64_t halves[ 2 ];
    memcpy( halves, &vector, sizeof vector );
    return ( halves[ 0 ] | halves[ 1 ] ) == 0;
}

// Decomposing

// Hangul syllables are computed (Unicode Standard, section 3.12).
static constexpr ZU_CHAR ZU___NORM_HANGUL_S = 0xAC00;
static constexpr ZU_CHAR ZU___NORM_HANGUL_L = 0x1100;
static constexpr ZU_CHAR ZU___NORM_HANGUL_V = 0x1161;
static constexpr ZU_CHAR ZU___NORM_HANGUL_T = 0x11A7; // one ahead of the first: 0 stands for a syllable without
static constexpr ZU_CHAR ZU___NORM_HANGUL_LS = 19;
static constexpr ZU_CHAR ZU___NORM_HANGUL_VS = 21;
static constexpr ZU_CHAR ZU___NORM_HANGUL_TS = 28;
static constexpr ZU_CHAR ZU___NORM_HANGUL_SYLLABLES = ZU___NORM_HANGUL_LS * ZU___NORM_HANGUL_VS * ZU___NORM_HANGUL_TS;

// What a character decomposes to.
struct ZU___NORM_DECOMPOSITION {
    const uint32_t *elements; // if there is more than `ch` itself, at least ZU___NORM_QUICK can be read
    ZU_INT length;
};
static constexpr ZU_INT ZU___NORM_QUICK = 4; // copied without counting

// Decomposes `ch` in the form; `scratch` is for what no table has.
static inline ZU___NORM_DECOMPOSITION zu___NormDecompose( ZU_CHAR ch, uint32_t entry, const ZU___NORM_BITS &bits,
                                                          uint32_t ( &scratch )[ ZU___NORM_QUICK ] )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    if ( !( entry & bits.decomposes ) ) {
        scratch[ 0 ] = zu___NormElement( ch, entry );
        return { scratch, 1 };
    }
    if ( entry & ZU___UNICODE_NORM_HANGUL ) {
        ZU_CHAR syllable = ch - ZU___NORM_HANGUL_S;
        ZU_CHAR t = syllable % ZU___NORM_HANGUL_TS;
        scratch[ 0 ] = ZU___NORM_HANGUL_L + syllable / ( ZU___NORM_HANGUL_VS * ZU___NORM_HANGUL_TS );
        scratch[ 1 ] =
            ( ZU___NORM_HANGUL_V + syllable / ZU___NORM_HANGUL_TS % ZU___NORM_HANGUL_VS ) | ZU___UNICODE_ELEMENT_SECOND;
        scratch[ 2 ] = ( ZU___NORM_HANGUL_T + t ) | ZU___UNICODE_ELEMENT_SECOND;
        scratch[ 3 ] = 0;
        return { scratch, 2 + ( t != 0 ) };
    }
    const uint32_t *elements = zu___unicodeNormRuns + ( entry & ZU___UNICODE_NORM_PLACE );
    if ( ( entry & ZU___UNICODE_NORM_BOTH ) && bits.compatible ) {
        elements += zu___NormLeft( *elements );
    }
    ZU_INT length = zu___NormLeft( *elements );
    if ( length == ZU___UNICODE_ELEMENT_LEFT ) {
        while ( zu___NormLeft( elements[ length - 1 ] ) > 1 ) {
            length++;
        }
    }
    return { elements, length };
}

// Tells whether all four elements from `elements` on have ranks from 1 to `most`.
static inline bool zu___NormHaveRanks( const uint32_t *elements, uint32_t most )
{
    ZU___CHARS_LANES four = zu___CharsLoadLanes( elements ) >> ZU___UNICODE_ELEMENT_RANK_SHIFT;
    return zu___NormIsZero( (ZU___CHARS_LANES)( four - 1 >= most ) );
}

// Ordering

// Sorts each run in `elements` by ranks, and keeps the order within each; `scratch` has room for as many.
void zu___NormSort( uint32_t *elements, ZU_INT length, uint32_t *scratch );

// Composing

// Stores the characters of `length` elements at `dest`.  Returns the end of them.
ZU_CHAR *zu___NormCopy( const uint32_t *elements, ZU_INT length, ZU_CHAR *dest );

// The text that comes of it
struct ZU___NORM_COMPOSER {
    ZU_CHAR *cursor;  // behind the text
    ZU_CHAR *starter; // the current starter; at the cursor: there is none
    ZU_CHAR lastStarter;
    uint32_t lastRank;
};

// Returns what a starter and a second character make, 0 if they do not compose.
static inline ZU_CHAR zu___NormComposePair( ZU_CHAR starter, ZU_CHAR ch )
{
    if ( ch - ZU___NORM_HANGUL_V < ZU___NORM_HANGUL_VS && starter - ZU___NORM_HANGUL_L < ZU___NORM_HANGUL_LS ) {
        return ZU___NORM_HANGUL_S +
               ( ( starter - ZU___NORM_HANGUL_L ) * ZU___NORM_HANGUL_VS + ( ch - ZU___NORM_HANGUL_V ) ) *
                   ZU___NORM_HANGUL_TS;
    }
    // U+11A7 is within the range, and vanishes in the syllable.
    if ( ch - ZU___NORM_HANGUL_T < ZU___NORM_HANGUL_TS && starter - ZU___NORM_HANGUL_S < ZU___NORM_HANGUL_SYLLABLES &&
         ( starter - ZU___NORM_HANGUL_S ) % ZU___NORM_HANGUL_TS == 0 ) {
        return starter + ( ch - ZU___NORM_HANGUL_T );
    }
    ZU_CHAR composeTo = zu___UnicodeCompDbFetch( starter, ch );
    if ( composeTo ) {
        ZU_ASSERT( zuUnicodeHasCccvSpacing( composeTo ) );
    }
    return composeTo;
}

// Composes an element with the current starter or appends it, for which there is room.
static inline void zu___NormCompose( ZU___NORM_COMPOSER &composer, uint32_t element )
{
    uint32_t rank = zu___NormRank( element );
    ZU_CHAR ch = zu___NormChar( element );
    if ( ( element & ZU___UNICODE_ELEMENT_SECOND ) && composer.starter < composer.cursor &&
         ( composer.lastRank < rank || ( composer.lastRank | rank ) == 0 ) ) {
        ZU_CHAR composeTo = zu___NormComposePair( composer.lastStarter, ch );
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

static inline void zu___NormComposeAll( ZU___NORM_COMPOSER &composer, const uint32_t *elements, ZU_INT length )
{
    for ( ZU_INT i = 0; i < length; i++ ) {
        zu___NormCompose( composer, elements[ i ] );
        // Marks of no higher class are blocked: in a long run nearly all.
        for ( ; length - i > 4 && zu___NormHaveRanks( elements + i + 1, composer.lastRank ); i += 4 ) {
            ZU___CHARS_LANES four = zu___CharsLoadLanes( elements + i + 1 ) & ZU___UNICODE_ELEMENT_CHAR;
            memcpy( composer.cursor, &four, sizeof four );
            composer.cursor += 4;
        }
        for ( ; i + 1 < length && zu___NormRank( elements[ i + 1 ] ) - 1 < composer.lastRank; i++ ) {
            *composer.cursor++ = zu___NormChar( elements[ i + 1 ] );
        }
    }
}
