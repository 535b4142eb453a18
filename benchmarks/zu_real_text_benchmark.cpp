// Real numbers to text and back, beside the C++ library's conversions, on random doubles and on prices.

#include "zu/base/zu_real_text.h"

#include <benchmark/benchmark.h>
#include <charconv>
#include <cstring>
#include <random>
#include <string>
#include <vector>

static std::vector<double> doubles( bool prices )
{
    std::mt19937_64 random( 1 );
    std::vector<double> values;
    while ( values.size() < 4096 ) {
        uint64_t bits = random();
        double value;
        memcpy( &value, &bits, sizeof value );
        value = prices ? (double)( bits % 1000000 ) / 100 : value;
        if ( value - value == 0 ) {
            values.push_back( value );
        }
    }
    return values;
}
static std::vector<std::string> texts( bool prices )
{
    std::vector<std::string> all;
    for ( double value : doubles( prices ) ) {
        char text[ 32 ];
        all.emplace_back( text, std::to_chars( text, text + sizeof text, value ).ptr );
    }
    return all;
}
template <typename ITEM, typename CALL>
static void run( benchmark::State &state, const std::vector<ITEM> &items, CALL call )
{
    size_t i = 0;
    for ( auto _ : state ) {
        benchmark::DoNotOptimize( call( items[ i++ % items.size() ] ) );
    }
}
static ZU_INT writeZu( double value )
{
    char text[ ZU_REAL_TEXT_SHORTEST_MAX ];
    return zuRealTextWriteShortest( text, value );
}
static ZU_INT writeStd( double value )
{
    char text[ 32 ];
    return std::to_chars( text, text + sizeof text, value ).ptr - text;
}
static double readZu( const std::string &text )
{
    double value;
    zuRealTextTryReadUtf8( text.data(), (ZU_INT)text.size(), &value, nullptr );
    return value;
}
static double readStd( const std::string &text )
{
    double value = 0;
    std::from_chars( text.data(), text.data() + text.size(), value );
    return value;
}

// `contestant` is the last element of the name.
template <typename ITEM, typename CALL>
static void add( const std::string &name, const char *contestant, std::vector<ITEM> items, CALL call )
{
    benchmark::RegisterBenchmark( ( name + "/" + contestant ).c_str(),
                                  [ = ]( benchmark::State &state ) { run( state, items, call ); } );
}

int main( int argc, char **argv )
{
    for ( bool prices : { false, true } ) {
        const std::string kind = prices ? "prices" : "random";
        add( "RealToText/" + kind, "zu", doubles( prices ), writeZu );
        add( "RealToText/" + kind, "std", doubles( prices ), writeStd );
        add( "RealFromText/" + kind, "zu", texts( prices ), readZu );
        add( "RealFromText/" + kind, "std", texts( prices ), readStd );
    }
    benchmark::Initialize( &argc, argv );
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
