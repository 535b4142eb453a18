#include "zu_test_support.h"

TEST( Counter, ReleasesWaitersAtZero )
{
    zu::Ref<ZU_COUNTER> ctr = zu::adopt( zuCounterCreate() );
    zuCounterWaitZero( ctr.get() );
    EXPECT_TRUE( zuCounterWaitZeroTimed( ctr.get(), 0 ) );
    EXPECT_EQ( zuCounterValue( ctr.get() ), 0 );
    runThreads( 5, [ & ]( int ) { zuCounterIncrement( ctr.get() ); } );
    EXPECT_EQ( zuCounterValue( ctr.get() ), 5 );

    std::atomic<int> released{ 0 };
    std::thread waiters( [ & ] {
        runThreads( 3, [ & ]( int self ) {
            if ( self == 0 ) {
                zuCounterWaitZero( ctr.get() );
            } else {
                EXPECT_TRUE( zuCounterWaitZeroTimed( ctr.get(), self == 1 ? -1 : ZU_INT_MAX ) );
            }
            released++;
        } );
    } );
    runThreads( 4, [ & ]( int ) { zuCounterDecrement( ctr.get() ); } );
    EXPECT_FALSE( zuCounterWaitZeroTimed( ctr.get(), 5 ) );
    EXPECT_EQ( released, 0 );
    zuCounterDecrement( ctr.get() );
    waiters.join();
    EXPECT_EQ( released, 3 );
    expectAbort( "ctr->value > 0", [ & ] { zuCounterDecrement( ctr.get() ); } );
    expectAbort( "millisec == -1 || millisec >= 0", [ & ] { zuCounterWaitZeroTimed( ctr.get(), -2 ); } );
    zuCounterIncrement( ctr.get() ); // a counter may end above 0
}

// Work that begets work: a waiter comes through only when none is left.
TEST( Counter, CountsUnderContention )
{
    static constexpr int THREADS = 4;
    static constexpr int ROUNDS = 2000;
    zu::Ref<ZU_COUNTER> ctr = zu::adopt( zuCounterCreate() );
    int ended[ THREADS ] = {}; // plain: the last decrement shows them to the waiter
    zuCounterIncrement( ctr.get() );
    std::thread workers( [ & ] {
        runThreads( THREADS, [ & ]( int self ) {
            for ( int i = 0; i < ROUNDS; i++ ) {
                zuCounterIncrement( ctr.get() );
                EXPECT_GT( zuCounterValue( ctr.get() ), 1 );
                ended[ self ]++;
                zuCounterDecrement( ctr.get() );
            }
        } );
        zuCounterDecrement( ctr.get() );
    } );
    zuCounterWaitZero( ctr.get() );
    for ( int count : ended ) {
        EXPECT_EQ( count, ROUNDS );
    }
    workers.join();
}
