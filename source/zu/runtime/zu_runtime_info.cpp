#include "zu/runtime/zu_runtime_info.h"

#include "zu/base/zu_time.h"
#include "zu/io/zu_print.h"
#include "zu/runtime/zu_module.h"
#include "zu/runtime/zu_runtime_computer_info.h"
#include "zu/runtime/zu_runtime_computer_name.h"
#include "zu/runtime/zu_runtime_hardware.h"
#include "zu/runtime/zu_runtime_internal.h"
#include "zu/runtime/zu_runtime_os.h"
#include "zu/runtime/zu_runtime_user_information.h"
#include "zu/runtime/zu_runtime_variant.h"
#include "zu/runtime/zu_runtime_version.h"

// Takes the text over; null leaves the value out.
static void infoSet( ZU_STORE **info, const char *address, ZU_STRING *value )
{
    if ( value ) {
        zuStoreSetValueCstr( info, address, -1, value );
        zuStringRelease( value );
    }
}
// Takes the time over.
static void infoSetTime( ZU_STORE **info, const char *address, ZU_TIME *tm )
{
    infoSet( info, address, zuTimeToString( tm ) );
    zuTimeRelease( tm );
}
ZU_STORE *zuRuntimeInfo( void )
{
    ZU_STORE *info = zuStoreCreate();
    infoSet( &info, "os", zuRuntimeOsFriendlyName( zuRuntimeOs() ) );
    infoSet( &info, "hardware", zuRuntimeHardwareFriendlyName( zuRuntimeHardware() ) );
    infoSet( &info, "variant", zuRuntimeVariantFriendlyName( zuRuntimeVariant() ) );
    infoSet( &info, "product", zuRuntimeVersionProductName() );
    infoSet( &info, "friendlyName", zuRuntimeVersionProductFriendlyName() );
    infoSet( &info, "version", zuRuntimeVersionProductVersion() );
    zuStoreSetValueIntCstr( &info, "versionMajor", -1, zuRuntimeVersionProductVersionMajor() );
    zuStoreSetValueIntCstr( &info, "versionMinor", -1, zuRuntimeVersionProductVersionMinor() );
    zuStoreSetValueIntCstr( &info, "versionRelease", -1, zuRuntimeVersionProductVersionRelease() );
    infoSetTime( &info, "buildTime", zuRuntimeVersionProductBuildTime() );
    ZU_MODULE_VERSION *version = zuModuleVersion( zuModule() );
    zuStoreSetValueIntCstr( &info, "compatibility", -1, zuModuleVersionCompatibility( version ) );
    zuModuleVersionRelease( version );
    infoSet( &info, "applicationIdentifier", zuRuntimeVersionApplicationIdentifier() );
    infoSet( &info, "applicationFriendlyName", zuRuntimeVersionApplicationFriendlyName() );
    infoSet( &info, "applicationVersion", zuRuntimeVersionApplicationVersion() );
    infoSet( &info, "computerName", zuRuntimeComputerName() );
    infoSet( &info, "operatingSystemInfo", zuRuntimeOperatingSystemInfo() );
    infoSet( &info, "cpuInfo", zuRuntimeCpuInfo() );
    infoSetTime( &info, "startTime", zu___TimeStarted() );
    ZU_STORE *userInformation = zuRuntimeUserInformation();
    if ( zuStoreLength( userInformation ) > 0 ) {
        zuStoreSetStoreCstr( &info, "userInformation", -1, userInformation );
    }
    zuStoreRelease( userInformation );
    return info;
}

void zu___RuntimePrintProductReport( void )
{
    zuPrintCstr( ZU___RUNTIME_REPORT_LINE, -1 );
    zuPrintFormatCstr( "Product   : %lc\n", -1, zu___RuntimeVersionProductNameCstr() );
    zuPrintFormatCstr( "Friendly  : %lc\n", -1, zu___RuntimeVersionProductFriendlyNameCstr() );
    zuPrintFormatCstr( "Version   : %~s\n", -1, zuRuntimeVersionProductVersion() );
    zuPrintFormatCstr( "OS        : %~s\n", -1, zuRuntimeOsFriendlyName( zuRuntimeOs() ) );
    zuPrintFormatCstr( "Hardware  : %~s\n", -1, zuRuntimeHardwareFriendlyName( zuRuntimeHardware() ) );
    zuPrintFormatCstr( "Variant   : %~s\n", -1, zuRuntimeVariantFriendlyName( zuRuntimeVariant() ) );
    zuPrintFormatCstr( "Build Time: %lc\n", -1, zu___RuntimeVersionProductBuildTimeCstr() );
}
