// ZU_BUFFER_BYTE_SOURCE: a buffer to be read through byte sources, which share one position in it.
#pragma once

#include "zu/io/zu_byte_source.h"

ZU_BEGIN_DECLS

typedef struct ZU_BUFFER_BYTE_SOURCE ZU_BUFFER_BYTE_SOURCE;
// zuBufferByteSourceRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_BUFFER_BYTE_SOURCE, zuBufferByteSource )

/// Returns a new object that stands at the beginning of `src`.  Bits behind the last whole byte are not read.
ZU_API ZU_BUFFER_BYTE_SOURCE *zuBufferByteSourceCreate( ZU_BUFFER *src );
/// Returns a new source that reads from `bbs`; there may be several.
ZU_API ZU_BYTE_SOURCE *zuBufferByteSourceByteSource( ZU_BUFFER_BYTE_SOURCE *bbs );
/// Returns the whole buffer, wherever reading has come to.
ZU_API ZU_BUFFER *zuBufferByteSourceBuffer( ZU_BUFFER_BYTE_SOURCE *bbs );

ZU_END_DECLS
