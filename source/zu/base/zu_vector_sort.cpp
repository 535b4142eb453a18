// A merge sort, since it is stable and asks least: comparing objects is what takes time.  It works on copies of the
// pointers and writes them back at the end, so that the caller's function never meets a vector half sorted.

#include "zu/base/zu_vector_sort.h"

#include "zu/base/zu_vector_internal.h"
#include "zu/sys/zu_mem.h"

static ZU_INT sortCompareObjs( ZU_OBJ *a, ZU_OBJ *b, void * )
{
    return zuObjCompare( a, b );
}
// Merges two neighbouring runs of `from`, [ begin, middle ) and [ middle, end ), into `to`.
static void sortMerge( ZU_OBJ *const *from, ZU_OBJ **to, ZU_INT begin, ZU_INT middle, ZU_INT end,
                       ZU_VECTOR_COMPARE_FUNC compare, void *context )
{
    ZU_INT a = begin, b = middle;
    if ( middle < end && compare( from[ middle - 1 ], from[ middle ], context ) <= 0 ) {
        a = middle; // in order as they stand
        zuMemCopyN( to + begin, from + begin, middle - begin, sizeof( ZU_OBJ * ) );
    }
    for ( ZU_INT next = begin + ( a - begin ); next < end; next++ ) {
        const bool takeB = a == middle || ( b < end && compare( from[ a ], from[ b ], context ) > 0 );
        to[ next ] = takeB ? from[ b++ ] : from[ a++ ];
    }
}
void zuVectorSortBy( ZU_VECTOR **vec, ZU_VECTOR_COMPARE_FUNC compare, void *context )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( *vec );
    const ZU_INT count = zuVectorLength( *vec );
    if ( count < 2 ) {
        return;
    }
    compare = compare ? compare : sortCompareObjs;
    ZU_VECTOR *unsorted = zuVectorRetain( *vec ); // what the caller's function changes is a copy, and is noticed
    ZU_OBJ **arrays = (ZU_OBJ **)zuMemAllocN( 2 * count, sizeof( ZU_OBJ * ) );
    ZU_OBJ **from = arrays, **to = arrays + count;
    zuMemCopyN( from, zuVectorBacking( *vec ), count, sizeof( ZU_OBJ * ) );
    for ( ZU_INT width = 1; width < count; width *= 2 ) {
        for ( ZU_INT begin = 0; begin < count; begin += 2 * width ) {
            const ZU_INT middle = zuIntMin( begin + width, count );
            sortMerge( from, to, begin, middle, zuIntMin( begin + 2 * width, count ), compare, context );
        }
        ZU_OBJ **merged = to;
        to = from;
        from = merged;
    }
    ZU_ASSERT( *vec == unsorted );
    zuVectorRelease( unsorted );
    zu___VectorUnshare( vec );
    zuMemCopyN( ( *vec )->items + ( *vec )->fspace, from, count, sizeof( ZU_OBJ * ) );
    zuMemFree( arrays );
}
