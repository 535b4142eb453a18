// zu_charset_map_internal.h: the tables of the mapped sets, and how they are read.
#pragma once

#include "zu/charset/zu_charset_map.h"

// A set.  Characters lie in the BMP; those of one row of 256 share a block of bytes.  There are no pointers in it, so
// that nothing is relocated.
static constexpr uint16_t ZU___CHARSET_MAP_UNDEFINED = 0xFFFF;
template <int BLOCKS>
struct ZU___CHARSET_MAP {
    uint16_t chars[ 256 ];          // by byte; ZU___CHARSET_MAP_UNDEFINED: the set has no such byte
    uint8_t blocks[ 256 ];          // by row: the number of its block; block 0 is empty
    uint8_t bytes[ BLOCKS ][ 256 ]; // by block and character in the row; 0: none, unless for U+0000
};

// The characters of a set by byte.
struct ZU___CHARSET_MAP_CHARS {
    uint16_t byByte[ 256 ];
};
// Completes the characters of the last bytes: the bytes ahead of them stand for the characters of the same number.
template <int COUNT>
static constexpr ZU___CHARSET_MAP_CHARS zu___CharsetMapComplete( const uint16_t ( &lastChars )[ COUNT ] )
{
    ZU___CHARSET_MAP_CHARS chars = {};
    for ( int byte = 0; byte < 256; byte++ ) {
        int idx = byte - ( 256 - COUNT );
        chars.byByte[ byte ] = idx < 0 ? (uint16_t)byte : lastChars[ idx ];
    }
    return chars;
}

// Numbers the rows of which there are characters in `chars`, from 1 on; returns one more than there are.
static constexpr int zu___CharsetMapNumberBlocks( const uint16_t ( &chars )[ 256 ], uint8_t ( &blocks )[ 256 ] )
{
    for ( uint16_t ch : chars ) {
        blocks[ ch >> 8 ] = ch != ZU___CHARSET_MAP_UNDEFINED || blocks[ ch >> 8 ];
    }
    int count = 1;
    for ( uint8_t &block : blocks ) {
        if ( block ) {
            block = (uint8_t)count++;
        }
    }
    return count;
}
static constexpr int zu___CharsetMapCountBlocks( const uint16_t ( &chars )[ 256 ] )
{
    uint8_t blocks[ 256 ] = {};
    return zu___CharsetMapNumberBlocks( chars, blocks );
}
// Makes a set of its characters by byte.  Where several bytes stand for one character, the lowest is the character's.
template <int BLOCKS>
static constexpr ZU___CHARSET_MAP<BLOCKS> zu___CharsetMapMake( const uint16_t ( &chars )[ 256 ] )
{
    ZU___CHARSET_MAP<BLOCKS> map = {};
    zu___CharsetMapNumberBlocks( chars, map.blocks );
    for ( int byte = 255; byte >= 0; byte-- ) {
        uint16_t ch = chars[ byte ];
        map.chars[ byte ] = ch;
        if ( ch != ZU___CHARSET_MAP_UNDEFINED ) {
            map.bytes[ map.blocks[ ch >> 8 ] ][ ch & 0xFF ] = (uint8_t)byte;
        }
    }
    return map;
}

// Defines the two functions of the set `name` with the characters `lastChars` of its last bytes.
#define ZU___CHARSET_MAP_DEFINE( name, lastChars )                                                               \
    static constexpr auto chars = zu___CharsetMapComplete( lastChars );                                          \
    static constexpr auto map = zu___CharsetMapMake<zu___CharsetMapCountBlocks( chars.byByte )>( chars.byByte ); \
    ZU_BOOL zu___Charset##name##MapByteToChar( uint8_t byte, ZU_CHAR *charOut )                                  \
    {                                                                                                            \
        ZU_ASSERT( charOut );                                                                                    \
        if ( map.chars[ byte ] == ZU___CHARSET_MAP_UNDEFINED ) {                                                 \
            return ZU_FALSE;                                                                                     \
        }                                                                                                        \
        *charOut = map.chars[ byte ];                                                                            \
        return ZU_TRUE;                                                                                          \
    }                                                                                                            \
    ZU_BOOL zu___Charset##name##MapCharToByte( ZU_CHAR ch, uint8_t *byteOut )                                    \
    {                                                                                                            \
        ZU_ASSERT( byteOut );                                                                                    \
        uint8_t byte = ch > UINT16_MAX ? 0 : map.bytes[ map.blocks[ ch >> 8 ] ][ ch & 0xFF ];                    \
        if ( byte == 0 && ch != 0 ) {                                                                            \
            return ZU_FALSE;                                                                                     \
        }                                                                                                        \
        *byteOut = byte;                                                                                         \
        return ZU_TRUE;                                                                                          \
    }
