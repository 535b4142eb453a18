// The calendar: days added to a date, beside std::chrono, and times to and from text, beside the C library.  The
// objects of zu are made and released each time.

#include "zu/base/zu_time.h"
#include "zu/runtime/zu_runtime.h"

#include <benchmark/benchmark.h>
#include <chrono>
#include <ctime>

static const bool started = [] {
    zuRuntimeStartup( 0, -1, nullptr, "zu-benchmark", "Benchmarks of zu", "1.0" );
    return true;
}();

// So many days that months, and in the second case years, are crossed
static void shiftZu( benchmark::State &state )
{
    ZU_TIME *begin = zuTimeTryCreateFromSystemTime( 2024, 2, 27, 9, 5, 7 );
    ZU_INT round = 0;
    for ( auto _ : state ) {
        ZU_TIME *tm = zuTimeRetain( begin );
        zuTimeShiftDays( &tm, state.range( 0 ) + ( round++ & 15 ) );
        benchmark::DoNotOptimize( tm );
        zuTimeRelease( tm );
    }
    zuTimeRelease( begin );
}
static void shiftStd( benchmark::State &state )
{
    using namespace std::chrono;
    year_month_day begin{ year{ 2024 }, month{ 2 }, day{ 27 } };
    int64_t round = 0;
    for ( auto _ : state ) {
        benchmark::DoNotOptimize( begin );
        year_month_day date{ sys_days{ begin } + days{ state.range( 0 ) + ( round++ & 15 ) } };
        benchmark::DoNotOptimize( date );
    }
}
BENCHMARK( shiftZu )->Name( "Time/shift days/zu" )->Arg( 1 )->Arg( 90 )->Arg( 1000 );
BENCHMARK( shiftStd )->Name( "Time/shift days/std" )->Arg( 1 )->Arg( 90 )->Arg( 1000 );

static void toTextZu( benchmark::State &state )
{
    ZU_TIME *tm = zuTimeTryCreateFromSystemTime( 2024, 3, 1, 9, 5, 7 );
    for ( auto _ : state ) {
        ZU_STRING *text = zuTimeToString( tm );
        benchmark::DoNotOptimize( text );
        zuStringRelease( text );
    }
    zuTimeRelease( tm );
}
static struct tm cTime()
{
    struct tm tm = {};
    tm.tm_year = 124;
    tm.tm_mon = 2;
    tm.tm_mday = 1;
    tm.tm_hour = 9;
    tm.tm_min = 5;
    tm.tm_sec = 7;
    tm.tm_wday = 5;
    return tm;
}
static void toTextLibc( benchmark::State &state )
{
    struct tm tm = cTime();
    for ( auto _ : state ) {
        char text[ 64 ];
        benchmark::DoNotOptimize( strftime( text, sizeof text, "UTC %Y-%m-%d %H:%M:%S (%A)", &tm ) );
        benchmark::DoNotOptimize( text );
    }
}
BENCHMARK( toTextZu )->Name( "Time/to text/zu" );
BENCHMARK( toTextLibc )->Name( "Time/to text/libc" );

static void fromTextZu( benchmark::State &state )
{
    ZU_STRING *text = zuStringCreateFromAscii( "UTC 2024-03-01 09:05:07 (Friday)", -1 );
    for ( auto _ : state ) {
        ZU_TIME *tm = zuTimeTryCreateFromString( text );
        benchmark::DoNotOptimize( tm );
        zuTimeRelease( tm );
    }
    zuStringRelease( text );
}
static void fromTextLibc( benchmark::State &state )
{
    for ( auto _ : state ) {
        struct tm tm;
        benchmark::DoNotOptimize( strptime( "UTC 2024-03-01 09:05:07 (Friday)", "UTC %Y-%m-%d %H:%M:%S (%A)", &tm ) );
        benchmark::DoNotOptimize( tm );
    }
}
BENCHMARK( fromTextZu )->Name( "Time/from text/zu" );
BENCHMARK( fromTextLibc )->Name( "Time/from text/libc" );
