// What a program is told of the system's version depends on what its manifest says it was made for, so that the system
// is asked to verify a version instead of to tell its own.

#include "zu/base/zu_string_format.h"
#include "zu/runtime/zu_runtime_computer_internal.h"

#include <cstdlib>
#include <windows.h>

#include <lm.h>

static constexpr DWORD NAME_UNITS = 16; // of a computer's name, terminator included
static constexpr ZU_INT FIRST_BUILD_OF_11 = 22000;
static constexpr WORD SERVICE_PACK_MAX = 5;

ZU_STRING *zu___RuntimeQueryComputerName( void )
{
    wchar_t name[ NAME_UNITS ];
    DWORD length = NAME_UNITS;
    if ( !GetComputerNameW( name, &length ) || length >= NAME_UNITS ) {
        return nullptr;
    }
    return zuStringCreateFromWcstr( (const char16_t *)name, (ZU_INT)length );
}

// The operating system
struct COMPUTER_SYSTEM {
    ZU_INT major;
    ZU_INT minor;
    ZU_INT productType; // one of VER_NT_..., 0: not known
    ZU_INT release;     // likewise
    ZU_INT build;       // likewise
};

static bool computerVerify( OSVERSIONINFOEXW *wanted, DWORD field )
{
    wanted->dwOSVersionInfoSize = sizeof *wanted;
    return VerifyVersionInfoW( wanted, field, VerSetConditionMask( 0, field, VER_EQUAL ) );
}
static ZU_INT computerProductType()
{
    const BYTE types[] = { VER_NT_WORKSTATION, VER_NT_SERVER, VER_NT_DOMAIN_CONTROLLER };
    for ( BYTE type : types ) {
        OSVERSIONINFOEXW wanted = {};
        wanted.wProductType = type;
        if ( computerVerify( &wanted, VER_PRODUCT_TYPE ) ) {
            return type;
        }
    }
    return 0;
}
static ZU_INT computerServicePack()
{
    for ( WORD pack = 1; pack <= SERVICE_PACK_MAX; pack++ ) {
        OSVERSIONINFOEXW wanted = {};
        wanted.wServicePackMajor = pack;
        if ( computerVerify( &wanted, VER_SERVICEPACKMAJOR ) ) {
            return pack;
        }
    }
    return 0;
}
// Returns the number that a value of the system's key has as text; 0 if it has none above that.
static ZU_INT computerReadNumber( HKEY key, const char *value )
{
    char text[ 32 ] = {};
    DWORD type;
    DWORD byteCount = sizeof text - 1;
    if ( RegQueryValueExA( key, value, nullptr, &type, (BYTE *)text, &byteCount ) != ERROR_SUCCESS || type != REG_SZ ) {
        return 0;
    }
    return zuIntMax( strtoll( text, nullptr, 10 ), 0 );
}
static void computerReadBuild( COMPUTER_SYSTEM *system )
{
    HKEY key;
    if ( RegOpenKeyExA( HKEY_LOCAL_MACHINE, "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion", 0, KEY_READ, &key ) !=
         ERROR_SUCCESS ) {
        return;
    }
    system->release = computerReadNumber( key, "ReleaseId" );
    system->build = computerReadNumber( key, "CurrentBuildNumber" );
    RegCloseKey( key );
}

static const char *computerServerOfRelease( ZU_INT release )
{
    switch ( release ) {
    case 1607:
        return "Windows Server 2016";
    case 1803:
    case 1809:
    case 1903:
    case 1909:
        return "Windows Server 2019";
    case 2009:
        return "Windows Server 2022";
    default:
        return "Windows Server XXXX";
    }
}
static const char *computerSystemName( const COMPUTER_SYSTEM *system )
{
    struct VERSION_NAMES {
        ZU_INT major;
        ZU_INT minor;
        const char *workstation;
        const char *server;
    };
    static constexpr const char *UNKNOWN = "unknown OS";
    static constexpr VERSION_NAMES NAMES[] = {
        { 5, 0, "Windows 2000", UNKNOWN },
        { 5, 1, "Windows XP", UNKNOWN },
        { 5, 2, "Windows XP 64-Bit Edition", "Windows 2003" },
        { 6, 0, "Windows Vista", "Windows Server 2008" },
        { 6, 1, "Windows 7", "Windows Server 2008 R2" },
        { 6, 2, "Windows 8", "Windows Server 2012" },
        { 6, 3, "Windows 8.1", "Windows Server 2012 R2" },
    };
    bool workstation = system->productType == VER_NT_WORKSTATION;
    if ( system->productType == 0 ) {
        return UNKNOWN;
    }
    if ( system->major == 10 && system->minor == 0 ) {
        return !workstation                         ? computerServerOfRelease( system->release )
               : system->build >= FIRST_BUILD_OF_11 ? "Windows 11"
                                                    : "Windows 10";
    }
    for ( const VERSION_NAMES &names : NAMES ) {
        if ( names.major == system->major && names.minor == system->minor ) {
            return workstation ? names.workstation : names.server;
        }
    }
    return UNKNOWN;
}
ZU_STRING *zu___RuntimeQueryOperatingSystem( void )
{
    WKSTA_INFO_100 *station = nullptr;
    if ( NetWkstaGetInfo( nullptr, 100, (BYTE **)&station ) != NERR_Success ) {
        return nullptr;
    }
    COMPUTER_SYSTEM system = { station->wki100_ver_major, station->wki100_ver_minor, computerProductType(), 0, 0 };
    NetApiBufferFree( station );
    computerReadBuild( &system );
    ZU_STRING *name = zuStringCreateFromAscii( computerSystemName( &system ), -1 );
    ZU_INT servicePack = computerServicePack();
    if ( servicePack > 0 ) {
        zuStringAppendFormatCstr( &name, " SP%i", -1, servicePack );
    }
    zuStringAppendFormatCstr( &name, " (%i/%i/%i", -1, system.major, system.minor, system.productType );
    if ( system.release > 0 ) {
        zuStringAppendFormatCstr( &name, "/%i", -1, system.release );
    }
    if ( system.release > 0 && system.build > 0 ) {
        zuStringAppendFormatCstr( &name, "/%i", -1, system.build );
    }
    zuStringAppendChar( &name, ZU_CHAR_RIGHT_PARENTHESIS );
    return name;
}

ZU_INT zu___RuntimeQueryProcessors( void )
{
    SYSTEM_INFO system;
    GetSystemInfo( &system );
    return system.dwNumberOfProcessors;
}
