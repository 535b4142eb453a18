// What the library keeps for the whole process is started and stopped by one table, so that the order is read, and not
// worked out from constructors: there are none.
//
// Two monitors keep the modules.  A load runs code of modules for as long as that likes, and code that loads further
// ones; it holds the first monitor throughout, and the second only to write the lists down.  So whoever looks a module
// up, as each report does, waits for no load; and whoever loads may read the lists without the second, since nobody
// else changes them.
//
// A module's file may only go when none of its functions can be called any more.  Objects have no way to tell when the
// last of them ends that would cost nothing while they live, so unloading looks, each 50 milliseconds, whether the
// count of the module's active sorts has come to 0: that is seldom, and mostly where a program ends.

#include "zu/runtime/zu_runtime.h"

#include "zu/base/zu_boxed_bool.h"
#include "zu/base/zu_boxed_null.h"
#include "zu/base/zu_buffer.h"
#include "zu/base/zu_dict.h"
#include "zu/base/zu_format.h"
#include "zu/base/zu_format_flags.h"
#include "zu/base/zu_generation.h"
#include "zu/base/zu_random.h"
#include "zu/base/zu_stack_trace.h"
#include "zu/base/zu_store.h"
#include "zu/base/zu_string.h"
#include "zu/base/zu_thread.h"
#include "zu/base/zu_threading_fork_internal.h"
#include "zu/base/zu_time.h"
#include "zu/base/zu_timer.h"
#include "zu/base/zu_timestamp.h"
#include "zu/base/zu_timezone.h"
#include "zu/base/zu_vector.h"
#include "zu/charset/zu_charset.h"
#include "zu/charset/zu_charset_flags.h"
#include "zu/io/zu_debug_print.h"
#include "zu/io/zu_nlf_flags.h"
#include "zu/io/zu_print.h"
#include "zu/runtime/zu_module_internal.h"
#include "zu/runtime/zu_obj_internal.h"
#include "zu/runtime/zu_ref_internal.h"
#include "zu/runtime/zu_runtime_computer_info.h"
#include "zu/runtime/zu_runtime_computer_name.h"
#include "zu/runtime/zu_runtime_hardware.h"
#include "zu/runtime/zu_runtime_internal.h"
#include "zu/runtime/zu_runtime_os.h"
#include "zu/runtime/zu_runtime_path.h"
#include "zu/runtime/zu_runtime_paths.h"
#include "zu/runtime/zu_runtime_user_information.h"
#include "zu/runtime/zu_runtime_variant.h"
#include "zu/runtime/zu_runtime_version.h"
#include "zu/sys/zu_mem_internal.h"
#include "zu/sys/zu_unique.h"
#include "zu/sys/zu_wait_internal.h"
#include "zu/tag/zu_tag_color.h"
#include "zu/tag/zu_tag_match_type.h"
#include "zu/tag/zu_tag_rewrite_operation_type.h"
#include "zu/tag/zu_tag_set.h"
#include "zu/unicode/zu_unicode_cccv.h"
#include "zu/unicode/zu_unicode_cdmt.h"
#include "zu/unicode/zu_unicode_genc.h"
#include "zu/unicode/zu_unicode_script.h"

static constexpr ZU_INT DEFAULT_UNLOAD_MODULE_TIMEOUT = 60000; // milliseconds, as are:
static constexpr ZU_INT UNLOAD_STEP = 50;                      // between two looks at a module's objects
static constexpr ZU_INT UNLOAD_REPORT_INTERVAL = 10000;

static constexpr ZU_INT SNAPSHOT_FLAGS = ZU_RUNTIME_FLAG_SNAPSHOT_SORT | ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT |
                                         ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT_TOSTRING | ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT_LOG;

ZU_INT zu___RuntimeFlags = 0;
ZU_INT zu___RuntimeUnloadModuleTimeout = DEFAULT_UNLOAD_MODULE_TIMEOUT;
ZU___LOCK zu___RuntimePrintLock;
ZU_RUNTIME_PRINT_FUNC zu___RuntimePrintFunc = nullptr;
ZU_MONITOR *zu___RuntimeLoadMonitor = nullptr;
ZU_MONITOR *zu___RuntimeModulesMonitor = nullptr;
ZU_DICT *zu___RuntimeModulesDict = nullptr;
ZU_VECTOR *zu___RuntimeModulesVector = nullptr;
ZU_DICT *zu___RuntimeLoadingDict = nullptr;
ZU_INT zu___RuntimeExtsIndex = 0;
ZU_BOOL zu___RuntimeForked = ZU_FALSE;

// What a thread is inside of.  A program's code runs there, and may fork.
static thread_local bool printing __attribute__( ( tls_model( "initial-exec" ) ) ) = false;
static thread_local bool loading __attribute__( ( tls_model( "initial-exec" ) ) ) = false;
static bool loadingAnywhere = false; // atomic

// Start and stop
//
// The version comes first of all and goes last of all; it takes the application's texts and so stands outside the
// table.  The rest starts from the top of the table to its end and stops from the end to the top.  What a subsystem
// uses therefore stands above it, and lives longer.
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
    { zu___ThreadStartup, zu___ThreadShutdown },
    { zu___ThreadPriorityStartup, zu___ThreadPriorityShutdown },
    { zu___FormatFlagsStartup, zu___FormatFlagsShutdown },
    { zu___CharsetFlagsStartup, zu___CharsetFlagsShutdown },
    { zu___NlfFlagsStartup, zu___NlfFlagsShutdown },
    { zu___DebugPrintStartup, zu___DebugPrintShutdown },
    { zu___RuntimeFlagsStartup, zu___RuntimeFlagsShutdown },
    { zu___RuntimePathStartup, zu___RuntimePathShutdown },
    { zu___RuntimeOsStartup, zu___RuntimeOsShutdown },
    { zu___RuntimeHardwareStartup, zu___RuntimeHardwareShutdown },
    { zu___RuntimeVariantStartup, zu___RuntimeVariantShutdown },
    { zu___RuntimeComputerNameStartup, zu___RuntimeComputerNameShutdown },
    { zu___RuntimeComputerInfoStartup, zu___RuntimeComputerInfoShutdown },
    { zu___RuntimeUserInformationStartup, zu___RuntimeUserInformationShutdown },
    { zu___FormatStartup, zu___FormatShutdown },
    { zu___BoxedNullStartup, zu___BoxedNullShutdown },
    { zu___BoxedBoolStartup, zu___BoxedBoolShutdown },
    { zu___StoreStartup, zu___StoreShutdown },
    { zu___TimestampStartup, zu___TimestampShutdown },
    { zu___TimeStartup, zu___TimeShutdown },
    { zu___TimezoneStartup, zu___TimezoneShutdown },
    { zu___TimerStartup, zu___TimerShutdown },
    { zu___UnicodeGencStartup, zu___UnicodeGencShutdown },
    { zu___UnicodeCccvStartup, zu___UnicodeCccvShutdown },
    { zu___UnicodeCdmtStartup, zu___UnicodeCdmtShutdown },
    { zu___UnicodeScriptStartup, zu___UnicodeScriptShutdown },
    { zu___CharsetStartup, zu___CharsetShutdown },
    { zu___RandomStartup, zu___RandomShutdown },
    // The four of the tags do not use each other, and stop in the order in which they start: their shutdown functions
    // stand in reverse.
    { zu___TagColorStartup, zu___TagSetShutdown },
    { zu___TagMatchTypeStartup, zu___TagRewriteOperationTypeShutdown },
    { zu___TagRewriteOperationTypeStartup, zu___TagMatchTypeShutdown },
    { zu___TagSetStartup, zu___TagColorShutdown },
    { zu___RuntimePlatformStartup, zu___RuntimePlatformShutdown },
    { zu___AbortStartup, zu___AbortShutdown },
};
static constexpr size_t SUBSYSTEM_COUNT = sizeof SUBSYSTEMS / sizeof SUBSYSTEMS[ 0 ];

static void runtimeStartSubsystems( const char *applicationIdentifier, const char *applicationFriendlyName,
                                    const char *applicationVersion )
{
    zu___MemDebug = ( zu___RuntimeFlags & ZU_RUNTIME_FLAG_MEMORY_DEBUG ) != 0;
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

// The registry of modules
static void runtimeRegisterModule( ZU_STRING *moduleName, ZU_MODULE *module )
{
    zuMonitorEnter( zu___RuntimeModulesMonitor );
    zuDictSetStringKey( &zu___RuntimeModulesDict, moduleName, zuModuleObj( module ) );
    zuVectorPush( &zu___RuntimeModulesVector, zuModuleObj( module ) );
    zuMonitorLeave( zu___RuntimeModulesMonitor );
}
static void runtimeUnregisterLastModule( ZU_MODULE *module )
{
    ZU_STRING *moduleName = zuModuleName( module );
    zuMonitorEnter( zu___RuntimeModulesMonitor );
    zuDictDelStringKey( &zu___RuntimeModulesDict, moduleName );
    zuVectorDelTrailing( &zu___RuntimeModulesVector, 1 );
    zuMonitorLeave( zu___RuntimeModulesMonitor );
    zuStringRelease( moduleName );
}
static void runtimeEnterLoading()
{
    zuMonitorEnter( zu___RuntimeLoadMonitor );
    loading = true;
    __atomic_store_n( &loadingAnywhere, true, __ATOMIC_RELAXED );
}
static void runtimeLeaveLoading()
{
    __atomic_store_n( &loadingAnywhere, false, __ATOMIC_RELAXED );
    loading = false;
    zuMonitorLeave( zu___RuntimeLoadMonitor );
}
static void runtimeStartModules()
{
    zu___RuntimeLoadMonitor = zuMonitorCreate();
    zu___RuntimeModulesMonitor = zuMonitorCreate();
    zu___RuntimeModulesDict = zuDictCreate();
    zu___RuntimeModulesVector = zuVectorCreate();
    zu___RuntimeLoadingDict = zuDictCreate();
    zu___RuntimeExtsIndex = 0;
    ZU_STRING *moduleName = zuModuleName( zuModule() );
    runtimeRegisterModule( moduleName, zuModule() );
    zuStringRelease( moduleName );
}
static void runtimeStopModules()
{
    ZU_REF_RELEASE( zu___RuntimeLoadMonitor );
    ZU_REF_POISON( zu___RuntimeLoadMonitor );
    ZU_REF_RELEASE( zu___RuntimeModulesMonitor );
    ZU_REF_POISON( zu___RuntimeModulesMonitor );
    ZU_REF_RELEASE( zu___RuntimeModulesDict );
    ZU_REF_POISON( zu___RuntimeModulesDict );
    ZU_REF_RELEASE( zu___RuntimeModulesVector );
    ZU_REF_POISON( zu___RuntimeModulesVector );
    ZU_REF_RELEASE( zu___RuntimeLoadingDict );
    ZU_REF_POISON( zu___RuntimeLoadingDict );
}
// Returns the module at `idx`, not retained, since modules are static.  Whoever holds the load monitor may read the
// vector without the other monitor: nobody else changes it.
static ZU_MODULE *runtimeModuleAt( ZU_INT idx )
{
    return zuModuleFrom( zuVectorBacking( zu___RuntimeModulesVector )[ idx ] );
}

static void runtimeLoadExtensionsLocked();

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
    zu___RuntimeForked = ZU_FALSE;
    runtimeStartSubsystems( applicationIdentifier, applicationFriendlyName, applicationVersion );
    runtimeStartModules();
    zu___RuntimeForkStartup();
    runtimeEnterLoading();
    runtimeLoadExtensionsLocked();
    runtimeLeaveLoading();
}

// The print function and the functions of modules run for as long as they like, so that a fork does not wait for them:
// in the child the other threads are out of there, and a load that one of them has begun is forgotten.
static void runtimeForkChild()
{
    zu___RuntimeForked = ZU_TRUE;
    zu___LockFork( &zu___RuntimePrintLock, ZU___FORK_CHILD );
    if ( printing ) {
        zu___LockAcquire( &zu___RuntimePrintLock );
    }
    zu___MonitorFork( zu___RuntimeLoadMonitor, ZU___FORK_CHILD );
    if ( loading ) {
        zuMonitorEnter( zu___RuntimeLoadMonitor );
    } else if ( __atomic_load_n( &loadingAnywhere, __ATOMIC_RELAXED ) ) {
        __atomic_store_n( &loadingAnywhere, false, __ATOMIC_RELAXED ); // no exchange: the child has one thread
        zu___RuntimeLoadingDict = zuDictCreate();                      // the old one may be half changed
    }
}
void zu___RuntimeFork( ZU___FORK_STEP step )
{
    zu___MonitorFork( zu___RuntimeModulesMonitor, step );
    if ( step == ZU___FORK_CHILD ) {
        runtimeForkChild();
    }
}

// Tells of objects that have outlived the library.  What is down cannot print, and so the bare library starts once
// more.
static void runtimeReportLeaks()
{
    ZU_INT flags = zu___RuntimeFlags;
    zu___RuntimeFlags = ZU_RUNTIME_FLAG_MINIMAL;
    runtimeStartSubsystems( nullptr, nullptr, nullptr );
    zu___RuntimePrintProductReport();
    zu___RuntimePrintLeakReport( zuModule(), flags );
    runtimeStopSubsystems();
}
ZU_INT zuRuntimeShutdown( void )
{
    zuRuntimeUnloadAllModules();
    zu___RuntimeForkShutdown();
    runtimeStopModules();
    runtimeStopSubsystems();
    if ( ( zu___RuntimeFlags & SNAPSHOT_FLAGS ) && __atomic_load_n( &zuModule()->sorts, __ATOMIC_ACQUIRE ) > 0 ) {
        runtimeReportLeaks();
    }
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
    printing = true;
    zu___RuntimePrintFunc( chs, chsLength );
    printing = false;
    zu___LockRelease( &zu___RuntimePrintLock );
}

// Loading
static void runtimePrintModuleDebug( const char *format, ZU_STRING *moduleName )
{
    if ( zu___RuntimeFlags & ZU_RUNTIME_FLAG_MODULE_DEBUG ) {
        zuPrintFormatCstr( format, -1, moduleName );
    }
}
// Loads what a module depends on.
static bool runtimeTryLoadDepsLocked( ZU_MODULE *module )
{
    const char *rest = zu___ModuleNames( module->moduleRecord->deps );
    bool loaded = true;
    while ( loaded && rest ) {
        ZU_STRING *dep = zu___ModuleNextName( &rest );
        loaded = zu___RuntimeTryLoadModule( dep );
        zuStringRelease( dep );
    }
    return loaded;
}
static bool runtimeTryLoadNewModuleLocked( ZU_STRING *moduleName )
{
    ZU_MODULE *module = zu___RuntimePlatformLoadModule( moduleName );
    if ( !module ) {
        return false;
    }
    ZU_ASSERT( module->moduleRecord );
    ZU_ASSERT( module->moduleRecord->name );
    ZU_ASSERT( module->moduleRecord->description );
    ZU_ASSERT( module->moduleRecord->version );
    ZU_ASSERT( module->moduleRecord->deps );
    ZU_ASSERT( module->moduleRecord->exts );
    if ( !runtimeTryLoadDepsLocked( module ) || ( module->loadFunc && !module->loadFunc() ) ) {
        return false;
    }
    runtimeRegisterModule( moduleName, module );
    return true;
}
ZU_BOOL zu___RuntimeTryLoadModule( ZU_STRING *moduleName )
{
    ZU_ASSERT( zuModuleNameOk( moduleName ) );
    if ( zuDictHasStringKey( zu___RuntimeModulesDict, moduleName ) ) {
        return ZU_TRUE;
    }
    runtimePrintModuleDebug( "[zu___RuntimeTryLoadModule()] module: %s\n", moduleName );
    ZU_ASSERT( !zuDictHasStringKey( zu___RuntimeLoadingDict, moduleName ) );
    zuDictSetStringKey( &zu___RuntimeLoadingDict, moduleName, zuStringObj( moduleName ) );
    ZU_BOOL loaded = runtimeTryLoadNewModuleLocked( moduleName );
    zuDictDelStringKey( &zu___RuntimeLoadingDict, moduleName );
    return loaded;
}
// Loads the extensions of all modules that are new.  An extension lands at the end of the vector, and so its own have
// their turn too.
static void runtimeLoadExtensionsLocked()
{
    while ( zu___RuntimeExtsIndex < zuVectorLength( zu___RuntimeModulesVector ) ) {
        const char *rest = zu___ModuleNames( runtimeModuleAt( zu___RuntimeExtsIndex )->moduleRecord->exts );
        while ( ZU_STRING *ext = zu___ModuleNextName( &rest ) ) {
            zu___RuntimeTryLoadModule( ext );
            zuStringRelease( ext );
        }
        zu___RuntimeExtsIndex++;
    }
}
ZU_BOOL zuRuntimeTryLoadModule( ZU_STRING *moduleName )
{
    ZU_ASSERT( zuModuleNameOk( moduleName ) );
    runtimeEnterLoading();
    ZU_BOOL loaded = zu___RuntimeTryLoadModule( moduleName );
    if ( loaded ) {
        runtimeLoadExtensionsLocked();
    }
    zu___StackTraceUpdateSymbols();
    runtimeLeaveLoading();
    return loaded;
}

// Loading several
ZU_BOOL zuRuntimeTryLoadModulesVector( ZU_VECTOR *moduleNames )
{
    ZU_ASSERT( moduleNames );
    ZU_ASSERT( zuVectorContainsOnly( moduleNames, zuStringSort() ) );
    zu___Owned held( zuVectorRetain( moduleNames ) ); // what a module does as it is loaded may change the vector
    ZU_BOOL loaded = ZU_TRUE;
    runtimeEnterLoading();
    for ( ZU_INT i = 0; loaded && i < zuVectorLength( moduleNames ); i++ ) {
        loaded = zu___RuntimeTryLoadModule( zuStringFrom( zuVectorBacking( moduleNames )[ i ] ) );
    }
    if ( loaded ) {
        runtimeLoadExtensionsLocked();
    }
    zu___StackTraceUpdateSymbols();
    runtimeLeaveLoading();
    return loaded;
}
// Blanks divide; several in a row, or at the ends, make no empty name.
ZU_BOOL zuRuntimeTryLoadModules( ZU_STRING *moduleNames )
{
    ZU_ASSERT( moduleNames );
    const ZU_CHAR *chs = zuStringBacking( moduleNames );
    ZU_INT length = zuStringLength( moduleNames );
    ZU_VECTOR *vec = zuVectorCreate();
    ZU_INT begin = 0;
    for ( ZU_INT end = 0; end <= length; end++ ) {
        if ( end == length || chs[ end ] == ZU_CHAR_SPACE ) {
            if ( end > begin ) {
                ZU_STRING *moduleName = zuStringCreateFromInner( moduleNames, begin, end - begin );
                zuVectorAppendString( &vec, moduleName );
                zuStringRelease( moduleName );
            }
            begin = end + 1;
        }
    }
    ZU_BOOL loaded = zuRuntimeTryLoadModulesVector( vec );
    zuVectorRelease( vec );
    return loaded;
}
static ZU_BOOL runtimeTryLoadModulesAndRelease( ZU_STRING *moduleNames )
{
    ZU_BOOL loaded = zuRuntimeTryLoadModules( moduleNames );
    zuStringRelease( moduleNames );
    return loaded;
}
ZU_BOOL zuRuntimeTryLoadModulesCstr( const char *moduleNames, ZU_INT length )
{
    return runtimeTryLoadModulesAndRelease( zuStringCreateFromCstr( moduleNames, length ) );
}
ZU_BOOL zuRuntimeTryLoadModulesWcstr( const char16_t *moduleNames, ZU_INT length )
{
    return runtimeTryLoadModulesAndRelease( zuStringCreateFromWcstr( moduleNames, length ) );
}

// Looking modules up
ZU_MODULE *zuRuntimeModule( ZU_STRING *moduleName )
{
    ZU_ASSERT( zuModuleNameOk( moduleName ) );
    zuMonitorEnter( zu___RuntimeModulesMonitor );
    ZU_MODULE *module = zuModuleFrom( zuDictStringKey( zu___RuntimeModulesDict, moduleName ) );
    zuMonitorLeave( zu___RuntimeModulesMonitor );
    return module;
}
ZU_VECTOR *zuRuntimeModulesVector( void )
{
    zuMonitorEnter( zu___RuntimeModulesMonitor );
    ZU_VECTOR *vec = zuVectorRetain( zu___RuntimeModulesVector );
    zuMonitorLeave( zu___RuntimeModulesMonitor );
    return vec;
}

// Snapshots
static ZU_VECTOR *runtimeSnapshot( void ( *appendLocked )( ZU___OBJ_SNAPSHOT *, ZU_MODULE * ) )
{
    if ( !zu___ObjOdbEnabled() ) {
        return nullptr;
    }
    ZU_VECTOR *modules = zuRuntimeModulesVector();
    ZU___OBJ_SNAPSHOT snapshot = {};
    zu___ObjOdbLock();
    for ( ZU_INT i = 0; i < zuVectorLength( modules ); i++ ) {
        appendLocked( &snapshot, zuModuleFrom( zuVectorBacking( modules )[ i ] ) );
    }
    zu___ObjOdbUnlock();
    zuVectorRelease( modules );
    return zu___ObjSnapshotVector( &snapshot );
}
ZU_VECTOR *zuRuntimeSnapshotObjects( void )
{
    return runtimeSnapshot( zu___ModuleSnapshotAppendObjectsLocked );
}
ZU_VECTOR *zuRuntimeSnapshotSorts( void )
{
    return runtimeSnapshot( zu___ModuleSnapshotAppendSortsLocked );
}

// Unloading.  The wait is what active sorts are counted for: when a module has none left, no object lives whose free or
// compare function is in its file.  In a forked child nobody would release what threads of the parent held: there the
// objects stay, and so do the files.
static bool runtimeModuleIsActive( ZU_MODULE *module )
{
    return __atomic_load_n( &module->sorts, __ATOMIC_ACQUIRE ) > 0 && !zu___RuntimeForked;
}
// Sleeps on a word that nobody wakes; the thread need not be the library's.
static void runtimeSleep( ZU_INT millisec )
{
    static const uint32_t never = 0;
    ZU_INT end = zuTimestamp() + millisec;
    for ( ZU_INT left = millisec; left > 0; left = end - zuTimestamp() ) {
        zu___WaitOnWord( &never, 0, left );
    }
}
static void runtimeWaitForObjectsLocked( ZU_MODULE *module, bool *productReported )
{
    ZU_INT msecs = 0;
    while ( runtimeModuleIsActive( module ) ) {
        runtimeSleep( UNLOAD_STEP );
        msecs = zuIntAddSaturating( msecs, UNLOAD_STEP );
        if ( ( zu___RuntimeFlags & SNAPSHOT_FLAGS ) && msecs > UNLOAD_REPORT_INTERVAL ) {
            msecs = 0; // so that a diagnostic run stays alive to be looked into
            if ( !*productReported ) {
                zu___RuntimePrintProductReport();
                *productReported = true;
            }
            zu___RuntimePrintModuleReport( module, zu___RuntimeFlags );
        }
        if ( msecs > zu___RuntimeUnloadModuleTimeout && runtimeModuleIsActive( module ) ) {
            zu___Abort( module->moduleRecord->name, __FILE__, __LINE__, "msecs <= zu___RuntimeUnloadModuleTimeout" );
        }
    }
}
void zuRuntimeUnloadAllModules( void )
{
    runtimeEnterLoading();
    ZU_ASSERT( !zuDictLength( zu___RuntimeLoadingDict ) );
    for ( ZU_INT i = zuVectorLength( zu___RuntimeModulesVector ) - 1; i > 0; i-- ) {
        ZU_MODULE *module = runtimeModuleAt( i );
        if ( module->prepareUnloadFunc ) {
            module->prepareUnloadFunc();
        }
    }
    bool productReported = false;
    for ( ZU_INT i = zuVectorLength( zu___RuntimeModulesVector ) - 1; i > 0; i-- ) {
        ZU_MODULE *module = runtimeModuleAt( i );
        ZU_STRING *moduleName = zuModuleName( module );
        runtimePrintModuleDebug( "[zuRuntimeUnloadAllModules()] module: %s\n", moduleName );
        zuStringRelease( moduleName );
        if ( module->beginUnloadFunc ) {
            module->beginUnloadFunc();
        }
        runtimeWaitForObjectsLocked( module, &productReported );
        if ( module->endUnloadFunc ) {
            module->endUnloadFunc();
        }
        runtimeUnregisterLastModule( module );
    }
    zu___RuntimeExtsIndex = 0;
    runtimeLeaveLoading();
}
