// zu_enum_internal.h: what enumerations and flag sets share, and the making of those that the library itself has.
#pragma once

#include "zu/base/zu_dict_internal.h"
#include "zu/base/zu_enum.h"
#include "zu/base/zu_name_internal.h"

#include <string_view>

ZU_BEGIN_DECLS

// A row of a table of constants.  The name is part of the row, so that a table needs no relocation.
typedef struct ZU___NAMED_VALUE {
    ZU_INT value;
    char name[ 56 ];
} ZU___NAMED_VALUE;

// The row of the constant `constant`:
//
//     static constexpr ZU___NAMED_VALUE COLOURS[] = {
//         ZU___NAMED_VALUE_OF( ZU_COLOUR_RED ),
//         ZU___NAMED_VALUE_OF( ZU_COLOUR_BLUE ),
//     };
//     zu___ColourEnum = ZU___ENUM_CREATE( zu___ColourEnum, COLOURS );
#define ZU___NAMED_VALUE_OF( constant ) \
    {                                   \
        ( constant ), #constant         \
    }

// A table, and what the compiler has found out about it.
typedef struct ZU___NAMED_TABLE {
    const ZU___NAMED_VALUE *rows;
    const uint8_t *places; // of each row in the order of the names
    ZU_INT count;
    ZU_INT twice;         // the first row whose name another row ahead of it has too, -1: none
    bool ascending;       // each value is higher than the one ahead
    const char *variable; // the process-wide variable that is made of the table, and where that is done
    const char *file;
    int32_t line;
} ZU___NAMED_TABLE;

// Creates the enumeration of a table for the process-wide variable `variable`.  A name that the table has twice aborts.
#define ZU___ENUM_CREATE( variable, rows ) zu___EnumCreateFromTable( ZU___NAMED_TABLE_OF( variable, rows ) )

// Behind ZU___ENUM_CREATE: all rows at once, and none compared with another.
ZU_ENUM *zu___EnumCreateFromTable( const ZU___NAMED_TABLE &table );

// Returns the dict from the names of a table to their values, boxed; the row `i` is its pair `table.places[ i ]`.  For
// a name that is there twice it aborts as the assertion !<hasFunc>( *(&<variable>), "<name>", -1 ) would ahead of the
// second row.
ZU_DICT *zu___DictCreateFromTable( const ZU___NAMED_TABLE &table, const char *hasFunc );

ZU_END_DECLS

// The compiler's part: names are checked and brought in order once for all starts.
template <size_t COUNT>
struct ZU___NAMED_ORDER {
    uint8_t places[ COUNT ];
    ZU_INT twice;
    bool ascending;
};
template <size_t COUNT>
consteval ZU___NAMED_ORDER<COUNT> zu___NamedOrder( const ZU___NAMED_VALUE ( &rows )[ COUNT ] )
{
    static_assert( COUNT <= UINT8_MAX );
    ZU___NAMED_ORDER<COUNT> order = { {}, -1, true };
    for ( size_t i = 0; i < COUNT; i++ ) {
        std::string_view name = rows[ i ].name;
        ZU_ASSERT( zu___NameUpperCaseOk( name.data(), (ZU_INT)name.size(), true ) );
        order.ascending = order.ascending && ( i == 0 || rows[ i - 1 ].value < rows[ i ].value );
        for ( size_t j = 0; j < COUNT; j++ ) {
            bool ahead = j < i && rows[ j ].name == name;
            order.places[ i ] = (uint8_t)( order.places[ i ] + ( ahead || rows[ j ].name < name ) );
            order.twice = ahead && order.twice < 0 ? (ZU_INT)i : order.twice;
        }
    }
    return order;
}
// The column of names of a table that knows more of each constant: its rows have a field `name`, and the row `i` is that
// of the value `i`.
//
//     static constexpr auto NAMES = zu___NamedColumn( ROWS );
//     zu___ColourEnum = ZU___ENUM_CREATE( zu___ColourEnum, NAMES.rows );
template <size_t COUNT>
struct ZU___NAMED_COLUMN {
    ZU___NAMED_VALUE rows[ COUNT ];
};
template <typename ROW, size_t COUNT>
consteval ZU___NAMED_COLUMN<COUNT> zu___NamedColumn( const ROW ( &rows )[ COUNT ] )
{
    ZU___NAMED_COLUMN<COUNT> column = {};
    for ( size_t i = 0; i < COUNT; i++ ) {
        ZU_ASSERT( rows[ i ].name.value == (ZU_INT)i );
        column.rows[ i ] = rows[ i ].name;
    }
    return column;
}
#define ZU___NAMED_TABLE_OF( variable, rows )                                                        \
    [] {                                                                                             \
        static constexpr auto order = zu___NamedOrder( rows );                                       \
        return ZU___NAMED_TABLE{ rows,        order.places,    sizeof( rows ) / sizeof( *( rows ) ), \
                                 order.twice, order.ascending, #variable,                            \
                                 __FILE__,    __LINE__ };                                            \
    }()
