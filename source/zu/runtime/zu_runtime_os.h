// zu_runtime_os.h: the operating systems that products are built for, a ZU_INT each.
//
// Each has a name, such as "ZU_RUNTIME_OS_DEBIAN_12", an identifier for file names and package names, "debian12", and a
// name for human readers, "Debian 12".  A value that is none of the constants aborts everywhere.
#pragma once

#include "zu/base/zu_string.h"

ZU_BEGIN_DECLS

#define ZU_RUNTIME_OS_WINDOWS     ( (ZU_INT)0 )
#define ZU_RUNTIME_OS_DEBIAN_9    ( (ZU_INT)1 )
#define ZU_RUNTIME_OS_DEBIAN_10   ( (ZU_INT)2 )
#define ZU_RUNTIME_OS_DEBIAN_11   ( (ZU_INT)3 )
#define ZU_RUNTIME_OS_DEBIAN_12   ( (ZU_INT)4 )
#define ZU_RUNTIME_OS_UBUNTU_1804 ( (ZU_INT)5 )
#define ZU_RUNTIME_OS_UBUNTU_2004 ( (ZU_INT)6 )
#define ZU_RUNTIME_OS_UBUNTU_2204 ( (ZU_INT)7 )
#define ZU_RUNTIME_OS_RHEL_8      ( (ZU_INT)8 )
#define ZU_RUNTIME_OS_RHEL_9      ( (ZU_INT)9 )
#define ZU_RUNTIME_OS_MACOSX      ( (ZU_INT)10 )

/// Tells whether `os` is one of the constants.
#define ZU_RUNTIME_OS_OK( os ) ( ( os ) >= ZU_RUNTIME_OS_WINDOWS && ( os ) <= ZU_RUNTIME_OS_MACOSX )

/// Returns the system that the library was built for; an unlisted one counts as the nearest of its family.
ZU_API ZU_INT zuRuntimeOs( void );
/// Returns the value of a name, or of a number that is one of the constants; -1 for other texts.
ZU_API ZU_INT zuRuntimeOsFromString( ZU_STRING *zus );
/// Returns the name.
ZU_API ZU_STRING *zuRuntimeOsToString( ZU_INT os );
/// Returns the value of an identifier, -1 for other texts.
ZU_API ZU_INT zuRuntimeOsFromIdentifier( ZU_STRING *identifier );
/// Returns the identifier.
ZU_API ZU_STRING *zuRuntimeOsToIdentifier( ZU_INT os );
/// Returns the name for human readers.
ZU_API ZU_STRING *zuRuntimeOsFriendlyName( ZU_INT os );

// Families
/// Tells whether `os` is Windows.
ZU_API ZU_BOOL zuRuntimeOsIsWindows( ZU_INT os );
/// Tells whether packages of `os` have Debian's format: Debian and Ubuntu.
ZU_API ZU_BOOL zuRuntimeOsIsDebian( ZU_INT os );
/// Tells whether `os` is a RHEL.
ZU_API ZU_BOOL zuRuntimeOsIsRhel( ZU_INT os );
/// Tells whether `os` is a Linux.
ZU_API ZU_BOOL zuRuntimeOsIsLinux( ZU_INT os );
/// Tells whether `os` is anything but Windows.
ZU_API ZU_BOOL zuRuntimeOsIsUnix( ZU_INT os );

// Hardware under a system; `hw` is one of the constants of zu_runtime_hardware.h
/// Tells whether products are built for `os` on `hw`.
ZU_API ZU_BOOL zuRuntimeOsSupportsHardware( ZU_INT os, ZU_INT hw );
/// Tells whether packages of `os` have a name for `hw`.
ZU_API ZU_BOOL zuRuntimeOsHasHardwarePlatformName( ZU_INT os, ZU_INT hw );
/// Returns what packages of `os` call `hw`, such as "amd64", as a new string; null if they have no name for it, as on
/// Windows and macOS.
ZU_API ZU_STRING *zuRuntimeOsHardwarePlatformName( ZU_INT os, ZU_INT hw );

// For authors of classes and modules

/// Returns the name for human readers as a static text; usable without start-up.
ZU_API const char *zu___RuntimeOsFriendlyNameCstr( ZU_INT os );
/// Makes the names ready.
ZU_API void zu___RuntimeOsStartup( void );
/// Releases the names.
ZU_API void zu___RuntimeOsShutdown( void );

ZU_END_DECLS
