#include "charset_test_support.h"
#include "zu_test_utf8.h"

static constexpr ZU_CHARSET_FLAGS FAIL = ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER;
static constexpr ZU_CHARSET_FLAGS DROP = ZU_CHARSET_FLAG_IGNORE_INVALID_CHARACTERS;
static constexpr ZU_CHARSET_FLAGS KEEP_MARK = ZU_CHARSET_FLAG_IGNORE_BYTE_ORDER_MARK;
static constexpr ZU_CHARSET_FLAGS WRITE_MARK = ZU_CHARSET_FLAG_INSERT_BYTE_ORDER_MARK;
static const std::u32string R = U"\uFFFD";

// What becomes of `bytes` without flags, what is left when invalid input is dropped, and what comes ahead of the first
// fault, where failing must stop.
static void expectDecoded( ZU_CHARSET charset, const Bytes &bytes, const std::u32string &replaced,
                           const std::u32string &dropped, const std::u32string &beforeFault )
{
    EXPECT_EQ( decode( charset, bytes ).text, replaced );
    EXPECT_EQ( decode( charset, bytes, DROP ).text, dropped );
    EXPECT_EQ( decode( charset, bytes, FAIL ), ( Decoded{ beforeFault, replaced != dropped } ) );
    EXPECT_EQ( decode( charset, bytes, FAIL | DROP ), ( Decoded{ dropped, false } ) ) << "dropping wins";
}
static void expectClean( ZU_CHARSET charset, const Bytes &bytes, const std::u32string &text )
{
    expectDecoded( charset, bytes, text, text, text );
}

TEST( CharsetUtf, Decodes )
{
    expectClean( ZU_CHARSET_UTF_8, {}, U"" );
    expectClean( ZU_CHARSET_UTF_8, { 0xC0, 0x80 }, std::u32string( 1, U'\0' ) );
    expectClean( ZU_CHARSET_UTF_8, { 0xED, 0xA0, 0x80 }, std::u32string( 1, char32_t( 0xD800 ) ) );
    expectDecoded( ZU_CHARSET_UTF_8, { 0xF4, 0x90, 0x80, 0x80, 0x41 }, R + U"A", U"A", U"" );
    expectDecoded( ZU_CHARSET_UTF_8, { 0x41, 0xE2, 0x82 }, U"A" + R, U"A", U"A" );
    expectDecoded( ZU_CHARSET_UTF_8, { 0x80, 0x80, 0x41 }, R + U"A", U"A", U"" );
    expectDecoded( ZU_CHARSET_UTF_8, { 0xF8, 0xBF, 0xC3, 0xA9 }, R + U"\u00E9", U"\u00E9", U"" );
    // The byte that breaks a sequence goes with it, and so do the continuations behind it.
    expectDecoded( ZU_CHARSET_UTF_8, { 0xC3, 0x41, 0x42 }, R + U"B", U"B", U"" );
    expectDecoded( ZU_CHARSET_UTF_8, { 0xE2, 0xC3, 0xA9, 0x42 }, R + U"B", U"B", U"" );

    const Bytes marked16 = { 0xFE, 0xFF, 0x00, 0x41 };
    expectClean( ZU_CHARSET_UTF_16, marked16, U"A" );
    expectClean( ZU_CHARSET_UTF_16_BE, marked16, U"\uFEFFA" );
    EXPECT_EQ( decode( ZU_CHARSET_UTF_16, marked16, KEEP_MARK ).text, U"\uFFFE\u4100" );
    expectClean( ZU_CHARSET_UTF_16, { 0xFF, 0xFE, 0x41, 0x00 }, U"A" );
    expectClean( ZU_CHARSET_UTF_16_LE, { 0xFF, 0xFE, 0x41, 0x00 }, U"\uFEFFA" );
    expectClean( ZU_CHARSET_UTF_16, { 0x41, 0x00, 0xFF, 0xFE }, U"A\uFEFF" );
    expectClean( ZU_CHARSET_UTF_16_BE, { 0xD8, 0x3D, 0xDE, 0x00 }, { char32_t( 0xD83D ), char32_t( 0xDE00 ) } );
    expectDecoded( ZU_CHARSET_UTF_16_BE, { 0x00, 0x41, 0x42 }, U"A" + R, U"A", U"A" );

    const Bytes marked32 = { 0x00, 0x00, 0xFE, 0xFF, 0x00, 0x00, 0x00, 0x41 };
    expectClean( ZU_CHARSET_UTF_32, marked32, U"A" );
    expectClean( ZU_CHARSET_UTF_32_BE, marked32, U"\uFEFFA" );
    expectClean( ZU_CHARSET_UTF_32, { 0xFF, 0xFE, 0x00, 0x00, 0x00, 0xF6, 0x01, 0x00 }, U"\U0001F600" );
    expectDecoded( ZU_CHARSET_UTF_32_BE, { 0, 0, 0, 0x41, 0, 0x11, 0, 0, 0, 0, 0, 0x42 }, U"A" + R + U"B", U"AB",
                   U"A" );
    expectDecoded( ZU_CHARSET_UTF_32_LE, { 0x41, 0, 0, 0, 0x42, 0, 0 }, U"A" + R, U"A", U"A" );
}

// A mark at the front is dropped.  What is dropped is no character yet, and neither is dropped rubbish, so that a mark
// behind these is at the front too; a replacement is one.
static Decoded referenceUtf8( const Bytes &bytes, ZU_CHARSET_FLAGS flags )
{
    Decoded result = {};
    for ( char32_t ch : decodeUtf8( bytes, true ) ) {
        result.error = result.error || ( ch == UTF8_FAULT && flags & FAIL );
        if ( result.error || ( ch == UTF8_FAULT && flags & DROP ) ) {
            continue;
        }
        if ( ch != 0xFEFF || !result.text.empty() || flags & KEEP_MARK ) {
            result.text += ch == UTF8_FAULT ? U'\uFFFD' : ch;
        }
    }
    return result;
}

static Bytes randomUtf8( std::mt19937 *random )
{
    Bytes bytes;
    for ( unsigned ahead = ( *random )() % 4; ahead > 0; ahead-- ) {
        const Bytes front = ( *random )() % 4 ? Bytes{ 0xEF, 0xBB, 0xBF } : Bytes{ 0xFF };
        bytes.insert( bytes.end(), front.begin(), front.end() );
    }
    size_t length = ( *random )() % 5000;
    int kind = ( *random )() % 3;
    while ( bytes.size() < length ) {
        if ( kind == 0 || ( *random )() % 50 == 0 ) {
            bytes.push_back( (uint8_t)( *random )() );
            continue;
        }
        ZU_CHAR ch = ( *random )() >> ( *random )() % 32 & 0x1FFFFF;
        ch = kind == 1 ? ch & 0x7F : ch;
        char sequence[ 4 ];
        ZU_INT count = zuCharsConvertToUtf8( sequence, 4, &ch, 1, ZU_FALSE );
        bytes.insert( bytes.end(), sequence, sequence + count );
    }
    return bytes;
}

TEST( CharsetUtf8, DecodesAnyBytesLikeAPlainDecoder )
{
    for ( unsigned seed = 0; seed < 600; seed++ ) {
        std::mt19937 random( seed );
        Bytes bytes = randomUtf8( &random );
        for ( ZU_CHARSET_FLAGS flags : { (ZU_CHARSET_FLAGS)0, FAIL, DROP, KEEP_MARK } ) {
            ASSERT_TRUE( decode( ZU_CHARSET_UTF_8, bytes, flags, Cuts( seed ) ) == referenceUtf8( bytes, flags ) )
                << "seed " << seed << ", flags " << flags;
        }
    }
}

TEST( CharsetUtf, WritesHalfOfEachUtf16Unit )
{
    EXPECT_EQ( encode( ZU_CHARSET_UTF_16, U"A\u20AC" ).bytes, ( Bytes{ 0x41, 0x00, 0xAC, 0x00 } ) );
    EXPECT_EQ( encode( ZU_CHARSET_UTF_16, U"", WRITE_MARK ).bytes, ( Bytes{ 0xFF, 0xFE } ) );
    EXPECT_EQ( encode( ZU_CHARSET_UTF_16_BE, U"A", WRITE_MARK ).bytes, ( Bytes{ 0xFE, 0xFF, 0x00, 0x41 } ) );
    EXPECT_EQ( encode( ZU_CHARSET_UTF_32, U"", WRITE_MARK ).bytes, ( Bytes{ 0xFF, 0xFE, 0x00, 0x00 } ) );
    EXPECT_EQ( encode( ZU_CHARSET_UTF_32_BE, { char32_t( 0x87654321 ) } ).bytes, ( Bytes{ 0x00, 0x65, 0x43, 0x21 } ) );
}

// Where blocks and caches end shows in nothing.
TEST( CharsetUtf, CutsMakeNoDifference )
{
    for ( unsigned seed = 0; seed < 300; seed++ ) {
        std::mt19937 random( seed );
        ZU_CHARSET charset = ZU_CHARSET_UTF_8 + seed % 7;
        ZU_CHARSET_FLAGS flags = seed % 2 ? DROP : 0;
        unsigned rareness = 1 << random() % 10; // of what is no plain character
        std::u32string text;
        for ( size_t i = random() % 3000; i > 0; i-- ) {
            text += random() % rareness ? random() % 0xD800 : random() >> random() % 32;
        }
        Encoded whole = encode( charset, text, flags );
        EXPECT_TRUE( encode( charset, text, flags, Cuts( seed ) ) == whole ) << seed;
        EXPECT_TRUE( decode( charset, whole.bytes, FAIL, Cuts( seed ) ) == decode( charset, whole.bytes, FAIL ) )
            << seed;
    }
}

TEST( CharsetUtf, AFailedSinkLosesWhatItHolds )
{
    for ( ZU_CHARSET charset : { ZU_CHARSET_UTF_8, ZU_CHARSET_UTF_16, ZU_CHARSET_UTF_32, ZU_CHARSET_ISO_8859_1 } ) {
        int writes = 0;
        bool fails = false;
        auto write = [ & ]( const uint8_t *, ZU_INT ) { return writes++, !fails; };
        auto byteSink = zu::byteSink( write );
        auto sink = zu::adopt( zuCharsetCreateCharSink( byteSink.get(), charset, 0 ) );
        EXPECT_TRUE( zuCharSinkWriteChar( sink.get(), U'a' ) );
        fails = true;
        EXPECT_FALSE( zuCharSinkFlush( sink.get() ) );
        fails = false;
        EXPECT_TRUE( zuCharSinkError( sink.get() ) );
        sink = nullptr;
        EXPECT_EQ( writes, 1 ) << charset;
    }
}

TEST( CharsetUtf, AFailedSourceFails )
{
    auto read = []( ZU_OBJ *, uint8_t *, ZU_INT, ZU_INT * ) -> ZU_BOOL { return ZU_FALSE; };
    for ( ZU_CHARSET charset : { ZU_CHARSET_UTF_8, ZU_CHARSET_UTF_16, ZU_CHARSET_UTF_32, ZU_CHARSET_ISO_8859_1 } ) {
        auto byteSource = zu::adopt( zu___ByteSourceCreate( read, nullptr, nullptr ) );
        auto source = zu::adopt( zuCharsetCreateCharSource( byteSource.get(), charset, 0 ) );
        EXPECT_EQ( readAllChars( source.get(), {} ), ( Decoded{ U"", true } ) ) << charset;
    }
}
