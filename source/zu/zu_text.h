// zu_text.h: strings, formats, numbers as text, and the character data behind them.
//
// Each include has ahead of it the sentence with which the header begins.
#pragma once

// zu_chars.h: code points, and arrays of them from and to external encodings.
#include "zu/sys/zu_chars.h"

// ZU_STRING: text, a sequence of Unicode code points.
#include "zu/base/zu_string.h"

// zu_string_case.h: upper and lower case, and comparison without regard to case.
#include "zu/base/zu_string_case.h"

// zu_string_compose.h: strings made of several: joined, repeated, with all occurrences of a text replaced.
#include "zu/base/zu_string_compose.h"

// zu_string_delimited.h: lists in a string, such as "a, b, c".
#include "zu/base/zu_string_delimited.h"

// zu_string_format.h: strings made by formats, and what a format may hold.
#include "zu/base/zu_string_format.h"

// zu_string_normalize.h: strings in normalization forms, and clean code points.
#include "zu/base/zu_string_normalize.h"

// zu_string_scan.h: reading values from within a string.
#include "zu/base/zu_string_scan.h"

// zu_string_search.h: finding code points and texts in a string.
#include "zu/base/zu_string_search.h"

// zu_string_split.h: dividing a string into parts.
#include "zu/base/zu_string_split.h"

// zu_string_trim.h: white space at the ends of a string, by the property White_Space.
#include "zu/base/zu_string_trim.h"

// zu_utf.h: well-formed UTF-8, UTF-16 and UTF-32, as the Unicode Standard 14.0 has them in section 3.9.
#include "zu/base/zu_utf.h"

// zu_int.h: the integer and truth types of the interface, and arithmetic that cannot overflow unseen.
#include "zu/sys/zu_int.h"

// zu_real.h: comparison and conversion of real numbers, which are IEEE 754 doubles.
#include "zu/sys/zu_real.h"

// zu_real_text.h: real numbers as text that keeps them, beside the conversions of the format language.
#include "zu/base/zu_real_text.h"

// zu_format.h: truth values, numbers and texts to formatted text, and text back to values.
#include "zu/base/zu_format.h"

// zu_format_arg_list.h: the engine behind every function with Format in its name.
#include "zu/base/zu_format_arg_list.h"

// zu_format_flags.h: how a number or a text stands in its field, a ZU_INT of bits.
#include "zu/base/zu_format_flags.h"

// zu_name.h: names in the library's two styles, upper case (ZU_FORMAT_FLAG_ZEROPAD) and camel case (zuStringCreate).
#include "zu/base/zu_name.h"

// zu_unicode_properties.h: what the Unicode Character Database, version 14.0, says of a code point.
#include "zu/unicode/zu_unicode_properties.h"

// zu_unicode_db.h: the Unicode Character Database, version 14.0.
#include "zu/unicode/zu_unicode_db.h"

// zu_unicode_cccv.h: the canonical combining classes of the Unicode Character Database.
#include "zu/unicode/zu_unicode_cccv.h"

// zu_unicode_cdmt.h: the tags of the decomposition mappings of the Unicode Character Database.
#include "zu/unicode/zu_unicode_cdmt.h"

// zu_unicode_genc.h: the general categories of the Unicode Character Database.
#include "zu/unicode/zu_unicode_genc.h"

// zu_unicode_madb.h: properties of characters that take no table.
#include "zu/unicode/zu_unicode_madb.h"

// zu_unicode_script.h: the scripts of the Unicode Character Database.
#include "zu/unicode/zu_unicode_script.h"

// zu_unicode_normal_form.h: the normalization forms of the Unicode Standard (UAX #15).
#include "zu/unicode/zu_unicode_normal_form.h"

// ZU_UNICODE_NORMALIZER: brings a stream of characters into a normalization form.
#include "zu/unicode/zu_unicode_normalizer.h"
