// What is well-formed is decoded in runs; the careful step is taken only where a run has stopped.  It then looks at up
// to four bytes, and reads on first if there are fewer and more may come, so that no sequence is ever judged by a part
// of it: that is why pieces do not matter.

#include "zu/charset/zu_exact_char_source.h"

#include "zu/base/zu_utf_internal.h"
#include "zu/charset/zu_charset_map_take_internal.h"
#include "zu/charset/zu_exact_internal.h"
#include "zu/io/zu_buffer_byte_source.h"
#include "zu/runtime/zu_module.h"
#include "zu/sys/zu_chars_internal.h"

#include <cstring>

static constexpr ZU_INT CACHE_BYTES = 4096;
static constexpr ZU_INT SEQUENCE_MAX = 4; // bytes of a character, in all sets, and of a byte order mark

struct ZU_EXACT_CHAR_SOURCE {
    ZU_OBJ obj;
    ZU_BYTE_SOURCE *byteSource;
    ZU_CHARSET_FLAGS flags; // normalised
    ZU___EXACT_FORM form;
    bool littleEndian; // decided by the byte order mark where that is looked at
    bool heedsMark;    // it may still come
    bool drained;      // the byte source has no more
    bool ended;        // nor is anything left in the cache, or the source has failed
    bool failed;
    ZU_INT fault;   // offset of the first; -1: none
    ZU_INT offset;  // of the cache in the data
    ZU_INT length;  // bytes in the cache,
    ZU_INT pos;     // of which so many are taken
    ZU_INT checked; // UTF-8: those up to here are well-formed, or were
    uint8_t bytes[ CACHE_BYTES ];
    bool keepsAscii;      // a single-byte set: the bytes of ASCII are the characters
    ZU_CHAR chars[ 256 ]; // its characters by byte, or ZU___CHARSET_NO_CHARACTER
};

static void exactCharSourceFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_EXACT_CHAR_SOURCE =
    ZU___SORT_INITIALIZER( "ZU_EXACT_CHAR_SOURCE", &zu___module, exactCharSourceFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_EXACT_CHAR_SOURCE, zuExactCharSource )

// Creation
ZU_EXACT_CHAR_SOURCE *zuExactCharSourceCreate( ZU_BYTE_SOURCE *byteSource, ZU_CHARSET charset, ZU_CHARSET_FLAGS flags )
{
    ZU_ASSERT( byteSource );
    ZU_ASSERT( ZU_CHARSET_OK( charset ) );
    ZU_EXACT_CHAR_SOURCE *ecs =
        (ZU_EXACT_CHAR_SOURCE *)zu___ObjCreate( sizeof( ZU_EXACT_CHAR_SOURCE ), &zu___sort_ZU_EXACT_CHAR_SOURCE );
    ecs->byteSource = zuByteSourceRetain( byteSource );
    ecs->flags = zuCharsetFlagsNormalize( flags );
    ecs->form = zu___ExactForm( charset );
    ecs->littleEndian = zu___ExactLittleEndian( charset );
    ecs->heedsMark = ( charset == ZU_CHARSET_UTF_8 || charset == ZU_CHARSET_UTF_16 || charset == ZU_CHARSET_UTF_32 ) &&
                     !( ecs->flags & ZU_CHARSET_FLAG_IGNORE_BYTE_ORDER_MARK );
    ecs->drained = false;
    ecs->ended = false;
    ecs->failed = false;
    ecs->fault = -1;
    ecs->offset = 0;
    ecs->length = 0;
    ecs->pos = 0;
    ecs->checked = 0;
    if ( ecs->form == ZU___EXACT_MAPPED ) {
        const ZU___EXACT_MAP *map = zu___ExactMap( charset );
        ecs->keepsAscii = true;
        for ( int byte = 0; byte < 256; byte++ ) {
            if ( !map->byteToChar( (uint8_t)byte, &ecs->chars[ byte ] ) ) {
                ecs->chars[ byte ] = ZU___CHARSET_NO_CHARACTER;
            }
            ecs->keepsAscii &= byte >= 0x80 || ecs->chars[ byte ] == (ZU_CHAR)byte;
        }
    }
    return ecs;
}
static void exactCharSourceFree( ZU_OBJ *thisObj )
{
    ZU_EXACT_CHAR_SOURCE *ecs = zuExactCharSourceFrom( thisObj );
    ZU_ASSERT( ecs );
    ZU_REF_RELEASE( ecs->byteSource );
    ZU_REF_POISON( ecs->byteSource );
}

// Reads on behind what is left in the cache, which has room for it.
static void exactCharSourceFill( ZU_EXACT_CHAR_SOURCE *ecs )
{
    ZU_INT left = ecs->length - ecs->pos;
    memmove( ecs->bytes, ecs->bytes + ecs->pos, (size_t)left );
    ecs->offset += ecs->pos;
    ecs->pos = 0;
    ecs->checked = 0;
    ZU_INT count = zuByteSourceReadBytes( ecs->byteSource, ecs->bytes + left, CACHE_BYTES - left );
    ecs->length = left + count;
    ecs->drained = count == 0;
}

// Takes a byte order mark from the front of the data.
static void exactCharSourceTakeMark( ZU_EXACT_CHAR_SOURCE *ecs )
{
    struct MARK {
        ZU___EXACT_FORM form;
        bool littleEndian;
        uint8_t length;
        uint8_t bytes[ SEQUENCE_MAX ];
    };
    static constexpr MARK MARKS[] = {
        { ZU___EXACT_UTF8, true, 3, { 0xEF, 0xBB, 0xBF } },   { ZU___EXACT_UTF16, true, 2, { 0xFF, 0xFE } },
        { ZU___EXACT_UTF16, false, 2, { 0xFE, 0xFF } },       { ZU___EXACT_UTF32, true, 4, { 0xFF, 0xFE, 0, 0 } },
        { ZU___EXACT_UTF32, false, 4, { 0, 0, 0xFE, 0xFF } },
    };
    for ( const MARK &mark : MARKS ) {
        if ( mark.form == ecs->form && ecs->length >= mark.length &&
             memcmp( ecs->bytes, mark.bytes, mark.length ) == 0 ) {
            ecs->littleEndian = mark.littleEndian;
            ecs->pos = mark.length;
        }
    }
    ecs->heedsMark = false;
}

// Decodes what is well-formed at the front of the cache, up to `room` characters; returns their number.
static ZU_INT exactCharSourceTake( ZU_EXACT_CHAR_SOURCE *ecs, ZU_CHAR *chars, ZU_INT room )
{
    const uint8_t *pos = ecs->bytes + ecs->pos;
    const uint8_t *end = ecs->bytes + ecs->length;
    ZU_INT taken = 0;
    switch ( ecs->form ) {
    case ZU___EXACT_UTF8:
        // All of the cache is looked at once, however few characters are asked for.
        if ( ecs->pos >= ecs->checked ) {
            ZU_INT count = 0;
            ecs->checked = zu___UtfWellFormed( pos, end, &count ) - ecs->bytes;
        }
        taken = zu___UtfDecode8( chars, room, &pos, ecs->bytes + ecs->checked );
        break;
    case ZU___EXACT_UTF16:
        taken = zu___UtfDecode16( chars, room, &pos, end, ecs->littleEndian );
        break;
    case ZU___EXACT_UTF32:
        taken = zu___UtfDecode32( chars, room, &pos, end, ecs->littleEndian );
        break;
    case ZU___EXACT_MAPPED:
        taken = zu___CharsetMapTake( ecs->chars, ecs->keepsAscii, pos, chars, zuIntMin( end - pos, room ) );
        pos += taken;
        break;
    }
    ecs->pos = pos - ecs->bytes;
    return taken;
}

// How many bytes are one fault, where a run has stopped and there are bytes.
static ZU_INT exactCharSourceFaultLength( const ZU_EXACT_CHAR_SOURCE *ecs )
{
    const uint8_t *pos = ecs->bytes + ecs->pos;
    const uint8_t *end = ecs->bytes + ecs->length;
    ZU_INT left = end - pos;
    switch ( ecs->form ) {
    case ZU___EXACT_UTF8:
        zu___CharsTakeUtf8( &pos, end );
        return pos - ( ecs->bytes + ecs->pos );
    case ZU___EXACT_UTF16: {
        // A pair that is cut off goes whole.
        bool isHigh = left >= 2 && ( pos[ ecs->littleEndian ? 1 : 0 ] & 0xFC ) == 0xD8;
        return isHigh && left < 4 ? left : zuIntMin( left, 2 );
    }
    case ZU___EXACT_UTF32:
        return zuIntMin( left, 4 );
    default:
        return 1;
    }
}

// Tells whether nothing of the `left` bytes is to be judged any more: what a failure may have cut off is no fault.
static bool exactCharSourceIsOver( const ZU_EXACT_CHAR_SOURCE *ecs, ZU_INT left )
{
    return ecs->drained &&
           ( left == 0 || ( zuByteSourceError( ecs->byteSource ) && exactCharSourceFaultLength( ecs ) == left ) );
}

static ZU_BOOL exactCharSourceRead( ZU_OBJ *closure, ZU_CHAR *chars, ZU_INT charCount, ZU_INT *charsRead )
{
    ZU_EXACT_CHAR_SOURCE *ecs = zuExactCharSourceFrom( closure );
    ZU_ASSERT( ecs );
    ZU_ASSERT( charCount >= 0 );
    ZU_ASSERT( chars || charCount == 0 );
    ZU_ASSERT( charsRead );
    ZU_INT i = 0;
    while ( i < charCount && !ecs->ended ) {
        if ( !ecs->heedsMark ) {
            i += exactCharSourceTake( ecs, chars + i, charCount - i );
            if ( i == charCount ) {
                break;
            }
        }
        ZU_INT left = ecs->length - ecs->pos;
        if ( left < SEQUENCE_MAX && !ecs->drained ) {
            exactCharSourceFill( ecs );
        } else if ( ecs->heedsMark ) {
            exactCharSourceTakeMark( ecs );
        } else if ( exactCharSourceIsOver( ecs, left ) ) {
            ecs->failed = zuByteSourceError( ecs->byteSource );
            ecs->ended = true;
        } else {
            ecs->fault = ecs->fault < 0 ? ecs->offset + ecs->pos : ecs->fault;
            ecs->failed = ecs->flags & ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER;
            ecs->ended = ecs->failed;
            ecs->pos += exactCharSourceFaultLength( ecs );
            if ( !( ecs->flags &
                    ( ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER | ZU_CHARSET_FLAG_IGNORE_INVALID_CHARACTERS ) ) ) {
                chars[ i++ ] = ZU_CHAR_REPLACEMENT_CHARACTER;
            }
        }
    }
    *charsRead = i;
    return !ecs->failed;
}
ZU_CHAR_SOURCE *zuExactCharSourceCharSource( ZU_EXACT_CHAR_SOURCE *ecs )
{
    ZU_ASSERT( ecs );
    return zu___CharSourceCreate( exactCharSourceRead, zuExactCharSourceObj( ecs ) );
}
ZU_INT zuExactCharSourceFault( ZU_EXACT_CHAR_SOURCE *ecs )
{
    ZU_ASSERT( ecs );
    return ecs->fault;
}

// Whole texts
ZU_STRING *zuExactCharSourceBufferToString( ZU_BUFFER *buffer, ZU_CHARSET charset, ZU_CHARSET_FLAGS flags,
                                            ZU_INT *fault )
{
    ZU_ASSERT( buffer );
    ZU_ASSERT( ZU_CHARSET_OK( charset ) );
    ZU_BUFFER_BYTE_SOURCE *bbs = zuBufferByteSourceCreate( buffer );
    ZU_BYTE_SOURCE *byteSource = zuBufferByteSourceByteSource( bbs );
    ZU_EXACT_CHAR_SOURCE *ecs = zuExactCharSourceCreate( byteSource, charset, flags );
    ZU_CHAR_SOURCE *source = zuExactCharSourceCharSource( ecs );
    ZU_STRING *result = zuStringCreate();
    zuCharSourceRead( source, &result, -1 );
    if ( fault ) {
        *fault = ecs->fault;
    }
    if ( ecs->failed ) {
        zuStringRelease( result );
        result = nullptr;
    }
    zuCharSourceRelease( source );
    zuExactCharSourceRelease( ecs );
    zuByteSourceRelease( byteSource );
    zuBufferByteSourceRelease( bbs );
    return result;
}
