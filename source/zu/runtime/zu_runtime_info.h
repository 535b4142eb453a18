// zu_runtime_info.h: all that the process knows of itself, in one store.
#pragma once

#include "zu/base/zu_store.h"

ZU_BEGIN_DECLS

/// Returns a new store for a log or a status page, with these values:
///
///     os, hardware, variant                    what the library was built for, in names for human readers
///     product, friendlyName, version           the product, its name for human readers, its version
///     versionMajor, versionMinor, versionRelease  the numbers of the version
///     buildTime                                when the product was built
///     compatibility                            the compatibility number of the library's module
///     applicationIdentifier, applicationFriendlyName, applicationVersion  as far as the application has given them
///     computerName, operatingSystemInfo, cpuInfo  as far as they are known
///     startTime                                when the library was started
///
/// and, if there is any user information, with that as the sub-store "userInformation".
ZU_API ZU_STORE *zuRuntimeInfo( void );

ZU_END_DECLS
