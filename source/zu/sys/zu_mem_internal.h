// zu_mem_internal.h: what memory is told of the process, and memory that need not be there.
#pragma once

#include "zu/sys/zu_mem.h"

// Whether fresh memory is to be filled.  Memory lies below the runtime, so the runtime, which has the flags, sets this
// ahead of zu___MemStartup; an allocation tests a word and asks nobody.
extern bool zu___MemDebug;

// Does what zuMemRealloc does, but returns null, with `ptr` as it was, if there is not that much memory: for amounts
// that come from outside.
extern "C" void *zu___MemTryRealloc( void *ptr, ZU_INT newSize );
