// zu_wire_chars_internal.h: characters as encoders write them, several at a time.
//
// A character below 0x80 is a byte; any other is three, the highest bits first, of which the first byte has the highest
// bit set and the two below it clear.
#pragma once

#include "zu/sys/zu_chars.h"

ZU_BEGIN_DECLS

#define ZU___WIRE_ASCII_END  ( (ZU_CHAR)0x80 )
#define ZU___WIRE_CHAR_BYTES ( (ZU_INT)3 ) // of a character, at most

// Stores characters, all of them code points, and returns where they end.  There must be room for the longest that they
// can become, and for as many bytes as this behind it, which may be overwritten.
#define ZU___WIRE_ROOM_BEHIND ( (ZU_INT)16 )
uint8_t *zu___WirePutChars( uint8_t *dest, const ZU_CHAR *src, ZU_INT length );

// Takes characters from `*src`, at most `length`, and stops where either array could end within the next step; `*src`
// moves on.  Returns their number, -1 if one of them is none or is not below `charsEnd`.
ZU_INT zu___WireTakeChars( ZU_CHAR *dest, ZU_INT length, const uint8_t **src, const uint8_t *end, ZU_CHAR charsEnd );

ZU_END_DECLS
