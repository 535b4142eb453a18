// zu_runtime_path.h: the kinds of directories that an installed product has, a ZU_INT each.
//
// zu_runtime_paths.h tells where they are.  Each has a name, such as "ZU_RUNTIME_PATH_DATA".
#pragma once

#include "zu/base/zu_string.h"

ZU_BEGIN_DECLS

/// Where the product is installed.
#define ZU_RUNTIME_PATH_INSTALL      ( (ZU_INT)0 )
/// What the product consists of; where it is installed, unless it is told otherwise.
#define ZU_RUNTIME_PATH_PRODUCT      ( (ZU_INT)1 )
/// Programs and modules.
#define ZU_RUNTIME_PATH_PRODUCT_BIN  ( (ZU_INT)2 )
/// Files that come with the product.
#define ZU_RUNTIME_PATH_PRODUCT_RES  ( (ZU_INT)3 )
/// What the product writes.
#define ZU_RUNTIME_PATH_DATA         ( (ZU_INT)4 )
/// What is to be kept.
#define ZU_RUNTIME_PATH_DATA_STORAGE ( (ZU_INT)5 )
/// Records of what the product does.
#define ZU_RUNTIME_PATH_DATA_TRACE   ( (ZU_INT)6 )
/// Reports of processes that were aborted.
#define ZU_RUNTIME_PATH_DATA_ABORT   ( (ZU_INT)7 )
/// What may go at any time.
#define ZU_RUNTIME_PATH_DATA_TEMP    ( (ZU_INT)8 )

/// Tells whether `path` is one of the constants.
#define ZU_RUNTIME_PATH_OK( path ) ( ( path ) >= ZU_RUNTIME_PATH_INSTALL && ( path ) <= ZU_RUNTIME_PATH_DATA_TEMP )

/// Returns the value of a name, or of a number that is one of the constants; -1 for other texts.
ZU_API ZU_INT zuRuntimePathFromString( ZU_STRING *zus );
/// Returns the name; a value that is none of the constants aborts.
ZU_API ZU_STRING *zuRuntimePathToString( ZU_INT path );

// For authors of classes and modules

/// Makes the names ready.
ZU_API void zu___RuntimePathStartup( void );
/// Releases the names.
ZU_API void zu___RuntimePathShutdown( void );

ZU_END_DECLS
