// The general category of every code point of a text.

#include "zu_benchmark_encodings.h"

#ifdef ZU_BENCHMARK_GLIB
#include <glib.h>
#endif
#ifdef ZU_BENCHMARK_ICU
#include <unicode/uchar.h>
#endif
#ifdef ZU_BENCHMARK_QT
#include <QChar>
#endif

template <typename FUNC>
static auto categories( FUNC category )
{
    return [ category ]( benchmark::State &state, const BENCHMARK_TEXT &text ) {
        for ( auto _ : state ) {
            int64_t sum = 0;
            for ( ZU_CHAR ch : text.chars ) {
                sum += (int64_t)category( ch );
            }
            benchmark::DoNotOptimize( sum );
        }
    };
}

int main( int argc, char **argv )
{
    benchmarkOnTexts( "Category", "zu", categories( []( ZU_CHAR ch ) { return zuUnicodeGenc( ch ); } ) );
#ifdef ZU_BENCHMARK_GLIB
    benchmarkOnTexts( "Category", "glib", categories( []( ZU_CHAR ch ) { return g_unichar_type( ch ); } ) );
#endif
#ifdef ZU_BENCHMARK_ICU
    benchmarkOnTexts( "Category", "icu", categories( []( ZU_CHAR ch ) { return u_charType( (UChar32)ch ); } ) );
#endif
#ifdef ZU_BENCHMARK_QT
    benchmarkOnTexts( "Category", "qt", categories( []( ZU_CHAR ch ) { return QChar::category( ch ); } ) );
#endif
    return benchmarkRun( argc, argv );
}
