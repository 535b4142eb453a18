#include "zu/base/zu_timezone.h"

#include "zu/base/zu_timezone_internal.h"
#include "zu/io/zu_print.h"

#include <windows.h>

static constexpr ZU_INT MINUTE = 60; // seconds

void zu___TimezoneStartupImp( void )
{
}
void zu___TimezoneShutdownImp( void )
{
}

ZU_STRING *zu___TimezoneSystemName( void )
{
    DYNAMIC_TIME_ZONE_INFORMATION zone;
    if ( GetDynamicTimeZoneInformation( &zone ) == TIME_ZONE_ID_INVALID ) {
        zuPrintFormatCstr( "GetDynamicTimeZoneInformation failed: %i", -1, (ZU_INT)GetLastError() );
        return nullptr;
    }
    ZU_STRING *windowsName = zuStringCreateFromWcstr( (const char16_t *)zone.TimeZoneKeyName, -1 );
    ZU_STRING *name = zuTimezoneWindowsToIana( windowsName );
    zuStringRelease( windowsName );
    return name;
}

// Windows counts the minutes from local time to UTC.
bool zu___TimezoneSystemOffset( ZU_INT *seconds )
{
    TIME_ZONE_INFORMATION zone;
    ZU_INT bias;
    switch ( GetTimeZoneInformation( &zone ) ) {
    case TIME_ZONE_ID_UNKNOWN:
        bias = zone.Bias;
        break;
    case TIME_ZONE_ID_STANDARD:
        bias = (ZU_INT)zone.Bias + zone.StandardBias;
        break;
    case TIME_ZONE_ID_DAYLIGHT:
        bias = (ZU_INT)zone.Bias + zone.DaylightBias;
        break;
    default:
        return false;
    }
    *seconds = -bias * MINUTE;
    return true;
}
