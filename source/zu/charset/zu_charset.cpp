// What is known of a set stands in its row of a table, as text without pointers.  The compiler sorts the hundreds of
// names for the lookup: folded and sorted at start-up, as strings, they would be half of what a program waits for.

#include "zu/charset/zu_charset.h"

#include "zu/base/zu_ascii_internal.h"
#include "zu/base/zu_enum_internal.h"
#include "zu/base/zu_string_case.h"
#include "zu/base/zu_vector.h"
#include "zu/charset/zu_charset_map.h"
#include "zu/charset/zu_charset_utf.h"
#include "zu/io/zu_buffer_byte_sink.h"
#include "zu/io/zu_buffer_byte_source.h"

#include <algorithm>
#include <cstring>
#include <iterator>

struct CHARSET_ROW {
    ZU___NAMED_VALUE name;
    ZU_INT codePage;       // -1: none
    char ianaNames[ 240 ]; // divided by blanks; the preferred one first
};
static constexpr CHARSET_ROW ROWS[] = {
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_ASCII ), 20127,
      "US-ASCII ANSI_X3.4-1968 iso-ir-6 ANSI_X3.4-1986 ISO_646.irv:1991 ASCII ascii ISO646-US us IBM367 "
      "cp367 367 csASCII ISO-10646-UCS-Basic csUnicodeASCII cp20127 20127" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_ISO_8859_1 ), 28591,
      "ISO-8859-1 ISO_8859-1:1987 iso-ir-100 ISO_8859-1 latin1 l1 IBM819 CP819 819 csISOLatin1 "
      "ISO-10646-Unicode-Latin1 csUnicodeLatin1 ISO-10646 cp28591 28591" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_ISO_8859_2 ), 28592,
      "ISO-8859-2 ISO_8859-2:1987 iso-ir-101 ISO_8859-2 latin2 l2 csISOLatin2 cp28592 28592" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_ISO_8859_3 ), 28593,
      "ISO-8859-3 ISO_8859-3:1988 iso-ir-109 ISO_8859-3 latin3 l3 csISOLatin3 cp28593 28593" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_ISO_8859_4 ), 28594,
      "ISO-8859-4 ISO_8859-4:1988 iso-ir-110 ISO_8859-4 latin4 l4 csISOLatin4 cp28594 28594" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_ISO_8859_5 ), 28595,
      "ISO-8859-5 ISO_8859-5:1988 iso-ir-144 ISO_8859-5 cyrillic csISOLatinCyrillic cp28595 28595" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_ISO_8859_6 ), 28596,
      "ISO-8859-6 ISO_8859-6:1987 iso-ir-127 ISO_8859-6 ECMA-114 ASMO-708 arabic csISOLatinArabic cp28596 "
      "28596" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_ISO_8859_7 ), 28597,
      "ISO-8859-7 ISO_8859-7:1987 iso-ir-126 ISO_8859-7 ELOT_928 ECMA-118 greek greek8 csISOLatinGreek "
      "cp28597 28597" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_ISO_8859_8 ), 28598,
      "ISO-8859-8 ISO_8859-8:1988 iso-ir-138 ISO_8859-8 hebrew csISOLatinHebrew cp28598 28598" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_ISO_8859_9 ), 28599,
      "ISO-8859-9 ISO_8859-9:1989 iso-ir-148 ISO_8859-9 latin5 l5 csISOLatin5 cp28599 28599" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_ISO_8859_10 ), -1,
      "ISO-8859-10 ISO_8859-10:1992 iso-ir-157 ISO_8859-10 latin6 l6 csISOLatin6" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_ISO_8859_11 ), -1, "ISO-8859-11 ISO_8859-11" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_ISO_8859_13 ), 28603,
      "ISO-8859-13 ISO_8859-13 latin7 l7 csISOLatin7 cp28603 28603" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_ISO_8859_14 ), -1,
      "ISO-8859-14 ISO_8859-14:1998 iso-ir-199 ISO_8859-14 ISO-8859-14 iso-celtic latin8 l8 csISOLatin8" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_ISO_8859_15 ), 28605,
      "ISO-8859-15 ISO_8859-15 Latin-9 latin9 l9 csISOLatin9 cp28605 28605" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_ISO_8859_16 ), -1,
      "ISO-8859-16 ISO_8859-16:2001 iso-ir-226 ISO_8859-16 ISO-8859-16 latin10 l10 csISOLatin10" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_KOI_8R ), 20866, "KOI8-R csKOI8R cp20866 20866" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_MSFT_CP037 ), 37,
      "IBM037 cp037 ebcdic-cp-us ebcdic-cp-ca ebcdic-cp-wt ebcdic-cp-nl csIBM037 037" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_MSFT_CP437 ), 437, "IBM437 cp437 437 csPC8CodePage437" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_MSFT_CP500 ), 500, "IBM500 cp500 ebcdic-cp-be ebcdic-cp-ch csIBM500 500" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_MSFT_CP850 ), 850, "IBM850 cp850 850 csPC850Multilingual" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_MSFT_CP852 ), 852, "IBM852 cp852 852 csPCp852" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_MSFT_CP855 ), 855, "IBM855 cp855 855 csIBM855" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_MSFT_CP857 ), 857, "IBM857 cp857 857 csIBM857" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_MSFT_CP860 ), 860, "IBM860 cp860 860 csIBM860" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_MSFT_CP861 ), 861, "IBM861 cp861 861 csIBM861" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_MSFT_CP862 ), 862, "IBM862 cp862 862 csPC862LatinHebrew" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_MSFT_CP863 ), 863, "IBM863 cp863 863 csIBM863" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_MSFT_CP864 ), 864, "IBM864 cp864 864 csIBM864" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_MSFT_CP865 ), 865, "IBM865 cp865 865 csIBM865" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_MSFT_CP866 ), 866, "IBM866 cp866 866 csIBM866" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_MSFT_CP869 ), 869, "IBM869 cp869 869 cp-gr csIBM869" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_MSFT_CP874 ), 874, "cp874 874" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_MSFT_CP875 ), 875, "cp875 875" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_MSFT_CP1026 ), 1026, "IBM1026 cp1026 csIBM1026 1026" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_MSFT_CP1250 ), 1250, "windows-1250 cp1250 1250" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_MSFT_CP1251 ), 1251, "windows-1251 cp1251 1251" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_MSFT_CP1252 ), 1252, "windows-1252 cp1252 1252" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_MSFT_CP1253 ), 1253, "windows-1253 cp1253 1253" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_MSFT_CP1254 ), 1254, "windows-1254 cp1254 1254" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_MSFT_CP1255 ), 1255, "windows-1255 cp1255 1255" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_MSFT_CP1256 ), 1256, "windows-1256 cp1256 1256" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_MSFT_CP1257 ), 1257, "windows-1257 cp1257 1257" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_MSFT_CP1258 ), 1258, "windows-1258 cp1258 1258" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_UTF_8 ), 65001, "UTF-8 cp65001 65001" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_UTF_16 ), -1, "UTF-16" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_UTF_16_BE ), 1201, "UTF-16BE ISO-10646-UCS-2 csUCS2 csUnicode cp1201 1201" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_UTF_16_LE ), 1200, "UTF-16LE cp1200 1200" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_UTF_32 ), -1, "UTF-32" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_UTF_32_BE ), -1, "UTF-32BE ISO-10646-UCS-4 csUCS4" },
    { ZU___NAMED_VALUE_OF( ZU_CHARSET_UTF_32_LE ), -1, "UTF-32LE" },
};
static constexpr auto NAMES = zu___NamedColumn( ROWS );
static constexpr ZU_INT CHARSETS = sizeof ROWS / sizeof ROWS[ 0 ];
static_assert( CHARSETS == ZU_CHARSET_UTF_32_LE + 1 );

static ZU_ENUM *zu___CharsetEnum = nullptr; // symbolic names and numbers

// The names in the order of their case-folded texts.
struct CHARSET_NAME {
    uint8_t charset;
    uint8_t offset; // in ianaNames
    uint8_t length;
};
static constexpr const char *charsetNameText( const CHARSET_NAME &name )
{
    return ROWS[ name.charset ].ianaNames + name.offset;
}
static constexpr size_t charsetCountNames()
{
    size_t count = 0;
    for ( const CHARSET_ROW &row : ROWS ) {
        count++;
        for ( const char *ch = row.ianaNames; *ch; ch++ ) {
            count += *ch == ' ';
        }
    }
    return count;
}
struct CHARSET_SORTED_NAMES {
    CHARSET_NAME items[ charsetCountNames() ];
};
static constexpr CHARSET_SORTED_NAMES charsetSortNames()
{
    CHARSET_SORTED_NAMES sorted = {};
    size_t count = 0;
    for ( ZU_CHARSET cs = 0; cs < CHARSETS; cs++ ) {
        const char *names = ROWS[ cs ].ianaNames;
        for ( int begin = 0, end = 0; begin == 0 || names[ begin - 1 ]; begin = end + 1 ) {
            for ( end = begin; names[ end ] && names[ end ] != ' '; end++ ) {}
            sorted.items[ count++ ] = { (uint8_t)cs, (uint8_t)begin, (uint8_t)( end - begin ) };
        }
    }
    std::sort( std::begin( sorted.items ), std::end( sorted.items ),
               []( const CHARSET_NAME &a, const CHARSET_NAME &b ) {
                   return zu___AsciiCompare( charsetNameText( a ), a.length, charsetNameText( b ), b.length, true ) < 0;
               } );
    return sorted;
}
static constexpr CHARSET_SORTED_NAMES SORTED_NAMES = charsetSortNames();

ZU_VECTOR *zuCharsetIanaNamesVector( ZU_CHARSET cs )
{
    ZU_ASSERT( ZU_CHARSET_OK( cs ) );
    ZU_VECTOR *vec = zuVectorCreate();
    for ( const char *names = ROWS[ cs ].ianaNames; *names; ) {
        ZU_INT length = (ZU_INT)strcspn( names, " " );
        zuVectorAppendStringCstr( &vec, names, length );
        names += length + strspn( names + length, " " );
    }
    return vec;
}

// Start-up
void zu___CharsetStartup( void )
{
    zu___CharsetEnum = ZU___ENUM_CREATE( zu___CharsetEnum, NAMES.rows );
}
void zu___CharsetShutdown( void )
{
    ZU_REF_RELEASE( zu___CharsetEnum );
    ZU_REF_POISON( zu___CharsetEnum );
}

// Names and numbers
ZU_STRING *zuCharsetToString( ZU_CHARSET cs )
{
    ZU_ASSERT( ZU_CHARSET_OK( cs ) );
    return zuEnumGenerate( zu___CharsetEnum, cs );
}
ZU_CHARSET zuCharsetFromString( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return zuEnumParse( zu___CharsetEnum, zus );
}

ZU_STRING *zuCharsetToIanaName( ZU_CHARSET cs )
{
    ZU_ASSERT( ZU_CHARSET_OK( cs ) );
    const char *names = ROWS[ cs ].ianaNames;
    return zuStringCreateFromAscii( names, (ZU_INT)strcspn( names, " " ) );
}
ZU_CHARSET zuCharsetFromIanaName( ZU_STRING *name )
{
    ZU_ASSERT( name );
    ZU_STRING *folded = zuStringRetain( name );
    zuStringToCaseFold( &folded );
    const ZU_CHAR *chs = zuStringBacking( folded );
    ZU_INT length = zuStringLength( folded );
    auto compare = [ & ]( const CHARSET_NAME &item ) {
        return zu___AsciiCompare( charsetNameText( item ), item.length, chs, length, true );
    };
    const CHARSET_NAME *end = std::end( SORTED_NAMES.items );
    const CHARSET_NAME *found = std::partition_point(
        std::begin( SORTED_NAMES.items ), end, [ & ]( const CHARSET_NAME &item ) { return compare( item ) < 0; } );
    ZU_CHARSET cs = found != end && compare( *found ) == 0 ? found->charset : -1;
    zuStringRelease( folded );
    return cs;
}
ZU_INT zuCharsetToWindowsCodePage( ZU_CHARSET cs )
{
    ZU_ASSERT( ZU_CHARSET_OK( cs ) );
    return ROWS[ cs ].codePage;
}
ZU_CHARSET zuCharsetFromWindowsCodePage( ZU_INT cp )
{
    ZU_ASSERT( cp >= 0 );
    ZU_CHARSET cs = CHARSETS - 1;
    while ( cs >= 0 && ROWS[ cs ].codePage != cp ) {
        cs--;
    }
    return cs;
}

// Streams
struct CHARSET_MAP_FUNCS {
    ZU___CHARSET_MAP_CHAR_TO_BYTE_FUNC charToByte;
    ZU___CHARSET_MAP_BYTE_TO_CHAR_FUNC byteToChar;
};
static const CHARSET_MAP_FUNCS *charsetMapFuncs( ZU_CHARSET charset )
{
#define CHARSET_MAP( name ) { zu___Charset##name##MapCharToByte, zu___Charset##name##MapByteToChar },
    static const CHARSET_MAP_FUNCS MAPS[] = { ZU___CHARSET_MAPS( CHARSET_MAP ) };
#undef CHARSET_MAP
    static_assert( sizeof MAPS / sizeof MAPS[ 0 ] == ZU_CHARSET_UTF_8 );
    // Texts have been stored under this number by the tables of its neighbour, and are read as they were written.
    return &MAPS[ charset == ZU_CHARSET_ISO_8859_8 ? ZU_CHARSET_ISO_8859_7 : charset ];
}

ZU_CHAR_SINK *zuCharsetCreateCharSink( ZU_BYTE_SINK *byteSink, ZU_CHARSET charset, ZU_CHARSET_FLAGS flags )
{
    ZU_ASSERT( byteSink );
    ZU_ASSERT( ZU_CHARSET_OK( charset ) );
    flags = zuCharsetFlagsNormalize( flags );
    switch ( charset ) {
    case ZU_CHARSET_UTF_8:
        return zu___CharsetUtf8CharSinkCreate( byteSink, flags );
    case ZU_CHARSET_UTF_16:
        return zu___CharsetUtf16CharSinkCreate( byteSink, flags );
    case ZU_CHARSET_UTF_16_BE:
        return zu___CharsetUtf16BECharSinkCreate( byteSink, flags );
    case ZU_CHARSET_UTF_16_LE:
        return zu___CharsetUtf16LECharSinkCreate( byteSink, flags );
    case ZU_CHARSET_UTF_32:
        return zu___CharsetUtf32CharSinkCreate( byteSink, flags );
    case ZU_CHARSET_UTF_32_BE:
        return zu___CharsetUtf32BECharSinkCreate( byteSink, flags );
    case ZU_CHARSET_UTF_32_LE:
        return zu___CharsetUtf32LECharSinkCreate( byteSink, flags );
    default:
        return zu___CharsetMapCharSinkCreate( byteSink, flags, charsetMapFuncs( charset )->charToByte );
    }
}
ZU_CHAR_SOURCE *zuCharsetCreateCharSource( ZU_BYTE_SOURCE *byteSource, ZU_CHARSET charset, ZU_CHARSET_FLAGS flags )
{
    ZU_ASSERT( byteSource );
    ZU_ASSERT( ZU_CHARSET_OK( charset ) );
    flags = zuCharsetFlagsNormalize( flags );
    switch ( charset ) {
    case ZU_CHARSET_UTF_8:
        return zu___CharsetUtf8CharSourceCreate( byteSource, flags );
    case ZU_CHARSET_UTF_16:
        return zu___CharsetUtf16CharSourceCreate( byteSource, flags );
    case ZU_CHARSET_UTF_16_BE:
        return zu___CharsetUtf16BECharSourceCreate( byteSource, flags );
    case ZU_CHARSET_UTF_16_LE:
        return zu___CharsetUtf16LECharSourceCreate( byteSource, flags );
    case ZU_CHARSET_UTF_32:
        return zu___CharsetUtf32CharSourceCreate( byteSource, flags );
    case ZU_CHARSET_UTF_32_BE:
        return zu___CharsetUtf32BECharSourceCreate( byteSource, flags );
    case ZU_CHARSET_UTF_32_LE:
        return zu___CharsetUtf32LECharSourceCreate( byteSource, flags );
    default:
        return zu___CharsetMapCharSourceCreate( byteSource, flags, charsetMapFuncs( charset )->byteToChar );
    }
}

// Whole texts
ZU_BUFFER *zuCharsetStringToBuffer( ZU_CHARSET charset, ZU_STRING *zus )
{
    return zuCharsetStringToBufferWithFlags( charset, zus, 0 );
}
ZU_BUFFER *zuCharsetStringToBufferWithFlags( ZU_CHARSET charset, ZU_STRING *zus, ZU_CHARSET_FLAGS flags )
{
    ZU_ASSERT( ZU_CHARSET_OK( charset ) );
    ZU_ASSERT( zus );
    ZU_BUFFER_BYTE_SINK *bbs = zuBufferByteSinkCreate();
    ZU_BYTE_SINK *byteSink = zuBufferByteSinkByteSink( bbs );
    ZU_CHAR_SINK *charSink = zuCharsetCreateCharSink( byteSink, charset, flags );
    zuCharSinkWrite( charSink, zus );
    zuCharSinkFlush( charSink );
    ZU_BUFFER *result = zuCharSinkError( charSink ) ? nullptr : zuBufferByteSinkBuffer( bbs );
    zuCharSinkRelease( charSink );
    zuByteSinkRelease( byteSink );
    zuBufferByteSinkRelease( bbs );
    return result;
}
ZU_STRING *zuCharsetBufferToString( ZU_CHARSET charset, ZU_BUFFER *buffer )
{
    return zuCharsetBufferToStringWithFlags( charset, buffer, 0 );
}
ZU_STRING *zuCharsetBufferToStringWithFlags( ZU_CHARSET charset, ZU_BUFFER *buffer, ZU_CHARSET_FLAGS flags )
{
    ZU_ASSERT( ZU_CHARSET_OK( charset ) );
    ZU_ASSERT( buffer );
    ZU_BUFFER_BYTE_SOURCE *bbs = zuBufferByteSourceCreate( buffer );
    ZU_BYTE_SOURCE *byteSource = zuBufferByteSourceByteSource( bbs );
    ZU_CHAR_SOURCE *source = zuCharsetCreateCharSource( byteSource, charset, flags );
    ZU_STRING *result = zuStringCreate();
    while ( !zuCharSourceEnd( source ) ) {
        zuCharSourceRead( source, &result, ZU_INT_MAX );
    }
    if ( zuCharSourceError( source ) ) {
        zuStringRelease( result );
        result = nullptr;
    }
    zuCharSourceRelease( source );
    zuByteSourceRelease( byteSource );
    zuBufferByteSourceRelease( bbs );
    return result;
}
