// tag_test_support.h: tags as plain text, and random sets of them.
#pragma once

#include "zu_test_string.h"

#include <iterator>

using TAGS = std::set<std::string>;

inline std::string join( const TAGS &tags )
{
    std::string text;
    for ( const std::string &tag : tags ) {
        text += ( text.empty() ? "" : " " ) + tag;
    }
    return text;
}
inline zu::Ref<ZU_TAG_SET> tagSet( const TAGS &tags )
{
    return zu::adopt( zuTagSetDecode( string( join( tags ) ).get() ) );
}
inline std::string randomTag( SeededRandom &random, int pool )
{
    return "t" + std::to_string( random() % pool );
}
inline TAGS randomTags( SeededRandom &random, int pool )
{
    TAGS tags;
    for ( unsigned i = random() % ( pool + 1 ); i > 0; i-- ) {
        tags.insert( randomTag( random, pool ) );
    }
    return tags;
}

// A store of what a restore looks for, of much that it does not, and of lists of more of the kind.
inline zu::Ref<ZU_STORE> randomStore( SeededRandom &random, int depth )
{
    static const char *const ADDRESSES[] = { "tag",   "type",       "tagSet",      "comment", "color",
                                             "clear", "operations", "definitions", "0",       "1" };
    static const std::vector<std::string> VALUES =
        divided( "a|b|a b||true|0|2|9|-1|x.y|\u00e9|b  3 a |ZU_TAG_MATCH_TYPE_NOT|ZU_TAG_REWRITE_OPERATION_TYPE_DELETE|"
                 "ZU_TAG_COLOR_BLACK|99999999999999999999" );
    zu::Ref<ZU_STORE> store = zu::adopt( zuStoreCreate() );
    for ( const char *address : ADDRESSES ) {
        if ( random() % 3 > 0 ) {
            zuStoreSetValueCstr( store.inOut(), address, -1, string( VALUES[ random.below( VALUES.size() ) ] ).get() );
        }
        if ( depth > 0 && random() % 2 > 0 ) {
            zuStoreSetStoreCstr( store.inOut(), address, -1, randomStore( random, depth - 1 ).get() );
        }
    }
    return store;
}
// Expects whatever `restore` makes of such stores to be stored as what it is restored from again.
template <typename T>
void expectRestores( T *( *restore )(ZU_STORE *), ZU_STORE *( *store )(T *), ZU_INT ( *compare )( T *, T * ) )
{
    SeededRandom random;
    int restored = 0;
    for ( int i = 0; i < 300; i++ ) {
        zu::Ref<T> first = zu::adopt( restore( randomStore( random, 2 ).get() ) );
        if ( first ) {
            zu::Ref<T> second = zu::adopt( restore( zu::adopt( store( first.get() ) ).get() ) );
            ASSERT_TRUE( second );
            ASSERT_EQ( compare( first.get(), second.get() ), 0 );
            restored++;
        }
    }
    EXPECT_GT( restored, 0 );
}

// How items with a tag each are changed in what holds them, a rewrite or a set of definitions.
template <typename SET, typename ITEM>
struct ITEM_CHANGES {
    void ( *clear )( SET **set );
    ZU_VECTOR *( *vector )( SET *set );
    void ( *setVector )( SET **set, ZU_VECTOR *vec );
    void ( *delAt )( SET **set, ZU_INT idx );
    ZU_BOOL ( *has )( SET *set, ZU_STRING *tag );
    void ( *del )( SET **set, ZU_STRING *tag );
    void ( *set )( SET **set, ITEM *item );
};
// Changes one of two sets and its model at random; the model is to know an item of the tag `tag` as `value`.
template <typename SET, typename ITEM, typename MODEL, typename VALUE>
void changeItems( SeededRandom &random, const ITEM_CHANGES<SET, ITEM> &changes, zu::Ref<SET> ( &sets )[ 2 ],
                  MODEL ( &models )[ 2 ], const std::string &tag, ITEM *item, const VALUE &value )
{
    unsigned which = random() % 2;
    SET **set = sets[ which ].inOut();
    auto &items = models[ which ].items;
    unsigned kind = random() % 30;
    if ( kind == 0 ) {
        sets[ which ] = sets[ 1 - which ]; // one object
        models[ which ] = models[ 1 - which ];
    } else if ( kind == 1 ) {
        changes.clear( set );
        items.clear();
    } else if ( kind == 2 ) { // all there are, and the item behind them, perhaps behind one of its tag
        zu::Ref<ZU_VECTOR> vec = zu::adopt( changes.vector( *set ) );
        zuVectorAppendObj( vec.inOut(), (ZU_OBJ *)item );
        changes.setVector( set, vec.get() );
        items[ tag ] = value;
    } else if ( kind < 6 && !items.empty() ) {
        auto at = (ZU_INT)( random() % items.size() );
        changes.delAt( set, at );
        items.erase( std::next( items.begin(), at ) );
    } else if ( kind < 10 ) {
        ASSERT_EQ( changes.has( *set, string( tag ).get() ), items.count( tag ) );
        changes.del( set, string( tag ).get() );
        items.erase( tag );
    } else {
        changes.set( set, item );
        items[ tag ] = value;
    }
}
