#include "zu/unicode/zu_unicode_madb.h"

ZU_INT zu___UnicodeHexDigitDbLookup( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    // The fullwidth forms stand in the order of ASCII.
    ZU_CHAR ascii =
        ch >= ZU_CHAR_FULLWIDTH_DIGIT_ZERO ? ch - ( ZU_CHAR_FULLWIDTH_DIGIT_ZERO - ZU_CHAR_DIGIT_ZERO ) : ch;
    if ( ascii >= ZU_CHAR_DIGIT_ZERO && ascii <= ZU_CHAR_DIGIT_NINE ) {
        return ascii - ZU_CHAR_DIGIT_ZERO;
    }
    if ( ascii >= ZU_CHAR_LATIN_CAPITAL_LETTER_A && ascii <= ZU_CHAR_LATIN_CAPITAL_LETTER_F ) {
        return ascii - ZU_CHAR_LATIN_CAPITAL_LETTER_A + 10;
    }
    if ( ascii >= ZU_CHAR_LATIN_SMALL_LETTER_A && ascii <= ZU_CHAR_LATIN_SMALL_LETTER_F ) {
        return ascii - ZU_CHAR_LATIN_SMALL_LETTER_A + 10;
    }
    return -1;
}
ZU_BOOL zu___UnicodeNlfDbLookup( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return ( ch >= ZU_CHAR_LINE_FEED && ch <= ZU_CHAR_CARRIAGE_RETURN ) || ch == ZU_CHAR_NEXT_LINE ||
           ch == ZU_CHAR_LINE_SEPARATOR || ch == ZU_CHAR_PARAGRAPH_SEPARATOR;
}
ZU_BOOL zu___UnicodeWhiteSpaceDbLookup( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    if ( ch < ZU_CHAR_OGHAM_SPACE_MARK ) {
        return ( ch >= ZU_CHAR_CHARACTER_TABULATION && ch <= ZU_CHAR_CARRIAGE_RETURN ) || ch == ZU_CHAR_SPACE ||
               ch == ZU_CHAR_NEXT_LINE || ch == ZU_CHAR_NO_BREAK_SPACE;
    }
    return ch == ZU_CHAR_OGHAM_SPACE_MARK || ( ch >= ZU_CHAR_EN_QUAD && ch <= ZU_CHAR_HAIR_SPACE ) ||
           ch == ZU_CHAR_LINE_SEPARATOR || ch == ZU_CHAR_PARAGRAPH_SEPARATOR || ch == ZU_CHAR_NARROW_NO_BREAK_SPACE ||
           ch == ZU_CHAR_MEDIUM_MATHEMATICAL_SPACE || ch == ZU_CHAR_IDEOGRAPHIC_SPACE;
}
