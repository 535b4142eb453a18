// ZU_FLAGSET: names of the single bits of a ZU_INT, to print and to read words of flags: "ZU_A|ZU_B".
//
// A copy-on-write value; zu_obj.h tells what holds for all of them.  A name is upper-case as zuNameUpperCaseOk tells,
// private names included, and stands for one bit.  Several names may stand for the same bit; the one that was set last
// is the one that is printed, and all are read.  The value of bit 63 is ZU_INT_MIN.  Two flag sets are equal only if
// they are one object.
//
// `Cstr` forms take `nameLength` bytes of narrow text, `Wcstr` forms as many units of UTF-16, -1 for terminated text.
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

typedef struct ZU_VECTOR ZU_VECTOR;

typedef struct ZU_FLAGSET ZU_FLAGSET;
// zuFlagsetRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_FLAGSET, zuFlagset )

// Creation
/// Returns a new flag set without names.
ZU_API ZU_FLAGSET *zuFlagsetCreate( void );
/// Returns a new object with the names of `source`.
ZU_API ZU_FLAGSET *zuFlagsetCreateFrom( ZU_FLAGSET *source );

// Setting a name.  A bit that it stood for before keeps it as its printed name.  An invalid name aborts, and so does a
// value of no or several bits.
/// Makes `name` stand for the bit of `value`.
ZU_API void zuFlagsetSetFlag( ZU_FLAGSET **fs, ZU_STRING *name, ZU_INT value );
/// Makes a narrow text stand for the bit of `value`.
ZU_API void zuFlagsetSetFlagCstr( ZU_FLAGSET **fs, const char *name, ZU_INT nameLength, ZU_INT value );
/// Makes a UTF-16 text stand for the bit of `value`.
ZU_API void zuFlagsetSetFlagWcstr( ZU_FLAGSET **fs, const char16_t *name, ZU_INT nameLength, ZU_INT value );

// Deletion.  The name's bit loses its printed name, even if that was another.  An unknown name changes and copies
// nothing.
/// Removes `name`.
ZU_API void zuFlagsetDelFlag( ZU_FLAGSET **fs, ZU_STRING *name );
/// Removes a narrow text.
ZU_API void zuFlagsetDelFlagCstr( ZU_FLAGSET **fs, const char *name, ZU_INT nameLength );
/// Removes a UTF-16 text.
ZU_API void zuFlagsetDelFlagWcstr( ZU_FLAGSET **fs, const char16_t *name, ZU_INT nameLength );

// Looking names up
/// Returns the bit of `name`; 0 if it has none.
ZU_API ZU_INT zuFlagsetFlag( ZU_FLAGSET *fs, ZU_STRING *name );
/// Returns the bit of a narrow text; 0 if it has none.
ZU_API ZU_INT zuFlagsetFlagCstr( ZU_FLAGSET *fs, const char *name, ZU_INT nameLength );
/// Returns the bit of a UTF-16 text; 0 if it has none.
ZU_API ZU_INT zuFlagsetFlagWcstr( ZU_FLAGSET *fs, const char16_t *name, ZU_INT nameLength );
/// Tells whether `name` stands for a bit.
ZU_API ZU_BOOL zuFlagsetHasFlag( ZU_FLAGSET *fs, ZU_STRING *name );
/// Tells whether a narrow text stands for a bit.
ZU_API ZU_BOOL zuFlagsetHasFlagCstr( ZU_FLAGSET *fs, const char *name, ZU_INT nameLength );
/// Tells whether a UTF-16 text stands for a bit.
ZU_API ZU_BOOL zuFlagsetHasFlagWcstr( ZU_FLAGSET *fs, const char16_t *name, ZU_INT nameLength );
/// Returns all names as strings, in ascending order.
ZU_API ZU_VECTOR *zuFlagsetFlagsVector( ZU_FLAGSET *fs );

// Printing and reading
/// Returns the names of the bits of `flags`, lowest bit first, with "|" between them; the empty string for 0.  A bit
/// without a name aborts.
ZU_API ZU_STRING *zuFlagsetGenerate( ZU_FLAGSET *fs, ZU_INT flags );
/// Reads names and numbers with "|" between them and white space around each, and returns their union.  A number may
/// have a base prefix as of a format, and counts with the bits that have names; a number with something else behind it
/// counts with all its bits.  What cannot be read counts as 0.
ZU_API ZU_INT zuFlagsetParse( ZU_FLAGSET *fs, ZU_STRING *flags );

ZU_END_DECLS
