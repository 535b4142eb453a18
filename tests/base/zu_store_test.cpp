#include "zu_test_string.h"

using STRING = zu::Ref<ZU_STRING>;
using STORE = zu::Ref<ZU_STORE>;

// The two forms of each operation that find the entry by themselves, to be chosen by a number; the other forms make a
// string and hand on, which is tested for all families at once.
enum { PLAIN, AT, FORMS };

struct ADDRESS {
    std::string text;
    ZU_INT position; // -1: not in use, so that AT is PLAIN
};
// `BEFORE` and `BEHIND` are the arguments on either side of the address, with their commas.
#define FORMS_OF( RESULT, name, STORE_TYPE, PARAMETERS, BEFORE, BEHIND )                                        \
    static RESULT name##In( int form, STORE_TYPE store, const ADDRESS &address PARAMETERS )                     \
    {                                                                                                           \
        return form == AT && address.position >= 0 ? name##At( store BEFORE, address.position BEHIND )          \
                                                   : name( store BEFORE, string( address.text ).get() BEHIND ); \
    }
#define COMMA                         ,
#define READING_FORMS( RESULT, name ) FORMS_OF( RESULT, name, ZU_STORE *, , , )
#define SETTING_FORMS( name, TYPE )   FORMS_OF( void, name, ZU_STORE **, COMMA TYPE item, , COMMA item )
#define TYPED_FORMS( kind, TYPE )                                                        \
    READING_FORMS( ZU_BOOL, zuStoreHasValue##kind )                                      \
    FORMS_OF( ZU_BOOL, zuStoreValue##kind, ZU_STORE *, COMMA TYPE *value, COMMA value, ) \
    SETTING_FORMS( zuStoreSetValue##kind, TYPE )

// The only form that is missing.
static ZU_BOOL zuStoreHasAddressAt( ZU_STORE *store, ZU_INT idx )
{
    return zuStoreHasAddress( store, zu::adopt( zuStoreAddressAt( store, idx ) ).get() );
}
READING_FORMS( ZU_BOOL, zuStoreHasAddress )
READING_FORMS( ZU_BOOL, zuStoreHasValue )
READING_FORMS( ZU_STRING *, zuStoreValue )
SETTING_FORMS( zuStoreSetValue, ZU_STRING * )
FORMS_OF( void, zuStoreDelValue, ZU_STORE **, , , )
READING_FORMS( ZU_BOOL, zuStoreHasStore )
READING_FORMS( ZU_STORE *, zuStoreStore )
SETTING_FORMS( zuStoreSetStore, ZU_STORE * )
FORMS_OF( void, zuStoreDelStore, ZU_STORE **, , , )
TYPED_FORMS( Bool, ZU_BOOL )
TYPED_FORMS( Int, ZU_INT )
TYPED_FORMS( Real, double )

template <typename MAP>
static std::vector<std::string> keysOf( const MAP &map )
{
    std::vector<std::string> keys;
    for ( const auto &each : map ) {
        keys.push_back( each.first );
    }
    return keys;
}
struct STORE_MODEL {
    std::map<std::string, std::string> values;
    std::map<std::string, STORE_MODEL> stores;

    std::vector<std::string> addresses() const
    {
        std::vector<std::string> all;
        std::vector<std::string> ofValues = keysOf( values );
        std::vector<std::string> ofStores = keysOf( stores );
        std::set_union( ofValues.begin(), ofValues.end(), ofStores.begin(), ofStores.end(), std::back_inserter( all ) );
        return all;
    }
    ADDRESS find( const std::string &text ) const
    {
        std::vector<std::string> all = addresses();
        auto found = std::find( all.begin(), all.end(), text );
        return { text, found == all.end() ? -1 : found - all.begin() };
    }
    void merge( const STORE_MODEL &other )
    {
        values.insert( other.values.begin(), other.values.end() );
        for ( const auto &each : other.stores ) {
            stores[ each.first ].merge( each.second );
        }
    }
    int depth() const
    {
        int deepest = 0;
        for ( const auto &each : stores ) {
            deepest = std::max( deepest, each.second.depth() );
        }
        return deepest + 1;
    }
};
static int order( const STORE_MODEL &a, const STORE_MODEL &b )
{
    if ( a.addresses() != b.addresses() ) {
        return a.addresses() < b.addresses() ? -1 : 1;
    }
    if ( a.values != b.values ) {
        return a.values < b.values ? -1 : 1;
    }
    auto mine = a.stores.begin();
    auto theirs = b.stores.begin();
    for ( ; mine != a.stores.end() && theirs != b.stores.end(); ++mine, ++theirs ) {
        if ( mine->first != theirs->first ) {
            return mine->first < theirs->first ? -1 : 1;
        }
        if ( int result = order( mine->second, theirs->second ) ) {
            return result;
        }
    }
    return ( mine != a.stores.end() ) - ( theirs != b.stores.end() );
}

class StoreModel : public testing::Test {
protected:
    struct HOLDER {
        STORE store = zu::adopt( zuStoreCreate() );
        STORE_MODEL model;
    };

    int below( int end )
    {
        return (int)random.below( (size_t)end );
    }
    int anyForm()
    {
        return below( FORMS );
    }
    ADDRESS anyAddress( const STORE_MODEL &model )
    {
        static const char *const TEXTS[] = { "-", "0",      "A", "_",
                                             "a", "a-Z_09", "b", "long-long-long-long-long-long-long" };
        return model.find( TEXTS[ below( 8 ) ] );
    }

    // The readings of one kind of value, given what a scan of the text finds.
    template <typename T>
    static void expectTyped( ZU_BOOL has, ZU_BOOL read, T value, const STRING &text, ZU_BOOL scanned, T wanted,
                             ZU_INT consumed )
    {
        bool possible = scanned && consumed == zuStringLength( text.get() );
        EXPECT_EQ( has, possible );
        EXPECT_EQ( read, possible );
        EXPECT_EQ( value, possible ? wanted : 0 );
    }
    void expectTypedValues( ZU_STORE *store, const ADDRESS &address, const std::string &chars )
    {
        STRING text = string( chars );
        ZU_BOOL b[ 2 ] = { 7, 7 };
        ZU_INT i[ 2 ] = { 7, 7 };
        double r[ 2 ] = { 7.0, 7.0 };
        ZU_INT consumed = 0;
        ZU_BOOL read = zuStoreValueBoolIn( anyForm(), store, address, b );
        ZU_BOOL scanned = zuStringScanBool( text.get(), 0, -1, ZU_TRUE, b + 1, &consumed );
        expectTyped( zuStoreHasValueBoolIn( anyForm(), store, address ), read, b[ 0 ], text, scanned, b[ 1 ],
                     consumed );
        read = zuStoreValueIntIn( anyForm(), store, address, i );
        scanned = zuStringScanInt( text.get(), 0, -1, -1, i + 1, &consumed );
        expectTyped( zuStoreHasValueIntIn( anyForm(), store, address ), read, i[ 0 ], text, scanned, i[ 1 ], consumed );
        read = zuStoreValueRealIn( anyForm(), store, address, r );
        scanned = zuStringScanReal( text.get(), 0, -1, -1, r + 1, &consumed );
        expectTyped( zuStoreHasValueRealIn( anyForm(), store, address ), read, r[ 0 ], text, scanned, r[ 1 ],
                     consumed );
    }
    void expectHolds( ZU_STORE *store, const STORE_MODEL &model )
    {
        std::vector<std::string> all = model.addresses();
        EXPECT_EQ( takeTexts( zuStoreAddressesVector( store ) ), all );
        EXPECT_EQ( takeTexts( zuStoreValueAddressesVector( store ) ), keysOf( model.values ) );
        EXPECT_EQ( takeTexts( zuStoreStoreAddressesVector( store ) ), keysOf( model.stores ) );
        ASSERT_EQ( zuStoreLength( store ), (ZU_INT)all.size() );
        all.push_back( anyAddress( model ).text );
        for ( const std::string &text : all ) {
            ADDRESS address = model.find( text );
            EXPECT_EQ( zuStoreHasAddressIn( anyForm(), store, address ), address.position >= 0 );
            if ( address.position >= 0 ) {
                EXPECT_EQ( takeText( zuStoreAddressAt( store, address.position ) ), text );
            }
            auto value = model.values.find( text );
            auto sub = model.stores.find( text );
            bool hasValue = value != model.values.end();
            bool hasStore = sub != model.stores.end();
            EXPECT_EQ( zuStoreHasValueIn( anyForm(), store, address ), hasValue );
            EXPECT_EQ( zuStoreHasStoreIn( anyForm(), store, address ), hasStore );
            STRING foundValue = zu::adopt( zuStoreValueIn( anyForm(), store, address ) );
            STORE foundStore = zu::adopt( zuStoreStoreIn( anyForm(), store, address ) );
            ASSERT_EQ( bool( foundValue ), hasValue );
            ASSERT_EQ( bool( foundStore ), hasStore );
            EXPECT_TRUE( !hasValue || textOf( foundValue.get() ) == value->second );
            expectTypedValues( store, address, hasValue ? value->second : "" );
            if ( hasStore ) {
                expectHolds( foundStore.get(), sub->second );
            }
        }
    }

    void setAnyValue( HOLDER &holder, const ADDRESS &address )
    {
        static const std::vector<std::string> TEXTS = divided(
            "true|false||x|12x|-7|0|2.250000|-0.5|0x10| 12 |0.9999999|1,5|yes|TRUE| false |10000000000000000000" );
        ZU_STORE **store = holder.store.inOut();
        std::string text;
        int number = below( 2001 ) - 1000;
        switch ( below( 4 ) ) {
        case 0:
            text = number > 0 ? "true" : "false";
            zuStoreSetValueBoolIn( anyForm(), store, address, number > 0 );
            break;
        case 1:
            text = std::to_string( number );
            zuStoreSetValueIntIn( anyForm(), store, address, number );
            break;
        case 2:
            text = std::to_string( number / 8.0 );
            zuStoreSetValueRealIn( anyForm(), store, address, number / 8.0 );
            break;
        default:
            text = TEXTS[ random.below( TEXTS.size() ) ];
            zuStoreSetValueIn( anyForm(), store, address, string( text ).get() );
        }
        holder.model.values[ address.text ] = text;
    }
    void setStore( HOLDER &holder, const ADDRESS &address, const HOLDER &other )
    {
        // A copy first: the two may be one.
        STORE_MODEL child = other.model;
        zuStoreSetStoreIn( anyForm(), holder.store.inOut(), address, other.store.get() );
        holder.model.stores[ address.text ] = child;
    }
    void merge( HOLDER &holder, const HOLDER &other )
    {
        STORE_MODEL added = other.model;
        zuStoreMerge( holder.store.inOut(), other.store.get() );
        holder.model.merge( added );
    }
    void change( HOLDER &holder, const HOLDER &other )
    {
        ADDRESS address = anyAddress( holder.model );
        switch ( below( 10 ) ) {
        case 0:
            zuStoreDelValueIn( anyForm(), holder.store.inOut(), address );
            holder.model.values.erase( address.text );
            break;
        case 1:
            zuStoreDelStoreIn( anyForm(), holder.store.inOut(), address );
            holder.model.stores.erase( address.text );
            break;
        case 2:
            holder = other;
            break;
        case 3:
            holder.store = zu::adopt( zuStoreCreateFrom( other.store.get() ) );
            holder.model = other.model;
            break;
        case 4:
            merge( holder, other );
            break;
        case 5: {
            // Nested: read, change, write back.
            HOLDER inner;
            if ( STORE sub = zu::adopt( zuStoreStoreIn( anyForm(), holder.store.get(), address ) ) ) {
                inner.store = sub;
                inner.model = holder.model.stores[ address.text ];
            }
            setAnyValue( inner, anyAddress( inner.model ) );
            setStore( holder, address, inner );
            break;
        }
        case 6:
            setStore( holder, address, other );
            break;
        default:
            setAnyValue( holder, address );
        }
        if ( holder.model.depth() > 3 ) {
            zuStoreClear( holder.store.inOut() );
            holder.model = {};
        }
    }

    SeededRandom random;
};

TEST_F( StoreModel, HoldersDoWhatTheirModelsDo )
{
    HOLDER holders[ 4 ];
    for ( int step = 0; step < 2000 && !HasFailure(); step++ ) {
        SCOPED_TRACE( step );
        change( holders[ below( 4 ) ], holders[ below( 4 ) ] );
        for ( const HOLDER &holder : holders ) {
            expectHolds( holder.store.get(), holder.model );
        }
        const HOLDER &a = holders[ below( 4 ) ];
        const HOLDER &b = holders[ below( 4 ) ];
        EXPECT_EQ( zuStoreCompare( a.store.get(), b.store.get() ), order( a.model, b.model ) );
    }
}

TEST( Store, Addresses )
{
    for ( const char *ok : { "-_09AZaz", "a", "-", "0" } ) {
        EXPECT_TRUE( zuStoreAddressOk( string( ok ).get() ) ) << ok;
    }
    for ( const char *bad : { "", "a.b", "a=b", " a", "a/", ":", "@", "[", "`", "{", "^", "\u00E9", "\u0663" } ) {
        EXPECT_FALSE( zuStoreAddressOk( string( bad ).get() ) ) << bad;
    }
}
TEST( Store, NobodyElseIsTouched )
{
    STORE store = zu::adopt( zuStoreCreate() );
    STORE same = store;
    zuStoreDelValueCstr( store.inOut(), "a", -1 );
    EXPECT_NE( store.get(), same.get() ) << "a deletion copies, even of what is not there";
    STORE child = zu::adopt( zuStoreCreate() );
    zuStoreSetStoreCstr( store.inOut(), "child", -1, child.get() );
    zuStoreSetValueBoolCstr( child.inOut(), "a", -1, ZU_TRUE );
    EXPECT_EQ( zuStoreLength( zu::adopt( zuStoreStoreCstr( store.get(), "child", -1 ) ).get() ), 0 );
    // Merged in place or not, a sub-store that somebody holds stays as it is.
    STORE held = zu::adopt( zuStoreStoreCstr( store.get(), "child", -1 ) );
    STORE other = zu::adopt( zuStoreCreate() );
    zuStoreSetStoreCstr( other.inOut(), "child", -1, child.get() );
    zuStoreMerge( store.inOut(), other.get() );
    EXPECT_EQ( zuStoreLength( held.get() ), 0 );
    EXPECT_TRUE( zuStoreEquals( store.get(), other.get() ) );
    EXPECT_EQ( zuStoreLength( child.get() ), 1 );
}

// A chain of stores, with a value at each level.
static STORE makeChain( int depth, ZU_INT value )
{
    STORE chain = zu::adopt( zuStoreCreate() );
    while ( depth-- > 0 ) {
        STORE node = zu::adopt( zuStoreCreate() );
        zuStoreSetValueIntFormatCstr( node.inOut(), "v%i", -1, value, value );
        zuStoreSetStoreCstr( node.inOut(), "s", -1, chain.get() );
        chain = node;
    }
    return chain;
}
TEST( Store, TakesDeepStoresOnASmallStack )
{
    runOnSmallStack( [] {
        STORE store = makeChain( 10000, 1 );
        EXPECT_TRUE( zuStoreEquals( store.get(), makeChain( 10000, 1 ).get() ) );
        zuStoreMerge( store.inOut(), makeChain( 20000, 2 ).get() );
        ZU_INT both = 0, levels = 0;
        while ( STORE next = zu::adopt( zuStoreStoreCstr( store.get(), "s", -1 ) ) ) {
            levels++;
            both += zuStoreHasValueIntCstr( store.get(), "v1", -1 ) && zuStoreHasValueIntCstr( store.get(), "v2", -1 );
            store = next;
        }
        EXPECT_EQ( levels, 20000 );
        EXPECT_EQ( both, 10000 );
    } );
}

TEST( StoreAborts, Addresses )
{
    STORE store = zu::adopt( zuStoreCreate() );
    for ( auto read : { zuStoreHasAddress, zuStoreHasValue, zuStoreHasStore, zuStoreHasValueBool, zuStoreHasValueInt,
                        zuStoreHasValueReal } ) {
        expectAbort( "zuStoreAddressOk( address)", [ & ] { read( store.get(), string( "a.b" ).get() ); } );
    }
    for ( auto del : { zuStoreDelValue, zuStoreDelStore } ) {
        expectAbort( "zuStoreAddressOk( address)", [ & ] { del( store.inOut(), string( "" ).get() ); } );
    }
}
