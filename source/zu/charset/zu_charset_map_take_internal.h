// zu_charset_map_take_internal.h: single-byte sets by tables, and decoding by one of 256 bytes.
#pragma once

#include "zu/charset/zu_charset.h"
#include "zu/sys/zu_chars_internal.h"

#include <cstring>

// A bit that no character has, and what stands in a table for a byte that is none.
static constexpr ZU_CHAR ZU___CHARSET_NO_CHARACTER = 0x80000000;
static constexpr ZU_INT ZU___CHARSET_STEP = 16; // bytes decoded at once

// Stores what `lookUp` returns for 0 to STEP - 1, and tells whether all of them lack the bit `none`: many lookups need one
// test.
template <ZU_INT STEP, typename DEST, typename VALUE, typename LOOK_UP>
[[gnu::always_inline]] static inline bool zu___CharsetLookUp( DEST *dest, VALUE none, LOOK_UP lookUp )
{
    VALUE all = 0;
    auto put = [ dest, &all, lookUp ]( ZU_INT i ) {
        VALUE value = lookUp( i );
        dest[ i ] = (DEST)value;
        all |= value;
    };
    for ( ZU_INT i = 0; i < STEP; i += 4 ) { // written out, which the compiler does not do
        put( i );
        put( i + 1 );
        put( i + 2 );
        put( i + 3 );
    }
    return !( all & none );
}
// Returns how many of the bytes, in whole steps, are ASCII up to the first that is not.
static inline ZU_INT zu___CharsetMapAsciiRun( const uint8_t *bytes, ZU_INT count )
{
    constexpr uint64_t HIGH_BITS = 0x8080808080808080;
    ZU_INT run = 0;
    for ( ; count - run >= ZU___CHARSET_STEP; run += ZU___CHARSET_STEP ) {
        uint64_t words[ ZU___CHARSET_STEP / sizeof( uint64_t ) ];
        memcpy( words, bytes + run, sizeof words );
        if ( ( words[ 0 ] | words[ 1 ] ) & HIGH_BITS ) {
            break;
        }
    }
    return run;
}
// Decodes up to `count` bytes by a table, as far as they are characters there, and returns how many.  `keepsAscii` says
// that the bytes of ASCII are the characters.
static inline ZU_INT zu___CharsetMapTake( const ZU_CHAR *byByte, bool keepsAscii, const uint8_t *bytes, ZU_CHAR *chars,
                                          ZU_INT count )
{
    ZU_INT taken = 0;
    while ( count - taken >= ZU___CHARSET_STEP ) {
        const uint8_t *from = bytes + taken;
        ZU_CHAR *to = chars + taken;
        // ASCII is UTF-8, too, which vectors decode, all but a rest of less than a step.
        ZU_INT run = keepsAscii ? zu___CharsetMapAsciiRun( from, count - taken ) : 0;
        const uint8_t *runEnd = from;
        ZU_INT decoded = run > 0 ? zu___CharsDecodeUtf8( to, run, &runEnd, from + run ) : 0;
        if ( decoded > 0 ) {
            taken += decoded;
            continue;
        }
        if ( !zu___CharsetLookUp<ZU___CHARSET_STEP>( to, ZU___CHARSET_NO_CHARACTER,
                                                     [ = ]( ZU_INT i ) { return byByte[ from[ i ] ]; } ) ) {
            break;
        }
        taken += ZU___CHARSET_STEP;
    }
    for ( ZU_CHAR ch; taken < count && !( ( ch = byByte[ bytes[ taken ] ] ) & ZU___CHARSET_NO_CHARACTER ); taken++ ) {
        chars[ taken ] = ch;
    }
    return taken;
}
