// Values are written where they stay: most go into the free room at the end of the buffer, which nobody else has, as
// long as that is sure to hold the largest that they can become.  Nearly all text on the wire is ASCII, so that a
// string is first taken for that: its characters are stored as bytes and united on the way, and only if one was
// more, which the union tells, is the string done once more in full.

#include "zu/base/zu_encoder.h"

#include "zu/base/zu_buffer_internal.h"
#include "zu/base/zu_string_internal.h"
#include "zu/runtime/zu_module.h"
#include "zu/sys/zu_mem.h"

#include <bit>
#include <cstring>

static constexpr ZU_INT MAGNITUDE_MAX = 8;             // bytes of an integer's absolute value
static constexpr ZU_INT INT_BYTES = 1 + MAGNITUDE_MAX; // bytes of an integer
static constexpr ZU_INT LONG_CHAR = 3;                 // bytes of a character that is no ASCII
static constexpr ZU_CHAR ASCII_END = 0x80;

struct ZU_ENCODER {
    ZU_OBJ obj;
    ZU_BUFFER *buffer; // never on foreign memory, since it begins empty and is only appended to
};

static void encoderFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_ENCODER =
    ZU___SORT_INITIALIZER( "ZU_ENCODER", &zu___module, encoderFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_ENCODER, zuEncoder )

// Creation
ZU_ENCODER *zuEncoderCreate( void )
{
    ZU_ENCODER *enc = (ZU_ENCODER *)zu___ObjCreate( sizeof( ZU_ENCODER ), &zu___sort_ZU_ENCODER );
    enc->buffer = zuBufferCreate();
    return enc;
}
static void encoderFree( ZU_OBJ *thisObj )
{
    ZU_ENCODER *enc = zuEncoderFrom( thisObj );
    ZU_ASSERT( enc );
    ZU_REF_RELEASE( enc->buffer );
    ZU_REF_POISON( enc->buffer );
}

// The whole
ZU_BUFFER *zuEncoderBuffer( ZU_ENCODER *enc )
{
    ZU_ASSERT( enc );
    return zuBufferRetain( enc->buffer );
}
ZU_INT zuEncoderLength( ZU_ENCODER *enc )
{
    ZU_ASSERT( enc );
    return zuBufferLength( enc->buffer );
}
void zuEncoderClear( ZU_ENCODER *enc )
{
    ZU_ASSERT( enc );
    zuBufferClear( &enc->buffer );
}

// Appending

static inline uint8_t *encoderEnd( ZU_BUFFER *buf )
{
    return buf->bytes + ( buf->bitFspace + buf->bitLength ) / 8;
}
static inline bool encoderHasRoom( ZU_BUFFER *buf, ZU_INT byteCount )
{
    return ZU_REF_RETAIN_COUNT( buf ) == 1 && buf->bitBspace >= (ZU___INT_UNSIGNED)byteCount * 8 &&
           buf->bitLength % 8 == 0;
}
// Makes room for `byteCount` bytes at the end of a buffer of whole bytes.
[[gnu::noinline]] static void encoderMakeRoom( ZU_BUFFER **buf, ZU_INT byteCount )
{
    zuBufferAppendZero( buf, byteCount );
    ( *buf )->bitLength -= (ZU___INT_UNSIGNED)byteCount * 8;
    ( *buf )->bitBspace += (ZU___INT_UNSIGNED)byteCount * 8;
}
// Appends what `put` stores from the address on that it gets, at most `most` bytes; it returns where that ends.
template <typename PUT>
static inline void encoderAppend( ZU_ENCODER *enc, ZU_INT most, PUT put )
{
    if ( ZU___UNLIKELY( !encoderHasRoom( enc->buffer, most ) ) ) {
        if ( enc->buffer->bitLength % 8 != 0 ) {
            uint8_t *bytes = (uint8_t *)zuMemAlloc( most );
            zuBufferAppendBytes( &enc->buffer, bytes, put( bytes ) - bytes );
            zuMemFree( bytes );
            return;
        }
        encoderMakeRoom( &enc->buffer, most );
    }
    ZU_BUFFER *buf = enc->buffer;
    uint8_t *end = encoderEnd( buf );
    ZU___INT_UNSIGNED bits = (ZU___INT_UNSIGNED)( put( end ) - end ) * 8;
    buf->bitLength += bits;
    buf->bitBspace -= bits;
}

// Each stores a value and returns where it ends.  An integer may write over all of INT_BYTES bytes.
static inline uint8_t *encoderPutInt( uint8_t *dest, ZU_INT value )
{
    uint64_t magnitude = value < 0 ? 0 - (uint64_t)value : (uint64_t)value;
    int bytes = ( 64 + 7 - std::countl_zero( magnitude ) ) / 8;
    *dest++ = (uint8_t)( ( value < 0 ? 0x80 : 0 ) | bytes );
    uint64_t word = bytes > 0 ? magnitude << ( 64 - 8 * bytes ) : 0;
    word = std::endian::native == std::endian::little ? __builtin_bswap64( word ) : word;
    memcpy( dest, &word, sizeof word );
    return dest + bytes;
}
static inline uint8_t *encoderPutChar( uint8_t *dest, ZU_CHAR value )
{
    if ( value < ASCII_END ) {
        *dest++ = (uint8_t)value;
        return dest;
    }
    dest[ 0 ] = (uint8_t)( ( value >> 16 & 0x1F ) | 0x80 );
    dest[ 1 ] = (uint8_t)( value >> 8 );
    dest[ 2 ] = (uint8_t)value;
    return dest + LONG_CHAR;
}
// Stores characters as bytes; tells whether that is what they are.
static inline bool encoderPutAscii( uint8_t *dest, const ZU_CHAR *values, ZU_INT length )
{
    static constexpr ZU_INT STEP = 8; // a number that is fixed lets the compiler take them together
    ZU_CHAR all = 0;
    ZU_INT i = 0;
    for ( ; length - i >= STEP; i += STEP ) {
        for ( ZU_INT k = i; k < i + STEP; k++ ) {
            all |= values[ k ];
            dest[ k ] = (uint8_t)values[ k ];
        }
    }
    for ( ; i < length; i++ ) {
        all |= values[ i ];
        dest[ i ] = (uint8_t)values[ i ];
    }
    return all < ASCII_END;
}

// Appends characters, of which not all are ASCII, and their number ahead of them if it is `counted`.
[[gnu::noinline]] static void encoderAppendLongChars( ZU_ENCODER *enc, const ZU_CHAR *values, ZU_INT length,
                                                      bool counted )
{
    ZU_INT most = INT_BYTES + length;
    for ( ZU_INT i = 0; i < length; i++ ) {
        ZU_CHAR value = values[ i ];
        ZU_ASSERT( ZU_CHAR_OK( value ) );
        most += value < ASCII_END ? 0 : LONG_CHAR - 1;
    }
    encoderAppend( enc, most, [ & ]( uint8_t *dest ) {
        dest = counted ? encoderPutInt( dest, length ) : dest;
        for ( ZU_INT i = 0; i < length; i++ ) {
            dest = encoderPutChar( dest, values[ i ] );
        }
        return dest;
    } );
}
static inline void encoderAppendChars( ZU_ENCODER *enc, const ZU_CHAR *values, ZU_INT length, bool counted )
{
    bool ascii = false;
    encoderAppend( enc, INT_BYTES + length, [ & ]( uint8_t *dest ) {
        uint8_t *text = counted ? encoderPutInt( dest, length ) : dest;
        ascii = encoderPutAscii( text, values, length );
        return ascii ? text + length : dest;
    } );
    if ( ZU___UNLIKELY( !ascii ) ) {
        encoderAppendLongChars( enc, values, length, counted );
    }
}

// Values
void zuEncoderEncodeBool( ZU_ENCODER *enc, ZU_BOOL value )
{
    zuEncoderWriteByte( enc, value ? 1 : 0 );
}
void zuEncoderEncodeInt( ZU_ENCODER *enc, ZU_INT value )
{
    ZU_ASSERT( enc );
    encoderAppend( enc, INT_BYTES, [ & ]( uint8_t *dest ) { return encoderPutInt( dest, value ); } );
}
void zuEncoderEncodeChar( ZU_ENCODER *enc, ZU_CHAR value )
{
    ZU_ASSERT( enc );
    ZU_ASSERT( ZU_CHAR_OK( value ) );
    encoderAppend( enc, LONG_CHAR, [ & ]( uint8_t *dest ) { return encoderPutChar( dest, value ); } );
}
void zuEncoderEncodeChars( ZU_ENCODER *enc, const ZU_CHAR *values, ZU_INT valuesLength )
{
    ZU_ASSERT( enc );
    ZU_ASSERT( valuesLength >= 0 );
    ZU_ASSERT( values || valuesLength == 0 );
    encoderAppendChars( enc, values, valuesLength, false );
}
void zuEncoderEncodeString( ZU_ENCODER *enc, ZU_STRING *value )
{
    ZU_ASSERT( enc );
    ZU_ASSERT( value );
    encoderAppendChars( enc, value->chars + value->fspace, value->length, true );
}
void zuEncoderEncodeBuffer( ZU_ENCODER *enc, ZU_BUFFER *buf )
{
    ZU_ASSERT( enc );
    ZU_ASSERT( buf );
    ZU_ASSERT( zuBufferBitIsAligned( buf ) );
    zuEncoderEncodeInt( enc, zuBufferLength( buf ) );
    zuBufferAppend( &enc->buffer, buf );
}
// As many characters as bytes, each of them its own byte: an identifier's buffer looks as its string does.
void zuEncoderEncodeIdentifier( ZU_ENCODER *enc, ZU_IDENTIFIER *value )
{
    ZU_ASSERT( enc );
    ZU_ASSERT( value );
    ZU_STRING *text = zuIdentifierString( value );
    zuEncoderEncodeString( enc, text );
    ZU_REF_RELEASE( text );
}
void zuEncoderEncodeStringVector( ZU_ENCODER *enc, ZU_VECTOR *value )
{
    ZU_ASSERT( enc );
    ZU_ASSERT( value );
    ZU_INT length = zuVectorLength( value );
    ZU_OBJ *const *items = zuVectorBacking( value );
    zuEncoderEncodeInt( enc, length );
    for ( ZU_INT i = 0; i < length; i++ ) {
        ZU_STRING *text = zuObjToString( items[ i ] );
        zuEncoderEncodeString( enc, text );
        ZU_REF_RELEASE( text );
    }
}

// Values that may be null

// Appends what tells whether there is a value.
static bool encoderAppendPresence( ZU_ENCODER *enc, const void *value )
{
    zuEncoderEncodeBool( enc, value != nullptr );
    return value != nullptr;
}
void zuEncoderEncodeOptionalBuffer( ZU_ENCODER *enc, ZU_BUFFER *value )
{
    if ( encoderAppendPresence( enc, value ) ) {
        zuEncoderEncodeBuffer( enc, value );
    }
}
void zuEncoderEncodeOptionalIdentifier( ZU_ENCODER *enc, ZU_IDENTIFIER *value )
{
    if ( encoderAppendPresence( enc, value ) ) {
        zuEncoderEncodeIdentifier( enc, value );
    }
}
void zuEncoderEncodeOptionalString( ZU_ENCODER *enc, ZU_STRING *value )
{
    if ( encoderAppendPresence( enc, value ) ) {
        zuEncoderEncodeString( enc, value );
    }
}
void zuEncoderEncodeOptionalStringVector( ZU_ENCODER *enc, ZU_VECTOR *value )
{
    if ( encoderAppendPresence( enc, value ) ) {
        zuEncoderEncodeStringVector( enc, value );
    }
}

// Plain bytes: the buffer checks the rest, and does the work.
void zuEncoderWrite( ZU_ENCODER *enc, ZU_BUFFER *buf )
{
    ZU_ASSERT( enc );
    zuBufferAppend( &enc->buffer, buf );
}
void zuEncoderWriteInner( ZU_ENCODER *enc, ZU_BUFFER *buf, ZU_INT byteOffset, ZU_INT byteCount )
{
    ZU_ASSERT( enc );
    zuBufferAppendInner( &enc->buffer, buf, byteOffset, byteCount );
}
void zuEncoderWriteOuter( ZU_ENCODER *enc, ZU_BUFFER *buf, ZU_INT byteOffset, ZU_INT byteCount )
{
    ZU_ASSERT( enc );
    zuBufferAppendOuter( &enc->buffer, buf, byteOffset, byteCount );
}
void zuEncoderWriteLeading( ZU_ENCODER *enc, ZU_BUFFER *buf, ZU_INT byteCount )
{
    ZU_ASSERT( enc );
    zuBufferAppendLeading( &enc->buffer, buf, byteCount );
}
void zuEncoderWriteTrailing( ZU_ENCODER *enc, ZU_BUFFER *buf, ZU_INT byteCount )
{
    ZU_ASSERT( enc );
    zuBufferAppendTrailing( &enc->buffer, buf, byteCount );
}
void zuEncoderWriteByte( ZU_ENCODER *enc, uint8_t byte )
{
    ZU_ASSERT( enc );
    encoderAppend( enc, 1, [ & ]( uint8_t *dest ) {
        *dest = byte;
        return dest + 1;
    } );
}
void zuEncoderWriteBytes( ZU_ENCODER *enc, const uint8_t *bytes, ZU_INT byteCount )
{
    ZU_ASSERT( enc );
    zuBufferAppendBytes( &enc->buffer, bytes, byteCount );
}
void zuEncoderWriteZero( ZU_ENCODER *enc, ZU_INT byteCount )
{
    ZU_ASSERT( enc );
    zuBufferAppendZero( &enc->buffer, byteCount );
}
void zuEncoderWriteOne( ZU_ENCODER *enc, ZU_INT byteCount )
{
    ZU_ASSERT( enc );
    zuBufferAppendOne( &enc->buffer, byteCount );
}
void zuEncoderWriteEncoder( ZU_ENCODER *enc, ZU_ENCODER *src )
{
    ZU_ASSERT( enc );
    ZU_ASSERT( src );
    zuBufferAppend( &enc->buffer, src->buffer );
}
