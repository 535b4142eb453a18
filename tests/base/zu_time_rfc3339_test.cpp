#include "zu_test_support.h"

static zu::Ref<ZU_TIME> read( const std::string &text )
{
    return zu::adopt( zuTimeTryCreateFromRfc3339( zu::text( text ).get() ) );
}

TEST( TimeRfc3339, ReadsWhatItWrites )
{
    SeededRandom random;
    for ( int round = 0; round < 20000 && !HasFailure(); round++ ) {
        ZU_INT seconds = (ZU_INT)( random() % 315000000000 ) - 62100000000;
        zu::Ref<ZU_TIME> tm = zu::adopt( zuTimeTryCreateFromTimeT( seconds ) );
        zu::Ref<ZU_STRING> text = zu::adopt( zuTimeTryConvertToRfc3339( tm.get() ) );
        ASSERT_TRUE( text ) << seconds;
        ASSERT_EQ( read( zu::toUtf8( text ) ), tm ) << text;
        // The same moment, told from elsewhere
        ZU_INT offset = (ZU_INT)( random() % 2879 ) - 1439;
        zu::Ref<ZU_TIME> local = zu::adopt( zuTimeTryCreateFromTimeT( seconds + 60 * offset ) );
        std::string there = zu::toUtf8( zu::adopt( zuTimeTryConvertToRfc3339( local.get() ) ) );
        ZU_INT size = std::abs( offset );
        there.replace( 19, 1,
                       zu::toUtf8( zu::format( ".5%s%02i:%02i", offset < 0 ? "-" : "+", size / 60, size % 60 ) ) );
        ASSERT_EQ( read( there ), tm ) << there;
    }
}
TEST( TimeRfc3339, RefusesAllElse )
{
    for ( const char *text :
          { "2024-03-01T09:05:07", "2024-03-01", "2024-3-01T09:05:07Z", "2024-02-30T09:05:07Z", "2023-02-29T09:05:07Z",
            "2024-13-01T09:05:07Z", "2024-00-01T09:05:07Z", "2024-01-00T09:05:07Z", "2024-03-01T24:00:00Z",
            "2024-03-01T09:60:07Z", "2024-03-01T09:05:61Z", "2024-03-01T09:05:60Z", "2024-03-01T09:05:07.Z",
            "2024-03-01T09:05:07+24:00", "2024-03-01T09:05:07+0100", "2024-03-01T09:05:07Z ", " 2024-03-01T09:05:07Z",
            "12024-03-01T09:05:07Z", "" } ) {
        EXPECT_FALSE( read( text ) ) << text;
    }
    EXPECT_EQ( zu::toText( read( "1990-12-31t15:59:60-08:00" ) ), zu::toText( read( "1990-12-31 23:59:60z" ) ) );
    zu::Ref<ZU_TIME> tm = zu::adopt( zuTimeCreate() );
    zuTimeSetYear( tm.inOut(), 10000 );
    EXPECT_FALSE( zu::adopt( zuTimeTryConvertToRfc3339( tm.get() ) ) );
}
TEST( StoreReal, KeepsEveryBit )
{
    using namespace zu::literals;
    zu::Ref<ZU_STORE> store = zu::adopt( zuStoreCreate() );
    zu::Ref<ZU_STRING> address = "a"_zs;
    for ( double number : { 1e-9, 12345.015625, 0.1 + 0.2, -1.7976931348623157e308, 5e-324 } ) {
        double values[ 4 ] = {};
        zuStoreSetValueRealExact( store.inOut(), address.get(), number );
        EXPECT_TRUE( zuStoreValueRealExactAt( store.get(), &values[ 0 ], 0 ) );
        zuStoreSetValueRealExactAt( store.inOut(), 0, number );
        EXPECT_TRUE( zuStoreValueRealExactCstr( store.get(), &values[ 1 ], "a", -1 ) );
        zuStoreSetValueRealExactCstr( store.inOut(), "a", 1, number );
        EXPECT_TRUE( zuStoreValueRealExactWcstr( store.get(), &values[ 2 ], u"a", -1 ) );
        zuStoreSetValueRealExactWcstr( store.inOut(), u"a", -1, number );
        EXPECT_TRUE( zuStoreValueRealExact( store.get(), &values[ 3 ], address.get() ) );
        for ( double value : values ) {
            EXPECT_EQ( value, number );
        }
    }
    zuStoreSetValueCstr( store.inOut(), "a", -1, "1 "_zs.get() );
    double value = 1;
    EXPECT_FALSE( zuStoreValueRealExact( store.get(), &value, address.get() ) );
    EXPECT_EQ( value, 0 );
}
