// All text goes through a normalizer first, so that a character which the set has composed is found also where it comes
// in parts.  What the normalizer has settled is mapped at once.

#include "zu/charset/zu_charset_closure_internal.h"
#include "zu/charset/zu_charset_map.h"
#include "zu/charset/zu_charset_map_take_internal.h"
#include "zu/sys/zu_mem.h"
#include "zu/unicode/zu_unicode_normalizer.h"

#include <cstring>

static constexpr ZU_INT BLOCK_CHARS = 256; // taken from the normalizer at a time
static constexpr ZU_INT STEP = 8;          // characters mapped at once
static constexpr ZU_CHAR ASCII_END = 0x80;

// What becomes of the 256 characters of a row: a byte, or one of these two.  Characters beyond the BMP are in no row.
static constexpr uint16_t UNKNOWN = 0xFFFF;  // the set's function has not been asked
static constexpr uint16_t UNMAPPED = 0x8000; // it is lacking, and nothing replaces it
static constexpr uint16_t NO_BYTE = 0x8000;  // a bit that these alone have
static constexpr ZU_CHAR ROW_CHARS = 256;
static constexpr ZU_CHAR ROWS = 256;
struct MAP_ROW {
    uint16_t bytes[ ROW_CHARS ];
    MAP_ROW *next; // of those that a sink has made
};
// Stands for all rows that nobody has asked about.
static constexpr MAP_ROW UNKNOWN_ROW = [] {
    MAP_ROW row = {};
    for ( uint16_t &byte : row.bytes ) {
        byte = UNKNOWN;
    }
    return row;
}();

struct ZU___CHARSET_MAP_CHAR_SINK_CLOSURE {
    ZU_OBJ obj;
    ZU_CHARSET_FLAGS flags; // normalised
    ZU___CHARSET_MAP_CHAR_TO_BYTE_FUNC mapFunc;
    uint16_t lacking;                  // stands for characters that the set lacks: the replacement, or UNMAPPED
    bool asciiAsked;                   // it has been looked at whether
    bool keepsAscii;                   // the bytes of ASCII are the characters
    ZU_UNICODE_NORMALIZER *normalizer; // to NFC
    const MAP_ROW *rows[ ROWS ];       // never null: UNKNOWN_ROW, or one of these:
    MAP_ROW *made;                     // by zuMemAlloc; null: none
    ZU___CHARSET_OUTPUT output;
};

static void mapCharSinkFree( ZU_OBJ *thisObj );
ZU___CHARSET_CLOSURE( ZU___CHARSET_MAP_CHAR_SINK_CLOSURE, mapCharSink )

static void mapCharSinkFree( ZU_OBJ *thisObj )
{
    ZU___CHARSET_MAP_CHAR_SINK_CLOSURE *csc = mapCharSinkFrom( thisObj );
    ZU_ASSERT( csc );
    while ( MAP_ROW *row = csc->made ) {
        csc->made = row->next;
        zuMemFree( row );
    }
    ZU_REF_RELEASE( csc->normalizer );
    ZU_REF_POISON( csc->normalizer );
    zu___CharsetOutputEnd( &csc->output );
}

// Asks what becomes of `ch`, and notes that.
static uint16_t mapCharSinkAsk( ZU___CHARSET_MAP_CHAR_SINK_CLOSURE *csc, ZU_CHAR ch )
{
    uint8_t mapped;
    uint16_t byte = csc->mapFunc( ch, &mapped ) ? mapped : csc->lacking;
    if ( ch / ROW_CHARS < ROWS ) {
        const MAP_ROW **row = &csc->rows[ ch / ROW_CHARS ];
        if ( *row == &UNKNOWN_ROW ) {
            MAP_ROW *made = (MAP_ROW *)memcpy( zuMemAlloc( sizeof( MAP_ROW ) ), &UNKNOWN_ROW, sizeof( MAP_ROW ) );
            made->next = csc->made;
            csc->made = made;
            *row = made;
        }
        const_cast<MAP_ROW *>( *row )->bytes[ ch % ROW_CHARS ] = byte;
    }
    return byte;
}
static void mapCharSinkAskAscii( ZU___CHARSET_MAP_CHAR_SINK_CLOSURE *csc )
{
    csc->asciiAsked = true;
    csc->keepsAscii = true;
    for ( ZU_CHAR ch = 0; ch < ASCII_END; ch++ ) {
        csc->keepsAscii &= mapCharSinkAsk( csc, ch ) == ch;
    }
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
        if ( !zu___CharsetLookUp<STEP>( to, NO_BYTE, [ = ]( ZU_INT i ) {
                 return csc->rows[ from[ i ] / ROW_CHARS ]->bytes[ from[ i ] % ROW_CHARS ];
             } ) ) {
            break;
        }
    }
    for ( ; taken < count && chars[ taken ] / ROW_CHARS < ROWS; taken++ ) {
        uint16_t byte = csc->rows[ chars[ taken ] / ROW_CHARS ]->bytes[ chars[ taken ] % ROW_CHARS ];
        if ( byte & NO_BYTE ) {
            break;
        }
        bytes[ taken ] = (uint8_t)byte;
    }
    return taken;
}

// Maps settled text.  Returns whether all of it was taken; at a stop `*ok` tells whether a full cache has gone out.
static bool mapCharSinkPutChars( ZU___CHARSET_MAP_CHAR_SINK_CLOSURE *csc, const ZU_CHAR *chars, ZU_INT srcLength,
                                 ZU_BOOL *ok )
{
    ZU___CHARSET_OUTPUT *output = &csc->output;
    if ( !csc->asciiAsked && srcLength >= (ZU_INT)ASCII_END ) { // a shorter text is not worth the questions
        mapCharSinkAskAscii( csc );
    }
    ZU_INT i = 0;
    while ( i < srcLength ) {
        ZU_INT room = zuIntMin( srcLength - i, ZU___CHARSET_OUTPUT_BYTES - output->used );
        ZU_INT taken = mapCharSinkTake( csc, chars + i, output->bytes + output->used, room );
        output->used += taken;
        i += taken;
        if ( taken < room ) {
            ZU_CHAR ch = chars[ i ];
            uint16_t byte = ch / ROW_CHARS < ROWS ? csc->rows[ ch / ROW_CHARS ]->bytes[ ch % ROW_CHARS ] : UNKNOWN;
            if ( byte == UNKNOWN ) {
                byte = mapCharSinkAsk( csc, ch );
            }
            if ( byte != UNMAPPED ) {
                output->bytes[ output->used++ ] = (uint8_t)byte;
            } else if ( csc->flags & ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER ) {
                return false;
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
    ZU_ASSERT( i == srcLength );
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
    csc->asciiAsked = false;
    csc->keepsAscii = false;
    csc->made = nullptr;
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
