// Offsets from UTC, now, in every zone that the system knows, against Python's zoneinfo.

#include "zu_test_support.h"

static std::string nameOfZone()
{
    zu::Ref<ZU_STRING> name = zu::adopt( zuTimezone() );
    return std::string( zuStringBacking( name.get() ), zuStringBacking( name.get() ) + zuStringLength( name.get() ) );
}
static bool isKnown( const std::string &name )
{
    return zuTimezoneIanaOk( zu::adopt( zuStringCreateFromAscii( name.data(), (ZU_INT)name.size() ) ).get() );
}

TEST( TimezoneConformance, OffsetsAreThoseOfPython )
{
    std::istringstream reference( runProgram( "env --unset=TZ python3 " ZU_TEST_SOURCE_DIR "/timezone_reference.py" ) );
    const char *before = getenv( "TZ" );
    std::string kept = before ? before : "";
    std::string name;
    ZU_INT now, later; // as a zone may change its offset while the test runs
    int known = 0;
    while ( reference >> name >> now >> later ) {
        SCOPED_TRACE( name );
        if ( ( reference >> std::ws ).eof() ) {
            unsetenv( "TZ" ); // the last line
        } else {
            setenv( "TZ", name.c_str(), 1 );
        }
        ZU_INT offset = zuTimezoneUtcOffset();
        EXPECT_TRUE( offset == now || offset == later ) << offset;
        if ( name != "-" ) {
            EXPECT_EQ( nameOfZone(), isKnown( name ) ? name : "" );
        }
        known += isKnown( name );
    }
    EXPECT_GT( known, 400 ); // the system has the database
    if ( before ) {
        setenv( "TZ", kept.c_str(), 1 );
    }
}
