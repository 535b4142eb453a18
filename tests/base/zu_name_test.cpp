#include "zu_test_string.h"

TEST( Name, Styles )
{
    // Upper-case style and camel-case style, without and with private names
    static const std::vector<std::string> OTHERS = divided(
        "|1A|_A|A_|A__B|A____B|\xC3\x84|ZU___|A_B_C___D|Ab|1a|a_b|zuFooBar___Baz|zu___1|zu___|zu___obj|zu____Obj|"
        "zu___Obj___Create" );
    static const std::tuple<bool, bool, bool, bool, std::vector<std::string>> ROWS[] = {
        { true, true, false, false, { "A", "A_B", "A_1_B2" } },
        { false, true, false, false, { "ZU___X", "A_B___C", "A___B___C", "ZU___X_Y_Z" } },
        { false, false, true, true, { "a", "aB1" } },
        { false, false, false, true, { "___X", "zu___ObjCreate", "zuFoo___Bar", "zu___ObjX1y" } },
        { false, false, false, false, OTHERS },
    };
    for ( const auto &[ upper, upperPrivate, camel, camelPrivate, names ] : ROWS ) {
        for ( const std::string &name : names ) {
            SCOPED_TRACE( name );
            zu::Ref<ZU_STRING> zus = string( name );
            EXPECT_EQ( zuNameUpperCaseOk( zus.get(), ZU_FALSE ), upper );
            EXPECT_EQ( zuNameUpperCaseOk( zus.get(), ZU_TRUE ), upperPrivate );
            EXPECT_EQ( zuNameCamelCaseOk( zus.get(), ZU_FALSE ), camel );
            EXPECT_EQ( zuNameCamelCaseOk( zus.get(), ZU_TRUE ), camelPrivate );
            bool ok = upperPrivate || camelPrivate, isPublic = upper || camel;
            EXPECT_EQ( zuNameOk( zus.get(), ZU_FALSE ), isPublic );
            EXPECT_EQ( zuNameOk( zus.get(), ZU_TRUE ), ok );
            if ( ok ) {
                EXPECT_EQ( zuNamePrivate( zus.get() ), !isPublic );
            }
        }
    }
    expectAbort( "zuNameOk( zus, ZU_TRUE )", [] { zuNamePrivate( string( "zu___" ).get() ); } );
}
