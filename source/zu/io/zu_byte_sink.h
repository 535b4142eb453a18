// ZU_BYTE_SINK: where bytes are written to, such as a file, a buffer in memory or the encoder of a character set.
//
// A sink is a thin object around the functions of its backend and holds nothing back itself.  Offsets and counts are in
// bytes.  Once the backend has failed under any function but zuByteSinkWriteBytes, the sink has failed for good: it
// refuses everything and calls the backend no more.  The last release of a sink that has not failed flushes it.  One
// thread at a time uses a sink.
#pragma once

#include "zu/base/zu_buffer.h"

ZU_BEGIN_DECLS

typedef struct ZU_BYTE_SINK ZU_BYTE_SINK;
// zuByteSinkRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_BYTE_SINK, zuByteSink )

/// Tells whether the sink has failed.
ZU_API ZU_BOOL zuByteSinkError( ZU_BYTE_SINK *bs );
/// Lets the backend pass on whatever it holds back, and returns whether that succeeded.
ZU_API ZU_BOOL zuByteSinkFlush( ZU_BYTE_SINK *bs );

// Writing
//
//     Write          all of `buf`
//     WriteInner     the `byteCount` bytes of `buf` from `byteOffset` on
//     WriteOuter     `buf` without the `byteCount` bytes from `byteOffset` on
//     WriteLeading   the first `byteCount` bytes of `buf`
//     WriteTrailing  the last `byteCount` bytes of `buf`
//     WriteBytes     a range of memory
//
// return whether the sink took everything; false is returned at once if it has failed before.  The backend gets the
// memory of `buf` itself, in one call, or in two for Outer, and none for nothing.  Bits of `buf` behind its last whole
// byte are not written.  A range outside `buf` aborts; `buf` may be null where offset and count are 0.
/// Writes all whole bytes of `buf`.
ZU_API ZU_BOOL zuByteSinkWrite( ZU_BYTE_SINK *bs, ZU_BUFFER *buf );
/// Writes the `byteCount` bytes of `buf` from `byteOffset` on.
ZU_API ZU_BOOL zuByteSinkWriteInner( ZU_BYTE_SINK *bs, ZU_BUFFER *buf, ZU_INT byteOffset, ZU_INT byteCount );
/// Writes `buf` without the `byteCount` bytes from `byteOffset` on.
ZU_API ZU_BOOL zuByteSinkWriteOuter( ZU_BYTE_SINK *bs, ZU_BUFFER *buf, ZU_INT byteOffset, ZU_INT byteCount );
/// Writes the first `byteCount` bytes of `buf`.
ZU_API ZU_BOOL zuByteSinkWriteLeading( ZU_BYTE_SINK *bs, ZU_BUFFER *buf, ZU_INT byteCount );
/// Writes the last `byteCount` bytes of `buf`.
ZU_API ZU_BOOL zuByteSinkWriteTrailing( ZU_BYTE_SINK *bs, ZU_BUFFER *buf, ZU_INT byteCount );
/// Writes `byteCount` bytes, null only if there are none.  Alone among its relatives it leaves the sink as it is when
/// the backend fails: the result tells, zuByteSinkError does not.
ZU_API ZU_BOOL zuByteSinkWriteBytes( ZU_BYTE_SINK *bs, const uint8_t *bytes, ZU_INT byteCount );

// For authors of classes and modules

/// Takes `byteCount` bytes, never 0, and returns whether it could.
typedef ZU_BOOL ( *ZU_BYTE_SINK_WRITE_FUNC )( ZU_OBJ *closure, const uint8_t *bytes, ZU_INT byteCount );
/// Passes on what it holds back, and returns whether it could.
typedef ZU_BOOL ( *ZU_BYTE_SINK_FLUSH_FUNC )( ZU_OBJ *closure );
/// Returns a sink that hands `closure`, which it keeps and which may be null, to each call of its two functions.
ZU_API ZU_BYTE_SINK *zu___ByteSinkCreate( ZU_BYTE_SINK_WRITE_FUNC writeFunc, ZU_BYTE_SINK_FLUSH_FUNC flushFunc,
                                          ZU_OBJ *closure );

ZU_END_DECLS
