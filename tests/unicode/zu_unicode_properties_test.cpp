#include "zu_test_support.h"

#include "zu/unicode/zu_unicode_db.h"
#include "zu/unicode/zu_unicode_madb.h"
#include "zu/unicode/zu_unicode_properties.h"

using Predicate = ZU_BOOL( ZU_CHAR );

// One for each category, in the order of their values, and those for ranges of values
#define IS( a, b, c ) zuUnicodeIs##a, zuUnicodeIs##b, zuUnicodeIs##c
static constexpr Predicate *CATEGORIES[] = { IS( OtherNotAssigned, LetterUppercase, LetterLowercase ),
                                             IS( LetterTitlecase, LetterModifier, LetterOther ),
                                             IS( MarkNonspacing, MarkSpacingCombining, MarkEnclosing ),
                                             IS( NumberDecimalDigit, NumberLetter, NumberOther ),
                                             IS( PunctuationConnector, PunctuationDash, PunctuationOpen ),
                                             IS( PunctuationClose, PunctuationInitialQuote, PunctuationFinalQuote ),
                                             IS( PunctuationOther, SymbolMath, SymbolCurrency ),
                                             IS( SymbolModifier, SymbolOther, SeparatorSpace ),
                                             IS( SeparatorLine, SeparatorParagraph, OtherControl ),
                                             IS( OtherFormat, OtherSurrogate, OtherPrivateUse ) };
struct ROW {
    Predicate *predicate;
    ZU_INT first, last;
};
static constexpr ROW GROUPS[] = { { zuUnicodeIsLetter, 1, 5 },   { zuUnicodeIsMark, 6, 8 },
                                  { zuUnicodeIsNumber, 9, 11 },  { zuUnicodeIsPunctuation, 12, 18 },
                                  { zuUnicodeIsSymbol, 19, 22 }, { zuUnicodeIsSeparator, 23, 25 } };
// Those that are inlined where they are called by name
static constexpr ROW INLINED[] = { { []( ZU_CHAR ch ) { return zuUnicodeIsLetter( ch ); }, 1, 5 },
                                   { []( ZU_CHAR ch ) { return zuUnicodeIsLetterUppercase( ch ); }, 1, 1 },
                                   { []( ZU_CHAR ch ) { return zuUnicodeIsLetterLowercase( ch ); }, 2, 2 },
                                   { []( ZU_CHAR ch ) { return zuUnicodeIsMark( ch ); }, 6, 8 },
                                   { []( ZU_CHAR ch ) { return zuUnicodeIsNumber( ch ); }, 9, 11 },
                                   { []( ZU_CHAR ch ) { return zuUnicodeIsNumberDecimalDigit( ch ); }, 9, 9 },
                                   { []( ZU_CHAR ch ) { return zuUnicodeIsPunctuation( ch ); }, 12, 18 },
                                   { []( ZU_CHAR ch ) { return zuUnicodeIsSymbol( ch ); }, 19, 22 },
                                   { []( ZU_CHAR ch ) { return zuUnicodeIsSeparator( ch ); }, 23, 25 } };
// One for each class that has a name, and the classes
#define HAS( a, b ) zuUnicodeHasCccv##a, zuUnicodeHasCccv##b
static constexpr Predicate *CLASSES[] = { HAS( Spacing, Overlays ),
                                          HAS( Nuktas, Hiragana ),
                                          HAS( Viramas, FixedPosStart ),
                                          HAS( FixedPosEnd, BelowLeftAttached ),
                                          HAS( BelowAttached, BelowRightAttached ),
                                          HAS( LeftAttached, RightAttached ),
                                          HAS( AboveLeftAttached, AboveAttached ),
                                          HAS( AboveRightAttached, BelowLeft ),
                                          HAS( Below, BelowRight ),
                                          HAS( Left, Right ),
                                          HAS( AaboveLeft, Above ),
                                          HAS( AboveRight, DoubleBelow ),
                                          HAS( DoubleAbove, BelowIota ) };
static constexpr ZU_INT CLASS_VALUES[] = { 0,   1,   7,   8,   9,   10,  199, 200, 202, 204, 208, 210, 212,
                                           214, 216, 218, 220, 222, 224, 226, 228, 230, 232, 233, 234, 240 };

TEST( UnicodeProperties, PredicatesCompareTheirValue )
{
    for ( ZU_CHAR ch = 0; ch < 0x110000; ++ch ) {
        ZU_INT genc = zuUnicodeGenc( ch );
        ZU_INT cccv = zuUnicodeCccv( ch );
        for ( ZU_INT i = 0; i < (ZU_INT)std::size( CATEGORIES ); ++i ) {
            ASSERT_EQ( CATEGORIES[ i ]( ch ), genc == i ) << std::hex << ch << " and " << i;
        }
        for ( const ROW &row : GROUPS ) {
            ASSERT_EQ( row.predicate( ch ), genc >= row.first && genc <= row.last ) << std::hex << ch;
        }
        for ( const ROW &row : INLINED ) {
            ASSERT_EQ( row.predicate( ch ), genc >= row.first && genc <= row.last ) << std::hex << ch;
        }
        for ( size_t i = 0; i < std::size( CLASSES ); ++i ) {
            ASSERT_EQ( CLASSES[ i ]( ch ), cccv == CLASS_VALUES[ i ] ) << std::hex << ch << " and " << i;
        }
        ASSERT_EQ( zuUnicodeHasCccvFixedPos( ch ), cccv >= 10 && cccv <= 199 ) << std::hex << ch;
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
    static Predicate *volatile const isWhiteSpace = zuUnicodeIsWhiteSpace; // not inlined
    for ( ZU_CHAR ch = 0; ch < 0x110000; ++ch ) {
        ASSERT_EQ( isWhiteSpace( ch ), whiteSpace.count( ch ) ) << std::hex << ch;
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
}
