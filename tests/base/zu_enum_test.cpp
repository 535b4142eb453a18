#include "zu/base/zu_enum_internal.h"

#include "zu_test_string.h"

using ENUM = zu::Ref<ZU_ENUM>;

// The name of a value, "none" if there is none.
static std::string generate( ZU_ENUM *en, ZU_INT value )
{
    zu::Ref<ZU_STRING> name = zu::adopt( zuEnumGenerate( en, value ) );
    return name ? textOf( name.get() ) : "none";
}

// Both directions: the values of three names, and the names of four values, "-" where there is none.
static std::string contents( ZU_ENUM *en )
{
    std::string result;
    for ( const char *name : { "ZU_A", "ZU_B", "ZU_C" } ) {
        ZU_INT value = zuEnumEnumerantCstr( en, name, -1 );
        EXPECT_EQ( zuEnumHasEnumerantCstr( en, name, -1 ), value >= 0 );
        result += value < 0 ? "-" : std::to_string( value );
    }
    result += ':';
    for ( ZU_INT value = 0; value < 4; value++ ) {
        std::string name = generate( en, value );
        EXPECT_EQ( zuEnumParse( en, string( std::to_string( value ) ).get() ), name == "none" ? -1 : value );
        result += name == "none" ? '-' : name.back();
    }
    return result;
}
TEST( Enum, KeepsBothDirectionsInStep )
{
    const struct {
        const char *name;
        ZU_INT value; // -1: deleted
        const char *contents;
    } rows[] = {
        { "ZU_A", 1, "1--:-A--" },  { "ZU_B", 2, "12-:-AB-" },  { "ZU_A", 3, "32-:--BA" },
        { "ZU_B", 3, "33-:---B" }, // the later name of a value is its name
        { "ZU_A", -1, "-3-:----" }, { "ZU_A", 0, "03-:A---" },  { "ZU_C", 3, "033:A--C" },
        { "ZU_B", -1, "0-3:A---" }, { "ZU_C", -1, "0--:A---" }, { "ZU_C", -1, "0--:A---" },
    };
    for ( int sharing = 0; sharing < 3; sharing++ ) {
        ENUM en = zu::adopt( zuEnumCreate() );
        for ( const auto &row : rows ) {
            // Nobody else, one object, or one content
            ENUM kept = sharing == 0 ? nullptr : sharing == 1 ? en : zu::adopt( zuEnumCreateFrom( en.get() ) );
            std::string before = contents( en.get() );
            row.value < 0 ? zuEnumDelEnumerantCstr( en.inOut(), row.name, -1 )
                          : zuEnumSetEnumerantCstr( en.inOut(), row.name, -1, row.value );
            EXPECT_EQ( contents( en.get() ), row.contents ) << "row " << &row - rows << ", " << sharing;
            EXPECT_TRUE( !kept || contents( kept.get() ) == before ) << "row " << &row - rows << ", " << sharing;
        }
        EXPECT_EQ( zuVectorLength( zu::adopt( zuEnumEnumerantsVector( en.get() ) ).get() ), 1 );
    }
}

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
    const std::pair<ZU_INT, std::vector<std::string>> rows[] = {
        { 1, { "ZU_X_ONE", "  ZU_X_ONE ", "+ 1" } },
        { 2, { "0x2" } },
        { 7, { "\u2003ZU___X_SEVEN\n", "7", " 0b111 ", "16:7" } },
        { -1, { "zu_x_one", "ZU_X", "3", "-1", "1x", "", " ", "99999999999999999999" } },
    };
    for ( const auto &[ value, texts ] : rows ) {
        for ( const std::string &text : texts ) {
            EXPECT_EQ( zuEnumParse( en.get(), string( text ).get() ), value ) << text;
        }
    }
}
TEST( Enum, AnUnknownNameCopiesNothing )
{
    ENUM en = oneTwoSeven();
    ENUM kept = en;
    zuEnumDelEnumerantWcstr( en.inOut(), u"ZU_X_ZERO", -1 );
    EXPECT_EQ( en.get(), kept.get() );
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
