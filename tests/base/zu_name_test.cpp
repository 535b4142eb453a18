#include "zu/base/zu_name.h"

#include "zu_test_support.h"

TEST( Name, Styles )
{
    // Upper-case style and camel-case style, without and with private names
    static constexpr struct {
        const char *name;
        bool upper, upperPrivate, camel, camelPrivate;
    } ROWS[] = {
        { "", false, false, false, false },
        { "A", true, true, false, false },
        { "A_B", true, true, false, false },
        { "A_1_B2", true, true, false, false },
        { "1A", false, false, false, false },
        { "_A", false, false, false, false },
        { "A_", false, false, false, false },
        { "A__B", false, false, false, false },
        { "A____B", false, false, false, false },
        { "\xC3\x84", false, false, false, false },
        { "ZU___X", false, true, false, false },
        { "ZU___", false, false, false, false },
        { "___X", false, false, false, true },
        { "A_B___C", false, true, false, false },
        { "A___B___C", false, true, false, false },
        { "A_B_C___D", false, false, false, false },
        { "ZU___X_Y_Z", false, true, false, false },
        { "a", false, false, true, true },
        { "aB1", false, false, true, true },
        { "Ab", false, false, false, false },
        { "1a", false, false, false, false },
        { "a_b", false, false, false, false },
        { "zu___ObjCreate", false, false, false, true },
        { "zuFoo___Bar", false, false, false, true },
        { "zuFooBar___Baz", false, false, false, false },
        { "zu___1", false, false, false, false },
        { "zu___", false, false, false, false },
        { "zu___obj", false, false, false, false },
        { "zu____Obj", false, false, false, false },
        { "zu___Obj___Create", false, false, false, false },
        { "zu___ObjX1y", false, false, false, true },
    };
    for ( const auto &row : ROWS ) {
        SCOPED_TRACE( row.name );
        ZU_STRING *zus = zuStringCreateFromUtf8( row.name, -1 );
        EXPECT_EQ( zuNameUpperCaseOk( zus, ZU_FALSE ), row.upper );
        EXPECT_EQ( zuNameUpperCaseOk( zus, ZU_TRUE ), row.upperPrivate );
        EXPECT_EQ( zuNameCamelCaseOk( zus, ZU_FALSE ), row.camel );
        EXPECT_EQ( zuNameCamelCaseOk( zus, ZU_TRUE ), row.camelPrivate );
        EXPECT_EQ( zuNameOk( zus, ZU_FALSE ), row.upper || row.camel );
        bool ok = row.upperPrivate || row.camelPrivate;
        EXPECT_EQ( zuNameOk( zus, ZU_TRUE ), ok );
        if ( ok ) {
            EXPECT_EQ( zuNamePrivate( zus ), !( row.upper || row.camel ) );
        } else {
            expectAbort( "zuNameOk( zus, ZU_TRUE )", [ & ] { zuNamePrivate( zus ); } );
        }
        zuStringRelease( zus );
    }
}
