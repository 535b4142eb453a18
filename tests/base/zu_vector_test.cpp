#include "zu/base/zu_vector.h"

#include "zu/base/zu_boxed_int.h"
#include "zu/base/zu_boxed_null.h"
#include "zu/base/zu_boxed_unique.h"
#include "zu/base/zu_string_format.h"
#include "zu/base/zu_vector_internal.h"
#include "zu/sys/zu_mem.h"
#include "zu_test_support.h"

#include <algorithm>
#include <array>
#include <map>
#include <random>
#include <set>
#include <thread>
#include <vector>

static std::string textOf( ZU_VECTOR *vec )
{
    ZU_STRING *text = zuVectorToString( vec );
    std::string chars( zuStringBacking( text ), zuStringBacking( text ) + zuStringLength( text ) );
    zuStringRelease( text );
    return chars;
}
// The vector of the integers from 0 to `count` - 1, in an object of its own.
static ZU_VECTOR *makeNumbers( ZU_INT count )
{
    ZU_VECTOR *vec = zuVectorCreate();
    for ( ZU_INT i = 0; i < count; i++ ) {
        zuVectorAppendInt( &vec, i );
    }
    return vec;
}

namespace {

// What a vector is to hold and how its storage is to be laid out.
struct MODEL {
    std::vector<ZU_OBJ *> items;
    ZU_INT fspace = 32;
    ZU_INT bspace = 32;
    bool heap = false;

    ZU_INT length() const
    {
        return (ZU_INT)items.size();
    }
    ZU_INT capacity() const
    {
        return fspace + length() + bspace;
    }
    void lay( ZU_INT newFspace, ZU_INT newBspace )
    {
        fspace = newFspace;
        bspace = newBspace;
    }
    void insert( ZU_INT at, const std::vector<ZU_OBJ *> &added )
    {
        ZU_INT count = (ZU_INT)added.size();
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
    void compact()
    {
        if ( items.empty() ) {
            lay( ( fspace + bspace ) / 2, ( fspace + bspace + 1 ) / 2 );
        } else if ( heap && ( fspace > 64 || bspace > 64 ) ) {
            heap = length() > 64;
            heap ? lay( 32, 32 ) : lay( 0, 64 - length() );
        }
    }
    void erase( ZU_INT offset, ZU_INT count )
    {
        items.erase( items.begin() + offset, items.begin() + offset + count );
        ( offset == 0 ? fspace : bspace ) += count;
        compact();
    }
    void keep( ZU_INT offset, ZU_INT count )
    {
        fspace += offset;
        bspace += length() - offset - count;
        items = std::vector<ZU_OBJ *>( items.begin() + offset, items.begin() + offset + count );
        compact();
    }
    // The layout of a private copy with a gap, which is opened in one step.
    static MODEL copyOf( const std::vector<ZU_OBJ *> &items )
    {
        MODEL copy;
        if ( !items.empty() ) {
            copy.insert( 0, items );
        }
        return copy;
    }
};

// A few variables that hold vectors, some of them the same one, and the models of the vectors.
class Machine {
public:
    explicit Machine( unsigned seed ) : random( seed )
    {
        for ( ZU_INT i = 0; i < (ZU_INT)pool.size(); i++ ) {
            pool[ i ] = zuBoxedIntObj( zuBoxedIntCreate( i / 2 ) ); // pairs are equal, and not the same
        }
        for ( ZU_VECTOR *&holder : holders ) {
            holder = zuVectorCreate();
        }
        models[ holders[ 0 ] ] = MODEL();
    }
    ~Machine()
    {
        for ( ZU_VECTOR *holder : holders ) {
            zuVectorRelease( holder );
        }
        for ( ZU_OBJ *obj : pool ) {
            EXPECT_EQ( ZU_REF_RETAIN_COUNT( obj ), 1u );
            zuObjRelease( obj );
        }
    }
    Machine( const Machine & ) = delete;
    Machine &operator=( const Machine & ) = delete;

    void step()
    {
        ZU_VECTOR *&holder = holders[ number( 0, 2 ) ];
        MODEL before = models[ holder ];
        ZU_VECTOR *old = holder;
        if ( number( 0, 9 ) == 0 ) {
            ZU_VECTOR *other = zuVectorRetain( holders[ number( 0, 2 ) ] );
            zuVectorRelease( holder );
            holder = other;
            forgetUnless( old );
            return;
        }
        bool shared = ZU_REF_RETAIN_COUNT( holder ) > 1;
        result = before;
        copied = shared;
        unchanged = false;
        becomesEmpty = false;
        grown = number( 0, 199 ) == 0 ? !grown : grown;
        grown ? insert( holder, shared ) : remove( holder, shared );
        if ( unchanged ) {
            EXPECT_EQ( holder, old ) << "nothing changed, but the object";
        } else if ( becomesEmpty ) {
            ZU_VECTOR *empty = zuVectorCreate();
            EXPECT_EQ( holder, empty );
            zuVectorRelease( empty );
            result = MODEL();
        } else {
            EXPECT_EQ( holder != old, copied );
        }
        models[ holder ] = result;
        forgetUnless( old );
    }
    void check()
    {
        std::map<ZU_OBJ *, uint32_t> counts;
        std::set<ZU_VECTOR *> distinct( holders.begin(), holders.end() );
        for ( ZU_VECTOR *vec : distinct ) {
            const MODEL &model = models.at( vec );
            ASSERT_EQ( zuVectorLength( vec ), model.length() );
            ASSERT_EQ( vec->fspace, model.fspace );
            ASSERT_EQ( vec->bspace, model.bspace );
            ASSERT_EQ( vec->items != vec->inlineItems, model.heap );
            ASSERT_EQ( zu___ObjDbgAllocationSize( zuVectorObj( vec ) ), model.heap ? model.capacity() * 8 : 0 );
            ASSERT_TRUE( std::equal( model.items.begin(), model.items.end(), zuVectorBacking( vec ) ) );
            for ( ZU_OBJ *item : model.items ) {
                counts[ item ]++;
            }
        }
        for ( ZU_OBJ *obj : pool ) {
            ASSERT_EQ( ZU_REF_RETAIN_COUNT( obj ), counts[ obj ] + 1 );
        }
    }

private:
    ZU_INT number( ZU_INT least, ZU_INT most )
    {
        return std::uniform_int_distribution<ZU_INT>( least, most )( random );
    }
    ZU_OBJ *object()
    {
        return pool[ number( 0, (ZU_INT)pool.size() - 1 ) ];
    }
    void forgetUnless( ZU_VECTOR *vec )
    {
        if ( std::find( holders.begin(), holders.end(), vec ) == holders.end() ) {
            models.erase( vec );
        }
    }
    // The model's side of an insertion.
    void inserted( ZU_INT at, const std::vector<ZU_OBJ *> &added )
    {
        unchanged = added.empty();
        if ( unchanged ) {
            return;
        }
        if ( copied ) {
            result.items.insert( result.items.begin() + at, added.begin(), added.end() );
            result = MODEL::copyOf( result.items );
        } else {
            result.insert( at, added );
        }
    }
    void insert( ZU_VECTOR *&holder, bool shared )
    {
        ZU_INT length = result.length();
        ZU_INT at = number( 0, 2 ) == 0 ? number( 0, length ) : number( 0, 1 ) * length;
        ZU_OBJ *obj = object();
        ZU_VECTOR *src = holders[ number( 0, 2 ) ];
        const std::vector<ZU_OBJ *> from = models[ src ].items;
        // Mostly few, so that the steps in which free space runs out one by one are seen, and seldom many.
        ZU_INT count = std::min( (ZU_INT)from.size(), number( 0, number( 0, 9 ) == 0 ? 200 : 9 ) );
        ZU_INT offset = number( 0, (ZU_INT)from.size() - count );
        std::vector<ZU_OBJ *> range( from.begin() + offset, from.begin() + offset + count );
        if ( length > 600 ) {
            grown = false;
        }
        switch ( number( 0, 9 ) ) {
        case 0:
            copied |= src == holder;
            zuVectorInsertInner( &holder, at, src, offset, count );
            inserted( at, range );
            break;
        case 1: {
            if ( from.size() > 40 ) {
                unchanged = true;
                break;
            }
            // Two insertions, of which the first that inserts anything leaves a private vector.
            copied |= src == holder;
            bool anyCopied = copied;
            zuVectorInsertOuter( &holder, at, src, offset, count );
            inserted( at, std::vector<ZU_OBJ *>( from.begin() + offset + count, from.end() ) );
            bool any = !unchanged;
            copied = copied && !any;
            inserted( at, std::vector<ZU_OBJ *>( from.begin(), from.begin() + offset ) );
            unchanged = unchanged && !any;
            copied = anyCopied;
            break;
        }
        case 2: {
            std::vector<ZU_OBJ *> added;
            for ( ZU_INT i = number( 0, 70 ); i > 0; i-- ) {
                added.push_back( object() );
            }
            zuVectorInsertObjs( &holder, at, added.data(), (ZU_INT)added.size() );
            inserted( at, added );
            break;
        }
        case 3: {
            ZU_INT idx = number( -1, length );
            zuVectorSetObjAt( &holder, idx, obj );
            if ( idx == -1 || idx == length ) {
                inserted( idx == -1 ? 0 : length, { obj } );
            } else {
                result = shared ? MODEL::copyOf( result.items ) : result;
                result.items[ idx ] = obj;
            }
            break;
        }
        case 4:
            zuVectorShift( &holder, obj );
            inserted( 0, { obj } );
            break;
        case 5:
            zuVectorInsertObj( &holder, at, obj );
            inserted( at, { obj } );
            break;
        case 6:
            zuVectorReverse( &holder );
            unchanged = length < 2;
            if ( !unchanged ) {
                result = shared ? MODEL::copyOf( result.items ) : result;
                std::reverse( result.items.begin(), result.items.end() );
            }
            break;
        default:
            zuVectorPush( &holder, obj );
            inserted( length, { obj } );
        }
    }
    void remove( ZU_VECTOR *&holder, bool shared )
    {
        ZU_INT length = result.length();
        if ( length == 0 ) {
            grown = true;
            unchanged = true;
            return;
        }
        ZU_INT count = number( 0, std::min( length, (ZU_INT)( number( 0, 9 ) == 0 ? 200 : 5 ) ) );
        ZU_INT offset = number( 0, 1 ) == 0 ? number( 0, length - count ) : number( 0, 1 ) * ( length - count );
        result = shared ? MODEL::copyOf( result.items ) : result;
        MODEL before = result;
        switch ( number( 0, 9 ) ) {
        case 0:
            zuVectorDelInner( &holder, offset, count );
            unchanged = count == 0;
            becomesEmpty = count == length;
            result.erase( offset, count );
            break;
        case 1: {
            ZU_INT kept = length - count;
            offset = number( 0, count );
            zuVectorDelOuter( &holder, offset, kept );
            unchanged = count == 0;
            becomesEmpty = kept == 0;
            result.keep( offset, kept );
            break;
        }
        case 2: {
            ZU_INT idx = number( 0, length - 1 );
            zuVectorDelAt( &holder, idx );
            becomesEmpty = length == 1;
            result.erase( idx, 1 );
            break;
        }
        case 3:
        case 4:
        case 5: {
            ZU_OBJ *obj = zuVectorUnshift( &holder );
            EXPECT_EQ( obj, result.items.front() );
            result.erase( 0, 1 );
            zuObjRelease( obj );
            break;
        }
        default: {
            ZU_OBJ *obj = zuVectorPop( &holder );
            EXPECT_EQ( obj, result.items.back() );
            result.items.pop_back();
            result.bspace++;
            result.compact();
            zuObjRelease( obj );
        }
        }
        result = unchanged ? models[ holder ] : result;
    }

    std::mt19937 random;
    std::array<ZU_OBJ *, 8> pool;
    std::array<ZU_VECTOR *, 3> holders;
    std::map<ZU_VECTOR *, MODEL> models;
    MODEL result;              // what the step leaves in the holder
    bool copied = false;       // the step leaves another object
    bool unchanged = false;    // the step changes nothing
    bool becomesEmpty = false; // the step leaves the shared empty vector
    bool grown = true;         // whether steps add or remove
};

} // namespace

TEST( Vector, AgreesWithAModel )
{
    for ( unsigned seed = 1; seed <= 20; seed++ ) {
        SCOPED_TRACE( "seed " + std::to_string( seed ) );
        Machine machine( seed );
        for ( int i = 0; i < 4000 && !HasFailure(); i++ ) {
            SCOPED_TRACE( "step " + std::to_string( i ) );
            machine.step();
            machine.check();
        }
        ASSERT_FALSE( HasFailure() );
    }
}

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

static void expectSpace( ZU_VECTOR *vec, ZU_INT fspace, ZU_INT bspace, ZU_INT allocated )
{
    EXPECT_EQ( vec->fspace, fspace );
    EXPECT_EQ( vec->bspace, bspace );
    EXPECT_EQ( zu___ObjDbgAllocationSize( zuVectorObj( vec ) ), allocated * 8 );
}
TEST( Vector, Storage )
{
    ZU_VECTOR *vec = makeNumbers( 33 );
    expectSpace( vec, 31, 0, 0 );
    zuVectorAppendNull( &vec );
    expectSpace( vec, 0, 30, 0 );
    for ( ZU_INT i = 0; i < 31; i++ ) {
        zuVectorAppendNull( &vec );
    }
    expectSpace( vec, 0, 32, 97 );
    zuVectorDelTrailing( &vec, 64 );
    expectSpace( vec, 0, 63, 0 );
    zuVectorRelease( vec );

    ZU_OBJ **objs = (ZU_OBJ **)zuMemAllocN( 1, sizeof( ZU_OBJ * ) );
    objs[ 0 ] = zuBoxedNullObj( zuBoxedNullCreate() );
    vec = zuVectorCreateFromObjsUse( objs, 1 );
    EXPECT_EQ( zuVectorBacking( vec ), objs );
    expectSpace( vec, 0, 0, 1 );
    zuObjRelease( zuVectorPop( &vec ) );
    expectSpace( vec, 0, 1, 1 );
    zuVectorAppendNull( &vec );
    ZU_VECTOR *empty = zuVectorCreate();
    zuVectorDelAt( &vec, 0 );
    EXPECT_EQ( vec, empty );
    zuVectorRelease( vec );

    ZU_VECTOR *copy = zuVectorCreateFrom( empty );
    EXPECT_NE( copy, empty );
    zuVectorAppend( &copy, empty );
    zuVectorDelInner( &copy, 0, 0 );
    expectSpace( copy, 32, 32, 0 );
    zuVectorClear( &copy );
    EXPECT_EQ( copy, empty );
    zuVectorReverse( &copy );
    zuVectorStringize( &copy );
    EXPECT_EQ( copy, empty );
    zuVectorAppendNull( &copy );
    ZU_VECTOR *shared = zuVectorRetain( copy );
    zuVectorReverse( &copy );
    EXPECT_EQ( copy, shared ) << "nothing to reverse";
    zuVectorRelease( shared );
    zuVectorRelease( copy );
    EXPECT_EQ( copy = zuVectorCreateFromObjsCopy( nullptr, 0 ), empty );
    zuVectorRelease( copy );
    zuVectorRelease( empty );
}

// Each form of each family, on <0, 1, 2>, with `src` being <"a", "b", "c", "d">.
TEST( Vector, Forms )
{
    ZU_STRING *fmt = zuStringCreateFromAscii( "%i.", -1 );
    ZU_VECTOR *src = zuVectorCreate();
    for ( const char *text : { "a", "b", "c", "d" } ) {
        zuVectorAppendStringCstr( &src, text, -1 );
    }
    ZU_OBJ *first = zuVectorObjAt( src, 0 );
    ZU_OBJ *const objs[] = { first, first };
    const ZU_INT seven = 7;
    const struct {
        const char *text; // what is put in, as the vector shows it
        std::function<void( ZU_VECTOR **, ZU_INT )> insert;
        std::function<void( ZU_VECTOR ** )> append;
        std::function<void( ZU_VECTOR ** )> prepend;
        std::function<void( ZU_VECTOR **, ZU_INT )> set;
    } rows[] = {
#define ROW( text, form, ... )                                                                                     \
    { text, [ & ]( ZU_VECTOR **vec, ZU_INT idx ) { zuVectorInsert##form( vec, idx __VA_OPT__(, ) __VA_ARGS__ ); }, \
      [ & ]( ZU_VECTOR **vec ) { zuVectorAppend##form( vec __VA_OPT__(, ) __VA_ARGS__ ); },                        \
      [ & ]( ZU_VECTOR **vec ) { zuVectorPrepend##form( vec __VA_OPT__(, ) __VA_ARGS__ ); }, nullptr }
#define ROW_SET( text, form, ... )                                                                                   \
    {                                                                                                                \
        text, [ & ]( ZU_VECTOR **vec, ZU_INT idx ) { zuVectorInsert##form( vec, idx __VA_OPT__(, ) __VA_ARGS__ ); }, \
            [ & ]( ZU_VECTOR **vec ) { zuVectorAppend##form( vec __VA_OPT__(, ) __VA_ARGS__ ); },                    \
            [ & ]( ZU_VECTOR **vec ) { zuVectorPrepend##form( vec __VA_OPT__(, ) __VA_ARGS__ ); },                   \
            [ & ]( ZU_VECTOR **vec, ZU_INT idx ) { zuVectorSet##form##At( vec, idx __VA_OPT__(, ) __VA_ARGS__ ); }   \
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
#undef ROW
#undef ROW_SET
    };
    for ( const auto &row : rows ) {
        SCOPED_TRACE( row.text );
        std::string text = row.text;
        auto expectChange = [ & ]( const std::string &expected, const std::function<void( ZU_VECTOR ** )> &change ) {
            for ( bool shared : { false, true } ) {
                ZU_VECTOR *vec = makeNumbers( 3 );
                ZU_VECTOR *other = shared ? zuVectorRetain( vec ) : nullptr;
                change( &vec );
                EXPECT_EQ( textOf( vec ), expected );
                EXPECT_TRUE( !shared || textOf( other ) == "<0, 1, 2>" );
                ZU_REF_RELEASE_OPT( other );
                zuVectorRelease( vec );
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
    zuObjRelease( first );
    zuVectorRelease( src );
    zuStringRelease( fmt );
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
    };
    for ( const auto &[ expected, change ] : rows ) {
        ZU_VECTOR *vec = makeNumbers( 2 );
        change( &vec );
        EXPECT_EQ( textOf( vec ), expected );
        EXPECT_EQ( ZU_REF_RETAIN_COUNT( vec ), 1u );
        zuVectorRelease( vec );
    }
}

TEST( Vector, OwnershipOfArrays )
{
    ZU_OBJ *obj = zuBoxedUniqueObj( zuBoxedUniqueCreate() );
    ZU_OBJ *const array[] = { zuObjRetain( obj ), zuObjRetain( obj ) };
    ZU_VECTOR *vec = zuVectorCreateFromObjsCopy( array, 2 );
    EXPECT_EQ( ZU_REF_RETAIN_COUNT( obj ), 3u ) << "the references are taken over, the array is not";
    zuObjRetain( obj );
    zuObjRetain( obj );
    zu___VectorPushNoRetain( &vec, array, 2 );
    zu___VectorPushNoRetain( &vec, array, 0 );
    EXPECT_EQ( ZU_REF_RETAIN_COUNT( obj ), 5u );
    EXPECT_EQ( zuVectorLength( vec ), 4 );
    zuVectorAppendObjs( &vec, array, 2 );
    EXPECT_EQ( ZU_REF_RETAIN_COUNT( obj ), 7u );
    zuVectorRelease( vec );
    EXPECT_EQ( ZU_REF_RETAIN_COUNT( obj ), 1u );
    zuObjRelease( obj );
}

TEST( Vector, SearchesAndInspects )
{
    ZU_VECTOR *vec = makeNumbers( 3 );
    zuVectorAppendStringCstr( &vec, "a", -1 );
    zuVectorAppendStringCstr( &vec, "a", -1 );
    ZU_OBJ *last = zuVectorObjAt( vec, 4 );
    ZU_OBJ *two = zuBoxedIntObj( zuBoxedIntCreate( 2 ) );
    const struct {
        ZU_OBJ *obj;
        ZU_BOOL useCompare;
        ZU_INT index;
    } rows[] = { { last, ZU_TRUE, 3 }, { last, ZU_FALSE, 4 }, { two, ZU_TRUE, 2 }, { two, ZU_FALSE, -1 } };
    for ( const auto &row : rows ) {
        EXPECT_EQ( zuVectorIndexOfObj( vec, row.obj, row.useCompare ), row.index );
        EXPECT_EQ( zuVectorHasObj( vec, row.obj, row.useCompare ), row.index != -1 );
    }
    EXPECT_EQ( zuVectorSortAt( vec, 2 ), zuBoxedIntSort() );
    EXPECT_EQ( zuVectorSortAt( vec, 3 ), zuStringSort() );
    EXPECT_FALSE( zuVectorContainsOnly( vec, zuBoxedIntSort() ) );
    ZU_VECTOR *shared = zuVectorRetain( vec );
    zuVectorStringize( &vec );
    EXPECT_TRUE( zuVectorContainsOnly( vec, zuStringSort() ) );
    EXPECT_EQ( zuVectorSortAt( shared, 0 ), zuBoxedIntSort() );
    zuVectorRelease( shared );
    zuVectorClear( &vec );
    EXPECT_TRUE( zuVectorContainsOnly( vec, zuBoxedIntSort() ) );
    zuVectorRelease( vec );
    zuObjRelease( last );
    zuObjRelease( two );
}

TEST( Vector, Order )
{
    const std::vector<ZU_INT> ascending[] = { {}, { -1 }, { 0 }, { 0, 0 }, { 0, 1 }, { 1 }, { 1, 0 }, { 1, 0, 0 } };
    std::vector<ZU_VECTOR *> vectors;
    for ( const std::vector<ZU_INT> &numbers : ascending ) {
        vectors.push_back( zuVectorCreate() );
        for ( ZU_INT number : numbers ) {
            zuVectorAppendInt( &vectors.back(), number );
        }
    }
    for ( size_t a = 0; a < vectors.size(); a++ ) {
        for ( size_t b = 0; b < vectors.size(); b++ ) {
            ZU_VECTOR *other = zuVectorCreateFrom( vectors[ b ] );
            EXPECT_EQ( zuVectorCompare( vectors[ a ], other ), ( a > b ) - ( a < b ) ) << a << " and " << b;
            EXPECT_EQ( zuVectorEquals( vectors[ a ], other ), a == b );
            zuVectorRelease( other );
        }
    }
    for ( ZU_VECTOR *vec : vectors ) {
        zuVectorRelease( vec );
    }
}

// Each thread changes through a variable of its own what all of them began with.
TEST( Vector, SharedByThreads )
{
    ZU_VECTOR *common = makeNumbers( 100 );
    std::vector<std::thread> threads;
    for ( ZU_INT t = 0; t < 4; t++ ) {
        threads.emplace_back( [ mine = zuVectorRetain( common ), common, t ]() mutable {
            for ( ZU_INT i = 0; i < 300; i++ ) {
                zuObjRelease( zuVectorObjAt( common, i % 100 ) );
                zuVectorPush( &mine, zuVectorBacking( mine )[ i ] );
                zuVectorAppendInner( &mine, common, t, 3 );
                zuVectorDelInner( &mine, 50, 3 );
            }
            EXPECT_EQ( zuVectorLength( mine ), 400 );
            zuVectorRelease( mine );
        } );
    }
    for ( std::thread &thread : threads ) {
        thread.join();
    }
    EXPECT_EQ( ZU_REF_RETAIN_COUNT( common ), 1u );
    ZU_VECTOR *expected = makeNumbers( 100 );
    EXPECT_TRUE( zuVectorEquals( common, expected ) );
    zuVectorRelease( expected );
    zuVectorRelease( common );
}

TEST( VectorAborts, OnWhatIsOutside )
{
    ZU_VECTOR *vec = makeNumbers( 3 );
    ZU_VECTOR *src = makeNumbers( 2 );
    ZU_VECTOR *empty = zuVectorCreate();
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
    zuVectorRelease( vec );
    zuVectorRelease( src );
    zuVectorRelease( empty );
}
TEST( VectorAborts, OnNull )
{
    ZU_VECTOR *vec = makeNumbers( 1 );
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
    zuVectorRelease( vec );
}
