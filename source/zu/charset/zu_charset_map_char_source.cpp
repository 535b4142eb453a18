// The set's function is asked once for each byte, when the source is made: from there on decoding is a lookup.

#include "zu/charset/zu_charset_closure_internal.h"
#include "zu/charset/zu_charset_map.h"

static constexpr ZU_CHAR UNDEFINED = 0xFFFFFFFF; // no character of any set
static constexpr ZU_CHAR UNDEFINED_BIT = 0x80000000;
static constexpr ZU_INT BLOCK = 16; // bytes decoded at once

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

// Decodes up to `count` bytes, as far as they are defined; returns how many.
static ZU_INT mapCharSourceTake( const ZU___CHARSET_MAP_CHAR_SOURCE_CLOSURE *csc, const uint8_t *bytes, ZU_CHAR *chars,
                                 ZU_INT count )
{
    ZU_INT taken = 0;
    // What is undefined alone has the highest bit, so that many lookups need one test.
    for ( ; count - taken >= BLOCK; taken += BLOCK ) {
        ZU_CHAR all = 0;
        for ( ZU_INT i = 0; i < BLOCK; i++ ) {
            ZU_CHAR ch = csc->chars[ bytes[ taken + i ] ];
            chars[ taken + i ] = ch;
            all |= ch;
        }
        if ( ZU___UNLIKELY( all & UNDEFINED_BIT ) ) {
            break;
        }
    }
    for ( ZU_CHAR ch; taken < count && ( ch = csc->chars[ bytes[ taken ] ] ) != UNDEFINED; taken++ ) {
        chars[ taken ] = ch;
    }
    return taken;
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
        ZU_INT taken = mapCharSourceTake( csc, bytes, chars + i, count );
        i += taken;
        input->pos += taken;
        if ( taken < count ) {
            input->pos++; // what the set does not define
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
