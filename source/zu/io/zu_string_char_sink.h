// ZU_STRING_CHAR_SINK: collects what is written to its character sinks in a string.
#pragma once

#include "zu/io/zu_char_sink.h"

ZU_BEGIN_DECLS

typedef struct ZU_STRING_CHAR_SINK ZU_STRING_CHAR_SINK;
// zuStringCharSinkRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_STRING_CHAR_SINK, zuStringCharSink )

/// Returns a new object that has collected nothing yet.
ZU_API ZU_STRING_CHAR_SINK *zuStringCharSinkCreate( void );
/// Returns a new sink that writes to `scs`; there may be several.  Writing a value above 0x10FFFF to it aborts.
ZU_API ZU_CHAR_SINK *zuStringCharSinkCharSink( ZU_STRING_CHAR_SINK *scs );
/// Hands over what has been collected since the last call, and begins again with nothing.
ZU_API ZU_STRING *zuStringCharSinkString( ZU_STRING_CHAR_SINK *scs );

ZU_END_DECLS
