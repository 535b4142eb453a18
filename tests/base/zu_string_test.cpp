#include "zu/base/zu_string_internal.h"
#include "zu_slack_model.h"
#include "zu_test_string.h"

using Text = std::u32string;

struct STRINGS {
    typedef ZU_STRING OWNER;
    typedef ZU_CHAR ELEMENT;
    static constexpr ZU_INT FRONT = 0;
    SLACK_CLASS( zuString );
    static bool onHeap( ZU_STRING *zus )
    {
        return zus->chars != zus->inlineChars;
    }
};
class StringModel : public SlackOperations<STRINGS> {
protected:
    std::vector<ZU_CHAR> someText()
    {
        static constexpr ZU_INT LENGTHS[] = { 0, 1, 1, 1, 2, 3, 7, 20, 32, 33, 63, 64, 65, 100 };
        std::vector<ZU_CHAR> text( (size_t)LENGTHS[ between( 0, 13 ) ] );
        std::generate( text.begin(), text.end(), [ & ] { return 'a' + (ZU_CHAR)between( 0, 25 ); } );
        return text;
    }
    bool createOwn( HOLDER &holder ) override
    {
        const std::vector<ZU_CHAR> text = someText();
        ZU_INT textLength = (ZU_INT)text.size();
        if ( between( 0, 1 ) ) {
            take( holder, zuStringCreateFromCharsCopy( text.data(), textLength ), text );
        } else {
            ZU_CHAR *chars =
                text.empty() ? nullptr : (ZU_CHAR *)zuMemDupN( text.data(), textLength, sizeof( ZU_CHAR ) );
            take( holder, zuStringCreateFromCharsUse( chars, textLength ), text );
            holder.model.lay( 0, 0 );
            holder.model.heap = true;
            EXPECT_TRUE( !chars || zuStringBacking( holder.ref.get() ) == chars );
        }
        text.empty() ? holder.model.clear() : void();
        return true;
    }
    bool insertOwn( HOLDER &holder ) override
    {
        ZU_STRING **zus = holder.ref.inOut();
        MODEL &model = holder.model;
        const std::vector<ZU_CHAR> text = someText();
        ZU_INT textLength = (ZU_INT)text.size(), idx = between( -1, model.length() );
        switch ( between( 0, 6 ) ) {
        case 0: {
            zu::Ref<ZU_STRING> src = zu::adopt( zuStringCreateFromCharsCopy( text.data(), textLength ) );
            model.insert( SLACK_PUT( zus, zuString, Obj, zuStringObj( src.get() ) ), text );
            break;
        }
        case 1:
            model.insert( SLACK_PUT( zus, zuString, CharRun, ZU_CHAR{ 'y' }, textLength ),
                          std::vector<ZU_CHAR>( text.size(), 'y' ) );
            break;
        case 2:
            model.insert( SLACK_PUT( zus, zuString, Chars, text.data(), textLength ), text );
            break;
        case 3:
            zuStringSetCharAt( zus, idx, 'z' );
            model.set( idx, 'z' );
            break;
        default:
            model.insert( SLACK_PUT( zus, zuString, Char, ZU_CHAR{ 'x' } ), { 'x' } );
        }
        return true;
    }
    bool removeOwn( HOLDER & ) override
    {
        return false;
    }
};
TEST_P( StringModel, StaysLikeItsModel )
{
    for ( int i = 0; i < 8000 && !HasFailure(); i++ ) {
        SCOPED_TRACE( "seed " + std::to_string( GetParam() ) + ", step " + std::to_string( i ) );
        step();
        check();
    }
}
INSTANTIATE_TEST_SUITE_P( Seeds, StringModel, testing::Range( 1u, 11u ) );

TEST( String, ChangesThatChangeNothingAndThemselves )
{
    zu::Ref<ZU_STRING> zus = zu::adopt( makeString( U"abbb" ) ), copy = zus;
    EXPECT_EQ( zu::adopt( zuStringToString( zus.get() ) ).get(), copy.get() );
    zuStringInsertCharRun( zus.inOut(), 1, 0x110000, 0 ); // not looked at
    EXPECT_EQ( zus.get(), copy.get() );
    copy = nullptr;
    zuStringInsertChars( zus.inOut(), 4, zuStringBacking( zus.get() ), 1 );
    zuStringAppendChars( zus.inOut(), zuStringBacking( zus.get() ), 4 );
    EXPECT_EQ( zus, "abbbaabbb" );
    while ( zuStringLength( zus.get() ) < 10000 ) { // each way leaves the old storage
        zuStringAppendChars( zus.inOut(), zuStringBacking( zus.get() ), zuStringLength( zus.get() ) );
        zuStringPrependChars( zus.inOut(), zuStringBacking( zus.get() ), 9 );
    }
    for ( ZU_INT i = 0; i < zuStringLength( zus.get() ); i++ ) {
        EXPECT_EQ( zuStringCharAt( zus.get(), i ), U"abbbaabbb"[ i % 9 ] ) << i;
    }
}

// Comparison
TEST( String, ComparesByCodePoint )
{
    SeededRandom random;
    static constexpr char32_t ALPHABET[] = { U'a', U'A', 0xFFFF, 0x10000, 0x10FFFF, 0xD800, 0 };
    for ( int round = 0; round < 5000 && !HasFatalFailure(); round++ ) {
        Text a( random() % 5, 0 ), b( random() % 5, 0 );
        size_t letters = 1 + random() % 7;
        std::generate( a.begin(), a.end(), [ & ] { return ALPHABET[ random() % letters ]; } );
        std::generate( b.begin(), b.end(), [ & ] { return ALPHABET[ random() % letters ]; } );
        Text shared( round % 3 == 0 ? random() % 80 : 0, U'b' ); // which the C library compares by vectors
        Text behind( round % 6 == 0 ? random() % 30 : 0, U'c' ); // what differs is not the last
        a = shared + a + behind;
        b = shared + b + behind;
        auto ownerA = zu::adopt( makeString( a ) ), ownerB = zu::adopt( makeString( b ) );
        ZU_STRING *zusA = ownerA.get(), *zusB = ownerB.get();
        const ZU_CHAR *charsB = (const ZU_CHAR *)b.data();
        ZU_INT lengthB = (ZU_INT)b.size();
        ASSERT_EQ( zuStringCompare( zusA, zusB ), a < b ? -1 : a > b );
        using ANSWERS = std::array<ZU_BOOL, 3>;
        bool begins = a.compare( 0, b.size(), b ) == 0;
        bool ends = a.size() >= b.size() && a.compare( a.size() - b.size(), b.size(), b ) == 0;
        std::vector<ANSWERS> answers = {
            { zuStringEquals( zusA, zusB ), zuStringBeginsWith( zusA, zusB ), zuStringEndsWith( zusA, zusB ) },
            { zuStringEqualsChars( zusA, charsB, lengthB ), zuStringBeginsWithChars( zusA, charsB, lengthB ),
              zuStringEndsWithChars( zusA, charsB, lengthB ) }
        };
        if ( lengthB == 1 ) {
            answers.push_back( { zuStringEqualsChar( zusA, b[ 0 ] ), zuStringBeginsWithChar( zusA, b[ 0 ] ),
                                 zuStringEndsWithChar( zusA, b[ 0 ] ) } );
        }
        ASSERT_EQ( answers, std::vector<ANSWERS>( answers.size(), { a == b, begins, ends } ) );
    }
    zu::Ref<ZU_STRING> zus = zu::adopt( makeString( U"a" ) );
    EXPECT_EQ( zuStringEqualsChar( zus.get(), 0x110000 ), ZU_FALSE ); // any value may be asked for
}

// Conversion
template <typename UNIT>
static void expectConverted( UNIT *( *convert )(ZU_STRING *, ZU_BOOL, ZU_INT *), const Text &text,
                             std::basic_string<UNIT> wanted )
{
    zu::Ref<ZU_STRING> zus = zu::adopt( makeString( text ) );
    for ( ZU_BOOL nulTerminate : { ZU_FALSE, ZU_TRUE } ) {
        if ( nulTerminate ) {
            wanted.push_back( 0 );
        }
        ZU_INT length = -1;
        UNIT *units = convert( zus.get(), nulTerminate, &length );
        EXPECT_EQ( length, (ZU_INT)wanted.size() );
        EXPECT_EQ( units == nullptr, wanted.empty() );
        EXPECT_EQ( std::basic_string<UNIT>( units, units + length ), wanted );
        zuMemFree( units );
        units = convert( zus.get(), nulTerminate, nullptr );
        EXPECT_EQ( units == nullptr, wanted.empty() );
        zuMemFree( units );
    }
}

TEST( String, Converts )
{
    expectConverted<char>( zuStringConvertToUtf8, U"", "" );
    expectConverted<char16_t>( zuStringConvertToWcstr, U"", u"" );
    for ( size_t length : { 3u, 64u, 65u, 1000u } ) {
        Text text( length, U'é' );
        std::string utf8;
        while ( utf8.size() < 2 * length ) {
            utf8 += "\xC3\xA9";
        }
        expectConverted<char>( zuStringConvertToAscii, text, std::string( length, '?' ) );
        expectConverted<char>( zuStringConvertToUtf8, text, utf8 );
        expectConverted<char>( zuStringConvertToCstr, text, utf8 );
        expectConverted<char16_t>( zuStringConvertToWcstr, text, std::u16string( length, u'é' ) );
        for ( ZU_STRING *zus : { zuStringCreateFromUtf8( utf8.c_str(), -1 ), zuStringCreateFromCstr( utf8.c_str(), -1 ),
                                 zuStringCreateFromWcstr( std::u16string( length, u'é' ).c_str(), -1 ) } ) {
            EXPECT_EQ( takeChars( zus ), text );
        }
    }
    // A character beyond U+FFFF: whole by way of UTF-8, in two elements by the others
    for ( auto [ zus, text ] : { std::pair{ zuStringCreateFromUtf8( "\U0001F600", -1 ), Text( U"\U0001F600" ) },
                                 std::pair{ zuStringCreateFromCstr( "\U0001F600", -1 ), Text{ 0xD83D, 0xDE00 } },
                                 std::pair{ zuStringCreateFromWcstr( u"\U0001F600", -1 ), Text{ 0xD83D, 0xDE00 } },
                                 std::pair{ zuStringCreateFromAscii( "a\xFF", -1 ), Text{ 'a', 0xFFFD } } } ) {
        EXPECT_EQ( takeChars( zus ), text );
    }
    expectConverted<char>( zuStringConvertToCstr, Text{ 0xD83D, 0xDE00 }, "\U0001F600" );
}
