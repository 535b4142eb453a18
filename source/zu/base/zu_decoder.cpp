// The content is never believed.  A count is held against what is left ahead of any allocation, so that it can cost no
// more than a fixed multiple of the bytes that are really there; and nothing here calls itself.  The one form that
// nests, an integer whose number of bytes is an integer whose number of bytes is one..., is read from the inside out.

#include "zu/base/zu_decoder_internal.h"

#include "zu/base/zu_string_internal.h"
#include "zu/base/zu_wire_chars_internal.h"
#include "zu/runtime/zu_module.h"
#include "zu/sys/zu_chars_ascii_internal.h"
#include "zu/sys/zu_mem.h"

#include <bit>
#include <cstring>

static constexpr uint8_t INT_SIGN = 0x80;
static constexpr uint8_t INT_COUNT = 0x7F;     // bits of the number of bytes, and the number that means that it follows
static constexpr ZU_INT MAGNITUDE_MAX = 8;     // bytes of an absolute value, without leading zeros
static constexpr uint8_t CHAR_LONG = 0x80;     // set in the first of three bytes
static constexpr uint8_t CHAR_UNUSED = 0x60;   // bits of that byte which no character has
static constexpr ZU_CHAR CHARS_END = 0x200000; // what three bytes can tell is below that
static constexpr ZU_CHAR CODE_POINTS_END = 0x110000; // what strings can hold is below that

struct ZU_DECODER {
    ZU_OBJ obj;
    ZU_BUFFER *buf;       // stays as it is: whoever else holds it copies before changing it
    const uint8_t *bytes; // of `buf`
    ZU_INT length;        // whole bytes of `buf`
    ZU_INT offset;        // of the next byte, 0 <= offset <= length; without meaning in the error state
    ZU_BOOL error;        // never cleared
};

static void decoderFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_DECODER =
    ZU___SORT_INITIALIZER( "ZU_DECODER", &zu___module, decoderFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_DECODER, zuDecoder )

// Creation
ZU_DECODER *zuDecoderCreate( ZU_BUFFER *buf )
{
    ZU_ASSERT( buf );
    ZU_DECODER *dec = (ZU_DECODER *)zu___ObjCreate( sizeof( ZU_DECODER ), &zu___sort_ZU_DECODER );
    dec->buf = zuBufferRetain( buf );
    dec->bytes = zuBufferBacking( buf );
    dec->length = zuBufferLength( buf );
    dec->offset = 0;
    dec->error = ZU_FALSE;
    return dec;
}
static void decoderFree( ZU_OBJ *thisObj )
{
    ZU_DECODER *dec = zuDecoderFrom( thisObj );
    ZU_ASSERT( dec );
    ZU_REF_RELEASE( dec->buf );
    ZU_REF_POISON( dec->buf );
}

// State
ZU_BUFFER *zuDecoderBuffer( ZU_DECODER *dec )
{
    ZU_ASSERT( dec );
    return zuBufferRetain( dec->buf );
}
ZU_INT zuDecoderLength( ZU_DECODER *dec )
{
    ZU_ASSERT( dec );
    return dec->length;
}
ZU_INT zuDecoderOffset( ZU_DECODER *dec )
{
    ZU_ASSERT( dec );
    return dec->error ? dec->length : dec->offset;
}
ZU_INT zuDecoderRemaining( ZU_DECODER *dec )
{
    ZU_ASSERT( dec );
    return dec->error ? 0 : dec->length - dec->offset;
}
ZU_BOOL zuDecoderError( ZU_DECODER *dec )
{
    ZU_ASSERT( dec );
    return dec->error;
}
void zuDecoderSetError( ZU_DECODER *dec )
{
    ZU_ASSERT( dec );
    dec->error = ZU_TRUE;
}

// Steps.  Each returns whether it succeeded; a failure is an error, of which the decoder takes note.

static bool decoderFail( ZU_DECODER *dec )
{
    dec->error = ZU_TRUE;
    return false;
}
// Checks that there are `count` bytes more; a negative count comes from the content.
static inline bool decoderCheckLeft( ZU_DECODER *dec, ZU_INT count )
{
    return ZU___LIKELY( count >= 0 && count <= dec->length - dec->offset ) || decoderFail( dec );
}
static inline bool decoderTakeByte( ZU_DECODER *dec, uint8_t *byte )
{
    if ( !decoderCheckLeft( dec, 1 ) ) {
        return false;
    }
    *byte = dec->bytes[ dec->offset++ ];
    return true;
}

// Takes an integer of `count` bytes, which stand at the offset.
static bool decoderTakeMagnitude( ZU_DECODER *dec, bool negative, ZU_INT count, ZU_INT *value )
{
    if ( !decoderCheckLeft( dec, count ) ) {
        return false;
    }
    const uint8_t *bytes = dec->bytes + dec->offset;
    dec->offset += count;
    while ( count > 0 && *bytes == 0 ) {
        bytes++;
        count--;
    }
    uint64_t magnitude = 0;
    for ( ZU_INT i = 0; i < count && i < MAGNITUDE_MAX; i++ ) {
        magnitude = magnitude << 8 | bytes[ i ];
    }
    if ( count > MAGNITUDE_MAX || magnitude > (uint64_t)ZU_INT_MAX + negative ) {
        return decoderFail( dec );
    }
    *value = (ZU_INT)( negative ? 0 - magnitude : magnitude );
    return true;
}
// Takes an integer in full.  Of headers that tell that the number of bytes follows there may be any number; they stand
// side by side, ahead of the innermost integer, and each gets its bytes behind those of the next.
[[gnu::noinline]] static bool decoderTakeAnyInt( ZU_DECODER *dec, ZU_INT *value )
{
    const ZU_INT outermost = dec->offset;
    uint8_t header;
    do {
        if ( !decoderTakeByte( dec, &header ) ) {
            return false;
        }
    } while ( ( header & INT_COUNT ) == INT_COUNT );
    ZU_INT at = dec->offset - 1;
    ZU_INT count = header & INT_COUNT;
    while ( decoderTakeMagnitude( dec, dec->bytes[ at ] & INT_SIGN, count, value ) ) {
        if ( at == outermost ) {
            return true;
        }
        at--;
        count = *value;
    }
    return false;
}
static inline bool decoderTakeInt( ZU_DECODER *dec, ZU_INT *value )
{
    // What encoders write, and is not at the very end, is loaded at once.
    if ( ZU___LIKELY( dec->length - dec->offset > MAGNITUDE_MAX ) ) {
        uint8_t header = dec->bytes[ dec->offset ];
        int count = header & INT_COUNT;
        if ( ZU___LIKELY( count <= MAGNITUDE_MAX ) ) {
            uint64_t word;
            memcpy( &word, dec->bytes + dec->offset + 1, sizeof word );
            word = std::endian::native == std::endian::little ? __builtin_bswap64( word ) : word;
            uint64_t magnitude = count > 0 ? word >> ( 64 - 8 * count ) : 0;
            bool negative = header & INT_SIGN;
            if ( ZU___LIKELY( magnitude <= (uint64_t)ZU_INT_MAX + negative ) ) {
                dec->offset += 1 + count;
                *value = (ZU_INT)( negative ? 0 - magnitude : magnitude );
                return true;
            }
        }
    }
    return decoderTakeAnyInt( dec, value );
}

// Takes bytes that are characters for as long as there are that many; returns how many it has taken.
template <bool STORE>
static inline ZU_INT decoderTakeAscii( ZU_DECODER *dec, ZU_CHAR *value, ZU_INT length )
{
    static constexpr ZU_INT STEP = 8;
    static constexpr uint64_t LONG_BITS = UINT64_C( 0x0101010101010101 ) * CHAR_LONG;
    const uint8_t *bytes = dec->bytes + dec->offset;
    ZU_INT most = dec->length - dec->offset;
    most = length < most ? length : most;
    ZU_INT i = 0;
    for ( ; most - i >= STEP; i += STEP ) {
        uint64_t word;
        memcpy( &word, bytes + i, sizeof word );
        if ( word & LONG_BITS ) {
            break;
        }
        if constexpr ( STORE ) {
            zu___CharsStoreBytes( value + i, word );
        }
    }
    for ( ; i < most && bytes[ i ] < CHAR_LONG; i++ ) {
        if constexpr ( STORE ) {
            value[ i ] = bytes[ i ];
        }
    }
    dec->offset += i;
    return i;
}
// Takes `length` characters, all of them below `end`.
template <bool STORE>
[[gnu::noinline]] static bool decoderTakeAnyChars( ZU_DECODER *dec, ZU_CHAR *value, ZU_INT length, ZU_CHAR end )
{
    ZU_INT i = 0;
    if constexpr ( STORE ) {
        const uint8_t *src = dec->bytes + dec->offset;
        i = zu___WireTakeChars( value, length, &src, dec->bytes + dec->length, end );
        if ( i < 0 ) {
            return decoderFail( dec );
        }
        dec->offset = src - dec->bytes;
    }
    while ( ( i += decoderTakeAscii<STORE>( dec, STORE ? value + i : nullptr, length - i ) ) < length ) {
        const uint8_t *bytes = dec->bytes + dec->offset;
        if ( !decoderCheckLeft( dec, ZU___WIRE_CHAR_BYTES ) || bytes[ 0 ] & CHAR_UNUSED ) {
            return decoderFail( dec );
        }
        ZU_CHAR ch = (ZU_CHAR)( bytes[ 0 ] & 0x1F ) << 16 | (ZU_CHAR)bytes[ 1 ] << 8 | bytes[ 2 ];
        if ( ZU___UNLIKELY( ch >= end ) ) {
            return decoderFail( dec );
        }
        if constexpr ( STORE ) {
            value[ i ] = ch;
        }
        dec->offset += ZU___WIRE_CHAR_BYTES;
        i++;
    }
    return true;
}
template <bool STORE>
static inline bool decoderTakeChars( ZU_DECODER *dec, ZU_CHAR *value, ZU_INT length, ZU_CHAR end )
{
    ZU_INT i = decoderTakeAscii<STORE>( dec, value, length );
    return i == length || decoderTakeAnyChars<STORE>( dec, STORE ? value + i : nullptr, length - i, end );
}

// Takes the number of characters or bytes that follow, each of which is a byte at least.
static inline bool decoderTakeCount( ZU_DECODER *dec, ZU_INT *count )
{
    return decoderTakeInt( dec, count ) && decoderCheckLeft( dec, *count );
}
static ZU_STRING *decoderTakeString( ZU_DECODER *dec )
{
    ZU_INT length;
    if ( !decoderTakeCount( dec, &length ) ) {
        return nullptr;
    }
    if ( length > ZU___STRING_INLINE_CHARS ) {
        ZU_CHAR *chars = (ZU_CHAR *)zuMemAllocN( length, sizeof( ZU_CHAR ) );
        if ( !decoderTakeChars<true>( dec, chars, length, CODE_POINTS_END ) ) {
            zuMemFree( chars );
            return nullptr;
        }
        return zuStringCreateFromCharsUse( chars, length );
    }
    if ( length == 0 ) {
        return zuStringCreate();
    }
    ZU_STRING *string = zu___StringCreateEmpty();
    string->length = length;
    string->bspace -= length;
    if ( !decoderTakeChars<true>( dec, string->inlineChars, length, CODE_POINTS_END ) ) {
        ZU_REF_RELEASE( string );
        return nullptr;
    }
    return string;
}
static bool decoderPassString( ZU_DECODER *dec )
{
    ZU_INT length;
    return decoderTakeCount( dec, &length ) && decoderTakeChars<false>( dec, nullptr, length, CODE_POINTS_END );
}

// Values
ZU_BOOL zuDecoderTryDecodeBool( ZU_DECODER *dec, ZU_BOOL *value )
{
    ZU_ASSERT( dec );
    uint8_t byte = 0;
    bool ok = !dec->error && decoderTakeByte( dec, &byte ) && ( byte <= 1 || decoderFail( dec ) );
    if ( value ) {
        *value = ok && byte;
    }
    return ok;
}
ZU_BOOL zuDecoderTryDecodeInt( ZU_DECODER *dec, ZU_INT *value )
{
    ZU_ASSERT( dec );
    ZU_INT taken = 0;
    bool ok = !dec->error && decoderTakeInt( dec, &taken );
    if ( value ) {
        *value = ok ? taken : 0;
    }
    return ok;
}
ZU_BOOL zuDecoderTryDecodeChar( ZU_DECODER *dec, ZU_CHAR *value )
{
    ZU_ASSERT( dec );
    ZU_CHAR taken = 0;
    bool ok = !dec->error && decoderTakeChars<true>( dec, &taken, 1, CHARS_END );
    if ( value ) {
        *value = ok ? taken : 0;
    }
    return ok;
}
ZU_BOOL zuDecoderTryDecodeChars( ZU_DECODER *dec, ZU_CHAR *value, ZU_INT length )
{
    ZU_ASSERT( dec );
    ZU_ASSERT( value || !length );
    ZU_ASSERT( length >= 0 );
    bool ok = !dec->error && decoderTakeChars<true>( dec, value, length, CHARS_END );
    if ( !ok ) {
        zuMemSetN( value, 0, length, sizeof( ZU_CHAR ) );
    }
    return ok;
}
ZU_BOOL zuDecoderTryDecodeString( ZU_DECODER *dec, ZU_STRING **value )
{
    ZU_ASSERT( dec );
    zu___DecoderClear( value );
    if ( dec->error ) {
        return ZU_FALSE;
    }
    return value ? zu___DecoderDeliver( value, decoderTakeString( dec ) ) : decoderPassString( dec );
}
ZU_BOOL zuDecoderTryDecodeBuffer( ZU_DECODER *dec, ZU_BUFFER **value )
{
    ZU_ASSERT( dec );
    zu___DecoderClear( value );
    ZU_INT length;
    if ( dec->error || !decoderTakeCount( dec, &length ) ) {
        return ZU_FALSE;
    }
    if ( value ) {
        *value = zuBufferCreate();
        zuBufferAppendInner( value, dec->buf, dec->offset, length );
    }
    dec->offset += length;
    return ZU_TRUE;
}
ZU_BOOL zuDecoderTryDecodeIdentifier( ZU_DECODER *dec, ZU_IDENTIFIER **value )
{
    ZU_ASSERT( dec );
    zu___DecoderClear( value );
    ZU_BUFFER *text = nullptr;
    if ( !zuDecoderTryDecodeBuffer( dec, &text ) ) {
        return ZU_FALSE;
    }
    ZU_IDENTIFIER *taken = zuIdentifierTryCreateFromBuffer( text );
    ZU_REF_RELEASE( text );
    return zu___DecoderDeliver( value, taken );
}
ZU_BOOL zuDecoderTryDecodeStringVector( ZU_DECODER *dec, ZU_VECTOR **value )
{
    ZU_ASSERT( dec );
    zu___DecoderClear( value );
    ZU_INT length;
    if ( dec->error || !decoderTakeInt( dec, &length ) ) {
        return ZU_FALSE;
    }
    ZU_VECTOR *taken = zuVectorCreate();
    for ( ; length > 0 && !dec->error; length-- ) {
        if ( !value ) {
            decoderPassString( dec );
        } else if ( ZU_STRING *string = decoderTakeString( dec ) ) {
            zuVectorAppendString( &taken, string );
            ZU_REF_RELEASE( string );
        }
    }
    if ( dec->error ) {
        ZU_REF_RELEASE( taken );
        return ZU_FALSE;
    }
    return zu___DecoderDeliver( value, taken );
}

// Values that may be null

// Reads what tells whether there is a value.
static bool decoderTryPresence( ZU_DECODER *dec, bool *present )
{
    ZU_BOOL value;
    bool ok = zuDecoderTryDecodeBool( dec, &value );
    *present = value;
    return ok;
}
ZU_BOOL zuDecoderTryDecodeOptionalBuffer( ZU_DECODER *dec, ZU_BUFFER **value )
{
    ZU_ASSERT( dec );
    zu___DecoderClear( value );
    bool present;
    return decoderTryPresence( dec, &present ) && ( !present || zuDecoderTryDecodeBuffer( dec, value ) );
}
ZU_BOOL zuDecoderTryDecodeOptionalIdentifier( ZU_DECODER *dec, ZU_IDENTIFIER **value )
{
    ZU_ASSERT( dec );
    zu___DecoderClear( value );
    bool present;
    return decoderTryPresence( dec, &present ) && ( !present || zuDecoderTryDecodeIdentifier( dec, value ) );
}
ZU_BOOL zuDecoderTryDecodeOptionalString( ZU_DECODER *dec, ZU_STRING **value )
{
    ZU_ASSERT( dec );
    zu___DecoderClear( value );
    bool present;
    return decoderTryPresence( dec, &present ) && ( !present || zuDecoderTryDecodeString( dec, value ) );
}
ZU_BOOL zuDecoderTryDecodeOptionalStringVector( ZU_DECODER *dec, ZU_VECTOR **value )
{
    ZU_ASSERT( dec );
    zu___DecoderClear( value );
    bool present;
    return decoderTryPresence( dec, &present ) && ( !present || zuDecoderTryDecodeStringVector( dec, value ) );
}

// Plain bytes
ZU_BOOL zuDecoderTryRead( ZU_DECODER *dec, ZU_BUFFER **dest, ZU_INT length )
{
    ZU_ASSERT( dec );
    ZU_ASSERT( length >= 0 );
    ZU_ASSERT( length == 0 || dest );
    ZU_ASSERT( length == 0 || *dest );
    if ( dec->error || !decoderCheckLeft( dec, length ) ) {
        return ZU_FALSE;
    }
    if ( length > 0 ) {
        zuBufferAppendInner( dest, dec->buf, dec->offset, length );
    }
    dec->offset += length;
    return ZU_TRUE;
}
ZU_BOOL zuDecoderTryReadByte( ZU_DECODER *dec, uint8_t *byte )
{
    ZU_ASSERT( dec );
    uint8_t taken = 0;
    bool ok = !dec->error && decoderTakeByte( dec, &taken );
    if ( byte ) {
        *byte = taken;
    }
    return ok;
}
ZU_BOOL zuDecoderTryReadBytes( ZU_DECODER *dec, uint8_t *bytes, ZU_INT length )
{
    ZU_ASSERT( dec );
    ZU_ASSERT( length >= 0 );
    ZU___ASSERT_AS( length == 0 || bytes, "length == 0 || dest" );
    if ( dec->error || !decoderCheckLeft( dec, length ) ) {
        zuMemSet( bytes, 0, length );
        return ZU_FALSE;
    }
    zuMemCopy( bytes, length == 0 ? nullptr : dec->bytes + dec->offset, length );
    dec->offset += length;
    return ZU_TRUE;
}
ZU_BOOL zuDecoderTrySkip( ZU_DECODER *dec, ZU_INT length )
{
    ZU_ASSERT( dec );
    ZU_ASSERT( length >= 0 );
    if ( dec->error || !decoderCheckLeft( dec, length ) ) {
        return ZU_FALSE;
    }
    dec->offset += length;
    return ZU_TRUE;
}
