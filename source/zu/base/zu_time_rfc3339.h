// zu_time_rfc3339.h: moments as text for exchange with other programs, in the form of RFC 3339.
//
// zuTimeToString is for people and for this library; what other programs read and write is "2024-03-01T09:05:07Z".
#pragma once

#include "zu/base/zu_string.h"
#include "zu/base/zu_time.h"

ZU_BEGIN_DECLS

/// Returns `tm` in UTC, "2024-03-01T09:05:07Z"; null if it is not valid or its year is not 0 to 9999, for which RFC 3339
/// has no form.
ZU_API ZU_STRING *zuTimeTryConvertToRfc3339( ZU_TIME *tm );
/// Returns the moment that all of `zus` tells, in UTC; null if it tells none.
///
/// That is date, "T", time and "Z" or an offset from UTC, as in section 5.6: "2024-03-01T10:05:07.25+01:00".  "t", "z" and
/// a blank in place of "T" are taken too.  A fraction of a second is dropped.  A second of 60 must be the last of a month
/// in UTC, as leap seconds are, and stays one.  The date must be valid, an offset less than a day.
ZU_API ZU_TIME *zuTimeTryCreateFromRfc3339( ZU_STRING *zus );

ZU_END_DECLS
