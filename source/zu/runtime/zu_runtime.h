// zu_runtime.h: start and stop of the library.
//
// A program starts the library once, works with it from any number of threads, and stops it at the end.  Both run on one
// thread, and nothing else may use the library meanwhile.
#pragma once

#include "zu/runtime/zu_runtime_flags.h"
#include "zu/sys/zu_chars.h"

ZU_BEGIN_DECLS

/// Receives output of the library, `chsLength` code points.  Calls come one at a time; it must not print through the
/// library itself.
typedef void ( *ZU_RUNTIME_PRINT_FUNC )( const ZU_CHAR *chs, ZU_INT chsLength );

/// Starts the library.
///
/// `flags` are ZU_RUNTIME_FLAG_... bits; `optionalUnloadModuleTimeout` is how long stopping waits for the objects of a
/// module to go, in milliseconds, -1 for a minute; `printFunc`, which may be null, receives all output.  The three texts
/// say what the application is; each is copied and may be null.
ZU_API void zuRuntimeStartup( ZU_INT flags, ZU_INT optionalUnloadModuleTimeout, ZU_RUNTIME_PRINT_FUNC printFunc,
                              const char *applicationIdentifier, const char *applicationFriendlyName,
                              const char *applicationVersion );
/// Stops the library and returns 0.
ZU_API ZU_INT zuRuntimeShutdown( void );
/// Returns the flags of the process.
ZU_API ZU_INT zuRuntimeFlags( void );
/// Hands `chsLength` code points to the print function, if there is one.  Callable from any thread.
ZU_API void zuRuntimePrint( const ZU_CHAR *chs, ZU_INT chsLength );

ZU_END_DECLS
