// zu_mem_internal.h: what memory is told of the process.
#pragma once

#include "zu/sys/zu_mem.h"

// Whether fresh memory is to be filled.  Memory lies below the runtime, so the runtime, which has the flags, sets this
// ahead of zu___MemStartup; an allocation tests a word and asks nobody.
extern bool zu___MemDebug;
