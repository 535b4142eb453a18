// ZU_RUNTIME_INSTALL_INFO: what an installed product says of itself: what it was built for, and what it is called.
//
// An immutable object, equal only to itself.  Each installation has it in a file "install-info", as a store in text
// form with these values, which are identifiers or pass the test of zu_runtime_validate.h that is called like them:
//
//     os, hardware, variant, productName, productFriendlyName, productVersion, productVendorName, productCopyright
#pragma once

#include "zu/base/zu_store.h"

ZU_BEGIN_DECLS

typedef struct ZU_RUNTIME_INSTALL_INFO ZU_RUNTIME_INSTALL_INFO;
// zuRuntimeInstallInfoRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_RUNTIME_INSTALL_INFO, zuRuntimeInstallInfo )

// Loading; null if a file is missing or cannot be read, or a value is missing or not valid
/// Returns the info of the installation of the process's own product.
ZU_API ZU_RUNTIME_INSTALL_INFO *zuRuntimeInstallInfoTryLoad( void );
/// Returns the info of the installation of a product; a name that is none aborts.
ZU_API ZU_RUNTIME_INSTALL_INFO *zuRuntimeInstallInfoTryLoadForProduct( ZU_STRING *productName );
/// Returns the info that a file has, in UTF-8.
ZU_API ZU_RUNTIME_INSTALL_INFO *zuRuntimeInstallInfoTryLoadFromFile( ZU_STRING *fn );
/// Returns the info that a store has.
ZU_API ZU_RUNTIME_INSTALL_INFO *zuRuntimeInstallInfoTryRestore( ZU_STORE *store );

/// Returns a new store with all values.
ZU_API ZU_STORE *zuRuntimeInstallInfoStore( ZU_RUNTIME_INSTALL_INFO *info );

// Values
/// Returns the operating system, of the constants of zu_runtime_os.h.
ZU_API ZU_INT zuRuntimeInstallInfoOs( ZU_RUNTIME_INSTALL_INFO *info );
/// Returns the hardware, of the constants of zu_runtime_hardware.h.
ZU_API ZU_INT zuRuntimeInstallInfoHardware( ZU_RUNTIME_INSTALL_INFO *info );
/// Returns the variant, of the constants of zu_runtime_variant.h.
ZU_API ZU_INT zuRuntimeInstallInfoVariant( ZU_RUNTIME_INSTALL_INFO *info );
/// Returns the product's name.
ZU_API ZU_STRING *zuRuntimeInstallInfoProductName( ZU_RUNTIME_INSTALL_INFO *info );
/// Returns the product's name for human readers.
ZU_API ZU_STRING *zuRuntimeInstallInfoProductFriendlyName( ZU_RUNTIME_INSTALL_INFO *info );
/// Returns the product's version.
ZU_API ZU_STRING *zuRuntimeInstallInfoProductVersion( ZU_RUNTIME_INSTALL_INFO *info );
/// Returns the name of the product's vendor.
ZU_API ZU_STRING *zuRuntimeInstallInfoProductVendorName( ZU_RUNTIME_INSTALL_INFO *info );
/// Returns the product's copyright notice.
ZU_API ZU_STRING *zuRuntimeInstallInfoProductCopyright( ZU_RUNTIME_INSTALL_INFO *info );

// For authors of classes and modules

/// Returns a new object; a value that is not valid aborts.
ZU_API ZU_RUNTIME_INSTALL_INFO *zu___RuntimeInstallInfoCreate( ZU_INT os, ZU_INT hardware, ZU_INT variant,
                                                               ZU_STRING *productName, ZU_STRING *productFriendlyName,
                                                               ZU_STRING *productVersion, ZU_STRING *productVendorName,
                                                               ZU_STRING *productCopyright );

ZU_END_DECLS
