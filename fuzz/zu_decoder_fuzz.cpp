// Whatever is read from whatever bytes: a decoder never moves back, never delivers after an error, and what it has
// delivered is what the encoder writes and the decoder reads again.
//
// The first byte tells how many of the bytes that follow say what to read, in turns; all behind them is read.

#include "zu_fuzz_support.h"

#include "zu/base/zu_store_binary.h"
#include "zu/runtime/zu_runtime.h"

int LLVMFuzzerInitialize( int *, char *** )
{
    zuRuntimeStartup( 0, -1, nullptr, "zu-fuzz", "Fuzzing of zu", "1.0" );
    return 0;
}

// Has `decode` read a value, which `encode` writes; it must come back.  Returns whether there was one.
template <typename OBJECT>
static bool readObject( ZU_DECODER *dec, ZU_BOOL ( *decode )( ZU_DECODER *, OBJECT ** ),
                        void ( *encode )( ZU_ENCODER *, OBJECT * ) )
{
    OBJECT *value = nullptr;
    bool ok = decode( dec, &value );
    require( ok || !value );
    if ( ok ) {
        ZU_ENCODER *enc = zuEncoderCreate();
        encode( enc, value );
        ZU_BUFFER *bytes = zuEncoderBuffer( enc );
        ZU_DECODER *again = zuDecoderCreate( bytes );
        OBJECT *back = nullptr;
        require( decode( again, &back ) && zuDecoderRemaining( again ) == 0 );
        require( ( value == nullptr ) == ( back == nullptr ) &&
                 ( !value || zuObjCompare( (ZU_OBJ *)value, (ZU_OBJ *)back ) == 0 ) );
        ZU_REF_RELEASE_OPT( back );
        ZU_REF_RELEASE_OPT( value );
        zuDecoderRelease( again );
        zuBufferRelease( bytes );
        zuEncoderRelease( enc );
    }
    return ok;
}
template <typename VALUE>
static bool readValue( ZU_DECODER *dec, ZU_BOOL ( *decode )( ZU_DECODER *, VALUE * ) )
{
    VALUE value = 1;
    bool ok = decode( dec, &value );
    require( ok || value == 0 );
    return ok;
}
static bool readStep( ZU_DECODER *dec, uint8_t step )
{
    ZU_CHAR chars[ 4 ];
    switch ( step % 14 ) {
    case 0:
        return readValue<ZU_BOOL>( dec, zuDecoderTryDecodeBool );
    case 1:
        return readValue<ZU_INT>( dec, zuDecoderTryDecodeInt );
    case 2:
        return readValue<ZU_CHAR>( dec, zuDecoderTryDecodeChar );
    case 3:
        return readObject( dec, zuDecoderTryDecodeString, zuEncoderEncodeString );
    case 4:
        return readObject( dec, zuDecoderTryDecodeBuffer, zuEncoderEncodeBuffer );
    case 5:
        return readObject( dec, zuDecoderTryDecodeIdentifier, zuEncoderEncodeIdentifier );
    case 6:
        return readObject( dec, zuDecoderTryDecodeStringVector, zuEncoderEncodeStringVector );
    case 7:
        return readObject( dec, zuDecoderTryDecodeStore, zuEncoderEncodeStore );
    case 8:
        return readObject( dec, zuDecoderTryDecodeOptionalString, zuEncoderEncodeOptionalString );
    case 9:
        return readObject( dec, zuDecoderTryDecodeOptionalBuffer, zuEncoderEncodeOptionalBuffer );
    case 10:
        return readObject( dec, zuDecoderTryDecodeOptionalIdentifier, zuEncoderEncodeOptionalIdentifier );
    case 11:
        return readObject( dec, zuDecoderTryDecodeOptionalStore, zuEncoderEncodeOptionalStore );
    case 12:
        return zuDecoderTryDecodeChars( dec, chars, 4 );
    default:
        return zuDecoderTrySkip( dec, step % 3 );
    }
}

int LLVMFuzzerTestOneInput( const uint8_t *data, size_t size )
{
    if ( size < 2 || size < 2 + (size_t)data[ 0 ] % 16 ) {
        return 0;
    }
    const size_t steps = 1 + data[ 0 ] % 16;
    ZU_BUFFER *bytes = zuBufferCreateFromBytesCopy( data + 1 + steps, (ZU_INT)( size - 1 - steps ) );
    ZU_DECODER *dec = zuDecoderCreate( bytes );
    for ( size_t i = 0; i < 4 * steps; i++ ) {
        bool failed = zuDecoderError( dec );
        ZU_INT offset = zuDecoderOffset( dec );
        bool ok = readStep( dec, data[ 1 + i % steps ] );
        require( !failed || ( !ok && zuDecoderRemaining( dec ) == 0 ) );
        require( zuDecoderOffset( dec ) >= offset );
        require( zuDecoderOffset( dec ) + zuDecoderRemaining( dec ) == zuDecoderLength( dec ) );
    }
    zuDecoderRelease( dec );
    zuBufferRelease( bytes );
    return 0;
}
