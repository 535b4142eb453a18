// Timers: scheduling one and taking that back while others are pending, and scheduling each of many anew for any other
// time, beside libuv's, which serve one thread and need no lock; firing many that are due at once; and how late a timer
// of a few milliseconds fires.

#include "zu/zu.hpp"

#include <algorithm>
#include <atomic>
#include <benchmark/benchmark.h>
#include <chrono>
#include <random>
#include <string>
#include <thread>
#include <vector>
#ifdef ZU_BENCHMARK_LIBUV
#include <uv.h>
#endif

static constexpr ZU_INT FAR = 1000000; // milliseconds: nothing fires

static std::vector<zu::Ref<ZU_TIMER>> zuPending( int64_t count )
{
    std::vector<zu::Ref<ZU_TIMER>> pending;
    for ( int64_t i = 0; i < count; i++ ) {
        pending.push_back( zu::adopt( zuTimerCreate( nullptr, nullptr ) ) );
        zuTimerSchedule( pending.back().get(), FAR + i );
    }
    return pending;
}
static void zuReschedule( benchmark::State &state )
{
    auto pending = zuPending( state.range( 0 ) );
    std::minstd_rand random;
    for ( auto _ : state ) {
        zuTimerSchedule( pending[ random() % pending.size() ].get(), FAR + (ZU_INT)( random() % FAR ) );
    }
}
static void zuScheduleCancel( benchmark::State &state )
{
    auto pending = zuPending( state.range( 0 ) );
    auto timer = zu::adopt( zuTimerCreate( nullptr, nullptr ) );
    for ( auto _ : state ) {
        zuTimerSchedule( timer.get(), FAR / 2 );
        zuTimerUnschedule( timer.get() );
    }
}
// From the first to the last of all that are due at one time; nobody else runs in between.
static std::atomic<int64_t> fired;
static std::chrono::steady_clock::time_point firstFired;
static std::chrono::steady_clock::time_point lastFired;
static void noteFired()
{
    lastFired = std::chrono::steady_clock::now();
    if ( fired.load( std::memory_order_relaxed ) == 0 ) {
        firstFired = lastFired;
    }
}
static void zuFire( benchmark::State &state )
{
    const int64_t count = state.range( 0 );
    std::vector<zu::Ref<ZU_TIMER>> timers;
    for ( int64_t i = 0; i < count; i++ ) {
        timers.push_back( zu::adopt( zuTimerCreate(
            []( ZU_OBJ * ) {
                noteFired();
                fired.fetch_add( 1, std::memory_order_release );
            },
            nullptr ) ) );
    }
    for ( auto _ : state ) {
        fired = 0;
        const ZU_INT due = zuTimestamp() + 20 + count / 500;
        for ( const auto &timer : timers ) {
            zuTimerScheduleAt( timer.get(), due );
        }
        while ( fired.load( std::memory_order_acquire ) < count ) {
            std::this_thread::sleep_for( std::chrono::milliseconds( 1 ) );
        }
        state.SetIterationTime( std::chrono::duration<double>( lastFired - firstFired ).count() );
    }
    state.SetItemsProcessed( state.iterations() * count );
}
#ifdef ZU_BENCHMARK_LIBUV
struct UV {
    uv_loop_t loop;
    std::vector<uv_timer_t> timers;

    explicit UV( int64_t count ) : timers( (size_t)count )
    {
        uv_loop_init( &loop );
        for ( size_t i = 0; i < timers.size(); i++ ) {
            uv_timer_init( &loop, &timers[ i ] );
            schedule( &timers[ i ], FAR + (ZU_INT)i );
        }
    }
    ~UV()
    {
        for ( uv_timer_t &timer : timers ) {
            uv_close( (uv_handle_t *)&timer, nullptr );
        }
        uv_run( &loop, UV_RUN_DEFAULT );
        uv_loop_close( &loop );
    }
    static void schedule( uv_timer_t *timer, ZU_INT milliseconds )
    {
        uv_timer_start(
            timer, []( uv_timer_t * ) {}, (uint64_t)milliseconds, 0 );
    }
};
static void uvReschedule( benchmark::State &state )
{
    UV uv( state.range( 0 ) );
    std::minstd_rand random;
    for ( auto _ : state ) {
        UV::schedule( &uv.timers[ random() % uv.timers.size() ], FAR + (ZU_INT)( random() % FAR ) );
    }
}
static void uvScheduleCancel( benchmark::State &state )
{
    UV uv( state.range( 0 ) + 1 );
    for ( auto _ : state ) {
        UV::schedule( &uv.timers.back(), FAR / 2 );
        uv_timer_stop( &uv.timers.back() );
    }
}
static void uvFire( benchmark::State &state )
{
    UV uv( state.range( 0 ) );
    for ( auto _ : state ) {
        fired = 0;
        for ( uv_timer_t &timer : uv.timers ) {
            uv_timer_start(
                &timer,
                []( uv_timer_t * ) {
                    noteFired();
                    fired.fetch_add( 1, std::memory_order_release );
                },
                20, 0 );
        }
        uv_run( &uv.loop, UV_RUN_DEFAULT );
        state.SetIterationTime( std::chrono::duration<double>( lastFired - firstFired ).count() );
    }
    state.SetItemsProcessed( state.iterations() * state.range( 0 ) );
}
#endif

// The time from the moment that was asked for to the call, in microseconds: the counters `median` and `p90`.
static std::chrono::steady_clock::time_point firedAt;
static void zuLateness( benchmark::State &state )
{
    std::vector<double> late;
    for ( auto _ : state ) {
        auto done = zu::adopt( zuSignalCreate() );
        auto timer = zu::adopt( zuTimerCreate(
            []( ZU_OBJ *signal ) {
                firedAt = std::chrono::steady_clock::now();
                zuSignalAssert( (ZU_SIGNAL *)signal );
            },
            zuSignalObj( done.get() ) ) );
        auto due = std::chrono::steady_clock::now() + std::chrono::milliseconds( 3 );
        zuTimerSchedule( timer.get(), 3 );
        zuSignalWait( done.get() );
        late.push_back( std::chrono::duration<double, std::micro>( firedAt - due ).count() );
    }
    std::sort( late.begin(), late.end() );
    state.counters[ "median" ] = late[ late.size() / 2 ];
    state.counters[ "p90" ] = late[ late.size() * 9 / 10 ];
}

int main( int argc, char **argv )
{
    zuRuntimeStartup( 0, -1, nullptr, nullptr, nullptr, nullptr );
    for ( int64_t count : { 10, 1000, 100000 } ) {
        std::string of = "/" + std::to_string( count );
        benchmark::RegisterBenchmark( ( "ScheduleCancel" + of + "/zu" ).c_str(), zuScheduleCancel )
            ->Arg( count )
            ->UseRealTime();
        benchmark::RegisterBenchmark( ( "Reschedule" + of + "/zu" ).c_str(), zuReschedule )
            ->Arg( count )
            ->UseRealTime();
        benchmark::RegisterBenchmark( ( "Fire" + of + "/zu" ).c_str(), zuFire )
            ->Arg( count )
            ->UseManualTime()
            ->Iterations( 5 );
#ifdef ZU_BENCHMARK_LIBUV
        benchmark::RegisterBenchmark( ( "Fire" + of + "/uv" ).c_str(), uvFire )
            ->Arg( count )
            ->UseManualTime()
            ->Iterations( 5 );
        benchmark::RegisterBenchmark( ( "ScheduleCancel" + of + "/uv" ).c_str(), uvScheduleCancel )
            ->Arg( count )
            ->UseRealTime();
        benchmark::RegisterBenchmark( ( "Reschedule" + of + "/uv" ).c_str(), uvReschedule )
            ->Arg( count )
            ->UseRealTime();
#endif
    }
    benchmark::RegisterBenchmark( "Lateness/zu", zuLateness )->UseRealTime();
    benchmark::Initialize( &argc, argv );
    benchmark::RunSpecifiedBenchmarks();
    zuRuntimeShutdown();
    return 0;
}
