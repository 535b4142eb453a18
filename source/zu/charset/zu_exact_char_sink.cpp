// The byte of a single-byte set goes to the cache at once.  If a mark comes that the set lacks, the last bytes are read
// back: that of the letter which the mark belongs to is exchanged for that of the two composed.  So text that the set
// has passes without a look at the character database, and the last few bytes stay in the cache until more have come.

#include "zu/charset/zu_exact_char_sink.h"

#include "zu/base/zu_utf_internal.h"
#include "zu/charset/zu_exact_internal.h"
#include "zu/io/zu_buffer_byte_sink.h"
#include "zu/runtime/zu_module.h"
#include "zu/unicode/zu_unicode_db.h"
#include "zu/unicode/zu_unicode_properties.h"

#include <cstring>

static constexpr ZU_INT CACHE_BYTES = 4096;
static constexpr ZU_INT SPARE_BYTES = 64; // less room than this, and the cache goes out
static constexpr ZU_INT PARTS_MAX = 4;    // characters of a full canonical decomposition
static constexpr ZU_INT REACH = 8;        // bytes that are read back: a letter, and the marks of the set behind it

struct ZU_EXACT_CHAR_SINK {
    ZU_OBJ obj;
    ZU_BYTE_SINK *byteSink;
    ZU_CHARSET_FLAGS flags; // normalised
    ZU___EXACT_FORM form;
    bool littleEndian;
    bool failed;
    ZU_INT fault;  // position of the first; -1: none
    ZU_INT offset; // characters taken
    ZU_INT used;   // bytes that wait
    uint8_t bytes[ CACHE_BYTES ];
    // Single-byte sets
    const ZU___EXACT_MAP *map;
    ZU_INT sealed; // bytes that wait and stay as they are, whatever comes
};

static void exactCharSinkFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_EXACT_CHAR_SINK =
    ZU___SORT_INITIALIZER( "ZU_EXACT_CHAR_SINK", &zu___module, exactCharSinkFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_EXACT_CHAR_SINK, zuExactCharSink )

// Encodes well-formed text as far as the cache has room; returns how many characters it took.
static ZU_INT exactCharSinkPutUtf( ZU_EXACT_CHAR_SINK *ecs, const ZU_CHAR *chars, ZU_INT count )
{
    uint8_t *dest = ecs->bytes + ecs->used;
    const uint8_t *destEnd = ecs->bytes + CACHE_BYTES;
    const ZU_CHAR *pos = chars;
    dest = ecs->form == ZU___EXACT_UTF8    ? zu___UtfEncode8( dest, destEnd, &pos, chars + count )
           : ecs->form == ZU___EXACT_UTF16 ? zu___UtfEncode16( dest, destEnd, &pos, chars + count, ecs->littleEndian )
                                           : zu___UtfEncode32( dest, destEnd, &pos, chars + count, ecs->littleEndian );
    ecs->used = dest - ecs->bytes;
    return pos - chars;
}

// Creation
ZU_EXACT_CHAR_SINK *zuExactCharSinkCreate( ZU_BYTE_SINK *byteSink, ZU_CHARSET charset, ZU_CHARSET_FLAGS flags )
{
    ZU_ASSERT( byteSink );
    ZU_ASSERT( ZU_CHARSET_OK( charset ) );
    ZU_EXACT_CHAR_SINK *ecs =
        (ZU_EXACT_CHAR_SINK *)zu___ObjCreate( sizeof( ZU_EXACT_CHAR_SINK ), &zu___sort_ZU_EXACT_CHAR_SINK );
    ecs->byteSink = zuByteSinkRetain( byteSink );
    ecs->flags = zuCharsetFlagsNormalize( flags );
    ecs->form = zu___ExactForm( charset );
    ecs->littleEndian = zu___ExactLittleEndian( charset );
    ecs->failed = false;
    ecs->fault = -1;
    ecs->offset = 0;
    ecs->used = 0;
    ecs->map = ecs->form == ZU___EXACT_MAPPED ? zu___ExactMap( charset ) : nullptr;
    ecs->sealed = 0;
    if ( ecs->form != ZU___EXACT_MAPPED && ( ecs->flags & ZU_CHARSET_FLAG_INSERT_BYTE_ORDER_MARK ) ) {
        const ZU_CHAR mark = ZU_CHAR_ZERO_WIDTH_NO_BREAK_SPACE;
        exactCharSinkPutUtf( ecs, &mark, 1 );
    }
    return ecs;
}
static void exactCharSinkFree( ZU_OBJ *thisObj )
{
    ZU_EXACT_CHAR_SINK *ecs = zuExactCharSinkFrom( thisObj );
    ZU_ASSERT( ecs );
    ZU_REF_RELEASE( ecs->byteSink );
    ZU_REF_POISON( ecs->byteSink );
}

// Hands over what waits, all but the last `kept` bytes.
static bool exactCharSinkPass( ZU_EXACT_CHAR_SINK *ecs, ZU_INT kept )
{
    if ( ecs->used > kept ) {
        ecs->failed |= !zuByteSinkWriteBytes( ecs->byteSink, ecs->bytes, ecs->used - kept );
        memmove( ecs->bytes, ecs->bytes + ecs->used - kept, (size_t)kept );
        ecs->used = kept;
        ecs->sealed = 0;
    }
    return !ecs->failed;
}
static ZU_BOOL exactCharSinkFlush( ZU_OBJ *closure )
{
    ZU_EXACT_CHAR_SINK *ecs = zuExactCharSinkFrom( closure );
    ZU_ASSERT( ecs );
    return !ecs->failed && exactCharSinkPass( ecs, 0 );
}

// Single-byte sets

// Stores the full canonical decomposition of `ch` and returns its length.
static ZU_INT exactCharSinkDecompose( ZU_CHAR ch, ZU_CHAR ( &parts )[ PARTS_MAX ] )
{
    ZU_INT count = 1;
    parts[ 0 ] = ch;
    ZU_UNICODE_CDMT tag;
    ZU_INT length;
    // Only the first of a canonical mapping, of one or two characters, can have one itself.
    while ( const ZU_CHAR *mapping = zu___UnicodeCdmDbLookup( parts[ 0 ], &length, &tag ) ) {
        if ( tag != ZU_UNICODE_CDMT_CANONICAL || count + length - 1 > PARTS_MAX ) {
            break;
        }
        memmove( parts + length, parts + 1, (size_t)( count - 1 ) * sizeof parts[ 0 ] );
        memcpy( parts, mapping, (size_t)length * sizeof parts[ 0 ] );
        count += length - 1;
    }
    return count;
}
// Returns how many of the last bytes can be read back.
static ZU_INT exactCharSinkReach( const ZU_EXACT_CHAR_SINK *ecs )
{
    return zuIntMin( ecs->used - ecs->sealed, REACH );
}
// Composes a character with the letter ahead of it, across marks of other classes, if the set has the result.
static bool exactCharSinkCompose( ZU_EXACT_CHAR_SINK *ecs, ZU_CHAR ch )
{
    ZU_INT order = zuUnicodeCccv( ch );
    ZU_INT end = ecs->used - exactCharSinkReach( ecs );
    for ( ZU_INT i = ecs->used - 1; i >= end; i-- ) {
        ZU_CHAR ahead;
        ZU_CHAR composed;
        if ( !ecs->map->byteToChar( ecs->bytes[ i ], &ahead ) ) {
            return false;
        }
        ZU_INT orderAhead = zuUnicodeCccv( ahead );
        if ( orderAhead == 0 ) {
            return zu___UnicodeCompDbLookup( ahead, ch, &composed ) &&
                   ecs->map->charToByte( composed, &ecs->bytes[ i ] );
        }
        if ( order == 0 || order == orderAhead ) {
            return false;
        }
    }
    return false;
}
// Puts a character that the set lacks in another form of it.
static bool exactCharSinkPutEquivalent( ZU_EXACT_CHAR_SINK *ecs, ZU_CHAR ch )
{
    if ( !ZU_CHAR_OK( ch ) ) {
        return false;
    }
    const ZU_INT used = ecs->used;
    const ZU_INT reach = exactCharSinkReach( ecs );
    uint8_t before[ REACH ];
    memcpy( before, ecs->bytes + used - reach, (size_t)reach );
    ZU_CHAR parts[ PARTS_MAX ];
    ZU_INT count = exactCharSinkDecompose( ch, parts );
    for ( ZU_INT i = 0; i < count; i++ ) {
        if ( ecs->map->charToByte( parts[ i ], &ecs->bytes[ ecs->used ] ) ) {
            ecs->used++;
        } else if ( !exactCharSinkCompose( ecs, parts[ i ] ) ) {
            memcpy( ecs->bytes + used - reach, before, (size_t)reach );
            ecs->used = used;
            return false;
        }
    }
    return true;
}
// Puts characters of the set as far as the cache has room; returns how many it took.
static ZU_INT exactCharSinkPutMapped( ZU_EXACT_CHAR_SINK *ecs, const ZU_CHAR *chars, ZU_INT count )
{
    ZU___CHARSET_MAP_CHAR_TO_BYTE_FUNC charToByte = ecs->map->charToByte;
    count = zuIntMin( count, CACHE_BYTES - PARTS_MAX - ecs->used );
    ZU_INT taken = 0;
    while ( taken < count && charToByte( chars[ taken ], &ecs->bytes[ ecs->used ] ) ) {
        ecs->used++;
        taken++;
    }
    return taken;
}

// Stands in for a fault.
static void exactCharSinkReplace( ZU_EXACT_CHAR_SINK *ecs )
{
    const ZU_CHAR replacement = ZU_CHAR_REPLACEMENT_CHARACTER;
    if ( ecs->form != ZU___EXACT_MAPPED ) {
        exactCharSinkPutUtf( ecs, &replacement, 1 );
        return;
    }
    uint8_t *byte = &ecs->bytes[ ecs->used ];
    if ( ecs->map->charToByte( replacement, byte ) || ecs->map->charToByte( ZU_CHAR_QUESTION_MARK, byte ) ) {
        ecs->used++;
    }
}

static ZU_BOOL exactCharSinkWrite( ZU_OBJ *closure, const ZU_CHAR *chars, ZU_INT charCount )
{
    ZU_EXACT_CHAR_SINK *ecs = zuExactCharSinkFrom( closure );
    ZU_ASSERT( ecs );
    ZU_ASSERT( chars );
    ZU_ASSERT( charCount > 0 );
    ZU_INT i = 0;
    bool isMapped = ecs->form == ZU___EXACT_MAPPED;
    while ( i < charCount && !ecs->failed ) {
        if ( CACHE_BYTES - ecs->used < SPARE_BYTES ) {
            exactCharSinkPass( ecs, isMapped ? exactCharSinkReach( ecs ) : 0 );
            continue;
        }
        i += isMapped ? exactCharSinkPutMapped( ecs, chars + i, charCount - i )
                      : exactCharSinkPutUtf( ecs, chars + i, charCount - i );
        if ( i == charCount || CACHE_BYTES - ecs->used < SPARE_BYTES ) {
            continue;
        }
        ZU_CHAR ch = chars[ i ];
        if ( isMapped && exactCharSinkPutEquivalent( ecs, ch ) ) {
            i++;
            continue;
        }
        ecs->fault = ecs->fault < 0 ? ecs->offset + i : ecs->fault;
        if ( ecs->flags & ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER ) {
            exactCharSinkPass( ecs, 0 );
            ecs->failed = true;
        } else if ( !( ecs->flags & ZU_CHARSET_FLAG_IGNORE_INVALID_CHARACTERS ) ) {
            exactCharSinkReplace( ecs );
        }
        ecs->sealed = ecs->used;
        i++;
    }
    ecs->offset += i;
    return !ecs->failed;
}
ZU_CHAR_SINK *zuExactCharSinkCharSink( ZU_EXACT_CHAR_SINK *ecs )
{
    ZU_ASSERT( ecs );
    return zu___CharSinkCreate( exactCharSinkWrite, exactCharSinkFlush, zuExactCharSinkObj( ecs ) );
}
ZU_INT zuExactCharSinkFault( ZU_EXACT_CHAR_SINK *ecs )
{
    ZU_ASSERT( ecs );
    return ecs->fault;
}

// Whole texts
ZU_BUFFER *zuExactCharSinkStringToBuffer( ZU_STRING *zus, ZU_CHARSET charset, ZU_CHARSET_FLAGS flags, ZU_INT *fault )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( ZU_CHARSET_OK( charset ) );
    ZU_BUFFER_BYTE_SINK *bbs = zuBufferByteSinkCreate();
    ZU_BYTE_SINK *byteSink = zuBufferByteSinkByteSink( bbs );
    ZU_EXACT_CHAR_SINK *ecs = zuExactCharSinkCreate( byteSink, charset, flags );
    ZU_CHAR_SINK *sink = zuExactCharSinkCharSink( ecs );
    zuCharSinkWrite( sink, zus );
    zuCharSinkFlush( sink );
    if ( fault ) {
        *fault = ecs->fault;
    }
    ZU_BUFFER *result = ecs->failed ? nullptr : zuBufferByteSinkBuffer( bbs );
    zuCharSinkRelease( sink );
    zuExactCharSinkRelease( ecs );
    zuByteSinkRelease( byteSink );
    zuBufferByteSinkRelease( bbs );
    return result;
}
