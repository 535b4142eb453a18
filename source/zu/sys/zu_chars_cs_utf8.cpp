// Text is long runs of sequences of one kind, nearly always well formed.  So both directions let the processor's
// vectors do what those can (zu_chars_utf8_shuffle.cpp), take what is left in steps that do not ask for the ends of the
// arrays, and leave everything odd (broken sequences, the last few units of either array) to one careful step each,
// which alone knows all the rules.

#include "zu/sys/zu_chars_ascii_internal.h"
#include "zu/sys/zu_chars_internal.h"
#include "zu/sys/zu_chars_utf8_shuffle_internal.h"

#include <bit>
#include <cstring>

static constexpr ZU_CHAR REPLACEMENT = ZU_CHAR_REPLACEMENT_CHARACTER;
static constexpr ZU_INT STEP = 8;                         // bytes looked at together
static constexpr uint64_t HIGH_BITS = 0x8080808080808080; // of all bytes of a step
static constexpr ZU_INT SEQUENCE_MAX = ZU___CHARS_UTF8_SEQUENCE_MAX;

int zu___charsUtf8Shuffle = -1;

// Decoding

// Takes the sequence at `*src` with all its faults.  Tells whether it yields a code point.
static bool utf8TakeSequence( const uint8_t **src, const uint8_t *end, ZU_CHAR *ch )
{
    const uint8_t *pos = *src;
    uint8_t lead = *pos++;
    bool yields = true;
    if ( lead < 0x80 ) {
        *ch = lead;
    } else if ( lead < 0xC0 || lead > 0xF7 ) {
        // No sequence begins so: one replacement stands for this byte and all continuations behind it.
        while ( pos < end && zu___CharsIsUtf8Continuation( *pos ) ) {
            pos++;
        }
        *ch = REPLACEMENT;
    } else {
        int missing = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
        ZU_CHAR value = lead & ( 0x3Fu >> missing );
        while ( missing > 0 && pos < end && zu___CharsIsUtf8Continuation( *pos ) ) {
            value = value << 6 | ( *pos++ & 0x3Fu );
            missing--;
        }
        // Broken off by another byte, a sequence is replaced; cut off by the end or out of range, it vanishes.
        yields = missing == 0 ? ZU_CHAR_OK( value ) : pos < end;
        *ch = missing == 0 ? value : REPLACEMENT;
    }
    *src = pos;
    return yields;
}

// Takes well-formed sequences of two bytes and more from `*src`, of which there are at least 4 bytes, up to the first
// of one, an odd one, or where either array could end.  Returns their number.
template <bool STORE>
static inline ZU_INT utf8DecodeLong( ZU_CHAR *dest, ZU_INT room, const uint8_t **src, const uint8_t *end )
{
    const uint8_t *pos = *src;
    ZU_INT length = 0;
    auto emit = [ & ]( ZU_CHAR ch ) {
        if constexpr ( STORE ) {
            dest[ length ] = ch;
        }
        length++;
    };
    do {
        uint8_t lead = pos[ 0 ];
        if ( ( lead & 0xE0 ) == 0xC0 && zu___CharsIsUtf8Continuation( pos[ 1 ] ) ) {
            emit( ( lead & 0x1Fu ) << 6 | ( pos[ 1 ] & 0x3Fu ) );
            pos += 2;
        } else if ( ( lead & 0xF0 ) == 0xE0 && zu___CharsIsUtf8Continuation( pos[ 1 ] ) &&
                    zu___CharsIsUtf8Continuation( pos[ 2 ] ) ) {
            emit( ( lead & 0x0Fu ) << 12 | ( pos[ 1 ] & 0x3Fu ) << 6 | ( pos[ 2 ] & 0x3Fu ) );
            pos += 3;
        } else if ( ( lead & 0xFC ) == 0xF0 && zu___CharsIsUtf8Continuation( pos[ 1 ] ) &&
                    zu___CharsIsUtf8Continuation( pos[ 2 ] ) && zu___CharsIsUtf8Continuation( pos[ 3 ] ) ) {
            emit( ( lead & 0x07u ) << 18 | ( pos[ 1 ] & 0x3Fu ) << 12 | ( pos[ 2 ] & 0x3Fu ) << 6 |
                  ( pos[ 3 ] & 0x3Fu ) );
            pos += 4;
        } else {
            break;
        }
    } while ( end - pos >= SEQUENCE_MAX && pos[ 0 ] >= 0x80 && ( !STORE || length < room ) );
    *src = pos;
    return length;
}

// Decodes well-formed sequences from `*src` and stops at what is odd, and where `*src` or, when storing, the `room` for
// code points could end within the next step; `*src` moves on.  Returns the number of code points.
template <bool STORE>
static inline ZU_INT utf8DecodeWhole( ZU_CHAR *dest, ZU_INT room, const uint8_t **src, const uint8_t *end )
{
    ZU_INT length = 0;
    if ( const int shuffles = zu___CharsUtf8Shuffles() ) {
        length = !STORE                             ? zu___CharsUtf8ShuffleCount( src, end )
                 : shuffles == ZU___CHARS_UTF8_WIDE ? zu___CharsUtf8WideDecode( dest, room, src, end )
                                                    : zu___CharsUtf8ShuffleDecode( dest, room, src, end );
    }
    const uint8_t *pos = *src;
    while ( end - pos >= STEP && ( !STORE || room - length >= STEP ) ) {
        uint64_t bytes;
        memcpy( &bytes, pos, sizeof bytes );
        if constexpr ( STORE ) {
            zu___CharsStoreBytes( dest + length, bytes ); // what is not ASCII is overwritten
        }
        ZU_INT ascii = std::countr_zero( bytes & HIGH_BITS ) / 8;
        pos += ascii;
        length += ascii;
        if ( ascii < STEP ) {
            if ( end - pos < SEQUENCE_MAX ) {
                break;
            }
            ZU_INT taken = utf8DecodeLong<STORE>( dest + ( STORE ? length : 0 ), room - length, &pos, end );
            if ( taken == 0 ) {
                break;
            }
            length += taken;
        }
    }
    *src = pos;
    return length;
}
ZU_INT zu___CharsDecodeUtf8( ZU_CHAR *dest, ZU_INT room, const uint8_t **src, const uint8_t *end )
{
    return utf8DecodeWhole<true>( dest, room, src, end );
}

// Decodes from `*src` until it ends or, when storing, `room` code points are there; `*src` moves on.  Returns the
// number of code points.
template <bool STORE>
static ZU_INT utf8Decode( ZU_CHAR *dest, ZU_INT room, const uint8_t **src, const uint8_t *end )
{
    ZU_INT length = 0;
    while ( *src < end && ( !STORE || length < room ) ) {
        length += utf8DecodeWhole<STORE>( dest + ( STORE ? length : 0 ), room - length, src, end );
        if ( *src == end || ( STORE && length == room ) ) {
            break;
        }
        ZU_CHAR ch = **src;
        if ( ch < 0x80 ) {
            ( *src )++;
        }
        if ( ch < 0x80 || utf8TakeSequence( src, end, &ch ) ) {
            if constexpr ( STORE ) {
                dest[ length ] = ch;
            }
            length++;
        }
    }
    return length;
}

ZU_INT zuCharsConvertFromUtf8( ZU_CHAR *dest, ZU_INT destLength, const char *src, ZU_INT srcLength )
{
    ZU___CHARS_ASSERT_FROM( dest, destLength, src, srcLength );
    srcLength = zu___CharsMeasureCstr( src, srcLength );
    const uint8_t *pos = (const uint8_t *)src;
    const uint8_t *end = pos + srcLength;
    ZU_INT stored = utf8Decode<true>( dest, destLength, &pos, end );
    return stored + utf8Decode<false>( nullptr, 0, &pos, end );
}

// Encoding

static inline ZU_INT utf8SequenceLength( ZU_CHAR ch )
{
    // A value above 0x10FFFF is replaced, by three bytes.
    return 1 + ( ch >= 0x80 ) + ( ch >= 0x800 ) + ( ch >= 0x10000 ) - ( ch >= 0x110000 );
}

uint8_t *zu___CharsEncodeUtf8( uint8_t *dest, const uint8_t *destEnd, const ZU_CHAR **src, const ZU_CHAR *end )
{
    if ( const int shuffles = zu___CharsUtf8Shuffles() ) {
        dest = shuffles == ZU___CHARS_UTF8_WIDE ? zu___CharsUtf8WideEncode( dest, destEnd, src, end )
                                                : zu___CharsUtf8ShuffleEncode( dest, destEnd, src, end );
    }
    const ZU_CHAR *pos = *src;
    while ( end - pos >= STEP && destEnd - dest >= STEP * SEQUENCE_MAX ) {
        ZU_CHAR all = 0;
        for ( int i = 0; i < STEP; i++ ) {
            all |= pos[ i ];
        }
        if ( all < 0x80 ) {
            for ( int i = 0; i < STEP; i++ ) {
                dest[ i ] = (uint8_t)pos[ i ];
            }
            dest += STEP;
        } else {
            for ( int i = 0; i < STEP; i++ ) {
                dest = zu___CharsPutUtf8( dest, pos[ i ] );
            }
        }
        pos += STEP;
    }
    while ( pos < end && destEnd - dest >= SEQUENCE_MAX ) {
        dest = zu___CharsPutUtf8( dest, *pos++ );
    }
    *src = pos;
    return dest;
}

// Encodes into the rest of a destination that may end within a sequence; `*src` moves on.  Returns the number of bytes
// that the consumed characters need, of which the last few may have been dropped.
static ZU_INT utf8EncodeCut( uint8_t *dest, const uint8_t *destEnd, const ZU_CHAR **src, const ZU_CHAR *end )
{
    ZU_INT length = 0;
    while ( *src < end && dest < destEnd ) {
        uint8_t sequence[ SEQUENCE_MAX ];
        const uint8_t *sequenceEnd = zu___CharsPutUtf8( sequence, *( *src )++ );
        length += sequenceEnd - sequence;
        for ( const uint8_t *byte = sequence; byte < sequenceEnd && dest < destEnd; byte++ ) {
            *dest++ = *byte;
        }
    }
    return length;
}

static ZU_INT utf8Measure( const ZU_CHAR *src, ZU_INT srcLength )
{
    static constexpr ZU_INT BLOCK = 4096; // code points; their sum is within a lane
    static constexpr ZU_INT WIDTH = 4;
    ZU_INT compLen = 0;
    for ( ZU_INT i = 0; i < srcLength; ) {
        const ZU_INT count = zuIntMin( srcLength - i, BLOCK );
        const ZU_INT blockEnd = i + count;
        ZU_INT addLen = count;
        ZU___CHARS_LANES more = {};
        for ( ; blockEnd - i >= WIDTH; i += WIDTH ) {
            const ZU___CHARS_LANES chars = zu___CharsLoadLanes( src + i );
            // Each comparison that holds is -1.
            more -= (ZU___CHARS_LANES)( ( chars >= 0x80 ) + ( chars >= 0x800 ) + ( chars >= 0x10000 ) -
                                        ( chars >= 0x110000 ) );
        }
        addLen += more[ 0 ] + more[ 1 ] + more[ 2 ] + more[ 3 ];
        for ( ; i < blockEnd; i++ ) {
            addLen += utf8SequenceLength( src[ i ] ) - 1;
        }
        ZU_ASSERT( ZU_INT_ADD_OK( compLen, addLen ) );
        compLen += addLen;
    }
    return compLen;
}

ZU_INT zuCharsConvertToUtf8( char *dest, ZU_INT destLength, const ZU_CHAR *src, ZU_INT srcLength, ZU_BOOL addNul )
{
    ZU___CHARS_ASSERT_TO( dest, destLength, src, srcLength );
    uint8_t *begin = (uint8_t *)dest;
    const uint8_t *destEnd = begin + destLength;
    const ZU_CHAR *pos = src;
    const ZU_CHAR *end = src + srcLength;
    uint8_t *stored = zu___CharsEncodeUtf8( begin, destEnd, &pos, end );
    ZU_INT compLen = stored - begin;
    compLen += utf8EncodeCut( stored, destEnd, &pos, end );
    ZU_INT addLen = utf8Measure( pos, end - pos );
    ZU_ASSERT( ZU_INT_ADD_OK( compLen, addLen ) );
    compLen += addLen;
    ZU_ASSERT( ZU_INT_ADD_OK( compLen, 1 ) );
    if ( !addNul ) {
        return compLen;
    }
    if ( compLen < destLength ) {
        dest[ compLen ] = 0;
    }
    return compLen + 1;
}
