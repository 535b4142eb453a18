// UTF-8 to code points and back: the whole text in one call, into an array that is there; and the same for the narrow
// encoding of the environment, which travels through UTF-16.
//
// GLib's functions make their array themselves.  ICU is asked twice, for code points ("icu") and for its own UTF-16
// ("icu16").  "std" is a plain widening or narrowing of as many units, which no decoder can be faster than.

#include "zu_benchmark_encodings.h"

#include <iconv.h>
#ifdef ZU_BENCHMARK_GLIB
#include <glib.h>
#endif
#ifdef ZU_BENCHMARK_ICU
#include <unicode/ustring.h>
#include <unicode/utf8.h>
#endif
#ifdef ZU_BENCHMARK_QT
#include <QString>
#endif

// Decoding
template <auto CONVERT>
static void zuDecode( benchmark::State &state, const BENCHMARK_TEXT &text )
{
    std::vector<ZU_CHAR> dest( text.utf8.size() );
    for ( auto _ : state ) {
        benchmark::DoNotOptimize(
            CONVERT( dest.data(), (ZU_INT)dest.size(), text.utf8.data(), (ZU_INT)text.utf8.size() ) );
        benchmark::ClobberMemory();
    }
}
static void stdDecode( benchmark::State &state, const BENCHMARK_TEXT &text )
{
    std::vector<ZU_CHAR> dest( text.utf8.size() );
    for ( auto _ : state ) {
        for ( size_t i = 0; i < dest.size(); i++ ) {
            dest[ i ] = (uint8_t)text.utf8[ i ];
        }
        benchmark::ClobberMemory();
    }
}
template <typename DEST, typename SRC>
static void runIconv( benchmark::State &state, const char *to, const char *from, const SRC &src, DEST dest )
{
    iconv_t converter = iconv_open( to, from );
    for ( auto _ : state ) {
        char *in = (char *)const_cast<typename SRC::value_type *>( src.data() );
        char *out = (char *)dest.data();
        size_t inLeft = src.size() * sizeof src[ 0 ];
        size_t outLeft = dest.size() * sizeof dest[ 0 ];
        benchmark::DoNotOptimize( iconv( converter, &in, &inLeft, &out, &outLeft ) );
        benchmark::ClobberMemory();
    }
    iconv_close( converter );
}
static void iconvDecode( benchmark::State &state, const BENCHMARK_TEXT &text )
{
    runIconv( state, "UTF-32LE", "UTF-8", text.utf8, std::vector<ZU_CHAR>( text.utf8.size() ) );
}

// Encoding
template <auto CONVERT>
static void zuEncode( benchmark::State &state, const BENCHMARK_TEXT &text )
{
    std::string dest( text.utf8.size(), 0 );
    for ( auto _ : state ) {
        benchmark::DoNotOptimize(
            CONVERT( dest.data(), (ZU_INT)dest.size(), text.chars.data(), (ZU_INT)text.chars.size(), ZU_FALSE ) );
        benchmark::ClobberMemory();
    }
}
static void stdEncode( benchmark::State &state, const BENCHMARK_TEXT &text )
{
    std::string dest( text.chars.size(), 0 );
    for ( auto _ : state ) {
        for ( size_t i = 0; i < dest.size(); i++ ) {
            dest[ i ] = (char)text.chars[ i ];
        }
        benchmark::ClobberMemory();
    }
}
static void iconvEncode( benchmark::State &state, const BENCHMARK_TEXT &text )
{
    runIconv( state, "UTF-8", "UTF-32LE", text.chars, std::string( text.utf8.size(), 0 ) );
}

// Strings: the array is part of the work
static void zuString( benchmark::State &state, const BENCHMARK_TEXT &text )
{
    for ( auto _ : state ) {
        ZU_STRING *zus = zuStringCreateFromUtf8( text.utf8.data(), (ZU_INT)text.utf8.size() );
        benchmark::DoNotOptimize( zus );
        zuStringRelease( zus );
    }
}

#ifdef ZU_BENCHMARK_GLIB
static void glibDecode( benchmark::State &state, const BENCHMARK_TEXT &text )
{
    for ( auto _ : state ) {
        glong length;
        gunichar *chars = g_utf8_to_ucs4_fast( text.utf8.data(), (glong)text.utf8.size(), &length );
        benchmark::DoNotOptimize( chars );
        g_free( chars );
    }
}
static void glibEncode( benchmark::State &state, const BENCHMARK_TEXT &text )
{
    for ( auto _ : state ) {
        gchar *utf8 = g_ucs4_to_utf8( text.chars.data(), (glong)text.chars.size(), nullptr, nullptr, nullptr );
        benchmark::DoNotOptimize( utf8 );
        g_free( utf8 );
    }
}
#endif
#ifdef ZU_BENCHMARK_ICU
static void icuDecode( benchmark::State &state, const BENCHMARK_TEXT &text )
{
    std::vector<UChar32> dest( text.utf8.size() );
    const char *src = text.utf8.data();
    int32_t srcLength = (int32_t)text.utf8.size();
    for ( auto _ : state ) {
        size_t length = 0;
        for ( int32_t i = 0; i < srcLength; ) {
            UChar32 ch;
            U8_NEXT_OR_FFFD( src, i, srcLength, ch );
            dest[ length++ ] = ch;
        }
        benchmark::DoNotOptimize( length );
        benchmark::ClobberMemory();
    }
}
static void icu16Decode( benchmark::State &state, const BENCHMARK_TEXT &text )
{
    std::u16string dest( text.utf8.size(), 0 );
    for ( auto _ : state ) {
        UErrorCode error = U_ZERO_ERROR;
        int32_t length;
        u_strFromUTF8WithSub( dest.data(), (int32_t)dest.size(), &length, text.utf8.data(), (int32_t)text.utf8.size(),
                              0xFFFD, nullptr, &error );
        benchmark::DoNotOptimize( length );
        benchmark::ClobberMemory();
    }
}
static void icuEncode( benchmark::State &state, const BENCHMARK_TEXT &text )
{
    std::string dest( text.utf8.size(), 0 );
    for ( auto _ : state ) {
        int32_t length = 0;
        for ( ZU_CHAR ch : text.chars ) {
            U8_APPEND_UNSAFE( (uint8_t *)dest.data(), length, ch );
        }
        benchmark::DoNotOptimize( length );
        benchmark::ClobberMemory();
    }
}
static void icu16Encode( benchmark::State &state, const BENCHMARK_TEXT &text )
{
    std::string dest( text.utf8.size(), 0 );
    for ( auto _ : state ) {
        UErrorCode error = U_ZERO_ERROR;
        int32_t length;
        u_strToUTF8WithSub( dest.data(), (int32_t)dest.size(), &length, text.utf16.data(), (int32_t)text.utf16.size(),
                            0xFFFD, nullptr, &error );
        benchmark::DoNotOptimize( length );
        benchmark::ClobberMemory();
    }
}
#endif
#ifdef ZU_BENCHMARK_QT
static void qtString( benchmark::State &state, const BENCHMARK_TEXT &text )
{
    for ( auto _ : state ) {
        QString string = QString::fromUtf8( text.utf8.data(), (int)text.utf8.size() );
        benchmark::DoNotOptimize( string );
    }
}
#endif

int main( int argc, char **argv )
{
    benchmarkOnTexts( "Utf8/decode", "zu", zuDecode<zuCharsConvertFromUtf8> );
    benchmarkOnTexts( "Narrow/decode", "zu", zuDecode<zuCharsConvertFromCstr> );
    benchmarkOnTexts( "Narrow/encode", "zu", zuEncode<zuCharsConvertToCstr> );
    benchmarkOnTexts( "Utf8/decode", "std", stdDecode );
    benchmarkOnTexts( "Utf8/decode", "iconv", iconvDecode );
    benchmarkOnTexts( "Utf8/encode", "zu", zuEncode<zuCharsConvertToUtf8> );
    benchmarkOnTexts( "Utf8/encode", "std", stdEncode );
    benchmarkOnTexts( "Utf8/encode", "iconv", iconvEncode );
    benchmarkOnTexts( "Utf8/string", "zu", zuString );
#ifdef ZU_BENCHMARK_GLIB
    benchmarkOnTexts( "Utf8/decode", "glib", glibDecode );
    benchmarkOnTexts( "Utf8/encode", "glib", glibEncode );
#endif
#ifdef ZU_BENCHMARK_ICU
    benchmarkOnTexts( "Utf8/decode", "icu", icuDecode );
    benchmarkOnTexts( "Utf8/decode", "icu16", icu16Decode );
    benchmarkOnTexts( "Utf8/encode", "icu", icuEncode );
    benchmarkOnTexts( "Utf8/encode", "icu16", icu16Encode );
#endif
#ifdef ZU_BENCHMARK_QT
    benchmarkOnTexts( "Utf8/string", "qt", qtString );
#endif
    return benchmarkRun( argc, argv );
}
