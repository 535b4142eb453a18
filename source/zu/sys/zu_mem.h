// zu_mem.h: the process heap and operations on blocks of memory.
//
// Sizes are in bytes; the forms whose names end in N take a count of elements and the size of one, and check the
// product.  An allocation never returns null: an exhausted heap aborts.  A block is freed by zuMemFree, whichever
// function made it.  All functions are callable from any thread.
#pragma once

#include "zu/sys/zu_int.h"

ZU_BEGIN_DECLS

// Allocation; a size or count of 0 aborts
/// Returns a new block of `size` bytes, which are filled with 0xFF under ZU_RUNTIME_FLAG_MEMORY_DEBUG.
ZU_API void *zuMemAlloc( ZU_INT size );
/// Returns a new block of `count` elements of `size` bytes, likewise.
ZU_API void *zuMemAllocN( ZU_INT count, ZU_INT size );
/// Returns the block `ptr` with its size changed to `newSize`, in a new place where need be; null makes a new block.
ZU_API void *zuMemRealloc( void *ptr, ZU_INT newSize );
/// Returns the block `ptr` resized to `count` elements of `size` bytes, likewise.
ZU_API void *zuMemReallocN( void *ptr, ZU_INT count, ZU_INT size );
/// Frees the block `ptr`; null is skipped.
ZU_API void zuMemFree( void *ptr );

// Duplication into a new block
/// Returns a copy of the `size` bytes at `ptr`.
ZU_API void *zuMemDup( const void *ptr, ZU_INT size );
/// Returns a copy of the `count` elements of `size` bytes at `ptr`.
ZU_API void *zuMemDupN( const void *ptr, ZU_INT count, ZU_INT size );
/// Returns a copy of the `srcLength` bytes at `src` with a 0 byte behind them; -1 measures to the 0 byte that ends
/// `src`.
ZU_API char *zuMemDupCstr( const char *src, ZU_INT srcLength );

// Blocks; pointers may be null where nothing is read or written
/// Copies `size` bytes; the blocks must not overlap.
ZU_API void zuMemCopy( void *dest, const void *src, ZU_INT size );
/// Copies `count` elements of `size` bytes, likewise.
ZU_API void zuMemCopyN( void *dest, const void *src, ZU_INT count, ZU_INT size );
/// Copies `size` bytes; the blocks may overlap.
ZU_API void zuMemMove( void *dest, const void *src, ZU_INT size );
/// Copies `count` elements of `size` bytes, likewise.
ZU_API void zuMemMoveN( void *dest, const void *src, ZU_INT count, ZU_INT size );
/// Sets `size` bytes to `value`.
ZU_API void zuMemSet( void *ptr, uint8_t value, ZU_INT size );
/// Sets the bytes of `count` elements of `size` bytes to `value`.
ZU_API void zuMemSetN( void *ptr, uint8_t value, ZU_INT count, ZU_INT size );
/// Compares `size` bytes as unsigned numbers: -1, 0 or 1.
ZU_API ZU_INT zuMemCompare( const void *a, const void *b, ZU_INT size );
/// Compares the bytes of `count` elements of `size` bytes, likewise.
ZU_API ZU_INT zuMemCompareN( const void *a, const void *b, ZU_INT count, ZU_INT size );

// For authors of classes and modules
/// Reads from the runtime flags whether new blocks are filled.
ZU_API void zu___MemStartup( void );
/// Ends what zu___MemStartup began.
ZU_API void zu___MemShutdown( void );

ZU_END_DECLS
