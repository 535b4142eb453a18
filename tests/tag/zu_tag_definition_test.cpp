#include "tag_test_support.h"

#include <optional>

// What is known of a tag.
struct KNOWN {
    std::optional<std::string> comment;
    ZU_INT color = -1;
};
struct DEFINITIONS {
    std::map<std::string, KNOWN> items;
};
static zu::Ref<ZU_TAG_DEFINITION> definition( const std::string &tag, const KNOWN &known )
{
    zu::Ref<ZU_TAG_DEFINITION> def = zu::adopt( zuTagDefinitionCreate( string( tag ).get() ) );
    if ( known.comment ) {
        zuTagDefinitionSetComment( def.inOut(), string( *known.comment ).get() );
    }
    if ( known.color >= 0 ) {
        zuTagDefinitionSetColor( def.inOut(), known.color );
    }
    return def;
}
static void expectSame( ZU_TAG_DEFINITION *def, const std::string &tag, const KNOWN &known )
{
    ASSERT_EQ( takeText( zuTagDefinitionTag( def ) ), tag );
    ASSERT_EQ( takeText( zuTagDefinitionComment( def ) ), known.comment.value_or( "" ) );
    ASSERT_EQ( zuTagDefinitionHasComment( def ), known.comment.has_value() );
    ASSERT_EQ( zuTagDefinitionColor( def ), known.color );
    ASSERT_EQ( zuTagDefinitionHasColor( def ), known.color >= 0 );
}
static void expectSame( ZU_TAG_DEFINITION_SET *ds, const DEFINITIONS &model )
{
    ASSERT_EQ( zuTagDefinitionSetDefinitionsLength( ds ), (ZU_INT)model.items.size() );
    ZU_INT idx = 0;
    for ( const auto &[ tag, known ] : model.items ) {
        zu::Ref<ZU_TAG_DEFINITION> def = zu::adopt( zuTagDefinitionSetDefinitionAt( ds, idx++ ) );
        expectSame( def.get(), tag, known );
        ASSERT_EQ( zu::adopt( zuTagDefinitionSetDefinition( ds, string( tag ).get() ) ).get(), def.get() );
    }
    zu::Ref<ZU_STORE> store = zu::adopt( zuTagDefinitionSetStore( ds ) );
    ASSERT_TRUE( zuTagDefinitionSetEquals( zu::adopt( zuTagDefinitionSetRestore( store.get() ) ).get(), ds ) );
}

TEST( TagDefinitionSet, StaysLikeItsModel )
{
    static constexpr ITEM_CHANGES<ZU_TAG_DEFINITION_SET, ZU_TAG_DEFINITION> CHANGES = {
        zuTagDefinitionSetClearDefinitions, zuTagDefinitionSetDefinitionsVector, zuTagDefinitionSetSetDefinitionsVector,
        zuTagDefinitionSetDelDefinitionAt,  zuTagDefinitionSetHasDefinition,     zuTagDefinitionSetDelDefinition,
        zuTagDefinitionSetSetDefinition
    };
    SeededRandom random;
    zu::Ref<ZU_TAG_DEFINITION_SET> sets[ 2 ] = { zu::adopt( zuTagDefinitionSetCreate() ),
                                                 zu::adopt( zuTagDefinitionSetCreate() ) };
    DEFINITIONS models[ 2 ];
    for ( int step = 0; step < 1000; step++ ) {
        SCOPED_TRACE( step );
        const std::string tag = randomTag( random, 50 );
        KNOWN known;
        known.color = (ZU_INT)( random() % 11 ) - 1;
        if ( random() % 2 == 0 ) {
            known.comment = std::string( random() % 3, 'x' );
        }
        zu::Ref<ZU_TAG_DEFINITION> def = definition( tag, known );
        changeItems( random, CHANGES, sets, models, tag, def.get(), known );
        // Its holder's further changes do not reach the set.
        zuTagDefinitionDelComment( def.inOut() );
        zuTagDefinitionDelColor( def.inOut() );
        zuTagDefinitionSetTag( def.inOut(), string( "changed" ).get() );
        expectSame( def.get(), "changed", {} );
        expectSame( sets[ 0 ].get(), models[ 0 ] );
        expectSame( sets[ 1 ].get(), models[ 1 ] );
        ASSERT_FALSE( HasFatalFailure() );
    }
}

TEST( TagDefinition, Stores )
{
    zu::Ref<ZU_STORE> store = zu::adopt( zuTagDefinitionStore( definition( "a", { {}, ZU_TAG_COLOR_GREY } ).get() ) );
    EXPECT_EQ( zuStoreLength( store.get() ), 2 );
    EXPECT_EQ( takeText( zuStoreValueCstr( store.get(), "tag", -1 ) ), "a" );
    EXPECT_EQ( takeText( zuStoreValueCstr( store.get(), "color", -1 ) ), "ZU_TAG_COLOR_GREY" );
    zuStoreSetValueCstr( store.inOut(), "color", -1, string( "ZU_TAG_COLOR_PINK" ).get() );
    expectSame( zu::adopt( zuTagDefinitionTryRestore( store.get() ) ).get(), "a", {} );
    zuStoreDelValueCstr( store.inOut(), "tag", -1 );
    EXPECT_FALSE( zu::adopt( zuTagDefinitionTryRestore( store.get() ) ) );
    expectRestores( zuTagDefinitionTryRestore, zuTagDefinitionStore, zuTagDefinitionCompare );
    expectRestores( zuTagDefinitionSetRestore, zuTagDefinitionSetStore, zuTagDefinitionSetCompare );
}
