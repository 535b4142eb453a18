// Room is made as for an insertion at the end, and handed back as free room: so it is there by the classes' own rules.

#include "zu/base/zu_reserve.h"

#include "zu/base/zu_buffer_internal.h"
#include "zu/base/zu_dict_internal.h"
#include "zu/base/zu_string_internal.h"
#include "zu/base/zu_vector_internal.h"

void zuStringReserve( ZU_STRING **zus, ZU_INT count )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( *zus );
    ZU_ASSERT( count >= 0 );
    if ( count > 0 ) {
        zu___StringUnshare( zus );
        zu___StringMakeRoom( *zus, ( *zus )->length, count );
        ( *zus )->length -= count;
        ( *zus )->bspace += count;
    }
}
void zuVectorReserve( ZU_VECTOR **vec, ZU_INT count )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( *vec );
    ZU_ASSERT( count >= 0 );
    if ( count > 0 ) {
        zu___VectorUnshare( vec );
        zu___VectorMakeRoom( *vec, ( *vec )->length, count );
        ( *vec )->length -= count;
        ( *vec )->bspace += count;
    }
}
void zuBufferReserve( ZU_BUFFER **buf, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteCount );
    zu___BufferReserveBits( buf, BYTES_TO_BITS( byteCount ) );
}
void zuDictReserve( ZU_DICT **dict, ZU_INT count )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    ZU_ASSERT( count >= 0 );
    if ( count > 0 ) {
        zu___DictReserve( dict, count );
    }
}
