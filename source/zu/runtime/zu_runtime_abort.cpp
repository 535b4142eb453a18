// Start-up of the failure path: the name of the report file needs objects, which a report can't use any more.

#include "zu/base/zu_random.h"
#include "zu/base/zu_string_format.h"
#include "zu/base/zu_string_search.h"
#include "zu/runtime/zu_runtime_hardware.h"
#include "zu/runtime/zu_runtime_internal.h"
#include "zu/runtime/zu_runtime_os.h"
#include "zu/runtime/zu_runtime_paths.h"
#include "zu/runtime/zu_runtime_version.h"
#include "zu/sys/zu_abort_internal.h"
#include "zu/sys/zu_mem.h"

// Returns the name as narrow text, null if the process has no folder for reports.  A random number in it keeps the
// reports of different runs apart.
static char *abortReportFileName()
{
    ZU_RUNTIME_PATHS *paths = zuRuntimePaths();
    ZU_STRING *name = zuRuntimePathsPath( paths, ZU_RUNTIME_PATH_DATA_ABORT );
    zuRuntimePathsRelease( paths );
    if ( !name ) {
        return nullptr;
    }
    ZU_ASSERT( zuStringEndsWithChar( name, ZU_CHAR_SOLIDUS ) );
    zuStringAppendFormatCstr( &name, "%~s-%~s-%~s-%~s-%0!16i.txt", -1, zuRuntimeVersionProductName(),
                              zuRuntimeVersionProductVersion(), zuRuntimeOsToIdentifier( zuRuntimeOs() ),
                              zuRuntimeHardwareToIdentifier( zuRuntimeHardware() ), zuRandomNonNegativeInt() );
    char *cstr = zuStringConvertToCstr( name, ZU_TRUE, nullptr );
    zuStringRelease( name );
    return cstr;
}
void zu___AbortStartup( void )
{
    char *name = abortReportFileName();
    zu___AbortReset( name );
    zuMemFree( name );
    zu___AbortPlatformStartup( !( zu___RuntimeFlags & ZU_RUNTIME_FLAG_NO_EXCEPTION_HANDLERS ) );
}
void zu___AbortShutdown( void )
{
    zu___AbortPlatformShutdown();
    zu___AbortReset( nullptr );
}
