#include "zu/base/zu_string_normalize.h"

#include "zu/base/zu_string_internal.h"
#include "zu/runtime/zu_ref_internal.h"
#include "zu/unicode/zu_unicode_normalizer.h"
#include "zu/unicode/zu_unicode_normalizer_internal.h"

#include <cstring>

static constexpr ZU_CHAR ASCII_END = 0x80;
static constexpr ZU_INT ASCII_BLOCK = 8; // elements looked at together

// Tells whether all are ASCII, which is normal in every form.  The last block overlaps the one ahead: 60 elements take 3
// ns, and by the tables of the normalizer 18.
static inline ZU_CHAR charsUnion( const ZU_CHAR *chs )
{
    ZU_CHAR all = 0;
    for ( ZU_INT i = 0; i < ASCII_BLOCK; i++ ) {
        all |= chs[ i ];
    }
    return all;
}
static bool charsAreAscii( const ZU_CHAR *chs, ZU_INT length )
{
    ZU_CHAR all = 0;
    if ( length < ASCII_BLOCK ) {
        for ( ZU_INT i = 0; i < length; i++ ) {
            all |= chs[ i ];
        }
        return all < ASCII_END;
    }
    for ( ZU_INT i = 0; i < length - ASCII_BLOCK; i += ASCII_BLOCK ) {
        all = charsUnion( chs + i );
        if ( all >= ASCII_END ) {
            return false;
        }
    }
    return charsUnion( chs + length - ASCII_BLOCK ) < ASCII_END;
}

// Normalizes a short text that is not empty.  False if the result is too long for a string's own room.
[[gnu::noinline]] static bool stringNormalizeShort( ZU_STRING **zus, ZU_UNICODE_NORMAL_FORM form )
{
    ZU_STRING *old = *zus;
    ZU_CHAR chars[ ZU___NORM_SHORT_ROOM ];
    ZU_INT length = zu___UnicodeNormalizerApply( form, chars, old->chars + old->fspace, old->length );
    if ( length > ZU___STRING_INLINE_CHARS ) {
        return false;
    }
    if ( length == 0 ) { // of lone surrogates
        zuStringClear( zus );
        return true;
    }
    *zus = zu___StringCreateEmpty();
    memcpy( zu___StringMakeRoom( *zus, 0, length ), chars, (size_t)length * sizeof( ZU_CHAR ) );
    ZU_REF_RELEASE( old );
    return true;
}

static void stringNormalize( ZU_STRING **zus, ZU_UNICODE_NORMAL_FORM form )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( *zus );
    ZU_INT length = ( *zus )->length;
    if ( length == 0 ) {
        zuStringClear( zus ); // becomes the shared empty string, as the result of normalizing anything empty
        return;
    }
    const ZU_CHAR *text = ( *zus )->chars + ( *zus )->fspace;
    if ( charsAreAscii( text, length ) || zu___UnicodeNormalizerSettledLength( form, text, length ) == length ) {
        return;
    }
    if ( length <= ZU___NORM_SHORT_CHARS && stringNormalizeShort( zus, form ) ) {
        return;
    }
    zu___Owned norm( zuUnicodeNormalizerCreate( form ) );
    zuUnicodeNormalizerWrite( norm, *zus );
    zuUnicodeNormalizerFlush( norm );
    zuStringClear( zus );
    zuUnicodeNormalizerRead( norm, zus, -1 );
}
void zuStringNormalizeNFC( ZU_STRING **zus )
{
    stringNormalize( zus, ZU_UNICODE_NORMAL_FORM_NFC );
}
void zuStringNormalizeNFD( ZU_STRING **zus )
{
    stringNormalize( zus, ZU_UNICODE_NORMAL_FORM_NFD );
}
void zuStringNormalizeNFKC( ZU_STRING **zus )
{
    stringNormalize( zus, ZU_UNICODE_NORMAL_FORM_NFKC );
}
void zuStringNormalizeNFKD( ZU_STRING **zus )
{
    stringNormalize( zus, ZU_UNICODE_NORMAL_FORM_NFKD );
}

static bool charsHaveSurrogates( const ZU_CHAR *chs, ZU_INT length )
{
    uint32_t found = 0;
    for ( ZU_INT i = 0; i < length; i++ ) {
        found |= chs[ i ] >> 11 == 0x1B;
    }
    return found != 0;
}
void zuStringSanitize( ZU_STRING **zus )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( *zus );
    if ( !charsHaveSurrogates( zuStringBacking( *zus ), ( *zus )->length ) ) {
        return;
    }
    zu___StringUnshare( zus );
    ZU_STRING *own = *zus;
    ZU_CHAR *text = own->chars + own->fspace;
    own->length = zuCharsSanitize( text, own->length, text, own->length );
    zu___StringCompact( own );
}
