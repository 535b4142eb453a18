// All text goes through a normalizer first, so that a character which the set has composed is found also where it comes
// in parts.  What the normalizer has settled is mapped at once.

#include "zu/charset/zu_charset_closure_internal.h"
#include "zu/charset/zu_charset_map.h"
#include "zu/unicode/zu_unicode_normalizer.h"

static constexpr ZU_INT BLOCK_CHARS = 256; // taken from the normalizer at a time

struct ZU___CHARSET_MAP_CHAR_SINK_CLOSURE {
    ZU_OBJ obj;
    ZU_CHARSET_FLAGS flags; // normalised
    ZU___CHARSET_MAP_CHAR_TO_BYTE_FUNC mapFunc;
    uint8_t replacement;               // for characters that the set lacks
    ZU_UNICODE_NORMALIZER *normalizer; // to NFC
    ZU___CHARSET_OUTPUT output;
};

static void mapCharSinkFree( ZU_OBJ *thisObj );
ZU___CHARSET_CLOSURE( ZU___CHARSET_MAP_CHAR_SINK_CLOSURE, mapCharSink )

static void mapCharSinkFree( ZU_OBJ *thisObj )
{
    ZU___CHARSET_MAP_CHAR_SINK_CLOSURE *csc = mapCharSinkFrom( thisObj );
    ZU_ASSERT( csc );
    ZU_REF_RELEASE( csc->normalizer );
    ZU_REF_POISON( csc->normalizer );
    zu___CharsetOutputEnd( &csc->output );
}

// Maps one character of the settled text.
enum MAP_VERDICT { STOPPED, TAKEN };
static MAP_VERDICT mapCharSinkPutChar( ZU___CHARSET_MAP_CHAR_SINK_CLOSURE *csc, ZU_CHAR ch, ZU_BOOL *ok )
{
    uint8_t byte;
    if ( !csc->mapFunc( ch, &byte ) ) {
        if ( csc->flags & ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER ) {
            return STOPPED;
        }
        if ( csc->flags & ZU_CHARSET_FLAG_IGNORE_INVALID_CHARACTERS ) {
            return TAKEN;
        }
        byte = csc->replacement;
    }
    csc->output.bytes[ csc->output.used++ ] = byte;
    if ( csc->output.used == ZU___CHARSET_OUTPUT_BYTES ) {
        *ok = zu___CharsetOutputFlush( &csc->output );
        return *ok ? TAKEN : STOPPED;
    }
    return TAKEN;
}

// Maps the settled text.  A stop drops the rest of it; it is a failure unless a full cache has gone out before in this
// same text, in which case the sink goes on.  That is the contract, odd as it is.
static ZU_BOOL mapCharSinkPut( ZU___CHARSET_MAP_CHAR_SINK_CLOSURE *csc )
{
    ZU_BOOL ok = ZU_FALSE; // what a stop yields
    MAP_VERDICT verdict = TAKEN;
    ZU_CHAR chars[ BLOCK_CHARS ];
    ZU_INT count;
    while ( ( count = zuUnicodeNormalizerReadChars( csc->normalizer, chars, BLOCK_CHARS ) ) > 0 ) {
        for ( ZU_INT i = 0; i < count && verdict == TAKEN; i++ ) {
            verdict = mapCharSinkPutChar( csc, chars[ i ], &ok );
        }
    }
    return verdict == TAKEN || ok;
}

static ZU_BOOL mapCharSinkWrite( ZU_OBJ *closure, const ZU_CHAR *chars, ZU_INT charCount )
{
    ZU___CHARSET_MAP_CHAR_SINK_CLOSURE *csc = mapCharSinkFrom( closure );
    ZU_ASSERT( csc );
    ZU_ASSERT( chars );
    ZU_ASSERT( charCount > 0 );
    zuUnicodeNormalizerWriteChars( csc->normalizer, chars, charCount );
    return mapCharSinkPut( csc );
}

static ZU_BOOL mapCharSinkFlush( ZU_OBJ *closure )
{
    ZU___CHARSET_MAP_CHAR_SINK_CLOSURE *csc = mapCharSinkFrom( closure );
    ZU_ASSERT( csc );
    zuUnicodeNormalizerFlush( csc->normalizer );
    (void)mapCharSinkPut( csc ); // only what the byte sink says of the rest counts
    return zu___CharsetOutputFlush( &csc->output );
}

ZU_CHAR_SINK *zu___CharsetMapCharSinkCreate( ZU_BYTE_SINK *byteSink, ZU_CHARSET_FLAGS flags,
                                             ZU___CHARSET_MAP_CHAR_TO_BYTE_FUNC mapFunc )
{
    ZU_ASSERT( byteSink );
    ZU_ASSERT( mapFunc );
    ZU___CHARSET_MAP_CHAR_SINK_CLOSURE *csc = (ZU___CHARSET_MAP_CHAR_SINK_CLOSURE *)zu___ObjCreate(
        sizeof( ZU___CHARSET_MAP_CHAR_SINK_CLOSURE ), &zu___sort_ZU___CHARSET_MAP_CHAR_SINK_CLOSURE );
    csc->flags = flags;
    csc->mapFunc = mapFunc;
    if ( !mapFunc( ZU_CHAR_REPLACEMENT_CHARACTER, &csc->replacement ) &&
         !mapFunc( ZU_CHAR_QUESTION_MARK, &csc->replacement ) ) {
        csc->replacement = 0;
    }
    csc->normalizer = nullptr;
    csc->normalizer = zuUnicodeNormalizerCreate( ZU_UNICODE_NORMAL_FORM_NFC );
    zu___CharsetOutputBegin( &csc->output, byteSink );
    ZU_CHAR_SINK *result = zu___CharSinkCreate( mapCharSinkWrite, mapCharSinkFlush, &csc->obj );
    ZU_REF_RELEASE( csc );
    return result;
}
