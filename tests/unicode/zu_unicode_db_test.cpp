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

TEST( UnicodeDb, DigitsOfAllScriptsHaveValues )
{
    for ( ZU_CHAR zero : { 0x30u, 0x660u, 0x966u, 0xFF10u, 0x1D7CEu, 0x1D7F6u } ) {
        for ( ZU_CHAR digit = 0; digit < 10; ++digit ) {
            EXPECT_EQ( zu___UnicodeDecimalDbLookup( zero + digit ), digit );
        }
    }
    for ( ZU_CHAR ch : { 0x2Fu, 0x3Au, 0xB2u, 0x2160u, 0x4E00u, 0x10FFFFu } ) {
        EXPECT_EQ( zu___UnicodeDecimalDbLookup( ch ), -1 );
    }
}

// Decomposition and composition
static void expectDecomposition( ZU_CHAR ch, ZU_INT tag, const std::vector<ZU_CHAR> &wanted )
{
    ZU_INT length = -1;
    ZU_UNICODE_CDMT foundTag = -1;
    const ZU_CHAR *found = zu___UnicodeCdmDbLookup( ch, &length, &foundTag );
    ASSERT_EQ( found != nullptr, !wanted.empty() ) << std::hex << ch;
    EXPECT_EQ( std::vector<ZU_CHAR>( found, found + length ), wanted ) << std::hex << ch;
    EXPECT_EQ( foundTag, tag ) << std::hex << ch;
}

TEST( UnicodeDb, DecomposesOneStep )
{
    expectDecomposition( 0x00C0, 1, { 0x41, 0x300 } );
    expectDecomposition( 0x1E69, 1, { 0x1E63, 0x307 } );
    expectDecomposition( 0x2FA1D, 1, { 0x2A600 } );
    expectDecomposition( 0xFDFA, 7,
                         { 0x635, 0x644, 0x649, 0x20, 0x627, 0x644, 0x644, 0x647, 0x20, 0x639, 0x644, 0x64A, 0x647,
                           0x20, 0x648, 0x633, 0x644, 0x645 } );
    for ( ZU_CHAR ch : { 0x41u, 0xAC00u, 0xD7A3u, 0xD800u, 0x10FFFFu } ) {
        expectDecomposition( ch, 0, {} );
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

TEST( UnicodeDb, ComposesPrimaryCompositesOnly )
{
    static constexpr struct {
        ZU_CHAR first, second, composite;
    } ROWS[] = {
        { 0x41, 0x300, 0xC0 }, { 0x1E63, 0x307, 0x1E69 }, { 0x11131, 0x11127, 0x1112E },
        { 0x300, 0x41, 0 },    // the order counts
        { 0x915, 0x93C, 0 },   // U+0958, excluded by the list
        { 0x308, 0x301, 0 },   // U+0344, a mark itself
        { 0x1100, 0x1161, 0 }, // Hangul is computed
        { 0xAC00, 0x11A8, 0 }, { 0xD800, 0xDC00, 0 },     { 0x10FFFF, 0x10FFFF, 0 },
    };
    for ( const auto &row : ROWS ) {
        ZU_CHAR composite = 1;
        ZU_BOOL composes = row.composite ? ZU_TRUE : ZU_FALSE;
        EXPECT_EQ( zu___UnicodeCompDbLookup( row.first, row.second, &composite ), composes ) << std::hex << row.first;
        EXPECT_EQ( composite, row.composite ) << std::hex << row.first;
        EXPECT_EQ( zu___UnicodeCompDbLookup( row.first, row.second, nullptr ), composes ) << std::hex << row.first;
    }
}

// Case
using CaseLookup = const ZU_CHAR *( ZU_CHAR, ZU_INT * );

static void expectCase( CaseLookup *lookup, ZU_CHAR ch, const std::vector<ZU_CHAR> &wanted )
{
    ZU_INT length = -1;
    const ZU_CHAR *found = lookup( ch, &length );
    ASSERT_EQ( found != nullptr, !wanted.empty() ) << std::hex << ch;
    EXPECT_EQ( std::vector<ZU_CHAR>( found, found + length ), wanted ) << std::hex << ch;
    EXPECT_EQ( lookup( ch, nullptr ), found );
}

TEST( UnicodeDb, MapsCaseInFullAndOutOfContext )
{
    expectCase( zu___UnicodeLowerCaseDbLookup, 'A', { 'a' } );
    expectCase( zu___UnicodeLowerCaseDbLookup, 'a', {} );
    expectCase( zu___UnicodeLowerCaseDbLookup, 'I', { 'i' } ); // not as in Turkish
    expectCase( zu___UnicodeLowerCaseDbLookup, 0x130, { 'i', 0x307 } );
    expectCase( zu___UnicodeLowerCaseDbLookup, 0x3A3, { 0x3C3 } ); // not as at the end of a word
    expectCase( zu___UnicodeLowerCaseDbLookup, 0x10FFFF, {} );
    expectCase( zu___UnicodeUpperCaseDbLookup, 'A', {} );
    expectCase( zu___UnicodeUpperCaseDbLookup, 0xDF, { 'S', 'S' } );
    expectCase( zu___UnicodeUpperCaseDbLookup, 0x390, { 0x399, 0x308, 0x301 } );
    expectCase( zu___UnicodeCaseFoldDbLookup, 'a', {} );
    expectCase( zu___UnicodeCaseFoldDbLookup, 0xDF, { 's', 's' } );
    expectCase( zu___UnicodeCaseFoldDbLookup, 0x1E9E, { 's', 's' } );
    expectCase( zu___UnicodeCaseFoldDbLookup, 0x130, { 'i', 0x307 } );
    expectCase( zu___UnicodeCaseFoldDbLookup, 0x13A0, {} );
    expectCase( zu___UnicodeCaseFoldDbLookup, 0xAB70, { 0x13A0 } ); // Cherokee folds to upper case
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
