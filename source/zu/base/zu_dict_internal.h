// zu_dict_internal.h: the inside of ZU_DICT, for the files that share it.
#pragma once

#include "zu/base/zu_boxed_int.h"
#include "zu/base/zu_dict.h"

ZU_BEGIN_DECLS

// Pairs that live in the object.
#define ZU___DICT_INLINE_PAIRS ( (ZU_INT)32 )

// Both references are owned and never null.
typedef struct ZU___DICT_PAIR {
    ZU_OBJ *key;
    ZU_OBJ *val;
} ZU___DICT_PAIR;

// A ring of pairs, of a size that is the same for all of a dict: the pair at `first` is the first one.
typedef struct ZU___DICT_RING {
    ZU___DICT_PAIR *pairs;
    ZU_INT first;
} ZU___DICT_RING;

// Pairs in rings.  Each is full but the last one in use, so that the position of a pair tells where it is.
typedef struct ZU___DICT_RINGS {
    ZU___DICT_RING *items; // an array of zuMemAllocN, as are the pairs of each
    ZU_INT alloc;          // rings that `items` has room for
    ZU_INT count;          // rings that there are; those behind the last pair hold none
    ZU_INT shift;          // the logarithm of the pairs of a ring
} ZU___DICT_RINGS;

// The `length` pairs are strictly ascending by zuObjCompare of their keys.
struct ZU_DICT {
    ZU_OBJ obj;
    ZU_INT alloc; // pairs that the dict is said to have room for
    ZU_INT length;
    ZU___DICT_PAIR *items; // the pairs: inlineItems, or an array of zuMemAllocN; null: in rings
    union {
        ZU___DICT_PAIR inlineItems[ ZU___DICT_INLINE_PAIRS ];
        ZU___DICT_RINGS rings;
    };
    ZU_SORT *keySort; // of all keys, null if they have several; without meaning while there are none
    ZU_INT walk; // the pair after the last that a reader who goes through the keys has found, 0: nobody does; atomic
};

// Returns the pair at `idx`, which must be there.  Its neighbours need not be beside it.
static inline ZU___DICT_PAIR *zu___DictPair( const ZU_DICT *dict, ZU_INT idx )
{
    if ( ZU___LIKELY( dict->items ) ) {
        return dict->items + idx;
    }
    const ZU___DICT_RING *ring = dict->rings.items + ( idx >> dict->rings.shift );
    return ring->pairs + ( ( ring->first + idx ) & ( ( (ZU_INT)1 << dict->rings.shift ) - 1 ) );
}

// Opens a gap of `count` pairs ahead of `atIndex` in a private dict, raises its length by `count` and returns the gap,
// whose pairs are side by side.  The caller fills it and calls zu___DictSort.
ZU___DICT_PAIR *zu___DictMakeRoom( ZU_DICT *dict, ZU_INT atIndex, ZU_INT count );

// Makes room for `count` more pairs; a shared dict is exchanged for a private copy.
void zu___DictReserve( ZU_DICT **dict, ZU_INT count );

// Gives storage back after a private dict has shrunk; its pairs may move.
void zu___DictCompact( ZU_DICT *dict );

// Moves the pair at `from` of a private dict to `to`, and those between by one.
void zu___DictMovePair( ZU_DICT *dict, ZU_INT from, ZU_INT to );

// Brings the pairs of a private dict into rings of `1 << shift` pairs each.
void zu___DictSpread( ZU_DICT *dict, ZU_INT shift );

// Brings the pairs of a private dict in order, after its gap has been filled in any.  Of equal keys the pair stays that
// stands first or, with `lastWins`, last, key and value alike.  Takes the time of a sort.
void zu___DictSort( ZU_DICT *dict, bool lastWins );

// Where a key stands or, if it does not, belongs.
typedef struct ZU___DICT_PLACE {
    ZU_INT idx;
    bool found;
} ZU___DICT_PLACE;

// Returns the place of a string key.
ZU___DICT_PLACE zu___DictPlaceOfString( ZU_DICT *dict, ZU_STRING *key );
// Does what zuDictSetObjKey does, for a key whose place is known.
void zu___DictSetAt( ZU_DICT **dict, ZU___DICT_PLACE place, ZU_OBJ *key, ZU_OBJ *value );

// Returns the position of the string key of `length` code points, of which no string is made; -1 if there is none.
ZU_INT zu___DictIndexOfChars( ZU_DICT *dict, const ZU_CHAR *chars, ZU_INT length );

// Returns the number of keys that both dicts have, or `most`, whichever is less; stops to look once it has that many.
ZU_INT zu___DictCommonKeys( ZU_DICT *dictA, ZU_DICT *dictB, ZU_INT most );

// In a dict whose keys are strings, returns the position of the key of these `length` code points or else, with `*exact`
// false, of the only key that begins with them; -1 if there is none, -2 if several begin with them.
ZU_INT zu___DictIndexOfAbbreviation( ZU_DICT *dict, const ZU_CHAR *chars, ZU_INT length, bool *exact );

// Returns the value of the boxed integer at `idx`, or `absent` for an index of -1.
static inline ZU_INT zu___DictIntAt( ZU_DICT *dict, ZU_INT idx, ZU_INT absent )
{
    return idx < 0 ? absent : zuBoxedIntValue( zuBoxedIntFrom( zu___DictPair( dict, idx )->val ) );
}

// Returns a new, private, empty dict.
ZU_DICT *zu___DictCreateEmpty( void );

ZU_END_DECLS
