// A sorted array of pairs, searched by bisection: a pair takes 16 bytes, and nothing beside the object while there are
// few; keys need an order but no hash; walking in order is walking an array.
//
// Where the pairs are kept is the matter of zu_dict_storage.cpp, many pairs in any order that of zu_dict_sort.cpp, and two
// dicts as sets that of zu_dict_sets.cpp.

#include "zu/base/zu_boxed_bool.h"
#include "zu/base/zu_boxed_int.h"
#include "zu/base/zu_boxed_null.h"
#include "zu/base/zu_boxed_real.h"
#include "zu/base/zu_dict_storage_internal.h"
#include "zu/base/zu_nested_internal.h"
#include "zu/base/zu_vector.h"
#include "zu/runtime/zu_module.h"
#include "zu/runtime/zu_obj_internal.h"
#include "zu/sys/zu_happens_internal.h"
#include "zu/sys/zu_mem.h"
#include "zu/sys/zu_real.h"

#include <utility>

static ZU_DICT *emptyDict = nullptr; // shared by everybody who holds an empty dict

static void dictFree( ZU_OBJ *thisObj );
static ZU_INT dictCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj );
static ZU_STRING *dictToString( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_DICT =
    ZU___SORT_INITIALIZER( "ZU_DICT", &zu___module, dictFree, dictCompare, dictToString );
ZU___STDFUNCS( ZU_DICT, zuDict )

// Start-up
void zu___DictStartup( void )
{
    emptyDict = nullptr;
    emptyDict = zu___DictCreateEmpty();
}
void zu___DictShutdown( void )
{
    ZU_REF_RELEASE( emptyDict );
    ZU_REF_POISON( emptyDict );
}

// Standard functions
static void dictFree( ZU_OBJ *thisObj )
{
    ZU_DICT *dict = zuDictFrom( thisObj );
    ZU_ASSERT( dict );
    // What is held lies anywhere in memory, and is fetched ahead: that saves a quarter of what it takes to fill a store
    // with 10,000 settings in any order and to release it.
    static constexpr ZU_INT AHEAD = 8;
    for ( ZU_INT i = 0; i < dict->length; i++ ) {
        if ( i + AHEAD < dict->length ) {
            ZU___DICT_PAIR ahead = *zu___DictPair( dict, i + AHEAD );
            __builtin_prefetch( &ahead.key->retainCount, 1 );
            __builtin_prefetch( &ahead.val->retainCount, 1 );
        }
        zu___DictReleasePair( *zu___DictPair( dict, i ) );
    }
    if ( dict->items != dict->inlineItems ) {
        zu___DictFreeStorage( dict );
        zu___ObjDbgSetAllocationSize( thisObj, 0 );
    }
    ZU_REF_POISON( dict->items );
}
static ZU_INT dictCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    ZU_DICT *dictA = zuDictFrom( thisObj );
    ZU_DICT *dictB = zuDictFrom( thatObj );
    ZU_ASSERT( dictA );
    ZU_ASSERT( dictB );
    return zu___NestedCompare( thisObj, thatObj );
}
static ZU_STRING *dictToString( ZU_OBJ *thisObj )
{
    ZU_DICT *dict = zuDictFrom( thisObj );
    ZU_ASSERT( dict );
    return zu___NestedToString( thisObj );
}

// Creation
ZU_DICT *zu___DictCreateEmpty( void )
{
    ZU_DICT *dict = (ZU_DICT *)zu___ObjCreate( sizeof( ZU_DICT ), &zu___sort_ZU_DICT );
    dict->alloc = ZU___DICT_INLINE_PAIRS;
    dict->length = 0;
    dict->items = dict->inlineItems;
    dict->keySort = nullptr;
    dict->walk = 0;
    return dict;
}
ZU_DICT *zuDictCreate( void )
{
    return emptyDict ? zuDictRetain( emptyDict ) : nullptr;
}
ZU_DICT *zuDictCreateFrom( ZU_DICT *src )
{
    ZU_ASSERT( src );
    ZU_DICT *dict = zu___DictCreateEmpty();
    ZU___DICT_PAIR *gap = zu___DictMakeRoom( dict, 0, src->length );
    zu___DictCopyAll( gap, src );
    for ( ZU_INT i = 0; i < src->length; i++ ) {
        zuObjRetain( gap[ i ].key );
        zuObjRetain( gap[ i ].val );
    }
    dict->keySort = src->keySort;
    return dict;
}

// Access by position
ZU_INT zuDictLength( ZU_DICT *dict )
{
    ZU_ASSERT( dict );
    return dict->length;
}
ZU_OBJ *zuDictKeyAt( ZU_DICT *dict, ZU_INT idx )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( idx >= 0 );
    ZU_ASSERT( idx < dict->length );
    return zuObjRetain( zu___DictPair( dict, idx )->key );
}
ZU_OBJ *zuDictValueAt( ZU_DICT *dict, ZU_INT idx )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( idx >= 0 );
    ZU_ASSERT( idx < dict->length );
    return zuObjRetain( zu___DictPair( dict, idx )->val );
}
void zuDictSetValueAt( ZU_DICT **dict, ZU_INT idx, ZU_OBJ *value )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    ZU_ASSERT( idx >= 0 );
    ZU_ASSERT( idx < (*dict)->length );
    ZU_ASSERT( value );
    zuObjRetain( value ); // ahead of the copy: it may be the dict itself
    zu___DictUnshare( dict );
    ZU_OBJ *old = zu___DictPair( *dict, idx )->val;
    zu___DictPair( *dict, idx )->val = value;
    ZU_REF_RELEASE( old );
}
void zuDictDelAt( ZU_DICT **dict, ZU_INT idx )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    ZU_ASSERT( idx >= 0 );
    ZU_ASSERT( idx < (*dict)->length );
    if ( ( *dict )->length == 1 ) {
        zuDictClear( dict );
        return;
    }
    zu___DictUnshare( dict );
    ZU___ASSERT_AS( zu___DictPair( *dict, idx )->key, "(*dict)->items[ idx ].key" );
    ZU___ASSERT_AS( zu___DictPair( *dict, idx )->val, "(*dict)->items[ idx ].val" );
    ZU_DICT *own = *dict;
    zu___DictMovePair( own, idx, own->length - 1 );
    ZU___DICT_PAIR pair = *zu___DictPair( own, own->length - 1 );
    own->length--;
    zu___DictCompact( own );
    zu___DictReleasePair( pair );
}

// Returns the keys or the values, whichever `member` names.
static ZU_VECTOR *dictVector( ZU_DICT *dict, ZU_OBJ *ZU___DICT_PAIR::*member )
{
    if ( dict->length == 0 ) {
        return zuVectorCreate();
    }
    ZU_OBJ **objs = (ZU_OBJ **)zuMemAllocN( dict->length, sizeof( ZU_OBJ * ) );
    for ( ZU_INT i = 0; i < dict->length; i++ ) {
        objs[ i ] = zuObjRetain( zu___DictPair( dict, i )->*member );
    }
    return zuVectorCreateFromObjsUse( objs, dict->length );
}
ZU_VECTOR *zuDictKeysVector( ZU_DICT *dict )
{
    ZU_ASSERT( dict );
    return dictVector( dict, &ZU___DICT_PAIR::key );
}
ZU_VECTOR *zuDictValuesVector( ZU_DICT *dict )
{
    ZU_ASSERT( dict );
    return dictVector( dict, &ZU___DICT_PAIR::val );
}

// Searching.  A key is whatever has an order() that tells how a stored key stands to it, as zuObjCompare( stored, key )
// would if the key were an object.
struct DICT_OBJ_KEY {
    ZU_OBJ *key;

    ZU_INT order( ZU_OBJ *stored ) const
    {
        return zu___ObjCompareInline( stored, key );
    }
};

// Returns the text of a stored key.  Most are within the string, and to guess so lets the processor fetch the text
// before it has read where it is.
static inline const ZU_CHAR *dictStoredText( ZU_STRING *zus )
{
    if ( ZU___LIKELY( zus->chars == zus->inlineChars && zus->fspace == 0 ) ) {
        return zus->inlineChars;
    }
    return zus->chars + zus->fspace;
}
struct DICT_TEXT_KEY {
    const ZU_CHAR *chars;
    ZU_INT length;

    ZU_INT order( ZU_OBJ *stored ) const
    {
        if ( ZU___UNLIKELY( stored->sort != &zu___sort_ZU_STRING ) ) {
            return zuSortCompare( zuObjSort( stored ), &zu___sort_ZU_STRING );
        }
        ZU_INT same = 0;
        return orderText( stored, &same );
    }
    // The same for a string; `same` as in zu___StringCompareCharsFrom.
    ZU_INT orderText( ZU_OBJ *stored, ZU_INT *same ) const
    {
        ZU_STRING *zus = (ZU_STRING *)stored;
        return zu___StringCompareCharsFrom( dictStoredText( zus ), zus->length, chars, length, same );
    }
};
struct DICT_INT_KEY {
    ZU_INT value;
    ZU_SORT *sort = zuBoxedIntSort();

    ZU_INT order( ZU_OBJ *stored ) const
    {
        if ( ZU___UNLIKELY( stored->sort != sort ) ) {
            return zuSortCompare( zuObjSort( stored ), sort );
        }
        ZU_INT storedValue = zuBoxedIntValue( (ZU_BOXED_INT *)stored );
        return ( storedValue > value ) - ( storedValue < value );
    }
};
struct DICT_REAL_KEY {
    double value;
    ZU_SORT *sort = zuBoxedRealSort();

    ZU_INT order( ZU_OBJ *stored ) const
    {
        if ( ZU___UNLIKELY( stored->sort != sort ) ) {
            return zuSortCompare( zuObjSort( stored ), sort );
        }
        return zuRealCompare( zuBoxedRealValue( (ZU_BOXED_REAL *)stored ), value );
    }
};

// Searches between the pairs at `below` and `above`, which the key is known to lie between.  Each may be beside the
// array.
template <typename KEY>
static ZU___DICT_PLACE dictBisect( ZU_DICT *dict, ZU_INT below, ZU_INT above, KEY key )
{
    while ( above - below > 1 ) {
        ZU_INT mid = below + ( above - below ) / 2;
        ZU_INT order = key.order( zu___DictPair( dict, mid )->key );
        if ( order == 0 ) {
            return { mid, true };
        }
        ( order < 0 ? below : above ) = mid;
    }
    return { above, false };
}

// What looks like an array of all pairs
struct DICT_RINGS_ITEMS {
    const ZU___DICT_RING *rings;
    ZU_INT shift;
    ZU_INT mask;

    const ZU___DICT_PAIR &operator[]( ZU_INT idx ) const
    {
        const ZU___DICT_RING *ring = rings + ( idx >> shift );
        return ring->pairs[ ( ring->first + idx ) & mask ];
    }
};

// Among strings the search keeps count of what the key has in common with its neighbours on either side so far:
// whatever lies between them has that in common too, and is compared from there on.  The keys of a large dict are in no
// cache, so that those that may come next are fetched meanwhile.
template <bool LARGE, typename ITEMS>
static inline ZU___DICT_PLACE dictBisectTexts( ITEMS items, ZU_INT below, ZU_INT above, DICT_TEXT_KEY key )
{
    ZU_INT begin = below + 1;
    ZU_INT sameBelow = 0;
    ZU_INT sameAbove = 0;
    while ( begin < above ) {
        ZU_INT mid = ( begin + above ) >> 1;
        ZU_INT same = sameBelow < sameAbove ? sameBelow : sameAbove;
        if ( LARGE ) {
            zu___DictPrefetchText( items[ ( begin + mid ) >> 1 ].key, same );
            zu___DictPrefetchText( items[ ( mid + above ) >> 1 ].key, same );
        }
        ZU_INT order = key.orderText( items[ mid ].key, &same );
        if ( order == 0 ) {
            return { mid, true };
        }
        if ( order < 0 ) {
            begin = mid + 1;
            sameBelow = same;
        } else {
            above = mid;
            sameAbove = same;
        }
    }
    return { above, false };
}
static ZU___DICT_PLACE dictBisect( ZU_DICT *dict, ZU_INT below, ZU_INT above, DICT_TEXT_KEY key )
{
    if ( ZU___UNLIKELY( dict->keySort != &zu___sort_ZU_STRING ) ) {
        return dictBisect<DICT_TEXT_KEY>( dict, below, above, key );
    }
    static constexpr ZU_INT LARGE = 1024; // strings of that many keys fill the cache that a core has for itself
    if ( !dict->items ) {
        DICT_RINGS_ITEMS items = { dict->rings.items, dict->rings.shift, zu___DictRingSize( dict ) - 1 };
        return dictBisectTexts<true>( items, below, above, key );
    }
    return above - below < LARGE ? dictBisectTexts<false>( dict->items, below, above, key )
                                 : dictBisectTexts<true>( dict->items, below, above, key );
}

// Searches the pairs from `begin` on, the ends first: keys often come in order.
template <typename KEY>
static ZU___DICT_PLACE dictFindFrom( ZU_DICT *dict, ZU_INT begin, KEY key )
{
    if ( begin == dict->length ) {
        return { begin, false };
    }
    ZU_INT order = key.order( zu___DictPair( dict, begin )->key );
    if ( order >= 0 ) {
        return { begin, order == 0 };
    }
    ZU_INT last = dict->length - 1;
    order = key.order( zu___DictPair( dict, last )->key );
    if ( order <= 0 ) {
        return { order == 0 ? last : dict->length, order == 0 };
    }
    return dictBisect( dict, begin, last, key );
}
static inline DICT_TEXT_KEY dictTextKey( ZU_STRING *zus )
{
    return { zus->chars + zus->fspace, zus->length };
}
ZU___DICT_PLACE zu___DictFindObjFrom( ZU_DICT *dict, ZU_INT begin, ZU_OBJ *key )
{
    if ( key->sort == &zu___sort_ZU_STRING ) {
        return dictFindFrom( dict, begin, dictTextKey( (ZU_STRING *)key ) );
    }
    if ( key->sort == zuBoxedIntSort() ) {
        return dictFindFrom( dict, begin, DICT_INT_KEY{ zuBoxedIntValue( (ZU_BOXED_INT *)key ) } );
    }
    return dictFindFrom( dict, begin, DICT_OBJ_KEY{ key } );
}

static inline ZU_INT dictFoundIdx( ZU___DICT_PLACE place )
{
    return place.found ? place.idx : -1;
}
template <typename KEY>
static ZU_INT dictIndexOf( ZU_DICT *dict, KEY key )
{
    return dictFoundIdx( dictFindFrom( dict, 0, key ) );
}
// A reader's strings come in any order, so that its search leaves the ends alone, or in that of the dict, as the
// addresses of a list do: whoever has found the first key is walking, and is expected at the next one as long as its
// keys ascend.  Several readers may get in each other's way, which costs them a search and no more.
static ZU_INT dictIndexOf( ZU_DICT *dict, DICT_TEXT_KEY key )
{
    static constexpr ZU_INT WALK_MIN = 64; // keys; in fewer a search costs little more
    if ( dict->length < WALK_MIN ) {
        return dictFoundIdx( dictBisect( dict, -1, dict->length, key ) );
    }
    ZU_INT next = __atomic_load_n( &dict->walk, __ATOMIC_RELAXED );
    if ( next > 0 && next < dict->length && key.order( zu___DictPair( dict, next )->key ) == 0 ) {
        ZU___HAPPENS_STORE( &dict->walk, next + 1, __ATOMIC_RELAXED );
        return next;
    }
    ZU_INT idx = dictFoundIdx( dictBisect( dict, -1, dict->length, key ) );
    if ( idx == 0 || ( next > 0 && idx > 0 ) ) {
        ZU___HAPPENS_STORE( &dict->walk, idx == 0 || idx > next ? idx + 1 : 0, __ATOMIC_RELAXED );
    }
    return idx;
}
static ZU_INT dictIndexOfObj( ZU_DICT *dict, ZU_OBJ *key )
{
    if ( key->sort == &zu___sort_ZU_STRING ) {
        return dictIndexOf( dict, dictTextKey( (ZU_STRING *)key ) );
    }
    return dictFoundIdx( zu___DictFindObjFrom( dict, 0, key ) );
}
static ZU_INT dictIndexOfBool( ZU_DICT *dict, ZU_BOOL key )
{
    return dictIndexOfObj( dict, zu___Owned( zuBoxedBoolObj( zuBoxedBoolCreate( key ) ) ) );
}
static ZU_INT dictIndexOfNull( ZU_DICT *dict )
{
    return dictIndexOfObj( dict, zu___Owned( zuBoxedNullObj( zuBoxedNullCreate() ) ) );
}
ZU_INT zu___DictIndexOfChars( ZU_DICT *dict, const ZU_CHAR *chars, ZU_INT length )
{
    ZU_ASSERT( dict );
    return dictIndexOf( dict, DICT_TEXT_KEY{ chars, length } );
}
static bool dictKeyBeginsWith( ZU_DICT *dict, ZU_INT idx, const ZU_CHAR *chars, ZU_INT length )
{
    return idx < dict->length && zuStringBeginsWithChars( (ZU_STRING *)zu___DictPair( dict, idx )->key, chars, length );
}
ZU_INT zu___DictIndexOfAbbreviation( ZU_DICT *dict, const ZU_CHAR *chars, ZU_INT length, bool *exact )
{
    ZU_ASSERT( dict );
    ZU___DICT_PLACE place = dictBisect( dict, -1, dict->length, DICT_TEXT_KEY{ chars, length } );
    *exact = place.found;
    if ( place.found ) {
        return place.idx;
    }
    // What begins with the text stands behind the place of the text, all together.
    if ( !dictKeyBeginsWith( dict, place.idx, chars, length ) ) {
        return -1;
    }
    return dictKeyBeginsWith( dict, place.idx + 1, chars, length ) ? -2 : place.idx;
}
// Searches for an encoded text, of which no string is made.
template <typename UNIT>
static ZU_INT dictIndexOfEncoded( ZU_DICT *dict, ZU_INT ( *convert )( ZU_CHAR *, ZU_INT, const UNIT *, ZU_INT ),
                                  const UNIT *src, ZU_INT srcLength )
{
    static constexpr ZU_INT LOCAL_CHARS = 128; // few keys are longer
    ZU_CHAR local[ LOCAL_CHARS ];
    ZU_INT length = convert( local, LOCAL_CHARS, src, srcLength );
    if ( length <= LOCAL_CHARS ) {
        return dictIndexOf( dict, DICT_TEXT_KEY{ local, length } );
    }
    ZU_CHAR *chars = (ZU_CHAR *)zuMemAllocN( length, sizeof( ZU_CHAR ) );
    convert( chars, length, src, srcLength );
    ZU_INT idx = dictIndexOf( dict, DICT_TEXT_KEY{ chars, length } );
    zuMemFree( chars );
    return idx;
}
static ZU_INT dictIndexOfCstr( ZU_DICT *dict, const char *src, ZU_INT srcLength )
{
    return dictIndexOfEncoded( dict, zuCharsConvertFromCstr, src, srcLength );
}
static ZU_INT dictIndexOfWcstr( ZU_DICT *dict, const char16_t *src, ZU_INT srcLength )
{
    return dictIndexOfEncoded( dict, zuCharsConvertFromWcstr, src, srcLength );
}

// Reading
static ZU_OBJ *dictValueOpt( ZU_DICT *dict, ZU_INT idx )
{
    if ( idx < 0 ) {
        return nullptr;
    }
    ZU_OBJ *value = zu___DictPair( dict, idx )->val;
    ZU___RETAIN_COUNT_INCREMENT( value->retainCount );
    return value;
}
ZU_OBJ *zuDictObjKey( ZU_DICT *dict, ZU_OBJ *key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( key );
    return dictValueOpt( dict, dictIndexOfObj( dict, key ) );
}
ZU_OBJ *zuDictBoolKey( ZU_DICT *dict, ZU_BOOL key )
{
    ZU_ASSERT( dict );
    return dictValueOpt( dict, dictIndexOfBool( dict, key ) );
}
ZU_OBJ *zuDictIntKey( ZU_DICT *dict, ZU_INT key )
{
    ZU_ASSERT( dict );
    return dictValueOpt( dict, dictIndexOf( dict, DICT_INT_KEY{ key } ) );
}
ZU_OBJ *zuDictRealKey( ZU_DICT *dict, double key )
{
    ZU_ASSERT( dict );
    return dictValueOpt( dict, dictIndexOf( dict, DICT_REAL_KEY{ key } ) );
}
ZU_OBJ *zuDictNullKey( ZU_DICT *dict )
{
    ZU_ASSERT( dict );
    return dictValueOpt( dict, dictIndexOfNull( dict ) );
}
ZU_OBJ *zuDictStringKey( ZU_DICT *dict, ZU_STRING *key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( key );
    return dictValueOpt( dict, dictIndexOf( dict, dictTextKey( key ) ) );
}
ZU_OBJ *zuDictStringKeyCstr( ZU_DICT *dict, const char *src, ZU_INT srcLength )
{
    ZU_ASSERT( dict );
    return dictValueOpt( dict, dictIndexOfCstr( dict, src, srcLength ) );
}
ZU_OBJ *zuDictStringKeyWcstr( ZU_DICT *dict, const char16_t *src, ZU_INT srcLength )
{
    ZU_ASSERT( dict );
    return dictValueOpt( dict, dictIndexOfWcstr( dict, src, srcLength ) );
}
ZU_OBJ *zuDictSortKey( ZU_DICT *dict, ZU_SORT *key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( key );
    return dictValueOpt( dict, dictIndexOfObj( dict, zuSortObj( key ) ) );
}

// Testing
ZU_BOOL zuDictHasObjKey( ZU_DICT *dict, ZU_OBJ *key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( key );
    return dictIndexOfObj( dict, key ) >= 0;
}
ZU_BOOL zuDictHasBoolKey( ZU_DICT *dict, ZU_BOOL key )
{
    ZU_ASSERT( dict );
    return dictIndexOfBool( dict, key ) >= 0;
}
ZU_BOOL zuDictHasIntKey( ZU_DICT *dict, ZU_INT key )
{
    ZU_ASSERT( dict );
    return dictIndexOf( dict, DICT_INT_KEY{ key } ) >= 0;
}
ZU_BOOL zuDictHasRealKey( ZU_DICT *dict, double key )
{
    ZU_ASSERT( dict );
    return dictIndexOf( dict, DICT_REAL_KEY{ key } ) >= 0;
}
ZU_BOOL zuDictHasNullKey( ZU_DICT *dict )
{
    ZU_ASSERT( dict );
    return dictIndexOfNull( dict ) >= 0;
}
ZU_BOOL zuDictHasStringKey( ZU_DICT *dict, ZU_STRING *key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( key );
    return dictIndexOf( dict, dictTextKey( key ) ) >= 0;
}
ZU_BOOL zuDictHasStringKeyCstr( ZU_DICT *dict, const char *src, ZU_INT srcLength )
{
    ZU_ASSERT( dict );
    return dictIndexOfCstr( dict, src, srcLength ) >= 0;
}
ZU_BOOL zuDictHasStringKeyWcstr( ZU_DICT *dict, const char16_t *src, ZU_INT srcLength )
{
    ZU_ASSERT( dict );
    return dictIndexOfWcstr( dict, src, srcLength ) >= 0;
}
ZU_BOOL zuDictHasSortKey( ZU_DICT *dict, ZU_SORT *key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( key );
    return dictIndexOfObj( dict, zuSortObj( key ) ) >= 0;
}

// Finding
ZU_INT zuDictIndexOfObjKey( ZU_DICT *dict, ZU_OBJ *key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( key );
    return dictIndexOfObj( dict, key );
}
ZU_INT zuDictIndexOfBoolKey( ZU_DICT *dict, ZU_BOOL key )
{
    ZU_ASSERT( dict );
    return dictIndexOfBool( dict, key );
}
ZU_INT zuDictIndexOfIntKey( ZU_DICT *dict, ZU_INT key )
{
    ZU_ASSERT( dict );
    return dictIndexOf( dict, DICT_INT_KEY{ key } );
}
ZU_INT zuDictIndexOfRealKey( ZU_DICT *dict, double key )
{
    ZU_ASSERT( dict );
    return dictIndexOf( dict, DICT_REAL_KEY{ key } );
}
ZU_INT zuDictIndexOfNullKey( ZU_DICT *dict )
{
    ZU_ASSERT( dict );
    return dictIndexOfNull( dict );
}
ZU_INT zuDictIndexOfStringKey( ZU_DICT *dict, ZU_STRING *key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( key );
    return dictIndexOf( dict, dictTextKey( key ) );
}
ZU_INT zuDictIndexOfStringKeyCstr( ZU_DICT *dict, const char *src, ZU_INT srcLength )
{
    ZU_ASSERT( dict );
    return dictIndexOfCstr( dict, src, srcLength );
}
ZU_INT zuDictIndexOfStringKeyWcstr( ZU_DICT *dict, const char16_t *src, ZU_INT srcLength )
{
    ZU_ASSERT( dict );
    return dictIndexOfWcstr( dict, src, srcLength );
}
ZU_INT zuDictIndexOfSortKey( ZU_DICT *dict, ZU_SORT *key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( key );
    return dictIndexOfObj( dict, zuSortObj( key ) );
}

// Writing.  zuDictSetObjKey does the work; the other forms make the key an object.
static inline ZU___DICT_PAIR dictHoldPair( ZU_DICT **dict, ZU_OBJ *key, ZU_OBJ *value )
{
    // Ahead of the copy, since either may be the dict itself
    ZU___DICT_PAIR pair = { zuObjRetain( key ), zuObjRetain( value ) };
    zu___DictUnshare( dict );
    return pair;
}
static void dictPutPair( ZU_DICT *own, ZU___DICT_PLACE place, ZU___DICT_PAIR pair )
{
    if ( place.found ) {
        ZU___DICT_PAIR old = *zu___DictPair( own, place.idx );
        *zu___DictPair( own, place.idx ) = pair;
        zu___DictReleasePair( old );
    } else {
        zu___DictNoteKey( own, own->length == 0, pair.key );
        *zu___DictMakeRoom( own, place.idx, 1 ) = pair;
    }
}
void zuDictSetObjKey( ZU_DICT **dict, ZU_OBJ *key, ZU_OBJ *value )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    ZU_ASSERT( key );
    ZU_ASSERT( value );
    ZU___DICT_PAIR pair = dictHoldPair( dict, key, value ); // ahead of the search, whose callbacks see what is held
    dictPutPair( *dict, zu___DictFindObjFrom( *dict, 0, key ), pair );
}
ZU___DICT_PLACE zu___DictPlaceOfString( ZU_DICT *dict, ZU_STRING *key )
{
    return dictFindFrom( dict, 0, dictTextKey( key ) );
}
void zu___DictSetAt( ZU_DICT **dict, ZU___DICT_PLACE place, ZU_OBJ *key, ZU_OBJ *value )
{
    ZU___DICT_PAIR pair = dictHoldPair( dict, key, value );
    dictPutPair( *dict, place, pair );
}
void zuDictSetBoolKey( ZU_DICT **dict, ZU_BOOL key, ZU_OBJ *value )
{
    zuDictSetObjKey( dict, zu___Owned( zuBoxedBoolObj( zuBoxedBoolCreate( key ) ) ), value );
}
void zuDictSetIntKey( ZU_DICT **dict, ZU_INT key, ZU_OBJ *value )
{
    zuDictSetObjKey( dict, zu___Owned( zuBoxedIntObj( zuBoxedIntCreate( key ) ) ), value );
}
void zuDictSetRealKey( ZU_DICT **dict, double key, ZU_OBJ *value )
{
    zuDictSetObjKey( dict, zu___Owned( zuBoxedRealObj( zuBoxedRealCreate( key ) ) ), value );
}
void zuDictSetNullKey( ZU_DICT **dict, ZU_OBJ *value )
{
    zuDictSetObjKey( dict, zu___Owned( zuBoxedNullObj( zuBoxedNullCreate() ) ), value );
}
void zuDictSetStringKey( ZU_DICT **dict, ZU_STRING *key, ZU_OBJ *value )
{
    zuDictSetObjKey( dict, zuStringObj( key ), value );
}
void zuDictSetStringKeyCstr( ZU_DICT **dict, const char *src, ZU_INT srcLength, ZU_OBJ *value )
{
    zuDictSetObjKey( dict, zu___Owned( zuStringObj( zuStringCreateFromCstr( src, srcLength ) ) ), value );
}
void zuDictSetStringKeyWcstr( ZU_DICT **dict, const char16_t *src, ZU_INT srcLength, ZU_OBJ *value )
{
    zuDictSetObjKey( dict, zu___Owned( zuStringObj( zuStringCreateFromWcstr( src, srcLength ) ) ), value );
}
void zuDictSetSortKey( ZU_DICT **dict, ZU_SORT *key, ZU_OBJ *value )
{
    zuDictSetObjKey( dict, zuSortObj( key ), value );
}

// Deletion
static void dictDelOpt( ZU_DICT **dict, ZU_INT idx )
{
    if ( idx >= 0 ) {
        zuDictDelAt( dict, idx );
    }
}
void zuDictDelObjKey( ZU_DICT **dict, ZU_OBJ *key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    ZU_ASSERT( key );
    dictDelOpt( dict, dictIndexOfObj( *dict, key ) );
}
void zuDictDelBoolKey( ZU_DICT **dict, ZU_BOOL key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    dictDelOpt( dict, dictIndexOfBool( *dict, key ) );
}
void zuDictDelIntKey( ZU_DICT **dict, ZU_INT key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    dictDelOpt( dict, dictIndexOf( *dict, DICT_INT_KEY{ key } ) );
}
void zuDictDelRealKey( ZU_DICT **dict, double key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    dictDelOpt( dict, dictIndexOf( *dict, DICT_REAL_KEY{ key } ) );
}
void zuDictDelNullKey( ZU_DICT **dict )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    dictDelOpt( dict, dictIndexOfNull( *dict ) );
}
void zuDictDelStringKey( ZU_DICT **dict, ZU_STRING *key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    ZU_ASSERT( key );
    dictDelOpt( dict, dictIndexOf( *dict, dictTextKey( key ) ) );
}
void zuDictDelStringKeyCstr( ZU_DICT **dict, const char *src, ZU_INT srcLength )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    dictDelOpt( dict, dictIndexOfCstr( *dict, src, srcLength ) );
}
void zuDictDelStringKeyWcstr( ZU_DICT **dict, const char16_t *src, ZU_INT srcLength )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    dictDelOpt( dict, dictIndexOfWcstr( *dict, src, srcLength ) );
}
void zuDictDelSortKey( ZU_DICT **dict, ZU_SORT *key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    ZU_ASSERT( key );
    dictDelOpt( dict, dictIndexOfObj( *dict, zuSortObj( key ) ) );
}

// Whole dicts

struct DICT_SORT_KEY {
    ZU_SORT *sort;

    ZU_INT order( ZU_OBJ *stored ) const
    {
        return zuSortCompare( zuObjSort( stored ), sort );
    }
};
bool zu___DictHasReals( ZU_DICT *dict )
{
    if ( dict->length == 0 || dict->keySort ) {
        return dict->length > 0 && dict->keySort == zuBoxedRealSort();
    }
    return dictBisect( dict, -1, dict->length, DICT_SORT_KEY{ zuBoxedRealSort() } ).found;
}

void zuDictClear( ZU_DICT **dict )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    ZU_DICT *old = *dict;
    *dict = zuDictCreate();
    ZU_REF_RELEASE( old );
}
void zu___DictClear( ZU_DICT **dict )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    if ( ZU_REF_RETAIN_COUNT( *dict ) > 1 ) {
        zuDictClear( dict );
        return;
    }
    ZU_DICT *own = *dict;
    zu___Taken taken;
    for ( ZU_INT i = 0; i < own->length; i++ ) {
        zu___DictTakePair( &taken, std::exchange( *zu___DictPair( own, i ), { nullptr, nullptr } ) );
    }
    own->length = 0;
}
