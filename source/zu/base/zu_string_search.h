// zu_string_search.h: finding code points and texts in a string.
//
// Each function returns the position where the occurrence begins, and -1 if there is none.  Nothing is allocated, but
// for the conversion of narrow and UTF-16 texts.  An empty text to look for aborts.
#pragma once

#include "zu/base/zu_string.h"

ZU_BEGIN_DECLS

// Forward: the first occurrence that begins at `offset` or behind; 0 to the length, or it aborts
/// Finds the code point `ch`.
ZU_API ZU_INT zuStringFindChar( ZU_STRING *zus, ZU_INT offset, ZU_CHAR ch );
/// Finds `subLength` code points.
ZU_API ZU_INT zuStringFindChars( ZU_STRING *zus, ZU_INT offset, const ZU_CHAR *sub, ZU_INT subLength );
/// Finds `sub`.
ZU_API ZU_INT zuStringFind( ZU_STRING *zus, ZU_INT offset, ZU_STRING *sub );
/// Finds narrow text of `subLength` bytes, -1: terminated.
ZU_API ZU_INT zuStringFindCstr( ZU_STRING *zus, ZU_INT offset, const char *sub, ZU_INT subLength );
/// Finds UTF-16 text of `subLength` units, -1: terminated.
ZU_API ZU_INT zuStringFindWcstr( ZU_STRING *zus, ZU_INT offset, const char16_t *sub, ZU_INT subLength );

// From the right: the last occurrence that begins at `offset` or ahead; -1: from the end.  A search for a code point
// differs: it looks at those ahead of `offset`, and not at the one there.
/// Finds the last code point `ch` ahead of `offset`.
ZU_API ZU_INT zuStringFindCharFromRight( ZU_STRING *zus, ZU_INT offset, ZU_CHAR ch );
/// Finds `subLength` code points.
ZU_API ZU_INT zuStringFindCharsFromRight( ZU_STRING *zus, ZU_INT offset, const ZU_CHAR *sub, ZU_INT subLength );
/// Finds `sub`.
ZU_API ZU_INT zuStringFindFromRight( ZU_STRING *zus, ZU_INT offset, ZU_STRING *sub );
/// Finds narrow text of `subLength` bytes, -1: terminated.
ZU_API ZU_INT zuStringFindFromRightCstr( ZU_STRING *zus, ZU_INT offset, const char *sub, ZU_INT subLength );
/// Finds UTF-16 text of `subLength` units, -1: terminated.
ZU_API ZU_INT zuStringFindFromRightWcstr( ZU_STRING *zus, ZU_INT offset, const char16_t *sub, ZU_INT subLength );

ZU_END_DECLS
