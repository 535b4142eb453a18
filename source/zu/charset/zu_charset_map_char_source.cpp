// The set's function is asked once for each byte that comes: from there on decoding is a lookup.

#include "zu/charset/zu_charset_closure_internal.h"
#include "zu/charset/zu_charset_map.h"
#include "zu/charset/zu_charset_map_take_internal.h"

#include <cstring>

// What is no character of any set.
static constexpr ZU_CHAR UNKNOWN = 0xFFFFFFFF;   // the set's function has not been asked
static constexpr ZU_CHAR UNDEFINED = 0x80000000; // there is no such byte, and nothing replaces it
static constexpr ZU_CHAR ASCII_END = 0x80;
static_assert( UNKNOWN & UNDEFINED & ZU___CHARSET_NO_CHARACTER );

struct ZU___CHARSET_MAP_CHAR_SOURCE_CLOSURE {
    ZU_OBJ obj;
    ZU_CHARSET_FLAGS flags; // normalised
    ZU___CHARSET_MAP_BYTE_TO_CHAR_FUNC mapFunc;
    ZU_CHAR undefined;    // stands for bytes that the set does not define: U+FFFD, or UNDEFINED
    bool asciiAsked;      // it has been looked at whether
    bool keepsAscii;      // the bytes of ASCII are the characters
    ZU_CHAR chars[ 256 ]; // by byte; UNKNOWN, or what becomes of it
    ZU___CHARSET_INPUT input;
};

static void mapCharSourceFree( ZU_OBJ *thisObj );
ZU___CHARSET_CLOSURE( ZU___CHARSET_MAP_CHAR_SOURCE_CLOSURE, mapCharSource )

static void mapCharSourceFree( ZU_OBJ *thisObj )
{
    ZU___CHARSET_MAP_CHAR_SOURCE_CLOSURE *csc = mapCharSourceFrom( thisObj );
    ZU_ASSERT( csc );
    zu___CharsetInputEnd( &csc->input );
}

// Asks what becomes of `byte`, and notes that.
static ZU_CHAR mapCharSourceAsk( ZU___CHARSET_MAP_CHAR_SOURCE_CLOSURE *csc, uint8_t byte )
{
    ZU_CHAR ch;
    if ( !csc->mapFunc( byte, &ch ) ) {
        ch = csc->undefined;
    }
    csc->chars[ byte ] = ch;
    return ch;
}
static void mapCharSourceAskAscii( ZU___CHARSET_MAP_CHAR_SOURCE_CLOSURE *csc )
{
    csc->asciiAsked = true;
    csc->keepsAscii = true;
    for ( uint8_t byte = 0; byte < ASCII_END; byte++ ) {
        csc->keepsAscii &= mapCharSourceAsk( csc, byte ) == byte;
    }
}

static ZU_BOOL mapCharSourceRead( ZU_OBJ *closure, ZU_CHAR *chars, ZU_INT charCount, ZU_INT *charsRead )
{
    ZU___CHARSET_MAP_CHAR_SOURCE_CLOSURE *csc = mapCharSourceFrom( closure );
    ZU_ASSERT( csc );
    ZU_ASSERT( charCount >= 0 );
    ZU_ASSERT( chars || charCount == 0 );
    ZU_ASSERT( charsRead );
    ZU___CHARSET_INPUT *input = &csc->input;
    ZU_INT i = 0;
    while ( i < charCount ) {
        if ( !zu___CharsetInputReady( input ) ) {
            *charsRead = i;
            return !zuByteSourceError( input->byteSource );
        }
        const uint8_t *bytes = input->bytes + input->pos;
        ZU_INT count = zuIntMin( input->length - input->pos, charCount - i );
        if ( !csc->asciiAsked && count >= (ZU_INT)ASCII_END ) { // a shorter text is not worth the questions
            mapCharSourceAskAscii( csc );
        }
        ZU_INT taken = zu___CharsetMapTake( csc->chars, csc->keepsAscii, bytes, chars + i, count );
        i += taken;
        input->pos += taken;
        if ( taken < count ) {
            ZU_CHAR ch = csc->chars[ bytes[ taken ] ];
            if ( ch == UNKNOWN ) {
                ch = mapCharSourceAsk( csc, bytes[ taken ] );
            }
            input->pos++;
            if ( ch != UNDEFINED ) {
                chars[ i++ ] = ch;
            } else if ( csc->flags & ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER ) {
                *charsRead = i;
                return ZU_FALSE;
            }
        }
    }
    ZU_ASSERT( i == charCount );
    *charsRead = i;
    return ZU_TRUE;
}

ZU_CHAR_SOURCE *zu___CharsetMapCharSourceCreate( ZU_BYTE_SOURCE *byteSource, ZU_CHARSET_FLAGS flags,
                                                 ZU___CHARSET_MAP_BYTE_TO_CHAR_FUNC mapFunc )
{
    ZU_ASSERT( byteSource );
    ZU_ASSERT( mapFunc );
    ZU___CHARSET_MAP_CHAR_SOURCE_CLOSURE *csc = (ZU___CHARSET_MAP_CHAR_SOURCE_CLOSURE *)zu___ObjCreate(
        sizeof( ZU___CHARSET_MAP_CHAR_SOURCE_CLOSURE ), &zu___sort_ZU___CHARSET_MAP_CHAR_SOURCE_CLOSURE );
    csc->flags = flags;
    csc->mapFunc = mapFunc;
    bool replaces =
        !( flags & ( ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER | ZU_CHARSET_FLAG_IGNORE_INVALID_CHARACTERS ) );
    csc->undefined = replaces ? ZU_CHAR_REPLACEMENT_CHARACTER : UNDEFINED;
    csc->asciiAsked = false;
    csc->keepsAscii = false;
    static_assert( UNKNOWN == 0xFFFFFFFF );
    memset( csc->chars, 0xFF, sizeof csc->chars );
    zu___CharsetInputBegin( &csc->input, byteSource );
    ZU_CHAR_SOURCE *result = zu___CharSourceCreate( mapCharSourceRead, &csc->obj );
    ZU_REF_RELEASE( csc );
    return result;
}
