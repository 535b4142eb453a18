// A call of the system costs several times what handing out eight bytes does, so that a pool stands between the two: 128
// bytes, for which the system takes little longer than for a few.  It is a buffer of which the front goes; its storage
// is used over and over, so that no object is made while others wait.  What has been handed out is wiped: it is the
// caller's secret, and no business of a later look at memory.
//
// A forked child has what its parent had, so the pool is emptied there.

#include "zu/base/zu_random.h"

#include "zu/base/zu_buffer_internal.h"
#include "zu/base/zu_random_internal.h"
#include "zu/base/zu_threading_fork_internal.h"
#include "zu/base/zu_time_internal.h"
#include "zu/base/zu_vector_internal.h"
#include "zu/sys/zu_mem.h"

#include <cstdlib>
#include <cstring>
#include <utility>

static constexpr ZU_INT POOL_BYTES = 128;

static ZU_MONITOR *randomMonitor = nullptr;    // guards the pool; null while there is none
static ZU_BUFFER *zu___RandomBuffer = nullptr; // the bytes that nobody has had yet, in storage of POOL_BYTES

// Storage.  The content is moved by its bounds alone.
static inline ZU_INT randomPooledLocked()
{
    return (ZU_INT)( zu___RandomBuffer->bitLength / 8 );
}
static void randomSetPooledLocked( ZU_INT byteCount )
{
    zu___RandomBuffer->bitLength = (ZU___INT_UNSIGNED)byteCount * 8;
    zu___RandomBuffer->bitFspace = (ZU___INT_UNSIGNED)( POOL_BYTES - byteCount ) * 8;
}

void zu___RandomFillBuffer( void )
{
    ZU_ASSERT( !zuBufferLength( zu___RandomBuffer ) );
    randomSetPooledLocked( POOL_BYTES );
    if ( !zu___RandomTryFillStrong( zu___RandomBuffer->bytes, POOL_BYTES ) ) {
        for ( ZU_INT i = 0; i < POOL_BYTES; i++ ) {
            zu___RandomBuffer->bytes[ i ] = (uint8_t)rand();
        }
    }
}

void zu___RandomFork( ZU___FORK_STEP step )
{
    if ( step == ZU___FORK_CHILD ) {
        memset( zu___RandomBuffer->bytes, 0, POOL_BYTES );
        randomSetPooledLocked( 0 );
    }
    zu___MonitorFork( randomMonitor, step );
}

// Start-up
void zu___RandomStartup( void )
{
    zu___RandomBuffer = zuBufferCreateFromBytesUse( (uint8_t *)zuMemAlloc( POOL_BYTES ), POOL_BYTES );
    randomSetPooledLocked( 0 );
    srand( (unsigned)zu___TimeWallClock() );
    zu___RandomFillBuffer();
    randomMonitor = zuMonitorCreate();
}
void zu___RandomShutdown( void )
{
    ZU_REF_RELEASE( randomMonitor );
    ZU_REF_POISON( randomMonitor );
    memset( zu___RandomBuffer->bytes, 0, POOL_BYTES );
    ZU_REF_RELEASE( zu___RandomBuffer );
    ZU_REF_POISON( zu___RandomBuffer );
}

// Drawing

// Hands `byteCount` bytes to `take`, in pieces that follow each other.
template <typename TAKE>
static inline void randomDraw( ZU_INT byteCount, TAKE take )
{
    zuMonitorEnter( randomMonitor );
    while ( byteCount > 0 ) {
        if ( randomPooledLocked() == 0 ) {
            zu___RandomFillBuffer();
        }
        ZU_INT pooled = randomPooledLocked();
        ZU_INT count = byteCount < pooled ? byteCount : pooled;
        uint8_t *piece = zu___RandomBuffer->bytes + ( POOL_BYTES - pooled );
        take( piece, count );
        memset( piece, 0, (size_t)count );
        randomSetPooledLocked( pooled - count );
        byteCount -= count;
    }
    zuMonitorLeave( randomMonitor );
}

void zuRandom( ZU_BUFFER **buffer, ZU_INT byteCount )
{
    ZU_ASSERT( buffer );
    ZU_ASSERT( byteCount >= 0 );
    ZU_ASSERT( *buffer || byteCount == 0 );
    if ( byteCount == 0 ) {
        return;
    }
    // All room is made ahead, so that nothing but bytes moves inside the monitor.
    ZU_INT bitIdx = zuBufferBitLength( *buffer );
    zuBufferAppendZero( buffer, byteCount );
    randomDraw( byteCount, [ & ]( const uint8_t *piece, ZU_INT count ) {
        zuBufferBitWriteBytes( buffer, bitIdx, piece, count );
        bitIdx += count * 8;
    } );
}
void zuRandomBytes( uint8_t *bytes, ZU_INT byteCount )
{
    ZU_ASSERT( byteCount >= 0 );
    ZU_ASSERT( bytes || byteCount == 0 );
    if ( byteCount == 0 ) {
        return;
    }
    randomDraw( byteCount, [ & ]( const uint8_t *piece, ZU_INT count ) {
        memcpy( bytes, piece, (size_t)count );
        bytes += count;
    } );
}

// Numbers
ZU_INT zuRandomByte( void )
{
    uint8_t byte;
    zuRandomBytes( &byte, sizeof byte );
    return byte;
}
ZU_INT zuRandomBit( void )
{
    return zuRandomBits( 1 );
}
ZU_INT zuRandomBits( ZU_INT bitCount )
{
    ZU_ASSERT( bitCount >= 0 );
    ZU_ASSERT( bitCount <= ZU_INT_BITS );
    ZU_INT word = zuRandomInt();
    return bitCount < ZU_INT_BITS ? zuIntBitClearHighest( word, ZU_INT_BITS - bitCount ) : word;
}
ZU_INT zuRandomInt( void )
{
    ZU_INT word;
    zuRandomBytes( (uint8_t *)&word, sizeof word );
    return word;
}
ZU_INT zuRandomNonNegativeInt( void )
{
    return zuRandomBits( ZU_INT_BITS - 1 );
}
ZU_INT zuRandomNonNegativeIntRange( ZU_INT lowVal, ZU_INT highVal )
{
    ZU_ASSERT( lowVal >= 0 );
    ZU_ASSERT( highVal >= 0 );
    if ( lowVal == highVal ) {
        return lowVal;
    }
    zuIntSortPair( &lowVal, &highVal );
    if ( lowVal == 0 && highVal == ZU_INT_MAX ) {
        return zuRandomNonNegativeInt();
    }
    return lowVal + zuRandomNonNegativeInt() % ( highVal - lowVal + 1 );
}

// Order

// Each place gets an item drawn from those that are left, which are kept together by an exchange (Durstenfeld, "Random
// permutation", Communications of the ACM 7/7, 1964).
void zuVectorShuffle( ZU_VECTOR **vec )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( *vec );
    ZU_VECTOR *shuffled = zuVectorCreate();
    zuVectorAppend( &shuffled, *vec );
    ZU_OBJ **items = shuffled->items + shuffled->fspace;
    for ( ZU_INT left = shuffled->length; left > 0; left--, items++ ) {
        std::swap( items[ 0 ], items[ zuRandomNonNegativeIntRange( 0, left - 1 ) ] );
    }
    ZU_VECTOR *old = *vec;
    *vec = shuffled;
    ZU_REF_RELEASE( old );
}
