#include "zu/base/zu_store_internal.h"

// Adds a pair at the end of a dict, which is made if it is null.
static void storeBuilderAdd( ZU_DICT **dict, ZU_OBJ *key, ZU_OBJ *val )
{
    if ( !*dict ) {
        *dict = zu___DictCreateEmpty();
    }
    *zu___DictMakeRoom( *dict, ( *dict )->length, 1 ) = { key, val };
}
void zu___StoreBuilderSetValue( ZU___STORE_BUILDER *builder, ZU_STRING *address, ZU_STRING *value )
{
    storeBuilderAdd( &builder->values, zuStringObj( address ), zuStringObj( value ) );
}
void zu___StoreBuilderSetStore( ZU___STORE_BUILDER *builder, ZU_STRING *address, ZU_STORE *store )
{
    storeBuilderAdd( &builder->stores, zuStringObj( address ), zuStoreObj( store ) );
}

// Brings a dict in order; none becomes the empty one.
static ZU_DICT *storeBuilderSort( ZU_DICT *dict )
{
    if ( !dict ) {
        return zuDictCreate();
    }
    zu___DictSort( dict, true );
    zu___DictCompact( dict );
    return dict;
}
static void storeBuilderAddKeys( ZU_DICT **dict, ZU_DICT *src )
{
    for ( ZU_INT i = 0; i < src->length; i++ ) {
        ZU_OBJ *key = src->items[ i ].key;
        storeBuilderAdd( dict, zuObjRetain( key ), zuObjRetain( key ) );
    }
}
ZU_STORE *zu___StoreBuilderFinish( ZU___STORE_BUILDER *builder )
{
    ZU_DICT *values = storeBuilderSort( builder->values );
    ZU_DICT *stores = storeBuilderSort( builder->stores );
    ZU_DICT *addresses = nullptr;
    storeBuilderAddKeys( &addresses, values );
    storeBuilderAddKeys( &addresses, stores );
    *builder = {};
    return zu___StoreCreateOfDicts( storeBuilderSort( addresses ), values, stores );
}
void zu___StoreBuilderDrop( ZU___STORE_BUILDER *builder )
{
    ZU_REF_RELEASE_OPT( builder->values );
    ZU_REF_RELEASE_OPT( builder->stores );
    *builder = {};
}
