// ASCII: the characters up to 127 are their own bytes.
#include "zu/charset/zu_charset_map.h"

static constexpr ZU_CHAR CHARACTERS = 0x80;

ZU_BOOL zu___CharsetAsciiMapByteToChar( uint8_t byte, ZU_CHAR *charOut )
{
    ZU_ASSERT( charOut );
    if ( byte >= CHARACTERS ) {
        return ZU_FALSE;
    }
    *charOut = byte;
    return ZU_TRUE;
}
ZU_BOOL zu___CharsetAsciiMapCharToByte( ZU_CHAR ch, uint8_t *byteOut )
{
    ZU_ASSERT( byteOut );
    if ( ch >= CHARACTERS ) {
        return ZU_FALSE;
    }
    *byteOut = (uint8_t)ch;
    return ZU_TRUE;
}
