#include "zu/base/zu_time.h"

#include "zu/base/zu_nanoseconds.h"
#include "zu/base/zu_string.h"
#include "zu/base/zu_time_internal.h"
#include "zu/base/zu_timestamp.h"
#include "zu/sys/zu_mem.h"
#include "zu_test_support.h"

#include <array>
#include <random>
#include <thread>
#include <vector>

using FIELDS = std::array<ZU_INT, 6>;
using SHIFT = void ( * )( ZU_TIME **, ZU_INT );

static std::string takeText( ZU_STRING *zus )
{
    char *chars = zuStringConvertToUtf8( zus, ZU_TRUE, nullptr );
    std::string text = chars;
    zuMemFree( chars );
    zuStringRelease( zus );
    return text;
}
static ZU_TIME *makeTime( const FIELDS &fields )
{
    ZU_TIME *tm = zuTimeCreate();
    zuTimeSetYear( &tm, fields[ 0 ] );
    zuTimeSetMonth( &tm, fields[ 1 ] );
    zuTimeSetDay( &tm, fields[ 2 ] );
    zuTimeSetHour( &tm, fields[ 3 ] );
    zuTimeSetMinute( &tm, fields[ 4 ] );
    zuTimeSetSecond( &tm, fields[ 5 ] );
    return tm;
}
static FIELDS fieldsOf( ZU_TIME *tm )
{
    return { zuTimeYear( tm ), zuTimeMonth( tm ),  zuTimeDay( tm ),
             zuTimeHour( tm ), zuTimeMinute( tm ), zuTimeSecond( tm ) };
}
// Shifts a time that another holder shares, who must not see it.
static FIELDS shifted( const FIELDS &fields, SHIFT shift, ZU_INT amount )
{
    ZU_TIME *tm = makeTime( fields );
    ZU_TIME *holder = zuTimeRetain( tm );
    shift( &tm, amount );
    EXPECT_EQ( fieldsOf( holder ), fields );
    FIELDS result = fieldsOf( tm );
    EXPECT_EQ( tm == holder, result == fields ) << "a copy if, and only if, something changes";
    zuTimeRelease( holder );
    zuTimeRelease( tm );
    return result;
}

struct SHIFT_ROW {
    SHIFT shift;
    ZU_INT amount;
    FIELDS from;
    FIELDS to;
};
TEST( Time, Shifts )
{
    static const SHIFT_ROW ROWS[] = {
        { zuTimeShiftDays, 0, { 2023, 2, 31, 1, 2, 61 }, { 2023, 2, 31, 1, 2, 61 } },
        { zuTimeShiftDays, 1, { 2023, 12, 31, 1, 2, 3 }, { 2024, 1, 1, 1, 2, 3 } },
        { zuTimeShiftDays, -1, { 2024, 1, 1, 1, 2, 3 }, { 2023, 12, 31, 1, 2, 3 } },
        { zuTimeShiftDays, -1, { 0, 1, 1, 0, 0, 0 }, { -1, 12, 31, 0, 0, 0 } },
        { zuTimeShiftDays, 1461, { 2099, 1, 1, 0, 0, 0 }, { 2103, 1, 1, 0, 0, 0 } },
        { zuTimeShiftDays, 1461, { 2096, 2, 29, 0, 0, 0 }, { 2100, 2, 29, 0, 0, 0 } },
        { zuTimeShiftDays, -1461, { 2103, 1, 1, 0, 0, 0 }, { 2099, 1, 1, 0, 0, 0 } },
        { zuTimeShiftDays, 1460, { 2099, 1, 1, 0, 0, 0 }, { 2103, 1, 1, 0, 0, 0 } },
        { zuTimeShiftDays, 146097, { 2000, 1, 1, 0, 0, 0 }, { 2399, 12, 29, 0, 0, 0 } },
        { zuTimeShiftDays, 1, { 2023, 2, 31, 0, 0, 0 }, { 2023, 3, 1, 0, 0, 0 } },
        { zuTimeShiftDays, 2, { 2023, 2, 30, 0, 0, 0 }, { 2023, 3, 2, 0, 0, 0 } },
        { zuTimeShiftDays, -1, { 2023, 2, 31, 0, 0, 0 }, { 2023, 2, 30, 0, 0, 0 } },
        { zuTimeShiftDays, -31, { 2023, 2, 31, 0, 0, 0 }, { 2023, 1, 31, 0, 0, 0 } },
        { zuTimeShiftDays, ZU_INT_MAX, { 0, 1, 1, 0, 0, 0 }, { 25252216391115060, 5, 22, 0, 0, 0 } },
        { zuTimeShiftHours, 25, { 2023, 12, 31, 23, 0, 0 }, { 2024, 1, 2, 0, 0, 0 } },
        { zuTimeShiftHours, -1, { 2024, 3, 1, 0, 59, 60 }, { 2024, 2, 29, 23, 59, 60 } },
        { zuTimeShiftHours, 24 * 1461, { 2099, 1, 1, 5, 0, 0 }, { 2103, 1, 1, 5, 0, 0 } },
        { zuTimeShiftMinutes, -61, { 2024, 1, 1, 0, 0, 0 }, { 2023, 12, 31, 22, 59, 0 } },
        { zuTimeShiftMinutes, 1440, { 2024, 2, 28, 12, 0, 0 }, { 2024, 2, 29, 12, 0, 0 } },
        { zuTimeShiftSeconds, 0, { 2023, 12, 31, 23, 59, 60 }, { 2024, 1, 1, 0, 0, 0 } },
        { zuTimeShiftSeconds, 0, { 2024, 1, 1, 0, 0, 61 }, { 2024, 1, 1, 0, 1, 1 } },
        { zuTimeShiftSeconds, 0, { 2024, 1, 1, 0, 0, 59 }, { 2024, 1, 1, 0, 0, 59 } },
        { zuTimeShiftSeconds, 59, { 2024, 1, 1, 0, 0, 61 }, { 2024, 1, 1, 0, 1, 60 } },
        { zuTimeShiftSeconds, -86401, { 2024, 3, 1, 0, 0, 0 }, { 2024, 2, 28, 23, 59, 59 } },
        { zuTimeShiftMonths, 1, { 2023, 1, 31, 0, 0, 0 }, { 2023, 3, 1, 0, 0, 0 } },
        { zuTimeShiftMonths, 1, { 2024, 1, 31, 0, 0, 0 }, { 2024, 3, 1, 0, 0, 0 } },
        { zuTimeShiftMonths, -1, { 2024, 3, 31, 0, 0, 0 }, { 2024, 3, 1, 0, 0, 0 } },
        { zuTimeShiftMonths, 0, { 2023, 2, 30, 0, 0, 0 }, { 2023, 3, 1, 0, 0, 0 } },
        { zuTimeShiftMonths, -14, { 2024, 1, 31, 4, 5, 6 }, { 2022, 12, 1, 4, 5, 6 } },
        { zuTimeShiftMonths, 23, { 2023, 2, 28, 0, 0, 0 }, { 2025, 1, 28, 0, 0, 0 } },
        { zuTimeShiftMonths, 0, { 2024, 1, 31, 0, 0, 61 }, { 2024, 1, 31, 0, 0, 61 } },
        { zuTimeShiftYears, 1, { 2024, 2, 29, 0, 0, 0 }, { 2025, 3, 1, 0, 0, 0 } },
        { zuTimeShiftYears, -4, { 2024, 2, 29, 0, 0, 0 }, { 2020, 2, 29, 0, 0, 0 } },
        { zuTimeShiftYears, 0, { 2023, 4, 31, 0, 0, 0 }, { 2023, 5, 1, 0, 0, 0 } },
    };
    for ( const SHIFT_ROW &row : ROWS ) {
        EXPECT_EQ( shifted( row.from, row.shift, row.amount ), row.to ) << "row " << &row - ROWS;
    }
}

TEST( Time, OrderIsByFields )
{
    // Each differs from the one ahead in the field that decides.
    static const FIELDS ASCENDING[] = {
        { ZU_INT_MIN, 12, 31, 23, 59, 61 },
        { 0, 1, 1, 0, 0, 0 },
        { 0, 1, 1, 0, 0, 61 },
        { 0, 1, 1, 0, 59, 0 },
        { 0, 1, 1, 23, 0, 0 },
        { 0, 1, 31, 0, 0, 0 },
        { 0, 12, 1, 0, 0, 0 },
        { 1, 1, 1, 0, 0, 0 },
        { ZU_INT_MAX, 1, 1, 0, 0, 0 },
    };
    for ( const FIELDS &a : ASCENDING ) {
        for ( const FIELDS &b : ASCENDING ) {
            ZU_TIME *tmA = makeTime( a );
            ZU_TIME *tmB = makeTime( b );
            EXPECT_EQ( zuTimeCompare( tmA, tmB ), ( &a > &b ) - ( &a < &b ) );
            zuTimeRelease( tmA );
            zuTimeRelease( tmB );
        }
    }
}

TEST( Time, Texts )
{
    struct ROW {
        FIELDS fields;
        const char *text;
    };
    static const ROW ROWS[] = {
        { { 2024, 3, 1, 9, 5, 7 }, "UTC 2024-03-01 09:05:07 (Friday)" },
        { { 0, 1, 1, 0, 0, 0 }, "UTC 0-01-01 00:00:00 (Saturday)" },
        { { 2000, 1, 1, 23, 59, 61 }, "UTC 2000-01-01 23:59:61 (Saturday)" },
        { { 2023, 2, 29, 0, 0, 0 }, "UTC 2023-02-29 00:00:00" },
        { { 123456, 12, 31, 0, 0, 0 }, "UTC 123456-12-31 00:00:00 (Wednesday)" },
    };
    for ( const ROW &row : ROWS ) {
        ZU_TIME *tm = makeTime( row.fields );
        EXPECT_EQ( takeText( zuTimeToString( tm ) ), row.text );
        zuTimeRelease( tm );
    }
}

static ZU_TIME *readTime( const std::string &text )
{
    ZU_STRING *zus = zuStringCreateFromUtf8( text.data(), (ZU_INT)text.size() );
    ZU_TIME *tm = zuTimeTryCreateFromString( zus );
    zuStringRelease( zus );
    return tm;
}
TEST( Time, ReadsTexts )
{
    struct ROW {
        const char *text;
        FIELDS fields;
    };
    static const ROW ROWS[] = {
        { "UTC 2024-03-01 09:05:07 (Friday)", { 2024, 3, 1, 9, 5, 7 } },
        { "\u00A0uTc\t2024-MAR-1 9:5 ( friday )\n", { 2024, 3, 1, 9, 5, 0 } },
        { "2024-february-29 (thursday)", { 2024, 2, 29, 0, 0, 0 } },
        { "2024-2-29 23", { 2024, 2, 29, 23, 0, 0 } },
        { "2024-Dec 0:0:61", { 2024, 12, 1, 0, 0, 61 } },
        { "+7", { 7, 1, 1, 0, 0, 0 } },
        { "UTC 9223372036854775807", { ZU_INT_MAX, 1, 1, 0, 0, 0 } },
        { "UTC 2024  12:30", { 2024, 1, 1, 12, 30, 0 } },
        { "\u0662\u0660-\u0663", { 20, 3, 1, 0, 0, 0 } },
    };
    for ( const ROW &row : ROWS ) {
        ZU_TIME *tm = readTime( row.text );
        ASSERT_NE( tm, nullptr ) << row.text;
        EXPECT_EQ( fieldsOf( tm ), row.fields ) << row.text;
        zuTimeRelease( tm );
    }
    for ( const char *text : { "",
                               " ",
                               "UTC",
                               "UTC ",
                               "UTC UTC 2024",
                               "x",
                               "-1",
                               "2024x",
                               "9223372036854775808",
                               "2024-",
                               "2024-0",
                               "2024-13",
                               "2024-Sept",
                               "2024-3-",
                               "2024-3-0",
                               "2024-3-32",
                               "2024-3-1-1",
                               "2023-2-29",
                               "2024-4-31",
                               "2024 24",
                               "2024 x",
                               "2024 12:",
                               "2024 12:60",
                               "2024 12:30:62",
                               "2024 12:30:30:30",
                               "2024 -1",
                               "2024-2-29 (Monday)",
                               "2024-2-29 (Thu)",
                               "2024-2-29 (",
                               "2024-2-29 ()",
                               "2024-2-29 (Thursday",
                               "2024-2-29 (Thursday) x",
                               "2024-2-29 12:30 (Thursday) x",
                               "2024-2-29 ( Thursday )",
                               "UTC 2024-2-29 12:30  (Thursday)",
                               "2024-2-29 12:30 12:30" } ) {
        EXPECT_EQ( readTime( text ), nullptr ) << text;
    }
}
TEST( Time, ReadsWhatItPrints )
{
    uint64_t seed = std::random_device()();
    SCOPED_TRACE( seed );
    std::mt19937_64 random( seed );
    for ( int i = 0; i < 2000; i++ ) {
        ZU_TIME *tm = makeTime( { (ZU_INT)( random() >> 1 >> random() % 63 ), 1 + (ZU_INT)( random() % 12 ),
                                  1 + (ZU_INT)( random() % 31 ), (ZU_INT)( random() % 24 ), (ZU_INT)( random() % 60 ),
                                  (ZU_INT)( random() % 62 ) } );
        ZU_TIME *read = readTime( takeText( zuTimeToString( tm ) ) );
        ASSERT_EQ( read != nullptr, zuTimeValid( tm ) );
        if ( read ) {
            EXPECT_TRUE( zuTimeEquals( tm, read ) );
            zuTimeRelease( read );
        }
        zuTimeRelease( tm );
    }
}
TEST( Time, NamesOfMonthsAndWeekdays )
{
    auto find = []( ZU_INT ( *fromString )( ZU_STRING * ), const std::string &text ) {
        ZU_STRING *zus = zuStringCreateFromUtf8( text.data(), (ZU_INT)text.size() );
        ZU_INT found = fromString( zus );
        zuStringRelease( zus );
        return found;
    };
    static const char *const MONTHS = "janfebmaraprmayjunjulaugsepoctnovdec";
    for ( ZU_INT month = ZU_MONTH_JANUARY; month <= ZU_MONTH_DECEMBER; month++ ) {
        std::string name = takeText( zuMonthToString( month ) );
        EXPECT_EQ( name.substr( 1, 2 ), std::string( MONTHS + 3 * ( month - 1 ) + 1, 2 ) );
        EXPECT_EQ( find( zuMonthFromString, "\u2003" + name + " \n" ), month );
        EXPECT_EQ( find( zuMonthFromString, std::string( MONTHS + 3 * ( month - 1 ), 3 ) ), month );
        EXPECT_EQ( find( zuMonthFromString, "0" + std::to_string( month ) ), month );
        EXPECT_EQ( find( zuMonthFromString, " " + std::to_string( month ) ), -1 );
    }
    for ( ZU_INT wd = ZU_WEEKDAY_MONDAY; wd <= ZU_WEEKDAY_SUNDAY; wd++ ) {
        std::string name = takeText( zuWeekdayToString( wd ) );
        EXPECT_EQ( find( zuWeekdayFromString, " " + name + "\t" ), wd );
        EXPECT_EQ( find( zuWeekdayFromString, name.substr( 0, 3 ) ), -1 );
    }
    for ( const char *text : { "", " ", "0", "13", "3 ", "janu", "ja", "may x", "1.5" } ) {
        EXPECT_EQ( find( zuMonthFromString, text ), -1 ) << text;
        EXPECT_EQ( find( zuWeekdayFromString, text ), -1 ) << text;
    }
}

struct DELTA_ROW {
    FIELDS from;
    FIELDS to;
    ZU_BOOL ok;
    ZU_INT seconds;
};
TEST( Time, DeltaBeyondTheCalendar )
{
    static const DELTA_ROW ROWS[] = {
        { { 2024, 1, 1, 0, 0, 0 }, { 2024, 1, 1, 0, 0, 0 }, ZU_TRUE, 0 },
        { { 2024, 1, 1, 0, 0, 61 }, { 2024, 1, 1, 0, 1, 0 }, ZU_TRUE, -1 },
        { { 2023, 2, 31, 0, 0, 0 }, { 2023, 3, 1, 0, 0, 0 }, ZU_TRUE, -2 * 86400 },
        { { 2023, 2, 31, 0, 0, 0 }, { 2024, 3, 1, 0, 0, 0 }, ZU_TRUE, ( 365 - 2 ) * 86400 + 86400 },
        { { -400, 1, 1, 0, 0, 0 }, { 400, 1, 1, 0, 0, 0 }, ZU_TRUE, (ZU_INT)2 * 146097 * 86400 },
        { { 0, 1, 1, 0, 0, 0 }, { 292277024626, 1, 1, 0, 0, 0 }, ZU_TRUE, 9223372036825516800 },
        { { 0, 1, 1, 0, 0, 0 }, { 292277024627, 1, 1, 0, 0, 0 }, ZU_FALSE, 0 },
        { { ZU_INT_MIN, 1, 1, 0, 0, 0 }, { ZU_INT_MAX, 12, 31, 23, 59, 61 }, ZU_FALSE, 0 },
        { { ZU_INT_MAX - 1, 12, 31, 23, 0, 0 }, { ZU_INT_MAX, 1, 1, 0, 0, 1 }, ZU_TRUE, 3601 },
    };
    for ( const DELTA_ROW &row : ROWS ) {
        SCOPED_TRACE( &row - ROWS );
        ZU_TIME *from = makeTime( row.from );
        ZU_TIME *to = makeTime( row.to );
        ZU_INT seconds = -7;
        EXPECT_EQ( zuTimeDeltaSeconds( from, to, &seconds ), row.ok );
        EXPECT_EQ( seconds, row.seconds );
        seconds = -7;
        EXPECT_EQ( zuTimeDeltaSeconds( to, from, &seconds ), row.ok );
        EXPECT_EQ( seconds, -row.seconds );
        EXPECT_EQ( zuTimeDeltaSeconds( from, to, nullptr ), row.ok );
        zuTimeRelease( from );
        zuTimeRelease( to );
    }
}

TEST( Time, SystemTimes )
{
    static const FIELDS OK[] = { { -5, 1, 1, 0, 0, 0 }, { 2023, 2, 31, 23, 59, 59 }, { ZU_INT_MAX, 12, 31, 0, 0, 0 } };
    static const FIELDS OUTSIDE[] = {
        { 0, 0, 1, 0, 0, 0 },  { 0, 13, 1, 0, 0, 0 }, { 0, 1, 0, 0, 0, 0 },  { 0, 1, 32, 0, 0, 0 },
        { 0, 1, 1, -1, 0, 0 }, { 0, 1, 1, 24, 0, 0 }, { 0, 1, 1, 0, -1, 0 }, { 0, 1, 1, 0, 60, 0 },
        { 0, 1, 1, 0, 0, -1 }, { 0, 1, 1, 0, 0, 60 },
    };
    for ( const FIELDS &f : OK ) {
        ZU_TIME *tm = zuTimeTryCreateFromSystemTime( f[ 0 ], f[ 1 ], f[ 2 ], f[ 3 ], f[ 4 ], f[ 5 ] );
        EXPECT_EQ( fieldsOf( tm ), f );
        zuTimeRelease( tm );
    }
    for ( const FIELDS &f : OUTSIDE ) {
        EXPECT_EQ( zuTimeTryCreateFromSystemTime( f[ 0 ], f[ 1 ], f[ 2 ], f[ 3 ], f[ 4 ], f[ 5 ] ), nullptr );
    }
}

TEST( Time, NowIsTheWallClock )
{
    ZU_TIME *started = zu___TimeStarted();
    ZU_TIME *tm = zuTimeCreate();
    ZU_TIME *holder = zuTimeRetain( tm );
    ZU_INT before = zu___TimeWallClock();
    zuTimeSetNow( &tm );
    ZU_TIME *now = zuTimeNow();
    ZU_INT after = zu___TimeWallClock();
    for ( ZU_TIME *taken : { tm, now } ) {
        ZU_INT seconds = 0;
        EXPECT_TRUE( zuTimeTryConvertToTimeT( taken, &seconds ) );
        EXPECT_GE( seconds, before );
        EXPECT_LE( seconds, after );
        EXPECT_LE( zuTimeCompare( started, taken ), 0 );
    }
    EXPECT_EQ( zuTimeYear( holder ), 0 );
    for ( ZU_TIME *held : { started, tm, holder, now } ) {
        zuTimeRelease( held );
    }
}

TEST( TimeAborts, Arguments )
{
    ZU_TIME *tm = makeTime( { 2024, 3, 31, 12, 30, 30 } );
    ZU_TIME *null = nullptr;
    expectAbort( "tm", [ & ] { zuTimeSetDay( nullptr, 0 ); } );
    expectAbort( "*tm", [ & ] { zuTimeShiftDays( &null, 0 ); } );
    expectAbort( "from", [ & ] { zuTimeCreateFrom( nullptr ); } );
    for ( auto read : { zuMonthFromString, zuWeekdayFromString } ) {
        expectAbort( "zus", [ & ] { read( nullptr ); } );
    }
    expectAbort( "zus", [ & ] { zuTimeTryCreateFromString( nullptr ); } );
    expectAbort( "tmA", [ & ] { zuTimeDeltaSeconds( nullptr, nullptr, nullptr ); } );
    expectAbort( "tmB", [ & ] { zuTimeDeltaSeconds( tm, nullptr, nullptr ); } );
    for ( ZU_INT month : { 0, 13 } ) {
        expectAbort( "ZU_MONTH_OK( month )", [ & ] { zuTimeSetMonth( &tm, month ); } );
        expectAbort( "ZU_MONTH_OK( month )", [ & ] { zuMonthToString( month ); } );
    }
    for ( ZU_INT wd : { -1, 7 } ) {
        expectAbort( "ZU_WEEKDAY_OK( wd )", [ & ] { zuWeekdayToString( wd ); } );
    }
    expectAbort( "day >= 1", [ & ] { zuTimeSetDay( &tm, 0 ); } );
    expectAbort( "hour >= 0", [ & ] { zuTimeSetHour( &tm, -1 ); } );
    expectAbort( "minute >= 0", [ & ] { zuTimeSetMinute( &tm, -1 ); } );
    expectAbort( "second >= 0", [ & ] { zuTimeSetSecond( &tm, -1 ); } );
    zuTimeSetYear( &tm, ZU_INT_MAX );
    expectAbort( "ZU_INT_ADD_OK( (*tm)->year, y4*4 )", [ & ] { zuTimeShiftDays( &tm, 1461 ); } );
    expectAbort( "ZU_INT_ADD_OK( (*tm)->year, 1 )", [ & ] { zuTimeShiftDays( &tm, 276 ); } );
    expectAbort( "ZU_INT_ADD_OK( (*tm)->year, 1 )", [ & ] { zuTimeShiftMonths( &tm, 10 ); } );
    expectAbort( "ZU_INT_ADD_OK( (*tm)->year, years )", [ & ] { zuTimeShiftYears( &tm, 1 ); } );
    zuTimeSetYear( &tm, ZU_INT_MIN );
    expectAbort( "ZU_INT_SUB_OK( (*tm)->year, 1 )", [ & ] { zuTimeShiftDays( &tm, -91 ); } );
    expectAbort( "ZU_INT_SUB_OK( (*tm)->year, 1 )", [ & ] { zuTimeShiftMonths( &tm, -3 ); } );
    zuTimeRelease( tm );
    expectAbort( "milliseconds >= 0", [] { zuNanosecondsTryConvertFromMilliseconds( -1 ); } );
    expectAbort( "milliseconds >= 0", [] { zuNanosecondsConvertFromMillisecondsSaturating( -1 ); } );
    expectAbort( "ZU_NANOSECONDS_OK( nanoseconds )", [] { zuNanosecondsConvertToMillisecondsTruncate( -1 ); } );
    expectAbort( "ZU_NANOSECONDS_OK( nanoseconds )", [] { zuNanosecondsConvertToMillisecondsExtend( -1 ); } );
}

TEST( Nanoseconds, Conversions )
{
    EXPECT_EQ( zuNanosecondsTryConvertFromMilliseconds( 9223372036854 ), 9223372036854000000 );
    EXPECT_EQ( zuNanosecondsTryConvertFromMilliseconds( 9223372036855 ), -1 );
    EXPECT_EQ( zuNanosecondsConvertFromMillisecondsSaturating( 9223372036854 ), 9223372036854000000 );
    EXPECT_EQ( zuNanosecondsConvertFromMillisecondsSaturating( 9223372036855 ), ZU_INT_MAX );
    for ( ZU_INT edge : { (ZU_INT)0, (ZU_INT)1000000, ZU_INT_MAX / 1000000 * 1000000 } ) {
        EXPECT_EQ( zuNanosecondsConvertToMillisecondsTruncate( edge ), edge / 1000000 );
        EXPECT_EQ( zuNanosecondsConvertToMillisecondsExtend( edge ), edge / 1000000 );
        EXPECT_EQ( zuNanosecondsConvertToMillisecondsTruncate( edge + 1 ), edge / 1000000 );
        EXPECT_EQ( zuNanosecondsConvertToMillisecondsExtend( edge + 1 ), edge / 1000000 + 1 );
    }
}

TEST( Timestamp, NeverGoesBack )
{
    ZU_INT before = zuTimestamp();
    std::vector<std::thread> threads;
    for ( int i = 0; i < 2; i++ ) {
        threads.emplace_back( [ before ] {
            ZU_INT last = before;
            for ( int round = 0; round < 100000; round++ ) {
                ZU_INT now = zuTimestamp();
                ASSERT_LE( last, now );
                last = now;
            }
        } );
    }
    for ( std::thread &thread : threads ) {
        thread.join();
    }
    // Three clocks read in a row hold the middle one between the others.
    timespec early;
    timespec late;
    clock_gettime( CLOCK_MONOTONIC, &early );
    ZU_INT now = zuTimestamp();
    clock_gettime( CLOCK_MONOTONIC, &late );
    EXPECT_GE( now, early.tv_sec * 1000 + early.tv_nsec / 1000000 );
    EXPECT_LE( now, late.tv_sec * 1000 + late.tv_nsec / 1000000 );
}
