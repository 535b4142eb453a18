// Character sets through streams: 1 MB of text is decoded from bytes and encoded to bytes in blocks of 1024, as files
// are read and written; the converters of iconv, ICU and Qt get the same blocks.  iconv works on UTF-32 as this library
// does, ICU and Qt on UTF-16.  Encoding to a single-byte set includes normalizing to NFC here, and at ICU by its
// normalizer.

#include "zu/zu.hpp"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <iconv.h>
#include <string>
#include <vector>
#ifdef ZU_BENCHMARK_ICU
#include <unicode/normalizer2.h>
#include <unicode/ucnv.h>
#include <unicode/unistr.h>
#endif
#ifdef ZU_BENCHMARK_QT
#include <QTextCodec>
#endif

static constexpr size_t TEXT_BYTES = 1000 * 1000;
static constexpr ZU_INT BLOCK = 1024;

struct SET {
    const char *name; // for the benchmark
    ZU_CHARSET charset;
    const char *iconvName;
    const char *icuName;
    const char *sample; // UTF-8
};
static const SET SETS[] = {
    { "utf-8-ascii", ZU_CHARSET_UTF_8, "UTF-8", "UTF-8", "The quick brown fox jumps over the lazy dog. " },
    { "utf-8-latin", ZU_CHARSET_UTF_8, "UTF-8", "UTF-8", "Zażółć gęślą jaźń, że mój bóg śpi. " },
    { "utf-8-cyrillic", ZU_CHARSET_UTF_8, "UTF-8", "UTF-8", "Съешь же ещё этих мягких французских булок. " },
    { "utf-8-chinese", ZU_CHARSET_UTF_8, "UTF-8", "UTF-8", "人人生而自由，在尊严和权利上一律平等。" },
    { "utf-8-emoji", ZU_CHARSET_UTF_8, "UTF-8", "UTF-8", "😀😃 fun 🚀🔥 " },
    { "utf-16le", ZU_CHARSET_UTF_16_LE, "UTF-16LE", "UTF-16LE", "Le c\xC5\x93ur a ses raisons que la raison ignore. " },
    { "utf-32le", ZU_CHARSET_UTF_32_LE, "UTF-32LE", "UTF-32LE", "Съешь же ещё этих мягких французских булок. " },
    { "cp1252-ascii", ZU_CHARSET_MSFT_CP1252, "CP1252", "windows-1252",
      "The quick brown fox jumps over the lazy dog. " },
    { "cp1252", ZU_CHARSET_MSFT_CP1252, "CP1252", "windows-1252", "Déjà vu à Zürich – “naïve” façade. " },
    { "iso-8859-2", ZU_CHARSET_ISO_8859_2, "ISO-8859-2", "ISO-8859-2", "Zażółć gęślą jaźń, że mój bóg śpi. " },
    { "koi8-r", ZU_CHARSET_KOI_8R, "KOI8-R", "KOI8-R", "Съешь же ещё этих мягких французских булок. " },
    { "cp437", ZU_CHARSET_MSFT_CP437, "CP437", "ibm-437", "╔══╗ déjà vu ß ≥ ½ ░▒▓ " },
};

static std::vector<ZU_CHAR> sampleChars( const SET &set )
{
    auto sample = zu::adopt( zuStringCreateFromUtf8( set.sample, -1 ) );
    std::vector<ZU_CHAR> chars;
    const ZU_CHAR *begin = zuStringBacking( sample.get() );
    while ( chars.size() < TEXT_BYTES / 2 ) {
        chars.insert( chars.end(), begin, begin + zuStringLength( sample.get() ) );
    }
    return chars;
}
static std::vector<char> sampleBytes( const SET &set )
{
    std::vector<ZU_CHAR> chars = sampleChars( set );
    iconv_t converter = iconv_open( set.iconvName, "UTF-32LE" );
    char *in = (char *)chars.data();
    size_t inLeft = chars.size() * sizeof( ZU_CHAR );
    std::vector<char> bytes( inLeft );
    char *out = bytes.data();
    size_t outLeft = bytes.size();
    iconv( converter, &in, &inLeft, &out, &outLeft );
    iconv_close( converter );
    bytes.resize( bytes.size() - outLeft );
    return bytes;
}

// Decoding, exactly or as the contract has it
template <bool EXACT>
static void zuDecode( benchmark::State &state, const SET *set )
{
    std::vector<char> bytes = sampleBytes( *set );
    auto buffer = zu::adopt( zuBufferCreateFromBytesCopy( (const uint8_t *)bytes.data(), (ZU_INT)bytes.size() ) );
    for ( auto _ : state ) {
        auto backend = zu::adopt( zuBufferByteSourceCreate( buffer.get() ) );
        auto byteSource = zu::adopt( zuBufferByteSourceByteSource( backend.get() ) );
        zu::Ref<ZU_CHAR_SOURCE> source;
        if ( EXACT ) {
            auto exact = zu::adopt( zuExactCharSourceCreate( byteSource.get(), set->charset, 0 ) );
            source = zu::adopt( zuExactCharSourceCharSource( exact.get() ) );
        } else {
            source = zu::adopt( zuCharsetCreateCharSource( byteSource.get(), set->charset, 0 ) );
        }
        ZU_CHAR chars[ BLOCK ];
        while ( zuCharSourceReadChars( source.get(), chars, BLOCK ) == BLOCK ) {
            benchmark::DoNotOptimize( chars );
        }
    }
    state.SetBytesProcessed( (int64_t)( state.iterations() * bytes.size() ) );
}
static void iconvDecode( benchmark::State &state, const SET *set )
{
    std::vector<char> bytes = sampleBytes( *set );
    for ( auto _ : state ) {
        iconv_t converter = iconv_open( "UTF-32LE", set->iconvName );
        char *in = bytes.data();
        char *end = in + bytes.size();
        while ( in < end ) {
            ZU_CHAR chars[ BLOCK ];
            char *out = (char *)chars;
            size_t outLeft = sizeof chars;
            size_t inLeft = std::min( (size_t)BLOCK, (size_t)( end - in ) );
            iconv( converter, &in, &inLeft, &out, &outLeft );
            benchmark::DoNotOptimize( chars );
        }
        iconv_close( converter );
    }
    state.SetBytesProcessed( (int64_t)( state.iterations() * bytes.size() ) );
}
#ifdef ZU_BENCHMARK_ICU
static void icuDecode( benchmark::State &state, const SET *set )
{
    std::vector<char> bytes = sampleBytes( *set );
    UErrorCode error = U_ZERO_ERROR;
    UConverter *converter = ucnv_open( set->icuName, &error );
    for ( auto _ : state ) {
        const char *in = bytes.data();
        const char *end = in + bytes.size();
        while ( in < end ) {
            char16_t units[ BLOCK ];
            char16_t *out = units;
            error = U_ZERO_ERROR;
            ucnv_toUnicode( converter, &out, units + BLOCK, &in, std::min( in + BLOCK, end ), nullptr, false, &error );
            benchmark::DoNotOptimize( units );
        }
        ucnv_reset( converter );
    }
    ucnv_close( converter );
    state.SetBytesProcessed( (int64_t)( state.iterations() * bytes.size() ) );
}
#endif
#ifdef ZU_BENCHMARK_QT
static void qtDecode( benchmark::State &state, const SET *set )
{
    std::vector<char> bytes = sampleBytes( *set );
    const QTextCodec *codec = QTextCodec::codecForName( set->iconvName );
    if ( !codec ) {
        state.SkipWithError( "no such codec" );
        return;
    }
    for ( auto _ : state ) {
        QTextCodec::ConverterState converter;
        for ( size_t pos = 0; pos < bytes.size(); pos += BLOCK ) {
            const size_t count = std::min( (size_t)BLOCK, bytes.size() - pos );
            benchmark::DoNotOptimize( codec->toUnicode( bytes.data() + pos, (int)count, &converter ) );
        }
    }
    state.SetBytesProcessed( (int64_t)( state.iterations() * bytes.size() ) );
}
#endif

// Encoding; what comes out is thrown away
static ZU_BOOL dropBytes( ZU_OBJ *, const uint8_t *bytes, ZU_INT )
{
    benchmark::DoNotOptimize( bytes );
    return ZU_TRUE;
}
static ZU_BOOL dropFlush( ZU_OBJ * )
{
    return ZU_TRUE;
}
static void zuEncode( benchmark::State &state, const SET *set )
{
    std::vector<ZU_CHAR> chars = sampleChars( *set );
    for ( auto _ : state ) {
        auto byteSink = zu::adopt( zu___ByteSinkCreate( dropBytes, dropFlush, nullptr ) );
        auto sink = zu::adopt( zuCharsetCreateCharSink( byteSink.get(), set->charset, 0 ) );
        for ( size_t pos = 0; pos < chars.size(); pos += BLOCK ) {
            zuCharSinkWriteChars( sink.get(), chars.data() + pos, std::min( BLOCK, (ZU_INT)( chars.size() - pos ) ) );
        }
    }
    state.SetItemsProcessed( (int64_t)( state.iterations() * chars.size() ) );
}
static void iconvEncode( benchmark::State &state, const SET *set )
{
    std::vector<ZU_CHAR> chars = sampleChars( *set );
    for ( auto _ : state ) {
        iconv_t converter = iconv_open( set->iconvName, "UTF-32LE" );
        char *in = (char *)chars.data();
        char *end = in + chars.size() * sizeof( ZU_CHAR );
        while ( in < end ) {
            char bytes[ BLOCK * 4 ];
            char *out = bytes;
            size_t outLeft = sizeof bytes;
            size_t inLeft = std::min( BLOCK * sizeof( ZU_CHAR ), (size_t)( end - in ) );
            iconv( converter, &in, &inLeft, &out, &outLeft );
            benchmark::DoNotOptimize( bytes );
        }
        iconv_close( converter );
    }
    state.SetItemsProcessed( (int64_t)( state.iterations() * chars.size() ) );
}
#ifdef ZU_BENCHMARK_ICU
static void icuEncode( benchmark::State &state, const SET *set )
{
    std::vector<ZU_CHAR> chars = sampleChars( *set );
    icu::UnicodeString text = icu::UnicodeString::fromUTF32( (const UChar32 *)chars.data(), (int32_t)chars.size() );
    bool normalizes = set->charset < ZU_CHARSET_UTF_8;
    UErrorCode error = U_ZERO_ERROR;
    const icu::Normalizer2 *nfc = icu::Normalizer2::getNFCInstance( error );
    UConverter *converter = ucnv_open( set->icuName, &error );
    for ( auto _ : state ) {
        for ( int32_t pos = 0; pos < text.length(); pos += BLOCK ) {
            icu::UnicodeString piece = text.tempSubString( pos, BLOCK );
            if ( normalizes ) {
                piece = nfc->normalize( piece, error );
            }
            const char16_t *in = piece.getBuffer();
            const char16_t *end = in + piece.length();
            char bytes[ BLOCK * 4 ];
            char *out = bytes;
            error = U_ZERO_ERROR;
            ucnv_fromUnicode( converter, &out, bytes + sizeof bytes, &in, end, nullptr, false, &error );
            benchmark::DoNotOptimize( bytes );
        }
        ucnv_reset( converter );
    }
    ucnv_close( converter );
    state.SetItemsProcessed( (int64_t)( state.iterations() * chars.size() ) );
}
#endif

int main( int argc, char **argv )
{
    zuRuntimeStartup( 0, -1, nullptr, nullptr, nullptr, nullptr );
    for ( const SET &set : SETS ) {
        auto add = [ &set ]( const char *topic, const char *contestant,
                             void ( *run )( benchmark::State &, const SET * ) ) {
            std::string name = std::string( topic ) + "/" + set.name + "/" + contestant;
            benchmark::RegisterBenchmark( name.c_str(), run, &set );
        };
        add( "Decode", "zu", zuDecode<true> );
        add( "Decode", "contract", zuDecode<false> );
        add( "Decode", "std", iconvDecode );
        add( "Encode", "zu", zuEncode );
        add( "Encode", "std", iconvEncode );
#ifdef ZU_BENCHMARK_ICU
        add( "Decode", "icu", icuDecode );
        add( "Encode", "icu", icuEncode );
#endif
#ifdef ZU_BENCHMARK_QT
        add( "Decode", "qt", qtDecode );
#endif
    }
    benchmark::Initialize( &argc, argv );
    benchmark::RunSpecifiedBenchmarks();
    zuRuntimeShutdown();
    return 0;
}
