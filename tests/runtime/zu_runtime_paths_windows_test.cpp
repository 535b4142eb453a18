#include "zu/runtime/zu_runtime_paths_internal.h"
#include "zu_test_string.h"

#include <windows.h>

static std::string normalized( const std::string &pn )
{
    ZU_STRING *result = zu___RuntimePathsNormalize( string( pn ).get() );
    return result ? takeText( result ) : "none";
}
TEST( RuntimePathsWindows, PassWithADrive )
{
    EXPECT_EQ( normalized( "C:\\x\\y" ), "C:/x/y/" );
    EXPECT_EQ( normalized( "C:/x\\" ), "C:/x/" );
    for ( const char *refused : { "", "\\x", "/x", "\\\\server\\x" } ) {
        EXPECT_EQ( normalized( refused ), "none" ) << refused;
    }
}
TEST( RuntimePathsWindows, OfTheInstallationAreInTheRegistry )
{
    static constexpr const char *KEY = "SOFTWARE\\VELMORA\\Installed Products\\any1";
    auto installed = [] {
        auto paths = zu::adopt( zu___RuntimePathsForProduct( 0, string( "any1" ).get() ) );
        ZU_STRING *pn = zuRuntimePathsPath( paths.get(), ZU_RUNTIME_PATH_INSTALL );
        return pn ? takeText( pn ) : "none";
    };
    EXPECT_EQ( installed(), "none" );
    DWORD type = 1;
    const char path[] = "C:\\Programs\\Any 1";
    RegSetKeyValueA( HKEY_LOCAL_MACHINE, KEY, "Installation Path", REG_SZ, path, sizeof path );
    EXPECT_EQ( installed(), "none" );
    RegSetKeyValueA( HKEY_LOCAL_MACHINE, KEY, "Type", REG_DWORD, &type, sizeof type );
    EXPECT_EQ( installed(), "C:/Programs/Any 1/" );
    RegDeleteTreeA( HKEY_LOCAL_MACHINE, KEY );
}
TEST( RuntimePathsWindows, OfApplicationDataAreTheSystems )
{
    std::string user = takeText( zu___RuntimePathsApplicationData( ZU_FALSE, ZU_FALSE ) );
    std::string system = takeText( zu___RuntimePathsApplicationData( ZU_TRUE, ZU_FALSE ) );
    EXPECT_TRUE( user.ends_with( "/" ) && system.ends_with( "/" ) && user != system ) << user << " " << system;
}
