// zu_runtime_version.h: which product a process belongs to, and which application it is.
//
// The product is settled when the library is built; the application tells of itself at start-up.
#pragma once

#include "zu/base/zu_time.h"

ZU_BEGIN_DECLS

// Product; each text is a new string
/// Returns the product's name, lower-case letters and digits: part of file names.
ZU_API ZU_STRING *zuRuntimeVersionProductName( void );
/// Returns the product's name for human readers.
ZU_API ZU_STRING *zuRuntimeVersionProductFriendlyName( void );
/// Returns the product's vendor.
ZU_API ZU_STRING *zuRuntimeVersionProductVendorName( void );
/// Returns the product's copyright notice.
ZU_API ZU_STRING *zuRuntimeVersionProductCopyright( void );
/// Returns major, minor and release number, divided by points.
ZU_API ZU_STRING *zuRuntimeVersionProductVersion( void );
/// Returns the major number.
ZU_API ZU_INT zuRuntimeVersionProductVersionMajor( void );
/// Returns the minor number.
ZU_API ZU_INT zuRuntimeVersionProductVersionMinor( void );
/// Returns the release number.
ZU_API ZU_INT zuRuntimeVersionProductVersionRelease( void );
/// Returns when the product was built.
ZU_API ZU_TIME *zuRuntimeVersionProductBuildTime( void );

// Application
/// Tells whether the application has given an identifier.
ZU_API ZU_BOOL zuRuntimeVersionApplicationHasIdentifier( void );
/// Tells whether the application has given a name for human readers.
ZU_API ZU_BOOL zuRuntimeVersionApplicationHasFriendlyName( void );
/// Tells whether the application has given a version.
ZU_API ZU_BOOL zuRuntimeVersionApplicationHasVersion( void );
/// Returns the application's identifier as a new string, null if it has given none.
ZU_API ZU_STRING *zuRuntimeVersionApplicationIdentifier( void );
/// Returns the application's name for human readers as a new string, null if it has given none.
ZU_API ZU_STRING *zuRuntimeVersionApplicationFriendlyName( void );
/// Returns the application's version as a new string, null if it has given none.
ZU_API ZU_STRING *zuRuntimeVersionApplicationVersion( void );

// For authors of classes and modules

// The same as terminated texts that live as long as the library runs, for use where no object can be made.  Those of
// the product are there before start-up, too; those of the application are null if it has given none.
/// Returns the product's name.
ZU_API const char *zu___RuntimeVersionProductNameCstr( void );
/// Returns the product's name for human readers.
ZU_API const char *zu___RuntimeVersionProductFriendlyNameCstr( void );
/// Returns when the product was built, in the form of a ZU_TIME's text.
ZU_API const char *zu___RuntimeVersionProductBuildTimeCstr( void );
/// Returns the product's vendor.
ZU_API const char *zu___RuntimeVersionProductVendorNameCstr( void );
/// Returns the product's copyright notice.
ZU_API const char *zu___RuntimeVersionProductCopyrightCstr( void );
/// Returns the application's identifier.
ZU_API const char *zu___RuntimeVersionApplicationIdentifierCstr( void );
/// Returns the application's name for human readers.
ZU_API const char *zu___RuntimeVersionApplicationFriendlyNameCstr( void );
/// Returns the application's version.
ZU_API const char *zu___RuntimeVersionApplicationVersionCstr( void );

/// Copies the application's texts, each of which may be null.
ZU_API void zu___RuntimeVersionStartup( const char *applicationIdentifier, const char *applicationFriendlyName,
                                        const char *applicationVersion );
/// Frees the application's texts.
ZU_API void zu___RuntimeVersionShutdown( void );

ZU_END_DECLS
