// zu_ascii_internal.h: texts beside the ASCII names of constant tables.
//
// Names that the library knows are sorted by the compiler and looked up where they stand.  As strings in dicts they
// would cost each program a good part of its start, and the memory, whether it asks for one or not.
#pragma once

#include "zu/sys/zu_chars.h"

#include <type_traits>

// Orders two texts by code points: negative, 0 or positive.  With `folded` the capitals of ASCII count as small
// letters, which is what case folding makes of them.
template <typename CHAR_A, typename CHAR_B>
static constexpr int zu___AsciiCompare( const CHAR_A *a, ZU_INT aLength, const CHAR_B *b, ZU_INT bLength, bool folded )
{
    auto unit = [ folded ]( auto ch ) {
        ZU_CHAR plain = (std::make_unsigned_t<decltype( ch )>)ch;
        return folded && plain >= 'A' && plain <= 'Z' ? plain - 'A' + 'a' : plain;
    };
    for ( ZU_INT i = 0; i < aLength && i < bLength; i++ ) {
        if ( unit( a[ i ] ) != unit( b[ i ] ) ) {
            return unit( a[ i ] ) < unit( b[ i ] ) ? -1 : 1;
        }
    }
    return ( aLength > bLength ) - ( aLength < bLength );
}
