#include "zu/base/zu_generation_internal.h"

#include "zu_test_string.h"

using GENERATION = zu::Ref<ZU_GENERATION>;

// A generation, and where it should stand.
struct NODE {
    GENERATION generation;
    std::vector<ZU_INT> path;
    ZU_INT children = 0;

    ZU_GENERATION *get() const
    {
        return generation.get();
    }
    // Tells whether this is an ancestor, `levels` above, or any number for 0.
    bool isAbove( const NODE &other, size_t levels = 0 ) const
    {
        return path.size() < other.path.size() && ( levels == 0 || path.size() + levels == other.path.size() ) &&
               std::equal( path.begin(), path.end(), other.path.begin() );
    }
};
static std::vector<NODE> randomTree( std::mt19937 &random, size_t size )
{
    ZU_INT root = zu___GenerationGenerationNumber;
    std::vector<NODE> nodes( size );
    for ( size_t i = 0; i < size; i++ ) {
        if ( random() % ( i + 3 ) < 3 ) {
            nodes[ i ] = { zu::adopt( zuGenerationCreate() ), { root++ } };
        } else {
            NODE &parent = nodes[ random() % i ];
            nodes[ i ] = { zu::adopt( zuGenerationCreateWithParent( parent.get() ) ), parent.path };
            nodes[ i ].path.push_back( parent.children++ );
        }
    }
    return nodes;
}

TEST( Generation, KnowsItsRelations )
{
    std::mt19937 random( 1 );
    std::vector<NODE> nodes = randomTree( random, 60 );
    for ( const NODE &a : nodes ) {
        std::string text;
        for ( ZU_INT number : a.path ) {
            text += ( text.empty() ? "" : ":" ) + std::to_string( number );
        }
        SCOPED_TRACE( text );
        EXPECT_EQ( textOf( zu::upcast( a.get() ) ), text );
        GENERATION parent = zu::adopt( zuGenerationParent( a.get() ) );
        EXPECT_EQ( zuGenerationHasParent( a.get() ), a.path.size() > 1 );
        EXPECT_EQ( bool( parent ), a.path.size() > 1 );
        for ( const NODE &b : nodes ) {
            SCOPED_TRACE( &b - nodes.data() );
            EXPECT_EQ( parent.get() == b.get(), b.isAbove( a, 1 ) );
            EXPECT_EQ( zuGenerationIsParent( a.get(), b.get() ), a.isAbove( b, 1 ) );
            EXPECT_EQ( zuGenerationIsChild( a.get(), b.get() ), b.isAbove( a, 1 ) );
            EXPECT_EQ( zuGenerationIsAncestor( a.get(), b.get() ), a.isAbove( b ) );
            EXPECT_EQ( zuGenerationIsDescendant( a.get(), b.get() ), b.isAbove( a ) );
            EXPECT_EQ( zuGenerationIsOlder( a.get(), b.get() ), a.path < b.path );
            EXPECT_EQ( zuGenerationIsYounger( a.get(), b.get() ), a.path > b.path );
        }
    }
}
TEST( Generation, NumbersChildrenOfAllThreads )
{
    constexpr int THREADS = 4;
    constexpr int EACH = 500;
    GENERATION parent = zu::adopt( zuGenerationCreate() );
    std::vector<GENERATION> children( THREADS * EACH );
    runThreads( THREADS, [ & ]( int self ) {
        for ( int i = 0; i < EACH; i++ ) {
            children[ (size_t)( self * EACH + i ) ] = zu::adopt( zuGenerationCreateWithParent( parent.get() ) );
        }
    } );
    auto before = []( const GENERATION &a, const GENERATION &b ) { return zuGenerationIsOlder( a.get(), b.get() ); };
    std::sort( children.begin(), children.end(), before );
    EXPECT_EQ( std::adjacent_find( children.begin(), children.end(), std::not_fn( before ) ), children.end() );
    EXPECT_EQ( parent.get()->childGenerationNumber, THREADS * EACH );
}

TEST( GenerationMutex, AdmitsOneOfALine )
{
    std::mt19937 random( 2 );
    std::vector<NODE> nodes = randomTree( random, 40 );
    std::set<const NODE *> admitted;
    zu::Ref<ZU_GENERATION_MUTEX> mutex = zu::adopt( zuGenerationMutexCreate() );
    for ( int step = 0; step < 3000; step++ ) {
        const NODE *node = &nodes[ random() % nodes.size() ];
        if ( random() % 3 == 0 ) {
            zuGenerationMutexUnregister( mutex.get(), node->get() );
            admitted.erase( node );
        } else {
            bool free = std::none_of( admitted.begin(), admitted.end(),
                                      [ & ]( const NODE *other ) { return other == node || other->isAbove( *node ); } );
            ASSERT_EQ( zuGenerationMutexTryRegister( mutex.get(), node->get() ), free ) << "step " << step;
            if ( free ) {
                admitted.insert( node );
            }
        }
    }
}

TEST( GenerationAborts, BrokenConditions )
{
    GENERATION root = zu::adopt( zuGenerationCreate() );
    expectAbort( "ZU_INT_ADD_OK( zu___GenerationGenerationNumber, 1 )", [ & ] {
        zu___GenerationGenerationNumber = ZU_INT_MAX;
        zuGenerationCreate();
    } );
    expectAbort( "ZU_INT_ADD_OK( parentGeneration->childGenerationNumber, 1 )", [ & ] {
        root.get()->childGenerationNumber = ZU_INT_MAX;
        zuGenerationCreateWithParent( root.get() );
    } );
}
