// ZU_BOXED_NULL: nothing as an object, to be held by a container where no item may be null.
//
// There is one, which everybody shares.  The text is "null".
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

typedef struct ZU_BOXED_NULL ZU_BOXED_NULL;
// zuBoxedNullRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_BOXED_NULL, zuBoxedNull )

/// Returns the object.
ZU_API ZU_BOXED_NULL *zuBoxedNullCreate( void );

// For authors of classes and modules

/// Makes the object.
ZU_API void zu___BoxedNullStartup( void );
/// Releases the object.
ZU_API void zu___BoxedNullShutdown( void );

ZU_END_DECLS
