// ZU_RUNTIME_PATHS: where a product is installed and where it may write, a directory for each kind of
// zu_runtime_path.h.
//
// A copy-on-write value; zu_obj.h tells what holds for all of them.  A directory is a text that ends with a solidus.  A
// kind may be absent.  Objects are equal only to themselves.
//
// The paths of the process's own product are found out when the library starts.  For each kind but the first, the
// environment comes first: the variable of the table, in which X is the name of the product in capitals, such as
// RQ_ZELKARATR_DATA_PATH.  It must hold an absolute path; anything else is as good as nothing.  Without it, the default
// applies, if what that builds on is there:
//
//     ZU_RUNTIME_PATH_INSTALL                             where the system has recorded that the product is installed
//     ZU_RUNTIME_PATH_PRODUCT       RQ_X_PRODUCT_PATH     the install path
//     ZU_RUNTIME_PATH_PRODUCT_BIN   RQ_X_BIN_PATH         bin/ in the product path
//     ZU_RUNTIME_PATH_PRODUCT_RES   RQ_X_RES_PATH         res/ in the product path
//     ZU_RUNTIME_PATH_DATA          RQ_X_DATA_PATH        VELMORA/<friendly name>/ in the application data of the
//                                                         user, or of the system with ZU_RUNTIME_FLAG_SYSTEM; the name
//                                                         is that of the install info (zu_runtime_install_info.h)
//     ZU_RUNTIME_PATH_DATA_STORAGE  RQ_X_STORAGE_PATH     storage/ in the data path
//     ZU_RUNTIME_PATH_DATA_TRACE    RQ_X_TRACE_PATH       trace/ in the data path
//     ZU_RUNTIME_PATH_DATA_ABORT    RQ_X_ABORT_PATH       abort/ in the data path
//     ZU_RUNTIME_PATH_DATA_TEMP     RQ_X_TEMP_PATH        temp/ in the data path
//
// Directories for data that are defaults of the own product are created where they are missing, as far as that can be
// done.  With ZU_RUNTIME_FLAG_MINIMAL all kinds are absent.
//
// On Linux the record is a file, <sysconfdir>/velmora/installed-products/<product name>: a store in text form whose
// value "type" is 1, and whose value "installationPath" is the path.  Application data of the user is in
// $XDG_DATA_HOME, or else in $HOME/.local/share, and that of the system in /var/lib.
#pragma once

#include "zu/base/zu_store.h"
#include "zu/runtime/zu_runtime_path.h"

ZU_BEGIN_DECLS

typedef struct ZU_RUNTIME_PATHS ZU_RUNTIME_PATHS;
// zuRuntimePathsRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_RUNTIME_PATHS, zuRuntimePaths )

/// Returns the paths of the process's own product.
ZU_API ZU_RUNTIME_PATHS *zuRuntimePaths( void );

// Creation
/// Returns a new object without paths.
ZU_API ZU_RUNTIME_PATHS *zuRuntimePathsCreate( void );
/// Returns a new object with the paths of `source`.
ZU_API ZU_RUNTIME_PATHS *zuRuntimePathsCreateFrom( ZU_RUNTIME_PATHS *source );

// Directories; `path` is one of the kinds, anything else aborts
/// Returns the directory; null if it is absent.
ZU_API ZU_STRING *zuRuntimePathsPath( ZU_RUNTIME_PATHS *paths, ZU_INT path );
/// Tells whether there is a directory.
ZU_API ZU_BOOL zuRuntimePathsHasPath( ZU_RUNTIME_PATHS *paths, ZU_INT path );
/// Sets the directory to `pn`, which must end with a solidus.
ZU_API void zuRuntimePathsSetPath( ZU_RUNTIME_PATHS **paths, ZU_INT path, ZU_STRING *pn );
/// Makes the directory absent.
ZU_API void zuRuntimePathsDelPath( ZU_RUNTIME_PATHS **paths, ZU_INT path );

// Stores
/// Returns a new store with a value for each directory, at the name of its kind.
ZU_API ZU_STORE *zuRuntimePathsStore( ZU_RUNTIME_PATHS *paths );
/// Returns the directories that a store has, as a new object.  What is no kind, or does not end with a solidus, is
/// skipped.
ZU_API ZU_RUNTIME_PATHS *zuRuntimePathsRestore( ZU_STORE *store );

// For authors of classes and modules

/// Returns the paths of a product under the ZU_RUNTIME_FLAG_... `flags`; directories are created only if it is the
/// process's own.  A name that is none aborts.
ZU_API ZU_RUNTIME_PATHS *zu___RuntimePathsForProduct( ZU_INT flags, ZU_STRING *productName );
/// Finds these paths out.
ZU_API ZU_RUNTIME_PATHS *zu___RuntimePlatformPathsForProduct( ZU_INT flags, ZU_STRING *productName );
/// Finds out the paths of the process's own product.
ZU_API void zu___RuntimePlatformStartup( void );
/// Releases these paths.
ZU_API void zu___RuntimePlatformShutdown( void );

ZU_END_DECLS
