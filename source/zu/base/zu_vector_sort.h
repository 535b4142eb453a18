// zu_vector_sort.h: bringing the items of a vector in order.
#pragma once

#include "zu/base/zu_vector.h"

ZU_BEGIN_DECLS

/// Orders two items: negative, 0 or positive.  `context` is the caller's.
typedef ZU_INT ( *ZU_VECTOR_COMPARE_FUNC )( ZU_OBJ *a, ZU_OBJ *b, void *context );

/// Sorts the items by `compare`, or by zuObjCompare if that is null.  Items that it holds equal stay in their order.
///
/// Makes n log2 n comparisons at most, and n - 1 for items that are in order.  `compare` gets each item borrowed, must
/// order consistently, and may read the vector, which is as it was until the sorting is done; changing it aborts.
ZU_API void zuVectorSortBy( ZU_VECTOR **vec, ZU_VECTOR_COMPARE_FUNC compare, void *context );

ZU_END_DECLS
