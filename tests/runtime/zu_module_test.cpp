#include "zu/zu.hpp"

#include "zu_test_support.h"

static std::string text( ZU_STRING *zus )
{
    zu::Ref<ZU_STRING> owner = zu::adopt( zus );
    char *utf8 = zuStringConvertToUtf8( zus, ZU_TRUE, nullptr );
    std::string result = utf8;
    zuMemFree( utf8 );
    return result;
}
static zu::Ref<ZU_STRING> string( const std::string &source )
{
    return zu::adopt( zuStringCreateFromUtf8( source.data(), (ZU_INT)source.size() ) );
}

TEST( Module, OfTheLibrary )
{
    ZU_MODULE *module = zuModule();
    EXPECT_EQ( module, &zu___module );
    EXPECT_EQ( text( zuModuleName( module ) ), "zu" );
    EXPECT_EQ( text( zuModuleToString( module ) ), "zu" );
    EXPECT_EQ( text( zuModuleDescription( module ) ), zu___module_record.description );
    zu::Ref<ZU_MODULE_VERSION> version = zu::adopt( zuModuleVersion( module ) );
    EXPECT_EQ( text( zuModuleVersionToString( version.get() ) ), "0.0" );
    EXPECT_EQ( zuModuleVersionCompatibility( version.get() ), 0 );
    EXPECT_FALSE( zuModuleHasPersonality( module ) );
    EXPECT_TRUE( zu___ModuleCheckCompatibility( module ) );
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

// A module that would be loaded, and what a row of a table has changed about it.
struct Candidate {
    ZU___MODULE_RECORD record = { 2,       "zelkaratr", nullptr,           -1,    -1, -1, nullptr, nullptr,
                                  nullptr, "gauge",     "Measured values", "1.0", "", "" };
    ZU_MODULE module = { ZU___OBJ_STATIC_INITIALIZER( ZU___OBJ_TYPE_MODULE ),
                         nullptr,
                         nullptr,
                         nullptr,
                         nullptr,
                         nullptr,
                         nullptr,
                         0,
                         nullptr,
                         nullptr };
};
struct Rule {
    const char *what;
    void ( *change )( ZU___MODULE_RECORD &record );
};
static bool compatible( const Rule &rule )
{
    Candidate candidate;
    candidate.record.productName = zu___module_record.productName;
    rule.change( candidate.record );
    candidate.module.moduleRecord = &candidate.record;
    return zu___ModuleCheckCompatibility( &candidate.module );
}
using Record = ZU___MODULE_RECORD;

static void becomeAnyProduct( Record &record )
{
    record = Record{ 2, ZU___MODULE_ANY_PRODUCT, "gauge", "Measured values", "1.0", "", "" };
}

TEST( ModuleCompatibility, Accepts )
{
    static const Rule RULES[] = {
        { "product by name alone", []( Record & ) {} },
        { "any product", becomeAnyProduct },
        { "the library's own record", []( Record &r ) { r = zu___module_record; } },
        { "major number", []( Record &r ) { r.productVersionMajor = zu___module_record.productVersionMajor; } },
        { "major and minor number",
          []( Record &r ) {
              r.productVersionMajor = zu___module_record.productVersionMajor;
              r.productVersionMinor = zu___module_record.productVersionMinor;
          } },
        { "empty description", []( Record &r ) { r.description = ""; } },
        { "inserts in the version", []( Record &r ) { r.version = "3#1.0#999"; } },
        { "lists of names",
          []( Record &r ) {
              r.deps = "a b_1 c";
              r.exts = "d";
          } },
    };
    for ( const Rule &rule : RULES ) {
        EXPECT_TRUE( compatible( rule ) ) << rule.what;
    }
}
TEST( ModuleCompatibility, RefusesByEachRuleAlone )
{
    static const Rule RULES[] = {
        { "record version", []( Record &r ) { r.recordVersion = 3; } },
        { "other product", []( Record &r ) { r.productName = "zelkaratrx"; } },
        { "product in other letters", []( Record &r ) { r.productName = "Zelkaratr"; } },
        { "no product, but major number",
          []( Record &r ) {
              becomeAnyProduct( r );
              r.productVersionMajor = zu___module_record.productVersionMajor;
          } },
        { "no product, but all numbers",
          []( Record &r ) {
              r = zu___module_record;
              r.productName = nullptr;
              r.productFriendlyName = r.productBuildTime = r.productVendorName = r.productCopyright = nullptr;
          } },
        { "minor number without major",
          []( Record &r ) { r.productVersionMinor = zu___module_record.productVersionMinor; } },
        { "release number without others",
          []( Record &r ) { r.productVersionRelease = zu___module_record.productVersionRelease; } },
        { "release number without minor",
          []( Record &r ) {
              r.productVersionMajor = zu___module_record.productVersionMajor;
              r.productVersionRelease = zu___module_record.productVersionRelease;
          } },
        { "other major number",
          []( Record &r ) { r.productVersionMajor = zu___module_record.productVersionMajor + 1; } },
        { "major number below any", []( Record &r ) { r.productVersionMajor = -2; } },
        { "other minor number",
          []( Record &r ) {
              r = zu___module_record;
              r.productVersionMinor++;
          } },
        { "other release number",
          []( Record &r ) {
              r = zu___module_record;
              r.productVersionRelease++;
          } },
        { "no product, but friendly name",
          []( Record &r ) {
              becomeAnyProduct( r );
              r.productFriendlyName = zu___module_record.productFriendlyName;
          } },
        { "no product, but build time",
          []( Record &r ) {
              becomeAnyProduct( r );
              r.productBuildTime = zu___module_record.productBuildTime;
          } },
        { "no product, but vendor",
          []( Record &r ) {
              becomeAnyProduct( r );
              r.productVendorName = zu___module_record.productVendorName;
          } },
        { "no product, but copyright",
          []( Record &r ) {
              becomeAnyProduct( r );
              r.productCopyright = zu___module_record.productCopyright;
          } },
        { "other friendly name", []( Record &r ) { r.productFriendlyName = ""; } },
        { "other build time", []( Record &r ) { r.productBuildTime = "UTC 2000-01-01 00:00:00 (Saturday)"; } },
        { "other vendor", []( Record &r ) { r.productVendorName = "nobody"; } },
        { "other copyright", []( Record &r ) { r.productCopyright = "nobody"; } },
        { "no name", []( Record &r ) { r.name = nullptr; } },
        { "bad name", []( Record &r ) { r.name = "gauge values"; } },
        { "empty name", []( Record &r ) { r.name = ""; } },
        { "no description", []( Record &r ) { r.description = nullptr; } },
        { "no version", []( Record &r ) { r.version = nullptr; } },
        { "bad version", []( Record &r ) { r.version = "1"; } },
        { "no dependencies", []( Record &r ) { r.deps = nullptr; } },
        { "bad dependency", []( Record &r ) { r.deps = "a B"; } },
        { "two blanks", []( Record &r ) { r.deps = "a  b"; } },
        { "blank at the end", []( Record &r ) { r.deps = "a "; } },
        { "no extensions", []( Record &r ) { r.exts = nullptr; } },
        { "bad extension", []( Record &r ) { r.exts = "a_"; } },
        { "blank at the front", []( Record &r ) { r.exts = " a"; } },
    };
    for ( const Rule &rule : RULES ) {
        EXPECT_FALSE( compatible( rule ) ) << rule.what;
    }
}
TEST( ModuleCompatibility, RefusesWhatIsNoModule )
{
    Candidate candidate;
    EXPECT_FALSE( zu___ModuleCheckCompatibility( &candidate.module ) ) << "no record";
    candidate.module.moduleRecord = &candidate.record;
    candidate.record.productName = zu___module_record.productName;
    EXPECT_TRUE( zu___ModuleCheckCompatibility( &candidate.module ) );
    candidate.module.obj.type = ZU___OBJ_TYPE_SORT;
    EXPECT_FALSE( zu___ModuleCheckCompatibility( &candidate.module ) ) << "a sort";
    candidate.module.obj.type = ZU___OBJ_TYPE_MODULE;
    candidate.module.obj.sort = zuModuleSort();
    EXPECT_FALSE( zu___ModuleCheckCompatibility( &candidate.module ) ) << "a module with a sort";
}

TEST( Module, PassesArgumentsOn )
{
    Candidate candidate;
    candidate.module.personalityFunc = []( void *argument1, void *argument2 ) -> void * {
        *(int *)argument1 += *(int *)argument2;
        return argument1;
    };
    EXPECT_TRUE( zuModuleHasPersonality( &candidate.module ) );
    int a = 1;
    int b = 2;
    EXPECT_EQ( zuModuleRunPersonality( &candidate.module, &a, &b ), &a );
    EXPECT_EQ( a, 3 );
}
TEST( Module, OrderedByName )
{
    Candidate lower;
    Candidate higher;
    lower.module.moduleRecord = &lower.record;
    higher.module.moduleRecord = &higher.record;
    lower.record.name = "a";
    higher.record.name = "\xC3\xA4"; // bytes compare unsigned
    EXPECT_EQ( zuModuleCompare( &lower.module, &higher.module ), -1 );
    EXPECT_EQ( zuModuleCompare( &higher.module, &lower.module ), 1 );
    EXPECT_TRUE( zuModuleEquals( &lower.module, &lower.module ) );
    higher.record.name = "a";
    expectAbort( nullptr, [ & ] { zuModuleCompare( &lower.module, &higher.module ); } );
}

TEST( ModuleAborts, ByItsArguments )
{
    Candidate candidate; // has no record
    expectAbort( "module", [] { zuModuleName( nullptr ); } );
    expectAbort( "module->moduleRecord", [ & ] { zuModuleName( &candidate.module ); } );
    expectAbort( "module", [] { zuModuleDescription( nullptr ); } );
    expectAbort( "module->moduleRecord", [ & ] { zuModuleDescription( &candidate.module ); } );
    expectAbort( "module->moduleRecord", [ & ] { zuModuleVersion( &candidate.module ); } );
    expectAbort( "module", [] { zu___ModuleCheckCompatibility( nullptr ); } );
    expectAbort( "moduleName", [] { zuModuleNameOk( nullptr ); } );
    candidate.module.moduleRecord = &candidate.record;
    candidate.record.version = "one";
    expectAbort( "ver", [ & ] { zuModuleVersion( &candidate.module ); } );
}

static std::string versionText( const std::string &source )
{
    zu::Ref<ZU_MODULE_VERSION> version =
        zu::adopt( zuModuleVersionTryCreateFromCstr( source.data(), (ZU_INT)source.size() ) );
    return version ? text( zuModuleVersionToString( version.get() ) ) : "";
}

TEST( ModuleVersion, Texts )
{
    static const struct {
        const char *source;
        const char *text; // empty: no version
    } ROWS[] = {
        { "1.2", "1.2" },
        { "3#1.0", "3#1.0" },
        { "1#5.2#7", "1#5.2#7" },
        { "1#0.0", "1.0" },
        { "01.002", "1.2" },
        { "0.0", "0.0" },
        { "1#999.0#999", "1#999.0#999" },
        { "9223372036854775#807.9223372036854775", "9223372036854775#807.9223372036854775" },
        { "9223372036854775#808.0", "" },
        { "0.9223372036854776", "" },
        { "0.9223372036854775#808", "" },
        { "99999999999999999999.0", "" },
        { "", "" },
        { "1", "" },
        { "1.", "" },
        { ".1", "" },
        { ".", "" },
        { "1.2.3", "" },
        { "1#1000.0", "" },
        { "1#.0", "" },
        { "#1.0", "" },
        { "1.0#1#2", "" },
        { "-1.0", "" },
        { "1.-1", "" },
        { "1#-1.0", "" },
        { "1.0#-1", "" },
        { "0x1.0", "" },
        { "1a.0", "" },
    };
    for ( const auto &row : ROWS ) {
        EXPECT_EQ( versionText( row.source ), row.text ) << row.source;
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
    for ( const char *source :
          { "0.0", "0.0#1", "0.1", "0#1.0", "2.9", "2.10", "3.0", "3#1.0", "3#1.0#1", "3#1.1", "3#2.0", "4.0" } ) {
        ascending.push_back( zu::adopt( zuModuleVersionTryCreateFromCstr( source, -1 ) ) );
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
    expectAbort( "major >= 0", [] { zuModuleVersionCreate( -1, 0, 0, 0 ); } );
    expectAbort( "majorInsert >= 0 && majorInsert <= 999", [] { zuModuleVersionCreate( 0, 1000, 0, 0 ); } );
    expectAbort( "minor >= 0", [] { zuModuleVersionCreate( 0, 0, -1, 0 ); } );
    expectAbort( "minorInsert >= 0 && minorInsert <= 999", [] { zuModuleVersionCreate( 0, 0, 0, -1 ); } );
    expectAbort( "ZU_INT_MUL_OK( major, 1000 )", [] { zuModuleVersionCreate( ZU_INT_MAX / 999, 0, 0, 0 ); } );
    expectAbort( "ZU_INT_ADD_OK( major * 1000, majorInsert )",
                 [] { zuModuleVersionCreate( ZU_INT_MAX / 1000, 999, 0, 0 ); } );
    expectAbort( "ZU_INT_MUL_OK( minor, 1000 )", [] { zuModuleVersionCreate( 0, 0, ZU_INT_MAX / 999, 0 ); } );
    expectAbort( "ZU_INT_ADD_OK( minor * 1000, minorInsert )",
                 [] { zuModuleVersionCreate( 0, 0, ZU_INT_MAX / 1000, 999 ); } );
    expectAbort( "zus", [] { zuModuleVersionTryCreateFromString( nullptr ); } );
    expectAbort( "ver", [] { zuModuleVersionCompatibility( nullptr ); } );
}
