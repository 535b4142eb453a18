// zu_unicode_genc_internal.h: the texts of the general categories.
#pragma once

#include "zu/unicode/zu_unicode_genc.h"

#include <iterator>

// The texts stand in the rows themselves: pointers would have to be relocated each time the library is loaded.
struct ZU___UNICODE_GENC_ROW {
    ZU_UNICODE_GENC value;
    char abbreviation[ 3 ];
    char description[ 24 ];
    char symName[ 42 ];
};

// ZU___UNICODE_GENC_ROW( ZU_UNICODE_GENC_MARK_ENCLOSING, "Me", "Mark, Enclosing" ) stands for
//
//     { ZU_UNICODE_GENC_MARK_ENCLOSING, "Me", "Mark, Enclosing", "ZU_UNICODE_GENC_MARK_ENCLOSING" }
#define ZU___UNICODE_GENC_ROW( symbol, abbreviation, description ) \
    {                                                              \
        symbol, abbreviation, description, #symbol                 \
    }

// In the order of their values, without a gap.
static constexpr ZU___UNICODE_GENC_ROW zu___unicodeGencRows[] = {
    ZU___UNICODE_GENC_ROW( ZU_UNICODE_GENC_OTHER_NOT_ASSIGNED, "Cn", "Other, Not Assigned" ),
    ZU___UNICODE_GENC_ROW( ZU_UNICODE_GENC_LETTER_UPPERCASE, "Lu", "Letter, Uppercase" ),
    ZU___UNICODE_GENC_ROW( ZU_UNICODE_GENC_LETTER_LOWERCASE, "Ll", "Letter, Lowercase" ),
    ZU___UNICODE_GENC_ROW( ZU_UNICODE_GENC_LETTER_TITLECASE, "Lt", "Letter, Titlecase" ),
    ZU___UNICODE_GENC_ROW( ZU_UNICODE_GENC_LETTER_MODIFIER, "Lm", "Letter, Modifier" ),
    ZU___UNICODE_GENC_ROW( ZU_UNICODE_GENC_LETTER_OTHER, "Lo", "Letter, Other" ),
    ZU___UNICODE_GENC_ROW( ZU_UNICODE_GENC_MARK_NONSPACING, "Mn", "Mark, Nonspacing" ),
    ZU___UNICODE_GENC_ROW( ZU_UNICODE_GENC_MARK_SPACING_COMBINING, "Mc", "Mark, Spacing Combining" ),
    ZU___UNICODE_GENC_ROW( ZU_UNICODE_GENC_MARK_ENCLOSING, "Me", "Mark, Enclosing" ),
    ZU___UNICODE_GENC_ROW( ZU_UNICODE_GENC_NUMBER_DECIMAL_DIGIT, "Nd", "Number, Decimal Digit" ),
    ZU___UNICODE_GENC_ROW( ZU_UNICODE_GENC_NUMBER_LETTER, "Nl", "Number, Letter" ),
    ZU___UNICODE_GENC_ROW( ZU_UNICODE_GENC_NUMBER_OTHER, "No", "Number, Other" ),
    ZU___UNICODE_GENC_ROW( ZU_UNICODE_GENC_PUNCTUATION_CONNECTOR, "Pc", "Punctuation, Connector" ),
    ZU___UNICODE_GENC_ROW( ZU_UNICODE_GENC_PUNCTUATION_DASH, "Pd", "Punctuation, Dash" ),
    ZU___UNICODE_GENC_ROW( ZU_UNICODE_GENC_PUNCTUATION_OPEN, "Ps", "Punctuation, Open" ),
    ZU___UNICODE_GENC_ROW( ZU_UNICODE_GENC_PUNCTUATION_CLOSE, "Pe", "Punctuation, Close" ),
    ZU___UNICODE_GENC_ROW( ZU_UNICODE_GENC_PUNCTUATION_INITIAL_QUOTE, "Pi", "Punctuation, Initial" ),
    ZU___UNICODE_GENC_ROW( ZU_UNICODE_GENC_PUNCTUATION_FINAL_QUOTE, "Pf", "Punctuation, Final" ),
    ZU___UNICODE_GENC_ROW( ZU_UNICODE_GENC_PUNCTUATION_OTHER, "Po", "Punctuation, Other" ),
    ZU___UNICODE_GENC_ROW( ZU_UNICODE_GENC_SYMBOL_MATH, "Sm", "Symbol, Math" ),
    ZU___UNICODE_GENC_ROW( ZU_UNICODE_GENC_SYMBOL_CURRENCY, "Sc", "Symbol, Currency" ),
    ZU___UNICODE_GENC_ROW( ZU_UNICODE_GENC_SYMBOL_MODIFIER, "Sk", "Symbol, Modifier" ),
    ZU___UNICODE_GENC_ROW( ZU_UNICODE_GENC_SYMBOL_OTHER, "So", "Symbol, Other" ),
    ZU___UNICODE_GENC_ROW( ZU_UNICODE_GENC_SEPARATOR_SPACE, "Zs", "Separator, Space" ),
    ZU___UNICODE_GENC_ROW( ZU_UNICODE_GENC_SEPARATOR_LINE, "Zl", "Separator, Line" ),
    ZU___UNICODE_GENC_ROW( ZU_UNICODE_GENC_SEPARATOR_PARAGRAPH, "Zp", "Separator, Paragraph" ),
    ZU___UNICODE_GENC_ROW( ZU_UNICODE_GENC_OTHER_CONTROL, "Cc", "Other, Control" ),
    ZU___UNICODE_GENC_ROW( ZU_UNICODE_GENC_OTHER_FORMAT, "Cf", "Other, Format" ),
    ZU___UNICODE_GENC_ROW( ZU_UNICODE_GENC_OTHER_SURROGATE, "Cs", "Other, Surrogate" ),
    ZU___UNICODE_GENC_ROW( ZU_UNICODE_GENC_OTHER_PRIVATE_USE, "Co", "Other, Private Use" ),
};
static_assert(
    [] {
        for ( ZU_INT i = 0; i < 30; ++i ) {
            if ( zu___unicodeGencRows[ i ].value != i ) {
                return false;
            }
        }
        return std::size( zu___unicodeGencRows ) == 30;
    }(),
    "a row stands at its value" );
