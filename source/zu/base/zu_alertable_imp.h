// ZU___ALERTABLE_IMP: the inside of a ZU_ALERTABLE, which sources keep.
//
// For authors of classes and modules.  It lives as long as any source keeps it, and is inert once it has been halted.
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

typedef struct ZU_ALERT ZU_ALERT;
typedef struct ZU_BARRIER ZU_BARRIER;
typedef struct ZU_SIGNAL ZU_SIGNAL;
typedef struct ZU___EVENT_QUEUE_IMP ZU___EVENT_QUEUE_IMP;

/// Does what a listener was made for; `arg` is the listener's, and not to be released.
typedef void ( *ZU_ALERTABLE_FUNC )( ZU_OBJ *arg );

typedef struct ZU___ALERTABLE_IMP ZU___ALERTABLE_IMP;
// zu___AlertableImpRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU___ALERTABLE_IMP, zu___AlertableImp )

// Creation, as zu_alertable.h tells
/// Returns a listener that calls `func` with `arg`; either may be null.
ZU_API ZU___ALERTABLE_IMP *zu___AlertableImpCreate( ZU_ALERTABLE_FUNC func, ZU_OBJ *arg );
/// Returns a listener that opens `barrier`.
ZU_API ZU___ALERTABLE_IMP *zu___AlertableImpCreateBarrier( ZU_BARRIER *barrier );
/// Returns a listener that writes `evt` into `eq`.
ZU_API ZU___ALERTABLE_IMP *zu___AlertableImpCreateEventQueue( ZU___EVENT_QUEUE_IMP *eq, ZU_OBJ *evt );
/// Returns a listener that asserts `sig`.
ZU_API ZU___ALERTABLE_IMP *zu___AlertableImpCreateSignal( ZU_SIGNAL *sig );
/// Returns a listener that sets `alert`.
ZU_API ZU___ALERTABLE_IMP *zu___AlertableImpCreateAlert( ZU_ALERT *alert );

/// Fires the listener on the calling thread, with its lock held all the while.
ZU_API void zu___AlertableImpAlert( ZU___ALERTABLE_IMP *imp );
/// Lets go of the targets, so that firing does nothing any more; waits for a firing that is under way.
ZU_API void zu___AlertableImpHalt( ZU___ALERTABLE_IMP *imp );

ZU_END_DECLS
