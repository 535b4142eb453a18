// The platform's steps of loading, taken once more in words: loading has to stay silent, and must not pay for texts that
// only a human asks for.  The conditions themselves stand in zu___ModuleMisfit, which both ask.

#include "zu/runtime/zu_module_check.h"

#include "zu/base/zu_string_format.h"
#include "zu/base/zu_string_search.h"
#include "zu/runtime/zu_module_internal.h"
#include "zu/runtime/zu_runtime_platform_internal.h"
#include "zu/runtime/zu_runtime_version.h"

ZU_STRING *zuModuleCheck( ZU_MODULE *module )
{
    ZU_ASSERT( module );
    const char *misfit = zu___ModuleMisfit( module );
    return misfit ? zuStringCreateFromAscii( misfit, -1 ) : nullptr;
}

// Returns the name of the module that a file is called by; null if it is called by none.
static ZU_STRING *moduleNameOfFile( ZU_STRING *fn )
{
    ZU_STRING *prefix = zuStringCreateFromFormatCstr( "%~s-", -1, zuRuntimeVersionProductName() );
    ZU_STRING *ending = zuStringCreateFromAscii( zu___RuntimePlatformNames.fileEnding, -1 );
    ZU_INT begin = zuStringFindCharFromRight( fn, -1, ZU_CHAR_SOLIDUS ) + 1;
    ZU_STRING *baseName = zuStringCreateFromTrailing( fn, zuStringLength( fn ) - begin );
    ZU_INT length = zuStringLength( baseName ) - zuStringLength( prefix ) - zuStringLength( ending );
    ZU_STRING *moduleName = nullptr;
    if ( length > 0 && zuStringBeginsWith( baseName, prefix ) && zuStringEndsWith( baseName, ending ) ) {
        moduleName = zuStringCreateFromInner( baseName, zuStringLength( prefix ), length );
        if ( !zuModuleNameOk( moduleName ) ) {
            ZU_REF_RELEASE( moduleName );
            moduleName = nullptr;
        }
    }
    zuStringRelease( baseName );
    zuStringRelease( ending );
    zuStringRelease( prefix );
    return moduleName;
}
static ZU_STRING *moduleCheckObject( void *file, ZU_STRING *moduleName )
{
    ZU_OBJ *obj;
    if ( !zu___RuntimePlatformFindModuleObject( file, moduleName, &obj ) ) {
        return zu___RuntimePlatformCallFailure( zu___RuntimePlatformNames.findCall );
    }
    if ( !obj ) {
        return zuStringCreateFromAscii( "module: null", -1 );
    }
    ZU_MODULE *module =
        (ZU_MODULE *)obj; // which aborts nobody if it is something else: that is the first to be checked
    ZU_STRING *failure = zuModuleCheck( module );
    if ( !failure && !zu___RuntimePlatformModuleIsNamed( module, moduleName ) ) {
        failure = zuStringCreateFromAscii( "name: not that of the file", -1 );
    }
    return failure;
}
ZU_STRING *zuModuleCheckFile( ZU_STRING *fn )
{
    ZU_ASSERT( fn );
    ZU_STRING *moduleName = moduleNameOfFile( fn );
    if ( !moduleName ) {
        return zuStringCreateFromFormatCstr( "file name: not of the form %~s-<module>%lc", -1,
                                             zuRuntimeVersionProductName(), zu___RuntimePlatformNames.fileEnding );
    }
    void *file = zu___RuntimePlatformOpenModuleFile( fn );
    ZU_STRING *failure;
    if ( file ) {
        failure = moduleCheckObject( file, moduleName );
        zu___RuntimePlatformCloseFile( file );
    } else {
        failure = zu___RuntimePlatformCallFailure( zu___RuntimePlatformNames.openCall );
    }
    zuStringRelease( moduleName );
    return failure;
}
