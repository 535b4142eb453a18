// zu_utf_internal.h: the steps of well-formed UTF that the conversions share with the streams.
//
// Each works on what is well-formed and stops at the first unit that is not, or that begins what the end cuts off.
#pragma once

#include "zu/sys/zu_chars.h"

// Returns the end of the well-formed UTF-8 at the front, and adds the number of its code points to `*count`.
const uint8_t *zu___UtfWellFormed( const uint8_t *src, const uint8_t *end, ZU_INT *count );
// Returns the end of the well-formed UTF-16, in the order of the machine, and adds the number of its code points.
const char16_t *zu___UtfWellFormed16( const char16_t *src, const char16_t *end, ZU_INT *count );
// Return the end of the code points at the front that are no surrogates; the latter two add the number of bytes of
// UTF-8, or of units of UTF-16, that they need.
const ZU_CHAR *zu___UtfWellFormed32( const ZU_CHAR *src, const ZU_CHAR *end );
const ZU_CHAR *zu___UtfCountBytes( const ZU_CHAR *src, const ZU_CHAR *end, ZU_INT *bytes );
const ZU_CHAR *zu___UtfCountUnits( const ZU_CHAR *src, const ZU_CHAR *end, ZU_INT *units );

// Decode from `*src`, which moves on, up to `room` code points; return their number.  The UTF-8 is known to be
// well-formed.
ZU_INT zu___UtfDecode8( ZU_CHAR *dest, ZU_INT room, const uint8_t **src, const uint8_t *end );
ZU_INT zu___UtfDecode16( ZU_CHAR *dest, ZU_INT room, const uint8_t **src, const uint8_t *end, bool littleEndian );
ZU_INT zu___UtfDecode32( ZU_CHAR *dest, ZU_INT room, const uint8_t **src, const uint8_t *end, bool littleEndian );

// Encode from `*src`, which moves on, as long as 4 bytes are left for each code point; return the end of what they have
// stored.
uint8_t *zu___UtfEncode8( uint8_t *dest, const uint8_t *destEnd, const ZU_CHAR **src, const ZU_CHAR *end );
uint8_t *zu___UtfEncode16( uint8_t *dest, const uint8_t *destEnd, const ZU_CHAR **src, const ZU_CHAR *end,
                           bool littleEndian );
uint8_t *zu___UtfEncode32( uint8_t *dest, const uint8_t *destEnd, const ZU_CHAR **src, const ZU_CHAR *end,
                           bool littleEndian );

// The same by vectors of 64 bytes, where zu___CharsUtf8Shuffles returns ZU___CHARS_UTF8_WIDE: these stop earlier, where a
// vector is more than there is room for.  `swap` tells that the order is not that of the machine.
const char16_t *zu___UtfWideWellFormed16( const char16_t *src, const char16_t *end, ZU_INT *count );
ZU_INT zu___UtfWideDecode16( ZU_CHAR *dest, ZU_INT room, const uint8_t **src, const uint8_t *end, bool swap );
uint8_t *zu___UtfWideEncode16( uint8_t *dest, const uint8_t *destEnd, const ZU_CHAR **src, const ZU_CHAR *end,
                               bool swap );
