// zu_surrogate_internal.h: the pairs by which UTF-16 tells code points beyond U+FFFF (The Unicode Standard 14.0, section
// 3.9).
#pragma once

#include "zu/sys/zu_chars.h"

static constexpr ZU_CHAR ZU___SURROGATE_FIRST = 0xD800; // of 0x800, all that 0xF800 masks alike
static constexpr ZU_CHAR ZU___SUPPLEMENTARY_FIRST = 0x10000;

// Tell whether an element is half of a pair, and which one.
static inline bool zu___IsSurrogate( ZU_CHAR ch )
{
    return ch >> 11 == ZU___SURROGATE_FIRST >> 11;
}
static inline bool zu___IsHighSurrogate( ZU_CHAR ch )
{
    return ch >> 10 == ZU___SURROGATE_FIRST >> 10;
}
static inline bool zu___IsLowSurrogate( ZU_CHAR ch )
{
    return ch >> 10 == 0xDC00 >> 10;
}

// From a pair to its code point, and back.
static inline ZU_CHAR zu___SurrogatesJoin( ZU_CHAR high, ZU_CHAR low )
{
    return ZU___SUPPLEMENTARY_FIRST + ( ( high & 0x3FF ) << 10 ) + ( low & 0x3FF );
}
static inline ZU_CHAR zu___HighSurrogate( ZU_CHAR ch )
{
    return ZU___SURROGATE_FIRST - ( ZU___SUPPLEMENTARY_FIRST >> 10 ) + ( ch >> 10 );
}
static inline ZU_CHAR zu___LowSurrogate( ZU_CHAR ch )
{
    return 0xDC00 + ( ch & 0x3FF );
}
