#include "zu_test_string.h"
#include "zu_test_support.h"

#include <sstream>

// What zuRuntimeInfo does not tell, beside its test below
TEST( RuntimeVersion, OfProductAndApplication )
{
    EXPECT_EQ( takeText( zuRuntimeVersionProductVendorName() ), zu___module_record.productVendorName );
    EXPECT_EQ( takeText( zuRuntimeVersionProductCopyright() ), zu___module_record.productCopyright );
    EXPECT_STREQ( zu___RuntimeVersionProductBuildTimeCstr(), zu___module_record.productBuildTime );
    EXPECT_TRUE( zuRuntimeVersionApplicationHasIdentifier() );
    EXPECT_TRUE( zuRuntimeVersionApplicationHasFriendlyName() );
    EXPECT_TRUE( zuRuntimeVersionApplicationHasVersion() );
    EXPECT_STREQ( zu___RuntimeVersionApplicationIdentifierCstr(), "zu-test" );
    EXPECT_STREQ( zu___RuntimeVersionApplicationFriendlyNameCstr(), "Tests of zu" );
    EXPECT_STREQ( zu___RuntimeVersionApplicationVersionCstr(), "1.0" );
}

TEST( RuntimeValidate, Tables )
{
    static const std::string HUNDRED( 100, 'a' );
    static const struct {
        const char *parameter;
        ZU_BOOL ( *validate )( ZU_STRING * );
        std::vector<std::string> good;
        std::vector<std::string> bad;
    } ROWS[] = {
        { "productName",
          zuRuntimeValidateProductName,
          { "a", "abc1", "z0", zu___module_record.productName, std::string( 32, 'a' ) },
          { "", "1abc", "ab-c", "Abc", "aB", "a b", "a_b", std::string( 33, 'a' ), "\xC3\xA4" } },
        { "productFriendlyName",
          zuRuntimeValidateProductFriendlyName,
          { "Ab 1", "1", "a b c", zu___module_record.productFriendlyName, HUNDRED },
          { "", " ", " Ab", "Ab ", "A  b", "A-b", "A\tb", HUNDRED + "a", "\xC3\xA4", "\xC4\xB0" } },
        { "productVendorName",
          zuRuntimeValidateProductVendorName,
          { "A-b c", "-", "- -", zu___module_record.productVendorName },
          { "", "A  b", "A ", "A.b", "A, b", HUNDRED + "a" } },
        { "productCopyright",
          zuRuntimeValidateProductCopyright,
          { "Copyright (c) 2024, a@b.c; x:y", "(),-.:;@", zu___module_record.productCopyright },
          { "", "A  b", "A/b", "\xC2\xA9", "A_b", "A*", HUNDRED + "a" } },
        { "productVersion",
          zuRuntimeValidateProductVersion,
          { "4.10.30", "0.0.0", "0x10.2:11.007", " 1.2 .3", "9223372036854775807.0.0" },
          { "", "4.10", "4.10.30.1", "4.-1.0", "4..0", ".1.2", "1.2.", "1.2.3a", "1,2,3", "9223372036854775808.0.0" } },
    };
    for ( const auto &row : ROWS ) {
        for ( const std::string &text : row.good ) {
            EXPECT_TRUE( row.validate( string( text ).get() ) ) << row.parameter << ": " << text;
        }
        for ( const std::string &text : row.bad ) {
            EXPECT_FALSE( row.validate( string( text ).get() ) ) << row.parameter << ": " << text;
        }
    }
}

// A family of constants: their order is their value.
struct Family {
    const char *prefix;
    const char *assertion;
    ZU_INT ( *ofThisBuild )();
    ZU_INT ( *fromString )( ZU_STRING * );
    ZU_STRING *( *toString )( ZU_INT );
    ZU_INT ( *fromIdentifier )( ZU_STRING * );
    ZU_STRING *( *toIdentifier )( ZU_INT );
    ZU_STRING *( *friendlyName )( ZU_INT );
    const char *( *friendlyNameCstr )( ZU_INT );
    const char *constants; // a line each: the name behind the prefix, the identifier, the name for human readers
};
#define FUNCTIONS_OF( x )                                                                         \
    zuRuntime##x, zuRuntime##x##FromString, zuRuntime##x##ToString, zuRuntime##x##FromIdentifier, \
        zuRuntime##x##ToIdentifier, zuRuntime##x##FriendlyName, zu___Runtime##x##FriendlyNameCstr
static const Family FAMILIES[] = {
    { "ZU_RUNTIME_OS_", "ZU_RUNTIME_OS_OK( os )", FUNCTIONS_OF( Os ),
      "WINDOWS windows Windows\nDEBIAN_9 debian9 Debian 9\nDEBIAN_10 debian10 Debian 10\nDEBIAN_11 debian11 Debian 11\n"
      "DEBIAN_12 debian12 Debian 12\nUBUNTU_1804 ubuntu1804 Ubuntu 18.04\nUBUNTU_2004 ubuntu2004 Ubuntu 20.04\n"
      "UBUNTU_2204 ubuntu2204 Ubuntu 22.04\nRHEL_8 rhel8 RHEL 8\nRHEL_9 rhel9 RHEL 9\nMACOSX macosx MacOSX\n" },
    { "ZU_RUNTIME_HARDWARE_", "ZU_RUNTIME_HARDWARE_OK( hw )", FUNCTIONS_OF( Hardware ),
      "X32 x32 x86 (32 bit)\nX64 x64 x86 (64 bit)\nRPI2 rpi2 Raspberry Pi 2\nRPI3 rpi3 Raspberry Pi 3\n"
      "ARMHF armhf Generic ARM (armhf)\nARM64 arm64 Generic ARM (arm64)\nRISCV64 riscv64 Generic RISC-V\n" },
    { "ZU_RUNTIME_VARIANT_", "ZU_RUNTIME_VARIANT_OK( var )", FUNCTIONS_OF( Variant ),
      "RELEASE release Release\nDEBUG debug Debug\nPROFILE profile Profile\n" },
};

TEST( RuntimeIdentity, Texts )
{
    for ( const Family &family : FAMILIES ) {
        ZU_INT count = 0;
        std::istringstream constants( family.constants );
        for ( std::string name, identifier, friendlyName;
              constants >> name >> identifier && std::getline( constants >> std::ws, friendlyName ); ) {
            ZU_INT value = count++;
            name.insert( 0, family.prefix );
            EXPECT_EQ( family.fromString( string( " " + name ).get() ), value ) << name;
            EXPECT_EQ( family.fromString( string( std::to_string( value ) ).get() ), value ) << name;
            EXPECT_EQ( family.fromString( string( identifier ).get() ), -1 ) << name;
            EXPECT_EQ( takeText( family.toString( value ) ), name );
            EXPECT_EQ( family.fromIdentifier( string( identifier ).get() ), value ) << name;
            EXPECT_EQ( family.fromIdentifier( string( identifier + "0" ).get() ), -1 ) << name;
            EXPECT_EQ( takeText( family.toIdentifier( value ) ), identifier );
            EXPECT_EQ( takeText( family.friendlyName( value ) ), friendlyName );
            EXPECT_EQ( family.friendlyNameCstr( value ), friendlyName );
        }
        EXPECT_EQ( family.fromString( string( std::to_string( count ) ).get() ), -1 ) << family.prefix;
        EXPECT_EQ( family.fromIdentifier( string( "sparc" ).get() ), -1 ) << family.prefix;
        // The stamp of the library is written by the build, and has the names for human readers in it.
        EXPECT_NE( std::string( zu___module_version_string ).find( family.friendlyNameCstr( family.ofThisBuild() ) ),
                   std::string::npos );
        expectAbort( family.assertion, [ & ] { family.toString( -1 ); } );
        expectAbort( family.assertion, [ & ] { family.toIdentifier( count ); } );
        expectAbort( family.assertion, [ & ] { family.friendlyName( count ); } );
    }
}
TEST( RuntimeIdentity, FamiliesAndHardware )
{
    // For each system: whether it is of the Windows, Debian, RHEL, Linux and Unix families; how many kinds of hardware it
    // supports, of those in order; whether packages have names for hardware.
    std::string systems;
    for ( ZU_INT os = 0; ZU_RUNTIME_OS_OK( os ); os++ ) {
        systems += zuRuntimeOsIsWindows( os ) ? "W" : "";
        systems += zuRuntimeOsIsDebian( os ) ? "D" : "";
        systems += zuRuntimeOsIsRhel( os ) ? "R" : "";
        systems += zuRuntimeOsIsLinux( os ) ? "L" : "";
        systems += zuRuntimeOsIsUnix( os ) ? "U" : "";
        for ( ZU_INT hw = 0; ZU_RUNTIME_HARDWARE_OK( hw ); hw++ ) {
            systems += zuRuntimeOsSupportsHardware( os, hw ) ? std::to_string( hw ) : "";
        }
        systems += zuRuntimeOsHasHardwarePlatformName( os, 1 ) ? "! " : " ";
    }
    EXPECT_EQ( systems, "W01 DLU012345! DLU012345! DLU012345! DLU0123456! DLU01! DLU01! DLU01! RLU1! RLU1! U " );
    std::string names;
    for ( ZU_INT hw = 0; ZU_RUNTIME_HARDWARE_OK( hw ); hw++ ) {
        names += takeText( zuRuntimeOsHardwarePlatformName( ZU_RUNTIME_OS_DEBIAN_12, hw ) ) + " ";
    }
    EXPECT_EQ( names, "i386 amd64 armhf armhf armhf arm64 riscv64 " );
    std::string processors;
    for ( ZU_INT hw = 0; ZU_RUNTIME_HARDWARE_OK( hw ); hw++ ) {
        processors += zuRuntimeHardwareIsIntel( hw ) ? "I" : "";
        processors += zuRuntimeHardwareIsArm( hw ) ? "A" : "";
        processors += zuRuntimeHardwareIsRiscv( hw ) ? "R" : "";
        EXPECT_TRUE( zuRuntimeHardwareIsLittleEndian( hw ) && !zuRuntimeHardwareIsBigEndian( hw ) );
    }
    EXPECT_EQ( processors, "IIAAAAR" );
    expectAbort( "ZU_RUNTIME_OS_OK( os )", [] { zuRuntimeOsIsLinux( 11 ); } );
    expectAbort( "ZU_RUNTIME_OS_OK( os )", [] { zuRuntimeOsSupportsHardware( 11, 7 ); } );
    expectAbort( "ZU_RUNTIME_HARDWARE_OK( hw )", [] { zuRuntimeOsSupportsHardware( 0, 7 ); } );
    expectAbort( "ZU_RUNTIME_HARDWARE_OK( hw )", [] { zuRuntimeOsHardwarePlatformName( 0, -1 ); } );
    expectAbort( "ZU_RUNTIME_HARDWARE_OK( hw )", [] { zuRuntimeHardwareIsBigEndian( 7 ); } );
}

TEST( RuntimeComputer, AsTheSystemTells )
{
    std::string node = runProgram( "uname -n" );
    node.pop_back(); // the line end
    EXPECT_EQ( zuRuntimeHasComputerName(), node.size() <= 15 );
    EXPECT_EQ( takeText( zuRuntimeComputerName() ), node.size() <= 15 ? node : "" );
    EXPECT_TRUE( zuRuntimeHasOperatingSystemInfo() );
    std::string system = runProgram( "( . /etc/os-release; echo \"$PRETTY_NAME ($(uname -r))\" )" );
    EXPECT_EQ( takeText( zuRuntimeOperatingSystemInfo() ) + "\n", system );
    ASSERT_EQ( zuRuntimeHasCpuInfo(), zuRuntimeHardwareIsIntel( zuRuntimeHardware() ) );
    if ( zuRuntimeHasCpuInfo() ) {
        // The kernel asks the processor, too.  It adds the extended family, if there is one, to the base family of 15.
        std::string expected =
            runProgram( "awk -F': *' '/^vendor_id/ { v = $2 } /^cpu family/ { f = $2 } /^model[ \\t]*:/ { m = $2 } "
                        "END { printf \"%s, family:%x, model:%x, cores:\", v, f < 15 ? f : ( f - 15 ) * 16 + 15, m }' "
                        "/proc/cpuinfo; printf %s \"$(getconf _NPROCESSORS_ONLN)\"" );
        std::string info = takeText( zuRuntimeCpuInfo() );
        EXPECT_EQ( info.substr( 0, expected.size() ), expected );
        EXPECT_TRUE( info.size() == expected.size() || info.find( ", base:" ) == expected.size() ) << info;
    }
}

TEST( RuntimeUserInformation, IsAListInTheOrderOfKeys )
{
    zu::Ref<ZU_STORE> store = zu::adopt( zuStoreCreate() );
    zuStoreSetValueIntCstr( store.inOut(), "number", -1, 7 );
    for ( int i = 12; i-- > 0; ) {
        zuRuntimeSetUserInformationKey( string( std::string( 1, (char)( 'a' + i ) ) ).get(), store.get() );
    }
    zuRuntimeSetUserInformationKey( string( "b" ).get(), store.get() ); // in place of the first
    zuRuntimeDelUserInformationKey( string( "c" ).get() );
    zuRuntimeDelUserInformationKey( string( "unknown" ).get() );
    EXPECT_TRUE( zuRuntimeHasUserInformationKey( string( "b" ).get() ) );
    EXPECT_FALSE( zuRuntimeHasUserInformationKey( string( "c" ).get() ) );
    EXPECT_EQ( zu::adopt( zuRuntimeUserInformationKey( string( "b" ).get() ) ).get(), store.get() );
    EXPECT_FALSE( zu::adopt( zuRuntimeUserInformationKey( string( "c" ).get() ) ) );

    zu::Ref<ZU_STORE> info = zu::adopt( zuRuntimeInfo() );
    zu::Ref<ZU_STORE> list = zu::adopt( zuStoreStoreCstr( info.get(), "userInformation", -1 ) );
    ASSERT_TRUE( list );
    EXPECT_EQ( zuStoreLength( list.get() ), 11 );
    for ( const auto &[ address, key ] : { std::pair( "00", "a" ), { "02", "d" }, { "10", "l" } } ) {
        zu::Ref<ZU_STORE> entry = zu::adopt( zuStoreStoreCstr( list.get(), address, -1 ) );
        EXPECT_EQ( takeText( zuStoreValueCstr( entry.get(), "key", -1 ) ), key );
        EXPECT_EQ( zu::adopt( zuStoreStoreCstr( entry.get(), "store", -1 ) ).get(), store.get() );
    }
    for ( char key = 'a'; key <= 'l'; key++ ) {
        zuRuntimeDelUserInformationKey( string( std::string( 1, key ) ).get() );
    }
    EXPECT_EQ( zuStoreLength( zu::adopt( zuRuntimeUserInformation() ).get() ), 0 );

    expectAbort( "store", [] { zuRuntimeSetUserInformationKey( string( "a" ).get(), nullptr ); } );
}

TEST( RuntimeInfo, HasWhatTheFunctionsTell )
{
    zu::Ref<ZU_STORE> info = zu::adopt( zuRuntimeInfo() );
    const ZU___MODULE_RECORD &record = zu___module_record;
    const std::pair<const char *, std::string> expected[] = {
        { "os", takeText( zuRuntimeOsFriendlyName( zuRuntimeOs() ) ) },
        { "hardware", takeText( zuRuntimeHardwareFriendlyName( zuRuntimeHardware() ) ) },
        { "variant", takeText( zuRuntimeVariantFriendlyName( zuRuntimeVariant() ) ) },
        { "product", record.productName },
        { "friendlyName", record.productFriendlyName },
        { "version", std::to_string( record.productVersionMajor ) + "." + std::to_string( record.productVersionMinor ) +
                         "." + std::to_string( record.productVersionRelease ) },
        { "versionMajor", std::to_string( record.productVersionMajor ) },
        { "versionMinor", std::to_string( record.productVersionMinor ) },
        { "versionRelease", std::to_string( record.productVersionRelease ) },
        { "buildTime", record.productBuildTime },
        { "compatibility", "0" },
        { "applicationIdentifier", "zu-test" },
        { "applicationFriendlyName", "Tests of zu" },
        { "applicationVersion", "1.0" },
        { "operatingSystemInfo", takeText( zuRuntimeOperatingSystemInfo() ) },
        { "startTime", takeText( zuTimeToString( zu::adopt( zu___TimeStarted() ).get() ) ) },
        { "computerName", takeText( zuRuntimeComputerName() ) },
        { "cpuInfo", takeText( zuRuntimeCpuInfo() ) },
    };
    for ( const auto &[ address, value ] : expected ) {
        EXPECT_EQ( takeText( zuStoreValueCstr( info.get(), address, -1 ) ), value ) << address;
    }
    EXPECT_EQ( zuStoreLength( info.get() ),
               (ZU_INT)std::size( expected ) - !zuRuntimeHasComputerName() - !zuRuntimeHasCpuInfo() );
}
