// zu_clock.h: moments of the calendar, time zones, spans of time, and timers.
//
// Each include has ahead of it the sentence with which the header begins.
#pragma once

// ZU_TIME: a moment of the (proleptic) Gregorian calendar in UTC, to the second.
#include "zu/base/zu_time.h"

// zu_time_rfc3339.h: moments as text for exchange with other programs, in the form of RFC 3339.
#include "zu/base/zu_time_rfc3339.h"

// zu_timezone.h: the names of time zones, and the zone of the machine.
#include "zu/base/zu_timezone.h"

// zu_timestamp.h: the clock of all timed waits and relative timers, a ZU_INT of milliseconds.
#include "zu/base/zu_timestamp.h"

// zu_nanoseconds.h: spans of time in nanoseconds, a ZU_INT that is not negative, and in milliseconds.
#include "zu/base/zu_nanoseconds.h"

// ZU_TIMER: makes something happen once at a given time: a call, a signal, an alert, a barrier's opening, or an event.
#include "zu/base/zu_timer.h"
