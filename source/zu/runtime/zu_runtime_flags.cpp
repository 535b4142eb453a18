#include "zu/runtime/zu_runtime_flags.h"

// Flags that stand by themselves; the others need company.
static constexpr ZU_INT INDEPENDENT_FLAGS = ZU_RUNTIME_FLAG_SYSTEM | ZU_RUNTIME_FLAG_MEMORY_DEBUG |
                                            ZU_RUNTIME_FLAG_OBJECT_DATABASE | ZU_RUNTIME_FLAG_NO_EXCEPTION_HANDLERS |
                                            ZU_RUNTIME_FLAG_IMPLICIT_MODULE_PATH | ZU_RUNTIME_FLAG_MODULE_DEBUG;
static constexpr ZU_INT DATABASE_FLAGS =
    ZU_RUNTIME_FLAG_OBJECT_ORIGIN | ZU_RUNTIME_FLAG_SNAPSHOT_SORT | ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT;
static constexpr ZU_INT SNAPSHOT_OBJECT_FLAGS =
    ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT_TOSTRING | ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT_LOG;

ZU_INT zuRuntimeFlagsNormalize( ZU_INT flags )
{
    if ( flags & ZU_RUNTIME_FLAG_MINIMAL ) {
        return ZU_RUNTIME_FLAG_MINIMAL;
    }
    ZU_INT kept = INDEPENDENT_FLAGS;
    if ( flags & ZU_RUNTIME_FLAG_OBJECT_DATABASE ) {
        kept |= DATABASE_FLAGS;
        if ( flags & ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT ) {
            kept |= SNAPSHOT_OBJECT_FLAGS;
        }
    }
    return flags & kept;
}
