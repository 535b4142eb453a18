// ZU_ALERTABLE: a listener to be attached to alerts.
//
// It calls a function, opens a barrier, writes an event into a queue, asserts a signal or sets an alert.  One listener
// can be attached to any number of sources.  A thread that waits for several things makes one barrier, signal or event
// queue, one listener for it, and attaches that to all of them.
//
// The listener is its owner's.  Sources keep its inside only, and the last release halts that: from then on it does
// nothing wherever it is attached, and its targets are released; a firing that is under way is waited for.  So a
// listener whose argument holds the listener never dies by itself.
//
// A listener fires on the thread that sets the source, or that attaches it to a source which is set, with both locked.
// Its function must not attach to, detach from, set or release that source or that listener, itself or by others: it
// would wait for ever.  The same goes for sources that notify each other in a circle.  Alertables are ordered by
// identity.
#pragma once

#include "zu/base/zu_alertable_imp.h"

ZU_BEGIN_DECLS

typedef struct ZU_EVENT_QUEUE ZU_EVENT_QUEUE;

typedef struct ZU_ALERTABLE ZU_ALERTABLE;
// zuAlertableRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_ALERTABLE, zuAlertable )

// Creation.  The listener keeps references to its targets.
/// Returns a listener that calls `func` with `arg`; either may be null, and without a function nothing happens.
ZU_API ZU_ALERTABLE *zuAlertableCreate( ZU_ALERTABLE_FUNC func, ZU_OBJ *arg );
/// Returns a listener that opens `barrier`.
ZU_API ZU_ALERTABLE *zuAlertableCreateBarrier( ZU_BARRIER *barrier );
/// Returns a listener that writes `evt` into `eq`; it does not keep the queue alive, and does nothing after its end.
ZU_API ZU_ALERTABLE *zuAlertableCreateEventQueue( ZU_EVENT_QUEUE *eq, ZU_OBJ *evt );
/// Returns a listener that asserts `sig`.
ZU_API ZU_ALERTABLE *zuAlertableCreateSignal( ZU_SIGNAL *sig );
/// Returns a listener that sets `alert`.
ZU_API ZU_ALERTABLE *zuAlertableCreateAlert( ZU_ALERT *alert );

// For authors of classes and modules
/// Returns what sources keep of the listener, with a reference.
ZU_API ZU___ALERTABLE_IMP *zu___AlertableImp( ZU_ALERTABLE *alb );
/// Fires the listener, as a source does.
ZU_API void zu___AlertableAlert( ZU_ALERTABLE *alb );

ZU_END_DECLS
