#include "zu/unicode/zu_unicode_properties.h"

#include "zu/unicode/zu_unicode_db_internal.h"
#include "zu/unicode/zu_unicode_madb.h"

const uint16_t *const zu___unicodeProperties = zu___unicodePropertyTable;

// Values
ZU_UNICODE_GENC zu___outlined_zuUnicodeGenc( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeGencDbFetch( ch );
}
ZU_UNICODE_CCCV zu___outlined_zuUnicodeCccv( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeCccvDbFetch( ch );
}
ZU_UNICODE_SCRIPT zu___outlined_zuUnicodeScript( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeScriptDbFetch( ch );
}

// Digits
ZU_INT zuUnicodeDecimalDigitValue( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeDecimalDbFetch( ch );
}
ZU_INT zuUnicodeHexadecimalDigitValue( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeHexDigitDbLookup( ch );
}

// Returns the value of an ASCII digit or letter, 0 to 35, and -1 for other characters.
static ZU_INT asciiDigitValue( ZU_CHAR ch )
{
    if ( ch >= ZU_CHAR_DIGIT_ZERO && ch <= ZU_CHAR_DIGIT_NINE ) {
        return ch - ZU_CHAR_DIGIT_ZERO;
    }
    if ( ch >= ZU_CHAR_LATIN_CAPITAL_LETTER_A && ch <= ZU_CHAR_LATIN_CAPITAL_LETTER_Z ) {
        return ch - ZU_CHAR_LATIN_CAPITAL_LETTER_A + 10;
    }
    if ( ch >= ZU_CHAR_LATIN_SMALL_LETTER_A && ch <= ZU_CHAR_LATIN_SMALL_LETTER_Z ) {
        return ch - ZU_CHAR_LATIN_SMALL_LETTER_A + 10;
    }
    return -1;
}

ZU_INT zuUnicodeBaseNDigitValue( ZU_CHAR ch, ZU_INT base )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    ZU_ASSERT( base >= 2 && base <= 36 );
    ZU_INT value = base <= 10   ? zu___UnicodeDecimalDbFetch( ch )
                   : base <= 16 ? zu___UnicodeHexDigitDbLookup( ch )
                                : asciiDigitValue( ch );
    return value < base ? value : -1;
}

// Line ends and white space
ZU_BOOL zu___outlined_zuUnicodeIsNlf( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeNlfDbLookup( ch );
}
ZU_BOOL zu___outlined_zuUnicodeIsWhiteSpace( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeWhiteSpaceDbLookup( ch );
}

// General category
ZU_BOOL zu___outlined_zuUnicodeIsLetter( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    ZU_UNICODE_GENC genc = zu___UnicodeGencDbFetch( ch );
    return genc >= ZU_UNICODE_GENC_LETTER_UPPERCASE && genc <= ZU_UNICODE_GENC_LETTER_OTHER;
}
ZU_BOOL zu___outlined_zuUnicodeIsLetterUppercase( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeGencDbFetch( ch ) == ZU_UNICODE_GENC_LETTER_UPPERCASE;
}
ZU_BOOL zu___outlined_zuUnicodeIsLetterLowercase( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeGencDbFetch( ch ) == ZU_UNICODE_GENC_LETTER_LOWERCASE;
}
ZU_BOOL zuUnicodeIsLetterTitlecase( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeGencDbFetch( ch ) == ZU_UNICODE_GENC_LETTER_TITLECASE;
}
ZU_BOOL zuUnicodeIsLetterModifier( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeGencDbFetch( ch ) == ZU_UNICODE_GENC_LETTER_MODIFIER;
}
ZU_BOOL zuUnicodeIsLetterOther( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeGencDbFetch( ch ) == ZU_UNICODE_GENC_LETTER_OTHER;
}
ZU_BOOL zu___outlined_zuUnicodeIsMark( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    ZU_UNICODE_GENC genc = zu___UnicodeGencDbFetch( ch );
    return genc >= ZU_UNICODE_GENC_MARK_NONSPACING && genc <= ZU_UNICODE_GENC_MARK_ENCLOSING;
}
ZU_BOOL zuUnicodeIsMarkNonspacing( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeGencDbFetch( ch ) == ZU_UNICODE_GENC_MARK_NONSPACING;
}
ZU_BOOL zuUnicodeIsMarkSpacingCombining( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeGencDbFetch( ch ) == ZU_UNICODE_GENC_MARK_SPACING_COMBINING;
}
ZU_BOOL zuUnicodeIsMarkEnclosing( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeGencDbFetch( ch ) == ZU_UNICODE_GENC_MARK_ENCLOSING;
}
ZU_BOOL zu___outlined_zuUnicodeIsNumber( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    ZU_UNICODE_GENC genc = zu___UnicodeGencDbFetch( ch );
    return genc >= ZU_UNICODE_GENC_NUMBER_DECIMAL_DIGIT && genc <= ZU_UNICODE_GENC_NUMBER_OTHER;
}
ZU_BOOL zu___outlined_zuUnicodeIsNumberDecimalDigit( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeGencDbFetch( ch ) == ZU_UNICODE_GENC_NUMBER_DECIMAL_DIGIT;
}
ZU_BOOL zuUnicodeIsNumberLetter( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeGencDbFetch( ch ) == ZU_UNICODE_GENC_NUMBER_LETTER;
}
ZU_BOOL zuUnicodeIsNumberOther( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeGencDbFetch( ch ) == ZU_UNICODE_GENC_NUMBER_OTHER;
}
ZU_BOOL zu___outlined_zuUnicodeIsPunctuation( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    ZU_UNICODE_GENC genc = zu___UnicodeGencDbFetch( ch );
    return genc >= ZU_UNICODE_GENC_PUNCTUATION_CONNECTOR && genc <= ZU_UNICODE_GENC_PUNCTUATION_OTHER;
}
ZU_BOOL zuUnicodeIsPunctuationConnector( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeGencDbFetch( ch ) == ZU_UNICODE_GENC_PUNCTUATION_CONNECTOR;
}
ZU_BOOL zuUnicodeIsPunctuationDash( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeGencDbFetch( ch ) == ZU_UNICODE_GENC_PUNCTUATION_DASH;
}
ZU_BOOL zuUnicodeIsPunctuationOpen( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeGencDbFetch( ch ) == ZU_UNICODE_GENC_PUNCTUATION_OPEN;
}
ZU_BOOL zuUnicodeIsPunctuationClose( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeGencDbFetch( ch ) == ZU_UNICODE_GENC_PUNCTUATION_CLOSE;
}
ZU_BOOL zuUnicodeIsPunctuationInitialQuote( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeGencDbFetch( ch ) == ZU_UNICODE_GENC_PUNCTUATION_INITIAL_QUOTE;
}
ZU_BOOL zuUnicodeIsPunctuationFinalQuote( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeGencDbFetch( ch ) == ZU_UNICODE_GENC_PUNCTUATION_FINAL_QUOTE;
}
ZU_BOOL zuUnicodeIsPunctuationOther( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeGencDbFetch( ch ) == ZU_UNICODE_GENC_PUNCTUATION_OTHER;
}
ZU_BOOL zu___outlined_zuUnicodeIsSymbol( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    ZU_UNICODE_GENC genc = zu___UnicodeGencDbFetch( ch );
    return genc >= ZU_UNICODE_GENC_SYMBOL_MATH && genc <= ZU_UNICODE_GENC_SYMBOL_OTHER;
}
ZU_BOOL zuUnicodeIsSymbolMath( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeGencDbFetch( ch ) == ZU_UNICODE_GENC_SYMBOL_MATH;
}
ZU_BOOL zuUnicodeIsSymbolCurrency( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeGencDbFetch( ch ) == ZU_UNICODE_GENC_SYMBOL_CURRENCY;
}
ZU_BOOL zuUnicodeIsSymbolModifier( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeGencDbFetch( ch ) == ZU_UNICODE_GENC_SYMBOL_MODIFIER;
}
ZU_BOOL zuUnicodeIsSymbolOther( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeGencDbFetch( ch ) == ZU_UNICODE_GENC_SYMBOL_OTHER;
}
ZU_BOOL zu___outlined_zuUnicodeIsSeparator( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    ZU_UNICODE_GENC genc = zu___UnicodeGencDbFetch( ch );
    return genc >= ZU_UNICODE_GENC_SEPARATOR_SPACE && genc <= ZU_UNICODE_GENC_SEPARATOR_PARAGRAPH;
}
ZU_BOOL zuUnicodeIsSeparatorSpace( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeGencDbFetch( ch ) == ZU_UNICODE_GENC_SEPARATOR_SPACE;
}
ZU_BOOL zuUnicodeIsSeparatorLine( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeGencDbFetch( ch ) == ZU_UNICODE_GENC_SEPARATOR_LINE;
}
ZU_BOOL zuUnicodeIsSeparatorParagraph( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeGencDbFetch( ch ) == ZU_UNICODE_GENC_SEPARATOR_PARAGRAPH;
}
ZU_BOOL zuUnicodeIsOther( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    ZU_UNICODE_GENC genc = zu___UnicodeGencDbFetch( ch );
    return genc >= ZU_UNICODE_GENC_OTHER_CONTROL || genc == ZU_UNICODE_GENC_OTHER_NOT_ASSIGNED;
}
ZU_BOOL zuUnicodeIsOtherControl( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeGencDbFetch( ch ) == ZU_UNICODE_GENC_OTHER_CONTROL;
}
ZU_BOOL zuUnicodeIsOtherFormat( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeGencDbFetch( ch ) == ZU_UNICODE_GENC_OTHER_FORMAT;
}
ZU_BOOL zuUnicodeIsOtherSurrogate( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeGencDbFetch( ch ) == ZU_UNICODE_GENC_OTHER_SURROGATE;
}
ZU_BOOL zuUnicodeIsOtherPrivateUse( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeGencDbFetch( ch ) == ZU_UNICODE_GENC_OTHER_PRIVATE_USE;
}
ZU_BOOL zuUnicodeIsOtherNotAssigned( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeGencDbFetch( ch ) == ZU_UNICODE_GENC_OTHER_NOT_ASSIGNED;
}

// Canonical combining class
ZU_BOOL zuUnicodeHasCccvSpacing( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeCccvDbFetch( ch ) == ZU_UNICODE_CCCV_SPACING;
}
ZU_BOOL zuUnicodeHasCccvOverlays( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeCccvDbFetch( ch ) == ZU_UNICODE_CCCV_OVERLAYS;
}
ZU_BOOL zuUnicodeHasCccvNuktas( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeCccvDbFetch( ch ) == ZU_UNICODE_CCCV_NUKTAS;
}
ZU_BOOL zuUnicodeHasCccvHiragana( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeCccvDbFetch( ch ) == ZU_UNICODE_CCCV_HIRAGANA;
}
ZU_BOOL zuUnicodeHasCccvViramas( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeCccvDbFetch( ch ) == ZU_UNICODE_CCCV_VIRAMAS;
}
ZU_BOOL zuUnicodeHasCccvFixedPosStart( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeCccvDbFetch( ch ) == ZU_UNICODE_CCCV_FIXED_POS_START;
}
ZU_BOOL zuUnicodeHasCccvFixedPos( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    ZU_UNICODE_CCCV cccv = zu___UnicodeCccvDbFetch( ch );
    return cccv >= ZU_UNICODE_CCCV_FIXED_POS_START && cccv <= ZU_UNICODE_CCCV_FIXED_POS_END;
}
ZU_BOOL zuUnicodeHasCccvFixedPosEnd( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeCccvDbFetch( ch ) == ZU_UNICODE_CCCV_FIXED_POS_END;
}
ZU_BOOL zuUnicodeHasCccvBelowLeftAttached( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeCccvDbFetch( ch ) == ZU_UNICODE_CCCV_BELOW_LEFT_ATTACHED;
}
ZU_BOOL zuUnicodeHasCccvBelowAttached( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeCccvDbFetch( ch ) == ZU_UNICODE_CCCV_BELOW_ATTACHED;
}
ZU_BOOL zuUnicodeHasCccvBelowRightAttached( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeCccvDbFetch( ch ) == ZU_UNICODE_CCCV_BELOW_RIGHT_ATTACHED;
}
ZU_BOOL zuUnicodeHasCccvLeftAttached( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeCccvDbFetch( ch ) == ZU_UNICODE_CCCV_LEFT_ATTACHED;
}
ZU_BOOL zuUnicodeHasCccvRightAttached( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeCccvDbFetch( ch ) == ZU_UNICODE_CCCV_RIGHT_ATTACHED;
}
ZU_BOOL zuUnicodeHasCccvAboveLeftAttached( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeCccvDbFetch( ch ) == ZU_UNICODE_CCCV_ABOVE_LEFT_ATTACHED;
}
ZU_BOOL zuUnicodeHasCccvAboveAttached( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeCccvDbFetch( ch ) == ZU_UNICODE_CCCV_ABOVE_ATTACHED;
}
ZU_BOOL zuUnicodeHasCccvAboveRightAttached( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeCccvDbFetch( ch ) == ZU_UNICODE_CCCV_ABOVE_RIGHT_ATTACHED;
}
ZU_BOOL zuUnicodeHasCccvBelowLeft( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeCccvDbFetch( ch ) == ZU_UNICODE_CCCV_BELOW_LEFT;
}
ZU_BOOL zuUnicodeHasCccvBelow( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeCccvDbFetch( ch ) == ZU_UNICODE_CCCV_BELOW;
}
ZU_BOOL zuUnicodeHasCccvBelowRight( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeCccvDbFetch( ch ) == ZU_UNICODE_CCCV_BELOW_RIGHT;
}
ZU_BOOL zuUnicodeHasCccvLeft( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeCccvDbFetch( ch ) == ZU_UNICODE_CCCV_LEFT;
}
ZU_BOOL zuUnicodeHasCccvRight( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeCccvDbFetch( ch ) == ZU_UNICODE_CCCV_RIGHT;
}
ZU_BOOL zuUnicodeHasCccvAaboveLeft( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeCccvDbFetch( ch ) == ZU_UNICODE_CCCV_ABOVE_LEFT;
}
ZU_BOOL zuUnicodeHasCccvAbove( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeCccvDbFetch( ch ) == ZU_UNICODE_CCCV_ABOVE;
}
ZU_BOOL zuUnicodeHasCccvAboveRight( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeCccvDbFetch( ch ) == ZU_UNICODE_CCCV_ABOVE_RIGHT;
}
ZU_BOOL zuUnicodeHasCccvDoubleBelow( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeCccvDbFetch( ch ) == ZU_UNICODE_CCCV_DOUBLE_BELOW;
}
ZU_BOOL zuUnicodeHasCccvDoubleAbove( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeCccvDbFetch( ch ) == ZU_UNICODE_CCCV_DOUBLE_ABOVE;
}
ZU_BOOL zuUnicodeHasCccvBelowIota( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeCccvDbFetch( ch ) == ZU_UNICODE_CCCV_BELOW_IOTA;
}
