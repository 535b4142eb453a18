#include "zu_test_string.h"

TEST( Timezone, IsNamedByTheEnvironment )
{
    const struct {
        const char *tz;
        const char *name;
        ZU_INT offset;
    } rows[] = {
        { "Asia/Tokyo", "Asia/Tokyo", 32400 },
        { ":Asia/Tokyo", "Asia/Tokyo", 32400 },
        { "/usr/share/zoneinfo/Asia/Tokyo", "Asia/Tokyo", 32400 },
        { "UTC", "", 0 }, // a Windows name
        { "", "", 0 },
        { "/nowhere", "", 0 },
        { "XYZ3:30", "", -12600 },
        { "XYZ-0:00:07", "", 7 },
        { "XYZ-24", "", 86400 },
        { "XYZ-24:00:01", "", 0 }, // more than a day
    };
    const char *before = getenv( "TZ" );
    std::string kept = before ? before : "";
    for ( const auto &row : rows ) {
        setenv( "TZ", row.tz, 1 );
        EXPECT_EQ( takeText( zuTimezone() ), row.name ) << row.tz;
        EXPECT_EQ( zuTimezoneUtcOffset(), row.offset ) << row.tz;
    }
    unsetenv( "TZ" );
    std::string machine = takeText( zuTimezone() );
    EXPECT_TRUE( machine.empty() || zuTimezoneIanaOk( string( machine ).get() ) ) << machine;
    if ( before ) {
        setenv( "TZ", kept.c_str(), 1 );
    }
}
