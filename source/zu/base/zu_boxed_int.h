// ZU_BOXED_INT: an integer as an object, to be held by a container as key or value.
//
// Immutable; ordered by value.  It is never equal to a real number.  The text is in decimal digits.
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

typedef struct ZU_BOXED_INT ZU_BOXED_INT;
// zuBoxedIntRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_BOXED_INT, zuBoxedInt )

/// Returns a new object that holds `value`.
ZU_API ZU_BOXED_INT *zuBoxedIntCreate( ZU_INT value );
/// Returns the value.
ZU_API ZU_INT zuBoxedIntValue( ZU_BOXED_INT *bi );

ZU_END_DECLS
