// zu_store_text.h: stores as lines of text, for files and people.
//
//     address=value        a value
//     address.             a sub-store in which nothing is
//     address.address=...  a value in a sub-store, and so on
//
// In a value "%%" stands for a percent sign and "%", with six hexadecimal digits behind it, for the character with that
// number.  Control characters are always written so, and everything else as itself; a value never ends its line.
// Written are, for each store, its values first and then its sub-stores, both in ascending order of the addresses.
//
// Reading is forgiving.  An address ends at the first "=" or "." of the line, and white space around it does not count;
// a line that has neither of these, or no address ahead of it, is passed over, as comments are that begin with a sign
// that no address has.  Everything behind the "=" is the value, blanks as well, and a percent sign that stands for
// nothing stands for itself.  Lines come in any order; of several values at one address the last counts.  Sub-stores
// below 100 levels are left out.
#pragma once

#include "zu/base/zu_store.h"
#include "zu/charset/zu_charset.h"
#include "zu/io/zu_line_sink.h"
#include "zu/io/zu_line_source.h"
#include "zu/io/zu_nlf_flags.h"

ZU_BEGIN_DECLS

// Writing; any depth
/// Returns the lines, as strings.
ZU_API ZU_VECTOR *zuStoreTextEncodeToStringVector( ZU_STORE *store );
/// Writes the lines to `ls` and flushes it; returns whether it has taken everything.
ZU_API ZU_BOOL zuStoreTextTryEncodeToLineSink( ZU_STORE *store, ZU_LINE_SINK *ls );
/// Returns the lines in a character set, with the newline function that zuNlfFlagsNlfString tells of behind each; null
/// if that fails, which depends on `charsetFlags`.
ZU_API ZU_BUFFER *zuStoreTextTryEncodeToBuffer( ZU_STORE *store, ZU_CHARSET charset, ZU_CHARSET_FLAGS charsetFlags,
                                                ZU_NLF_FLAGS nlfFlags );

// Reading
/// Returns the store that the lines in `vec` are, whatever they are; an item that is no string aborts.
ZU_API ZU_STORE *zuStoreTextDecodeFromStringVector( ZU_VECTOR *vec );
/// Returns the store that all lines of `ls` are; null if the source fails.
ZU_API ZU_STORE *zuStoreTextTryDecodeFromLineSource( ZU_LINE_SOURCE *ls );
/// Returns the store that the text in `buf` is, which is in a character set and split at the newline functions of
/// `nlfFlags`; null if that fails, which depends on `charsetFlags`.
ZU_API ZU_STORE *zuStoreTextTryDecodeFromBuffer( ZU_BUFFER *buf, ZU_CHARSET charset, ZU_CHARSET_FLAGS charsetFlags,
                                                 ZU_NLF_FLAGS nlfFlags );

ZU_END_DECLS
