#include "zu/sys/zu_unique.h"

#include "zu_test_support.h"

#include <memory>

// An allocator that has only begun: from then on its numbers can be foretold.
static void expectForetoldNumbers()
{
    SeededRandom random;
    std::vector<ZU_INT> out;
    std::vector<ZU_INT> given; // back, the last one at the end
    ZU_INT next = zu___UniqueGet();
    zu___UniquePut( next );
    // Enough to enlarge the list several times
    for ( int step = 0; step < 60000; step++ ) {
        if ( !out.empty() && random() % 3 == 0 ) {
            std::swap( out[ random() % out.size() ], out.back() );
            zu___UniquePut( out.back() );
            given.push_back( out.back() );
            out.pop_back();
            continue;
        }
        ZU_INT uni = zu___UniqueGet();
        if ( given.empty() ) {
            ASSERT_EQ( uni, next );
            next++;
        } else {
            ASSERT_EQ( uni, given.back() );
            given.pop_back();
        }
        out.push_back( uni );
    }
    EXPECT_GT( out.size(), 3 * 4096u );
    for ( ZU_INT uni : out ) {
        zu___UniquePut( uni );
    }
}
TEST( Unique, NumbersRiseAndComeBackLastInFirstOut )
{
    runRestarted( 0, expectForetoldNumbers );
}

TEST( Unique, NoNumberIsOutTwice )
{
    static constexpr ZU_INT MOST = 100000;
    auto owners = std::make_unique<std::atomic<int>[]>( MOST );
    std::atomic<int> clashes{ 0 };
    runThreads( 3, [ & ]( int thread ) {
        std::mt19937 random( (unsigned)thread );
        std::vector<ZU_INT> out;
        for ( int step = 0; step < 20000; step++ ) {
            if ( out.empty() || random() % 2 ) {
                out.push_back( zu___UniqueGet() );
                clashes += owners[ (size_t)out.back() ].exchange( 1 );
            } else {
                owners[ (size_t)out.back() ] = 0;
                zu___UniquePut( out.back() );
                out.pop_back();
            }
        }
        for ( ZU_INT uni : out ) {
            owners[ (size_t)uni ] = 0;
            zu___UniquePut( uni );
        }
    } );
    EXPECT_EQ( clashes, 0 );
}

TEST( UniqueAborts, NumbersThatAreNotOut )
{
    expectAbort( "uniUsed > 0", [] { zu___UniquePut( 0 ); } );
    ZU_INT uni = zu___UniqueGet();
    ZU_INT other = zu___UniqueGet();
    zu___UniquePut( other );
    expectAbort( "uni >= 0", [] { zu___UniquePut( ZU___UNIQUE_INVALID ); } );
    expectAbort( "uni < uniListSize", [] { zu___UniquePut( ZU___UNIQUE_MAX ); } );
    expectAbort( "uniList[uni] == IN_USE", [ & ] { zu___UniquePut( other ); } );
    zu___UniquePut( uni );
}
