#include "zu/base/zu_vector_cursor.h"

ZU_VECTOR_CURSOR zuVectorCursor( ZU_VECTOR *vec )
{
    ZU_ASSERT( vec );
    return { nullptr, -1, vec };
}
ZU_VECTOR_CURSOR zuVectorCursorFrom( ZU_VECTOR *vec, ZU_INT idx )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( idx >= 0 );
    ZU_ASSERT( idx <= zuVectorLength( vec ) );
    return { nullptr, idx - 1, vec };
}
ZU_BOOL zuVectorCursorNext( ZU_VECTOR_CURSOR *cursor )
{
    ZU_ASSERT( cursor );
    ZU_ASSERT( cursor->vec );
    const ZU_INT length = zuVectorLength( cursor->vec );
    ZU_OBJ *const *items = zuVectorBacking( cursor->vec );
    if ( cursor->item ) {
        ZU_ASSERT( cursor->idx < length );
        ZU_ASSERT( items[ cursor->idx ] == cursor->item );
    }
    const bool more = cursor->idx + 1 < length;
    cursor->idx += more;
    cursor->item = more ? items[ cursor->idx ] : nullptr;
    return more;
}
