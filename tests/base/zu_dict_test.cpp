#include "zu/base/zu_dict_internal.h"

#include "zu_test_string.h"

#include <numeric>

using OBJ = zu::Ref<ZU_OBJ>;
using DICT = zu::Ref<ZU_DICT>;

static OBJ text( const std::string &chars )
{
    return zu::adopt( zuStringObj( string( chars ).release() ) );
}
static bool isEmptyDict( ZU_DICT *dict )
{
    return zu::adopt( zuDictCreate() ).get() == dict;
}
// Returns a new dict that maps each character of `keys`, as a string, to its place.
static DICT dictOf( const std::string &keys )
{
    DICT dict = zu::adopt( zuDictCreate() );
    for ( size_t i = 0; i < keys.size(); i++ ) {
        zuDictSetStringKeyCstr( dict.inOut(), &keys[ i ], 1, boxed( (ZU_INT)i ).get() );
    }
    return dict;
}

// A dict as a map of the very objects, changed pair by pair, with the storage that this leads to.
struct DICT_MODEL {
    struct LESS {
        bool operator()( ZU_OBJ *a, ZU_OBJ *b ) const
        {
            return zuObjCompare( a, b ) < 0;
        }
    };
    std::map<ZU_OBJ *, ZU_OBJ *, LESS> pairs;
    ZU_INT alloc = 32;
    bool shared = true; // before an operation
    bool isEmptyDict = true;

    ZU_INT length() const
    {
        return (ZU_INT)pairs.size();
    }
    bool has( ZU_OBJ *key ) const
    {
        return pairs.count( key ) > 0;
    }
    void clear()
    {
        *this = DICT_MODEL();
    }
    void unshare()
    {
        if ( shared ) {
            alloc = length() > 32 ? length() + 32 : 32;
            shared = false;
            isEmptyDict = false;
        }
    }
    void set( ZU_OBJ *key, ZU_OBJ *value )
    {
        unshare();
        pairs.erase( key ); // the key is exchanged too
        pairs[ key ] = value;
        if ( length() > alloc ) {
            alloc = length() + 32;
        }
    }
    void del( ZU_OBJ *key )
    {
        if ( !has( key ) ) {
            return;
        }
        if ( length() == 1 ) {
            clear();
            return;
        }
        unshare();
        pairs.erase( key );
        if ( alloc - length() > 64 ) {
            alloc = length() <= 32 ? 32 : length();
        }
    }
};

// A dict, which others may share, and its model.
struct DICT_HOLDER {
    DICT dict = zu::adopt( zuDictCreate() );
    DICT_MODEL model;

    void expectSame() const
    {
        ZU_DICT *d = dict.get();
        ASSERT_EQ( zuDictLength( d ), model.length() );
        ZU_INT idx = 0;
        for ( auto [ key, value ] : model.pairs ) {
            ASSERT_EQ( zu___DictPair( d, idx )->key, key ) << idx;
            ASSERT_EQ( zu___DictPair( d, idx )->val, value ) << idx;
            idx++;
        }
        ASSERT_EQ( d->alloc, model.alloc );
        ASSERT_EQ( d->items == d->inlineItems, model.alloc == 32 );
        ASSERT_EQ( zu___ObjDbgAllocationSize( zuDictObj( d ) ), model.alloc == 32 ? 0 : model.alloc * 16 );
        ASSERT_EQ( isEmptyDict( d ), model.isEmptyDict );
    }
};

class DictModel : public testing::TestWithParam<unsigned> {
protected:
    std::mt19937 random{ GetParam() };
    std::vector<OBJ> keys; // of many sorts, each as two objects that are equal
    std::vector<OBJ> values;
    std::array<DICT_HOLDER, 4> holders;
    size_t operation = 0; // the last

    DictModel()
    {
        for ( int twin = 0; twin < 2; twin++ ) {
            for ( ZU_INT i = 0; i < 60; i++ ) {
                keys.push_back( boxed( i - 5 ) );
                keys.push_back( text( "same beginning " + std::string( (size_t)i % 7, 'x' ) + std::to_string( i ) ) );
                keys.push_back( zu::adopt( zuBoxedRealObj( zuBoxedRealCreate( (double)i / 4 ) ) ) );
            }
            keys.push_back( zu::adopt( zuBoxedNullObj( zuBoxedNullCreate() ) ) );
            keys.push_back( zu::adopt( zuBoxedBoolObj( zuBoxedBoolCreate( twin ) ) ) );
            keys.push_back( zu::share( zuSortObj( twin ? zuDictSort() : zuStringSort() ) ) );
            keys.push_back( zu::adopt( zuDictObj( dictOf( "xyz" ).release() ) ) );
        }
        for ( ZU_INT i = 0; i < 30; i++ ) {
            values.push_back( boxed( i / 2 ) );
        }
    }
    size_t below( size_t limit )
    {
        return random() % limit;
    }
    ZU_OBJ *anyOf( const std::vector<OBJ> &objs )
    {
        return objs[ below( objs.size() ) ].get();
    }
    DICT_HOLDER &anyHolder()
    {
        DICT_HOLDER &holder = holders[ below( holders.size() ) ];
        holder.model.shared = ZU_REF_RETAIN_COUNT( holder.dict.get() ) > 1;
        return holder;
    }

    void create( DICT_HOLDER &holder )
    {
        std::vector<ZU_OBJ *> newKeys( below( 150 ) );
        std::generate( newKeys.begin(), newKeys.end(), [ & ] { return anyOf( keys ); } );
        if ( below( 3 ) == 0 ) {
            std::sort( newKeys.begin(), newKeys.end(), DICT_MODEL::LESS() );
        }
        holder.model.clear();
        holder.model.unshare();
        zu::Ref<ZU_VECTOR> keysVector = zu::adopt( zuVectorCreate() );
        zu::Ref<ZU_VECTOR> valuesVector = zu::adopt( zuVectorCreate() );
        for ( ZU_OBJ *key : newKeys ) {
            ZU_OBJ *value = anyOf( values );
            zuVectorPrependObj( keysVector.inOut(), key );
            zuVectorPrependObj( valuesVector.inOut(), value );
            holder.model.set( key, value );
        }
        holder.model.alloc = newKeys.size() > 32 ? (ZU_INT)newKeys.size() + 32 : 32;
        holder.dict = zu::adopt( zuDictCreateWithKeysAndValues( keysVector.get(), valuesVector.get() ) );
    }
    void changePair( DICT_HOLDER &holder, bool growing )
    {
        DICT_MODEL &model = holder.model;
        ZU_OBJ *key = anyOf( keys );
        ZU_OBJ *value = anyOf( values );
        if ( below( 4 ) < ( growing ? 3 : 1 ) ) {
            model.set( key, value );
            zuDictSetObjKey( holder.dict.inOut(), key, value );
        } else if ( model.length() == 0 || below( 2 ) == 0 ) {
            model.del( key );
            zuDictDelObjKey( holder.dict.inOut(), key );
        } else {
            size_t idx = below( model.pairs.size() );
            auto at = std::next( model.pairs.begin(), (std::ptrdiff_t)idx );
            if ( below( 2 ) == 0 ) {
                model.set( at->first, value );
                zuDictSetValueAt( holder.dict.inOut(), (ZU_INT)idx, value );
            } else {
                model.del( at->first );
                zuDictDelAt( holder.dict.inOut(), (ZU_INT)idx );
            }
        }
    }
    void delValue( DICT_HOLDER &holder, ZU_OBJ *value, bool useCompare )
    {
        DICT_MODEL &model = holder.model;
        if ( model.length() > 0 ) {
            model.unshare();
        }
        for ( auto [ key, present ] : std::map( model.pairs ) ) {
            if ( present == value || ( useCompare && zuObjCompare( present, value ) == 0 ) ) {
                ZU_INT alloc = model.alloc; // compacted once, behind the last deletion
                model.del( key );
                model.alloc = model.length() > 0 ? alloc : 32;
            }
        }
        if ( model.length() > 0 && model.alloc - model.length() > 64 ) {
            model.alloc = std::max<ZU_INT>( model.length(), 32 );
        }
        zuDictDelValue( holder.dict.inOut(), value, useCompare );
    }
    // Changes a dict by another, which may be the same object.
    void include( DICT_HOLDER &holder, ZU_DICT *src, const DICT_MODEL &srcModel, bool overwrite )
    {
        holder.model.shared = holder.model.shared || holder.dict.get() == src;
        if ( srcModel.length() > 0 ) {
            holder.model.unshare();
        }
        for ( auto [ key, value ] : srcModel.pairs ) {
            if ( overwrite || !holder.model.has( key ) ) {
                holder.model.set( key, value );
            }
        }
        zuDictInclude( holder.dict.inOut(), src, overwrite );
    }
    void exclude( DICT_HOLDER &holder, ZU_DICT *src, const DICT_MODEL &srcModel )
    {
        for ( auto [ key, value ] : srcModel.pairs ) {
            holder.model.del( key );
        }
        zuDictExclude( holder.dict.inOut(), src );
    }
    void intersect( DICT_HOLDER &holder, ZU_DICT *src, const DICT_MODEL &srcModel, bool useSrcValues )
    {
        if ( holder.dict.get() != src && holder.model.length() > 0 ) {
            DICT_MODEL result;
            if ( srcModel.length() > 0 ) {
                result.unshare();
            }
            for ( auto [ key, value ] : holder.model.pairs ) {
                if ( srcModel.has( key ) ) {
                    result.set( key, useSrcValues ? srcModel.pairs.at( key ) : value );
                }
            }
            holder.model = result;
        }
        zuDictIntersect( holder.dict.inOut(), src, useSrcValues );
    }
    void ask( const DICT_HOLDER &holder, const DICT_HOLDER &other )
    {
        ZU_DICT *dict = holder.dict.get();
        const auto &pairs = holder.model.pairs;
        ZU_OBJ *key = anyOf( keys );
        auto at = pairs.find( key );
        ZU_INT idx = at == pairs.end() ? -1 : (ZU_INT)std::distance( pairs.begin(), at );
        ASSERT_EQ( zuDictIndexOfObjKey( dict, key ), idx );
        ASSERT_EQ( zuDictHasObjKey( dict, key ), idx >= 0 );
        ASSERT_EQ( zu::adopt( zuDictObjKey( dict, key ) ).get(), idx < 0 ? nullptr : at->second );
        bool disjoint = std::none_of( pairs.begin(), pairs.end(),
                                      [ & ]( const auto &pair ) { return other.model.has( pair.first ); } );
        ASSERT_EQ( zuDictDisjoint( dict, other.dict.get() ), disjoint );
        if ( holder.model.length() > 0 ) {
            ZU_INT some = (ZU_INT)below( pairs.size() );
            zu::Ref<ZU_VECTOR> keysVector = zu::adopt( zuDictKeysVector( dict ) );
            zu::Ref<ZU_VECTOR> valuesVector = zu::adopt( zuDictValuesVector( dict ) );
            ASSERT_EQ( zuVectorLength( keysVector.get() ), holder.model.length() );
            ASSERT_EQ( zuVectorBacking( keysVector.get() )[ some ], zu::adopt( zuDictKeyAt( dict, some ) ).get() );
            ASSERT_EQ( zuVectorBacking( valuesVector.get() )[ some ], zu::adopt( zuDictValueAt( dict, some ) ).get() );
        }
    }
    void step( bool growing )
    {
        DICT_HOLDER &holder = anyHolder();
        const DICT_HOLDER &other = holders[ below( holders.size() ) ];
        const DICT_MODEL srcModel = other.model;
        ZU_DICT *borrowed = other.dict.get(); // no reference more than the holders have
        ask( holder, other );
        operation = below( 60 );
        switch ( operation ) {
        case 0:
            create( holder );
            break;
        case 1:
            delValue( holder, anyOf( values ), below( 2 ) == 0 );
            break;
        case 2:
            include( holder, borrowed, srcModel, below( 2 ) == 0 );
            break;
        case 3:
            exclude( holder, borrowed, srcModel );
            break;
        case 4:
            intersect( holder, borrowed, srcModel, below( 2 ) == 0 );
            break;
        case 5:
            holder.dict = other.dict;
            holder.model = srcModel;
            break;
        case 6:
            holder.model.shared = true;
            holder.model.unshare();
            holder.dict = zu::adopt( zuDictCreateFrom( holder.dict.get() ) );
            break;
        case 7:
            holder.model.clear();
            zuDictClear( holder.dict.inOut() );
            break;
        case 8:
            holder.model.shared ? holder.model.clear() : holder.model.pairs.clear();
            zu___DictClear( holder.dict.inOut() );
            break;
        case 9:
        case 10:
        case 11: // few pairs in as many rings as many have
            if ( !holder.model.shared && holder.model.alloc > 32 ) {
                zu___DictSpread( holder.dict.get(), 2 + (ZU_INT)below( 3 ) );
            }
            break;
        default:
            changePair( holder, growing );
        }
    }
};
TEST_P( DictModel, StaysLikeItsModel )
{
    for ( int i = 0; i < 6000; i++ ) {
        step( i / 500 % 2 == 0 );
        for ( const DICT_HOLDER &holder : holders ) {
            holder.expectSame();
        }
        ASSERT_FALSE( HasFatalFailure() ) << "seed " << GetParam() << ", step " << i << ", operation " << operation;
    }
}
INSTANTIATE_TEST_SUITE_P( Seeds, DictModel, testing::Range( 1u, 9u ) );

TEST( Dict, TakesManyKeysInAnyOrder )
{
    constexpr ZU_INT COUNT = 200000;
    std::vector<ZU_INT> numbers( COUNT );
    std::mt19937 random( 1 );
    std::generate( numbers.begin(), numbers.end(), [ & ] { return (ZU_INT)( random() % COUNT ); } );
    zu::Ref<ZU_VECTOR> keys = zu::adopt( zuVectorCreate() );
    zu::Ref<ZU_VECTOR> values = zu::adopt( zuVectorCreate() );
    std::map<std::string, ZU_INT> model;
    for ( ZU_INT i = 0; i < COUNT; i++ ) {
        std::string key = "key " + std::to_string( numbers[ (size_t)i ] );
        zuVectorAppendStringCstr( keys.inOut(), key.c_str(), -1 );
        zuVectorAppendInt( values.inOut(), i );
        model.emplace( key, i ); // the first of equal keys stays
    }
    DICT dict = zu::adopt( zuDictCreateWithKeysAndValues( keys.get(), values.get() ) );
    ASSERT_EQ( zuDictLength( dict.get() ), (ZU_INT)model.size() );
    EXPECT_EQ( dict.get()->alloc, COUNT + 32 );
    ZU_INT idx = 0;
    for ( const auto &[ key, value ] : model ) {
        ASSERT_EQ( dict.get()->items[ idx ].key, zuVectorBacking( keys.get() )[ value ] );
        ASSERT_EQ( dict.get()->items[ idx ].val, zuVectorBacking( values.get() )[ value ] );
        ASSERT_EQ( zuDictIndexOfStringKeyCstr( dict.get(), key.c_str(), -1 ), idx++ );
    }
}

// As many pairs as bring rings, one by one, until all are gone again
TEST( Dict, GrowsAndShrinksPairByPair )
{
    constexpr ZU_INT COUNT = 20000;
    std::vector<ZU_INT> numbers( COUNT );
    std::iota( numbers.begin(), numbers.end(), 0 );
    std::mt19937 random( 1 );
    std::set<ZU_INT> model;
    DICT dict = zu::adopt( zuDictCreate() );
    auto expectSame = [ & ] {
        ASSERT_EQ( zuDictLength( dict.get() ), (ZU_INT)model.size() );
        ZU_INT idx = 0;
        for ( ZU_INT number : model ) {
            ASSERT_EQ( zuDictIndexOfIntKey( dict.get(), number ), idx );
            ASSERT_EQ( zuBoxedIntValue( (ZU_BOXED_INT *)zu___DictPair( dict.get(), idx++ )->key ), number );
        }
    };
    for ( bool grows : { true, false } ) {
        std::shuffle( numbers.begin(), numbers.end(), random );
        for ( ZU_INT i = 0; i < COUNT; i++ ) {
            ZU_INT number = numbers[ (size_t)i ];
            grows ? zuDictSetIntKey( dict.inOut(), number, boxed( number ).get() )
                  : zuDictDelIntKey( dict.inOut(), number );
            grows ? (void)model.insert( number ) : (void)model.erase( number );
            if ( i % 2000 == 999 ) {
                ASSERT_NO_FATAL_FAILURE( expectSame() ) << i;
                EXPECT_TRUE( dict.get()->items == nullptr || model.size() <= 1000 );
            }
        }
    }
    EXPECT_TRUE( isEmptyDict( dict.get() ) );
}

// Readers who go through the keys, who jump, who ask for what is not there, and changes in between
TEST( Dict, FindsStringsInAnyOrder )
{
    std::mt19937 random( 1 );
    std::map<std::string, ZU_INT> model;
    DICT dict = zu::adopt( zuDictCreate() );
    auto at = model.end();
    for ( ZU_INT i = 0; i < 20000; i++ ) {
        std::string key = std::to_string( 100 + random() % 200 );
        switch ( random() % 40 ) {
        case 0:
            model.erase( key );
            zuDictDelStringKeyCstr( dict.inOut(), key.c_str(), -1 );
            at = model.begin();
            break;
        case 1:
            model[ key ] = i;
            zuDictSetStringKeyCstr( dict.inOut(), key.c_str(), -1, boxed( i ).get() );
            break;
        case 2:
            at = model.find( key );
            break;
        default:
            at = at == model.end() ? model.begin() : std::next( at );
            key = at == model.end() ? key : at->first;
        }
        auto found = model.find( key );
        ZU_INT idx = found == model.end() ? -1 : (ZU_INT)std::distance( model.begin(), found );
        ASSERT_EQ( zuDictIndexOfStringKeyCstr( dict.get(), key.c_str(), -1 ), idx ) << "step " << i;
    }
}

static bool samePairs( const DICT &a, const DICT &b )
{
    bool same = zuDictLength( a.get() ) == zuDictLength( b.get() );
    for ( ZU_INT idx = 0; same && idx < zuDictLength( a.get() ); idx++ ) {
        same = zu___DictPair( a.get(), idx )->key == zu___DictPair( b.get(), idx )->key;
    }
    return same;
}
// Reals within the tolerance of each other and NaN, of which each order is another: many keys at once are single calls.
TEST( Dict, TakesRealsOneByOne )
{
    std::mt19937 random( 1 );
    OBJ value = boxed( 1 );
    auto real = [ & ] {
        double number = random() % 16 == 0 ? NAN : (double)( random() % 10 ) * 1e-16;
        return zu::adopt( zuBoxedRealObj( zuBoxedRealCreate( number ) ) );
    };
    auto dictOfReals = [ & ] {
        DICT dict = zu::adopt( zuDictCreate() );
        zu::Ref<ZU_VECTOR> keys = zu::adopt( zuVectorCreate() );
        zu::Ref<ZU_VECTOR> values = zu::adopt( zuVectorCreate() );
        for ( size_t left = random() % 8; left > 0; left-- ) {
            zuVectorPrependObj( keys.inOut(), random() % 4 == 0 ? value.get() : real().get() );
            zuVectorPrependObj( values.inOut(), value.get() );
            zuDictSetObjKey( dict.inOut(), zuVectorBacking( keys.get() )[ 0 ], value.get() );
        }
        EXPECT_TRUE( samePairs( zu::adopt( zuDictCreateWithKeysAndValues( keys.get(), values.get() ) ), dict ) );
        return dict;
    };
    for ( int i = 0; i < 2000; i++ ) {
        DICT dict = dictOfReals();
        DICT src = dictOfReals();
        DICT included = dict;
        DICT excluded = dict;
        DICT common = zu::adopt( zuDictCreate() );
        for ( ZU_INT idx = 0; idx < zuDictLength( src.get() ); idx++ ) {
            OBJ key = zu::adopt( zuDictKeyAt( src.get(), idx ) );
            if ( i % 2 == 0 || !zuDictHasObjKey( included.get(), key.get() ) ) {
                zuDictSetObjKey( included.inOut(), key.get(), value.get() );
            }
            zuDictDelObjKey( excluded.inOut(), key.get() );
        }
        for ( ZU_INT idx = 0; idx < zuDictLength( dict.get() ); idx++ ) {
            OBJ key = zu::adopt( zuDictKeyAt( dict.get(), idx ) );
            if ( zuDictHasObjKey( src.get(), key.get() ) ) {
                zuDictSetObjKey( common.inOut(), key.get(), value.get() );
            }
        }
        DICT result = dict;
        zuDictInclude( result.inOut(), src.get(), i % 2 == 0 );
        ASSERT_TRUE( samePairs( result, included ) ) << i;
        result = dict;
        zuDictExclude( result.inOut(), src.get() );
        ASSERT_TRUE( samePairs( result, excluded ) ) << i;
        result = dict;
        zuDictIntersect( result.inOut(), src.get(), ZU_FALSE );
        ASSERT_TRUE( samePairs( result, common ) ) << i;
    }
}

// Objects whose order is that of their numbers get these as by single calls, from the last key on.
TEST( Dict, NumbersKeysOneByOne )
{
    zu::Ref<ZU_VECTOR> keys = zu::adopt( zuVectorCreate() );
    std::array<ZU_INT, 20> numbers; // that come next
    for ( ZU_INT &number : numbers ) {
        zuVectorPrependObj( keys.inOut(), zu::adopt( zuCounterObj( zuCounterCreate() ) ).get() );
        number = zu___UniqueGet();
    }
    std::for_each( numbers.rbegin(), numbers.rend(), zu___UniquePut );
    DICT dict = zu::adopt( zuDictCreateWithKeysAndValues( keys.get(), keys.get() ) );
    for ( ZU_INT number : numbers ) {
        EXPECT_EQ( zu___ObjUnique( zu::adopt( zuVectorPop( keys.inOut() ) ).get() ), number );
    }
}

// A number whose comparisons are noted.
struct ZU_TEST_PROBE {
    ZU_OBJ obj;
    ZU_INT value;
};
static std::vector<ZU_INT> compared;       // the stored numbers
static std::pair<ZU_INT, ZU_INT> heldRefs; // references to both at the last comparison
static ZU_INT probeCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    ZU_INT value = ( (ZU_TEST_PROBE *)thisObj )->value;
    ZU_INT key = ( (ZU_TEST_PROBE *)thatObj )->value;
    compared.push_back( value );
    heldRefs = { ZU_REF_RETAIN_COUNT( thisObj ), ZU_REF_RETAIN_COUNT( thatObj ) };
    return ( value > key ) - ( value < key );
}
static ZU_SORT probeSort = ZU___SORT_INITIALIZER( "ZU_TEST_PROBE", nullptr, nullptr, probeCompare, nullptr );
static OBJ probe( ZU_INT value )
{
    OBJ obj = zu::adopt( zu___ObjCreate( sizeof( ZU_TEST_PROBE ), &probeSort ) );
    ( (ZU_TEST_PROBE *)obj.get() )->value = value;
    return obj;
}
TEST( Dict, ComparesTheEndsFirst )
{
    DICT dict = zu::adopt( zuDictCreate() );
    for ( ZU_INT i = 0; i < 8; i++ ) {
        zuDictSetObjKey( dict.inOut(), probe( 2 * i ).get(), boxed( i ).get() );
    }
    const struct {
        ZU_INT key;
        ZU_INT idx;
        std::vector<ZU_INT> compared;
    } rows[] = {
        { -1, -1, { 0 } },           { 0, 0, { 0 } },
        { 14, 7, { 0, 14 } },        { 15, -1, { 0, 14 } },
        { 6, 3, { 0, 14, 6 } },      { 5, -1, { 0, 14, 6, 2, 4 } },
        { 10, 5, { 0, 14, 6, 10 } }, { 13, -1, { 0, 14, 6, 10, 12 } },
    };
    for ( const auto &row : rows ) {
        compared.clear();
        EXPECT_EQ( zuDictIndexOfObjKey( dict.get(), probe( row.key ).get() ), row.idx ) << row.key;
        EXPECT_EQ( compared, row.compared ) << row.key;
    }
    OBJ key = probe( 0 );
    DICT copy = dict; // which is made ahead of the search, as are all references
    zuDictSetObjKey( dict.inOut(), key.get(), key.get() );
    EXPECT_EQ( heldRefs, ( std::pair<ZU_INT, ZU_INT>( 2, 3 ) ) );
}

TEST( Dict, MayHoldItselfAndPrints )
{
    EXPECT_EQ( textOf( zuDictObj( dictOf( "" ).get() ) ), "{}" );
    DICT dict = dictOf( "ab" );
    zuDictSetObjKey( dict.inOut(), zuDictObj( dict.get() ), zuDictObj( dict.get() ) );
    zuDictSetValueAt( dict.inOut(), 2, zuDictObj( dict.get() ) );
    EXPECT_EQ( textOf( zuDictObj( dict.get() ) ), "{{a=0, b=1}={a=0, b=1}, a=0, b={{a=0, b=1}={a=0, b=1}, a=0, b=1}}" );
    zuDictDelValue( dict.inOut(), zuDictObj( dict.get() ), ZU_TRUE );
    EXPECT_EQ( zuDictLength( dict.get() ), 3 );
}
