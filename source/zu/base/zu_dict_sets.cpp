// Two dicts in order are gone through side by side, and each pair moves once.  The storage that a run of single calls would
// leave is part of the contract, so it is computed without going through it.

#include "zu/base/zu_dict_storage_internal.h"
#include "zu/runtime/zu_obj_internal.h"
#include "zu/sys/zu_mem.h"

#include <utility>

// Ends an operation that has left the first `length` pairs of a private dict, with the room of `alloc` pairs.
static void dictCut( ZU_DICT **dict, ZU_INT length, ZU_INT alloc )
{
    ( *dict )->length = length;
    if ( length == 0 ) {
        zuDictClear( dict );
    } else {
        zu___DictShrink( *dict, alloc );
    }
}
void zuDictDelValue( ZU_DICT **dict, ZU_OBJ *value, ZU_BOOL useCompare )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    ZU_ASSERT( value );
    if ( ( *dict )->length == 0 ) {
        return;
    }
    zu___Owned held( zuObjRetain( value ) ); // ahead of the copy: it may be the dict itself
    zu___DictUnshare( dict );
    zu___Taken taken;
    ZU_INT length = ( *dict )->length;
    ZU_INT kept = 0;
    for ( ZU_INT i = 0; i < length; i++ ) {
        ZU___DICT_PAIR pair = *zu___DictPair( *dict, i );
        if ( pair.val == value || ( useCompare && zu___ObjCompareInline( pair.val, value ) == 0 ) ) {
            zu___DictTakePair( &taken, pair );
        } else {
            *zu___DictPair( *dict, kept++ ) = pair;
        }
    }
    dictCut( dict, kept, zu___DictCompactAlloc( ( *dict )->alloc, kept ) );
}
void zuDictInclude( ZU_DICT **dest, ZU_DICT *src, ZU_BOOL overwrite )
{
    ZU_ASSERT( dest );
    ZU_ASSERT( *dest );
    ZU_ASSERT( src );
    if ( src->length == 0 ) {
        return;
    }
    zu___Owned held( zuDictRetain( src ) ); // it may be *dest
    zu___DictUnshare( dest );
    if ( zu___DictHasReals( src ) ) {
        for ( ZU_INT i = 0; i < src->length; i++ ) {
            ZU___DICT_PAIR pair = *zu___DictPair( src, i );
            if ( overwrite || !zuDictHasObjKey( *dest, pair.key ) ) {
                zuDictSetObjKey( dest, pair.key, pair.val );
            }
        }
        return;
    }
    zu___Taken taken;
    ZU_DICT *own = *dest;

    // Where each new key belongs among the present ones, -1 for a key that is there already
    static constexpr ZU_INT LOCAL_PLACES = 64;
    const ZU_INT count = src->length;
    ZU_INT local[ LOCAL_PLACES ];
    ZU_INT *places = count <= LOCAL_PLACES ? local : (ZU_INT *)zuMemAllocN( count, sizeof( ZU_INT ) );
    ZU_INT length = own->length;
    ZU_INT alloc = own->alloc;
    ZU_INT begin = 0;
    for ( ZU_INT i = 0; i < count; i++ ) {
        ZU___DICT_PAIR pair = *zu___DictPair( src, i );
        ZU___DICT_PLACE place = zu___DictFindObjFrom( own, begin, pair.key );
        begin = place.idx + place.found;
        places[ i ] = place.found ? -1 : place.idx;
        if ( !place.found ) {
            ZU_ASSERT( ZU_INT_ADD_OK( length, 1 ) );
            zu___DictNoteKey( own, length == 0, pair.key );
            length++;
            alloc = zu___DictGrownAlloc( alloc, length );
        } else if ( overwrite ) {
            zu___DictTakePair( &taken, std::exchange( *zu___DictPair( own, place.idx ),
                                                      { zuObjRetain( pair.key ), zuObjRetain( pair.val ) } ) );
        }
    }

    // From the end on, each present pair moves once.
    if ( alloc > own->alloc ) {
        zu___DictGrow( own, alloc );
    }
    if ( !own->items ) {
        zu___DictRoomInRings( own, length );
    }
    ZU_INT tail = own->length;
    own->length = length;
    for ( ZU_INT i = count - 1; i >= 0; i-- ) {
        if ( places[ i ] >= 0 ) {
            ZU_INT added = length - tail;
            zu___DictMove( own, places[ i ] + added, places[ i ], tail - places[ i ] );
            length -= tail - places[ i ] + 1;
            tail = places[ i ];
            *zu___DictPair( own, length ) = { zuObjRetain( zu___DictPair( src, i )->key ),
                                              zuObjRetain( zu___DictPair( src, i )->val ) };
        }
    }
    if ( places != local ) {
        zuMemFree( places );
    }
}
void zuDictExclude( ZU_DICT **dest, ZU_DICT *src )
{
    ZU_ASSERT( dest );
    ZU_ASSERT( *dest );
    ZU_ASSERT( src );
    if ( ( *dest )->length == 0 || src->length == 0 ) {
        return;
    }
    if ( *dest == src ) {
        zuDictClear( dest );
        return;
    }
    if ( zu___DictHasReals( src ) ) {
        zu___Owned held( zuDictRetain( src ) );
        for ( ZU_INT i = 0; i < src->length; i++ ) {
            zuDictDelObjKey( dest, zu___DictPair( src, i )->key );
        }
        return;
    }
    // The pairs behind each removed one move ahead when the next is found.
    zu___Taken taken;
    ZU_INT length = ( *dest )->length;
    ZU_INT left = length;
    ZU_INT alloc = ( *dest )->alloc;
    ZU_INT kept = 0; // pairs in their new place
    ZU_INT run = 0;  // first pair that is not
    ZU_INT begin = 0;
    for ( ZU_INT i = 0; i < src->length; i++ ) {
        ZU___DICT_PLACE place = zu___DictFindObjFrom( *dest, begin, zu___DictPair( src, i )->key );
        begin = place.idx + place.found;
        if ( place.found ) {
            if ( left == length ) {
                zu___DictUnshare( dest );
                alloc = ( *dest )->alloc;
            }
            ZU___DICT_PAIR pair = *zu___DictPair( *dest, place.idx );
            zu___DictMove( *dest, kept, run, place.idx - run );
            kept += place.idx - run;
            run = place.idx + 1;
            left--;
            alloc = zu___DictCompactAlloc( alloc, left );
            zu___DictTakePair( &taken, pair );
        }
    }
    if ( left < length ) {
        zu___DictMove( *dest, kept, run, length - run );
        dictCut( dest, left, alloc );
    }
}
void zuDictIntersect( ZU_DICT **dest, ZU_DICT *src, ZU_BOOL useSrcValues )
{
    ZU_ASSERT( dest );
    ZU_ASSERT( *dest );
    ZU_ASSERT( src );
    ZU_DICT *old = *dest;
    if ( old == src || old->length == 0 ) {
        return;
    }
    if ( src->length == 0 ) {
        zuDictClear( dest );
        return;
    }
    ZU_DICT *result = zu___DictCreateEmpty();
    result->keySort = old->keySort;
    const bool hasReals = zu___DictHasReals( old );
    ZU_INT begin = 0;
    for ( ZU_INT i = 0; i < old->length; i++ ) {
        ZU___DICT_PAIR pair = *zu___DictPair( old, i );
        ZU___DICT_PLACE place = zu___DictFindObjFrom( src, begin, pair.key );
        begin = hasReals ? 0 : place.idx + place.found;
        if ( place.found ) {
            ZU_OBJ *value = useSrcValues ? zu___DictPair( src, place.idx )->val : pair.val;
            if ( hasReals ) {
                zuDictSetObjKey( &result, pair.key, value );
                continue;
            }
            *zu___DictMakeRoom( result, result->length, 1 ) = { zuObjRetain( pair.key ), zuObjRetain( value ) };
        }
    }
    *dest = result;
    ZU_REF_RELEASE( old );
}
ZU_INT zu___DictCommonKeys( ZU_DICT *dictA, ZU_DICT *dictB, ZU_INT most )
{
    ZU_DICT *smaller = dictB->length < dictA->length ? dictB : dictA;
    ZU_DICT *larger = smaller == dictA ? dictB : dictA;
    const bool hasReals = zu___DictHasReals( smaller );
    ZU_INT common = 0;
    ZU_INT begin = 0;
    for ( ZU_INT i = 0; i < smaller->length && common < most; i++ ) {
        ZU___DICT_PLACE place = zu___DictFindObjFrom( larger, begin, zu___DictPair( smaller, i )->key );
        begin = hasReals ? 0 : place.idx + place.found;
        common += place.found;
    }
    return common;
}
ZU_BOOL zuDictDisjoint( ZU_DICT *dictA, ZU_DICT *dictB )
{
    ZU_ASSERT( dictA );
    ZU_ASSERT( dictB );
    return zu___DictCommonKeys( dictA, dictB, 1 ) == 0;
}
