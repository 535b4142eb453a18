// ZU___EVENT_QUEUE_IMP: the inside of a ZU_EVENT_QUEUE, which listeners keep.
//
// For authors of classes and modules.  It lives as long as any listener keeps it, and takes in nothing once it has
// been halted; reading from it and listening to it abort then.  zu_event_queue.h tells the rest.
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

typedef struct ZU_ALERTABLE ZU_ALERTABLE;

typedef struct ZU___EVENT_QUEUE_IMP ZU___EVENT_QUEUE_IMP;
// zu___EventQueueImpRetain, Release, From, Obj, Sort, ToString, Compare, Equals.  The last release aborts unless the
// queue has been halted.
ZU_STDFUNCS_DECLARE( ZU___EVENT_QUEUE_IMP, zu___EventQueueImp )

/// Returns a new queue without events.
ZU_API ZU___EVENT_QUEUE_IMP *zu___EventQueueImpCreate( void );
/// Queues `event`, unless one that equals it waits, or the queue has been halted.
ZU_API void zu___EventQueueImpWriteEvent( ZU___EVENT_QUEUE_IMP *imp, ZU_OBJ *event );
/// Takes the oldest event and returns it; null if there is none.
ZU_API ZU_OBJ *zu___EventQueueImpReadEvent( ZU___EVENT_QUEUE_IMP *imp );
/// Attaches `alb` to the alert that is set while events wait.
ZU_API void zu___EventQueueImpReadEventAddAlertable( ZU___EVENT_QUEUE_IMP *imp, ZU_ALERTABLE *alb );
/// Detaches `alb` from that alert.
ZU_API void zu___EventQueueImpReadEventDelAlertable( ZU___EVENT_QUEUE_IMP *imp, ZU_ALERTABLE *alb );
/// Ends the queue: drops all events, and ignores what is written from now on.  A second time aborts.
ZU_API void zu___EventQueueImpHalt( ZU___EVENT_QUEUE_IMP *imp );

ZU_END_DECLS
