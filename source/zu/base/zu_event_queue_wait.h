// zu_event_queue_wait.h: reading an event queue that may be empty, in one call.
#pragma once

#include "zu/base/zu_event_queue.h"

ZU_BEGIN_DECLS

/// Takes the oldest event and returns it; waits for one if there is none, for `millisec` milliseconds at most, -1: no
/// limit.  Null if none came in that time.  Any number of threads may wait for the events of one queue; each event goes
/// to one of them.
ZU_API ZU_OBJ *zuEventQueueReadEventTimed( ZU_EVENT_QUEUE *eq, ZU_INT millisec );

ZU_END_DECLS
