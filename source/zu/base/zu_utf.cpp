// Each road is one loop over units, the same for testing, measuring and storing: what a sequence is worth is decided in
// one place, so that the three agree.  Runs of ASCII, which most text has, are passed 8 bytes at a time.

#include "zu/base/zu_utf.h"

#include "zu/base/zu_string_internal.h"
#include "zu/sys/zu_mem.h"

#include <cstring>
#include <type_traits>

static constexpr ZU_CHAR REPLACEMENT = 0xFFFD;
static constexpr ZU_CHAR CHAR_LAST = 0x10FFFF;
static constexpr ZU_CHAR SUPPLEMENTARY_FIRST = 0x10000;
static constexpr ZU_CHAR HIGH_SURROGATE = 0xD800, LOW_SURROGATE = 0xDC00, SURROGATES_END = 0xE000;

static bool utfIsSurrogate( ZU_CHAR ch )
{
    return ch >= HIGH_SURROGATE && ch < SURROGATES_END;
}

// One sequence at the front of the text: its code point and length; or, ill-formed, the length of its maximal subpart.
struct UTF_SEQUENCE {
    ZU_CHAR ch;
    int length;
    bool ok;
};

// Table 3-7 of the standard: the second byte has a range that depends on the first, all others are continuations.
static UTF_SEQUENCE utfSequence( const char *text, ZU_INT rest )
{
    const uint8_t *bytes = (const uint8_t *)text;
    const uint8_t lead = bytes[ 0 ];
    if ( lead < 0x80 ) {
        return { lead, 1, true };
    }
    const int length = lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 0;
    if ( length == 0 ) {
        return { REPLACEMENT, 1, false };
    }
    uint8_t low = 0x80, high = 0xBF;
    switch ( lead ) {
    case 0xE0:
        low = 0xA0; // shorter forms exist below
        break;
    case 0xED:
        high = 0x9F; // surrogates above
        break;
    case 0xF0:
        low = 0x90;
        break;
    case 0xF4:
        high = 0x8F; // beyond U+10FFFF above
        break;
    default:
        break;
    }
    ZU_CHAR ch = lead & ( 0x7F >> length );
    for ( int i = 1; i < length; i++ ) {
        if ( i >= rest || bytes[ i ] < low || bytes[ i ] > high ) {
            return { REPLACEMENT, i, false };
        }
        ch = ch << 6 | ( bytes[ i ] & 0x3F );
        low = 0x80;
        high = 0xBF;
    }
    return { ch, length, true };
}
static UTF_SEQUENCE utfSequence( const char16_t *units, ZU_INT rest )
{
    const ZU_CHAR unit = units[ 0 ];
    if ( !utfIsSurrogate( unit ) ) {
        return { unit, 1, true };
    }
    const bool isPair = unit < LOW_SURROGATE && rest > 1 && units[ 1 ] >= LOW_SURROGATE && units[ 1 ] < SURROGATES_END;
    if ( !isPair ) {
        return { REPLACEMENT, 1, false };
    }
    return { SUPPLEMENTARY_FIRST + ( ( unit - HIGH_SURROGATE ) << 10 ) + ( units[ 1 ] - LOW_SURROGATE ), 2, true };
}
static UTF_SEQUENCE utfSequence( const ZU_CHAR *chars, ZU_INT )
{
    return utfIsSurrogate( *chars ) || *chars > CHAR_LAST ? UTF_SEQUENCE{ REPLACEMENT, 1, false }
                                                          : UTF_SEQUENCE{ *chars, 1, true };
}

// How many units at the front are ASCII, a multiple of 8 bytes' worth; the rest is for the loop over sequences.
static ZU_INT utfAscii( const char *text, ZU_INT length )
{
    ZU_INT pos = 0;
    for ( uint64_t eight; pos + 8 <= length; pos += 8 ) {
        memcpy( &eight, text + pos, 8 );
        if ( eight & 0x8080808080808080 ) {
            break;
        }
    }
    return pos;
}
template <typename UNIT>
static ZU_INT utfAscii( const UNIT *, ZU_INT )
{
    return 0;
}

// What a code point takes in an encoding
static int utfUnits( ZU_CHAR ch, const char * )
{
    return ch < 0x80 ? 1 : ch < 0x800 ? 2 : ch < SUPPLEMENTARY_FIRST ? 3 : 4;
}
static int utfUnits( ZU_CHAR ch, const char16_t * )
{
    return ch < SUPPLEMENTARY_FIRST ? 1 : 2;
}
static int utfUnits( ZU_CHAR, const ZU_CHAR * )
{
    return 1;
}
static char *utfPut( char *dest, ZU_CHAR ch )
{
    const int units = utfUnits( ch, dest );
    if ( units == 1 ) {
        *dest = (char)ch;
        return dest + 1;
    }
    for ( int i = units - 1; i > 0; i-- ) {
        dest[ i ] = (char)( 0x80 | ( ch & 0x3F ) );
        ch >>= 6;
    }
    *dest = (char)( ( 0xF00 >> units ) | ch );
    return dest + units;
}
static char16_t *utfPut( char16_t *dest, ZU_CHAR ch )
{
    if ( ch < SUPPLEMENTARY_FIRST ) {
        *dest = (char16_t)ch;
        return dest + 1;
    }
    dest[ 0 ] = (char16_t)( HIGH_SURROGATE + ( ( ch - SUPPLEMENTARY_FIRST ) >> 10 ) );
    dest[ 1 ] = (char16_t)( LOW_SURROGATE + ( ( ch - SUPPLEMENTARY_FIRST ) & 0x3FF ) );
    return dest + 2;
}
static ZU_CHAR *utfPut( ZU_CHAR *dest, ZU_CHAR ch )
{
    *dest = ch;
    return dest + 1;
}

// Returns how many units of DEST the text takes, and stores the offset of its first fault, or -1.
template <typename DEST, typename SRC>
static ZU_INT utfMeasure( const SRC *src, ZU_INT length, ZU_INT *fault )
{
    *fault = -1;
    ZU_INT units = 0;
    for ( ZU_INT pos = 0; pos < length; ) {
        const ZU_INT ascii = utfAscii( src + pos, length - pos );
        units += ascii;
        pos += ascii;
        for ( int i = 0; i < 16 && pos < length; i++ ) {
            const UTF_SEQUENCE sequence = utfSequence( src + pos, length - pos );
            *fault = *fault < 0 && !sequence.ok ? pos : *fault;
            units += utfUnits( sequence.ch, (const DEST *)nullptr );
            pos += sequence.length;
        }
    }
    return units;
}
// Stores what utfMeasure has measured.
template <typename DEST, typename SRC>
static void utfConvert( DEST *dest, const SRC *src, ZU_INT length )
{
    for ( ZU_INT pos = 0; pos < length; ) {
        const ZU_INT ascii = utfAscii( src + pos, length - pos );
        for ( ZU_INT i = 0; i < ascii; i++ ) {
            dest[ i ] = (DEST)(std::make_unsigned_t<SRC>)src[ pos + i ];
        }
        dest += ascii;
        pos += ascii;
        for ( int i = 0; i < 16 && pos < length; i++ ) {
            const UTF_SEQUENCE sequence = utfSequence( src + pos, length - pos );
            dest = utfPut( dest, sequence.ch );
            pos += sequence.length;
        }
    }
}

static ZU_INT utfLength( const char *src, ZU_INT srcLength )
{
    return srcLength < 0 ? (ZU_INT)strlen( src ) : srcLength;
}
static ZU_INT utfLength( const char16_t *src, ZU_INT srcLength )
{
    ZU_INT length = srcLength < 0 ? 0 : srcLength;
    while ( srcLength < 0 && src[ length ] ) {
        length++;
    }
    return length;
}

#define UTF_ASSERT_SOURCE()       \
    ZU_ASSERT( srcLength >= -1 ); \
    ZU_ASSERT( src || srcLength == 0 )

// Testing
template <typename SRC>
static ZU_INT utfFault( const SRC *src, ZU_INT length )
{
    for ( ZU_INT pos = 0; pos < length; ) {
        pos += utfAscii( src + pos, length - pos );
        for ( int i = 0; i < 16 && pos < length; i++ ) {
            const UTF_SEQUENCE sequence = utfSequence( src + pos, length - pos );
            if ( !sequence.ok ) {
                return pos;
            }
            pos += sequence.length;
        }
    }
    return -1;
}
ZU_INT zuUtf8Fault( const char *src, ZU_INT srcLength )
{
    UTF_ASSERT_SOURCE();
    return utfFault( src, utfLength( src, srcLength ) );
}
ZU_INT zuUtf16Fault( const char16_t *src, ZU_INT srcLength )
{
    UTF_ASSERT_SOURCE();
    return utfFault( src, utfLength( src, srcLength ) );
}
ZU_INT zuUtfStringFault( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return utfFault( zuStringBacking( zus ), zuStringLength( zus ) );
}

// Decoding.  Where faults are refused, `fault` is not null; nothing is returned and nothing changed then.
template <typename SRC>
static ZU_STRING *utfDecode( const SRC *src, ZU_INT length, ZU_INT *fault )
{
    ZU_INT found;
    const ZU_INT count = utfMeasure<ZU_CHAR>( src, length, &found );
    if ( fault ) {
        *fault = found;
        if ( found >= 0 ) {
            return nullptr;
        }
    }
    if ( count == 0 ) {
        return zuStringCreate();
    }
    ZU_STRING *zus = zu___StringCreateEmpty();
    utfConvert( zu___StringMakeRoom( zus, 0, count ), src, length );
    return zus;
}
template <typename SRC>
static ZU_BOOL utfAppend( ZU_STRING **dest, const SRC *src, ZU_INT length, ZU_INT *fault )
{
    ZU_STRING *decoded = utfDecode( src, length, fault );
    if ( !decoded ) {
        return ZU_FALSE;
    }
    zuStringAppend( dest, decoded );
    ZU_REF_RELEASE( decoded );
    return ZU_TRUE;
}
ZU_STRING *zuUtf8TryDecode( const char *src, ZU_INT srcLength, ZU_INT *fault )
{
    UTF_ASSERT_SOURCE();
    ZU_INT unused;
    return utfDecode( src, utfLength( src, srcLength ), fault ? fault : &unused );
}
ZU_STRING *zuUtf8Decode( const char *src, ZU_INT srcLength )
{
    UTF_ASSERT_SOURCE();
    return utfDecode( src, utfLength( src, srcLength ), nullptr );
}
ZU_BOOL zuUtf8TryAppend( ZU_STRING **dest, const char *src, ZU_INT srcLength, ZU_INT *fault )
{
    ZU_ASSERT( dest );
    ZU_ASSERT( *dest );
    UTF_ASSERT_SOURCE();
    ZU_INT unused;
    return utfAppend( dest, src, utfLength( src, srcLength ), fault ? fault : &unused );
}
void zuUtf8Append( ZU_STRING **dest, const char *src, ZU_INT srcLength )
{
    ZU_ASSERT( dest );
    ZU_ASSERT( *dest );
    UTF_ASSERT_SOURCE();
    utfAppend( dest, src, utfLength( src, srcLength ), nullptr );
}
ZU_STRING *zuUtf16TryDecode( const char16_t *src, ZU_INT srcLength, ZU_INT *fault )
{
    UTF_ASSERT_SOURCE();
    ZU_INT unused;
    return utfDecode( src, utfLength( src, srcLength ), fault ? fault : &unused );
}
ZU_STRING *zuUtf16Decode( const char16_t *src, ZU_INT srcLength )
{
    UTF_ASSERT_SOURCE();
    return utfDecode( src, utfLength( src, srcLength ), nullptr );
}
ZU_BOOL zuUtf16TryAppend( ZU_STRING **dest, const char16_t *src, ZU_INT srcLength, ZU_INT *fault )
{
    ZU_ASSERT( dest );
    ZU_ASSERT( *dest );
    UTF_ASSERT_SOURCE();
    ZU_INT unused;
    return utfAppend( dest, src, utfLength( src, srcLength ), fault ? fault : &unused );
}
void zuUtf16Append( ZU_STRING **dest, const char16_t *src, ZU_INT srcLength )
{
    ZU_ASSERT( dest );
    ZU_ASSERT( *dest );
    UTF_ASSERT_SOURCE();
    utfAppend( dest, src, utfLength( src, srcLength ), nullptr );
}

// Encoding, likewise
template <typename DEST>
static DEST *utfEncode( ZU_STRING *zus, ZU_INT *length, ZU_INT *fault )
{
    const ZU_CHAR *chars = zuStringBacking( zus );
    const ZU_INT count = zuStringLength( zus );
    ZU_INT found;
    const ZU_INT units = utfMeasure<DEST>( chars, count, &found );
    const bool refused = fault && found >= 0;
    if ( fault ) {
        *fault = found;
    }
    if ( length ) {
        *length = refused ? 0 : units;
    }
    if ( refused ) {
        return nullptr;
    }
    DEST *dest = (DEST *)zuMemAllocN( units + 1, sizeof( DEST ) );
    utfConvert( dest, chars, count );
    dest[ units ] = 0;
    return dest;
}
char *zuUtf8TryEncode( ZU_STRING *zus, ZU_INT *length, ZU_INT *fault )
{
    ZU_ASSERT( zus );
    ZU_INT unused;
    return utfEncode<char>( zus, length, fault ? fault : &unused );
}
char *zuUtf8Encode( ZU_STRING *zus, ZU_INT *length )
{
    ZU_ASSERT( zus );
    return utfEncode<char>( zus, length, nullptr );
}
char16_t *zuUtf16TryEncode( ZU_STRING *zus, ZU_INT *length, ZU_INT *fault )
{
    ZU_ASSERT( zus );
    ZU_INT unused;
    return utfEncode<char16_t>( zus, length, fault ? fault : &unused );
}
char16_t *zuUtf16Encode( ZU_STRING *zus, ZU_INT *length )
{
    ZU_ASSERT( zus );
    return utfEncode<char16_t>( zus, length, nullptr );
}

// Without a string in between

// Tells whether `src` is what `chars` begins with, and stores how many code points it is.
static bool utfIsInFront( const ZU_CHAR *chars, ZU_INT count, const char *src, ZU_INT length, ZU_INT *used )
{
    *used = 0;
    for ( ZU_INT pos = 0; pos < length; ++*used ) {
        const UTF_SEQUENCE sequence = utfSequence( src + pos, length - pos );
        if ( *used == count || !sequence.ok || chars[ *used ] != sequence.ch ) {
            return false;
        }
        pos += sequence.length;
    }
    return true;
}
ZU_BOOL zuUtf8Equals( ZU_STRING *zus, const char *src, ZU_INT srcLength )
{
    ZU_ASSERT( zus );
    UTF_ASSERT_SOURCE();
    ZU_INT used;
    return utfIsInFront( zuStringBacking( zus ), zuStringLength( zus ), src, utfLength( src, srcLength ), &used ) &&
           used == zuStringLength( zus );
}
ZU_INT zuUtf8Find( ZU_STRING *zus, ZU_INT offset, const char *sub, ZU_INT subLength )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( offset >= 0 );
    ZU_ASSERT( offset <= zus->length );
    ZU_ASSERT( subLength >= -1 );
    ZU_ASSERT( sub );
    const ZU_INT length = utfLength( sub, subLength );
    ZU_ASSERT( length > 0 );
    ZU_ASSERT( zuUtf8Fault( sub, length ) == -1 );
    const ZU_CHAR *chars = zuStringBacking( zus );
    const ZU_CHAR first = utfSequence( sub, length ).ch;
    ZU_INT used;
    for ( ZU_INT pos = offset; pos < zus->length; pos++ ) {
        if ( chars[ pos ] == first && utfIsInFront( chars + pos, zus->length - pos, sub, length, &used ) ) {
            return pos;
        }
    }
    return -1;
}
