#include "zu/zu.hpp"

#include "zu_test_support.h"

#include <atomic>
#include <fstream>
#include <random>
#include <thread>
#include <unistd.h>

TEST( Region, KeepsWritersApart )
{
    static constexpr int THREADS = 4;
    static constexpr int ROUNDS = 20000;
    zu::Ref<ZU_REGION> region = zu::adopt( zuRegionCreate() );
    int pair[ 2 ] = { 0, 0 }; // plain; writers keep both alike
    std::atomic<int> writes{ 0 };
    runThreads( THREADS, [ & ]( int self ) {
        std::minstd_rand random( (unsigned)self + 1 );
        for ( int i = 0; i < ROUNDS; i++ ) {
            bool exclusive = random() % 8 == 0;
            zuRegionEnter( region.get(), exclusive );
            ASSERT_EQ( pair[ 0 ], pair[ 1 ] );
            if ( exclusive ) {
                pair[ 0 ]++;
                writes++;
                pair[ 1 ]++;
            }
            zuRegionLeave( region.get() );
        }
    } );
    EXPECT_EQ( pair[ 0 ], writes );
}

TEST( Region, LetsReadersShare )
{
    zu::Ref<ZU_REGION> region = zu::adopt( zuRegionCreate() );
    for ( int i = 0; i < 3; i++ ) {
        zuRegionEnterExclusive( region.get() );
        zuRegionLeave( region.get() ); // the next ones leave by the shared way again
        zuRegionEnterShared( region.get() );
        std::thread( [ & ] {
            zuRegionEnterShared( region.get() );
            zuRegionLeave( region.get() );
        } ).join();
        zuRegionLeave( region.get() );
    }
}

// Two threads of one kind take turns without a gap until one of the other kind has been inside so many times.
static void expectNoStarving( bool exclusiveCrowd )
{
    zu::Ref<ZU_REGION> region = zu::adopt( zuRegionCreate() );
    std::atomic<int> rounds{ 50 };
    std::atomic<int> crowd{ 0 }; // inside
    runThreads( 3, [ & ]( int self ) {
        while ( rounds > 0 ) {
            if ( self > 0 ) {
                zuRegionEnter( region.get(), exclusiveCrowd );
                crowd++;
                std::this_thread::yield(); // lets the other one come before this one leaves
                crowd--;
                zuRegionLeave( region.get() );
            } else if ( crowd > 0 ) {
                zuRegionEnter( region.get(), !exclusiveCrowd );
                rounds--;
                zuRegionLeave( region.get() );
            }
        }
    } );
}
TEST( Region, StarvesNobody )
{
    expectNoStarving( false );
    expectNoStarving( true );
}

static bool isAsleep( pid_t thread )
{
    std::ifstream stat( "/proc/self/task/" + std::to_string( thread ) + "/stat" );
    std::string number, name, state;
    stat >> number >> name >> state;
    return state == "S";
}
// One thread leaves and enters again at once, with the other asleep in front of the lock each time: that one loses
// nearly always, and yet comes in after a few turns.
static void expectFewLosses( const std::function<void()> &enter, const std::function<void()> &leave )
{
    static constexpr int ROUNDS = 300;
    static constexpr int TURNS_MAX = 10;
    std::atomic<pid_t> loser{ 0 };
    std::atomic<int> entries{ 0 };
    std::atomic<int> returns{ 0 };
    enter();
    std::thread other( [ & ] {
        loser = gettid();
        while ( entries < ROUNDS ) {
            enter();
            entries++;
            int seen = returns;
            leave();
            while ( returns == seen ) {
                std::this_thread::yield(); // one entry a time
            }
        }
    } );
    int mostTurns = 0;
    int turns = 0;
    for ( int seen = 0; seen < ROUNDS; turns++ ) {
        while ( entries < ROUNDS && ( loser == 0 || !isAsleep( loser ) ) ) {
            std::this_thread::yield();
        }
        leave();
        enter();
        returns++;
        if ( entries != seen ) {
            mostTurns = std::max( mostTurns, turns );
            turns = 0;
            seen = entries;
        }
    }
    leave();
    other.join();
    EXPECT_LE( mostTurns, TURNS_MAX );
}
TEST( Region, LetsInWhoHasLostAFewTimes )
{
    zu::Ref<ZU_REGION> region = zu::adopt( zuRegionCreate() );
    expectFewLosses( [ & ] { zuRegionEnterExclusive( region.get() ); }, [ & ] { zuRegionLeave( region.get() ); } );
    zu::Ref<ZU_MONITOR> monitor = zu::adopt( zuMonitorCreate() );
    expectFewLosses( [ & ] { zuMonitorEnter( monitor.get() ); }, [ & ] { zuMonitorLeave( monitor.get() ); } );
}
