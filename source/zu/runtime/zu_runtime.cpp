#include "zu/runtime/zu_runtime.h"

#include "zu/base/zu_boxed_bool.h"
#include "zu/base/zu_boxed_null.h"
#include "zu/base/zu_buffer.h"
#include "zu/base/zu_dict.h"
#include "zu/base/zu_format.h"
#include "zu/base/zu_format_flags.h"
#include "zu/base/zu_generation.h"
#include "zu/base/zu_stack_trace.h"
#include "zu/base/zu_store.h"
#include "zu/base/zu_string.h"
#include "zu/base/zu_time.h"
#include "zu/base/zu_timestamp.h"
#include "zu/base/zu_vector.h"
#include "zu/charset/zu_charset.h"
#include "zu/charset/zu_charset_flags.h"
#include "zu/io/zu_debug_print.h"
#include "zu/io/zu_nlf_flags.h"
#include "zu/runtime/zu_obj.h"
#include "zu/runtime/zu_runtime_internal.h"
#include "zu/runtime/zu_runtime_version.h"
#include "zu/sys/zu_mem.h"
#include "zu/sys/zu_unique.h"

static constexpr ZU_INT DEFAULT_UNLOAD_MODULE_TIMEOUT = 60000; // milliseconds

ZU_INT zu___RuntimeFlags = 0;
ZU_INT zu___RuntimeUnloadModuleTimeout = DEFAULT_UNLOAD_MODULE_TIMEOUT;
ZU___LOCK zu___RuntimePrintLock;
ZU_RUNTIME_PRINT_FUNC zu___RuntimePrintFunc = nullptr;

// Start and stop
//
// The version comes first of all and goes last of all; it takes the application's texts and so stands outside the table.
// The rest starts from the top of the table to its end and stops from the end to the top.  What a subsystem uses
// therefore stands above it, and lives longer.
//
// The tags stop in the order in which they start, which the four rows of theirs bring about by naming each other's
// shut-down crosswise: the first start stands beside the last stop.
struct RUNTIME_SUBSYSTEM {
    void ( *startup )( void );
    void ( *shutdown )( void );
};
static constexpr RUNTIME_SUBSYSTEM SUBSYSTEMS[] = {
    { zu___MemStartup, zu___MemShutdown },
    { zu___UniqueStartup, zu___UniqueShutdown },
    { zu___ObjStartup, zu___ObjShutdown },
    { zu___StackTraceStartup, zu___StackTraceShutdown },
    { zu___StringStartup, zu___StringShutdown },
    { zu___BufferStartup, zu___BufferShutdown },
    { zu___VectorStartup, zu___VectorShutdown },
    { zu___DictStartup, zu___DictShutdown },
    { zu___GenerationStartup, zu___GenerationShutdown },
    { zu___FormatFlagsStartup, zu___FormatFlagsShutdown },
    { zu___CharsetFlagsStartup, zu___CharsetFlagsShutdown },
    { zu___NlfFlagsStartup, zu___NlfFlagsShutdown },
    { zu___DebugPrintStartup, zu___DebugPrintShutdown },
    { zu___RuntimeFlagsStartup, zu___RuntimeFlagsShutdown },
    { zu___FormatStartup, zu___FormatShutdown },
    { zu___BoxedNullStartup, zu___BoxedNullShutdown },
    { zu___BoxedBoolStartup, zu___BoxedBoolShutdown },
    { zu___StoreStartup, zu___StoreShutdown },
    { zu___TimestampStartup, zu___TimestampShutdown },
    { zu___TimeStartup, zu___TimeShutdown },
    { zu___CharsetStartup, zu___CharsetShutdown },
};
static constexpr size_t SUBSYSTEM_COUNT = sizeof SUBSYSTEMS / sizeof SUBSYSTEMS[ 0 ];

static void runtimeStartSubsystems( const char *applicationIdentifier, const char *applicationFriendlyName,
                                    const char *applicationVersion )
{
    zu___RuntimeVersionStartup( applicationIdentifier, applicationFriendlyName, applicationVersion );
    for ( size_t i = 0; i < SUBSYSTEM_COUNT; i++ ) {
        SUBSYSTEMS[ i ].startup();
    }
}
static void runtimeStopSubsystems()
{
    for ( size_t i = SUBSYSTEM_COUNT; i > 0; i-- ) {
        SUBSYSTEMS[ i - 1 ].shutdown();
    }
    zu___RuntimeVersionShutdown();
}

void zuRuntimeStartup( ZU_INT flags, ZU_INT optionalUnloadModuleTimeout, ZU_RUNTIME_PRINT_FUNC printFunc,
                       const char *applicationIdentifier, const char *applicationFriendlyName,
                       const char *applicationVersion )
{
    ZU_ASSERT( optionalUnloadModuleTimeout >= -1 );
    zu___RuntimeFlags = zuRuntimeFlagsNormalize( flags );
    zu___RuntimeUnloadModuleTimeout =
        optionalUnloadModuleTimeout < 0 ? DEFAULT_UNLOAD_MODULE_TIMEOUT : optionalUnloadModuleTimeout;
    zu___LockInitialize( &zu___RuntimePrintLock );
    zu___RuntimePrintFunc = printFunc;
    runtimeStartSubsystems( applicationIdentifier, applicationFriendlyName, applicationVersion );
}
ZU_INT zuRuntimeShutdown( void )
{
    runtimeStopSubsystems();
    zu___LockFinalize( &zu___RuntimePrintLock );
    zu___RuntimePrintFunc = nullptr;
    zu___RuntimeFlags = 0;
    return 0;
}
ZU_INT zuRuntimeFlags( void )
{
    return zu___RuntimeFlags;
}
void zuRuntimePrint( const ZU_CHAR *chs, ZU_INT chsLength )
{
    ZU_ASSERT( chsLength >= 0 );
    ZU_ASSERT( chs || chsLength == 0 );
    if ( !zu___RuntimePrintFunc ) {
        return;
    }
    zu___LockAcquire( &zu___RuntimePrintLock );
    zu___RuntimePrintFunc( chs, chsLength );
    zu___LockRelease( &zu___RuntimePrintLock );
}
