#include "zu/base/zu_event_queue_wait.h"

#include "zu_test_string.h"

// Several threads write, several read; every event arrives once.
TEST( EventQueueWait, EachEventGoesToOneReader )
{
    constexpr ZU_INT EVENTS = 3000, SIDE = 3;
    zu::Ref<ZU_EVENT_QUEUE> eq = zu::adopt( zuEventQueueCreate() );
    std::atomic<ZU_INT> next{ 1 }, sum{ 0 }, writers{ SIDE };
    runThreads( 2 * SIDE, [ & ]( int self ) {
        if ( self < SIDE ) {
            for ( ZU_INT i; ( i = next++ ) <= EVENTS; ) {
                zuEventQueueWriteEvent( eq.get(), boxed( i ).get() );
            }
            bool last = --writers == 0;
            for ( ZU_INT i = 0; last && i < SIDE; i++ ) { // the ends, of which equal ones would be one
                zuEventQueueWriteEvent( eq.get(), boxed( -i ).get() );
            }
            return;
        }
        for ( ZU_INT value = 1; value > 0; sum += std::max<ZU_INT>( value, 0 ) ) {
            value = zuBoxedIntValue( zu::adopt( zuBoxedIntFrom( zuEventQueueReadEventTimed( eq.get(), -1 ) ) ).get() );
        }
    } );
    EXPECT_EQ( sum, EVENTS * ( EVENTS + 1 ) / 2 );
    EXPECT_EQ( zuEventQueueReadEventTimed( eq.get(), 0 ), nullptr );
    EXPECT_EQ( zuEventQueueReadEventTimed( eq.get(), 1 ), nullptr );
    expectAbort( "millisec >= -1", [ & ] { zuEventQueueReadEventTimed( eq.get(), -2 ); } );
}
