// What takes many pairs in any order sorts them and moves each once.

#include "zu/base/zu_boxed_real.h"
#include "zu/base/zu_dict_storage_internal.h"
#include "zu/base/zu_vector.h"
#include "zu/runtime/zu_obj_internal.h"
#include "zu/sys/zu_mem.h"

#include <utility>

static inline void dictPrefetchKey( ZU_OBJ *key )
{
    __builtin_prefetch( key );
    zu___DictPrefetchText( key, 8 );
}

// As zuObjCompare; strings, the most usual keys, without a call.
static inline ZU_INT dictOrderKeys( ZU_OBJ *keyA, ZU_OBJ *keyB )
{
    if ( keyA->sort == &zu___sort_ZU_STRING && keyB->sort == &zu___sort_ZU_STRING ) {
        ZU_STRING *zusA = (ZU_STRING *)keyA;
        ZU_STRING *zusB = (ZU_STRING *)keyB;
        return zu___StringCompareChars( zusA->chars + zusA->fspace, zusA->length, zusB->chars + zusB->fspace,
                                        zusB->length );
    }
    return zu___ObjCompareInline( keyA, keyB );
}

// Merges `left` and `right`, each in order, into `dest`.  Of equal keys those of `left` come first.
static void dictMergePairs( ZU___DICT_PAIR *dest, const ZU___DICT_PAIR *left, ZU_INT leftCount,
                            const ZU___DICT_PAIR *right, ZU_INT rightCount )
{
    // Keys in any order lie anywhere in memory: fetched ahead, 200,000 of them take 180 ms in place of 440.
    static constexpr ZU_INT AHEAD = 4;
    while ( leftCount > 0 && rightCount > 0 ) {
        if ( dictOrderKeys( left->key, right->key ) <= 0 ) {
            dictPrefetchKey( left[ zuIntMin( AHEAD, leftCount - 1 ) ].key );
            *dest++ = *left++;
            leftCount--;
        } else {
            dictPrefetchKey( right[ zuIntMin( AHEAD, rightCount - 1 ) ].key );
            *dest++ = *right++;
            rightCount--;
        }
    }
    zu___DictCopyPairs( dest, left, leftCount );
    zu___DictCopyPairs( dest + leftCount, right, rightCount );
}

// Sorts pairs by key, equal keys in the order in which they stand.  A merge sort stays within the array even where the
// order of a class contradicts itself; std::sort need not.
static void dictSortPairs( ZU___DICT_PAIR *pairs, ZU_INT count )
{
    static constexpr ZU_INT RUN = 8; // runs by insertion, which passes ascending keys with one comparison each
    for ( ZU_INT i = 1; i < count; i++ ) {
        ZU___DICT_PAIR pair = pairs[ i ];
        ZU_INT at = i;
        while ( at % RUN > 0 && dictOrderKeys( pairs[ at - 1 ].key, pair.key ) > 0 ) {
            pairs[ at ] = pairs[ at - 1 ];
            at--;
        }
        pairs[ at ] = pair;
    }
    bool ascending = true;
    for ( ZU_INT at = RUN; ascending && at < count; at += RUN ) {
        ascending = dictOrderKeys( pairs[ at - 1 ].key, pairs[ at ].key ) <= 0;
    }
    if ( ascending ) {
        return;
    }
    ZU___DICT_PAIR *scratch = (ZU___DICT_PAIR *)zuMemAllocN( count, sizeof( ZU___DICT_PAIR ) );
    ZU___DICT_PAIR *from = pairs;
    ZU___DICT_PAIR *to = scratch;
    for ( ZU_INT run = RUN; run < count; run *= 2 ) {
        for ( ZU_INT at = 0; at < count; at += 2 * run ) {
            ZU_INT leftCount = zuIntMin( run, count - at );
            ZU_INT rightCount = zuIntMin( run, count - at - leftCount );
            dictMergePairs( to + at, from + at, leftCount, from + at + leftCount, rightCount );
        }
        std::swap( from, to );
    }
    if ( from == scratch ) {
        zu___DictCopyPairs( pairs, scratch, count );
    }
    zuMemFree( scratch );
}

void zu___DictSort( ZU_DICT *dict, bool lastWins )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( ZU_REF_RETAIN_COUNT( dict ) == 1 );
    zu___DictFlatten( dict );
    dictSortPairs( dict->items, dict->length );
    ZU___DICT_PAIR *items = dict->items;
    ZU_INT kept = 0;
    for ( ZU_INT i = 0; i < dict->length; i++ ) {
        zu___DictNoteKey( dict, i == 0, items[ i ].key );
        if ( kept > 0 && dictOrderKeys( items[ kept - 1 ].key, items[ i ].key ) == 0 ) {
            if ( lastWins ) {
                std::swap( items[ kept - 1 ], items[ i ] );
            }
            zu___DictReleasePair( items[ i ] );
        } else {
            items[ kept++ ] = items[ i ];
        }
    }
    dict->length = kept;
}

// Tells whether the order of keys like this one depends on which are compared first: reals are not always in order, as
// zu___DictHasReals tells, and an object without an order of its class gets its number when it is first compared.
static bool dictOrderDependsOnSteps( ZU_OBJ *key )
{
    return key->sort && ( key->sort == zuBoxedRealSort() || !key->sort->compareFunc );
}
ZU_DICT *zuDictCreateWithKeysAndValues( ZU_VECTOR *keysVector, ZU_VECTOR *valuesVector )
{
    ZU_ASSERT( keysVector );
    ZU_ASSERT( valuesVector );
    ZU_ASSERT( zuVectorLength( keysVector ) == zuVectorLength( valuesVector ) );
    ZU_DICT *dict = zu___DictCreateEmpty();
    ZU_INT count = zuVectorLength( keysVector );
    ZU_OBJ *const *keys = zuVectorBacking( keysVector );
    ZU_OBJ *const *values = zuVectorBacking( valuesVector );
    ZU___DICT_PAIR *gap = zu___DictMakeRoom( dict, 0, count );
    if ( std::any_of( keys, keys + count, dictOrderDependsOnSteps ) ) {
        dict->length = 0;
        for ( ZU_INT i = count - 1; i >= 0; i-- ) {
            zuDictSetObjKey( &dict, keys[ i ], values[ i ] );
        }
        return dict;
    }
    for ( ZU_INT i = 0; i < count; i++ ) {
        gap[ i ] = { zuObjRetain( keys[ i ] ), zuObjRetain( values[ i ] ) };
    }
    zu___DictSort( dict, false );
    return dict;
}
