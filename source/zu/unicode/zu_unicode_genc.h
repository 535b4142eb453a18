// zu_unicode_genc.h: the general categories of the Unicode Character Database.
#pragma once

#include "zu/sys/zu_int.h"

/// A general category.  Each code point has one; those without an entry in the database have category 0.
typedef ZU_INT ZU_UNICODE_GENC;

/// Tells whether `genc` is a general category.
#define ZU_UNICODE_GENC_OK( genc ) ( (uint64_t)( genc ) <= 29 )

// The categories of a group, such as the letters, are neighbours.
#define ZU_UNICODE_GENC_OTHER_NOT_ASSIGNED        ( (ZU_INT)0 )
#define ZU_UNICODE_GENC_LETTER_UPPERCASE          ( (ZU_INT)1 )
#define ZU_UNICODE_GENC_LETTER_LOWERCASE          ( (ZU_INT)2 )
#define ZU_UNICODE_GENC_LETTER_TITLECASE          ( (ZU_INT)3 )
#define ZU_UNICODE_GENC_LETTER_MODIFIER           ( (ZU_INT)4 )
#define ZU_UNICODE_GENC_LETTER_OTHER              ( (ZU_INT)5 )
#define ZU_UNICODE_GENC_MARK_NONSPACING           ( (ZU_INT)6 )
#define ZU_UNICODE_GENC_MARK_SPACING_COMBINING    ( (ZU_INT)7 )
#define ZU_UNICODE_GENC_MARK_ENCLOSING            ( (ZU_INT)8 )
#define ZU_UNICODE_GENC_NUMBER_DECIMAL_DIGIT      ( (ZU_INT)9 )
#define ZU_UNICODE_GENC_NUMBER_LETTER             ( (ZU_INT)10 )
#define ZU_UNICODE_GENC_NUMBER_OTHER              ( (ZU_INT)11 )
#define ZU_UNICODE_GENC_PUNCTUATION_CONNECTOR     ( (ZU_INT)12 )
#define ZU_UNICODE_GENC_PUNCTUATION_DASH          ( (ZU_INT)13 )
#define ZU_UNICODE_GENC_PUNCTUATION_OPEN          ( (ZU_INT)14 )
#define ZU_UNICODE_GENC_PUNCTUATION_CLOSE         ( (ZU_INT)15 )
#define ZU_UNICODE_GENC_PUNCTUATION_INITIAL_QUOTE ( (ZU_INT)16 )
#define ZU_UNICODE_GENC_PUNCTUATION_FINAL_QUOTE   ( (ZU_INT)17 )
#define ZU_UNICODE_GENC_PUNCTUATION_OTHER         ( (ZU_INT)18 )
#define ZU_UNICODE_GENC_SYMBOL_MATH               ( (ZU_INT)19 )
#define ZU_UNICODE_GENC_SYMBOL_CURRENCY           ( (ZU_INT)20 )
#define ZU_UNICODE_GENC_SYMBOL_MODIFIER           ( (ZU_INT)21 )
#define ZU_UNICODE_GENC_SYMBOL_OTHER              ( (ZU_INT)22 )
#define ZU_UNICODE_GENC_SEPARATOR_SPACE           ( (ZU_INT)23 )
#define ZU_UNICODE_GENC_SEPARATOR_LINE            ( (ZU_INT)24 )
#define ZU_UNICODE_GENC_SEPARATOR_PARAGRAPH       ( (ZU_INT)25 )
#define ZU_UNICODE_GENC_OTHER_CONTROL             ( (ZU_INT)26 )
#define ZU_UNICODE_GENC_OTHER_FORMAT              ( (ZU_INT)27 )
#define ZU_UNICODE_GENC_OTHER_SURROGATE           ( (ZU_INT)28 )
#define ZU_UNICODE_GENC_OTHER_PRIVATE_USE         ( (ZU_INT)29 )

ZU_BEGIN_DECLS

typedef struct ZU_STRING ZU_STRING;

// From the value to its texts; a value out of range aborts.
/// Returns the short name that the database uses: "Lu".
ZU_API ZU_STRING *zuUnicodeGencAbbreviation( ZU_UNICODE_GENC genc );
/// Returns the name in words: "Letter, Uppercase".
ZU_API ZU_STRING *zuUnicodeGencDescription( ZU_UNICODE_GENC genc );
/// Returns the name of the constant: "ZU_UNICODE_GENC_LETTER_UPPERCASE".
ZU_API ZU_STRING *zuUnicodeGencSymName( ZU_UNICODE_GENC genc );

// From a text to the value
/// Returns the category of an abbreviation, written as it is; -1 if there is none.
ZU_API ZU_UNICODE_GENC zuUnicodeGencFromAbbreviation( ZU_STRING *zus );
/// Looks the case-folded text up among the abbreviations as they are.  These have a capital each, and so the result is
/// always -1.
ZU_API ZU_UNICODE_GENC zuUnicodeGencFromAbbreviationCaseFold( ZU_STRING *zus );

// For authors of classes and modules
/// Makes what the categories are looked up in.
ZU_API void zu___UnicodeGencStartup( void );
/// Releases what the categories are looked up in.
ZU_API void zu___UnicodeGencShutdown( void );

ZU_END_DECLS
