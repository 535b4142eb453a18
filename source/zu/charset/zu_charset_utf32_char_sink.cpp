// Characters to UTF-32: each becomes one unit, whatever its value is.

#include "zu/charset/zu_charset_utf.h"
#include "zu/charset/zu_charset_wide_internal.h"

static constexpr int UNIT_BYTES = 4;
static constexpr ZU_CHAR VALUE_BITS = 0xFFFFFF; // what is written of a value; the highest byte is always 0

struct ZU___CHARSET_UTF32_CHAR_SINK_CLOSURE {
    ZU___CHARSET_WIDE_SINK wide;
};

static void utf32CharSinkFree( ZU_OBJ *thisObj );
ZU___CHARSET_CLOSURE( ZU___CHARSET_UTF32_CHAR_SINK_CLOSURE, utf32CharSink )

static void utf32CharSinkFree( ZU_OBJ *thisObj )
{
    ZU___CHARSET_UTF32_CHAR_SINK_CLOSURE *csc = utf32CharSinkFrom( thisObj );
    ZU_ASSERT( csc );
    zu___CharsetOutputEnd( &csc->wide.output );
}

static ZU_BOOL utf32CharSinkFlush( ZU_OBJ *closure )
{
    ZU___CHARSET_UTF32_CHAR_SINK_CLOSURE *csc = utf32CharSinkFrom( closure );
    ZU_ASSERT( csc );
    return zu___CharsetOutputFlush( &csc->wide.output );
}

template <bool LITTLE_ENDIAN>
static ZU_BOOL utf32CharSinkPut( ZU___CHARSET_OUTPUT *output, const ZU_CHAR *chars, ZU_INT charCount )
{
    for ( ZU_INT i = 0; i < charCount; ) {
        ZU_INT count = zuIntMin( charCount - i, ( ZU___CHARSET_OUTPUT_BYTES - output->used ) / UNIT_BYTES );
        uint8_t *bytes = output->bytes + output->used;
        for ( ZU_INT end = i + count; i < end; i++, bytes += UNIT_BYTES ) {
            ZU_CHAR ch = chars[ i ] & VALUE_BITS;
            uint32_t unit =
                LITTLE_ENDIAN == ( __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ) ? ch : __builtin_bswap32( ch );
            memcpy( bytes, &unit, UNIT_BYTES );
        }
        output->used += count * UNIT_BYTES;
        if ( output->used == ZU___CHARSET_OUTPUT_BYTES && !zu___CharsetOutputFlush( output ) ) {
            return ZU_FALSE;
        }
    }
    return ZU_TRUE;
}

static ZU_BOOL utf32CharSinkWrite( ZU_OBJ *closure, const ZU_CHAR *chars, ZU_INT charCount )
{
    ZU___CHARSET_UTF32_CHAR_SINK_CLOSURE *csc = utf32CharSinkFrom( closure );
    ZU_ASSERT( csc );
    ZU_ASSERT( chars );
    ZU_ASSERT( charCount > 0 );
    return csc->wide.littleEndian ? utf32CharSinkPut<true>( &csc->wide.output, chars, charCount )
                                  : utf32CharSinkPut<false>( &csc->wide.output, chars, charCount );
}

// Creation
static ZU_CHAR_SINK *utf32CharSinkCreate( ZU_BYTE_SINK *byteSink, ZU_CHARSET_FLAGS flags, ZU_BOOL littleEndian )
{
    ZU_ASSERT( byteSink );
    ZU___CHARSET_UTF32_CHAR_SINK_CLOSURE *csc = (ZU___CHARSET_UTF32_CHAR_SINK_CLOSURE *)zu___ObjCreate(
        sizeof( ZU___CHARSET_UTF32_CHAR_SINK_CLOSURE ), &zu___sort_ZU___CHARSET_UTF32_CHAR_SINK_CLOSURE );
    zu___CharsetWideSinkBegin<UNIT_BYTES>( &csc->wide, byteSink, flags, littleEndian );
    ZU_CHAR_SINK *result = zu___CharSinkCreate( utf32CharSinkWrite, utf32CharSinkFlush, &csc->wide.obj );
    ZU_REF_RELEASE( csc );
    return result;
}
ZU_CHAR_SINK *zu___CharsetUtf32CharSinkCreate( ZU_BYTE_SINK *byteSink, ZU_CHARSET_FLAGS flags )
{
    return utf32CharSinkCreate( byteSink, flags, ZU_TRUE );
}
ZU_CHAR_SINK *zu___CharsetUtf32BECharSinkCreate( ZU_BYTE_SINK *byteSink, ZU_CHARSET_FLAGS flags )
{
    return utf32CharSinkCreate( byteSink, flags, ZU_FALSE );
}
ZU_CHAR_SINK *zu___CharsetUtf32LECharSinkCreate( ZU_BYTE_SINK *byteSink, ZU_CHARSET_FLAGS flags )
{
    return utf32CharSinkCreate( byteSink, flags, ZU_TRUE );
}
