// The calendar against Python's datetime, and conversion against the C library's, over random times.

#include "zu_test_support.h"

#include <ctime>

using FIELDS = std::array<ZU_INT, 6>;

using TIME = zu::Ref<ZU_TIME>;

static FIELDS fieldsOf( const TIME &tm )
{
    return { zuTimeYear( tm.get() ), zuTimeMonth( tm.get() ),  zuTimeDay( tm.get() ),
             zuTimeHour( tm.get() ), zuTimeMinute( tm.get() ), zuTimeSecond( tm.get() ) };
}
static TIME makeTime( const FIELDS &f )
{
    return zu::adopt( zuTimeTryCreateFromSystemTime( f[ 0 ], f[ 1 ], f[ 2 ], f[ 3 ], f[ 4 ], f[ 5 ] ) );
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
    std::string seed = std::to_string( testSeed() );
    std::istringstream reference(
        runProgram( "python3 " ZU_TEST_SOURCE_DIR "/time_reference.py " + seed + " " + std::to_string( COUNT ) ) );
    ROW row;
    FIELDS previous = { 1970, 1, 1, 0, 0, 0 };
    ZU_INT previousSince1970 = 0;
    int count = 0;
    while ( readRow( reference, &row ) && !HasFailure() ) {
        SCOPED_TRACE( "seed " + seed + ", line " + std::to_string( ++count ) );
        TIME tm = makeTime( row.time );
        EXPECT_EQ( zuTimeWeekday( tm.get() ), row.weekday );
        EXPECT_EQ( zuTimeDayOfYear( tm.get() ), row.dayOfYear );
        ZU_INT seconds = 0;
        EXPECT_TRUE( zuTimeTryConvertToTimeT( tm.get(), &seconds ) || row.since1970 == -1 );
        EXPECT_EQ( seconds, row.since1970 );
        EXPECT_EQ( fieldsOf( zu::adopt( zuTimeTryCreateFromTimeT( row.since1970 ) ) ), row.time );
        EXPECT_TRUE( zuTimeDeltaSeconds( makeTime( previous ).get(), tm.get(), &seconds ) );
        EXPECT_EQ( seconds, row.since1970 - previousSince1970 );
        // Days, and the same in hours, minutes or seconds.
        struct UNIT {
            void ( *shift )( ZU_TIME **, ZU_INT );
            ZU_INT perDay;
        };
        for ( UNIT unit : { UNIT{ zuTimeShiftDays, 1 }, UNIT{ zuTimeShiftHours, 24 }, UNIT{ zuTimeShiftMinutes, 1440 },
                            UNIT{ zuTimeShiftSeconds, 86400 } } ) {
            TIME other = tm;
            unit.shift( other.inOut(), row.days * unit.perDay );
            EXPECT_EQ( fieldsOf( other ), row.shifted );
        }
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
    TIME tm = zu::adopt( zuTimeTryCreateFromTimeT( seconds ) );
    ASSERT_EQ( bool( tm ), possible );
    if ( !possible ) {
        return;
    }
    EXPECT_EQ( fieldsOf( tm ), ( FIELDS{ (ZU_INT)wanted.tm_year + 1900, wanted.tm_mon + 1, wanted.tm_mday,
                                         wanted.tm_hour, wanted.tm_min, wanted.tm_sec } ) );
    // Any day, leap seconds too, may come back.
    zuTimeSetDay( tm.inOut(), wanted.tm_mday = 1 + (int)( seconds & 31 ) % 31 );
    zuTimeSetSecond( tm.inOut(), wanted.tm_sec = (int)( seconds & 63 ) % 62 );
    ZU_INT back = -7;
    ZU_INT wantedBack = timegm( &wanted );
    EXPECT_EQ( zuTimeTryConvertToTimeT( tm.get(), &back ), wantedBack != -1 );
    EXPECT_EQ( back, wantedBack != -1 ? wantedBack : 0 );
}
TEST( TimeConformance, ConversionIsThatOfTheCLibrary )
{
    SeededRandom random;
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
        ZU_INT seconds = -7;
        EXPECT_FALSE( zuTimeTryConvertToTimeT( makeTime( { year, 12, 31, 23, 59, 59 } ).get(), &seconds ) );
        EXPECT_EQ( seconds, 0 );
    }
}
