// zu_unicode_madb.h: properties of characters that take no table.
//
// All functions are pure, and work at any time, on any thread.  A value that fails ZU_CHAR_OK aborts.
#pragma once

#include "zu/sys/zu_chars.h"

ZU_BEGIN_DECLS

// For authors of classes and modules
/// Returns the value of an ASCII or fullwidth hexadecimal digit in either case, 0 to 15, and -1 for other characters.
ZU_API ZU_INT zu___UnicodeHexDigitDbLookup( ZU_CHAR ch );
/// Tells whether `ch` is a newline function: U+000A to U+000D, U+0085, U+2028, U+2029.
ZU_API ZU_BOOL zu___UnicodeNlfDbLookup( ZU_CHAR ch );
/// Tells whether `ch` has the property White_Space.
ZU_API ZU_BOOL zu___UnicodeWhiteSpaceDbLookup( ZU_CHAR ch );

ZU_END_DECLS
