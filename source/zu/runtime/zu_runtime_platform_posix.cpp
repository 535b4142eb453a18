#include "zu/runtime/zu_runtime_platform_internal.h"

#include <dlfcn.h>

const ZU___RUNTIME_PLATFORM_NAMES zu___RuntimePlatformNames = { ".so", "dlopen", "dlsym", "dlerror" };

// What dlerror has told, which it does but once.
static thread_local const char *failure __attribute__( ( tls_model( "initial-exec" ) ) ) = nullptr;

void *zu___RuntimePlatformOpenFile( const char *fileName )
{
    void *file = dlopen( fileName, RTLD_NOW | RTLD_LOCAL );
    failure = file ? nullptr : dlerror();
    return file;
}
void zu___RuntimePlatformCloseFile( void *file )
{
    dlclose( file );
}
ZU_BOOL zu___RuntimePlatformFindSymbol( void *file, const char *symbol, void **address )
{
    dlerror(); // a symbol may have the address null, so that only an error of this call tells
    *address = dlsym( file, symbol );
    failure = dlerror();
    return !failure;
}
const char *zu___RuntimePlatformError( void )
{
    return failure ? failure : "";
}
