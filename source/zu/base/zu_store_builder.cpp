// A file of settings brings its pairs in any order, so that they are collected and sorted once at the end: setting them
// one by one would search and move for each.

#include "zu/base/zu_store_internal.h"

#include "zu/runtime/zu_obj_internal.h"

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
// Returns the keys of two dicts that are in order, each mapped to itself; of equal ones that of `stores`.
static ZU_DICT *storeBuilderUnite( ZU_DICT *values, ZU_DICT *stores )
{
    if ( values->length + stores->length == 0 ) {
        return zuDictCreate();
    }
    ZU_DICT *addresses = zu___DictCreateEmpty();
    ZU___DICT_PAIR *pair = zu___DictMakeRoom( addresses, 0, values->length + stores->length );
    ZU_INT valueIdx = 0;
    ZU_INT storeIdx = 0;
    while ( valueIdx < values->length || storeIdx < stores->length ) {
        ZU_OBJ *value = valueIdx < values->length ? zu___DictPair( values, valueIdx )->key : nullptr;
        ZU_OBJ *store = storeIdx < stores->length ? zu___DictPair( stores, storeIdx )->key : nullptr;
        ZU_INT order = value && store ? zu___ObjCompareInline( value, store ) : value ? -1 : 1;
        valueIdx += order <= 0;
        storeIdx += order >= 0;
        ZU_OBJ *key = order < 0 ? value : store;
        *pair++ = { zuObjRetain( key ), zuObjRetain( key ) };
    }
    addresses->length = pair - zu___DictPair( addresses, 0 );
    addresses->keySort = zuStringSort();
    zu___DictCompact( addresses );
    return addresses;
}
ZU_STORE *zu___StoreBuilderFinish( ZU___STORE_BUILDER *builder )
{
    ZU_DICT *values = storeBuilderSort( builder->values );
    ZU_DICT *stores = storeBuilderSort( builder->stores );
    *builder = {};
    return zu___StoreCreateOfDicts( storeBuilderUnite( values, stores ), values, stores );
}
void zu___StoreBuilderDrop( ZU___STORE_BUILDER *builder )
{
    ZU_REF_RELEASE_OPT( builder->values );
    ZU_REF_RELEASE_OPT( builder->stores );
    *builder = {};
}
