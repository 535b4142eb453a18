// Signals and event queues: from one thread to another, beside a condition variable and GLib's queue.

#include "zu/base/zu_alertable.h"
#include "zu/base/zu_barrier.h"
#include "zu/base/zu_boxed_int.h"
#include "zu/base/zu_event_queue.h"
#include "zu/base/zu_monitor.h"
#include "zu/base/zu_signal.h"
#include "zu/runtime/zu_runtime.h"

#include <atomic>
#include <benchmark/benchmark.h>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>
#ifdef ZU_BENCHMARK_GLIB
#include <glib.h>
#endif

// Something that happens once, in each contestant's way: happen() on one thread, wait() on another.
struct ZU_EVENT {
    ZU_SIGNAL *sig = zuSignalCreate();
    ~ZU_EVENT()
    {
        zuSignalRelease( sig );
    }
    void happen()
    {
        zuSignalAssert( sig );
    }
    void wait()
    {
        zuSignalWait( sig );
    }
};
struct STD_EVENT {
    std::mutex mutex;
    std::condition_variable condition;
    bool happened = false;
    void happen()
    {
        {
            std::lock_guard<std::mutex> lock( mutex );
            happened = true;
        }
        condition.notify_one();
    }
    void wait()
    {
        std::unique_lock<std::mutex> lock( mutex );
        condition.wait( lock, [ this ] { return happened; } );
    }
};

// There and back between two threads that sleep in between.
template <typename Event>
static void wake( benchmark::State &state )
{
    size_t rounds = (size_t)state.max_iterations;
    std::vector<Event> there( rounds );
    std::vector<Event> back( rounds );
    std::thread other( [ & ] {
        for ( size_t i = 0; i < rounds; i++ ) {
            there[ i ].wait();
            back[ i ].happen();
        }
    } );
    size_t i = 0;
    for ( auto _ : state ) {
        there[ i ].happen();
        back[ i ].wait();
        i++;
    }
    other.join();
}
BENCHMARK( wake<ZU_EVENT> )->Name( "Signal/round trip/zu" )->UseRealTime();
BENCHMARK( wake<STD_EVENT> )->Name( "Signal/round trip/std" )->UseRealTime();

// Queues: write() never waits, read() waits for the next event.
struct ZU_QUEUE {
    ZU_EVENT_QUEUE *eq = zuEventQueueCreate();
    ZU_BARRIER *barrier = zuBarrierCreate( ZU_TRUE );
    ZU_ALERTABLE *alb = zuAlertableCreateBarrier( barrier );
    ~ZU_QUEUE()
    {
        zuAlertableRelease( alb );
        zuBarrierRelease( barrier );
        zuEventQueueRelease( eq );
    }
    void write( void *event )
    {
        zuEventQueueWriteEvent( eq, (ZU_OBJ *)event );
    }
    void read()
    {
        ZU_OBJ *event;
        while ( !( event = zuEventQueueReadEvent( eq ) ) ) {
            zuBarrierBlock( barrier );
            zuEventQueueReadEventAddAlertable( eq, alb );
            zuBarrierPass( barrier );
        }
        zuObjRelease( event );
    }
};
#ifdef ZU_BENCHMARK_GLIB
struct GLIB_QUEUE {
    GAsyncQueue *queue = g_async_queue_new();
    ~GLIB_QUEUE()
    {
        g_async_queue_unref( queue );
    }
    void write( void *event )
    {
        g_async_queue_push( queue, event );
    }
    void read()
    {
        benchmark::DoNotOptimize( g_async_queue_pop( queue ) );
    }
};
#endif

// Different events, so that all get in: objects that equal themselves only, or numbers.
static std::vector<ZU_OBJ *> createEvents( size_t count, bool numbers )
{
    std::vector<ZU_OBJ *> events;
    for ( size_t i = 0; i < count; i++ ) {
        events.push_back( numbers ? zuBoxedIntObj( zuBoxedIntCreate( (ZU_INT)i ) )
                                  : zuMonitorObj( zuMonitorCreate() ) );
    }
    return events;
}
static void releaseEvents( std::vector<ZU_OBJ *> &events )
{
    for ( ZU_OBJ *event : events ) {
        zuObjRelease( event );
    }
}

// As fast as one thread writes and another reads.  Time is for each event.
template <typename Queue, bool NUMBERS>
static void queueThroughput( benchmark::State &state )
{
    static constexpr size_t EVENTS = 100000;
    std::vector<ZU_OBJ *> events = createEvents( EVENTS, NUMBERS );
    Queue queue;
    for ( auto _ : state ) {
        std::thread writer( [ & ] {
            for ( ZU_OBJ *event : events ) {
                queue.write( event );
            }
        } );
        for ( size_t i = 0; i < EVENTS; i++ ) {
            queue.read();
        }
        writer.join();
    }
    state.SetItemsProcessed( state.iterations() * (int64_t)EVENTS );
    releaseEvents( events );
}
// The same by one thread: first all in, then all out.
template <typename Queue, bool NUMBERS>
static void queueBacklog( benchmark::State &state )
{
    std::vector<ZU_OBJ *> events = createEvents( (size_t)state.range( 0 ), NUMBERS );
    Queue queue;
    for ( auto _ : state ) {
        for ( ZU_OBJ *event : events ) {
            queue.write( event );
        }
        for ( size_t i = 0; i < events.size(); i++ ) {
            queue.read();
        }
    }
    state.SetItemsProcessed( state.iterations() * state.range( 0 ) );
    releaseEvents( events );
}
// One event there and back between two threads that sleep in between.
template <typename Queue>
static void queueRoundTrip( benchmark::State &state )
{
    size_t rounds = (size_t)state.max_iterations;
    std::vector<ZU_OBJ *> events = createEvents( 1, false );
    Queue there;
    Queue back;
    std::thread other( [ & ] {
        for ( size_t i = 0; i < rounds; i++ ) {
            there.read();
            back.write( events[ 0 ] );
        }
    } );
    for ( auto _ : state ) {
        there.write( events[ 0 ] );
        back.read();
    }
    other.join();
    releaseEvents( events );
}
#define QUEUE_BENCHMARKS( queue, contestant )                                                            \
    BENCHMARK( queueThroughput<queue, false> )->Name( "EventQueue/objects/" contestant )->UseRealTime(); \
    BENCHMARK( queueThroughput<queue, true> )->Name( "EventQueue/numbers/" contestant )->UseRealTime();  \
    BENCHMARK( queueBacklog<queue, false> )                                                              \
        ->Name( "EventQueue/backlog of objects/" contestant )                                            \
        ->Arg( 1 )                                                                                       \
        ->Arg( 10000 );                                                                                  \
    BENCHMARK( queueBacklog<queue, true> )                                                               \
        ->Name( "EventQueue/backlog of numbers/" contestant )                                            \
        ->Arg( 1 )                                                                                       \
        ->Arg( 10000 );                                                                                  \
    BENCHMARK( queueRoundTrip<queue> )->Name( "EventQueue/round trip/" contestant )->UseRealTime()
QUEUE_BENCHMARKS( ZU_QUEUE, "zu" );
#ifdef ZU_BENCHMARK_GLIB
QUEUE_BENCHMARKS( GLIB_QUEUE, "glib" );
#endif

int main( int argc, char **argv )
{
    zuRuntimeStartup( 0, -1, nullptr, "zu-benchmark", "Benchmarks of zu", "1.0" );
    benchmark::Initialize( &argc, argv );
    benchmark::RunSpecifiedBenchmarks();
    zuRuntimeShutdown();
    return 0;
}
