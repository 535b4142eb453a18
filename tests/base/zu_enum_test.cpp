#include "zu/base/zu_enum_internal.h"

#include "zu/zu.hpp"
#include "zu_test_support.h"

#include <map>
#include <random>
#include <vector>

using ENUM = zu::Ref<ZU_ENUM>;
using STRING = zu::Ref<ZU_STRING>;

static STRING string( const std::string &text )
{
    return zu::adopt( zuStringCreateFromCstr( text.c_str(), -1 ) );
}
// The name of a value, "none" if there is none.
static std::string generate( ZU_ENUM *en, ZU_INT value )
{
    STRING name = zu::adopt( zuEnumGenerate( en, value ) );
    std::string result = "none";
    if ( name ) {
        char *chars = zuStringConvertToUtf8( name.get(), ZU_TRUE, nullptr );
        result = chars;
        zuMemFree( chars );
    }
    return result;
}

// Two enumerations that share each other's contents by turns, and maps that do not.
class EnumModel : public testing::TestWithParam<unsigned> {
protected:
    struct MODEL {
        std::map<std::string, ZU_INT> byName;
        std::map<ZU_INT, std::string> byValue;

        void del( const std::string &name )
        {
            if ( auto at = byName.find( name ); at != byName.end() ) {
                byValue.erase( at->second );
                byName.erase( at );
            }
        }
    };
    static void expectSame( ZU_ENUM *en, const MODEL &model, const std::vector<std::string> &names, ZU_INT values )
    {
        for ( const std::string &name : names ) {
            auto at = model.byName.find( name );
            ASSERT_EQ( zuEnumEnumerant( en, string( name ).get() ), at == model.byName.end() ? -1 : at->second );
            ASSERT_EQ( zuEnumHasEnumerant( en, string( name ).get() ), at != model.byName.end() );
        }
        for ( ZU_INT value = 0; value < values; value++ ) {
            auto at = model.byValue.find( value );
            ASSERT_EQ( generate( en, value ), at == model.byValue.end() ? "none" : at->second );
            ASSERT_EQ( zuEnumParse( en, string( std::to_string( value ) ).get() ),
                       at == model.byValue.end() ? -1 : value );
        }
        zu::Ref<ZU_VECTOR> all = zu::adopt( zuEnumEnumerantsVector( en ) );
        ASSERT_EQ( zuVectorLength( all.get() ), (ZU_INT)model.byName.size() );
    }
};
TEST_P( EnumModel, StaysLikeItsModel )
{
    std::mt19937 random( GetParam() );
    std::vector<std::string> names;
    for ( int i = 0; i < 12; i++ ) {
        names.push_back( "ZU_" + std::to_string( i * 7 % 12 ) + "X" );
    }
    ENUM enums[ 2 ] = { zu::adopt( zuEnumCreate() ), zu::adopt( zuEnumCreate() ) };
    MODEL models[ 2 ];
    for ( int step = 0; step < 600; step++ ) {
        unsigned which = random() % 2;
        const std::string &name = names[ random() % names.size() ];
        ZU_INT value = (ZU_INT)( random() % 8 );
        switch ( random() % 8 ) {
        case 0:
            enums[ which ] = enums[ 1 - which ]; // one object
            models[ which ] = models[ 1 - which ];
            break;
        case 1:
            enums[ which ] = zu::adopt( zuEnumCreateFrom( enums[ 1 - which ].get() ) ); // shared contents
            models[ which ] = models[ 1 - which ];
            break;
        case 2:
        case 3:
            zuEnumDelEnumerantCstr( enums[ which ].inOut(), name.c_str(), -1 );
            models[ which ].del( name );
            break;
        default:
            zuEnumSetEnumerantCstr( enums[ which ].inOut(), name.c_str(), -1, value );
            models[ which ].del( name );
            models[ which ].byName[ name ] = value;
            models[ which ].byValue[ value ] = name;
        }
        expectSame( enums[ 0 ].get(), models[ 0 ], names, 8 );
        expectSame( enums[ 1 ].get(), models[ 1 ], names, 8 );
        ASSERT_FALSE( HasFatalFailure() ) << "seed " << GetParam() << ", step " << step;
    }
}
INSTANTIATE_TEST_SUITE_P( Seeds, EnumModel, testing::Range( 1u, 4u ) );

static ENUM oneTwoSeven()
{
    ENUM en = zu::adopt( zuEnumCreate() );
    zuEnumSetEnumerant( en.inOut(), string( "ZU_X_ONE" ).get(), 1 );
    zuEnumSetEnumerantCstr( en.inOut(), "ZU_X_TWO and more", 8, 2 );
    zuEnumSetEnumerantWcstr( en.inOut(), u"ZU___X_SEVEN", -1, 7 );
    return en;
}
TEST( Enum, ReadsNamesAndNumbers )
{
    ENUM en = oneTwoSeven();
    const struct {
        const char *text;
        ZU_INT value;
    } rows[] = {
        { "ZU_X_ONE", 1 },
        { "  ZU_X_ONE ", 1 },
        { "\u2003ZU___X_SEVEN\n", 7 },
        { "zu_x_one", -1 },
        { "ZU_X", -1 },
        { "7", 7 },
        { " 0b111 ", 7 },
        { "0x2", 2 },
        { "16:7", 7 },
        { "+ 1", 1 },
        { "3", -1 },
        { "-1", -1 },
        { "1x", -1 },
        { "", -1 },
        { " ", -1 },
        { "99999999999999999999", -1 },
    };
    for ( const auto &row : rows ) {
        EXPECT_EQ( zuEnumParse( en.get(), string( row.text ).get() ), row.value ) << row.text;
    }
}
TEST( Enum, HasThreeFormsOfEachName )
{
    ENUM en = oneTwoSeven();
    EXPECT_EQ( zuEnumEnumerantCstr( en.get(), "ZU_X_TWO", -1 ), 2 );
    EXPECT_EQ( zuEnumEnumerantWcstr( en.get(), u"ZU_X_ONE_", 8 ), 1 );
    EXPECT_TRUE( zuEnumHasEnumerantCstr( en.get(), "ZU___X_SEVEN", -1 ) );
    EXPECT_FALSE( zuEnumHasEnumerantWcstr( en.get(), u"ZU_X_ONE_", -1 ) );
    ENUM kept = en;
    zuEnumDelEnumerantWcstr( en.inOut(), u"ZU_X_ZERO", -1 );
    EXPECT_EQ( en.get(), kept.get() ); // an unknown name copies nothing
    zuEnumDelEnumerantWcstr( en.inOut(), u"ZU_X_ONE", -1 );
    zuEnumDelEnumerant( en.inOut(), string( "ZU_X_TWO" ).get() );
    EXPECT_EQ( generate( en.get(), 1 ) + generate( en.get(), 2 ) + generate( en.get(), 7 ), "nonenoneZU___X_SEVEN" );
    EXPECT_EQ( generate( kept.get(), 1 ), "ZU_X_ONE" );
    EXPECT_FALSE( zuEnumEquals( kept.get(), zu::adopt( zuEnumCreateFrom( kept.get() ) ).get() ) );
}
#define ZU_X_BLUE  ( (ZU_INT)4 )
#define ZU_X_AZURE ( (ZU_INT)4 )
#define ZU_X_RED   ( (ZU_INT)0 )
TEST( Enum, IsMadeOfATable )
{
    static constexpr ZU___NAMED_VALUE ROWS[] = {
        ZU___NAMED_VALUE_OF( ZU_X_BLUE ),
        ZU___NAMED_VALUE_OF( ZU_X_AZURE ),
        ZU___NAMED_VALUE_OF( ZU_X_RED ),
    };
    ENUM en = zu::adopt( ZU___ENUM_CREATE( colourEnum, ROWS ) );
    EXPECT_EQ( generate( en.get(), 4 ), "ZU_X_AZURE" );
    EXPECT_EQ( generate( en.get(), 0 ), "ZU_X_RED" );
    EXPECT_EQ( zuEnumEnumerantCstr( en.get(), "ZU_X_BLUE", -1 ), 4 );
}
TEST( EnumAborts, BrokenConditions )
{
    ENUM en = oneTwoSeven();
    ZU_ENUM *none = nullptr;
    STRING name = string( "ZU_X_ONE" );
    expectAbort( "en", [ & ] { zuEnumSetEnumerant( nullptr, name.get(), 1 ); } );
    expectAbort( "*en", [ & ] { zuEnumDelEnumerant( &none, name.get() ); } );
    expectAbort( "zuNameUpperCaseOk( name, ZU_TRUE )",
                 [ & ] { zuEnumSetEnumerantCstr( en.inOut(), "zu", -1, 1 ); } );
    expectAbort( "value >= 0", [ & ] { zuEnumSetEnumerant( en.inOut(), name.get(), -1 ); } );
    expectAbort( "name", [ & ] { zuEnumParse( en.get(), nullptr ); } );
    static constexpr ZU___NAMED_VALUE TWICE[] = {
        ZU___NAMED_VALUE_OF( ZU_X_BLUE ),
        ZU___NAMED_VALUE_OF( ZU_X_RED ),
        ZU___NAMED_VALUE_OF( ZU_X_BLUE ),
    };
    expectAbort( "!zuEnumHasEnumerantCstr( *(&colourEnum), \"ZU_X_BLUE\", -1 )",
                 [ & ] { ZU___ENUM_CREATE( colourEnum, TWICE ); } );
}
