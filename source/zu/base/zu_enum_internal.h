// zu_enum_internal.h: what enumerations and flag sets share, and the making of those that the library itself has.
#pragma once

#include "zu/base/zu_dict_internal.h"
#include "zu/base/zu_enum.h"
#include "zu/base/zu_string_trim_internal.h"

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

// Creates the enumeration of a table for the process-wide variable `variable`.  A name that the table has twice aborts.
#define ZU___ENUM_CREATE( variable, rows ) \
    zu___EnumCreateFromRows( rows, (ZU_INT)( sizeof( rows ) / sizeof( *( rows ) ) ), #variable, __FILE__, __LINE__ )

// Behind ZU___ENUM_CREATE: all rows at once, which takes half the time that they take one by one.
ZU_ENUM *zu___EnumCreateFromRows( const ZU___NAMED_VALUE *rows, ZU_INT count, const char *variable, const char *file,
                                  int32_t line );

// Fills `pairs` with the name and the boxed value of each row.
void zu___NamedValuesFill( ZU___DICT_PAIR *pairs, const ZU___NAMED_VALUE *rows, ZU_INT count );

// Brings a dict in order whose pairs are those of all rows.  For a name that is there twice it aborts as the assertion
// !<hasFunc>( *(&<variable>), "<name>", -1 ) would ahead of the second row.
void zu___NamedValuesSort( ZU_DICT *byName, const ZU___NAMED_VALUE *rows, const char *hasFunc, const char *variable,
                           const char *file, int32_t line );

// Takes white space off both ends of a text.
static inline void zu___EnumTrim( const ZU_CHAR **chars, ZU_INT *length )
{
    while ( *length > 0 && zu___StringIsBlankChar( ( *chars )[ *length - 1 ] ) ) {
        --*length;
    }
    while ( *length > 0 && zu___StringIsBlankChar( **chars ) ) {
        ++*chars;
        --*length;
    }
}

ZU_END_DECLS
