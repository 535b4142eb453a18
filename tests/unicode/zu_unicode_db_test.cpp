// What the database must answer whatever its tables look like; tests/conformance compares every code point.

#include "zu_test_support.h"

#include "zu/unicode/zu_unicode_db.h"

#include <initializer_list>
#include <vector>

// Values

// One character of each category, and the value that the interface gives the category.
TEST( UnicodeDb, CategoriesHaveTheirValues )
{
    static constexpr struct {
        ZU_CHAR ch;
        ZU_INT genc;
    } ROWS[] = { { 0x0378, 0 },  { 'A', 1 },     { 'a', 2 },     { 0x01C5, 3 },  { 0x02B0, 4 },  { 0x4E00, 5 },
                 { 0x0301, 6 },  { 0x0903, 7 },  { 0x20DD, 8 },  { '0', 9 },     { 0x2160, 10 }, { 0x00BD, 11 },
                 { '_', 12 },    { '-', 13 },    { '(', 14 },    { ')', 15 },    { 0x00AB, 16 }, { 0x00BB, 17 },
                 { '!', 18 },    { '+', 19 },    { '$', 20 },    { '^', 21 },    { 0x00A9, 22 }, { ' ', 23 },
                 { 0x2028, 24 }, { 0x2029, 25 }, { 0x000A, 26 }, { 0x200B, 27 }, { 0xD800, 28 }, { 0x10FFFD, 29 } };
    for ( const auto &row : ROWS ) {
        EXPECT_EQ( zu___UnicodeGencDbLookup( row.ch ), row.genc ) << std::hex << row.ch;
    }
}

TEST( UnicodeDb, ScriptsHaveTheirValues )
{
    static constexpr struct {
        ZU_CHAR ch;
        ZU_INT script;
    } ROWS[] = { { 0x0378, 0 },    { ' ', 1 },       { 'a', 2 },       { 0x03B1, 3 },    { 0x0905, 10 },
                 { 0x4E00, 36 },   { 0x0301, 41 },   { 0x109A0, 97 },  { 0x10980, 98 },  { 0x16F00, 100 },
                 { 0x11183, 101 }, { 0x1D800, 132 }, { 0x10F70, 159 }, { 0x1E290, 161 }, { 0x10570, 162 },
                 { 0xE0100, 41 },  { 0xE0200, 0 },   { 0x10FFFF, 0 } };
    for ( const auto &row : ROWS ) {
        EXPECT_EQ( zu___UnicodeScriptDbLookup( row.ch ), row.script ) << std::hex << row.ch;
    }
}

TEST( UnicodeDb, DecompositionTagsHaveTheirValues )
{
    static constexpr struct {
        ZU_CHAR ch;
        ZU_INT tag;
    } ROWS[] = { { 0x2102, 2 },  { 0x00A0, 3 },  { 0xFE91, 4 },  { 0xFE92, 5 },  { 0xFE90, 6 },  { 0xFE8F, 7 },
                 { 0x2460, 8 },  { 0x00B2, 9 },  { 0x2080, 10 }, { 0xFE30, 11 }, { 0xFF21, 12 }, { 0xFF61, 13 },
                 { 0xFE50, 14 }, { 0x3300, 15 }, { 0x00BD, 16 }, { 0xFB01, 17 } };
    for ( const auto &row : ROWS ) {
        ZU_UNICODE_CDMT tag;
        EXPECT_TRUE( zu___UnicodeCdmDbLookup( row.ch, nullptr, &tag ) );
        EXPECT_EQ( tag, row.tag ) << std::hex << row.ch;
    }
}

TEST( UnicodeDb, ResultsMayBeLeftOut )
{
    ZU_INT length;
    ZU_UNICODE_CDMT tag;
    const ZU_CHAR *parts = zu___UnicodeCdmDbLookup( 0x1E69, &length, &tag );
    EXPECT_EQ( std::vector<ZU_CHAR>( parts, parts + length ), ( std::vector<ZU_CHAR>{ 0x1E63, 0x307 } ) ) << "one step";
    EXPECT_EQ( zu___UnicodeCdmDbLookup( 0x1E69, nullptr, nullptr ), parts );
    EXPECT_TRUE( zu___UnicodeCompDbLookup( 0x1E63, 0x307, nullptr ) );
    EXPECT_FALSE( zu___UnicodeCompDbLookup( 0x307, 0x1E63, nullptr ) );
    for ( auto *lookup :
          { zu___UnicodeLowerCaseDbLookup, zu___UnicodeUpperCaseDbLookup, zu___UnicodeCaseFoldDbLookup } ) {
        const ZU_CHAR *mapping = lookup( 0x1C5, &length ); // in title case, which all of them change
        EXPECT_EQ( std::vector<ZU_CHAR>( mapping, mapping + length ).size(), 1u );
        EXPECT_EQ( lookup( 0x1C5, nullptr ), mapping );
        EXPECT_EQ( lookup( '1', nullptr ), nullptr );
    }
}

TEST( UnicodeDbAborts, NoCodePoint )
{
    for ( ZU_CHAR ch : { 0x110000u, 0xFFFFFFFFu } ) {
        expectAbort( "ZU_CHAR_OK( ch )", [ & ] { zu___UnicodeGencDbLookup( ch ); } );
        expectAbort( "ZU_CHAR_OK( ch )", [ & ] { zu___UnicodeCccvDbLookup( ch ); } );
        expectAbort( "ZU_CHAR_OK( ch )", [ & ] { zu___UnicodeScriptDbLookup( ch ); } );
        expectAbort( "ZU_CHAR_OK( ch )", [ & ] { zu___UnicodeDecimalDbLookup( ch ); } );
        expectAbort( "ZU_CHAR_OK( ch )", [ & ] { zu___UnicodeCdmDbLookup( ch, nullptr, nullptr ); } );
        expectAbort( "ZU_CHAR_OK( ch1 )", [ & ] { zu___UnicodeCompDbLookup( ch, ch, nullptr ); } );
        expectAbort( "ZU_CHAR_OK( ch2 )", [ & ] { zu___UnicodeCompDbLookup( 'A', ch, nullptr ); } );
        expectAbort( "ZU_CHAR_OK( ch )", [ & ] { zu___UnicodeLowerCaseDbLookup( ch, nullptr ); } );
        expectAbort( "ZU_CHAR_OK( ch )", [ & ] { zu___UnicodeUpperCaseDbLookup( ch, nullptr ); } );
        expectAbort( "ZU_CHAR_OK( ch )", [ & ] { zu___UnicodeCaseFoldDbLookup( ch, nullptr ); } );
    }
}
