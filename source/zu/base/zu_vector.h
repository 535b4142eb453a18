// ZU_VECTOR: an ordered sequence of objects, of any classes, mixed as well: an array, list, stack or queue.
//
// A copy-on-write value; zu_obj.h tells what holds for all of them.  A vector holds one reference to each of its items;
// an item is never null, and the boxed null of zu_boxed_null.h stands for nothing.  The same object may be in it any
// number of times.  Positions and counts are in items.  Reading by position takes constant time, and so do insertion
// and removal at either end, over any number of them; further inside they move what lies behind, since the items are an
// array.  Up to 64 items live in the vector itself.  Inserting or deleting nothing copies nothing.
#pragma once

#include "zu/base/zu_string.h"
#include "zu/runtime/zu_sort.h"

ZU_BEGIN_DECLS

typedef struct ZU_VECTOR ZU_VECTOR;
// zuVectorRetain, Release, From, Obj, Sort, ToString, Compare, Equals
//
// Vectors are ordered by their first items that differ, then by length.  The text is the texts of the items, as in
// "<1, 2>".
ZU_STDFUNCS_DECLARE( ZU_VECTOR, zuVector )

// Inspection
/// Returns the number of items.
ZU_API ZU_INT zuVectorLength( ZU_VECTOR *vec );
/// Returns the address of the first item, never null.  It holds until the vector is changed or released; the items are
/// not retained for the caller.
ZU_API ZU_OBJ *const *zuVectorBacking( ZU_VECTOR *vec );
/// Returns the item at `idx`, as a reference of the caller's; a position outside aborts.
ZU_API ZU_OBJ *zuVectorObjAt( ZU_VECTOR *vec, ZU_INT idx );
/// Returns the sort of the item at `idx`, not retained; a position outside aborts.
ZU_API ZU_SORT *zuVectorSortAt( ZU_VECTOR *vec, ZU_INT idx );
/// Tells whether all items are of the class `sort`, as those of an empty vector are of any.
ZU_API ZU_BOOL zuVectorContainsOnly( ZU_VECTOR *vec, ZU_SORT *sort );
/// Tells whether `obj` is an item, or with `useCompare` an object that compares equal to it.
ZU_API ZU_BOOL zuVectorHasObj( ZU_VECTOR *vec, ZU_OBJ *obj, ZU_BOOL useCompare );
/// Returns the position of the first item that is `obj`, or with `useCompare` compares equal to it; -1 if there is
/// none.
ZU_API ZU_INT zuVectorIndexOfObj( ZU_VECTOR *vec, ZU_OBJ *obj, ZU_BOOL useCompare );

// Creation; a range outside `src` aborts
/// Returns the empty vector, which all callers share.
ZU_API ZU_VECTOR *zuVectorCreate( void );
/// Returns a new object with the items of `src`.
ZU_API ZU_VECTOR *zuVectorCreateFrom( ZU_VECTOR *src );
/// Returns a new object with the `count` items of `src` from `offset` on.
ZU_API ZU_VECTOR *zuVectorCreateFromInner( ZU_VECTOR *src, ZU_INT offset, ZU_INT count );
/// Returns a new object with the first `count` items of `src`.
ZU_API ZU_VECTOR *zuVectorCreateFromLeading( ZU_VECTOR *src, ZU_INT count );
/// Returns a new object with the last `count` items of `src`.
ZU_API ZU_VECTOR *zuVectorCreateFromTrailing( ZU_VECTOR *src, ZU_INT count );
/// Returns a new object with the items of `src` but the `count` from `offset` on.
ZU_API ZU_VECTOR *zuVectorCreateFromOuter( ZU_VECTOR *src, ZU_INT offset, ZU_INT count );
/// Returns a new vector of the one item `obj`.
ZU_API ZU_VECTOR *zuVectorCreateFromObj( ZU_OBJ *obj );
/// Returns a new vector with the `count` objects of an array.  It takes the caller's references over, whatever its name
/// suggests, and leaves the caller the array; a null among them aborts.  A count of 0 gives the shared empty vector.
ZU_API ZU_VECTOR *zuVectorCreateFromObjsCopy( ZU_OBJ *const *src, ZU_INT count );
/// Returns a new vector that takes over the `count` references in `src` and `src` itself, an array of zuMemAllocN, and
/// frees it in the end; a null among them aborts.  A count of 0 gives the shared empty vector, and the array stays the
/// caller's.
ZU_API ZU_VECTOR *zuVectorCreateFromObjsUse( ZU_OBJ **src, ZU_INT count );

// Insertion
//
//     Insert                   all of `src`
//     InsertInner              the `count` items of `src` from `offset` on
//     InsertLeading            the first `count` items of `src`
//     InsertTrailing           the last `count` items of `src`
//     InsertOuter              `src` without the `count` items from `offset` on
//     InsertObj                one object
//     InsertObjs               an array of objects
//     InsertBool               a truth value, boxed
//     InsertInt                an integer, boxed
//     InsertReal               a real number, boxed
//     InsertNull               the boxed null
//     InsertString             a string: the object, not a copy
//     InsertStringCstr         a new string of text in the narrow encoding
//     InsertStringWcstr        a new string of text in UTF-16
//     InsertStringFormat       a new string made by a format; see zu_string_format.h for all three
//     InsertStringFormatCstr   a new string made by a narrow format
//     InsertStringFormatWcstr  a new string made by a format in UTF-16
//
// go in ahead of position `idx`, 0 to the length; Append forms put them at the end, Prepend forms at the front.  `src`
// may be the changed vector itself, as source or as item, or a part of its backing, and is read as it stood before the
// call.  Lengths of text may be -1: terminated.  A position or range outside aborts, and so does null.
/// Inserts all of `src`.
ZU_API void zuVectorInsert( ZU_VECTOR **vec, ZU_INT idx, ZU_VECTOR *src );
/// Inserts the `count` items of `src` from `offset` on.
ZU_API void zuVectorInsertInner( ZU_VECTOR **vec, ZU_INT idx, ZU_VECTOR *src, ZU_INT offset, ZU_INT count );
/// Inserts the first `count` items of `src`.
ZU_API void zuVectorInsertLeading( ZU_VECTOR **vec, ZU_INT idx, ZU_VECTOR *src, ZU_INT count );
/// Inserts the last `count` items of `src`.
ZU_API void zuVectorInsertTrailing( ZU_VECTOR **vec, ZU_INT idx, ZU_VECTOR *src, ZU_INT count );
/// Inserts `src` without the `count` items from `offset` on.
ZU_API void zuVectorInsertOuter( ZU_VECTOR **vec, ZU_INT idx, ZU_VECTOR *src, ZU_INT offset, ZU_INT count );
/// Inserts the object `src`.
ZU_API void zuVectorInsertObj( ZU_VECTOR **vec, ZU_INT idx, ZU_OBJ *src );
/// Inserts the `count` objects of an array.
ZU_API void zuVectorInsertObjs( ZU_VECTOR **vec, ZU_INT idx, ZU_OBJ *const *src, ZU_INT count );
/// Inserts a boxed truth value.
ZU_API void zuVectorInsertBool( ZU_VECTOR **vec, ZU_INT idx, ZU_BOOL value );
/// Inserts a boxed integer.
ZU_API void zuVectorInsertInt( ZU_VECTOR **vec, ZU_INT idx, ZU_INT value );
/// Inserts a boxed real number.
ZU_API void zuVectorInsertReal( ZU_VECTOR **vec, ZU_INT idx, double value );
/// Inserts the boxed null.
ZU_API void zuVectorInsertNull( ZU_VECTOR **vec, ZU_INT idx );
/// Inserts the string `zus`.
ZU_API void zuVectorInsertString( ZU_VECTOR **vec, ZU_INT idx, ZU_STRING *zus );
/// Inserts a string of `srcLength` bytes of narrow text.
ZU_API void zuVectorInsertStringCstr( ZU_VECTOR **vec, ZU_INT idx, const char *src, ZU_INT srcLength );
/// Inserts a string of `srcLength` units of UTF-16.
ZU_API void zuVectorInsertStringWcstr( ZU_VECTOR **vec, ZU_INT idx, const char16_t *src, ZU_INT srcLength );
/// Inserts a string made by `fmt` and further arguments.
ZU_API void zuVectorInsertStringFormat( ZU_VECTOR **vec, ZU_INT idx, ZU_STRING *fmt, ... );
/// Inserts a string made by a narrow `fmt` and further arguments.
ZU_API void zuVectorInsertStringFormatCstr( ZU_VECTOR **vec, ZU_INT idx, const char *fmt, ZU_INT fmtLength, ... );
/// Inserts a string made by a UTF-16 `fmt` and further arguments.
ZU_API void zuVectorInsertStringFormatWcstr( ZU_VECTOR **vec, ZU_INT idx, const char16_t *fmt, ZU_INT fmtLength, ... );

/// Appends all of `src`.
ZU_API void zuVectorAppend( ZU_VECTOR **vec, ZU_VECTOR *src );
/// Appends the `count` items of `src` from `offset` on.
ZU_API void zuVectorAppendInner( ZU_VECTOR **vec, ZU_VECTOR *src, ZU_INT offset, ZU_INT count );
/// Appends the first `count` items of `src`.
ZU_API void zuVectorAppendLeading( ZU_VECTOR **vec, ZU_VECTOR *src, ZU_INT count );
/// Appends the last `count` items of `src`.
ZU_API void zuVectorAppendTrailing( ZU_VECTOR **vec, ZU_VECTOR *src, ZU_INT count );
/// Appends `src` without the `count` items from `offset` on.
ZU_API void zuVectorAppendOuter( ZU_VECTOR **vec, ZU_VECTOR *src, ZU_INT offset, ZU_INT count );
/// Appends the object `src`.
ZU_API void zuVectorAppendObj( ZU_VECTOR **vec, ZU_OBJ *src );
/// Appends the `count` objects of an array.
ZU_API void zuVectorAppendObjs( ZU_VECTOR **vec, ZU_OBJ *const *src, ZU_INT count );
/// Appends a boxed truth value.
ZU_API void zuVectorAppendBool( ZU_VECTOR **vec, ZU_BOOL value );
/// Appends a boxed integer.
ZU_API void zuVectorAppendInt( ZU_VECTOR **vec, ZU_INT value );
/// Appends a boxed real number.
ZU_API void zuVectorAppendReal( ZU_VECTOR **vec, double value );
/// Appends the boxed null.
ZU_API void zuVectorAppendNull( ZU_VECTOR **vec );
/// Appends the string `zus`.
ZU_API void zuVectorAppendString( ZU_VECTOR **vec, ZU_STRING *zus );
/// Appends a string of `srcLength` bytes of narrow text.
ZU_API void zuVectorAppendStringCstr( ZU_VECTOR **vec, const char *src, ZU_INT srcLength );
/// Appends a string of `srcLength` units of UTF-16.
ZU_API void zuVectorAppendStringWcstr( ZU_VECTOR **vec, const char16_t *src, ZU_INT srcLength );
/// Appends a string made by `fmt` and further arguments.
ZU_API void zuVectorAppendStringFormat( ZU_VECTOR **vec, ZU_STRING *fmt, ... );
/// Appends a string made by a narrow `fmt` and further arguments.
ZU_API void zuVectorAppendStringFormatCstr( ZU_VECTOR **vec, const char *fmt, ZU_INT fmtLength, ... );
/// Appends a string made by a UTF-16 `fmt` and further arguments.
ZU_API void zuVectorAppendStringFormatWcstr( ZU_VECTOR **vec, const char16_t *fmt, ZU_INT fmtLength, ... );

/// Inserts all of `src` at the front.
ZU_API void zuVectorPrepend( ZU_VECTOR **vec, ZU_VECTOR *src );
/// Inserts the `count` items of `src` from `offset` on at the front.
ZU_API void zuVectorPrependInner( ZU_VECTOR **vec, ZU_VECTOR *src, ZU_INT offset, ZU_INT count );
/// Inserts the first `count` items of `src` at the front.
ZU_API void zuVectorPrependLeading( ZU_VECTOR **vec, ZU_VECTOR *src, ZU_INT count );
/// Inserts the last `count` items of `src` at the front.
ZU_API void zuVectorPrependTrailing( ZU_VECTOR **vec, ZU_VECTOR *src, ZU_INT count );
/// Inserts `src` without the `count` items from `offset` on at the front.
ZU_API void zuVectorPrependOuter( ZU_VECTOR **vec, ZU_VECTOR *src, ZU_INT offset, ZU_INT count );
/// Inserts the object `src` at the front.
ZU_API void zuVectorPrependObj( ZU_VECTOR **vec, ZU_OBJ *src );
/// Inserts the `count` objects of an array at the front.
ZU_API void zuVectorPrependObjs( ZU_VECTOR **vec, ZU_OBJ *const *src, ZU_INT count );
/// Inserts a boxed truth value at the front.
ZU_API void zuVectorPrependBool( ZU_VECTOR **vec, ZU_BOOL value );
/// Inserts a boxed integer at the front.
ZU_API void zuVectorPrependInt( ZU_VECTOR **vec, ZU_INT value );
/// Inserts a boxed real number at the front.
ZU_API void zuVectorPrependReal( ZU_VECTOR **vec, double value );
/// Inserts the boxed null at the front.
ZU_API void zuVectorPrependNull( ZU_VECTOR **vec );
/// Inserts the string `zus` at the front.
ZU_API void zuVectorPrependString( ZU_VECTOR **vec, ZU_STRING *zus );
/// Inserts a string of `srcLength` bytes of narrow text at the front.
ZU_API void zuVectorPrependStringCstr( ZU_VECTOR **vec, const char *src, ZU_INT srcLength );
/// Inserts a string of `srcLength` units of UTF-16 at the front.
ZU_API void zuVectorPrependStringWcstr( ZU_VECTOR **vec, const char16_t *src, ZU_INT srcLength );
/// Inserts a string made by `fmt` and further arguments at the front.
ZU_API void zuVectorPrependStringFormat( ZU_VECTOR **vec, ZU_STRING *fmt, ... );
/// Inserts a string made by a narrow `fmt` and further arguments at the front.
ZU_API void zuVectorPrependStringFormatCstr( ZU_VECTOR **vec, const char *fmt, ZU_INT fmtLength, ... );
/// Inserts a string made by a UTF-16 `fmt` and further arguments at the front.
ZU_API void zuVectorPrependStringFormatWcstr( ZU_VECTOR **vec, const char16_t *fmt, ZU_INT fmtLength, ... );

// Replacement
//
// overwrites the item at `idx`.  At -1 the new one is inserted at the front instead, at the length it is appended; a
// position further outside aborts.  Values are boxed, and lengths of text may be -1, as with insertion.
/// Puts the object `item`.
ZU_API void zuVectorSetObjAt( ZU_VECTOR **vec, ZU_INT idx, ZU_OBJ *item );
/// Puts a boxed truth value.
ZU_API void zuVectorSetBoolAt( ZU_VECTOR **vec, ZU_INT idx, ZU_BOOL value );
/// Puts a boxed integer.
ZU_API void zuVectorSetIntAt( ZU_VECTOR **vec, ZU_INT idx, ZU_INT value );
/// Puts a boxed real number.
ZU_API void zuVectorSetRealAt( ZU_VECTOR **vec, ZU_INT idx, double value );
/// Puts the boxed null.
ZU_API void zuVectorSetNullAt( ZU_VECTOR **vec, ZU_INT idx );
/// Puts the string `zus`.
ZU_API void zuVectorSetStringAt( ZU_VECTOR **vec, ZU_INT idx, ZU_STRING *zus );
/// Puts a string of `srcLength` bytes of narrow text.
ZU_API void zuVectorSetStringCstrAt( ZU_VECTOR **vec, ZU_INT idx, const char *src, ZU_INT srcLength );
/// Puts a string of `srcLength` units of UTF-16.
ZU_API void zuVectorSetStringWcstrAt( ZU_VECTOR **vec, ZU_INT idx, const char16_t *src, ZU_INT srcLength );
/// Puts a string made by `fmt` and further arguments.
ZU_API void zuVectorSetStringFormatAt( ZU_VECTOR **vec, ZU_INT idx, ZU_STRING *fmt, ... );
/// Puts a string made by a narrow `fmt` and further arguments.
ZU_API void zuVectorSetStringFormatCstrAt( ZU_VECTOR **vec, ZU_INT idx, const char *fmt, ZU_INT fmtLength, ... );
/// Puts a string made by a UTF-16 `fmt` and further arguments.
ZU_API void zuVectorSetStringFormatWcstrAt( ZU_VECTOR **vec, ZU_INT idx, const char16_t *fmt, ZU_INT fmtLength, ... );

// Deletion; a range outside aborts.  Whoever deletes everything by these is left with the shared empty vector.
/// Removes the item at `idx`.
ZU_API void zuVectorDelAt( ZU_VECTOR **vec, ZU_INT idx );
/// Removes the `count` items from `offset` on.
ZU_API void zuVectorDelInner( ZU_VECTOR **vec, ZU_INT offset, ZU_INT count );
/// Removes the first `count` items.
ZU_API void zuVectorDelLeading( ZU_VECTOR **vec, ZU_INT count );
/// Removes the last `count` items.
ZU_API void zuVectorDelTrailing( ZU_VECTOR **vec, ZU_INT count );
/// Removes everything but the `count` items from `offset` on.
ZU_API void zuVectorDelOuter( ZU_VECTOR **vec, ZU_INT offset, ZU_INT count );
/// Removes everything.
ZU_API void zuVectorClear( ZU_VECTOR **vec );

// Stack and queue.  Push and Pop work at the end, Shift and Unshift at the front: Shift puts in, Unshift takes out.  An
// item that is taken out comes with the reference that the vector had; taking from an empty vector aborts.
/// Appends `obj`.
ZU_API void zuVectorPush( ZU_VECTOR **vec, ZU_OBJ *obj );
/// Removes the last item and returns it.
ZU_API ZU_OBJ *zuVectorPop( ZU_VECTOR **vec );
/// Inserts `obj` at the front.
ZU_API void zuVectorShift( ZU_VECTOR **vec, ZU_OBJ *obj );
/// Removes the first item and returns it.
ZU_API ZU_OBJ *zuVectorUnshift( ZU_VECTOR **vec );

// The whole vector
/// Reverses the order of the items.
ZU_API void zuVectorReverse( ZU_VECTOR **vec );
/// Replaces each item by its text, as zuObjToString makes it.
ZU_API void zuVectorStringize( ZU_VECTOR **vec );

// For authors of classes and modules

// Free slots at both ends of a new vector, and of storage that has been replaced.
#define ZU_VECTOR_FSPACE ( (ZU_INT)32 )
#define ZU_VECTOR_BSPACE ( (ZU_INT)32 )

/// Appends `count` objects and takes the caller's references to them over.  The vector must be shared by nobody: what
/// it holds already would be taken from the others.
ZU_API void zu___VectorPushNoRetain( ZU_VECTOR **vec, ZU_OBJ *const *src, ZU_INT count );

/// Makes the shared empty vector.
ZU_API void zu___VectorStartup( void );
/// Releases the shared empty vector.
ZU_API void zu___VectorShutdown( void );

ZU_END_DECLS
