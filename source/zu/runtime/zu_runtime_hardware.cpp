#include "zu/runtime/zu_runtime_hardware.h"

#include "zu/runtime/zu_module_internal.h"
#include "zu/runtime/zu_runtime_identity_internal.h"

static constexpr ZU___RUNTIME_IDENTITY IDENTITIES[] = {
    { ZU___NAMED_VALUE_OF( ZU_RUNTIME_HARDWARE_X32 ), "x32", "x86 (32 bit)" },
    { ZU___NAMED_VALUE_OF( ZU_RUNTIME_HARDWARE_X64 ), "x64", "x86 (64 bit)" },
    { ZU___NAMED_VALUE_OF( ZU_RUNTIME_HARDWARE_RPI2 ), "rpi2", "Raspberry Pi 2" },
    { ZU___NAMED_VALUE_OF( ZU_RUNTIME_HARDWARE_RPI3 ), "rpi3", "Raspberry Pi 3" },
    { ZU___NAMED_VALUE_OF( ZU_RUNTIME_HARDWARE_ARMHF ), "armhf", "Generic ARM (armhf)" },
    { ZU___NAMED_VALUE_OF( ZU_RUNTIME_HARDWARE_ARM64 ), "arm64", "Generic ARM (arm64)" },
    { ZU___NAMED_VALUE_OF( ZU_RUNTIME_HARDWARE_RISCV64 ), "riscv64", "Generic RISC-V" },
};
static constexpr auto NAMES = zu___NamedColumn( IDENTITIES );
static constexpr ZU_INT COUNT = sizeof IDENTITIES / sizeof IDENTITIES[ 0 ];

// Start-up
static ZU_ENUM *zu___RuntimeHardwareEnum = nullptr;

void zu___RuntimeHardwareStartup( void )
{
    zu___RuntimeHardwareEnum = ZU___ENUM_CREATE( zu___RuntimeHardwareEnum, NAMES.rows );
}
void zu___RuntimeHardwareShutdown( void )
{
    ZU_REF_RELEASE( zu___RuntimeHardwareEnum );
    ZU_REF_POISON( zu___RuntimeHardwareEnum );
}

// Texts
ZU_INT zuRuntimeHardware( void )
{
    return zu___module_build_hardware;
}
ZU_INT zuRuntimeHardwareFromString( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return zuEnumParse( zu___RuntimeHardwareEnum, zus );
}
ZU_STRING *zuRuntimeHardwareToString( ZU_INT hw )
{
    ZU_ASSERT( ZU_RUNTIME_HARDWARE_OK( hw ) );
    return zuEnumGenerate( zu___RuntimeHardwareEnum, hw );
}
ZU_INT zuRuntimeHardwareFromIdentifier( ZU_STRING *identifier )
{
    ZU_ASSERT( identifier );
    return zu___RuntimeIdentityFind( IDENTITIES, COUNT, identifier );
}
ZU_STRING *zuRuntimeHardwareToIdentifier( ZU_INT hw )
{
    ZU_ASSERT( ZU_RUNTIME_HARDWARE_OK( hw ) );
    return zuStringCreateFromAscii( IDENTITIES[ hw ].identifier, -1 );
}
ZU_STRING *zuRuntimeHardwareFriendlyName( ZU_INT hw )
{
    ZU_ASSERT( ZU_RUNTIME_HARDWARE_OK( hw ) );
    return zuStringCreateFromAscii( IDENTITIES[ hw ].friendlyName, -1 );
}
const char *zu___RuntimeHardwareFriendlyNameCstr( ZU_INT hw )
{
    ZU_ASSERT( ZU_RUNTIME_HARDWARE_OK( hw ) );
    return IDENTITIES[ hw ].friendlyName;
}

// Families
ZU_BOOL zuRuntimeHardwareIsIntel( ZU_INT hw )
{
    ZU_ASSERT( ZU_RUNTIME_HARDWARE_OK( hw ) );
    return hw == ZU_RUNTIME_HARDWARE_X32 || hw == ZU_RUNTIME_HARDWARE_X64;
}
ZU_BOOL zuRuntimeHardwareIsArm( ZU_INT hw )
{
    ZU_ASSERT( ZU_RUNTIME_HARDWARE_OK( hw ) );
    return hw >= ZU_RUNTIME_HARDWARE_RPI2 && hw <= ZU_RUNTIME_HARDWARE_ARM64;
}
ZU_BOOL zuRuntimeHardwareIsRiscv( ZU_INT hw )
{
    ZU_ASSERT( ZU_RUNTIME_HARDWARE_OK( hw ) );
    return hw == ZU_RUNTIME_HARDWARE_RISCV64;
}
ZU_BOOL zuRuntimeHardwareIsLittleEndian( ZU_INT hw )
{
    ZU_ASSERT( ZU_RUNTIME_HARDWARE_OK( hw ) );
    return ZU_TRUE;
}
ZU_BOOL zuRuntimeHardwareIsBigEndian( ZU_INT hw )
{
    ZU_ASSERT( ZU_RUNTIME_HARDWARE_OK( hw ) );
    return ZU_FALSE;
}
