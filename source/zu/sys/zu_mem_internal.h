// zu_mem_internal.h: what memory is told of the process, and memory that need not be there.
#pragma once

#include "zu/sys/zu_mem.h"

#include <cstdlib>

// Whether fresh memory is to be filled.  Memory lies below the runtime, so the runtime, which has the flags, sets this
// ahead of zu___MemStartup; an allocation tests a word and asks nobody.
extern bool zu___MemDebug;

// Does what zuMemRealloc does, but returns null, with `ptr` as it was, if there is not that much memory: for amounts
// that come from outside.
extern "C" void *zu___MemTryRealloc( void *ptr, ZU_INT newSize );

// Whether fresh memory is filled.
extern bool zu___MemFill;
// Checks and, if need be, fills fresh memory.
void *zu___MemFinishAlloc( void *res, ZU_INT size );

// What zuMemAlloc and zuMemFree do, for objects, which come and go faster than anything else.
static inline void *zu___MemAllocInline( ZU_INT size )
{
    if ( ZU___UNLIKELY( size <= 0 ) ) {
        return zuMemAlloc( size ); // which does not return
    }
    void *fresh = malloc( (size_t)size );
    return ZU___LIKELY( fresh && !zu___MemFill ) ? fresh : zu___MemFinishAlloc( fresh, size );
}
static inline void zu___MemFreeInline( void *ptr )
{
    free( ptr );
}
