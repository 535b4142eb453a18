// ZU_BOXED_UNIQUE: an object that is equal to itself alone, such as for a key that nobody else can have.
//
// Ordered by the objects' numbers; the text is the class's name and that number.
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

typedef struct ZU_BOXED_UNIQUE ZU_BOXED_UNIQUE;
// zuBoxedUniqueRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_BOXED_UNIQUE, zuBoxedUnique )

/// Returns a new object.
ZU_API ZU_BOXED_UNIQUE *zuBoxedUniqueCreate( void );

ZU_END_DECLS
