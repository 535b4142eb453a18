// zu_vector_cursor.h: walking over a vector without a reference for each item.
//
//     ZU_VECTOR_CURSOR cursor = zuVectorCursor( vec );
//     while ( zuVectorCursorNext( &cursor ) ) {
//         ... cursor.item ...
//     }
//
// A cursor holds nothing and needs no end.  The vector must live, and must not be changed through the variable that the
// cursor was made of, as long as the walk goes on; who wants to change it walks over a retained copy.  A step from an
// item that does not stand there any more aborts.
#pragma once

#include "zu/base/zu_vector.h"

ZU_BEGIN_DECLS

typedef struct ZU_VECTOR_CURSOR {
    ZU_OBJ *item; // that the last step has come to, borrowed
    ZU_INT idx;   // the position of the item, -1 ahead of the first step
    ZU_VECTOR *vec;
} ZU_VECTOR_CURSOR;

/// Returns a cursor ahead of the first item.
ZU_API ZU_VECTOR_CURSOR zuVectorCursor( ZU_VECTOR *vec );
/// Returns a cursor ahead of the item at `idx`, 0 to the length.
ZU_API ZU_VECTOR_CURSOR zuVectorCursorFrom( ZU_VECTOR *vec, ZU_INT idx );
/// Goes on to the next item; false, and a null item, if there is none.
ZU_API ZU_BOOL zuVectorCursorNext( ZU_VECTOR_CURSOR *cursor );

ZU_END_DECLS
