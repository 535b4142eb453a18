// Stores as text and in binary, beside a plain tree and a reader of lines that does each step as it is told.

#include "zu_test_support.h"

using STORE = zu::Ref<ZU_STORE>;
using BUFFER = zu::Ref<ZU_BUFFER>;
typedef std::vector<std::u32string> LINES;

struct TREE {
    std::map<std::u32string, std::u32string> values;
    std::map<std::u32string, TREE> stores;

    bool operator==( const TREE &other ) const
    {
        return values == other.values && stores == other.stores;
    }
};

static STORE storeOf( const TREE &tree )
{
    STORE store = zu::adopt( zuStoreCreate() );
    for ( const auto &[ address, value ] : tree.values ) {
        zuStoreSetValue( store.inOut(), zu::text( address ).get(), zu::text( value ).get() );
    }
    for ( const auto &[ address, sub ] : tree.stores ) {
        zuStoreSetStore( store.inOut(), zu::text( address ).get(), storeOf( sub ).get() );
    }
    return store;
}

// Models of both forms and of the reader
static const char32_t DIGITS[] = U"0123456789abcdef";
static std::u32string modelEscape( const std::u32string &value )
{
    std::u32string text;
    for ( char32_t ch : value ) {
        if ( zuUnicodeIsOtherControl( ch ) ) {
            text += std::u32string( U"%0000" ) + DIGITS[ ch / 16 ] + DIGITS[ ch % 16 ];
        } else {
            text += ch == '%' ? U"%%" : std::u32string( 1, ch );
        }
    }
    return text;
}
static void modelWrite( const TREE &tree, const std::u32string &prefix, LINES *lines )
{
    for ( const auto &[ address, value ] : tree.values ) {
        lines->push_back( prefix + address + U"=" + modelEscape( value ) );
    }
    for ( const auto &[ address, sub ] : tree.stores ) {
        if ( sub == TREE() ) {
            lines->push_back( prefix + address + U"." );
        }
        modelWrite( sub, prefix + address + U".", lines );
    }
}
static std::u32string modelUnescape( const std::u32string &text )
{
    std::u32string value;
    for ( size_t i = 0; i < text.size(); i++ ) {
        ZU_INT number;
        ZU_INT consumed;
        if ( text.compare( i, 2, U"%%" ) == 0 ) {
            value += text[ i++ ];
        } else if ( text[ i ] == '%' && i + 6 < text.size() &&
                    zuFormatTryDecodeInt( zu::text( text ).get(), (ZU_INT)i + 1, 6, 16, &number, &consumed ) &&
                    consumed == 6 && number >= 0 && number <= 0x10FFFF ) {
            value += (char32_t)number;
            i += 6;
        } else {
            value += text[ i ];
        }
    }
    return value;
}
static TREE modelRead( const LINES &lines, int depth )
{
    TREE tree;
    std::map<std::u32string, LINES> subs;
    for ( const std::u32string &line : depth < 100 ? lines : LINES() ) {
        size_t at = line.find_first_of( U"=." );
        zu::Ref<ZU_STRING> address = zu::text( line.substr( 0, at == line.npos ? 0 : at ) );
        zuStringTrim( address.inOut() );
        if ( !zuStoreAddressOk( address.get() ) ) {
            continue;
        }
        std::u32string key( zu::view( address ) );
        std::u32string rest = line.substr( at + 1 );
        if ( line[ at ] == '=' ) {
            tree.values[ key ] = modelUnescape( rest );
        } else {
            subs[ key ].push_back( rest );
        }
    }
    for ( const auto &[ key, rest ] : subs ) {
        tree.stores[ key ] = modelRead( rest, depth + 1 );
    }
    return tree;
}
static void modelEncode( const TREE &tree, ZU_ENCODER *enc )
{
    std::map<std::u32string, bool> addresses;
    for ( const auto &each : tree.values ) {
        addresses[ each.first ];
    }
    for ( const auto &each : tree.stores ) {
        addresses[ each.first ];
    }
    zuEncoderEncodeInt( enc, (ZU_INT)addresses.size() );
    for ( const auto &[ address, unused ] : addresses ) {
        auto value = tree.values.find( address );
        auto sub = tree.stores.find( address );
        zuEncoderEncodeString( enc, zu::text( address ).get() );
        zuEncoderEncodeOptionalString( enc, value == tree.values.end() ? nullptr : zu::text( value->second ).get() );
        zuEncoderEncodeBool( enc, sub != tree.stores.end() );
        if ( sub != tree.stores.end() ) {
            modelEncode( sub->second, enc );
        }
    }
}

static zu::Ref<ZU_VECTOR> vectorOf( const LINES &lines )
{
    zu::Ref<ZU_VECTOR> vec = zu::adopt( zuVectorCreate() );
    for ( const std::u32string &line : lines ) {
        zuVectorAppendString( vec.inOut(), zu::text( line ).get() );
    }
    return vec;
}
static LINES linesOf( ZU_STORE *store )
{
    LINES lines;
    for ( ZU_STRING *line : zu::items<ZU_STRING>( zu::adopt( zuStoreTextEncodeToStringVector( store ) ) ) ) {
        lines.emplace_back( zu::view( line ) );
    }
    return lines;
}
static BUFFER textOf( const LINES &lines )
{
    std::u32string text;
    for ( const std::u32string &line : lines ) {
        text += line + U"\n";
    }
    return zu::adopt( zuCharsetStringToBuffer( ZU_CHARSET_UTF_8, zu::text( text ).get() ) );
}
static STORE readText( const BUFFER &text )
{
    return zu::adopt( zuStoreTextTryDecodeFromBuffer( text.get(), ZU_CHARSET_UTF_8, 0, ZU_NLF_FLAG_LF ) );
}

class StoreForms : public testing::Test {
protected:
    SeededRandom random;

    std::u32string anyOf( const std::vector<std::u32string> &pieces, size_t most )
    {
        std::u32string text;
        for ( size_t i = random.below( most ); i > 0; i-- ) {
            text += pieces[ random.below( pieces.size() ) ];
        }
        return text;
    }
    std::u32string anyValue()
    {
        using namespace std::string_literals;
        static const std::vector<std::u32string> PIECES = { U"a",       U"=",          U".",       U" ",
                                                            U"%",       U"%%",         U"é",       U"\x85",
                                                            U"\t",      U"\U0010FFFF", U"\0"s,     U"xxxxxxxxxxxxxxxx",
                                                            U"%000041", U"%10ffff",    U"%110000", U"%00004",
                                                            U"%-00041", U"% 0041" };
        return anyOf( PIECES, random.below( 3 ) ? 4 : 12 );
    }
    std::u32string anyAddress()
    {
        static const std::vector<std::u32string> PIECES = { U"a", U"b", U"c", U"-", U"Z9" };
        return PIECES[ random.below( 5 ) ] + anyOf( PIECES, 3 );
    }
    LINES anyLines()
    {
        static const std::vector<std::u32string> PIECES = { U"a",    U"b",      U"ab", U".", U".", U"a.",
                                                            U"b.a.", U"=",      U"=",  U" ", U"%", U"%00000a",
                                                            U"é",    U"\u3000", U"-_", U"#" };
        LINES lines( random.below( 25 ) );
        for ( std::u32string &line : lines ) {
            line = anyOf( PIECES, 12 );
        }
        return lines;
    }
    TREE anyTree( int depth )
    {
        TREE tree;
        for ( size_t i = random.below( 8 ); i > 0; i-- ) {
            tree.values[ anyAddress() ] = anyValue();
        }
        for ( size_t i = depth > 0 ? random.below( 4 ) : 0; i > 0; i-- ) {
            tree.stores[ anyAddress() ] = anyTree( depth - 1 );
        }
        return tree;
    }
    // Appends the entries of `tree` in any order, some of them twice, and some that the later one replaces.
    void encodeShuffled( const TREE &tree, ZU_ENCODER *enc )
    {
        std::vector<std::pair<std::u32string, int>> entries; // 0: value, 1: sub-store, 2: a value that is replaced
        for ( const auto &each : tree.values ) {
            entries.emplace_back( each.first, 0 );
        }
        for ( const auto &each : tree.stores ) {
            entries.emplace_back( each.first, 1 );
        }
        std::shuffle( entries.begin(), entries.end(), random );
        for ( size_t i = tree.values.empty() ? 0 : random.below( 5 ); i > 0; i-- ) {
            entries.insert( entries.begin(), { tree.values.begin()->first, 2 } );
        }
        entries.insert( entries.begin(), { U"nothing", 3 } );
        zuEncoderEncodeInt( enc, (ZU_INT)entries.size() );
        for ( const auto &[ address, kind ] : entries ) {
            zuEncoderEncodeString( enc, zu::text( address ).get() );
            zu::Ref<ZU_STRING> value = kind == 0 ? zu::text( tree.values.at( address ) ) : zu::text( address );
            zuEncoderEncodeOptionalString( enc, kind == 0 || kind == 2 ? value.get() : nullptr );
            zuEncoderEncodeBool( enc, kind == 1 );
            if ( kind == 1 ) {
                encodeShuffled( tree.stores.at( address ), enc );
            }
        }
    }
};

TEST_F( StoreForms, TextIsReadForgivingly )
{
    for ( int round = 0; round < 1500; round++ ) {
        LINES lines = anyLines();
        STORE wanted = storeOf( modelRead( lines, 0 ) );
        zu::Ref<ZU_VECTOR> vec = vectorOf( lines );
        zu::Ref<ZU_VECTOR> before = zu::adopt( zuVectorCreateFrom( vec.get() ) );
        BUFFER text = textOf( lines );
        ASSERT_EQ( zu::adopt( zuStoreTextDecodeFromStringVector( vec.get() ) ), wanted )
            << testing::PrintToString( lines );
        ASSERT_EQ( readText( text ), wanted ) << testing::PrintToString( lines );
        ASSERT_EQ( vec, vectorOf( lines ) );
    }
}
TEST_F( StoreForms, RoundTrips )
{
    for ( int round = 0; round < 500; round++ ) {
        TREE tree = anyTree( (int)random.below( 5 ) );
        STORE store = storeOf( tree );
        LINES lines;
        modelWrite( tree, U"", &lines );
        ASSERT_EQ( linesOf( store.get() ), lines );
        BUFFER text = zu::adopt( zuStoreTextTryEncodeToBuffer( store.get(), ZU_CHARSET_UTF_8, 0, ZU_NLF_FLAG_LF ) );
        ASSERT_EQ( text, textOf( lines ) );
        ASSERT_EQ( readText( text ), store );
        std::shuffle( lines.begin(), lines.end(), random );
        ASSERT_EQ( zu::adopt( zuStoreTextDecodeFromStringVector( vectorOf( lines ).get() ) ), store );

        zu::Ref<ZU_ENCODER> plain = zu::adopt( zuEncoderCreate() );
        modelEncode( tree, plain.get() );
        BUFFER binary = zu::adopt( zuStoreBinaryEncodeToBuffer( store.get() ) );
        ASSERT_EQ( binary, zu::adopt( zuEncoderBuffer( plain.get() ) ) );
        ASSERT_EQ( zu::adopt( zuStoreBinaryTryDecodeFromBuffer( binary.get() ) ), store );
        zu::Ref<ZU_ENCODER> enc = zu::adopt( zuEncoderCreate() );
        zuEncoderEncodeOptionalStore( enc.get(), nullptr );
        zuEncoderEncodeBool( enc.get(), ZU_TRUE );
        encodeShuffled( tree, enc.get() );
        zuEncoderEncodeStore( enc.get(), store.get() );
        zu::Ref<ZU_DECODER> dec = zu::adopt( zuDecoderCreate( zu::adopt( zuEncoderBuffer( enc.get() ) ).get() ) );
        STORE read = storeOf( TREE() );
        ASSERT_TRUE( zuDecoderTryDecodeOptionalStore( dec.get(), read.inOut() ) );
        ASSERT_FALSE( read );
        ASSERT_TRUE( zuDecoderTryDecodeOptionalStore( dec.get(), read.inOut() ) );
        ASSERT_EQ( read, store );
        ASSERT_TRUE( zuDecoderTryDecodeStore( dec.get(), nullptr ) );
        ASSERT_EQ( zuDecoderRemaining( dec.get() ), 0 );
    }
}

// Bytes of a store with a few changed: read as a whole or not at all, and what is read is what is written again.
TEST_F( StoreForms, BinaryIsReadStrictly )
{
    int whole = 0;
    for ( int round = 0; round < 5000; round++ ) {
        BUFFER binary = zu::adopt( zuStoreBinaryEncodeToBuffer( storeOf( anyTree( 2 ) ).get() ) );
        ZU_INT length = zuBufferLength( binary.get() );
        for ( size_t i = random.below( 3 ); i > 0; i-- ) {
            zuBufferWriteByte( binary.inOut(), (ZU_INT)random.below( (size_t)length ),
                               (uint8_t)( random.below( 2 ) ? random() : random.below( 4 ) ) );
        }
        if ( random.below( 4 ) == 0 ) {
            zuBufferDelTrailing( binary.inOut(), (ZU_INT)random.below( (size_t)length ) );
        } else if ( random.below( 4 ) == 0 ) {
            zuBufferAppendByte( binary.inOut(), 0 );
        }
        zu::Ref<ZU_DECODER> dec = zu::adopt( zuDecoderCreate( binary.get() ) );
        STORE read = zu::adopt( zuStoreBinaryTryDecodeFromDecoder( dec.get() ) );
        ASSERT_EQ( bool( read ), !zuDecoderError( dec.get() ) );
        bool all = read && zuDecoderRemaining( dec.get() ) == 0;
        STORE alone = zu::adopt( zuStoreBinaryTryDecodeFromBuffer( binary.get() ) );
        ASSERT_EQ( bool( alone ), all );
        if ( all ) {
            whole++;
            ASSERT_EQ( alone, read );
            BUFFER again = zu::adopt( zuStoreBinaryEncodeToBuffer( read.get() ) );
            ASSERT_EQ( zu::adopt( zuStoreBinaryTryDecodeFromBuffer( again.get() ) ), read );
        }
    }
    EXPECT_GT( whole, 500 );
}

TEST( StoreText, EscapesControls )
{
    TREE tree;
    for ( char32_t ch = 0; ch <= 0x10FFFF; ch++ ) {
        tree.values[ U"all" ] += ch;
    }
    STORE store = storeOf( tree );
    EXPECT_TRUE( linesOf( store.get() ) == LINES{ U"all=" + modelEscape( tree.values[ U"all" ] ) } );
    EXPECT_EQ( zu::adopt( zuStoreTextDecodeFromStringVector( vectorOf( linesOf( store.get() ) ).get() ) ), store );
}

// Returns a chain of sub-stores, with a value in the last.
static STORE makeChain( int levels )
{
    TREE last;
    last.values[ U"v" ] = U"1";
    STORE store = storeOf( last );
    while ( levels-- > 0 ) {
        STORE outer = zu::adopt( zuStoreCreate() );
        zuStoreSetStore( outer.inOut(), zu::text( U"s" ).get(), store.get() );
        store = outer;
    }
    return store;
}
static int depthOf( STORE store )
{
    int depth = 0;
    while ( zuStoreHasStoreCstr( store.get(), "s", 1 ) ) {
        store = zu::adopt( zuStoreStoreCstr( store.get(), "s", 1 ) );
        depth++;
    }
    return zuStoreLength( store.get() ) > 0 ? depth : -depth;
}
// Written is any depth, read are 100 levels.
TEST( StoreText, DepthIsBounded )
{
    runOnSmallStack( [] {
        for ( int levels : { 99, 100, 101, 20000 } ) {
            STORE chain = makeChain( levels );
            LINES lines = linesOf( chain.get() );
            BUFFER binary = zu::adopt( zuStoreBinaryEncodeToBuffer( chain.get() ) );
            EXPECT_EQ( lines.size(), 1u );
            EXPECT_EQ( lines[ 0 ].size(), 2u * (size_t)levels + 3 );
            EXPECT_EQ( depthOf( zu::adopt( zuStoreTextDecodeFromStringVector( vectorOf( lines ).get() ) ) ),
                       levels < 100 ? levels : -100 );
            zu::Ref<ZU_DECODER> dec = zu::adopt( zuDecoderCreate( binary.get() ) );
            EXPECT_EQ( bool( zu::adopt( zuStoreBinaryTryDecodeFromDecoder( dec.get() ) ) ), levels < 100 );
            EXPECT_EQ( zuDecoderError( dec.get() ), levels >= 100 );
        }
    } );
}

// As many addresses as would take minutes if each moved those behind it; sub-stores as well.
TEST( StoreText, TakesAddressesInAnyOrder )
{
    static constexpr size_t COUNT = 200'000;
    LINES lines;
    zu::Ref<ZU_ENCODER> enc = zu::adopt( zuEncoderCreate() );
    zuEncoderEncodeInt( enc.get(), COUNT );
    for ( size_t i = 0; i < COUNT; i++ ) {
        std::string digits = std::to_string( i * 7919 % COUNT );
        std::u32string address( digits.begin(), digits.end() );
        lines.push_back( address + ( i % 2 ? U".x=1" : U"=1" ) );
        zuEncoderEncodeString( enc.get(), zu::text( address ).get() );
        zuEncoderEncodeOptionalString( enc.get(), i % 2 ? nullptr : zu::text( U"1" ).get() );
        zuEncoderEncodeOptionalStore( enc.get(), i % 2 ? storeOf( { { { U"x", U"1" } }, {} } ).get() : nullptr );
    }
    STORE store = zu::adopt( zuStoreTextDecodeFromStringVector( vectorOf( lines ).get() ) );
    EXPECT_EQ( zu::adopt( zuStoreBinaryTryDecodeFromBuffer( zu::adopt( zuEncoderBuffer( enc.get() ) ).get() ) ),
               store );
    EXPECT_EQ( zuStoreLength( store.get() ), (ZU_INT)COUNT );
    LINES written = linesOf( store.get() );
    std::sort( lines.begin(), lines.end() );
    std::sort( written.begin(), written.end() );
    EXPECT_TRUE( written == lines );
}

// Streams that fail at some line or flush, and charsets that cannot encode or decode
static int linesLeft;
static ZU_BOOL takeLine( ZU_OBJ *, ZU_STRING * )
{
    return linesLeft-- > 0;
}
static ZU_BOOL flushLines( ZU_OBJ * )
{
    return linesLeft != 0;
}
static ZU_BOOL giveLine( ZU_OBJ *, ZU_STRING **zus )
{
    *zus = zu::text( U"a=1" ).release();
    return linesLeft-- > 0;
}
TEST( StoreText, TellsOfFailingStreams )
{
    STORE store = storeOf( { { { U"a", U"1" }, { U"b", U"\u00E9" } }, { { U"c", {} } } } );
    for ( int lines = 0; lines <= 4; lines++ ) {
        zu::Ref<ZU_LINE_SINK> ls = zu::adopt( zu___LineSinkCreate( takeLine, flushLines, nullptr ) );
        linesLeft = lines;
        EXPECT_EQ( zuStoreTextTryEncodeToLineSink( store.get(), ls.get() ), lines == 4 );
        EXPECT_EQ( zuLineSinkLinesWritten( ls.get() ), std::min( lines, 3 ) );
        linesLeft = lines;
        zu::Ref<ZU_LINE_SOURCE> source = zu::adopt( zu___LineSourceCreate( giveLine, nullptr ) );
        EXPECT_FALSE( zu::adopt( zuStoreTextTryDecodeFromLineSource( source.get() ) ) );
    }
    const ZU_CHARSET_FLAGS strict = ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER;
    BUFFER text = zu::adopt( zuStoreTextTryEncodeToBuffer( store.get(), ZU_CHARSET_UTF_8, strict, ZU_NLF_FLAG_LF ) );
    EXPECT_FALSE( zu::adopt( zuStoreTextTryEncodeToBuffer( store.get(), ZU_CHARSET_KOI_8R, strict, ZU_NLF_FLAG_LF ) ) );
    EXPECT_FALSE( zu::adopt( zuStoreTextTryDecodeFromBuffer( text.get(), ZU_CHARSET_ASCII, strict, ZU_NLF_FLAG_LF ) ) );
    EXPECT_TRUE( zu::adopt( zuStoreTextTryDecodeFromBuffer( text.get(), ZU_CHARSET_ASCII, 0, ZU_NLF_FLAG_LF ) ) );
}
