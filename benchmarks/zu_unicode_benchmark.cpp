// What the character database says of every code point of a text.

#include "zu_benchmark_encodings.h"

#ifdef ZU_BENCHMARK_GLIB
#include <glib.h>
#endif
#ifdef ZU_BENCHMARK_ICU
#include <unicode/uchar.h>
#include <unicode/uscript.h>
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
    benchmarkOnTexts( "WhiteSpace", "zu", categories( []( ZU_CHAR ch ) { return zuUnicodeIsWhiteSpace( ch ); } ) );
    benchmarkOnTexts( "Letter", "zu", categories( []( ZU_CHAR ch ) { return zuUnicodeIsLetter( ch ); } ) );
    benchmarkOnTexts( "CombiningClass", "zu", categories( []( ZU_CHAR ch ) { return zuUnicodeCccv( ch ); } ) );
    benchmarkOnTexts( "Script", "zu", categories( []( ZU_CHAR ch ) { return zuUnicodeScript( ch ); } ) );
#ifdef ZU_BENCHMARK_GLIB
    benchmarkOnTexts( "Category", "glib", categories( []( ZU_CHAR ch ) { return g_unichar_type( ch ); } ) );
    benchmarkOnTexts( "WhiteSpace", "glib", categories( []( ZU_CHAR ch ) { return g_unichar_isspace( ch ); } ) );
    benchmarkOnTexts( "Letter", "glib", categories( []( ZU_CHAR ch ) { return g_unichar_isalpha( ch ); } ) );
    benchmarkOnTexts( "CombiningClass", "glib",
                      categories( []( ZU_CHAR ch ) { return g_unichar_combining_class( ch ); } ) );
    benchmarkOnTexts( "Script", "glib", categories( []( ZU_CHAR ch ) { return g_unichar_get_script( ch ); } ) );
#endif
#ifdef ZU_BENCHMARK_ICU
    benchmarkOnTexts( "Category", "icu", categories( []( ZU_CHAR ch ) { return u_charType( (UChar32)ch ); } ) );
    benchmarkOnTexts( "WhiteSpace", "icu", categories( []( ZU_CHAR ch ) { return u_isUWhiteSpace( (UChar32)ch ); } ) );
    benchmarkOnTexts( "Letter", "icu", categories( []( ZU_CHAR ch ) { return u_isalpha( (UChar32)ch ); } ) );
    benchmarkOnTexts( "CombiningClass", "icu",
                      categories( []( ZU_CHAR ch ) { return u_getCombiningClass( (UChar32)ch ); } ) );
    benchmarkOnTexts( "Script", "icu", categories( []( ZU_CHAR ch ) {
                          UErrorCode error = U_ZERO_ERROR;
                          return uscript_getScript( (UChar32)ch, &error );
                      } ) );
#endif
#ifdef ZU_BENCHMARK_QT
    benchmarkOnTexts( "Category", "qt", categories( []( ZU_CHAR ch ) { return QChar::category( ch ); } ) );
    benchmarkOnTexts( "WhiteSpace", "qt", categories( []( ZU_CHAR ch ) { return QChar::isSpace( ch ); } ) );
    benchmarkOnTexts( "Letter", "qt", categories( []( ZU_CHAR ch ) { return QChar::isLetter( ch ); } ) );
    benchmarkOnTexts( "CombiningClass", "qt", categories( []( ZU_CHAR ch ) { return QChar::combiningClass( ch ); } ) );
    benchmarkOnTexts( "Script", "qt", categories( []( ZU_CHAR ch ) { return QChar::script( ch ); } ) );
#endif
    return benchmarkRun( argc, argv );
}
