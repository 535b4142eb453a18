// ZU_BUFFER_BYTE_SINK: collects what is written to its byte sinks in a buffer.
#pragma once

#include "zu/io/zu_byte_sink.h"

ZU_BEGIN_DECLS

typedef struct ZU_BUFFER_BYTE_SINK ZU_BUFFER_BYTE_SINK;
// zuBufferByteSinkRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_BUFFER_BYTE_SINK, zuBufferByteSink )

/// Returns a new object that has collected nothing yet.
ZU_API ZU_BUFFER_BYTE_SINK *zuBufferByteSinkCreate( void );
/// Returns a new sink that writes to `bbs`; there may be several.
ZU_API ZU_BYTE_SINK *zuBufferByteSinkByteSink( ZU_BUFFER_BYTE_SINK *bbs );
/// Hands over what has been collected since the last call, and begins again with nothing.
ZU_API ZU_BUFFER *zuBufferByteSinkBuffer( ZU_BUFFER_BYTE_SINK *bbs );

ZU_END_DECLS
