// zu_runtime_variant.h: the variants in which products are built, a ZU_INT each.
//
// Each has a name, such as "ZU_RUNTIME_VARIANT_RELEASE", an identifier for file names, "release", and a name for human
// readers, "Release".  A value that is none of the constants aborts everywhere.
#pragma once

#include "zu/base/zu_string.h"

ZU_BEGIN_DECLS

#define ZU_RUNTIME_VARIANT_RELEASE ( (ZU_INT)0 )
#define ZU_RUNTIME_VARIANT_DEBUG   ( (ZU_INT)1 )
#define ZU_RUNTIME_VARIANT_PROFILE ( (ZU_INT)2 )

/// Tells whether `var` is one of the constants.
#define ZU_RUNTIME_VARIANT_OK( var ) ( ( var ) >= ZU_RUNTIME_VARIANT_RELEASE && ( var ) <= ZU_RUNTIME_VARIANT_PROFILE )

/// Returns the variant in which the library was built.
ZU_API ZU_INT zuRuntimeVariant( void );
/// Returns the value of a name, or of a number that is one of the constants; -1 for other texts.
ZU_API ZU_INT zuRuntimeVariantFromString( ZU_STRING *zus );
/// Returns the name.
ZU_API ZU_STRING *zuRuntimeVariantToString( ZU_INT var );
/// Returns the value of an identifier, -1 for other texts.
ZU_API ZU_INT zuRuntimeVariantFromIdentifier( ZU_STRING *identifier );
/// Returns the identifier.
ZU_API ZU_STRING *zuRuntimeVariantToIdentifier( ZU_INT var );
/// Returns the name for human readers.
ZU_API ZU_STRING *zuRuntimeVariantFriendlyName( ZU_INT var );

// For authors of classes and modules

/// Returns the name for human readers as a static text; usable without start-up.
ZU_API const char *zu___RuntimeVariantFriendlyNameCstr( ZU_INT var );
/// Makes the names ready.
ZU_API void zu___RuntimeVariantStartup( void );
/// Releases the names.
ZU_API void zu___RuntimeVariantShutdown( void );

ZU_END_DECLS
