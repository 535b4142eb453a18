// The forms of what changes a buffer by an operand.  Each checks its arguments in their order, converts them to bits and
// hands them on to the one function for its kind of operand.

#include "zu/base/zu_buffer_internal.h"

#include <cstring>

typedef ZU___INT_UNSIGNED UINT;

// Appending, in bytes
void zuBufferAppend( ZU_BUFFER **buf, ZU_BUFFER *src )
{
    BUFFER_ASSERT_HOLDER( buf );
    ZU_ASSERT( src );
    zu___BufferInsertRange( buf, ( *buf )->bitLength, src, 0, src->bitLength );
}
void zuBufferAppendInner( ZU_BUFFER **buf, ZU_BUFFER *src, ZU_INT byteOffset, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    ZU_ASSERT( src );
    BUFFER_ASSERT_BYTES( byteOffset );
    BUFFER_ASSERT_BYTES( byteCount );
    zu___BufferInsertRange( buf, ( *buf )->bitLength, src, BYTES_TO_BITS( byteOffset ), BYTES_TO_BITS( byteCount ) );
}
void zuBufferAppendOuter( ZU_BUFFER **buf, ZU_BUFFER *src, ZU_INT byteOffset, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    ZU_ASSERT( src );
    BUFFER_ASSERT_BYTES( byteOffset );
    BUFFER_ASSERT_BYTES( byteCount );
    zu___BufferInsertOuter( buf, ( *buf )->bitLength, src, BYTES_TO_BITS( byteOffset ), BYTES_TO_BITS( byteCount ) );
}
void zuBufferAppendLeading( ZU_BUFFER **buf, ZU_BUFFER *src, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    ZU_ASSERT( src );
    BUFFER_ASSERT_BYTES( byteCount );
    zu___BufferInsertRange( buf, ( *buf )->bitLength, src, 0, BYTES_TO_BITS( byteCount ) );
}
void zuBufferAppendTrailing( ZU_BUFFER **buf, ZU_BUFFER *src, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    ZU_ASSERT( src );
    BUFFER_ASSERT_BYTES( byteCount );
    BUFFER_ASSERT_TRAILING( src, BYTES_TO_BITS( byteCount ) );
    zu___BufferInsertRange( buf, ( *buf )->bitLength, src, src->bitLength - BYTES_TO_BITS( byteCount ),
                            BYTES_TO_BITS( byteCount ) );
}
void zuBufferAppendBits( ZU_BUFFER **buf, ZU_INT bits, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BITS( bitCount );
    zu___BufferInsertBits( buf, ( *buf )->bitLength, (uint64_t)bits, (UINT)bitCount );
}
void zuBufferAppendByte( ZU_BUFFER **buf, uint8_t byte )
{
    BUFFER_ASSERT_HOLDER( buf );
    uint8_t *gap;
    if ( ZU___LIKELY( zu___BufferTakeAtEnd( *buf, 1, &gap ) ) ) {
        *gap = byte;
        return;
    }
    zu___BufferInsertBits( buf, ( *buf )->bitLength, byte, 8 );
}
void zuBufferAppendBytes( ZU_BUFFER **buf, const uint8_t *bytes, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteCount );
    ZU_ASSERT( bytes || !byteCount );
    uint8_t *gap;
    if ( ZU___LIKELY( byteCount > 0 && !zu___BufferHolds( *buf, bytes ) &&
                      zu___BufferTakeAtEnd( *buf, (UINT)byteCount, &gap ) ) ) {
        memcpy( gap, bytes, (size_t)byteCount );
        return;
    }
    zu___BufferInsertBytes( buf, ( *buf )->bitLength, bytes, (UINT)byteCount );
}
void zuBufferAppendZero( ZU_BUFFER **buf, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteCount );
    zu___BufferInsertFill( buf, ( *buf )->bitLength, BYTES_TO_BITS( byteCount ), 0x00 );
}
void zuBufferAppendOne( ZU_BUFFER **buf, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteCount );
    zu___BufferInsertFill( buf, ( *buf )->bitLength, BYTES_TO_BITS( byteCount ), 0xFF );
}
void zuBufferAppendAlignment( ZU_BUFFER **buf )
{
    BUFFER_ASSERT_HOLDER( buf );
    zu___BufferInsertFill( buf, ( *buf )->bitLength, zu___BufferMissingBits( *buf ), 0x00 );
}

// Appending, in bits
void zuBufferBitAppend( ZU_BUFFER **buf, ZU_BUFFER *src )
{
    BUFFER_ASSERT_HOLDER( buf );
    ZU_ASSERT( src );
    zu___BufferInsertRange( buf, ( *buf )->bitLength, src, 0, src->bitLength );
}
void zuBufferBitAppendInner( ZU_BUFFER **buf, ZU_BUFFER *src, ZU_INT bitOffset, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    ZU_ASSERT( src );
    BUFFER_ASSERT_BITS( bitOffset );
    BUFFER_ASSERT_BITS( bitCount );
    zu___BufferInsertRange( buf, ( *buf )->bitLength, src, (UINT)bitOffset, (UINT)bitCount );
}
void zuBufferBitAppendOuter( ZU_BUFFER **buf, ZU_BUFFER *src, ZU_INT bitOffset, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    ZU_ASSERT( src );
    BUFFER_ASSERT_BITS( bitOffset );
    BUFFER_ASSERT_BITS( bitCount );
    zu___BufferInsertOuter( buf, ( *buf )->bitLength, src, (UINT)bitOffset, (UINT)bitCount );
}
void zuBufferBitAppendLeading( ZU_BUFFER **buf, ZU_BUFFER *src, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    ZU_ASSERT( src );
    BUFFER_ASSERT_BITS( bitCount );
    zu___BufferInsertRange( buf, ( *buf )->bitLength, src, 0, (UINT)bitCount );
}
void zuBufferBitAppendTrailing( ZU_BUFFER **buf, ZU_BUFFER *src, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    ZU_ASSERT( src );
    BUFFER_ASSERT_BITS( bitCount );
    BUFFER_ASSERT_TRAILING( src, (UINT)bitCount );
    zu___BufferInsertRange( buf, ( *buf )->bitLength, src, src->bitLength - (UINT)bitCount, (UINT)bitCount );
}
void zuBufferBitAppendBits( ZU_BUFFER **buf, ZU_INT bits, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BITS( bitCount );
    zu___BufferInsertBits( buf, ( *buf )->bitLength, (uint64_t)bits, (UINT)bitCount );
}
void zuBufferBitAppendByte( ZU_BUFFER **buf, uint8_t byte )
{
    BUFFER_ASSERT_HOLDER( buf );
    zu___BufferInsertBits( buf, ( *buf )->bitLength, byte, 8 );
}
void zuBufferBitAppendBytes( ZU_BUFFER **buf, const uint8_t *bytes, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteCount );
    ZU_ASSERT( bytes || !byteCount );
    zu___BufferInsertBytes( buf, ( *buf )->bitLength, bytes, (UINT)byteCount );
}
void zuBufferBitAppendZero( ZU_BUFFER **buf, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BITS( bitCount );
    zu___BufferInsertFill( buf, ( *buf )->bitLength, (UINT)bitCount, 0x00 );
}
void zuBufferBitAppendOne( ZU_BUFFER **buf, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BITS( bitCount );
    zu___BufferInsertFill( buf, ( *buf )->bitLength, (UINT)bitCount, 0xFF );
}
void zuBufferBitAppendAlignment( ZU_BUFFER **buf )
{
    BUFFER_ASSERT_HOLDER( buf );
    zu___BufferInsertFill( buf, ( *buf )->bitLength, zu___BufferMissingBits( *buf ), 0x00 );
}

// Prepending, in bytes
void zuBufferPrepend( ZU_BUFFER **buf, ZU_BUFFER *src )
{
    BUFFER_ASSERT_HOLDER( buf );
    ZU_ASSERT( src );
    zu___BufferInsertRange( buf, 0, src, 0, src->bitLength );
}
void zuBufferPrependInner( ZU_BUFFER **buf, ZU_BUFFER *src, ZU_INT byteOffset, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    ZU_ASSERT( src );
    BUFFER_ASSERT_BYTES( byteOffset );
    BUFFER_ASSERT_BYTES( byteCount );
    zu___BufferInsertRange( buf, 0, src, BYTES_TO_BITS( byteOffset ), BYTES_TO_BITS( byteCount ) );
}
void zuBufferPrependOuter( ZU_BUFFER **buf, ZU_BUFFER *src, ZU_INT byteOffset, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    ZU_ASSERT( src );
    BUFFER_ASSERT_BYTES( byteOffset );
    BUFFER_ASSERT_BYTES( byteCount );
    zu___BufferInsertOuter( buf, 0, src, BYTES_TO_BITS( byteOffset ), BYTES_TO_BITS( byteCount ) );
}
void zuBufferPrependLeading( ZU_BUFFER **buf, ZU_BUFFER *src, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    ZU_ASSERT( src );
    BUFFER_ASSERT_BYTES( byteCount );
    zu___BufferInsertRange( buf, 0, src, 0, BYTES_TO_BITS( byteCount ) );
}
void zuBufferPrependTrailing( ZU_BUFFER **buf, ZU_BUFFER *src, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    ZU_ASSERT( src );
    BUFFER_ASSERT_BYTES( byteCount );
    BUFFER_ASSERT_TRAILING( src, BYTES_TO_BITS( byteCount ) );
    zu___BufferInsertRange( buf, 0, src, src->bitLength - BYTES_TO_BITS( byteCount ), BYTES_TO_BITS( byteCount ) );
}
void zuBufferPrependBits( ZU_BUFFER **buf, ZU_INT bits, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BITS( bitCount );
    zu___BufferInsertBits( buf, 0, (uint64_t)bits, (UINT)bitCount );
}
void zuBufferPrependByte( ZU_BUFFER **buf, uint8_t byte )
{
    BUFFER_ASSERT_HOLDER( buf );
    zu___BufferInsertBits( buf, 0, byte, 8 );
}
void zuBufferPrependBytes( ZU_BUFFER **buf, const uint8_t *bytes, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteCount );
    ZU_ASSERT( bytes || !byteCount );
    zu___BufferInsertBytes( buf, 0, bytes, (UINT)byteCount );
}
void zuBufferPrependZero( ZU_BUFFER **buf, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteCount );
    zu___BufferInsertFill( buf, 0, BYTES_TO_BITS( byteCount ), 0x00 );
}
void zuBufferPrependOne( ZU_BUFFER **buf, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteCount );
    zu___BufferInsertFill( buf, 0, BYTES_TO_BITS( byteCount ), 0xFF );
}
void zuBufferPrependAlignment( ZU_BUFFER **buf )
{
    BUFFER_ASSERT_HOLDER( buf );
    zu___BufferInsertFill( buf, 0, zu___BufferMissingBits( *buf ), 0x00 );
}

// Prepending, in bits
void zuBufferBitPrepend( ZU_BUFFER **buf, ZU_BUFFER *src )
{
    BUFFER_ASSERT_HOLDER( buf );
    ZU_ASSERT( src );
    zu___BufferInsertRange( buf, 0, src, 0, src->bitLength );
}
void zuBufferBitPrependInner( ZU_BUFFER **buf, ZU_BUFFER *src, ZU_INT bitOffset, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    ZU_ASSERT( src );
    BUFFER_ASSERT_BITS( bitOffset );
    BUFFER_ASSERT_BITS( bitCount );
    zu___BufferInsertRange( buf, 0, src, (UINT)bitOffset, (UINT)bitCount );
}
void zuBufferBitPrependOuter( ZU_BUFFER **buf, ZU_BUFFER *src, ZU_INT bitOffset, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    ZU_ASSERT( src );
    BUFFER_ASSERT_BITS( bitOffset );
    BUFFER_ASSERT_BITS( bitCount );
    zu___BufferInsertOuter( buf, 0, src, (UINT)bitOffset, (UINT)bitCount );
}
void zuBufferBitPrependLeading( ZU_BUFFER **buf, ZU_BUFFER *src, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    ZU_ASSERT( src );
    BUFFER_ASSERT_BITS( bitCount );
    zu___BufferInsertRange( buf, 0, src, 0, (UINT)bitCount );
}
void zuBufferBitPrependTrailing( ZU_BUFFER **buf, ZU_BUFFER *src, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    ZU_ASSERT( src );
    BUFFER_ASSERT_BITS( bitCount );
    BUFFER_ASSERT_TRAILING( src, (UINT)bitCount );
    zu___BufferInsertRange( buf, 0, src, src->bitLength - (UINT)bitCount, (UINT)bitCount );
}
void zuBufferBitPrependBits( ZU_BUFFER **buf, ZU_INT bits, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BITS( bitCount );
    zu___BufferInsertBits( buf, 0, (uint64_t)bits, (UINT)bitCount );
}
void zuBufferBitPrependByte( ZU_BUFFER **buf, uint8_t byte )
{
    BUFFER_ASSERT_HOLDER( buf );
    zu___BufferInsertBits( buf, 0, byte, 8 );
}
void zuBufferBitPrependBytes( ZU_BUFFER **buf, const uint8_t *bytes, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteCount );
    ZU_ASSERT( bytes || !byteCount );
    zu___BufferInsertBytes( buf, 0, bytes, (UINT)byteCount );
}
void zuBufferBitPrependZero( ZU_BUFFER **buf, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BITS( bitCount );
    zu___BufferInsertFill( buf, 0, (UINT)bitCount, 0x00 );
}
void zuBufferBitPrependOne( ZU_BUFFER **buf, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BITS( bitCount );
    zu___BufferInsertFill( buf, 0, (UINT)bitCount, 0xFF );
}
void zuBufferBitPrependAlignment( ZU_BUFFER **buf )
{
    BUFFER_ASSERT_HOLDER( buf );
    zu___BufferInsertFill( buf, 0, zu___BufferMissingBits( *buf ), 0x00 );
}

// Inserting, in bytes
void zuBufferInsert( ZU_BUFFER **buf, ZU_INT byteIdx, ZU_BUFFER *src )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteIdx );
    ZU_ASSERT( src );
    zu___BufferInsertRange( buf, BYTES_TO_BITS( byteIdx ), src, 0, src->bitLength );
}
void zuBufferInsertInner( ZU_BUFFER **buf, ZU_INT byteIdx, ZU_BUFFER *src, ZU_INT byteOffset, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteIdx );
    ZU_ASSERT( src );
    BUFFER_ASSERT_BYTES( byteOffset );
    BUFFER_ASSERT_BYTES( byteCount );
    zu___BufferInsertRange( buf, BYTES_TO_BITS( byteIdx ), src, BYTES_TO_BITS( byteOffset ),
                            BYTES_TO_BITS( byteCount ) );
}
void zuBufferInsertOuter( ZU_BUFFER **buf, ZU_INT byteIdx, ZU_BUFFER *src, ZU_INT byteOffset, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteIdx );
    ZU_ASSERT( src );
    BUFFER_ASSERT_BYTES( byteOffset );
    BUFFER_ASSERT_BYTES( byteCount );
    zu___BufferInsertOuter( buf, BYTES_TO_BITS( byteIdx ), src, BYTES_TO_BITS( byteOffset ),
                            BYTES_TO_BITS( byteCount ) );
}
void zuBufferInsertLeading( ZU_BUFFER **buf, ZU_INT byteIdx, ZU_BUFFER *src, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteIdx );
    ZU_ASSERT( src );
    BUFFER_ASSERT_BYTES( byteCount );
    zu___BufferInsertRange( buf, BYTES_TO_BITS( byteIdx ), src, 0, BYTES_TO_BITS( byteCount ) );
}
void zuBufferInsertTrailing( ZU_BUFFER **buf, ZU_INT byteIdx, ZU_BUFFER *src, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteIdx );
    ZU_ASSERT( src );
    BUFFER_ASSERT_BYTES( byteCount );
    BUFFER_ASSERT_TRAILING( src, BYTES_TO_BITS( byteCount ) );
    zu___BufferInsertRange( buf, BYTES_TO_BITS( byteIdx ), src, src->bitLength - BYTES_TO_BITS( byteCount ),
                            BYTES_TO_BITS( byteCount ) );
}
void zuBufferInsertBits( ZU_BUFFER **buf, ZU_INT byteIdx, ZU_INT bits, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteIdx );
    BUFFER_ASSERT_BITS( bitCount );
    zu___BufferInsertBits( buf, BYTES_TO_BITS( byteIdx ), (uint64_t)bits, (UINT)bitCount );
}
void zuBufferInsertByte( ZU_BUFFER **buf, ZU_INT byteIdx, uint8_t byte )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteIdx );
    zu___BufferInsertBits( buf, BYTES_TO_BITS( byteIdx ), byte, 8 );
}
void zuBufferInsertBytes( ZU_BUFFER **buf, ZU_INT byteIdx, const uint8_t *bytes, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteIdx );
    BUFFER_ASSERT_BYTES( byteCount );
    ZU_ASSERT( bytes || !byteCount );
    zu___BufferInsertBytes( buf, BYTES_TO_BITS( byteIdx ), bytes, (UINT)byteCount );
}
void zuBufferInsertZero( ZU_BUFFER **buf, ZU_INT byteIdx, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteIdx );
    BUFFER_ASSERT_BYTES( byteCount );
    zu___BufferInsertFill( buf, BYTES_TO_BITS( byteIdx ), BYTES_TO_BITS( byteCount ), 0x00 );
}
void zuBufferInsertOne( ZU_BUFFER **buf, ZU_INT byteIdx, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteIdx );
    BUFFER_ASSERT_BYTES( byteCount );
    zu___BufferInsertFill( buf, BYTES_TO_BITS( byteIdx ), BYTES_TO_BITS( byteCount ), 0xFF );
}
void zuBufferInsertAlignment( ZU_BUFFER **buf, ZU_INT byteIdx )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteIdx );
    zu___BufferInsertFill( buf, BYTES_TO_BITS( byteIdx ), zu___BufferMissingBits( *buf ), 0x00 );
}

// Inserting, in bits
void zuBufferBitInsert( ZU_BUFFER **buf, ZU_INT bitIdx, ZU_BUFFER *src )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BITS( bitIdx );
    ZU_ASSERT( src );
    zu___BufferInsertRange( buf, (UINT)bitIdx, src, 0, src->bitLength );
}
void zuBufferBitInsertInner( ZU_BUFFER **buf, ZU_INT bitIdx, ZU_BUFFER *src, ZU_INT bitOffset, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BITS( bitIdx );
    ZU_ASSERT( src );
    BUFFER_ASSERT_BITS( bitOffset );
    BUFFER_ASSERT_BITS( bitCount );
    zu___BufferInsertRange( buf, (UINT)bitIdx, src, (UINT)bitOffset, (UINT)bitCount );
}
void zuBufferBitInsertOuter( ZU_BUFFER **buf, ZU_INT bitIdx, ZU_BUFFER *src, ZU_INT bitOffset, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BITS( bitIdx );
    ZU_ASSERT( src );
    BUFFER_ASSERT_BITS( bitOffset );
    BUFFER_ASSERT_BITS( bitCount );
    zu___BufferInsertOuter( buf, (UINT)bitIdx, src, (UINT)bitOffset, (UINT)bitCount );
}
void zuBufferBitInsertLeading( ZU_BUFFER **buf, ZU_INT bitIdx, ZU_BUFFER *src, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BITS( bitIdx );
    ZU_ASSERT( src );
    BUFFER_ASSERT_BITS( bitCount );
    zu___BufferInsertRange( buf, (UINT)bitIdx, src, 0, (UINT)bitCount );
}
void zuBufferBitInsertTrailing( ZU_BUFFER **buf, ZU_INT bitIdx, ZU_BUFFER *src, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BITS( bitIdx );
    ZU_ASSERT( src );
    BUFFER_ASSERT_BITS( bitCount );
    BUFFER_ASSERT_TRAILING( src, (UINT)bitCount );
    zu___BufferInsertRange( buf, (UINT)bitIdx, src, src->bitLength - (UINT)bitCount, (UINT)bitCount );
}
void zuBufferBitInsertBits( ZU_BUFFER **buf, ZU_INT bitIdx, ZU_INT bits, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BITS( bitIdx );
    BUFFER_ASSERT_BITS( bitCount );
    zu___BufferInsertBits( buf, (UINT)bitIdx, (uint64_t)bits, (UINT)bitCount );
}
void zuBufferBitInsertByte( ZU_BUFFER **buf, ZU_INT bitIdx, uint8_t byte )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BITS( bitIdx );
    zu___BufferInsertBits( buf, (UINT)bitIdx, byte, 8 );
}
void zuBufferBitInsertBytes( ZU_BUFFER **buf, ZU_INT bitIdx, const uint8_t *bytes, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BITS( bitIdx );
    BUFFER_ASSERT_BYTES( byteCount );
    ZU_ASSERT( bytes || !byteCount );
    zu___BufferInsertBytes( buf, (UINT)bitIdx, bytes, (UINT)byteCount );
}
void zuBufferBitInsertZero( ZU_BUFFER **buf, ZU_INT bitIdx, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BITS( bitIdx );
    BUFFER_ASSERT_BITS( bitCount );
    zu___BufferInsertFill( buf, (UINT)bitIdx, (UINT)bitCount, 0x00 );
}
void zuBufferBitInsertOne( ZU_BUFFER **buf, ZU_INT bitIdx, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BITS( bitIdx );
    BUFFER_ASSERT_BITS( bitCount );
    zu___BufferInsertFill( buf, (UINT)bitIdx, (UINT)bitCount, 0xFF );
}
void zuBufferBitInsertAlignment( ZU_BUFFER **buf, ZU_INT bitIdx )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BITS( bitIdx );
    zu___BufferInsertFill( buf, (UINT)bitIdx, zu___BufferMissingBits( *buf ), 0x00 );
}

// Overwriting, in bytes
void zuBufferWrite( ZU_BUFFER **buf, ZU_INT byteIdx, ZU_BUFFER *src )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteIdx );
    ZU_ASSERT( src );
    zu___BufferWriteRange( buf, BYTES_TO_BITS( byteIdx ), src, 0, src->bitLength );
}
void zuBufferWriteInner( ZU_BUFFER **buf, ZU_INT byteIdx, ZU_BUFFER *src, ZU_INT byteOffset, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteIdx );
    ZU_ASSERT( src );
    BUFFER_ASSERT_BYTES( byteOffset );
    BUFFER_ASSERT_BYTES( byteCount );
    zu___BufferWriteRange( buf, BYTES_TO_BITS( byteIdx ), src, BYTES_TO_BITS( byteOffset ),
                           BYTES_TO_BITS( byteCount ) );
}
void zuBufferWriteOuter( ZU_BUFFER **buf, ZU_INT byteIdx, ZU_BUFFER *src, ZU_INT byteOffset, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteIdx );
    ZU_ASSERT( src );
    BUFFER_ASSERT_BYTES( byteOffset );
    BUFFER_ASSERT_BYTES( byteCount );
    zu___BufferWriteOuter( buf, BYTES_TO_BITS( byteIdx ), src, BYTES_TO_BITS( byteOffset ),
                           BYTES_TO_BITS( byteCount ) );
}
void zuBufferWriteLeading( ZU_BUFFER **buf, ZU_INT byteIdx, ZU_BUFFER *src, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteIdx );
    ZU_ASSERT( src );
    BUFFER_ASSERT_BYTES( byteCount );
    zu___BufferWriteRange( buf, BYTES_TO_BITS( byteIdx ), src, 0, BYTES_TO_BITS( byteCount ) );
}
void zuBufferWriteTrailing( ZU_BUFFER **buf, ZU_INT byteIdx, ZU_BUFFER *src, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteIdx );
    ZU_ASSERT( src );
    BUFFER_ASSERT_BYTES( byteCount );
    BUFFER_ASSERT_TRAILING( src, BYTES_TO_BITS( byteCount ) );
    zu___BufferWriteRange( buf, BYTES_TO_BITS( byteIdx ), src, src->bitLength - BYTES_TO_BITS( byteCount ),
                           BYTES_TO_BITS( byteCount ) );
}
void zuBufferWriteBits( ZU_BUFFER **buf, ZU_INT byteIdx, ZU_INT bits, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteIdx );
    BUFFER_ASSERT_BITS( bitCount );
    zu___BufferWriteBits( buf, BYTES_TO_BITS( byteIdx ), (uint64_t)bits, (UINT)bitCount );
}
void zuBufferWriteByte( ZU_BUFFER **buf, ZU_INT byteIdx, uint8_t byte )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteIdx );
    zu___BufferWriteBits( buf, BYTES_TO_BITS( byteIdx ), byte, 8 );
}
void zuBufferWriteBytes( ZU_BUFFER **buf, ZU_INT byteIdx, const uint8_t *bytes, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteIdx );
    BUFFER_ASSERT_BYTES( byteCount );
    ZU_ASSERT( bytes || !byteCount );
    zu___BufferWriteBytes( buf, BYTES_TO_BITS( byteIdx ), bytes, (UINT)byteCount );
}
void zuBufferWriteZero( ZU_BUFFER **buf, ZU_INT byteIdx, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteIdx );
    BUFFER_ASSERT_BYTES( byteCount );
    zu___BufferWriteFill( buf, BYTES_TO_BITS( byteIdx ), BYTES_TO_BITS( byteCount ), 0x00 );
}
void zuBufferWriteOne( ZU_BUFFER **buf, ZU_INT byteIdx, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteIdx );
    BUFFER_ASSERT_BYTES( byteCount );
    zu___BufferWriteFill( buf, BYTES_TO_BITS( byteIdx ), BYTES_TO_BITS( byteCount ), 0xFF );
}

// Overwriting, in bits
void zuBufferBitWrite( ZU_BUFFER **buf, ZU_INT bitIdx, ZU_BUFFER *src )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BITS( bitIdx );
    ZU_ASSERT( src );
    zu___BufferWriteRange( buf, (UINT)bitIdx, src, 0, src->bitLength );
}
void zuBufferBitWriteInner( ZU_BUFFER **buf, ZU_INT bitIdx, ZU_BUFFER *src, ZU_INT bitOffset, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BITS( bitIdx );
    ZU_ASSERT( src );
    BUFFER_ASSERT_BITS( bitOffset );
    BUFFER_ASSERT_BITS( bitCount );
    zu___BufferWriteRange( buf, (UINT)bitIdx, src, (UINT)bitOffset, (UINT)bitCount );
}
void zuBufferBitWriteOuter( ZU_BUFFER **buf, ZU_INT bitIdx, ZU_BUFFER *src, ZU_INT bitOffset, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BITS( bitIdx );
    ZU_ASSERT( src );
    BUFFER_ASSERT_BITS( bitOffset );
    BUFFER_ASSERT_BITS( bitCount );
    zu___BufferWriteOuter( buf, (UINT)bitIdx, src, (UINT)bitOffset, (UINT)bitCount );
}
void zuBufferBitWriteLeading( ZU_BUFFER **buf, ZU_INT bitIdx, ZU_BUFFER *src, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BITS( bitIdx );
    ZU_ASSERT( src );
    BUFFER_ASSERT_BITS( bitCount );
    zu___BufferWriteRange( buf, (UINT)bitIdx, src, 0, (UINT)bitCount );
}
void zuBufferBitWriteTrailing( ZU_BUFFER **buf, ZU_INT bitIdx, ZU_BUFFER *src, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BITS( bitIdx );
    ZU_ASSERT( src );
    BUFFER_ASSERT_BITS( bitCount );
    BUFFER_ASSERT_TRAILING( src, (UINT)bitCount );
    zu___BufferWriteRange( buf, (UINT)bitIdx, src, src->bitLength - (UINT)bitCount, (UINT)bitCount );
}
void zuBufferBitWriteBits( ZU_BUFFER **buf, ZU_INT bitIdx, ZU_INT bits, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BITS( bitIdx );
    BUFFER_ASSERT_BITS( bitCount );
    zu___BufferWriteBits( buf, (UINT)bitIdx, (uint64_t)bits, (UINT)bitCount );
}
void zuBufferBitWriteByte( ZU_BUFFER **buf, ZU_INT bitIdx, uint8_t byte )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BITS( bitIdx );
    zu___BufferWriteBits( buf, (UINT)bitIdx, byte, 8 );
}
void zuBufferBitWriteBytes( ZU_BUFFER **buf, ZU_INT bitIdx, const uint8_t *bytes, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BITS( bitIdx );
    BUFFER_ASSERT_BYTES( byteCount );
    ZU_ASSERT( bytes || !byteCount );
    zu___BufferWriteBytes( buf, (UINT)bitIdx, bytes, (UINT)byteCount );
}
void zuBufferBitWriteZero( ZU_BUFFER **buf, ZU_INT bitIdx, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BITS( bitIdx );
    BUFFER_ASSERT_BITS( bitCount );
    zu___BufferWriteFill( buf, (UINT)bitIdx, (UINT)bitCount, 0x00 );
}
void zuBufferBitWriteOne( ZU_BUFFER **buf, ZU_INT bitIdx, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BITS( bitIdx );
    BUFFER_ASSERT_BITS( bitCount );
    zu___BufferWriteFill( buf, (UINT)bitIdx, (UINT)bitCount, 0xFF );
}
