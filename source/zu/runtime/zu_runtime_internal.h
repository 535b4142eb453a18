// zu_runtime_internal.h: the process-wide words behind zu_runtime.h.
#pragma once

#include "zu/runtime/zu_runtime.h"
#include "zu/sys/zu_lock.h"

ZU_BEGIN_DECLS

// The flags of the process, normalised.  Stored ahead of all start-up functions, and unchanged until shut-down, so that
// reading them takes no lock.
extern ZU_INT zu___RuntimeFlags;

// How long unloading waits for the objects of one module, in milliseconds.
extern ZU_INT zu___RuntimeUnloadModuleTimeout;

// Where output goes, null: nowhere.  The lock is held while the function runs.
extern ZU___LOCK zu___RuntimePrintLock;
extern ZU_RUNTIME_PRINT_FUNC zu___RuntimePrintFunc;

ZU_END_DECLS
