// The text is read by the grammar of RFC 3339, section 5.6, and by nothing wider.  A leap second is set aside while the
// offset is taken off, since shifting counts in days of equal length.

#include "zu/base/zu_time_rfc3339.h"

#include "zu/base/zu_string_format.h"

static constexpr ZU_INT YEAR_MAX = 9999; // four digits
static constexpr ZU_INT LEAP_SECOND = 60;
static constexpr ZU_INT SECONDS_PER_MINUTE = 60;
static constexpr ZU_INT MINUTES_PER_HOUR = 60;

ZU_STRING *zuTimeTryConvertToRfc3339( ZU_TIME *tm )
{
    ZU_ASSERT( tm );
    const ZU_INT year = zuTimeYear( tm );
    if ( !zuTimeValid( tm ) || year < 0 || year > YEAR_MAX ) {
        return nullptr;
    }
    return zuStringCreateFromFormatCstr( "%04i-%02i-%02iT%02i:%02i:%02iZ", -1, year, zuTimeMonth( tm ), zuTimeDay( tm ),
                                         zuTimeHour( tm ), zuTimeMinute( tm ), zuTimeSecond( tm ) );
}

// Text that is read from the front
struct RFC3339_TEXT {
    const ZU_CHAR *next;
    const ZU_CHAR *end;
};
// Passes over one of the characters in `any`; returns it, or 0 if none stands there.
static char rfc3339TakeOne( RFC3339_TEXT *text, const char *any )
{
    while ( *any && ( text->next == text->end || *text->next != (ZU_CHAR)*any ) ) {
        any++;
    }
    text->next += *any != 0;
    return *any;
}
// Reads a number of `digits` digits, at most `most`.
static bool rfc3339TakeNumber( RFC3339_TEXT *text, int digits, ZU_INT most, ZU_INT *number )
{
    *number = 0;
    for ( int i = 0; i < digits; i++ ) {
        const char digit = rfc3339TakeOne( text, "0123456789" );
        if ( !digit ) {
            return false;
        }
        *number = *number * 10 + digit - '0';
    }
    return *number <= most;
}
// Reads "Z" or an offset, as the seconds that local time is ahead of UTC.
static bool rfc3339TakeOffset( RFC3339_TEXT *text, ZU_INT *offset )
{
    *offset = 0;
    if ( rfc3339TakeOne( text, "Zz" ) ) {
        return true;
    }
    const char sign = rfc3339TakeOne( text, "+-" );
    ZU_INT hours, minutes;
    if ( !sign || !rfc3339TakeNumber( text, 2, 23, &hours ) || !rfc3339TakeOne( text, ":" ) ||
         !rfc3339TakeNumber( text, 2, 59, &minutes ) ) {
        return false;
    }
    *offset = ( hours * MINUTES_PER_HOUR + minutes ) * SECONDS_PER_MINUTE * ( sign == '-' ? -1 : 1 );
    return true;
}
static bool rfc3339TakeFraction( RFC3339_TEXT *text )
{
    if ( !rfc3339TakeOne( text, "." ) ) {
        return true;
    }
    if ( !rfc3339TakeOne( text, "0123456789" ) ) {
        return false;
    }
    while ( rfc3339TakeOne( text, "0123456789" ) ) {}
    return true;
}
// Shifts to UTC.  A leap second is set aside meanwhile; false if it is not where one can be.
static bool rfc3339ToUtc( ZU_TIME **tm, ZU_INT offset )
{
    const bool isLeap = zuTimeSecond( *tm ) == LEAP_SECOND;
    if ( isLeap ) {
        zuTimeSetSecond( tm, LEAP_SECOND - 1 );
    }
    zuTimeShiftSeconds( tm, -offset );
    if ( !isLeap ) {
        return true;
    }
    const bool canBe = zuTimeDay( *tm ) == zuTimeDaysInMonth( *tm ) && zuTimeHour( *tm ) == 23 &&
                       zuTimeMinute( *tm ) == 59 && zuTimeSecond( *tm ) == LEAP_SECOND - 1;
    zuTimeSetSecond( tm, LEAP_SECOND );
    return canBe;
}
ZU_TIME *zuTimeTryCreateFromRfc3339( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    const ZU_CHAR *chars = zuStringBacking( zus );
    RFC3339_TEXT text = { chars, chars + zuStringLength( zus ) };
    ZU_INT year, month, day, hour, minute, second, offset;
    const bool told = rfc3339TakeNumber( &text, 4, YEAR_MAX, &year ) && rfc3339TakeOne( &text, "-" ) &&
                      rfc3339TakeNumber( &text, 2, 12, &month ) && rfc3339TakeOne( &text, "-" ) &&
                      rfc3339TakeNumber( &text, 2, 31, &day ) && rfc3339TakeOne( &text, "Tt " ) &&
                      rfc3339TakeNumber( &text, 2, 23, &hour ) && rfc3339TakeOne( &text, ":" ) &&
                      rfc3339TakeNumber( &text, 2, 59, &minute ) && rfc3339TakeOne( &text, ":" ) &&
                      rfc3339TakeNumber( &text, 2, LEAP_SECOND, &second ) && rfc3339TakeFraction( &text ) &&
                      rfc3339TakeOffset( &text, &offset ) && text.next == text.end && month > 0 && day > 0;
    if ( !told ) {
        return nullptr;
    }
    ZU_TIME *tm = zuTimeCreate();
    zuTimeSetYear( &tm, year );
    zuTimeSetMonth( &tm, month );
    zuTimeSetDay( &tm, day );
    zuTimeSetHour( &tm, hour );
    zuTimeSetMinute( &tm, minute );
    zuTimeSetSecond( &tm, second );
    if ( !zuTimeValid( tm ) || !rfc3339ToUtc( &tm, offset ) ) {
        zuTimeRelease( tm );
        return nullptr;
    }
    return tm;
}
