#include "zu/base/zu_vector_internal.h"

#include "zu_slack_model.h"
#include "zu_test_string.h"

using VECTOR = zu::Ref<ZU_VECTOR>;

// The vector of the integers from 0 to `count` - 1.
static VECTOR numbers( ZU_INT count )
{
    VECTOR vec = zu::adopt( zuVectorCreate() );
    for ( ZU_INT i = 0; i < count; i++ ) {
        zuVectorAppendInt( vec.inOut(), i );
    }
    return vec;
}

struct VECTORS {
    typedef ZU_VECTOR OWNER;
    typedef ZU_OBJ *ELEMENT;
    static constexpr ZU_INT FRONT = 32;
    SLACK_CLASS( zuVector );
    static bool onHeap( ZU_VECTOR *vec )
    {
        return vec->items != vec->inlineItems;
    }
};
class VectorModel : public SlackOperations<VECTORS> {
protected:
    std::array<zu::Ref<ZU_OBJ>, 8> pool;

    VectorModel()
    {
        for ( zu::Ref<ZU_OBJ> &obj : pool ) {
            obj = zu::adopt( zuBoxedUniqueObj( zuBoxedUniqueCreate() ) );
        }
    }
    ZU_OBJ *object()
    {
        return pool[ (size_t)between( 0, 7 ) ].get();
    }
    bool createOwn( HOLDER & ) override
    {
        return false;
    }
    bool insertOwn( HOLDER &holder ) override
    {
        ZU_VECTOR **vec = holder.ref.inOut();
        MODEL &model = holder.model;
        ZU_INT idx = between( -1, model.length() ), at = std::max<ZU_INT>( idx, 0 );
        ZU_OBJ *obj = object();
        std::vector<ZU_OBJ *> added( (size_t)between( 0, 70 ) );
        switch ( between( 0, 6 ) ) {
        case 0:
            std::generate( added.begin(), added.end(), [ & ] { return object(); } );
            model.insert( at, added );
            zuVectorInsertObjs( vec, at, added.data(), (ZU_INT)added.size() );
            break;
        case 1:
            model.set( idx, obj );
            zuVectorSetObjAt( vec, idx, obj );
            break;
        case 2:
            if ( model.length() >= 2 ) {
                model.unshare();
                std::reverse( model.items.begin(), model.items.end() );
            }
            zuVectorReverse( vec );
            break;
        case 3:
            model.insert( 0, { obj } );
            zuVectorShift( vec, obj );
            break;
        case 4:
            model.insert( at, { obj } );
            zuVectorInsertObj( vec, at, obj );
            break;
        default:
            model.insert( model.length(), { obj } );
            zuVectorPush( vec, obj );
        }
        return true;
    }
    bool removeOwn( HOLDER &holder ) override
    {
        MODEL &model = holder.model;
        if ( model.length() == 0 ) {
            return false;
        }
        bool front = between( 0, 1 );
        ZU_INT idx = front ? 0 : model.length() - 1;
        ZU_OBJ *expected = model.items[ (size_t)idx ];
        model.take( idx, 1 );
        model.compact();
        EXPECT_EQ( zu::adopt( ( front ? zuVectorUnshift : zuVectorPop )( holder.ref.inOut() ) ).get(), expected );
        return true;
    }
    void checkItems()
    {
        std::map<ZU_VECTOR *, const MODEL *> distinct;
        for ( const HOLDER &holder : holders ) {
            distinct[ holder.ref.get() ] = &holder.model;
        }
        std::map<ZU_OBJ *, uint32_t> counts;
        for ( auto [ vec, model ] : distinct ) {
            for ( ZU_OBJ *item : model->items ) {
                counts[ item ]++;
            }
        }
        for ( const zu::Ref<ZU_OBJ> &obj : pool ) {
            ASSERT_EQ( ZU_REF_RETAIN_COUNT( obj.get() ), counts[ obj.get() ] + 1 );
        }
    }
};
TEST_P( VectorModel, StaysLikeItsModel )
{
    for ( int i = 0; i < 8000 && !HasFailure(); i++ ) {
        SCOPED_TRACE( "seed " + std::to_string( GetParam() ) + ", step " + std::to_string( i ) );
        step();
        check();
        checkItems();
    }
}
INSTANTIATE_TEST_SUITE_P( Seeds, VectorModel, testing::Range( 1u, 11u ) );

// Stacks, queues and what is both move an item a bounded number of times in the mean, although free space grows by a
// constant.
TEST( Vector, LongOnesMoveSeldom )
{
    constexpr ZU_INT LENGTH = 100000;
    ZU_OBJ *obj = zuBoxedUniqueObj( zuBoxedUniqueCreate() );
    const char *const uses[] = { "stack", "queue", "stack at the front", "queue from the end", "both ends" };
    for ( ZU_INT use = 0; use < 5; use++ ) {
        ZU_VECTOR *vec = zuVectorCreateFromObj( obj );
        ZU_INT moved = 0;
        bool wasteful = false;
        auto counted = [ & ]( auto change ) {
            ZU_OBJ *const *before = zuVectorBacking( vec );
            change();
            moved += std::abs( zuVectorBacking( vec ) - before ) > 1 ? zuVectorLength( vec ) : 0;
            bool heap = vec->items != vec->inlineItems;
            wasteful |= heap && vec->block.slots / 3 > vec->fspace + vec->length + vec->bspace;
        };
        auto put = [ & ]( ZU_INT i ) {
            bool front = use == 4 ? i % 2 == 0 : use >= 2;
            counted( [ & ] { front ? zuVectorShift( &vec, obj ) : zuVectorPush( &vec, obj ); } );
        };
        auto take = [ & ]( ZU_INT i ) {
            bool front = use == 4 ? i % 2 == 0 : use == 1 || use == 2;
            counted( [ & ] { zuObjRelease( front ? zuVectorUnshift( &vec ) : zuVectorPop( &vec ) ); } );
        };
        for ( ZU_INT i = 0; i < LENGTH; i++ ) {
            put( i );
        }
        for ( ZU_INT i = 0; i < LENGTH; i++ ) {
            put( i );
            take( i + 1 );
        }
        for ( ZU_INT i = 0; i < LENGTH; i++ ) {
            take( i );
        }
        EXPECT_LT( moved, 7 * LENGTH ) << uses[ use ];
        EXPECT_FALSE( wasteful ) << uses[ use ];
        EXPECT_EQ( ZU_REF_RETAIN_COUNT( obj ), (uint32_t)zuVectorLength( vec ) + 1 );
        EXPECT_EQ( vec->items, vec->inlineItems ) << "what is left";
        zuVectorRelease( vec );
    }
    zuObjRelease( obj );
}

TEST( Vector, AdoptsArrays )
{
    zu::Ref<ZU_OBJ> obj = zu::adopt( zuBoxedUniqueObj( zuBoxedUniqueCreate() ) );
    ZU_OBJ **array = (ZU_OBJ **)zuMemAllocN( 2, sizeof( ZU_OBJ * ) );
    array[ 0 ] = zuObjRetain( obj.get() );
    array[ 1 ] = zuObjRetain( obj.get() );
    VECTOR copied = zu::adopt( zuVectorCreateFromObjsCopy( array, 2 ) );
    EXPECT_EQ( ZU_REF_RETAIN_COUNT( obj.get() ), 3u ) << "the references are taken over, the array is not";
    zuObjRetain( obj.get() );
    zuObjRetain( obj.get() );
    zu___VectorPushNoRetain( copied.inOut(), array, 2 );
    zu___VectorPushNoRetain( copied.inOut(), array, 0 );
    EXPECT_EQ( ZU_REF_RETAIN_COUNT( obj.get() ), 5u );
    EXPECT_EQ( zuVectorLength( copied.get() ), 4 );
    array[ 0 ] = zuObjRetain( obj.get() );
    VECTOR used = zu::adopt( zuVectorCreateFromObjsUse( array, 1 ) );
    EXPECT_EQ( zuVectorBacking( used.get() ), array );
    EXPECT_EQ( used.get()->fspace + used.get()->bspace, 0 );
    EXPECT_EQ( zu___ObjDbgAllocationSize( zuVectorObj( used.get() ) ), 8 );
    zuObjRelease( zuVectorPop( used.inOut() ) );
    EXPECT_EQ( zu___ObjDbgAllocationSize( zuVectorObj( used.get() ) ), 8 ) << "an emptied stack keeps its array";
    EXPECT_EQ( used.get()->fspace, 0 );
    copied = nullptr;
    EXPECT_EQ( ZU_REF_RETAIN_COUNT( obj.get() ), 1u );
    EXPECT_EQ( zu::adopt( zuVectorCreateFromObjsCopy( nullptr, 0 ) ).get(), zu::adopt( zuVectorCreate() ).get() );
}

// What puts in one item that it makes, at all places; the vector with it is told with it as "x".
TEST( Vector, MakesItems )
{
#define EXPECT_FORMS( text, form, ... )                                         \
    do {                                                                        \
        VECTOR vec = numbers( 3 ), kept = vec;                                  \
        zuVectorInsert##form( vec.inOut(), 1 __VA_OPT__(, ) __VA_ARGS__ );      \
        zuVectorAppend##form( vec.inOut() __VA_OPT__(, ) __VA_ARGS__ );         \
        zuVectorPrepend##form( vec.inOut() __VA_OPT__(, ) __VA_ARGS__ );        \
        zuVectorSet##form##At( vec.inOut(), 3 __VA_OPT__(, ) __VA_ARGS__ );     \
        zuVectorSet##form##At( vec.inOut(), 6 __VA_OPT__(, ) __VA_ARGS__ );     \
        zuVectorSet##form##At( vec.inOut(), -1 __VA_OPT__(, ) __VA_ARGS__ );    \
        std::string result = textOf( zu::upcast( vec.get() ) );                 \
        for ( size_t at; ( at = result.find( text ) ) != std::string::npos; ) { \
            result.replace( at, strlen( text ), "x" );                          \
        }                                                                       \
        EXPECT_EQ( result, "<x, x, 0, x, x, 2, x, x>" );                        \
        EXPECT_EQ( textOf( zu::upcast( kept.get() ) ), "<0, 1, 2>" );           \
    } while ( 0 )
    EXPECT_FORMS( "true", Bool, 2 );
    EXPECT_FORMS( "-5", Int, -5 );
    EXPECT_FORMS( "1.500000", Real, 1.5 );
    EXPECT_FORMS( "null", Null );
    EXPECT_FORMS( "text", String, string( "text" ).get() );
#undef EXPECT_FORMS
}
TEST( Vector, HoldsItselfAsItStood )
{
    const std::pair<const char *, std::function<void( ZU_VECTOR ** )>> rows[] = {
        { "<0, <0, 1>, 1>", []( ZU_VECTOR **vec ) { zuVectorInsertObj( vec, 1, zuVectorObj( *vec ) ); } },
        { "<<0, 1>, 1>", []( ZU_VECTOR **vec ) { zuVectorSetObjAt( vec, 0, zuVectorObj( *vec ) ); } },
        { "<0, 1, <0, 1>>", []( ZU_VECTOR **vec ) { zuVectorPush( vec, zuVectorObj( *vec ) ); } },
        { "<<0, 1>, <0, 1>, 0, 1>",
          []( ZU_VECTOR **vec ) {
              ZU_OBJ *const objs[] = { zuVectorObj( *vec ), zuVectorObj( *vec ) };
              zuVectorPrependObjs( vec, objs, 2 );
          } },
        { "<1, 1>", []( ZU_VECTOR **vec ) { zuVectorSetObjAt( vec, 0, zuVectorBacking( *vec )[ 1 ] ); } },
        { "<0, 1, 0, 1>",
          []( ZU_VECTOR **vec ) {
              zuVectorPrependObjs( vec, zuVectorBacking( *vec ), 1 );
              zuVectorInsertObjs( vec, 1, zuVectorBacking( *vec ) + 2, 1 );
          } },
    };
    for ( const auto &[ expected, change ] : rows ) {
        VECTOR vec = numbers( 2 );
        change( vec.inOut() );
        EXPECT_EQ( textOf( zu::upcast( vec.get() ) ), expected );
        EXPECT_EQ( ZU_REF_RETAIN_COUNT( vec.get() ), 1u );
    }
}

TEST( Vector, SearchesAndInspects )
{
    VECTOR vec = numbers( 3 );
    zuVectorAppendStringCstr( vec.inOut(), "a", -1 );
    zuVectorAppendStringCstr( vec.inOut(), "a", -1 );
    ZU_OBJ *last = zuVectorBacking( vec.get() )[ 4 ];
    zu::Ref<ZU_OBJ> two = boxed( 2 );
    const std::tuple<ZU_OBJ *, ZU_BOOL, ZU_INT> rows[] = {
        { last, ZU_TRUE, 3 }, { last, ZU_FALSE, 4 }, { two.get(), ZU_TRUE, 2 }, { two.get(), ZU_FALSE, -1 }
    };
    for ( auto [ obj, useCompare, index ] : rows ) {
        EXPECT_EQ( zuVectorIndexOfObj( vec.get(), obj, useCompare ), index );
        EXPECT_EQ( zuVectorHasObj( vec.get(), obj, useCompare ), index != -1 );
    }
    EXPECT_EQ( zuVectorSortAt( vec.get(), 2 ), zuBoxedIntSort() );
    EXPECT_EQ( zuVectorSortAt( vec.get(), 3 ), zuStringSort() );
    EXPECT_FALSE( zuVectorContainsOnly( vec.get(), zuBoxedIntSort() ) );
    VECTOR shared = vec;
    zuVectorStringize( vec.inOut() );
    EXPECT_TRUE( zuVectorContainsOnly( vec.get(), zuStringSort() ) );
    EXPECT_EQ( zuVectorSortAt( shared.get(), 0 ), zuBoxedIntSort() );
    zuVectorClear( vec.inOut() );
    zuVectorStringize( vec.inOut() );
    EXPECT_EQ( vec.get(), zu::adopt( zuVectorCreate() ).get() );
    EXPECT_TRUE( zuVectorContainsOnly( vec.get(), zuBoxedIntSort() ) );
}
