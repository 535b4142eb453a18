// However a text is cut into writes, as much can be read after each as the plain model has, and the same comes out.
//
// The first byte selects the form, the second how many characters a write has; all that follows are characters, of two
// bytes each, or of three where the form's bit 2 is set.  Where bit 3 is set, a character counts 512 times, which takes
// runs of marks beyond the lengths at which they are let go.

#include "zu_fuzz_support.h"

#include "zu/runtime/zu_runtime.h"
#include "zu/unicode/zu_unicode_normalizer.h"
#include "zu_normalizer_model.h"

int LLVMFuzzerInitialize( int *, char *** )
{
    zuRuntimeStartup( 0, -1, nullptr, "zu-fuzz", "Fuzzing of zu", "1.0" );
    return 0;
}

static std::u32string readText( ZU_UNICODE_NORMALIZER *norm, ZU_INT count )
{
    ZU_STRING *zus = zuStringCreate();
    zuUnicodeNormalizerRead( norm, &zus, count );
    const ZU_CHAR *chars = zuStringBacking( zus );
    std::u32string text( chars, chars + zuStringLength( zus ) );
    zuStringRelease( zus );
    return text;
}

int LLVMFuzzerTestOneInput( const uint8_t *data, size_t size )
{
    if ( size < 2 ) {
        return 0;
    }
    const size_t times = data[ 0 ] & 8 && size < 100 ? 512 : 1;
    const size_t cut = ( 1 + data[ 1 ] ) * times;
    std::vector<ZU_CHAR> chars;
    for ( ZU_CHAR ch : charsOf( data, size, 2, data[ 0 ] & 4 ? 3 : 2 ) ) {
        chars.insert( chars.end(), times, ch );
    }
    ZU_UNICODE_NORMALIZER *norm = zuUnicodeNormalizerCreate( data[ 0 ] & 3 );
    NormalizerModel model( data[ 0 ] & 3 );
    for ( size_t pos = 0; pos < chars.size(); pos += cut ) {
        size_t length = std::min( cut, chars.size() - pos );
        zuUnicodeNormalizerWriteChars( norm, &chars[ pos ], (ZU_INT)length );
        for ( size_t i = 0; i < length; i++ ) {
            model.write( chars[ pos + i ] );
        }
        require( zuUnicodeNormalizerReadable( norm ) == (ZU_INT)model.readable() );
        require( readText( norm, (ZU_INT)cut ) == model.read( cut ) );
    }
    zuUnicodeNormalizerFlush( norm );
    model.flush();
    require( readText( norm, -1 ) == model.read( model.readable() ) );
    zuUnicodeNormalizerRelease( norm );
    return 0;
}
