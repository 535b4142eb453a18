// Three dicts: the addresses in use, each mapped to itself, the values and the sub-stores.  The first is what gives
// addresses positions; the others stay apart from it, so that a copy of the store can share those that do not change.
//
// Each operation is written once, and its seven forms hand on to that; where text is only to be found, it is not made a
// string.

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
    operator STORE_KEY() const
    {
        return STORE_KEY( address );
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

// Forms
//
// Each operation is written once: one that only looks an address up as a function that takes a STORE_KEY, one that
// changes a store as the form that takes a string.  The macros define the other forms, which get the address and hand
// on; no function could open the arguments of its caller.  The last argument of a macro is the type of what is read,
// ahead of the address, or set, behind it, and may be missing.
//
//     STORE_READING_FORMS( ZU_BOOL, zuStoreValueInt, storeScanValue, ZU_INT )
//     STORE_CHANGING_FORMS( zuStoreSetValueInt, ZU_INT )
//
// define among others
//
//     ZU_BOOL zuStoreValueIntCstr( ZU_STORE *store, ZU_INT *value, const char *address, ZU_INT addressLength )
//     {
//         return storeScanValue( store, value, STORE_TEXT( address, addressLength ) );
//     }
//     void zuStoreSetValueIntFormat( ZU_STORE **store, ZU_STRING *fmt, ZU_INT item, ... )
//     {
//         STORE_FORMAT_ADDRESS( address, item, zuStringCreateFromFormatArgList( fmt, args ) );
//         zuStoreSetValueInt( store, address, item );
//     }

// Declares `address` and makes it by `create` of the `args` behind the parameter `last`.
#define STORE_FORMAT_ADDRESS( address, last, create ) \
    va_list args;                                     \
    va_start( args, last );                           \
    STORE_ADDRESS address( create );                  \
    va_end( args )

#define STORE_FIRST( first, ... ) first

// All forms of an operation that looks an address up, but At.
#define STORE_KEY_FORMS( RESULT, name, perform, ... )                                                                 \
    RESULT name( ZU_STORE *store, __VA_OPT__( __VA_ARGS__ *value, ) ZU_STRING *address )                              \
    {                                                                                                                 \
        return perform( store, __VA_OPT__( value, ) STORE_KEY( address ) );                                           \
    }                                                                                                                 \
    RESULT name##Cstr( ZU_STORE *store, __VA_OPT__( __VA_ARGS__ *value, ) const char *address, ZU_INT addressLength ) \
    {                                                                                                                 \
        return perform( store, __VA_OPT__( value, ) STORE_TEXT( address, addressLength ) );                           \
    }                                                                                                                 \
    RESULT name##Wcstr( ZU_STORE *store, __VA_OPT__( __VA_ARGS__ *value, ) const char16_t *address,                   \
                        ZU_INT addressLength )                                                                        \
    {                                                                                                                 \
        return perform( store, __VA_OPT__( value, ) STORE_TEXT( address, addressLength ) );                           \
    }                                                                                                                 \
    RESULT name##Format( ZU_STORE *store, __VA_OPT__( __VA_ARGS__ *value, ) ZU_STRING *fmt, ... )                     \
    {                                                                                                                 \
        STORE_FORMAT_ADDRESS( address, fmt, zuStringCreateFromFormatArgList( fmt, args ) );                           \
        return perform( store, __VA_OPT__( value, ) address );                                                        \
    }                                                                                                                 \
    RESULT name##FormatCstr( ZU_STORE *store, __VA_OPT__( __VA_ARGS__ *value, ) const char *fmt, ZU_INT fmtLength,    \
                             ... )                                                                                    \
    {                                                                                                                 \
        STORE_FORMAT_ADDRESS( address, fmtLength, zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );      \
        return perform( store, __VA_OPT__( value, ) address );                                                        \
    }                                                                                                                 \
    RESULT name##FormatWcstr( ZU_STORE *store, __VA_OPT__( __VA_ARGS__ *value, ) const char16_t *fmt,                 \
                              ZU_INT fmtLength, ... )                                                                 \
    {                                                                                                                 \
        STORE_FORMAT_ADDRESS( address, fmtLength, zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );     \
        return perform( store, __VA_OPT__( value, ) address );                                                        \
    }

// All forms of an operation that looks an address up.
#define STORE_READING_FORMS( RESULT, name, perform, ... )                                              \
    STORE_KEY_FORMS( RESULT, name, perform, __VA_ARGS__ )                                              \
    RESULT name##At( ZU_STORE *store, __VA_OPT__( __VA_ARGS__ *value, ) ZU_INT idx )                   \
    {                                                                                                  \
        return perform( store, __VA_OPT__( value, ) STORE_ADDRESS( zuStoreAddressAt( store, idx ) ) ); \
    }

// The forms of an operation that changes a store, but the one that takes a string.
#define STORE_CHANGING_FORMS( name, ... )                                                                             \
    void name##At( ZU_STORE **store, ZU_INT idx __VA_OPT__(, __VA_ARGS__ item ) )                                     \
    {                                                                                                                 \
        ZU_ASSERT( store );                                                                                           \
        ZU_ASSERT( *store );                                                                                          \
        name( store, STORE_ADDRESS( zuStoreAddressAt( *store, idx ) ) __VA_OPT__(, item ) );                          \
    }                                                                                                                 \
    void name##Cstr( ZU_STORE **store, const char *address, ZU_INT addressLength __VA_OPT__(, __VA_ARGS__ item ) )    \
    {                                                                                                                 \
        name( store, STORE_ADDRESS( zuStringCreateFromCstr( address, addressLength ) ) __VA_OPT__(, item ) );         \
    }                                                                                                                 \
    void name##Wcstr( ZU_STORE **store, const char16_t *address,                                                      \
                      ZU_INT addressLength __VA_OPT__(, __VA_ARGS__ item ) )                                          \
    {                                                                                                                 \
        name( store, STORE_ADDRESS( zuStringCreateFromWcstr( address, addressLength ) ) __VA_OPT__(, item ) );        \
    }                                                                                                                 \
    void name##Format( ZU_STORE **store, ZU_STRING *fmt __VA_OPT__(, __VA_ARGS__ item ), ... )                        \
    {                                                                                                                 \
        STORE_FORMAT_ADDRESS( address, STORE_FIRST( __VA_OPT__( item, ) fmt, ),                                       \
                              zuStringCreateFromFormatArgList( fmt, args ) );                                         \
        name( store, address __VA_OPT__(, item ) );                                                                   \
    }                                                                                                                 \
    void name##FormatCstr( ZU_STORE **store, const char *fmt, ZU_INT fmtLength __VA_OPT__(, __VA_ARGS__ item ), ... ) \
    {                                                                                                                 \
        STORE_FORMAT_ADDRESS( address, STORE_FIRST( __VA_OPT__( item, ) fmtLength, ),                                 \
                              zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );                          \
        name( store, address __VA_OPT__(, item ) );                                                                   \
    }                                                                                                                 \
    void name##FormatWcstr( ZU_STORE **store, const char16_t *fmt, ZU_INT fmtLength __VA_OPT__(, __VA_ARGS__ item ),  \
                            ... )                                                                                     \
    {                                                                                                                 \
        STORE_FORMAT_ADDRESS( address, STORE_FIRST( __VA_OPT__( item, ) fmtLength, ),                                 \
                              zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );                         \
        name( store, address __VA_OPT__(, item ) );                                                                   \
    }

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
        ZU___DICT_PAIR pairA = storesA->items[ walk->idx ];
        ZU___DICT_PAIR pairB = storesB->items[ walk->idx ];
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
    ZU_STORE *held = other == *store ? zuStoreRetain( other ) : nullptr;
    storeUnshare( store );
    STORE_WALK *merge = storeBeginMerge( nullptr, *store, other );
    while ( merge ) {
        ZU_STORE *taken;
        ZU_STORE *takenOther = storeTakeNextMerged( merge, &taken );
        merge = takenOther ? storeBeginMerge( merge, taken, takenOther ) : storeEndMerge( merge );
    }
    ZU_REF_RELEASE_OPT( held );
}

// Values and sub-stores

// Return what is at an address, without a reference for the caller; null if there is nothing.
static ZU_STRING *storeValueNoRetain( ZU_STORE *store, STORE_KEY address )
{
    ZU_ASSERT( store );
    ZU_ASSERT( zuStoreAddressOk( address) );
    ZU_INT idx = zu___DictIndexOfChars( store->values, address.chars, address.length );
    return idx < 0 ? nullptr : (ZU_STRING *)store->values->items[ idx ].val; // which costs no asking for the sort
}
static ZU_STORE *storeStoreNoRetain( ZU_STORE *store, STORE_KEY address )
{
    ZU_ASSERT( store );
    ZU_ASSERT( zuStoreAddressOk( address) );
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
STORE_KEY_FORMS( ZU_BOOL, zuStoreHasAddress, storeHasAddress )

// Values
static ZU_BOOL storeHasValue( ZU_STORE *store, STORE_KEY address )
{
    return storeValueNoRetain( store, address ) != nullptr;
}
STORE_READING_FORMS( ZU_BOOL, zuStoreHasValue, storeHasValue )

static ZU_STRING *storeValue( ZU_STORE *store, STORE_KEY address )
{
    ZU_STRING *value = storeValueNoRetain( store, address );
    return value ? zuStringRetain( value ) : nullptr;
}
STORE_READING_FORMS( ZU_STRING *, zuStoreValue, storeValue )

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
STORE_CHANGING_FORMS( zuStoreSetValue, ZU_STRING * )

void zuStoreDelValue( ZU_STORE **store, ZU_STRING *address )
{
    ZU_ASSERT( store );
    ZU_ASSERT( *store );
    ZU_ASSERT( zuStoreAddressOk( address) );
    storeUnshare( store );
    storeDel( *store, &( *store )->values, ( *store )->stores, address );
}
STORE_CHANGING_FORMS( zuStoreDelValue )

// Sub-stores
static ZU_BOOL storeHasStore( ZU_STORE *store, STORE_KEY address )
{
    return storeStoreNoRetain( store, address ) != nullptr;
}
STORE_READING_FORMS( ZU_BOOL, zuStoreHasStore, storeHasStore )

static ZU_STORE *storeStore( ZU_STORE *store, STORE_KEY address )
{
    ZU_STORE *found = storeStoreNoRetain( store, address );
    return found ? zuStoreRetain( found ) : nullptr;
}
STORE_READING_FORMS( ZU_STORE *, zuStoreStore, storeStore )

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
STORE_CHANGING_FORMS( zuStoreSetStore, ZU_STORE * )

void zuStoreDelStore( ZU_STORE **store, ZU_STRING *address )
{
    ZU_ASSERT( store );
    ZU_ASSERT( *store );
    ZU_ASSERT( zuStoreAddressOk( address) );
    storeUnshare( store );
    storeDel( *store, &( *store )->stores, ( *store )->values, address );
}
STORE_CHANGING_FORMS( zuStoreDelStore )

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
static ZU_BOOL storeScanValue( ZU_STORE *store, T *value, STORE_KEY address )
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
template <typename T>
static ZU_BOOL storeHasValueOf( ZU_STORE *store, STORE_KEY address )
{
    return storeScanValue<T>( store, nullptr, address );
}
STORE_READING_FORMS( ZU_BOOL, zuStoreHasValueBool, storeHasValueOf<ZU_BOOL> )
STORE_READING_FORMS( ZU_BOOL, zuStoreHasValueInt, storeHasValueOf<ZU_INT> )
STORE_READING_FORMS( ZU_BOOL, zuStoreHasValueReal, storeHasValueOf<double> )
STORE_READING_FORMS( ZU_BOOL, zuStoreValueBool, storeScanValue, ZU_BOOL )
STORE_READING_FORMS( ZU_BOOL, zuStoreValueInt, storeScanValue, ZU_INT )
STORE_READING_FORMS( ZU_BOOL, zuStoreValueReal, storeScanValue, double )

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
    ZU_ASSERT( zuStoreAddressOk( address) );
    ZU_STRING *text = storePrint( value );
    zuStoreSetValue( store, address, text );
    ZU_REF_RELEASE( text );
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
STORE_CHANGING_FORMS( zuStoreSetValueBool, ZU_BOOL )
STORE_CHANGING_FORMS( zuStoreSetValueInt, ZU_INT )
STORE_CHANGING_FORMS( zuStoreSetValueReal, double )
