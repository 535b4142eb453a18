// However many characters a reader asks for at a time, it gets the same text, for all sets and flags, by either road.
//
// The first byte selects the set, the second the flags and the road, the third how many characters a read asks for; all
// that follow are the text.

#include "zu_fuzz_support.h"

#include "zu/charset/zu_exact_char_source.h"
#include "zu/io/zu_buffer_byte_source.h"
#include "zu/runtime/zu_runtime.h"

#include <string>

int LLVMFuzzerInitialize( int *, char *** )
{
    zuRuntimeStartup( 0, -1, nullptr, "zu-fuzz", "Fuzzing of zu", "1.0" );
    return 0;
}

// A reader of single characters meets the replacement of a truncated end again and again, and so stops at twice the
// length that a text can have.
static std::u32string readText( ZU_BUFFER *bytes, ZU_CHARSET charset, ZU_CHARSET_FLAGS flags, bool exact, ZU_INT count,
                                bool *failed )
{
    ZU_BUFFER_BYTE_SOURCE *source = zuBufferByteSourceCreate( bytes );
    ZU_BYTE_SOURCE *byteSource = zuBufferByteSourceByteSource( source );
    ZU_EXACT_CHAR_SOURCE *exactSource = zuExactCharSourceCreate( byteSource, charset, flags );
    ZU_CHAR_SOURCE *charSource =
        exact ? zuExactCharSourceCharSource( exactSource ) : zuCharsetCreateCharSource( byteSource, charset, flags );
    std::u32string text;
    std::vector<ZU_CHAR> chars( (size_t)count );
    const size_t most = 2 * (size_t)zuBufferLength( bytes ) + 8;
    while ( !zuCharSourceEnd( charSource ) && text.size() < most ) {
        ZU_INT got = zuCharSourceReadChars( charSource, chars.data(), count );
        require( got >= 0 && got <= count );
        text.append( chars.begin(), chars.begin() + got );
    }
    *failed = zuCharSourceError( charSource );
    require( !*failed || !exact || zuExactCharSourceFault( exactSource ) >= 0 );
    zuCharSourceRelease( charSource );
    zuExactCharSourceRelease( exactSource );
    zuByteSourceRelease( byteSource );
    zuBufferByteSourceRelease( source );
    return text;
}

int LLVMFuzzerTestOneInput( const uint8_t *data, size_t size )
{
    if ( size < 3 ) {
        return 0;
    }
    const ZU_CHARSET charset = data[ 0 ] % ( ZU_CHARSET_UTF_32_LE + 1 );
    const ZU_CHARSET_FLAGS flags = data[ 1 ] & 15;
    const bool exact = data[ 1 ] & 16;
    ZU_BUFFER *bytes = zuBufferCreateFromBytesCopy( data + 3, (ZU_INT)size - 3 );
    bool wholeFailed, partsFailed;
    std::u32string whole = readText( bytes, charset, flags, exact, 2 * (ZU_INT)size + 16, &wholeFailed );
    std::u32string parts = readText( bytes, charset, flags, exact, 1 + data[ 2 ] % 64, &partsFailed );
    require( wholeFailed == partsFailed );
    require( parts.compare( 0, whole.size(), whole ) == 0 );
    require( !exact || parts == whole );
    require( parts.find_first_not_of( U'\uFFFD', whole.size() ) == std::u32string::npos );
    zuBufferRelease( bytes );
    return 0;
}
