// Decoders must take any source, code points or not: they say how far they came and never abort.
//
// The first byte selects the base, the second how wide the units of the source are, which is all that follows: narrow
// units meet digits and white space often, wide ones what is no code point.

#include "zu_fuzz_support.h"

#include "zu/base/zu_format.h"
#include "zu/runtime/zu_runtime.h"

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
    ZU_INT base = data[ 0 ] % 36 > 0 ? data[ 0 ] % 36 + 1 : -1;
    size_t unit = (size_t)1 << data[ 1 ] % 3;
    std::vector<ZU_CHAR> chars = charsOf( data, size, 2, unit );
    ZU_INT length = (ZU_INT)chars.size();
    ZU_INT consumed;
    ZU_INT intValue;
    if ( !zuFormatTryDecodeIntChars( chars.data(), length, base, &intValue, &consumed ) ) {
        require( intValue == 0 );
    }
    require( consumed >= 0 && consumed <= length );
    double realValue;
    if ( !zuFormatTryDecodeRealChars( chars.data(), length, base, &realValue, &consumed ) ) {
        require( realValue == 0.0 );
    }
    require( consumed >= 0 && consumed <= length );
    ZU_BOOL boolValue;
    if ( !zuFormatTryDecodeBoolChars( chars.data(), length, data[ 0 ] & 1, &boolValue, &consumed ) ) {
        require( boolValue == ZU_FALSE );
    }
    require( consumed >= 0 && consumed <= length );
    return 0;
}
