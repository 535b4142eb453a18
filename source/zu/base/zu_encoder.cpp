// Values are written where they stay: most go into the free room at the end of the buffer, which nobody else has, as
// long as that is sure to hold the largest that they can become.  Nearly all text on the wire is ASCII, so that a string
// is first taken for that, and only if it was more is it done once more in full.

#include "zu/base/zu_encoder.h"

#include "zu/base/zu_buffer_internal.h"
#include "zu/base/zu_string_internal.h"
#include "zu/runtime/zu_module.h"
#include "zu/sys/zu_chars_ascii_internal.h"
#include "zu/sys/zu_mem.h"

#include <bit>
#include <cstring>

static_assert( std::endian::native == std::endian::little );

static constexpr int INT_SIGN = 0x80;
static constexpr ZU_INT INT_BYTES = 9; // at most
static constexpr ZU_CHAR ASCII_END = 0x80;
static constexpr ZU_CHAR CHAR_LONG = 0x80000000; // set in the first byte of those below
static constexpr ZU_INT CHAR_BYTES = 3;          // of a character that is no ASCII
static constexpr ZU_INT STEP = 16;               // characters that are looked at together
static constexpr ZU_INT SPARE_MIN = 256;         // bytes of room that are made beyond what is wanted: a small message

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

// Where a buffer of whole bytes that nobody else has goes on.  What is stored there may be anything to a compiler, even
// the lengths of the buffer, so that these are read ahead.
struct ENCODER_TAIL {
    ZU_BUFFER *buf;
    ZU___INT_UNSIGNED bitLength;
    ZU___INT_UNSIGNED bitBspace;
    uint8_t *begin;

    explicit ENCODER_TAIL( ZU_BUFFER *buffer )
        : buf( buffer ), bitLength( buffer->bitLength ), bitBspace( buffer->bitBspace ),
          begin( buffer->bytes + ( buffer->bitFspace + bitLength ) / 8 )
    {
    }
    // Tells whether `byteCount` bytes may be stored.
    bool fits( ZU_INT byteCount ) const
    {
        return ZU_REF_RETAIN_COUNT( buf ) == 1 && bitBspace >= (ZU___INT_UNSIGNED)byteCount * 8 && bitLength % 8 == 0;
    }
    // Takes what has been stored up to `end` into the content.
    void take( const uint8_t *end ) const
    {
        ZU___INT_UNSIGNED bits = (ZU___INT_UNSIGNED)( end - begin ) * 8;
        buf->bitLength = bitLength + bits;
        buf->bitBspace = bitBspace - bits;
    }
};

// Makes room for `byteCount` bytes at the end of a buffer of whole bytes, and for as much as there is already, since
// more will come: it is appended as zeros, and the content is given its length back.
static void encoderMakeRoom( ZU_BUFFER **buf, ZU_INT byteCount )
{
    ZU_INT room = zuIntAddSaturating( byteCount, zuIntMax( zuBufferLength( *buf ), SPARE_MIN ) );
    zuBufferAppendZero( buf, room );
    ( *buf )->bitLength -= (ZU___INT_UNSIGNED)room * 8;
    ( *buf )->bitBspace += (ZU___INT_UNSIGNED)room * 8;
}
// Appends what `put` stores from the address on that it gets, at most `most` bytes; it returns where that ends.
template <typename PUT>
[[gnu::noinline]] static void encoderAppendAnyhow( ZU_ENCODER *enc, ZU_INT most, PUT put )
{
    if ( enc->buffer->bitLength % 8 != 0 ) {
        uint8_t *bytes = (uint8_t *)zuMemAlloc( most );
        zuBufferAppendBytes( &enc->buffer, bytes, put( bytes ) - bytes );
        zuMemFree( bytes );
        return;
    }
    if ( !ENCODER_TAIL( enc->buffer ).fits( most ) ) {
        encoderMakeRoom( &enc->buffer, most );
    }
    ENCODER_TAIL tail( enc->buffer );
    tail.take( put( tail.begin ) );
}
template <typename PUT>
static inline void encoderAppend( ZU_ENCODER *enc, ZU_INT most, PUT put )
{
    ENCODER_TAIL tail( enc->buffer );
    if ( ZU___LIKELY( tail.fits( most ) ) ) {
        tail.take( put( tail.begin ) );
    } else {
        encoderAppendAnyhow( enc, most, put );
    }
}

// Each stores a value and returns where it ends; what lies behind may be overwritten, up to as many bytes as any value
// has.
static inline uint8_t *encoderPutInt( uint8_t *dest, ZU_INT value )
{
    uint64_t magnitude = value < 0 ? 0 - (uint64_t)value : (uint64_t)value;
    int sign = value < 0 ? INT_SIGN : 0;
    if ( magnitude < 256 ) {
        dest[ 0 ] = (uint8_t)( sign | ( magnitude > 0 ) );
        dest[ 1 ] = (uint8_t)magnitude;
        return dest + 1 + ( magnitude > 0 );
    }
    int bytes = ( 64 + 7 - std::countl_zero( magnitude ) ) / 8;
    dest[ 0 ] = (uint8_t)( sign | bytes );
    uint64_t word = __builtin_bswap64( magnitude << ( 64 - 8 * bytes ) );
    memcpy( dest + 1, &word, sizeof word );
    return dest + 1 + bytes;
}
static inline uint8_t *encoderPutChar( uint8_t *dest, ZU_CHAR value )
{
    bool isLong = value >= ASCII_END;
    uint32_t word = __builtin_bswap32( isLong ? CHAR_LONG | value << 8 : value << 24 );
    memcpy( dest, &word, sizeof word );
    return dest + ( isLong ? CHAR_BYTES : 1 );
}

static uint8_t *encoderPutChars( uint8_t *dest, const ZU_CHAR *values, ZU_INT length )
{
    ZU_INT i = 0;
    for ( ; length - i >= STEP; i += STEP ) {
        if ( zu___CharsPackAscii( dest, values + i, STEP ) ) {
            dest += STEP;
        } else {
            for ( ZU_INT k = i; k < i + STEP; k++ ) {
                dest = encoderPutChar( dest, values[ k ] );
            }
        }
    }
    for ( ; i < length; i++ ) {
        dest = encoderPutChar( dest, values[ i ] );
    }
    return dest;
}
// Appends characters, and their number ahead of them if it is `counted`.
[[gnu::noinline]] static void encoderAppendAnyChars( ZU_ENCODER *enc, const ZU_CHAR *values, ZU_INT length,
                                                     bool counted )
{
    // There is room for the largest that they can become nearly always, and then nothing has to be counted.
    ENCODER_TAIL tail( enc->buffer );
    if ( ZU___LIKELY( tail.fits( INT_BYTES + CHAR_BYTES * length ) ) ) {
        tail.take( encoderPutChars( counted ? encoderPutInt( tail.begin, length ) : tail.begin, values, length ) );
        return;
    }
    ZU_INT longs = 0;
    ZU_INT i = 0;
    for ( ; length - i >= STEP; i += STEP ) {
        for ( ZU_INT k = i; k < i + STEP; k++ ) {
            longs += values[ k ] >= ASCII_END;
        }
    }
    for ( ; i < length; i++ ) {
        longs += values[ i ] >= ASCII_END;
    }
    encoderAppendAnyhow( enc, INT_BYTES + length + ( CHAR_BYTES - 1 ) * longs, [ = ]( uint8_t *dest ) {
        return encoderPutChars( counted ? encoderPutInt( dest, length ) : dest, values, length );
    } );
}
[[gnu::always_inline]] static inline void encoderAppendChars( ZU_ENCODER *enc, const ZU_CHAR *values, ZU_INT length,
                                                              bool counted )
{
    ENCODER_TAIL tail( enc->buffer );
    if ( ZU___LIKELY( tail.fits( INT_BYTES + length ) ) ) {
        uint8_t *text = counted ? encoderPutInt( tail.begin, length ) : tail.begin;
        if ( ZU___LIKELY( zu___CharsPackAscii( text, values, length ) ) ) {
            tail.take( text + length );
            return;
        }
    }
    encoderAppendAnyChars( enc, values, length, counted );
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
    encoderAppend( enc, INT_BYTES, [ = ]( uint8_t *dest ) { return encoderPutChar( dest, value ); } );
}
void zuEncoderEncodeChars( ZU_ENCODER *enc, const ZU_CHAR *values, ZU_INT valuesLength )
{
    ZU_ASSERT( enc );
    ZU_ASSERT( valuesLength >= 0 );
    ZU_ASSERT( values || valuesLength == 0 );
    for ( ZU_INT i = 0; i < valuesLength; i++ ) {
        ZU_CHAR value = values[ i ];
        ZU_ASSERT( ZU_CHAR_OK( value ) );
    }
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
    encoderAppend( enc, 1, [ = ]( uint8_t *dest ) {
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
