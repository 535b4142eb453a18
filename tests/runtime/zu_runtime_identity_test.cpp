#include "zu_test_string.h"

TEST( RuntimeValidate, Tables )
{
    // What is good and what is bad
    static const std::string LONGEST( 100, 'a' );
    static const struct {
        ZU_BOOL ( *validate )( ZU_STRING * );
        std::string good, bad;
    } ROWS[] = {
        { zuRuntimeValidateProductName,
          "a|abc1|z0|aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa|" + std::string( zu___module_record.productName ),
          "|1abc|ab-c|Abc|aB|a b|a_b|aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa|\xC3\xA4" },
        { zuRuntimeValidateProductFriendlyName,
          "Ab 1|1|a b c|" + LONGEST + "|" + zu___module_record.productFriendlyName,
          "| | Ab|Ab |A  b|A-b|A\tb|\xC3\xA4|\xC4\xB0|a" + LONGEST },
        { zuRuntimeValidateProductVendorName, "A-b c|-|- -|" + std::string( zu___module_record.productVendorName ),
          "|A  b|A |A.b|A, b|a" + LONGEST },
        { zuRuntimeValidateProductCopyright,
          "Copyright (c) 2024, a@b.c; x:y|(),-.:;@|" + std::string( zu___module_record.productCopyright ),
          "|A  b|A/b|\xC2\xA9|A_b|A*|a" + LONGEST },
        { zuRuntimeValidateProductVersion, "4.10.30|0.0.0|0x10.2:11.007| 1.2 .3|9223372036854775807.0.0",
          "|4.10|4.10.30.1|4.-1.0|4..0|.1.2|1.2.|1.2.3a|1,2,3|9223372036854775808.0.0" },
    };
    for ( const auto &row : ROWS ) {
        for ( const std::string &text : divided( row.good ) ) {
            EXPECT_TRUE( row.validate( string( text ).get() ) ) << &row - ROWS << ": " << text;
        }
        for ( const std::string &text : divided( row.bad ) ) {
            EXPECT_FALSE( row.validate( string( text ).get() ) ) << &row - ROWS << ": " << text;
        }
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
