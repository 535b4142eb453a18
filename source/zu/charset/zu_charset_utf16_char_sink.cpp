// Characters to UTF-16, in a form of its own: of each unit the bits 8 to 15 are not written, and 0 stands in their
// place.  Whoever reads what these sinks have written relies on it.

#include "zu/charset/zu_charset_utf.h"
#include "zu/charset/zu_charset_wide_internal.h"
#include "zu/sys/zu_surrogate_internal.h"

static constexpr int UNIT_BYTES = 2;
static constexpr ZU_INT FLUSH_AT = 1020; // bytes in the cache, always an even number
static constexpr ZU_INT STEP = 8;        // characters put at once

typedef ZU___CHARSET_WIDE_SINK ZU___CHARSET_UTF16_CHAR_SINK_CLOSURE;

static void utf16CharSinkFree( ZU_OBJ *thisObj );
ZU___CHARSET_CLOSURE( ZU___CHARSET_UTF16_CHAR_SINK_CLOSURE, utf16CharSink )

static void utf16CharSinkFree( ZU_OBJ *thisObj )
{
    ZU___CHARSET_UTF16_CHAR_SINK_CLOSURE *csc = utf16CharSinkFrom( thisObj );
    ZU_ASSERT( csc );
    zu___CharsetOutputEnd( &csc->output );
}

static ZU_BOOL utf16CharSinkFlush( ZU_OBJ *closure )
{
    ZU___CHARSET_UTF16_CHAR_SINK_CLOSURE *csc = utf16CharSinkFrom( closure );
    ZU_ASSERT( csc );
    return zu___CharsetOutputFlush( &csc->output );
}

// Puts the lowest byte of a unit and the byte from its bits 16 to 23 into the cache.
template <bool LITTLE_ENDIAN>
static inline void utf16CharSinkPutUnit( uint8_t *bytes, uint32_t unit )
{
    bytes[ LITTLE_ENDIAN ? 0 : 1 ] = (uint8_t)unit;
    bytes[ LITTLE_ENDIAN ? 1 : 0 ] = (uint8_t)( unit >> 16 );
}
// Puts steps of characters that are one unit each, up to `count` characters; returns how many.
template <bool LITTLE_ENDIAN>
static inline ZU_INT utf16CharSinkPutSteps( uint8_t *bytes, const ZU_CHAR *chars, ZU_INT count )
{
    ZU_INT put = 0;
    for ( ; count - put >= STEP; put += STEP ) {
        ZU_CHAR bits = 0;
        for ( ZU_INT i = put; i < put + STEP; i++ ) {
            bits |= chars[ i ];
        }
        if ( bits > 0xFFFF ) {
            break;
        }
        for ( ZU_INT i = put; i < put + STEP; i++ ) {
            utf16CharSinkPutUnit<LITTLE_ENDIAN>( bytes + i * UNIT_BYTES, chars[ i ] & 0xFF );
        }
    }
    return put;
}
template <bool LITTLE_ENDIAN>
static ZU_BOOL utf16CharSinkPut( ZU___CHARSET_OUTPUT *output, const ZU_CHAR *chars, ZU_INT charCount )
{
    ZU_INT i = 0;
    while ( i < charCount ) {
        ZU_INT count = zuIntMin( charCount - i, ( FLUSH_AT - output->used ) / UNIT_BYTES );
        ZU_INT put = utf16CharSinkPutSteps<LITTLE_ENDIAN>( output->bytes + output->used, chars + i, count );
        output->used += put * UNIT_BYTES;
        i += put;
        if ( put < count ) {
            ZU_CHAR ch = chars[ i++ ];
            uint8_t *bytes = output->bytes + output->used;
            if ( ch <= 0xFFFF ) {
                utf16CharSinkPutUnit<LITTLE_ENDIAN>( bytes, ch );
                output->used += UNIT_BYTES;
            } else {
                utf16CharSinkPutUnit<LITTLE_ENDIAN>( bytes, zu___HighSurrogate( ch ) );
                utf16CharSinkPutUnit<LITTLE_ENDIAN>( bytes + UNIT_BYTES, zu___LowSurrogate( ch ) );
                output->used += 2 * UNIT_BYTES;
            }
        }
        if ( output->used >= FLUSH_AT && !zu___CharsetOutputFlush( output ) ) {
            return ZU_FALSE;
        }
    }
    ZU_ASSERT( i == charCount );
    return ZU_TRUE;
}

static ZU_BOOL utf16CharSinkWrite( ZU_OBJ *closure, const ZU_CHAR *chars, ZU_INT charCount )
{
    ZU___CHARSET_UTF16_CHAR_SINK_CLOSURE *csc = utf16CharSinkFrom( closure );
    ZU_ASSERT( csc );
    ZU_ASSERT( chars );
    ZU_ASSERT( charCount > 0 );
    return csc->littleEndian ? utf16CharSinkPut<true>( &csc->output, chars, charCount )
                             : utf16CharSinkPut<false>( &csc->output, chars, charCount );
}

// Creation
static ZU_CHAR_SINK *utf16CharSinkCreate( ZU_BYTE_SINK *byteSink, ZU_CHARSET_FLAGS flags, ZU_BOOL littleEndian )
{
    return zu___CharsetWideSinkCreate<UNIT_BYTES>( byteSink, flags, littleEndian,
                                                   &zu___sort_ZU___CHARSET_UTF16_CHAR_SINK_CLOSURE, utf16CharSinkWrite,
                                                   utf16CharSinkFlush );
}
ZU_CHAR_SINK *zu___CharsetUtf16CharSinkCreate( ZU_BYTE_SINK *byteSink, ZU_CHARSET_FLAGS flags )
{
    return utf16CharSinkCreate( byteSink, flags, ZU_TRUE );
}
ZU_CHAR_SINK *zu___CharsetUtf16BECharSinkCreate( ZU_BYTE_SINK *byteSink, ZU_CHARSET_FLAGS flags )
{
    return utf16CharSinkCreate( byteSink, flags, ZU_FALSE );
}
ZU_CHAR_SINK *zu___CharsetUtf16LECharSinkCreate( ZU_BYTE_SINK *byteSink, ZU_CHARSET_FLAGS flags )
{
    return utf16CharSinkCreate( byteSink, flags, ZU_TRUE );
}
