#include "zu/runtime/zu_runtime_platform_internal.h"

#include <cstdio>
#include <windows.h>

const ZU___RUNTIME_PLATFORM_NAMES zu___RuntimePlatformNames = { ".dll", "LoadLibraryA", "GetProcAddress",
                                                                "GetLastError" };

static thread_local DWORD failure = 0; // of the last call
static thread_local char failureText[ 16 ];

void *zu___RuntimePlatformOpenFile( const char *fileName )
{
    HMODULE file = LoadLibraryA( fileName );
    failure = file ? 0 : GetLastError();
    return file;
}
void zu___RuntimePlatformCloseFile( void *file )
{
    FreeLibrary( (HMODULE)file );
}
ZU_BOOL zu___RuntimePlatformFindSymbol( void *file, const char *symbol, void **address )
{
    *address = (void *)GetProcAddress( (HMODULE)file, symbol );
    failure = *address ? 0 : GetLastError();
    return *address != nullptr;
}
const char *zu___RuntimePlatformError( void )
{
    snprintf( failureText, sizeof failureText, "0x%lX", failure );
    return failureText;
}
