// The set's function is asked once for each byte, when the source is made: from there on decoding is a lookup.

#include "zu/charset/zu_charset_closure_internal.h"
#include "zu/charset/zu_charset_map.h"

static constexpr ZU_CHAR UNDEFINED = 0xFFFFFFFF; // no character of any set

struct ZU___CHARSET_MAP_CHAR_SOURCE_CLOSURE {
    ZU_OBJ obj;
    ZU_CHARSET_FLAGS flags; // normalised
    ZU_CHAR chars[ 256 ];   // by byte
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
        ZU_INT end = i + zuIntMin( input->length - input->pos, charCount - i );
        ZU_CHAR ch = 0;
        while ( i < end && ( ch = csc->chars[ input->bytes[ input->pos++ ] ] ) != UNDEFINED ) {
            chars[ i++ ] = ch;
        }
        if ( ch == UNDEFINED ) {
            if ( csc->flags & ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER ) {
                *charsRead = i;
                return ZU_FALSE;
            }
            if ( !( csc->flags & ZU_CHARSET_FLAG_IGNORE_INVALID_CHARACTERS ) ) {
                chars[ i++ ] = ZU_CHAR_REPLACEMENT_CHARACTER;
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
    for ( int byte = 0; byte < 256; byte++ ) {
        if ( !mapFunc( (uint8_t)byte, &csc->chars[ byte ] ) ) {
            csc->chars[ byte ] = UNDEFINED;
        }
    }
    zu___CharsetInputBegin( &csc->input, byteSource );
    ZU_CHAR_SOURCE *result = zu___CharSourceCreate( mapCharSourceRead, &csc->obj );
    ZU_REF_RELEASE( csc );
    return result;
}
