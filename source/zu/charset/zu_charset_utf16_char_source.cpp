// UTF-16 to characters, by the steps of zu_charset_wide_internal.h.

#include "zu/charset/zu_charset_utf.h"
#include "zu/charset/zu_charset_wide_internal.h"

static constexpr int UNIT_BYTES = 2;

typedef ZU___CHARSET_WIDE_SOURCE ZU___CHARSET_UTF16_CHAR_SOURCE_CLOSURE;

static void utf16CharSourceFree( ZU_OBJ *thisObj );
ZU___CHARSET_CLOSURE( ZU___CHARSET_UTF16_CHAR_SOURCE_CLOSURE, utf16CharSource )

static void utf16CharSourceFree( ZU_OBJ *thisObj )
{
    ZU___CHARSET_UTF16_CHAR_SOURCE_CLOSURE *csc = utf16CharSourceFrom( thisObj );
    ZU_ASSERT( csc );
    zu___CharsetInputEnd( &csc->input );
}

static ZU_BOOL utf16CharSourceRead( ZU_OBJ *closure, ZU_CHAR *chars, ZU_INT charCount, ZU_INT *charsRead )
{
    ZU___CHARSET_UTF16_CHAR_SOURCE_CLOSURE *csc = utf16CharSourceFrom( closure );
    ZU_ASSERT( csc );
    ZU_ASSERT( charCount >= 0 );
    ZU_ASSERT( chars || charCount == 0 );
    ZU_ASSERT( charsRead );
    return zu___CharsetWideRead<UNIT_BYTES>( csc, chars, charCount, charsRead );
}

// Creation
static ZU_CHAR_SOURCE *utf16CharSourceCreate( ZU_BYTE_SOURCE *byteSource, ZU_CHARSET_FLAGS flags, ZU_BOOL littleEndian )
{
    return zu___CharsetWideSourceCreate( byteSource, flags, littleEndian,
                                         &zu___sort_ZU___CHARSET_UTF16_CHAR_SOURCE_CLOSURE, utf16CharSourceRead );
}
ZU_CHAR_SOURCE *zu___CharsetUtf16CharSourceCreate( ZU_BYTE_SOURCE *byteSource, ZU_CHARSET_FLAGS flags )
{
    return utf16CharSourceCreate( byteSource, flags, ZU_TRUE );
}
// Whoever names the order of the bytes gets a mark as a character.
ZU_CHAR_SOURCE *zu___CharsetUtf16BECharSourceCreate( ZU_BYTE_SOURCE *byteSource, ZU_CHARSET_FLAGS flags )
{
    return utf16CharSourceCreate( byteSource, flags | ZU_CHARSET_FLAG_IGNORE_BYTE_ORDER_MARK, ZU_FALSE );
}
ZU_CHAR_SOURCE *zu___CharsetUtf16LECharSourceCreate( ZU_BYTE_SOURCE *byteSource, ZU_CHARSET_FLAGS flags )
{
    return utf16CharSourceCreate( byteSource, flags | ZU_CHARSET_FLAG_IGNORE_BYTE_ORDER_MARK, ZU_TRUE );
}
