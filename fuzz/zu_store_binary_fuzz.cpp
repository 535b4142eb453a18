// Bytes are a store as a whole or none; one that is has a form of its own, which is read as the same store and takes no
// more bytes than it was read from, and is found again behind other values.

#include "zu_fuzz_support.h"

#include "zu/base/zu_store_binary.h"
#include "zu/base/zu_store_text.h"
#include "zu/runtime/zu_runtime.h"

int LLVMFuzzerInitialize( int *, char *** )
{
    zuRuntimeStartup( 0, -1, nullptr, "zu-fuzz", "Fuzzing of zu", "1.0" );
    return 0;
}

int LLVMFuzzerTestOneInput( const uint8_t *data, size_t size )
{
    ZU_BUFFER *bytes = zuBufferCreateFromBytesCopy( data, (ZU_INT)size );
    ZU_DECODER *dec = zuDecoderCreate( bytes );
    ZU_STORE *store = zuStoreBinaryTryDecodeFromDecoder( dec );
    require( ( store == nullptr ) == ( zuDecoderError( dec ) != ZU_FALSE ) );
    ZU_STORE *alone = zuStoreBinaryTryDecodeFromBuffer( bytes );
    require( ( alone == nullptr ) == ( !store || zuDecoderRemaining( dec ) > 0 ) );
    if ( store ) {
        ZU_BUFFER *plain = zuStoreBinaryEncodeToBuffer( store );
        require( zuBufferLength( plain ) <= zuDecoderOffset( dec ) );
        ZU_STORE *again = zuStoreBinaryTryDecodeFromBuffer( plain );
        require( again && zuStoreEquals( again, store ) );
        ZU_BUFFER *plainAgain = zuStoreBinaryEncodeToBuffer( again );
        require( zuBufferEquals( plain, plainAgain ) );
        ZU_VECTOR *lines = zuStoreTextEncodeToStringVector( store );
        ZU_STORE *ofText = zuStoreTextDecodeFromStringVector( lines );
        require( zuStoreEquals( ofText, store ) );
        zuStoreRelease( ofText );
        zuVectorRelease( lines );
        zuBufferRelease( plainAgain );
        zuStoreRelease( again );
        zuBufferRelease( plain );
        zuStoreRelease( store );
    }
    ZU_REF_RELEASE_OPT( alone );
    zuDecoderRelease( dec );
    zuBufferRelease( bytes );
    return 0;
}
