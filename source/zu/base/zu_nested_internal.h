// zu_nested_internal.h: what vectors and dicts do with all that is nested in them.
//
// Data from outside nests vectors and dicts as deep as it likes, so that the way back is on the heap rather than on the
// stack.  What is neither is compared and printed by zuObjCompare and zuObjToString.
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

// Orders two vectors, or two dicts: the first pair of items, or of keys and then values, that are not equal decides,
// else the length.
ZU_INT zu___NestedCompare( ZU_OBJ *objA, ZU_OBJ *objB );

// Returns "<item, item>" for a vector, "{key=value, key=value}" for a dict.
ZU_STRING *zu___NestedToString( ZU_OBJ *obj );

ZU_END_DECLS
