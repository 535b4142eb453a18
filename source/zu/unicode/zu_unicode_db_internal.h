// zu_unicode_db_internal.h: the way through the generated tables.
//
// A table has a value for each code point, in two stages: the code space is cut into blocks of 2^Bits code points,
// Index tells for each of them which of the different blocks it is like, and Blocks has the values of these.  From End
// on all values are 0.
//
//     Genc, Cccv, Script  the value itself
//     Decimal             the digit plus 1; 0: none
//     Cdm                 tag << 24 | length << 16 | place in Runs; 0: none
//     Lower, Upper, Fold  place in Runs << 2 | length; 0: none
//     CompFirst           where the row of this first character begins in CompPairs; 0: it composes with none
//     CompSecond          the column of this second character, from 1 on; 0: it composes with none
//
// Runs holds the characters of all mappings.  The rows of CompPairs lie over one another, each filling gaps of the
// others: an entry is the beginning of the row that it belongs to << 21 | composite.
#pragma once

#include "zu/unicode/zu_unicode_cccv.h"
#include "zu/unicode/zu_unicode_db_tables_internal.h"
#include "zu/unicode/zu_unicode_genc.h"
#include "zu/unicode/zu_unicode_script.h"

// Where END is the end of the code space, an assertion of ZU_CHAR_OK ahead makes the test vanish.
template <int BITS, ZU_CHAR END, typename INDEX, typename VALUE>
static inline VALUE zu___UnicodeTableFetch( const INDEX *index, const VALUE *blocks, ZU_CHAR ch )
{
    if ( ch >= END ) {
        return 0;
    }
    return blocks[ (ZU_CHAR)index[ ch >> BITS ] << BITS | ( ch & ( ( 1U << BITS ) - 1 ) ) ];
}

// ZU___UNICODE_TABLE_FETCH( Genc, ch ) stands for
//
//     zu___UnicodeTableFetch< zu___unicodeGencBits, zu___unicodeGencEnd >( zu___unicodeGencIndex,
//                                                                           zu___unicodeGencBlocks, ch )
#define ZU___UNICODE_TABLE_FETCH( table, ch )                                      \
    ( zu___UnicodeTableFetch<zu___unicode##table##Bits, zu___unicode##table##End>( \
        zu___unicode##table##Index, zu___unicode##table##Blocks, ( ch ) ) )

// The lookups of zu_unicode_db.h for the library's own loops: inline, for a `ch` that has passed ZU_CHAR_OK.
static inline ZU_UNICODE_GENC zu___UnicodeGencDbFetch( ZU_CHAR ch )
{
    return ZU___UNICODE_TABLE_FETCH( Genc, ch );
}
static inline ZU_UNICODE_CCCV zu___UnicodeCccvDbFetch( ZU_CHAR ch )
{
    return ZU___UNICODE_TABLE_FETCH( Cccv, ch );
}
static inline ZU_UNICODE_SCRIPT zu___UnicodeScriptDbFetch( ZU_CHAR ch )
{
    return ZU___UNICODE_TABLE_FETCH( Script, ch );
}
static inline ZU_INT zu___UnicodeDecimalDbFetch( ZU_CHAR ch )
{
    return ZU___UNICODE_TABLE_FETCH( Decimal, ch ) - 1;
}
