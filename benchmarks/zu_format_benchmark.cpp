// Formatting: the format language and, where GLib is at hand, g_strdup_printf with the like format.

#include "zu/base/zu_format.h"
#include "zu/base/zu_string_format.h"
#include "zu/runtime/zu_runtime.h"

#include <benchmark/benchmark.h>
#ifdef ZU_BENCHMARK_GLIB
#include <glib.h>
#endif

// Arguments that change from round to round, so that neither side learns its branches by heart.
struct ARGUMENTS {
    ZU_INT numbers[ 256 ];
    double reals[ 256 ];
    size_t round = 0;

    ARGUMENTS()
    {
        uint64_t state = 1;
        for ( size_t i = 0; i < 256; i++ ) {
            state = state * 6364136223846793005u + 1442695040888963407u;
            numbers[ i ] = (ZU_INT)( state >> ( 4 + i % 60 ) );
            reals[ i ] = (double)( state >> 40 ) / 1024.0;
        }
    }
    void next()
    {
        round = ( round + 1 ) % 255;
    }
    ZU_INT number( size_t which ) const
    {
        return numbers[ ( round + which ) % 256 ];
    }
    double real() const
    {
        return reals[ round ];
    }
};
static const char *const NAME = "connection to the server";

static void zuMixed( benchmark::State &state )
{
    ARGUMENTS args;
    ZU_STRING *name = zuStringCreateFromAscii( NAME, -1 );
    for ( auto _ : state ) {
        args.next();
        ZU_STRING *text =
            zuStringCreateFromFormatCstr( "%s: %i %08X %r", -1, name, args.number( 0 ), args.number( 1 ), args.real() );
        benchmark::DoNotOptimize( text );
        zuStringRelease( text );
    }
    zuStringRelease( name );
}
BENCHMARK( zuMixed )->Name( "Format/mixed/zu" );
static void zuMixedByString( benchmark::State &state )
{
    ARGUMENTS args;
    ZU_STRING *fmt = zuStringCreateFromAscii( "%s: %i %08X %r", -1 );
    ZU_STRING *name = zuStringCreateFromAscii( NAME, -1 );
    for ( auto _ : state ) {
        args.next();
        ZU_STRING *text = zuStringCreateFromFormat( fmt, name, args.number( 0 ), args.number( 1 ), args.real() );
        benchmark::DoNotOptimize( text );
        zuStringRelease( text );
    }
    zuStringRelease( name );
    zuStringRelease( fmt );
}
BENCHMARK( zuMixedByString )->Name( "Format/mixed, by a string/zu" );
static void zuInts( benchmark::State &state )
{
    ARGUMENTS args;
    for ( auto _ : state ) {
        args.next();
        ZU_STRING *text =
            zuStringCreateFromFormatCstr( "%i %6i %i", -1, args.number( 0 ), args.number( 1 ), args.number( 2 ) );
        benchmark::DoNotOptimize( text );
        zuStringRelease( text );
    }
}
BENCHMARK( zuInts )->Name( "Format/integers/zu" );
static void zuTexts( benchmark::State &state )
{
    ZU_STRING *name = zuStringCreateFromAscii( NAME, -1 );
    for ( auto _ : state ) {
        ZU_STRING *text = zuStringCreateFromFormatCstr( "%s, %30s", -1, name, name );
        benchmark::DoNotOptimize( text );
        zuStringRelease( text );
    }
    zuStringRelease( name );
}
BENCHMARK( zuTexts )->Name( "Format/texts/zu" );
static void zuDecodeInt( benchmark::State &state )
{
    ZU_STRING *src = zuStringCreateFromAscii( "  -1234567890123 ", -1 );
    for ( auto _ : state ) {
        ZU_INT value;
        benchmark::DoNotOptimize( zuFormatTryDecodeInt( src, 0, zuStringLength( src ), 10, &value, nullptr ) );
        benchmark::DoNotOptimize( value );
    }
    zuStringRelease( src );
}
BENCHMARK( zuDecodeInt )->Name( "Format/read an integer/zu" );

#ifdef ZU_BENCHMARK_GLIB
static void glibMixed( benchmark::State &state )
{
    ARGUMENTS args;
    for ( auto _ : state ) {
        args.next();
        char *text = g_strdup_printf( "%s: %ld %08lx %f", NAME, args.number( 0 ), args.number( 1 ), args.real() );
        benchmark::DoNotOptimize( text );
        g_free( text );
    }
}
BENCHMARK( glibMixed )->Name( "Format/mixed/glib" );
static void glibInts( benchmark::State &state )
{
    ARGUMENTS args;
    for ( auto _ : state ) {
        args.next();
        char *text = g_strdup_printf( "%ld %6ld %ld", args.number( 0 ), args.number( 1 ), args.number( 2 ) );
        benchmark::DoNotOptimize( text );
        g_free( text );
    }
}
BENCHMARK( glibInts )->Name( "Format/integers/glib" );
static void glibTexts( benchmark::State &state )
{
    for ( auto _ : state ) {
        char *text = g_strdup_printf( "%s, %30s", NAME, NAME );
        benchmark::DoNotOptimize( text );
        g_free( text );
    }
}
BENCHMARK( glibTexts )->Name( "Format/texts/glib" );
static void glibDecodeInt( benchmark::State &state )
{
    for ( auto _ : state ) {
        gint64 value = g_ascii_strtoll( "  -1234567890123 ", nullptr, 10 );
        benchmark::DoNotOptimize( value );
    }
}
BENCHMARK( glibDecodeInt )->Name( "Format/read an integer/glib" );
#endif

int main( int argc, char **argv )
{
    zuRuntimeStartup( 0, -1, nullptr, "zu-benchmark", "Benchmarks of zu", "1.0" );
    benchmark::Initialize( &argc, argv );
    benchmark::RunSpecifiedBenchmarks();
    zuRuntimeShutdown();
    return 0;
}
