// zu_runtime_flags.h: what a process asks of the library as a whole, a ZU_INT of bits fixed at start-up.
#pragma once

#include "zu/sys/zu_int.h"

ZU_BEGIN_DECLS

typedef struct ZU_STRING ZU_STRING;

/// The bare library: cancels all other flags, and looks no path up.
#define ZU_RUNTIME_FLAG_MINIMAL                  ( (ZU_INT)0x0001 )
/// The process belongs to the system, not to a user: data lie under the system's path.
#define ZU_RUNTIME_FLAG_SYSTEM                   ( (ZU_INT)0x0002 )
/// New blocks of the heap are filled with 0xFF.
#define ZU_RUNTIME_FLAG_MEMORY_DEBUG             ( (ZU_INT)0x0008 )
/// Chains of all sorts and objects are kept.
#define ZU_RUNTIME_FLAG_OBJECT_DATABASE          ( (ZU_INT)0x0010 )
/// Each object's log begins with the stack trace of its creation.
#define ZU_RUNTIME_FLAG_OBJECT_ORIGIN            ( (ZU_INT)0x0020 )
/// Reports of stuck modules and of leaks print statistics of sorts,
#define ZU_RUNTIME_FLAG_SNAPSHOT_SORT            ( (ZU_INT)0x0040 )
/// each live object,
#define ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT          ( (ZU_INT)0x0080 )
/// its text where its class makes one,
#define ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT_TOSTRING ( (ZU_INT)0x0100 )
/// and its log.
#define ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT_LOG      ( (ZU_INT)0x0200 )
/// No handlers of last resort are installed.
#define ZU_RUNTIME_FLAG_NO_EXCEPTION_HANDLERS    ( (ZU_INT)0x0400 )
/// Modules are loaded by their bare file names, and the platform searches for them.
#define ZU_RUNTIME_FLAG_IMPLICIT_MODULE_PATH     ( (ZU_INT)0x0800 )
/// Every step of loading and unloading modules is printed.
#define ZU_RUNTIME_FLAG_MODULE_DEBUG             ( (ZU_INT)0x1000 )

/// Returns `flags` without bits that have no meaning, or none without others that are missing.
ZU_API ZU_INT zuRuntimeFlagsNormalize( ZU_INT flags );
/// Reads flags as zuFlagsetParse does, "ZU_RUNTIME_FLAG_SYSTEM|ZU_RUNTIME_FLAG_MODULE_DEBUG", and normalizes them; what
/// is no flag counts as nothing.
ZU_API ZU_INT zuRuntimeFlagsFromString( ZU_STRING *zus );
/// Returns the names of the flags that normalizing leaves of `flags`.
ZU_API ZU_STRING *zuRuntimeFlagsToString( ZU_INT flags );

// For authors of classes and modules
/// Makes the names of the flags.
ZU_API void zu___RuntimeFlagsStartup( void );
/// Releases the names of the flags.
ZU_API void zu___RuntimeFlagsShutdown( void );

ZU_END_DECLS
