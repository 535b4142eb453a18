#include "tag_test_support.h"

TEST( TagMatch, AgreesWithCounting )
{
    SeededRandom random;
    int matches = 0;
    for ( int step = 0; step < 4000; step++ ) {
        int pool = step % 2 == 0 ? 4 : 70;
        auto type = (ZU_INT)( random() % 4 );
        TAGS wanted = randomTags( random, pool );
        TAGS tags = randomTags( random, pool );
        if ( random() % 4 == 0 ) {
            tags.insert( wanted.begin(), wanted.end() );
        }
        size_t common = 0;
        for ( const std::string &tag : wanted ) {
            common += tags.count( tag );
        }
        const bool byType[] = { common >= 1, common == 1, common == wanted.size(), common == 0 };
        bool expected = wanted.empty() || byType[ type ];
        matches += expected;

        zu::Ref<ZU_TAG_MATCH> match = zu::adopt( zuTagMatchCreate() );
        zu::Ref<ZU_TAG_MATCH> untouched = match;
        zuTagMatchSetTagSet( match.inOut(), tagSet( wanted ).get() );
        zu::Ref<ZU_TAG_MATCH> untyped = match;
        zuTagMatchSetType( match.inOut(), type );
        zu::Ref<ZU_STORE> store = zu::adopt( zuTagMatchStore( match.get() ) );
        zu::Ref<ZU_TAG_MATCH> restored = zu::adopt( zuTagMatchRestore( store.get() ) );
        ASSERT_EQ( zuTagMatchTryMatch( restored.get(), tagSet( tags ).get() ), expected )
            << type << " of " << join( wanted ) << " in " << join( tags );
        ASSERT_TRUE( zuTagMatchEquals( match.get(), restored.get() ) );
        ASSERT_EQ( zuTagMatchCompare( untyped.get(), match.get() ), type == 0 ? 0 : -1 );
        ASSERT_EQ( zuTagMatchCompare( match.get(), untouched.get() ), type > 0 || !wanted.empty() );
        ASSERT_EQ( takeText( zuTagSetEncode( zu::adopt( zuTagMatchTagSet( restored.get() ) ).get() ) ),
                   join( wanted ) );
    }
    EXPECT_GT( matches, 400 );
    EXPECT_LT( matches, 3600 );
}

TEST( TagMatch, RestoresWhatCanBeRead )
{
    zu::Ref<ZU_STORE> store = zu::adopt( zuStoreCreate() );
    zuStoreSetValueCstr( store.inOut(), "type", -1, string( "ZU_TAG_MATCH_TYPE_NAND" ).get() );
    EXPECT_TRUE( zuTagMatchEquals( zu::adopt( zuTagMatchRestore( store.get() ) ).get(),
                                   zu::adopt( zuTagMatchCreate() ).get() ) );
    zuStoreSetValueCstr( store.inOut(), "tagSet", -1, string( "b, a" ).get() );
    zu::Ref<ZU_TAG_MATCH> match = zu::adopt( zuTagMatchRestore( store.get() ) );
    EXPECT_EQ( zuTagMatchType( match.get() ), ZU_TAG_MATCH_TYPE_OR );
    EXPECT_EQ( takeText( zuTagSetEncode( zu::adopt( zuTagMatchTagSet( match.get() ) ).get() ) ), "a" );
}

// Operations on tags, applied one after the other as a reader of the documentation would.
struct REWRITE_MODEL {
    bool clear = false;
    std::map<std::string, ZU_INT> items;

    TAGS apply( const TAGS &tags ) const
    {
        TAGS result = clear ? TAGS() : tags;
        for ( const auto &[ tag, type ] : items ) {
            if ( type == ZU_TAG_REWRITE_OPERATION_TYPE_SET ||
                 ( type == ZU_TAG_REWRITE_OPERATION_TYPE_PASSTHROUGH && tags.count( tag ) > 0 ) ) {
                result.insert( tag );
            } else {
                result.erase( tag );
            }
        }
        return result;
    }
};
static void expectSame( ZU_TAG_REWRITE *rewrite, const REWRITE_MODEL &model, const TAGS &tags )
{
    ASSERT_EQ( zuTagRewriteClear( rewrite ), model.clear );
    ASSERT_EQ( zuTagRewriteOperationsLength( rewrite ), (ZU_INT)model.items.size() );
    ZU_INT idx = 0;
    for ( const auto &[ tag, type ] : model.items ) {
        zu::Ref<ZU_TAG_REWRITE_OPERATION> op = zu::adopt( zuTagRewriteOperationAt( rewrite, idx++ ) );
        ASSERT_EQ( takeText( zuTagRewriteOperationTag( op.get() ) ), tag );
        ASSERT_EQ( zuTagRewriteOperationType( op.get() ), type );
        ASSERT_EQ( zu::adopt( zuTagRewriteOperation( rewrite, string( tag ).get() ) ).get(), op.get() );
    }
    zu::Ref<ZU_TAG_SET> input = tagSet( tags );
    zu::Ref<ZU_TAG_SET> output = zu::adopt( zuTagRewriteApply( rewrite, input.get() ) );
    ASSERT_EQ( takeText( zuTagSetEncode( output.get() ) ), join( model.apply( tags ) ) );
    ASSERT_EQ( takeText( zuTagSetEncode( input.get() ) ), join( tags ) );
    ASSERT_TRUE( model.clear || model.apply( tags ) != tags || output.get() == input.get() );
    zu::Ref<ZU_STORE> store = zu::adopt( zuTagRewriteStore( rewrite ) );
    ASSERT_TRUE( zuTagRewriteEquals( zu::adopt( zuTagRewriteRestore( store.get() ) ).get(), rewrite ) );
}
TEST( TagRewrite, StaysLikeItsModel )
{
    static constexpr ITEM_CHANGES<ZU_TAG_REWRITE, ZU_TAG_REWRITE_OPERATION> CHANGES = {
        zuTagRewriteClearOperations, zuTagRewriteOperationsVector, zuTagRewriteSetOperationsVector,
        zuTagRewriteDelOperationAt,  zuTagRewriteHasOperation,     zuTagRewriteDelOperation,
        zuTagRewriteSetOperation
    };
    SeededRandom random;
    zu::Ref<ZU_TAG_REWRITE> rewrites[ 2 ] = { zu::adopt( zuTagRewriteCreate() ), zu::adopt( zuTagRewriteCreate() ) };
    REWRITE_MODEL models[ 2 ];
    for ( int step = 0; step < 2000; step++ ) {
        SCOPED_TRACE( step );
        int pool = step < 500 ? 4 : 60;
        const std::string tag = randomTag( random, pool );
        auto type = (ZU_INT)( random() % 3 );
        zu::Ref<ZU_TAG_REWRITE_OPERATION> op = zu::adopt( zuTagRewriteOperationCreate( type, string( tag ).get() ) );
        changeItems( random, CHANGES, rewrites, models, tag, op.get(), type );
        if ( random() % 8 == 0 ) {
            zuTagRewriteSetClear( rewrites[ 0 ].inOut(), type ? 2 : 0 );
            models[ 0 ].clear = type;
        }
        // Its holder's further changes do not reach the rewrite.
        zuTagRewriteOperationSetType( op.inOut(), ( type + 1 ) % 3 );
        zuTagRewriteOperationSetTag( op.inOut(), string( "changed" ).get() );
        TAGS tags = randomTags( random, pool );
        expectSame( rewrites[ 0 ].get(), models[ 0 ], tags );
        expectSame( rewrites[ 1 ].get(), models[ 1 ], tags );
        ASSERT_FALSE( HasFatalFailure() );
    }
}

TEST( TagRewrite, StoresAListInOrderOfTheTags )
{
    zu::Ref<ZU_TAG_REWRITE> rewrite = zu::adopt( zuTagRewriteCreate() );
    for ( char tag = 'k'; tag >= 'a'; tag-- ) {
        zu::Ref<ZU_TAG_REWRITE_OPERATION> op = zu::adopt( zuTagRewriteOperationCreate(
            ZU_TAG_REWRITE_OPERATION_TYPE_PASSTHROUGH, string( std::string( 1, tag ) ).get() ) );
        zuTagRewriteSetOperation( rewrite.inOut(), op.get() );
    }
    zu::Ref<ZU_STORE> store = zu::adopt( zuTagRewriteStore( rewrite.get() ) );
    zu::Ref<ZU_STORE> list = zu::adopt( zuStoreStoreCstr( store.get(), "operations", -1 ) );
    EXPECT_EQ( takeText( zuStoreValueCstr( store.get(), "clear", -1 ) ), "false" );
    EXPECT_EQ( zuStoreLength( list.get() ), 11 );
    zu::Ref<ZU_STORE> last = zu::adopt( zuStoreStoreCstr( list.get(), "10", -1 ) );
    EXPECT_EQ( takeText( zuStoreValueCstr( last.get(), "tag", -1 ) ), "k" );
    EXPECT_EQ( takeText( zuStoreValueCstr( last.get(), "type", -1 ) ), "ZU_TAG_REWRITE_OPERATION_TYPE_PASSTHROUGH" );

    // What is added by hand: another operation on a tag, and what is none
    zuStoreSetValueCstr( last.inOut(), "type", -1, string( "0" ).get() );
    zuStoreSetStoreCstr( list.inOut(), "more", -1, last.get() );
    zuStoreSetStoreCstr( list.inOut(), "none", -1, list.get() );
    zuStoreSetValueCstr( list.inOut(), "text", -1, string( "k" ).get() );
    zuStoreSetStoreCstr( store.inOut(), "operations", -1, list.get() );
    rewrite = zu::adopt( zuTagRewriteRestore( store.get() ) );
    EXPECT_EQ( zuTagRewriteOperationsLength( rewrite.get() ), 11 );
    EXPECT_EQ( zuTagRewriteOperationType( zu::adopt( zuTagRewriteOperationAt( rewrite.get(), 10 ) ).get() ), 0 );
}
TEST( TagRewrite, RestoresAnything )
{
    expectRestores( zuTagMatchRestore, zuTagMatchStore, zuTagMatchCompare );
    expectRestores( zuTagRewriteRestore, zuTagRewriteStore, zuTagRewriteCompare );
    expectRestores( zuTagRewriteOperationTryRestore, zuTagRewriteOperationStore, zuTagRewriteOperationCompare );
}
