// ZU_BOXED_REAL: a real number as an object, to be held by a container as key or value.
//
// Immutable; ordered by zuRealCompare, so that values within 2^-52 of each other are equal, and are one key.  It is
// never equal to an integer.  The text has six digits behind the point, as "1.500000".
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

typedef struct ZU_BOXED_REAL ZU_BOXED_REAL;
// zuBoxedRealRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_BOXED_REAL, zuBoxedReal )

/// Returns a new object that holds `value`.
ZU_API ZU_BOXED_REAL *zuBoxedRealCreate( double value );
/// Returns the value.
ZU_API double zuBoxedRealValue( ZU_BOXED_REAL *br );

ZU_END_DECLS
