// zu_runtime_platform_internal.h: what a platform must provide to load modules.
#pragma once

#include "zu/base/zu_string.h"

ZU_BEGIN_DECLS

// What shared files, and the calls that load them, are called.
typedef struct ZU___RUNTIME_PLATFORM_NAMES {
    const char *fileEnding; // of a shared file, with its point
    const char *openCall;   // behind zu___RuntimePlatformOpenFile
    const char *findCall;   // behind zu___RuntimePlatformFindSymbol
    const char *errorCall;  // behind zu___RuntimePlatformError
} ZU___RUNTIME_PLATFORM_NAMES;
extern const ZU___RUNTIME_PLATFORM_NAMES zu___RuntimePlatformNames;

// Loads a shared file, with all that it needs, so that nobody sees its names by accident; null if that fails.
void *zu___RuntimePlatformOpenFile( const char *fileName );
// Gives back a file that zu___RuntimePlatformOpenFile has loaded.
void zu___RuntimePlatformCloseFile( void *file );
// Stores the address of the datum that a file exports as `symbol`; false if it exports none.
ZU_BOOL zu___RuntimePlatformFindSymbol( void *file, const char *symbol, void **address );
// Returns why the last of these calls on this thread has failed, as a text that holds until the next.
const char *zu___RuntimePlatformError( void );

ZU_END_DECLS
