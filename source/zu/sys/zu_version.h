// zu_version.h: which version of the library this is.
//
// The only place that tells it: the build reads these three numbers for the names of files and packages.  It has
// nothing to do with the version of the product that a process belongs to, which zu_runtime_version.h is about.
// docs/versions.md says what the numbers promise.
#pragma once

#include "zu/sys/zu_int.h"

#define ZU_VERSION_MAJOR 1
#define ZU_VERSION_MINOR 0
#define ZU_VERSION_PATCH 0

/// Makes one number of three that orders as versions do, for conditions of the preprocessor.
#define ZU_VERSION_MAKE( major, minor, patch ) ( (major)*1000000 + (minor)*1000 + ( patch ) )
/// The version of the headers that a program is compiled with, by ZU_VERSION_MAKE.
#define ZU_VERSION_NUMBER                      ZU_VERSION_MAKE( ZU_VERSION_MAJOR, ZU_VERSION_MINOR, ZU_VERSION_PATCH )
/// The same as a text, "1.0.0".
#define ZU_VERSION                     \
    ZU___STRINGIFY( ZU_VERSION_MAJOR ) \
    "." ZU___STRINGIFY( ZU_VERSION_MINOR ) "." ZU___STRINGIFY( ZU_VERSION_PATCH )

ZU_BEGIN_DECLS

/// Returns the version of the library that the process runs with, by ZU_VERSION_MAKE: at least the one of the headers
/// that the program was compiled with, if it is linked as docs/versions.md says.  Callable before start-up.
ZU_API ZU_INT zuVersionNumber( void );
/// Returns that version as a text, which is the library's and stays.  Callable before start-up.
ZU_API const char *zuVersion( void );

ZU_END_DECLS
