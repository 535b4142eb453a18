// ZU___BOXED_POINTER: an address as an object, to be held by a container as key or value.
//
// For authors of classes and modules.  Immutable; ordered by address.  The text is the class's name and the object's
// number.
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

typedef struct ZU___BOXED_POINTER ZU___BOXED_POINTER;
// zu___BoxedPointerRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU___BOXED_POINTER, zu___BoxedPointer )

/// Does with the address of a dying object what its owner wants.
typedef void ( *ZU___BOXED_POINTER_DESTROY_FUNC )( void *value );

/// Returns a new object.  `destroyFunc` is called with `value` when the object dies; it may be null, and so may
/// `value`.
ZU_API ZU___BOXED_POINTER *zu___BoxedPointerCreate( void *value, ZU___BOXED_POINTER_DESTROY_FUNC destroyFunc );
/// Returns the address.
ZU_API void *zu___BoxedPointerValue( ZU___BOXED_POINTER *bptr );

ZU_END_DECLS
