// The byte of a single-byte set goes to the cache at once, and the character is remembered: if a mark comes that the
// set lacks, the byte is exchanged for that of the two composed.  So text that the set has passes without a look at the
// character database, and the last byte stays in the cache until the next character has come.

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
static constexpr ZU_CHAR NO_CHARACTER = UINT32_MAX;
static constexpr ZU_INT PARTS_MAX = 4; // characters of a full canonical decomposition

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
    ZU___CHARSET_MAP_CHAR_TO_BYTE_FUNC map;
    ZU_CHAR last; // the character of the last byte that waits, with which a mark may compose; NO_CHARACTER: none
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
    ecs->map = ecs->form == ZU___EXACT_MAPPED ? zu___ExactMap( charset )->charToByte : nullptr;
    ecs->last = NO_CHARACTER;
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
    }
    return !ecs->failed;
}
static ZU_BOOL exactCharSinkFlush( ZU_OBJ *closure )
{
    ZU_EXACT_CHAR_SINK *ecs = zuExactCharSinkFrom( closure );
    ZU_ASSERT( ecs );
    ecs->last = NO_CHARACTER;
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
// Puts characters if the set has them all.
static bool exactCharSinkPutParts( ZU_EXACT_CHAR_SINK *ecs, const ZU_CHAR *parts, ZU_INT count )
{
    for ( ZU_INT i = 0; i < count; i++ ) {
        if ( !ecs->map( parts[ i ], &ecs->bytes[ ecs->used + i ] ) ) {
            return false;
        }
    }
    ecs->used += count;
    ecs->last = parts[ count - 1 ];
    return true;
}
// Puts a character that the set lacks in another form of it.
static bool exactCharSinkPutEquivalent( ZU_EXACT_CHAR_SINK *ecs, ZU_CHAR ch )
{
    if ( !ZU_CHAR_OK( ch ) ) {
        return false;
    }
    ZU_CHAR composed;
    if ( ecs->last != NO_CHARACTER && zu___UnicodeCompDbLookup( ecs->last, ch, &composed ) &&
         ecs->map( composed, &ecs->bytes[ ecs->used - 1 ] ) ) {
        ecs->last = composed;
        return true;
    }
    ZU_CHAR parts[ PARTS_MAX ];
    ZU_INT count = exactCharSinkDecompose( ch, parts );
    // One of the marks may be part of a letter of the set.  Its way there must not cross a mark of its own class.
    for ( ZU_INT mark = count - 1; mark > 0; mark-- ) {
        bool moves = true;
        for ( ZU_INT i = 1; i < mark; i++ ) {
            moves &= zuUnicodeCccv( parts[ i ] ) != zuUnicodeCccv( parts[ mark ] );
        }
        ZU_CHAR others[ PARTS_MAX ];
        if ( moves && zu___UnicodeCompDbLookup( parts[ 0 ], parts[ mark ], &others[ 0 ] ) ) {
            memcpy( others + 1, parts + 1, (size_t)( mark - 1 ) * sizeof parts[ 0 ] );
            memcpy( others + mark, parts + mark + 1, (size_t)( count - 1 - mark ) * sizeof parts[ 0 ] );
            if ( exactCharSinkPutParts( ecs, others, count - 1 ) ) {
                return true;
            }
        }
    }
    return exactCharSinkPutParts( ecs, parts, count );
}
// Puts characters of the set as far as the cache has room; returns how many it took.
static ZU_INT exactCharSinkPutMapped( ZU_EXACT_CHAR_SINK *ecs, const ZU_CHAR *chars, ZU_INT count )
{
    count = zuIntMin( count, CACHE_BYTES - PARTS_MAX - ecs->used );
    ZU_INT taken = 0;
    while ( taken < count && ecs->map( chars[ taken ], &ecs->bytes[ ecs->used ] ) ) {
        ecs->used++;
        taken++;
    }
    if ( taken > 0 ) {
        ecs->last = chars[ taken - 1 ];
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
    if ( ecs->map( replacement, byte ) || ecs->map( ZU_CHAR_QUESTION_MARK, byte ) ) {
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
    while ( i < charCount && !ecs->failed ) {
        if ( CACHE_BYTES - ecs->used < SPARE_BYTES ) {
            exactCharSinkPass( ecs, ecs->last != NO_CHARACTER );
            continue;
        }
        bool isMapped = ecs->form == ZU___EXACT_MAPPED;
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
        ecs->last = NO_CHARACTER;
        if ( ecs->flags & ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER ) {
            exactCharSinkPass( ecs, 0 );
            ecs->failed = true;
        } else if ( !( ecs->flags & ZU_CHARSET_FLAG_IGNORE_INVALID_CHARACTERS ) ) {
            exactCharSinkReplace( ecs );
        }
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
