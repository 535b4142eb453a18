// ZU_LINE_SOURCE: where text is read from line by line.
//
// A line is a string without its end; what ends it, the backend decides, and zu_nlf_line_source.h has the usual one.
// The end of the input shows when there is no further line.  A failure of the backend is the end too; a line that came
// with it is delivered.  Neither state is ever left.  One thread at a time uses a source.
#pragma once

#include "zu/base/zu_string.h"
#include "zu/base/zu_vector.h"

ZU_BEGIN_DECLS

typedef struct ZU_LINE_SOURCE ZU_LINE_SOURCE;
// zuLineSourceRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_LINE_SOURCE, zuLineSource )

/// Tells whether the input is known to have ended.
ZU_API ZU_BOOL zuLineSourceEnd( ZU_LINE_SOURCE *ls );
/// Tells whether a read has failed.
ZU_API ZU_BOOL zuLineSourceError( ZU_LINE_SOURCE *ls );
/// Returns how many lines have been read; counting stops at ZU_INT_MAX.
ZU_API ZU_INT zuLineSourceLinesRead( ZU_LINE_SOURCE *ls );
/// Returns the next line, which may be empty; null if there is none.
ZU_API ZU_STRING *zuLineSourceRead( ZU_LINE_SOURCE *ls );
/// Returns a vector of the next lines, at most `maxLineCount`; -1 means no limit, a value below that aborts.
ZU_API ZU_VECTOR *zuLineSourceReadLines( ZU_LINE_SOURCE *ls, ZU_INT maxLineCount );

// For authors of classes and modules

/// Stores a new string in `*zus`, which is null before, or leaves it so if there is no further line; returns false if
/// reading failed.
typedef ZU_BOOL ( *ZU_LINE_SOURCE_READ_FUNC )( ZU_OBJ *closure, ZU_STRING **zus );
/// Returns a source that hands `closure`, which it keeps and which may be null, to each call of its function.
ZU_API ZU_LINE_SOURCE *zu___LineSourceCreate( ZU_LINE_SOURCE_READ_FUNC readFunc, ZU_OBJ *closure );

ZU_END_DECLS
