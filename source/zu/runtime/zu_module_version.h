// ZU_MODULE_VERSION: the version of a module, major and minor number.
//
// An immutable value, ordered by its numbers.  An insert makes room between two numbers that are given away already:
// 3#1 comes after 3 and before 4.  The text of a version is "1.2", or with inserts "3#1.0" or "1#5.2#7"; an insert of 0
// is not written.
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

typedef struct ZU_MODULE_VERSION ZU_MODULE_VERSION;
// zuModuleVersionRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_MODULE_VERSION, zuModuleVersion )

// Creation
/// Returns the version of these numbers.  None may be negative, an insert at most 999, and a thousand times a number
/// and its insert must be in range.
ZU_API ZU_MODULE_VERSION *zuModuleVersionCreate( ZU_INT major, ZU_INT majorInsert, ZU_INT minor, ZU_INT minorInsert );
/// Returns the version that `zus` is the text of, null if it is none.
ZU_API ZU_MODULE_VERSION *zuModuleVersionTryCreateFromString( ZU_STRING *zus );
/// Returns the version that narrow text of `length` bytes, -1: terminated, is the text of, null if it is none.
ZU_API ZU_MODULE_VERSION *zuModuleVersionTryCreateFromCstr( const char *text, ZU_INT length );
/// Returns the version that UTF-16 text of `length` units, -1: terminated, is the text of, null if it is none.
ZU_API ZU_MODULE_VERSION *zuModuleVersionTryCreateFromWcstr( const char16_t *text, ZU_INT length );

// Inspection
/// Returns the major number.
ZU_API ZU_INT zuModuleVersionMajor( ZU_MODULE_VERSION *ver );
/// Returns the insert behind the major number.
ZU_API ZU_INT zuModuleVersionMajorInsert( ZU_MODULE_VERSION *ver );
/// Returns the minor number.
ZU_API ZU_INT zuModuleVersionMinor( ZU_MODULE_VERSION *ver );
/// Returns the insert behind the minor number.
ZU_API ZU_INT zuModuleVersionMinorInsert( ZU_MODULE_VERSION *ver );
/// Returns a thousand times the major number and its insert: versions are compatible if these numbers are equal.
ZU_API ZU_INT zuModuleVersionCompatibility( ZU_MODULE_VERSION *ver );

ZU_END_DECLS
