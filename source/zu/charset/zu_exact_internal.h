// zu_exact_internal.h: what the exact sources and sinks share.
#pragma once

#include "zu/charset/zu_charset.h"
#include "zu/charset/zu_charset_map.h"

enum ZU___EXACT_FORM : uint8_t { ZU___EXACT_MAPPED, ZU___EXACT_UTF8, ZU___EXACT_UTF16, ZU___EXACT_UTF32 };
static inline ZU___EXACT_FORM zu___ExactForm( ZU_CHARSET charset )
{
    return charset < ZU_CHARSET_UTF_8    ? ZU___EXACT_MAPPED
           : charset < ZU_CHARSET_UTF_16 ? ZU___EXACT_UTF8
           : charset < ZU_CHARSET_UTF_32 ? ZU___EXACT_UTF16
                                         : ZU___EXACT_UTF32;
}
static inline bool zu___ExactLittleEndian( ZU_CHARSET charset )
{
    return charset != ZU_CHARSET_UTF_16_BE && charset != ZU_CHARSET_UTF_32_BE;
}

// The functions of a single-byte set, each by its own published table.
struct ZU___EXACT_MAP {
    ZU___CHARSET_MAP_CHAR_TO_BYTE_FUNC charToByte;
    ZU___CHARSET_MAP_BYTE_TO_CHAR_FUNC byteToChar;
};
static inline const ZU___EXACT_MAP *zu___ExactMap( ZU_CHARSET charset )
{
#define EXACT_MAP( name ) { zu___Charset##name##MapCharToByte, zu___Charset##name##MapByteToChar },
    static const ZU___EXACT_MAP MAPS[] = { ZU___CHARSET_MAPS( EXACT_MAP ) };
#undef EXACT_MAP
    static_assert( sizeof MAPS / sizeof MAPS[ 0 ] == ZU_CHARSET_UTF_8 );
    return &MAPS[ charset ];
}
