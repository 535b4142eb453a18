// ZU_SIGNALABLE: a listener to be attached to signals.
//
// It calls a function, opens a barrier, writes an event into a queue, asserts a signal or sets an alert.  All that
// zu_alertable.h tells of listeners to alerts holds for it too: it is its owner's, who ends it by the last release,
// and it fires on the thread that asserts the signal, or that attaches it to an asserted one, with both locked.
// Signalables are ordered by identity.
#pragma once

#include "zu/base/zu_signalable_imp.h"

ZU_BEGIN_DECLS

typedef struct ZU_EVENT_QUEUE ZU_EVENT_QUEUE;

typedef struct ZU_SIGNALABLE ZU_SIGNALABLE;
// zuSignalableRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_SIGNALABLE, zuSignalable )

// Creation.  The listener keeps references to its targets.
/// Returns a listener that calls `func` with `arg`; either may be null, and without a function nothing happens.
ZU_API ZU_SIGNALABLE *zuSignalableCreate( ZU_SIGNALABLE_FUNC func, ZU_OBJ *arg );
/// Returns a listener that opens `barrier`.
ZU_API ZU_SIGNALABLE *zuSignalableCreateBarrier( ZU_BARRIER *barrier );
/// Returns a listener that writes `evt` into `eq`; it does not keep the queue alive, and does nothing after its end.
ZU_API ZU_SIGNALABLE *zuSignalableCreateEventQueue( ZU_EVENT_QUEUE *eq, ZU_OBJ *evt );
/// Returns a listener that asserts `sig`.
ZU_API ZU_SIGNALABLE *zuSignalableCreateSignal( ZU_SIGNAL *sig );
/// Returns a listener that sets `alert`.
ZU_API ZU_SIGNALABLE *zuSignalableCreateAlert( ZU_ALERT *alert );

// For authors of classes and modules
/// Returns what sources keep of the listener, with a reference.
ZU_API ZU___SIGNALABLE_IMP *zu___SignalableImp( ZU_SIGNALABLE *sigb );
/// Fires the listener, as a source does.
ZU_API void zu___SignalableSignal( ZU_SIGNALABLE *sigb );

ZU_END_DECLS
