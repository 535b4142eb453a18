// zu_timestamp_internal.h: what a platform must provide for zuTimestamp.
#pragma once

#include "zu/base/zu_timestamp.h"

ZU_BEGIN_DECLS

// Returns the counter's ticks in a second, always the same number; 0 if there is no counter.
ZU_INT zu___TimestampFrequency( void );

// Returns the ticks since some moment.  They never fall, whichever thread asks, and the wall clock does not move them.
ZU_INT zu___TimestampCounter( void );

ZU_END_DECLS
