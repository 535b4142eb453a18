// zu_unicode_db.h: the Unicode Character Database, version 14.0.
//
// zu_unicode_properties.h has the functions for everyday use.  All functions are pure, take constant time, and work at
// any time, on any thread.  Surrogates and noncharacters are code points like others; a value that fails ZU_CHAR_OK
// aborts.
#pragma once

#include "zu/sys/zu_chars.h"
#include "zu/unicode/zu_unicode_cccv.h"
#include "zu/unicode/zu_unicode_cdmt.h"
#include "zu/unicode/zu_unicode_genc.h"
#include "zu/unicode/zu_unicode_script.h"

ZU_BEGIN_DECLS

// For authors of classes and modules

// Properties
/// Returns the general category, ZU_UNICODE_GENC_OTHER_NOT_ASSIGNED for an unassigned code point.
ZU_API ZU_UNICODE_GENC zu___UnicodeGencDbLookup( ZU_CHAR ch );
/// Returns the canonical combining class, 0 by default.
ZU_API ZU_UNICODE_CCCV zu___UnicodeCccvDbLookup( ZU_CHAR ch );
/// Returns the script, ZU_UNICODE_SCRIPT_UNKNOWN by default.
ZU_API ZU_UNICODE_SCRIPT zu___UnicodeScriptDbLookup( ZU_CHAR ch );
/// Returns the value of a decimal digit of any script, 0 to 9, and -1 for other characters.
ZU_API ZU_INT zu___UnicodeDecimalDbLookup( ZU_CHAR ch );

// Decomposition and composition, but for Hangul syllables, which are computed (Unicode Standard, section 3.12)
/// Returns the decomposition mapping and sets `length` to its length and `tag` to its kind; both may be null.
///
/// It is one step: its characters may have mappings of their own.  Null, with 0 and ZU_UNICODE_CDMT_NONE, if there is
/// none.  The array is constant data.
ZU_API const ZU_CHAR *zu___UnicodeCdmDbLookup( ZU_CHAR ch, ZU_INT *length, ZU_UNICODE_CDMT *tag );
/// Tells whether the two compose, and sets `composeTo`, which may be null, to the primary composite, otherwise to 0.
ZU_API ZU_BOOL zu___UnicodeCompDbLookup( ZU_CHAR ch1, ZU_CHAR ch2, ZU_CHAR *composeTo );

// Case
//
// Each returns the full mapping, 1 to 3 characters, that holds in every language and context, and sets `length`, which
// may be null, to its length; null and 0 for a character that maps to itself.  The array is constant data.
/// Looks the lower-case mapping up.
ZU_API const ZU_CHAR *zu___UnicodeLowerCaseDbLookup( ZU_CHAR ch, ZU_INT *length );
/// Looks the upper-case mapping up.
ZU_API const ZU_CHAR *zu___UnicodeUpperCaseDbLookup( ZU_CHAR ch, ZU_INT *length );
/// Looks the case folding up, for comparison without regard to case.
ZU_API const ZU_CHAR *zu___UnicodeCaseFoldDbLookup( ZU_CHAR ch, ZU_INT *length );

ZU_END_DECLS
