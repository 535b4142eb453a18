#include "zu/zu.hpp"

#include "zu_test_support.h"

static zu::Ref<ZU_STRING> string( const std::string &source )
{
    return zu::adopt( zuStringCreateFromUtf8( source.data(), (ZU_INT)source.size() ) );
}
static bool equals( ZU_STRING *zus, const std::string &expected )
{
    zu::Ref<ZU_STRING> owner = zu::adopt( zus );
    return zus && zuStringEqualsCstr( zus, expected.data(), (ZU_INT)expected.size() );
}

TEST( RuntimeVersion, OfTheProduct )
{
    const ZU___MODULE_RECORD &record = zu___module_record;
    EXPECT_TRUE( equals( zuRuntimeVersionProductName(), record.productName ) );
    EXPECT_TRUE( equals( zuRuntimeVersionProductFriendlyName(), record.productFriendlyName ) );
    EXPECT_TRUE( equals( zuRuntimeVersionProductVendorName(), record.productVendorName ) );
    EXPECT_TRUE( equals( zuRuntimeVersionProductCopyright(), record.productCopyright ) );
    EXPECT_STREQ( zu___RuntimeVersionProductBuildTimeCstr(), record.productBuildTime );
    EXPECT_TRUE( equals( zuRuntimeVersionProductVersion(), std::to_string( record.productVersionMajor ) + "." +
                                                               std::to_string( record.productVersionMinor ) + "." +
                                                               std::to_string( record.productVersionRelease ) ) );
    // What the build was told passes the checks that hold for everybody.
    EXPECT_TRUE( zuRuntimeValidateProductName( string( record.productName ).get() ) );
    EXPECT_TRUE( zuRuntimeValidateProductFriendlyName( string( record.productFriendlyName ).get() ) );
    EXPECT_TRUE( zuRuntimeValidateProductVendorName( string( record.productVendorName ).get() ) );
    EXPECT_TRUE( zuRuntimeValidateProductCopyright( string( record.productCopyright ).get() ) );
}
TEST( RuntimeVersion, OfTheApplication ) // as the environment of the tests starts it
{
    EXPECT_TRUE( zuRuntimeVersionApplicationHasIdentifier() );
    EXPECT_TRUE( zuRuntimeVersionApplicationHasFriendlyName() );
    EXPECT_TRUE( zuRuntimeVersionApplicationHasVersion() );
    EXPECT_TRUE( equals( zuRuntimeVersionApplicationIdentifier(), "zu-test" ) );
    EXPECT_TRUE( equals( zuRuntimeVersionApplicationFriendlyName(), "Tests of zu" ) );
    EXPECT_TRUE( equals( zuRuntimeVersionApplicationVersion(), "1.0" ) );
    EXPECT_STREQ( zu___RuntimeVersionApplicationIdentifierCstr(), "zu-test" );
    EXPECT_STREQ( zu___RuntimeVersionApplicationFriendlyNameCstr(), "Tests of zu" );
    EXPECT_STREQ( zu___RuntimeVersionApplicationVersionCstr(), "1.0" );
}

TEST( RuntimeValidate, Tables )
{
    static const std::string HUNDRED( 100, 'a' );
    static const struct {
        ZU_BOOL ( *validate )( ZU_STRING * );
        std::vector<std::string> good;
        std::vector<std::string> bad;
    } ROWS[] = {
        { zuRuntimeValidateProductName,
          { "a", "abc1", "z0", std::string( 32, 'a' ) },
          { "", "1abc", "ab-c", "Abc", "aB", "a b", "a_b", std::string( 33, 'a' ), "\xC3\xA4" } },
        { zuRuntimeValidateProductFriendlyName,
          { "Ab 1", "1", "a b c", HUNDRED },
          { "", " ", " Ab", "Ab ", "A  b", "A-b", "A\tb", HUNDRED + "a", "\xC3\xA4", "\xC4\xB0" } },
        { zuRuntimeValidateProductVendorName,
          { "VELMORA", "A-b c", "-", "- -" },
          { "", "A  b", "A ", "A.b", "A, b", HUNDRED + "a" } },
        { zuRuntimeValidateProductCopyright,
          { "Copyright (c) 2024, a@b.c; x:y", "(),-.:;@" },
          { "", "A  b", "A/b", "\xC2\xA9", "A_b", "A*", HUNDRED + "a" } },
        { zuRuntimeValidateProductVersion,
          { "4.10.30", "0.0.0", "0x10.2:11.007", " 1.2 .3", "9223372036854775807.0.0" },
          { "", "4", "4.10", "4.10.30.1", "4.-1.0", "4..0", ".1.2", "1.2.", "a.b.c", "1.2.3a", "1,2,3",
            "9223372036854775808.0.0" } },
    };
    for ( const auto &row : ROWS ) {
        for ( const std::string &text : row.good ) {
            EXPECT_TRUE( row.validate( string( text ).get() ) ) << &row - ROWS << ": " << text;
        }
        for ( const std::string &text : row.bad ) {
            EXPECT_FALSE( row.validate( string( text ).get() ) ) << &row - ROWS << ": " << text;
        }
    }
}
TEST( RuntimeValidateAborts, OnNull )
{
    expectAbort( "name", [] { zuRuntimeValidateModuleName( nullptr ); } );
    expectAbort( "productName", [] { zuRuntimeValidateProductName( nullptr ); } );
    expectAbort( "productFriendlyName", [] { zuRuntimeValidateProductFriendlyName( nullptr ); } );
    expectAbort( "productVendorName", [] { zuRuntimeValidateProductVendorName( nullptr ); } );
    expectAbort( "productCopyright", [] { zuRuntimeValidateProductCopyright( nullptr ); } );
    expectAbort( "productVersion", [] { zuRuntimeValidateProductVersion( nullptr ); } );
}
