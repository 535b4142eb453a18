// ZU_REGION: a reader/writer lock, which any number of threads share, or one has to itself.
//
// Neither mode is re-entrant, and a thread inside cannot change its mode.  Threads that enter in shared mode wait for
// one that waits to enter exclusively, and those that have waited go ahead of the next such one; threads that enter
// exclusively overtake one that waits to a few times at most.  So nobody is kept out for long by those who come later.
// Regions are ordered by identity.
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

typedef struct ZU_REGION ZU_REGION;
// zuRegionRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_REGION, zuRegion )

/// Returns a new region with nobody inside.
ZU_API ZU_REGION *zuRegionCreate( void );
/// Enters in shared mode.
ZU_API void zuRegionEnterShared( ZU_REGION *region );
/// Enters in exclusive mode.
ZU_API void zuRegionEnterExclusive( ZU_REGION *region );
/// Enters in exclusive mode if `exclusive`, in shared mode otherwise.
ZU_API void zuRegionEnter( ZU_REGION *region, ZU_BOOL exclusive );
/// Leaves, in whichever mode the caller has entered; that it has is not checked.
ZU_API void zuRegionLeave( ZU_REGION *region );

ZU_END_DECLS
