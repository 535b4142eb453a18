// However a text is cut into writes, as much can be read after each, and the same comes out.
//
// The first byte selects the form, the second how many characters a write has; all that follows are characters, of two
// bytes each, or of three where the form's bit 2 is set.

#include "zu_fuzz_support.h"

#include "zu/runtime/zu_runtime.h"
#include "zu/unicode/zu_unicode_normalizer.h"

#include <algorithm>

int LLVMFuzzerInitialize( int *, char *** )
{
    zuRuntimeStartup( 0, -1, nullptr, "zu-fuzz", "Fuzzing of zu", "1.0" );
    return 0;
}

int LLVMFuzzerTestOneInput( const uint8_t *data, size_t size )
{
    if ( size < 2 ) {
        return 0;
    }
    size_t unit = data[ 0 ] & 4 ? 3 : 2;
    size_t cut = 1 + data[ 1 ];
    std::vector<ZU_CHAR> chars = charsOf( data, size, 2, unit );
    ZU_UNICODE_NORMALIZER *whole = zuUnicodeNormalizerCreate( data[ 0 ] & 3 );
    ZU_UNICODE_NORMALIZER *single = zuUnicodeNormalizerCreate( data[ 0 ] & 3 );
    ZU_STRING *wholeText = zuStringCreate();
    ZU_STRING *singleText = zuStringCreate();
    for ( size_t pos = 0; pos < chars.size(); pos += cut ) {
        size_t length = std::min( cut, chars.size() - pos );
        zuUnicodeNormalizerWriteChars( whole, &chars[ pos ], (ZU_INT)length );
        for ( size_t i = 0; i < length; i++ ) {
            zuUnicodeNormalizerWriteChar( single, chars[ pos + i ] );
        }
        require( zuUnicodeNormalizerReadable( whole ) == zuUnicodeNormalizerReadable( single ) );
        zuUnicodeNormalizerRead( whole, &wholeText, (ZU_INT)cut );
        zuUnicodeNormalizerRead( single, &singleText, (ZU_INT)cut );
    }
    zuUnicodeNormalizerFlush( whole );
    zuUnicodeNormalizerFlush( single );
    zuUnicodeNormalizerRead( whole, &wholeText, -1 );
    zuUnicodeNormalizerRead( single, &singleText, -1 );
    require( zuStringEquals( wholeText, singleText ) );
    zuStringRelease( singleText );
    zuStringRelease( wholeText );
    zuUnicodeNormalizerRelease( single );
    zuUnicodeNormalizerRelease( whole );
    return 0;
}
