#include "zu/base/zu_time_internal.h"

#include "zu_test_string.h"

using FIELDS = std::array<ZU_INT, 6>;
using TIME = zu::Ref<ZU_TIME>;
using SHIFT = void ( * )( ZU_TIME **, ZU_INT );

static TIME makeTime( const FIELDS &fields )
{
    static constexpr SHIFT SETTERS[] = { zuTimeSetYear, zuTimeSetMonth,  zuTimeSetDay,
                                         zuTimeSetHour, zuTimeSetMinute, zuTimeSetSecond };
    TIME tm = zu::adopt( zuTimeCreate() );
    for ( size_t i = 0; i < fields.size(); i++ ) {
        SETTERS[ i ]( tm.inOut(), fields[ i ] );
    }
    return tm;
}
static FIELDS fieldsOf( const TIME &tm )
{
    return { zuTimeYear( tm.get() ), zuTimeMonth( tm.get() ),  zuTimeDay( tm.get() ),
             zuTimeHour( tm.get() ), zuTimeMinute( tm.get() ), zuTimeSecond( tm.get() ) };
}
// Shifts a time that another holder shares, who must not see it.
static FIELDS shifted( const FIELDS &fields, SHIFT shift, ZU_INT amount )
{
    TIME tm = makeTime( fields );
    TIME holder = tm;
    shift( tm.inOut(), amount );
    EXPECT_EQ( fieldsOf( holder ), fields );
    EXPECT_EQ( tm.get() == holder.get(), fieldsOf( tm ) == fields ) << "a copy if, and only if, something changes";
    return fieldsOf( tm );
}

TEST( Time, Shifts )
{
    static const std::tuple<SHIFT, ZU_INT, FIELDS, FIELDS> ROWS[] = {
        { zuTimeShiftDays, 0, { 2023, 2, 31, 1, 2, 61 }, { 2023, 2, 31, 1, 2, 61 } },
        { zuTimeShiftDays, -1, { 0, 1, 1, 0, 0, 0 }, { -1, 12, 31, 0, 0, 0 } },
        { zuTimeShiftDays, 1461, { 2096, 2, 29, 0, 0, 0 }, { 2100, 2, 29, 0, 0, 0 } },
        { zuTimeShiftDays, 1, { 2023, 2, 31, 0, 0, 0 }, { 2023, 3, 1, 0, 0, 0 } },
        { zuTimeShiftDays, 2, { 2023, 2, 30, 0, 0, 0 }, { 2023, 3, 2, 0, 0, 0 } },
        { zuTimeShiftDays, -1, { 2023, 2, 31, 0, 0, 0 }, { 2023, 2, 30, 0, 0, 0 } },
        { zuTimeShiftDays, -31, { 2023, 2, 31, 0, 0, 0 }, { 2023, 1, 31, 0, 0, 0 } },
        { zuTimeShiftDays, ZU_INT_MAX, { 0, 1, 1, 0, 0, 0 }, { 25252216391115060, 5, 22, 0, 0, 0 } },
        { zuTimeShiftHours, -1, { 2024, 3, 1, 0, 59, 60 }, { 2024, 2, 29, 23, 59, 60 } },
        { zuTimeShiftSeconds, 0, { 2023, 12, 31, 23, 59, 60 }, { 2024, 1, 1, 0, 0, 0 } },
        { zuTimeShiftSeconds, 0, { 2024, 1, 1, 0, 0, 61 }, { 2024, 1, 1, 0, 1, 1 } },
        { zuTimeShiftSeconds, 0, { 2024, 1, 1, 0, 0, 59 }, { 2024, 1, 1, 0, 0, 59 } },
        { zuTimeShiftSeconds, 59, { 2024, 1, 1, 0, 0, 61 }, { 2024, 1, 1, 0, 1, 60 } },
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
    for ( const auto &[ shift, amount, from, to ] : ROWS ) {
        EXPECT_EQ( shifted( from, shift, amount ), to ) << amount << " from " << testing::PrintToString( from );
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
            EXPECT_EQ( zuTimeCompare( makeTime( a ).get(), makeTime( b ).get() ), ( &a > &b ) - ( &a < &b ) );
        }
    }
}

TEST( Time, Texts )
{
    static const std::pair<FIELDS, const char *> CANONICAL[] = {
        { { 2024, 3, 1, 9, 5, 7 }, "UTC 2024-03-01 09:05:07 (Friday)" },
        { { 0, 1, 1, 0, 0, 0 }, "UTC 0-01-01 00:00:00 (Saturday)" },
        { { 2000, 1, 1, 23, 59, 61 }, "UTC 2000-01-01 23:59:61 (Saturday)" },
        { { 2023, 2, 29, 0, 0, 0 }, "UTC 2023-02-29 00:00:00" }, // which is not read
    };
    for ( const auto &[ fields, text ] : CANONICAL ) {
        EXPECT_EQ( takeText( zuTimeToString( makeTime( fields ).get() ) ), text );
    }
    auto read = []( const std::string &text ) {
        return zu::adopt( zuTimeTryCreateFromString( string( text ).get() ) );
    };
    static const std::pair<FIELDS, const char *> ROWS[] = {
        { { 2024, 3, 1, 9, 5, 7 }, "UTC 2024-03-01 09:05:07 (Friday)" },
        { { 2024, 3, 1, 9, 5, 0 }, "\u00A0uTc\t2024-MAR-1 9:5 ( friday )\n" },
        { { 2024, 2, 29, 0, 0, 0 }, "2024-february-29 (thursday)" },
        { { 2024, 2, 29, 23, 0, 0 }, "2024-2-29 23" },
        { { 2024, 12, 1, 0, 0, 61 }, "2024-Dec 0:0:61" },
        { { 7, 1, 1, 0, 0, 0 }, "+7" },
        { { ZU_INT_MAX, 1, 1, 0, 0, 0 }, "UTC 9223372036854775807" },
        { { 20, 3, 1, 0, 0, 0 }, "\u0662\u0660-\u0663" },
    };
    for ( const auto &[ fields, text ] : ROWS ) {
        TIME tm = read( text );
        ASSERT_TRUE( tm ) << text;
        EXPECT_EQ( fieldsOf( tm ), fields ) << text;
    }
    for ( const std::string &text : divided(
              "| |UTC|UTC UTC 2024|x|-1|2024x|9223372036854775808|2024-|2024-0|2024-13|2024-Sept|2024-3-|2024-3-0|"
              "2024-3-32|2024-3-1-1|2023-2-29|2024-4-31|2024 24|2024 12:|2024 12:60|2024 12:30:62|2024 12:30:30:30|"
              "2024 -1|2024-2-29 (Monday)|2024-2-29 (Thu)|2024-2-29 (|2024-2-29 ()|2024-2-29 (Thursday|"
              "2024-2-29 (Thursday) x|2024-2-29 12:30 (Thursday) x|2024-2-29 ( Thursday )|"
              "UTC 2024-2-29 12:30  (Thursday)|2024-2-29 12:30 12:30" ) ) {
        EXPECT_FALSE( read( text ) ) << text;
    }
}
TEST( Time, NamesOfMonthsAndWeekdays )
{
    static const std::string MONTHS[] = { "January", "February", "March",     "April",   "May",      "June",
                                          "July",    "August",   "September", "October", "November", "December" };
    static const std::string WEEKDAYS[] = {
        "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"
    };
    auto month = []( const std::string &text ) { return zuMonthFromString( string( text ).get() ); };
    auto weekday = []( const std::string &text ) { return zuWeekdayFromString( string( text ).get() ); };
    for ( ZU_INT i = ZU_MONTH_JANUARY; i <= ZU_MONTH_DECEMBER; i++ ) {
        const std::string &name = MONTHS[ i - 1 ];
        EXPECT_EQ( takeText( zuMonthToString( i ) ), name );
        EXPECT_EQ( month( "\u2003" + name + " \n" ), i );
        EXPECT_EQ( month( name.substr( 0, 3 ) ), i );
        EXPECT_EQ( month( "0" + std::to_string( i ) ), i );
        EXPECT_EQ( month( " " + std::to_string( i ) ), -1 );
    }
    for ( ZU_INT i = ZU_WEEKDAY_MONDAY; i <= ZU_WEEKDAY_SUNDAY; i++ ) {
        EXPECT_EQ( takeText( zuWeekdayToString( i ) ), WEEKDAYS[ i ] );
        EXPECT_EQ( weekday( " " + WEEKDAYS[ i ] + "\t" ), i );
        EXPECT_EQ( weekday( WEEKDAYS[ i ].substr( 0, 3 ) ), -1 );
    }
    for ( const char *text : { "", " ", "0", "13", "3 ", "janu", "ja", "may x", "1.5" } ) {
        EXPECT_EQ( month( text ), -1 ) << text;
        EXPECT_EQ( weekday( text ), -1 ) << text;
    }
}

TEST( Time, DeltaBeyondTheCalendar )
{
    static const std::tuple<FIELDS, FIELDS, ZU_BOOL, ZU_INT> ROWS[] = {
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
    for ( const auto &[ fromFields, toFields, ok, wanted ] : ROWS ) {
        SCOPED_TRACE( testing::PrintToString( toFields ) );
        TIME from = makeTime( fromFields ), to = makeTime( toFields );
        ZU_INT seconds = -7, back = -7;
        EXPECT_EQ( zuTimeDeltaSeconds( from.get(), to.get(), &seconds ), ok );
        EXPECT_EQ( zuTimeDeltaSeconds( to.get(), from.get(), &back ), ok );
        EXPECT_TRUE( seconds == wanted && back == -wanted ) << seconds << " and " << back;
        EXPECT_EQ( zuTimeDeltaSeconds( from.get(), to.get(), nullptr ), ok );
    }
}

TEST( Time, NowIsTheWallClock )
{
    TIME started = zu::adopt( zu___TimeStarted() );
    TIME tm = zu::adopt( zuTimeCreate() );
    TIME holder = tm;
    ZU_INT before = zu___TimeWallClock();
    zuTimeSetNow( tm.inOut() );
    TIME now = zu::adopt( zuTimeNow() );
    ZU_INT after = zu___TimeWallClock();
    for ( const TIME &taken : { tm, now } ) {
        ZU_INT seconds = 0;
        EXPECT_TRUE( zuTimeTryConvertToTimeT( taken.get(), &seconds ) );
        EXPECT_GE( seconds, before );
        EXPECT_LE( seconds, after );
        EXPECT_LE( zuTimeCompare( started.get(), taken.get() ), 0 );
    }
    EXPECT_EQ( zuTimeYear( holder.get() ), 0 );
}

TEST( TimeAborts, Arguments )
{
    TIME tm = makeTime( { 2024, 3, 31, 12, 30, 30 } );
    zuTimeSetYear( tm.inOut(), ZU_INT_MAX );
    expectAbort( "ZU_INT_ADD_OK( (*tm)->year, y4*4 )", [ & ] { zuTimeShiftDays( tm.inOut(), 1461 ); } );
    expectAbort( "ZU_INT_ADD_OK( (*tm)->year, 1 )", [ & ] { zuTimeShiftDays( tm.inOut(), 276 ); } );
    expectAbort( "ZU_INT_ADD_OK( (*tm)->year, 1 )", [ & ] { zuTimeShiftMonths( tm.inOut(), 10 ); } );
    expectAbort( "ZU_INT_ADD_OK( (*tm)->year, years )", [ & ] { zuTimeShiftYears( tm.inOut(), 1 ); } );
    zuTimeSetYear( tm.inOut(), ZU_INT_MIN );
    expectAbort( "ZU_INT_SUB_OK( (*tm)->year, 1 )", [ & ] { zuTimeShiftDays( tm.inOut(), -91 ); } );
    expectAbort( "ZU_INT_SUB_OK( (*tm)->year, 1 )", [ & ] { zuTimeShiftMonths( tm.inOut(), -3 ); } );
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
    runThreads( 2, [ before ]( int ) {
        ZU_INT last = before;
        for ( int round = 0; round < 100000; round++ ) {
            ZU_INT now = zuTimestamp();
            ASSERT_LE( last, now );
            last = now;
        }
    } );
    // Three clocks read in a row hold the middle one between the others.
    timespec early;
    timespec late;
    clock_gettime( CLOCK_MONOTONIC, &early );
    ZU_INT now = zuTimestamp();
    clock_gettime( CLOCK_MONOTONIC, &late );
    EXPECT_GE( now, early.tv_sec * 1000 + early.tv_nsec / 1000000 );
    EXPECT_LE( now, late.tv_sec * 1000 + late.tv_nsec / 1000000 );
}
