#include "zu/base/zu_timezone_table_internal.h"
#include "zu_test_string.h"

// The rows as they are read one by one, where the first one that has a name wins.
TEST( Timezone, TranslatesTheRowsBothWays )
{
    std::set<std::string> names;
    for ( const ZU___TIMEZONE_ROW &row : ZU___TIMEZONE_ROWS ) {
        std::string iana( row.iana );
        std::string windows( row.windows );
        EXPECT_TRUE( zuTimezoneWindowsOk( zu::text( windows ).get() ) ) << windows;
        EXPECT_EQ( takeText( zuTimezoneWindowsToIana( zu::text( windows ).get() ) ),
                   iana.substr( 0, iana.find( ',' ) ) );
        for ( size_t begin = 0; begin < iana.size(); ) {
            std::string name = iana.substr( begin, iana.find( ',', begin ) - begin );
            EXPECT_TRUE( names.insert( name ).second ) << name;
            EXPECT_TRUE( zuTimezoneIanaOk( zu::text( name ).get() ) ) << name;
            EXPECT_EQ( takeText( zuTimezoneIanaToWindows( zu::text( name ).get() ) ), windows ) << name;
            begin += name.size() + 1;
        }
    }
    EXPECT_EQ( std::size( ZU___TIMEZONE_ROWS ), 132u );
    EXPECT_EQ( names.size(), 455u );
    EXPECT_EQ( takeTexts( zuTimezoneList() ), std::vector<std::string>( names.begin(), names.end() ) );
}
TEST( Timezone, KnowsNothingElse )
{
    for ( std::string_view name : { std::string_view( "" ), std::string_view( "Europe" ),
                                    std::string_view( "Europe/Berlin\0", 14 ), std::string_view( "europe/berlin" ),
                                    std::string_view( "Europe/BerlinX" ), std::string_view( "Pacific/Ponape" ),
                                    std::string_view( "W. Europe Standard Tim" ), std::string_view( "~" ) } ) {
        EXPECT_FALSE( zuTimezoneIanaOk( zu::text( name ).get() ) ) << name;
        EXPECT_FALSE( zuTimezoneWindowsOk( zu::text( name ).get() ) ) << name;
        EXPECT_EQ( takeText( zuTimezoneIanaToWindows( zu::text( name ).get() ) ), "" ) << name;
        EXPECT_EQ( takeText( zuTimezoneWindowsToIana( zu::text( name ).get() ) ), "" ) << name;
    }
    expectAbort( "key", [] { zuTimezoneIanaOk( nullptr ); } );
}
