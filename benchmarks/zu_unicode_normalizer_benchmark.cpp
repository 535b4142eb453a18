// Normalizing a megabyte of UTF-8's worth of text in ten scripts, into each form: text that is in the form already
// ("same") and text that is not ("other": for C forms text in the D form, for D forms text in the C form; K forms get
// some fullwidth letters and ligatures too).  Each contestant takes its own encoding and gives it back: zu code points
// in an array, as a new string; ICU UTF-16, into an array that is there already; GLib and utf8proc UTF-8, as a new
// text.

#include "zu/base/zu_string_normalize.h"
#include "zu/unicode/zu_unicode_normalizer.h"

#include "zu/runtime/zu_runtime.h"
#include "zu_benchmark_texts.h"

#include <benchmark/benchmark.h>
#ifdef ZU_BENCHMARK_GLIB
#include <glib.h>
#endif
#ifdef ZU_BENCHMARK_ICU
#include <unicode/unorm2.h>
#endif
#ifdef ZU_BENCHMARK_UTF8PROC
#include <utf8proc.h>
#endif
#ifdef ZU_BENCHMARK_QT
#include <QString>
#endif

static ZU_STRING *normalizeChars( ZU_UNICODE_NORMAL_FORM form, const ZU_CHAR *chars, ZU_INT length )
{
    ZU_STRING *result = zuStringCreate();
    ZU_UNICODE_NORMALIZER *norm = zuUnicodeNormalizerCreate( form );
    zuUnicodeNormalizerWriteChars( norm, chars, length );
    zuUnicodeNormalizerFlush( norm );
    zuUnicodeNormalizerRead( norm, &result, -1 );
    zuUnicodeNormalizerRelease( norm );
    return result;
}

// Input
struct INPUT {
    ZU_UNICODE_NORMAL_FORM form;
    ZU_STRING *text;
};
static void zuNormalize( benchmark::State &state, INPUT input )
{
    const ZU_CHAR *chars = zuStringBacking( input.text );
    ZU_INT length = zuStringLength( input.text );
    for ( auto _ : state ) {
        ZU_STRING *result = normalizeChars( input.form, chars, length );
        benchmark::DoNotOptimize( result );
        zuStringRelease( result );
    }
    state.counters[ "ns/char" ] = benchmark::Counter(
        (double)length * 1e-9, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert );
}
#ifdef ZU_BENCHMARK_ICU
static void icuNormalize( benchmark::State &state, INPUT input )
{
    UErrorCode error = U_ZERO_ERROR;
    const UNormalizer2 *normalizers[] = { unorm2_getNFCInstance( &error ), unorm2_getNFKCInstance( &error ),
                                          unorm2_getNFDInstance( &error ), unorm2_getNFKDInstance( &error ) };
    std::u16string text = benchmarkUtf16( input.text );
    std::vector<char16_t> result( text.size() * 4 );
    for ( auto _ : state ) {
        benchmark::DoNotOptimize( unorm2_normalize( normalizers[ input.form ], text.data(), (int32_t)text.size(),
                                                    result.data(), (int32_t)result.size(), &error ) );
    }
    if ( U_FAILURE( error ) ) {
        state.SkipWithError( "ICU failed" );
    }
}
#endif
#ifdef ZU_BENCHMARK_GLIB
static void glibNormalize( benchmark::State &state, INPUT input )
{
    static constexpr GNormalizeMode MODES[] = { G_NORMALIZE_NFC, G_NORMALIZE_NFKC, G_NORMALIZE_NFD, G_NORMALIZE_NFKD };
    std::string text = benchmarkUtf8( input.text );
    for ( auto _ : state ) {
        char *result = g_utf8_normalize( text.data(), (gssize)text.size(), MODES[ input.form ] );
        benchmark::DoNotOptimize( result );
        g_free( result );
    }
}
#endif
#ifdef ZU_BENCHMARK_UTF8PROC
static void utf8procNormalize( benchmark::State &state, INPUT input )
{
    static constexpr int OPTIONS[] = { UTF8PROC_COMPOSE, UTF8PROC_COMPOSE | UTF8PROC_COMPAT, UTF8PROC_DECOMPOSE,
                                       UTF8PROC_DECOMPOSE | UTF8PROC_COMPAT };
    std::string text = benchmarkUtf8( input.text );
    for ( auto _ : state ) {
        utf8proc_uint8_t *result;
        utf8proc_map( (const utf8proc_uint8_t *)text.data(), (utf8proc_ssize_t)text.size(), &result,
                      (utf8proc_option_t)( UTF8PROC_STABLE | OPTIONS[ input.form ] ) );
        benchmark::DoNotOptimize( result );
        free( result );
    }
}
#endif

static void registerInput( const std::string &name, const INPUT &input, bool withPeers = true )
{
    benchmark::RegisterBenchmark( ( name + "/zu" ).c_str(), zuNormalize, input );
    if ( !withPeers ) {
        return;
    }
#ifdef ZU_BENCHMARK_ICU
    benchmark::RegisterBenchmark( ( name + "/icu" ).c_str(), icuNormalize, input );
#endif
#ifdef ZU_BENCHMARK_GLIB
    benchmark::RegisterBenchmark( ( name + "/glib" ).c_str(), glibNormalize, input );
#endif
#ifdef ZU_BENCHMARK_UTF8PROC
    benchmark::RegisterBenchmark( ( name + "/utf8proc" ).c_str(), utf8procNormalize, input );
#endif
}

// Short texts, held by somebody else: one that is normal, and one that is decomposed
static void zuShort( benchmark::State &state, ZU_STRING *text )
{
    for ( auto _ : state ) {
        ZU_STRING *result = zuStringRetain( text );
        zuStringNormalizeNFC( &result );
        benchmark::DoNotOptimize( result );
        zuStringRelease( result );
    }
}
#ifdef ZU_BENCHMARK_QT
static void qtShort( benchmark::State &state, ZU_STRING *zus )
{
    QString text = QString::fromUcs4( zuStringBacking( zus ), (int)zuStringLength( zus ) );
    for ( auto _ : state ) {
        QString result = text.normalized( QString::NormalizationForm_C );
        benchmark::DoNotOptimize( result );
    }
}
#endif
static void registerShort( const std::string &name, ZU_STRING *text )
{
    benchmark::RegisterBenchmark( ( name + "/zu" ).c_str(), zuShort, text );
#ifdef ZU_BENCHMARK_ICU
    benchmark::RegisterBenchmark( ( name + "/icu" ).c_str(), icuNormalize, INPUT{ ZU_UNICODE_NORMAL_FORM_NFC, text } );
#endif
#ifdef ZU_BENCHMARK_GLIB
    benchmark::RegisterBenchmark( ( name + "/glib" ).c_str(), glibNormalize,
                                  INPUT{ ZU_UNICODE_NORMAL_FORM_NFC, text } );
#endif
#ifdef ZU_BENCHMARK_QT
    benchmark::RegisterBenchmark( ( name + "/qt" ).c_str(), qtShort, text );
#endif
}

// Marks without end, at random from a few or many or from such as decompose, with a starter ahead of each `run` of
// them; a peer that sorts by insertion would take hours for long runs
static ZU_STRING *marksText( size_t run, const std::u32string &marks )
{
    std::vector<ZU_CHAR> chars;
    uint64_t random = 1;
    while ( chars.size() < 1 << 20 ) {
        if ( chars.size() % ( run + 1 ) == 0 ) {
            chars.push_back( 'e' );
        } else {
            random = random * 6364136223846793005u + 1442695040888963407u;
            chars.push_back( marks[ ( random >> 33 ) % marks.size() ] );
        }
    }
    return zuStringCreateFromCharsCopy( chars.data(), (ZU_INT)chars.size() );
}

int main( int argc, char **argv )
{
    zuRuntimeStartup( 0, -1, nullptr, "zu-benchmark", "Benchmarks of zu", "1.0" );
    std::vector<ZU_STRING *> texts;
    for ( const BENCHMARK_SCRIPT &script : BENCHMARK_SCRIPTS ) {
        std::string plain = benchmarkText( script );
        std::string compatible = plain;
        for ( size_t at = compatible.size(); at > 200; at -= 200 ) {
            size_t word = compatible.rfind( ' ', at );
            if ( word != std::string::npos ) {
                compatible.insert( word, "\uFF21\uFF42\uFB01" );
            }
        }
        for ( ZU_INT form = 0; form < 4; form++ ) {
            bool compatibly = form == ZU_UNICODE_NORMAL_FORM_NFKC || form == ZU_UNICODE_NORMAL_FORM_NFKD;
            bool composes = form == ZU_UNICODE_NORMAL_FORM_NFC || form == ZU_UNICODE_NORMAL_FORM_NFKC;
            const std::string &source = compatibly ? compatible : plain;
            ZU_STRING *text = zuStringCreateFromUtf8( source.data(), (ZU_INT)source.size() );
            const ZU_CHAR *chars = zuStringBacking( text );
            ZU_STRING *same = normalizeChars( form, chars, zuStringLength( text ) );
            ZU_STRING *other = normalizeChars( composes ? ZU_UNICODE_NORMAL_FORM_NFD : ZU_UNICODE_NORMAL_FORM_NFC,
                                               chars, zuStringLength( text ) );
            static const char *const NAMES[] = { "NFC", "NFKC", "NFD", "NFKD" };
            registerInput( std::string( NAMES[ form ] ) + "/same/" + script.name, { form, same } );
            registerInput( std::string( NAMES[ form ] ) + "/other/" + script.name, { form, other } );
            texts.insert( texts.end(), { same, other } );
            zuStringRelease( text );
        }
    }
    static const char *const SHORT[][ 2 ] = {
        { "english", "The ferry leaves at a quarter past six, and the coffee opens." },
        { "russian", "Двои\u0306ной чаи\u0306, все\u0308 пое\u0308т, еще\u0308 идё\u0308т край твоих ёлок и йодов" },
    };
    for ( const auto &row : SHORT ) {
        ZU_STRING *whole = zuStringCreateFromUtf8( row[ 1 ], -1 );
        for ( ZU_INT length : { 12, 30, 60 } ) {
            texts.push_back( zuStringCreateFromLeading( whole, zuIntMin( length, zuStringLength( whole ) ) ) );
            registerShort( "Short/" + std::string( row[ 0 ] ) + "/" + std::to_string( length ), texts.back() );
        }
        zuStringRelease( whole );
    }
    static const struct {
        const char *name;
        const char32_t *marks;
    } KINDS[] = { { "one", U"\u0316" },
                  { "two", U"\u0301\u0323" },
                  { "many", U"\u0301\u0323\u05B0\u05B1\u0327\u0345\u0316\u0651\u093C\u094D\u0338\u031B\u0E38" },
                  { "decomposing", U"\u0340\u0341\u0344\u0323" } };
    for ( size_t run : { 0, 2, 4, 8, 16, 32, 64, 1000, 1000000000 } ) {
        for ( const auto &kind : KINDS ) {
            INPUT input = { ZU_UNICODE_NORMAL_FORM_NFC, marksText( run, kind.marks ) };
            texts.push_back( input.text );
            registerInput( "Marks/" + std::to_string( run ) + "/" + kind.name, input, run <= 64 );
        }
    }
    benchmark::Initialize( &argc, argv );
    benchmark::RunSpecifiedBenchmarks();
    for ( ZU_STRING *text : texts ) {
        zuStringRelease( text );
    }
    zuRuntimeShutdown();
    return 0;
}
