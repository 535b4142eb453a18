// ZU_BARRIER: a gate at which threads wait until it is opened, an event that stays set until it is reset.
//
// The gate is a level and no pulse: once open it lets everybody through until it is closed again, and a closing that
// comes right behind an opening may stop threads that were waiting at it.  Waiting costs no processor time.  Barriers
// are ordered by identity.
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

typedef struct ZU_BARRIER ZU_BARRIER;
// zuBarrierRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_BARRIER, zuBarrier )

/// Returns a new gate, closed if `blocked`, open otherwise.
ZU_API ZU_BARRIER *zuBarrierCreate( ZU_BOOL blocked );

/// Closes the gate, which may be closed already; threads that wait stay asleep.
ZU_API void zuBarrierBlock( ZU_BARRIER *barrier );
/// Opens the gate and wakes all that wait at it.  What a thread wrote before, those see that pass.
ZU_API void zuBarrierUnblock( ZU_BARRIER *barrier );
/// Tells whether the gate is closed, which may have changed by then.
ZU_API ZU_BOOL zuBarrierIsBlocked( ZU_BARRIER *barrier );

/// Returns as soon as the gate is open.
ZU_API void zuBarrierPass( ZU_BARRIER *barrier );
/// Returns true as soon as the gate is open, false if that is not so within `millisec` milliseconds; -1 is no limit,
/// less aborts, and 0 only looks.
ZU_API ZU_BOOL zuBarrierPassTimed( ZU_BARRIER *barrier, ZU_INT millisec );

ZU_END_DECLS
