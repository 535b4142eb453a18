#include "zu/base/zu_flagset_internal.h"

#include "zu/zu.hpp"
#include "zu_test_support.h"

#include <array>
#include <map>
#include <random>
#include <vector>

using FLAGSET = zu::Ref<ZU_FLAGSET>;
using STRING = zu::Ref<ZU_STRING>;

static STRING string( const std::string &text )
{
    return zu::adopt( zuStringCreateFromCstr( text.c_str(), -1 ) );
}
static void expectText( const STRING &text, const std::string &expected )
{
    EXPECT_TRUE( zuStringEqualsCstr( text.get(), expected.c_str(), -1 ) ) << expected;
}
static ZU_INT bitOf( ZU_INT bit )
{
    return (ZU_INT)( (uint64_t)1 << bit );
}

TEST( Flagset, StaysLikeItsModel )
{
    struct MODEL {
        std::map<std::string, ZU_INT> byName; // to bits
        std::array<std::string, 64> names;    // by bit
    };
    std::vector<std::string> names;
    for ( int i = 0; i < 10; i++ ) {
        names.push_back( "ZU_" + std::to_string( i ) );
    }
    constexpr ZU_INT BITS[] = { 0, 1, 30, 31, 32, 63 };
    std::mt19937 random( 1 );
    FLAGSET sets[ 2 ] = { zu::adopt( zuFlagsetCreate() ), zu::adopt( zuFlagsetCreate() ) };
    MODEL models[ 2 ];
    for ( int step = 0; step < 2000; step++ ) {
        unsigned which = random() % 2;
        const std::string &name = names[ random() % names.size() ];
        ZU_INT bit = BITS[ random() % std::size( BITS ) ];
        MODEL &model = models[ which ];
        switch ( random() % 8 ) {
        case 0:
            sets[ which ] = sets[ 1 - which ]; // one object
            model = models[ 1 - which ];
            break;
        case 1:
            sets[ which ] = zu::adopt( zuFlagsetCreateFrom( sets[ 1 - which ].get() ) );
            model = models[ 1 - which ];
            break;
        case 2:
        case 3:
            zuFlagsetDelFlagCstr( sets[ which ].inOut(), name.c_str(), -1 );
            if ( model.byName.count( name ) ) {
                model.names[ (size_t)model.byName[ name ] ].clear();
                model.byName.erase( name );
            }
            break;
        default:
            zuFlagsetSetFlagCstr( sets[ which ].inOut(), name.c_str(), -1, bitOf( bit ) );
            model.byName[ name ] = bit;
            model.names[ (size_t)bit ] = name;
        }
        for ( unsigned i = 0; i < 2; i++ ) {
            ZU_FLAGSET *fs = sets[ i ].get();
            for ( const std::string &each : names ) {
                auto at = models[ i ].byName.find( each );
                ZU_INT flag = at == models[ i ].byName.end() ? 0 : bitOf( at->second );
                ASSERT_EQ( zuFlagsetFlag( fs, string( each ).get() ), flag ) << "step " << step;
                ASSERT_EQ( zuFlagsetHasFlag( fs, string( each ).get() ), flag != 0 ) << "step " << step;
            }
            ZU_INT flags = 0;
            std::string printed;
            for ( size_t each = 0; each < 64; each++ ) {
                const std::string &itsName = models[ i ].names[ each ];
                if ( !itsName.empty() ) {
                    flags |= bitOf( (ZU_INT)each );
                    printed += ( printed.empty() ? "" : "|" ) + itsName;
                }
            }
            expectText( zu::adopt( zuFlagsetGenerate( fs, flags ) ), printed );
            ASSERT_EQ( zuFlagsetParse( fs, string( "-1" ).get() ), flags ) << "step " << step;
            ASSERT_FALSE( testing::Test::HasFailure() ) << "step " << step;
        }
    }
}

static FLAGSET someFlags()
{
    FLAGSET fs = zu::adopt( zuFlagsetCreate() );
    zuFlagsetSetFlag( fs.inOut(), string( "ZU_A" ).get(), 1 );
    zuFlagsetSetFlagCstr( fs.inOut(), "ZU_BC", 4, 2 );
    zuFlagsetSetFlagWcstr( fs.inOut(), u"ZU___TOP", -1, ZU_INT_MIN );
    return fs;
}
TEST( Flagset, ReadsNamesAndNumbers )
{
    FLAGSET fs = someFlags();
    const struct {
        const char *text;
        ZU_INT flags;
    } rows[] = {
        { "", 0 },
        { "ZU_A|ZU_B", 3 },
        { " ZU_B |\tZU_A\n", 3 },
        { "ZU___TOP|ZU_A", ZU_INT_MIN + 1 },
        { "ZU_UNKNOWN_FLAG", 0 },
        { "ZU_UNKNOWN_FLAG|ZU_B", 2 },
        { "||ZU_A|", 1 },
        { "0xff", 3 },
        { "ZU_A|0b110", 3 },
        { " 6 ", 2 },
        { "12abc", 12 }, // as it stands
        { "12 ZU_A", 12 },
        { "ZU_A ZU_B", 0 },
        { "zu_a", 0 },
    };
    for ( const auto &row : rows ) {
        EXPECT_EQ( zuFlagsetParse( fs.get(), string( row.text ).get() ), row.flags ) << row.text;
    }
}
TEST( Flagset, HasThreeFormsOfEachName )
{
    FLAGSET fs = someFlags();
    EXPECT_EQ( zuFlagsetFlagCstr( fs.get(), "ZU___TOP", -1 ), ZU_INT_MIN );
    EXPECT_EQ( zuFlagsetFlagWcstr( fs.get(), u"ZU_BC", 4 ), 2 );
    EXPECT_TRUE( zuFlagsetHasFlagCstr( fs.get(), "ZU_A", -1 ) );
    EXPECT_FALSE( zuFlagsetHasFlagWcstr( fs.get(), u"ZU_BC", -1 ) );
    FLAGSET kept = fs;
    zuFlagsetDelFlagWcstr( fs.inOut(), u"ZU_C", -1 );
    EXPECT_EQ( fs.get(), kept.get() ); // an unknown name copies nothing
    zuFlagsetDelFlagWcstr( fs.inOut(), u"ZU_A", -1 );
    zuFlagsetDelFlag( fs.inOut(), string( "ZU_B" ).get() );
    zu::Ref<ZU_VECTOR> names = zu::adopt( zuFlagsetFlagsVector( fs.get() ) );
    ASSERT_EQ( zuVectorLength( names.get() ), 1 );
    expectText( zu::adopt( zuStringFrom( zuVectorObjAt( names.get(), 0 ) ) ), "ZU___TOP" );
    EXPECT_EQ( zuVectorLength( zu::adopt( zuFlagsetFlagsVector( kept.get() ) ).get() ), 3 );
    EXPECT_FALSE( zuFlagsetEquals( kept.get(), zu::adopt( zuFlagsetCreateFrom( kept.get() ) ).get() ) );
}

#define ZU_X_HIGH ( (ZU_INT)4 )
#define ZU_X_LOW  ( (ZU_INT)1 )
TEST( FlagsetAborts, BrokenConditions )
{
    FLAGSET fs = someFlags();
    ZU_FLAGSET *none = nullptr;
    STRING name = string( "ZU_A" );
    const char *const oneBit = "value && zuIntBitHighest( value ) == zuIntBitLowest( value )";
    expectAbort( "fs", [ & ] { zuFlagsetSetFlag( nullptr, name.get(), 1 ); } );
    expectAbort( "*fs", [ & ] { zuFlagsetDelFlag( &none, name.get() ); } );
    expectAbort( "zuNameUpperCaseOk( name, ZU_TRUE )",
                 [ & ] { zuFlagsetSetFlagCstr( fs.inOut(), "", -1, 1 ); } );
    expectAbort( oneBit, [ & ] { zuFlagsetSetFlag( fs.inOut(), name.get(), 0 ); } );
    expectAbort( oneBit, [ & ] { zuFlagsetSetFlag( fs.inOut(), name.get(), 3 ); } );
    expectAbort( "name", [ & ] { zuFlagsetGenerate( fs.get(), 4 ); } );
    expectAbort( "flags", [ & ] { zuFlagsetParse( fs.get(), nullptr ); } );
    static constexpr ZU___NAMED_VALUE TWICE[] = {
        ZU___NAMED_VALUE_OF( ZU_X_HIGH ),
        ZU___NAMED_VALUE_OF( ZU_X_LOW ),
        ZU___NAMED_VALUE_OF( ZU_X_LOW ),
    };
    expectAbort( "!zuFlagsetHasFlagCstr( *(&levelFlagset), \"ZU_X_LOW\", -1 )",
                 [ & ] { ZU___FLAGSET_CREATE( levelFlagset, TWICE ); } );
}

// The flag sets of formats and of the runtime.  Every flag prints as its name, and as nothing if it is normalized away.
TEST( FormatFlags, HaveNames )
{
    const char *const names[] = { "LEFTALIGN", "ZEROPAD",      "NOSIGN",      "PLUSPOS",    "BLANKPOS",
                                  "UPPERCASE", "BASEMNEMONIC", "BASENUMERIC", "BASEDECIMAL" };
    for ( size_t bit = 0; bit < std::size( names ); bit++ ) {
        std::string name = std::string( "ZU_FORMAT_FLAG_" ) + names[ bit ];
        expectText( zu::adopt( zuFormatFlagsToString( bitOf( (ZU_INT)bit ) ) ), name );
        EXPECT_EQ( zuFormatFlagsFromString( string( name ).get() ), bitOf( (ZU_INT)bit ) ) << name;
    }
    expectText( zu::adopt( zuFormatFlagsToString( -1 ) ),
                "ZU_FORMAT_FLAG_LEFTALIGN|ZU_FORMAT_FLAG_NOSIGN|ZU_FORMAT_FLAG_UPPERCASE|ZU_FORMAT_FLAG_BASEMNEMONIC|"
                "ZU_FORMAT_FLAG_BASEDECIMAL" );
    EXPECT_EQ( zuFormatFlagsFromString( string( "3" ).get() ), ZU_FORMAT_FLAG_LEFTALIGN );
    EXPECT_EQ( zuFormatFlagsFromString( string( "1024x" ).get() ), 0 );
}
TEST( RuntimeFlags, HaveNames )
{
    const std::map<ZU_INT, std::string> alone = {
        { 0x0001, "MINIMAL" },
        { 0x0002, "SYSTEM" },
        { 0x0004, "" },
        { 0x0008, "MEMORY_DEBUG" },
        { 0x0010, "OBJECT_DATABASE" },
        { 0x0020, "" },
        { 0x0200, "" },
        { 0x0400, "NO_EXCEPTION_HANDLERS" },
        { 0x0800, "IMPLICIT_MODULE_PATH" },
        { 0x1000, "MODULE_DEBUG" },
    };
    for ( const auto &[ flag, name ] : alone ) {
        expectText( zu::adopt( zuRuntimeFlagsToString( flag ) ), name.empty() ? "" : "ZU_RUNTIME_FLAG_" + name );
    }
    expectText( zu::adopt( zuRuntimeFlagsToString( 0x03F0 ) ),
                "ZU_RUNTIME_FLAG_OBJECT_DATABASE|ZU_RUNTIME_FLAG_OBJECT_ORIGIN|ZU_RUNTIME_FLAG_SNAPSHOT_SORT|"
                "ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT|ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT_TOSTRING|"
                "ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT_LOG" );
    expectText( zu::adopt( zuRuntimeFlagsToString( 3 ) ), "ZU_RUNTIME_FLAG_MINIMAL" );
    EXPECT_EQ(
        zuRuntimeFlagsFromString( string( "ZU_RUNTIME_FLAG_SYSTEM|ZU_RUNTIME_FLAG_SNAPSHOT_SORT|0x1004" ).get() ),
        0x1002 );
}
