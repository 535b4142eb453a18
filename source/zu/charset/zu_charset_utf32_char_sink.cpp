// Characters to UTF-32: each becomes one unit, whatever its value is.

#include "zu/charset/zu_charset_utf.h"
#include "zu/charset/zu_charset_wide_internal.h"

static constexpr int UNIT_BYTES = 4;
static constexpr ZU_CHAR VALUE_BITS = 0xFFFFFF; // what is written of a value; the highest byte is always 0

typedef ZU___CHARSET_WIDE_SINK ZU___CHARSET_UTF32_CHAR_SINK_CLOSURE;

static void utf32CharSinkFree( ZU_OBJ *thisObj );
ZU___CHARSET_CLOSURE( ZU___CHARSET_UTF32_CHAR_SINK_CLOSURE, utf32CharSink )

static void utf32CharSinkFree( ZU_OBJ *thisObj )
{
    ZU___CHARSET_UTF32_CHAR_SINK_CLOSURE *csc = utf32CharSinkFrom( thisObj );
    ZU_ASSERT( csc );
    zu___CharsetOutputEnd( &csc->output );
}

static ZU_BOOL utf32CharSinkFlush( ZU_OBJ *closure )
{
    ZU___CHARSET_UTF32_CHAR_SINK_CLOSURE *csc = utf32CharSinkFrom( closure );
    ZU_ASSERT( csc );
    return zu___CharsetOutputFlush( &csc->output );
}

template <bool LITTLE_ENDIAN>
static ZU_BOOL utf32CharSinkPut( ZU___CHARSET_OUTPUT *output, const ZU_CHAR *chars, ZU_INT charCount )
{
    ZU_INT i = 0;
    while ( i < charCount ) {
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
    ZU_ASSERT( i == charCount );
    return ZU_TRUE;
}

static ZU_BOOL utf32CharSinkWrite( ZU_OBJ *closure, const ZU_CHAR *chars, ZU_INT charCount )
{
    ZU___CHARSET_UTF32_CHAR_SINK_CLOSURE *csc = utf32CharSinkFrom( closure );
    ZU_ASSERT( csc );
    ZU_ASSERT( chars );
    ZU_ASSERT( charCount > 0 );
    return csc->littleEndian ? utf32CharSinkPut<true>( &csc->output, chars, charCount )
                             : utf32CharSinkPut<false>( &csc->output, chars, charCount );
}

// Creation
static ZU_CHAR_SINK *utf32CharSinkCreate( ZU_BYTE_SINK *byteSink, ZU_CHARSET_FLAGS flags, ZU_BOOL littleEndian )
{
    return zu___CharsetWideSinkCreate<UNIT_BYTES>( byteSink, flags, littleEndian,
                                                   &zu___sort_ZU___CHARSET_UTF32_CHAR_SINK_CLOSURE, utf32CharSinkWrite,
                                                   utf32CharSinkFlush );
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
