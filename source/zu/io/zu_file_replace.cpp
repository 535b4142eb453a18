#include "zu/io/zu_file_replace.h"

#include "zu/io/zu_file_internal.h"

ZU_BOOL zuFileReplaceBuffer( ZU_STRING *fn, ZU_BUFFER *buf )
{
    ZU_ASSERT( fn );
    ZU_ASSERT( buf );
    return zuFileReplaceBytes( fn, zuBufferBacking( buf ), zuBufferLength( buf ) );
}
ZU_BOOL zuFileReplaceBytes( ZU_STRING *fn, const uint8_t *bytes, ZU_INT byteCount )
{
    ZU_ASSERT( fn );
    ZU_ASSERT( byteCount >= 0 );
    ZU_ASSERT( byteCount == 0 || bytes );
    return zu___FileReplace( fn, bytes, byteCount );
}
