// ZU_COUNTER: a count of what is going on, and a wait for it to end: a latch that can be raised again.
//
// Who begins something increments, who ends it decrements, and anybody can wait until nothing is left.  A thread that
// has waited may find the count raised again by the time it runs.  Counters are ordered by identity.
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

typedef struct ZU_COUNTER ZU_COUNTER;
// zuCounterRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_COUNTER, zuCounter )

/// Returns a new counter that stands at 0.
ZU_API ZU_COUNTER *zuCounterCreate( void );
/// Adds 1; aborts at ZU_INT_MAX.
ZU_API void zuCounterIncrement( ZU_COUNTER *ctr );
/// Takes 1 away, and wakes all that wait if that makes 0; aborts at 0.
ZU_API void zuCounterDecrement( ZU_COUNTER *ctr );
/// Returns the count, which may be another by then.
ZU_API ZU_INT zuCounterValue( ZU_COUNTER *ctr );

/// Returns as soon as the count is 0.
ZU_API void zuCounterWaitZero( ZU_COUNTER *ctr );
/// Returns true as soon as the count is 0, false if that is not so within `millisec` milliseconds; -1 is no limit, less
/// aborts, and 0 only looks.
ZU_API ZU_BOOL zuCounterWaitZeroTimed( ZU_COUNTER *ctr, ZU_INT millisec );

ZU_END_DECLS
