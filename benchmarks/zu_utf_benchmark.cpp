// Well-formed UTF to strings and back, and its test, on twelve scripts and three lengths: 20 and 200 code points, and a
// megabyte.  Whoever has strings makes and frees one, as a program does; what is timed is per byte of the source.
//
// ICU and Qt keep UTF-16: the same texts are fewer bytes there.  "copy" is a plain widening or narrowing of as many
// units, into memory made for it.

#include "zu_benchmark_encodings.h"

#include <memory>
#ifdef ZU_BENCHMARK_ICU
#include <unicode/unistr.h>
#include <unicode/ustring.h>
#endif
#ifdef ZU_BENCHMARK_QT
#include <QString>
#endif
#ifdef ZU_BENCHMARK_UNISTRING
#include <unistr.h>
#endif

// A text in the forms of all contestants
struct UTF_TEXT {
    std::string utf8;
    std::u16string utf16;
    std::u32string chars;
    ZU_STRING *zus;
};

static void zuTest( const UTF_TEXT &text )
{
    benchmark::DoNotOptimize( zuUtf8Fault( text.utf8.data(), (ZU_INT)text.utf8.size() ) );
}
static void zuDecode8( const UTF_TEXT &text )
{
    zuStringRelease( zuUtf8TryDecode( text.utf8.data(), (ZU_INT)text.utf8.size(), nullptr ) );
}
static void zuContractDecode8( const UTF_TEXT &text )
{
    zuStringRelease( zuStringCreateFromUtf8( text.utf8.data(), (ZU_INT)text.utf8.size() ) );
}
static void zuEncode8( const UTF_TEXT &text )
{
    ZU_INT length;
    zuMemFree( zuUtf8TryEncode( text.zus, &length, nullptr ) );
}
static void zuContractEncode8( const UTF_TEXT &text )
{
    ZU_INT length;
    zuMemFree( zuStringConvertToUtf8( text.zus, ZU_TRUE, &length ) );
}
static void zuDecode16( const UTF_TEXT &text )
{
    zuStringRelease( zuUtf16TryDecode( text.utf16.data(), (ZU_INT)text.utf16.size(), nullptr ) );
}
static void zuEncode16( const UTF_TEXT &text )
{
    ZU_INT length;
    zuMemFree( zuUtf16TryEncode( text.zus, &length, nullptr ) );
}
template <typename DEST, typename SRC>
static void copy( const SRC &src )
{
    std::unique_ptr<DEST[]> dest( new DEST[ src.size() + 1 ] );
    for ( size_t i = 0; i < src.size(); i++ ) {
        dest[ i ] = (DEST)(std::make_unsigned_t<typename SRC::value_type>)src[ i ];
    }
    benchmark::DoNotOptimize( dest.get() );
    benchmark::ClobberMemory();
}
static void copyDecode8( const UTF_TEXT &text )
{
    copy<ZU_CHAR>( text.utf8 );
}
static void copyEncode8( const UTF_TEXT &text )
{
    copy<char>( text.chars );
}
#ifdef ZU_BENCHMARK_ICU
static void icuDecode8( const UTF_TEXT &text )
{
    auto string = icu::UnicodeString::fromUTF8( icu::StringPiece( text.utf8.data(), (int32_t)text.utf8.size() ) );
    benchmark::DoNotOptimize( string );
}
static void icuEncode8( const UTF_TEXT &text )
{
    std::string utf8;
    icu::UnicodeString( false, text.utf16.data(), (int32_t)text.utf16.size() ).toUTF8String( utf8 );
    benchmark::DoNotOptimize( utf8 );
}
static void icuDecode16( const UTF_TEXT &text )
{
    std::unique_ptr<UChar32[]> dest( new UChar32[ text.utf16.size() + 1 ] );
    UErrorCode error = U_ZERO_ERROR;
    u_strToUTF32( dest.get(), (int32_t)text.utf16.size() + 1, nullptr, text.utf16.data(), (int32_t)text.utf16.size(),
                  &error );
    benchmark::ClobberMemory();
}
static void icuEncode16( const UTF_TEXT &text )
{
    std::unique_ptr<UChar[]> dest( new UChar[ 2 * text.chars.size() + 1 ] );
    UErrorCode error = U_ZERO_ERROR;
    u_strFromUTF32( dest.get(), 2 * (int32_t)text.chars.size() + 1, nullptr, (const UChar32 *)text.chars.data(),
                    (int32_t)text.chars.size(), &error );
    benchmark::ClobberMemory();
}
#endif
#ifdef ZU_BENCHMARK_QT
static void qtDecode8( const UTF_TEXT &text )
{
    QString string = QString::fromUtf8( text.utf8.data(), (int)text.utf8.size() );
    benchmark::DoNotOptimize( string );
}
static void qtEncode8( const UTF_TEXT &text )
{
    // Not a copy of the text
    const QString string = QString::fromRawData( (const QChar *)text.utf16.data(), (int)text.utf16.size() );
    benchmark::DoNotOptimize( string.toUtf8() );
}
#endif

#ifdef ZU_BENCHMARK_UNISTRING
static void unistringDecode8( const UTF_TEXT &text )
{
    size_t length;
    free( u8_to_u32( (const uint8_t *)text.utf8.data(), text.utf8.size(), nullptr, &length ) );
}
static void unistringEncode8( const UTF_TEXT &text )
{
    size_t length;
    free( u32_to_u8( (const uint32_t *)text.chars.data(), text.chars.size(), nullptr, &length ) );
}
static void unistringDecode16( const UTF_TEXT &text )
{
    size_t length;
    free( u16_to_u32( (const uint16_t *)text.utf16.data(), text.utf16.size(), nullptr, &length ) );
}
static void unistringEncode16( const UTF_TEXT &text )
{
    size_t length;
    free( u32_to_u16( (const uint32_t *)text.chars.data(), text.chars.size(), nullptr, &length ) );
}
#endif

static void onTexts( const char *topic, const char *contestant, void ( *func )( const UTF_TEXT &text ) )
{
    static const std::vector<BENCHMARK_SCRIPT> scripts = [] {
        std::vector<BENCHMARK_SCRIPT> all( std::begin( BENCHMARK_SCRIPTS ), std::end( BENCHMARK_SCRIPTS ) );
        all.insert( all.end(), { BENCHMARK_CHINESE, BENCHMARK_EMOJI } );
        return all;
    }();
    for ( const BENCHMARK_SCRIPT &script : scripts ) {
        for ( size_t length : { (size_t)20, (size_t)200, (size_t)1 << 20 } ) {
            std::string name =
                std::string( topic ) + "/" + script.name + ":" + std::to_string( length ) + "/" + contestant;
            benchmark::RegisterBenchmark( name.c_str(), [ &script, length, func ]( benchmark::State &state ) {
                UTF_TEXT text{ benchmarkText( script, length < 1000 ? 4096 : length ), {}, {}, nullptr };
                ZU_STRING *whole = zuUtf8Decode( text.utf8.data(), (ZU_INT)text.utf8.size() );
                text.zus = zuStringCreateFromInner( whole, 0, std::min( (ZU_INT)length, zuStringLength( whole ) ) );
                zuStringRelease( whole );
                text.chars.assign( (const char32_t *)zuStringBacking( text.zus ), (size_t)zuStringLength( text.zus ) );
                ZU_INT units;
                char *utf8 = zuUtf8Encode( text.zus, &units );
                text.utf8.assign( utf8, (size_t)units );
                char16_t *utf16 = zuUtf16Encode( text.zus, &units );
                text.utf16.assign( utf16, (size_t)units );
                zuMemFree( utf8 );
                zuMemFree( utf16 );
                for ( auto _ : state ) {
                    func( text );
                }
                state.SetBytesProcessed( (int64_t)state.iterations() * (int64_t)text.utf8.size() );
                zuStringRelease( text.zus );
            } );
        }
    }
}

int main( int argc, char **argv )
{
    onTexts( "Utf8Test", "zu", zuTest );
    onTexts( "Utf8Decode", "zu", zuDecode8 );
    onTexts( "Utf8Decode", "contract", zuContractDecode8 );
    onTexts( "Utf8Decode", "copy", copyDecode8 );
    onTexts( "Utf8Encode", "zu", zuEncode8 );
    onTexts( "Utf8Encode", "contract", zuContractEncode8 );
    onTexts( "Utf8Encode", "copy", copyEncode8 );
    onTexts( "Utf16Decode", "zu", zuDecode16 );
    onTexts( "Utf16Encode", "zu", zuEncode16 );
#ifdef ZU_BENCHMARK_ICU
    onTexts( "Utf8Decode", "icu", icuDecode8 );
    onTexts( "Utf8Encode", "icu", icuEncode8 );
    onTexts( "Utf16Decode", "icu", icuDecode16 );
    onTexts( "Utf16Encode", "icu", icuEncode16 );
#endif
#ifdef ZU_BENCHMARK_QT
    onTexts( "Utf8Decode", "qt", qtDecode8 );
    onTexts( "Utf8Encode", "qt", qtEncode8 );
#endif
#ifdef ZU_BENCHMARK_UNISTRING
    onTexts( "Utf8Decode", "unistring", unistringDecode8 );
    onTexts( "Utf8Encode", "unistring", unistringEncode8 );
    onTexts( "Utf16Decode", "unistring", unistringDecode16 );
    onTexts( "Utf16Encode", "unistring", unistringEncode16 );
#endif
    return benchmarkRun( argc, argv );
}
