// zu_store_internal.h: the inside of ZU_STORE, for the files that share it.
#pragma once

#include "zu/base/zu_dict_internal.h"
#include "zu/base/zu_store.h"
#include "zu/base/zu_string_internal.h"

#include <initializer_list>

// The keys of `addresses` are those of `values` and of `stores`, and all are strings that zuStoreAddressOk accepts.
struct ZU_STORE {
    ZU_OBJ obj;
    ZU_DICT *addresses; // to the same strings
    ZU_DICT *values;    // to ZU_STRING
    ZU_DICT *stores;    // to ZU_STORE
};

// An address to look for.
struct ZU___STORE_KEY {
    const ZU_CHAR *chars; // null if the caller has given a null address
    ZU_INT length;

    explicit ZU___STORE_KEY( ZU_STRING *address )
        : chars( address ? address->chars + address->fspace : nullptr ), length( address ? address->length : 0 )
    {
    }
    ZU___STORE_KEY( const ZU_CHAR *addressChars, ZU_INT addressLength ) : chars( addressChars ), length( addressLength )
    {
    }
};

// Converts an address to look for; only one that is too long for the stack becomes a string.
class ZU___STORE_TEXT {
public:
    ZU___STORE_TEXT( const char *address, ZU_INT addressLength )
        : length( zuCharsConvertFromCstr( chars, ROOM, address, addressLength ) ),
          string( length > ROOM ? zuStringCreateFromCstr( address, addressLength ) : nullptr )
    {
    }
    ZU___STORE_TEXT( const char16_t *address, ZU_INT addressLength )
        : length( zuCharsConvertFromWcstr( chars, ROOM, address, addressLength ) ),
          string( length > ROOM ? zuStringCreateFromWcstr( address, addressLength ) : nullptr )
    {
    }
    ZU___STORE_TEXT( const ZU___STORE_TEXT & ) = delete;
    ZU___STORE_TEXT &operator=( const ZU___STORE_TEXT & ) = delete;
    ~ZU___STORE_TEXT()
    {
        ZU_REF_RELEASE_OPT( string );
    }
    operator ZU___STORE_KEY() const
    {
        return string ? ZU___STORE_KEY( string ) : ZU___STORE_KEY( chars, length );
    }

private:
    static constexpr ZU_INT ROOM = 64;
    ZU_CHAR chars[ ROOM ];
    ZU_INT length;
    ZU_STRING *string; // null: in `chars`
};

// The operations that look an address up.  They abort on a null store and an address that none can have.
ZU_BOOL zu___StoreHasAddress( ZU_STORE *store, ZU___STORE_KEY address );
ZU_BOOL zu___StoreHasValue( ZU_STORE *store, ZU___STORE_KEY address );
ZU_STRING *zu___StoreValue( ZU_STORE *store, ZU___STORE_KEY address );
ZU_BOOL zu___StoreHasStore( ZU_STORE *store, ZU___STORE_KEY address );
ZU_STORE *zu___StoreStore( ZU_STORE *store, ZU___STORE_KEY address );
ZU_BOOL zu___StoreHasValueBool( ZU_STORE *store, ZU___STORE_KEY address );
ZU_BOOL zu___StoreHasValueInt( ZU_STORE *store, ZU___STORE_KEY address );
ZU_BOOL zu___StoreHasValueReal( ZU_STORE *store, ZU___STORE_KEY address );
ZU_BOOL zu___StoreValueBool( ZU_STORE *store, ZU_BOOL *value, ZU___STORE_KEY address );
ZU_BOOL zu___StoreValueInt( ZU_STORE *store, ZU_INT *value, ZU___STORE_KEY address );
ZU_BOOL zu___StoreValueReal( ZU_STORE *store, double *value, ZU___STORE_KEY address );

// Returns a new store that takes the dicts over.
ZU_STORE *zu___StoreCreateOfDicts( ZU_DICT *addresses, ZU_DICT *values, ZU_DICT *stores );

// As zuStoreAddressOk; `chars` must not be null.
bool zu___StoreAddressCharsOk( const ZU_CHAR *chars, ZU_INT length );

// Fetches the texts of a pair that whoever goes through a dict of strings will come to soon: they lie anywhere in memory,
// and are in no cache.
static inline void zu___StorePrefetchPair( ZU_DICT *dict, ZU_INT idx )
{
    static constexpr ZU_INT AHEAD = 6;
    if ( idx + AHEAD < dict->length ) {
        ZU___DICT_PAIR pair = *zu___DictPair( dict, idx + AHEAD );
        for ( ZU_STRING *text : { (ZU_STRING *)pair.key, (ZU_STRING *)pair.val } ) {
            __builtin_prefetch( &text->length );
            __builtin_prefetch( &text->inlineChars[ 8 ] );
        }
    }
}

// A store in the making, for who has many entries in an order that others have chosen: set one by one, each would move
// all those behind it.  Begins as all null.
struct ZU___STORE_BUILDER {
    ZU_DICT *values; // as they came, unless null
    ZU_DICT *stores; // likewise
};

// Sets a value.  Both references are taken over; the address must be one.
void zu___StoreBuilderSetValue( ZU___STORE_BUILDER *builder, ZU_STRING *address, ZU_STRING *value );
// Sets a sub-store, likewise.
void zu___StoreBuilderSetStore( ZU___STORE_BUILDER *builder, ZU_STRING *address, ZU_STORE *store );
// Returns a new store with what has been set, the last of what has been set at equal addresses; the builder is done
// with.  Takes the time of a sort.
ZU_STORE *zu___StoreBuilderFinish( ZU___STORE_BUILDER *builder );
// Releases what has been set; the builder is done with.
void zu___StoreBuilderDrop( ZU___STORE_BUILDER *builder );
