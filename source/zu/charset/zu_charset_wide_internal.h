// zu_charset_wide_internal.h: what the codecs of UTF-16 and UTF-32 share, over the number of bytes of a unit.
#pragma once

#include "zu/charset/zu_charset_closure_internal.h"
#include "zu/sys/zu_chars.h"

#include <cstring>

// A sink's closure has these members.
struct ZU___CHARSET_WIDE_SINK {
    ZU_OBJ obj;
    ZU_CHARSET_FLAGS flags; // normalised
    ZU_BOOL littleEndian;
    ZU___CHARSET_OUTPUT output;
};

// A source's closure has these.
struct ZU___CHARSET_WIDE_SOURCE {
    ZU_OBJ obj;
    ZU_CHARSET_FLAGS flags; // normalised
    ZU_BOOL littleEndian;   // decided by the byte order mark where that is looked at
    ZU_BOOL bomChecked;     // the first unit has been looked at
    ZU___CHARSET_INPUT input;
};

// Stores the unit of U+FEFF at `bytes`.
template <int UNIT_BYTES>
static void zu___CharsetWidePutMark( uint8_t *bytes, ZU_BOOL littleEndian )
{
    memset( bytes, 0, UNIT_BYTES );
    bytes[ littleEndian ? 0 : UNIT_BYTES - 1 ] = 0xFF;
    bytes[ littleEndian ? 1 : UNIT_BYTES - 2 ] = 0xFE;
}

// Returns the unit at `bytes`.
template <int UNIT_BYTES, bool LITTLE_ENDIAN>
static inline ZU_CHAR zu___CharsetWideUnit( const uint8_t *bytes )
{
    static_assert( UNIT_BYTES == 2 || UNIT_BYTES == 4 );
    static_assert( __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ || __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__ );
    constexpr bool SWAP = LITTLE_ENDIAN != ( __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ );
    if constexpr ( UNIT_BYTES == 2 ) {
        uint16_t unit;
        memcpy( &unit, bytes, sizeof unit );
        return SWAP ? __builtin_bswap16( unit ) : unit;
    } else {
        uint32_t unit;
        memcpy( &unit, bytes, sizeof unit );
        return SWAP ? __builtin_bswap32( unit ) : unit;
    }
}

// Takes units from the cache as long as they are code points, at most `count`; returns how many.
template <int UNIT_BYTES, bool LITTLE_ENDIAN>
static ZU_INT zu___CharsetWideTake( ZU___CHARSET_INPUT *input, ZU_CHAR *chars, ZU_INT count )
{
    const uint8_t *bytes = input->bytes + input->pos;
    ZU_INT units = zuIntMin( ( input->length - input->pos ) / UNIT_BYTES, count );
    ZU_INT taken = 0;
    for ( ; taken < units; taken++ ) {
        ZU_CHAR ch = zu___CharsetWideUnit<UNIT_BYTES, LITTLE_ENDIAN>( bytes + taken * UNIT_BYTES );
        if ( UNIT_BYTES == 4 && ZU___UNLIKELY( !ZU_CHAR_OK( ch ) ) ) {
            break;
        }
        chars[ taken ] = ch;
    }
    input->pos += taken * UNIT_BYTES;
    return taken;
}

// Looks for a byte order mark in the first unit and takes it.
template <int UNIT_BYTES>
static void zu___CharsetWideCheckMark( ZU___CHARSET_WIDE_SOURCE *csc )
{
    ZU_ASSERT( csc->input.pos == 0 );
    csc->bomChecked = ZU_TRUE;
    for ( ZU_BOOL littleEndian = ZU_FALSE; littleEndian <= ZU_TRUE; littleEndian++ ) {
        uint8_t mark[ UNIT_BYTES ];
        zu___CharsetWidePutMark<UNIT_BYTES>( mark, littleEndian );
        if ( memcmp( csc->input.bytes, mark, UNIT_BYTES ) == 0 ) {
            csc->littleEndian = littleEndian;
            csc->input.pos = UNIT_BYTES;
            return;
        }
    }
}

// Reads up to `charCount` characters and stores their number in `*charsRead`.  Tells whether nothing failed.
template <int UNIT_BYTES>
static ZU_BOOL zu___CharsetWideRead( ZU___CHARSET_WIDE_SOURCE *csc, ZU_CHAR *chars, ZU_INT charCount,
                                     ZU_INT *charsRead )
{
    ZU___CHARSET_INPUT *input = &csc->input;
    ZU_INT i = 0;
    while ( i < charCount ) {
        if ( !zu___CharsetInputReady( input ) ) {
            *charsRead = i;
            return !zuByteSourceError( input->byteSource );
        }
        bool truncated = input->length - input->pos < UNIT_BYTES;
        if ( !truncated ) {
            if ( !csc->bomChecked && !( csc->flags & ZU_CHARSET_FLAG_IGNORE_BYTE_ORDER_MARK ) ) {
                zu___CharsetWideCheckMark<UNIT_BYTES>( csc );
                continue;
            }
            ZU_INT taken = csc->littleEndian
                               ? zu___CharsetWideTake<UNIT_BYTES, true>( input, chars + i, charCount - i )
                               : zu___CharsetWideTake<UNIT_BYTES, false>( input, chars + i, charCount - i );
            i += taken;
            if ( taken > 0 ) {
                continue;
            }
            input->pos += UNIT_BYTES;
        }
        // What is left is no character: a value out of range, which is taken, or the bytes of half a unit, which stay.
        if ( csc->flags & ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER ) {
            *charsRead = i;
            return ZU_FALSE;
        }
        if ( !( csc->flags & ZU_CHARSET_FLAG_IGNORE_INVALID_CHARACTERS ) ) {
            chars[ i++ ] = ZU_CHAR_REPLACEMENT_CHARACTER;
        }
        if ( truncated ) {
            *charsRead = i;
            return ZU_TRUE;
        }
    }
    ZU_ASSERT( i == charCount );
    *charsRead = i;
    return ZU_TRUE;
}

// Creation; `sort` is that of a closure that has these members and no others.
template <int UNIT_BYTES>
static ZU_CHAR_SINK *zu___CharsetWideSinkCreate( ZU_BYTE_SINK *byteSink, ZU_CHARSET_FLAGS flags, ZU_BOOL littleEndian,
                                                 ZU_SORT *sort, ZU_CHAR_SINK_WRITE_FUNC write,
                                                 ZU_CHAR_SINK_FLUSH_FUNC flush )
{
    ZU_ASSERT( byteSink );
    ZU___CHARSET_WIDE_SINK *csc = (ZU___CHARSET_WIDE_SINK *)zu___ObjCreate( sizeof( ZU___CHARSET_WIDE_SINK ), sort );
    csc->flags = flags;
    csc->littleEndian = littleEndian;
    zu___CharsetOutputBegin( &csc->output, byteSink );
    if ( flags & ZU_CHARSET_FLAG_INSERT_BYTE_ORDER_MARK ) {
        zu___CharsetWidePutMark<UNIT_BYTES>( csc->output.bytes, littleEndian );
        csc->output.used = UNIT_BYTES;
    }
    ZU_CHAR_SINK *result = zu___CharSinkCreate( write, flush, &csc->obj );
    ZU_REF_RELEASE( csc );
    return result;
}
static inline ZU_CHAR_SOURCE *zu___CharsetWideSourceCreate( ZU_BYTE_SOURCE *byteSource, ZU_CHARSET_FLAGS flags,
                                                            ZU_BOOL littleEndian, ZU_SORT *sort,
                                                            ZU_CHAR_SOURCE_READ_FUNC read )
{
    ZU_ASSERT( byteSource );
    ZU___CHARSET_WIDE_SOURCE *csc =
        (ZU___CHARSET_WIDE_SOURCE *)zu___ObjCreate( sizeof( ZU___CHARSET_WIDE_SOURCE ), sort );
    csc->flags = flags;
    csc->littleEndian = littleEndian;
    csc->bomChecked = ZU_FALSE;
    zu___CharsetInputBegin( &csc->input, byteSource );
    ZU_CHAR_SOURCE *result = zu___CharSourceCreate( read, &csc->obj );
    ZU_REF_RELEASE( csc );
    return result;
}
