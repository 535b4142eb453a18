#include "zu_test_support.h"

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
