// zu_runtime_platform_internal.h: what a platform must provide to load modules, and the steps of loading one.
#pragma once

#include "zu/runtime/zu_runtime.h"

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
// Stores the address of the datum that a file exports as `symbol`, which may be null; false if it exports none.
ZU_BOOL zu___RuntimePlatformFindSymbol( void *file, const char *symbol, void **address );
// Returns why the last of these calls on this thread has failed, as a text that holds until the next.
const char *zu___RuntimePlatformError( void );

// The steps, which checking a file has too
// Loads a module's file; null if that fails.
void *zu___RuntimePlatformOpenModuleFile( ZU_STRING *fileName );
// Stores what a file exports under the symbol of a module, which may be null or no module; false if there is no such
// symbol.
bool zu___RuntimePlatformFindModuleObject( void *file, ZU_STRING *moduleName, ZU_OBJ **obj );
// Returns a new text for the failure of a step, of which `call` is the platform's part.
ZU_STRING *zu___RuntimePlatformCallFailure( const char *call );
// Tells whether a module that is compatible has the name.
bool zu___RuntimePlatformModuleIsNamed( ZU_MODULE *module, ZU_STRING *moduleName );

ZU_END_DECLS
