// Text is encoded in blocks as far as the cache surely holds them; the last few bytes of the cache, and values that are
// no characters, take one careful step each.

#include "zu/charset/zu_charset_closure_internal.h"
#include "zu/charset/zu_charset_utf.h"
#include "zu/sys/zu_chars_internal.h"

#include <cstring>

static constexpr ZU_CHARSET_FLAGS STRICT_FLAGS =
    ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER | ZU_CHARSET_FLAG_IGNORE_INVALID_CHARACTERS;
static constexpr uint8_t BYTE_ORDER_MARK[] = { 0xEF, 0xBB, 0xBF };

struct ZU___CHARSET_UTF8_CHAR_SINK_CLOSURE {
    ZU_OBJ obj;
    ZU_CHARSET_FLAGS flags; // normalised
    ZU___CHARSET_OUTPUT output;
};

static void utf8CharSinkFree( ZU_OBJ *thisObj );

ZU___CHARSET_CLOSURE( ZU___CHARSET_UTF8_CHAR_SINK_CLOSURE, utf8CharSink )

static void utf8CharSinkFree( ZU_OBJ *thisObj )
{
    ZU___CHARSET_UTF8_CHAR_SINK_CLOSURE *csc = utf8CharSinkFrom( thisObj );
    ZU_ASSERT( csc );
    zu___CharsetOutputEnd( &csc->output );
}

static ZU_BOOL utf8CharSinkFlush( ZU_OBJ *closure )
{
    ZU___CHARSET_UTF8_CHAR_SINK_CLOSURE *csc = utf8CharSinkFrom( closure );
    ZU_ASSERT( csc );
    return zu___CharsetOutputFlush( &csc->output );
}

static ZU_BOOL utf8CharSinkWrite( ZU_OBJ *closure, const ZU_CHAR *chars, ZU_INT charCount )
{
    ZU___CHARSET_UTF8_CHAR_SINK_CLOSURE *csc = utf8CharSinkFrom( closure );
    ZU_ASSERT( csc );
    ZU_ASSERT( chars );
    ZU_ASSERT( charCount > 0 );
    ZU___CHARSET_OUTPUT *output = &csc->output;
    const uint8_t *end = output->bytes + ZU___CHARSET_OUTPUT_BYTES;
    // The blocks replace what is invalid.
    bool inBlocks = !( csc->flags & STRICT_FLAGS ) || zuCharsAllOk( chars, charCount );
    ZU_INT i = 0;
    while ( i < charCount ) {
        if ( inBlocks ) {
            const ZU_CHAR *src = chars + i;
            output->used =
                zu___CharsEncodeUtf8( output->bytes + output->used, end, &src, chars + charCount ) - output->bytes;
            i = src - chars;
            if ( i == charCount ) {
                break;
            }
        }
        ZU_CHAR ch = chars[ i++ ];
        if ( !ZU_CHAR_OK( ch ) ) {
            if ( csc->flags & ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER ) {
                return ZU_FALSE;
            }
            if ( csc->flags & ZU_CHARSET_FLAG_IGNORE_INVALID_CHARACTERS ) {
                continue;
            }
        }
        uint8_t sequence[ ZU___CHARS_UTF8_SEQUENCE_MAX ];
        ZU_INT length = zu___CharsPutUtf8( sequence, ch ) - sequence;
        if ( ZU___CHARSET_OUTPUT_BYTES - output->used < length && !zu___CharsetOutputFlush( output ) ) {
            return ZU_FALSE;
        }
        memcpy( output->bytes + output->used, sequence, (size_t)length );
        output->used += length;
    }
    ZU_ASSERT( i == charCount );
    return ZU_TRUE;
}

ZU_CHAR_SINK *zu___CharsetUtf8CharSinkCreate( ZU_BYTE_SINK *byteSink, ZU_CHARSET_FLAGS flags )
{
    ZU_ASSERT( byteSink );
    ZU___CHARSET_UTF8_CHAR_SINK_CLOSURE *csc = (ZU___CHARSET_UTF8_CHAR_SINK_CLOSURE *)zu___ObjCreate(
        sizeof( ZU___CHARSET_UTF8_CHAR_SINK_CLOSURE ), &zu___sort_ZU___CHARSET_UTF8_CHAR_SINK_CLOSURE );
    csc->flags = flags;
    zu___CharsetOutputBegin( &csc->output, byteSink );
    if ( flags & ZU_CHARSET_FLAG_INSERT_BYTE_ORDER_MARK ) {
        memcpy( csc->output.bytes, BYTE_ORDER_MARK, sizeof BYTE_ORDER_MARK );
        csc->output.used = sizeof BYTE_ORDER_MARK;
    }
    ZU_CHAR_SINK *result = zu___CharSinkCreate( utf8CharSinkWrite, utf8CharSinkFlush, &csc->obj );
    ZU_REF_RELEASE( csc );
    return result;
}
