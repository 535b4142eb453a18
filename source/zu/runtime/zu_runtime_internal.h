// zu_runtime_internal.h: the process-wide words behind zu_runtime.h.
#pragma once

#include "zu/runtime/zu_runtime.h"

ZU_BEGIN_DECLS

// The flags of the process, normalised.  Stored ahead of all start-up functions, and unchanged until shut-down, so that
// reading them takes no lock.
extern ZU_INT zu___RuntimeFlags;

ZU_END_DECLS
