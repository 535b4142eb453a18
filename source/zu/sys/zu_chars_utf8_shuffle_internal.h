// zu_chars_utf8_shuffle_internal.h: UTF-8 by processors that put the bytes of a vector into any order at once.
//
// Where the processor cannot, or nobody has written it for that one, zu_chars_cs_utf8.cpp does without.
#pragma once

#include "zu/sys/zu_chars.h"
#include "zu/sys/zu_happens_internal.h"

ZU_BEGIN_DECLS

// Tells whether the processor can, which takes a microsecond to find out.
bool zu___CharsUtf8CanShuffle( void );

// What it told, 1 or 0, and -1 as long as nobody has asked; a test may choose.
extern int zu___charsUtf8Shuffle;

// Tells whether to let vectors do the work: found out at the first conversion.  The threads that may do that find the
// same, and nothing else depends on it, so that the order does not matter.
static inline bool zu___CharsUtf8Shuffles( void )
{
    int shuffle = __atomic_load_n( &zu___charsUtf8Shuffle, __ATOMIC_RELAXED );
    if ( ZU___UNLIKELY( shuffle < 0 ) ) {
        shuffle = zu___CharsUtf8CanShuffle();
        ZU___HAPPENS_STORE( &zu___charsUtf8Shuffle, shuffle, __ATOMIC_RELAXED );
    }
    return shuffle;
}

// These work as zu___CharsDecodeUtf8 and zu___CharsEncodeUtf8 of zu_chars_internal.h, but stop earlier: where some
// dozens of units are left of either array.  The second one decodes without storing.
ZU_INT zu___CharsUtf8ShuffleDecode( ZU_CHAR *dest, ZU_INT room, const uint8_t **src, const uint8_t *end );
ZU_INT zu___CharsUtf8ShuffleCount( const uint8_t **src, const uint8_t *end );
uint8_t *zu___CharsUtf8ShuffleEncode( uint8_t *dest, const uint8_t *destEnd, const ZU_CHAR **src, const ZU_CHAR *end );

// Passes over well-formed sequences, which here are those of the standard, and adds their number to `*count`; `*src`
// moves to the first of which it is not known that it is well-formed, though it may be.
void zu___CharsUtf8ShuffleCheck( const uint8_t **src, const uint8_t *end, ZU_INT *count );

ZU_END_DECLS
