#include "zu/base/zu_priority_map_internal.h"

#include "zu_test_support.h"

namespace {

struct PLACE {
    ZU_INT priority;
    ZU_OBJ *obj;

    bool operator<( const PLACE &other ) const
    {
        return priority != other.priority ? priority < other.priority : zuObjCompare( obj, other.obj ) < 0;
    }
};
using MODEL = std::vector<PLACE>; // ascending

} // namespace

static MODEL::iterator findPlace( MODEL &model, ZU_OBJ *obj )
{
    return std::find_if( model.begin(), model.end(),
                         [ = ]( const PLACE &place ) { return zuObjCompare( place.obj, obj ) == 0; } );
}
static void setPlace( MODEL &model, ZU_INT priority, ZU_OBJ *obj )
{
    auto old = findPlace( model, obj );
    if ( old == model.end() || old->priority != priority ) {
        if ( old != model.end() ) {
            model.erase( old );
        }
        PLACE place = { priority, obj };
        model.insert( std::lower_bound( model.begin(), model.end(), place ), place );
    }
}

// Expects a lookup to give the place at `idx` of the model, or nothing if that is outside.
static void expectPlace( const MODEL &model, ZU_INT idx, const std::function<ZU_OBJ *( ZU_INT * )> &look )
{
    bool there = idx >= 0 && idx < (ZU_INT)model.size();
    ZU_INT priority = 77;
    ZU_OBJ *wanted = there ? model[ idx ].obj : nullptr;
    EXPECT_EQ( zu::adopt( look( &priority ) ).get(), wanted );
    EXPECT_EQ( priority, there ? model[ idx ].priority : 0 );
    EXPECT_EQ( zu::adopt( look( nullptr ) ).get(), wanted );
}
static void expectModel( ZU_PRIORITY_MAP *map, MODEL model, const std::vector<ZU_OBJ *> &pool )
{
    ZU_INT length = (ZU_INT)model.size();
    ASSERT_EQ( zuPriorityMapLength( map ), length );
    ASSERT_EQ( zuDictLength( map->objDict ), length );
    auto values = zu::adopt( zuPriorityMapValuesVector( map ) );
    for ( ZU_INT i = 0; i < length; i++ ) {
        EXPECT_EQ( zu::adopt( zuPriorityMapValueAt( map, i ) ).get(), model[ i ].obj );
        EXPECT_EQ( zuVectorBacking( values.get() )[ i ], model[ i ].obj );
        EXPECT_EQ( zuPriorityMapPriorityAt( map, i ), model[ i ].priority );
    }
    expectPlace( model, 0, [ = ]( ZU_INT *priority ) { return zuPriorityMapLowest( map, priority ); } );
    expectPlace( model, length - 1, [ = ]( ZU_INT *priority ) { return zuPriorityMapHighest( map, priority ); } );
    for ( ZU_OBJ *obj : pool ) {
        auto place = findPlace( model, obj );
        ZU_INT idx = place != model.end() ? place - model.begin() : -1;
        EXPECT_EQ( zuPriorityMapIndexOf( map, obj ), idx );
        EXPECT_EQ( zuPriorityMapHas( map, obj ), idx != -1 );
        expectPlace( model, idx == -1 ? -1 : idx - 1,
                     [ = ]( ZU_INT *priority ) { return zuPriorityMapLower( map, obj, priority ); } );
        expectPlace( model, idx == -1 ? -1 : idx + 1,
                     [ = ]( ZU_INT *priority ) { return zuPriorityMapHigher( map, obj, priority ); } );
    }
}

TEST( PriorityMap, AgreesWithAModel )
{
    std::vector<ZU_OBJ *> pool;
    for ( ZU_INT i = 0; i < 60; i++ ) {
        pool.push_back( zuBoxedIntObj( zuBoxedIntCreate( i * 7 % 50 ) ) ); // some are equal, and not the same
    }
    for ( unsigned seed = 1; seed <= 10; seed++ ) {
        SeededRandom random( seed );
        auto number = [ & ]( ZU_INT least, ZU_INT most ) {
            return std::uniform_int_distribution<ZU_INT>( least, most )( random );
        };
        MODEL model;
        ZU_PRIORITY_MAP *map = zuPriorityMapCreate();
        for ( int step = 0; step < 300 && !testing::Test::HasFailure(); step++ ) {
            SCOPED_TRACE( "step " + std::to_string( step ) );
            ZU_OBJ *obj = pool[ number( 0, (ZU_INT)pool.size() - 1 ) ];
            const ZU_INT extremes[] = { ZU_INT_MIN, ZU_INT_MAX };
            ZU_INT priority = step % 16 == 0 ? extremes[ number( 0, 1 ) ] : number( -4, 4 );
            MODEL before = model;
            ZU_PRIORITY_MAP *other = number( 0, 3 ) == 0 ? zuPriorityMapRetain( map ) : nullptr;
            ZU_PRIORITY_MAP *old = map;
            bool changes = true; // whether a shared map is copied
            ZU_INT operation = number( 0, 9 );
            if ( operation == 0 && !model.empty() ) {
                ZU_INT idx = number( 0, (ZU_INT)model.size() - 1 );
                zuPriorityMapDelAt( &map, idx );
                model.erase( model.begin() + idx );
            } else if ( operation <= 3 ) {
                auto place = findPlace( model, obj );
                changes = place != model.end();
                zuPriorityMapDel( &map, obj );
                if ( changes ) {
                    model.erase( place );
                }
            } else {
                zuPriorityMapSet( &map, priority, obj );
                setPlace( model, priority, obj );
            }
            EXPECT_EQ( map != old, other && changes );
            expectModel( map, model, pool );
            if ( other ) {
                expectModel( other, before, pool );
                zuPriorityMapRelease( other );
            }
        }
        zuPriorityMapRelease( map );
        for ( ZU_OBJ *obj : pool ) {
            ASSERT_EQ( ZU_REF_RETAIN_COUNT( obj ), 1u );
        }
    }
    for ( ZU_OBJ *obj : pool ) {
        zuObjRelease( obj );
    }
}
