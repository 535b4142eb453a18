// zu_chars_utf8_shuffle_internal.h: UTF-8 by processors that put the bytes of a vector into any order at once.
//
// Where the processor cannot, or nobody has written it for that one, zu_chars_cs_utf8.cpp does without.
#pragma once

#include "zu/sys/zu_chars.h"

ZU_BEGIN_DECLS

// Tells whether the processor can, which takes a microsecond to find out.
bool zu___CharsUtf8CanShuffle( void );

// What it told, 1 or 0, and -1 as long as nobody has asked; a test may choose.
extern int zu___charsUtf8Shuffle;

// These work as zu___CharsDecodeUtf8 and zu___CharsEncodeUtf8 of zu_chars_internal.h, but stop earlier: where some
// dozens of units are left of either array.  The second one decodes without storing.
ZU_INT zu___CharsUtf8ShuffleDecode( ZU_CHAR *dest, ZU_INT room, const uint8_t **src, const uint8_t *end );
ZU_INT zu___CharsUtf8ShuffleCount( const uint8_t **src, const uint8_t *end );
uint8_t *zu___CharsUtf8ShuffleEncode( uint8_t *dest, const uint8_t *destEnd, const ZU_CHAR **src, const ZU_CHAR *end );

ZU_END_DECLS
