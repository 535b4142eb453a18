// All text goes through a normalizer first, so that a character which the set has composed is found also where it comes
// in parts.  What the normalizer has settled is mapped at once.

#include "zu/charset/zu_charset_closure_internal.h"
#include "zu/charset/zu_charset_map.h"
#include "zu/sys/zu_mem.h"
#include "zu/unicode/zu_unicode_normalizer.h"

static constexpr ZU_INT BLOCK_CHARS = 256; // taken from the normalizer at a time
static constexpr ZU_INT STEP = 8;          // characters mapped at once
static constexpr ZU_CHAR ASCII_END = 0x80;

// What the set's function says of the 256 characters of a row; it is asked about a whole row when the first of them comes,
// which is quicker than a call for each character of a text.
static constexpr ZU_CHAR ROW_CHARS = 256;
static constexpr ZU_CHAR ROWS = 256; // those of the BMP
static constexpr uint16_t UNMAPPED = 0xFFFF;
static constexpr uint16_t UNMAPPED_BIT = 0x8000; // which no byte has
struct MAP_ROW {
    uint16_t bytes[ ROW_CHARS ]; // of characters that the set lacks, `lacking` of the closure
};
// Stands for all rows that nobody has asked about, and for those beyond the BMP.
static constexpr MAP_ROW UNKNOWN_ROW = [] {
    MAP_ROW row = {};
    for ( uint16_t &byte : row.bytes ) {
        byte = UNMAPPED;
    }
    return row;
}();

struct ZU___CHARSET_MAP_CHAR_SINK_CLOSURE {
    ZU_OBJ obj;
    ZU_CHARSET_FLAGS flags; // normalised
    ZU___CHARSET_MAP_CHAR_TO_BYTE_FUNC mapFunc;
    uint16_t lacking;                  // stands for characters that the set lacks: the replacement, or UNMAPPED
    bool keepsAscii;                   // the set's ASCII is known, and its bytes are the characters
    ZU_UNICODE_NORMALIZER *normalizer; // to NFC
    const MAP_ROW *rows[ ROWS ];       // never null: UNKNOWN_ROW, or one of zuMemAlloc
    ZU___CHARSET_OUTPUT output;
};

static void mapCharSinkFree( ZU_OBJ *thisObj );
ZU___CHARSET_CLOSURE( ZU___CHARSET_MAP_CHAR_SINK_CLOSURE, mapCharSink )

static void mapCharSinkFree( ZU_OBJ *thisObj )
{
    ZU___CHARSET_MAP_CHAR_SINK_CLOSURE *csc = mapCharSinkFrom( thisObj );
    ZU_ASSERT( csc );
    for ( ZU_CHAR i = 0; i < ROWS; i++ ) {
        if ( csc->rows[ i ] != &UNKNOWN_ROW ) {
            zuMemFree( const_cast<MAP_ROW *>( csc->rows[ i ] ) );
        }
    }
    ZU_REF_RELEASE( csc->normalizer );
    ZU_REF_POISON( csc->normalizer );
    zu___CharsetOutputEnd( &csc->output );
}

static const MAP_ROW *mapRowFind( const ZU___CHARSET_MAP_CHAR_SINK_CLOSURE *csc, ZU_CHAR ch )
{
    ZU_CHAR number = ch / ROW_CHARS;
    return number < ROWS ? csc->rows[ number ] : &UNKNOWN_ROW;
}
// Asks about the row of `ch`; false if that has been done, or the set can have none.
static bool mapRowLearn( ZU___CHARSET_MAP_CHAR_SINK_CLOSURE *csc, ZU_CHAR ch )
{
    ZU_CHAR number = ch / ROW_CHARS;
    if ( number >= ROWS || csc->rows[ number ] != &UNKNOWN_ROW ) {
        return false;
    }
    MAP_ROW *row = (MAP_ROW *)zuMemAlloc( sizeof( MAP_ROW ) );
    for ( ZU_CHAR i = 0; i < ROW_CHARS; i++ ) {
        uint8_t byte;
        row->bytes[ i ] = csc->mapFunc( number * ROW_CHARS + i, &byte ) ? byte : csc->lacking;
    }
    csc->rows[ number ] = row;
    if ( number == 0 ) {
        ZU_CHAR kept = 0;
        while ( kept < ASCII_END && row->bytes[ kept ] == kept ) {
            kept++;
        }
        csc->keepsAscii = kept == ASCII_END;
    }
    return true;
}

// Maps up to `count` characters, as far as it is known what becomes of them; returns how many.
static ZU_INT mapCharSinkTake( const ZU___CHARSET_MAP_CHAR_SINK_CLOSURE *csc, const ZU_CHAR *chars, uint8_t *bytes,
                               ZU_INT count )
{
    ZU_INT taken = 0;
    for ( ; count - taken >= STEP; taken += STEP ) {
        const ZU_CHAR *from = chars + taken;
        uint8_t *to = bytes + taken;
        ZU_CHAR bits = 0;
        for ( ZU_INT i = 0; i < STEP; i++ ) {
            bits |= from[ i ];
        }
        if ( bits < ASCII_END && csc->keepsAscii ) {
            for ( ZU_INT i = 0; i < STEP; i++ ) {
                to[ i ] = (uint8_t)from[ i ];
            }
            continue;
        }
        if ( ZU___UNLIKELY( bits / ROW_CHARS >= ROWS ) ) {
            break;
        }
        // What is unmapped alone has the highest bit, so that many lookups need one test.
        uint16_t all = 0;
        auto put = [ csc, from, to, &all ]( ZU_INT i ) {
            uint16_t byte = csc->rows[ from[ i ] / ROW_CHARS ]->bytes[ from[ i ] % ROW_CHARS ];
            to[ i ] = (uint8_t)byte;
            all |= byte;
        };
        for ( ZU_INT i = 0; i < STEP; i += 4 ) { // written out, which the compiler does not do
            put( i );
            put( i + 1 );
            put( i + 2 );
            put( i + 3 );
        }
        if ( ZU___UNLIKELY( all & UNMAPPED_BIT ) ) {
            break;
        }
    }
    for ( ; taken < count; taken++ ) {
        uint16_t byte = mapRowFind( csc, chars[ taken ] )->bytes[ chars[ taken ] % ROW_CHARS ];
        if ( byte == UNMAPPED ) {
            break;
        }
        bytes[ taken ] = (uint8_t)byte;
    }
    return taken;
}

// Maps settled text.  Returns whether all of it was taken; at a stop `*ok` tells whether a full cache has gone out.
static bool mapCharSinkPutChars( ZU___CHARSET_MAP_CHAR_SINK_CLOSURE *csc, const ZU_CHAR *chars, ZU_INT count,
                                 ZU_BOOL *ok )
{
    ZU___CHARSET_OUTPUT *output = &csc->output;
    for ( ZU_INT i = 0; i < count; ) {
        ZU_INT room = zuIntMin( count - i, ZU___CHARSET_OUTPUT_BYTES - output->used );
        ZU_INT taken = mapCharSinkTake( csc, chars + i, output->bytes + output->used, room );
        output->used += taken;
        i += taken;
        if ( taken < room ) {
            if ( mapRowLearn( csc, chars[ i ] ) ) {
                continue;
            }
            if ( csc->flags & ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER ) {
                return false;
            }
            if ( csc->lacking != UNMAPPED ) {
                output->bytes[ output->used++ ] = (uint8_t)csc->lacking;
            }
            i++;
        }
        if ( output->used == ZU___CHARSET_OUTPUT_BYTES ) {
            *ok = zu___CharsetOutputFlush( output );
            if ( !*ok ) {
                return false;
            }
        }
    }
    return true;
}

// Maps what the normalizer has settled.  A stop drops the rest of it; it is a failure unless a full cache has gone out
// before in this same text, in which case the sink goes on.  That is the contract, odd as it is.
static ZU_BOOL mapCharSinkPut( ZU___CHARSET_MAP_CHAR_SINK_CLOSURE *csc )
{
    ZU_BOOL ok = ZU_FALSE; // what a stop yields
    bool taken = true;
    ZU_CHAR chars[ BLOCK_CHARS ];
    ZU_INT count;
    while ( ( count = zuUnicodeNormalizerReadChars( csc->normalizer, chars, BLOCK_CHARS ) ) > 0 ) {
        taken = taken && mapCharSinkPutChars( csc, chars, count, &ok );
    }
    return taken || ok;
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
    csc->lacking = UNMAPPED;
    if ( !( flags & ( ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER | ZU_CHARSET_FLAG_IGNORE_INVALID_CHARACTERS ) ) ) {
        uint8_t byte;
        csc->lacking =
            mapFunc( ZU_CHAR_REPLACEMENT_CHARACTER, &byte ) || mapFunc( ZU_CHAR_QUESTION_MARK, &byte ) ? byte : 0;
    }
    csc->keepsAscii = false;
    for ( ZU_CHAR i = 0; i < ROWS; i++ ) {
        csc->rows[ i ] = &UNKNOWN_ROW;
    }
    csc->normalizer = nullptr;
    csc->normalizer = zuUnicodeNormalizerCreate( ZU_UNICODE_NORMAL_FORM_NFC );
    zu___CharsetOutputBegin( &csc->output, byteSink );
    ZU_CHAR_SINK *result = zu___CharSinkCreate( mapCharSinkWrite, mapCharSinkFlush, &csc->obj );
    ZU_REF_RELEASE( csc );
    return result;
}
