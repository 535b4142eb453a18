#include "zu/runtime/zu_runtime_flags.h"

#include "zu/base/zu_flagset_internal.h"

// Flags that stand by themselves; the others need company.
static constexpr ZU_INT INDEPENDENT_FLAGS = ZU_RUNTIME_FLAG_SYSTEM | ZU_RUNTIME_FLAG_MEMORY_DEBUG |
                                            ZU_RUNTIME_FLAG_OBJECT_DATABASE | ZU_RUNTIME_FLAG_NO_EXCEPTION_HANDLERS |
                                            ZU_RUNTIME_FLAG_IMPLICIT_MODULE_PATH | ZU_RUNTIME_FLAG_MODULE_DEBUG;
static constexpr ZU_INT DATABASE_FLAGS =
    ZU_RUNTIME_FLAG_OBJECT_ORIGIN | ZU_RUNTIME_FLAG_SNAPSHOT_SORT | ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT;
static constexpr ZU_INT SNAPSHOT_OBJECT_FLAGS =
    ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT_TOSTRING | ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT_LOG;

static constexpr ZU___NAMED_VALUE NAMES[] = {
    ZU___NAMED_VALUE_OF( ZU_RUNTIME_FLAG_MINIMAL ),
    ZU___NAMED_VALUE_OF( ZU_RUNTIME_FLAG_SYSTEM ),
    ZU___NAMED_VALUE_OF( ZU_RUNTIME_FLAG_MEMORY_DEBUG ),
    ZU___NAMED_VALUE_OF( ZU_RUNTIME_FLAG_OBJECT_DATABASE ),
    ZU___NAMED_VALUE_OF( ZU_RUNTIME_FLAG_OBJECT_ORIGIN ),
    ZU___NAMED_VALUE_OF( ZU_RUNTIME_FLAG_SNAPSHOT_SORT ),
    ZU___NAMED_VALUE_OF( ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT ),
    ZU___NAMED_VALUE_OF( ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT_TOSTRING ),
    ZU___NAMED_VALUE_OF( ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT_LOG ),
    ZU___NAMED_VALUE_OF( ZU_RUNTIME_FLAG_NO_EXCEPTION_HANDLERS ),
    ZU___NAMED_VALUE_OF( ZU_RUNTIME_FLAG_IMPLICIT_MODULE_PATH ),
    ZU___NAMED_VALUE_OF( ZU_RUNTIME_FLAG_MODULE_DEBUG ),
};
static ZU_FLAGSET *zu___RuntimeFlagsFlagset = nullptr;

// Start-up
void zu___RuntimeFlagsStartup( void )
{
    zu___RuntimeFlagsFlagset = ZU___FLAGSET_CREATE( zu___RuntimeFlagsFlagset, NAMES );
}
void zu___RuntimeFlagsShutdown( void )
{
    ZU_REF_RELEASE( zu___RuntimeFlagsFlagset );
    ZU_REF_POISON( zu___RuntimeFlagsFlagset );
}

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
ZU_INT zuRuntimeFlagsFromString( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return zuRuntimeFlagsNormalize( zuFlagsetParse( zu___RuntimeFlagsFlagset, zus ) );
}
ZU_STRING *zuRuntimeFlagsToString( ZU_INT flags )
{
    return zuFlagsetGenerate( zu___RuntimeFlagsFlagset, zuRuntimeFlagsNormalize( flags ) );
}
