// Settings: a store of 10,000 entries and, where GLib is at hand, a GKeyFile with the same keys in one group.
//
// A third of the entries each are integers, truth values and real numbers.  Keys come in ascending order or shuffled;
// reading asks for each entry by its key and converts it.  The heap keeps what is freed, as that of a program that has
// run for a while does: otherwise each round would measure how long the system takes to hand out pages anew.

#include "zu/base/zu_store.h"
#include "zu/runtime/zu_runtime.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <random>
#include <string>
#include <vector>
#ifdef ZU_BENCHMARK_GLIB
#include <glib.h>
#endif

static constexpr size_t ENTRIES = 10000;

enum class Order { ASCENDING, SHUFFLED };

static std::vector<std::string> makeKeys( Order order )
{
    std::vector<std::string> keys;
    for ( size_t i = 0; i < ENTRIES; i++ ) {
        keys.push_back( "setting-" + std::to_string( ENTRIES + i ) );
    }
    if ( order == Order::SHUFFLED ) {
        std::shuffle( keys.begin(), keys.end(), std::mt19937( 1 ) );
    }
    return keys;
}

struct ZU_CONTESTANT {
    ZU_STORE *store = zuStoreCreate();

    ~ZU_CONTESTANT()
    {
        zuStoreRelease( store );
    }
    void set( const std::string &key, size_t number )
    {
        const char *address = key.data();
        ZU_INT length = (ZU_INT)key.size();
        switch ( number % 3 ) {
        case 0:
            zuStoreSetValueIntCstr( &store, address, length, (ZU_INT)number );
            break;
        case 1:
            zuStoreSetValueBoolCstr( &store, address, length, number % 2 );
            break;
        default:
            zuStoreSetValueRealCstr( &store, address, length, (double)number / 8 );
        }
    }
    double get( const std::string &key, size_t number ) const
    {
        const char *address = key.data();
        ZU_INT length = (ZU_INT)key.size();
        ZU_INT i = 0;
        ZU_BOOL b = 0;
        double r = 0.0;
        switch ( number % 3 ) {
        case 0:
            zuStoreValueIntCstr( store, &i, address, length );
            break;
        case 1:
            zuStoreValueBoolCstr( store, &b, address, length );
            break;
        default:
            zuStoreValueRealCstr( store, &r, address, length );
        }
        return (double)i + b + r;
    }
};

#ifdef ZU_BENCHMARK_GLIB
struct GLIB_CONTESTANT {
    GKeyFile *file = g_key_file_new();

    ~GLIB_CONTESTANT()
    {
        g_key_file_free( file );
    }
    void set( const std::string &key, size_t number )
    {
        switch ( number % 3 ) {
        case 0:
            g_key_file_set_int64( file, "settings", key.c_str(), (gint64)number );
            break;
        case 1:
            g_key_file_set_boolean( file, "settings", key.c_str(), number % 2 );
            break;
        default:
            g_key_file_set_double( file, "settings", key.c_str(), (double)number / 8 );
        }
    }
    double get( const std::string &key, size_t number ) const
    {
        switch ( number % 3 ) {
        case 0:
            return (double)g_key_file_get_int64( file, "settings", key.c_str(), nullptr );
        case 1:
            return g_key_file_get_boolean( file, "settings", key.c_str(), nullptr );
        default:
            return g_key_file_get_double( file, "settings", key.c_str(), nullptr );
        }
    }
};
#endif

template <typename CONTESTANT>
static void fill( CONTESTANT &contestant, const std::vector<std::string> &keys )
{
    for ( size_t i = 0; i < keys.size(); i++ ) {
        contestant.set( keys[ i ], i );
    }
}
template <typename CONTESTANT>
static void read( const CONTESTANT &contestant, const std::vector<std::string> &keys )
{
    double sum = 0.0;
    for ( size_t i = 0; i < keys.size(); i++ ) {
        sum += contestant.get( keys[ i ], i );
    }
    benchmark::DoNotOptimize( sum );
}

template <typename CONTESTANT, Order ORDER>
static void build( benchmark::State &state )
{
    std::vector<std::string> keys = makeKeys( ORDER );
    for ( auto _ : state ) {
        CONTESTANT contestant;
        fill( contestant, keys );
    }
}
template <typename CONTESTANT, Order ORDER>
static void readTyped( benchmark::State &state )
{
    std::vector<std::string> keys = makeKeys( ORDER );
    CONTESTANT contestant;
    fill( contestant, keys );
    for ( auto _ : state ) {
        read( contestant, keys );
    }
}
template <typename CONTESTANT, Order ORDER>
static void buildAndRead( benchmark::State &state )
{
    std::vector<std::string> keys = makeKeys( ORDER );
    for ( auto _ : state ) {
        CONTESTANT contestant;
        fill( contestant, keys );
        read( contestant, keys );
    }
}
#define STORE_BENCHMARKS( CONTESTANT, name )                                                       \
    BENCHMARK( build<CONTESTANT, Order::ASCENDING> )->Name( "Store/build/" name );                 \
    BENCHMARK( readTyped<CONTESTANT, Order::ASCENDING> )->Name( "Store/read/" name );              \
    BENCHMARK( buildAndRead<CONTESTANT, Order::ASCENDING> )->Name( "Store/build and read/" name ); \
    BENCHMARK( build<CONTESTANT, Order::SHUFFLED> )->Name( "Store/build shuffled/" name );         \
    BENCHMARK( readTyped<CONTESTANT, Order::SHUFFLED> )->Name( "Store/read shuffled/" name )

STORE_BENCHMARKS( ZU_CONTESTANT, "zu" );
#ifdef ZU_BENCHMARK_GLIB
STORE_BENCHMARKS( GLIB_CONTESTANT, "glib" );
#endif

int main( int argc, char **argv )
{
    static constexpr int NEVER = 1 << 30; // bytes
    mallopt( M_TRIM_THRESHOLD, NEVER );
    mallopt( M_MMAP_THRESHOLD, NEVER );
    zuRuntimeStartup( 0, -1, nullptr, "zu-benchmark", "Benchmarks of zu", "1.0" );
    benchmark::Initialize( &argc, argv );
    benchmark::RunSpecifiedBenchmarks();
    zuRuntimeShutdown();
    return 0;
}
