// Timers: scheduling one and taking that back while others are pending, beside libuv's, which serve one thread and need
// no lock; and how late a timer of a few milliseconds fires.

#include "zu/zu.hpp"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <vector>
#ifdef ZU_BENCHMARK_LIBUV
#include <uv.h>
#endif

static constexpr ZU_INT FAR = 1000000; // milliseconds: nothing fires

static void zuScheduleCancel( benchmark::State &state )
{
    std::vector<zu::Ref<ZU_TIMER>> pending;
    for ( int64_t i = 0; i < state.range( 0 ); i++ ) {
        pending.push_back( zu::adopt( zuTimerCreate( nullptr, nullptr ) ) );
        zuTimerSchedule( pending.back().get(), FAR + i );
    }
    auto timer = zu::adopt( zuTimerCreate( nullptr, nullptr ) );
    for ( auto _ : state ) {
        zuTimerSchedule( timer.get(), FAR / 2 );
        zuTimerUnschedule( timer.get() );
    }
}
#ifdef ZU_BENCHMARK_LIBUV
static void uvScheduleCancel( benchmark::State &state )
{
    uv_loop_t loop;
    uv_loop_init( &loop );
    std::vector<uv_timer_t> timers( (size_t)state.range( 0 ) + 1 );
    auto fire = []( uv_timer_t * ) {};
    for ( size_t i = 0; i < timers.size(); i++ ) {
        uv_timer_init( &loop, &timers[ i ] );
        uv_timer_start( &timers[ i ], fire, (uint64_t)FAR + i, 0 );
    }
    for ( auto _ : state ) {
        uv_timer_start( &timers.back(), fire, FAR / 2, 0 );
        uv_timer_stop( &timers.back() );
    }
    for ( uv_timer_t &timer : timers ) {
        uv_close( (uv_handle_t *)&timer, nullptr );
    }
    uv_run( &loop, UV_RUN_DEFAULT );
    uv_loop_close( &loop );
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
    benchmark::RegisterBenchmark( "ScheduleCancel/10/zu", zuScheduleCancel )->Arg( 10 )->UseRealTime();
    benchmark::RegisterBenchmark( "ScheduleCancel/1000/zu", zuScheduleCancel )->Arg( 1000 )->UseRealTime();
#ifdef ZU_BENCHMARK_LIBUV
    benchmark::RegisterBenchmark( "ScheduleCancel/10/uv", uvScheduleCancel )->Arg( 10 )->UseRealTime();
    benchmark::RegisterBenchmark( "ScheduleCancel/1000/uv", uvScheduleCancel )->Arg( 1000 )->UseRealTime();
#endif
    benchmark::RegisterBenchmark( "Lateness/zu", zuLateness )->UseRealTime();
    benchmark::Initialize( &argc, argv );
    benchmark::RunSpecifiedBenchmarks();
    zuRuntimeShutdown();
    return 0;
}
