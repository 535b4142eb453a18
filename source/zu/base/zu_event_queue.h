// ZU_EVENT_QUEUE: hands objects from any number of writers to a reader, first in, first out.
//
// The queue is a set too: an event that equals one that waits is not queued a second time, so a listener or a timer
// may write the same object again and again, and one entry waits.
//
// Reading does not block.  A reader attaches a listener, reads until nothing is left, waits for the listener, and
// begins again; zu_alert.h tells why nothing gets lost by that.  A reader that was woken may find nothing.  The time
// that reading and writing take grows with the logarithm of the number of events that wait.  Queues are ordered by
// identity.
#pragma once

#include "zu/base/zu_event_queue_imp.h"

ZU_BEGIN_DECLS

typedef struct ZU_SIGNALABLE ZU_SIGNALABLE;

typedef struct ZU_EVENT_QUEUE ZU_EVENT_QUEUE;
// zuEventQueueRetain, Release, From, Obj, Sort, ToString, Compare, Equals.  The last release drops the events that
// wait; listeners that write to the queue do nothing then.
ZU_STDFUNCS_DECLARE( ZU_EVENT_QUEUE, zuEventQueue )

/// Returns a new queue without events.
ZU_API ZU_EVENT_QUEUE *zuEventQueueCreate( void );
/// Queues `event`, unless one that equals it waits.  If it is the only one, the listeners fire on the calling thread,
/// and may read from the queue.
ZU_API void zuEventQueueWriteEvent( ZU_EVENT_QUEUE *eq, ZU_OBJ *event );
/// Takes the oldest event and returns it; null if there is none.
ZU_API ZU_OBJ *zuEventQueueReadEvent( ZU_EVENT_QUEUE *eq );

/// Attaches `alb`, to be fired once as soon as an event waits, which may be at once, on the calling thread.
ZU_API void zuEventQueueReadEventAddAlertable( ZU_EVENT_QUEUE *eq, ZU_ALERTABLE *alb );
/// Detaches `alb`; one that is not attached is no error.
ZU_API void zuEventQueueReadEventDelAlertable( ZU_EVENT_QUEUE *eq, ZU_ALERTABLE *alb );

/// Returns a listener that writes `evt`, as zuAlertableCreateEventQueue does.
ZU_API ZU_ALERTABLE *zuEventQueueCreateAlertable( ZU_EVENT_QUEUE *eq, ZU_OBJ *evt );
/// Returns a listener that writes `evt`, as zuSignalableCreateEventQueue does.
ZU_API ZU_SIGNALABLE *zuEventQueueCreateSignalable( ZU_EVENT_QUEUE *eq, ZU_OBJ *evt );

// For authors of classes and modules
/// Returns what listeners keep of the queue, with a reference.
ZU_API ZU___EVENT_QUEUE_IMP *zu___EventQueueImp( ZU_EVENT_QUEUE *eq );

ZU_END_DECLS
