#include "zu/zu.hpp"

#include <gtest/gtest.h>
#include <windows.h>

static std::string printed; // what the library has printed, in ASCII

static void printFunction( const ZU_CHAR *chs, ZU_INT chsLength )
{
    printed += std::string( chs, chs + chsLength );
}
static std::string loaded()
{
    zu::Ref<ZU_VECTOR> modules = zu::adopt( zuRuntimeModulesVector() );
    std::string names;
    for ( ZU_INT i = 0; i < zuVectorLength( modules.get() ); i++ ) {
        names += std::string( zuModuleFrom( zuVectorBacking( modules.get() )[ i ] )->moduleRecord->name ) + " ";
    }
    return names;
}
static bool load( const char *names )
{
    return zuRuntimeTryLoadModulesCstr( names, -1 );
}

TEST( Modules, DependenciesAheadExtensionsBehind )
{
    zuRuntimeStartup( ZU_RUNTIME_FLAG_IMPLICIT_MODULE_PATH, -1, printFunction, nullptr, nullptr, nullptr );
    printed.clear();
    EXPECT_TRUE( load( "gauge" ) );
    EXPECT_EQ( loaded(), "zu unit scale gauge plot ink " );
    EXPECT_EQ( printed, "unit load\nscale load\ngauge load\nplot load\nink load\n" );
    EXPECT_EQ( zuRuntimeShutdown(), 0 );
}
TEST( Modules, TellWhyTheyAreNotLoaded )
{
    zuRuntimeStartup( ZU_RUNTIME_FLAG_IMPLICIT_MODULE_PATH | ZU_RUNTIME_FLAG_MODULE_DEBUG, -1, printFunction, nullptr,
                      nullptr, nullptr );
    printed.clear();
    EXPECT_FALSE( load( "absent" ) );
    EXPECT_NE( printed.find( "[zu___RuntimePlatformLoadModule()] LoadLibraryA(): null, GetLastError(): 0x7E\n" ),
               std::string::npos )
        << printed;
    printed.clear();
    EXPECT_FALSE( load( "nothing" ) );
    EXPECT_NE( printed.find( "[zu___RuntimePlatformLoadModule()] GetProcAddress(): null, GetLastError(): 0x7F\n" ),
               std::string::npos )
        << printed;
    EXPECT_EQ( GetModuleHandleA( "zelkaratr-nothing.dll" ), nullptr ) << "the file is given back";
    EXPECT_EQ( loaded(), "zu " );
    EXPECT_EQ( zuRuntimeShutdown(), 0 );
}
TEST( Modules, CannotBeFoundWithoutAPath )
{
    zuRuntimeStartup( 0, -1, printFunction, nullptr, nullptr, nullptr );
    EXPECT_FALSE( load( "unit" ) ) << "nobody has told where the product's files are";
    EXPECT_EQ( zuRuntimeShutdown(), 0 );
}
