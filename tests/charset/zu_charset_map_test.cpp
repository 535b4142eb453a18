#include "charset_test_support.h"

static constexpr ZU_CHARSET_FLAGS FAIL = ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER;
static constexpr ZU_CHARSET_FLAGS DROP = ZU_CHARSET_FLAG_IGNORE_INVALID_CHARACTERS;

TEST( CharsetMap, FailsAtWhatTheSetLacks )
{
    EXPECT_EQ( encode( ZU_CHARSET_ASCII, U"a\u00E9bcd", FAIL ), ( Encoded{ Bytes(), true } ) );
    // What only a flush settles ends the text without a failure.
    EXPECT_EQ( encode( ZU_CHARSET_ASCII, U"a\u00E9b", FAIL ), ( Encoded{ { 'a' }, false } ) );
    EXPECT_EQ( decode( ZU_CHARSET_ISO_8859_8, { 0xE0 } ).text, U"\u03B0" ) << "by its neighbour's table";
}

TEST( CharsetMap, HoldsBackWhatMayStillCompose )
{
    auto backend = zu::adopt( zuBufferByteSinkCreate() );
    auto byteSink = zu::adopt( zuBufferByteSinkByteSink( backend.get() ) );
    auto sink = zu::adopt( zu___CharsetMapCharSinkCreate( byteSink.get(), 0, zu___CharsetIso8859_1MapCharToByte ) );
    auto arrived = [ &backend ] {
        return zuBufferLength( zu::adopt( zuBufferByteSinkBuffer( backend.get() ) ).get() );
    };
    std::vector<ZU_CHAR> text( 1025, U'x' );
    EXPECT_TRUE( zuCharSinkWriteChars( sink.get(), text.data(), 1025 ) );
    EXPECT_EQ( arrived(), 0 ) << "two characters are not settled";
    EXPECT_TRUE( zuCharSinkWriteChar( sink.get(), U'y' ) );
    EXPECT_EQ( arrived(), 1024 ) << "the cache is full";
    sink = nullptr; // flushes
    EXPECT_EQ( arrived(), 2 );
}

// A character that the set lacks ends the text that was settled with it.  It is no failure if a full cache has gone out
// before it.
TEST( CharsetMap, FailsOnlyAheadOfAFullCache )
{
    auto write = []( ZU_INT before, ZU_INT after ) {
        std::u32string text =
            std::u32string( (size_t)before, U'a' ) + U'\u20AC' + std::u32string( (size_t)after, U'b' );
        return encode( ZU_CHARSET_ISO_8859_1, text, FAIL );
    };
    EXPECT_EQ( write( 1023, 10 ), ( Encoded{ Bytes(), true } ) );
    Bytes bytes( 1024, 'a' );
    bytes.insert( bytes.end(), 2, 'b' ); // which the flush alone has settled
    EXPECT_EQ( write( 1024, 10 ), ( Encoded{ bytes, false } ) );
}

struct MapFuncs {
    ZU___CHARSET_MAP_CHAR_TO_BYTE_FUNC charToByte;
    ZU___CHARSET_MAP_BYTE_TO_CHAR_FUNC byteToChar;
};
#define FUNCS( name ) { zu___Charset##name##MapCharToByte, zu___Charset##name##MapByteToChar },
static const MapFuncs MAPS[] = { ZU___CHARSET_MAPS( FUNCS ) };
#undef FUNCS

static std::u32string composed( const std::u32string &text )
{
    auto normalizer = zu::adopt( zuUnicodeNormalizerCreate( ZU_UNICODE_NORMAL_FORM_NFC ) );
    std::vector<ZU_CHAR> chars( text.begin(), text.end() );
    zuUnicodeNormalizerWriteChars( normalizer.get(), chars.data(), (ZU_INT)chars.size() );
    zuUnicodeNormalizerFlush( normalizer.get() );
    std::vector<ZU_CHAR> result( (size_t)zuUnicodeNormalizerReadable( normalizer.get() ) );
    zuUnicodeNormalizerReadChars( normalizer.get(), result.data(), (ZU_INT)result.size() );
    return std::u32string( result.begin(), result.end() );
}

// All sets, over any cuts, against their functions one by one.
TEST( CharsetMap, MapsAnyTextLikeTheFunctions )
{
    for ( unsigned seed = 0; seed < 440; seed++ ) {
        std::mt19937 random( seed );
        ZU_CHARSET charset = seed % ZU_CHARSET_UTF_8;
        const MapFuncs &map = MAPS[ charset == ZU_CHARSET_ISO_8859_8 ? ZU_CHARSET_ISO_8859_7 : charset ];
        unsigned rareness = 1 << random() % 10; // of characters that the set may lack
        Bytes bytes( random() % 3000 );
        std::u32string text;
        Decoded decoded[] = { {}, {}, {} }; // replaced, dropped, up to the first fault
        for ( uint8_t &byte : bytes ) {
            byte = (uint8_t)( random() % 3 ? random() % 0x80 : random() );
            ZU_CHAR ch = U'\uFFFD';
            bool defined = map.byteToChar( byte, &ch );
            decoded[ 0 ].text += ch;
            decoded[ 1 ].text += defined ? std::u32string( 1, ch ) : U"";
            decoded[ 2 ].error = decoded[ 2 ].error || !defined;
            decoded[ 2 ].text += decoded[ 2 ].error ? U"" : std::u32string( 1, ch );
            text += random() % rareness ? ch : random() >> random() % 32 & 0x1FFFF;
        }
        Encoded encoded[] = { {}, {} };
        for ( char32_t ch : composed( text ) ) {
            uint8_t byte;
            bool has = map.charToByte( ch, &byte );
            ASSERT_TRUE( has || map.charToByte( U'?', &byte ) );
            encoded[ 0 ].bytes.push_back( byte );
            encoded[ 1 ].bytes.insert( encoded[ 1 ].bytes.end(), has, byte );
        }
        for ( int i = 0; i < 3; i++ ) {
            ZU_CHARSET_FLAGS flags = i == 0 ? 0 : i == 1 ? DROP : FAIL;
            EXPECT_TRUE( decode( charset, bytes, flags, Cuts( seed ) ) == decoded[ i ] ) << seed << " " << flags;
            EXPECT_TRUE( i == 2 || encode( charset, text, flags, Cuts( seed ) ) == encoded[ i ] )
                << seed << " " << flags;
        }
    }
}

// A set of somebody else's may have any characters, also beyond the BMP.
TEST( CharsetMap, TakesAnyFunction )
{
    auto backend = zu::adopt( zuBufferByteSinkCreate() );
    auto byteSink = zu::adopt( zuBufferByteSinkByteSink( backend.get() ) );
    auto map = []( ZU_CHAR ch, uint8_t *byteOut ) -> ZU_BOOL {
        *byteOut = (uint8_t)( ch / 0x1000 );
        return ch == U'a' || ch > 0x10000;
    };
    auto sink = zu::adopt( zu___CharsetMapCharSinkCreate( byteSink.get(), 0, map ) );
    const std::vector<ZU_CHAR> text = { U'a', U'b', 0x1F600, U'a', 0x1F600, 0xFFFD };
    EXPECT_TRUE( zuCharSinkWriteChars( sink.get(), text.data(), 6 ) );
    EXPECT_TRUE( zuCharSinkFlush( sink.get() ) );
    auto buffer = zu::adopt( zuBufferByteSinkBuffer( backend.get() ) );
    ASSERT_EQ( zuBufferLength( buffer.get() ), 6 );
    EXPECT_EQ( memcmp( zuBufferBacking( buffer.get() ), "\0\0\x1F\0\x1F\0", 6 ), 0 ) << "no replacement is there";
}
