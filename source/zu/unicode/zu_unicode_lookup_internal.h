// zu_unicode_lookup_internal.h: lookups between the values of a classification and the texts of its rows.
#pragma once

#include "zu/base/zu_ascii_internal.h"
#include "zu/base/zu_string_case.h"

#include <algorithm>
#include <string_view>

// The rows that have a text in one column, in the order of these texts.
template <size_t COUNT>
struct ZU___UNICODE_ORDER {
    size_t count;
    uint8_t rows[ COUNT ];
    bool folded; // in the order of the case-folded texts
};

// Returns the order of `rows` by their column `text`; for a constant.
template <typename ROW, size_t COUNT, size_t SIZE>
static constexpr ZU___UNICODE_ORDER<COUNT> zu___UnicodeSort( const ROW ( &rows )[ COUNT ], char ( ROW::*text )[ SIZE ],
                                                             bool folded )
{
    ZU___UNICODE_ORDER<COUNT> order = {};
    order.folded = folded;
    for ( size_t i = 0; i < COUNT; i++ ) {
        if ( ( rows[ i ].*text )[ 0 ] ) {
            order.rows[ order.count++ ] = (uint8_t)i;
        }
    }
    std::sort( order.rows, order.rows + order.count, [ & ]( uint8_t a, uint8_t b ) {
        std::string_view textA = rows[ a ].*text;
        std::string_view textB = rows[ b ].*text;
        return zu___AsciiCompare( textA.data(), (ZU_INT)textA.size(), textB.data(), (ZU_INT)textB.size(), folded ) < 0;
    } );
    return order;
}

// Returns the value of the row that has `zus` as its text in the column `text`; -1 if none has.
template <typename ROW, size_t COUNT, size_t SIZE>
static ZU_INT zu___UnicodeFindValue( const ROW ( &rows )[ COUNT ], char ( ROW::*text )[ SIZE ],
                                     const ZU___UNICODE_ORDER<COUNT> &order, ZU_STRING *zus )
{
    const ZU_CHAR *chs = zuStringBacking( zus );
    ZU_INT length = zuStringLength( zus );
    auto compare = [ & ]( uint8_t row ) {
        std::string_view own = rows[ row ].*text;
        return zu___AsciiCompare( own.data(), (ZU_INT)own.size(), chs, length, order.folded );
    };
    const uint8_t *end = order.rows + order.count;
    const uint8_t *found = std::partition_point( order.rows, end, [ & ]( uint8_t row ) { return compare( row ) < 0; } );
    return found != end && compare( *found ) == 0 ? rows[ *found ].value : -1;
}
// Looks for the case-folded `zus`.
template <typename ROW, size_t COUNT, size_t SIZE>
static ZU_INT zu___UnicodeFindValueOfFolded( const ROW ( &rows )[ COUNT ], char ( ROW::*text )[ SIZE ],
                                             const ZU___UNICODE_ORDER<COUNT> &order, ZU_STRING *zus )
{
    ZU_STRING *folded = zuStringRetain( zus );
    zuStringToCaseFold( &folded );
    ZU_INT value = zu___UnicodeFindValue( rows, text, order, folded );
    zuStringRelease( folded );
    return value;
}

// Returns the text of `value` in the column `text` as a new string; null if there is none.  The rows ascend by value.
template <typename ROW, size_t COUNT, size_t SIZE>
static ZU_STRING *zu___UnicodeText( const ROW ( &rows )[ COUNT ], char ( ROW::*text )[ SIZE ], ZU_INT value )
{
    const ROW *row =
        std::partition_point( rows, rows + COUNT, [ value ]( const ROW &each ) { return each.value < value; } );
    if ( row == rows + COUNT || row->value != value || !( row->*text )[ 0 ] ) {
        return nullptr;
    }
    return zuStringCreateFromAscii( row->*text, -1 );
}
