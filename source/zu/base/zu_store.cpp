// Three dicts: the addresses in use, each mapped to itself, the values and the sub-stores.  The first is what gives
// addresses positions; the others stay apart from it, so that a copy of the store can share those that do not change.
//
// Each operation is written once, and its forms, in zu_store_forms.cpp, hand on to that.

#include "zu/base/zu_store_internal.h"

#include "zu/base/zu_dict_internal.h"
#include "zu/base/zu_format.h"
#include "zu/runtime/zu_module.h"
#include "zu/runtime/zu_ref_internal.h"
#include "zu/sys/zu_mem.h"

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
static ZU_BOOL storeAddressOk( ZU___STORE_KEY address )
{
    ZU___ASSERT_AS( address.chars, "address" );
    for ( ZU_INT i = 0; i < address.length; i++ ) {
        if ( !storeCharOk( address.chars[ i ] ) ) {
            return ZU_FALSE;
        }
    }
    return address.length > 0;
}
ZU_BOOL zuStoreAddressOk( ZU_STRING *address )
{
    return storeAddressOk( ZU___STORE_KEY( address ) );
}
bool zu___StoreAddressCharsOk( const ZU_CHAR *chars, ZU_INT length )
{
    return storeAddressOk( ZU___STORE_KEY( chars, length ) );
}
#define STORE_ASSERT_ADDRESS( address ) ZU___ASSERT_AS( storeAddressOk( address ), "zuStoreAddressOk( address)" )

// Creation
ZU_STORE *zu___StoreCreateOfDicts( ZU_DICT *addresses, ZU_DICT *values, ZU_DICT *stores )
{
    ZU_STORE *store = (ZU_STORE *)zu___ObjCreate( sizeof( ZU_STORE ), &zu___sort_ZU_STORE );
    store->addresses = addresses;
    store->values = values;
    store->stores = stores;
    return store;
}
ZU_STORE *zuStoreCreate( void )
{
    return zu___StoreCreateOfDicts( zuDictCreate(), zuDictCreate(), zuDictCreate() );
}
ZU_STORE *zuStoreCreateFrom( ZU_STORE *source )
{
    ZU_ASSERT( source );
    return zu___StoreCreateOfDicts( zuDictRetain( source->addresses ), zuDictRetain( source->values ),
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

// Two stores at one address of two trees, on the way through both.  Stores from outside nest as deep as they like, so
// the way back is on the heap rather than on the stack.
struct STORE_WALK {
    STORE_WALK *parent; // null at the roots
    ZU_STORE *own;
    ZU_STORE *other;
    ZU_INT idx; // the sub-store of `own` that comes next
};
static STORE_WALK *storeEnter( STORE_WALK *parent, ZU_STORE *own, ZU_STORE *other )
{
    STORE_WALK *walk = (STORE_WALK *)zuMemAlloc( sizeof( STORE_WALK ) );
    *walk = { parent, own, other, 0 };
    return walk;
}
static STORE_WALK *storeLeave( STORE_WALK *walk )
{
    STORE_WALK *parent = walk->parent;
    zuMemFree( walk );
    return parent;
}

// Orders two stores by all but their sub-stores.
static ZU_INT storeCompareNodes( ZU_STORE *storeA, ZU_STORE *storeB )
{
    ZU_INT order = zuDictCompare( storeA->addresses, storeB->addresses );
    return order != 0 ? order : zuDictCompare( storeA->values, storeB->values );
}
static ZU_INT storeCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    ZU_STORE *storeA = zuStoreFrom( thisObj );
    ZU_STORE *storeB = zuStoreFrom( thatObj );
    ZU_ASSERT( storeA );
    ZU_ASSERT( storeB );
    ZU_INT order = storeCompareNodes( storeA, storeB );
    STORE_WALK *walk = storeEnter( nullptr, storeA, storeB );
    while ( walk && order == 0 ) {
        ZU_DICT *storesA = walk->own->stores;
        ZU_DICT *storesB = walk->other->stores;
        if ( storesA == storesB || walk->idx == storesA->length || walk->idx == storesB->length ) {
            order = ( storesA->length > storesB->length ) - ( storesA->length < storesB->length );
            walk = storeLeave( walk );
            continue;
        }
        ZU___DICT_PAIR pairA = *zu___DictPair( storesA, walk->idx );
        ZU___DICT_PAIR pairB = *zu___DictPair( storesB, walk->idx );
        walk->idx++;
        order = zuObjCompare( pairA.key, pairB.key );
        if ( order == 0 && pairA.val != pairB.val ) {
            walk = storeEnter( walk, (ZU_STORE *)pairA.val, (ZU_STORE *)pairB.val );
            order = storeCompareNodes( walk->own, walk->other );
        }
    }
    while ( walk ) {
        walk = storeLeave( walk );
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

// Merging.  `own` is private, and held by its walk or, at the root, by the caller; `idx` stays at a sub-store while
// that is being merged.
static STORE_WALK *storeBeginMerge( STORE_WALK *parent, ZU_STORE *own, ZU_STORE *other )
{
    zuDictInclude( &own->addresses, other->addresses, ZU_FALSE );
    zuDictInclude( &own->values, other->values, ZU_FALSE );
    return storeEnter( parent, own, other );
}
// Moves on to the next sub-store that is to be merged with one of `other` at its address.  Takes it out of its node, so
// that it is copied only if anybody else holds it, and returns the one of `other`; null if there are no more.
static ZU_STORE *storeTakeNextMerged( STORE_WALK *merge, ZU_STORE **taken )
{
    for ( ; merge->idx < zuDictLength( merge->own->stores ); merge->idx++ ) {
        ZU___DICT_PAIR pair = *zu___DictPair( merge->own->stores, merge->idx );
        ZU_INT otherIdx = zuDictIndexOfObjKey( merge->other->stores, pair.key );
        ZU_OBJ *otherStore = otherIdx < 0 ? pair.val : zu___DictPair( merge->other->stores, otherIdx )->val;
        if ( otherStore != pair.val ) {
            *taken = zuStoreRetain( zuStoreFrom( pair.val ) );
            zuDictSetValueAt( &merge->own->stores, merge->idx, otherStore ); // holds the place
            storeUnshare( taken );
            return zuStoreFrom( otherStore );
        }
    }
    return nullptr;
}
// Ends the merge of a node, sets it back into the one above, and returns that one's merge.
static STORE_WALK *storeEndMerge( STORE_WALK *merge )
{
    zuDictInclude( &merge->own->stores, merge->other->stores, ZU_FALSE );
    if ( merge->parent ) {
        zuDictSetValueAt( &merge->parent->own->stores, merge->parent->idx++, zuStoreObj( merge->own ) );
        ZU_REF_RELEASE( merge->own );
    }
    return storeLeave( merge );
}
void zuStoreMerge( ZU_STORE **store, ZU_STORE *other )
{
    ZU_ASSERT( store );
    ZU_ASSERT( *store );
    ZU_ASSERT( other );
    // Merged with itself, a store is held over the change.
    auto held = zu___HeldIf( other == *store, other );
    storeUnshare( store );
    STORE_WALK *merge = storeBeginMerge( nullptr, *store, other );
    while ( merge ) {
        ZU_STORE *taken;
        ZU_STORE *takenOther = storeTakeNextMerged( merge, &taken );
        merge = takenOther ? storeBeginMerge( merge, taken, takenOther ) : storeEndMerge( merge );
    }
}

// Values and sub-stores

// Return what is at an address, without a reference for the caller; null if there is nothing.
static ZU_STRING *storeValueNoRetain( ZU_STORE *store, ZU___STORE_KEY address )
{
    ZU_ASSERT( store );
    STORE_ASSERT_ADDRESS( address );
    ZU_INT idx = zu___DictIndexOfChars( store->values, address.chars, address.length );
    return idx < 0 ? nullptr
                   : (ZU_STRING *)zu___DictPair( store->values, idx )->val; // which costs no asking for the sort
}
static ZU_STORE *storeStoreNoRetain( ZU_STORE *store, ZU___STORE_KEY address )
{
    ZU_ASSERT( store );
    STORE_ASSERT_ADDRESS( address );
    ZU_INT idx = zu___DictIndexOfChars( store->stores, address.chars, address.length );
    return idx < 0 ? nullptr : zuStoreFrom( zu___DictPair( store->stores, idx )->val );
}
// Sets `address` in the addresses and in `*kind`.  Where all addresses are of that kind, as in most stores, both dicts
// have the same keys, and one search serves both: it takes most of the time that settings in any order take.
static void storeSet( ZU_STORE *own, ZU_DICT **kind, ZU_STRING *address, ZU_OBJ *obj )
{
    bool all = ( *kind )->length == own->addresses->length;
    ZU___DICT_PLACE place = zu___DictPlaceOfString( own->addresses, address );
    zu___DictSetAt( &own->addresses, place, zuStringObj( address ), zuStringObj( address ) );
    zu___DictSetAt( kind, all ? place : zu___DictPlaceOfString( *kind, address ), zuStringObj( address ), obj );
}
// Removes `address` from `*kind`, and from the addresses unless `remaining` has it too.
static void storeDel( ZU_STORE *own, ZU_DICT **kind, ZU_DICT *remaining, ZU_STRING *address )
{
    zuDictDelStringKey( kind, address );
    if ( !zuDictHasStringKey( remaining, address ) ) {
        zuDictDelStringKey( &own->addresses, address );
    }
}

ZU_BOOL zu___StoreHasAddress( ZU_STORE *store, ZU___STORE_KEY address )
{
    ZU_ASSERT( store );
    STORE_ASSERT_ADDRESS( address );
    return zu___DictIndexOfChars( store->addresses, address.chars, address.length ) >= 0;
}

// Values
ZU_BOOL zu___StoreHasValue( ZU_STORE *store, ZU___STORE_KEY address )
{
    return storeValueNoRetain( store, address ) != nullptr;
}

ZU_STRING *zu___StoreValue( ZU_STORE *store, ZU___STORE_KEY address )
{
    ZU_STRING *value = storeValueNoRetain( store, address );
    return value ? zuStringRetain( value ) : nullptr;
}

void zuStoreSetValue( ZU_STORE **store, ZU_STRING *address, ZU_STRING *value )
{
    ZU_ASSERT( store );
    ZU_ASSERT( *store );
    STORE_ASSERT_ADDRESS( ZU___STORE_KEY( address ) );
    ZU_ASSERT( value );
    storeUnshare( store );
    storeSet( *store, &( *store )->values, address, zuStringObj( value ) );
}

void zuStoreDelValue( ZU_STORE **store, ZU_STRING *address )
{
    ZU_ASSERT( store );
    ZU_ASSERT( *store );
    STORE_ASSERT_ADDRESS( ZU___STORE_KEY( address ) );
    storeUnshare( store );
    storeDel( *store, &( *store )->values, ( *store )->stores, address );
}

// Sub-stores
ZU_BOOL zu___StoreHasStore( ZU_STORE *store, ZU___STORE_KEY address )
{
    return storeStoreNoRetain( store, address ) != nullptr;
}

ZU_STORE *zu___StoreStore( ZU_STORE *store, ZU___STORE_KEY address )
{
    ZU_STORE *found = storeStoreNoRetain( store, address );
    return found ? zuStoreRetain( found ) : nullptr;
}

void zuStoreSetStore( ZU_STORE **store, ZU_STRING *address, ZU_STORE *other )
{
    ZU_ASSERT( store );
    ZU_ASSERT( *store );
    STORE_ASSERT_ADDRESS( ZU___STORE_KEY( address ) );
    ZU_ASSERT( other );
    // Set into itself, a store is held over the change: that makes a new node of it, with the old one below.
    auto held = zu___HeldIf( other == *store, other );
    storeUnshare( store );
    storeSet( *store, &( *store )->stores, address, zuStoreObj( other ) );
}

void zuStoreDelStore( ZU_STORE **store, ZU_STRING *address )
{
    ZU_ASSERT( store );
    ZU_ASSERT( *store );
    STORE_ASSERT_ADDRESS( ZU___STORE_KEY( address ) );
    storeUnshare( store );
    storeDel( *store, &( *store )->stores, ( *store )->values, address );
}

// Typed values.  Reading scans the text on every call, testing is reading for nobody, and setting sets a text.

// Read a text, and tell how much of it they have read.
static ZU_BOOL storeScan( ZU_STRING *text, ZU_BOOL *value, ZU_INT *consumed )
{
    return zuFormatTryDecodeBoolChars( text->chars + text->fspace, text->length, ZU_TRUE, value, consumed );
}
static ZU_BOOL storeScan( ZU_STRING *text, ZU_INT *value, ZU_INT *consumed )
{
    return zuFormatTryDecodeIntChars( text->chars + text->fspace, text->length, -1, value, consumed );
}
static ZU_BOOL storeScan( ZU_STRING *text, double *value, ZU_INT *consumed )
{
    return zuFormatTryDecodeRealChars( text->chars + text->fspace, text->length, -1, value, consumed );
}
template <typename T>
static ZU_BOOL storeScanValue( ZU_STORE *store, T *value, ZU___STORE_KEY address )
{
    ZU_STRING *text = storeValueNoRetain( store, address );
    T scanned = 0;
    ZU_INT consumed = 0;
    bool ok = text && storeScan( text, &scanned, &consumed ) && consumed == text->length;
    if ( value ) {
        *value = ok ? scanned : 0;
    }
    return ok;
}
ZU_BOOL zu___StoreValueBool( ZU_STORE *store, ZU_BOOL *value, ZU___STORE_KEY address )
{
    return storeScanValue( store, value, address );
}
ZU_BOOL zu___StoreValueInt( ZU_STORE *store, ZU_INT *value, ZU___STORE_KEY address )
{
    return storeScanValue( store, value, address );
}
ZU_BOOL zu___StoreValueReal( ZU_STORE *store, double *value, ZU___STORE_KEY address )
{
    return storeScanValue( store, value, address );
}
ZU_BOOL zu___StoreHasValueBool( ZU_STORE *store, ZU___STORE_KEY address )
{
    return zu___StoreValueBool( store, nullptr, address );
}
ZU_BOOL zu___StoreHasValueInt( ZU_STORE *store, ZU___STORE_KEY address )
{
    return zu___StoreValueInt( store, nullptr, address );
}
ZU_BOOL zu___StoreHasValueReal( ZU_STORE *store, ZU___STORE_KEY address )
{
    return zu___StoreValueReal( store, nullptr, address );
}

static ZU_STRING *storePrint( ZU_BOOL value )
{
    return zuFormatEncodeBool( value, 0, 0 );
}
static ZU_STRING *storePrint( ZU_INT value )
{
    return zuFormatEncodeInt( value, 10, 0, 0 );
}
static ZU_STRING *storePrint( double value )
{
    return zuFormatEncodeReal( value, 10, 0, -1, 0 );
}
template <typename T>
static void storePrintValue( ZU_STORE **store, ZU_STRING *address, T value )
{
    ZU_ASSERT( store );
    ZU_ASSERT( *store );
    STORE_ASSERT_ADDRESS( ZU___STORE_KEY( address ) );
    zu___Owned text( storePrint( value ) );
    zuStoreSetValue( store, address, text );
}
void zuStoreSetValueBool( ZU_STORE **store, ZU_STRING *address, ZU_BOOL value )
{
    storePrintValue( store, address, value );
}
void zuStoreSetValueInt( ZU_STORE **store, ZU_STRING *address, ZU_INT value )
{
    storePrintValue( store, address, value );
}
void zuStoreSetValueReal( ZU_STORE **store, ZU_STRING *address, double value )
{
    storePrintValue( store, address, value );
}
