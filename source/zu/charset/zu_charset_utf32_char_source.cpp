// UTF-32 to characters, by the steps of zu_charset_wide_internal.h.

#include "zu/charset/zu_charset_utf.h"
#include "zu/charset/zu_charset_wide_internal.h"

static constexpr int UNIT_BYTES = 4;

typedef ZU___CHARSET_WIDE_SOURCE ZU___CHARSET_UTF32_CHAR_SOURCE_CLOSURE;

static void utf32CharSourceFree( ZU_OBJ *thisObj );
ZU___CHARSET_CLOSURE( ZU___CHARSET_UTF32_CHAR_SOURCE_CLOSURE, utf32CharSource )

static void utf32CharSourceFree( ZU_OBJ *thisObj )
{
    ZU___CHARSET_UTF32_CHAR_SOURCE_CLOSURE *csc = utf32CharSourceFrom( thisObj );
    ZU_ASSERT( csc );
    zu___CharsetInputEnd( &csc->input );
}

static ZU_BOOL utf32CharSourceRead( ZU_OBJ *closure, ZU_CHAR *chars, ZU_INT charCount, ZU_INT *charsRead )
{
    ZU___CHARSET_UTF32_CHAR_SOURCE_CLOSURE *csc = utf32CharSourceFrom( closure );
    ZU_ASSERT( csc );
    ZU_ASSERT( charCount >= 0 );
    ZU_ASSERT( chars || charCount == 0 );
    ZU_ASSERT( charsRead );
    return zu___CharsetWideRead<UNIT_BYTES>( csc, chars, charCount, charsRead );
}

// Creation
static ZU_CHAR_SOURCE *utf32CharSourceCreate( ZU_BYTE_SOURCE *byteSource, ZU_CHARSET_FLAGS flags, ZU_BOOL littleEndian )
{
    return zu___CharsetWideSourceCreate( byteSource, flags, littleEndian,
                                         &zu___sort_ZU___CHARSET_UTF32_CHAR_SOURCE_CLOSURE, utf32CharSourceRead );
}
ZU_CHAR_SOURCE *zu___CharsetUtf32CharSourceCreate( ZU_BYTE_SOURCE *byteSource, ZU_CHARSET_FLAGS flags )
{
    return utf32CharSourceCreate( byteSource, flags, ZU_TRUE );
}
// Whoever names the order of the bytes gets a mark as a character.
ZU_CHAR_SOURCE *zu___CharsetUtf32BECharSourceCreate( ZU_BYTE_SOURCE *byteSource, ZU_CHARSET_FLAGS flags )
{
    return utf32CharSourceCreate( byteSource, flags | ZU_CHARSET_FLAG_IGNORE_BYTE_ORDER_MARK, ZU_FALSE );
}
ZU_CHAR_SOURCE *zu___CharsetUtf32LECharSourceCreate( ZU_BYTE_SOURCE *byteSource, ZU_CHARSET_FLAGS flags )
{
    return utf32CharSourceCreate( byteSource, flags | ZU_CHARSET_FLAG_IGNORE_BYTE_ORDER_MARK, ZU_TRUE );
}
