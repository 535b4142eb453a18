// zu_runtime_validate.h: whether texts from outside may serve as names, versions and notices of a product.
//
// Letters are those of ASCII, digits 0 to 9.  "Single blanks" stand between two other characters: neither at the start
// nor at the end, and no two in a row.
#pragma once

#include "zu/base/zu_string.h"

ZU_BEGIN_DECLS

/// Tells whether `name` may name a module, as zuModuleNameOk does.
ZU_API ZU_BOOL zuRuntimeValidateModuleName( ZU_STRING *name );
/// Tells whether `productName` is 1 to 32 lower-case letters and digits, a letter first.
ZU_API ZU_BOOL zuRuntimeValidateProductName( ZU_STRING *productName );
/// Tells whether `productFriendlyName` is 1 to 100 letters, digits and single blanks.
ZU_API ZU_BOOL zuRuntimeValidateProductFriendlyName( ZU_STRING *productFriendlyName );
/// Tells whether `productVendorName` is 1 to 100 letters, digits, "-" and single blanks.
ZU_API ZU_BOOL zuRuntimeValidateProductVendorName( ZU_STRING *productVendorName );
/// Tells whether `productCopyright` is 1 to 100 letters, digits, characters out of "(),-.:;@" and single blanks.
ZU_API ZU_BOOL zuRuntimeValidateProductCopyright( ZU_STRING *productCopyright );
/// Tells whether `productVersion` is three numbers divided by ".", none negative, each as zuFormatTryDecodeInt reads
/// them with a base of -1.
ZU_API ZU_BOOL zuRuntimeValidateProductVersion( ZU_STRING *productVersion );

ZU_END_DECLS
