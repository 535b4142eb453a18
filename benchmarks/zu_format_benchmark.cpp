// Formatting: the format language beside g_strdup_printf and absl::StrFormat with the like format, and integers alone
// beside std::to_string and std::from_chars.

#include "zu/base/zu_format.h"
#include "zu/base/zu_string_format.h"
#include "zu/runtime/zu_runtime.h"

#include <benchmark/benchmark.h>
#include <charconv>
#include <cstring>
#include <string>
#ifdef ZU_BENCHMARK_GLIB
#include <glib.h>
#endif
#ifdef ZU_BENCHMARK_ABSL
#include <absl/strings/str_format.h>
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

// Integers of all lengths, to a text that goes again, and from one that is there
static void zuIntToText( benchmark::State &state )
{
    ARGUMENTS args;
    for ( auto _ : state ) {
        args.next();
        ZU_STRING *text = zuFormatEncodeInt( args.number( 0 ), 10, 0, 0 );
        benchmark::DoNotOptimize( text );
        zuStringRelease( text );
    }
}
BENCHMARK( zuIntToText )->Name( "Integer/to text/zu" );
static void stdIntToText( benchmark::State &state )
{
    ARGUMENTS args;
    for ( auto _ : state ) {
        args.next();
        std::string text = std::to_string( args.number( 0 ) );
        benchmark::DoNotOptimize( text );
    }
}
BENCHMARK( stdIntToText )->Name( "Integer/to text/std" );
static const char *const INTEGERS[] = { "7", "-1234567890123", "80", "65536", "-42", "1000000007", "365", "86400000" };
static void zuIntFromText( benchmark::State &state )
{
    ZU_STRING *texts[ 8 ];
    for ( int i = 0; i < 8; i++ ) {
        texts[ i ] = zuStringCreateFromAscii( INTEGERS[ i ], -1 );
    }
    unsigned round = 0;
    for ( auto _ : state ) {
        ZU_STRING *text = texts[ round++ % 8 ];
        ZU_INT value;
        benchmark::DoNotOptimize( zuFormatTryDecodeInt( text, 0, zuStringLength( text ), 10, &value, nullptr ) );
        benchmark::DoNotOptimize( value );
    }
    for ( ZU_STRING *text : texts ) {
        zuStringRelease( text );
    }
}
BENCHMARK( zuIntFromText )->Name( "Integer/from text/zu" );
static void stdIntFromText( benchmark::State &state )
{
    std::string texts[ 8 ];
    for ( int i = 0; i < 8; i++ ) {
        texts[ i ] = INTEGERS[ i ];
    }
    unsigned round = 0;
    for ( auto _ : state ) {
        const std::string &text = texts[ round++ % 8 ];
        int64_t value;
        benchmark::DoNotOptimize( std::from_chars( text.data(), text.data() + text.size(), value ) );
        benchmark::DoNotOptimize( value );
    }
}
BENCHMARK( stdIntFromText )->Name( "Integer/from text/std" );

#ifdef ZU_BENCHMARK_ABSL
static void abslMixed( benchmark::State &state )
{
    ARGUMENTS args;
    for ( auto _ : state ) {
        args.next();
        std::string text = absl::StrFormat( "%s: %d %08X %f", NAME, args.number( 0 ), args.number( 1 ), args.real() );
        benchmark::DoNotOptimize( text );
    }
}
BENCHMARK( abslMixed )->Name( "Format/mixed/absl" );
static void abslInts( benchmark::State &state )
{
    ARGUMENTS args;
    for ( auto _ : state ) {
        args.next();
        std::string text = absl::StrFormat( "%d %6d %d", args.number( 0 ), args.number( 1 ), args.number( 2 ) );
        benchmark::DoNotOptimize( text );
    }
}
BENCHMARK( abslInts )->Name( "Format/integers/absl" );
#endif

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
