#include "zu/runtime/zu_runtime_platform_internal.h"

#include <dlfcn.h>

const ZU___RUNTIME_PLATFORM_NAMES zu___RuntimePlatformNames = { ".so", "dlopen", "dlsym", "dlerror" };

void *zu___RuntimePlatformOpenFile( const char *fileName )
{
    return dlopen( fileName, RTLD_NOW | RTLD_LOCAL );
}
void zu___RuntimePlatformCloseFile( void *file )
{
    dlclose( file );
}
ZU_BOOL zu___RuntimePlatformFindSymbol( void *file, const char *symbol, void **address )
{
    *address = dlsym( file, symbol );
    return *address != nullptr;
}
const char *zu___RuntimePlatformError( void )
{
    const char *error = dlerror();
    return error ? error : "";
}
