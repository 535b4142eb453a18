// zu_unicode_lookup_internal.h: the dicts between the values of a classification and the texts of its rows.
#pragma once

#include "zu/base/zu_boxed_int.h"
#include "zu/base/zu_dict_internal.h"
#include "zu/base/zu_string.h"

// Returns a dict from the values of `rows`, which ascend, to the texts in their column `text`; an empty one is none.  If
// there is one for another column, without gaps, `like` lends its keys.
template <typename ROW, size_t COUNT, size_t SIZE>
static ZU_DICT *zu___UnicodeLookupTexts( const ROW ( &rows )[ COUNT ], char ( ROW::*text )[ SIZE ],
                                         ZU_DICT *like = nullptr )
{
    ZU_INT count = 0;
    for ( const ROW &row : rows ) {
        count += ( row.*text )[ 0 ] != 0;
    }
    ZU_DICT *dict = zu___DictCreateEmpty();
    ZU___DICT_PAIR *gap = zu___DictMakeRoom( dict, 0, count );
    for ( size_t i = 0; i < COUNT; i++ ) {
        const ROW &row = rows[ i ];
        if ( ( row.*text )[ 0 ] != 0 ) {
            *gap++ = { like ? zuObjRetain( like->items[ i ].key ) : zuBoxedIntObj( zuBoxedIntCreate( row.value ) ),
                       zuStringObj( zuStringCreateFromAscii( row.*text, -1 ) ) };
        }
    }
    zu___DictSort( dict, false );
    return dict;
}

ZU_BEGIN_DECLS

// Returns the reverse of such a dict, with its texts case-folded if `folded` is set.
ZU_DICT *zu___UnicodeLookupValues( ZU_DICT *texts, bool folded );

// Returns the text of a value; null if it has none.
ZU_STRING *zu___UnicodeLookupText( ZU_DICT *texts, ZU_INT value );

// Returns the value of a text; -1 if it has none.
ZU_INT zu___UnicodeLookupValue( ZU_DICT *values, ZU_STRING *zus );

// Returns the value of the case-folded text; -1 if it has none.
ZU_INT zu___UnicodeLookupValueOfFolded( ZU_DICT *values, ZU_STRING *zus );

// Releases a dict that a shut-down leaves behind.
#define ZU___UNICODE_LOOKUP_RELEASE( dict ) \
    do {                                    \
        ZU_REF_RELEASE( dict );             \
        ZU_REF_POISON( dict );              \
    } while ( 0 )

ZU_END_DECLS
