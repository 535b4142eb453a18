// A text is looked at once, for its faults and for the length of what it becomes, and then converted into an array of
// just that size.  The steps of both are in zu_utf_steps.cpp; what is well-formed goes through them in one piece, and a
// text with faults in a piece for each fault.

#include "zu/base/zu_utf.h"

#include "zu/base/zu_string_internal.h"
#include "zu/base/zu_utf_internal.h"
#include "zu/runtime/zu_ref_internal.h"
#include "zu/sys/zu_chars_ascii_internal.h"
#include "zu/sys/zu_chars_internal.h"
#include "zu/sys/zu_chars_utf8_shuffle_internal.h"
#include "zu/sys/zu_mem.h"

#include <cstring>

static constexpr ZU_CHAR REPLACEMENT = ZU_CHAR_REPLACEMENT_CHARACTER;
static constexpr bool LITTLE_ENDIAN_MACHINE = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__;

static ZU_INT utfLength( const char *src, ZU_INT srcLength )
{
    return zu___CharsMeasureCstr( src, srcLength );
}
template <typename UNIT>
static ZU_INT utfLength( const UNIT *src, ZU_INT srcLength )
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

// The steps by the type of the source, each over what is well-formed at the front

static const char *utfWellFormed( const char *src, const char *end, ZU_INT *count )
{
    return (const char *)zu___UtfWellFormed( (const uint8_t *)src, (const uint8_t *)end, count );
}
static const char16_t *utfWellFormed( const char16_t *src, const char16_t *end, ZU_INT *count )
{
    return zu___UtfWellFormed16( src, end, count );
}
static const ZU_CHAR *utfWellFormed( const ZU_CHAR *src, const ZU_CHAR *end, ZU_INT *count )
{
    const ZU_CHAR *goodEnd = zu___UtfWellFormed32( src, end );
    *count += goodEnd - src;
    return goodEnd;
}
static const char *utfPassFault( const char *src, const char *end )
{
    const uint8_t *pos = (const uint8_t *)src;
    zu___CharsTakeUtf8( &pos, (const uint8_t *)end );
    return (const char *)pos;
}
template <typename UNIT>
static const UNIT *utfPassFault( const UNIT *src, const UNIT * )
{
    return src + 1;
}
static ZU_CHAR *utfDecodePiece( ZU_CHAR *dest, ZU_INT count, const char *src, const char *end )
{
    const uint8_t *pos = (const uint8_t *)src;
    return dest + zu___UtfDecode8( dest, count, &pos, (const uint8_t *)end );
}
static ZU_CHAR *utfDecodePiece( ZU_CHAR *dest, ZU_INT count, const char16_t *src, const char16_t *end )
{
    const uint8_t *pos = (const uint8_t *)src;
    return dest + zu___UtfDecode16( dest, count, &pos, (const uint8_t *)end, LITTLE_ENDIAN_MACHINE );
}
static ZU_CHAR *utfDecodePiece( ZU_CHAR *dest, ZU_INT, const ZU_CHAR *src, const ZU_CHAR *end )
{
    zuMemCopyN( dest, src, end - src, sizeof( ZU_CHAR ) );
    return dest + ( end - src );
}

// Testing
template <typename SRC>
static ZU_INT utfFault( const SRC *src, ZU_INT length )
{
    ZU_INT count = 0;
    const ZU_INT good = utfWellFormed( src, src + length, &count ) - src;
    return good < length ? good : -1;
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
ZU_INT zuUtf32Fault( const ZU_CHAR *src, ZU_INT srcLength )
{
    UTF_ASSERT_SOURCE();
    return utfFault( src, utfLength( src, srcLength ) );
}
ZU_INT zuUtfStringFault( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return utfFault( zuStringBacking( zus ), zus->length );
}

// Decoding.  Where faults are refused, `fault` is not null; nothing is returned and nothing changed then.

// Returns the number of code points of the text, and where the first fault is, or -1.
template <typename SRC>
static ZU_INT utfMeasure( const SRC *src, const SRC *end, ZU_INT *fault )
{
    *fault = -1;
    ZU_INT count = 0;
    for ( const SRC *pos = src; ( pos = utfWellFormed( pos, end, &count ) ) < end; count++ ) {
        *fault = *fault < 0 ? pos - src : *fault;
        pos = utfPassFault( pos, end );
    }
    return count;
}
// Stores what has been measured, for which `room` suffices.
template <typename SRC>
static void utfDecodeAll( ZU_CHAR *dest, ZU_INT room, const SRC *src, const SRC *end, ZU_INT fault )
{
    if ( fault < 0 ) {
        utfDecodePiece( dest, room, src, end );
        return;
    }
    while ( src < end ) {
        ZU_INT pieceCount = 0;
        const SRC *pieceEnd = utfWellFormed( src, end, &pieceCount );
        dest = utfDecodePiece( dest, pieceCount, src, pieceEnd );
        src = pieceEnd;
        if ( src < end ) {
            *dest++ = REPLACEMENT;
            src = utfPassFault( src, end );
        }
    }
}
// Measures; tells whether to go on.
template <typename SRC>
static bool utfMeasureOk( const SRC *src, ZU_INT length, ZU_INT *fault, ZU_INT *count, ZU_INT *found )
{
    *count = utfMeasure( src, src + length, found );
    if ( fault ) {
        *fault = *found;
    }
    return !fault || *found < 0;
}
static ZU_STRING *utfAllOrNothing( ZU_STRING *zus, bool all )
{
    if ( !all ) {
        zuStringRelease( zus );
    }
    return all ? zus : nullptr;
}
// UTF-8 is looked at and decoded in one go, if vectors can and nothing is wrong; else this returns null.
static ZU_STRING *utfTryDecodeAtOnce( const char *src, ZU_INT length )
{
    if ( length == 0 || zu___CharsUtf8Shuffles() != ZU___CHARS_UTF8_WIDE ) {
        return nullptr;
    }
    const uint8_t *pos = (const uint8_t *)src;
    const uint8_t *end = pos + length;
    const bool isShort = length <= ZU___STRING_INLINE_CHARS; // and sure to fit into the object
    ZU_STRING *zus = zu___StringCreateToFill( isShort ? length : zu___CharsUtf8WideCountStarts( pos, end ) );
    const ZU_INT room = zus->length + zus->bspace;
    zus->length = zu___CharsUtf8WideDecodeExact( zus->chars, room, &pos, end );
    zus->bspace = room - zus->length;
    return utfAllOrNothing( zus, pos == end );
}
// UTF-16 likewise, if it is sure to fit into the object; it is not measured then.
static ZU_STRING *utfTryDecodeAtOnce( const char16_t *src, ZU_INT length )
{
    if ( length == 0 || length > ZU___STRING_INLINE_CHARS ) {
        return nullptr;
    }
    const uint8_t *pos = (const uint8_t *)src;
    const uint8_t *end = (const uint8_t *)( src + length );
    ZU_STRING *zus = zu___StringCreateEmpty();
    zus->length = zu___UtfDecode16( zus->chars, ZU___STRING_INLINE_CHARS, &pos, end, LITTLE_ENDIAN_MACHINE );
    zus->bspace -= zus->length;
    return utfAllOrNothing( zus, pos == end );
}
static ZU_STRING *utfTryDecodeAtOnce( const ZU_CHAR *, ZU_INT )
{
    return nullptr;
}
template <typename SRC>
static ZU_STRING *utfDecode( const SRC *src, ZU_INT length, ZU_INT *fault )
{
    if ( ZU_STRING *zus = utfTryDecodeAtOnce( src, length ) ) {
        if ( fault ) {
            *fault = -1;
        }
        return zus;
    }
    ZU_INT count, found;
    if ( !utfMeasureOk( src, length, fault, &count, &found ) ) {
        return nullptr;
    }
    if ( count == 0 ) {
        return zuStringCreate();
    }
    ZU_STRING *zus = zu___StringCreateToFill( count );
    utfDecodeAll( zus->chars, count + zus->bspace, src, src + length, found );
    return zus;
}
template <typename SRC>
static ZU_BOOL utfAppend( ZU_STRING **dest, const SRC *src, ZU_INT length, ZU_INT *fault )
{
    ZU_INT count, found;
    if ( !utfMeasureOk( src, length, fault, &count, &found ) ) {
        return ZU_FALSE;
    }
    if ( count > 0 ) {
        // UTF-32 may be the string's own, which is held over the change.
        const uintptr_t at = (uintptr_t)src - (uintptr_t)zuStringBacking( *dest );
        auto held = zu___HeldIf( at < (uintptr_t)( *dest )->length * sizeof( ZU_CHAR ), *dest );
        zu___StringUnshare( dest );
        // Room behind the text lets vectors go on to its end.
        ZU_CHAR *room = zu___StringMakeRoom( *dest, ( *dest )->length, count );
        utfDecodeAll( room, count + ( *dest )->bspace, src, src + length, found );
    }
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
ZU_STRING *zuUtf32TryDecode( const ZU_CHAR *src, ZU_INT srcLength, ZU_INT *fault )
{
    UTF_ASSERT_SOURCE();
    ZU_INT unused;
    return utfDecode( src, utfLength( src, srcLength ), fault ? fault : &unused );
}
ZU_STRING *zuUtf32Decode( const ZU_CHAR *src, ZU_INT srcLength )
{
    UTF_ASSERT_SOURCE();
    return utfDecode( src, utfLength( src, srcLength ), nullptr );
}
ZU_BOOL zuUtf32TryAppend( ZU_STRING **dest, const ZU_CHAR *src, ZU_INT srcLength, ZU_INT *fault )
{
    ZU_ASSERT( dest );
    ZU_ASSERT( *dest );
    UTF_ASSERT_SOURCE();
    ZU_INT unused;
    return utfAppend( dest, src, utfLength( src, srcLength ), fault ? fault : &unused );
}
void zuUtf32Append( ZU_STRING **dest, const ZU_CHAR *src, ZU_INT srcLength )
{
    ZU_ASSERT( dest );
    ZU_ASSERT( *dest );
    UTF_ASSERT_SOURCE();
    utfAppend( dest, src, utfLength( src, srcLength ), nullptr );
}

// Encoding, likewise.  UTF-8 of a short string is made on the stack, in one go.

// Each stores `count` well-formed code points where there is room for just them and a terminator.
static char *utfEncodePiece( char *dest, ZU_INT bytes, const ZU_CHAR *src, ZU_INT count )
{
    if ( bytes == count ) {
        zu___CharsPackAscii( (uint8_t *)dest, src, count );
        return dest + count;
    }
    const ZU_CHAR *end = src + count;
    uint8_t *pos = zu___CharsEncodeUtf8( (uint8_t *)dest, (uint8_t *)dest + bytes, &src, end );
    while ( src < end ) {
        pos = zu___CharsPutUtf8( pos, *src++ );
    }
    return (char *)pos;
}
static char16_t *utfEncodePiece( char16_t *dest, ZU_INT units, const ZU_CHAR *src, ZU_INT count )
{
    uint8_t *destEnd = (uint8_t *)( dest + units + 1 );
    return (char16_t *)zu___UtfEncode16( (uint8_t *)dest, destEnd, &src, src + count, LITTLE_ENDIAN_MACHINE );
}
static ZU_CHAR *utfEncodePiece( ZU_CHAR *dest, ZU_INT, const ZU_CHAR *src, ZU_INT count )
{
    zuMemCopyN( dest, src, count, sizeof( ZU_CHAR ) );
    return dest + count;
}
// Passes over what is well-formed at the front of a string, and adds the units that it needs.
static const ZU_CHAR *utfWellFormed( const ZU_CHAR *src, const ZU_CHAR *end, ZU_INT *units, const char * )
{
    return zu___UtfCountBytes( src, end, units );
}
static const ZU_CHAR *utfWellFormed( const ZU_CHAR *src, const ZU_CHAR *end, ZU_INT *units, const char16_t * )
{
    return zu___UtfCountUnits( src, end, units );
}
static const ZU_CHAR *utfWellFormed( const ZU_CHAR *src, const ZU_CHAR *end, ZU_INT *units, const ZU_CHAR * )
{
    return utfWellFormed( src, end, units );
}
template <typename DEST>
static DEST *utfEncode( ZU_STRING *zus, ZU_INT *length, ZU_INT *fault )
{
    static constexpr DEST REPLACED[] = { (DEST)( sizeof( DEST ) == 1 ? 0xEF : REPLACEMENT ), (DEST)0xBF, (DEST)0xBD };
    static constexpr ZU_INT REPLACED_UNITS = sizeof( DEST ) == 1 ? 3 : 1;
    const DEST *const unit = nullptr;
    const ZU_CHAR *chars = zuStringBacking( zus );
    const ZU_CHAR *end = chars + zus->length;
    ZU_INT found = -1;
    ZU_INT units = 0;
    for ( const ZU_CHAR *pos = chars; ( pos = utfWellFormed( pos, end, &units, unit ) ) < end; pos++ ) {
        found = found < 0 ? pos - chars : found;
        units += REPLACED_UNITS;
    }
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
    DEST *destPos = dest;
    if ( found < 0 ) {
        destPos = utfEncodePiece( dest, units, chars, end - chars );
        chars = end;
    }
    while ( chars < end ) {
        ZU_INT pieceUnits = 0;
        const ZU_CHAR *pieceEnd = utfWellFormed( chars, end, &pieceUnits, unit );
        destPos = utfEncodePiece( destPos, pieceUnits, chars, pieceEnd - chars );
        chars = pieceEnd;
        if ( chars < end ) {
            memcpy( destPos, REPLACED, REPLACED_UNITS * sizeof( DEST ) );
            destPos += REPLACED_UNITS;
            chars++;
        }
    }
    ZU_ASSERT( destPos == dest + units );
    *destPos = 0;
    return dest;
}
// Stores UTF-8 where there is room for it and for what vectors store beyond; null if the text has a fault.
static uint8_t *utfTryEncodeShort( uint8_t *dest, const uint8_t *destEnd, const ZU_CHAR *chars, ZU_INT count )
{
    const ZU_CHAR *end = chars + count;
    if ( zu___CharsUtf8Shuffles() == ZU___CHARS_UTF8_WIDE ) {
        dest = zu___CharsUtf8WideEncodeExact( dest, destEnd, &chars, end );
        return chars == end ? dest : nullptr;
    }
    if ( zu___UtfWellFormed32( chars, end ) != end ) {
        return nullptr;
    }
    return zu___CharsPackAscii( dest, chars, count ) ? dest + count
                                                     : zu___CharsEncodeUtf8( dest, destEnd, &chars, end );
}
static char *utfEncode8( ZU_STRING *zus, ZU_INT *length, ZU_INT *fault )
{
    static constexpr ZU_INT SHORT_CHARS = 256;
    static constexpr ZU_INT SLACK = 64;
    uint8_t bytes[ SHORT_CHARS * ZU___CHARS_UTF8_SEQUENCE_MAX + SLACK ];
    const uint8_t *bytesEnd = zus->length > SHORT_CHARS ? nullptr
                                                        : utfTryEncodeShort( bytes, bytes + sizeof bytes,
                                                                             zuStringBacking( zus ), zus->length );
    if ( !bytesEnd ) {
        return utfEncode<char>( zus, length, fault );
    }
    const ZU_INT count = bytesEnd - bytes;
    if ( fault ) {
        *fault = -1;
    }
    if ( length ) {
        *length = count;
    }
    char *dest = (char *)memcpy( zuMemAlloc( count + 1 ), bytes, (size_t)count );
    dest[ count ] = 0;
    return dest;
}
char *zuUtf8TryEncode( ZU_STRING *zus, ZU_INT *length, ZU_INT *fault )
{
    ZU_ASSERT( zus );
    ZU_INT unused;
    return utfEncode8( zus, length, fault ? fault : &unused );
}
char *zuUtf8Encode( ZU_STRING *zus, ZU_INT *length )
{
    ZU_ASSERT( zus );
    return utfEncode8( zus, length, nullptr );
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
ZU_CHAR *zuUtf32TryEncode( ZU_STRING *zus, ZU_INT *length, ZU_INT *fault )
{
    ZU_ASSERT( zus );
    ZU_INT unused;
    return utfEncode<ZU_CHAR>( zus, length, fault ? fault : &unused );
}
ZU_CHAR *zuUtf32Encode( ZU_STRING *zus, ZU_INT *length )
{
    ZU_ASSERT( zus );
    return utfEncode<ZU_CHAR>( zus, length, nullptr );
}

// Without a string in between

// Tells whether `src` is what `chars` begins with, and stores how many code points it is.
static bool utfIsInFront( const ZU_CHAR *chars, ZU_INT count, const char *src, ZU_INT length, ZU_INT *used )
{
    const uint8_t *pos = (const uint8_t *)src;
    const uint8_t *end = pos + length;
    *used = 0;
    for ( ; pos < end; ++*used ) {
        if ( *used == count || zu___CharsTakeUtf8( &pos, end ) != chars[ *used ] ) {
            return false;
        }
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
    const uint8_t *sequence = (const uint8_t *)sub;
    const ZU_CHAR first = zu___CharsTakeUtf8( &sequence, sequence + length );
    ZU_INT used;
    for ( ZU_INT pos = offset; pos < zus->length; pos++ ) {
        if ( chars[ pos ] == first && utfIsInFront( chars + pos, zus->length - pos, sub, length, &used ) ) {
            return pos;
        }
    }
    return -1;
}
