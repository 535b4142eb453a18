// ZU_CHAR_SOURCE: where text is read from, code point by code point, such as a decoder or a string in memory.
//
// A source is a thin object around the function of its backend and reads nothing ahead.  Counts are in code points; a
// maximum of -1 means no limit, one below that aborts.  A read that brings less than was asked for is the end of the
// input; reading exactly the last code points does not show the end yet.  A failure of the backend is the end too, and
// what it delivered until then is kept.  Neither state is ever left.  One thread at a time uses a source.
#pragma once

#include "zu/base/zu_string.h"

ZU_BEGIN_DECLS

typedef struct ZU_CHAR_SOURCE ZU_CHAR_SOURCE;
// zuCharSourceRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_CHAR_SOURCE, zuCharSource )

/// Tells whether the input is known to have ended.
ZU_API ZU_BOOL zuCharSourceEnd( ZU_CHAR_SOURCE *cs );
/// Tells whether a read has failed.
ZU_API ZU_BOOL zuCharSourceError( ZU_CHAR_SOURCE *cs );
/// Appends up to `maxCharCount` code points to `*zus` and returns their number; 0 once the input has ended.  The
/// backend is asked for 1024 code points at a time.  Reading one at a time may never end; see zuCharSourceReadChars.
ZU_API ZU_INT zuCharSourceRead( ZU_CHAR_SOURCE *cs, ZU_STRING **zus, ZU_INT maxCharCount );
/// Reads up to `maxCharCount` code points to `chars`, which may be null for 0, and returns their number.  The backend
/// is asked once, for all of them; also for none, and also at the end of the input, which may have grown since.
///
/// A decoder whose input is cut off within a character delivers one U+FFFD for that at each call, for the rest stays.
/// Whoever reads one code point at a time has thus read as many as were asked for, and never comes to the end: ask for
/// more, for two at least, and the call that brings fewer is the last.
ZU_API ZU_INT zuCharSourceReadChars( ZU_CHAR_SOURCE *cs, ZU_CHAR *chars, ZU_INT maxCharCount );

// For authors of classes and modules

/// Stores up to `maxCharCount` code points at `chars` and their number in `*charsRead`, which is 0 before; returns
/// false if reading failed.  Fewer code points than the maximum mean that there are no more.
typedef ZU_BOOL ( *ZU_CHAR_SOURCE_READ_FUNC )( ZU_OBJ *closure, ZU_CHAR *chars, ZU_INT maxCharCount,
                                               ZU_INT *charsRead );
/// Returns a source that hands `closure`, which it keeps and which may be null, to each call of its function.
ZU_API ZU_CHAR_SOURCE *zu___CharSourceCreate( ZU_CHAR_SOURCE_READ_FUNC readFunc, ZU_OBJ *closure );

ZU_END_DECLS
