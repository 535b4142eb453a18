// What the database must answer whatever its tables look like; tests/conformance compares every code point.

#include "zu_test_support.h"

#include "zu/unicode/zu_unicode_db.h"

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
