// UTF-8 of any bytes: what vectors make of it must be what the plain steps make, measuring must tell what storing does,
// and what has been decoded must survive being encoded and decoded again.

#include "zu_fuzz_support.h"

#include "zu/sys/zu_chars.h"
#include "zu/sys/zu_chars_utf8_shuffle_internal.h"

#include <algorithm>
#include <string>

static std::vector<ZU_CHAR> decoded( const char *utf8, size_t size, int shuffle )
{
    zu___charsUtf8Shuffle = shuffle;
    std::vector<ZU_CHAR> chars( size );
    ZU_INT length = zuCharsConvertFromUtf8( chars.data(), (ZU_INT)size, utf8, (ZU_INT)size );
    require( length <= (ZU_INT)size && length == zuCharsConvertFromUtf8( nullptr, 0, utf8, (ZU_INT)size ) );
    chars.resize( (size_t)length );
    return chars;
}
static std::string encoded( const std::vector<ZU_CHAR> &chars, int shuffle )
{
    zu___charsUtf8Shuffle = shuffle;
    std::string utf8( 4 * chars.size(), 0 );
    ZU_INT length =
        zuCharsConvertToUtf8( utf8.data(), (ZU_INT)utf8.size(), chars.data(), (ZU_INT)chars.size(), ZU_FALSE );
    require( length == zuCharsConvertToUtf8( nullptr, 0, chars.data(), (ZU_INT)chars.size(), ZU_FALSE ) );
    utf8.resize( (size_t)length );
    return utf8;
}

int LLVMFuzzerTestOneInput( const uint8_t *data, size_t size )
{
    const int shuffles = zu___CharsUtf8CanShuffle();
    const char *bytes = (const char *)data;
    std::vector<ZU_CHAR> chars = decoded( bytes, size, 0 );
    std::string utf8 = encoded( chars, 0 );
    for ( int shuffle = 1; shuffle <= shuffles; shuffle++ ) {
        require( chars == decoded( bytes, size, shuffle ) );
        require( utf8 == encoded( chars, shuffle ) );
        require( chars == decoded( utf8.data(), utf8.size(), shuffle ) );
    }
    // The bytes taken as characters, most of which are none
    std::vector<ZU_CHAR> raw( size / sizeof( ZU_CHAR ) );
    std::copy_n( bytes, raw.size() * sizeof( ZU_CHAR ), (char *)raw.data() );
    require( encoded( raw, 0 ) == encoded( raw, shuffles ) );
    return 0;
}
