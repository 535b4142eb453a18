// ZU_STRING: text, a sequence of Unicode code points.
//
// A copy-on-write value; zu_obj.h tells what holds for all of them.  Each element is one code point of 32 bits, never a
// byte or a UTF-16 unit; lengths and positions are in elements.  Surrogates may stand in a string, values above
// 0x10FFFF abort wherever they would enter one.  Strings are ordered by code point, without collation or normalization.
// Texts of up to 64 elements live in the object itself.  Inserting at either end takes constant time for each element,
// on the average of many, and deleting there takes constant time mostly; further inside both move what lies behind,
// since a text is an array.  Inserting or deleting nothing copies nothing.
//
// `Cstr` forms take text in the environment's narrow encoding, `Wcstr` forms UTF-16, and both take a length of -1 for
// terminated text.  A character beyond U+FFFF arrives as a surrogate pair from either; the UTF-8 functions and
// zuStringSanitize give whole code points.
#pragma once

#include "zu/runtime/zu_obj.h"
#include "zu/sys/zu_chars.h"

ZU_BEGIN_DECLS

typedef struct ZU_STRING ZU_STRING;
// zuStringRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_STRING, zuString )

// Inspection
/// Returns the number of code points.
ZU_API ZU_INT zuStringLength( ZU_STRING *zus );
/// Returns the address of the first code point, never null.  It holds until the string is changed or released; nothing
/// terminates the text.
ZU_API const ZU_CHAR *zuStringBacking( ZU_STRING *zus );
/// Returns the code point at `idx`; a position outside aborts.
ZU_API ZU_CHAR zuStringCharAt( ZU_STRING *zus, ZU_INT idx );

// Creation
//
// The result is a new object that nobody else holds, also where the text is empty; only zuStringCreate and the forms
// for arrays of code points return the shared empty string.  A range outside `src` aborts.
/// Returns the empty string, which all callers share; null ahead of zuRuntimeStartup.
ZU_API ZU_STRING *zuStringCreate( void );
/// Returns a new object with the text of `src`.
ZU_API ZU_STRING *zuStringCreateFrom( ZU_STRING *src );
/// Returns the `count` code points of `src` from `offset` on.
ZU_API ZU_STRING *zuStringCreateFromInner( ZU_STRING *src, ZU_INT offset, ZU_INT count );
/// Returns the first `count` code points of `src`.
ZU_API ZU_STRING *zuStringCreateFromLeading( ZU_STRING *src, ZU_INT count );
/// Returns the last `count` code points of `src`.
ZU_API ZU_STRING *zuStringCreateFromTrailing( ZU_STRING *src, ZU_INT count );
/// Returns `src` without the `count` code points from `offset` on.
ZU_API ZU_STRING *zuStringCreateFromOuter( ZU_STRING *src, ZU_INT offset, ZU_INT count );
/// Returns a copy of `srcLength` code points.
ZU_API ZU_STRING *zuStringCreateFromCharsCopy( const ZU_CHAR *src, ZU_INT srcLength );
/// Returns a string that uses `src`, an array of `srcLength` code points from zuMemAllocN, and frees it in the end.
/// With a length of 0 the array stays the caller's.
ZU_API ZU_STRING *zuStringCreateFromCharsUse( ZU_CHAR *src, ZU_INT srcLength );
/// Converts from ASCII; `srcLength` is in bytes, -1: terminated.  Bytes of 128 or above become U+FFFD.
ZU_API ZU_STRING *zuStringCreateFromAscii( const char *src, ZU_INT srcLength );
/// Converts from UTF-8, as zuCharsConvertFromUtf8 does; `srcLength` is in bytes, -1: terminated.
ZU_API ZU_STRING *zuStringCreateFromUtf8( const char *src, ZU_INT srcLength );
/// Converts from the narrow encoding; `srcLength` is in bytes, -1: terminated.
ZU_API ZU_STRING *zuStringCreateFromCstr( const char *src, ZU_INT srcLength );
/// Converts from UTF-16; `srcLength` is in 16-bit units, -1: terminated.
ZU_API ZU_STRING *zuStringCreateFromWcstr( const char16_t *src, ZU_INT srcLength );

// Insertion
//
//     Insert          all of `src`
//     InsertInner     the `count` code points of `src` from `offset` on
//     InsertLeading   the first `count` code points of `src`
//     InsertTrailing  the last `count` code points of `src`
//     InsertOuter     `src` without the `count` code points from `offset` on
//     InsertChar      one code point
//     InsertCharRun   `count` times the same code point
//     InsertChars     an array of code points
//     InsertCstr      text in the narrow encoding
//     InsertWcstr     text in UTF-16
//     InsertObj       the text that zuObjToString makes of `obj`
//
// go in ahead of position `idx`, 0 to the length; Append forms put them at the end, Prepend forms at the front.  A
// position or a range outside aborts.  `src` may be the changed string itself, and an array a part of its backing:
// what is read is as it stood before the call.
/// Inserts all of `src`.
ZU_API void zuStringInsert( ZU_STRING **dest, ZU_INT idx, ZU_STRING *src );
/// Inserts the `count` code points of `src` from `offset` on.
ZU_API void zuStringInsertInner( ZU_STRING **dest, ZU_INT idx, ZU_STRING *src, ZU_INT offset, ZU_INT count );
/// Inserts the first `count` code points of `src`.
ZU_API void zuStringInsertLeading( ZU_STRING **dest, ZU_INT idx, ZU_STRING *src, ZU_INT count );
/// Inserts the last `count` code points of `src`.
ZU_API void zuStringInsertTrailing( ZU_STRING **dest, ZU_INT idx, ZU_STRING *src, ZU_INT count );
/// Inserts `src` without the `count` code points from `offset` on.
ZU_API void zuStringInsertOuter( ZU_STRING **dest, ZU_INT idx, ZU_STRING *src, ZU_INT offset, ZU_INT count );
/// Inserts the code point `ch`.
ZU_API void zuStringInsertChar( ZU_STRING **zus, ZU_INT idx, ZU_CHAR ch );
/// Inserts the code point `ch` `count` times.
ZU_API void zuStringInsertCharRun( ZU_STRING **zus, ZU_INT idx, ZU_CHAR ch, ZU_INT count );
/// Inserts `chsLength` code points.
ZU_API void zuStringInsertChars( ZU_STRING **zus, ZU_INT idx, const ZU_CHAR *chs, ZU_INT chsLength );
/// Inserts `srcLength` bytes of narrow text, -1: terminated.
ZU_API void zuStringInsertCstr( ZU_STRING **dest, ZU_INT idx, const char *src, ZU_INT srcLength );
/// Inserts `srcLength` units of UTF-16, -1: terminated.
ZU_API void zuStringInsertWcstr( ZU_STRING **dest, ZU_INT idx, const char16_t *src, ZU_INT srcLength );
/// Inserts the text of `obj`.
ZU_API void zuStringInsertObj( ZU_STRING **dest, ZU_INT idx, ZU_OBJ *obj );

/// Appends all of `src`.
ZU_API void zuStringAppend( ZU_STRING **dest, ZU_STRING *src );
/// Appends the `count` code points of `src` from `offset` on.
ZU_API void zuStringAppendInner( ZU_STRING **dest, ZU_STRING *src, ZU_INT offset, ZU_INT count );
/// Appends the first `count` code points of `src`.
ZU_API void zuStringAppendLeading( ZU_STRING **dest, ZU_STRING *src, ZU_INT count );
/// Appends the last `count` code points of `src`.
ZU_API void zuStringAppendTrailing( ZU_STRING **dest, ZU_STRING *src, ZU_INT count );
/// Appends `src` without the `count` code points from `offset` on.
ZU_API void zuStringAppendOuter( ZU_STRING **dest, ZU_STRING *src, ZU_INT offset, ZU_INT count );
/// Appends the code point `ch`.
ZU_API void zuStringAppendChar( ZU_STRING **zus, ZU_CHAR ch );
/// Appends the code point `ch` `count` times.
ZU_API void zuStringAppendCharRun( ZU_STRING **zus, ZU_CHAR ch, ZU_INT count );
/// Appends `chsLength` code points.
ZU_API void zuStringAppendChars( ZU_STRING **zus, const ZU_CHAR *chs, ZU_INT chsLength );
/// Appends `srcLength` bytes of narrow text, -1: terminated.
ZU_API void zuStringAppendCstr( ZU_STRING **dest, const char *src, ZU_INT srcLength );
/// Appends `srcLength` units of UTF-16, -1: terminated.
ZU_API void zuStringAppendWcstr( ZU_STRING **dest, const char16_t *src, ZU_INT srcLength );
/// Appends the text of `obj`.
ZU_API void zuStringAppendObj( ZU_STRING **dest, ZU_OBJ *obj );

/// Inserts all of `src` at the front.
ZU_API void zuStringPrepend( ZU_STRING **dest, ZU_STRING *src );
/// Inserts the `count` code points of `src` from `offset` on at the front.
ZU_API void zuStringPrependInner( ZU_STRING **dest, ZU_STRING *src, ZU_INT offset, ZU_INT count );
/// Inserts the first `count` code points of `src` at the front.
ZU_API void zuStringPrependLeading( ZU_STRING **dest, ZU_STRING *src, ZU_INT count );
/// Inserts the last `count` code points of `src` at the front.
ZU_API void zuStringPrependTrailing( ZU_STRING **dest, ZU_STRING *src, ZU_INT count );
/// Inserts `src` without the `count` code points from `offset` on at the front.
ZU_API void zuStringPrependOuter( ZU_STRING **dest, ZU_STRING *src, ZU_INT offset, ZU_INT count );
/// Inserts the code point `ch` at the front.
ZU_API void zuStringPrependChar( ZU_STRING **zus, ZU_CHAR ch );
/// Inserts the code point `ch` `count` times at the front.
ZU_API void zuStringPrependCharRun( ZU_STRING **zus, ZU_CHAR ch, ZU_INT count );
/// Inserts `chsLength` code points at the front.
ZU_API void zuStringPrependChars( ZU_STRING **zus, const ZU_CHAR *chs, ZU_INT chsLength );
/// Inserts `srcLength` bytes of narrow text at the front, -1: terminated.
ZU_API void zuStringPrependCstr( ZU_STRING **dest, const char *src, ZU_INT srcLength );
/// Inserts `srcLength` units of UTF-16 at the front, -1: terminated.
ZU_API void zuStringPrependWcstr( ZU_STRING **dest, const char16_t *src, ZU_INT srcLength );
/// Inserts the text of `obj` at the front.
ZU_API void zuStringPrependObj( ZU_STRING **dest, ZU_OBJ *obj );

// Deletion; a range outside aborts.  Whoever deletes everything is left with the shared empty string.
/// Removes the `count` code points from `offset` on.
ZU_API void zuStringDelInner( ZU_STRING **zus, ZU_INT offset, ZU_INT count );
/// Removes the first `count` code points.
ZU_API void zuStringDelLeading( ZU_STRING **zus, ZU_INT count );
/// Removes the last `count` code points.
ZU_API void zuStringDelTrailing( ZU_STRING **zus, ZU_INT count );
/// Removes everything but the `count` code points from `offset` on.
ZU_API void zuStringDelOuter( ZU_STRING **zus, ZU_INT offset, ZU_INT count );
/// Removes everything.
ZU_API void zuStringClear( ZU_STRING **zus );
/// Overwrites the code point at `idx`.  At -1 `ch` is inserted at the front instead, at the length it is appended.
ZU_API void zuStringSetCharAt( ZU_STRING **zus, ZU_INT idx, ZU_CHAR ch );

// Comparison of the whole text
/// Tells whether `zus` is the one code point `ch`, which may be any value.
ZU_API ZU_BOOL zuStringEqualsChar( ZU_STRING *zus, ZU_CHAR ch );
/// Tells whether `zus` equals the `chsLen` code points at `chs`.
ZU_API ZU_BOOL zuStringEqualsChars( ZU_STRING *zus, const ZU_CHAR *chs, ZU_INT chsLen );
/// Tells whether `zus` equals narrow text of `srcLength` bytes, -1: terminated.
ZU_API ZU_BOOL zuStringEqualsCstr( ZU_STRING *zus, const char *src, ZU_INT srcLength );
/// Tells whether `zus` equals UTF-16 text of `srcLength` units, -1: terminated.
ZU_API ZU_BOOL zuStringEqualsWcstr( ZU_STRING *zus, const char16_t *src, ZU_INT srcLength );

// Beginning and end; every string begins and ends with the empty text.  A value above 0x10FFFF in `sub` or `ch` aborts.
/// Tells whether `zus` begins with `sub`.
ZU_API ZU_BOOL zuStringBeginsWith( ZU_STRING *zus, ZU_STRING *sub );
/// Tells whether `zus` begins with the code point `ch`.
ZU_API ZU_BOOL zuStringBeginsWithChar( ZU_STRING *zus, ZU_CHAR ch );
/// Tells whether `zus` begins with `subLen` code points.
ZU_API ZU_BOOL zuStringBeginsWithChars( ZU_STRING *zus, const ZU_CHAR *sub, ZU_INT subLen );
/// Tells whether `zus` begins with narrow text of `subLen` bytes, -1: terminated.
ZU_API ZU_BOOL zuStringBeginsWithCstr( ZU_STRING *zus, const char *sub, ZU_INT subLen );
/// Tells whether `zus` begins with UTF-16 text of `subLen` units, -1: terminated.
ZU_API ZU_BOOL zuStringBeginsWithWcstr( ZU_STRING *zus, const char16_t *sub, ZU_INT subLen );
/// Tells whether `zus` ends with `sub`.
ZU_API ZU_BOOL zuStringEndsWith( ZU_STRING *zus, ZU_STRING *sub );
/// Tells whether `zus` ends with the code point `ch`.
ZU_API ZU_BOOL zuStringEndsWithChar( ZU_STRING *zus, ZU_CHAR ch );
/// Tells whether `zus` ends with `subLen` code points.
ZU_API ZU_BOOL zuStringEndsWithChars( ZU_STRING *zus, const ZU_CHAR *sub, ZU_INT subLen );
/// Tells whether `zus` ends with narrow text of `subLen` bytes, -1: terminated.
ZU_API ZU_BOOL zuStringEndsWithCstr( ZU_STRING *zus, const char *sub, ZU_INT subLen );
/// Tells whether `zus` ends with UTF-16 text of `subLen` units, -1: terminated.
ZU_API ZU_BOOL zuStringEndsWithWcstr( ZU_STRING *zus, const char16_t *sub, ZU_INT subLen );

// Conversion
//
// Each returns a new array, which the caller frees by zuMemFree, and stores its number of units in `outLength`, which
// may be null.  With `nulTerminate` a 0 unit ends the array and is counted.  If there is nothing to return, the result
// is null and the number 0.  What the target lacks is replaced as zu_chars.h tells.
/// Converts to ASCII; other characters become "?".
ZU_API char *zuStringConvertToAscii( ZU_STRING *zus, ZU_BOOL nulTerminate, ZU_INT *outLength );
/// Converts to UTF-8.
ZU_API char *zuStringConvertToUtf8( ZU_STRING *zus, ZU_BOOL nulTerminate, ZU_INT *outLength );
/// Converts to the narrow encoding.
ZU_API char *zuStringConvertToCstr( ZU_STRING *zus, ZU_BOOL nulTerminate, ZU_INT *outLength );
/// Converts to UTF-16.
ZU_API char16_t *zuStringConvertToWcstr( ZU_STRING *zus, ZU_BOOL nulTerminate, ZU_INT *outLength );

// For authors of classes and modules

// Free elements at both ends of storage that has been replaced.
#define ZU_STRING_FSPACE ( (ZU_INT)32 )
#define ZU_STRING_BSPACE ( (ZU_INT)32 )

/// Makes the shared empty string.
ZU_API void zu___StringStartup( void );
/// Releases the shared empty string.
ZU_API void zu___StringShutdown( void );

ZU_END_DECLS
