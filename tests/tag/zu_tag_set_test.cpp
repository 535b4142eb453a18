#include "tag_test_support.h"

static void expectSame( ZU_TAG_SET *ts, const TAGS &model, const std::string &asked )
{
    ASSERT_EQ( takeText( zuTagSetEncode( ts ) ), join( model ) );
    ASSERT_EQ( zuTagSetTagsLength( ts ), (ZU_INT)model.size() );
    ASSERT_EQ( zuTagSetHasTag( ts, string( asked ).get() ), model.count( asked ) );
    ZU_INT idx = 0;
    zu::Ref<ZU_VECTOR> tags = zu::adopt( zuTagSetTagsVector( ts ) );
    for ( const std::string &tag : model ) {
        ASSERT_EQ( takeText( zuTagSetTagAt( ts, idx ) ), tag );
        ASSERT_EQ( takeText( zuStringFrom( zuVectorObjAt( tags.get(), idx++ ) ) ), tag );
    }
}

// Three sets that share each other's tags by turns, and models that do not.
TEST( TagSet, StaysLikeItsModel )
{
    SeededRandom random;
    zu::Ref<ZU_TAG_SET> sets[ 3 ];
    TAGS models[ 3 ];
    for ( int step = 0, pool = 0; step < 4000; step++ ) {
        SCOPED_TRACE( step );
        if ( step % 400 == 0 ) {
            pool = step % 800 == 0 ? 6 : 90; // a set of more than 32 tags has its pairs elsewhere
            sets[ 0 ] = sets[ 1 ] = sets[ 2 ] = zu::adopt( zuTagSetCreate() );
            models[ 0 ] = models[ 1 ] = models[ 2 ] = {};
        }
        unsigned which = random() % 3;
        unsigned other = random() % 3; // the same, perhaps
        ZU_TAG_SET **ts = sets[ which ].inOut();
        TAGS &model = models[ which ];
        const TAGS source = models[ other ];
        const std::string tag = randomTag( random, pool );
        switch ( random() % 14 ) {
        case 0:
            sets[ which ] = sets[ other ]; // one object
            model = source;
            break;
        case 1:
            sets[ which ] = zu::adopt( zuTagSetCreateFrom( sets[ other ].get() ) ); // shared tags
            model = source;
            break;
        case 2:
            zuTagSetInclude( ts, sets[ other ].get() );
            model.insert( source.begin(), source.end() );
            break;
        case 3:
            zuTagSetExclude( ts, sets[ other ].get() );
            std::erase_if( model, [ & ]( const std::string &each ) { return source.count( each ) > 0; } );
            break;
        case 4:
            zuTagSetIntersect( ts, sets[ other ].get() );
            std::erase_if( model, [ & ]( const std::string &each ) { return source.count( each ) == 0; } );
            break;
        case 5:
            zuTagSetClearTags( ts );
            model.clear();
            break;
        case 6: {
            model = randomTags( random, pool );
            zu::Ref<ZU_VECTOR> vec = zu::adopt( zuVectorCreate() );
            for ( const std::string &each : model ) {
                zuVectorPrependString( vec.inOut(), string( each ).get() );
                zuVectorAppendString( vec.inOut(), string( each ).get() );
            }
            zuTagSetSetTagsVector( ts, vec.get() );
            break;
        }
        case 7:
            if ( !model.empty() ) {
                auto at = (ZU_INT)( random() % model.size() );
                zuTagSetDelTagAt( ts, at );
                model.erase( std::next( model.begin(), at ) );
            }
            break;
        case 8:
        case 9:
            zuTagSetDelTag( ts, string( tag ).get() );
            model.erase( tag );
            break;
        default:
            zuTagSetSetTag( ts, string( tag ).get() );
            model.insert( tag );
        }
        expectSame( sets[ 0 ].get(), models[ 0 ], tag );
        expectSame( sets[ 1 ].get(), models[ 1 ], tag );
        expectSame( sets[ 2 ].get(), models[ 2 ], tag );
        TAGS common;
        std::set_intersection( models[ 0 ].begin(), models[ 0 ].end(), models[ 1 ].begin(), models[ 1 ].end(),
                               std::inserter( common, common.end() ) );
        ASSERT_EQ( zuTagSetDisjoint( sets[ 0 ].get(), sets[ 1 ].get() ), common.empty() );
        ASSERT_EQ( zuTagSetCompare( sets[ 0 ].get(), sets[ 1 ].get() ),
                   ( models[ 0 ] > models[ 1 ] ) - ( models[ 0 ] < models[ 1 ] ) );
        ASSERT_FALSE( HasFatalFailure() );
    }
}

TEST( TagSet, DecodesWhatIsATag )
{
    const std::tuple<const char *, const char *> rows[] = {
        { "zebra apple", "apple zebra" },
        { "", "" },
        { "  b   a  b ", "a b" },
        { "a b.c d,e f", "a f" },
        { "Upper 1st under_score a\tb x\u00e9", "" },
        { "zu___Tag x1Y2 a___b ab___C aBC___D", "ab___C x1Y2 zu___Tag" },
    };
    for ( const auto &[ text, tags ] : rows ) {
        zu::Ref<ZU_TAG_SET> ts = zu::adopt( zuTagSetDecode( string( text ).get() ) );
        EXPECT_EQ( takeText( zuTagSetToString( ts.get() ) ), tags ) << text;
    }
    zu::Ref<ZU_TAG_SET> none = zu::adopt( zuTagSetCreate() );
    EXPECT_EQ( none.get(), zu::adopt( zuTagSetCreate() ).get() );
}
