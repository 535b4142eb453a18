// zu_unicode_db_internal.h: the way through the generated tables.
//
// A table has a value for each code point, in two stages: the code space is cut into blocks of 2^Bits code points,
// Index tells for each of them which of the different blocks it is like, and Blocks has the values of these.  From End
// on all values are 0.
//
//     Cccv                the value itself
//     Decimal             the digit plus 1; 0: none
//     Cdm                 tag << 24 | length << 16 | place in Runs; 0: none
//     Lower, Upper, Fold  place in Runs << 2 | length; 0: none
//     CompFirst           where the row of this first character begins in CompPairs; 0: it composes with none
//     CompSecond          the column of this second character, from 1 on; 0: it composes with none
//     Norm                what the normalizer asks, the bits ZU___UNICODE_NORM_... below; Index tells where in Blocks
//                         a block begins
//
// PropertyTable has categories and scripts, for the public header, which describes it: there they are looked up without
// a call.
//
// Runs holds the characters of all mappings; NormRuns holds full decompositions, of Norm's elements.  The rows of
// CompPairs lie over one another, each filling gaps of the others: an entry is the beginning of the row that it belongs
// to << 21 | composite.
#pragma once

#include "zu/unicode/zu_unicode_cccv.h"
#include "zu/unicode/zu_unicode_db_tables_internal.h"
#include "zu/unicode/zu_unicode_properties.h"

// Norm, an entry: the combining class as a rank among all classes that occur, bits for each normalization form, and the
// place in NormRuns of the full decomposition, canonical and compatible alike or the only one, unless BOTH is set.  A
// Hangul syllable decomposes too, but by computation.
//
// A character that works in a form may not stand in text of that form, or not everywhere: it decomposes, or composes
// with what is ahead of it.  An inner character is no boundary in a form: what it decomposes to begins with a mark, or
// with a character that may compose with what is ahead.  All surrogates work and are inner.
static constexpr uint32_t ZU___UNICODE_NORM_PLACE = 0x7FFF;
static constexpr uint32_t ZU___UNICODE_NORM_BOTH = 1 << 15; // the canonical decomposition, behind it the compatible one
static constexpr uint32_t ZU___UNICODE_NORM_HANGUL = 1 << 16;
static constexpr uint32_t ZU___UNICODE_NORM_WORK = 1 << 17;   // shifted left by the number of the form
static constexpr uint32_t ZU___UNICODE_NORM_SECOND = 1 << 21; // may be the second of a pair that composes
static constexpr uint32_t ZU___UNICODE_NORM_INNER = 1 << 22;  // shifted left by the number of the form
static constexpr uint32_t ZU___UNICODE_NORM_RANK = 0x3FU << 26;

// An element: a character, whether it may be the second of a pair, and the rank of its combining class.  In NormRuns
// also how many elements of the decomposition are left, itself included, where 15 means as many or more; three more can
// be read behind the last one.
static constexpr uint32_t ZU___UNICODE_ELEMENT_CHAR = 0x1FFFFF;
static constexpr uint32_t ZU___UNICODE_ELEMENT_SECOND = ZU___UNICODE_NORM_SECOND;
static constexpr int ZU___UNICODE_ELEMENT_LEFT_SHIFT = 22;
static constexpr uint32_t ZU___UNICODE_ELEMENT_LEFT = 0xF;
static constexpr int ZU___UNICODE_ELEMENT_RANK_SHIFT = 26; // as in an entry of Norm

// Where END is the end of the code space, an assertion of ZU_CHAR_OK ahead makes the test vanish.
template <int BITS, ZU_CHAR END, typename INDEX, typename VALUE>
static inline VALUE zu___UnicodeTableFetch( const INDEX *index, const VALUE *blocks, ZU_CHAR ch )
{
    if ( ch >= END ) {
        return 0;
    }
    return blocks[ (ZU_CHAR)index[ ch >> BITS ] << BITS | ( ch & ( ( 1U << BITS ) - 1 ) ) ];
}

// ZU___UNICODE_TABLE_FETCH( Cccv, ch ) stands for
//
//     zu___UnicodeTableFetch< zu___unicodeCccvBits, zu___unicodeCccvEnd >( zu___unicodeCccvIndex,
//                                                                           zu___unicodeCccvBlocks, ch )
#define ZU___UNICODE_TABLE_FETCH( table, ch )                                      \
    ( zu___UnicodeTableFetch<zu___unicode##table##Bits, zu___unicode##table##End>( \
        zu___unicode##table##Index, zu___unicode##table##Blocks, ( ch ) ) )

// The lookups of zu_unicode_db.h for the library's own loops: inline, for a `ch` that has passed ZU_CHAR_OK.
static inline ZU_UNICODE_GENC zu___UnicodeGencDbFetch( ZU_CHAR ch )
{
    return ZU___UNICODE_PROPERTIES_GENC( ZU___UNICODE_PROPERTIES( zu___unicodePropertyTable, ch ) );
}
static inline ZU_UNICODE_CCCV zu___UnicodeCccvDbFetch( ZU_CHAR ch )
{
    return ZU___UNICODE_TABLE_FETCH( Cccv, ch );
}
static inline ZU_UNICODE_SCRIPT zu___UnicodeScriptDbFetch( ZU_CHAR ch )
{
    return ZU___UNICODE_PROPERTIES_SCRIPT( ZU___UNICODE_PROPERTIES( zu___unicodePropertyTable, ch ) );
}
static inline ZU_INT zu___UnicodeDecimalDbFetch( ZU_CHAR ch )
{
    return ZU___UNICODE_TABLE_FETCH( Decimal, ch ) - 1;
}
// Norm's entry of a `ch` below zu___unicodeNormEnd; from there on all are 0.
static inline uint32_t zu___UnicodeNormFetch( ZU_CHAR ch )
{
    constexpr ZU_CHAR MASK = ( 1U << zu___unicodeNormBits ) - 1;
    return zu___unicodeNormBlocks[ zu___unicodeNormIndex[ ch >> zu___unicodeNormBits ] + ( ch & MASK ) ];
}
static inline ZU_CHAR zu___UnicodeCompDbFetch( ZU_CHAR ch1, ZU_CHAR ch2 )
{
    // Second characters are few, and nearly all are marks: in most text the first load decides.
    uint32_t column = ZU___UNICODE_TABLE_FETCH( CompSecond, ch2 );
    if ( !column ) {
        return 0;
    }
    uint32_t row = ZU___UNICODE_TABLE_FETCH( CompFirst, ch1 );
    uint32_t entry = row ? zu___unicodeCompPairs[ row + column ] : 0;
    return entry >> 21 == row ? entry & 0x1FFFFF : 0;
}
