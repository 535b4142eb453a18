// The operations on whole strings against plain models on std::u32string.

#include "zu/base/zu_string_internal.h"
#include "zu_test_string.h"

using Text = std::u32string;

static Text anyText( SeededRandom &random, const Text &alphabet, size_t most )
{
    Text text( random.below( most + 1 ), U' ' );
    std::generate( text.begin(), text.end(), [ & ] { return alphabet[ random.below( alphabet.size() ) ]; } );
    return text;
}

// Applies `change` to a string of one holder and to one of two, and expects the text that comes of it; the other holder
// keeps the old text.  What stays as it is is not copied.
static void expectChange( void ( *change )( ZU_STRING ** ), const Text &before, const Text &after )
{
    ZU_STRING *own = makeString( before );
    zu::Ref<ZU_STRING> shared = zu::adopt( makeString( before ) );
    ZU_STRING *held = zuStringRetain( shared.get() );
    change( &own );
    change( shared.inOut() );
    EXPECT_EQ( charsOf( shared.get() ), after );
    EXPECT_EQ( shared.get() == held, before == after );
    EXPECT_EQ( takeChars( held ), before );
    // There is free space enough behind the text, and no more than told.
    zuStringAppendCharRun( &own, 'x', 3 );
    EXPECT_EQ( takeChars( own ), after + U"xxx" );
}

// Search
static ZU_INT position( size_t found )
{
    return found == Text::npos ? -1 : (ZU_INT)found;
}
TEST( StringSearch, FindsWhatTheModelFinds )
{
    for ( unsigned seed = 0; seed < 2000; seed++ ) {
        SeededRandom random( seed );
        Text text = anyText( random, U"aaab\U0001F600", 70 );
        Text sub = anyText( random, U"aab", 3 ) + U"ab\U0001F600"[ random.below( 3 ) ];
        ZU_CHAR ch = sub.back();
        zu::Ref<ZU_STRING> zus = zu::adopt( makeString( U"ab" + text ) );
        zuStringDelLeading( zus.inOut(), 2 );
        zu::Ref<ZU_STRING> subString = zu::adopt( makeString( sub ) );
        const ZU_CHAR *subChars = zuStringBacking( subString.get() );
        for ( size_t offset = 0; offset <= text.size(); offset++ ) {
            ZU_INT at = (ZU_INT)offset;
            ASSERT_EQ( zuStringFindChar( zus.get(), at, ch ), position( text.find( ch, offset ) ) );
            ASSERT_EQ( zuStringFind( zus.get(), at, subString.get() ), position( text.find( sub, offset ) ) );
            ASSERT_EQ( zuStringFindCharFromRight( zus.get(), at, ch ),
                       offset ? position( text.rfind( ch, offset - 1 ) ) : -1 );
            ASSERT_EQ( zuStringFindCharsFromRight( zus.get(), at, subChars, (ZU_INT)sub.size() ),
                       position( text.rfind( sub, offset ) ) );
        }
        EXPECT_EQ( zuStringFindCharFromRight( zus.get(), -1, ch ), position( text.rfind( ch ) ) );
        EXPECT_EQ( zuStringFindFromRight( zus.get(), -1, subString.get() ), position( text.rfind( sub ) ) );
    }
}

// Split
static std::vector<Text> takeParts( ZU_VECTOR *parts )
{
    std::vector<Text> texts;
    for ( ZU_STRING *part : zu::items<ZU_STRING>( zu::adopt( parts ) ) ) {
        texts.push_back( charsOf( part ) );
    }
    return texts;
}
static std::vector<Text> modelSplit( const Text &text, const Text &sep, ZU_INT maxParts )
{
    std::vector<Text> parts;
    size_t pos = 0;
    size_t found;
    while ( (ZU_INT)parts.size() != maxParts - 1 && ( found = text.find( sep, pos ) ) != Text::npos ) {
        parts.push_back( text.substr( pos, found - pos ) );
        pos = found + sep.size();
    }
    parts.push_back( text.substr( pos ) );
    return parts;
}
static std::vector<Text> modelSplitWhitespace( Text text, ZU_INT maxParts )
{
    std::vector<Text> parts;
    auto blank = []( ZU_CHAR ch ) { return zuUnicodeIsWhiteSpace( ch ) != 0; };
    while ( !text.empty() && blank( text.back() ) ) {
        text.pop_back();
    }
    text.erase( text.begin(), std::find_if_not( text.begin(), text.end(), blank ) );
    while ( !text.empty() ) {
        auto end = (ZU_INT)parts.size() == maxParts - 1 ? text.end() : std::find_if( text.begin(), text.end(), blank );
        parts.emplace_back( text.begin(), end );
        text.erase( text.begin(), end == text.end() ? end : end + 1 );
        if ( (ZU_INT)parts.size() != maxParts - 1 ) {
            text.erase( text.begin(), std::find_if_not( text.begin(), text.end(), blank ) );
        }
    }
    return parts.empty() ? std::vector<Text>{ U"" } : parts;
}
TEST( StringSplit, DividesAsTheModel )
{
    for ( unsigned seed = 0; seed < 2000; seed++ ) {
        SeededRandom random( seed );
        ZU_INT maxParts = random.below( 3 ) ? -1 : 1 + (ZU_INT)random.below( 5 );
        Text text = anyText( random, U"aaa,,;", 30 );
        Text sep = anyText( random, U",;", 1 ) + U",";
        auto zus = zu::adopt( makeString( text ) ), sepString = zu::adopt( makeString( sep ) );
        EXPECT_EQ( takeParts( zuStringSplit( zus.get(), sepString.get(), maxParts ) ),
                   modelSplit( text, sep, maxParts ) );
        EXPECT_EQ( takeParts( zuStringSplitChar( zus.get(), ',', maxParts ) ), modelSplit( text, U",", maxParts ) );

        Text blanks = anyText( random, U"aaab \t\u2003\u3000\u0085", 30 );
        zus = zu::adopt( makeString( blanks ) );
        EXPECT_EQ( takeParts( zuStringSplitWhitespace( zus.get(), maxParts ) ),
                   modelSplitWhitespace( blanks, maxParts ) );
        EXPECT_EQ( charsOf( zus.get() ), blanks );
    }
}

// White space
TEST( StringTrim, RemovesWhiteSpace )
{
    expectChange( zuStringTrim, U" \t\u3000a b\u00A0\n", U"a b" );
    expectChange( zuStringTrimLeading, U" \ta b ", U"a b " );
    expectChange( zuStringTrimTrailing, U" a b\u2029 ", U" a b" );
    expectChange( zuStringTrim, U"a\u200B", U"a\u200B" );
    expectChange( zuStringTrim, U"", U"" );
    expectChange( zuStringTrim, Text( 200, U' ' ) + Text( 200, U'a' ), Text( 200, U'a' ) );
    zu::Ref<ZU_STRING> blank = zu::adopt( makeString( U" \u1680\n" ) );
    zu::Ref<ZU_STRING> empty = zu::adopt( zuStringCreate() );
    EXPECT_TRUE( zuStringIsBlank( blank.get() ) );
    EXPECT_TRUE( zuStringIsBlank( empty.get() ) );
    zuStringTrimTrailing( blank.inOut() );
    EXPECT_EQ( blank.get(), empty.get() );
    zuStringAppendChar( blank.inOut(), '.' );
    EXPECT_FALSE( zuStringIsBlank( blank.get() ) );
}

// Case
using CaseLookup = const ZU_CHAR *( ZU_CHAR, ZU_INT * );
static Text modelMap( CaseLookup *lookup, const Text &text )
{
    Text result;
    for ( ZU_CHAR ch : text ) {
        ZU_INT length;
        const ZU_CHAR *mapping = lookup( ch, &length );
        result += mapping ? Text( mapping, mapping + length ) : Text( 1, ch );
    }
    return result;
}
static const Text CASES =
    U"abzAZ@[`{09   \u00E9\u00C9\u00DF\u1E9E\u0130\u0131\u03A3\u03C2\u03C3\uFB03\u0390\u1F80\u1FB7"
    U"\u13A0\uAB70\u01C5\U00010400\U0001E943\u4E00\u0416\u0436\U0010FFFF";
TEST( StringCase, MapsAsTheModel )
{
    for ( unsigned seed = 0; seed < 3000; seed++ ) {
        SeededRandom random( seed );
        // Some texts of ASCII, some of few kinds, some of which nothing changes; some long enough to be moved.
        Text alphabet = seed % 3 ? anyText( random, CASES, 5 ) + U"a" : U"abcxyzABCXYZ@[`{ ";
        Text text = anyText( random, alphabet, seed % 10 ? 40 : 3000 );
        expectChange( zuStringToLower, text, modelMap( zu___UnicodeLowerCaseDbLookup, text ) );
        expectChange( zuStringToUpper, text, modelMap( zu___UnicodeUpperCaseDbLookup, text ) );
        expectChange( zuStringToCaseFold, text, modelMap( zu___UnicodeCaseFoldDbLookup, text ) );
    }
    Text growing( 5000, U'\u0390' );
    expectChange( zuStringToUpper, growing, modelMap( zu___UnicodeUpperCaseDbLookup, growing ) );
}
TEST( StringCase, ComparesFoldedTexts )
{
    for ( unsigned seed = 0; seed < 5000; seed++ ) {
        SeededRandom random( seed );
        Text alphabet = seed % 2 ? U"sS\u00DF\u1E9E\u017F" : U"\u0390\u03B9\u0308\u0301\u1FD3aA";
        Text textA = anyText( random, alphabet, 6 );
        Text textB = anyText( random, alphabet, 6 );
        int order =
            modelMap( zu___UnicodeCaseFoldDbLookup, textA ).compare( modelMap( zu___UnicodeCaseFoldDbLookup, textB ) );
        zu::Ref<ZU_STRING> zusA = zu::adopt( makeString( textA ) );
        zu::Ref<ZU_STRING> zusB = zu::adopt( makeString( textB ) );
        EXPECT_EQ( zuStringCompareCaseFold( zusA.get(), zusB.get() ), ( order > 0 ) - ( order < 0 ) );
        EXPECT_EQ( zuStringEqualsCaseFold( zusA.get(), zusB.get() ), order == 0 );
        EXPECT_EQ(
            zuStringEqualsCharsCaseFold( zusA.get(), zuStringBacking( zusB.get() ), zuStringLength( zusB.get() ) ),
            order == 0 );
    }
    zu::Ref<ZU_STRING> zus = zu::adopt( makeString( U"\u1E9E" ) );
    EXPECT_TRUE( zuStringEqualsCharCaseFold( zus.get(), 0xDF ) );
    EXPECT_FALSE( zuStringEqualsCharCaseFold( zus.get(), 's' ) );
    EXPECT_TRUE( zuStringEqualsCaseFoldCstr( zus.get(), "sS", -1 ) );
    EXPECT_FALSE( zuStringEqualsCaseFoldCstr( zus.get(), "sS", 1 ) );
    EXPECT_TRUE( zuStringEqualsCaseFoldWcstr( zus.get(), u"S\u017F.", 2 ) );
}

// Normalization forms; the normalizer has tests of its own
TEST( StringNormalize, BringsIntoForms )
{
    const Text text = U"\uFB01\u212B e\u0301\u0323\uAC00";
    expectChange( zuStringNormalizeNFC, text, U"\uFB01\u00C5 \u1EB9\u0301\uAC00" );
    expectChange( zuStringNormalizeNFD, text, U"\uFB01A\u030A e\u0323\u0301\u1100\u1161" );
    expectChange( zuStringNormalizeNFKC, text, U"fi\u00C5 \u1EB9\u0301\uAC00" );
    expectChange( zuStringNormalizeNFKD, text, U"fiA\u030A e\u0323\u0301\u1100\u1161" );
    expectChange( zuStringNormalizeNFC, U"", U"" );
    expectChange( zuStringNormalizeNFC, U"plain text, \u00E9t\u00E9", U"plain text, \u00E9t\u00E9" );
    for ( size_t length = 2; length < 30; length++ ) { // wherever the only one stands that is not ASCII
        for ( size_t at = 1; at < length; at++ ) {
            Text letters( length, U'e' );
            letters[ at ] = 0x301;
            expectChange( zuStringNormalizeNFC, letters, Text( letters ).replace( at - 1, 2, U"\u00E9" ) );
        }
    }
    expectChange( zuStringNormalizeNFD, U"\u0301\u0316", U"\u0316\u0301" );
    expectChange( zuStringNormalizeNFC, { 'a', 0xD800 }, U"a" );
    ZU_STRING *empty = zuStringCreateFromUtf8( "", 0 ); // not the shared one
    zu::Ref<ZU_STRING> shared = zu::adopt( zuStringCreate() );
    zuStringNormalizeNFKD( &empty );
    EXPECT_EQ( empty, shared.get() );
    zuStringRelease( empty );
}
TEST( StringNormalize, Sanitizes )
{
    expectChange( zuStringSanitize, U"clean\U0001F600", U"clean\U0001F600" );
    for ( unsigned seed = 0; seed < 500; seed++ ) {
        SeededRandom random( seed );
        Text text = anyText( random, { 'a', 0xD800, 0xDBFF, 0xDC00, 0xDFFF, 0x10FFFF }, seed % 2 ? 64 : 300 );
        Text clean = text;
        clean.resize( (size_t)zuCharsSanitize( (ZU_CHAR *)&clean[ 0 ], (ZU_INT)clean.size(),
                                               (const ZU_CHAR *)&text[ 0 ], (ZU_INT)text.size() ) );
        expectChange( zuStringSanitize, text, clean );
        zu::Ref<ZU_STRING> zus = zu::adopt( makeString( text ) );
        ZU_INT bspace = zus.get()->bspace;
        zuStringSanitize( zus.inOut() );
        EXPECT_EQ( zus.get()->bspace, bspace );
    }
}

TEST( StringDelimited, AddsElements )
{
    static constexpr ZU_CHAR DASHES[] = { '-', '-' };
    ZU_STRING *list = zuStringCreate();
    ZU_STRING *src = makeString( U"s" );
    zu::Ref<ZU_STRING> bar = zu::adopt( makeString( U"|" ) );
    zuStringDelimitedAppend( &list, src, bar.get() );
    zuStringDelimitedAppendCharDelimiter( &list, src, ',' );
    zuStringDelimitedAppendCharsDelimiter( &list, src, DASHES, 2 );
    EXPECT_EQ( charsOf( list ), U"s,s--s" );
    zuStringClear( &list );
    zuStringDelimitedPrepend( &list, src, bar.get() );
    zuStringDelimitedPrependCharDelimiter( &list, src, ',' );
    zuStringDelimitedPrependCharsDelimiter( &list, src, DASHES, 2 );
    EXPECT_EQ( takeChars( list ), U"s--s,s" );
    zuStringDelimitedAppend( &src, src, src );
    EXPECT_EQ( takeChars( src ), U"sss" );
}

// Values
TEST( StringScan, ReadsFromWithin )
{
    zu::Ref<ZU_STRING> zus = zu::adopt( makeString( U"ab 0x1F true2.5" ) );
    auto scanned = [ & ]( auto scan, auto value, ZU_INT offset, ZU_INT count, auto how ) {
        ZU_INT consumed = 0;
        std::ostringstream told;
        told << ( scan( zus.get(), offset, count, how, &value, &consumed ) ? "" : "not " );
        told << value << " of " << consumed;
        EXPECT_EQ( scan( zus.get(), offset, count, how, nullptr, nullptr ), told.str()[ 0 ] != 'n' );
        return told.str();
    };
    EXPECT_EQ( scanned( zuStringScanInt, ZU_INT{ 7 }, 2, -1, -1 ), "31 of 6" );
    EXPECT_EQ( scanned( zuStringScanInt, ZU_INT{ 7 }, 3, 3, -1 ), "1 of 3" );
    EXPECT_EQ( scanned( zuStringScanInt, ZU_INT{ 7 }, 0, 2, 16 ), "171 of 2" );
    EXPECT_EQ( scanned( zuStringScanInt, ZU_INT{ 7 }, 0, 0, 16 ), "not 0 of 0" );
    EXPECT_EQ( scanned( zuStringScanInt, ZU_INT{ 7 }, 15, -1, 16 ), "not 0 of 0" );
    EXPECT_EQ( scanned( zuStringScanBool, ZU_BOOL{ 7 }, 8, 4, ZU_FALSE ), "1 of 4" );
    EXPECT_EQ( scanned( zuStringScanBool, ZU_BOOL{ 7 }, 12, -1, ZU_FALSE ), "not 0 of 0" );
    EXPECT_EQ( scanned( zuStringScanBool, ZU_BOOL{ 7 }, 12, 1000, ZU_TRUE ), "1 of 3" );
    EXPECT_EQ( scanned( zuStringScanReal, 7.0, 12, -1, 10 ), "2.5 of 3" );
}
