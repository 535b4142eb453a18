#include "zu/runtime/zu_runtime_paths_internal.h"
#include "zu/runtime/zu_runtime_paths_linux_internal.h"
#include "zu_test_string.h"

#include <filesystem>
#include <fstream>

static const std::string OWN = zu___module_record.productName;
static const std::string OTHER = "elsewhere";

static std::string shortName( ZU_INT path )
{
    return takeText( zuRuntimePathToString( path ) ).substr( std::string( "ZU_RUNTIME_PATH_" ).size() );
}
// "<kind>=<directory>" for each kind that is there, without the part of each kind's name that all have
static std::string render( ZU_RUNTIME_PATHS *paths )
{
    std::string text;
    for ( ZU_INT path = 0; path < 9; path++ ) {
        zu::Ref<ZU_STRING> pn = zu::adopt( zuRuntimePathsPath( paths, path ) );
        EXPECT_EQ( zuRuntimePathsHasPath( paths, path ), pn ? ZU_TRUE : ZU_FALSE );
        if ( pn ) {
            text += ( text.empty() ? "" : " " ) + shortName( path ) + "=" + takeText( zuStringRetain( pn.get() ) );
        }
    }
    return text;
}

// A machine of its own: records, installations, a home, and none of the variables.
class RuntimePaths : public testing::Test {
protected:
    std::filesystem::path root;
    std::string records;
    std::map<std::string, std::string> variables; // as they were

    void SetUp() override
    {
        std::string place = ( std::filesystem::temp_directory_path() / "zu-paths-XXXXXX" ).string();
        ASSERT_TRUE( mkdtemp( place.data() ) );
        root = place;
        records = place + "/records/";
        zu___RuntimePathsRecords = records.c_str();
        for ( const char *directory : { "records", "installed", "home", "data", "forced" } ) {
            std::filesystem::create_directory( root / directory );
        }
        set( "HOME", place + "/home" );
        set( "XDG_DATA_HOME", "" );
    }
    void TearDown() override
    {
        for ( const auto &[ name, value ] : variables ) {
            setenv( name.c_str(), value.c_str(), 1 );
        }
        std::filesystem::remove_all( root );
    }
    void set( const std::string &name, const std::string &value )
    {
        const char *before = getenv( name.c_str() );
        variables.emplace( name, before ? before : "" );
        setenv( name.c_str(), value.c_str(), 1 );
    }
    // The variable of a kind, of the product
    void force( const std::string &product, const char *kind, const std::string &value )
    {
        std::string name = "RQ_" + product + "_" + kind + "_PATH";
        std::transform( name.begin(), name.end(), name.begin(), []( char ch ) { return (char)toupper( ch ); } );
        set( name, value );
    }
    void write( const std::string &file, const std::string &text )
    {
        std::ofstream( root / file ) << text;
    }
    void install( const std::string &product )
    {
        write( "records/" + product, "type=1\ninstallationPath=" + in( "installed" ) + "\n" );
        write( "installed/install-info",
               "os=debian12\nhardware=x64\nvariant=release\nproductName=any1\nproductFriendlyName=Any 1\n"
               "productVersion=1.2.3\nproductVendorName=Some-one\nproductCopyright=(c) 2024, someone\n" );
    }
    std::string in( const std::string &directory )
    {
        return ( root / directory ).string();
    }
    // The paths of a product, with the machine's root as "~"
    std::string found( const std::string &product, ZU_INT flags = 0 )
    {
        zu::Ref<ZU_RUNTIME_PATHS> paths = zu::adopt( zu___RuntimePathsForProduct( flags, string( product ).get() ) );
        std::string text = render( paths.get() ), place = root.string();
        for ( size_t at; ( at = text.find( place ) ) != std::string::npos; ) {
            text.replace( at, place.size(), "~" );
        }
        return text;
    }
};

static const std::string INSTALLED = "INSTALL=~/installed/ PRODUCT=~/installed/ PRODUCT_BIN=~/installed/bin/ "
                                     "PRODUCT_RES=~/installed/res/";
static std::string dataIn( const std::string &directory )
{
    return "DATA=" + directory + " DATA_STORAGE=" + directory + "storage/ DATA_TRACE=" + directory +
           "trace/ DATA_ABORT=" + directory + "abort/ DATA_TEMP=" + directory + "temp/";
}

TEST_F( RuntimePaths, ComeFromTheRecord )
{
    EXPECT_EQ( found( OTHER ), "" );
    install( OTHER );
    EXPECT_EQ( found( OTHER ), INSTALLED + " " + dataIn( "~/home/.local/share/VELMORA/Any 1/" ) );
    set( "XDG_DATA_HOME", "relative" );
    EXPECT_EQ( found( OTHER ), INSTALLED + " " + dataIn( "~/home/.local/share/VELMORA/Any 1/" ) );
    set( "XDG_DATA_HOME", in( "data/" ) );
    EXPECT_EQ( found( OTHER ), INSTALLED + " " + dataIn( "~/data/VELMORA/Any 1/" ) );
    EXPECT_EQ( found( OTHER, ZU_RUNTIME_FLAG_SYSTEM ), INSTALLED + " " + dataIn( "/var/lib/VELMORA/Any 1/" ) );
    EXPECT_EQ( found( OTHER, ZU_RUNTIME_FLAG_MINIMAL ), "" );
    EXPECT_TRUE( std::filesystem::is_empty( root / "home" ) && std::filesystem::is_empty( root / "data" ) );

    write( "installed/install-info", "os=debian12\n" );
    EXPECT_EQ( found( OTHER ), INSTALLED );
    for ( const char *record :
          { "", "type=2\ninstallationPath=/a\n", "installationPath=/a\n", "type=1\n", "type=1\ninstallationPath=a/b\n",
            "type=1\ninstallationPath=\n", "type=1\ninstallationPath=/\xFF\n" } ) {
        write( "records/" + OTHER, record );
        EXPECT_EQ( found( OTHER ), "" ) << record;
    }
}
TEST_F( RuntimePaths, CanBeForced )
{
    install( OTHER );
    force( OTHER, "PRODUCT", in( "forced" ) );
    EXPECT_EQ( found( OTHER ),
               "INSTALL=~/installed/ PRODUCT=~/forced/ PRODUCT_BIN=~/forced/bin/ PRODUCT_RES=~/forced/res/ " +
                   dataIn( "~/home/.local/share/VELMORA/Any 1/" ) )
        << "the installation keeps its info";
    force( OTHER, "PRODUCT", "relative/path" );
    force( OTHER, "DATA", in( "forced/" ) );
    force( OTHER, "TEMP", "" );
    EXPECT_EQ( found( OTHER ), INSTALLED + " " + dataIn( "~/forced/" ) );
    EXPECT_TRUE( std::filesystem::is_empty( root / "forced" ) );
    std::filesystem::remove( root / "records" / OTHER );
    EXPECT_EQ( found( OTHER ), dataIn( "~/forced/" ) );

    const std::pair<const char *, const char *> KINDS[] = {
        { "PRODUCT", "PRODUCT" },      { "BIN", "PRODUCT_BIN" },  { "RES", "PRODUCT_RES" },  { "DATA", "DATA" },
        { "STORAGE", "DATA_STORAGE" }, { "TRACE", "DATA_TRACE" }, { "ABORT", "DATA_ABORT" }, { "TEMP", "DATA_TEMP" },
    };
    std::string expected;
    for ( const auto &[ variable, kind ] : KINDS ) {
        std::string pn = std::string( "/\\" ) + variable + " κ";
        force( OTHER, variable, pn );
        expected += ( expected.empty() ? "" : " " ) + std::string( kind ) + "=" + pn + "/";
    }
    EXPECT_EQ( found( OTHER ), expected ) << "a reverse solidus is a character as any other";
    EXPECT_EQ( found( OWN ), "" ) << "of another product";
}
TEST_F( RuntimePaths, AreCreatedForDataOfTheOwnProduct )
{
    install( OWN );
    EXPECT_EQ( found( OWN ), INSTALLED + " " + dataIn( "~/home/.local/share/VELMORA/Any 1/" ) );
    set( "XDG_DATA_HOME", in( "data/new" ) );
    EXPECT_EQ( found( OWN ), INSTALLED + " " + dataIn( "~/data/new/VELMORA/Any 1/" ) );
    force( OWN, "DATA", in( "forced" ) );
    force( OWN, "TRACE", in( "not" ) );
    force( OWN, "BIN", in( "not" ) );
    found( OWN );
    for ( const char *data : { "home/.local/share/VELMORA/Any 1", "data/new/VELMORA/Any 1", "forced" } ) {
        for ( const char *directory : { "storage", "trace", "abort", "temp" } ) {
            bool expected = std::string( data ) + directory != "forcedtrace";
            EXPECT_EQ( std::filesystem::is_directory( root / data / directory ), expected ) << data << directory;
        }
    }
    EXPECT_FALSE( std::filesystem::exists( root / "not" ) );
    EXPECT_FALSE( std::filesystem::exists( root / "installed/bin" ) );
}

// The value
TEST_F( RuntimePaths, AsAValue )
{
    SeededRandom random;
    std::map<ZU_INT, std::string> model, copyModel;
    zu::Ref<ZU_RUNTIME_PATHS> paths = zu::adopt( zuRuntimePathsCreate() ), copy = paths;
    auto rendered = []( const std::map<ZU_INT, std::string> &of ) {
        std::string text;
        for ( const auto &[ path, pn ] : of ) {
            text += ( text.empty() ? "" : " " ) + shortName( path ) + "=" + pn;
        }
        return text;
    };
    for ( int step = 0; step < 500; step++ ) {
        ZU_INT path = (ZU_INT)( random() % 9 );
        if ( random() % 8 == 0 ) {
            copy = random() % 2 ? paths : zu::adopt( zuRuntimePathsCreateFrom( paths.get() ) );
            copyModel = model;
        } else if ( random() % 2 ) {
            model[ path ] = "/" + std::to_string( random() % 100 ) + "/";
            zuRuntimePathsSetPath( paths.inOut(), path, string( model[ path ] ).get() );
        } else {
            model.erase( path );
            zuRuntimePathsDelPath( paths.inOut(), path );
        }
        ASSERT_EQ( render( paths.get() ), rendered( model ) );
        ASSERT_EQ( render( copy.get() ), rendered( copyModel ) );
        zu::Ref<ZU_STORE> store = zu::adopt( zuRuntimePathsStore( paths.get() ) );
        ASSERT_EQ( zuStoreLength( store.get() ), (ZU_INT)model.size() );
        zuStoreSetValueCstr( store.inOut(), "ZU_RUNTIME_PATH_OTHER", -1, string( "/a/" ).get() );
        zuStoreSetStoreCstr( store.inOut(), "ZU_RUNTIME_PATH_", -1, store.get() );
        if ( !model.count( path ) ) {
            zu::Ref<ZU_STRING> name = zu::adopt( zuRuntimePathToString( path ) );
            zuStoreSetValue( store.inOut(), name.get(), string( "/a" ).get() );
        }
        ASSERT_EQ( render( zu::adopt( zuRuntimePathsRestore( store.get() ) ).get() ), rendered( model ) );
    }
}

// Install info
using Fields = std::map<std::string, std::string>;
static const Fields FIELDS = {
    { "os", "debian12" },
    { "hardware", "x64" },
    { "variant", "debug" },
    { "productName", "any1" },
    { "productFriendlyName", "Any 1" },
    { "productVersion", "1.2.3" },
    { "productVendorName", "Some-one" },
    { "productCopyright", "(c) 2024, someone" },
};
static zu::Ref<ZU_RUNTIME_INSTALL_INFO> restored( const Fields &fields )
{
    zu::Ref<ZU_STORE> store = zu::adopt( zuStoreCreate() );
    for ( const auto &[ key, value ] : fields ) {
        zuStoreSetValueCstr( store.inOut(), key.c_str(), -1, string( value ).get() );
    }
    return zu::adopt( zuRuntimeInstallInfoTryRestore( store.get() ) );
}
static Fields stored( ZU_RUNTIME_INSTALL_INFO *info )
{
    Fields fields;
    zu::Ref<ZU_STORE> store = zu::adopt( zuRuntimeInstallInfoStore( info ) );
    for ( ZU_INT i = 0; i < zuStoreLength( store.get() ); i++ ) {
        fields[ takeText( zuStoreAddressAt( store.get(), i ) ) ] = takeText( zuStoreValueAt( store.get(), i ) );
    }
    return fields;
}
TEST( RuntimeInstallInfo, StoresWhatItRestores )
{
    zu::Ref<ZU_RUNTIME_INSTALL_INFO> info = restored( FIELDS );
    ASSERT_TRUE( info );
    EXPECT_EQ( stored( info.get() ), FIELDS );
    EXPECT_EQ( zuRuntimeInstallInfoOs( info.get() ), ZU_RUNTIME_OS_DEBIAN_12 );
    EXPECT_EQ( zuRuntimeInstallInfoHardware( info.get() ), ZU_RUNTIME_HARDWARE_X64 );
    EXPECT_EQ( zuRuntimeInstallInfoVariant( info.get() ), ZU_RUNTIME_VARIANT_DEBUG );
    zu::Ref<ZU_STRING> texts[] = { zu::adopt( zuRuntimeInstallInfoProductName( info.get() ) ),
                                   zu::adopt( zuRuntimeInstallInfoProductFriendlyName( info.get() ) ),
                                   zu::adopt( zuRuntimeInstallInfoProductVersion( info.get() ) ),
                                   zu::adopt( zuRuntimeInstallInfoProductVendorName( info.get() ) ),
                                   zu::adopt( zuRuntimeInstallInfoProductCopyright( info.get() ) ) };
    zu::Ref<ZU_RUNTIME_INSTALL_INFO> same = zu::adopt( zu___RuntimeInstallInfoCreate(
        4, 1, 1, texts[ 0 ].get(), texts[ 1 ].get(), texts[ 2 ].get(), texts[ 3 ].get(), texts[ 4 ].get() ) );
    EXPECT_EQ( stored( same.get() ), FIELDS );
    expectAbort( "ZU_RUNTIME_OS_OK( os )", [] { zu___RuntimeInstallInfoCreate( 11, 7, 3, {}, {}, {}, {}, {} ); } );
    expectAbort( "zuRuntimeValidateProductVersion( productVersion )", [ & ] {
        ZU_STRING *text = texts[ 0 ].get();
        zu___RuntimeInstallInfoCreate( 4, 1, 1, text, text, text, text, text );
    } );
    expectAbort( "info", [] { zuRuntimeInstallInfoOs( nullptr ); } );
    expectAbort( "store", [] { zuRuntimeInstallInfoTryRestore( nullptr ); } );
    expectAbort( "fn", [] { zuRuntimeInstallInfoTryLoadFromFile( nullptr ); } );
}
TEST( RuntimeInstallInfo, TakesAllOrNothing )
{
    for ( const auto &[ key, value ] : FIELDS ) {
        Fields without = FIELDS, with = FIELDS;
        without.erase( key );
        EXPECT_FALSE( restored( without ) ) << key;
        with[ key ] = "1." + value + " "; // no identifier, and a blank at the end that no validator lets pass
        EXPECT_FALSE( restored( with ) ) << key;
    }
}
TEST_F( RuntimePaths, LeadToTheInstallInfo )
{
    auto load = [ & ] { return zu::adopt( zuRuntimeInstallInfoTryLoadForProduct( string( OTHER ).get() ) ); };
    EXPECT_FALSE( load() );
    install( OTHER );
    zu::Ref<ZU_RUNTIME_INSTALL_INFO> info = load();
    ASSERT_TRUE( info );
    EXPECT_EQ( takeText( zuRuntimeInstallInfoProductFriendlyName( info.get() ) ), "Any 1" );
    EXPECT_FALSE( zu::adopt( zuRuntimeInstallInfoTryLoad() ) );
    install( OWN );
    EXPECT_TRUE( zu::adopt( zuRuntimeInstallInfoTryLoad() ) );

    std::string text = "\xEF\xBB\xBF";
    for ( const auto &[ key, value ] : FIELDS ) {
        text += key + "=" + value + "\r\n";
    }
    write( "installed/install-info", text + "comment" );
    info = load();
    ASSERT_TRUE( info );
    EXPECT_EQ( stored( info.get() ), FIELDS );
    write( "installed/install-info", text + "\xFF\r\n" );
    EXPECT_FALSE( load() ) << "no UTF-8";
    std::filesystem::remove( root / "installed/install-info" );
    EXPECT_FALSE( load() );
    std::filesystem::create_directory( root / "installed/install-info" );
    EXPECT_FALSE( load() );
}
