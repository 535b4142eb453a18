// zu_charset_map_internal.h: the tables of the mapped sets, and how they are read.
#pragma once

#include "zu/charset/zu_charset_map.h"

// A set.  Characters lie in the BMP; those of one row of 256 share a block of bytes.  There are no pointers in it, so
// that nothing is relocated.
static constexpr uint16_t ZU___CHARSET_MAP_UNDEFINED = 0xFFFF;
template <int blockCount>
struct ZU___CHARSET_MAP {
    uint16_t chars[ 256 ];              // by byte; ZU___CHARSET_MAP_UNDEFINED: the set has no such byte
    uint8_t blocks[ 256 ];              // by row: the number of its block; block 0 is empty
    uint8_t bytes[ blockCount ][ 256 ]; // by block and character in the row; 0: none, unless for U+0000
};

// Defines the two functions of the set `name` on the table `map`.
#define ZU___CHARSET_MAP_DEFINE( name )                                                       \
    ZU_BOOL zu___Charset##name##MapByteToChar( uint8_t byte, ZU_CHAR *charOut )               \
    {                                                                                         \
        ZU_ASSERT( charOut );                                                                 \
        if ( map.chars[ byte ] == ZU___CHARSET_MAP_UNDEFINED ) {                              \
            return ZU_FALSE;                                                                  \
        }                                                                                     \
        *charOut = map.chars[ byte ];                                                         \
        return ZU_TRUE;                                                                       \
    }                                                                                         \
    ZU_BOOL zu___Charset##name##MapCharToByte( ZU_CHAR ch, uint8_t *byteOut )                 \
    {                                                                                         \
        ZU_ASSERT( byteOut );                                                                 \
        uint8_t byte = ch > UINT16_MAX ? 0 : map.bytes[ map.blocks[ ch >> 8 ] ][ ch & 0xFF ]; \
        if ( byte == 0 && ch != 0 ) {                                                         \
            return ZU_FALSE;                                                                  \
        }                                                                                     \
        *byteOut = byte;                                                                      \
        return ZU_TRUE;                                                                       \
    }
