#include "zu/base/zu_string_format.h"
#include "zu/io/zu_print.h"
#include "zu/runtime/zu_runtime_internal.h"
#include "zu/runtime/zu_runtime_paths.h"
#include "zu/runtime/zu_runtime_platform_internal.h"
#include "zu/runtime/zu_runtime_version.h"
#include "zu/sys/zu_mem.h"

// The steps that loading and checking share
void *zu___RuntimePlatformOpenModuleFile( ZU_STRING *fileName )
{
    char *fileNameCstr = zuStringConvertToCstr( fileName, ZU_TRUE, nullptr );
    void *file = zu___RuntimePlatformOpenFile( fileNameCstr );
    zuMemFree( fileNameCstr );
    return file;
}
bool zu___RuntimePlatformFindModuleObject( void *file, ZU_STRING *moduleName, ZU_OBJ **obj )
{
    ZU_STRING *symbol = zuStringCreateFromFormatCstr( "%s___module", -1, moduleName );
    char *symbolCstr = zuStringConvertToCstr( symbol, ZU_TRUE, nullptr );
    void *address = nullptr;
    bool found = zu___RuntimePlatformFindSymbol( file, symbolCstr, &address );
    *obj = (ZU_OBJ *)address;
    zuMemFree( symbolCstr );
    zuStringRelease( symbol );
    return found;
}
ZU_STRING *zu___RuntimePlatformCallFailure( const char *call )
{
    return zuStringCreateFromFormatCstr( "%lc(): null, %lc(): %lc", -1, call, zu___RuntimePlatformNames.errorCall,
                                         zu___RuntimePlatformError() );
}
bool zu___RuntimePlatformModuleIsNamed( ZU_MODULE *module, ZU_STRING *moduleName )
{
    ZU_STRING *ownName = zuModuleName( module );
    bool same = zuStringEquals( ownName, moduleName );
    zuStringRelease( ownName );
    return same;
}

// Loading

// Returns the name of a module's file; null if the process does not know where its files are.
static ZU_STRING *platformModuleFileName( ZU_STRING *moduleName )
{
    ZU_STRING *directory;
    if ( zu___RuntimeFlags & ZU_RUNTIME_FLAG_IMPLICIT_MODULE_PATH ) {
        directory = zuStringCreate();
    } else {
        ZU_RUNTIME_PATHS *paths = zuRuntimePaths();
        directory = zuRuntimePathsPath( paths, ZU_RUNTIME_PATH_PRODUCT_BIN );
        zuRuntimePathsRelease( paths );
    }
    if ( !directory ) {
        return nullptr;
    }
    return zuStringCreateFromFormatCstr( "%~s%~s-%s%lc", -1, directory, zuRuntimeVersionProductName(), moduleName,
                                         zu___RuntimePlatformNames.fileEnding );
}
// Stores the module that a file exports, or returns why none will do.
static ZU_STRING *platformFindModule( void *file, ZU_STRING *moduleName, ZU_MODULE **module )
{
    ZU_OBJ *obj;
    if ( !zu___RuntimePlatformFindModuleObject( file, moduleName, &obj ) ) {
        return zu___RuntimePlatformCallFailure( zu___RuntimePlatformNames.findCall );
    }
    *module = zuModuleFrom( obj );
    if ( !*module ) {
        return zuStringCreateFromAscii( "zuModuleFrom(): null", -1 );
    }
    if ( !zu___ModuleCheckCompatibility( *module ) ) {
        return zuStringCreateFromAscii( "zu___ModuleCheckCompatibility(): false", -1 );
    }
    if ( !zu___RuntimePlatformModuleIsNamed( *module, moduleName ) ) {
        return zuStringCreateFromAscii( "module name invalid", -1 );
    }
    return nullptr;
}
// Prints why a module is not loaded, and takes that over.
static void platformPrintFailure( ZU_STRING *failure )
{
    if ( zu___RuntimeFlags & ZU_RUNTIME_FLAG_MODULE_DEBUG ) {
        zuPrintFormatCstr( "[zu___RuntimePlatformLoadModule()] %s\n", -1, failure );
    }
    zuStringRelease( failure );
}
ZU_MODULE *zu___RuntimePlatformLoadModule( ZU_STRING *moduleName )
{
    ZU_ASSERT( zuModuleNameOk( moduleName ) );
    ZU_STRING *fileName = platformModuleFileName( moduleName );
    if ( !fileName ) {
        return nullptr;
    }
    void *file = zu___RuntimePlatformOpenModuleFile( fileName );
    zuStringRelease( fileName );
    if ( !file ) {
        platformPrintFailure( zu___RuntimePlatformCallFailure( zu___RuntimePlatformNames.openCall ) );
        return nullptr;
    }
    ZU_MODULE *module = nullptr;
    ZU_STRING *failure = platformFindModule( file, moduleName, &module );
    if ( failure ) {
        platformPrintFailure( failure );
        zu___RuntimePlatformCloseFile( file );
        return nullptr;
    }
    return module;
}
