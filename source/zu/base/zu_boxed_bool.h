// ZU_BOXED_BOOL: a truth value as an object, to be held by a container as key or value.
//
// There are two, which everybody shares, and false is ahead of true.  The text is "true" or "false".
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

typedef struct ZU_BOXED_BOOL ZU_BOXED_BOOL;
// zuBoxedBoolRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_BOXED_BOOL, zuBoxedBool )

/// Returns the object for false if `value` is 0, else the one for true.
ZU_API ZU_BOXED_BOOL *zuBoxedBoolCreate( ZU_BOOL value );
/// Returns the value, ZU_TRUE or ZU_FALSE.
ZU_API ZU_BOOL zuBoxedBoolValue( ZU_BOXED_BOOL *bbl );

// For authors of classes and modules

/// Makes both objects.
ZU_API void zu___BoxedBoolStartup( void );
/// Releases both objects.
ZU_API void zu___BoxedBoolShutdown( void );

ZU_END_DECLS
