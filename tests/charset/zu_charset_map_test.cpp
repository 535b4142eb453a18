#include "charset_test_support.h"

static constexpr ZU_CHARSET_FLAGS FAIL = ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER;
static constexpr ZU_CHARSET_FLAGS DROP = ZU_CHARSET_FLAG_IGNORE_INVALID_CHARACTERS;

static Bytes asBytes( const std::string &text )
{
    return Bytes( text.begin(), text.end() );
}

TEST( CharsetMap, WritesWhatTheSetHas )
{
    EXPECT_EQ( encode( ZU_CHARSET_ISO_8859_1, U"e\u0301" ).bytes, ( Bytes{ 0xE9 } ) ) << "composed on the way";
    EXPECT_EQ( encode( ZU_CHARSET_ISO_8859_1, U"\u20AC" ).bytes, asBytes( "?" ) );
    EXPECT_EQ( encode( ZU_CHARSET_MSFT_CP500, U"\u20AC" ).bytes, ( Bytes{ 0x6F } ) ) << "its own question mark";
    EXPECT_EQ( encode( ZU_CHARSET_ASCII, U"a\u00E9b" ).bytes, asBytes( "a?b" ) );
    EXPECT_EQ( encode( ZU_CHARSET_ASCII, U"a\u00E9b", DROP ).bytes, asBytes( "ab" ) );
    EXPECT_EQ( encode( ZU_CHARSET_ASCII, U"a\u00E9bcd", FAIL ), ( Encoded{ Bytes(), true } ) );
    // What only a flush settles ends the text without a failure.
    EXPECT_EQ( encode( ZU_CHARSET_ASCII, U"a\u00E9b", FAIL ), ( Encoded{ asBytes( "a" ), false } ) );
    EXPECT_EQ( encode( ZU_CHARSET_MSFT_CP875, U"\u001A" ).bytes, ( Bytes{ 0x3F } ) ) << "the lowest of seven";
    EXPECT_EQ( encode( ZU_CHARSET_ISO_8859_8, U"\u05D0\u03B1" ).bytes, ( Bytes{ '?', 0xE1 } ) )
        << "by its neighbour's table";
}

TEST( CharsetMap, ReadsWhatTheSetDefines )
{
    EXPECT_EQ( decode( ZU_CHARSET_ASCII, { 'a', 0x80, 'b' } ).text, U"a\uFFFDb" );
    EXPECT_EQ( decode( ZU_CHARSET_ASCII, { 'a', 0x80, 'b' }, DROP ).text, U"ab" );
    EXPECT_EQ( decode( ZU_CHARSET_ASCII, { 'a', 0x80, 'b' }, FAIL ), ( Decoded{ U"a", true } ) );
    EXPECT_EQ( decode( ZU_CHARSET_MSFT_CP1252, { 0x80, 0x81 } ).text, U"\u20AC\uFFFD" );
    EXPECT_EQ( decode( ZU_CHARSET_MSFT_CP864, { 0x25 } ).text, U"\u066A" );
    EXPECT_EQ( decode( ZU_CHARSET_ISO_8859_8, { 0xE0 } ).text, decode( ZU_CHARSET_ISO_8859_7, { 0xE0 } ).text );
    EXPECT_EQ( decode( ZU_CHARSET_ISO_8859_1, { 'e', 0xFF } ).text, U"e\u00FF" );
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

TEST( CharsetMap, AllBytesComeBackOverAnyCuts )
{
    for ( ZU_CHARSET charset = ZU_CHARSET_ASCII; charset < ZU_CHARSET_UTF_8; charset++ ) {
        // All bytes but those of characters that normalizing exchanges or moves
        Bytes stable;
        for ( int byte = 0; byte < 256; byte++ ) {
            std::u32string text = decode( charset, { (uint8_t)byte } ).text;
            if ( encode( charset, text ).bytes == Bytes{ (uint8_t)byte } && zuUnicodeCccv( text[ 0 ] ) == 0 ) {
                stable.push_back( (uint8_t)byte );
            }
        }
        EXPECT_GE( stable.size(), 128u ) << charset;
        std::mt19937 random( (unsigned)charset );
        Bytes bytes( 3000 );
        for ( uint8_t &byte : bytes ) {
            byte = stable[ random() % stable.size() ];
        }
        Decoded decoded = decode( charset, bytes, FAIL, Cuts( 1 ) );
        EXPECT_FALSE( decoded.error );
        EXPECT_TRUE( encode( charset, decoded.text, FAIL, Cuts( 2 ) ) == ( Encoded{ bytes, false } ) ) << charset;
    }
}

TEST( CharsetMapAborts, NullArguments )
{
    expectAbort( "charOut", [] { zu___CharsetKoi8RMapByteToChar( 0, nullptr ); } );
    expectAbort( "byteOut", [] { zu___CharsetKoi8RMapCharToByte( 0, nullptr ); } );
    expectAbort( "charOut", [] { zu___CharsetAsciiMapByteToChar( 0, nullptr ); } );
    expectAbort( "byteSink", [] { zu___CharsetMapCharSinkCreate( nullptr, 0, zu___CharsetAsciiMapCharToByte ); } );
}
