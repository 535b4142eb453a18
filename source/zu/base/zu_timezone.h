// zu_timezone.h: the names of time zones, and the zone of the machine.
//
// A zone has a name in the IANA time zone database, "Europe/Berlin", and one in the Windows registry, "W. Europe
// Standard Time".  Several IANA names share a Windows name, which stands for the first of them.  The names are those
// of a fixed release of the Unicode CLDR: IANA names that have come up since, such as "Europe/Kyiv", are unknown.  No
// function here converts times, which are UTC throughout; zu_time.h has them.
//
// Callable from any thread.  The environment must not be changed by another thread meanwhile.
#pragma once

#include "zu/sys/zu_int.h"

ZU_BEGIN_DECLS

typedef struct ZU_STRING ZU_STRING;
typedef struct ZU_VECTOR ZU_VECTOR;

// The machine.  Both ask the system at each call, and so follow the environment variable TZ and daylight saving.
/// Returns the IANA name of the zone that the process runs in; the empty string if it is not known, or if the zone has
/// none, as where TZ holds a rule.
ZU_API ZU_STRING *zuTimezone( void );
/// Returns the seconds to add to UTC now to get local time, positive east of Greenwich; 0 also if the system does not
/// tell, or tells more than a day.  Where TZ is not set, the C library may keep to the zone that the machine had when
/// the process first asked.
ZU_API ZU_INT zuTimezoneUtcOffset( void );

// Names
/// Returns all IANA names as strings, in ascending order.
ZU_API ZU_VECTOR *zuTimezoneList( void );
/// Tells whether `zus` is an IANA name.
ZU_API ZU_BOOL zuTimezoneIanaOk( ZU_STRING *zus );
/// Returns the Windows name for an IANA name; null if there is none.
ZU_API ZU_STRING *zuTimezoneIanaToWindows( ZU_STRING *zus );
/// Tells whether `zus` is a Windows name.
ZU_API ZU_BOOL zuTimezoneWindowsOk( ZU_STRING *zus );
/// Returns the IANA name that a Windows name stands for; null if there is none.
ZU_API ZU_STRING *zuTimezoneWindowsToIana( ZU_STRING *zus );

// For authors of classes and modules
/// Prepares what the platform needs; the tables are constants.
ZU_API void zu___TimezoneStartup( void );
/// Takes down what zu___TimezoneStartup has prepared.
ZU_API void zu___TimezoneShutdown( void );
/// The platform's share of zu___TimezoneStartup.
ZU_API void zu___TimezoneStartupImp( void );
/// The platform's share of zu___TimezoneShutdown.
ZU_API void zu___TimezoneShutdownImp( void );

ZU_END_DECLS
