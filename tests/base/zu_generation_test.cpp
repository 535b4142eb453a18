#include "zu/base/zu_generation_internal.h"

#include "zu/zu.hpp"
#include "zu_test_support.h"

#include <algorithm>
#include <random>
#include <set>
#include <vector>

using GENERATION = zu::Ref<ZU_GENERATION>;

static std::string toStd( ZU_GENERATION *generation )
{
    zu::Ref<ZU_STRING> text = zu::adopt( zuGenerationToString( generation ) );
    char *chars = zuStringConvertToUtf8( text.get(), ZU_TRUE, nullptr );
    std::string result = chars;
    zuMemFree( chars );
    return result;
}

// Generations, and what the tree should be.
struct TREE {
    struct NODE {
        GENERATION generation;
        int parent; // -1: a root
        std::vector<int> path;
        int children = 0;
    };
    std::vector<NODE> nodes;
    ZU_INT firstRoot = zu___GenerationGenerationNumber;
    int roots = 0;

    void grow( int parent )
    {
        NODE node;
        node.parent = parent;
        if ( parent < 0 ) {
            node.generation = zu::adopt( zuGenerationCreate() );
            node.path = { (int)firstRoot + roots++ };
        } else {
            NODE &its = nodes[ (size_t)parent ];
            node.generation = zu::adopt( zuGenerationCreateWithParent( its.generation.get() ) );
            node.path = its.path;
            node.path.push_back( its.children++ );
        }
        nodes.push_back( node );
    }
    bool isAncestor( int ancestor, int node ) const
    {
        do {
            node = nodes[ (size_t)node ].parent;
        } while ( node >= 0 && node != ancestor );
        return node >= 0;
    }
    ZU_GENERATION *operator[]( int node ) const
    {
        return nodes[ (size_t)node ].generation.get();
    }
};
static TREE randomTree( std::mt19937 &random, int size )
{
    TREE tree;
    for ( int i = 0; i < size; i++ ) {
        tree.grow( (int)( random() % (unsigned)( i + 3 ) ) - 3 < 0 ? -1 : (int)( random() % (unsigned)i ) );
    }
    return tree;
}

TEST( Generation, KnowsItsRelations )
{
    std::mt19937 random( 1 );
    TREE tree = randomTree( random, 60 );
    for ( int a = 0; a < 60; a++ ) {
        const TREE::NODE &nodeA = tree.nodes[ (size_t)a ];
        std::string text;
        for ( int number : nodeA.path ) {
            text += ( text.empty() ? "" : ":" ) + std::to_string( number );
        }
        EXPECT_EQ( toStd( tree[ a ] ), text );
        EXPECT_EQ( zuGenerationHasParent( tree[ a ] ), nodeA.parent >= 0 );
        EXPECT_EQ( zu::adopt( zuGenerationParent( tree[ a ] ) ).get(),
                   nodeA.parent >= 0 ? tree[ nodeA.parent ] : nullptr );
        for ( int b = 0; b < 60; b++ ) {
            const TREE::NODE &nodeB = tree.nodes[ (size_t)b ];
            SCOPED_TRACE( text + " and " + toStd( tree[ b ] ) );
            EXPECT_EQ( zuGenerationIsParent( tree[ a ], tree[ b ] ), nodeB.parent == a );
            EXPECT_EQ( zuGenerationIsChild( tree[ a ], tree[ b ] ), nodeA.parent == b );
            EXPECT_EQ( zuGenerationIsAncestor( tree[ a ], tree[ b ] ), tree.isAncestor( a, b ) );
            EXPECT_EQ( zuGenerationIsDescendant( tree[ a ], tree[ b ] ), tree.isAncestor( b, a ) );
            EXPECT_EQ( zuGenerationIsOlder( tree[ a ], tree[ b ] ), nodeA.path < nodeB.path );
            EXPECT_EQ( zuGenerationIsYounger( tree[ a ], tree[ b ] ), nodeA.path > nodeB.path );
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
    std::set<std::string> texts;
    for ( const GENERATION &child : children ) {
        texts.insert( toStd( child.get() ) );
    }
    EXPECT_EQ( texts.size(), children.size() );
    EXPECT_EQ( parent.get()->childGenerationNumber, THREADS * EACH );
}

TEST( GenerationMutex, AdmitsOneOfALine )
{
    std::mt19937 random( 2 );
    TREE tree = randomTree( random, 40 );
    std::set<int> admitted;
    zu::Ref<ZU_GENERATION_MUTEX> mutex = zu::adopt( zuGenerationMutexCreate() );
    for ( int step = 0; step < 3000; step++ ) {
        int node = (int)( random() % 40 );
        if ( random() % 3 == 0 ) {
            zuGenerationMutexUnregister( mutex.get(), tree[ node ] );
            admitted.erase( node );
        } else {
            bool free = std::none_of( admitted.begin(), admitted.end(),
                                      [ & ]( int other ) { return other == node || tree.isAncestor( other, node ); } );
            ASSERT_EQ( zuGenerationMutexTryRegister( mutex.get(), tree[ node ] ), free ) << "step " << step;
            if ( free ) {
                admitted.insert( node );
            }
        }
    }
}

TEST( GenerationAborts, BrokenConditions )
{
    GENERATION root = zu::adopt( zuGenerationCreate() );
    zu::Ref<ZU_GENERATION_MUTEX> mutex = zu::adopt( zuGenerationMutexCreate() );
    expectAbort( "parentGeneration", [ & ] { zuGenerationCreateWithParent( nullptr ); } );
    expectAbort( "generation", [ & ] { zuGenerationParent( nullptr ); } );
    expectAbort( "generation", [ & ] { zuGenerationIsDescendant( nullptr, nullptr ); } );
    expectAbort( "otherGeneration", [ & ] { zuGenerationIsOlder( root.get(), nullptr ); } );
    expectAbort( "mutex", [ & ] { zuGenerationMutexTryRegister( nullptr, root.get() ); } );
    expectAbort( "generation", [ & ] { zuGenerationMutexUnregister( mutex.get(), nullptr ); } );
    expectAbort( "ZU_INT_ADD_OK( zu___GenerationGenerationNumber, 1 )", [ & ] {
        zu___GenerationGenerationNumber = ZU_INT_MAX;
        zuGenerationCreate();
    } );
    expectAbort( "ZU_INT_ADD_OK( parentGeneration->childGenerationNumber, 1 )", [ & ] {
        root.get()->childGenerationNumber = ZU_INT_MAX;
        zuGenerationCreateWithParent( root.get() );
    } );
}
