#include "zu_test_string.h"

TEST( Module, OfTheLibrary )
{
    ZU_MODULE *module = zuModule();
    EXPECT_EQ( module, &zu___module );
    EXPECT_EQ( takeText( zuModuleName( module ) ), "zu" );
    EXPECT_EQ( takeText( zuModuleToString( module ) ), "zu" );
    EXPECT_EQ( takeText( zuModuleDescription( module ) ), zu___module_record.description );
    EXPECT_EQ( takeText( zuModuleVersionToString( zu::adopt( zuModuleVersion( module ) ).get() ) ), "0.0" );
    EXPECT_FALSE( zuModuleHasPersonality( module ) );
    EXPECT_EQ( std::string( zu___module_version_string ).find( "###RQ_VERSION### zelkaratr-" ), 0u );
}
TEST( Module, Names )
{
    for ( const char *name : { "a", "a_b", "a1", "abc_1", "z9", "abcdefghijabcdefghijabcdefghij_1" } ) {
        EXPECT_TRUE( zuModuleNameOk( string( name ).get() ) ) << name;
        EXPECT_TRUE( zuRuntimeValidateModuleName( string( name ).get() ) ) << name;
    }
    for ( const char *name : { "", "1a", "_a", "a_", "a_b_c", "a__b", "A", "aB", "a-b", "a b", "\xC3\xA4",
                               "abcdefghijabcdefghijabcdefghijabc" } ) {
        EXPECT_FALSE( zuModuleNameOk( string( name ).get() ) ) << name;
        EXPECT_FALSE( zuRuntimeValidateModuleName( string( name ).get() ) ) << name;
    }
}

// A module that would be loaded, built for one product or for any.
using Record = ZU___MODULE_RECORD;
struct Candidate {
    Record record = { 2, ZU___MODULE_ANY_PRODUCT, "gauge", "Measured values", "1.0", "", "" };
    ZU_MODULE module = { ZU___OBJ_STATIC_INITIALIZER( ZU___OBJ_TYPE_MODULE ), &record, {}, {}, {}, {}, {}, 0, {}, {} };
};

// Records by rules that make them fit, or not; tests/modules has those that leave a module without its reason to fit.
enum Base { ANY, NAMED, OWN }; // a record for any product, one that has but the product's name, and the library's own
TEST( ModuleCompatibility, IsDecidedByEachRuleAlone )
{
    static const Record &own = zu___module_record;
    static const struct {
        int line;
        bool fits;
        Base base;
        void ( *change )( Record &r );
    } RULES[] = {
#define RULE( fits, base, ... )                                \
    {                                                          \
        __LINE__, fits, base, []( Record &r ) { __VA_ARGS__; } \
    }
        RULE( true, ANY, (void)r ),
        RULE( true, NAMED, (void)r ),
        RULE( true, OWN, (void)r ),
        RULE( true, NAMED, r.productVersionMajor = own.productVersionMajor ),
        RULE( true, OWN, r.productVersionRelease = -1 ),
        RULE( true, ANY, r.description = "" ),
        RULE( true, ANY, r.version = "3#1.0#999" ),
        RULE( true, ANY, r.deps = "a b_1 c"; r.exts = "d" ),
        RULE( false, NAMED, r.productName = "Zelkaratr" ),
        RULE( false, NAMED, r.productVersionRelease = own.productVersionRelease ),
        RULE( false, NAMED, r.productVersionMajor = -2 ),
        RULE( false, ANY, r.productFriendlyName = own.productFriendlyName ),
        RULE( false, ANY, r.productBuildTime = own.productBuildTime ),
        RULE( false, ANY, r.productVendorName = own.productVendorName ),
        RULE( false, ANY, r.productCopyright = own.productCopyright ),
        RULE( false, ANY, r.name = nullptr ),
        RULE( false, ANY, r.version = nullptr ),
        RULE( false, ANY, r.deps = nullptr ),
        RULE( false, ANY, r.deps = "a B" ),
        RULE( false, ANY, r.deps = "a " ),
        RULE( false, ANY, r.exts = "a_" ),
        RULE( false, ANY, r.exts = " a" ),
#undef RULE
    };
    for ( const auto &rule : RULES ) {
        Candidate candidate;
        if ( rule.base == NAMED ) {
            candidate.record.productName = own.productName;
        } else if ( rule.base == OWN ) {
            candidate.record = own;
        }
        rule.change( candidate.record );
        EXPECT_EQ( zu___ModuleCheckCompatibility( &candidate.module ), rule.fits ) << "line " << rule.line;
    }
    Candidate sort;
    sort.module.obj.type = ZU___OBJ_TYPE_SORT;
    EXPECT_FALSE( zu___ModuleCheckCompatibility( &sort.module ) );
    expectAbort( "module", [] { zu___ModuleCheckCompatibility( nullptr ); } );
}

TEST( Module, OrderedByName )
{
    Candidate lower;
    Candidate higher;
    lower.record.name = "a";
    higher.record.name = "\xC3\xA4"; // bytes compare unsigned
    EXPECT_EQ( zuModuleCompare( &lower.module, &higher.module ), -1 );
    EXPECT_EQ( zuModuleCompare( &higher.module, &lower.module ), 1 );
    EXPECT_TRUE( zuModuleEquals( &lower.module, &lower.module ) );
    higher.record.name = "a";
    expectAbort( nullptr, [ & ] { zuModuleCompare( &lower.module, &higher.module ); } );
}

TEST( ModuleVersion, Texts )
{
    auto create = []( const std::string &source ) {
        return zu::adopt( zuModuleVersionTryCreateFromCstr( source.data(), (ZU_INT)source.size() ) );
    };
    auto written = [ & ]( const std::string &source ) {
        return takeText( zuModuleVersionToString( create( source ).get() ) );
    };
    for ( const std::string &source :
          divided( "1.2|3#1.0|1#5.2#7|1#999.0#999|9223372036854775#807.9223372036854775" ) ) {
        EXPECT_EQ( written( source ), source );
    }
    EXPECT_EQ( written( "1#0.0" ), "1.0" );
    EXPECT_EQ( written( "01.002" ), "1.2" );
    for ( const std::string &source : divided(
              "9223372036854775#808.0|0.9223372036854776|0.9223372036854775#808|99999999999999999999.0||1|1.|.1|1.2.3|"
              "1#1000.0|1#.0|#1.0|1.0#1#2|-1.0|1.-1|1#-1.0|1.0#-1|0x1.0|1a.0" ) ) {
        EXPECT_FALSE( create( source ) ) << source;
    }
    zu::Ref<ZU_MODULE_VERSION> wide = zu::adopt( zuModuleVersionTryCreateFromWcstr( u"1#2.3#4 and more", 7 ) );
    EXPECT_EQ( zuModuleVersionMajor( wide.get() ), 1 );
    EXPECT_EQ( zuModuleVersionMajorInsert( wide.get() ), 2 );
    EXPECT_EQ( zuModuleVersionMinor( wide.get() ), 3 );
    EXPECT_EQ( zuModuleVersionMinorInsert( wide.get() ), 4 );
    EXPECT_EQ( zuModuleVersionCompatibility( wide.get() ), 1002 );
}
TEST( ModuleVersion, OrderedByEachNumber )
{
    std::vector<zu::Ref<ZU_MODULE_VERSION>> ascending;
    for ( const char *source : { "0.0", "0.0#1", "0.1", "0#1.0", "2.9", "2.10", "3.0", "3#1.0", "3#1.0#1", "4.0" } ) {
        ascending.push_back( zu::adopt( zuModuleVersionTryCreateFromString( string( source ).get() ) ) );
    }
    for ( size_t i = 0; i < ascending.size(); i++ ) {
        for ( size_t j = 0; j < ascending.size(); j++ ) {
            EXPECT_EQ( zuModuleVersionCompare( ascending[ i ].get(), ascending[ j ].get() ), ( i > j ) - ( i < j ) );
        }
    }
    zu::Ref<ZU_MODULE_VERSION> same = zu::adopt( zuModuleVersionCreate( 3, 1, 0, 1 ) );
    EXPECT_TRUE( zuModuleVersionEquals( same.get(), ascending[ 8 ].get() ) );
}
TEST( ModuleVersionAborts, OutsideTheLimits )
{
    static const std::pair<const char *, std::array<ZU_INT, 4>> ROWS[] = {
        { "major >= 0", { -1, 0, 0, 0 } },
        { "majorInsert >= 0 && majorInsert <= 999", { 0, 1000, 0, 0 } },
        { "minor >= 0", { 0, 0, -1, 0 } },
        { "minorInsert >= 0 && minorInsert <= 999", { 0, 0, 0, -1 } },
        { "ZU_INT_MUL_OK( major, 1000 )", { ZU_INT_MAX / 999, 0, 0, 0 } },
        { "ZU_INT_ADD_OK( major * 1000, majorInsert )", { ZU_INT_MAX / 1000, 999, 0, 0 } },
        { "ZU_INT_MUL_OK( minor, 1000 )", { 0, 0, ZU_INT_MAX / 999, 0 } },
        { "ZU_INT_ADD_OK( minor * 1000, minorInsert )", { 0, 0, ZU_INT_MAX / 1000, 999 } },
    };
    for ( const auto &[ expression, n ] : ROWS ) {
        expectAbort( expression, [ &n = n ] { zuModuleVersionCreate( n[ 0 ], n[ 1 ], n[ 2 ], n[ 3 ] ); } );
    }
}
