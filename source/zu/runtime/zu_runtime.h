// zu_runtime.h: start and stop of the library, and the modules that a process has loaded.
//
// A program starts the library once, works with it from any number of threads, and stops it at the end.  Both run on
// one thread, and nothing else may use the library meanwhile.  Stopped, it can be started again.  A forked child, which
// has the forking thread alone, may go on to use values, and may stop the library; docs/threads.md tells what it may not.
#pragma once

#include "zu/base/zu_vector.h"
#include "zu/runtime/zu_module.h"
#include "zu/runtime/zu_runtime_flags.h"
#include "zu/sys/zu_chars.h"

ZU_BEGIN_DECLS

/// Receives output of the library, `chsLength` code points.  Calls come one at a time; it must not print through the
/// library itself.
typedef void ( *ZU_RUNTIME_PRINT_FUNC )( const ZU_CHAR *chs, ZU_INT chsLength );

/// Starts the library.
///
/// `flags` are ZU_RUNTIME_FLAG_... bits and are normalized; `optionalUnloadModuleTimeout` is how long stopping waits
/// for the objects of a module to go, in milliseconds, -1 for a minute, and less aborts; `printFunc`, which may be
/// null, receives all output.  The three texts say what the application is; each is terminated, is copied, and may be
/// null.  Starts are not counted: who starts a library that runs already breaks it.
ZU_API void zuRuntimeStartup( ZU_INT flags, ZU_INT optionalUnloadModuleTimeout, ZU_RUNTIME_PRINT_FUNC printFunc,
                              const char *applicationIdentifier, const char *applicationFriendlyName,
                              const char *applicationVersion );
/// Unloads all modules, stops the library and returns 0.
///
/// If objects of the library are left, and one of the flags ZU_RUNTIME_FLAG_SNAPSHOT_... is set, a report of them is
/// printed, for which the bare library starts and stops once more.
ZU_API ZU_INT zuRuntimeShutdown( void );
/// Returns the flags of the process, normalized; 0 while the library is stopped.
ZU_API ZU_INT zuRuntimeFlags( void );
/// Hands `chsLength` code points to the print function, if there is one; a negative length aborts, and so does null
/// with any other length than 0.  Callable from any thread but by the print function.
ZU_API void zuRuntimePrint( const ZU_CHAR *chs, ZU_INT chsLength );

// Modules
//
// A module is looked for in the file "<product>-<name>.so": in the folder of the product's binaries, or, with
// ZU_RUNTIME_FLAG_IMPLICIT_MODULE_PATH, where the platform looks for shared files.  It has to fit into the process, and
// what it depends on is loaded first; then its load function decides.  Extensions that it names are loaded behind it
// where they can be, and do not count.  A module is loaded once and stays; its file stays to the end of the process.
//
// These may be called from any thread, but not by the functions of a module that run while it is loaded or unloaded.
// Invalid names and modules that depend on each other abort.
/// Returns the loaded module of that name, null if there is none.
ZU_API ZU_MODULE *zuRuntimeModule( ZU_STRING *moduleName );
/// Returns a vector of all loaded modules in the order in which they were loaded, the library's own first.  It is a
/// value: what is loaded later is not in it.
ZU_API ZU_VECTOR *zuRuntimeModulesVector( void );
/// Loads a module, if it is not loaded yet; false if that cannot be done.
ZU_API ZU_BOOL zuRuntimeTryLoadModule( ZU_STRING *moduleName );
/// Loads the modules that a text of names, divided by blanks, has, up to the first that cannot be loaded; true if all
/// are there.
ZU_API ZU_BOOL zuRuntimeTryLoadModules( ZU_STRING *moduleNames );
/// Loads the modules that a narrow text of names has; `length` is in bytes, -1: terminated.
ZU_API ZU_BOOL zuRuntimeTryLoadModulesCstr( const char *moduleNames, ZU_INT length );
/// Loads the modules that a UTF-16 text of names has; `length` is in units, -1: terminated.
ZU_API ZU_BOOL zuRuntimeTryLoadModulesWcstr( const char16_t *moduleNames, ZU_INT length );
/// Loads the modules that a vector of strings names.
ZU_API ZU_BOOL zuRuntimeTryLoadModulesVector( ZU_VECTOR *moduleNames );
/// Unloads all modules but the library's own, last ones first; zuRuntimeShutdown does so by itself.
///
/// Each is given time until no object of its sorts is left.  One that still has objects after the time that was given
/// at start-up aborts, with its name as the message.  With one of the flags ZU_RUNTIME_FLAG_SNAPSHOT_... it is reported
/// every ten seconds instead, and a time of ten seconds or more never ends.
ZU_API void zuRuntimeUnloadAllModules( void );

// Snapshots, for whoever looks for what is still alive; null unless the process keeps the object database
/// Returns a new vector of the live objects of all loaded modules, one module after the other, as
/// zuModuleSnapshotObjects does for one.
ZU_API ZU_VECTOR *zuRuntimeSnapshotObjects( void );
/// Returns a new vector of the sorts that have live objects, likewise.
ZU_API ZU_VECTOR *zuRuntimeSnapshotSorts( void );

// For authors of classes and modules

/// Loads a module without its extensions, as a step of loading; the caller holds the monitor of all loading.
ZU_API ZU_BOOL zu___RuntimeTryLoadModule( ZU_STRING *moduleName );
/// Finds the file of a module, loads it and checks it; null if any of that fails.
ZU_API ZU_MODULE *zu___RuntimePlatformLoadModule( ZU_STRING *moduleName );

ZU_END_DECLS
