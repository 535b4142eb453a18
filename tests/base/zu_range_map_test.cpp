#include "zu_test_string.h"

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

static ZU_INT order( const std::vector<SPAN> &a, const std::vector<SPAN> &b )
{
    for ( size_t i = 0; i < std::min( a.size(), b.size() ); i++ ) {
        const std::tuple first( a[ i ].start, a[ i ].end, zuObjCompare( a[ i ].value, b[ i ].value ) );
        const std::tuple second( b[ i ].start, b[ i ].end, ZU_INT{ 0 } );
        if ( first != second ) {
            return first < second ? -1 : 1;
        }
    }
    return ( a.size() > b.size() ) - ( a.size() < b.size() );
}
static void expectModel( ZU_RANGE_MAP *map, const MODEL &model, ZU_INT firstKey, ZU_INT lastKey )
{
    ASSERT_EQ( zuRangeMapLength( map ), (ZU_INT)model.spans.size() );
    EXPECT_EQ( zuRangeMapAutoCollapse( map ), model.autoCollapse );
    for ( ZU_INT i = 0; i < zuRangeMapLength( map ); i++ ) {
        EXPECT_EQ( zuRangeMapStartingKeyAt( map, i ), model.spans[ i ].start );
        EXPECT_EQ( zuRangeMapEndingKeyAt( map, i ), model.spans[ i ].end );
        EXPECT_EQ( zu::adopt( zuRangeMapObjAt( map, i ) ).get(), model.spans[ i ].value );
    }
    for ( ZU_INT key = firstKey;; key++ ) {
        ZU_OBJ *value = model.valueOf( key );
        EXPECT_EQ( zu::adopt( zuRangeMapIntKey( map, key ) ).get(), value ) << key;
        EXPECT_EQ( zuRangeMapHasIntKey( map, key ), value != nullptr );
        if ( key == lastKey ) {
            break;
        }
    }
}

// Random changes of maps that are shared from time to time, at both ends of the integers and in the middle.
TEST( RangeMap, AgreesWithAModel )
{
    std::vector<zu::Ref<ZU_OBJ>> pool;
    for ( ZU_INT i = 0; i < 6; i++ ) {
        pool.push_back( boxed( i / 2 ) ); // pairs are equal, and not the same
    }
    for ( unsigned seed = 1; seed <= 30; seed++ ) {
        SeededRandom random( seed );
        auto number = [ & ]( ZU_INT least, ZU_INT most ) {
            return std::uniform_int_distribution<ZU_INT>( least, most )( random );
        };
        const ZU_INT width = seed % 2 == 0 ? 40 : 400;
        const ZU_INT bases[] = { ZU_INT_MIN, -width / 2, ZU_INT_MAX - width };
        const ZU_INT base = bases[ seed % 3 ];
        MODEL model;
        model.autoCollapse = seed % 5 < 2;
        auto map = zu::adopt( model.autoCollapse ? zuRangeMapCreateAutoCollapsing() : zuRangeMapCreate() );
        for ( int step = 0; step < 1000 && !testing::Test::HasFailure(); step++ ) {
            SCOPED_TRACE( "step " + std::to_string( step ) );
            ZU_INT start = base + number( 0, width );
            ZU_INT end = start + number( 0, std::min( base + width - start, (ZU_INT)( step % 20 == 0 ? width : 6 ) ) );
            ZU_OBJ *value = pool[ number( 0, 5 ) ].get();
            const MODEL before = model;
            zu::Ref<ZU_RANGE_MAP> other = number( 0, 3 ) == 0 ? map : nullptr;
            ZU_RANGE_MAP *old = map.get();
            bool changes = true; // whether a shared map is copied
            ZU_INT operation = number( 0, 11 );
            if ( operation < 2 ) {
                end = start;
            }
            if ( operation == 0 ) {
                zuRangeMapSetIntKey( map.inOut(), start, value );
                model.set( start, end, value );
            } else if ( operation < 5 ) {
                changes = !model.spans.empty() && end >= model.spans.front().start && start <= model.spans.back().end;
                if ( operation == 1 ) {
                    zuRangeMapDelIntKey( map.inOut(), start );
                } else {
                    zuRangeMapDelRangeKey( map.inOut(), start, end );
                }
                model.erase( start, end );
            } else if ( operation == 5 ) {
                zuRangeMapCollapse( map.inOut() );
                changes = model.collapse();
            } else if ( operation == 6 ) {
                bool autoCollapse = step % 8 == 0;
                zuRangeMapSetAutoCollapse( map.inOut(), autoCollapse ? 2 : ZU_FALSE );
                changes = autoCollapse != std::exchange( model.autoCollapse, autoCollapse );
                if ( autoCollapse ) {
                    model.collapse();
                }
            } else {
                zuRangeMapSetRangeKey( map.inOut(), start, end, value );
                model.set( start, end, value );
            }
            EXPECT_EQ( map.get() != old, other && changes );
            expectModel( map.get(), model, base, base + width );
            if ( other ) {
                expectModel( other.get(), before, base, base + width );
                EXPECT_EQ( zuRangeMapCompare( map.get(), other.get() ), order( model.spans, before.spans ) );
            }
        }
        map = nullptr;
        for ( auto &obj : pool ) {
            ASSERT_EQ( ZU_REF_RETAIN_COUNT( obj.get() ), 1u );
        }
    }
}

TEST( RangeMap, TextsAndWhatTheModelLacks )
{
    auto one = boxed( 1 );
    auto map = zu::adopt( zuRangeMapCreateAutoCollapsing() );
    EXPECT_EQ( textOf( zu::upcast( map.get() ) ), "{}" );
    zuRangeMapSetRangeKey( map.inOut(), 10, 20, one.get() );
    zuRangeMapSetIntKey( map.inOut(), 12, zuRangeMapObj( map.get() ) ); // itself, as it stands
    EXPECT_EQ( textOf( zu::upcast( map.get() ) ), "{[10,11]=1, [12,12]={[10,20]=1}, [13,20]=1}" );
    zuRangeMapClear( map.inOut() );
    EXPECT_EQ( zuRangeMapLength( map.get() ), 0 );
    EXPECT_FALSE( zuRangeMapAutoCollapse( map.get() ) );
}

// Room comes with 32 ranges to spare and goes by 64.
TEST( RangeMap, Storage )
{
    constexpr ZU_INT RANGE_BYTES = 24;
    auto value = boxed( 0 );
    auto map = zu::adopt( zuRangeMapCreate() );
    auto expectAlloc = [ & ]( ZU_INT alloc ) {
        EXPECT_EQ( zu___ObjDbgAllocationSize( zuRangeMapObj( map.get() ) ), alloc * RANGE_BYTES );
    };
    ZU_INT length = 0;
    for ( const auto &[ next, alloc ] : std::vector<std::array<ZU_INT, 2>>{
              { 1, 33 }, { 33, 33 }, { 34, 66 }, { 66, 66 }, { 67, 99 }, { 130, 132 } } ) {
        for ( ; length < next; length++ ) {
            zuRangeMapSetIntKey( map.inOut(), length, value.get() );
        }
        expectAlloc( alloc );
    }
    zuRangeMapDelRangeKey( map.inOut(), 0, 60 );
    expectAlloc( 132 );
    zuRangeMapDelRangeKey( map.inOut(), 61, 61 );
    expectAlloc( 68 );
    zuRangeMapDelRangeKey( map.inOut(), 0, 1000 );
    expectAlloc( 4 );
}
