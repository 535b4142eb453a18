// zu_fuzz_support.h: what the fuzzing targets share.
#pragma once

#include "zu/sys/zu_chars.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

// What libFuzzer calls; the first is for targets that need the library started.
extern "C" int LLVMFuzzerInitialize( int *, char *** );
extern "C" int LLVMFuzzerTestOneInput( const uint8_t *data, size_t size );

inline void require( bool condition )
{
    if ( !condition ) {
        abort();
    }
}

// Returns the characters that stand in `data` from `pos` on, with `unit` bytes for each, at most four.
inline std::vector<ZU_CHAR> charsOf( const uint8_t *data, size_t size, size_t pos, size_t unit )
{
    std::vector<ZU_CHAR> chars;
    for ( ; pos + unit <= size; pos += unit ) {
        ZU_CHAR ch = 0;
        memcpy( &ch, data + pos, unit );
        chars.push_back( ch );
    }
    return chars;
}
