// Against the rows of the standard's table of well-formed sequences, read as they stand there.

#include "zu/base/zu_utf.h"

#include "zu_test_utf8.h"

// Table 3-7: the ranges of each byte of a sequence
using ROW = std::vector<std::pair<int, int>>;
static const std::vector<ROW> ROWS = {
    { { 0x00, 0x7F } },
    { { 0xC2, 0xDF }, { 0x80, 0xBF } },
    { { 0xE0, 0xE0 }, { 0xA0, 0xBF }, { 0x80, 0xBF } },
    { { 0xE1, 0xEC }, { 0x80, 0xBF }, { 0x80, 0xBF } },
    { { 0xED, 0xED }, { 0x80, 0x9F }, { 0x80, 0xBF } },
    { { 0xEE, 0xEF }, { 0x80, 0xBF }, { 0x80, 0xBF } },
    { { 0xF0, 0xF0 }, { 0x90, 0xBF }, { 0x80, 0xBF }, { 0x80, 0xBF } },
    { { 0xF1, 0xF3 }, { 0x80, 0xBF }, { 0x80, 0xBF }, { 0x80, 0xBF } },
    { { 0xF4, 0xF4 }, { 0x80, 0x8F }, { 0x80, 0xBF }, { 0x80, 0xBF } },
};
struct DECODED {
    std::u32string text;
    ZU_INT fault = -1;
};
static DECODED decodeByTable( const std::string &bytes )
{
    DECODED decoded;
    for ( size_t pos = 0; pos < bytes.size(); ) {
        size_t longest = 0;
        bool whole = false;
        for ( const ROW &row : ROWS ) {
            size_t count = 0;
            while ( count < row.size() && pos + count < bytes.size() &&
                    (uint8_t)bytes[ pos + count ] >= row[ count ].first &&
                    (uint8_t)bytes[ pos + count ] <= row[ count ].second ) {
                count++;
            }
            longest = std::max( longest, count );
            whole |= count == row.size();
        }
        if ( !whole ) {
            decoded.fault = decoded.fault < 0 ? (ZU_INT)pos : decoded.fault;
            decoded.text += U'\uFFFD';
        } else {
            static constexpr int LEAD_BITS[] = { 0, 7, 5, 4, 3 };
            char32_t ch = (uint8_t)bytes[ pos ] & ( ( 1 << LEAD_BITS[ longest ] ) - 1 );
            for ( size_t i = 1; i < longest; i++ ) {
                ch = ch << 6 | ( (uint8_t)bytes[ pos + i ] & 0x3F );
            }
            decoded.text += ch;
        }
        pos += std::max<size_t>( longest, 1 );
    }
    return decoded;
}
static void expectDecoded( const std::string &bytes )
{
    const DECODED expected = decodeByTable( bytes );
    const ZU_INT length = (ZU_INT)bytes.size();
    ASSERT_EQ( zuUtf8Fault( bytes.data(), length ), expected.fault );
    ASSERT_EQ( zu::adopt( zuUtf8Decode( bytes.data(), length ) ), std::u32string_view( expected.text ) );
    ZU_INT fault;
    zu::Ref<ZU_STRING> decoded = zu::adopt( zuUtf8TryDecode( bytes.data(), length, &fault ) );
    ASSERT_EQ( fault, expected.fault );
    ASSERT_EQ( decoded != nullptr, fault < 0 );
    if ( decoded ) {
        ASSERT_TRUE( zuUtf8Equals( decoded.get(), bytes.data(), length ) );
        ZU_INT encodedLength;
        char *encoded = zuUtf8TryEncode( decoded.get(), &encodedLength, nullptr );
        ASSERT_EQ( std::string( encoded, (size_t)encodedLength ), bytes );
        zuMemFree( encoded );
    }
}

class Utf : public WithVectors {};
INSTANTIATE_TEST_SUITE_P( Shuffling, Utf, ALL_VECTORS );

TEST_P( Utf, DecodesEverySequenceAsTheTable )
{
    // The bytes at which the ranges of the table begin and end
    const std::string bytes(
        "\x00\x41\x7F\x80\x8F\x90\x9F\xA0\xBF\xC0\xC1\xC2\xDF\xE0\xE1\xEC\xED\xEE\xEF\xF0\xF1\xF3\xF4\xF5\xFF", 25 );
    for ( char a : bytes ) {
        for ( char b : bytes ) {
            for ( char c : bytes ) {
                expectDecoded( { a, b, c } );
                for ( char d : bytes ) {
                    expectDecoded( { a, b, c, d } );
                }
            }
        }
    }
    // Every sequence of up to three bytes, across the vectors of a block
    for ( int abc = 0; abc < 0x1000000; abc += abc % 0x10000 == 0 && abc >= 0x800000 && abc < 0xC20000 ? 0x10000 : 1 ) {
        const std::string sequence = { (char)( abc >> 16 ), (char)( abc >> 8 ), (char)abc };
        std::string text( 96, 'x' );
        text.replace( 61, 3, sequence );
        const ZU_INT fault = decodeByTable( sequence ).fault;
        ASSERT_EQ( zuUtf8Fault( text.data(), 96 ), fault < 0 ? fault : fault + 61 ) << abc;
    }
    // Whatever stands ahead and behind
    for ( const char *fill : { "a", "é", "€", "😀" } ) {
        for ( int ahead = 0; ahead < 70; ahead++ ) {
            for ( const char *sequence :
                  { "\xE2\x82\xAC", "\xF0\x9F\x98", "\xC3", "\xED\xA0\x80", "\xF0\x9F\x98\x80", "\xBF" } ) {
                std::string text( (size_t)( ahead % 4 ), 'a' );
                for ( int i = 0; i < 140; i++ ) {
                    text += i == ahead ? sequence : fill;
                }
                expectDecoded( text );
                expectDecoded( text.substr( 0, text.find( sequence ) + strlen( sequence ) ) );
            }
        }
    }
}
TEST_P( Utf, EncodesEveryCodePointButSurrogates )
{
    for ( ZU_CHAR ch = 0; ch < 0x110000; ch++ ) {
        const bool surrogate = ch >= 0xD800 && ch < 0xE000;
        // Alone, and where vectors go
        std::u32string chars( ch % 3 ? 2 : 40, U'a' );
        chars[ 1 ] = ch;
        zu::Ref<ZU_STRING> text = zu::text( std::u32string_view( chars ) );
        ZU_INT length8, length16, fault8, fault16;
        char *utf8 = zuUtf8TryEncode( text.get(), &length8, &fault8 );
        char16_t *utf16 = zuUtf16TryEncode( text.get(), &length16, &fault16 );
        ZU_INT fault32;
        ZU_CHAR *utf32 = zuUtf32TryEncode( text.get(), nullptr, &fault32 );
        ASSERT_EQ( zuUtfStringFault( text.get() ), surrogate ? 1 : -1 );
        ASSERT_EQ( fault8, surrogate ? 1 : -1 );
        ASSERT_EQ( fault16, fault8 );
        ASSERT_EQ( fault32, fault8 );
        ASSERT_EQ( utf8 == nullptr && utf16 == nullptr && length8 == 0 && length16 == 0, surrogate );
        if ( !surrogate ) {
            ASSERT_EQ( zu::adopt( zuUtf8TryDecode( utf8, length8, nullptr ) ), text );
            ASSERT_EQ( zu::adopt( zuUtf16TryDecode( utf16, ch == 0 ? length16 : -1, nullptr ) ), text );
            ASSERT_EQ( zu::adopt( zuUtf32TryDecode( utf32, ch == 0 ? (ZU_INT)chars.size() : -1, nullptr ) ), text );
        }
        zuMemFree( utf8 );
        zuMemFree( utf16 );
        zuMemFree( utf32 );
    }
}
TEST_P( Utf, JoinsPairsAndReplacesWhatIsAlone )
{
    const char16_t units[] = { 0xDE00, 0xD83D, 0xDE00, 0xD83D, 'a', 0xD83D, 0xD83D, 0xDE00, 0xD83D };
    ZU_INT fault;
    EXPECT_EQ( zu::adopt( zuUtf16Decode( units, 9 ) ),
               std::u32string_view( U"\uFFFD\U0001F600\uFFFDa\uFFFD\U0001F600\uFFFD" ) );
    EXPECT_FALSE( zu::adopt( zuUtf16TryDecode( units + 1, 8, &fault ) ) );
    EXPECT_EQ( fault, 2 );
    EXPECT_EQ( zuUtf16Fault( units + 1, 2 ), -1 );
    const ZU_CHAR lone[] = { 'a', 0xDC00, 0xD83D, 0xDE00 };
    zu::Ref<ZU_STRING> text = zu::adopt( zuStringCreateFromCharsCopy( lone, 4 ) );
    ZU_INT length;
    char *utf8 = zuUtf8Encode( text.get(), &length );
    char16_t *utf16 = zuUtf16Encode( text.get(), nullptr );
    EXPECT_EQ( std::string( utf8 ), "a\uFFFD\uFFFD\uFFFD" );
    EXPECT_EQ( length, 10 );
    EXPECT_EQ( std::u16string( utf16 ), u"a\uFFFD\uFFFD\uFFFD" );
    const ZU_CHAR large[] = { 'a', 0xDC00, 0xD83D, 0x110000, UINT32_MAX, 0 };
    ZU_CHAR *utf32 = zuUtf32Encode( text.get(), nullptr );
    zu::Ref<ZU_STRING> replaced = zu::adopt( zuUtf32Decode( utf32, -1 ) );
    zuUtf32Append( replaced.inOut(), large + 1, -1 );
    EXPECT_EQ( replaced, std::u32string_view( U"a\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD" ) );
    EXPECT_EQ( zuUtf32Fault( large, 4 ), 1 );
    EXPECT_FALSE( zuUtf32TryAppend( replaced.inOut(), large, 4, &fault ) );
    for ( int i = 0; i < 5; i++ ) { // its own text
        EXPECT_TRUE( zuUtf32TryAppend( replaced.inOut(), zuStringBacking( replaced.get() ),
                                       zuStringLength( replaced.get() ), nullptr ) );
    }
    EXPECT_EQ( zuStringLength( replaced.get() ), 8 << 5 );
    EXPECT_EQ( zuStringCharAt( replaced.get(), 8 * 31 ), 'a' );
    zuMemFree( utf8 );
    zuMemFree( utf16 );
    zuMemFree( utf32 );
}
TEST_P( Utf, AppendsAndFinds )
{
    zu::Ref<ZU_STRING> text = zu::text( "a" );
    EXPECT_FALSE( zuUtf8TryAppend( text.inOut(), "b\xFF", -1, nullptr ) );
    EXPECT_TRUE( zuUtf8TryAppend( text.inOut(), "\U0001F600x", -1, nullptr ) );
    EXPECT_TRUE( zuUtf16TryAppend( text.inOut(), u"\U0001F600", -1, nullptr ) );
    zuUtf8Append( text.inOut(), "\xC3", 1 );
    zuUtf16Append( text.inOut(), u"", 0 );
    EXPECT_EQ( text, std::u32string_view( U"a\U0001F600x\U0001F600\uFFFD" ) );
    EXPECT_EQ( zuUtf8Find( text.get(), 0, "\U0001F600", -1 ), 1 );
    EXPECT_EQ( zuUtf8Find( text.get(), 2, "\U0001F600", -1 ), 3 );
    EXPECT_EQ( zuUtf8Find( text.get(), 4, "\U0001F600", -1 ), -1 );
    EXPECT_EQ( zuUtf8Find( text.get(), 0, "x\U0001F600\uFFFDy", -1 ), -1 );
    EXPECT_FALSE( zuUtf8Equals( text.get(), "a", -1 ) );
    expectAbort( "zuUtf8Fault( sub, length ) == -1", [ & ] { zuUtf8Find( text.get(), 0, "\xC3", 1 ); } );
    expectAbort( "src || srcLength == 0", [] { zuUtf8Fault( nullptr, 1 ); } );
}
