// Lists from stores and vectors come in any order, so that all items are appended and then sorted once.

#include "zu/tag/zu_tag_items_internal.h"

ZU_DICT *zu___TagItemsCreate( ZU_VECTOR *vec, const ZU___TAG_ITEM_CLASS *itemClass )
{
    ZU_INT count = zuVectorLength( vec );
    ZU_OBJ *const *items = zuVectorBacking( vec );
    ZU_DICT *dict = zu___DictCreateEmpty();
    ZU___DICT_PAIR *pairs = zu___DictMakeRoom( dict, 0, count );
    for ( ZU_INT i = 0; i < count; i++ ) {
        pairs[ i ] = { zuStringObj( itemClass->tag( items[ i ] ) ), zuObjRetain( items[ i ] ) };
    }
    zu___DictSort( dict, true );
    return dict;
}
ZU_STORE *zu___TagItemsStore( ZU_DICT *items, const ZU___TAG_ITEM_CLASS *itemClass )
{
    ZU_STORE *list = zuStoreCreate();
    for ( ZU_INT i = 0; i < items->length; i++ ) {
        ZU_STORE *stored = itemClass->store( zu___DictPair( items, i )->val );
        zuStoreSetStoreFormatCstr( &list, "%.*A", -1, stored, items->length - 1, i );
        ZU_REF_RELEASE( stored );
    }
    return list;
}
// As in zuTagSetDecode, the items are sorted when all are there.
ZU_DICT *zu___TagItemsRestore( ZU_STORE *store, const char *address, const ZU___TAG_ITEM_CLASS *itemClass )
{
    ZU_STORE *list = zuStoreStoreCstr( store, address, -1 );
    if ( !list ) {
        return zuDictCreate();
    }
    ZU_DICT *dict = zu___DictCreateEmpty();
    for ( ZU_INT i = 0; i < zuStoreLength( list ); i++ ) {
        ZU_STORE *stored = zuStoreStoreAt( list, i );
        ZU_OBJ *item = stored ? itemClass->tryRestore( stored ) : nullptr;
        if ( item ) {
            ZU___DICT_PAIR pair = { zuStringObj( itemClass->tag( item ) ), item };
            *zu___DictMakeRoom( dict, dict->length, 1 ) = pair;
        }
        ZU_REF_RELEASE_OPT( stored );
    }
    zu___DictSort( dict, true );
    ZU_REF_RELEASE( list );
    return dict;
}

void zu___TagStoreValueUse( ZU_STORE **store, const char *address, ZU_STRING *value )
{
    zuStoreSetValueCstr( store, address, -1, value );
    ZU_REF_RELEASE( value );
}
ZU_STRING *zu___TagRestoreTag( ZU_STORE *store, const char *address )
{
    ZU_STRING *tag = zuStoreValueCstr( store, address, -1 );
    if ( tag && !zuTagOk( tag ) ) {
        ZU_REF_RELEASE( tag );
        return nullptr;
    }
    return tag;
}
ZU_INT zu___TagRestoreConstant( ZU_STORE *store, const char *address, ZU_INT ( *fromString )( ZU_STRING *zus ) )
{
    ZU_STRING *name = zuStoreValueCstr( store, address, -1 );
    ZU_INT value = name ? fromString( name ) : -1;
    ZU_REF_RELEASE_OPT( name );
    return value;
}
