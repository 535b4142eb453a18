// zu_random.h: random numbers, fit for keys and identities.
//
// They come from the system's cryptographic generator, by way of a pool that the process has: one call of the system
// serves many small requests, and each byte is handed out once.  If the system has none to give, weak ones of the C
// library take their place, and nobody is told.  A process that has been forked shares none with its parent.
//
// All functions are callable from any thread.  A request gets adjacent bytes of the pool, and others wait meanwhile.
#pragma once

#include "zu/base/zu_buffer.h"
#include "zu/base/zu_vector.h"

ZU_BEGIN_DECLS

// Bytes; a negative number aborts
/// Appends `byteCount` random bytes; `*buffer` may be null if that is 0.
ZU_API void zuRandom( ZU_BUFFER **buffer, ZU_INT byteCount );
/// Fills `byteCount` bytes at `bytes`, which may be null if that is 0.
ZU_API void zuRandomBytes( uint8_t *bytes, ZU_INT byteCount );

// Numbers; a byte takes one byte of the pool, each of the others eight
/// Returns 0 to 255.
ZU_API ZU_INT zuRandomByte( void );
/// Returns 0 or 1.
ZU_API ZU_INT zuRandomBit( void );
/// Returns a number of `bitCount` random low bits, 0 to 64, and no others.
ZU_API ZU_INT zuRandomBits( ZU_INT bitCount );
/// Returns any integer, negative ones too.
ZU_API ZU_INT zuRandomInt( void );
/// Returns 0 to ZU_INT_MAX.
ZU_API ZU_INT zuRandomNonNegativeInt( void );
/// Returns a number between `lowVal` and `highVal`, both included; they may come in either order, and a negative one
/// aborts.  It is 63 random bits modulo the size of the range, so that numbers at the low end are more likely unless
/// that is a power of two: nobody will notice it in a range of billions, but in the largest they are twice as likely.
/// Two equal bounds take nothing from the pool.
ZU_API ZU_INT zuRandomNonNegativeIntRange( ZU_INT lowVal, ZU_INT highVal );

// Order
/// Brings the items in an order of which each is as likely as any other.  Unless it is empty, that makes a new object.
ZU_API void zuVectorShuffle( ZU_VECTOR **vec );

// For authors of classes and modules
/// Fills the pool, which is empty; anything else aborts.  Its lock must be held.
ZU_API void zu___RandomFillBuffer( void );
/// Makes the pool.
ZU_API void zu___RandomStartup( void );
/// Releases the pool.
ZU_API void zu___RandomShutdown( void );

ZU_END_DECLS
