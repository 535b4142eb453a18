#include "zu_test_support.h"

#include "zu/unicode/zu_unicode_db.h"
#include "zu/unicode/zu_unicode_madb.h"
#include "zu/unicode/zu_unicode_properties.h"

#include <set>
#include <string>

using Predicate = ZU_BOOL( ZU_CHAR );

// The predicates, with the values of the table behind them that each is true for.
struct ROW {
    Predicate *predicate;
    ZU_INT first, last;
};
static constexpr ROW CATEGORIES[] = { { zuUnicodeIsLetter, 1, 5 },
                                      { zuUnicodeIsLetterUppercase, 1, 1 },
                                      { zuUnicodeIsLetterLowercase, 2, 2 },
                                      { zuUnicodeIsLetterTitlecase, 3, 3 },
                                      { zuUnicodeIsLetterModifier, 4, 4 },
                                      { zuUnicodeIsLetterOther, 5, 5 },
                                      { zuUnicodeIsMark, 6, 8 },
                                      { zuUnicodeIsMarkNonspacing, 6, 6 },
                                      { zuUnicodeIsMarkSpacingCombining, 7, 7 },
                                      { zuUnicodeIsMarkEnclosing, 8, 8 },
                                      { zuUnicodeIsNumber, 9, 11 },
                                      { zuUnicodeIsNumberDecimalDigit, 9, 9 },
                                      { zuUnicodeIsNumberLetter, 10, 10 },
                                      { zuUnicodeIsNumberOther, 11, 11 },
                                      { zuUnicodeIsPunctuation, 12, 18 },
                                      { zuUnicodeIsPunctuationConnector, 12, 12 },
                                      { zuUnicodeIsPunctuationDash, 13, 13 },
                                      { zuUnicodeIsPunctuationOpen, 14, 14 },
                                      { zuUnicodeIsPunctuationClose, 15, 15 },
                                      { zuUnicodeIsPunctuationInitialQuote, 16, 16 },
                                      { zuUnicodeIsPunctuationFinalQuote, 17, 17 },
                                      { zuUnicodeIsPunctuationOther, 18, 18 },
                                      { zuUnicodeIsSymbol, 19, 22 },
                                      { zuUnicodeIsSymbolMath, 19, 19 },
                                      { zuUnicodeIsSymbolCurrency, 20, 20 },
                                      { zuUnicodeIsSymbolModifier, 21, 21 },
                                      { zuUnicodeIsSymbolOther, 22, 22 },
                                      { zuUnicodeIsSeparator, 23, 25 },
                                      { zuUnicodeIsSeparatorSpace, 23, 23 },
                                      { zuUnicodeIsSeparatorLine, 24, 24 },
                                      { zuUnicodeIsSeparatorParagraph, 25, 25 },
                                      { zuUnicodeIsOtherControl, 26, 26 },
                                      { zuUnicodeIsOtherFormat, 27, 27 },
                                      { zuUnicodeIsOtherSurrogate, 28, 28 },
                                      { zuUnicodeIsOtherPrivateUse, 29, 29 },
                                      { zuUnicodeIsOtherNotAssigned, 0, 0 } };
static constexpr ROW CLASSES[] = { { zuUnicodeHasCccvSpacing, 0, 0 },
                                   { zuUnicodeHasCccvOverlays, 1, 1 },
                                   { zuUnicodeHasCccvNuktas, 7, 7 },
                                   { zuUnicodeHasCccvHiragana, 8, 8 },
                                   { zuUnicodeHasCccvViramas, 9, 9 },
                                   { zuUnicodeHasCccvFixedPosStart, 10, 10 },
                                   { zuUnicodeHasCccvFixedPos, 10, 199 },
                                   { zuUnicodeHasCccvFixedPosEnd, 199, 199 },
                                   { zuUnicodeHasCccvBelowLeftAttached, 200, 200 },
                                   { zuUnicodeHasCccvBelowAttached, 202, 202 },
                                   { zuUnicodeHasCccvBelowRightAttached, 204, 204 },
                                   { zuUnicodeHasCccvLeftAttached, 208, 208 },
                                   { zuUnicodeHasCccvRightAttached, 210, 210 },
                                   { zuUnicodeHasCccvAboveLeftAttached, 212, 212 },
                                   { zuUnicodeHasCccvAboveAttached, 214, 214 },
                                   { zuUnicodeHasCccvAboveRightAttached, 216, 216 },
                                   { zuUnicodeHasCccvBelowLeft, 218, 218 },
                                   { zuUnicodeHasCccvBelow, 220, 220 },
                                   { zuUnicodeHasCccvBelowRight, 222, 222 },
                                   { zuUnicodeHasCccvLeft, 224, 224 },
                                   { zuUnicodeHasCccvRight, 226, 226 },
                                   { zuUnicodeHasCccvAaboveLeft, 228, 228 },
                                   { zuUnicodeHasCccvAbove, 230, 230 },
                                   { zuUnicodeHasCccvAboveRight, 232, 232 },
                                   { zuUnicodeHasCccvDoubleBelow, 233, 233 },
                                   { zuUnicodeHasCccvDoubleAbove, 234, 234 },
                                   { zuUnicodeHasCccvBelowIota, 240, 240 } };

TEST( UnicodeProperties, PredicatesCompareTheirValue )
{
    for ( ZU_CHAR ch = 0; ch < 0x110000; ++ch ) {
        ZU_INT genc = zuUnicodeGenc( ch );
        ZU_INT cccv = zuUnicodeCccv( ch );
        for ( const auto &row : CATEGORIES ) {
            ASSERT_EQ( row.predicate( ch ), genc >= row.first && genc <= row.last )
                << std::hex << ch << " in row " << &row - CATEGORIES;
        }
        for ( const auto &row : CLASSES ) {
            ASSERT_EQ( row.predicate( ch ), cccv >= row.first && cccv <= row.last )
                << std::hex << ch << " in row " << &row - CLASSES;
        }
        ASSERT_EQ( zuUnicodeIsOther( ch ), genc == 0 || genc >= 26 ) << std::hex << ch;
        ASSERT_EQ( genc, zu___UnicodeGencDbLookup( ch ) ) << std::hex << ch;
        ASSERT_EQ( cccv, zu___UnicodeCccvDbLookup( ch ) ) << std::hex << ch;
        ASSERT_EQ( zuUnicodeScript( ch ), zu___UnicodeScriptDbLookup( ch ) ) << std::hex << ch;
        ASSERT_EQ( zuUnicodeDecimalDigitValue( ch ), zu___UnicodeDecimalDbLookup( ch ) ) << std::hex << ch;
    }
}

// Line ends and white space
TEST( UnicodeProperties, NewlineFunctionsAndWhiteSpace )
{
    const std::set<ZU_CHAR> newlines = { 0x0A, 0x0B, 0x0C, 0x0D, 0x85, 0x2028, 0x2029 };
    std::set<ZU_CHAR> whiteSpace = { 0x09, 0x20, 0xA0, 0x1680, 0x202F, 0x205F, 0x3000 };
    whiteSpace.insert( newlines.begin(), newlines.end() );
    for ( ZU_CHAR ch = 0x2000; ch <= 0x200A; ++ch ) {
        whiteSpace.insert( ch );
    }
    for ( ZU_CHAR ch = 0; ch < 0x110000; ++ch ) {
        ASSERT_EQ( zuUnicodeIsNlf( ch ), newlines.count( ch ) ) << std::hex << ch;
        ASSERT_EQ( zuUnicodeIsWhiteSpace( ch ), whiteSpace.count( ch ) ) << std::hex << ch;
    }
}

// Digits
static ZU_INT positionIn( const std::u32string &digits, ZU_CHAR ch )
{
    size_t position = digits.find( ch );
    return position == std::u32string::npos ? -1 : static_cast<ZU_INT>( position );
}

// The value of an ASCII digit or letter, -1 for others.
static ZU_INT asciiValue( ZU_CHAR ch )
{
    ZU_INT upper = positionIn( U"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ", ch );
    return upper >= 0 ? upper : positionIn( U"0123456789abcdefghijklmnopqrstuvwxyz", ch );
}

static ZU_INT hexadecimalValue( ZU_CHAR ch )
{
    ZU_INT ascii = asciiValue( ch );
    if ( ascii >= 0 && ascii < 16 ) {
        return ascii;
    }
    ZU_INT wide = positionIn( U"\uFF10\uFF11\uFF12\uFF13\uFF14\uFF15\uFF16\uFF17\uFF18\uFF19"
                              U"\uFF21\uFF22\uFF23\uFF24\uFF25\uFF26\uFF41\uFF42\uFF43\uFF44\uFF45\uFF46",
                              ch );
    return wide < 16 ? wide : wide - 6;
}

TEST( UnicodeProperties, DigitsToEachBase )
{
    for ( ZU_CHAR ch = 0; ch < 0x110000; ++ch ) {
        ZU_INT decimal = zuUnicodeIsNumberDecimalDigit( ch ) ? zuUnicodeDecimalDigitValue( ch ) : -1;
        ZU_INT hexadecimal = hexadecimalValue( ch );
        ZU_INT ascii = asciiValue( ch );
        ASSERT_EQ( zuUnicodeHexadecimalDigitValue( ch ), hexadecimal ) << std::hex << ch;
        for ( ZU_INT base : { 2, 7, 9, 10, 11, 12, 16, 17, 18, 35, 36 } ) {
            ZU_INT value = base <= 10 ? decimal : base <= 16 ? hexadecimal : ascii;
            ASSERT_EQ( zuUnicodeBaseNDigitValue( ch, base ), value < base ? value : -1 )
                << std::hex << ch << " to base " << std::dec << base;
        }
    }
    EXPECT_EQ( zuUnicodeBaseNDigitValue( 0x663, 10 ), 3 );
    EXPECT_EQ( zuUnicodeBaseNDigitValue( 0x663, 16 ), -1 );
    EXPECT_EQ( zuUnicodeBaseNDigitValue( 0xFF21, 16 ), 10 );
    EXPECT_EQ( zuUnicodeBaseNDigitValue( 0xFF21, 17 ), -1 );
}
