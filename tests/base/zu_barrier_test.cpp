#include "zu_test_support.h"

#include <chrono>
#include <ctime>

static zu::Ref<ZU_BARRIER> createBarrier( bool blocked )
{
    return zu::adopt( zuBarrierCreate( blocked ) );
}

TEST( Barrier, IsALevel )
{
    for ( bool blocked : { false, true } ) {
        zu::Ref<ZU_BARRIER> barrier = createBarrier( blocked );
        EXPECT_EQ( zuBarrierIsBlocked( barrier.get() ), blocked );
        EXPECT_EQ( zuBarrierPassTimed( barrier.get(), 0 ), !blocked );
        for ( int i = 0; i < 4; i++ ) { // each twice: what is open can be opened
            bool open = i / 2;
            ( open ? zuBarrierUnblock : zuBarrierBlock )( barrier.get() );
            EXPECT_EQ( zuBarrierIsBlocked( barrier.get() ), !open );
            EXPECT_EQ( zuBarrierPassTimed( barrier.get(), 0 ), open );
        }
        EXPECT_TRUE( zuBarrierPassTimed( barrier.get(), ZU_INT_MAX ) );
        EXPECT_TRUE( zuBarrierPassTimed( barrier.get(), -1 ) );
        zuBarrierPass( barrier.get() );
    }
}

// Each thread waits at its own gate, closes it and opens the next one's: a waking that goes lost ends in standstill.
TEST( Barrier, LosesNoWaking )
{
    static constexpr int THREADS = 3;
    static constexpr int ROUNDS = 3000;
    zu::Ref<ZU_BARRIER> gates[ THREADS ];
    for ( zu::Ref<ZU_BARRIER> &gate : gates ) {
        gate = createBarrier( true );
    }
    int steps = 0; // plain: what is written ahead of an opening is seen behind it
    zuBarrierUnblock( gates[ 0 ].get() );
    runThreads( THREADS, [ & ]( int self ) {
        for ( int i = 0; i < ROUNDS; i++ ) {
            if ( i % 2 ) {
                zuBarrierPass( gates[ self ].get() );
            } else {
                ASSERT_TRUE( zuBarrierPassTimed( gates[ self ].get(), i % 4 ? ZU_INT_MAX : -1 ) );
            }
            zuBarrierBlock( gates[ self ].get() );
            ASSERT_EQ( steps, i * THREADS + self );
            steps++;
            zuBarrierUnblock( gates[ ( self + 1 ) % THREADS ].get() );
        }
    } );
}

// Waiters gather at the gate of a round, and whoever comes last opens it while others sleep, go to sleep or are not
// there yet.  The closing that slips in sends some back to sleep; the last opening lets all through.
TEST( Barrier, WakesAll )
{
    static constexpr int WAITERS = 4;
    static constexpr int ROUNDS = 500;
    std::vector<zu::Ref<ZU_BARRIER>> gates( ROUNDS );
    for ( zu::Ref<ZU_BARRIER> &gate : gates ) {
        gate = createBarrier( true );
    }
    std::atomic<int> arrived{ 0 };
    runThreads( WAITERS, [ & ]( int ) {
        for ( int i = 0; i < ROUNDS; i++ ) {
            if ( ++arrived == ( i + 1 ) * WAITERS ) {
                zuBarrierUnblock( gates[ i ].get() );
                zuBarrierBlock( gates[ i ].get() );
                zuBarrierUnblock( gates[ i ].get() );
            }
            zuBarrierPass( gates[ i ].get() );
        }
    } );
}

TEST( Barrier, ExpiresNotEarlyAndSleeps )
{
    zu::Ref<ZU_BARRIER> barrier = createBarrier( true );
    auto cpuTime = [] {
        timespec time;
        clock_gettime( CLOCK_THREAD_CPUTIME_ID, &time );
        return time.tv_sec * 1000 + time.tv_nsec / 1000000;
    };
    auto begin = std::chrono::steady_clock::now();
    auto cpuBegin = cpuTime();
    EXPECT_FALSE( zuBarrierPassTimed( barrier.get(), 60 ) );
    EXPECT_LT( cpuTime() - cpuBegin, 30 );
    // The clock that counts is cut to whole milliseconds at both ends.
    EXPECT_GT( std::chrono::steady_clock::now() - begin, std::chrono::milliseconds( 59 ) );
}
