#include "zu/base/zu_event_queue_wait.h"

#include "zu/base/zu_thread_call.h"
#include "zu_test_support.h"

// Several threads write, several read; every event arrives once.
TEST( EventQueueWait, EachEventGoesToOneReader )
{
    constexpr ZU_INT EVENTS = 3000, SIDE = 3;
    struct SHARED {
        zu::Ref<ZU_EVENT_QUEUE> eq = zu::adopt( zuEventQueueCreate() );
        std::atomic<ZU_INT> next{ 0 }, sum{ 0 };
    } shared;
    auto write = []( void *argument ) {
        SHARED *all = (SHARED *)argument;
        for ( ZU_INT i; ( i = all->next++ ) < EVENTS; ) {
            zuEventQueueWriteEvent( all->eq.get(), zu::upcast( zu::adopt( zuBoxedIntCreate( i + 1 ) ).get() ) );
        }
    };
    auto read = []( void *argument ) {
        SHARED *all = (SHARED *)argument;
        for ( ;; ) {
            auto event = zu::adopt( zuBoxedIntFrom( zuEventQueueReadEventTimed( all->eq.get(), -1 ) ) );
            ZU_INT value = zuBoxedIntValue( event.get() );
            if ( value <= 0 ) {
                return;
            }
            all->sum += value;
        }
    };
    std::vector<zu::Ref<ZU_THREAD>> writers, readers;
    for ( ZU_INT i = 0; i < SIDE; i++ ) {
        readers.push_back(
            zu::adopt( zuThreadTrySpawnCallCstr( "reader", -1, read, &shared, ZU_THREAD_PRIORITY_NORMAL ) ) );
        writers.push_back(
            zu::adopt( zuThreadTrySpawnCallCstr( "writer", -1, write, &shared, ZU_THREAD_PRIORITY_NORMAL ) ) );
    }
    for ( const auto &writer : writers ) {
        zuThreadJoin( writer.get() );
    }
    for ( ZU_INT i = 0; i < SIDE; i++ ) { // equal events would be one
        zuEventQueueWriteEvent( shared.eq.get(), zu::upcast( zu::adopt( zuBoxedIntCreate( -i ) ).get() ) );
    }
    for ( const auto &reader : readers ) {
        zuThreadJoin( reader.get() );
    }
    EXPECT_EQ( shared.sum, EVENTS * ( EVENTS + 1 ) / 2 );
    EXPECT_EQ( zuEventQueueReadEventTimed( shared.eq.get(), 0 ), nullptr );
    EXPECT_EQ( zuEventQueueReadEventTimed( shared.eq.get(), 1 ), nullptr );
    expectAbort( "millisec >= -1", [ & ] { zuEventQueueReadEventTimed( shared.eq.get(), -2 ); } );
}
