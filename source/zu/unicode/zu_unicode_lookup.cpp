#include "zu/unicode/zu_unicode_lookup_internal.h"

#include "zu/base/zu_string_case.h"

ZU_DICT *zu___UnicodeLookupValues( ZU_DICT *texts, bool folded )
{
    ZU_DICT *dict = zu___DictCreateEmpty();
    ZU___DICT_PAIR *gap = zu___DictMakeRoom( dict, 0, texts->length );
    for ( ZU_INT i = 0; i < texts->length; i++ ) {
        ZU_STRING *text = zuStringRetain( zuStringFrom( texts->items[ i ].val ) );
        if ( folded ) {
            zuStringToCaseFold( &text );
        }
        gap[ i ] = { zuStringObj( text ), zuObjRetain( texts->items[ i ].key ) };
    }
    zu___DictSort( dict, true );
    return dict;
}
ZU_STRING *zu___UnicodeLookupText( ZU_DICT *texts, ZU_INT value )
{
    return zuStringFrom( zuDictIntKey( texts, value ) );
}
ZU_INT zu___UnicodeLookupValue( ZU_DICT *values, ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return zu___DictIntAt( values, zuDictIndexOfStringKey( values, zus ), -1 );
}
ZU_INT zu___UnicodeLookupValueOfFolded( ZU_DICT *values, ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    ZU_STRING *folded = zuStringRetain( zus );
    zuStringToCaseFold( &folded );
    ZU_INT value = zu___UnicodeLookupValue( values, folded );
    ZU_REF_RELEASE( folded );
    return value;
}
