#include "zu/base/zu_vector_sort.h"

#include "zu/base/zu_dict_cursor.h"
#include "zu/base/zu_vector_cursor.h"
#include "zu_test_support.h"

// Orders by the tens, and counts.
static ZU_INT compareTens( ZU_OBJ *a, ZU_OBJ *b, void *context )
{
    ++*(ZU_INT *)context;
    return zuBoxedIntValue( zuBoxedIntFrom( a ) ) / 10 - zuBoxedIntValue( zuBoxedIntFrom( b ) ) / 10;
}

TEST( VectorSort, IsStableAndAsksLittle )
{
    std::mt19937_64 random( testSeed() );
    for ( int round = 0; round < 300; round++ ) {
        std::vector<ZU_INT> model( random() % 200 );
        zu::Ref<ZU_VECTOR> vec = zu::adopt( zuVectorCreate() );
        for ( ZU_INT &item : model ) {
            item = (ZU_INT)( random() % 500 );
            zuVectorAppendInt( vec.inOut(), item );
        }
        zu::Ref<ZU_VECTOR> copy = vec, natural = vec;
        ZU_INT asked = 0;
        zuVectorSortBy( vec.inOut(), compareTens, &asked );
        zuVectorSortBy( natural.inOut(), nullptr, nullptr );
        const double n = (double)std::max<size_t>( model.size(), 2 );
        EXPECT_LE( (double)asked, n * std::ceil( std::log2( n ) ) + n );
        std::vector<ZU_INT> sorted = model;
        std::stable_sort( sorted.begin(), sorted.end(), []( ZU_INT a, ZU_INT b ) { return a / 10 < b / 10; } );
        std::vector<ZU_INT> got, all, untouched;
        for ( auto [ from, to ] :
              { std::pair{ vec, &got }, std::pair{ natural, &all }, std::pair{ copy, &untouched } } ) {
            for ( ZU_BOXED_INT *item : zu::items<ZU_BOXED_INT>( from ) ) {
                to->push_back( zuBoxedIntValue( item ) );
            }
        }
        EXPECT_EQ( got, sorted );
        EXPECT_EQ( untouched, model );
        std::sort( model.begin(), model.end() );
        EXPECT_EQ( all, model );
    }
}
TEST( VectorSort, NoticesThatTheVectorIsChanged )
{
    expectAbort( "*vec == unsorted", [] {
        ZU_VECTOR *vec = zuVectorCreate();
        zuVectorAppendInt( &vec, 2 );
        zuVectorAppendInt( &vec, 1 );
        auto shorten = []( ZU_OBJ *, ZU_OBJ *, void *holder ) -> ZU_INT {
            zuVectorDelLeading( (ZU_VECTOR **)holder, 1 );
            return 1;
        };
        zuVectorSortBy( &vec, shorten, &vec );
    } );
}
TEST( Cursors, WalkFromAnywhere )
{
    zu::Ref<ZU_DICT> dict = zu::adopt( zuDictCreate() );
    zu::Ref<ZU_VECTOR> vec = zu::adopt( zuVectorCreate() );
    for ( ZU_INT length = 0; length <= 100; length++ ) {
        for ( ZU_INT from : { (ZU_INT)-1, length - 1, length, 2 * length } ) {
            ZU_DICT_CURSOR cursor =
                from < 0 ? zuDictCursor( dict.get() )
                         : zuDictCursorFrom( dict.get(), zu::upcast( zu::adopt( zuBoxedIntCreate( from ) ).get() ) );
            ZU_INT expected = std::max<ZU_INT>( from + from % 2, 0 );
            while ( zuDictCursorNext( &cursor ) ) {
                EXPECT_EQ( zuBoxedIntValue( zuBoxedIntFrom( cursor.key ) ), expected );
                EXPECT_EQ( cursor.value, cursor.key );
                EXPECT_EQ( cursor.idx, expected / 2 );
                EXPECT_EQ( ZU_REF_RETAIN_COUNT( cursor.key ), 2u );
                expected += 2;
            }
            EXPECT_EQ( expected, std::max( 2 * length, from + from % 2 ) );
            EXPECT_FALSE( cursor.key || cursor.value || zuDictCursorNext( &cursor ) );
        }
        for ( ZU_INT from : { (ZU_INT)0, length / 2, length } ) {
            ZU_VECTOR_CURSOR cursor = from == 0 ? zuVectorCursor( vec.get() ) : zuVectorCursorFrom( vec.get(), from );
            ZU_INT expected = from;
            while ( zuVectorCursorNext( &cursor ) ) {
                EXPECT_EQ( zuBoxedIntValue( zuBoxedIntFrom( cursor.item ) ), expected );
                EXPECT_EQ( cursor.idx, expected++ );
                EXPECT_EQ( ZU_REF_RETAIN_COUNT( cursor.item ), 1u );
            }
            EXPECT_EQ( expected, length );
            EXPECT_FALSE( cursor.item || zuVectorCursorNext( &cursor ) );
        }
        zuVectorAppendInt( vec.inOut(), length );
        zu::Ref<ZU_OBJ> item = zu::adopt( zuBoxedIntCreate( 2 * length ) );
        zuDictSetObjKey( dict.inOut(), item.get(), item.get() );
    }
    ZU_DICT_CURSOR pair = zuDictCursor( dict.get() );
    ZU_VECTOR_CURSOR item = zuVectorCursor( vec.get() );
    zuDictCursorNext( &pair );
    zuVectorCursorNext( &item );
    expectAbort( "zu___DictPair( cursor->dict, cursor->idx )->key == cursor->key", [ & ] {
        zuDictDelAt( dict.inOut(), 0 );
        zuDictCursorNext( &pair );
    } );
    expectAbort( "items[ cursor->idx ] == cursor->item", [ & ] {
        zuVectorPrependInt( vec.inOut(), 7 );
        zuVectorCursorNext( &item );
    } );
}
