#include "zu/runtime/zu_runtime_variant.h"

#include "zu/runtime/zu_module_internal.h"
#include "zu/runtime/zu_runtime_identity_internal.h"

static constexpr ZU___RUNTIME_IDENTITY IDENTITIES[] = {
    { ZU___NAMED_VALUE_OF( ZU_RUNTIME_VARIANT_RELEASE ), "release", "Release" },
    { ZU___NAMED_VALUE_OF( ZU_RUNTIME_VARIANT_DEBUG ), "debug", "Debug" },
    { ZU___NAMED_VALUE_OF( ZU_RUNTIME_VARIANT_PROFILE ), "profile", "Profile" },
};
static constexpr auto NAMES = zu___NamedColumn( IDENTITIES );
static constexpr ZU_INT COUNT = sizeof IDENTITIES / sizeof IDENTITIES[ 0 ];

// Start-up
static ZU_ENUM *zu___RuntimeVariantEnum = nullptr;

void zu___RuntimeVariantStartup( void )
{
    zu___RuntimeVariantEnum = ZU___ENUM_CREATE( zu___RuntimeVariantEnum, NAMES.rows );
}
void zu___RuntimeVariantShutdown( void )
{
    ZU_REF_RELEASE( zu___RuntimeVariantEnum );
    ZU_REF_POISON( zu___RuntimeVariantEnum );
}

// Texts
ZU_INT zuRuntimeVariant( void )
{
    return zu___module_build_variant;
}
ZU_INT zuRuntimeVariantFromString( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return zuEnumParse( zu___RuntimeVariantEnum, zus );
}
ZU_STRING *zuRuntimeVariantToString( ZU_INT var )
{
    ZU_ASSERT( ZU_RUNTIME_VARIANT_OK( var ) );
    return zuEnumGenerate( zu___RuntimeVariantEnum, var );
}
ZU_INT zuRuntimeVariantFromIdentifier( ZU_STRING *identifier )
{
    ZU_ASSERT( identifier );
    return zu___RuntimeIdentityFind( IDENTITIES, COUNT, identifier );
}
ZU_STRING *zuRuntimeVariantToIdentifier( ZU_INT var )
{
    ZU_ASSERT( ZU_RUNTIME_VARIANT_OK( var ) );
    return zuStringCreateFromAscii( IDENTITIES[ var ].identifier, -1 );
}
ZU_STRING *zuRuntimeVariantFriendlyName( ZU_INT var )
{
    ZU_ASSERT( ZU_RUNTIME_VARIANT_OK( var ) );
    return zuStringCreateFromAscii( IDENTITIES[ var ].friendlyName, -1 );
}
const char *zu___RuntimeVariantFriendlyNameCstr( ZU_INT var )
{
    ZU_ASSERT( ZU_RUNTIME_VARIANT_OK( var ) );
    return IDENTITIES[ var ].friendlyName;
}
