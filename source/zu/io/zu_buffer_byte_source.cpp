#include "zu/io/zu_buffer_byte_source.h"

#include "zu/runtime/zu_module.h"

struct ZU_BUFFER_BYTE_SOURCE {
    ZU_OBJ obj;
    ZU_BUFFER *buffer;
    ZU_INT offset; // of the next byte, 0 <= offset <= zuBufferLength( buffer )
};

static void bufferByteSourceFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_BUFFER_BYTE_SOURCE =
    ZU___SORT_INITIALIZER( "ZU_BUFFER_BYTE_SOURCE", &zu___module, bufferByteSourceFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_BUFFER_BYTE_SOURCE, zuBufferByteSource )

ZU_BUFFER_BYTE_SOURCE *zuBufferByteSourceCreate( ZU_BUFFER *src )
{
    ZU_ASSERT( src );
    ZU_BUFFER_BYTE_SOURCE *bbs =
        (ZU_BUFFER_BYTE_SOURCE *)zu___ObjCreate( sizeof( ZU_BUFFER_BYTE_SOURCE ), &zu___sort_ZU_BUFFER_BYTE_SOURCE );
    bbs->buffer = zuBufferRetain( src );
    bbs->offset = 0;
    return bbs;
}
static void bufferByteSourceFree( ZU_OBJ *thisObj )
{
    ZU_BUFFER_BYTE_SOURCE *bbs = zuBufferByteSourceFrom( thisObj );
    ZU_ASSERT( bbs );
    ZU_REF_RELEASE( bbs->buffer );
    ZU_REF_POISON( bbs->buffer );
}

// The functions of the sources
static ZU_BOOL bufferByteSourceRead( ZU_OBJ *closure, uint8_t *bytes, ZU_INT maxByteCount, ZU_INT *bytesRead )
{
    ZU_BUFFER_BYTE_SOURCE *bbs = zuBufferByteSourceFrom( closure );
    ZU_ASSERT( bbs );
    ZU_ASSERT( *bytesRead == 0 );
    ZU_INT count = zuIntMin( maxByteCount, zuBufferLength( bbs->buffer ) - bbs->offset );
    zuBufferReadBytes( bbs->buffer, bbs->offset, bytes, count );
    bbs->offset += count;
    *bytesRead = count;
    return ZU_TRUE;
}
static ZU_BOOL bufferByteSourceSkip( ZU_OBJ *closure, ZU_INT maxByteCount, ZU_INT *bytesSkipped )
{
    ZU_BUFFER_BYTE_SOURCE *bbs = zuBufferByteSourceFrom( closure );
    ZU_ASSERT( bbs );
    ZU_ASSERT( *bytesSkipped == 0 );
    ZU_INT count = zuIntMin( maxByteCount, zuBufferLength( bbs->buffer ) - bbs->offset );
    bbs->offset += count;
    *bytesSkipped = count;
    return ZU_TRUE;
}

ZU_BYTE_SOURCE *zuBufferByteSourceByteSource( ZU_BUFFER_BYTE_SOURCE *bbs )
{
    ZU_ASSERT( bbs );
    return zu___ByteSourceCreate( bufferByteSourceRead, bufferByteSourceSkip, zuBufferByteSourceObj( bbs ) );
}
ZU_BUFFER *zuBufferByteSourceBuffer( ZU_BUFFER_BYTE_SOURCE *bbs )
{
    ZU_ASSERT( bbs );
    return zuBufferRetain( bbs->buffer );
}
