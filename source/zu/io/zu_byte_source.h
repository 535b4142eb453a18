// ZU_BYTE_SOURCE: where bytes are read from, such as a file, a buffer in memory or the bytes ahead of a decoder.
//
// A source is a thin object around the functions of its backend and reads nothing ahead.  Counts are in bytes; a
// maximum of -1 means no limit, one below that aborts.  A read that brings less than was asked for is the end of the
// input; reading exactly the last bytes does not show the end yet.  A failure of the backend is the end too, and what
// it delivered until then is kept.  Neither state is ever left.  One thread at a time uses a source.
#pragma once

#include "zu/base/zu_buffer.h"

ZU_BEGIN_DECLS

typedef struct ZU_BYTE_SOURCE ZU_BYTE_SOURCE;
// zuByteSourceRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_BYTE_SOURCE, zuByteSource )

/// Tells whether the input is known to have ended.
ZU_API ZU_BOOL zuByteSourceEnd( ZU_BYTE_SOURCE *bs );
/// Tells whether a read has failed.
ZU_API ZU_BOOL zuByteSourceError( ZU_BYTE_SOURCE *bs );
/// Appends up to `maxByteCount` bytes to `*buffer` and returns their number; 0 once the input has ended.  The backend
/// is asked for 1024 bytes at a time.
ZU_API ZU_INT zuByteSourceRead( ZU_BYTE_SOURCE *bs, ZU_BUFFER **buffer, ZU_INT maxByteCount );
/// Reads up to `maxByteCount` bytes to `bytes`, which may be null for 0, and returns their number.  The backend is
/// asked once, for all of them; also at the end of the input, which may have grown since.
ZU_API ZU_INT zuByteSourceReadBytes( ZU_BYTE_SOURCE *bs, uint8_t *bytes, ZU_INT maxByteCount );
/// Skips up to `maxByteCount` bytes and returns their number; 0 once the input has ended.  The backend is asked once,
/// for all of them, if it can skip; otherwise it reads 1024 bytes at a time, which are discarded.
ZU_API ZU_INT zuByteSourceSkip( ZU_BYTE_SOURCE *bs, ZU_INT maxByteCount );

// For authors of classes and modules

/// Stores up to `maxByteCount` bytes at `bytes` and their number in `*bytesRead`, which is 0 before; returns false if
/// reading failed.  Fewer bytes than the maximum mean that there are no more.
typedef ZU_BOOL ( *ZU_BYTE_SOURCE_READ_FUNC )( ZU_OBJ *closure, uint8_t *bytes, ZU_INT maxByteCount,
                                               ZU_INT *bytesRead );
/// Passes over up to `maxByteCount` bytes and stores their number in `*bytesSkipped`, likewise.
typedef ZU_BOOL ( *ZU_BYTE_SOURCE_SKIP_FUNC )( ZU_OBJ *closure, ZU_INT maxByteCount, ZU_INT *bytesSkipped );
/// Returns a source that hands `closure`, which it keeps and which may be null, to each call of its two functions.
/// Without a `skipFunc`, which may be null, skipping reads and discards.
ZU_API ZU_BYTE_SOURCE *zu___ByteSourceCreate( ZU_BYTE_SOURCE_READ_FUNC readFunc, ZU_BYTE_SOURCE_SKIP_FUNC skipFunc,
                                              ZU_OBJ *closure );

ZU_END_DECLS
