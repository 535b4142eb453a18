// Values are written where they stay: into the free room at the end of the buffer, as long as that is sure to hold the
// largest that they can become.  A value is a few bytes, and to look at the buffer for each, at who else holds it and at
// its lengths in bits, costs more than those.  So the encoder keeps the bounds of the room for itself, and the buffer
// gets its lengths when anybody is to see it.

#include "zu/base/zu_encoder.h"

#include "zu/base/zu_buffer_internal.h"
#include "zu/base/zu_reserve.h"
#include "zu/base/zu_string_internal.h"
#include "zu/base/zu_wire_chars_internal.h"
#include "zu/runtime/zu_module.h"
#include "zu/runtime/zu_ref_internal.h"
#include "zu/sys/zu_chars_ascii_internal.h"
#include "zu/sys/zu_mem.h"

#include <bit>
#include <cstring>

static_assert( std::endian::native == std::endian::little );

static constexpr int INT_SIGN = 0x80;
static constexpr ZU_INT INT_BYTES = 9;      // at most
static constexpr ZU_INT SPARE_MIN = 512;    // bytes of room that are made beyond what is wanted: a small message
static constexpr ZU_INT PIECE_CHARS = 1024; // of a text that there is no room for at once

struct ZU_ENCODER {
    ZU_OBJ obj;
    ZU_BUFFER *buffer; // never on foreign memory, since it begins empty and is only appended to; null while it is empty
    uint8_t *end;      // where the content really ends, and
    uint8_t *limit;    // where the room behind it does; both null while the buffer tells that itself
};

static void encoderFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_ENCODER =
    ZU___SORT_INITIALIZER( "ZU_ENCODER", &zu___module, encoderFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_ENCODER, zuEncoder )

// Creation
ZU_ENCODER *zuEncoderCreate( void )
{
    ZU_ENCODER *enc = (ZU_ENCODER *)zu___ObjCreate( sizeof( ZU_ENCODER ), &zu___sort_ZU_ENCODER );
    enc->buffer = nullptr;
    enc->end = nullptr;
    enc->limit = nullptr;
    return enc;
}
static void encoderFree( ZU_OBJ *thisObj )
{
    ZU_ENCODER *enc = zuEncoderFrom( thisObj );
    ZU_ASSERT( enc );
    ZU_REF_RELEASE_OPT( enc->buffer );
    ZU_REF_POISON( enc->buffer );
}

// Has the buffer tell its lengths again, and returns where it is held.
static ZU_BUFFER **encoderClose( ZU_ENCODER *enc )
{
    if ( !enc->buffer ) {
        enc->buffer = zuBufferCreate();
    } else if ( enc->limit ) {
        ZU_BUFFER *buf = enc->buffer;
        buf->bitLength = BYTES_TO_BITS( enc->end - buf->bytes ) - buf->bitFspace;
        buf->bitBspace = BYTES_TO_BITS( enc->limit - enc->end );
        enc->end = nullptr;
        enc->limit = nullptr;
    }
    return &enc->buffer;
}
// Takes the room for `byteCount` bytes at least, and makes as much as there is content beyond that if there is not
// enough, since more will come.  Returns false if the content ends within a byte.
static bool encoderOpen( ZU_ENCODER *enc, ZU_INT byteCount )
{
    if ( !enc->buffer ) {
        enc->buffer = zu___BufferCreateWithRoom( zuIntAddSaturating( byteCount, SPARE_MIN ) );
    }
    ZU_BUFFER **buf = encoderClose( enc );
    if ( !zuBufferBitIsAligned( *buf ) ) {
        return false;
    }
    if ( ZU_REF_RETAIN_COUNT( *buf ) != 1 || ( *buf )->bitBspace < BYTES_TO_BITS( byteCount ) ) {
        zuBufferReserve( buf, zuIntAddSaturating( byteCount, zuIntMax( zuBufferLength( *buf ), SPARE_MIN ) ) );
    }
    ZU_BUFFER *own = *buf;
    enc->end = own->bytes + ( own->bitFspace + own->bitLength ) / 8;
    enc->limit = enc->end + own->bitBspace / 8;
    return true;
}

// The whole
ZU_BUFFER *zuEncoderBuffer( ZU_ENCODER *enc )
{
    ZU_ASSERT( enc );
    return zuBufferRetain( *encoderClose( enc ) );
}
ZU_INT zuEncoderLength( ZU_ENCODER *enc )
{
    ZU_ASSERT( enc );
    return zuBufferLength( *encoderClose( enc ) );
}
void zuEncoderClear( ZU_ENCODER *enc )
{
    ZU_ASSERT( enc );
    ZU_REF_RELEASE_OPT( enc->buffer );
    enc->buffer = nullptr;
    enc->end = nullptr;
    enc->limit = nullptr;
}

// Appending

// Appends what `put` stores from the address on that it gets, at most `most` bytes; it returns where that ends.
template <typename PUT>
[[gnu::noinline]] static void encoderAppendAnyhow( ZU_ENCODER *enc, ZU_INT most, PUT put )
{
    if ( encoderOpen( enc, most ) ) {
        enc->end = put( enc->end );
        return;
    }
    uint8_t *bytes = (uint8_t *)zuMemAlloc( most );
    zuBufferAppendBytes( &enc->buffer, bytes, put( bytes ) - bytes );
    zuMemFree( bytes );
}
static inline bool encoderHasRoom( const ZU_ENCODER *enc, ZU_INT byteCount )
{
    return ZU___LIKELY( enc->limit - enc->end >= byteCount );
}
template <typename PUT>
[[gnu::always_inline]] static inline void encoderAppend( ZU_ENCODER *enc, ZU_INT most, PUT put )
{
    if ( encoderHasRoom( enc, most ) ) {
        enc->end = put( enc->end );
    } else {
        encoderAppendAnyhow( enc, most, put );
    }
}

// Stores a value and returns where it ends; what lies behind may be overwritten, up to as many bytes as any value has.
[[gnu::always_inline]] static inline uint8_t *encoderPutInt( uint8_t *dest, ZU_INT value )
{
    uint64_t magnitude = value < 0 ? 0 - (uint64_t)value : (uint64_t)value;
    int sign = value < 0 ? INT_SIGN : 0;
    if ( ZU___LIKELY( magnitude < 256 ) ) {
        int bytes = magnitude > 0;
        dest[ 0 ] = (uint8_t)( sign | bytes );
        dest[ 1 ] = (uint8_t)magnitude;
        return dest + 1 + bytes;
    }
    int bytes = ( 64 + 7 - __builtin_clzll( magnitude ) ) / 8;
    dest[ 0 ] = (uint8_t)( sign | bytes );
    uint64_t word = __builtin_bswap64( magnitude << ( -8 * bytes & 63 ) );
    memcpy( dest + 1, &word, sizeof word );
    return dest + 1 + bytes;
}
// Characters, for which there is room.  Most text is ASCII, and what is not mostly does not begin so.
[[gnu::noinline]] static void encoderPutAnyChars( ZU_ENCODER *enc, uint8_t *dest, const ZU_CHAR *values, ZU_INT length )
{
    enc->end = zu___WirePutChars( dest, values, length );
}
[[gnu::always_inline]] static inline void encoderPutChars( ZU_ENCODER *enc, uint8_t *dest, const ZU_CHAR *values,
                                                           ZU_INT length )
{
    if ( ZU___LIKELY( ( length == 0 || values[ 0 ] < ZU___WIRE_ASCII_END ) &&
                      zu___CharsPackAscii( dest, values, length ) ) ) {
        enc->end = dest + length;
    } else {
        encoderPutAnyChars( enc, dest, values, length );
    }
}
static inline ZU_INT encoderRoomForChars( ZU_INT length )
{
    return ZU___WIRE_CHAR_BYTES * length + ZU___WIRE_ROOM_BEHIND;
}
// Appends characters where there is no room for the largest that they can become.  That is not made for all of a long
// text, which is seldom as large.
[[gnu::noinline]] static void encoderAppendAnyChars( ZU_ENCODER *enc, const ZU_CHAR *values, ZU_INT length )
{
    if ( length > PIECE_CHARS && !encoderHasRoom( enc, length + encoderRoomForChars( PIECE_CHARS ) ) ) {
        encoderOpen( enc, length + encoderRoomForChars( PIECE_CHARS ) );
    }
    for ( ; length > 0; values += PIECE_CHARS, length -= PIECE_CHARS ) {
        ZU_INT count = zuIntMin( length, PIECE_CHARS );
        encoderAppend( enc, encoderRoomForChars( count ),
                       [ = ]( uint8_t *dest ) { return zu___WirePutChars( dest, values, count ); } );
    }
}
// The same for a string that has its number ahead.
[[gnu::noinline]] static void encoderAppendAnyString( ZU_ENCODER *enc, ZU_STRING *value )
{
    zuEncoderEncodeInt( enc, value->length );
    encoderAppendAnyChars( enc, value->chars + value->fspace, value->length );
}

// Values
void zuEncoderEncodeBool( ZU_ENCODER *enc, ZU_BOOL value )
{
    zuEncoderWriteByte( enc, value ? 1 : 0 );
}
void zuEncoderEncodeInt( ZU_ENCODER *enc, ZU_INT value )
{
    ZU_ASSERT( enc );
    encoderAppend( enc, INT_BYTES, [ = ]( uint8_t *dest ) { return encoderPutInt( dest, value ); } );
}
void zuEncoderEncodeChar( ZU_ENCODER *enc, ZU_CHAR value )
{
    ZU_ASSERT( enc );
    ZU_ASSERT( ZU_CHAR_OK( value ) );
    encoderAppendAnyChars( enc, &value, 1 );
}
void zuEncoderEncodeChars( ZU_ENCODER *enc, const ZU_CHAR *values, ZU_INT valuesLength )
{
    ZU_ASSERT( enc );
    ZU_ASSERT( valuesLength >= 0 );
    ZU_ASSERT( values || valuesLength == 0 );
    if ( !zuCharsAllOk( values, valuesLength ) ) {
        for ( ZU_INT i = 0; i < valuesLength; i++ ) {
            ZU_CHAR value = values[ i ];
            ZU_ASSERT( ZU_CHAR_OK( value ) );
        }
    }
    if ( encoderHasRoom( enc, encoderRoomForChars( valuesLength ) ) ) {
        encoderPutChars( enc, enc->end, values, valuesLength );
    } else {
        encoderAppendAnyChars( enc, values, valuesLength );
    }
}
void zuEncoderEncodeString( ZU_ENCODER *enc, ZU_STRING *value )
{
    ZU_ASSERT( enc );
    ZU_ASSERT( value );
    const ZU_INT length = value->length;
    if ( encoderHasRoom( enc, INT_BYTES + encoderRoomForChars( length ) ) ) {
        encoderPutChars( enc, encoderPutInt( enc->end, length ), value->chars + value->fspace, length );
    } else {
        encoderAppendAnyString( enc, value );
    }
}
void zuEncoderEncodeBuffer( ZU_ENCODER *enc, ZU_BUFFER *buf )
{
    ZU_ASSERT( enc );
    ZU_ASSERT( buf );
    ZU_ASSERT( zuBufferBitIsAligned( buf ) );
    ZU_INT length = zuBufferLength( buf );
    if ( encoderHasRoom( enc, INT_BYTES + length ) ) {
        enc->end = encoderPutInt( enc->end, length );
        zuMemCopy( enc->end, zuBufferBacking( buf ), length );
        enc->end += length;
        return;
    }
    zuEncoderEncodeInt( enc, length );
    zuBufferAppend( encoderClose( enc ), buf );
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
    zu___Owned held( zuVectorRetain( value ) ); // an item's text may change the vector
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
    zuBufferAppend( encoderClose( enc ), buf );
}
void zuEncoderWriteInner( ZU_ENCODER *enc, ZU_BUFFER *buf, ZU_INT byteOffset, ZU_INT byteCount )
{
    ZU_ASSERT( enc );
    zuBufferAppendInner( encoderClose( enc ), buf, byteOffset, byteCount );
}
void zuEncoderWriteOuter( ZU_ENCODER *enc, ZU_BUFFER *buf, ZU_INT byteOffset, ZU_INT byteCount )
{
    ZU_ASSERT( enc );
    zuBufferAppendOuter( encoderClose( enc ), buf, byteOffset, byteCount );
}
void zuEncoderWriteLeading( ZU_ENCODER *enc, ZU_BUFFER *buf, ZU_INT byteCount )
{
    ZU_ASSERT( enc );
    zuBufferAppendLeading( encoderClose( enc ), buf, byteCount );
}
void zuEncoderWriteTrailing( ZU_ENCODER *enc, ZU_BUFFER *buf, ZU_INT byteCount )
{
    ZU_ASSERT( enc );
    zuBufferAppendTrailing( encoderClose( enc ), buf, byteCount );
}
void zuEncoderWriteByte( ZU_ENCODER *enc, uint8_t byte )
{
    ZU_ASSERT( enc );
    encoderAppend( enc, 1, [ = ]( uint8_t *dest ) {
        *dest = byte;
        return dest + 1;
    } );
}
void zuEncoderWriteBytes( ZU_ENCODER *enc, const uint8_t *bytes, ZU_INT byteCount )
{
    ZU_ASSERT( enc );
    zuBufferAppendBytes( encoderClose( enc ), bytes, byteCount );
}
void zuEncoderWriteZero( ZU_ENCODER *enc, ZU_INT byteCount )
{
    ZU_ASSERT( enc );
    zuBufferAppendZero( encoderClose( enc ), byteCount );
}
void zuEncoderWriteOne( ZU_ENCODER *enc, ZU_INT byteCount )
{
    ZU_ASSERT( enc );
    zuBufferAppendOne( encoderClose( enc ), byteCount );
}
void zuEncoderWriteEncoder( ZU_ENCODER *enc, ZU_ENCODER *src )
{
    ZU_ASSERT( enc );
    ZU_ASSERT( src );
    zuBufferAppend( encoderClose( enc ), *encoderClose( src ) );
}
