// Protocol stacks add headers ahead of a payload and take them off again, so that the storage has free room at both
// ends: whole bytes at either end come and go without moving the others.  Everything else is one copy of bits, which
// works on words wherever source and destination stand.
//
// How large the storage is goes with the contract, and by constants.  If it were exchanged or its content moved whenever
// that says so, whoever takes a long content off the front piece by piece, or puts it together there, would move the
// whole for each piece.  So it lies in a block that is larger, by a reserve in proportion to the content, and mostly
// moves within that by moving its bounds alone.
//
// A copy of a short content is as likely to be read and let go as to be changed: it comes in one piece with the object.
//
// All lengths inside are unsigned and in bits; the public forms, most of them in zu_buffer_forms.cpp, check what comes
// from outside, convert it and hand it to one function for each kind of operand.  A buffer that anybody else holds, and
// one on foreign memory, is exchanged for a copy before its content changes.

#include "zu/base/zu_buffer_internal.h"

#include "zu/base/zu_string_internal.h"
#include "zu/runtime/zu_module.h"
#include "zu/runtime/zu_obj_internal.h"
#include "zu/runtime/zu_ref_internal.h"
#include "zu/sys/zu_mem.h"

#include <cstring>

typedef ZU___INT_UNSIGNED UINT;

// Free room that a deletion leaves: twice what new storage has.
static constexpr UINT FSPACE_MAX = 2 * ZU_BUFFER_FSPACE;
static constexpr UINT BSPACE_MAX = 2 * ZU_BUFFER_BSPACE;
static constexpr UINT CAPACITY_MAX = 3;    // times the storage: what a deletion leaves of the block
static constexpr UINT RESERVE_DIVISOR = 2; // of the content: what a block that is too small grows by
static constexpr UINT BEHIND_MAX = 4096;   // bytes of a content whose storage is behind its object until that goes
static_assert( BIT_AT_BOUND( ZU_BUFFER_FSPACE ) && BIT_AT_BOUND( ZU_BUFFER_BSPACE ) );

static ZU_BUFFER *emptyBuffer = nullptr; // shared by everybody who holds an empty buffer

static void bufferFree( ZU_OBJ *thisObj );
static ZU_INT bufferCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj );
static ZU_STRING *bufferToString( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_BUFFER =
    ZU___SORT_INITIALIZER( "ZU_BUFFER", &zu___module, bufferFree, bufferCompare, bufferToString );
ZU___STDFUNCS( ZU_BUFFER, zuBuffer )

// Returns a new, private, empty buffer without storage, with `bytesBehind` bytes of memory behind it.
static ZU_BUFFER *bufferCreateEmpty( UINT bytesBehind = 0 )
{
    ZU_BUFFER *buf = (ZU_BUFFER *)zu___ObjCreate( sizeof( ZU_BUFFER ) + (ZU_INT)bytesBehind, &zu___sort_ZU_BUFFER );
    buf->obj.objectSize = sizeof( ZU_BUFFER ); // what is behind is declared with the storage
    buf->bitLength = 0;
    buf->bitFspace = 0;
    buf->bitBspace = 0;
    buf->bytes = nullptr;
    buf->block = nullptr;
    buf->capacity = 0;
    buf->blockBehind = false;
    buf->ref = nullptr;
    return buf;
}

// Start-up
void zu___BufferStartup( void )
{
    emptyBuffer = bufferCreateEmpty();
}
void zu___BufferShutdown( void )
{
    ZU_REF_RELEASE( emptyBuffer );
    ZU_REF_POISON( emptyBuffer );
}

// Bits in memory, counted from the most significant one of `bytes[ 0 ]`

// Returns the `count` bits from `idx` on, at most 64, the last of them lowest.
static inline uint64_t bitsGet( const uint8_t *bytes, UINT idx, UINT count )
{
    uint64_t value = 0;
    while ( count > 0 ) {
        UINT phase = idx & 7;
        UINT n = count < 8 - phase ? count : 8 - phase;
        value = value << n | ( bytes[ idx >> 3 ] & 0xFF >> phase ) >> ( 8 - phase - n );
        idx += n;
        count -= n;
    }
    return value;
}

// Stores the low `count` bits of `value`, fewer than 8, in a byte that has them from `phase` on.  The bits around them
// are kept by a mask of their own: of a mask and its complement compilers make an exclusive or, and through that what
// memory has never held would seem to get into the content, to the tools that look for it.
static inline void bitsPutInByte( uint8_t *byte, UINT phase, uint64_t value, UINT count )
{
    UINT kept = ( 0xFF00 >> phase & 0xFF ) | ( 0xFF >> ( phase + count ) );
    *byte = (uint8_t)( ( *byte & kept ) | ( value & ( 0xFF >> ( 8 - count ) ) ) << ( 8 - phase - count ) );
}
// Stores the low `count` bits of `value`, at most 64, from `idx` on.
static inline void bitsPut( uint8_t *bytes, UINT idx, uint64_t value, UINT count )
{
    uint8_t *byte = &bytes[ idx >> 3 ];
    UINT phase = idx & 7;
    if ( phase > 0 && count > 0 ) {
        UINT head = count < 8 - phase ? count : 8 - phase;
        count -= head;
        bitsPutInByte( byte++, phase, value >> count, head );
    }
    for ( ; count >= 8; count -= 8 ) {
        *byte++ = (uint8_t)( value >> ( count - 8 ) );
    }
    if ( count > 0 ) {
        bitsPutInByte( byte, 0, value, count );
    }
}

static inline uint64_t bitsLoadWord( const uint8_t *bytes )
{
    uint64_t word;
    memcpy( &word, bytes, sizeof word );
    return __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ? __builtin_bswap64( word ) : word;
}
static inline void bitsStoreWord( uint8_t *bytes, uint64_t word )
{
    word = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ? __builtin_bswap64( word ) : word;
    memcpy( bytes, &word, sizeof word );
}

// Fills `count` whole bytes from the bits of `src` from `phase`, 1 to 7, on.
static void bitsCopyShifted( uint8_t *dest, const uint8_t *src, UINT phase, UINT count )
{
    for ( ; count >= 8; count -= 8, dest += 8, src += 8 ) {
        bitsStoreWord( dest, bitsLoadWord( src ) << phase | src[ 8 ] >> ( 8 - phase ) );
    }
    for ( ; count > 0; count--, dest++, src++ ) {
        *dest = (uint8_t)( src[ 0 ] << phase | src[ 1 ] >> ( 8 - phase ) );
    }
}

// Copies `count` bits between memory that does not overlap; bits around the destination stay as they are.
[[gnu::noinline]] static void bitsCopyOffBound( uint8_t *dest, UINT destIdx, const uint8_t *src, UINT srcIdx,
                                                UINT count )
{
    if ( !BIT_AT_BOUND( destIdx ) ) {
        UINT head = 8 - ( destIdx & 7 );
        head = count < head ? count : head;
        bitsPut( dest, destIdx, bitsGet( src, srcIdx, head ), head );
        destIdx += head;
        srcIdx += head;
        count -= head;
    }
    UINT byteCount = count >> 3;
    if ( byteCount > 0 ) {
        if ( BIT_AT_BOUND( srcIdx ) ) {
            memcpy( dest + ( destIdx >> 3 ), src + ( srcIdx >> 3 ), byteCount );
        } else {
            bitsCopyShifted( dest + ( destIdx >> 3 ), src + ( srcIdx >> 3 ), srcIdx & 7, byteCount );
        }
    }
    UINT done = BYTES_TO_BITS( byteCount );
    bitsPut( dest, destIdx + done, bitsGet( src, srcIdx + done, count - done ), count - done );
}
static inline void bitsCopy( uint8_t *dest, UINT destIdx, const uint8_t *src, UINT srcIdx, UINT count )
{
    if ( ZU___UNLIKELY( !BIT_AT_BOUND( destIdx | srcIdx | count ) ) ) {
        bitsCopyOffBound( dest, destIdx, src, srcIdx, count );
    } else if ( count > 0 ) {
        memcpy( dest + ( destIdx >> 3 ), src + ( srcIdx >> 3 ), count >> 3 );
    }
}

// Sets `count` bits from `idx` on to those of `value`, which is 0x00 or 0xFF.
static void bitsFill( uint8_t *bytes, UINT idx, UINT count, uint8_t value )
{
    if ( !BIT_AT_BOUND( idx ) ) {
        UINT head = 8 - ( idx & 7 );
        head = count < head ? count : head;
        bitsPut( bytes, idx, value, head );
        idx += head;
        count -= head;
    }
    if ( count >> 3 > 0 ) {
        memset( bytes + ( idx >> 3 ), value, count >> 3 );
    }
    bitsPut( bytes, idx + ( count & ~(UINT)7 ), value, count & 7 );
}

// Moves the bytes that `bitCount` bits from `src` on lie in.
static inline void bitsMove( uint8_t *dest, const uint8_t *src, UINT bitCount )
{
    if ( bitCount > 0 && dest != src ) {
        memmove( dest, src, ( bitCount + 7 ) >> 3 );
    }
}

static inline uint8_t *bufferContent( ZU_BUFFER *buf )
{
    return buf->bytes + ( buf->bitFspace >> 3 );
}

// The bits of a last byte that is not whole, in their places.
static inline uint8_t bufferPartialByte( ZU_BUFFER *buf, UINT bitLength )
{
    return (uint8_t)( bufferContent( buf )[ bitLength >> 3 ] & 0xFF << ( 8 - ( bitLength & 7 ) ) );
}

// Storage

// Returns the size in bytes of a storage for `used` bits and further `room`, which are whole bytes.
static UINT bufferStorageSize( UINT used, UINT room )
{
    UINT sizeBytes = ( ( used + room ) >> 3 ) + ( BIT_AT_BOUND( used ) ? 0 : 1 );
    ZU_ASSERT( BYTES_TO_BITS_OK( sizeBytes ) );
    UINT sizeBits = BYTES_TO_BITS( sizeBytes );
    ZU_ASSERT( ZU___INT_UNSIGNED_TO_ZU_INT_CONV_OK( sizeBits ) );
    return sizeBytes;
}
static inline void bufferSetBlock( ZU_BUFFER *buf, uint8_t *block, UINT capacity )
{
    buf->block = block;
    buf->capacity = capacity;
    buf->blockBehind = false;
}
static inline void bufferFreeBlock( ZU_BUFFER *buf )
{
    if ( !buf->blockBehind ) {
        zuMemFree( buf->block );
    }
}
// Exchanges the block for one of `capacity` bytes, and moves the storage to `storageAt` in it, with the content from
// byte `at` of that on.
static void bufferExchangeBlock( ZU_BUFFER *buf, UINT capacity, UINT storageAt, UINT at )
{
    uint8_t *block = (uint8_t *)zuMemAlloc( (ZU_INT)capacity );
    bitsMove( block + storageAt + at, bufferContent( buf ), buf->bitLength );
    bufferFreeBlock( buf );
    bufferSetBlock( buf, block, capacity );
    buf->bytes = block + storageAt;
}
// Grows the block at its end to `capacity` bytes.
static void bufferGrowBlock( ZU_BUFFER *buf, UINT capacity )
{
    UINT storageAt = (UINT)( buf->bytes - buf->block );
    if ( buf->blockBehind ) {
        uint8_t *block = (uint8_t *)zuMemAlloc( (ZU_INT)capacity );
        memcpy( block, buf->block, buf->capacity );
        bufferSetBlock( buf, block, capacity );
    } else {
        bufferSetBlock( buf, (uint8_t *)zuMemRealloc( buf->block, (ZU_INT)capacity ), capacity );
    }
    buf->bytes = buf->block + storageAt;
}
// Lays the storage anew, with `sizeBytes` in all and the content from byte `at` of it on; the caller sets the rooms.
// Nothing moves if the block has room around the content; otherwise so much is gained that moving all of it pays.
[[gnu::noinline]] static void bufferPlace( ZU_BUFFER *buf, UINT sizeBytes, UINT at )
{
    UINT contentBytes = ( buf->bitLength + 7 ) >> 3;
    UINT reserve = contentBytes / RESERVE_DIVISOR;
    UINT ahead = (UINT)( bufferContent( buf ) - buf->block ); // bytes of the block ahead of the content
    bool frontFits = ahead >= at;
    bool shrinks = BYTES_TO_BITS( sizeBytes ) < buf->bitFspace + buf->bitLength + buf->bitBspace;
    if ( shrinks && sizeBytes < buf->capacity / CAPACITY_MAX ) {
        bufferExchangeBlock( buf, sizeBytes, 0, at );
    } else if ( frontFits && buf->capacity - ahead >= sizeBytes - at ) {
        buf->bytes = bufferContent( buf ) - at;
    } else if ( buf->capacity >= sizeBytes + ( shrinks ? 0 : reserve ) ) {
        // Whoever comes to one end of the block starts again, not quite at the other: not every user of both is a queue.
        UINT spare = buf->capacity - sizeBytes;
        uint8_t *bytes = buf->block + ( frontFits ? spare / 4 : spare - spare / 4 );
        bitsMove( bytes + at, bufferContent( buf ), buf->bitLength );
        buf->bytes = bytes;
    } else if ( frontFits ) {
        buf->bytes = bufferContent( buf ) - at;
        bufferGrowBlock( buf, ahead - at + sizeBytes + reserve );
    } else {
        bufferExchangeBlock( buf, reserve + sizeBytes, reserve, at );
    }
    zu___ObjDeclareAllocationSizePrivate( &buf->obj, (ZU_INT)sizeBytes );
}

// Puts `newBuf` in the place of `*buf`.
static void bufferReplace( ZU_BUFFER **buf, ZU_BUFFER *newBuf )
{
    ZU_BUFFER *old = *buf;
    *buf = newBuf;
    ZU_REF_RELEASE( old );
}
[[gnu::noinline]] static void bufferReplaceByCopy( ZU_BUFFER **buf )
{
    bufferReplace( buf, zuBufferCreateFrom( *buf ) );
}
// Exchanges a buffer that others hold too for a private copy.
static inline void bufferUnshare( ZU_BUFFER **buf )
{
    if ( ZU___UNLIKELY( ZU_REF_RETAIN_COUNT( *buf ) > 1 ) ) {
        bufferReplaceByCopy( buf );
    }
}
// Makes sure that the content may be written.
static inline void bufferMakeWritable( ZU_BUFFER **buf )
{
    if ( ZU___UNLIKELY( ( *buf )->ref || ZU_REF_RETAIN_COUNT( *buf ) > 1 ) ) {
        bufferReplaceByCopy( buf );
    }
}

[[gnu::noinline]] static void bufferShrinkStorage( ZU_BUFFER *buf )
{
    if ( buf->bitLength == 0 ) {
        bufferFreeBlock( buf );
        bufferSetBlock( buf, nullptr, 0 );
        zu___ObjDeclareAllocationSizePrivate( &buf->obj, 0 );
        buf->bitFspace = 0;
        buf->bitBspace = 0;
        buf->bytes = nullptr;
        return;
    }
    UINT sizeBytes = bufferStorageSize( buf->bitLength, ZU_BUFFER_FSPACE + ZU_BUFFER_BSPACE );
    bufferPlace( buf, sizeBytes, ZU_BUFFER_FSPACE >> 3 );
    buf->bitFspace = ZU_BUFFER_FSPACE;
    buf->bitBspace = BYTES_TO_BITS( sizeBytes ) - buf->bitLength - ZU_BUFFER_FSPACE;
}
// Gives back storage that a deletion has made superfluous; the content may move.
static inline void bufferTrim( ZU_BUFFER *buf )
{
    ZU_ASSERT( ZU_REF_RETAIN_COUNT( buf ) == 1 );
    ZU_ASSERT( BIT_AT_BOUND( buf->bitFspace ) );
    if ( !buf->ref && ( buf->bitFspace > FSPACE_MAX || buf->bitBspace > BSPACE_MAX ) ) {
        bufferShrinkStorage( buf );
    }
}

// Making room
//
// Each function opens a gap of `bitCount` bits, more than none, in a private buffer with storage of its own, and raises
// its length.  What the gap holds is left to the caller.

// The first storage of a buffer, in a block of just its size.
static inline void bufferTakeFirstRoom( ZU_BUFFER *own, uint8_t *block, UINT sizeBytes, UINT bitCount )
{
    bufferSetBlock( own, block, sizeBytes );
    own->bytes = block;
    zu___ObjDeclareAllocationSizePrivate( &own->obj, (ZU_INT)sizeBytes );
    own->bitLength = bitCount;
    own->bitFspace = ZU_BUFFER_FSPACE;
    own->bitBspace = BYTES_TO_BITS( sizeBytes ) - bitCount - ZU_BUFFER_FSPACE;
}
static void bufferMakeFirstRoom( ZU_BUFFER **buf, UINT bitCount )
{
    ZU_ASSERT( ZU___INT_UNSIGNED_ADD_OK( ZU_BUFFER_FSPACE + ZU_BUFFER_BSPACE + (*buf)->bitLength, bitCount ) );
    UINT sizeBytes = bufferStorageSize( bitCount, ZU_BUFFER_FSPACE + ZU_BUFFER_BSPACE );
    bufferTakeFirstRoom( *buf, (uint8_t *)zuMemAlloc( (ZU_INT)sizeBytes ), sizeBytes, bitCount );
}

// Room off the bytes' boundaries, or that brings what follows off them: the object gets the storage of a new one.
static void bufferRebuild( ZU_BUFFER **buf, UINT atBit, UINT bitCount )
{
    ZU_ASSERT( ZU___INT_UNSIGNED_ADD_OK( ZU_BUFFER_FSPACE + ZU_BUFFER_BSPACE + (*buf)->bitLength, bitCount ) );
    ZU_BUFFER *own = *buf;
    ZU_BUFFER *tmp = bufferCreateEmpty();
    bufferMakeFirstRoom( &tmp, own->bitLength + bitCount );
    bitsCopy( bufferContent( tmp ), 0, bufferContent( own ), 0, atBit );
    bitsCopy( bufferContent( tmp ), atBit + bitCount, bufferContent( own ), atBit, own->bitLength - atBit );
    bufferFreeBlock( own );
    own->bytes = tmp->bytes;
    bufferSetBlock( own, tmp->block, tmp->capacity );
    own->bitLength = tmp->bitLength;
    own->bitFspace = tmp->bitFspace;
    own->bitBspace = tmp->bitBspace;
    zu___ObjDeclareAllocationSizePrivate( &own->obj, zu___ObjDbgAllocationSize( &tmp->obj ) );
    zu___ObjDeclareAllocationSizePrivate( &tmp->obj, 0 );
    tmp->bytes = nullptr;
    tmp->block = nullptr;
    ZU_REF_RELEASE( tmp );
}

// Whole bytes at the front, which does not have as many free: out of both rooms, or there is new storage.
static void bufferMakeRoomAtFront( ZU_BUFFER **buf, UINT bitCount )
{
    ZU_BUFFER *own = *buf;
    if ( bitCount <= own->bitFspace + own->bitBspace ) {
        bufferPlace( own, ( own->bitFspace + own->bitLength + own->bitBspace ) >> 3, bitCount >> 3 );
        own->bitBspace = own->bitBspace + own->bitFspace - bitCount;
        own->bitFspace = 0;
    } else {
        ZU_ASSERT( ZU___INT_UNSIGNED_ADD_OK( ZU_BUFFER_FSPACE + ZU_BUFFER_BSPACE + (*buf)->bitLength, bitCount ) );
        UINT sizeBytes = bufferStorageSize( own->bitLength + bitCount, ZU_BUFFER_FSPACE + ZU_BUFFER_BSPACE );
        bufferPlace( own, sizeBytes, ( bitCount + ZU_BUFFER_FSPACE ) >> 3 );
        own->bitBspace = BYTES_TO_BITS( sizeBytes ) - own->bitLength - bitCount - ZU_BUFFER_FSPACE;
        own->bitFspace = ZU_BUFFER_FSPACE;
    }
    own->bitLength += bitCount;
}

// Any number of bits at the end, which does not have as many free.  Who appends keeps the front room for who prepends.
static void bufferMakeRoomAtEnd( ZU_BUFFER **buf, UINT bitCount )
{
    ZU_ASSERT( ZU___INT_UNSIGNED_ADD_OK( (*buf)->bitFspace + (*buf)->bitLength, bitCount ) );
    ZU_ASSERT( ZU___INT_UNSIGNED_ADD_OK( (*buf)->bitFspace + (*buf)->bitLength + bitCount, ZU_BUFFER_BSPACE ) );
    ZU_BUFFER *own = *buf;
    UINT used = own->bitFspace + own->bitLength + bitCount;
    UINT sizeBytes = bufferStorageSize( used, ZU_BUFFER_BSPACE );
    bufferPlace( own, sizeBytes, own->bitFspace >> 3 );
    own->bitBspace = BYTES_TO_BITS( sizeBytes ) - used;
    own->bitLength += bitCount;
}

// Whole bytes between two bytes.
static void bufferMakeRoomInside( ZU_BUFFER **buf, UINT atBit, UINT bitCount )
{
    ZU_BUFFER *own = *buf;
    UINT tailBits = own->bitLength - atBit;
    uint8_t *tail = bufferContent( own ) + ( atBit >> 3 );
    if ( bitCount <= own->bitBspace ) {
        bitsMove( tail + ( bitCount >> 3 ), tail, tailBits );
        own->bitBspace -= bitCount;
    } else if ( bitCount <= own->bitBspace + own->bitFspace ) {
        // The front room is made smaller by a number of bytes where bits were meant.  This is kept, since it decides
        // where such an insertion is refused later; zu_buffer.h warns of it.  The content then ends behind the storage,
        // by 7 bits for each of those bytes: the block grows to hold them, as zeros, so that nobody leaves it.
        UINT wholeBspace = own->bitBspace & ~(UINT)7;
        UINT delta = ( bitCount - wholeBspace ) >> 3; // bytes
        UINT storageBytes = ( own->bitFspace + own->bitLength + own->bitBspace ) >> 3;
        UINT endBytes = storageBytes + ( ( 7 * delta + 7 ) >> 3 );
        UINT endInBlock = (UINT)( own->bytes - own->block ) + endBytes;
        if ( endInBlock > own->capacity ) {
            bufferGrowBlock( own, endInBlock );
        }
        memset( own->bytes + storageBytes, 0, endBytes - storageBytes );
        uint8_t *head = bufferContent( own );
        tail = head + ( atBit >> 3 );
        bitsMove( head - delta, head, atBit );
        bitsMove( tail + ( wholeBspace >> 3 ), tail, tailBits );
        // So does what the content takes in that was room before: a part of the front room, where the head is shorter
        // than what it moves by, and the bits behind a last byte that is not whole.
        if ( delta > atBit >> 3 ) {
            memset( head - delta + ( atBit >> 3 ), 0, delta - ( atBit >> 3 ) );
        }
        own->bytes[ storageBytes - 1 ] &= (uint8_t)( 0xFF << ( own->bitBspace & 7 ) );
        own->bitFspace -= delta;
        own->bitBspace &= 7;
    } else {
        ZU_ASSERT( ZU___INT_UNSIGNED_ADD_OK( ZU_BUFFER_FSPACE + ZU_BUFFER_BSPACE + (*buf)->bitLength, bitCount ) );
        UINT sizeBytes = bufferStorageSize( own->bitLength + bitCount, ZU_BUFFER_FSPACE + ZU_BUFFER_BSPACE );
        bufferPlace( own, sizeBytes, ZU_BUFFER_FSPACE >> 3 );
        own->bitBspace = BYTES_TO_BITS( sizeBytes ) - own->bitLength - bitCount - ZU_BUFFER_FSPACE;
        own->bitFspace = ZU_BUFFER_FSPACE;
        tail = bufferContent( own ) + ( atBit >> 3 );
        bitsMove( tail + ( bitCount >> 3 ), tail, tailBits );
    }
    own->bitLength += bitCount;
}

// Takes the gap from the free room at the end that it is at; returns false if there is not as much, or the gap is at no
// end.
static inline bool bufferTakeRoom( ZU_BUFFER *own, UINT atBit, UINT bitCount )
{
    if ( atBit == 0 ) {
        if ( bitCount > own->bitFspace || !BIT_AT_BOUND( bitCount ) ) {
            return false;
        }
        own->bitFspace -= bitCount;
    } else {
        if ( bitCount > own->bitBspace || atBit != own->bitLength ) {
            return false;
        }
        own->bitBspace -= bitCount;
    }
    own->bitLength += bitCount;
    return true;
}
[[gnu::noinline]] static void bufferGetRoom( ZU_BUFFER **buf, UINT atBit, UINT bitCount )
{
    ZU_ASSERT( !(*buf)->ref );
    if ( !( *buf )->bytes ) {
        bufferMakeFirstRoom( buf, bitCount );
    } else if ( atBit == 0 && BIT_AT_BOUND( bitCount ) ) {
        bufferMakeRoomAtFront( buf, bitCount );
    } else if ( atBit == ( *buf )->bitLength && atBit > 0 ) {
        bufferMakeRoomAtEnd( buf, bitCount );
    } else if ( atBit > 0 && BIT_AT_BOUND( atBit | bitCount ) ) {
        bufferMakeRoomInside( buf, atBit, bitCount );
    } else {
        bufferRebuild( buf, atBit, bitCount );
    }
}

// Opens a gap of `bitCount` bits, or none, ahead of bit `atBit` of whatever `*buf` is.
static inline void bufferMakeRoom( ZU_BUFFER **buf, UINT atBit, UINT bitCount )
{
    ZU_ASSERT( BIT_AT_BOUND( (*buf)->bitFspace ) );
    ZU_ASSERT( atBit <= (*buf)->bitLength );
    if ( bitCount == 0 ) {
        return;
    }
    bufferMakeWritable( buf );
    if ( ZU___UNLIKELY( !bufferTakeRoom( *buf, atBit, bitCount ) ) ) {
        bufferGetRoom( buf, atBit, bitCount );
    }
    // What has never been written does not leave the process with the last byte.
    ZU_BUFFER *own = *buf;
    if ( !BIT_AT_BOUND( own->bitLength ) ) {
        uint8_t *last = bufferContent( own ) + ( own->bitLength >> 3 );
        *last &= (uint8_t)( 0xFF << ( 8 - ( own->bitLength & 7 ) ) );
    }
}

void zu___BufferReserveBits( ZU_BUFFER **buf, UINT bitCount )
{
    bufferMakeRoom( buf, ( *buf )->bitLength, bitCount );
    ( *buf )->bitLength -= bitCount;
    ( *buf )->bitBspace += bitCount;
}

// Standard functions
static void bufferFree( ZU_OBJ *thisObj )
{
    ZU_BUFFER *buf = zuBufferFrom( thisObj );
    ZU_ASSERT( buf );
    if ( buf->ref ) {
        ZU_REF_RELEASE( buf->ref );
    } else {
        bufferFreeBlock( buf );
        zu___ObjDeclareAllocationSizePrivate( thisObj, 0 );
    }
    ZU_REF_POISON( buf->ref );
}
static ZU_INT bufferCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    ZU_BUFFER *bufA = zuBufferFrom( thisObj );
    ZU_BUFFER *bufB = zuBufferFrom( thatObj );
    ZU_ASSERT( bufA );
    ZU_ASSERT( bufB );
    UINT common = bufA->bitLength < bufB->bitLength ? bufA->bitLength : bufB->bitLength;
    ZU_INT order = zuMemCompare( bufferContent( bufA ), bufferContent( bufB ), (ZU_INT)( common >> 3 ) );
    if ( order == 0 && !BIT_AT_BOUND( common ) ) {
        uint8_t partialA = bufferPartialByte( bufA, common );
        uint8_t partialB = bufferPartialByte( bufB, common );
        order = ( partialA > partialB ) - ( partialA < partialB );
    }
    if ( order == 0 ) {
        order = ( bufA->bitLength > bufB->bitLength ) - ( bufA->bitLength < bufB->bitLength );
    }
    return order;
}

static ZU_CHAR *bufferWriteHex( ZU_CHAR *text, uint8_t byte )
{
    static const char DIGITS[] = "0123456789abcdef";
    *text++ = (uint8_t)DIGITS[ byte >> 4 ];
    *text++ = (uint8_t)DIGITS[ byte & 15 ];
    return text;
}
static ZU_STRING *bufferToString( ZU_OBJ *thisObj )
{
    ZU_BUFFER *buf = zuBufferFrom( thisObj );
    ZU_ASSERT( buf );
    UINT whole = buf->bitLength >> 3;
    UINT partialBits = buf->bitLength & 7;
    UINT groups = whole + ( partialBits ? 1 : 0 ); // two digits each, with blanks between
    ZU_INT length = 2 + (ZU_INT)( groups ? 3 * groups - 1 : 0 ) + ( partialBits ? 2 : 0 );
    ZU_STRING *zus = zu___StringCreateEmpty();
    ZU_CHAR *text = zu___StringMakeRoom( zus, 0, length );
    *text++ = '[';
    for ( UINT i = 0; i < groups; i++ ) {
        if ( i > 0 ) {
            *text++ = ' ';
        }
        text = bufferWriteHex( text, i < whole ? bufferContent( buf )[ i ] : bufferPartialByte( buf, buf->bitLength ) );
    }
    if ( partialBits ) {
        *text++ = '/';
        *text++ = (ZU_CHAR)( '0' + partialBits );
    }
    *text = ']';
    return zus;
}

// Inspection
ZU_INT zuBufferLength( ZU_BUFFER *buf )
{
    ZU_ASSERT( buf );
    return (ZU_INT)( buf->bitLength >> 3 );
}
ZU_INT zuBufferBitLength( ZU_BUFFER *buf )
{
    ZU_ASSERT( buf );
    return (ZU_INT)buf->bitLength;
}
ZU_INT zuBufferSpace( ZU_BUFFER *buf )
{
    return zuBufferBitSpace( buf ) >> 3;
}
ZU_INT zuBufferBitSpace( ZU_BUFFER *buf )
{
    ZU_ASSERT( buf );
    return ZU_INT_MAX - (ZU_INT)buf->bitLength;
}
ZU_BOOL zuBufferBitIsAligned( ZU_BUFFER *buf )
{
    ZU_ASSERT( buf );
    return BIT_AT_BOUND( buf->bitLength );
}
const uint8_t *zuBufferBacking( ZU_BUFFER *buf )
{
    ZU_ASSERT( buf );
    return bufferContent( buf );
}
const uint8_t *zuBufferBitBacking( ZU_BUFFER *buf )
{
    return zuBufferBacking( buf );
}

// Insertion and overwriting: one function of each for each kind of operand.  `put` writes the operand into a content that
// has the place for it.  An operand that is read from the buffer itself has that held.
template <typename PUT>
static inline void bufferInsert( ZU_BUFFER **buf, UINT bitIdx, UINT bitCount, bool readsItself, PUT put )
{
    auto held = zu___HeldIf( readsItself, *buf );
    bufferMakeRoom( buf, bitIdx, bitCount );
    put( bufferContent( *buf ) );
}
template <typename PUT>
static inline void bufferWrite( ZU_BUFFER **buf, UINT bitCount, bool readsItself, PUT put )
{
    if ( bitCount == 0 ) {
        return;
    }
    auto held = zu___HeldIf( readsItself, *buf );
    bufferMakeWritable( buf );
    put( bufferContent( *buf ) );
}

// Asserts that the range is in `src`.
#define BUFFER_ASSERT_RANGE( src, bitOffset, bitCount )               \
    do {                                                              \
        ZU_ASSERT( ZU___INT_UNSIGNED_ADD_OK( bitOffset, bitCount ) ); \
        ZU_ASSERT( bitOffset + bitCount <= src->bitLength );          \
    } while ( 0 )
// Asserts that the `bitCount` bits from `bitIdx` on are in `*buf`.
#define BUFFER_ASSERT_PLACE( buf, bitIdx, bitCount )               \
    do {                                                           \
        ZU_ASSERT( ZU___INT_UNSIGNED_ADD_OK( bitIdx, bitCount ) ); \
        ZU_ASSERT( bitIdx + bitCount <= (*buf)->bitLength );       \
    } while ( 0 )

// A range of a buffer
void zu___BufferInsertRange( ZU_BUFFER **buf, UINT bitIdx, ZU_BUFFER *src, UINT bitOffset, UINT bitCount )
{
    BUFFER_ASSERT_RANGE( src, bitOffset, bitCount );
    bufferInsert( buf, bitIdx, bitCount, src == *buf,
                  [ = ]( uint8_t *bytes ) { bitsCopy( bytes, bitIdx, bufferContent( src ), bitOffset, bitCount ); } );
}
void zu___BufferWriteRange( ZU_BUFFER **buf, UINT bitIdx, ZU_BUFFER *src, UINT bitOffset, UINT bitCount )
{
    BUFFER_ASSERT_RANGE( src, bitOffset, bitCount );
    BUFFER_ASSERT_PLACE( buf, bitIdx, bitCount );
    bufferWrite( buf, bitCount, src == *buf,
                 [ = ]( uint8_t *bytes ) { bitsCopy( bytes, bitIdx, bufferContent( src ), bitOffset, bitCount ); } );
}

// A buffer without a range
static inline void bufferPutOuter( uint8_t *bytes, UINT bitIdx, ZU_BUFFER *src, UINT bitOffset, UINT bitCount )
{
    UINT behind = bitOffset + bitCount;
    bitsCopy( bytes, bitIdx, bufferContent( src ), 0, bitOffset );
    bitsCopy( bytes, bitIdx + bitOffset, bufferContent( src ), behind, src->bitLength - behind );
}
void zu___BufferInsertOuter( ZU_BUFFER **buf, UINT bitIdx, ZU_BUFFER *src, UINT bitOffset, UINT bitCount )
{
    BUFFER_ASSERT_RANGE( src, bitOffset, bitCount );
    bufferInsert( buf, bitIdx, src->bitLength - bitCount, src == *buf,
                  [ = ]( uint8_t *bytes ) { bufferPutOuter( bytes, bitIdx, src, bitOffset, bitCount ); } );
}
void zu___BufferWriteOuter( ZU_BUFFER **buf, UINT bitIdx, ZU_BUFFER *src, UINT bitOffset, UINT bitCount )
{
    BUFFER_ASSERT_RANGE( src, bitOffset, bitCount );
    ZU_ASSERT( ZU___INT_UNSIGNED_ADD_OK( bitIdx, src->bitLength - bitCount ) );
    ZU_ASSERT( bitIdx + (src->bitLength - bitCount) <= (*buf)->bitLength );
    bufferWrite( buf, src->bitLength - bitCount, src == *buf,
                 [ = ]( uint8_t *bytes ) { bufferPutOuter( bytes, bitIdx, src, bitOffset, bitCount ); } );
}

// The low bits of a number
void zu___BufferInsertBits( ZU_BUFFER **buf, UINT bitIdx, uint64_t bits, UINT bitCount )
{
    ZU_ASSERT( bitCount <= ZU_INT_BITS );
    bufferInsert( buf, bitIdx, bitCount, false, [ = ]( uint8_t *bytes ) { bitsPut( bytes, bitIdx, bits, bitCount ); } );
}
void zu___BufferWriteBits( ZU_BUFFER **buf, UINT bitIdx, uint64_t bits, UINT bitCount )
{
    ZU_ASSERT( bitCount <= ZU_INT_BITS );
    BUFFER_ASSERT_PLACE( buf, bitIdx, bitCount );
    bufferWrite( buf, bitCount, false, [ = ]( uint8_t *bytes ) { bitsPut( bytes, bitIdx, bits, bitCount ); } );
}

// Memory
void zu___BufferInsertBytes( ZU_BUFFER **buf, UINT bitIdx, const uint8_t *memory, UINT byteCount )
{
    bufferInsert( buf, bitIdx, BYTES_TO_BITS( byteCount ), zu___BufferHolds( *buf, memory ),
                  [ = ]( uint8_t *bytes ) { bitsCopy( bytes, bitIdx, memory, 0, BYTES_TO_BITS( byteCount ) ); } );
}
void zu___BufferWriteBytes( ZU_BUFFER **buf, UINT bitIdx, const uint8_t *memory, UINT byteCount )
{
    ZU_ASSERT( ZU___INT_UNSIGNED_ADD_OK( bitIdx, BYTES_TO_BITS( byteCount ) ) );
    ZU_ASSERT( bitIdx + BYTES_TO_BITS( byteCount ) <= (*buf)->bitLength );
    bufferWrite( buf, BYTES_TO_BITS( byteCount ), zu___BufferHolds( *buf, memory ),
                 [ = ]( uint8_t *bytes ) { bitsCopy( bytes, bitIdx, memory, 0, BYTES_TO_BITS( byteCount ) ); } );
}

// Equal bits
void zu___BufferInsertFill( ZU_BUFFER **buf, UINT bitIdx, UINT bitCount, uint8_t value )
{
    bufferInsert( buf, bitIdx, bitCount, false,
                  [ = ]( uint8_t *bytes ) { bitsFill( bytes, bitIdx, bitCount, value ); } );
}
void zu___BufferWriteFill( ZU_BUFFER **buf, UINT bitIdx, UINT bitCount, uint8_t value )
{
    BUFFER_ASSERT_PLACE( buf, bitIdx, bitCount );
    bufferWrite( buf, bitCount, false, [ = ]( uint8_t *bytes ) { bitsFill( bytes, bitIdx, bitCount, value ); } );
}

// Creation
ZU_BUFFER *zuBufferCreate( void )
{
    return zuBufferRetain( emptyBuffer );
}

// Returns a new buffer with a content of `bitLength` bits, which are whole bytes and left to the caller.
static inline ZU_BUFFER *bufferCreateOfLength( UINT bitLength )
{
    if ( bitLength == 0 || bitLength > BYTES_TO_BITS( BEHIND_MAX ) ) {
        ZU_BUFFER *buf = bufferCreateEmpty();
        bufferMakeRoom( &buf, 0, bitLength );
        return buf;
    }
    UINT sizeBytes = bufferStorageSize( bitLength, ZU_BUFFER_FSPACE + ZU_BUFFER_BSPACE );
    ZU_BUFFER *buf = bufferCreateEmpty( sizeBytes );
    bufferTakeFirstRoom( buf, (uint8_t *)( buf + 1 ), sizeBytes, bitLength );
    buf->blockBehind = true;
    return buf;
}
static ZU_BUFFER *bufferCreateCopy( const uint8_t *content, UINT bitLength )
{
    ZU_BUFFER *buf = bufferCreateOfLength( bitLength );
    bitsCopy( bufferContent( buf ), 0, content, 0, bitLength );
    return buf;
}
ZU_BUFFER *zu___BufferCreateWithRoom( ZU_INT byteCount )
{
    ZU_ASSERT( BYTES_TO_BITS_OK( byteCount ) );
    ZU_BUFFER *buf = bufferCreateOfLength( BYTES_TO_BITS( byteCount ) );
    buf->bitBspace += buf->bitLength;
    buf->bitLength = 0;
    return buf;
}
ZU_BUFFER *zuBufferCreateFrom( ZU_BUFFER *src )
{
    ZU_ASSERT( src );
    if ( BIT_AT_BOUND( src->bitLength ) ) {
        return bufferCreateCopy( bufferContent( src ), src->bitLength );
    }
    ZU_BUFFER *buf = bufferCreateEmpty();
    zu___BufferInsertRange( &buf, 0, src, 0, src->bitLength );
    return buf;
}
ZU_BUFFER *zuBufferCreateFromBits( ZU_INT bits, ZU_INT bitCount )
{
    BUFFER_ASSERT_BITS( bitCount );
    ZU_BUFFER *buf = bufferCreateEmpty();
    zu___BufferInsertBits( &buf, 0, (uint64_t)bits, (UINT)bitCount );
    return buf;
}
ZU_BUFFER *zuBufferCreateFromByte( uint8_t byte )
{
    return zuBufferCreateFromBits( byte, 8 );
}
ZU_BUFFER *zuBufferCreateFromBytesCopy( const uint8_t *bytes, ZU_INT byteCount )
{
    BUFFER_ASSERT_BYTES( byteCount );
    ZU_ASSERT( bytes || !byteCount );
    return bufferCreateCopy( bytes, BYTES_TO_BITS( byteCount ) );
}
ZU_BUFFER *zuBufferCreateFromBytesUse( uint8_t *bytes, ZU_INT byteCount )
{
    BUFFER_ASSERT_BYTES( byteCount );
    ZU_ASSERT( bytes || !byteCount );
    ZU_ASSERT( ZU___INT_UNSIGNED_TO_ZU_INT_CONV_OK( BYTES_TO_BITS( byteCount ) ) );
    ZU_BUFFER *buf = bufferCreateEmpty();
    buf->bytes = bytes;
    bufferSetBlock( buf, bytes, (UINT)byteCount );
    buf->bitLength = BYTES_TO_BITS( byteCount );
    zu___ObjDeclareAllocationSizePrivate( &buf->obj, byteCount );
    return buf;
}
ZU_BUFFER *zuBufferCreateFromBytesUseWithRef( const uint8_t *bytes, ZU_INT byteCount, ZU_OBJ *ref )
{
    BUFFER_ASSERT_BYTES( byteCount );
    ZU_ASSERT( bytes || !byteCount );
    ZU_ASSERT( ZU___INT_UNSIGNED_TO_ZU_INT_CONV_OK( BYTES_TO_BITS( byteCount ) ) );
    ZU_ASSERT( ref );
    ZU_BUFFER *buf = bufferCreateEmpty();
    buf->bytes = const_cast<uint8_t *>( bytes ); // never written to while `ref` is set
    buf->bitLength = BYTES_TO_BITS( byteCount );
    buf->ref = zuObjRetain( ref );
    return buf;
}

// Reading
static ZU_BUFFER *bufferRead( ZU_BUFFER *buf, UINT bitIdx, UINT bitCount )
{
    ZU_ASSERT( ZU___INT_UNSIGNED_ADD_OK( bitIdx, bitCount ) );
    ZU_ASSERT( bitIdx + bitCount <= buf->bitLength );
    if ( BIT_AT_BOUND( bitIdx | bitCount ) ) {
        return bufferCreateCopy( bufferContent( buf ) + ( bitIdx >> 3 ), bitCount );
    }
    ZU_BUFFER *range = bufferCreateEmpty();
    zu___BufferInsertRange( &range, 0, buf, bitIdx, bitCount );
    return range;
}
static uint64_t bufferReadBits( ZU_BUFFER *buf, UINT bitIdx, UINT bitCount )
{
    ZU_ASSERT( bitCount <= ZU_INT_BITS );
    ZU_ASSERT( ZU___INT_UNSIGNED_ADD_OK( bitIdx, bitCount ) );
    ZU_ASSERT( bitIdx + bitCount <= buf->bitLength );
    return bitsGet( bufferContent( buf ), bitIdx, bitCount );
}
static void bufferReadBytes( ZU_BUFFER *buf, UINT bitIdx, uint8_t *bytes, UINT byteCount )
{
    ZU_ASSERT( ZU___INT_UNSIGNED_ADD_OK( bitIdx, BYTES_TO_BITS( byteCount ) ) );
    ZU_ASSERT( bitIdx + BYTES_TO_BITS( byteCount ) <= buf->bitLength );
    bitsCopy( bytes, 0, bufferContent( buf ), bitIdx, BYTES_TO_BITS( byteCount ) );
}

ZU_BUFFER *zuBufferRead( ZU_BUFFER *buf, ZU_INT byteIdx, ZU_INT byteCount )
{
    ZU_ASSERT( buf );
    BUFFER_ASSERT_BYTES( byteIdx );
    BUFFER_ASSERT_BYTES( byteCount );
    return bufferRead( buf, BYTES_TO_BITS( byteIdx ), BYTES_TO_BITS( byteCount ) );
}
ZU_INT zuBufferReadBits( ZU_BUFFER *buf, ZU_INT byteIdx, ZU_INT bitCount )
{
    ZU_ASSERT( buf );
    BUFFER_ASSERT_BYTES( byteIdx );
    BUFFER_ASSERT_BITS( bitCount );
    return (ZU_INT)bufferReadBits( buf, BYTES_TO_BITS( byteIdx ), (UINT)bitCount );
}
uint8_t zuBufferReadByte( ZU_BUFFER *buf, ZU_INT byteIdx )
{
    ZU_ASSERT( buf );
    BUFFER_ASSERT_BYTES( byteIdx );
    return (uint8_t)bufferReadBits( buf, BYTES_TO_BITS( byteIdx ), 8 );
}
void zuBufferReadBytes( ZU_BUFFER *buf, ZU_INT byteIdx, uint8_t *bytes, ZU_INT byteCount )
{
    ZU_ASSERT( buf );
    BUFFER_ASSERT_BYTES( byteIdx );
    BUFFER_ASSERT_BYTES( byteCount );
    ZU_ASSERT( bytes || !byteCount );
    bufferReadBytes( buf, BYTES_TO_BITS( byteIdx ), bytes, (UINT)byteCount );
}

ZU_BUFFER *zuBufferBitRead( ZU_BUFFER *buf, ZU_INT bitIdx, ZU_INT bitCount )
{
    ZU_ASSERT( buf );
    BUFFER_ASSERT_BITS( bitIdx );
    BUFFER_ASSERT_BITS( bitCount );
    return bufferRead( buf, (UINT)bitIdx, (UINT)bitCount );
}
ZU_INT zuBufferBitReadBits( ZU_BUFFER *buf, ZU_INT bitIdx, ZU_INT bitCount )
{
    ZU_ASSERT( buf );
    BUFFER_ASSERT_BITS( bitIdx );
    BUFFER_ASSERT_BITS( bitCount );
    return (ZU_INT)bufferReadBits( buf, (UINT)bitIdx, (UINT)bitCount );
}
uint8_t zuBufferBitReadByte( ZU_BUFFER *buf, ZU_INT bitIdx )
{
    ZU_ASSERT( buf );
    BUFFER_ASSERT_BITS( bitIdx );
    return (uint8_t)bufferReadBits( buf, (UINT)bitIdx, 8 );
}
void zuBufferBitReadBytes( ZU_BUFFER *buf, ZU_INT bitIdx, uint8_t *bytes, ZU_INT byteCount )
{
    ZU_ASSERT( buf );
    BUFFER_ASSERT_BITS( bitIdx );
    BUFFER_ASSERT_BYTES( byteCount );
    ZU_ASSERT( bytes || !byteCount );
    bufferReadBytes( buf, (UINT)bitIdx, bytes, (UINT)byteCount );
}

// Deletion.  Parts at either end go to the room there wherever that leaves the content on a byte's boundary.
static void bufferDelInner( ZU_BUFFER **buf, UINT bitOffset, UINT bitCount )
{
    ZU_ASSERT( ZU___INT_UNSIGNED_ADD_OK( bitOffset, bitCount ) );
    ZU_ASSERT( bitOffset + bitCount <= (*buf)->bitLength );
    if ( bitCount == 0 ) {
        return;
    }
    if ( bitCount == ( *buf )->bitLength ) {
        zuBufferClear( buf );
        return;
    }
    UINT behind = bitOffset + bitCount;
    UINT behindCount = ( *buf )->bitLength - behind;
    if ( bitOffset == 0 && BIT_AT_BOUND( bitCount ) ) {
        bufferUnshare( buf );
        ( *buf )->bitFspace += bitCount;
    } else if ( behindCount == 0 ) {
        bufferUnshare( buf );
        ( *buf )->bitBspace += bitCount;
    } else if ( BIT_AT_BOUND( bitOffset | bitCount ) ) {
        bufferMakeWritable( buf );
        uint8_t *gap = bufferContent( *buf ) + ( bitOffset >> 3 );
        bitsMove( gap, gap + ( bitCount >> 3 ), behindCount );
        ( *buf )->bitBspace += bitCount;
    } else {
        ZU_BUFFER *rest = bufferCreateEmpty();
        zu___BufferInsertRange( &rest, 0, *buf, 0, bitOffset );
        zu___BufferInsertRange( &rest, bitOffset, *buf, behind, behindCount );
        bufferReplace( buf, rest );
        return;
    }
    ( *buf )->bitLength -= bitCount;
    bufferTrim( *buf );
}
static void bufferDelOuter( ZU_BUFFER **buf, UINT bitOffset, UINT bitCount )
{
    ZU_ASSERT( ZU___INT_UNSIGNED_ADD_OK( bitOffset, bitCount ) );
    ZU_ASSERT( bitOffset + bitCount <= (*buf)->bitLength );
    if ( bitCount == ( *buf )->bitLength ) {
        return;
    }
    if ( bitCount == 0 ) {
        zuBufferClear( buf );
        return;
    }
    if ( !BIT_AT_BOUND( bitOffset ) ) {
        bufferReplace( buf, bufferRead( *buf, bitOffset, bitCount ) );
        return;
    }
    bufferUnshare( buf );
    ( *buf )->bitFspace += bitOffset;
    ( *buf )->bitBspace += ( *buf )->bitLength - bitOffset - bitCount;
    ( *buf )->bitLength = bitCount;
    bufferTrim( *buf );
}
static void bufferDelTrailing( ZU_BUFFER **buf, UINT bitCount )
{
    ZU_ASSERT( bitCount <= (*buf)->bitLength );
    bufferDelInner( buf, ( *buf )->bitLength - bitCount, bitCount );
}

void zuBufferDelInner( ZU_BUFFER **buf, ZU_INT byteOffset, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteOffset );
    BUFFER_ASSERT_BYTES( byteCount );
    bufferDelInner( buf, BYTES_TO_BITS( byteOffset ), BYTES_TO_BITS( byteCount ) );
}
void zuBufferDelOuter( ZU_BUFFER **buf, ZU_INT byteOffset, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteOffset );
    BUFFER_ASSERT_BYTES( byteCount );
    bufferDelOuter( buf, BYTES_TO_BITS( byteOffset ), BYTES_TO_BITS( byteCount ) );
}
void zuBufferDelLeading( ZU_BUFFER **buf, ZU_INT byteCount )
{
    zuBufferDelInner( buf, 0, byteCount );
}
void zuBufferDelTrailing( ZU_BUFFER **buf, ZU_INT byteCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BYTES( byteCount );
    bufferDelTrailing( buf, BYTES_TO_BITS( byteCount ) );
}

void zuBufferBitDelInner( ZU_BUFFER **buf, ZU_INT bitOffset, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BITS( bitOffset );
    BUFFER_ASSERT_BITS( bitCount );
    bufferDelInner( buf, (UINT)bitOffset, (UINT)bitCount );
}
void zuBufferBitDelOuter( ZU_BUFFER **buf, ZU_INT bitOffset, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BITS( bitOffset );
    BUFFER_ASSERT_BITS( bitCount );
    bufferDelOuter( buf, (UINT)bitOffset, (UINT)bitCount );
}
void zuBufferBitDelLeading( ZU_BUFFER **buf, ZU_INT bitCount )
{
    zuBufferBitDelInner( buf, 0, bitCount );
}
void zuBufferBitDelTrailing( ZU_BUFFER **buf, ZU_INT bitCount )
{
    BUFFER_ASSERT_HOLDER( buf );
    BUFFER_ASSERT_BITS( bitCount );
    bufferDelTrailing( buf, (UINT)bitCount );
}
void zuBufferClear( ZU_BUFFER **buf )
{
    BUFFER_ASSERT_HOLDER( buf );
    bufferReplace( buf, zuBufferCreate() );
}
