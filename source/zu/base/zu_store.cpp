// Three dicts: the addresses in use, each mapped to itself, the values and the sub-stores.  The first is what gives
// addresses positions; the others stay apart from it, so that a copy of the store can share those that do not change.
//
// The form of an operation that takes a string does the work, and the others hand on to it; where text is only to be
// found, it is not made a string.

#include "zu/base/zu_store.h"

#include "zu/base/zu_dict_internal.h"
#include "zu/base/zu_format.h"
#include "zu/base/zu_string_format.h"
#include "zu/base/zu_string_internal.h"
#include "zu/runtime/zu_module.h"
#include "zu/sys/zu_mem.h"

// The keys of `addresses` are those of `values` and of `stores`, and all are strings that zuStoreAddressOk accepts.
struct ZU_STORE {
    ZU_OBJ obj;
    ZU_DICT *addresses; // to the same strings
    ZU_DICT *values;    // to ZU_STRING
    ZU_DICT *stores;    // to ZU_STORE
};

static void storeFree( ZU_OBJ *thisObj );
static ZU_INT storeCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj );

static ZU_SORT zu___sort_ZU_STORE = ZU___SORT_INITIALIZER( "ZU_STORE", &zu___module, storeFree, storeCompare, nullptr );
ZU___STDFUNCS( ZU_STORE, zuStore )

// Start-up
void zu___StoreStartup( void )
{
}
void zu___StoreShutdown( void )
{
}

// Addresses
namespace {

// An address to look for.
struct STORE_KEY {
    const ZU_CHAR *chars; // null if the caller has given a null address
    ZU_INT length;

    explicit STORE_KEY( ZU_STRING *address )
        : chars( address ? address->chars + address->fspace : nullptr ), length( address ? address->length : 0 )
    {
    }
    STORE_KEY( const ZU_CHAR *addressChars, ZU_INT addressLength ) : chars( addressChars ), length( addressLength )
    {
    }
    explicit operator bool() const
    {
        return chars != nullptr;
    }
};

// Takes over the address that a form has made, and gives it up at the end of the statement or block.
class STORE_ADDRESS {
public:
    explicit STORE_ADDRESS( ZU_STRING *taken ) : address( taken )
    {
    }
    STORE_ADDRESS( const STORE_ADDRESS & ) = delete;
    STORE_ADDRESS &operator=( const STORE_ADDRESS & ) = delete;
    ~STORE_ADDRESS()
    {
        ZU_REF_RELEASE( address );
    }
    operator ZU_STRING *() const
    {
        return address;
    }

private:
    ZU_STRING *address;
};

// Converts an address to look for; only one that is too long for the stack becomes a string.
class STORE_TEXT {
public:
    STORE_TEXT( const char *address, ZU_INT addressLength )
        : length( zuCharsConvertFromCstr( chars, ROOM, address, addressLength ) ),
          string( length > ROOM ? zuStringCreateFromCstr( address, addressLength ) : nullptr )
    {
    }
    STORE_TEXT( const char16_t *address, ZU_INT addressLength )
        : length( zuCharsConvertFromWcstr( chars, ROOM, address, addressLength ) ),
          string( length > ROOM ? zuStringCreateFromWcstr( address, addressLength ) : nullptr )
    {
    }
    STORE_TEXT( const STORE_TEXT & ) = delete;
    STORE_TEXT &operator=( const STORE_TEXT & ) = delete;
    ~STORE_TEXT()
    {
        ZU_REF_RELEASE_OPT( string );
    }
    operator STORE_KEY() const
    {
        return string ? STORE_KEY( string ) : STORE_KEY( chars, length );
    }

private:
    static constexpr ZU_INT ROOM = 64;
    ZU_CHAR chars[ ROOM ];
    ZU_INT length;
    ZU_STRING *string; // null: in `chars`
};

} // namespace

// The characters of addresses, as bits of two words.
struct STORE_CHARS {
    uint64_t bits[ 2 ] = {};

    constexpr STORE_CHARS()
    {
        for ( char ch : "-_0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz" ) {
            bits[ ch / 64 ] |= (uint64_t)( ch != '\0' ) << ch % 64;
        }
    }
};
static constexpr STORE_CHARS ADDRESS_CHARS;
static inline bool storeCharOk( ZU_CHAR ch )
{
    return ch < 128 && ( ADDRESS_CHARS.bits[ ch / 64 ] >> ch % 64 & 1 );
}
static ZU_BOOL zuStoreAddressOk( STORE_KEY address )
{
    ZU_ASSERT( address );
    for ( ZU_INT i = 0; i < address.length; i++ ) {
        if ( !storeCharOk( address.chars[ i ] ) ) {
            return ZU_FALSE;
        }
    }
    return address.length > 0;
}
ZU_BOOL zuStoreAddressOk( ZU_STRING *address )
{
    return zuStoreAddressOk( STORE_KEY( address ) );
}

// Declares `address` and makes it by `create` of the `args` behind the parameter `last`.  No function can open the
// arguments of its caller.
//
//     STORE_FORMAT_ADDRESS( address, fmt, zuStringCreateFromFormatArgList( fmt, args ) );
#define STORE_FORMAT_ADDRESS( address, last, create ) \
    va_list args;                                     \
    va_start( args, last );                           \
    STORE_ADDRESS address( create );                  \
    va_end( args )

// Creation
static ZU_STORE *storeCreateOfDicts( ZU_DICT *addresses, ZU_DICT *values, ZU_DICT *stores )
{
    ZU_STORE *store = (ZU_STORE *)zu___ObjCreate( sizeof( ZU_STORE ), &zu___sort_ZU_STORE );
    store->addresses = addresses;
    store->values = values;
    store->stores = stores;
    return store;
}
ZU_STORE *zuStoreCreate( void )
{
    return storeCreateOfDicts( zuDictCreate(), zuDictCreate(), zuDictCreate() );
}
ZU_STORE *zuStoreCreateFrom( ZU_STORE *source )
{
    ZU_ASSERT( source );
    return storeCreateOfDicts( zuDictRetain( source->addresses ), zuDictRetain( source->values ),
                               zuDictRetain( source->stores ) );
}
static void storeUnshare( ZU_STORE **store )
{
    if ( ZU_REF_RETAIN_COUNT( *store ) > 1 ) {
        ZU_STORE *old = *store;
        *store = zuStoreCreateFrom( old );
        ZU_REF_RELEASE( old );
    }
}

// Standard functions
static void storeFree( ZU_OBJ *thisObj )
{
    ZU_STORE *store = zuStoreFrom( thisObj );
    ZU_ASSERT( store );
    ZU_REF_RELEASE( store->addresses );
    ZU_REF_POISON( store->addresses );
    ZU_REF_RELEASE( store->values );
    ZU_REF_POISON( store->values );
    ZU_REF_RELEASE( store->stores );
    ZU_REF_POISON( store->stores );
}
static ZU_INT storeCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    ZU_STORE *storeA = zuStoreFrom( thisObj );
    ZU_STORE *storeB = zuStoreFrom( thatObj );
    ZU_ASSERT( storeA );
    ZU_ASSERT( storeB );
    ZU_INT order = zuDictCompare( storeA->addresses, storeB->addresses );
    if ( order == 0 ) {
        order = zuDictCompare( storeA->values, storeB->values );
    }
    if ( order == 0 ) {
        order = zuDictCompare( storeA->stores, storeB->stores );
    }
    return order;
}

// Whole stores
void zuStoreClear( ZU_STORE **store )
{
    ZU_ASSERT( store );
    ZU_ASSERT( *store );
    ZU_STORE *old = *store;
    *store = zuStoreCreate();
    ZU_REF_RELEASE( old );
}
ZU_INT zuStoreLength( ZU_STORE *store )
{
    ZU_ASSERT( store );
    return zuDictLength( store->addresses );
}
ZU_VECTOR *zuStoreAddressesVector( ZU_STORE *store )
{
    ZU_ASSERT( store );
    return zuDictKeysVector( store->addresses );
}
ZU_VECTOR *zuStoreValueAddressesVector( ZU_STORE *store )
{
    ZU_ASSERT( store );
    return zuDictKeysVector( store->values );
}
ZU_VECTOR *zuStoreStoreAddressesVector( ZU_STORE *store )
{
    ZU_ASSERT( store );
    return zuDictKeysVector( store->stores );
}
ZU_STRING *zuStoreAddressAt( ZU_STORE *store, ZU_INT idx )
{
    ZU_ASSERT( store );
    return zuStringFrom( zuDictKeyAt( store->addresses, idx ) );
}

// Merging.  Stores from outside nest as deep as they like, so the nodes that are being merged are chained on the heap
// rather than on the stack.
struct STORE_MERGE {
    STORE_MERGE *parent; // merges the node that holds this one; null at the root
    ZU_STORE *own;       // private; held by this structure, or by the caller at the root
    ZU_STORE *other;
    ZU_INT idx; // the sub-store of `own` that comes next, or is being merged
};
static STORE_MERGE storeBeginMerge( STORE_MERGE *parent, ZU_STORE *own, ZU_STORE *other )
{
    zuDictInclude( &own->addresses, other->addresses, ZU_FALSE );
    zuDictInclude( &own->values, other->values, ZU_FALSE );
    return { parent, own, other, 0 };
}
// Moves on to the next sub-store that is to be merged with one of `other` at its address.  Takes it out of its node, so
// that it is copied only if anybody else holds it, and returns the one of `other`; null if there are no more.
static ZU_STORE *storeTakeNextMerged( STORE_MERGE *merge, ZU_STORE **taken )
{
    for ( ; merge->idx < zuDictLength( merge->own->stores ); merge->idx++ ) {
        ZU___DICT_PAIR pair = merge->own->stores->items[ merge->idx ];
        ZU_INT otherIdx = zuDictIndexOfObjKey( merge->other->stores, pair.key );
        ZU_OBJ *otherStore = otherIdx < 0 ? pair.val : merge->other->stores->items[ otherIdx ].val;
        if ( otherStore != pair.val ) {
            *taken = zuStoreRetain( zuStoreFrom( pair.val ) );
            zuDictSetValueAt( &merge->own->stores, merge->idx, otherStore ); // holds the place
            storeUnshare( taken );
            return zuStoreFrom( otherStore );
        }
    }
    return nullptr;
}
void zuStoreMerge( ZU_STORE **store, ZU_STORE *other )
{
    ZU_ASSERT( store );
    ZU_ASSERT( *store );
    ZU_ASSERT( other );
    // Merged with itself, a store is held over the change.
    ZU_STORE *held = other == *store ? zuStoreRetain( other ) : nullptr;
    storeUnshare( store );
    STORE_MERGE root = storeBeginMerge( nullptr, *store, other );
    for ( STORE_MERGE *merge = &root; merge; ) {
        ZU_STORE *taken;
        ZU_STORE *takenOther = storeTakeNextMerged( merge, &taken );
        if ( takenOther ) {
            STORE_MERGE *child = (STORE_MERGE *)zuMemAlloc( sizeof( STORE_MERGE ) );
            *child = storeBeginMerge( merge, taken, takenOther );
            merge = child;
        } else {
            zuDictInclude( &merge->own->stores, merge->other->stores, ZU_FALSE );
            STORE_MERGE *parent = merge->parent;
            if ( parent ) {
                zuDictSetValueAt( &parent->own->stores, parent->idx, zuStoreObj( merge->own ) );
                parent->idx++;
                ZU_REF_RELEASE( merge->own );
                zuMemFree( merge );
            }
            merge = parent;
        }
    }
    ZU_REF_RELEASE_OPT( held );
}

// Values and sub-stores

// Return what is at an address, without a reference for the caller; null if there is nothing.
static ZU_STRING *storeValueNoRetain( ZU_STORE *store, STORE_KEY address )
{
    ZU_INT idx = zu___DictIndexOfChars( store->values, address.chars, address.length );
    return idx < 0 ? nullptr : (ZU_STRING *)store->values->items[ idx ].val; // which costs no asking for the sort
}
static ZU_STORE *storeStoreNoRetain( ZU_STORE *store, STORE_KEY address )
{
    ZU_INT idx = zu___DictIndexOfChars( store->stores, address.chars, address.length );
    return idx < 0 ? nullptr : zuStoreFrom( store->stores->items[ idx ].val );
}
// Removes `address` from `*kind`, and from the addresses unless `remaining` has it too.
static void storeDel( ZU_STORE *own, ZU_DICT **kind, ZU_DICT *remaining, ZU_STRING *address )
{
    zuDictDelStringKey( kind, address );
    if ( !zuDictHasStringKey( remaining, address ) ) {
        zuDictDelStringKey( &own->addresses, address );
    }
}

static ZU_BOOL storeHasAddress( ZU_STORE *store, STORE_KEY address )
{
    ZU_ASSERT( store );
    ZU_ASSERT( zuStoreAddressOk( address) );
    return zu___DictIndexOfChars( store->addresses, address.chars, address.length ) >= 0;
}
ZU_BOOL zuStoreHasAddress( ZU_STORE *store, ZU_STRING *address )
{
    return storeHasAddress( store, STORE_KEY( address ) );
}
ZU_BOOL zuStoreHasAddressCstr( ZU_STORE *store, const char *address, ZU_INT addressLength )
{
    return storeHasAddress( store, STORE_TEXT( address, addressLength ) );
}
ZU_BOOL zuStoreHasAddressWcstr( ZU_STORE *store, const char16_t *address, ZU_INT addressLength )
{
    return storeHasAddress( store, STORE_TEXT( address, addressLength ) );
}
ZU_BOOL zuStoreHasAddressFormat( ZU_STORE *store, ZU_STRING *fmt, ... )
{
    STORE_FORMAT_ADDRESS( address, fmt, zuStringCreateFromFormatArgList( fmt, args ) );
    return zuStoreHasAddress( store, address );
}
ZU_BOOL zuStoreHasAddressFormatCstr( ZU_STORE *store, const char *fmt, ZU_INT fmtLength, ... )
{
    STORE_FORMAT_ADDRESS( address, fmtLength, zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    return zuStoreHasAddress( store, address );
}
ZU_BOOL zuStoreHasAddressFormatWcstr( ZU_STORE *store, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    STORE_FORMAT_ADDRESS( address, fmtLength, zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    return zuStoreHasAddress( store, address );
}

// Testing a value
static ZU_BOOL storeHasValue( ZU_STORE *store, STORE_KEY address )
{
    ZU_ASSERT( store );
    ZU_ASSERT( zuStoreAddressOk( address) );
    return storeValueNoRetain( store, address ) != nullptr;
}
ZU_BOOL zuStoreHasValue( ZU_STORE *store, ZU_STRING *address )
{
    return storeHasValue( store, STORE_KEY( address ) );
}
ZU_BOOL zuStoreHasValueAt( ZU_STORE *store, ZU_INT idx )
{
    return zuStoreHasValue( store, STORE_ADDRESS( zuStoreAddressAt( store, idx ) ) );
}
ZU_BOOL zuStoreHasValueCstr( ZU_STORE *store, const char *address, ZU_INT addressLength )
{
    return storeHasValue( store, STORE_TEXT( address, addressLength ) );
}
ZU_BOOL zuStoreHasValueWcstr( ZU_STORE *store, const char16_t *address, ZU_INT addressLength )
{
    return storeHasValue( store, STORE_TEXT( address, addressLength ) );
}
ZU_BOOL zuStoreHasValueFormat( ZU_STORE *store, ZU_STRING *fmt, ... )
{
    STORE_FORMAT_ADDRESS( address, fmt, zuStringCreateFromFormatArgList( fmt, args ) );
    return zuStoreHasValue( store, address );
}
ZU_BOOL zuStoreHasValueFormatCstr( ZU_STORE *store, const char *fmt, ZU_INT fmtLength, ... )
{
    STORE_FORMAT_ADDRESS( address, fmtLength, zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    return zuStoreHasValue( store, address );
}
ZU_BOOL zuStoreHasValueFormatWcstr( ZU_STORE *store, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    STORE_FORMAT_ADDRESS( address, fmtLength, zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    return zuStoreHasValue( store, address );
}

// Reading a value
static ZU_STRING *storeValue( ZU_STORE *store, STORE_KEY address )
{
    ZU_ASSERT( store );
    ZU_ASSERT( zuStoreAddressOk( address) );
    ZU_STRING *value = storeValueNoRetain( store, address );
    return value ? zuStringRetain( value ) : nullptr;
}
ZU_STRING *zuStoreValue( ZU_STORE *store, ZU_STRING *address )
{
    return storeValue( store, STORE_KEY( address ) );
}
ZU_STRING *zuStoreValueAt( ZU_STORE *store, ZU_INT idx )
{
    return zuStoreValue( store, STORE_ADDRESS( zuStoreAddressAt( store, idx ) ) );
}
ZU_STRING *zuStoreValueCstr( ZU_STORE *store, const char *address, ZU_INT addressLength )
{
    return storeValue( store, STORE_TEXT( address, addressLength ) );
}
ZU_STRING *zuStoreValueWcstr( ZU_STORE *store, const char16_t *address, ZU_INT addressLength )
{
    return storeValue( store, STORE_TEXT( address, addressLength ) );
}
ZU_STRING *zuStoreValueFormat( ZU_STORE *store, ZU_STRING *fmt, ... )
{
    STORE_FORMAT_ADDRESS( address, fmt, zuStringCreateFromFormatArgList( fmt, args ) );
    return zuStoreValue( store, address );
}
ZU_STRING *zuStoreValueFormatCstr( ZU_STORE *store, const char *fmt, ZU_INT fmtLength, ... )
{
    STORE_FORMAT_ADDRESS( address, fmtLength, zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    return zuStoreValue( store, address );
}
ZU_STRING *zuStoreValueFormatWcstr( ZU_STORE *store, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    STORE_FORMAT_ADDRESS( address, fmtLength, zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    return zuStoreValue( store, address );
}

// Setting a value
void zuStoreSetValue( ZU_STORE **store, ZU_STRING *address, ZU_STRING *value )
{
    ZU_ASSERT( store );
    ZU_ASSERT( *store );
    ZU_ASSERT( zuStoreAddressOk( address) );
    ZU_ASSERT( value );
    storeUnshare( store );
    zuDictSetStringKey( &( *store )->addresses, address, zuStringObj( address ) );
    zuDictSetStringKey( &( *store )->values, address, zuStringObj( value ) );
}
void zuStoreSetValueAt( ZU_STORE **store, ZU_INT idx, ZU_STRING *value )
{
    ZU_ASSERT( store );
    ZU_ASSERT( *store );
    zuStoreSetValue( store, STORE_ADDRESS( zuStoreAddressAt( *store, idx ) ), value );
}
void zuStoreSetValueCstr( ZU_STORE **store, const char *address, ZU_INT addressLength, ZU_STRING *value )
{
    zuStoreSetValue( store, STORE_ADDRESS( zuStringCreateFromCstr( address, addressLength ) ), value );
}
void zuStoreSetValueWcstr( ZU_STORE **store, const char16_t *address, ZU_INT addressLength, ZU_STRING *value )
{
    zuStoreSetValue( store, STORE_ADDRESS( zuStringCreateFromWcstr( address, addressLength ) ), value );
}
void zuStoreSetValueFormat( ZU_STORE **store, ZU_STRING *fmt, ZU_STRING *value, ... )
{
    STORE_FORMAT_ADDRESS( address, value, zuStringCreateFromFormatArgList( fmt, args ) );
    zuStoreSetValue( store, address, value );
}
void zuStoreSetValueFormatCstr( ZU_STORE **store, const char *fmt, ZU_INT fmtLength, ZU_STRING *value, ... )
{
    STORE_FORMAT_ADDRESS( address, value, zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    zuStoreSetValue( store, address, value );
}
void zuStoreSetValueFormatWcstr( ZU_STORE **store, const char16_t *fmt, ZU_INT fmtLength, ZU_STRING *value, ... )
{
    STORE_FORMAT_ADDRESS( address, value, zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    zuStoreSetValue( store, address, value );
}

// Deleting a value
void zuStoreDelValue( ZU_STORE **store, ZU_STRING *address )
{
    ZU_ASSERT( store );
    ZU_ASSERT( *store );
    ZU_ASSERT( zuStoreAddressOk( address) );
    storeUnshare( store );
    storeDel( *store, &( *store )->values, ( *store )->stores, address );
}
void zuStoreDelValueAt( ZU_STORE **store, ZU_INT idx )
{
    ZU_ASSERT( store );
    ZU_ASSERT( *store );
    zuStoreDelValue( store, STORE_ADDRESS( zuStoreAddressAt( *store, idx ) ) );
}
void zuStoreDelValueCstr( ZU_STORE **store, const char *address, ZU_INT addressLength )
{
    zuStoreDelValue( store, STORE_ADDRESS( zuStringCreateFromCstr( address, addressLength ) ) );
}
void zuStoreDelValueWcstr( ZU_STORE **store, const char16_t *address, ZU_INT addressLength )
{
    zuStoreDelValue( store, STORE_ADDRESS( zuStringCreateFromWcstr( address, addressLength ) ) );
}
void zuStoreDelValueFormat( ZU_STORE **store, ZU_STRING *fmt, ... )
{
    STORE_FORMAT_ADDRESS( address, fmt, zuStringCreateFromFormatArgList( fmt, args ) );
    zuStoreDelValue( store, address );
}
void zuStoreDelValueFormatCstr( ZU_STORE **store, const char *fmt, ZU_INT fmtLength, ... )
{
    STORE_FORMAT_ADDRESS( address, fmtLength, zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    zuStoreDelValue( store, address );
}
void zuStoreDelValueFormatWcstr( ZU_STORE **store, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    STORE_FORMAT_ADDRESS( address, fmtLength, zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    zuStoreDelValue( store, address );
}

// Testing a sub-store
static ZU_BOOL storeHasStore( ZU_STORE *store, STORE_KEY address )
{
    ZU_ASSERT( store );
    ZU_ASSERT( zuStoreAddressOk( address) );
    return storeStoreNoRetain( store, address ) != nullptr;
}
ZU_BOOL zuStoreHasStore( ZU_STORE *store, ZU_STRING *address )
{
    return storeHasStore( store, STORE_KEY( address ) );
}
ZU_BOOL zuStoreHasStoreAt( ZU_STORE *store, ZU_INT idx )
{
    return zuStoreHasStore( store, STORE_ADDRESS( zuStoreAddressAt( store, idx ) ) );
}
ZU_BOOL zuStoreHasStoreCstr( ZU_STORE *store, const char *address, ZU_INT addressLength )
{
    return storeHasStore( store, STORE_TEXT( address, addressLength ) );
}
ZU_BOOL zuStoreHasStoreWcstr( ZU_STORE *store, const char16_t *address, ZU_INT addressLength )
{
    return storeHasStore( store, STORE_TEXT( address, addressLength ) );
}
ZU_BOOL zuStoreHasStoreFormat( ZU_STORE *store, ZU_STRING *fmt, ... )
{
    STORE_FORMAT_ADDRESS( address, fmt, zuStringCreateFromFormatArgList( fmt, args ) );
    return zuStoreHasStore( store, address );
}
ZU_BOOL zuStoreHasStoreFormatCstr( ZU_STORE *store, const char *fmt, ZU_INT fmtLength, ... )
{
    STORE_FORMAT_ADDRESS( address, fmtLength, zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    return zuStoreHasStore( store, address );
}
ZU_BOOL zuStoreHasStoreFormatWcstr( ZU_STORE *store, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    STORE_FORMAT_ADDRESS( address, fmtLength, zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    return zuStoreHasStore( store, address );
}

// Reading a sub-store
static ZU_STORE *storeStore( ZU_STORE *store, STORE_KEY address )
{
    ZU_ASSERT( store );
    ZU_ASSERT( zuStoreAddressOk( address) );
    ZU_STORE *found = storeStoreNoRetain( store, address );
    return found ? zuStoreRetain( found ) : nullptr;
}
ZU_STORE *zuStoreStore( ZU_STORE *store, ZU_STRING *address )
{
    return storeStore( store, STORE_KEY( address ) );
}
ZU_STORE *zuStoreStoreAt( ZU_STORE *store, ZU_INT idx )
{
    return zuStoreStore( store, STORE_ADDRESS( zuStoreAddressAt( store, idx ) ) );
}
ZU_STORE *zuStoreStoreCstr( ZU_STORE *store, const char *address, ZU_INT addressLength )
{
    return storeStore( store, STORE_TEXT( address, addressLength ) );
}
ZU_STORE *zuStoreStoreWcstr( ZU_STORE *store, const char16_t *address, ZU_INT addressLength )
{
    return storeStore( store, STORE_TEXT( address, addressLength ) );
}
ZU_STORE *zuStoreStoreFormat( ZU_STORE *store, ZU_STRING *fmt, ... )
{
    STORE_FORMAT_ADDRESS( address, fmt, zuStringCreateFromFormatArgList( fmt, args ) );
    return zuStoreStore( store, address );
}
ZU_STORE *zuStoreStoreFormatCstr( ZU_STORE *store, const char *fmt, ZU_INT fmtLength, ... )
{
    STORE_FORMAT_ADDRESS( address, fmtLength, zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    return zuStoreStore( store, address );
}
ZU_STORE *zuStoreStoreFormatWcstr( ZU_STORE *store, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    STORE_FORMAT_ADDRESS( address, fmtLength, zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    return zuStoreStore( store, address );
}

// Setting a sub-store
void zuStoreSetStore( ZU_STORE **store, ZU_STRING *address, ZU_STORE *other )
{
    ZU_ASSERT( store );
    ZU_ASSERT( *store );
    ZU_ASSERT( zuStoreAddressOk( address) );
    ZU_ASSERT( other );
    // Set into itself, a store is held over the change: that makes a new node of it, with the old one below.
    ZU_STORE *held = other == *store ? zuStoreRetain( other ) : nullptr;
    storeUnshare( store );
    zuDictSetStringKey( &( *store )->addresses, address, zuStringObj( address ) );
    zuDictSetStringKey( &( *store )->stores, address, zuStoreObj( other ) );
    ZU_REF_RELEASE_OPT( held );
}
void zuStoreSetStoreAt( ZU_STORE **store, ZU_INT idx, ZU_STORE *other )
{
    ZU_ASSERT( store );
    ZU_ASSERT( *store );
    zuStoreSetStore( store, STORE_ADDRESS( zuStoreAddressAt( *store, idx ) ), other );
}
void zuStoreSetStoreCstr( ZU_STORE **store, const char *address, ZU_INT addressLength, ZU_STORE *other )
{
    zuStoreSetStore( store, STORE_ADDRESS( zuStringCreateFromCstr( address, addressLength ) ), other );
}
void zuStoreSetStoreWcstr( ZU_STORE **store, const char16_t *address, ZU_INT addressLength, ZU_STORE *other )
{
    zuStoreSetStore( store, STORE_ADDRESS( zuStringCreateFromWcstr( address, addressLength ) ), other );
}
void zuStoreSetStoreFormat( ZU_STORE **store, ZU_STRING *fmt, ZU_STORE *other, ... )
{
    STORE_FORMAT_ADDRESS( address, other, zuStringCreateFromFormatArgList( fmt, args ) );
    zuStoreSetStore( store, address, other );
}
void zuStoreSetStoreFormatCstr( ZU_STORE **store, const char *fmt, ZU_INT fmtLength, ZU_STORE *other, ... )
{
    STORE_FORMAT_ADDRESS( address, other, zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    zuStoreSetStore( store, address, other );
}
void zuStoreSetStoreFormatWcstr( ZU_STORE **store, const char16_t *fmt, ZU_INT fmtLength, ZU_STORE *other, ... )
{
    STORE_FORMAT_ADDRESS( address, other, zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    zuStoreSetStore( store, address, other );
}

// Deleting a sub-store
void zuStoreDelStore( ZU_STORE **store, ZU_STRING *address )
{
    ZU_ASSERT( store );
    ZU_ASSERT( *store );
    ZU_ASSERT( zuStoreAddressOk( address) );
    storeUnshare( store );
    storeDel( *store, &( *store )->stores, ( *store )->values, address );
}
void zuStoreDelStoreAt( ZU_STORE **store, ZU_INT idx )
{
    ZU_ASSERT( store );
    ZU_ASSERT( *store );
    zuStoreDelStore( store, STORE_ADDRESS( zuStoreAddressAt( *store, idx ) ) );
}
void zuStoreDelStoreCstr( ZU_STORE **store, const char *address, ZU_INT addressLength )
{
    zuStoreDelStore( store, STORE_ADDRESS( zuStringCreateFromCstr( address, addressLength ) ) );
}
void zuStoreDelStoreWcstr( ZU_STORE **store, const char16_t *address, ZU_INT addressLength )
{
    zuStoreDelStore( store, STORE_ADDRESS( zuStringCreateFromWcstr( address, addressLength ) ) );
}
void zuStoreDelStoreFormat( ZU_STORE **store, ZU_STRING *fmt, ... )
{
    STORE_FORMAT_ADDRESS( address, fmt, zuStringCreateFromFormatArgList( fmt, args ) );
    zuStoreDelStore( store, address );
}
void zuStoreDelStoreFormatCstr( ZU_STORE **store, const char *fmt, ZU_INT fmtLength, ... )
{
    STORE_FORMAT_ADDRESS( address, fmtLength, zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    zuStoreDelStore( store, address );
}
void zuStoreDelStoreFormatWcstr( ZU_STORE **store, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    STORE_FORMAT_ADDRESS( address, fmtLength, zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    zuStoreDelStore( store, address );
}

// Typed values.  Reading scans the text on every call, testing is reading for nobody, and setting sets a text.

// Reads the value at `address` by `scan`, which must take all of it.
template <typename T>
static ZU_BOOL storeScanValue( ZU_STORE *store, T *value, STORE_KEY address,
                               ZU_BOOL ( *scan )( ZU_STRING *text, T *value, ZU_INT *consumed ) )
{
    ZU_ASSERT( store );
    ZU_ASSERT( zuStoreAddressOk( address) );
    ZU_STRING *text = storeValueNoRetain( store, address );
    T scanned = 0;
    ZU_INT consumed = 0;
    bool ok = text && scan( text, &scanned, &consumed ) && consumed == text->length;
    if ( value ) {
        *value = ok ? scanned : 0;
    }
    return ok;
}
// Sets `text` as the value at `address`, and gives it up.
static void storeSetText( ZU_STORE **store, ZU_STRING *address, ZU_STRING *text )
{
    zuStoreSetValue( store, address, text );
    ZU_REF_RELEASE( text );
}

// Truth values
static ZU_BOOL storeValueBool( ZU_STORE *store, ZU_BOOL *value, STORE_KEY address )
{
    return storeScanValue(
        store, value, address, +[]( ZU_STRING *text, ZU_BOOL *scanned, ZU_INT *consumed ) {
            return zuFormatTryDecodeBoolChars( text->chars + text->fspace, text->length, ZU_TRUE, scanned, consumed );
        } );
}
ZU_BOOL zuStoreHasValueBool( ZU_STORE *store, ZU_STRING *address )
{
    return storeValueBool( store, nullptr, STORE_KEY( address ) );
}
ZU_BOOL zuStoreHasValueBoolAt( ZU_STORE *store, ZU_INT idx )
{
    return zuStoreHasValueBool( store, STORE_ADDRESS( zuStoreAddressAt( store, idx ) ) );
}
ZU_BOOL zuStoreHasValueBoolCstr( ZU_STORE *store, const char *address, ZU_INT addressLength )
{
    return zuStoreValueBoolCstr( store, nullptr, address, addressLength );
}
ZU_BOOL zuStoreHasValueBoolWcstr( ZU_STORE *store, const char16_t *address, ZU_INT addressLength )
{
    return zuStoreValueBoolWcstr( store, nullptr, address, addressLength );
}
ZU_BOOL zuStoreHasValueBoolFormat( ZU_STORE *store, ZU_STRING *fmt, ... )
{
    STORE_FORMAT_ADDRESS( address, fmt, zuStringCreateFromFormatArgList( fmt, args ) );
    return zuStoreHasValueBool( store, address );
}
ZU_BOOL zuStoreHasValueBoolFormatCstr( ZU_STORE *store, const char *fmt, ZU_INT fmtLength, ... )
{
    STORE_FORMAT_ADDRESS( address, fmtLength, zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    return zuStoreHasValueBool( store, address );
}
ZU_BOOL zuStoreHasValueBoolFormatWcstr( ZU_STORE *store, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    STORE_FORMAT_ADDRESS( address, fmtLength, zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    return zuStoreHasValueBool( store, address );
}

ZU_BOOL zuStoreValueBool( ZU_STORE *store, ZU_BOOL *value, ZU_STRING *address )
{
    return storeValueBool( store, value, STORE_KEY( address ) );
}
ZU_BOOL zuStoreValueBoolAt( ZU_STORE *store, ZU_BOOL *value, ZU_INT idx )
{
    return zuStoreValueBool( store, value, STORE_ADDRESS( zuStoreAddressAt( store, idx ) ) );
}
ZU_BOOL zuStoreValueBoolCstr( ZU_STORE *store, ZU_BOOL *value, const char *address, ZU_INT addressLength )
{
    return storeValueBool( store, value, STORE_TEXT( address, addressLength ) );
}
ZU_BOOL zuStoreValueBoolWcstr( ZU_STORE *store, ZU_BOOL *value, const char16_t *address, ZU_INT addressLength )
{
    return storeValueBool( store, value, STORE_TEXT( address, addressLength ) );
}
ZU_BOOL zuStoreValueBoolFormat( ZU_STORE *store, ZU_BOOL *value, ZU_STRING *fmt, ... )
{
    STORE_FORMAT_ADDRESS( address, fmt, zuStringCreateFromFormatArgList( fmt, args ) );
    return zuStoreValueBool( store, value, address );
}
ZU_BOOL zuStoreValueBoolFormatCstr( ZU_STORE *store, ZU_BOOL *value, const char *fmt, ZU_INT fmtLength, ... )
{
    STORE_FORMAT_ADDRESS( address, fmtLength, zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    return zuStoreValueBool( store, value, address );
}
ZU_BOOL zuStoreValueBoolFormatWcstr( ZU_STORE *store, ZU_BOOL *value, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    STORE_FORMAT_ADDRESS( address, fmtLength, zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    return zuStoreValueBool( store, value, address );
}

void zuStoreSetValueBool( ZU_STORE **store, ZU_STRING *address, ZU_BOOL value )
{
    ZU_ASSERT( store );
    ZU_ASSERT( *store );
    ZU_ASSERT( zuStoreAddressOk( address) );
    storeSetText( store, address, zuFormatEncodeBool( value, 0, 0 ) );
}
void zuStoreSetValueBoolAt( ZU_STORE **store, ZU_INT idx, ZU_BOOL value )
{
    ZU_ASSERT( store );
    ZU_ASSERT( *store );
    zuStoreSetValueBool( store, STORE_ADDRESS( zuStoreAddressAt( *store, idx ) ), value );
}
void zuStoreSetValueBoolCstr( ZU_STORE **store, const char *address, ZU_INT addressLength, ZU_BOOL value )
{
    zuStoreSetValueBool( store, STORE_ADDRESS( zuStringCreateFromCstr( address, addressLength ) ), value );
}
void zuStoreSetValueBoolWcstr( ZU_STORE **store, const char16_t *address, ZU_INT addressLength, ZU_BOOL value )
{
    zuStoreSetValueBool( store, STORE_ADDRESS( zuStringCreateFromWcstr( address, addressLength ) ), value );
}
void zuStoreSetValueBoolFormat( ZU_STORE **store, ZU_STRING *fmt, ZU_BOOL value, ... )
{
    STORE_FORMAT_ADDRESS( address, value, zuStringCreateFromFormatArgList( fmt, args ) );
    zuStoreSetValueBool( store, address, value );
}
void zuStoreSetValueBoolFormatCstr( ZU_STORE **store, const char *fmt, ZU_INT fmtLength, ZU_BOOL value, ... )
{
    STORE_FORMAT_ADDRESS( address, value, zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    zuStoreSetValueBool( store, address, value );
}
void zuStoreSetValueBoolFormatWcstr( ZU_STORE **store, const char16_t *fmt, ZU_INT fmtLength, ZU_BOOL value, ... )
{
    STORE_FORMAT_ADDRESS( address, value, zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    zuStoreSetValueBool( store, address, value );
}

// Integers
static ZU_BOOL storeValueInt( ZU_STORE *store, ZU_INT *value, STORE_KEY address )
{
    return storeScanValue(
        store, value, address, +[]( ZU_STRING *text, ZU_INT *scanned, ZU_INT *consumed ) {
            return zuFormatTryDecodeIntChars( text->chars + text->fspace, text->length, -1, scanned, consumed );
        } );
}
ZU_BOOL zuStoreHasValueInt( ZU_STORE *store, ZU_STRING *address )
{
    return storeValueInt( store, nullptr, STORE_KEY( address ) );
}
ZU_BOOL zuStoreHasValueIntAt( ZU_STORE *store, ZU_INT idx )
{
    return zuStoreHasValueInt( store, STORE_ADDRESS( zuStoreAddressAt( store, idx ) ) );
}
ZU_BOOL zuStoreHasValueIntCstr( ZU_STORE *store, const char *address, ZU_INT addressLength )
{
    return zuStoreValueIntCstr( store, nullptr, address, addressLength );
}
ZU_BOOL zuStoreHasValueIntWcstr( ZU_STORE *store, const char16_t *address, ZU_INT addressLength )
{
    return zuStoreValueIntWcstr( store, nullptr, address, addressLength );
}
ZU_BOOL zuStoreHasValueIntFormat( ZU_STORE *store, ZU_STRING *fmt, ... )
{
    STORE_FORMAT_ADDRESS( address, fmt, zuStringCreateFromFormatArgList( fmt, args ) );
    return zuStoreHasValueInt( store, address );
}
ZU_BOOL zuStoreHasValueIntFormatCstr( ZU_STORE *store, const char *fmt, ZU_INT fmtLength, ... )
{
    STORE_FORMAT_ADDRESS( address, fmtLength, zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    return zuStoreHasValueInt( store, address );
}
ZU_BOOL zuStoreHasValueIntFormatWcstr( ZU_STORE *store, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    STORE_FORMAT_ADDRESS( address, fmtLength, zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    return zuStoreHasValueInt( store, address );
}

ZU_BOOL zuStoreValueInt( ZU_STORE *store, ZU_INT *value, ZU_STRING *address )
{
    return storeValueInt( store, value, STORE_KEY( address ) );
}
ZU_BOOL zuStoreValueIntAt( ZU_STORE *store, ZU_INT *value, ZU_INT idx )
{
    return zuStoreValueInt( store, value, STORE_ADDRESS( zuStoreAddressAt( store, idx ) ) );
}
ZU_BOOL zuStoreValueIntCstr( ZU_STORE *store, ZU_INT *value, const char *address, ZU_INT addressLength )
{
    return storeValueInt( store, value, STORE_TEXT( address, addressLength ) );
}
ZU_BOOL zuStoreValueIntWcstr( ZU_STORE *store, ZU_INT *value, const char16_t *address, ZU_INT addressLength )
{
    return storeValueInt( store, value, STORE_TEXT( address, addressLength ) );
}
ZU_BOOL zuStoreValueIntFormat( ZU_STORE *store, ZU_INT *value, ZU_STRING *fmt, ... )
{
    STORE_FORMAT_ADDRESS( address, fmt, zuStringCreateFromFormatArgList( fmt, args ) );
    return zuStoreValueInt( store, value, address );
}
ZU_BOOL zuStoreValueIntFormatCstr( ZU_STORE *store, ZU_INT *value, const char *fmt, ZU_INT fmtLength, ... )
{
    STORE_FORMAT_ADDRESS( address, fmtLength, zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    return zuStoreValueInt( store, value, address );
}
ZU_BOOL zuStoreValueIntFormatWcstr( ZU_STORE *store, ZU_INT *value, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    STORE_FORMAT_ADDRESS( address, fmtLength, zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    return zuStoreValueInt( store, value, address );
}

void zuStoreSetValueInt( ZU_STORE **store, ZU_STRING *address, ZU_INT value )
{
    ZU_ASSERT( store );
    ZU_ASSERT( *store );
    ZU_ASSERT( zuStoreAddressOk( address) );
    storeSetText( store, address, zuFormatEncodeInt( value, 10, 0, 0 ) );
}
void zuStoreSetValueIntAt( ZU_STORE **store, ZU_INT idx, ZU_INT value )
{
    ZU_ASSERT( store );
    ZU_ASSERT( *store );
    zuStoreSetValueInt( store, STORE_ADDRESS( zuStoreAddressAt( *store, idx ) ), value );
}
void zuStoreSetValueIntCstr( ZU_STORE **store, const char *address, ZU_INT addressLength, ZU_INT value )
{
    zuStoreSetValueInt( store, STORE_ADDRESS( zuStringCreateFromCstr( address, addressLength ) ), value );
}
void zuStoreSetValueIntWcstr( ZU_STORE **store, const char16_t *address, ZU_INT addressLength, ZU_INT value )
{
    zuStoreSetValueInt( store, STORE_ADDRESS( zuStringCreateFromWcstr( address, addressLength ) ), value );
}
void zuStoreSetValueIntFormat( ZU_STORE **store, ZU_STRING *fmt, ZU_INT value, ... )
{
    STORE_FORMAT_ADDRESS( address, value, zuStringCreateFromFormatArgList( fmt, args ) );
    zuStoreSetValueInt( store, address, value );
}
void zuStoreSetValueIntFormatCstr( ZU_STORE **store, const char *fmt, ZU_INT fmtLength, ZU_INT value, ... )
{
    STORE_FORMAT_ADDRESS( address, value, zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    zuStoreSetValueInt( store, address, value );
}
void zuStoreSetValueIntFormatWcstr( ZU_STORE **store, const char16_t *fmt, ZU_INT fmtLength, ZU_INT value, ... )
{
    STORE_FORMAT_ADDRESS( address, value, zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    zuStoreSetValueInt( store, address, value );
}

// Real numbers
static ZU_BOOL storeValueReal( ZU_STORE *store, double *value, STORE_KEY address )
{
    return storeScanValue(
        store, value, address, +[]( ZU_STRING *text, double *scanned, ZU_INT *consumed ) {
            return zuFormatTryDecodeRealChars( text->chars + text->fspace, text->length, -1, scanned, consumed );
        } );
}
ZU_BOOL zuStoreHasValueReal( ZU_STORE *store, ZU_STRING *address )
{
    return storeValueReal( store, nullptr, STORE_KEY( address ) );
}
ZU_BOOL zuStoreHasValueRealAt( ZU_STORE *store, ZU_INT idx )
{
    return zuStoreHasValueReal( store, STORE_ADDRESS( zuStoreAddressAt( store, idx ) ) );
}
ZU_BOOL zuStoreHasValueRealCstr( ZU_STORE *store, const char *address, ZU_INT addressLength )
{
    return zuStoreValueRealCstr( store, nullptr, address, addressLength );
}
ZU_BOOL zuStoreHasValueRealWcstr( ZU_STORE *store, const char16_t *address, ZU_INT addressLength )
{
    return zuStoreValueRealWcstr( store, nullptr, address, addressLength );
}
ZU_BOOL zuStoreHasValueRealFormat( ZU_STORE *store, ZU_STRING *fmt, ... )
{
    STORE_FORMAT_ADDRESS( address, fmt, zuStringCreateFromFormatArgList( fmt, args ) );
    return zuStoreHasValueReal( store, address );
}
ZU_BOOL zuStoreHasValueRealFormatCstr( ZU_STORE *store, const char *fmt, ZU_INT fmtLength, ... )
{
    STORE_FORMAT_ADDRESS( address, fmtLength, zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    return zuStoreHasValueReal( store, address );
}
ZU_BOOL zuStoreHasValueRealFormatWcstr( ZU_STORE *store, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    STORE_FORMAT_ADDRESS( address, fmtLength, zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    return zuStoreHasValueReal( store, address );
}

ZU_BOOL zuStoreValueReal( ZU_STORE *store, double *value, ZU_STRING *address )
{
    return storeValueReal( store, value, STORE_KEY( address ) );
}
ZU_BOOL zuStoreValueRealAt( ZU_STORE *store, double *value, ZU_INT idx )
{
    return zuStoreValueReal( store, value, STORE_ADDRESS( zuStoreAddressAt( store, idx ) ) );
}
ZU_BOOL zuStoreValueRealCstr( ZU_STORE *store, double *value, const char *address, ZU_INT addressLength )
{
    return storeValueReal( store, value, STORE_TEXT( address, addressLength ) );
}
ZU_BOOL zuStoreValueRealWcstr( ZU_STORE *store, double *value, const char16_t *address, ZU_INT addressLength )
{
    return storeValueReal( store, value, STORE_TEXT( address, addressLength ) );
}
ZU_BOOL zuStoreValueRealFormat( ZU_STORE *store, double *value, ZU_STRING *fmt, ... )
{
    STORE_FORMAT_ADDRESS( address, fmt, zuStringCreateFromFormatArgList( fmt, args ) );
    return zuStoreValueReal( store, value, address );
}
ZU_BOOL zuStoreValueRealFormatCstr( ZU_STORE *store, double *value, const char *fmt, ZU_INT fmtLength, ... )
{
    STORE_FORMAT_ADDRESS( address, fmtLength, zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    return zuStoreValueReal( store, value, address );
}
ZU_BOOL zuStoreValueRealFormatWcstr( ZU_STORE *store, double *value, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    STORE_FORMAT_ADDRESS( address, fmtLength, zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    return zuStoreValueReal( store, value, address );
}

void zuStoreSetValueReal( ZU_STORE **store, ZU_STRING *address, double value )
{
    ZU_ASSERT( store );
    ZU_ASSERT( *store );
    ZU_ASSERT( zuStoreAddressOk( address) );
    storeSetText( store, address, zuFormatEncodeReal( value, 10, 0, -1, 0 ) );
}
void zuStoreSetValueRealAt( ZU_STORE **store, ZU_INT idx, double value )
{
    ZU_ASSERT( store );
    ZU_ASSERT( *store );
    zuStoreSetValueReal( store, STORE_ADDRESS( zuStoreAddressAt( *store, idx ) ), value );
}
void zuStoreSetValueRealCstr( ZU_STORE **store, const char *address, ZU_INT addressLength, double value )
{
    zuStoreSetValueReal( store, STORE_ADDRESS( zuStringCreateFromCstr( address, addressLength ) ), value );
}
void zuStoreSetValueRealWcstr( ZU_STORE **store, const char16_t *address, ZU_INT addressLength, double value )
{
    zuStoreSetValueReal( store, STORE_ADDRESS( zuStringCreateFromWcstr( address, addressLength ) ), value );
}
void zuStoreSetValueRealFormat( ZU_STORE **store, ZU_STRING *fmt, double value, ... )
{
    STORE_FORMAT_ADDRESS( address, value, zuStringCreateFromFormatArgList( fmt, args ) );
    zuStoreSetValueReal( store, address, value );
}
void zuStoreSetValueRealFormatCstr( ZU_STORE **store, const char *fmt, ZU_INT fmtLength, double value, ... )
{
    STORE_FORMAT_ADDRESS( address, value, zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    zuStoreSetValueReal( store, address, value );
}
void zuStoreSetValueRealFormatWcstr( ZU_STORE **store, const char16_t *fmt, ZU_INT fmtLength, double value, ... )
{
    STORE_FORMAT_ADDRESS( address, value, zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    zuStoreSetValueReal( store, address, value );
}
