#include "zu/runtime/zu_runtime_os.h"

#include "zu/runtime/zu_module_internal.h"
#include "zu/runtime/zu_runtime_hardware.h"
#include "zu/runtime/zu_runtime_identity_internal.h"

static constexpr ZU___RUNTIME_IDENTITY IDENTITIES[] = {
    { ZU___NAMED_VALUE_OF( ZU_RUNTIME_OS_WINDOWS ), "windows", "Windows" },
    { ZU___NAMED_VALUE_OF( ZU_RUNTIME_OS_DEBIAN_9 ), "debian9", "Debian 9" },
    { ZU___NAMED_VALUE_OF( ZU_RUNTIME_OS_DEBIAN_10 ), "debian10", "Debian 10" },
    { ZU___NAMED_VALUE_OF( ZU_RUNTIME_OS_DEBIAN_11 ), "debian11", "Debian 11" },
    { ZU___NAMED_VALUE_OF( ZU_RUNTIME_OS_DEBIAN_12 ), "debian12", "Debian 12" },
    { ZU___NAMED_VALUE_OF( ZU_RUNTIME_OS_UBUNTU_1804 ), "ubuntu1804", "Ubuntu 18.04" },
    { ZU___NAMED_VALUE_OF( ZU_RUNTIME_OS_UBUNTU_2004 ), "ubuntu2004", "Ubuntu 20.04" },
    { ZU___NAMED_VALUE_OF( ZU_RUNTIME_OS_UBUNTU_2204 ), "ubuntu2204", "Ubuntu 22.04" },
    { ZU___NAMED_VALUE_OF( ZU_RUNTIME_OS_RHEL_8 ), "rhel8", "RHEL 8" },
    { ZU___NAMED_VALUE_OF( ZU_RUNTIME_OS_RHEL_9 ), "rhel9", "RHEL 9" },
    { ZU___NAMED_VALUE_OF( ZU_RUNTIME_OS_MACOSX ), "macosx", "MacOSX" },
};
static constexpr auto NAMES = zu___NamedColumn( IDENTITIES );
static constexpr ZU_INT COUNT = sizeof IDENTITIES / sizeof IDENTITIES[ 0 ];

// Start-up
static ZU_ENUM *zu___RuntimeOsEnum = nullptr;

void zu___RuntimeOsStartup( void )
{
    zu___RuntimeOsEnum = ZU___ENUM_CREATE( zu___RuntimeOsEnum, NAMES.rows );
}
void zu___RuntimeOsShutdown( void )
{
    ZU_REF_RELEASE( zu___RuntimeOsEnum );
    ZU_REF_POISON( zu___RuntimeOsEnum );
}

// Texts
ZU_INT zuRuntimeOs( void )
{
    return zu___module_build_os;
}
ZU_INT zuRuntimeOsFromString( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return zuEnumParse( zu___RuntimeOsEnum, zus );
}
ZU_STRING *zuRuntimeOsToString( ZU_INT os )
{
    ZU_ASSERT( ZU_RUNTIME_OS_OK( os ) );
    return zuEnumGenerate( zu___RuntimeOsEnum, os );
}
ZU_INT zuRuntimeOsFromIdentifier( ZU_STRING *identifier )
{
    ZU_ASSERT( identifier );
    return zu___RuntimeIdentityFind( IDENTITIES, COUNT, identifier );
}
ZU_STRING *zuRuntimeOsToIdentifier( ZU_INT os )
{
    ZU_ASSERT( ZU_RUNTIME_OS_OK( os ) );
    return zuStringCreateFromAscii( IDENTITIES[ os ].identifier, -1 );
}
ZU_STRING *zuRuntimeOsFriendlyName( ZU_INT os )
{
    ZU_ASSERT( ZU_RUNTIME_OS_OK( os ) );
    return zuStringCreateFromAscii( IDENTITIES[ os ].friendlyName, -1 );
}
const char *zu___RuntimeOsFriendlyNameCstr( ZU_INT os )
{
    ZU_ASSERT( ZU_RUNTIME_OS_OK( os ) );
    return IDENTITIES[ os ].friendlyName;
}

// Families
ZU_BOOL zuRuntimeOsIsWindows( ZU_INT os )
{
    ZU_ASSERT( ZU_RUNTIME_OS_OK( os ) );
    return os == ZU_RUNTIME_OS_WINDOWS;
}
ZU_BOOL zuRuntimeOsIsDebian( ZU_INT os )
{
    ZU_ASSERT( ZU_RUNTIME_OS_OK( os ) );
    return os >= ZU_RUNTIME_OS_DEBIAN_9 && os <= ZU_RUNTIME_OS_UBUNTU_2204;
}
ZU_BOOL zuRuntimeOsIsRhel( ZU_INT os )
{
    ZU_ASSERT( ZU_RUNTIME_OS_OK( os ) );
    return os == ZU_RUNTIME_OS_RHEL_8 || os == ZU_RUNTIME_OS_RHEL_9;
}
ZU_BOOL zuRuntimeOsIsLinux( ZU_INT os )
{
    ZU_ASSERT( ZU_RUNTIME_OS_OK( os ) );
    return os >= ZU_RUNTIME_OS_DEBIAN_9 && os <= ZU_RUNTIME_OS_RHEL_9;
}
ZU_BOOL zuRuntimeOsIsUnix( ZU_INT os )
{
    ZU_ASSERT( ZU_RUNTIME_OS_OK( os ) );
    return os != ZU_RUNTIME_OS_WINDOWS;
}

// Hardware under a system
static constexpr ZU_INT X32 = (ZU_INT)1 << ZU_RUNTIME_HARDWARE_X32;
static constexpr ZU_INT X64 = (ZU_INT)1 << ZU_RUNTIME_HARDWARE_X64;
static constexpr ZU_INT RISCV64 = (ZU_INT)1 << ZU_RUNTIME_HARDWARE_RISCV64;
static constexpr ZU_INT ALL = ( (ZU_INT)1 << ( ZU_RUNTIME_HARDWARE_RISCV64 + 1 ) ) - 1;

static constexpr ZU_INT SUPPORTED_HARDWARE[] = {
    X32 | X64,      // Windows
    ALL & ~RISCV64, // Debian 9
    ALL & ~RISCV64, // Debian 10
    ALL & ~RISCV64, // Debian 11
    ALL,            // Debian 12
    X32 | X64,      // Ubuntu 18.04
    X32 | X64,      // Ubuntu 20.04
    X32 | X64,      // Ubuntu 22.04
    X64,            // RHEL 8
    X64,            // RHEL 9
    0,              // MacOSX
};
static_assert( sizeof SUPPORTED_HARDWARE / sizeof SUPPORTED_HARDWARE[ 0 ] == COUNT );

// What packages call the hardware; the two kinds of Raspberry Pi run packages for any ARM of theirs.
static constexpr char PLATFORM_NAMES[][ 8 ] = { "i386", "amd64", "armhf", "armhf", "armhf", "arm64", "riscv64" };

ZU_BOOL zuRuntimeOsSupportsHardware( ZU_INT os, ZU_INT hw )
{
    ZU_ASSERT( ZU_RUNTIME_OS_OK( os ) );
    ZU_ASSERT( ZU_RUNTIME_HARDWARE_OK( hw ) );
    return ( SUPPORTED_HARDWARE[ os ] & (ZU_INT)1 << hw ) != 0;
}
ZU_BOOL zuRuntimeOsHasHardwarePlatformName( ZU_INT os, ZU_INT hw )
{
    ZU_ASSERT( ZU_RUNTIME_OS_OK( os ) );
    ZU_ASSERT( ZU_RUNTIME_HARDWARE_OK( hw ) );
    return zuRuntimeOsIsLinux( os );
}
ZU_STRING *zuRuntimeOsHardwarePlatformName( ZU_INT os, ZU_INT hw )
{
    ZU_ASSERT( ZU_RUNTIME_OS_OK( os ) );
    ZU_ASSERT( ZU_RUNTIME_HARDWARE_OK( hw ) );
    return zuRuntimeOsHasHardwarePlatformName( os, hw ) ? zuStringCreateFromAscii( PLATFORM_NAMES[ hw ], -1 ) : nullptr;
}
