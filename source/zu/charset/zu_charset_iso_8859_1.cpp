// ISO 8859-1: the characters up to 255 are their own bytes.
#include "zu/charset/zu_charset_map.h"

ZU_BOOL zu___CharsetIso8859_1MapByteToChar( uint8_t byte, ZU_CHAR *charOut )
{
    ZU_ASSERT( charOut );
    *charOut = byte;
    return ZU_TRUE;
}
ZU_BOOL zu___CharsetIso8859_1MapCharToByte( ZU_CHAR ch, uint8_t *byteOut )
{
    ZU_ASSERT( byteOut );
    if ( ch > UINT8_MAX ) {
        return ZU_FALSE;
    }
    *byteOut = (uint8_t)ch;
    return ZU_TRUE;
}
