// ZU_ENUM: names of values that are not negative, to print them and to read them.
//
// A copy-on-write value; zu_obj.h tells what holds for all of them.  A name is upper-case as zuNameUpperCaseOk tells,
// private names included, and has one value.  Several names may have the same value; the one that was set last is the
// one that is printed, and all are read.  Two enumerations are equal only if they are one object.
//
// `Cstr` forms take `nameLength` bytes of narrow text, `Wcstr` forms as many units of UTF-16, -1 for terminated text.
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

typedef struct ZU_VECTOR ZU_VECTOR;

typedef struct ZU_ENUM ZU_ENUM;
// zuEnumRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_ENUM, zuEnum )

// Creation
/// Returns a new enumeration without names.
ZU_API ZU_ENUM *zuEnumCreate( void );
/// Returns a new object with the names of `source`.
ZU_API ZU_ENUM *zuEnumCreateFrom( ZU_ENUM *source );

// Setting a name.  A value that it had before loses its printed name, whichever that was.  An invalid name and a
// negative value abort.
/// Gives the value `value` to `name`.
ZU_API void zuEnumSetEnumerant( ZU_ENUM **en, ZU_STRING *name, ZU_INT value );
/// Gives the value `value` to a narrow text.
ZU_API void zuEnumSetEnumerantCstr( ZU_ENUM **en, const char *name, ZU_INT nameLength, ZU_INT value );
/// Gives the value `value` to a UTF-16 text.
ZU_API void zuEnumSetEnumerantWcstr( ZU_ENUM **en, const char16_t *name, ZU_INT nameLength, ZU_INT value );

// Deletion.  The name's value loses its printed name, even if that was another.  An unknown name changes and copies
// nothing.
/// Removes `name`.
ZU_API void zuEnumDelEnumerant( ZU_ENUM **en, ZU_STRING *name );
/// Removes a narrow text.
ZU_API void zuEnumDelEnumerantCstr( ZU_ENUM **en, const char *name, ZU_INT nameLength );
/// Removes a UTF-16 text.
ZU_API void zuEnumDelEnumerantWcstr( ZU_ENUM **en, const char16_t *name, ZU_INT nameLength );

// Looking names up
/// Returns the value of `name`; -1 if it has none.
ZU_API ZU_INT zuEnumEnumerant( ZU_ENUM *en, ZU_STRING *name );
/// Returns the value of a narrow text; -1 if it has none.
ZU_API ZU_INT zuEnumEnumerantCstr( ZU_ENUM *en, const char *name, ZU_INT nameLength );
/// Returns the value of a UTF-16 text; -1 if it has none.
ZU_API ZU_INT zuEnumEnumerantWcstr( ZU_ENUM *en, const char16_t *name, ZU_INT nameLength );
/// Tells whether `name` has a value.
ZU_API ZU_BOOL zuEnumHasEnumerant( ZU_ENUM *en, ZU_STRING *name );
/// Tells whether a narrow text has a value.
ZU_API ZU_BOOL zuEnumHasEnumerantCstr( ZU_ENUM *en, const char *name, ZU_INT nameLength );
/// Tells whether a UTF-16 text has a value.
ZU_API ZU_BOOL zuEnumHasEnumerantWcstr( ZU_ENUM *en, const char16_t *name, ZU_INT nameLength );
/// Returns all names as strings, in ascending order.
ZU_API ZU_VECTOR *zuEnumEnumerantsVector( ZU_ENUM *en );

// Printing and reading
/// Returns the name that `value` prints as; null if it has none.
ZU_API ZU_STRING *zuEnumGenerate( ZU_ENUM *en, ZU_INT value );
/// Reads a name or a number, with or without a base prefix as of a format, and white space at both ends.  Returns the
/// value; -1 for anything else, and for a number that no name has.
ZU_API ZU_INT zuEnumParse( ZU_ENUM *en, ZU_STRING *name );

ZU_END_DECLS
