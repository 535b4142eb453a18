// Threads: starting one and waiting for its end, beside std::thread.

#include "zu/zu.hpp"

#include <benchmark/benchmark.h>
#include <thread>

static void zuSpawnJoin( benchmark::State &state )
{
    auto name = zu::adopt( zuStringCreateFromAscii( "benchmark", -1 ) );
    for ( auto _ : state ) {
        ZU_THREAD *thread = zuThreadTrySpawn(
            name.get(), [] {}, nullptr, ZU_THREAD_PRIORITY_NORMAL );
        zuThreadJoin( thread );
        zuThreadRelease( thread );
    }
}
BENCHMARK( zuSpawnJoin )->Name( "SpawnJoin/zu" )->UseRealTime();
static void stdSpawnJoin( benchmark::State &state )
{
    for ( auto _ : state ) {
        std::thread( [] {} ).join();
    }
}
BENCHMARK( stdSpawnJoin )->Name( "SpawnJoin/std" )->UseRealTime();

int main( int argc, char **argv )
{
    zuRuntimeStartup( 0, -1, nullptr, nullptr, nullptr, nullptr );
    benchmark::Initialize( &argc, argv );
    benchmark::RunSpecifiedBenchmarks();
    zuRuntimeShutdown();
    return 0;
}
