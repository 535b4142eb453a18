// Draws of eight bytes: out of the pool, and by a call of the system for each, which is what libc's arc4random does.

#include "zu/base/zu_identifier.h"
#include "zu/base/zu_random.h"
#include "zu/runtime/zu_runtime.h"

#include <benchmark/benchmark.h>
#include <sys/random.h>
#ifdef ZU_BENCHMARK_GLIB
#include <glib.h>
#endif
#ifdef ZU_BENCHMARK_QT
#include <QRandomGenerator>
#include <QUuid>
#endif

template <typename DRAW>
static void measure( const char *name, DRAW draw )
{
    benchmark::RegisterBenchmark( name, [ draw ]( benchmark::State &state ) {
        for ( auto _ : state ) {
            benchmark::DoNotOptimize( draw() );
        }
    } );
}

int main( int argc, char **argv )
{
    zuRuntimeStartup( 0, -1, nullptr, "zu-benchmark", "Benchmarks of zu", "1.0" );
    measure( "Random/8 bytes/zu", [] { return zuRandomInt(); } );
    measure( "Random/8 bytes/libc", [] {
        uint64_t word = 0;
        ssize_t filled = getrandom( &word, sizeof word, 0 );
        return word + (uint64_t)filled;
    } );
    measure( "Random/identifier/zu", [] {
        ZU_IDENTIFIER *ident = zuIdentifierCreate();
        zuIdentifierRelease( ident );
        return ident;
    } );
#ifdef ZU_BENCHMARK_GLIB
    measure( "Random/identifier/glib", [] {
        char *uuid = g_uuid_string_random();
        g_free( uuid );
        return uuid;
    } );
#endif
#ifdef ZU_BENCHMARK_QT
    measure( "Random/8 bytes/qt", [] { return QRandomGenerator::system()->generate64(); } );
    measure( "Random/identifier/qt", [] { return QUuid::createUuid().toString(); } );
#endif
    benchmark::Initialize( &argc, argv );
    benchmark::RunSpecifiedBenchmarks();
    zuRuntimeShutdown();
    return 0;
}
