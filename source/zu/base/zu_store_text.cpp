// Text from outside chooses how many lines there are, how long each is and in which order they come, and none of that
// may cost more than in proportion.  So a line is never cut: what is left of it to read is an offset.  The lines of a
// level are one array; those of sub-stores gather at its front, are brought in order by address, and each group is the
// array of the next level.  Levels that are read are limited, which recursion can bear; stores that a program has made
// nest as deep as they like, so that writing finds its way back on the heap.

#include "zu/base/zu_store_text.h"

#include "zu/base/zu_format.h"
#include "zu/base/zu_store_internal.h"
#include "zu/base/zu_text_internal.h"
#include "zu/io/zu_buffer_byte_sink.h"
#include "zu/io/zu_buffer_byte_source.h"
#include "zu/io/zu_nlf_line_sink.h"
#include "zu/io/zu_nlf_line_source.h"
#include "zu/runtime/zu_ref_internal.h"
#include "zu/sys/zu_mem.h"

#include <algorithm>
#include <cstring>

static constexpr int DEPTH_MAX = 100; // levels that are read

static constexpr ZU_CHAR VALUE_MARK = '=';
static constexpr ZU_CHAR STORE_MARK = '.';
static constexpr ZU_CHAR ESCAPE = '%';
static constexpr ZU_INT ESCAPE_DIGITS = 6;

static inline const ZU_CHAR *storeTextOf( ZU_STRING *zus )
{
    return zus->chars + zus->fspace;
}

// Writing

// Tells whether `ch` is a control (Cc).  These 65 are so for good: the Unicode stability policies promise it.
static inline bool storeTextIsControl( ZU_CHAR ch )
{
    return ch < 0x20 || ch - 0x7F <= 0x9F - 0x7F;
}
// How many elements a value takes more than it has.
static ZU_INT storeTextEscapes( const ZU_CHAR *value, ZU_INT length )
{
    ZU_INT more = 0;
    for ( ZU_INT i = 0; i < length; i++ ) {
        more += storeTextIsControl( value[ i ] ) ? ESCAPE_DIGITS : value[ i ] == ESCAPE;
    }
    return more;
}
static void storeTextPutEscaped( ZU_CHAR *dest, const ZU_CHAR *value, ZU_INT length )
{
    for ( ZU_INT i = 0; i < length; i++ ) {
        ZU_CHAR ch = value[ i ];
        if ( storeTextIsControl( ch ) ) {
            *dest++ = ESCAPE;
            for ( ZU_INT digit = ESCAPE_DIGITS - 1; digit >= 0; digit-- ) {
                *dest++ = ( uint8_t ) "0123456789abcdef"[ ch >> 4 * digit & 15 ];
            }
            continue;
        }
        if ( ch == ESCAPE ) {
            *dest++ = ESCAPE;
        }
        *dest++ = ch;
    }
}

// Appends what stands behind the path in the line of a value.
static void storeTextAppendValue( ZU_STRING *line, ZU_STRING *address, ZU_STRING *value )
{
    const ZU_CHAR *chars = storeTextOf( value );
    ZU_INT escapes = storeTextEscapes( chars, value->length );
    ZU_CHAR *text = zu___StringMakeRoom( line, line->length, address->length + 1 + value->length + escapes );
    zuMemCopyN( text, storeTextOf( address ), address->length, sizeof( ZU_CHAR ) );
    text += address->length;
    *text++ = VALUE_MARK;
    if ( escapes > 0 ) {
        storeTextPutEscaped( text, chars, value->length );
    } else {
        zuMemCopyN( text, chars, value->length, sizeof( ZU_CHAR ) );
    }
}

// A store on the way through a tree
struct STORE_TEXT_WALK {
    STORE_TEXT_WALK *parent; // null at the root
    ZU_STORE *store;
    ZU_INT prefixLength; // of the path to it
    ZU_INT idx;          // the sub-store that comes next; -1: the values
};
static STORE_TEXT_WALK *storeTextEnter( STORE_TEXT_WALK *parent, ZU_STORE *store, ZU_INT prefixLength )
{
    STORE_TEXT_WALK *walk = (STORE_TEXT_WALK *)zuMemAlloc( sizeof( STORE_TEXT_WALK ) );
    *walk = { parent, store, prefixLength, -1 };
    return walk;
}
static STORE_TEXT_WALK *storeTextLeave( STORE_TEXT_WALK *walk )
{
    STORE_TEXT_WALK *parent = walk->parent;
    zuMemFree( walk );
    return parent;
}
// Cuts a line to its first `length` elements; one that somebody has kept is exchanged for another.
static void storeTextCut( ZU_STRING **line, ZU_INT length )
{
    ZU_STRING *old = *line;
    if ( ZU_REF_RETAIN_COUNT( old ) > 1 ) {
        *line = zuStringCreateFromLeading( old, length );
        ZU_REF_RELEASE( old );
        return;
    }
    old->bspace += old->length - length;
    old->length = length;
    zu___StringCompact( old );
}
// Hands each line to `emit` until that returns false; returns what it did last.  One string serves for all lines, unless
// they are kept, and has the path to the store in front.
template <typename EMIT>
static bool storeTextEmitLines( ZU_STORE *store, EMIT emit )
{
    zu___Owned held( zuStoreRetain( store ) ); // a sink is anybody's code, and may change the store
    ZU_STRING *line = zu___StringCreateEmpty();
    bool ok = true;
    STORE_TEXT_WALK *walk = storeTextEnter( nullptr, store, 0 );
    while ( walk ) {
        ZU_DICT *values = walk->store->values;
        ZU_DICT *stores = walk->store->stores;
        storeTextCut( &line, walk->prefixLength );
        for ( ZU_INT i = 0; walk->idx < 0 && ok && i < values->length; i++ ) {
            zu___StorePrefetchPair( values, i );
            storeTextAppendValue( line, (ZU_STRING *)zu___DictPair( values, i )->key,
                                  (ZU_STRING *)zu___DictPair( values, i )->val );
            ok = emit( line );
            storeTextCut( &line, walk->prefixLength );
        }
        walk->idx++;
        if ( !ok || walk->idx == stores->length ) {
            walk = storeTextLeave( walk );
            continue;
        }
        ZU_STORE *sub = (ZU_STORE *)zu___DictPair( stores, walk->idx )->val;
        zuStringAppend( &line, (ZU_STRING *)zu___DictPair( stores, walk->idx )->key );
        zuStringAppendChar( &line, STORE_MARK );
        if ( sub->addresses->length == 0 ) {
            ok = emit( line );
        } else {
            walk = storeTextEnter( walk, sub, line->length );
        }
    }
    ZU_REF_RELEASE( line );
    return ok;
}
ZU_VECTOR *zuStoreTextEncodeToStringVector( ZU_STORE *store )
{
    ZU_ASSERT( store );
    ZU_VECTOR *vec = zuVectorCreate();
    storeTextEmitLines( store, [ & ]( ZU_STRING *line ) {
        zuVectorAppendString( &vec, line );
        return true;
    } );
    return vec;
}
ZU_BOOL zuStoreTextTryEncodeToLineSink( ZU_STORE *store, ZU_LINE_SINK *ls )
{
    ZU_ASSERT( store );
    ZU_ASSERT( ls );
    storeTextEmitLines( store, [ & ]( ZU_STRING *line ) { return zuLineSinkWrite( ls, line ); } );
    return zuLineSinkFlush( ls );
}
ZU_BUFFER *zuStoreTextTryEncodeToBuffer( ZU_STORE *store, ZU_CHARSET charset, ZU_CHARSET_FLAGS charsetFlags,
                                         ZU_NLF_FLAGS nlfFlags )
{
    ZU_ASSERT( store );
    ZU_ASSERT( ZU_CHARSET_OK( charset ) );
    ZU_BUFFER_BYTE_SINK *bbs = zuBufferByteSinkCreate();
    ZU_BYTE_SINK *byteSink = zuBufferByteSinkByteSink( bbs );
    ZU_CHAR_SINK *charSink = zuCharsetCreateCharSink( byteSink, charset, charsetFlags );
    ZU_NLF_LINE_SINK *nls = zuNlfLineSinkCreate( charSink, nlfFlags );
    ZU_LINE_SINK *ls = zuNlfLineSinkLineSink( nls );
    bool ok = zuStoreTextTryEncodeToLineSink( store, ls ) && zuLineSinkFlush( ls );
    ZU_BUFFER *buf = ok ? zuBufferByteSinkBuffer( bbs ) : nullptr;
    ZU_REF_RELEASE( ls );
    ZU_REF_RELEASE( nls );
    ZU_REF_RELEASE( charSink );
    ZU_REF_RELEASE( byteSink );
    ZU_REF_RELEASE( bbs );
    return buf;
}

// Reading

// A line, of which the text up to `begin` has been read.  One of a sub-store has the address of that ahead of there.
struct STORE_TEXT_LINE {
    ZU_STRING *string;
    ZU_INT begin;
    ZU_INT addressBegin;
    ZU_INT addressLength;
    ZU_INT place; // among the lines of its level
    ZU_INT group; // the same for lines of one sub-store that follow each other
};
// What reads lines: it has them for itself, or only lent.
struct STORE_TEXT_READER {
    bool owns;

    void drop( STORE_TEXT_LINE line ) const
    {
        if ( owns ) {
            ZU_REF_RELEASE( line.string );
        }
    }
};

// Reads the address and the mark behind it, which is returned; 0 if there are not both.
static ZU_CHAR storeTextReadAddress( STORE_TEXT_LINE *line )
{
    const ZU_CHAR *text = storeTextOf( line->string );
    ZU_INT begin = line->begin;
    ZU_INT end = begin;
    while ( end < line->string->length && text[ end ] != VALUE_MARK && text[ end ] != STORE_MARK ) {
        end++;
    }
    if ( end == line->string->length ) {
        return 0;
    }
    line->begin = end + 1;
    const ZU___TEXT address = zu___TextTrimmed( { text + begin, end - begin } );
    line->addressBegin = address.chars - text;
    line->addressLength = address.length;
    return zu___StoreAddressCharsOk( address.chars, address.length ) ? text[ line->begin - 1 ] : 0;
}
static ZU_STRING *storeTextAddress( const STORE_TEXT_LINE &line )
{
    return zuStringCreateFromInner( line.string, line.addressBegin, line.addressLength );
}

// Reads the character at `*pos` of a value, which moves on.
static ZU_CHAR storeTextReadChar( const ZU_CHAR *text, ZU_INT length, ZU_INT *pos )
{
    ZU_CHAR ch = text[ ( *pos )++ ];
    if ( ch != ESCAPE ) {
        return ch;
    }
    if ( *pos < length && text[ *pos ] == ESCAPE ) {
        ( *pos )++;
        return ESCAPE;
    }
    ZU_INT value;
    ZU_INT consumed;
    if ( length - *pos >= ESCAPE_DIGITS &&
         zuFormatTryDecodeIntChars( text + *pos, ESCAPE_DIGITS, 16, &value, &consumed ) && consumed == ESCAPE_DIGITS &&
         value >= 0 && ZU_CHAR_OK( value ) ) {
        *pos += ESCAPE_DIGITS;
        return (ZU_CHAR)value;
    }
    return ESCAPE;
}
// Returns what is left of a line, which the reader does not need any more, as a value.
static ZU_STRING *storeTextReadValue( STORE_TEXT_READER reader, STORE_TEXT_LINE line )
{
    const ZU_CHAR *text = storeTextOf( line.string ) + line.begin;
    ZU_INT length = line.string->length - line.begin;
    if ( std::find( text, text + length, ESCAPE ) == text + length ) {
        if ( !reader.owns ) {
            return zuStringCreateFromInner( line.string, line.begin, length );
        }
        zuStringDelLeading( &line.string, line.begin ); // moves nothing: it is the reader's alone
        return line.string;
    }
    ZU_STRING *value = zu___StringCreateEmpty();
    ZU_CHAR *dest = zu___StringMakeRoom( value, 0, length );
    ZU_INT stored = 0;
    for ( ZU_INT pos = 0; pos < length; ) {
        dest[ stored++ ] = storeTextReadChar( text, length, &pos );
    }
    zuStringDelTrailing( &value, length - stored );
    reader.drop( line );
    return value;
}

// Orders lines of sub-stores by the address.
static ZU_INT storeTextCompareAddresses( const STORE_TEXT_LINE &a, const STORE_TEXT_LINE &b )
{
    return zu___StringCompareChars( storeTextOf( a.string ) + a.addressBegin, a.addressLength,
                                    storeTextOf( b.string ) + b.addressBegin, b.addressLength );
}
// Brings together the lines of each sub-store, in the order in which they came.
static void storeTextSortLines( STORE_TEXT_LINE *lines, ZU_INT count )
{
    std::sort( lines, lines + count, []( const STORE_TEXT_LINE &a, const STORE_TEXT_LINE &b ) {
        ZU_INT order = storeTextCompareAddresses( a, b );
        return order != 0 ? order < 0 : a.place < b.place;
    } );
    for ( ZU_INT i = 0; i < count; i++ ) {
        bool same = i > 0 && storeTextCompareAddresses( lines[ i - 1 ], lines[ i ] ) == 0;
        lines[ i ].group = same ? lines[ i - 1 ].group : i;
    }
}

// Fetches the text of a line that comes soon: there are many, and in no cache.
static inline void storeTextPrefetch( const STORE_TEXT_LINE *lines, ZU_INT idx, ZU_INT count )
{
    static constexpr ZU_INT AHEAD = 8;
    ZU_STRING *string = lines[ zuIntMin( idx + AHEAD, count - 1 ) ].string;
    __builtin_prefetch( &string->length );
    __builtin_prefetch( &string->inlineChars[ 8 ] );
}

// Reads the lines of one level: sets values, and leaves the lines of sub-stores at the front, those of each together.
// Returns the number of these.
static ZU_INT storeTextReadLevel( STORE_TEXT_READER reader, STORE_TEXT_LINE *lines, ZU_INT count,
                                  ZU___STORE_BUILDER *builder )
{
    ZU_INT subCount = 0;
    bool ascending = true; // as in what has been written
    for ( ZU_INT i = 0; i < count; i++ ) {
        storeTextPrefetch( lines, i, count );
        STORE_TEXT_LINE line = lines[ i ];
        ZU_CHAR mark = storeTextReadAddress( &line );
        if ( mark == VALUE_MARK ) {
            ZU_STRING *address = storeTextAddress( line );
            zu___StoreBuilderSetValue( builder, address, storeTextReadValue( reader, line ) );
        } else if ( mark == STORE_MARK ) {
            ZU_INT order = subCount > 0 ? storeTextCompareAddresses( lines[ subCount - 1 ], line ) : -1;
            line.place = i;
            line.group = order == 0 ? lines[ subCount - 1 ].group : i;
            ascending = ascending && order <= 0;
            lines[ subCount++ ] = line;
        } else {
            reader.drop( line );
        }
    }
    if ( !ascending ) {
        storeTextSortLines( lines, subCount );
    }
    return subCount;
}
// Returns the store that `count` lines are.  The lines are given up, and their array is overwritten.
static ZU_STORE *storeTextDecode( STORE_TEXT_READER reader, STORE_TEXT_LINE *lines, ZU_INT count, int depth )
{
    if ( depth == DEPTH_MAX ) {
        for ( ZU_INT i = 0; i < count; i++ ) {
            reader.drop( lines[ i ] );
        }
        return zuStoreCreate();
    }
    ZU___STORE_BUILDER builder = {};
    ZU_INT subCount = storeTextReadLevel( reader, lines, count, &builder );
    for ( ZU_INT begin = 0, end = 0; begin < subCount; begin = end ) {
        while ( end < subCount && lines[ end ].group == lines[ begin ].group ) {
            end++;
        }
        ZU_STRING *address = storeTextAddress( lines[ begin ] );
        ZU_STORE *sub = storeTextDecode( reader, lines + begin, end - begin, depth + 1 );
        zu___StoreBuilderSetStore( &builder, address, sub );
    }
    return zu___StoreBuilderFinish( &builder );
}
ZU_STORE *zuStoreTextDecodeFromStringVector( ZU_VECTOR *vec )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( zuVectorContainsOnly( vec, zuStringSort() ) );
    ZU_INT count = zuVectorLength( vec );
    if ( count == 0 ) {
        return zuStoreCreate();
    }
    STORE_TEXT_LINE *lines = (STORE_TEXT_LINE *)zuMemAllocN( count, sizeof( STORE_TEXT_LINE ) );
    for ( ZU_INT i = 0; i < count; i++ ) {
        lines[ i ] = { (ZU_STRING *)zuVectorBacking( vec )[ i ], 0, 0, 0, 0, 0 };
    }
    ZU_STORE *store = storeTextDecode( { false }, lines, count, 0 );
    zuMemFree( lines );
    return store;
}
ZU_STORE *zuStoreTextTryDecodeFromLineSource( ZU_LINE_SOURCE *ls )
{
    ZU_ASSERT( ls );
    STORE_TEXT_LINE *lines = nullptr;
    ZU_INT count = 0;
    ZU_INT room = 0;
    while ( ZU_STRING *string = zuLineSourceRead( ls ) ) {
        if ( count == room ) {
            room = room + room / 2 + 64;
            lines = (STORE_TEXT_LINE *)zuMemReallocN( lines, room, sizeof( STORE_TEXT_LINE ) );
        }
        lines[ count++ ] = { string, 0, 0, 0, 0, 0 };
    }
    ZU_STORE *store = storeTextDecode( { true }, lines, count, 0 );
    zuMemFree( lines );
    if ( zuLineSourceError( ls ) ) {
        ZU_REF_RELEASE( store );
        return nullptr;
    }
    return store;
}
ZU_STORE *zuStoreTextTryDecodeFromBuffer( ZU_BUFFER *buf, ZU_CHARSET charset, ZU_CHARSET_FLAGS charsetFlags,
                                          ZU_NLF_FLAGS nlfFlags )
{
    ZU_ASSERT( buf );
    ZU_ASSERT( ZU_CHARSET_OK( charset ) );
    ZU_BUFFER_BYTE_SOURCE *bbs = zuBufferByteSourceCreate( buf );
    ZU_BYTE_SOURCE *byteSource = zuBufferByteSourceByteSource( bbs );
    ZU_CHAR_SOURCE *charSource = zuCharsetCreateCharSource( byteSource, charset, charsetFlags );
    ZU_NLF_LINE_SOURCE *nls = zuNlfLineSourceCreate( charSource, nlfFlags );
    ZU_LINE_SOURCE *ls = zuNlfLineSourceLineSource( nls );
    ZU_STORE *store = zuStoreTextTryDecodeFromLineSource( ls );
    ZU_REF_RELEASE( ls );
    ZU_REF_RELEASE( nls );
    ZU_REF_RELEASE( charSource );
    ZU_REF_RELEASE( byteSource );
    ZU_REF_RELEASE( bbs );
    return store;
}
