// The allocator is that of the C library, so that a program may exchange it for all of its parts at once, and tools
// that watch it see everything.  What is added is that no null comes back: no caller has a way on without memory,
// and a report at the place that asked is worth more than a fault at one that did not check.

#include "zu/sys/zu_mem_internal.h"

#include <cstring>

static constexpr uint8_t DEBUG_FILL = 0xFF;

bool zu___MemDebug = false;
bool zu___MemFill = false; // as zu___MemDebug was at start-up

void zu___MemStartup( void )
{
    zu___MemFill = zu___MemDebug;
}
void zu___MemShutdown( void )
{
}

// Allocation
void *zu___MemFinishAlloc( void *res, ZU_INT size )
{
    ZU_ASSERT( res );
    if ( zu___MemFill ) {
        memset( res, DEBUG_FILL, (size_t)size );
    }
    return res;
}
void *zuMemAlloc( ZU_INT size )
{
    ZU_ASSERT( size >= 0 );
    ZU_ASSERT( size > 0 );
    return zu___MemAllocInline( size );
}
void *zuMemAllocN( ZU_INT count, ZU_INT size )
{
    ZU_ASSERT( count >= 0 );
    ZU_ASSERT( count > 0 );
    ZU_ASSERT( size >= 0 );
    ZU_ASSERT( size > 0 );
    ZU_ASSERT( ZU_INT_MUL_OK( count, size ) );
    return zuMemAlloc( count * size );
}
void *zu___MemTryRealloc( void *ptr, ZU_INT newSize )
{
    ZU_ASSERT( newSize >= 0 );
    ZU_ASSERT( newSize > 0 );
    return realloc( ptr, (size_t)newSize );
}
void *zuMemRealloc( void *ptr, ZU_INT newSize )
{
    ZU_ASSERT( newSize >= 0 );
    ZU_ASSERT( newSize > 0 );
    void *res = realloc( ptr, (size_t)newSize );
    ZU_ASSERT( res );
    return res;
}
void *zuMemReallocN( void *ptr, ZU_INT count, ZU_INT size )
{
    ZU_ASSERT( count >= 0 );
    ZU_ASSERT( count > 0 );
    ZU_ASSERT( size >= 0 );
    ZU_ASSERT( size > 0 );
    ZU_ASSERT( ZU_INT_MUL_OK( count, size ) );
    return zuMemRealloc( ptr, count * size );
}
void zuMemFree( void *ptr )
{
    free( ptr );
}

// Duplication
void *zuMemDup( const void *ptr, ZU_INT size )
{
    void *copy = zuMemAlloc( size );
    zuMemCopy( copy, ptr, size );
    return copy;
}
void *zuMemDupN( const void *ptr, ZU_INT count, ZU_INT size )
{
    ZU_ASSERT( count >= 0 );
    ZU_ASSERT( size >= 0 );
    ZU_ASSERT( ZU_INT_MUL_OK( count, size ) );
    return zuMemDup( ptr, count * size );
}
char *zuMemDupCstr( const char *src, ZU_INT srcLength )
{
    ZU_ASSERT( srcLength >= -1 );
    ZU_ASSERT( src || srcLength == 0 );
    if ( srcLength == -1 ) {
        size_t size = strlen( src );
        ZU_ASSERT( ZU_INT_FROM_SIZET_CONV_OK( size ) );
        srcLength = (ZU_INT)size;
    }
    ZU_ASSERT( ZU_INT_ADD_OK( srcLength, 1 ) );
    char *copy = (char *)zuMemAlloc( srcLength + 1 );
    zuMemCopy( copy, src, srcLength );
    copy[ srcLength ] = 0;
    return copy;
}

// Blocks.  The C functions may not see a null pointer, not even with a size of 0.
void zuMemCopy( void *dest, const void *src, ZU_INT size )
{
    ZU_ASSERT( size >= 0 );
    ZU_ASSERT( size == 0 || dest );
    ZU_ASSERT( size == 0 || src );
    if ( size > 0 ) {
        memcpy( dest, src, (size_t)size );
    }
}
void zuMemCopyN( void *dest, const void *src, ZU_INT count, ZU_INT size )
{
    ZU_ASSERT( count >= 0 );
    ZU_ASSERT( size >= 0 );
    ZU_ASSERT( ZU_INT_MUL_OK( count, size ) );
    zuMemCopy( dest, src, count * size );
}
void zuMemMove( void *dest, const void *src, ZU_INT size )
{
    ZU_ASSERT( size >= 0 );
    ZU_ASSERT( size == 0 || dest );
    ZU_ASSERT( size == 0 || src );
    if ( size > 0 ) {
        memmove( dest, src, (size_t)size );
    }
}
void zuMemMoveN( void *dest, const void *src, ZU_INT count, ZU_INT size )
{
    ZU_ASSERT( count >= 0 );
    ZU_ASSERT( size >= 0 );
    ZU_ASSERT( ZU_INT_MUL_OK( count, size ) );
    zuMemMove( dest, src, count * size );
}
void zuMemSet( void *ptr, uint8_t value, ZU_INT size )
{
    ZU_ASSERT( size >= 0 );
    ZU_ASSERT( ptr || size == 0 );
    if ( size > 0 ) {
        memset( ptr, value, (size_t)size );
    }
}
void zuMemSetN( void *ptr, uint8_t value, ZU_INT count, ZU_INT size )
{
    ZU_ASSERT( count >= 0 );
    ZU_ASSERT( size >= 0 );
    ZU_ASSERT( ZU_INT_MUL_OK( count, size ) );
    zuMemSet( ptr, value, count * size );
}
ZU_INT zuMemCompare( const void *a, const void *b, ZU_INT size )
{
    ZU_ASSERT( size >= 0 );
    ZU_ASSERT( size == 0 || a );
    ZU_ASSERT( size == 0 || b );
    int order = size == 0 ? 0 : memcmp( a, b, (size_t)size );
    return ( order > 0 ) - ( order < 0 );
}
ZU_INT zuMemCompareN( const void *a, const void *b, ZU_INT count, ZU_INT size )
{
    ZU_ASSERT( count >= 0 );
    ZU_ASSERT( size >= 0 );
    ZU_ASSERT( ZU_INT_MUL_OK( count, size ) );
    return zuMemCompare( a, b, count * size );
}
