// A source adds three things to the functions of its backend: it remembers the end and a failure, and checks the count
// that it is told.  It keeps no bytes; what is read into a buffer goes through a piece of the stack.

#include "zu/io/zu_byte_source.h"

#include "zu/io/zu_stream_internal.h"
#include "zu/runtime/zu_module.h"

static constexpr ZU_INT CHUNK_BYTES = 1024; // what a backend is asked for at a time; small enough for any stack

struct ZU_BYTE_SOURCE {
    ZU_OBJ obj;
    ZU_BYTE_SOURCE_READ_FUNC readFunc; // never null
    ZU_BYTE_SOURCE_SKIP_FUNC skipFunc; // may be null
    ZU_OBJ *closure;                   // the backend; may be null
    ZU_BOOL end;                       // never cleared
    ZU_BOOL error;                     // never cleared; implies end
};

static void byteSourceFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_BYTE_SOURCE =
    ZU___SORT_INITIALIZER( "ZU_BYTE_SOURCE", &zu___module, byteSourceFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_BYTE_SOURCE, zuByteSource )

// Creation
ZU_BYTE_SOURCE *zu___ByteSourceCreate( ZU_BYTE_SOURCE_READ_FUNC readFunc, ZU_BYTE_SOURCE_SKIP_FUNC skipFunc,
                                       ZU_OBJ *closure )
{
    ZU_ASSERT( readFunc );
    ZU_BYTE_SOURCE *bs = zu___SourceCreate<ZU_BYTE_SOURCE>( &zu___sort_ZU_BYTE_SOURCE, readFunc, closure );
    bs->skipFunc = skipFunc;
    return bs;
}
static void byteSourceFree( ZU_OBJ *thisObj )
{
    ZU_BYTE_SOURCE *bs = zuByteSourceFrom( thisObj );
    ZU_ASSERT( bs );
    zu___SourceFinish( bs );
}

// State
ZU_BOOL zuByteSourceEnd( ZU_BYTE_SOURCE *bs )
{
    ZU_ASSERT( bs );
    return bs->end;
}
ZU_BOOL zuByteSourceError( ZU_BYTE_SOURCE *bs )
{
    ZU_ASSERT( bs );
    return bs->error;
}

// Reading

// Reads the next chunk of what is left of `remaining` bytes, and returns its length.
static ZU_INT byteSourceReadChunk( ZU_BYTE_SOURCE *bs, uint8_t *chunk, ZU_INT remaining )
{
    ZU_INT bytesToRead = zuIntMin( remaining, CHUNK_BYTES );
    ZU_INT bytesRead = 0;
    ZU_BOOL ok = bs->readFunc( bs->closure, chunk, bytesToRead, &bytesRead );
    ZU_ASSERT( bytesRead >= 0 );
    ZU_ASSERT( bytesRead <= bytesToRead );
    zu___SourceNote( bs, ok, bytesRead == bytesToRead );
    return bytesRead;
}

ZU_INT zuByteSourceRead( ZU_BYTE_SOURCE *bs, ZU_BUFFER **buffer, ZU_INT maxByteCount )
{
    ZU_ASSERT( bs );
    ZU_ASSERT( buffer );
    ZU_ASSERT( *buffer );
    ZU_ASSERT( maxByteCount >= -1 );
    ZU_INT remaining = maxByteCount == -1 ? ZU_INT_MAX : maxByteCount;
    ZU_INT total = 0;
    while ( remaining > 0 && !bs->end ) {
        uint8_t chunk[ CHUNK_BYTES ];
        ZU_INT bytesRead = byteSourceReadChunk( bs, chunk, remaining );
        zuBufferAppendBytes( buffer, chunk, bytesRead );
        total += bytesRead;
        remaining -= bytesRead;
    }
    return total;
}
ZU_INT zuByteSourceReadBytes( ZU_BYTE_SOURCE *bs, uint8_t *bytes, ZU_INT maxByteCount )
{
    ZU_ASSERT( bs );
    ZU_ASSERT( maxByteCount >= -1 );
    ZU_ASSERT( maxByteCount == 0 || bytes );
    if ( maxByteCount == 0 ) {
        return 0;
    }
    if ( maxByteCount == -1 ) {
        maxByteCount = ZU_INT_MAX;
    }
    ZU_INT bytesRead = 0;
    ZU_BOOL ok = bs->readFunc( bs->closure, bytes, maxByteCount, &bytesRead );
    ZU_ASSERT( bytesRead >= 0 );
    ZU_ASSERT( bytesRead <= maxByteCount );
    zu___SourceNote( bs, ok, bytesRead == maxByteCount );
    return bytesRead;
}
ZU_INT zuByteSourceSkip( ZU_BYTE_SOURCE *bs, ZU_INT maxByteCount )
{
    ZU_ASSERT( bs );
    ZU_ASSERT( maxByteCount >= -1 );
    ZU_INT remaining = maxByteCount == -1 ? ZU_INT_MAX : maxByteCount;
    ZU_INT bytesSkipped = 0;
    if ( bs->skipFunc && remaining > 0 && !bs->end ) {
        ZU_BOOL ok = bs->skipFunc( bs->closure, remaining, &bytesSkipped );
        ZU_ASSERT( bytesSkipped >= 0 );
        ZU_ASSERT( bytesSkipped <= remaining );
        zu___SourceNote( bs, ok, bytesSkipped == remaining );
        return bytesSkipped;
    }
    while ( remaining > bytesSkipped && !bs->end ) {
        uint8_t discarded[ CHUNK_BYTES ];
        bytesSkipped += byteSourceReadChunk( bs, discarded, remaining - bytesSkipped );
    }
    return bytesSkipped;
}
