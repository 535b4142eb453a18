// zu_string_split.h: dividing a string into parts.
//
// Each function returns a new vector of new strings, at least one: an empty string has one empty part.  `maxParts` is
// the most parts that there shall be, -1: as many as there are; the last of them is all that remains, separators
// included.  Another value below 1 aborts.
#pragma once

#include "zu/base/zu_string.h"
#include "zu/base/zu_vector.h"

ZU_BEGIN_DECLS

// At a separator, which is not empty.  Neighbouring separators have an empty part between them, and one at the end has
// an empty part behind it.
/// Divides at each occurrence of `sep`.
ZU_API ZU_VECTOR *zuStringSplit( ZU_STRING *zus, ZU_STRING *sep, ZU_INT maxParts );
/// Divides at each code point `sep`.
ZU_API ZU_VECTOR *zuStringSplitChar( ZU_STRING *zus, ZU_CHAR sep, ZU_INT maxParts );
/// Divides at each occurrence of `sepLength` code points.
ZU_API ZU_VECTOR *zuStringSplitChars( ZU_STRING *zus, const ZU_CHAR *sep, ZU_INT sepLength, ZU_INT maxParts );
/// Divides at each occurrence of narrow text of `sepLength` bytes, -1: terminated.
ZU_API ZU_VECTOR *zuStringSplitCstr( ZU_STRING *zus, const char *sep, ZU_INT sepLength, ZU_INT maxParts );
/// Divides at each occurrence of UTF-16 text of `sepLength` units, -1: terminated.
ZU_API ZU_VECTOR *zuStringSplitWcstr( ZU_STRING *zus, const char16_t *sep, ZU_INT sepLength, ZU_INT maxParts );

/// Divides at runs of white space, which at both ends count for nothing.
///
/// A last part that `maxParts` makes begins behind the one blank that ended the part ahead of it: "a   b c" in two
/// parts is "a" and "  b c".
ZU_API ZU_VECTOR *zuStringSplitWhitespace( ZU_STRING *zus, ZU_INT maxParts );

ZU_END_DECLS
