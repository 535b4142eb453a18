#include "zu/base/zu_range_map.h"

#include "zu/base/zu_boxed_int.h"
#include "zu/base/zu_string.h"
#include "zu_test_support.h"

#include <algorithm>
#include <array>
#include <map>
#include <random>
#include <vector>

static ZU_OBJ *boxedInt( ZU_INT value )
{
    return zuBoxedIntObj( zuBoxedIntCreate( value ) );
}
static std::string textOf( ZU_RANGE_MAP *map )
{
    ZU_STRING *text = zuRangeMapToString( map );
    std::string chars( zuStringBacking( text ), zuStringBacking( text ) + zuStringLength( text ) );
    zuStringRelease( text );
    return chars;
}

namespace {

struct SPAN {
    ZU_INT start;
    ZU_INT end;
    ZU_OBJ *value;
};
// What a map is to hold, made anew with each change.
struct MODEL {
    bool autoCollapse = false;
    std::vector<SPAN> spans;

    void erase( ZU_INT start, ZU_INT end )
    {
        std::vector<SPAN> left;
        for ( const SPAN &span : spans ) {
            if ( span.start < start ) {
                left.push_back( { span.start, std::min( span.end, start - 1 ), span.value } );
            }
            if ( span.end > end ) {
                left.push_back( { std::max( span.start, end + 1 ), span.end, span.value } );
            }
        }
        spans = left;
    }
    void set( ZU_INT start, ZU_INT end, ZU_OBJ *value )
    {
        erase( start, end );
        auto behind =
            std::find_if( spans.begin(), spans.end(), [ = ]( const SPAN &span ) { return span.start > end; } );
        spans.insert( behind, { start, end, value } );
        if ( autoCollapse ) {
            collapse();
        }
    }
    bool collapse()
    {
        std::vector<SPAN> merged;
        for ( const SPAN &span : spans ) {
            if ( !merged.empty() && merged.back().end == span.start - 1 &&
                 zuObjCompare( merged.back().value, span.value ) == 0 ) {
                merged.back().end = span.end;
            } else {
                merged.push_back( span );
            }
        }
        bool changed = merged.size() < spans.size();
        spans = merged;
        return changed;
    }
    ZU_OBJ *valueOf( ZU_INT key ) const
    {
        for ( const SPAN &span : spans ) {
            if ( span.start <= key && key <= span.end ) {
                return span.value;
            }
        }
        return nullptr;
    }
};

} // namespace

static void expectModel( ZU_RANGE_MAP *map, const MODEL &model, ZU_INT firstKey, ZU_INT lastKey )
{
    ASSERT_EQ( zuRangeMapLength( map ), (ZU_INT)model.spans.size() );
    EXPECT_EQ( zuRangeMapAutoCollapse( map ), model.autoCollapse );
    for ( ZU_INT i = 0; i < zuRangeMapLength( map ); i++ ) {
        ZU_OBJ *value = zuRangeMapObjAt( map, i );
        EXPECT_EQ( zuRangeMapStartingKeyAt( map, i ), model.spans[ i ].start );
        EXPECT_EQ( zuRangeMapEndingKeyAt( map, i ), model.spans[ i ].end );
        EXPECT_EQ( value, model.spans[ i ].value );
        zuObjRelease( value );
    }
    for ( ZU_INT key = firstKey;; key++ ) {
        ZU_OBJ *value = zuRangeMapIntKey( map, key );
        EXPECT_EQ( value, model.valueOf( key ) ) << key;
        EXPECT_EQ( zuRangeMapHasIntKey( map, key ), value != nullptr );
        ZU_REF_RELEASE_OPT( value );
        if ( key == lastKey ) {
            break;
        }
    }
}

// Random changes of maps that are shared from time to time, at both ends of the integers and in the middle.
TEST( RangeMap, AgreesWithAModel )
{
    std::array<ZU_OBJ *, 6> pool;
    for ( ZU_INT i = 0; i < (ZU_INT)pool.size(); i++ ) {
        pool[ i ] = boxedInt( i / 2 ); // pairs are equal, and not the same
    }
    for ( unsigned seed = 1; seed <= 30; seed++ ) {
        SCOPED_TRACE( "seed " + std::to_string( seed ) );
        std::mt19937 random( seed );
        auto number = [ & ]( ZU_INT least, ZU_INT most ) {
            return std::uniform_int_distribution<ZU_INT>( least, most )( random );
        };
        const ZU_INT width = seed % 2 == 0 ? 40 : 400;
        const ZU_INT bases[] = { ZU_INT_MIN, -width / 2, ZU_INT_MAX - width };
        const ZU_INT base = bases[ seed % 3 ];
        MODEL model;
        model.autoCollapse = seed % 5 < 2;
        ZU_RANGE_MAP *map = model.autoCollapse ? zuRangeMapCreateAutoCollapsing() : zuRangeMapCreate();
        for ( int step = 0; step < 1000 && !testing::Test::HasFailure(); step++ ) {
            SCOPED_TRACE( "step " + std::to_string( step ) );
            ZU_INT start = base + number( 0, width );
            ZU_INT end = start + number( 0, std::min( base + width - start, (ZU_INT)( step % 20 == 0 ? width : 6 ) ) );
            ZU_OBJ *value = pool[ number( 0, (ZU_INT)pool.size() - 1 ) ];
            MODEL before = model;
            ZU_RANGE_MAP *other = number( 0, 3 ) == 0 ? zuRangeMapRetain( map ) : nullptr;
            ZU_RANGE_MAP *old = map;
            bool changes = true; // whether a shared map is copied
            switch ( number( 0, 11 ) ) {
            case 0:
                start = end;
                zuRangeMapSetIntKey( &map, start, value );
                model.set( start, start, value );
                break;
            case 1:
                changes = !model.spans.empty() && start >= model.spans.front().start && start <= model.spans.back().end;
                zuRangeMapDelIntKey( &map, start );
                model.erase( start, start );
                break;
            case 2:
            case 3:
            case 4:
                changes = !model.spans.empty() && end >= model.spans.front().start && start <= model.spans.back().end;
                zuRangeMapDelRangeKey( &map, start, end );
                model.erase( start, end );
                break;
            case 5:
                zuRangeMapCollapse( &map );
                changes = model.collapse();
                break;
            case 6:
                if ( step % 8 == 0 ) {
                    changes = !model.autoCollapse;
                    zuRangeMapSetAutoCollapse( &map, 2 );
                    model.autoCollapse = true;
                    model.collapse();
                } else {
                    changes = model.autoCollapse;
                    zuRangeMapSetAutoCollapse( &map, ZU_FALSE );
                    model.autoCollapse = false;
                }
                break;
            default:
                zuRangeMapSetRangeKey( &map, start, end, value );
                model.set( start, end, value );
            }
            EXPECT_EQ( map != old, other && changes );
            expectModel( map, model, base, base + width );
            if ( other ) {
                expectModel( other, before, base, base + width );
                zuRangeMapRelease( other );
            }
        }
        zuRangeMapRelease( map );
        for ( ZU_OBJ *obj : pool ) {
            ASSERT_EQ( ZU_REF_RETAIN_COUNT( obj ), 1u );
        }
    }
    for ( ZU_OBJ *obj : pool ) {
        zuObjRelease( obj );
    }
}

// Changes of a map that begins as {[10,20]=1}, by what is left.
TEST( RangeMap, CutsBackWhatWasThere )
{
    ZU_OBJ *one = boxedInt( 1 );
    ZU_OBJ *two = boxedInt( 2 );
    const struct {
        bool autoCollapse;
        std::function<void( ZU_RANGE_MAP ** )> change;
        const char *text;
    } rows[] = {
        { false, [ = ]( ZU_RANGE_MAP **map ) { zuRangeMapSetRangeKey( map, 15, 16, two ); },
          "{[10,14]=1, [15,16]=2, [17,20]=1}" },
        { false, [ = ]( ZU_RANGE_MAP **map ) { zuRangeMapSetRangeKey( map, 5, 25, two ); }, "{[5,25]=2}" },
        { false, [ = ]( ZU_RANGE_MAP **map ) { zuRangeMapDelRangeKey( map, 12, 13 ); }, "{[10,11]=1, [14,20]=1}" },
        { false, [ = ]( ZU_RANGE_MAP **map ) { zuRangeMapDelRangeKey( map, 0, 5 ); }, "{[10,20]=1}" },
        { false, [ = ]( ZU_RANGE_MAP **map ) { zuRangeMapSetRangeKey( map, 21, 22, one ); }, "{[10,20]=1, [21,22]=1}" },
        { true, [ = ]( ZU_RANGE_MAP **map ) { zuRangeMapSetRangeKey( map, 21, 22, one ); }, "{[10,22]=1}" },
        { true, [ = ]( ZU_RANGE_MAP **map ) { zuRangeMapSetRangeKey( map, 22, 22, one ); }, "{[10,20]=1, [22,22]=1}" },
        { true, [ = ]( ZU_RANGE_MAP **map ) { zuRangeMapSetRangeKey( map, 0, 9, two ); }, "{[0,9]=2, [10,20]=1}" },
        { true, [ = ]( ZU_RANGE_MAP **map ) { zuRangeMapSetIntKey( map, 12, zuRangeMapObj( *map ) ); },
          "{[10,11]=1, [12,12]={[10,20]=1}, [13,20]=1}" },
        { true, [ = ]( ZU_RANGE_MAP **map ) { zuRangeMapSetIntKey( map, ZU_INT_MAX, two ); },
          "{[10,20]=1, [9223372036854775807,9223372036854775807]=2}" },
        { true, []( ZU_RANGE_MAP **map ) { zuRangeMapClear( map ); }, "{}" },
    };
    for ( const auto &row : rows ) {
        ZU_RANGE_MAP *map = row.autoCollapse ? zuRangeMapCreateAutoCollapsing() : zuRangeMapCreate();
        zuRangeMapSetRangeKey( &map, 10, 20, one );
        row.change( &map );
        EXPECT_EQ( textOf( map ), row.text );
        EXPECT_EQ( zuRangeMapAutoCollapse( map ), row.autoCollapse && zuRangeMapLength( map ) > 0 );
        zuRangeMapRelease( map );
    }
    zuObjRelease( one );
    zuObjRelease( two );
}

// Room comes with 32 ranges to spare and goes by 64.
TEST( RangeMap, Storage )
{
    constexpr ZU_INT RANGE_BYTES = 24;
    ZU_OBJ *value = boxedInt( 0 );
    ZU_RANGE_MAP *map = zuRangeMapCreate();
    const std::array<ZU_INT, 2> rows[] = { { 1, 33 }, { 33, 33 }, { 34, 66 }, { 66, 66 }, { 67, 99 }, { 130, 132 } };
    auto allocated = [ & ] { return zu___ObjDbgAllocationSize( zuRangeMapObj( map ) ) / RANGE_BYTES; };
    ZU_INT length = 0;
    for ( const auto &[ next, alloc ] : rows ) {
        for ( ; length < next; length++ ) {
            zuRangeMapSetIntKey( &map, length, value );
        }
        EXPECT_EQ( allocated(), alloc ) << length;
    }
    zuRangeMapDelRangeKey( &map, 0, 60 );
    EXPECT_EQ( allocated(), 132 );
    zuRangeMapDelRangeKey( &map, 61, 61 );
    EXPECT_EQ( allocated(), 68 );
    zuRangeMapDelRangeKey( &map, 0, 1000 );
    EXPECT_EQ( allocated(), 4 );
    zuRangeMapRelease( map );
    zuObjRelease( value );
}

TEST( RangeMap, Order )
{
    ZU_OBJ *one = boxedInt( 1 );
    ZU_OBJ *two = boxedInt( 2 );
    std::vector<ZU_RANGE_MAP *> ascending;
    for ( int i = 0; i < 6; i++ ) {
        ascending.push_back( i % 2 == 0 ? zuRangeMapCreate() : zuRangeMapCreateAutoCollapsing() );
    }
    zuRangeMapSetRangeKey( &ascending[ 1 ], -3, 9, two );
    zuRangeMapSetRangeKey( &ascending[ 2 ], 0, 5, two );
    zuRangeMapSetRangeKey( &ascending[ 3 ], 0, 6, one );
    zuRangeMapSetRangeKey( &ascending[ 4 ], 0, 6, one );
    zuRangeMapSetRangeKey( &ascending[ 4 ], 8, 8, one );
    zuRangeMapSetRangeKey( &ascending[ 5 ], 0, 6, two );
    for ( size_t a = 0; a < ascending.size(); a++ ) {
        for ( size_t b = 0; b < ascending.size(); b++ ) {
            ZU_RANGE_MAP *other = zuRangeMapCreateFrom( ascending[ b ] );
            zuRangeMapSetAutoCollapse( &other, ZU_FALSE );
            EXPECT_EQ( zuRangeMapCompare( ascending[ a ], other ), ( a > b ) - ( a < b ) ) << a << " and " << b;
            zuRangeMapRelease( other );
        }
    }
    for ( ZU_RANGE_MAP *map : ascending ) {
        zuRangeMapRelease( map );
    }
    zuObjRelease( one );
    zuObjRelease( two );
}

TEST( RangeMapAborts, OnMisuse )
{
    ZU_RANGE_MAP *map = zuRangeMapCreate();
    ZU_RANGE_MAP *none = nullptr;
    expectAbort( "map", [] { zuRangeMapLength( nullptr ); } );
    expectAbort( "*map", [ & ] { zuRangeMapCollapse( &none ); } );
    expectAbort( "idx >= 0", [ & ] { zuRangeMapStartingKeyAt( map, -1 ); } );
    expectAbort( "idx < map->length", [ & ] { zuRangeMapEndingKeyAt( map, 0 ); } );
    expectAbort( "idx < map->length", [ & ] { zuRangeMapObjAt( map, 0 ); } );
    expectAbort( "endingKey >= startingKey",
                 [ & ] { zuRangeMapSetRangeKey( &map, 2, 1, zuRangeMapObj( map ) ); } );
    expectAbort( "endingKey >= startingKey", [ & ] { zuRangeMapDelRangeKey( &map, 2, 1 ); } );
    expectAbort( "value", [ & ] { zuRangeMapSetIntKey( &map, 1, nullptr ); } );
    zuRangeMapRelease( map );
}
