// ZU_STRING_CHAR_SOURCE: a string to be read through character sources, which share one position in it.
#pragma once

#include "zu/io/zu_char_source.h"

ZU_BEGIN_DECLS

typedef struct ZU_STRING_CHAR_SOURCE ZU_STRING_CHAR_SOURCE;
// zuStringCharSourceRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_STRING_CHAR_SOURCE, zuStringCharSource )

/// Returns a new object that stands at the beginning of `src`.
ZU_API ZU_STRING_CHAR_SOURCE *zuStringCharSourceCreate( ZU_STRING *src );
/// Returns a new source that reads from `scs`; there may be several.
ZU_API ZU_CHAR_SOURCE *zuStringCharSourceCharSource( ZU_STRING_CHAR_SOURCE *scs );
/// Returns the whole string, wherever reading has come to.
ZU_API ZU_STRING *zuStringCharSourceString( ZU_STRING_CHAR_SOURCE *scs );

ZU_END_DECLS
