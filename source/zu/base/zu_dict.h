// ZU_DICT: a map, or dictionary, from objects to objects, sorted by key.
//
// A copy-on-write value; zu_obj.h tells what holds for all of them.  Keys and values are objects of any sorts, mixed or
// not, and never null; the dict holds a reference to each.  Keys are ordered by zuObjCompare and no two of them are
// equal: positions count pairs in ascending order of the keys.  A key must not change its order while it is in a dict.
// Up to 32 pairs live in the object itself.
//
// A search takes two comparisons for a key at or beyond either end and about log2 of the length otherwise, with the
// stored key as the first argument; strings are compared without their class, in an order of the search's own, and who
// asks for one after the other in ascending order finds each at once.  An insertion moves the pairs behind it or, in
// a large dict, some of them, about the root of the length; so ascending keys go in at no cost, and
// zuDictCreateWithKeysAndValues takes many keys in any order.
#pragma once

#include "zu/runtime/zu_obj.h"
#include "zu/sys/zu_chars.h"

ZU_BEGIN_DECLS

typedef struct ZU_VECTOR ZU_VECTOR;

typedef struct ZU_DICT ZU_DICT;
// zuDictRetain, Release, From, Obj, Sort, ToString, Compare, Equals
//
// Dicts are ordered pair by pair, by the keys and then the values, and a dict ahead of its continuation.
ZU_STDFUNCS_DECLARE( ZU_DICT, zuDict )

// Creation
/// Returns the empty dict, which all callers share.
ZU_API ZU_DICT *zuDictCreate( void );
/// Returns a new object with the pairs of `src`.
ZU_API ZU_DICT *zuDictCreateFrom( ZU_DICT *src );
/// Returns a new object that maps each item of `keysVector` to the item of `valuesVector` at the same position.  Of
/// equal keys the first wins.  Vectors of different lengths abort.  Takes the time of a sort.
ZU_API ZU_DICT *zuDictCreateWithKeysAndValues( ZU_VECTOR *keysVector, ZU_VECTOR *valuesVector );

// Access by position; a position outside aborts.
/// Returns the number of pairs.
ZU_API ZU_INT zuDictLength( ZU_DICT *dict );
/// Returns the key at `idx`.
ZU_API ZU_OBJ *zuDictKeyAt( ZU_DICT *dict, ZU_INT idx );
/// Returns the value at `idx`.
ZU_API ZU_OBJ *zuDictValueAt( ZU_DICT *dict, ZU_INT idx );
/// Replaces the value at `idx`.
ZU_API void zuDictSetValueAt( ZU_DICT **dict, ZU_INT idx, ZU_OBJ *value );
/// Removes the pair at `idx`.
ZU_API void zuDictDelAt( ZU_DICT **dict, ZU_INT idx );
/// Returns all keys, in ascending order.
ZU_API ZU_VECTOR *zuDictKeysVector( ZU_DICT *dict );
/// Returns all values, in ascending order of their keys.
ZU_API ZU_VECTOR *zuDictValuesVector( ZU_DICT *dict );

// Access by key
//
// Five operations, each in a form for every kind of key:
//
//     Obj          any object
//     Bool         a ZU_BOXED_BOOL of that value
//     Int          a ZU_BOXED_INT
//     Real         a ZU_BOXED_REAL
//     Null         the ZU_BOXED_NULL
//     String       a string
//     StringCstr   the string of `srcLength` bytes of narrow text, -1: terminated
//     StringWcstr  the string of `srcLength` units of UTF-16, -1: terminated
//     Sort         a sort
//
// Keys of different sorts are never equal, so an Int key and a Real key never meet; Real keys that zuRealEquals holds
// equal are one key.

// Reading
/// Returns the value under the key `key`; null if there is none.
ZU_API ZU_OBJ *zuDictObjKey( ZU_DICT *dict, ZU_OBJ *key );
/// Returns the value under the boxed bool `key`; null if there is none.
ZU_API ZU_OBJ *zuDictBoolKey( ZU_DICT *dict, ZU_BOOL key );
/// Returns the value under the boxed integer `key`; null if there is none.
ZU_API ZU_OBJ *zuDictIntKey( ZU_DICT *dict, ZU_INT key );
/// Returns the value under the boxed real `key`; null if there is none.
ZU_API ZU_OBJ *zuDictRealKey( ZU_DICT *dict, double key );
/// Returns the value under the boxed null; null if there is none.
ZU_API ZU_OBJ *zuDictNullKey( ZU_DICT *dict );
/// Returns the value under the string `key`; null if there is none.
ZU_API ZU_OBJ *zuDictStringKey( ZU_DICT *dict, ZU_STRING *key );
/// Returns the value under a narrow text; null if there is none.
ZU_API ZU_OBJ *zuDictStringKeyCstr( ZU_DICT *dict, const char *src, ZU_INT srcLength );
/// Returns the value under a UTF-16 text; null if there is none.
ZU_API ZU_OBJ *zuDictStringKeyWcstr( ZU_DICT *dict, const char16_t *src, ZU_INT srcLength );
/// Returns the value under the sort `key`; null if there is none.
ZU_API ZU_OBJ *zuDictSortKey( ZU_DICT *dict, ZU_SORT *key );

// Testing
/// Tells whether there is the key `key`.
ZU_API ZU_BOOL zuDictHasObjKey( ZU_DICT *dict, ZU_OBJ *key );
/// Tells whether there is the boxed bool `key`.
ZU_API ZU_BOOL zuDictHasBoolKey( ZU_DICT *dict, ZU_BOOL key );
/// Tells whether there is the boxed integer `key`.
ZU_API ZU_BOOL zuDictHasIntKey( ZU_DICT *dict, ZU_INT key );
/// Tells whether there is the boxed real `key`.
ZU_API ZU_BOOL zuDictHasRealKey( ZU_DICT *dict, double key );
/// Tells whether there is the boxed null.
ZU_API ZU_BOOL zuDictHasNullKey( ZU_DICT *dict );
/// Tells whether there is the string `key`.
ZU_API ZU_BOOL zuDictHasStringKey( ZU_DICT *dict, ZU_STRING *key );
/// Tells whether there is a narrow text.
ZU_API ZU_BOOL zuDictHasStringKeyCstr( ZU_DICT *dict, const char *src, ZU_INT srcLength );
/// Tells whether there is a UTF-16 text.
ZU_API ZU_BOOL zuDictHasStringKeyWcstr( ZU_DICT *dict, const char16_t *src, ZU_INT srcLength );
/// Tells whether there is the sort `key`.
ZU_API ZU_BOOL zuDictHasSortKey( ZU_DICT *dict, ZU_SORT *key );

// Finding
/// Returns the position of the key `key`; -1 if there is none.
ZU_API ZU_INT zuDictIndexOfObjKey( ZU_DICT *dict, ZU_OBJ *key );
/// Returns the position of the boxed bool `key`; -1 if there is none.
ZU_API ZU_INT zuDictIndexOfBoolKey( ZU_DICT *dict, ZU_BOOL key );
/// Returns the position of the boxed integer `key`; -1 if there is none.
ZU_API ZU_INT zuDictIndexOfIntKey( ZU_DICT *dict, ZU_INT key );
/// Returns the position of the boxed real `key`; -1 if there is none.
ZU_API ZU_INT zuDictIndexOfRealKey( ZU_DICT *dict, double key );
/// Returns the position of the boxed null; -1 if there is none.
ZU_API ZU_INT zuDictIndexOfNullKey( ZU_DICT *dict );
/// Returns the position of the string `key`; -1 if there is none.
ZU_API ZU_INT zuDictIndexOfStringKey( ZU_DICT *dict, ZU_STRING *key );
/// Returns the position of a narrow text; -1 if there is none.
ZU_API ZU_INT zuDictIndexOfStringKeyCstr( ZU_DICT *dict, const char *src, ZU_INT srcLength );
/// Returns the position of a UTF-16 text; -1 if there is none.
ZU_API ZU_INT zuDictIndexOfStringKeyWcstr( ZU_DICT *dict, const char16_t *src, ZU_INT srcLength );
/// Returns the position of the sort `key`; -1 if there is none.
ZU_API ZU_INT zuDictIndexOfSortKey( ZU_DICT *dict, ZU_SORT *key );

// Writing.  A key that is there already is exchanged too, although the two are equal.  A shared dict is copied even if
// it holds the pair already.
/// Sets the value under the key `key`.
ZU_API void zuDictSetObjKey( ZU_DICT **dict, ZU_OBJ *key, ZU_OBJ *value );
/// Sets the value under the boxed bool `key`.
ZU_API void zuDictSetBoolKey( ZU_DICT **dict, ZU_BOOL key, ZU_OBJ *value );
/// Sets the value under the boxed integer `key`.
ZU_API void zuDictSetIntKey( ZU_DICT **dict, ZU_INT key, ZU_OBJ *value );
/// Sets the value under the boxed real `key`.
ZU_API void zuDictSetRealKey( ZU_DICT **dict, double key, ZU_OBJ *value );
/// Sets the value under the boxed null.
ZU_API void zuDictSetNullKey( ZU_DICT **dict, ZU_OBJ *value );
/// Sets the value under the string `key`.
ZU_API void zuDictSetStringKey( ZU_DICT **dict, ZU_STRING *key, ZU_OBJ *value );
/// Sets the value under a narrow text.
ZU_API void zuDictSetStringKeyCstr( ZU_DICT **dict, const char *src, ZU_INT srcLength, ZU_OBJ *value );
/// Sets the value under a UTF-16 text.
ZU_API void zuDictSetStringKeyWcstr( ZU_DICT **dict, const char16_t *src, ZU_INT srcLength, ZU_OBJ *value );
/// Sets the value under the sort `key`.
ZU_API void zuDictSetSortKey( ZU_DICT **dict, ZU_SORT *key, ZU_OBJ *value );

// Deletion.  A key that is not there changes and copies nothing.  Whoever deletes the last pair is left with the shared
// empty dict.
/// Removes the key `key` and its value.
ZU_API void zuDictDelObjKey( ZU_DICT **dict, ZU_OBJ *key );
/// Removes the boxed bool `key` and its value.
ZU_API void zuDictDelBoolKey( ZU_DICT **dict, ZU_BOOL key );
/// Removes the boxed integer `key` and its value.
ZU_API void zuDictDelIntKey( ZU_DICT **dict, ZU_INT key );
/// Removes the boxed real `key` and its value.
ZU_API void zuDictDelRealKey( ZU_DICT **dict, double key );
/// Removes the boxed null and its value.
ZU_API void zuDictDelNullKey( ZU_DICT **dict );
/// Removes the string `key` and its value.
ZU_API void zuDictDelStringKey( ZU_DICT **dict, ZU_STRING *key );
/// Removes a narrow text and its value.
ZU_API void zuDictDelStringKeyCstr( ZU_DICT **dict, const char *src, ZU_INT srcLength );
/// Removes a UTF-16 text and its value.
ZU_API void zuDictDelStringKeyWcstr( ZU_DICT **dict, const char16_t *src, ZU_INT srcLength );
/// Removes the sort `key` and its value.
ZU_API void zuDictDelSortKey( ZU_DICT **dict, ZU_SORT *key );

// Whole dicts
/// Removes everything, which leaves the shared empty dict.
ZU_API void zuDictClear( ZU_DICT **dict );
/// Removes every pair whose value is `value` itself or, with `useCompare`, equals it.  Unless it is empty, a shared
/// dict is copied even if no value matches.
ZU_API void zuDictDelValue( ZU_DICT **dict, ZU_OBJ *value, ZU_BOOL useCompare );
/// Adds all pairs of `src`.  A key that `dest` has already keeps its value, unless `overwrite` is set.  Unless `src` is
/// empty, a shared dict is copied even if nothing is added.
ZU_API void zuDictInclude( ZU_DICT **dest, ZU_DICT *src, ZU_BOOL overwrite );
/// Removes every key of `src`.
ZU_API void zuDictExclude( ZU_DICT **dest, ZU_DICT *src );
/// Removes every key that `src` lacks, and takes the values of the others from `src` if `useSrcValues` is set.  Unless
/// `*dest` is empty or `src` itself, that makes a new object; an empty `src` leaves the shared empty dict.
ZU_API void zuDictIntersect( ZU_DICT **dest, ZU_DICT *src, ZU_BOOL useSrcValues );
/// Tells whether the two have no key in common.
ZU_API ZU_BOOL zuDictDisjoint( ZU_DICT *dictA, ZU_DICT *dictB );

// For authors of classes and modules
/// Empties the dict and keeps its storage for the next pairs; a shared dict is exchanged for the shared empty one.
ZU_API void zu___DictClear( ZU_DICT **dict );
/// Makes the shared empty dict.
ZU_API void zu___DictStartup( void );
/// Releases the shared empty dict.
ZU_API void zu___DictShutdown( void );

ZU_END_DECLS
