// The exact streams against the exact conversions of whole texts, at every cut; what stands in bytes is compared with
// Python's codecs and iconv by way of the command, in tests/tools.

#include "charset_test_support.h"
#include "zu/sys/zu_chars_utf8_shuffle_internal.h"

static constexpr ZU_CHARSET_FLAGS FAIL = ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER;
static constexpr ZU_CHARSET_FLAGS SKIP = ZU_CHARSET_FLAG_IGNORE_INVALID_CHARACTERS;

struct ExactDecoded : Decoded {
    ZU_INT fault;
    bool operator==( const ExactDecoded & ) const = default;
};
static ExactDecoded exactDecode( ZU_CHARSET charset, const Bytes &bytes, ZU_CHARSET_FLAGS flags, Cuts cuts )
{
    struct DATA {
        const Bytes *bytes;
        size_t pos;
        Cuts cuts;
    } data = { &bytes, 0, cuts };
    auto closure = zu::adopt( zu___BoxedPointerCreate( &data, nullptr ) );
    auto read = []( ZU_OBJ *obj, uint8_t *to, ZU_INT max, ZU_INT *count ) -> ZU_BOOL {
        auto *from = (DATA *)zu___BoxedPointerValue( zu___BoxedPointerFrom( obj ) );
        *count = std::min( max, from->cuts.next( from->bytes->size() - from->pos ) );
        std::copy_n( from->bytes->data() + from->pos, *count, to );
        from->pos += (size_t)*count;
        return ZU_TRUE;
    };
    auto byteSource = zu::adopt( zu___ByteSourceCreate( read, nullptr, zu___BoxedPointerObj( closure.get() ) ) );
    auto exact = zu::adopt( zuExactCharSourceCreate( byteSource.get(), charset, flags ) );
    auto source = zu::adopt( zuExactCharSourceCharSource( exact.get() ) );
    ExactDecoded decoded{ readAllChars( source.get(), cuts ), zuExactCharSourceFault( exact.get() ) };
    ZU_CHAR more;
    EXPECT_EQ( zuCharSourceReadChars( source.get(), &more, 1 ), 0 ) << "an end is final";
    return decoded;
}
struct ExactEncoded : Encoded {
    ZU_INT fault;
    bool operator==( const ExactEncoded & ) const = default;
};
static ExactEncoded exactEncode( ZU_CHARSET charset, const std::u32string &text, ZU_CHARSET_FLAGS flags = 0,
                                 Cuts cuts = {} )
{
    auto backend = zu::adopt( zuBufferByteSinkCreate() );
    auto byteSink = zu::adopt( zuBufferByteSinkByteSink( backend.get() ) );
    auto exact = zu::adopt( zuExactCharSinkCreate( byteSink.get(), charset, flags ) );
    auto sink = zu::adopt( zuExactCharSinkCharSink( exact.get() ) );
    for ( size_t pos = 0; pos < text.size(); ) {
        ZU_INT count = cuts.next( text.size() - pos );
        zuCharSinkWriteChars( sink.get(), (const ZU_CHAR *)text.data() + pos, count );
        pos += (size_t)count;
    }
    zuCharSinkFlush( sink.get() );
    auto buffer = zu::adopt( zuBufferByteSinkBuffer( backend.get() ) );
    const uint8_t *begin = zuBufferBacking( buffer.get() );
    return { { Bytes( begin, begin + zuBufferLength( buffer.get() ) ), zuCharSinkError( sink.get() ) != 0 },
             zuExactCharSinkFault( exact.get() ) };
}

TEST( Exact, CutsDoNotMatter )
{
    const std::vector<Bytes> pieces = {
        { 'a' },
        { 'b', 0, 0, 0 },
        { 0xC3, 0xA9 },
        { 0xE2, 0x82, 0xAC },
        { 0xF0, 0x9F, 0x98, 0x80 },
        { 0xF0, 0x9F },
        { 0xE0, 0x80 },
        { 0xED, 0xA0, 0x80 },
        { 0xEF, 0xBB, 0xBF },
        { 0xFF, 0xFE },
        { 0xFE, 0xFF },
        { 0x3D, 0xD8, 0, 0xDE },
        { 0xD8, 0x3D, 0xDE, 0 },
        { 0, 0xD8, 0, 0 },
        { 0, 0xF6, 1, 0 },
        { 0, 1, 0xF6, 0 },
    };
    for ( unsigned seed = 1; seed <= 400; seed++ ) {
        std::mt19937 random( seed );
        zu___charsUtf8Shuffle = std::min( (int)seed % ( ZU___CHARS_UTF8_WIDE + 1 ), zu___CharsUtf8CanShuffle() );
        // Some begin short of the end of the cache.
        Bytes bytes( seed % 4 ? 0 : 4080 + random() % 32, seed % 8 ? 'x' : 0 );
        for ( unsigned count = random() % 24; count > 0; count-- ) {
            const Bytes &piece = pieces[ random() % pieces.size() ];
            bytes.insert( bytes.end(), piece.begin(), piece.end() );
        }
        for ( ZU_CHARSET charset : { ZU_CHARSET_UTF_8, ZU_CHARSET_UTF_16, ZU_CHARSET_UTF_16_BE, ZU_CHARSET_UTF_32,
                                     ZU_CHARSET_UTF_32_BE, ZU_CHARSET_ISO_8859_8 } ) {
            for ( ZU_CHARSET_FLAGS flags : { ZU_CHARSET_FLAGS( 0 ), SKIP, FAIL } ) {
                SCOPED_TRACE( testing::Message() << "seed " << seed << ", set " << charset << ", flags " << flags );
                const ExactDecoded whole = exactDecode( charset, bytes, flags, Cuts() );
                ASSERT_EQ( exactDecode( charset, bytes, flags, Cuts( seed ) ), whole );
                ASSERT_EQ( whole.error, flags == FAIL && whole.fault >= 0 );
                if ( charset == ZU_CHARSET_UTF_8 && flags == 0 ) {
                    const bool marked =
                        bytes.size() > 2 && bytes[ 0 ] == 0xEF && bytes[ 1 ] == 0xBB && bytes[ 2 ] == 0xBF;
                    const char *text = (const char *)bytes.data() + 3 * marked;
                    const ZU_INT length = (ZU_INT)bytes.size() - 3 * marked;
                    const ZU_INT fault = zuUtf8Fault( text, length );
                    ASSERT_EQ( whole.fault, fault < 0 ? fault : fault + 3 * marked );
                    ASSERT_EQ( zu::adopt( zuUtf8Decode( text, length ) ), std::u32string_view( whole.text ) );
                }
                std::u32string text = whole.text;
                text.insert( text.size() / 2, { 0xDC00, 'e', 0x301, 0x110000 } );
                const ExactEncoded encoded = exactEncode( charset, text, flags );
                ASSERT_EQ( exactEncode( charset, text, flags, Cuts( seed ) ), encoded );
                ASSERT_EQ( encoded.error, flags == FAIL );
                const bool has = charset >= ZU_CHARSET_UTF_8; // all that this text has
                ASSERT_TRUE( !has || encoded.fault == (ZU_INT)whole.text.size() / 2 );
                if ( has && flags == 0 ) {
                    const std::u32string replaced =
                        exactDecode( charset, encoded.bytes, ZU_CHARSET_FLAG_IGNORE_BYTE_ORDER_MARK, Cuts() ).text;
                    std::replace( text.begin(), text.end(), U'\xDC00', U'\xFFFD' );
                    std::replace( text.begin(), text.end(), (char32_t)0x110000, U'\xFFFD' );
                    ASSERT_EQ( replaced, text );
                }
            }
        }
    }
    zu___charsUtf8Shuffle = -1;
}
// A failure takes only what it may have cut off.
TEST( Exact, AFailedSourceKeepsWhatCameBefore )
{
    static bool given;
    given = false;
    auto read = []( ZU_OBJ *, uint8_t *bytes, ZU_INT, ZU_INT *count ) -> ZU_BOOL {
        *count = std::exchange( given, true ) ? 0 : 3;
        std::copy_n( "\xFFx\xC3", *count, bytes );
        return ZU_FALSE;
    };
    auto byteSource = zu::adopt( zu___ByteSourceCreate( read, nullptr, nullptr ) );
    auto exact = zu::adopt( zuExactCharSourceCreate( byteSource.get(), ZU_CHARSET_UTF_8, 0 ) );
    auto source = zu::adopt( zuExactCharSourceCharSource( exact.get() ) );
    EXPECT_EQ( readAllChars( source.get(), {} ), ( Decoded{ U"\uFFFDx", true } ) );
    EXPECT_EQ( zuExactCharSourceFault( exact.get() ), 0 );
}
TEST( Exact, SingleByteSetsTakeEquivalents )
{
    struct ROW {
        ZU_CHARSET charset;
        std::u32string text;
        Bytes bytes; // ahead of the fault
        ZU_INT fault;
    };
    for ( const ROW &row : std::vector<ROW>{
              { ZU_CHARSET_ISO_8859_1, U"xe\u0301\u212B", { 'x', 0xE9, 0xC5 }, -1 },
              { ZU_CHARSET_ISO_8859_1, U"\u212Be\u0302\u0301x", { 0xC5, 0xEA }, 3 }, // no letter has both
              { ZU_CHARSET_MSFT_CP1258, U"e\u0301a\u0306\u0301", { 'e', 0xEC, 0xE3, 0xEC }, -1 },
              { ZU_CHARSET_MSFT_CP1258, U"\u1EAD\u1EAF", { 0xE2, 0xF2, 0xE3, 0xEC }, -1 },
              { ZU_CHARSET_MSFT_CP1258, U"a\u0323\u0302e\u0301\u0302", { 0xE2, 0xF2, 'e', 0xEC }, 5 }, // not the \u1EBF
              { ZU_CHARSET_ISO_8859_6, U"\u0627\u064E\u0651\u0654", { 0xC3, 0xEE, 0xF1 }, -1 },
              { ZU_CHARSET_ISO_8859_7, U"\u03B9\u0344e\u0344", { 0xC0, 'e' }, 3 },
              { ZU_CHARSET_ISO_8859_8, U"\u05E9\u05DC\u03B1", { 0xF9, 0xEC }, 2 },
              { ZU_CHARSET_ISO_8859_8, U"\u0301", {}, 0 },
          } ) {
        for ( unsigned seed : { 0, 1, 2, 3 } ) {
            const ExactEncoded encoded = exactEncode( row.charset, row.text, FAIL, seed == 0 ? Cuts() : Cuts( seed ) );
            EXPECT_EQ( encoded, ( ExactEncoded{ { row.bytes, row.fault >= 0 }, row.fault } ) ) << row.charset;
        }
    }
    ZU_INT fault;
    auto text = zu::adopt( zuStringCreateFromUtf8( "α", -1 ) );
    EXPECT_EQ( zuExactCharSinkStringToBuffer( text.get(), ZU_CHARSET_ISO_8859_8, FAIL, &fault ), nullptr );
    EXPECT_EQ( fault, 0 );
    auto bytes = zu::adopt( zuBufferCreateFromBytesCopy( (const uint8_t *)"\xE0\xFF", 2 ) );
    EXPECT_EQ( zu::adopt( zuExactCharSourceBufferToString( bytes.get(), ZU_CHARSET_ISO_8859_8, SKIP, &fault ) ),
               std::u32string_view( U"\u05D0" ) );
    EXPECT_EQ( fault, 1 );
}
