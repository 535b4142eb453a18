#include "zu/base/zu_vector_internal.h"

#include "zu/zu.hpp"
#include "zu_test_support.h"

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <random>
#include <vector>

using VECTOR = zu::Ref<ZU_VECTOR>;

static std::string textOf( ZU_VECTOR *vec )
{
    zu::Ref<ZU_STRING> text = zu::adopt( zuVectorToString( vec ) );
    return std::string( zuStringBacking( text.get() ), zuStringBacking( text.get() ) + zuStringLength( text.get() ) );
}
// The vector of the integers from 0 to `count` - 1.
static VECTOR numbers( ZU_INT count )
{
    VECTOR vec = zu::adopt( zuVectorCreate() );
    for ( ZU_INT i = 0; i < count; i++ ) {
        zuVectorAppendInt( vec.inOut(), i );
    }
    return vec;
}

// What a vector is to hold, and how its storage is to be laid out.
struct VECTOR_MODEL {
    std::vector<ZU_OBJ *> items;
    ZU_INT fspace = 32;
    ZU_INT bspace = 32;
    bool heap = false;
    bool isEmptyVector = true; // the shared one
    bool shared = true;        // before an operation
    bool exchanged = false;    // by an operation, for another object

    ZU_INT length() const
    {
        return (ZU_INT)items.size();
    }
    void lay( ZU_INT newFspace, ZU_INT newBspace )
    {
        fspace = newFspace;
        bspace = newBspace;
    }
    void become( const std::vector<ZU_OBJ *> &all )
    {
        *this = VECTOR_MODEL();
        isEmptyVector = shared = false;
        exchanged = true;
        insert( 0, all );
    }
    void unshare()
    {
        if ( shared ) {
            become( std::vector<ZU_OBJ *>( items ) );
        }
    }
    void clear()
    {
        bool wasEmptyVector = isEmptyVector;
        *this = VECTOR_MODEL();
        exchanged = !wasEmptyVector;
    }
    void insert( ZU_INT at, const std::vector<ZU_OBJ *> &added )
    {
        ZU_INT count = (ZU_INT)added.size();
        if ( count == 0 ) {
            return;
        }
        if ( shared ) {
            std::vector<ZU_OBJ *> all = items;
            all.insert( all.begin() + at, added.begin(), added.end() );
            become( all ); // in one step
            return;
        }
        ZU_INT all = fspace + bspace;
        bool front = at == 0;
        bool end = !front && at == length();
        if ( ( front ? fspace : bspace ) >= count ) {
            ( front ? fspace : bspace ) -= count;
        } else if ( all >= count && !( end && heap ) ) {
            front || end ? lay( 0, all - count ) : lay( all - count, 0 );
        } else {
            lay( end ? fspace : 32, 32 );
            heap = true;
        }
        items.insert( items.begin() + at, added.begin(), added.end() );
    }
    void set( ZU_INT idx, ZU_OBJ *item )
    {
        if ( idx == -1 || idx == length() ) {
            insert( std::max<ZU_INT>( idx, 0 ), { item } );
        } else {
            unshare();
            items[ (size_t)idx ] = item;
        }
    }
    void take( ZU_INT offset, ZU_INT count )
    {
        unshare();
        items.erase( items.begin() + offset, items.begin() + offset + count );
        ( offset == 0 && count > 0 ? fspace : bspace ) += count;
    }
    void compact()
    {
        if ( items.empty() ) {
            lay( ( fspace + bspace ) / 2, ( fspace + bspace + 1 ) / 2 );
        } else if ( heap && ( fspace > 64 || bspace > 64 ) ) {
            heap = length() > 64;
            heap ? lay( 32, 32 ) : lay( 0, 64 - length() );
        }
    }
    void del( ZU_INT offset, ZU_INT count )
    {
        if ( count == length() && count > 0 ) {
            clear();
        } else if ( count > 0 ) {
            take( offset, count );
            compact();
        }
    }
    void keep( ZU_INT offset, ZU_INT count )
    {
        if ( count == 0 && length() > 0 ) {
            clear();
        } else if ( count < length() ) {
            take( offset + count, length() - offset - count );
            take( 0, offset );
            compact();
        }
    }
};

// Operations on a few variables, some of which hold the same vector, and on their models.
class VectorModel : public testing::TestWithParam<unsigned> {
protected:
    struct HOLDER {
        VECTOR vec = zu::adopt( zuVectorCreate() );
        VECTOR_MODEL model;
    };
    std::mt19937 random{ GetParam() };
    std::array<zu::Ref<ZU_OBJ>, 8> pool;
    std::array<HOLDER, 3> holders;
    bool growing = true;

    VectorModel()
    {
        for ( zu::Ref<ZU_OBJ> &obj : pool ) {
            obj = zu::adopt( zuBoxedUniqueObj( zuBoxedUniqueCreate() ) );
        }
    }
    ZU_INT between( ZU_INT least, ZU_INT most )
    {
        return std::uniform_int_distribution<ZU_INT>( least, most )( random );
    }
    ZU_OBJ *object()
    {
        return pool[ (size_t)between( 0, 7 ) ].get();
    }
    // Mostly few, so that the steps in which free space runs out one by one are seen, and seldom many.
    ZU_INT some( ZU_INT most )
    {
        return std::min( most, between( 0, between( 0, 9 ) == 0 ? 200 : 7 ) );
    }
    // Mostly at an end
    ZU_INT place( ZU_INT last )
    {
        return between( 0, 2 ) == 0 ? between( 0, last ) : between( 0, 1 ) * last;
    }
    void insert( HOLDER &holder, const HOLDER &other )
    {
        ZU_VECTOR **vec = holder.vec.inOut();
        VECTOR_MODEL &model = holder.model;
        ZU_VECTOR *src = other.vec.get();
        std::vector<ZU_OBJ *> from = other.model.items;
        ZU_INT at = place( model.length() );
        ZU_INT count = some( (ZU_INT)from.size() );
        ZU_INT offset = place( (ZU_INT)from.size() - count );
        ZU_OBJ *obj = object();
        switch ( between( 0, 9 ) ) {
        case 0:
            model.shared |= src == *vec;
            model.insert( at, { from.begin() + offset, from.begin() + offset + count } );
            zuVectorInsertInner( vec, at, src, offset, count );
            break;
        case 1:
            count = (ZU_INT)from.size() - count; // left out
            offset = place( (ZU_INT)from.size() - count );
            model.shared |= src == *vec;
            model.insert( at, { from.begin() + offset + count, from.end() } );
            model.insert( at, { from.begin(), from.begin() + offset } );
            zuVectorInsertOuter( vec, at, src, offset, count );
            break;
        case 2: {
            std::vector<ZU_OBJ *> added( (size_t)between( 0, 70 ) );
            std::generate( added.begin(), added.end(), [ & ] { return object(); } );
            model.insert( at, added );
            zuVectorInsertObjs( vec, at, added.data(), (ZU_INT)added.size() );
            break;
        }
        case 3: {
            ZU_INT idx = between( -1, model.length() );
            model.set( idx, obj );
            zuVectorSetObjAt( vec, idx, obj );
            break;
        }
        case 4:
            if ( model.length() >= 2 ) {
                model.unshare();
                std::reverse( model.items.begin(), model.items.end() );
            }
            zuVectorReverse( vec );
            break;
        case 5:
            model.insert( 0, { obj } );
            zuVectorShift( vec, obj );
            break;
        case 6:
            model.insert( at, { obj } );
            zuVectorInsertObj( vec, at, obj );
            break;
        default:
            model.insert( model.length(), { obj } );
            zuVectorPush( vec, obj );
        }
    }
    void remove( HOLDER &holder )
    {
        ZU_VECTOR **vec = holder.vec.inOut();
        VECTOR_MODEL &model = holder.model;
        ZU_INT count = some( model.length() );
        ZU_INT offset = place( model.length() - count );
        ZU_INT kind = between( 0, 7 );
        if ( kind == 0 || model.length() == 0 ) {
            model.del( offset, count );
            zuVectorDelInner( vec, offset, count );
        } else if ( kind == 1 ) {
            offset = place( count );
            model.keep( offset, model.length() - count );
            zuVectorDelOuter( vec, offset, zuVectorLength( *vec ) - count );
        } else {
            ZU_INT idx = kind < 5 ? 0 : model.length() - 1;
            ZU_OBJ *expected = model.items[ (size_t)idx ];
            model.unshare();
            model.items.erase( model.items.begin() + idx );
            ( kind < 5 ? model.fspace : model.bspace )++;
            model.compact();
            EXPECT_EQ( zu::adopt( kind < 5 ? zuVectorUnshift( vec ) : zuVectorPop( vec ) ).get(), expected );
        }
    }
    void step()
    {
        HOLDER &holder = holders[ (size_t)between( 0, 2 ) ];
        HOLDER &other = holders[ (size_t)between( 0, 2 ) ];
        if ( between( 0, 9 ) == 0 ) {
            holder = HOLDER( other );
            return;
        }
        ZU_VECTOR *old = holder.vec.get();
        holder.model.shared = ZU_REF_RETAIN_COUNT( old ) > 1;
        holder.model.exchanged = false;
        growing = holder.model.length() < 600 && ( between( 0, 199 ) == 0 ? !growing : growing );
        growing ? insert( holder, other ) : remove( holder );
        EXPECT_EQ( holder.vec.get() != old, holder.model.exchanged );
    }
    void check()
    {
        std::map<ZU_VECTOR *, const VECTOR_MODEL *> distinct;
        for ( const HOLDER &holder : holders ) {
            distinct[ holder.vec.get() ] = &holder.model;
        }
        std::map<ZU_OBJ *, uint32_t> counts;
        for ( auto [ vec, model ] : distinct ) {
            ASSERT_EQ( std::vector( zuVectorBacking( vec ), zuVectorBacking( vec ) + zuVectorLength( vec ) ),
                       model->items );
            ASSERT_EQ( vec->fspace, model->fspace );
            ASSERT_EQ( vec->bspace, model->bspace );
            ASSERT_EQ( vec->items != vec->inlineItems, model->heap );
            ASSERT_EQ( zu___ObjDbgAllocationSize( zuVectorObj( vec ) ),
                       model->heap ? 8 * ( model->fspace + model->length() + model->bspace ) : 0 );
            ASSERT_EQ( zu::adopt( zuVectorCreate() ).get() == vec, model->isEmptyVector );
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

// Each form of each family, on <0, 1, 2>, with `src` being <"a", "b", "c", "d">.
TEST( Vector, Forms )
{
    zu::Ref<ZU_STRING> format = zu::adopt( zuStringCreateFromAscii( "%i.", -1 ) );
    ZU_STRING *fmt = format.get();
    VECTOR texts = zu::adopt( zuVectorCreate() );
    for ( const char *text : { "a", "b", "c", "d" } ) {
        zuVectorAppendStringCstr( texts.inOut(), text, -1 );
    }
    ZU_VECTOR *src = texts.get();
    ZU_OBJ *first = zuVectorBacking( src )[ 0 ];
    ZU_OBJ *const objs[] = { first, first };
    const ZU_INT seven = 7;
    const struct {
        const char *text; // what is put in, as the vector shows it
        std::function<void( ZU_VECTOR **, ZU_INT )> insert;
        std::function<void( ZU_VECTOR ** )> append;
        std::function<void( ZU_VECTOR ** )> prepend;
        std::function<void( ZU_VECTOR **, ZU_INT )> set;
    } rows[] = {
#define INSERTING( form, ... )                                                                             \
    [ & ]( ZU_VECTOR **vec, ZU_INT idx ) { zuVectorInsert##form( vec, idx __VA_OPT__(, ) __VA_ARGS__ ); }, \
        [ & ]( ZU_VECTOR **vec ) { zuVectorAppend##form( vec __VA_OPT__(, ) __VA_ARGS__ ); },              \
        [ & ]( ZU_VECTOR **vec ) { zuVectorPrepend##form( vec __VA_OPT__(, ) __VA_ARGS__ ); }
#define ROW( text, form, ... ) { text, INSERTING( form, __VA_ARGS__ ), nullptr }
#define ROW_SET( text, form, ... )                                                                                 \
    {                                                                                                              \
        text, INSERTING( form, __VA_ARGS__ ),                                                                      \
            [ & ]( ZU_VECTOR **vec, ZU_INT idx ) { zuVectorSet##form##At( vec, idx __VA_OPT__(, ) __VA_ARGS__ ); } \
    }
        ROW( "a, b, c, d", , src ),
        ROW( "b, c", Inner, src, 1, 2 ),
        ROW( "a", Leading, src, 1 ),
        ROW( "c, d", Trailing, src, 2 ),
        ROW( "a, d", Outer, src, 1, 2 ),
        ROW( "a, a", Objs, objs, 2 ),
        ROW_SET( "a", Obj, first ),
        ROW_SET( "true", Bool, 2 ),
        ROW_SET( "-5", Int, -5 ),
        ROW_SET( "1.500000", Real, 1.5 ),
        ROW_SET( "null", Null ),
        ROW_SET( "%i.", String, fmt ),
        ROW_SET( "xy", StringCstr, "xyz", 2 ),
        ROW_SET( "xyz", StringWcstr, u"xyz", -1 ),
        ROW_SET( "7.", StringFormat, fmt, seven ),
        ROW_SET( "7-a", StringFormatCstr, "%i-%o", -1, seven, first ),
        ROW_SET( "7", StringFormatWcstr, u"%i-%o", 2, seven ),
    };
    for ( const auto &row : rows ) {
        SCOPED_TRACE( row.text );
        std::string text = row.text;
        auto expectChange = [ & ]( const std::string &expected, const std::function<void( ZU_VECTOR ** )> &change ) {
            for ( bool shared : { false, true } ) {
                VECTOR vec = numbers( 3 );
                VECTOR other = shared ? vec : numbers( 3 );
                change( vec.inOut() );
                EXPECT_EQ( textOf( vec.get() ), expected );
                EXPECT_EQ( textOf( other.get() ), "<0, 1, 2>" );
            }
        };
        expectChange( "<0, " + text + ", 1, 2>", [ & ]( ZU_VECTOR **vec ) { row.insert( vec, 1 ); } );
        expectChange( "<0, 1, 2, " + text + ">", row.append );
        expectChange( "<" + text + ", 0, 1, 2>", row.prepend );
        if ( row.set ) {
            expectChange( "<0, " + text + ", 2>", [ & ]( ZU_VECTOR **vec ) { row.set( vec, 1 ); } );
            expectChange( "<0, 1, 2, " + text + ">", [ & ]( ZU_VECTOR **vec ) { row.set( vec, 3 ); } );
            expectChange( "<" + text + ", 0, 1, 2>", [ & ]( ZU_VECTOR **vec ) { row.set( vec, -1 ); } );
        }
    }
    const std::pair<ZU_VECTOR *, const char *> made[] = {
        { zuVectorCreateFrom( src ), "<a, b, c, d>" },        { zuVectorCreateFromInner( src, 1, 2 ), "<b, c>" },
        { zuVectorCreateFromLeading( src, 3 ), "<a, b, c>" }, { zuVectorCreateFromTrailing( src, 1 ), "<d>" },
        { zuVectorCreateFromOuter( src, 0, 3 ), "<d>" },      { zuVectorCreateFromObj( first ), "<a>" },
        { zuVectorCreateFromOuter( src, 0, 4 ), "<>" },
    };
    for ( const auto &[ vec, expected ] : made ) {
        EXPECT_EQ( textOf( vec ), expected );
        EXPECT_EQ( ZU_REF_RETAIN_COUNT( vec ), 1u );
        zuVectorRelease( vec );
    }
}

TEST( Vector, HoldsItselfAsItStood )
{
    const std::pair<const char *, std::function<void( ZU_VECTOR ** )>> rows[] = {
        { "<0, 0, 1, 1>", []( ZU_VECTOR **vec ) { zuVectorInsert( vec, 1, *vec ); } },
        { "<0, 0, 1>", []( ZU_VECTOR **vec ) { zuVectorInsertOuter( vec, 1, *vec, 1, 1 ); } },
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
        EXPECT_EQ( textOf( vec.get() ), expected );
        EXPECT_EQ( ZU_REF_RETAIN_COUNT( vec.get() ), 1u );
    }
}

TEST( Vector, SearchesAndInspects )
{
    VECTOR vec = numbers( 3 );
    zuVectorAppendStringCstr( vec.inOut(), "a", -1 );
    zuVectorAppendStringCstr( vec.inOut(), "a", -1 );
    ZU_OBJ *last = zuVectorBacking( vec.get() )[ 4 ];
    zu::Ref<ZU_OBJ> two = zu::adopt( zuBoxedIntObj( zuBoxedIntCreate( 2 ) ) );
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

TEST( Vector, Order )
{
    const std::vector<ZU_INT> ascending[] = { {}, { -1 }, { 0 }, { 0, 0 }, { 0, 1 }, { 1 }, { 1, 0 }, { 1, 0, 0 } };
    auto vectorOf = []( const std::vector<ZU_INT> &items ) {
        VECTOR vec = zu::adopt( zuVectorCreate() );
        for ( ZU_INT item : items ) {
            zuVectorAppendInt( vec.inOut(), item );
        }
        return vec;
    };
    for ( size_t a = 0; a < std::size( ascending ); a++ ) {
        for ( size_t b = 0; b < std::size( ascending ); b++ ) {
            EXPECT_EQ( zuVectorCompare( vectorOf( ascending[ a ] ).get(), vectorOf( ascending[ b ] ).get() ),
                       ( a > b ) - ( a < b ) )
                << a << " and " << b;
        }
    }
}

TEST( VectorAborts, OnWhatIsOutside )
{
    VECTOR three = numbers( 3 );
    VECTOR two = numbers( 2 );
    VECTOR none = numbers( 0 );
    ZU_VECTOR *vec = three.get();
    ZU_VECTOR *src = two.get();
    ZU_VECTOR *empty = none.get();
    ZU_OBJ *obj = zuVectorObj( src );
    expectAbort( "idx >= 0", [ & ] { zuVectorObjAt( vec, -1 ); } );
    expectAbort( "idx < vec->length", [ & ] { zuVectorSortAt( vec, 3 ); } );
    expectAbort( "idx >= 0", [ & ] { zuVectorInsert( &vec, -1, src ); } );
    expectAbort( "idx <= (*vec)->length", [ & ] { zuVectorInsertInt( &vec, 4, 1 ); } );
    expectAbort( "idx >= -1", [ & ] { zuVectorSetObjAt( &vec, -2, obj ); } );
    expectAbort( "idx <= (*vec)->length", [ & ] { zuVectorSetNullAt( &vec, 4 ); } );
    expectAbort( "idx < (*vec)->length", [ & ] { zuVectorDelAt( &vec, 3 ); } );
    expectAbort( "offset >= 0", [ & ] { zuVectorAppendInner( &vec, src, -1, 1 ); } );
    expectAbort( "count >= 0", [ & ] { zuVectorAppendLeading( &vec, src, -1 ); } );
    expectAbort( "offset + count <= src->length", [ & ] { zuVectorAppendLeading( &vec, src, 3 ); } );
    expectAbort( "count <= src->length", [ & ] { zuVectorAppendTrailing( &vec, src, 3 ); } );
    expectAbort( "ZU_INT_ADD_OK( offset, count )", [ & ] { zuVectorDelInner( &vec, 1, ZU_INT_MAX ); } );
    expectAbort( "offset + count <= (*vec)->length", [ & ] { zuVectorDelOuter( &vec, 2, 2 ); } );
    expectAbort( "count <= (*vec)->length", [ & ] { zuVectorDelTrailing( &vec, 4 ); } );
    expectAbort( "(*vec)->length", [ & ] { zuVectorPop( &empty ); } );
    expectAbort( "zuVectorLength( *vec )", [ & ] { zuVectorUnshift( &empty ); } );
    expectAbort( "ZU_REF_RETAIN_COUNT( vec ) == 1", [ & ] { zu___VectorCompact( zuVectorRetain( vec ) ); } );
}
TEST( VectorAborts, OnNull )
{
    VECTOR one = numbers( 1 );
    ZU_VECTOR *vec = one.get();
    ZU_VECTOR *none = nullptr;
    ZU_OBJ *objs[] = { zuVectorObj( vec ), nullptr };
    expectAbort( "vec", [ & ] { zuVectorLength( nullptr ); } );
    expectAbort( "vec", [ & ] { zuVectorAppendNull( nullptr ); } );
    expectAbort( "*vec", [ & ] { zuVectorClear( &none ); } );
    expectAbort( "src", [ & ] { zuVectorAppend( &vec, nullptr ); } );
    expectAbort( "src", [ & ] { zuVectorInsertObj( &vec, 0, nullptr ); } );
    expectAbort( "item", [ & ] { zuVectorSetObjAt( &vec, 0, nullptr ); } );
    expectAbort( "obj", [ & ] { zuVectorPush( &vec, nullptr ); } );
    expectAbort( "obj", [ & ] { zuVectorHasObj( vec, nullptr, ZU_FALSE ); } );
    expectAbort( "sort", [ & ] { zuVectorContainsOnly( vec, nullptr ); } );
    expectAbort( "src[i]", [ & ] { zuVectorCreateFromObjsUse( objs, 2 ); } );
    expectAbort( "src[i-1]", [ & ] { zuVectorInsertObjs( &vec, 0, objs, 2 ); } );
    expectAbort( "zu___ref_release_tmp", [ & ] {
        ZU_OBJ *const null = nullptr;
        zu___VectorPushNoRetain( &vec, &null, 1 );
        zuVectorRelease( vec );
    } );
}
