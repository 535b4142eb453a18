// Any text is a store.  Written, it is read as the same, by lines and through streams, and by lines in any order that
// keeps those of equal addresses as they stand; as binary too.
//
// The first byte selects the character set and the newline functions; all that follow are the text.

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
    if ( size < 1 ) {
        return 0;
    }
    const ZU_CHARSET charset = data[ 0 ] & 1 ? ZU_CHARSET_UTF_8 : ZU_CHARSET_ISO_8859_1;
    const ZU_NLF_FLAGS nlfFlags = data[ 0 ] & 2 ? ZU_NLF_FLAG_LF : ZU_NLF_FLAG_CRLF | ZU_NLF_FLAG_CR;
    ZU_BUFFER *text = zuBufferCreateFromBytesCopy( data + 1, (ZU_INT)size - 1 );
    ZU_STORE *store = zuStoreTextTryDecodeFromBuffer( text, charset, 0, nlfFlags );
    require( store );

    ZU_VECTOR *lines = zuStoreTextEncodeToStringVector( store );
    ZU_STORE *ofLines = zuStoreTextDecodeFromStringVector( lines );
    require( zuStoreEquals( ofLines, store ) );
    zuVectorReverse( &lines ); // no two lines have one address
    ZU_STORE *ofReversed = zuStoreTextDecodeFromStringVector( lines );
    require( zuStoreEquals( ofReversed, store ) );

    ZU_BUFFER *written = zuStoreTextTryEncodeToBuffer( store, ZU_CHARSET_UTF_8, 0, ZU_NLF_FLAG_LF );
    ZU_STORE *ofText = zuStoreTextTryDecodeFromBuffer( written, ZU_CHARSET_UTF_8, 0, ZU_NLF_FLAG_LF );
    ZU_BUFFER *writtenAgain = zuStoreTextTryEncodeToBuffer( ofText, ZU_CHARSET_UTF_8, 0, ZU_NLF_FLAG_LF );
    require( zuBufferEquals( written, writtenAgain ) );

    ZU_BUFFER *binary = zuStoreBinaryEncodeToBuffer( store );
    ZU_STORE *ofBinary = zuStoreBinaryTryDecodeFromBuffer( binary );
    require( ofBinary || size > 200 ); // text may end in a level that the binary form does not have: the hundredth
    require( !ofBinary || zuStoreEquals( ofBinary, store ) );

    ZU_REF_RELEASE_OPT( ofBinary );
    zuBufferRelease( binary );
    zuBufferRelease( writtenAgain );
    zuStoreRelease( ofText );
    zuBufferRelease( written );
    zuStoreRelease( ofReversed );
    zuStoreRelease( ofLines );
    zuVectorRelease( lines );
    zuStoreRelease( store );
    zuBufferRelease( text );
    return 0;
}
