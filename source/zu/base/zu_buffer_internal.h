// zu_buffer_internal.h: the inside of ZU_BUFFER, for the files that share it.
#pragma once

#include "zu/base/zu_buffer.h"
#include "zu/sys/zu_abort.h"

ZU_BEGIN_DECLS

#define BIT_AT_BOUND( x )     ( ( (x)&7 ) == 0 )
#define BYTES_TO_BITS( x )    ( (ZU___INT_UNSIGNED)(x)*8 )
#define BYTES_TO_BITS_OK( x ) ( (ZU___INT_UNSIGNED)( x ) <= 0x1FFFFFFFFFFFFFFF )

// The content is the `bitLength` bits of `bytes` from bit `bitFspace` on; `bitBspace` free bits follow, and the three
// together are the storage.  Whatever the low bits of a last byte hold that belong to no content, nothing depends on
// it.  Storage of the buffer's own lies anywhere in a block.
struct ZU_BUFFER {
    ZU_OBJ obj;
    ZU___INT_UNSIGNED bitLength; // at most ZU_INT_MAX
    ZU___INT_UNSIGNED bitFspace; // a multiple of 8, but after the one insertion that zu_buffer.h tells of
    ZU___INT_UNSIGNED bitBspace;
    uint8_t *bytes; // null while there is no storage
    uint8_t *block; // of zuMemAlloc, or behind the object; null while there is no storage, and if it is foreign
    ZU___INT_UNSIGNED capacity; // bytes that the block has
    bool blockBehind;           // the block is the one behind the object
    ZU_OBJ *ref;                // keeps foreign storage, which is never written, resized or freed; null: it is ours
};

// What every form checks first, in the order of its arguments; a number of bytes and one of bits have texts of their
// own.
#define BUFFER_ASSERT_HOLDER( buf ) \
    do {                            \
        ZU_ASSERT( buf );           \
        ZU_ASSERT( *buf );          \
    } while ( 0 )
#define BUFFER_ASSERT_BYTES( byteCount )            \
    do {                                            \
        ZU_ASSERT( byteCount >= 0 );                \
        ZU_ASSERT( BYTES_TO_BITS_OK( byteCount ) ); \
    } while ( 0 )
#define BUFFER_ASSERT_BITS( bitCount )                                  \
    do {                                                                \
        ZU_ASSERT( ZU___INT_UNSIGNED_FROM_ZU_INT_CONV_OK( bitCount ) ); \
    } while ( 0 )
// Asserts that `src` has as many bits at its end.
#define BUFFER_ASSERT_TRAILING( src, bits ) \
    ZU___ASSERT_AS( ( bits ) <= ( src )->bitLength, "bitCount <= src->bitLength" )

// Insert an operand ahead of bit `bitIdx`, or overwrite what stands from there on: a range of `src`, `src` without a
// range, the low `bitCount` bits of a number, `byteCount` bytes of memory, or bits that are all as in `value`, 0x00 or
// 0xFF.  They abort on a range that `src` lacks and on a place that `*buf` lacks; `src` and memory may be the buffer's
// own.
void zu___BufferInsertRange( ZU_BUFFER **buf, ZU___INT_UNSIGNED bitIdx, ZU_BUFFER *src, ZU___INT_UNSIGNED bitOffset,
                             ZU___INT_UNSIGNED bitCount );
void zu___BufferInsertOuter( ZU_BUFFER **buf, ZU___INT_UNSIGNED bitIdx, ZU_BUFFER *src, ZU___INT_UNSIGNED bitOffset,
                             ZU___INT_UNSIGNED bitCount );
void zu___BufferInsertBits( ZU_BUFFER **buf, ZU___INT_UNSIGNED bitIdx, uint64_t bits, ZU___INT_UNSIGNED bitCount );
void zu___BufferInsertBytes( ZU_BUFFER **buf, ZU___INT_UNSIGNED bitIdx, const uint8_t *memory,
                             ZU___INT_UNSIGNED byteCount );
void zu___BufferInsertFill( ZU_BUFFER **buf, ZU___INT_UNSIGNED bitIdx, ZU___INT_UNSIGNED bitCount, uint8_t value );
void zu___BufferWriteRange( ZU_BUFFER **buf, ZU___INT_UNSIGNED bitIdx, ZU_BUFFER *src, ZU___INT_UNSIGNED bitOffset,
                            ZU___INT_UNSIGNED bitCount );
void zu___BufferWriteOuter( ZU_BUFFER **buf, ZU___INT_UNSIGNED bitIdx, ZU_BUFFER *src, ZU___INT_UNSIGNED bitOffset,
                            ZU___INT_UNSIGNED bitCount );
void zu___BufferWriteBits( ZU_BUFFER **buf, ZU___INT_UNSIGNED bitIdx, uint64_t bits, ZU___INT_UNSIGNED bitCount );
void zu___BufferWriteBytes( ZU_BUFFER **buf, ZU___INT_UNSIGNED bitIdx, const uint8_t *memory,
                            ZU___INT_UNSIGNED byteCount );
void zu___BufferWriteFill( ZU_BUFFER **buf, ZU___INT_UNSIGNED bitIdx, ZU___INT_UNSIGNED bitCount, uint8_t value );

// Tells whether `memory` is in the content.
static inline bool zu___BufferHolds( ZU_BUFFER *buf, const uint8_t *memory )
{
    return (uintptr_t)memory - (uintptr_t)( buf->bytes + ( buf->bitFspace >> 3 ) ) < ( buf->bitLength + 7 ) >> 3;
}

// Takes `byteCount` bytes behind the content of a buffer of whole bytes, if nobody else holds it and nothing has to move;
// tells whether it did.  Most appends come to this, and are a copy then: 4 ns for a byte instead of 7.
static inline bool zu___BufferTakeAtEnd( ZU_BUFFER *buf, ZU___INT_UNSIGNED byteCount, uint8_t **gap )
{
    ZU___INT_UNSIGNED length = buf->bitLength;
    if ( length == 0 || !BIT_AT_BOUND( length | buf->bitFspace ) || buf->bitBspace < BYTES_TO_BITS( byteCount ) ||
         buf->ref || ZU_REF_RETAIN_COUNT( buf ) != 1 ) {
        return false;
    }
    *gap = buf->bytes + ( ( buf->bitFspace + length ) >> 3 );
    buf->bitLength = length + BYTES_TO_BITS( byteCount );
    buf->bitBspace -= BYTES_TO_BITS( byteCount );
    return true;
}

// Returns a new, private, empty buffer that has free room for `byteCount` bytes at its end, more than none.
ZU_BUFFER *zu___BufferCreateWithRoom( ZU_INT byteCount );

// Makes free room of `bitCount` bits at the end.
void zu___BufferReserveBits( ZU_BUFFER **buf, ZU___INT_UNSIGNED bitCount );

// Returns the bits that the length lacks to whole bytes.
static inline ZU___INT_UNSIGNED zu___BufferMissingBits( ZU_BUFFER *buf )
{
    return ( 8 - ( buf->bitLength & 7 ) ) & 7;
}

ZU_END_DECLS
