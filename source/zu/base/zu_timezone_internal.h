// zu_timezone_internal.h: what a platform must provide for time zones, beside the two functions of its share in
// zu_timezone.h.
#pragma once

#include "zu/base/zu_string.h"

ZU_BEGIN_DECLS

// Returns what the system calls the zone that the process runs in, as an IANA name, whether it is a known one or not;
// null if the system has no name for it.  A platform whose names are those of the Windows registry translates by
// zuTimezoneWindowsToIana.  If the system fails to answer, the platform prints, by zuPrintFormatCstr, which of its
// functions failed and with what error, and returns null; a machine that was never told its zone is no failure.
ZU_STRING *zu___TimezoneSystemName( void );

// Stores the seconds to add to UTC now to get local time in the zone that the process runs in, daylight saving
// included, and returns true; false if the system does not tell.  The caller checks the range.
bool zu___TimezoneSystemOffset( ZU_INT *seconds );

ZU_END_DECLS
