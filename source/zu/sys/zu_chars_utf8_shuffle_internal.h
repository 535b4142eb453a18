// zu_chars_utf8_shuffle_internal.h: UTF-8 by processors that put the bytes of a vector into any order at once.
//
// Where the processor cannot, or nobody has written it for that one, zu_chars_cs_utf8.cpp does without.
#pragma once

#include "zu/sys/zu_chars.h"
#include "zu/sys/zu_happens_internal.h"

ZU_BEGIN_DECLS

// Returns ZU___CHARS_UTF8_SHUFFLE if the processor can, ZU___CHARS_UTF8_WIDE if it can on 64 bytes with masks as well,
// and 0 if it cannot; this takes a microsecond to find out.
#define ZU___CHARS_UTF8_SHUFFLE 1
#define ZU___CHARS_UTF8_WIDE    2
// The compiler of MinGW leaves vectors of 64 bytes on the stack without the alignment that it counts on.
#if defined( __x86_64__ ) && !defined( __MINGW32__ )
#define ZU___CHARS_UTF8_HAS_WIDE
#endif
int zu___CharsUtf8CanShuffle( void );

// What it told, and -1 as long as nobody has asked; a test may choose.
extern int zu___charsUtf8Shuffle;

// Tells whether to let vectors do the work, and which, likewise: found out at the first conversion.  The threads that may
// do that find the same, and nothing else depends on it, so that the order does not matter.
static inline int zu___CharsUtf8Shuffles( void )
{
    int shuffle = __atomic_load_n( &zu___charsUtf8Shuffle, __ATOMIC_RELAXED );
    if ( ZU___UNLIKELY( shuffle < 0 ) ) {
        shuffle = zu___CharsUtf8CanShuffle();
        ZU___HAPPENS_STORE( &zu___charsUtf8Shuffle, shuffle, __ATOMIC_RELAXED );
    }
    return shuffle;
}

// These work as zu___CharsDecodeUtf8 and zu___CharsEncodeUtf8 of zu_chars_internal.h, but stop earlier: where some
// dozens of units are left of what is stored into or, encoding, of either array.  The second one decodes without storing.
ZU_INT zu___CharsUtf8ShuffleDecode( ZU_CHAR *dest, ZU_INT room, const uint8_t **src, const uint8_t *end );
ZU_INT zu___CharsUtf8ShuffleCount( const uint8_t **src, const uint8_t *end );
uint8_t *zu___CharsUtf8ShuffleEncode( uint8_t *dest, const uint8_t *destEnd, const ZU_CHAR **src, const ZU_CHAR *end );

// The same on 64 bytes, whatever is left of the arrays.  The exact forms stop at what the standard calls ill-formed, that
// of decoding some dozens of bytes ahead of it.  Whether the processor can is asked of one that counts bits and keeps states
// by XSAVE.
bool zu___CharsUtf8CanWiden( void );
ZU_INT zu___CharsUtf8WideDecode( ZU_CHAR *dest, ZU_INT room, const uint8_t **src, const uint8_t *end );
ZU_INT zu___CharsUtf8WideDecodeExact( ZU_CHAR *dest, ZU_INT room, const uint8_t **src, const uint8_t *end );
uint8_t *zu___CharsUtf8WideEncode( uint8_t *dest, const uint8_t *destEnd, const ZU_CHAR **src, const ZU_CHAR *end );
uint8_t *zu___CharsUtf8WideEncodeExact( uint8_t *dest, const uint8_t *destEnd, const ZU_CHAR **src,
                                        const ZU_CHAR *end );
// Returns the number of bytes that are no continuations: of code points, if all is well-formed.
ZU_INT zu___CharsUtf8WideCountStarts( const uint8_t *src, const uint8_t *end );

// Passes over well-formed sequences, which here are those of the standard, and adds their number to `*count`; `*src`
// moves to the first of which it is not known that it is well-formed, though it may be.
void zu___CharsUtf8ShuffleCheck( const uint8_t **src, const uint8_t *end, ZU_INT *count );

ZU_END_DECLS
