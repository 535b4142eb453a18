#include "zu/io/zu_buffer_byte_sink.h"

#include "zu/runtime/zu_module.h"

struct ZU_BUFFER_BYTE_SINK {
    ZU_OBJ obj;
    ZU_BUFFER *buffer; // what has been written since it was handed over last; never null
};

static void bufferByteSinkFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_BUFFER_BYTE_SINK =
    ZU___SORT_INITIALIZER( "ZU_BUFFER_BYTE_SINK", &zu___module, bufferByteSinkFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_BUFFER_BYTE_SINK, zuBufferByteSink )

ZU_BUFFER_BYTE_SINK *zuBufferByteSinkCreate( void )
{
    ZU_BUFFER_BYTE_SINK *bbs =
        (ZU_BUFFER_BYTE_SINK *)zu___ObjCreate( sizeof( ZU_BUFFER_BYTE_SINK ), &zu___sort_ZU_BUFFER_BYTE_SINK );
    bbs->buffer = zuBufferCreate();
    return bbs;
}
static void bufferByteSinkFree( ZU_OBJ *thisObj )
{
    ZU_BUFFER_BYTE_SINK *bbs = zuBufferByteSinkFrom( thisObj );
    ZU_ASSERT( bbs );
    ZU_REF_RELEASE( bbs->buffer );
    ZU_REF_POISON( bbs->buffer );
}

// The functions of the sinks.  Writing more than a buffer can ever hold aborts in the append; the result tells the
// rest.
static ZU_BOOL bufferByteSinkWrite( ZU_OBJ *closure, const uint8_t *bytes, ZU_INT byteCount )
{
    ZU_BUFFER_BYTE_SINK *bbs = zuBufferByteSinkFrom( closure );
    ZU_ASSERT( bbs );
    ZU_INT fitting = zuIntMin( zuBufferSpace( bbs->buffer ), byteCount );
    zuBufferAppendBytes( &bbs->buffer, bytes, byteCount );
    return fitting == byteCount;
}
static ZU_BOOL bufferByteSinkFlush( ZU_OBJ *closure )
{
    (void)closure;
    return ZU_TRUE;
}

ZU_BYTE_SINK *zuBufferByteSinkByteSink( ZU_BUFFER_BYTE_SINK *bbs )
{
    ZU_ASSERT( bbs );
    return zu___ByteSinkCreate( bufferByteSinkWrite, bufferByteSinkFlush, zuBufferByteSinkObj( bbs ) );
}
ZU_BUFFER *zuBufferByteSinkBuffer( ZU_BUFFER_BYTE_SINK *bbs )
{
    ZU_ASSERT( bbs );
    ZU_BUFFER *collected = bbs->buffer;
    bbs->buffer = zuBufferCreate();
    return collected;
}
