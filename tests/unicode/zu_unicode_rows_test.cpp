// The rows of the four classification tables, which later code turns into dictionaries.

#include "zu_test_support.h"

#include "zu/unicode/zu_unicode_cccv_internal.h"
#include "zu/unicode/zu_unicode_cdmt_internal.h"
#include "zu/unicode/zu_unicode_genc_internal.h"
#include "zu/unicode/zu_unicode_script_internal.h"

#include <algorithm>
#include <iterator>
#include <string>

static std::string upperCase( const std::string &text )
{
    std::string upper;
    for ( char c : text ) {
        upper += c >= 'a' && c <= 'z' ? static_cast<char>( c - 'a' + 'A' ) : c;
    }
    return upper;
}

// A category's name follows from its description, a tag's from the tag, a script's from its name: text in the wrong row
// would not fit.
TEST( UnicodeRows, TextsBelongToTheirSymbols )
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

TEST( UnicodeRows, NamedClassesAreSorted )
{
    EXPECT_EQ( std::size( zu___unicodeCccvRows ), 26u );
    EXPECT_TRUE( std::is_sorted( std::begin( zu___unicodeCccvRows ), std::end( zu___unicodeCccvRows ),
                                 []( const auto &a, const auto &b ) { return a.value < b.value; } ) );
}

TEST( UnicodeRows, RangesOfValues )
{
    for ( ZU_INT value : { ZU_INT_MIN, ZU_INT{ -1 }, ZU_INT{ 256 }, ZU_INT{ 1 } << 32, ZU_INT_MAX } ) {
        EXPECT_FALSE( ZU_UNICODE_GENC_OK( value ) || ZU_UNICODE_CCCV_OK( value ) || ZU_UNICODE_CDMT_OK( value ) ||
                      ZU_UNICODE_SCRIPT_OK( value ) );
    }
    EXPECT_TRUE( ZU_UNICODE_GENC_OK( 0 ) && ZU_UNICODE_GENC_OK( 29 ) && !ZU_UNICODE_GENC_OK( 30 ) );
    EXPECT_TRUE( ZU_UNICODE_CCCV_OK( 0 ) && ZU_UNICODE_CCCV_OK( 255 ) );
    EXPECT_TRUE( ZU_UNICODE_CDMT_OK( 0 ) && ZU_UNICODE_CDMT_OK( 17 ) && !ZU_UNICODE_CDMT_OK( 18 ) );
    EXPECT_TRUE( ZU_UNICODE_SCRIPT_OK( 0 ) && ZU_UNICODE_SCRIPT_OK( 99 ) && ZU_UNICODE_SCRIPT_OK( 162 ) &&
                 !ZU_UNICODE_SCRIPT_OK( 163 ) );
}
