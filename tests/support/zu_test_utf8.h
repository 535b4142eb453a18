// zu_test_utf8.h: UTF-8 as it is told byte by byte, and the library's way through it with and without vectors.
#pragma once

#include "zu/sys/zu_chars_utf8_shuffle_internal.h"
#include "zu_test_support.h"

// A decoder that knows no blocks and no cache.  It leaves a mark for each fault.  In a character set the byte that breaks
// a sequence goes with it, and what is too large or cut off at the end is a fault; elsewhere that is nothing at all.
inline constexpr char32_t UTF8_FAULT = 0xFFFFFFFF;
template <typename BYTES>
std::u32string decodeUtf8( const BYTES &bytes, bool ofCharset )
{
    std::u32string text;
    auto continues = [ & ]( size_t at ) { return at < bytes.size() && ( bytes[ at ] & 0xC0 ) == 0x80; };
    for ( size_t at = 0; at < bytes.size(); ) {
        const uint8_t lead = (uint8_t)bytes[ at++ ];
        const bool stray = ( lead >= 0x80 && lead < 0xC0 ) || lead > 0xF7;
        int missing = lead < 0xC0 ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
        char32_t value = missing ? lead & ( 0x3F >> missing ) : lead;
        for ( ; !stray && missing > 0 && continues( at ); missing-- ) {
            value = value << 6 | ( bytes[ at++ ] & 0x3F );
        }
        const bool broken = !stray && missing > 0 && at < bytes.size();
        if ( !stray && missing == 0 && value <= 0x10FFFF ) {
            text += value;
        } else if ( stray || broken || ofCharset ) {
            text += UTF8_FAULT;
        }
        at += broken && ofCharset;
        while ( ( stray || ( broken && ofCharset ) ) && continues( at ) ) {
            at++;
        }
    }
    return text;
}

// Each test runs with every kind of vectors that the processor has, and without.
class WithVectors : public testing::TestWithParam<int> {
protected:
    void SetUp() override
    {
        zu___charsUtf8Shuffle = GetParam();
    }
    void TearDown() override
    {
        zu___charsUtf8Shuffle = -1;
    }
};
inline const auto ALL_VECTORS = testing::Range( 0, zu___CharsUtf8CanShuffle() + 1 );
