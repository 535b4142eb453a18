// The calendar against Python's datetime, and conversion against the C library's, over random times.

#include "zu/base/zu_time.h"
#include "zu_test_support.h"

#include <array>
#include <ctime>
#include <random>
#include <sstream>

using FIELDS = std::array<ZU_INT, 6>;

static FIELDS fieldsOf( ZU_TIME *tm )
{
    return { zuTimeYear( tm ), zuTimeMonth( tm ),  zuTimeDay( tm ),
             zuTimeHour( tm ), zuTimeMinute( tm ), zuTimeSecond( tm ) };
}
static ZU_TIME *makeTime( const FIELDS &f )
{
    return zuTimeTryCreateFromSystemTime( f[ 0 ], f[ 1 ], f[ 2 ], f[ 3 ], f[ 4 ], f[ 5 ] );
}

struct ROW {
    FIELDS time;
    ZU_INT weekday;
    ZU_INT dayOfYear;
    ZU_INT since1970;
    ZU_INT days;
    FIELDS shifted;
};
static bool readRow( std::istream &in, ROW *row )
{
    for ( ZU_INT &field : row->time ) {
        in >> field;
    }
    in >> row->weekday >> row->dayOfYear >> row->since1970 >> row->days;
    for ( ZU_INT &field : row->shifted ) {
        in >> field;
    }
    return bool( in );
}

TEST( TimeConformance, CalendarIsThatOfPython )
{
    static constexpr int COUNT = 20000;
    std::string seed = std::to_string( std::random_device()() );
    std::istringstream reference(
        runProgram( "python3 " ZU_TEST_SOURCE_DIR "/time_reference.py " + seed + " " + std::to_string( COUNT ) ) );
    ROW row;
    FIELDS previous = { 1970, 1, 1, 0, 0, 0 };
    ZU_INT previousSince1970 = 0;
    int count = 0;
    while ( readRow( reference, &row ) && !HasFailure() ) {
        SCOPED_TRACE( "seed " + seed + ", line " + std::to_string( ++count ) );
        ZU_TIME *tm = makeTime( row.time );
        EXPECT_EQ( zuTimeWeekday( tm ), row.weekday );
        EXPECT_EQ( zuTimeDayOfYear( tm ), row.dayOfYear );
        ZU_INT seconds = 0;
        EXPECT_TRUE( zuTimeTryConvertToTimeT( tm, &seconds ) || row.since1970 == -1 );
        EXPECT_EQ( seconds, row.since1970 );

        ZU_TIME *other = zuTimeTryCreateFromTimeT( row.since1970 );
        EXPECT_EQ( fieldsOf( other ), row.time );
        zuTimeRelease( other );

        other = makeTime( previous );
        EXPECT_TRUE( zuTimeDeltaSeconds( other, tm, &seconds ) );
        EXPECT_EQ( seconds, row.since1970 - previousSince1970 );
        zuTimeRelease( other );

        zuTimeShiftDays( &tm, row.days );
        EXPECT_EQ( fieldsOf( tm ), row.shifted );
        // The same days in hours, minutes or seconds.
        for ( auto shift : { zuTimeShiftHours, zuTimeShiftMinutes, zuTimeShiftSeconds } ) {
            ZU_INT unit = shift == zuTimeShiftHours ? 24 : shift == zuTimeShiftMinutes ? 24 * 60 : 24 * 60 * 60;
            other = makeTime( row.time );
            shift( &other, row.days * unit );
            EXPECT_EQ( fieldsOf( other ), row.shifted );
            zuTimeRelease( other );
        }
        zuTimeRelease( tm );
        previous = row.time;
        previousSince1970 = row.since1970;
    }
    EXPECT_EQ( count, COUNT );
}

static void expectAsByTheCLibrary( ZU_INT seconds )
{
    SCOPED_TRACE( seconds );
    time_t given = seconds;
    struct tm wanted;
    bool possible = gmtime_r( &given, &wanted ) != nullptr;
    ZU_TIME *tm = zuTimeTryCreateFromTimeT( seconds );
    ASSERT_EQ( tm != nullptr, possible );
    if ( !possible ) {
        return;
    }
    EXPECT_EQ( fieldsOf( tm ), ( FIELDS{ (ZU_INT)wanted.tm_year + 1900, wanted.tm_mon + 1, wanted.tm_mday,
                                         wanted.tm_hour, wanted.tm_min, wanted.tm_sec } ) );
    // Any day, leap seconds too, may come back.
    zuTimeSetDay( &tm, 1 + ( seconds & 31 ) % 31 );
    zuTimeSetSecond( &tm, ( seconds & 63 ) % 62 );
    wanted.tm_mday = (int)zuTimeDay( tm );
    wanted.tm_sec = (int)zuTimeSecond( tm );
    ZU_INT back = -7;
    ZU_INT wantedBack = timegm( &wanted );
    EXPECT_EQ( zuTimeTryConvertToTimeT( tm, &back ), wantedBack != -1 );
    EXPECT_EQ( back, wantedBack != -1 ? wantedBack : 0 );
    zuTimeRelease( tm );
}
TEST( TimeConformance, ConversionIsThatOfTheCLibrary )
{
    uint64_t seed = std::random_device()();
    SCOPED_TRACE( seed );
    std::mt19937_64 random( seed );
    static constexpr ZU_INT LAST = 67768036191676799; // of the years that gmtime_r knows
    static constexpr ZU_INT FIRST = -67768040609740800;
    for ( ZU_INT seconds : { ZU_INT_MIN, FIRST - 1, FIRST, (ZU_INT)-1, (ZU_INT)0, LAST, LAST + 1, ZU_INT_MAX } ) {
        expectAsByTheCLibrary( seconds );
    }
    for ( int i = 0; i < 100000 && !HasFailure(); i++ ) {
        expectAsByTheCLibrary( (ZU_INT)random() >> ( random() % 64 ) );
    }
}
TEST( TimeConformance, YearsOutsideAreNotConverted )
{
    for ( ZU_INT year : { ZU_INT_MIN, (ZU_INT)-2147481749, (ZU_INT)2147485548, ZU_INT_MAX } ) {
        ZU_TIME *tm = zuTimeTryCreateFromSystemTime( year, 12, 31, 23, 59, 59 );
        ZU_INT seconds = -7;
        EXPECT_FALSE( zuTimeTryConvertToTimeT( tm, &seconds ) );
        EXPECT_EQ( seconds, 0 );
        zuTimeRelease( tm );
    }
}
