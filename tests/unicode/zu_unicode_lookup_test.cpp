// The rows of the four classification tables, and the lookups in them.

#include "zu/unicode/zu_unicode_cccv_internal.h"
#include "zu/unicode/zu_unicode_cdmt_internal.h"
#include "zu/unicode/zu_unicode_genc_internal.h"
#include "zu/unicode/zu_unicode_script_internal.h"
#include "zu_test_string.h"

template <typename FUNC>
static void expectValue( FUNC from, const std::string &text, ZU_INT expected )
{
    zu::Ref<ZU_STRING> zus = string( text );
    EXPECT_EQ( from( zus.get() ), expected ) << text;
    EXPECT_EQ( textOf( zus.get() ), text ); // the caller's text stays
}
static std::string upperCase( std::string text )
{
    for ( char &c : text ) {
        c = c >= 'a' && c <= 'z' ? (char)( c - 'a' + 'A' ) : c;
    }
    return text;
}

// A category's name follows from its description, a tag's from the tag, a script's from its name: text in the wrong row
// would not fit.
TEST( UnicodeLookup, TextsBelongToTheirSymbols )
{
    for ( const auto &row : zu___unicodeGencRows ) {
        std::string words;
        for ( char c : upperCase( row.description ) ) {
            words += c == ',' ? "" : c == ' ' ? "_" : std::string( 1, c );
        }
        EXPECT_EQ( std::string( row.symName ).rfind( "ZU_UNICODE_GENC_" + words, 0 ), 0u ) << row.symName;
    }
    for ( const auto &row : zu___unicodeCdmtRows ) {
        std::string tag = row.tag;
        if ( row.value > 1 ) {
            EXPECT_EQ( "<" + std::string( row.symName ).substr( 16 ) + ">", upperCase( tag ) );
        } else {
            EXPECT_EQ( tag, "" );
        }
    }
    for ( const auto &row : zu___unicodeScriptRows ) {
        EXPECT_EQ( row.symName, "ZU_UNICODE_SCRIPT_" + upperCase( row.name ) );
    }
}
TEST( UnicodeLookup, Categories )
{
    for ( const auto &row : zu___unicodeGencRows ) {
        EXPECT_EQ( takeText( zuUnicodeGencAbbreviation( row.value ) ), row.abbreviation );
        EXPECT_EQ( takeText( zuUnicodeGencDescription( row.value ) ), row.description );
        EXPECT_EQ( takeText( zuUnicodeGencSymName( row.value ) ), row.symName );
        expectValue( zuUnicodeGencFromAbbreviation, row.abbreviation, row.value );
        expectValue( zuUnicodeGencFromAbbreviationCaseFold, row.abbreviation, -1 );
    }
    for ( const char *unknown : { "lu", "LU", "", "Lux" } ) {
        expectValue( zuUnicodeGencFromAbbreviation, unknown, -1 );
        expectValue( zuUnicodeGencFromAbbreviationCaseFold, unknown, -1 );
    }
}
TEST( UnicodeLookup, CombiningClasses )
{
    const auto *row = zu___unicodeCccvRows;
    for ( ZU_INT value = 0; value < 256; value++ ) {
        if ( row != std::end( zu___unicodeCccvRows ) && row->value == value ) {
            EXPECT_EQ( takeText( zuUnicodeCccvDescription( value ) ), row->description );
            EXPECT_EQ( takeText( zuUnicodeCccvSymName( value ) ), row->symName );
            row++; // they ascend
        } else {
            EXPECT_EQ( takeText( zuUnicodeCccvDescription( value ) ),
                       "Canonical Combining Class Value " + std::to_string( value ) );
            EXPECT_EQ( zuUnicodeCccvSymName( value ), nullptr ) << value;
        }
    }
    EXPECT_EQ( row, std::begin( zu___unicodeCccvRows ) + 26 );
}
TEST( UnicodeLookup, DecompositionTags )
{
    for ( const auto &row : zu___unicodeCdmtRows ) {
        EXPECT_EQ( takeText( zuUnicodeCdmtDescription( row.value ) ), row.description );
        EXPECT_EQ( takeText( zuUnicodeCdmtSymName( row.value ) ), row.symName );
        if ( row.value > ZU_UNICODE_CDMT_CANONICAL ) {
            ZU_INT folded = row.value == ZU_UNICODE_CDMT_NOBREAK ? -1 : row.value;
            EXPECT_EQ( takeText( zuUnicodeCdmtTag( row.value ) ), row.tag );
            expectValue( zuUnicodeCdmtFromTag, row.tag, row.value );
            expectValue( zuUnicodeCdmtFromTag, upperCase( row.tag ), -1 );
            expectValue( zuUnicodeCdmtFromTagCaseFold, row.tag, folded );
            expectValue( zuUnicodeCdmtFromTagCaseFold, upperCase( row.tag ), folded );
        }
    }
    expectValue( zuUnicodeCdmtFromTag, "", -1 );
    expectValue( zuUnicodeCdmtFromTagCaseFold, "<nobreak>", -1 );
}
TEST( UnicodeLookup, Scripts )
{
    for ( const auto &row : zu___unicodeScriptRows ) {
        EXPECT_EQ( takeText( zuUnicodeScriptName( row.value ) ), row.name );
        EXPECT_EQ( takeText( zuUnicodeScriptSymName( row.value ) ), row.symName );
        expectValue( zuUnicodeScriptFromName, row.name, row.value );
        expectValue( zuUnicodeScriptFromName, upperCase( row.name ), -1 );
        expectValue( zuUnicodeScriptFromNameCaseFold, upperCase( row.name ), row.value );
    }
    expectValue( zuUnicodeScriptFromNameCaseFold, "old_uyghur", 159 );
    expectValue( zuUnicodeScriptFromNameCaseFold, "Klingon", -1 );
}
