// Operations on whole strings.  Case mappings take a megabyte of UTF-8's worth of text in ten scripts, in the encoding
// of the contestant: zu makes a new string of one that is held by others; ICU works from one array to another that is
// there already; GLib makes a new text, and Qt too.

#include "zu/base/zu_string_case.h"
#include "zu/base/zu_string_normalize.h"
#include "zu/base/zu_string_search.h"
#include "zu/base/zu_string_split.h"
#include "zu/runtime/zu_runtime.h"
#include "zu_benchmark_texts.h"

#include <benchmark/benchmark.h>
#include <string_view>
#ifdef ZU_BENCHMARK_GLIB
#include <glib.h>
#endif
#ifdef ZU_BENCHMARK_ICU
#include <unicode/stringoptions.h>
#include <unicode/ustring.h>
#endif
#ifdef ZU_BENCHMARK_QT
#include <QString>
#include <QStringList>
#endif

// Case
enum CASE { LOWER, UPPER, FOLD };
static const char *const CASE_NAMES[] = { "Lower", "Upper", "Fold" };

static void zuCase( benchmark::State &state, CASE which, ZU_STRING *text )
{
    static constexpr void ( *MAP[] )( ZU_STRING ** ) = { zuStringToLower, zuStringToUpper, zuStringToCaseFold };
    for ( auto _ : state ) {
        ZU_STRING *copy = zuStringRetain( text );
        MAP[ which ]( &copy );
        benchmark::DoNotOptimize( copy );
        zuStringRelease( copy );
    }
}
#ifdef ZU_BENCHMARK_ICU
static void icuCase( benchmark::State &state, CASE which, ZU_STRING *zus )
{
    std::u16string text = benchmarkUtf16( zus );
    std::vector<char16_t> result( text.size() * 3 );
    int32_t length = (int32_t)text.size();
    int32_t room = (int32_t)result.size();
    for ( auto _ : state ) {
        UErrorCode error = U_ZERO_ERROR;
        if ( which == LOWER ) {
            benchmark::DoNotOptimize( u_strToLower( result.data(), room, text.data(), length, "", &error ) );
        } else if ( which == UPPER ) {
            benchmark::DoNotOptimize( u_strToUpper( result.data(), room, text.data(), length, "", &error ) );
        } else {
            benchmark::DoNotOptimize(
                u_strFoldCase( result.data(), room, text.data(), length, U_FOLD_CASE_DEFAULT, &error ) );
        }
    }
}
#endif
#ifdef ZU_BENCHMARK_GLIB
static void glibCase( benchmark::State &state, CASE which, ZU_STRING *zus )
{
    static constexpr gchar *( *MAP[] )( const gchar *, gssize ) = { g_utf8_strdown, g_utf8_strup, g_utf8_casefold };
    std::string text = benchmarkUtf8( zus );
    for ( auto _ : state ) {
        char *result = MAP[ which ]( text.data(), (gssize)text.size() );
        benchmark::DoNotOptimize( result );
        g_free( result );
    }
}
#endif
#ifdef ZU_BENCHMARK_QT
static void qtCase( benchmark::State &state, CASE which, ZU_STRING *zus )
{
    std::u16string chars = benchmarkUtf16( zus );
    QString text( (const QChar *)chars.data(), (int)chars.size() );
    for ( auto _ : state ) {
        QString result = which == LOWER ? text.toLower() : which == UPPER ? text.toUpper() : text.toCaseFolded();
        benchmark::DoNotOptimize( result );
    }
}
#endif

// Search for what stands at the end only, and splitting at commas and white space
static const char *const NEEDLES[] = { "#", "over#", "over the hills#" };

static void zuFind( benchmark::State &state, ZU_STRING *text, ZU_STRING *sub )
{
    for ( auto _ : state ) {
        benchmark::DoNotOptimize( zuStringFind( text, 0, sub ) );
    }
}
static void zuFindFromRight( benchmark::State &state, ZU_STRING *text, ZU_STRING *sub )
{
    for ( auto _ : state ) {
        benchmark::DoNotOptimize( zuStringFindFromRight( text, -1, sub ) );
    }
}
static void stdFind( benchmark::State &state, ZU_STRING *zus, ZU_STRING *sub )
{
    const ZU_CHAR *chars = zuStringBacking( zus );
    std::u32string text( chars, chars + zuStringLength( zus ) );
    chars = zuStringBacking( sub );
    std::u32string needle( chars, chars + zuStringLength( sub ) );
    for ( auto _ : state ) {
        benchmark::DoNotOptimize( text.find( needle ) );
    }
}
static void zuSplit( benchmark::State &state, ZU_STRING *text )
{
    for ( auto _ : state ) {
        zuVectorRelease( zuStringSplitChar( text, ',', -1 ) );
    }
}
static void zuSplitWhitespace( benchmark::State &state, ZU_STRING *text )
{
    for ( auto _ : state ) {
        zuVectorRelease( zuStringSplitWhitespace( text, -1 ) );
    }
}
#ifdef ZU_BENCHMARK_QT
static QString qtText( ZU_STRING *zus )
{
    std::u16string chars = benchmarkUtf16( zus );
    return QString( (const QChar *)chars.data(), (int)chars.size() );
}
static void qtFind( benchmark::State &state, ZU_STRING *zus, ZU_STRING *sub )
{
    QString text = qtText( zus );
    QString needle = qtText( sub );
    for ( auto _ : state ) {
        benchmark::DoNotOptimize( text.indexOf( needle ) );
    }
}
static void qtFindFromRight( benchmark::State &state, ZU_STRING *zus, ZU_STRING *sub )
{
    QString text = qtText( zus );
    QString needle = qtText( sub );
    for ( auto _ : state ) {
        benchmark::DoNotOptimize( text.lastIndexOf( needle ) );
    }
}
static void qtSplit( benchmark::State &state, ZU_STRING *zus )
{
    QString text = qtText( zus );
    for ( auto _ : state ) {
        benchmark::DoNotOptimize( text.split( ',' ) );
    }
}
static void qtSplitWhitespace( benchmark::State &state, ZU_STRING *zus )
{
    QString text = qtText( zus );
    for ( auto _ : state ) {
        benchmark::DoNotOptimize( text.simplified().split( ' ' ) );
    }
}
#endif
#ifdef ZU_BENCHMARK_GLIB
static void glibFind( benchmark::State &state, ZU_STRING *zus, ZU_STRING *sub )
{
    std::string text = benchmarkUtf8( zus );
    std::string needle = benchmarkUtf8( sub );
    for ( auto _ : state ) {
        benchmark::DoNotOptimize( g_strstr_len( text.c_str(), (gssize)text.size(), needle.c_str() ) );
    }
}
static void glibSplit( benchmark::State &state, ZU_STRING *zus )
{
    std::string text = benchmarkUtf8( zus );
    for ( auto _ : state ) {
        g_strfreev( g_strsplit( text.c_str(), ",", -1 ) );
    }
}
#endif

// Comparison of texts that differ in the case of each word and in the last character
static void zuCompare( benchmark::State &state, ZU_STRING *a, ZU_STRING *b )
{
    for ( auto _ : state ) {
        benchmark::DoNotOptimize( zuStringCompareCaseFold( a, b ) );
    }
}
#ifdef ZU_BENCHMARK_ICU
static void icuCompare( benchmark::State &state, ZU_STRING *a, ZU_STRING *b )
{
    std::u16string textA = benchmarkUtf16( a );
    std::u16string textB = benchmarkUtf16( b );
    for ( auto _ : state ) {
        UErrorCode error = U_ZERO_ERROR;
        benchmark::DoNotOptimize( u_strCaseCompare( textA.data(), (int32_t)textA.size(), textB.data(),
                                                    (int32_t)textB.size(), U_COMPARE_CODE_POINT_ORDER, &error ) );
    }
}
#endif

template <typename... Args>
static void add( const std::string &name, void ( *run )( benchmark::State &, Args... ), Args... args )
{
    benchmark::RegisterBenchmark( name.c_str(), run, args... );
}

int main( int argc, char **argv )
{
    zuRuntimeStartup( 0, -1, nullptr, "zu-benchmark", "Benchmarks of zu", "1.0" );
    std::vector<ZU_STRING *> texts;
    auto make = [ & ]( const std::string &text ) {
        texts.push_back( zuStringCreateFromUtf8( text.data(), (ZU_INT)text.size() ) );
        return texts.back();
    };
    for ( const BENCHMARK_SCRIPT &script : BENCHMARK_SCRIPTS ) {
        ZU_STRING *text = make( benchmarkText( script ) );
        zuStringNormalizeNFC( &text );
        texts.back() = text;
        for ( CASE which : { LOWER, UPPER, FOLD } ) {
            std::string name = std::string( CASE_NAMES[ which ] ) + "/" + script.name;
            add<CASE, ZU_STRING *>( name + "/zu", zuCase, which, text );
#ifdef ZU_BENCHMARK_ICU
            add<CASE, ZU_STRING *>( name + "/icu", icuCase, which, text );
#endif
#ifdef ZU_BENCHMARK_GLIB
            add<CASE, ZU_STRING *>( name + "/glib", glibCase, which, text );
#endif
#ifdef ZU_BENCHMARK_QT
            add<CASE, ZU_STRING *>( name + "/qt", qtCase, which, text );
#endif
        }
        ZU_STRING *upper = zuStringRetain( text );
        zuStringToUpper( &upper );
        texts.push_back( upper );
        add<ZU_STRING *, ZU_STRING *>( std::string( "Compare/" ) + script.name + "/zu", zuCompare, text, upper );
#ifdef ZU_BENCHMARK_ICU
        add<ZU_STRING *, ZU_STRING *>( std::string( "Compare/" ) + script.name + "/icu", icuCompare, text, upper );
#endif
    }
    std::string english = benchmarkText( BENCHMARK_SCRIPTS[ 0 ] );
    for ( const char *needle : NEEDLES ) {
        ZU_STRING *sub = make( needle );
        ZU_STRING *text = make( english + needle );
        ZU_STRING *textFromRight = make( needle + english );
        std::string name = "Find/" + std::to_string( zuStringLength( sub ) );
        std::string nameFromRight = "FindFromRight/" + std::to_string( zuStringLength( sub ) );
        add<ZU_STRING *, ZU_STRING *>( name + "/zu", zuFind, text, sub );
        add<ZU_STRING *, ZU_STRING *>( name + "/std", stdFind, text, sub );
        add<ZU_STRING *, ZU_STRING *>( nameFromRight + "/zu", zuFindFromRight, textFromRight, sub );
#ifdef ZU_BENCHMARK_QT
        add<ZU_STRING *, ZU_STRING *>( name + "/qt", qtFind, text, sub );
        add<ZU_STRING *, ZU_STRING *>( nameFromRight + "/qt", qtFindFromRight, textFromRight, sub );
#endif
#ifdef ZU_BENCHMARK_GLIB
        add<ZU_STRING *, ZU_STRING *>( name + "/glib", glibFind, text, sub );
#endif
    }
    for ( size_t bytes : { 200, 10000, 1000000 } ) {
        ZU_STRING *list = make( benchmarkText( BENCHMARK_SCRIPTS[ 0 ], bytes ) );
        std::string split = "Split/" + std::to_string( bytes );
        std::string splitWhitespace = "SplitWhitespace/" + std::to_string( bytes );
        add<ZU_STRING *>( split + "/zu", zuSplit, list );
        add<ZU_STRING *>( splitWhitespace + "/zu", zuSplitWhitespace, list );
#ifdef ZU_BENCHMARK_QT
        add<ZU_STRING *>( split + "/qt", qtSplit, list );
        add<ZU_STRING *>( splitWhitespace + "/qt", qtSplitWhitespace, list );
#endif
#ifdef ZU_BENCHMARK_GLIB
        add<ZU_STRING *>( split + "/glib", glibSplit, list );
#endif
    }
    benchmark::Initialize( &argc, argv );
    benchmark::RunSpecifiedBenchmarks();
    for ( ZU_STRING *text : texts ) {
        zuStringRelease( text );
    }
    zuRuntimeShutdown();
    return 0;
}
