// zu_dict_storage_internal.h: the pairs of a ZU_DICT and their storage, for the files that make it up.
#pragma once

#include "zu/base/zu_dict_internal.h"
#include "zu/base/zu_string_internal.h"
#include "zu/runtime/zu_ref_internal.h"

#include <algorithm>
#include <cstring>

// Pairs
static inline ZU_INT zu___DictRingSize( const ZU_DICT *dict )
{
    return (ZU_INT)1 << dict->rings.shift;
}
static inline void zu___DictCopyPairs( ZU___DICT_PAIR *dest, const ZU___DICT_PAIR *src, ZU_INT count )
{
    if ( count > 0 ) {
        memcpy( dest, src, (size_t)count * sizeof( ZU___DICT_PAIR ) );
    }
}
static inline void zu___DictReleasePair( ZU___DICT_PAIR pair )
{
    ZU_REF_RELEASE( pair.key );
    ZU_REF_RELEASE( pair.val );
}
// Takes the references of a pair out of its dict.
static inline void zu___DictTakePair( zu___Taken *taken, ZU___DICT_PAIR pair )
{
    taken->add( pair.key );
    taken->add( pair.val );
}

// Notes the sort of a key that comes in.
static inline void zu___DictNoteKey( ZU_DICT *dict, bool isFirst, ZU_OBJ *key )
{
    if ( isFirst ) {
        dict->keySort = key->sort;
    } else if ( dict->keySort != key->sort ) {
        dict->keySort = nullptr;
    }
}

// Fetches what comparing a string from element `from` on needs; of an object of another class, what is near it.
static inline void zu___DictPrefetchText( ZU_OBJ *key, ZU_INT from )
{
    __builtin_prefetch( &( (ZU_STRING *)key )->length );
    __builtin_prefetch( &( (ZU_STRING *)key )->inlineChars[ std::min( from, ZU___STRING_INLINE_CHARS - 1 ) ] );
}

// Storage.  A dict that is changed is private.

// Replaces a shared dict by a private copy.
static inline void zu___DictUnshare( ZU_DICT **dict )
{
    if ( ZU_REF_RETAIN_COUNT( *dict ) > 1 ) {
        ZU_DICT *old = *dict;
        *dict = zuDictCreateFrom( old );
        ZU_REF_RELEASE( old );
    }
}

// Returns the room that a dict with `alloc` takes to hold `length` pairs.
ZU_INT zu___DictGrownAlloc( ZU_INT alloc, ZU_INT length );
// Gives a dict storage of `alloc` pairs, more than it has.
void zu___DictGrow( ZU_DICT *dict, ZU_INT alloc );
// Sees to it that there are rings for `length` pairs.
void zu___DictRoomInRings( ZU_DICT *dict, ZU_INT length );
// Returns the room that compacting leaves.  A dict that keeps its pairs in the object is always within the bound.
ZU_INT zu___DictCompactAlloc( ZU_INT alloc, ZU_INT length );
// Gives a dict storage of `alloc` pairs, no more than it has.
void zu___DictShrink( ZU_DICT *dict, ZU_INT alloc );
// Moves `count` pairs of a dict, ahead or behind, over what they need not keep.
void zu___DictMove( ZU_DICT *dict, ZU_INT dest, ZU_INT src, ZU_INT count );
// Brings the pairs of a dict in rings back into an array.
void zu___DictFlatten( ZU_DICT *dict );
// Copies all pairs of a dict to `dest`.
void zu___DictCopyAll( ZU___DICT_PAIR *dest, const ZU_DICT *dict );
// Frees the storage beside the object, not the pairs.
void zu___DictFreeStorage( ZU_DICT *dict );

// Searching

// Returns the place of a key among the pairs from `begin` on.
ZU___DICT_PLACE zu___DictFindObjFrom( ZU_DICT *dict, ZU_INT begin, ZU_OBJ *key );
// The order of reals contradicts itself, within their tolerance and at NaN.  What a run of single calls makes of that
// depends on each of its steps, so that what takes many keys takes just those steps if there are reals among them.
bool zu___DictHasReals( ZU_DICT *dict );
