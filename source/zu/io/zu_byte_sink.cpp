// A sink adds three things to the functions of its backend: it remembers a failure, it calls them for nothing empty,
// and it flushes at its end.  It keeps no bytes, so that whoever needs a cache has it once, where its size can be
// chosen.

#include "zu/io/zu_byte_sink.h"

#include "zu/io/zu_stream_internal.h"
#include "zu/runtime/zu_module.h"

struct ZU_BYTE_SINK {
    ZU_OBJ obj;
    ZU_BYTE_SINK_WRITE_FUNC writeFunc; // never null
    ZU_BYTE_SINK_FLUSH_FUNC flushFunc; // never null
    ZU_OBJ *closure;                   // the backend; may be null
    ZU_BOOL error;                     // never cleared
};

static void byteSinkFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_BYTE_SINK =
    ZU___SORT_INITIALIZER( "ZU_BYTE_SINK", &zu___module, byteSinkFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_BYTE_SINK, zuByteSink )

// Creation
ZU_BYTE_SINK *zu___ByteSinkCreate( ZU_BYTE_SINK_WRITE_FUNC writeFunc, ZU_BYTE_SINK_FLUSH_FUNC flushFunc,
                                   ZU_OBJ *closure )
{
    ZU_ASSERT( writeFunc );
    ZU_ASSERT( flushFunc );
    return zu___SinkCreate<ZU_BYTE_SINK>( &zu___sort_ZU_BYTE_SINK, writeFunc, flushFunc, closure );
}
static void byteSinkFree( ZU_OBJ *thisObj )
{
    ZU_BYTE_SINK *bs = zuByteSinkFrom( thisObj );
    ZU_ASSERT( bs );
    zu___SinkFinish( bs );
}

// State
ZU_BOOL zuByteSinkError( ZU_BYTE_SINK *bs )
{
    ZU_ASSERT( bs );
    return bs->error;
}
ZU_BOOL zuByteSinkFlush( ZU_BYTE_SINK *bs )
{
    ZU_ASSERT( bs );
    return zu___SinkFlush( bs );
}

// Writing; zuByteSinkWriteInner serves all but Outer and Bytes.

// The memory of a buffer that may be null.
static const uint8_t *byteSinkMemory( ZU_BUFFER *buf )
{
    return buf ? zuBufferBacking( buf ) : nullptr;
}

ZU_BOOL zuByteSinkWrite( ZU_BYTE_SINK *bs, ZU_BUFFER *buf )
{
    ZU_ASSERT( bs );
    ZU_ASSERT( buf );
    return zuByteSinkWriteInner( bs, buf, 0, zuBufferLength( buf ) );
}
ZU_BOOL zuByteSinkWriteInner( ZU_BYTE_SINK *bs, ZU_BUFFER *buf, ZU_INT byteOffset, ZU_INT byteCount )
{
    ZU_ASSERT( bs );
    ZU_ASSERT( byteOffset >= 0 );
    ZU_ASSERT( byteOffset == 0 || buf );
    ZU_ASSERT( byteCount >= 0 );
    ZU_ASSERT( byteCount == 0 || buf );
    ZU_ASSERT( ZU_INT_ADD_OK( byteOffset, byteCount ) );
    ZU_ASSERT( byteOffset + byteCount == 0 || byteOffset + byteCount <= zuBufferLength( buf ) );
    return zu___SinkWriteUnits( bs, byteSinkMemory( buf ) + byteOffset, byteCount );
}
ZU_BOOL zuByteSinkWriteOuter( ZU_BYTE_SINK *bs, ZU_BUFFER *buf, ZU_INT byteOffset, ZU_INT byteCount )
{
    ZU_ASSERT( bs );
    ZU_ASSERT( byteOffset >= 0 );
    ZU_ASSERT( byteOffset == 0 || buf );
    ZU_ASSERT( byteCount >= 0 );
    ZU_ASSERT( byteCount == 0 || buf );
    ZU_ASSERT( ZU_INT_ADD_OK( byteOffset, byteCount ) );
    ZU_ASSERT( byteOffset + byteCount == 0 || byteOffset + byteCount <= zuBufferLength( buf ) );
    return zu___SinkWriteOuterUnits( bs, byteSinkMemory( buf ), buf ? zuBufferLength( buf ) : 0, byteOffset,
                                     byteCount );
}
ZU_BOOL zuByteSinkWriteLeading( ZU_BYTE_SINK *bs, ZU_BUFFER *buf, ZU_INT byteCount )
{
    return zuByteSinkWriteInner( bs, buf, 0, byteCount );
}
ZU_BOOL zuByteSinkWriteTrailing( ZU_BYTE_SINK *bs, ZU_BUFFER *buf, ZU_INT byteCount )
{
    ZU_ASSERT( bs );
    ZU_ASSERT( byteCount >= 0 );
    ZU_ASSERT( byteCount == 0 || buf );
    if ( byteCount == 0 ) {
        return zuByteSinkWriteInner( bs, buf, 0, 0 );
    }
    ZU_ASSERT( ZU_INT_SUB_OK( zuBufferLength( buf ), byteCount ) );
    return zuByteSinkWriteInner( bs, buf, zuBufferLength( buf ) - byteCount, byteCount );
}
ZU_BOOL zuByteSinkWriteBytes( ZU_BYTE_SINK *bs, const uint8_t *bytes, ZU_INT byteCount )
{
    ZU_ASSERT( bs );
    ZU_ASSERT( byteCount >= 0 );
    ZU_ASSERT( byteCount == 0 || bytes );
    if ( bs->error ) {
        return ZU_FALSE;
    }
    return byteCount == 0 || bs->writeFunc( bs->closure, bytes, byteCount );
}
