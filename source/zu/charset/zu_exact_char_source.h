// ZU_EXACT_CHAR_SOURCE: reads a character set by the letter of its standard.
//
// The sources of zu_charset.h are lenient by contract: they let overlong forms and surrogates of UTF-8 pass and take
// the byte behind a broken sequence with it, leave the pairs of UTF-16 in two, read ISO 8859-8 by the tables of 8859-7,
// and deliver U+FFFD for a cut-off end as often as they are asked.  These do none of that, and are the ones to take for
// whatever comes from outside; docs/streams.md has both side by side.
//
// What is ill-formed (The Unicode Standard 14.0, section 3.9) or what a single-byte set does not define is a fault.  It
// makes the source fail under ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER, is skipped under
// ZU_CHARSET_FLAG_IGNORE_INVALID_CHARACTERS, and otherwise each maximal subpart of an ill-formed sequence becomes one
// U+FFFD, as the standard recommends.  What the end of the data cuts off is one fault.  However the data come in
// pieces, and however many characters are asked for at a time, the text is the same; its end, or the failure, is final.
//
// A byte order mark at the very front is heeded and dropped where the set is UTF-8, UTF-16 or UTF-32 without BE or LE,
// unless ZU_CHARSET_FLAG_IGNORE_BYTE_ORDER_MARK is set; without a mark the latter two are little-endian.
#pragma once

#include "zu/charset/zu_charset.h"

ZU_BEGIN_DECLS

typedef struct ZU_EXACT_CHAR_SOURCE ZU_EXACT_CHAR_SOURCE;
// zuExactCharSourceRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_EXACT_CHAR_SOURCE, zuExactCharSource )

/// Returns a new object that decodes from `byteSource`, which it keeps, 4096 bytes ahead.  A set that is out of range
/// aborts.
ZU_API ZU_EXACT_CHAR_SOURCE *zuExactCharSourceCreate( ZU_BYTE_SOURCE *byteSource, ZU_CHARSET charset,
                                                      ZU_CHARSET_FLAGS flags );
/// Returns a new source that reads from `ecs`; there may be several, and they share what has been read ahead.
ZU_API ZU_CHAR_SOURCE *zuExactCharSourceCharSource( ZU_EXACT_CHAR_SOURCE *ecs );
/// Returns the offset in bytes of the first fault that was met, a byte order mark counted; -1 if there was none.  A
/// source that has failed without a fault has failed with its byte source.
ZU_API ZU_INT zuExactCharSourceFault( ZU_EXACT_CHAR_SOURCE *ecs );

/// Returns the text in the whole bytes of `buffer`, and stores in `fault`, which may be null, the offset of the first
/// fault, or -1.  Null only if there is a fault and the flags say that it shall fail.
ZU_API ZU_STRING *zuExactCharSourceBufferToString( ZU_BUFFER *buffer, ZU_CHARSET charset, ZU_CHARSET_FLAGS flags,
                                                   ZU_INT *fault );

ZU_END_DECLS
