// Stores that a program has made nest as deep as they like, so that writing finds its way back on the heap.  What is
// read may nest no deeper than a fixed number of levels, which recursion can bear.

#include "zu/base/zu_store_binary.h"

#include "zu/base/zu_decoder_internal.h"
#include "zu/base/zu_store_internal.h"
#include "zu/sys/zu_mem.h"

static constexpr int DEPTH_MAX = 100; // levels that are read

// Writing

// A store on the way through a tree.  Values and sub-stores are come upon in the order of the addresses.
struct STORE_BINARY_WALK {
    STORE_BINARY_WALK *parent; // null at the root
    ZU_STORE *store;
    ZU_INT idx; // what comes next of the addresses, and so on
    ZU_INT valueIdx;
    ZU_INT storeIdx;
};
static STORE_BINARY_WALK *storeBinaryEnter( STORE_BINARY_WALK *parent, ZU_STORE *store, ZU_ENCODER *enc )
{
    STORE_BINARY_WALK *walk = (STORE_BINARY_WALK *)zuMemAlloc( sizeof( STORE_BINARY_WALK ) );
    *walk = { parent, store, 0, 0, 0 };
    zuEncoderEncodeInt( enc, zuStoreLength( store ) );
    return walk;
}
static STORE_BINARY_WALK *storeBinaryLeave( STORE_BINARY_WALK *walk )
{
    STORE_BINARY_WALK *parent = walk->parent;
    zuMemFree( walk );
    return parent;
}
// Returns what `dict` has at `address` and moves on, or null if what comes next there has another address.
static ZU_OBJ *storeBinaryNext( ZU_DICT *dict, ZU_INT *idx, ZU_STRING *address )
{
    if ( *idx == dict->length ) {
        return nullptr;
    }
    ZU___DICT_PAIR pair = *zu___DictPair( dict, *idx );
    ZU_STRING *key = (ZU_STRING *)pair.key;
    if ( key != address && zu___StringCompareChars( key->chars + key->fspace, key->length,
                                                    address->chars + address->fspace, address->length ) != 0 ) {
        return nullptr;
    }
    ( *idx )++;
    return pair.val;
}
void zuStoreBinaryEncodeToEncoder( ZU_STORE *store, ZU_ENCODER *enc )
{
    ZU_ASSERT( store );
    ZU_ASSERT( enc );
    STORE_BINARY_WALK *walk = storeBinaryEnter( nullptr, store, enc );
    while ( walk ) {
        ZU_STORE *own = walk->store;
        if ( walk->idx == own->addresses->length ) {
            walk = storeBinaryLeave( walk );
            continue;
        }
        ZU_STRING *address = (ZU_STRING *)zu___DictPair( own->addresses, walk->idx++ )->key;
        zu___StorePrefetchPair( own->values, walk->valueIdx );
        zuEncoderEncodeString( enc, address );
        zuEncoderEncodeOptionalString( enc, (ZU_STRING *)storeBinaryNext( own->values, &walk->valueIdx, address ) );
        ZU_STORE *sub = (ZU_STORE *)storeBinaryNext( own->stores, &walk->storeIdx, address );
        zuEncoderEncodeBool( enc, sub != nullptr );
        if ( sub ) {
            walk = storeBinaryEnter( walk, sub, enc );
        }
    }
}
ZU_BUFFER *zuStoreBinaryEncodeToBuffer( ZU_STORE *store )
{
    ZU_ASSERT( store );
    ZU_ENCODER *enc = zuEncoderCreate();
    zuStoreBinaryEncodeToEncoder( store, enc );
    ZU_BUFFER *buf = zuEncoderBuffer( enc );
    ZU_REF_RELEASE( enc );
    return buf;
}

// Reading

static ZU_STORE *storeBinaryTryDecode( ZU_DECODER *dec, int depth );

// Reads what is at an address; a failure is in the decoder.
static void storeBinaryTryDecodeEntry( ZU_DECODER *dec, ZU_STRING *address, int depth, ZU___STORE_BUILDER *builder )
{
    ZU_STRING *value = nullptr;
    zuDecoderTryDecodeOptionalString( dec, &value );
    if ( value ) {
        zu___StoreBuilderSetValue( builder, zuStringRetain( address ), value );
    }
    ZU_BOOL hasStore;
    ZU_STORE *sub = zuDecoderTryDecodeBool( dec, &hasStore ) && hasStore ? storeBinaryTryDecode( dec, depth ) : nullptr;
    if ( sub ) {
        zu___StoreBuilderSetStore( builder, zuStringRetain( address ), sub );
    }
}
static ZU_STORE *storeBinaryTryDecode( ZU_DECODER *dec, int depth )
{
    ZU___STORE_BUILDER builder = {};
    ZU_INT count;
    zuDecoderTryDecodeInt( dec, &count );
    if ( depth == DEPTH_MAX || count < 0 ) {
        zuDecoderSetError( dec );
    }
    for ( ; count > 0 && !zuDecoderError( dec ); count-- ) {
        ZU_STRING *address = nullptr;
        if ( zuDecoderTryDecodeString( dec, &address ) ) {
            if ( zuStoreAddressOk( address ) ) {
                storeBinaryTryDecodeEntry( dec, address, depth + 1, &builder );
            } else {
                zuDecoderSetError( dec );
            }
            ZU_REF_RELEASE( address );
        }
    }
    if ( zuDecoderError( dec ) ) {
        zu___StoreBuilderDrop( &builder );
        return nullptr;
    }
    return zu___StoreBuilderFinish( &builder );
}
ZU_STORE *zuStoreBinaryTryDecodeFromDecoder( ZU_DECODER *dec )
{
    ZU_ASSERT( dec );
    return storeBinaryTryDecode( dec, 0 );
}
ZU_STORE *zuStoreBinaryTryDecodeFromBuffer( ZU_BUFFER *buf )
{
    ZU_ASSERT( buf );
    ZU_DECODER *dec = zuDecoderCreate( buf );
    ZU_STORE *store = zuStoreBinaryTryDecodeFromDecoder( dec );
    if ( store && zuDecoderRemaining( dec ) > 0 ) {
        ZU_REF_RELEASE( store );
        store = nullptr;
    }
    ZU_REF_RELEASE( dec );
    return store;
}

// Stores as values
void zuEncoderEncodeStore( ZU_ENCODER *enc, ZU_STORE *value )
{
    ZU_ASSERT( enc );
    ZU_ASSERT( value );
    zuStoreBinaryEncodeToEncoder( value, enc );
}
void zuEncoderEncodeOptionalStore( ZU_ENCODER *enc, ZU_STORE *value )
{
    zuEncoderEncodeBool( enc, value != nullptr );
    if ( value ) {
        zuEncoderEncodeStore( enc, value );
    }
}
ZU_BOOL zuDecoderTryDecodeStore( ZU_DECODER *dec, ZU_STORE **value )
{
    ZU_ASSERT( dec );
    zu___DecoderClear( value );
    return zu___DecoderDeliver( value, zuStoreBinaryTryDecodeFromDecoder( dec ) );
}
ZU_BOOL zuDecoderTryDecodeOptionalStore( ZU_DECODER *dec, ZU_STORE **value )
{
    ZU_ASSERT( dec );
    zu___DecoderClear( value );
    ZU_BOOL present;
    return zuDecoderTryDecodeBool( dec, &present ) && ( !present || zuDecoderTryDecodeStore( dec, value ) );
}
