#include "zu/base/zu_string_format.h"
#include "zu/io/zu_print.h"
#include "zu/runtime/zu_runtime_internal.h"
#include "zu/runtime/zu_runtime_platform_internal.h"
#include "zu/runtime/zu_runtime_version.h"
#include "zu/sys/zu_mem.h"

#define LOAD_MODULE "[zu___RuntimePlatformLoadModule()] "

// Tells why a module is not loaded.
static void platformPrintFailure( const char *failure )
{
    if ( zu___RuntimeFlags & ZU_RUNTIME_FLAG_MODULE_DEBUG ) {
        zuPrintFormatCstr( LOAD_MODULE "%lc\n", -1, failure );
    }
}
static void platformPrintCallFailure( const char *call )
{
    if ( zu___RuntimeFlags & ZU_RUNTIME_FLAG_MODULE_DEBUG ) {
        zuPrintFormatCstr( LOAD_MODULE "%lc(): null, %lc(): %lc\n", -1, call, zu___RuntimePlatformNames.errorCall,
                           zu___RuntimePlatformError() );
    }
}

// Returns the name of a module's file; null if the process does not know where its files are.
static ZU_STRING *platformModuleFileName( ZU_STRING *moduleName )
{
    if ( !( zu___RuntimeFlags & ZU_RUNTIME_FLAG_IMPLICIT_MODULE_PATH ) ) {
        return nullptr;
    }
    return zuStringCreateFromFormatCstr( "%~s-%s%lc", -1, zuRuntimeVersionProductName(), moduleName,
                                         zu___RuntimePlatformNames.fileEnding );
}

// Whether the module fits into the process and is the one that was asked for.
static bool platformCheckModule( ZU_MODULE *module, ZU_STRING *moduleName )
{
    if ( !zu___ModuleCheckCompatibility( module ) ) {
        platformPrintFailure( "zu___ModuleCheckCompatibility(): false" );
        return false;
    }
    ZU_STRING *ownName = zuModuleName( module );
    bool same = zuStringEquals( ownName, moduleName );
    zuStringRelease( ownName );
    if ( !same ) {
        platformPrintFailure( "module name invalid" );
    }
    return same;
}
// Returns the module that a file exports, null if it exports none that will do.
static ZU_MODULE *platformFindModule( void *file, ZU_STRING *moduleName )
{
    ZU_STRING *symbol = zuStringCreateFromFormatCstr( "%s___module", -1, moduleName );
    char *symbolCstr = zuStringConvertToCstr( symbol, ZU_TRUE, nullptr );
    void *address = nullptr;
    ZU_MODULE *module = nullptr;
    if ( !zu___RuntimePlatformFindSymbol( file, symbolCstr, &address ) ) {
        platformPrintCallFailure( zu___RuntimePlatformNames.findCall );
    } else {
        module = zuModuleFrom( (ZU_OBJ *)address );
    }
    zuMemFree( symbolCstr );
    zuStringRelease( symbol );
    return module && platformCheckModule( module, moduleName ) ? module : nullptr;
}
ZU_MODULE *zu___RuntimePlatformLoadModule( ZU_STRING *moduleName )
{
    ZU_ASSERT( zuModuleNameOk( moduleName ) );
    ZU_STRING *fileName = platformModuleFileName( moduleName );
    if ( !fileName ) {
        return nullptr;
    }
    char *fileNameCstr = zuStringConvertToCstr( fileName, ZU_TRUE, nullptr );
    zuStringRelease( fileName );
    void *file = zu___RuntimePlatformOpenFile( fileNameCstr );
    zuMemFree( fileNameCstr );
    if ( !file ) {
        platformPrintCallFailure( zu___RuntimePlatformNames.openCall );
        return nullptr;
    }
    ZU_MODULE *module = platformFindModule( file, moduleName );
    if ( !module ) {
        zu___RuntimePlatformCloseFile( file );
    }
    return module;
}
