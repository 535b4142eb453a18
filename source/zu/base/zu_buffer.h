// ZU_BUFFER: binary data, a sequence of bits whose number need not be a multiple of 8.
//
// A copy-on-write value; zu_obj.h tells what holds for all of them.  Bit 0 is the most significant bit of the first
// byte, so that bytes read in network order, and a number is stored with its most significant bit first (big-endian).
// Buffers are ordered by their bits; of two that agree as far as both go, the shorter is the smaller.
//
// Most functions exist twice: zuBufferX counts positions, offsets and contents in bytes, zuBufferBitX in bits.  Where a
// function takes neither, the two are the same.  A negative number, a range outside and a length that no ZU_INT of bits
// can tell abort.
//
// There is free room at both ends: prepending and appending bytes move nothing as long as it lasts, removing bytes from
// either end moves nothing as long as not too much of it gathers; inserting and removing further inside moves what lies
// behind.  Prepending a part of a byte copies the content, and so does inserting into the middle off the bytes'
// boundaries.  A buffer can sit on memory that is not its own; the first change of its content leaves that for a copy.
//
// One insertion is not as it should be, and is kept: whole bytes that go in between two bytes, more than fit the room
// behind but no more than fit both rooms together, leave the content misplaced, and the next function that makes room
// or deletes aborts unless the number of bytes taken from the front room is a multiple of 8.  Nothing outside the
// buffer's memory is read or written.  New storage has room for 160 bytes behind and for 80 at the front; whoever
// inserts that much puts the parts together by appending instead.
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

typedef struct ZU_BUFFER ZU_BUFFER;
// zuBufferRetain, Release, From, Obj, Sort, ToString, Compare, Equals.  The text has the bytes in hexadecimal; a last
// one that is not whole has its bits at the high end and their number behind it: "[ab c0/3]".
ZU_STDFUNCS_DECLARE( ZU_BUFFER, zuBuffer )

// Inspection
/// Returns the number of whole bytes.
ZU_API ZU_INT zuBufferLength( ZU_BUFFER *buf );
/// Returns the number of bits.
ZU_API ZU_INT zuBufferBitLength( ZU_BUFFER *buf );
/// Returns how many bytes could be added before the length in bits exceeds ZU_INT_MAX.
ZU_API ZU_INT zuBufferSpace( ZU_BUFFER *buf );
/// Returns how many bits could be added before their number exceeds ZU_INT_MAX.
ZU_API ZU_INT zuBufferBitSpace( ZU_BUFFER *buf );
/// Tells whether the content is whole bytes.
ZU_API ZU_BOOL zuBufferBitIsAligned( ZU_BUFFER *buf );
/// Returns the address of the first byte, which may be null if there is none.  It holds until the buffer is changed or
/// released.  Of a last byte that is not whole the low bits mean nothing.
ZU_API const uint8_t *zuBufferBacking( ZU_BUFFER *buf );
/// Returns the same as zuBufferBacking.
ZU_API const uint8_t *zuBufferBitBacking( ZU_BUFFER *buf );

// Creation
/// Returns the empty buffer, which all callers share.
ZU_API ZU_BUFFER *zuBufferCreate( void );
/// Returns a new object with the content of `src`.
ZU_API ZU_BUFFER *zuBufferCreateFrom( ZU_BUFFER *src );
/// Returns the low `bitCount` bits of `bits`, at most 64.
ZU_API ZU_BUFFER *zuBufferCreateFromBits( ZU_INT bits, ZU_INT bitCount );
/// Returns one byte.
ZU_API ZU_BUFFER *zuBufferCreateFromByte( uint8_t byte );
/// Returns a copy of `byteCount` bytes, null only if there are none.
ZU_API ZU_BUFFER *zuBufferCreateFromBytesCopy( const uint8_t *bytes, ZU_INT byteCount );
/// Returns a buffer that takes over `bytes`, a block of `byteCount` bytes from zuMemAlloc, and frees it in the end.
/// Nothing is copied; there is no free room at either end.
ZU_API ZU_BUFFER *zuBufferCreateFromBytesUse( uint8_t *bytes, ZU_INT byteCount );
/// Returns a buffer that sits on `byteCount` bytes of somebody else, a view of them, and keeps `ref` for as long as it
/// does so: the bytes must stay as they are while `ref` lives.  Nothing is copied until the content is changed.
ZU_API ZU_BUFFER *zuBufferCreateFromBytesUseWithRef( const uint8_t *bytes, ZU_INT byteCount, ZU_OBJ *ref );

// Changing
//
//     (nothing)  all of `src`
//     Inner      the range of `src` of the given count from the given offset on
//     Outer      `src` without that range
//     Leading    the first units of `src`, as many as the count tells
//     Trailing   the last units of `src`
//     Bits       the low `bitCount` bits of a number, at most 64
//     Byte       one byte
//     Bytes      a range of memory, `byteCount` bytes in both forms; null only if there are none
//     Zero       zero bits
//     One        one bits
//     Alignment  as many zero bits as the length of the whole buffer lacks to whole bytes, if any
//
// are what Append forms put at the end, Prepend forms at the front, and Insert forms ahead of a position, 0 to the
// length; Write forms overwrite what stands from a position on, which must be there.  `src` may be the changed buffer
// itself, and memory a part of its backing: what is read is as it stood before the call.  Putting in nothing copies nothing.

/// Appends all of `src`.
ZU_API void zuBufferAppend( ZU_BUFFER **buf, ZU_BUFFER *src );
/// Appends the `byteCount` bytes of `src` from `byteOffset` on.
ZU_API void zuBufferAppendInner( ZU_BUFFER **buf, ZU_BUFFER *src, ZU_INT byteOffset, ZU_INT byteCount );
/// Appends `src` without the `byteCount` bytes from `byteOffset` on.
ZU_API void zuBufferAppendOuter( ZU_BUFFER **buf, ZU_BUFFER *src, ZU_INT byteOffset, ZU_INT byteCount );
/// Appends the first `byteCount` bytes of `src`.
ZU_API void zuBufferAppendLeading( ZU_BUFFER **buf, ZU_BUFFER *src, ZU_INT byteCount );
/// Appends the last `byteCount` bytes of `src`.
ZU_API void zuBufferAppendTrailing( ZU_BUFFER **buf, ZU_BUFFER *src, ZU_INT byteCount );
/// Appends the low `bitCount` bits of `bits`.
ZU_API void zuBufferAppendBits( ZU_BUFFER **buf, ZU_INT bits, ZU_INT bitCount );
/// Appends one byte.
ZU_API void zuBufferAppendByte( ZU_BUFFER **buf, uint8_t byte );
/// Appends `byteCount` bytes of memory.
ZU_API void zuBufferAppendBytes( ZU_BUFFER **buf, const uint8_t *bytes, ZU_INT byteCount );
/// Appends `byteCount` zero bytes.
ZU_API void zuBufferAppendZero( ZU_BUFFER **buf, ZU_INT byteCount );
/// Appends `byteCount` bytes of one bits.
ZU_API void zuBufferAppendOne( ZU_BUFFER **buf, ZU_INT byteCount );
/// Appends zero bits up to a length of whole bytes.
ZU_API void zuBufferAppendAlignment( ZU_BUFFER **buf );

/// Appends all of `src`.
ZU_API void zuBufferBitAppend( ZU_BUFFER **buf, ZU_BUFFER *src );
/// Appends the `bitCount` bits of `src` from `bitOffset` on.
ZU_API void zuBufferBitAppendInner( ZU_BUFFER **buf, ZU_BUFFER *src, ZU_INT bitOffset, ZU_INT bitCount );
/// Appends `src` without the `bitCount` bits from `bitOffset` on.
ZU_API void zuBufferBitAppendOuter( ZU_BUFFER **buf, ZU_BUFFER *src, ZU_INT bitOffset, ZU_INT bitCount );
/// Appends the first `bitCount` bits of `src`.
ZU_API void zuBufferBitAppendLeading( ZU_BUFFER **buf, ZU_BUFFER *src, ZU_INT bitCount );
/// Appends the last `bitCount` bits of `src`.
ZU_API void zuBufferBitAppendTrailing( ZU_BUFFER **buf, ZU_BUFFER *src, ZU_INT bitCount );
/// Appends the low `bitCount` bits of `bits`.
ZU_API void zuBufferBitAppendBits( ZU_BUFFER **buf, ZU_INT bits, ZU_INT bitCount );
/// Appends one byte.
ZU_API void zuBufferBitAppendByte( ZU_BUFFER **buf, uint8_t byte );
/// Appends `byteCount` bytes of memory.
ZU_API void zuBufferBitAppendBytes( ZU_BUFFER **buf, const uint8_t *bytes, ZU_INT byteCount );
/// Appends `bitCount` zero bits.
ZU_API void zuBufferBitAppendZero( ZU_BUFFER **buf, ZU_INT bitCount );
/// Appends `bitCount` one bits.
ZU_API void zuBufferBitAppendOne( ZU_BUFFER **buf, ZU_INT bitCount );
/// Appends zero bits up to a length of whole bytes.
ZU_API void zuBufferBitAppendAlignment( ZU_BUFFER **buf );

/// Inserts all of `src` at the front.
ZU_API void zuBufferPrepend( ZU_BUFFER **buf, ZU_BUFFER *src );
/// Inserts the `byteCount` bytes of `src` from `byteOffset` on at the front.
ZU_API void zuBufferPrependInner( ZU_BUFFER **buf, ZU_BUFFER *src, ZU_INT byteOffset, ZU_INT byteCount );
/// Inserts `src` without the `byteCount` bytes from `byteOffset` on at the front.
ZU_API void zuBufferPrependOuter( ZU_BUFFER **buf, ZU_BUFFER *src, ZU_INT byteOffset, ZU_INT byteCount );
/// Inserts the first `byteCount` bytes of `src` at the front.
ZU_API void zuBufferPrependLeading( ZU_BUFFER **buf, ZU_BUFFER *src, ZU_INT byteCount );
/// Inserts the last `byteCount` bytes of `src` at the front.
ZU_API void zuBufferPrependTrailing( ZU_BUFFER **buf, ZU_BUFFER *src, ZU_INT byteCount );
/// Inserts the low `bitCount` bits of `bits` at the front.
ZU_API void zuBufferPrependBits( ZU_BUFFER **buf, ZU_INT bits, ZU_INT bitCount );
/// Inserts one byte at the front.
ZU_API void zuBufferPrependByte( ZU_BUFFER **buf, uint8_t byte );
/// Inserts `byteCount` bytes of memory at the front.
ZU_API void zuBufferPrependBytes( ZU_BUFFER **buf, const uint8_t *bytes, ZU_INT byteCount );
/// Inserts `byteCount` zero bytes at the front.
ZU_API void zuBufferPrependZero( ZU_BUFFER **buf, ZU_INT byteCount );
/// Inserts `byteCount` bytes of one bits at the front.
ZU_API void zuBufferPrependOne( ZU_BUFFER **buf, ZU_INT byteCount );
/// Inserts the zero bits that the length lacks to whole bytes at the front.
ZU_API void zuBufferPrependAlignment( ZU_BUFFER **buf );

/// Inserts all of `src` at the front.
ZU_API void zuBufferBitPrepend( ZU_BUFFER **buf, ZU_BUFFER *src );
/// Inserts the `bitCount` bits of `src` from `bitOffset` on at the front.
ZU_API void zuBufferBitPrependInner( ZU_BUFFER **buf, ZU_BUFFER *src, ZU_INT bitOffset, ZU_INT bitCount );
/// Inserts `src` without the `bitCount` bits from `bitOffset` on at the front.
ZU_API void zuBufferBitPrependOuter( ZU_BUFFER **buf, ZU_BUFFER *src, ZU_INT bitOffset, ZU_INT bitCount );
/// Inserts the first `bitCount` bits of `src` at the front.
ZU_API void zuBufferBitPrependLeading( ZU_BUFFER **buf, ZU_BUFFER *src, ZU_INT bitCount );
/// Inserts the last `bitCount` bits of `src` at the front.
ZU_API void zuBufferBitPrependTrailing( ZU_BUFFER **buf, ZU_BUFFER *src, ZU_INT bitCount );
/// Inserts the low `bitCount` bits of `bits` at the front.
ZU_API void zuBufferBitPrependBits( ZU_BUFFER **buf, ZU_INT bits, ZU_INT bitCount );
/// Inserts one byte at the front.
ZU_API void zuBufferBitPrependByte( ZU_BUFFER **buf, uint8_t byte );
/// Inserts `byteCount` bytes of memory at the front.
ZU_API void zuBufferBitPrependBytes( ZU_BUFFER **buf, const uint8_t *bytes, ZU_INT byteCount );
/// Inserts `bitCount` zero bits at the front.
ZU_API void zuBufferBitPrependZero( ZU_BUFFER **buf, ZU_INT bitCount );
/// Inserts `bitCount` one bits at the front.
ZU_API void zuBufferBitPrependOne( ZU_BUFFER **buf, ZU_INT bitCount );
/// Inserts the zero bits that the length lacks to whole bytes at the front.
ZU_API void zuBufferBitPrependAlignment( ZU_BUFFER **buf );

/// Inserts all of `src` ahead of byte `byteIdx`.
ZU_API void zuBufferInsert( ZU_BUFFER **buf, ZU_INT byteIdx, ZU_BUFFER *src );
/// Inserts the `byteCount` bytes of `src` from `byteOffset` on ahead of byte `byteIdx`.
ZU_API void zuBufferInsertInner( ZU_BUFFER **buf, ZU_INT byteIdx, ZU_BUFFER *src, ZU_INT byteOffset, ZU_INT byteCount );
/// Inserts `src` without the `byteCount` bytes from `byteOffset` on ahead of byte `byteIdx`.
ZU_API void zuBufferInsertOuter( ZU_BUFFER **buf, ZU_INT byteIdx, ZU_BUFFER *src, ZU_INT byteOffset, ZU_INT byteCount );
/// Inserts the first `byteCount` bytes of `src` ahead of byte `byteIdx`.
ZU_API void zuBufferInsertLeading( ZU_BUFFER **buf, ZU_INT byteIdx, ZU_BUFFER *src, ZU_INT byteCount );
/// Inserts the last `byteCount` bytes of `src` ahead of byte `byteIdx`.
ZU_API void zuBufferInsertTrailing( ZU_BUFFER **buf, ZU_INT byteIdx, ZU_BUFFER *src, ZU_INT byteCount );
/// Inserts the low `bitCount` bits of `bits` ahead of byte `byteIdx`.
ZU_API void zuBufferInsertBits( ZU_BUFFER **buf, ZU_INT byteIdx, ZU_INT bits, ZU_INT bitCount );
/// Inserts one byte ahead of byte `byteIdx`.
ZU_API void zuBufferInsertByte( ZU_BUFFER **buf, ZU_INT byteIdx, uint8_t byte );
/// Inserts `byteCount` bytes of memory ahead of byte `byteIdx`.
ZU_API void zuBufferInsertBytes( ZU_BUFFER **buf, ZU_INT byteIdx, const uint8_t *bytes, ZU_INT byteCount );
/// Inserts `byteCount` zero bytes ahead of byte `byteIdx`.
ZU_API void zuBufferInsertZero( ZU_BUFFER **buf, ZU_INT byteIdx, ZU_INT byteCount );
/// Inserts `byteCount` bytes of one bits ahead of byte `byteIdx`.
ZU_API void zuBufferInsertOne( ZU_BUFFER **buf, ZU_INT byteIdx, ZU_INT byteCount );
/// Inserts the zero bits that the length lacks to whole bytes ahead of byte `byteIdx`.
ZU_API void zuBufferInsertAlignment( ZU_BUFFER **buf, ZU_INT byteIdx );

/// Inserts all of `src` ahead of bit `bitIdx`.
ZU_API void zuBufferBitInsert( ZU_BUFFER **buf, ZU_INT bitIdx, ZU_BUFFER *src );
/// Inserts the `bitCount` bits of `src` from `bitOffset` on ahead of bit `bitIdx`.
ZU_API void zuBufferBitInsertInner( ZU_BUFFER **buf, ZU_INT bitIdx, ZU_BUFFER *src, ZU_INT bitOffset, ZU_INT bitCount );
/// Inserts `src` without the `bitCount` bits from `bitOffset` on ahead of bit `bitIdx`.
ZU_API void zuBufferBitInsertOuter( ZU_BUFFER **buf, ZU_INT bitIdx, ZU_BUFFER *src, ZU_INT bitOffset, ZU_INT bitCount );
/// Inserts the first `bitCount` bits of `src` ahead of bit `bitIdx`.
ZU_API void zuBufferBitInsertLeading( ZU_BUFFER **buf, ZU_INT bitIdx, ZU_BUFFER *src, ZU_INT bitCount );
/// Inserts the last `bitCount` bits of `src` ahead of bit `bitIdx`.
ZU_API void zuBufferBitInsertTrailing( ZU_BUFFER **buf, ZU_INT bitIdx, ZU_BUFFER *src, ZU_INT bitCount );
/// Inserts the low `bitCount` bits of `bits` ahead of bit `bitIdx`.
ZU_API void zuBufferBitInsertBits( ZU_BUFFER **buf, ZU_INT bitIdx, ZU_INT bits, ZU_INT bitCount );
/// Inserts one byte ahead of bit `bitIdx`.
ZU_API void zuBufferBitInsertByte( ZU_BUFFER **buf, ZU_INT bitIdx, uint8_t byte );
/// Inserts `byteCount` bytes of memory ahead of bit `bitIdx`.
ZU_API void zuBufferBitInsertBytes( ZU_BUFFER **buf, ZU_INT bitIdx, const uint8_t *bytes, ZU_INT byteCount );
/// Inserts `bitCount` zero bits ahead of bit `bitIdx`.
ZU_API void zuBufferBitInsertZero( ZU_BUFFER **buf, ZU_INT bitIdx, ZU_INT bitCount );
/// Inserts `bitCount` one bits ahead of bit `bitIdx`.
ZU_API void zuBufferBitInsertOne( ZU_BUFFER **buf, ZU_INT bitIdx, ZU_INT bitCount );
/// Inserts the zero bits that the length lacks to whole bytes ahead of bit `bitIdx`.
ZU_API void zuBufferBitInsertAlignment( ZU_BUFFER **buf, ZU_INT bitIdx );

/// Overwrites what stands from byte `byteIdx` on by all of `src`.
ZU_API void zuBufferWrite( ZU_BUFFER **buf, ZU_INT byteIdx, ZU_BUFFER *src );
/// Overwrites what stands from byte `byteIdx` on by the `byteCount` bytes of `src` from `byteOffset` on.
ZU_API void zuBufferWriteInner( ZU_BUFFER **buf, ZU_INT byteIdx, ZU_BUFFER *src, ZU_INT byteOffset, ZU_INT byteCount );
/// Overwrites what stands from byte `byteIdx` on by `src` without the `byteCount` bytes from `byteOffset` on.
ZU_API void zuBufferWriteOuter( ZU_BUFFER **buf, ZU_INT byteIdx, ZU_BUFFER *src, ZU_INT byteOffset, ZU_INT byteCount );
/// Overwrites what stands from byte `byteIdx` on by the first `byteCount` bytes of `src`.
ZU_API void zuBufferWriteLeading( ZU_BUFFER **buf, ZU_INT byteIdx, ZU_BUFFER *src, ZU_INT byteCount );
/// Overwrites what stands from byte `byteIdx` on by the last `byteCount` bytes of `src`.
ZU_API void zuBufferWriteTrailing( ZU_BUFFER **buf, ZU_INT byteIdx, ZU_BUFFER *src, ZU_INT byteCount );
/// Overwrites what stands from byte `byteIdx` on by the low `bitCount` bits of `bits`.
ZU_API void zuBufferWriteBits( ZU_BUFFER **buf, ZU_INT byteIdx, ZU_INT bits, ZU_INT bitCount );
/// Overwrites what stands from byte `byteIdx` on by one byte.
ZU_API void zuBufferWriteByte( ZU_BUFFER **buf, ZU_INT byteIdx, uint8_t byte );
/// Overwrites what stands from byte `byteIdx` on by `byteCount` bytes of memory.
ZU_API void zuBufferWriteBytes( ZU_BUFFER **buf, ZU_INT byteIdx, const uint8_t *bytes, ZU_INT byteCount );
/// Overwrites what stands from byte `byteIdx` on by `byteCount` zero bytes.
ZU_API void zuBufferWriteZero( ZU_BUFFER **buf, ZU_INT byteIdx, ZU_INT byteCount );
/// Overwrites what stands from byte `byteIdx` on by `byteCount` bytes of one bits.
ZU_API void zuBufferWriteOne( ZU_BUFFER **buf, ZU_INT byteIdx, ZU_INT byteCount );

/// Overwrites what stands from bit `bitIdx` on by all of `src`.
ZU_API void zuBufferBitWrite( ZU_BUFFER **buf, ZU_INT bitIdx, ZU_BUFFER *src );
/// Overwrites what stands from bit `bitIdx` on by the `bitCount` bits of `src` from `bitOffset` on.
ZU_API void zuBufferBitWriteInner( ZU_BUFFER **buf, ZU_INT bitIdx, ZU_BUFFER *src, ZU_INT bitOffset, ZU_INT bitCount );
/// Overwrites what stands from bit `bitIdx` on by `src` without the `bitCount` bits from `bitOffset` on.
ZU_API void zuBufferBitWriteOuter( ZU_BUFFER **buf, ZU_INT bitIdx, ZU_BUFFER *src, ZU_INT bitOffset, ZU_INT bitCount );
/// Overwrites what stands from bit `bitIdx` on by the first `bitCount` bits of `src`.
ZU_API void zuBufferBitWriteLeading( ZU_BUFFER **buf, ZU_INT bitIdx, ZU_BUFFER *src, ZU_INT bitCount );
/// Overwrites what stands from bit `bitIdx` on by the last `bitCount` bits of `src`.
ZU_API void zuBufferBitWriteTrailing( ZU_BUFFER **buf, ZU_INT bitIdx, ZU_BUFFER *src, ZU_INT bitCount );
/// Overwrites what stands from bit `bitIdx` on by the low `bitCount` bits of `bits`.
ZU_API void zuBufferBitWriteBits( ZU_BUFFER **buf, ZU_INT bitIdx, ZU_INT bits, ZU_INT bitCount );
/// Overwrites what stands from bit `bitIdx` on by one byte.
ZU_API void zuBufferBitWriteByte( ZU_BUFFER **buf, ZU_INT bitIdx, uint8_t byte );
/// Overwrites what stands from bit `bitIdx` on by `byteCount` bytes of memory.
ZU_API void zuBufferBitWriteBytes( ZU_BUFFER **buf, ZU_INT bitIdx, const uint8_t *bytes, ZU_INT byteCount );
/// Overwrites what stands from bit `bitIdx` on by `bitCount` zero bits.
ZU_API void zuBufferBitWriteZero( ZU_BUFFER **buf, ZU_INT bitIdx, ZU_INT bitCount );
/// Overwrites what stands from bit `bitIdx` on by `bitCount` one bits.
ZU_API void zuBufferBitWriteOne( ZU_BUFFER **buf, ZU_INT bitIdx, ZU_INT bitCount );

// Reading; a range outside aborts
/// Returns a new object with the `byteCount` bytes from byte `byteIdx` on.
ZU_API ZU_BUFFER *zuBufferRead( ZU_BUFFER *buf, ZU_INT byteIdx, ZU_INT byteCount );
/// Returns the `bitCount` bits, at most 64, from byte `byteIdx` on as a number; only 64 bits can be negative.
ZU_API ZU_INT zuBufferReadBits( ZU_BUFFER *buf, ZU_INT byteIdx, ZU_INT bitCount );
/// Returns the 8 bits from byte `byteIdx` on.
ZU_API uint8_t zuBufferReadByte( ZU_BUFFER *buf, ZU_INT byteIdx );
/// Copies the `byteCount` bytes from byte `byteIdx` on to `bytes`, which may be null if there are none.
ZU_API void zuBufferReadBytes( ZU_BUFFER *buf, ZU_INT byteIdx, uint8_t *bytes, ZU_INT byteCount );
/// Returns a new object with the `bitCount` bits from bit `bitIdx` on.
ZU_API ZU_BUFFER *zuBufferBitRead( ZU_BUFFER *buf, ZU_INT bitIdx, ZU_INT bitCount );
/// Returns the `bitCount` bits, at most 64, from bit `bitIdx` on as a number; only 64 bits can be negative.
ZU_API ZU_INT zuBufferBitReadBits( ZU_BUFFER *buf, ZU_INT bitIdx, ZU_INT bitCount );
/// Returns the 8 bits from bit `bitIdx` on.
ZU_API uint8_t zuBufferBitReadByte( ZU_BUFFER *buf, ZU_INT bitIdx );
/// Copies the `byteCount` bytes from bit `bitIdx` on to `bytes`, which may be null if there are none.
ZU_API void zuBufferBitReadBytes( ZU_BUFFER *buf, ZU_INT bitIdx, uint8_t *bytes, ZU_INT byteCount );

// Deletion; a range outside aborts.  Whoever deletes everything is left with the shared empty buffer.  Deleting whole
// bytes at the front and anything at the end moves nothing, and leaves a buffer that nobody shares on foreign memory.
/// Removes the `byteCount` bytes from `byteOffset` on.
ZU_API void zuBufferDelInner( ZU_BUFFER **buf, ZU_INT byteOffset, ZU_INT byteCount );
/// Removes everything but the `byteCount` bytes from `byteOffset` on.
ZU_API void zuBufferDelOuter( ZU_BUFFER **buf, ZU_INT byteOffset, ZU_INT byteCount );
/// Removes the first `byteCount` bytes.
ZU_API void zuBufferDelLeading( ZU_BUFFER **buf, ZU_INT byteCount );
/// Removes the last `byteCount` bytes.
ZU_API void zuBufferDelTrailing( ZU_BUFFER **buf, ZU_INT byteCount );
/// Removes the `bitCount` bits from `bitOffset` on.
ZU_API void zuBufferBitDelInner( ZU_BUFFER **buf, ZU_INT bitOffset, ZU_INT bitCount );
/// Removes everything but the `bitCount` bits from `bitOffset` on.
ZU_API void zuBufferBitDelOuter( ZU_BUFFER **buf, ZU_INT bitOffset, ZU_INT bitCount );
/// Removes the first `bitCount` bits.
ZU_API void zuBufferBitDelLeading( ZU_BUFFER **buf, ZU_INT bitCount );
/// Removes the last `bitCount` bits.
ZU_API void zuBufferBitDelTrailing( ZU_BUFFER **buf, ZU_INT bitCount );
/// Removes everything.
ZU_API void zuBufferClear( ZU_BUFFER **buf );

// For authors of classes and modules

// Free room at both ends of new storage, in bits.
#define ZU_BUFFER_FSPACE ( (ZU___INT_UNSIGNED)640 )
#define ZU_BUFFER_BSPACE ( (ZU___INT_UNSIGNED)1280 )

/// Makes the shared empty buffer.
ZU_API void zu___BufferStartup( void );
/// Releases the shared empty buffer.
ZU_API void zu___BufferShutdown( void );

ZU_END_DECLS
