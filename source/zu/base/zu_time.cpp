// The record is kept as it is set, not as a count of seconds: it can hold days that a month does not have, and leap
// seconds.  Arithmetic works on the fields in the manner of a calendar.  Only the conversion from and to seconds since
// 1970 counts days, so that it is one closed formula for every platform and needs no zone data; the platform gives the
// wall clock alone.

#include "zu/base/zu_time_internal.h"

#include "zu/base/zu_format.h"
#include "zu/base/zu_format_internal.h"
#include "zu/base/zu_string_internal.h"
#include "zu/base/zu_text_internal.h"
#include "zu/runtime/zu_module.h"
#include "zu/unicode/zu_unicode_properties.h"

#include <cstring>

static constexpr ZU_INT MONTHS_PER_YEAR = 12;
static constexpr ZU_INT DAYS_PER_WEEK = 7;
static constexpr ZU_INT HOURS_PER_DAY = 24;
static constexpr ZU_INT MINUTES_PER_HOUR = 60;
static constexpr ZU_INT SECONDS_PER_MINUTE = 60;
static constexpr ZU_INT SECONDS_PER_DAY = 86400;
static constexpr ZU_INT DAYS_PER_COMMON_YEAR = 365;
static constexpr ZU_INT DAYS_PER_4_YEARS = 1461;
static constexpr ZU_INT DAYS_PER_100_YEARS = 36524;
static constexpr ZU_INT DAYS_PER_400_YEARS = 146097;
static constexpr ZU_INT DAY_MAX = 31;
static constexpr ZU_INT SECOND_MAX = 61;
static constexpr ZU_INT SYSTEM_SECOND_MAX = 59;

// The years whose distance from 1900 fits in 32 bits, as the broken-down times of C have it.
static constexpr ZU_INT CONVERTED_YEAR_MIN = INT32_MIN + (ZU_INT)1900;
static constexpr ZU_INT CONVERTED_YEAR_MAX = INT32_MAX + (ZU_INT)1900;

static const char *const MONTH_NAMES[] = { "January", "February", "March",     "April",   "May",      "June",
                                           "July",    "August",   "September", "October", "November", "December" };
static const char *const WEEKDAY_NAMES[] = { "Monday", "Tuesday",  "Wednesday", "Thursday",
                                             "Friday", "Saturday", "Sunday" };

static constexpr size_t SHORT_MONTH_NAME = 3; // letters

struct ZU_TIME {
    ZU_OBJ obj;
    ZU_INT year;
    ZU_INT month;  // 1 to 12
    ZU_INT day;    // 1 to 31
    ZU_INT hour;   // 0 to 23
    ZU_INT minute; // 0 to 59
    ZU_INT second; // 0 to 61
};

static constexpr ZU___TIME_FIELDS FIRST_FIELDS = { 0, ZU_MONTH_JANUARY, 1, 0, 0, 0 };

static ZU_TIME *timeStarted = nullptr; // when the library started

static ZU_INT timeCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj );
static ZU_STRING *timeToString( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_TIME = ZU___SORT_INITIALIZER( "ZU_TIME", &zu___module, nullptr, timeCompare, timeToString );
ZU___STDFUNCS( ZU_TIME, zuTime )

// Start-up
void zu___TimeStartup( void )
{
    timeStarted = zuTimeNow();
}
void zu___TimeShutdown( void )
{
    ZU_REF_RELEASE( timeStarted );
    ZU_REF_POISON( timeStarted );
}
ZU_TIME *zu___TimeStarted( void )
{
    return timeStarted ? zuTimeRetain( timeStarted ) : nullptr;
}

// Calendar of years and months
static bool timeIsLeapYear( ZU_INT year )
{
    return year % 400 == 0 || ( year % 4 == 0 && year % 100 != 0 );
}
static ZU_INT timeYearLength( ZU_INT year )
{
    return DAYS_PER_COMMON_YEAR + timeIsLeapYear( year );
}
static ZU_INT timeMonthLength( ZU_INT year, ZU_INT month )
{
    static constexpr uint8_t LENGTHS[] = { 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31 };
    return LENGTHS[ month - 1 ] + ( month == ZU_MONTH_FEBRUARY && timeIsLeapYear( year ) );
}
static ZU_INT timeDayNumber( ZU_INT year, ZU_INT month, ZU_INT day )
{
    static constexpr uint16_t DAYS_AHEAD[] = { 0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334 };
    return DAYS_AHEAD[ month - 1 ] + ( month > ZU_MONTH_FEBRUARY && timeIsLeapYear( year ) ) + day;
}
static ZU_INT timeWeekdayOf( ZU_INT year, ZU_INT month, ZU_INT day )
{
    // What the months ahead of each add to the weekday, and what the first of January of a century does.
    static constexpr uint8_t MONTH_TERMS[] = { 0, 3, 3, 6, 1, 4, 6, 2, 5, 0, 3, 5 };
    ZU_INT monthTerm = MONTH_TERMS[ month - ZU_MONTH_JANUARY ];
    ZU_INT century = year / 100;
    ZU_INT yearOfCentury = year - century * 100;
    ZU_INT centuryTerm = 2 * ( 3 - century % 4 );
    // A leap day that is still to come must not count.
    ZU_INT leapTerm = timeIsLeapYear( year ) && month <= ZU_MONTH_FEBRUARY ? 6 : 0;
    ZU_INT yearTerm = ( yearOfCentury + yearOfCentury / 4 ) % DAYS_PER_WEEK;
    ZU_INT fromSunday = ( leapTerm + centuryTerm + yearTerm + monthTerm + day % DAYS_PER_WEEK ) % DAYS_PER_WEEK;
    ZU_ASSERT( fromSunday >= 0 );
    ZU_ASSERT( fromSunday < DAYS_PER_WEEK );
    return ( fromSunday + DAYS_PER_WEEK - 1 ) % DAYS_PER_WEEK;
}
// Division that rounds down; `divisor` is positive.
static ZU_INT timeDivideDown( ZU_INT value, ZU_INT divisor )
{
    return value / divisor - ( value % divisor < 0 );
}
// The leap years up to `year`, with an origin that only differences leave out.
static ZU_INT timeLeapYearsUpTo( ZU_INT year )
{
    return timeDivideDown( year, 4 ) - timeDivideDown( year, 100 ) + timeDivideDown( year, 400 );
}

// Seconds since 1970
static constexpr ZU_INT DAYS_TO_1970 = 719528; // from January 1 of the year 0

static ZU_INT timeSecondsSince1970( const ZU_TIME *tm )
{
    // The year 0 is a leap year itself, which is counted where the years ahead of `year` are.
    ZU_INT daysAhead = tm->year * DAYS_PER_COMMON_YEAR + timeLeapYearsUpTo( tm->year - 1 ) + 1;
    ZU_INT days = daysAhead + timeDayNumber( tm->year, tm->month, tm->day ) - 1 - DAYS_TO_1970;
    return ( ( days * HOURS_PER_DAY + tm->hour ) * MINUTES_PER_HOUR + tm->minute ) * SECONDS_PER_MINUTE + tm->second;
}

int zu___TimeBreakDown( ZU___TIME_FIELDS *fields, const ZU_INT *seconds )
{
    ZU_INT days = timeDivideDown( *seconds, SECONDS_PER_DAY );
    ZU_INT secondOfDay = ( *seconds % SECONDS_PER_DAY + SECONDS_PER_DAY ) % SECONDS_PER_DAY;
    // Years are counted from March 1 of the year 0, so that a leap day is the last of its year, and of all the four,
    // hundred and four hundred years that have one more day for it.
    days += DAYS_TO_1970 - 60;
    ZU_INT era = timeDivideDown( days, DAYS_PER_400_YEARS );
    ZU_INT rest = days - era * DAYS_PER_400_YEARS;
    ZU_INT centuries = zuIntMin( rest / DAYS_PER_100_YEARS, 3 );
    rest -= centuries * DAYS_PER_100_YEARS;
    ZU_INT fours = rest / DAYS_PER_4_YEARS;
    rest -= fours * DAYS_PER_4_YEARS;
    ZU_INT years = zuIntMin( rest / DAYS_PER_COMMON_YEAR, 3 );
    rest -= years * DAYS_PER_COMMON_YEAR;
    // From March on, five months have 153 days, whichever they are.
    ZU_INT monthsFromMarch = ( 5 * rest + 2 ) / 153;
    ZU_INT year = era * 400 + centuries * 100 + fours * 4 + years;
    if ( monthsFromMarch < 10 ) {
        fields->month = monthsFromMarch + ZU_MONTH_MARCH;
    } else {
        fields->month = monthsFromMarch + ZU_MONTH_MARCH - MONTHS_PER_YEAR;
        year++;
    }
    fields->year = year;
    fields->day = rest - ( 153 * monthsFromMarch + 2 ) / 5 + 1;
    fields->hour = secondOfDay / SECONDS_PER_MINUTE / MINUTES_PER_HOUR;
    fields->minute = secondOfDay / SECONDS_PER_MINUTE % MINUTES_PER_HOUR;
    fields->second = secondOfDay % SECONDS_PER_MINUTE;
    return year < CONVERTED_YEAR_MIN || year > CONVERTED_YEAR_MAX;
}
static ZU___TIME_FIELDS timeFieldsNow()
{
    ZU___TIME_FIELDS timeFields;
    ZU_INT ltime = zu___TimeWallClock();
    ZU___ASSERT_AS( zu___TimeBreakDown( &timeFields, &ltime ) == 0, "0 == _gmtime64_s( &timeFields, &ltime )" );
    return timeFields;
}

// Creation
static void timeSetFields( ZU_TIME *tm, const ZU___TIME_FIELDS *fields )
{
    tm->year = fields->year;
    tm->month = fields->month;
    tm->day = fields->day;
    tm->hour = fields->hour;
    tm->minute = fields->minute;
    tm->second = fields->second;
}
static ZU_TIME *timeCreateOfFields( const ZU___TIME_FIELDS *fields )
{
    ZU_TIME *tm = (ZU_TIME *)zu___ObjCreate( sizeof( ZU_TIME ), &zu___sort_ZU_TIME );
    timeSetFields( tm, fields );
    return tm;
}
ZU_TIME *zuTimeCreate( void )
{
    return timeCreateOfFields( &FIRST_FIELDS );
}
ZU_TIME *zuTimeCreateFrom( ZU_TIME *from )
{
    ZU_ASSERT( from );
    const ZU___TIME_FIELDS fields = { from->year, from->month, from->day, from->hour, from->minute, from->second };
    return timeCreateOfFields( &fields );
}
ZU_TIME *zuTimeNow( void )
{
    const ZU___TIME_FIELDS fields = timeFieldsNow();
    return timeCreateOfFields( &fields );
}
ZU_TIME *zuTimeTryCreateFromTimeT( ZU_INT seconds )
{
    ZU___TIME_FIELDS fields;
    return zu___TimeBreakDown( &fields, &seconds ) == 0 ? timeCreateOfFields( &fields ) : nullptr;
}
static bool timeIsWithin( ZU_INT value, ZU_INT min, ZU_INT max )
{
    return value >= min && value <= max;
}
ZU_TIME *zuTimeTryCreateFromSystemTime( ZU_INT year, ZU_INT month, ZU_INT day, ZU_INT hour, ZU_INT minute,
                                        ZU_INT second )
{
    if ( !ZU_MONTH_OK( month ) || !timeIsWithin( day, 1, DAY_MAX ) || !timeIsWithin( hour, 0, HOURS_PER_DAY - 1 ) ||
         !timeIsWithin( minute, 0, MINUTES_PER_HOUR - 1 ) || !timeIsWithin( second, 0, SYSTEM_SECOND_MAX ) ) {
        return nullptr;
    }
    const ZU___TIME_FIELDS fields = { year, month, day, hour, minute, second };
    return timeCreateOfFields( &fields );
}

// Standard functions
static ZU_INT timeCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    ZU_TIME *tmA = zuTimeFrom( thisObj );
    ZU_TIME *tmB = zuTimeFrom( thatObj );
    ZU_ASSERT( tmA );
    ZU_ASSERT( tmB );
    static constexpr ZU_INT ZU_TIME::*FIELDS[] = { &ZU_TIME::year, &ZU_TIME::month,  &ZU_TIME::day,
                                                   &ZU_TIME::hour, &ZU_TIME::minute, &ZU_TIME::second };
    for ( auto field : FIELDS ) {
        if ( tmA->*field != tmB->*field ) {
            return tmA->*field < tmB->*field ? -1 : 1;
        }
    }
    return 0;
}
// Writes `separator` and a number below 100 in two digits, and returns the place behind.
static ZU_CHAR *timeWriteTwo( ZU_CHAR *pos, ZU_CHAR separator, ZU_INT number )
{
    pos[ 0 ] = separator;
    pos[ 1 ] = '0' + (ZU_CHAR)number / 10;
    pos[ 2 ] = '0' + (ZU_CHAR)number % 10;
    return pos + 3;
}
// The text is put together in its place, without a format: 54 ns instead of 277.
static ZU_STRING *timeToString( ZU_OBJ *thisObj )
{
    static constexpr char ZONE[] = { 'U', 'T', 'C', ' ' };
    static constexpr ZU_INT FIELDS = 15; // "-03-01 09:05:07"
    ZU_TIME *tm = zuTimeFrom( thisObj );
    ZU_ASSERT( tm );
    ZU_STRING *text = zu___StringCreateEmpty();
    zuCharsConvertFromAscii( zu___StringMakeRoom( text, 0, sizeof ZONE ), sizeof ZONE, ZONE, sizeof ZONE );
    zu___FormatEncodeInt( &text, tm->year, 10, 0, 0 );
    ZU_CHAR *pos = zu___StringMakeRoom( text, text->length, FIELDS );
    pos = timeWriteTwo( pos, '-', tm->month );
    pos = timeWriteTwo( pos, '-', tm->day );
    pos = timeWriteTwo( pos, ' ', tm->hour );
    pos = timeWriteTwo( pos, ':', tm->minute );
    timeWriteTwo( pos, ':', tm->second );
    if ( zuTimeValid( tm ) ) {
        const char *name = WEEKDAY_NAMES[ zuTimeWeekday( tm ) ];
        ZU_INT length = (ZU_INT)strlen( name );
        pos = zu___StringMakeRoom( text, text->length, length + 3 );
        *pos++ = ' ';
        *pos++ = '(';
        zuCharsConvertFromAscii( pos, length, name, length );
        pos[ length ] = ')';
    }
    return text;
}

// Reading texts.  They are cut in pieces as zuStringSplitWhitespace and zuStringSplitChar cut them.

// Splits at white space, of which the last piece may hold some; returns the number of pieces, at least 1.
static ZU_INT timeSplitWhitespace( ZU___TEXT text, ZU___TEXT *pieces, ZU_INT maxPieces )
{
    ZU___TEXT rest = zu___TextTrimmed( text );
    ZU_INT count = 0;
    while ( count < maxPieces - 1 && rest.length > 0 ) {
        ZU___TEXT piece = zu___TextTakePiece( &rest, zuUnicodeIsWhiteSpace );
        if ( piece.length > 0 ) {
            pieces[ count++ ] = piece;
        }
    }
    if ( rest.length > 0 || count == 0 ) {
        pieces[ count++ ] = rest;
    }
    return count;
}
static bool timeReadNumber( ZU___TEXT text, ZU_INT min, ZU_INT max, ZU_INT *value )
{
    ZU_INT consumed;
    return zuFormatTryDecodeIntChars( text.chars, text.length, 10, value, &consumed ) && consumed == text.length &&
           timeIsWithin( *value, min, max );
}

// Months and weekdays
static ZU_INT timeReadMonth( ZU___TEXT text )
{
    ZU___TEXT trimmed = zu___TextTrimmed( text );
    for ( ZU_INT month = ZU_MONTH_JANUARY; month <= ZU_MONTH_DECEMBER; month++ ) {
        const char *name = MONTH_NAMES[ month - ZU_MONTH_JANUARY ];
        if ( zu___TextIsWord( trimmed, name, strlen( name ) ) || zu___TextIsWord( trimmed, name, SHORT_MONTH_NAME ) ) {
            return month;
        }
    }
    ZU_INT month;
    bool isNumber = timeReadNumber( trimmed, ZU_MONTH_JANUARY, ZU_MONTH_DECEMBER, &month );
    return isNumber && trimmed.length == text.length ? month : -1;
}
static ZU_INT timeReadWeekday( ZU___TEXT text )
{
    ZU___TEXT trimmed = zu___TextTrimmed( text );
    for ( ZU_INT wd = ZU_WEEKDAY_MONDAY; wd <= ZU_WEEKDAY_SUNDAY; wd++ ) {
        if ( zu___TextIsWord( trimmed, WEEKDAY_NAMES[ wd ], strlen( WEEKDAY_NAMES[ wd ] ) ) ) {
            return wd;
        }
    }
    return -1;
}
ZU_INT zuMonthFromString( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return timeReadMonth( zu___TextOf( zus ) );
}
ZU_STRING *zuMonthToString( ZU_INT month )
{
    ZU_ASSERT( ZU_MONTH_OK( month ) );
    return zuStringCreateFromAscii( MONTH_NAMES[ month - ZU_MONTH_JANUARY ], -1 );
}
ZU_INT zuWeekdayFromString( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return timeReadWeekday( zu___TextOf( zus ) );
}
ZU_STRING *zuWeekdayToString( ZU_INT wd )
{
    ZU_ASSERT( ZU_WEEKDAY_OK( wd ) );
    return zuStringCreateFromAscii( WEEKDAY_NAMES[ wd ], -1 );
}

// Reading times

// Reads year, month and day, of which the later ones may be missing.
static bool timeReadDate( ZU___TEXT text, ZU___TIME_FIELDS *fields )
{
    ZU___TEXT parts[ 3 ];
    ZU_INT count = zu___TextSplitChar( text, '-', parts, 3 );
    if ( !timeReadNumber( parts[ 0 ], 0, ZU_INT_MAX, &fields->year ) ) {
        return false;
    }
    if ( count > 1 ) {
        fields->month = timeReadMonth( parts[ 1 ] );
    }
    return fields->month != -1 && ( count < 3 || timeReadNumber( parts[ 2 ], 1, DAY_MAX, &fields->day ) );
}
// Reads hour, minute and second, of which the later ones may be missing.
static bool timeReadTimeOfDay( ZU___TEXT text, ZU___TIME_FIELDS *fields )
{
    ZU___TEXT parts[ 3 ];
    ZU_INT count = zu___TextSplitChar( text, ':', parts, 3 );
    return timeReadNumber( parts[ 0 ], 0, HOURS_PER_DAY - 1, &fields->hour ) &&
           ( count < 2 || timeReadNumber( parts[ 1 ], 0, MINUTES_PER_HOUR - 1, &fields->minute ) ) &&
           ( count < 3 || timeReadNumber( parts[ 2 ], 0, SECOND_MAX, &fields->second ) );
}
static bool timeIsBracketed( ZU___TEXT text )
{
    return text.length > 0 && text.chars[ 0 ] == '(';
}
ZU_TIME *zuTimeTryCreateFromString( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    ZU___TIME_FIELDS fields = FIRST_FIELDS;
    ZU___TEXT pieces[ 4 ];
    ZU_INT count = timeSplitWhitespace( zu___TextOf( zus ), pieces, 4 );
    ZU_INT next = zu___TextIsWord( pieces[ 0 ], "utc", 3 ) ? 1 : 0;
    if ( next == count || !timeReadDate( pieces[ next++ ], &fields ) ) {
        return nullptr;
    }
    if ( next < count && !timeIsBracketed( pieces[ next ] ) && !timeReadTimeOfDay( pieces[ next++ ], &fields ) ) {
        return nullptr;
    }
    if ( fields.day > timeMonthLength( fields.year, fields.month ) ) {
        return nullptr;
    }
    if ( next < count ) {
        ZU___TEXT piece = pieces[ next++ ];
        if ( !timeIsBracketed( piece ) || piece.length < 2 || piece.chars[ piece.length - 1 ] != ')' ||
             timeReadWeekday( { piece.chars + 1, piece.length - 2 } ) !=
                 timeWeekdayOf( fields.year, fields.month, fields.day ) ) {
            return nullptr;
        }
    }
    return next == count ? timeCreateOfFields( &fields ) : nullptr;
}

// Fields
ZU_INT zuTimeYear( ZU_TIME *tm )
{
    ZU_ASSERT( tm );
    return tm->year;
}
ZU_INT zuTimeMonth( ZU_TIME *tm )
{
    ZU_ASSERT( tm );
    return tm->month;
}
ZU_INT zuTimeDay( ZU_TIME *tm )
{
    ZU_ASSERT( tm );
    return tm->day;
}
ZU_INT zuTimeHour( ZU_TIME *tm )
{
    ZU_ASSERT( tm );
    return tm->hour;
}
ZU_INT zuTimeMinute( ZU_TIME *tm )
{
    ZU_ASSERT( tm );
    return tm->minute;
}
ZU_INT zuTimeSecond( ZU_TIME *tm )
{
    ZU_ASSERT( tm );
    return tm->second;
}

// Setting
static void timeUnshare( ZU_TIME **tm )
{
    if ( ZU_REF_RETAIN_COUNT( *tm ) > 1 ) {
        ZU_TIME *old = *tm;
        *tm = zuTimeCreateFrom( old );
        ZU_REF_RELEASE( old );
    }
}
static void timeSetField( ZU_TIME **tm, ZU_INT ZU_TIME::*field, ZU_INT value )
{
    if ( ( *tm )->*field != value ) {
        timeUnshare( tm );
        ( *tm )->*field = value;
    }
}
void zuTimeSetYear( ZU_TIME **tm, ZU_INT year )
{
    ZU_ASSERT( tm );
    ZU_ASSERT( *tm );
    timeSetField( tm, &ZU_TIME::year, year );
}
void zuTimeSetMonth( ZU_TIME **tm, ZU_INT month )
{
    ZU_ASSERT( tm );
    ZU_ASSERT( *tm );
    ZU_ASSERT( ZU_MONTH_OK( month ) );
    timeSetField( tm, &ZU_TIME::month, month );
}
void zuTimeSetDay( ZU_TIME **tm, ZU_INT day )
{
    ZU_ASSERT( tm );
    ZU_ASSERT( *tm );
    ZU_ASSERT( day >= 1 );
    ZU_ASSERT( day <= DAY_MAX );
    timeSetField( tm, &ZU_TIME::day, day );
}
void zuTimeSetHour( ZU_TIME **tm, ZU_INT hour )
{
    ZU_ASSERT( tm );
    ZU_ASSERT( *tm );
    ZU_ASSERT( hour >= 0 );
    ZU_ASSERT( hour < HOURS_PER_DAY );
    timeSetField( tm, &ZU_TIME::hour, hour );
}
void zuTimeSetMinute( ZU_TIME **tm, ZU_INT minute )
{
    ZU_ASSERT( tm );
    ZU_ASSERT( *tm );
    ZU_ASSERT( minute >= 0 );
    ZU_ASSERT( minute < MINUTES_PER_HOUR );
    timeSetField( tm, &ZU_TIME::minute, minute );
}
void zuTimeSetSecond( ZU_TIME **tm, ZU_INT second )
{
    ZU_ASSERT( tm );
    ZU_ASSERT( *tm );
    ZU_ASSERT( second >= 0 );
    ZU_ASSERT( second <= SECOND_MAX );
    timeSetField( tm, &ZU_TIME::second, second );
}
void zuTimeSetNow( ZU_TIME **tm )
{
    ZU_ASSERT( tm );
    ZU_ASSERT( *tm );
    const ZU___TIME_FIELDS fields = timeFieldsNow();
    timeUnshare( tm );
    timeSetFields( *tm, &fields );
}

// Shifting.  A shift by nothing returns ahead of the copy unless there is something to repair.

// Exchanges a day that the month does not have for the first of the next month.  December has them all.
static void timeRepairDay( ZU_TIME *tm )
{
    if ( !zuTimeValid( tm ) ) {
        tm->day = 1;
        tm->month++;
    }
}
void zuTimeShiftYears( ZU_TIME **tm, ZU_INT years )
{
    ZU_ASSERT( tm );
    ZU_ASSERT( *tm );
    ZU_ASSERT( ZU_INT_ADD_OK( (*tm)->year, years ) );
    if ( years == 0 && zuTimeValid( *tm ) ) {
        return;
    }
    timeUnshare( tm );
    ( *tm )->year += years;
    timeRepairDay( *tm );
}
void zuTimeShiftMonths( ZU_TIME **tm, ZU_INT months )
{
    ZU_ASSERT( tm );
    ZU_ASSERT( *tm );
    if ( months == 0 && zuTimeValid( *tm ) ) {
        return;
    }
    ZU_INT years = months / MONTHS_PER_YEAR;
    ZU_ASSERT( ZU_INT_ADD_OK( (*tm)->year, years ) );
    timeUnshare( tm );
    ( *tm )->year += years;
    ( *tm )->month += months % MONTHS_PER_YEAR;
    if ( ( *tm )->month > ZU_MONTH_DECEMBER ) {
        ZU_ASSERT( ZU_INT_ADD_OK( (*tm)->year, 1 ) );
        ( *tm )->year++;
        ( *tm )->month -= MONTHS_PER_YEAR;
    } else if ( ( *tm )->month < ZU_MONTH_JANUARY ) {
        ZU_ASSERT( ZU_INT_SUB_OK( (*tm)->year, 1 ) );
        ( *tm )->year--;
        ( *tm )->month += MONTHS_PER_YEAR;
    }
    timeRepairDay( *tm );
}

// Shifts by fewer than 1461 days, year by year: 1000 days take 6 ns and not 70.  A day beyond the end of its month is a
// single step away from the next one, and counts as it stands on the way back.
static void timeShiftFewDays( ZU_TIME **tm, ZU_INT days )
{
    ZU_INT year = ( *tm )->year;
    ZU_INT length = timeMonthLength( year, ( *tm )->month );
    ZU_INT day = ( days > 0 && ( *tm )->day > length ? length : ( *tm )->day ) + days;
    if ( day >= 1 && ( day <= length || days < 0 ) ) {
        ( *tm )->day = day;
        return;
    }
    ZU_INT number = timeDayNumber( year, ( *tm )->month, day );
    for ( ; number > timeYearLength( year ); year++ ) {
        ZU___ASSERT_AS( ZU_INT_ADD_OK( year, 1 ), "ZU_INT_ADD_OK( (*tm)->year, 1 )" );
        number -= timeYearLength( year );
    }
    for ( ; number < 1; number += timeYearLength( year ) ) {
        ZU___ASSERT_AS( ZU_INT_SUB_OK( year, 1 ), "ZU_INT_SUB_OK( (*tm)->year, 1 )" );
        year--;
    }
    // Months of 31 days would be one behind at the most.
    ZU_INT month = ( number - 1 ) / DAY_MAX + 1;
    month += month < MONTHS_PER_YEAR && number >= timeDayNumber( year, month + 1, 1 );
    ( *tm )->year = year;
    ( *tm )->month = month;
    ( *tm )->day = number - timeDayNumber( year, month, 1 ) + 1;
}
void zuTimeShiftDays( ZU_TIME **tm, ZU_INT days )
{
    ZU_ASSERT( tm );
    ZU_ASSERT( *tm );
    if ( days == 0 ) {
        return;
    }
    ZU_INT y4 = days / DAYS_PER_4_YEARS;
    ZU_INT rest = days % DAYS_PER_4_YEARS;
    ZU_ASSERT( ZU_INT_ADD_OK( (*tm)->year, y4*4 ) );
    timeUnshare( tm );
    ( *tm )->year += y4 * 4;
    if ( rest != 0 ) {
        timeShiftFewDays( tm, rest );
    }
}

// Adds the rest of `amount` / `unit` to `field`, one carry of `unit` up or down included, and hands the carry and then
// the quotient on to `shiftGreater`.
static void timeShiftField( ZU_TIME **tm, ZU_INT amount, ZU_INT ZU_TIME::*field, ZU_INT unit,
                            void ( *shiftGreater )( ZU_TIME **, ZU_INT ) )
{
    ZU_INT value = ( *tm )->*field + amount % unit;
    ZU_INT carry = value >= unit ? 1 : value < 0 ? -1 : 0;
    timeSetField( tm, field, value - carry * unit );
    shiftGreater( tm, carry );
    shiftGreater( tm, amount / unit );
}
void zuTimeShiftHours( ZU_TIME **tm, ZU_INT hours )
{
    ZU_ASSERT( tm );
    ZU_ASSERT( *tm );
    timeShiftField( tm, hours, &ZU_TIME::hour, HOURS_PER_DAY, zuTimeShiftDays );
}
void zuTimeShiftMinutes( ZU_TIME **tm, ZU_INT minutes )
{
    ZU_ASSERT( tm );
    ZU_ASSERT( *tm );
    timeShiftField( tm, minutes, &ZU_TIME::minute, MINUTES_PER_HOUR, zuTimeShiftHours );
}
void zuTimeShiftSeconds( ZU_TIME **tm, ZU_INT seconds )
{
    ZU_ASSERT( tm );
    ZU_ASSERT( *tm );
    timeShiftField( tm, seconds, &ZU_TIME::second, SECONDS_PER_MINUTE, zuTimeShiftMinutes );
}

// Calendar
ZU_BOOL zuTimeValid( ZU_TIME *tm )
{
    ZU_ASSERT( tm );
    return tm->day <= timeMonthLength( tm->year, tm->month );
}
ZU_BOOL zuTimeLeapYear( ZU_TIME *tm )
{
    ZU_ASSERT( tm );
    return timeIsLeapYear( tm->year );
}
ZU_INT zuTimeDaysInMonth( ZU_TIME *tm )
{
    ZU_ASSERT( tm );
    return timeMonthLength( tm->year, tm->month );
}
ZU_INT zuTimeDaysInYear( ZU_TIME *tm )
{
    ZU_ASSERT( tm );
    return timeYearLength( tm->year );
}
ZU_INT zuTimeDayOfYear( ZU_TIME *tm )
{
    ZU_ASSERT( tm );
    return timeDayNumber( tm->year, tm->month, tm->day );
}
ZU_INT zuTimeWeekday( ZU_TIME *tm )
{
    ZU_ASSERT( tm );
    return timeWeekdayOf( tm->year, tm->month, tm->day );
}

// Adds `count` times `amount` to a sum; false on overflow.
static bool timeTryAdd( ZU_INT *sum, ZU_INT count, ZU_INT amount )
{
    ZU_INT product;
    return !__builtin_mul_overflow( count, amount, &product ) && !__builtin_add_overflow( *sum, product, sum );
}
// Adds the days of the whole years from `year` to ahead of `endYear`, in seconds.
static bool timeTryAddYears( ZU_INT *sum, ZU_INT year, ZU_INT endYear )
{
    ZU_INT years;
    if ( __builtin_sub_overflow( endYear, year, &years ) ) {
        return false;
    }
    ZU_INT leapYears = timeLeapYearsUpTo( endYear - 1 ) - timeLeapYearsUpTo( year - 1 );
    return timeTryAdd( sum, years, DAYS_PER_COMMON_YEAR * SECONDS_PER_DAY ) &&
           timeTryAdd( sum, leapYears, SECONDS_PER_DAY );
}
// Computes the seconds from `earlier` to `later`; false on overflow.
static bool timeTryMeasure( const ZU_TIME *earlier, const ZU_TIME *later, ZU_INT *seconds )
{
    // The date of `earlier` moves towards that of `later`: to its year, then to its month, then to its day.
    struct DATE {
        ZU_INT year;
        ZU_INT month;
        ZU_INT day;
    };
    DATE date = { earlier->year, earlier->month, earlier->day };
    DATE *a = &date;
    const ZU_TIME *b = later;
    ZU_INT sum = 0;
    if ( a->year != b->year ) {
        ZU_ASSERT( a->year < b->year );
        ZU_INT daysLeft = timeYearLength( a->year ) + 1 - timeDayNumber( a->year, a->month, a->day );
        if ( !timeTryAdd( &sum, daysLeft, SECONDS_PER_DAY ) || !timeTryAddYears( &sum, a->year + 1, b->year ) ) {
            return false;
        }
        *a = { b->year, ZU_MONTH_JANUARY, 1 };
    }
    if ( a->month != b->month ) {
        ZU_ASSERT( a->month < b->month );
        ZU_INT days = timeDayNumber( b->year, b->month, 1 ) - timeDayNumber( a->year, a->month, a->day );
        if ( !timeTryAdd( &sum, days, SECONDS_PER_DAY ) ) {
            return false;
        }
        *a = { b->year, b->month, 1 };
    }
    if ( a->day != b->day ) {
        ZU_ASSERT( a->day < b->day );
        if ( !timeTryAdd( &sum, b->day - a->day, SECONDS_PER_DAY ) ) {
            return false;
        }
    }
    ZU_INT minutes = ( b->hour - earlier->hour ) * MINUTES_PER_HOUR - earlier->minute + b->minute;
    if ( !timeTryAdd( &sum, minutes * SECONDS_PER_MINUTE - earlier->second + b->second, 1 ) ) {
        return false;
    }
    *seconds = sum;
    return true;
}
ZU_BOOL zuTimeDeltaSeconds( ZU_TIME *tmA, ZU_TIME *tmB, ZU_INT *deltaSeconds )
{
    ZU_ASSERT( tmA );
    ZU_ASSERT( tmB );
    bool backward = zuTimeCompare( tmA, tmB ) > 0;
    ZU_INT seconds = 0;
    bool ok = backward ? timeTryMeasure( tmB, tmA, &seconds ) : timeTryMeasure( tmA, tmB, &seconds );
    if ( deltaSeconds ) {
        *deltaSeconds = backward ? -seconds : seconds;
    }
    return ok;
}

// Conversion
ZU_BOOL zuTimeTryConvertToTimeT( ZU_TIME *tm, ZU_INT *seconds )
{
    ZU_ASSERT( tm );
    ZU_INT result = -1;
    if ( timeIsWithin( tm->year, CONVERTED_YEAR_MIN, CONVERTED_YEAR_MAX ) ) {
        result = timeSecondsSince1970( tm );
    }
    bool ok = result != -1;
    if ( seconds ) {
        *seconds = ok ? result : 0;
    }
    return ok;
}
