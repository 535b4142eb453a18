// ZU_TIME: a moment of the (proleptic) Gregorian calendar in UTC, to the second.
//
// A copy-on-write value; zu_obj.h tells what holds for all of them.  It is a record of year, month, day, hour, minute
// and second, which are set one by one; so it can hold a day that its month does not have, for which see zuTimeValid.
// The calendar goes back and on without end, with a year 0; only weekdays of negative years mean nothing.  Times are
// ordered field by field from the year on, and equal times are interchangeable as keys.
//
// Arithmetic counts 86400 seconds to every day.  Seconds 60 and 61 are there for leap seconds that come from outside.
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

typedef struct ZU_TIME ZU_TIME;
// zuTimeRetain, Release, From, Obj, Sort, ToString, Compare, Equals
//
// zuTimeToString gives "UTC 2024-03-01 09:05:07 (Friday)", without the weekday if the time is not valid.
ZU_STDFUNCS_DECLARE( ZU_TIME, zuTime )

// Months, a ZU_INT from 1 to 12
#define ZU_MONTH_JANUARY     ( (ZU_INT)1 )
#define ZU_MONTH_FEBRUARY    ( (ZU_INT)2 )
#define ZU_MONTH_MARCH       ( (ZU_INT)3 )
#define ZU_MONTH_APRIL       ( (ZU_INT)4 )
#define ZU_MONTH_MAY         ( (ZU_INT)5 )
#define ZU_MONTH_JUNE        ( (ZU_INT)6 )
#define ZU_MONTH_JULY        ( (ZU_INT)7 )
#define ZU_MONTH_AUGUST      ( (ZU_INT)8 )
#define ZU_MONTH_SEPTEMBER   ( (ZU_INT)9 )
#define ZU_MONTH_OCTOBER     ( (ZU_INT)10 )
#define ZU_MONTH_NOVEMBER    ( (ZU_INT)11 )
#define ZU_MONTH_DECEMBER    ( (ZU_INT)12 )
/// Tells whether `month` is a month.
#define ZU_MONTH_OK( month ) ( ( month ) >= ZU_MONTH_JANUARY && ( month ) <= ZU_MONTH_DECEMBER )

/// Returns the month that `zus` names: in English, all of it or its first three letters, in letters of either case and
/// with white space around it; or as a number, without; -1 if it names none.
ZU_API ZU_INT zuMonthFromString( ZU_STRING *zus );
/// Returns the English name: "January".  Another value than a month aborts.
ZU_API ZU_STRING *zuMonthToString( ZU_INT month );

// Weekdays, a ZU_INT from 0 to 6
#define ZU_WEEKDAY_MONDAY    ( (ZU_INT)0 )
#define ZU_WEEKDAY_TUESDAY   ( (ZU_INT)1 )
#define ZU_WEEKDAY_WEDNESDAY ( (ZU_INT)2 )
#define ZU_WEEKDAY_THURSDAY  ( (ZU_INT)3 )
#define ZU_WEEKDAY_FRIDAY    ( (ZU_INT)4 )
#define ZU_WEEKDAY_SATURDAY  ( (ZU_INT)5 )
#define ZU_WEEKDAY_SUNDAY    ( (ZU_INT)6 )
/// Tells whether `wd` is a weekday.
#define ZU_WEEKDAY_OK( wd )  ( ( wd ) >= ZU_WEEKDAY_MONDAY && ( wd ) <= ZU_WEEKDAY_SUNDAY )

/// Returns the weekday that `zus` names in English, in letters of either case and with white space around it; -1 if it
/// names none.
ZU_API ZU_INT zuWeekdayFromString( ZU_STRING *zus );
/// Returns the English name: "Monday".  Another value than a weekday aborts.
ZU_API ZU_STRING *zuWeekdayToString( ZU_INT wd );

// Creation
/// Returns 00:00:00 on January 1 of the year 0.
ZU_API ZU_TIME *zuTimeCreate( void );
/// Returns a new object with the fields of `from`.
ZU_API ZU_TIME *zuTimeCreateFrom( ZU_TIME *from );
/// Returns the current time.
ZU_API ZU_TIME *zuTimeNow( void );
/// Returns the time that `zus` tells in the form of zuTimeToString, or null if it tells none.
///
/// "UTC", in letters of either case, the time and the weekday may be missing, and so may the second, minute, day and
/// month from the end on, which are then those of zuTimeCreate: "2024-Mar 9:05" is a time.  The year is not negative,
/// the month is what zuMonthFromString takes.  A time that is not valid, and a weekday that is not that of the date,
/// are refused.
ZU_API ZU_TIME *zuTimeTryCreateFromString( ZU_STRING *zus );
/// Returns the time `seconds` after the beginning of 1970, before it if negative; null if its year less 1900 does not
/// fit in 32 bits.
ZU_API ZU_TIME *zuTimeTryCreateFromTimeT( ZU_INT seconds );
/// Returns the time of these fields; null outside month 1 to 12, day 1 to 31, hour 0 to 23, minute 0 to 59 and second
/// 0 to 59.  The result need not be valid.
ZU_API ZU_TIME *zuTimeTryCreateFromSystemTime( ZU_INT year, ZU_INT month, ZU_INT day, ZU_INT hour, ZU_INT minute,
                                               ZU_INT second );

// Fields
/// Returns the year.
ZU_API ZU_INT zuTimeYear( ZU_TIME *tm );
/// Returns the month, 1 to 12.
ZU_API ZU_INT zuTimeMonth( ZU_TIME *tm );
/// Returns the day of the month, 1 to 31.
ZU_API ZU_INT zuTimeDay( ZU_TIME *tm );
/// Returns the hour, 0 to 23.
ZU_API ZU_INT zuTimeHour( ZU_TIME *tm );
/// Returns the minute, 0 to 59.
ZU_API ZU_INT zuTimeMinute( ZU_TIME *tm );
/// Returns the second, 0 to 61.
ZU_API ZU_INT zuTimeSecond( ZU_TIME *tm );

// Setting; a value outside the field's range aborts, and no function looks at the other fields
/// Sets the year to any value.
ZU_API void zuTimeSetYear( ZU_TIME **tm, ZU_INT year );
/// Sets the month, 1 to 12.
ZU_API void zuTimeSetMonth( ZU_TIME **tm, ZU_INT month );
/// Sets the day, 1 to 31.
ZU_API void zuTimeSetDay( ZU_TIME **tm, ZU_INT day );
/// Sets the hour, 0 to 23.
ZU_API void zuTimeSetHour( ZU_TIME **tm, ZU_INT hour );
/// Sets the minute, 0 to 59.
ZU_API void zuTimeSetMinute( ZU_TIME **tm, ZU_INT minute );
/// Sets the second, 0 to 61.
ZU_API void zuTimeSetSecond( ZU_TIME **tm, ZU_INT second );
/// Sets all fields to the current time.
ZU_API void zuTimeSetNow( ZU_TIME **tm );

// Shifting, forward or, by a negative amount, back; a year beyond ZU_INT aborts
//
// Seconds, minutes and hours carry into the next greater unit.  Any shift by seconds, 0 too, folds a second of 60 or
// 61 into the next minute.  Where a shift by months or years ends on a day that its month does not have, the first of
// the next month takes its place: January 31 and a month is March 1.
//
// A shift of 1461 days or more counts each 1461 of them as four years, also across a century year that is no leap
// year; there it comes out a day off, and can leave February 29 in a year that has none.  Shorter shifts are exact.
// Hours, minutes and seconds shift by days in the end, and share this.
/// Shifts by `years`.
ZU_API void zuTimeShiftYears( ZU_TIME **tm, ZU_INT years );
/// Shifts by `months`.
ZU_API void zuTimeShiftMonths( ZU_TIME **tm, ZU_INT months );
/// Shifts by `days`.
ZU_API void zuTimeShiftDays( ZU_TIME **tm, ZU_INT days );
/// Shifts by `hours`.
ZU_API void zuTimeShiftHours( ZU_TIME **tm, ZU_INT hours );
/// Shifts by `minutes`.
ZU_API void zuTimeShiftMinutes( ZU_TIME **tm, ZU_INT minutes );
/// Shifts by `seconds`.
ZU_API void zuTimeShiftSeconds( ZU_TIME **tm, ZU_INT seconds );

// Calendar
/// Tells whether the month has the day.
ZU_API ZU_BOOL zuTimeValid( ZU_TIME *tm );
/// Tells whether the year is a leap year.
ZU_API ZU_BOOL zuTimeLeapYear( ZU_TIME *tm );
/// Returns the length of the month in days, 28 to 31.
ZU_API ZU_INT zuTimeDaysInMonth( ZU_TIME *tm );
/// Returns the length of the year in days, 365 or 366.
ZU_API ZU_INT zuTimeDaysInYear( ZU_TIME *tm );
/// Returns the number of the day in its year; 1 for January 1.
ZU_API ZU_INT zuTimeDayOfYear( ZU_TIME *tm );
/// Returns the weekday, 0 for Monday to 6 for Sunday.  In a negative year it means nothing.
ZU_API ZU_INT zuTimeWeekday( ZU_TIME *tm );
/// Computes the seconds from `tmA` to `tmB`, negative if `tmB` is the earlier, into `deltaSeconds`, which may be null;
/// stores 0 and returns false if they are more than a ZU_INT holds.
ZU_API ZU_BOOL zuTimeDeltaSeconds( ZU_TIME *tmA, ZU_TIME *tmB, ZU_INT *deltaSeconds );

// Conversion
/// Computes the seconds from the beginning of 1970 to `tm` into `seconds`, which may be null.  Stores 0 and returns
/// false if the year less 1900 does not fit in 32 bits, and for the last second of 1969, whose -1 stands for failure.
/// A day beyond the end of the month counts on into the next.
ZU_API ZU_BOOL zuTimeTryConvertToTimeT( ZU_TIME *tm, ZU_INT *seconds );

// For authors of classes and modules
/// Returns the time at which the library started; null before that.
ZU_API ZU_TIME *zu___TimeStarted( void );
/// Takes the time of the start.
ZU_API void zu___TimeStartup( void );
/// Drops the time of the start.
ZU_API void zu___TimeShutdown( void );

ZU_END_DECLS
