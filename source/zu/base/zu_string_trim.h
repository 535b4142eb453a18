// zu_string_trim.h: white space at the ends of a string, by the property White_Space.
//
// A string without any is left alone, and stays shared; one of nothing else becomes the shared empty string.
#pragma once

#include "zu/base/zu_string.h"

ZU_BEGIN_DECLS

/// Removes the white space at both ends.
ZU_API void zuStringTrim( ZU_STRING **zus );
/// Removes the white space at the front.
ZU_API void zuStringTrimLeading( ZU_STRING **zus );
/// Removes the white space at the end.
ZU_API void zuStringTrimTrailing( ZU_STRING **zus );
/// Tells whether there is nothing but white space; the empty string is blank.
ZU_API ZU_BOOL zuStringIsBlank( ZU_STRING *zus );

ZU_END_DECLS
