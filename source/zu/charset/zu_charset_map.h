// zu_charset_map.h: the single-byte character sets as functions from bytes to characters and back, and the streams that
// work through such a pair of functions.
#pragma once

#include "zu/charset/zu_charset_flags.h"
#include "zu/io/zu_byte_sink.h"
#include "zu/io/zu_byte_source.h"
#include "zu/io/zu_char_sink.h"
#include "zu/io/zu_char_source.h"

ZU_BEGIN_DECLS

// For authors of classes and modules

/// Stores the character of `byte` in `*charOut` and returns ZU_TRUE; ZU_FALSE if the set does not define the byte.
typedef ZU_BOOL ( *ZU___CHARSET_MAP_BYTE_TO_CHAR_FUNC )( uint8_t byte, ZU_CHAR *charOut );
/// Stores the byte of `ch`, which may be any value, in `*byteOut` and returns ZU_TRUE; ZU_FALSE if the set lacks it.
typedef ZU_BOOL ( *ZU___CHARSET_MAP_CHAR_TO_BYTE_FUNC )( ZU_CHAR ch, uint8_t *byteOut );

// The sets, in the order of their numbers: X( <name> ) stands for the two functions
//
//     zu___Charset<name>MapByteToChar
//     zu___Charset<name>MapCharToByte
//
// All but the first two follow the tables that the Unicode Consortium has published.  Where several bytes stand for one
// character, as for U+001A in MsftCp875, the character becomes the lowest of them.
// clang-format off
#define ZU___CHARSET_MAPS( X )                                                                  \
    X( Ascii ) X( Iso8859_1 ) X( Iso8859_2 ) X( Iso8859_3 ) X( Iso8859_4 ) X( Iso8859_5 )       \
    X( Iso8859_6 ) X( Iso8859_7 ) X( Iso8859_8 ) X( Iso8859_9 ) X( Iso8859_10 ) X( Iso8859_11 ) \
    X( Iso8859_13 ) X( Iso8859_14 ) X( Iso8859_15 ) X( Iso8859_16 ) X( Koi8R ) X( MsftCp037 )   \
    X( MsftCp437 ) X( MsftCp500 ) X( MsftCp850 ) X( MsftCp852 ) X( MsftCp855 ) X( MsftCp857 )   \
    X( MsftCp860 ) X( MsftCp861 ) X( MsftCp862 ) X( MsftCp863 ) X( MsftCp864 ) X( MsftCp865 )   \
    X( MsftCp866 ) X( MsftCp869 ) X( MsftCp874 ) X( MsftCp875 ) X( MsftCp1026 ) X( MsftCp1250 ) \
    X( MsftCp1251 ) X( MsftCp1252 ) X( MsftCp1253 ) X( MsftCp1254 ) X( MsftCp1255 )             \
    X( MsftCp1256 ) X( MsftCp1257 ) X( MsftCp1258 )
// clang-format on

#define ZU___CHARSET_MAP_DECLARE( name )                                                \
    ZU_API ZU_BOOL zu___Charset##name##MapByteToChar( uint8_t byte, ZU_CHAR *charOut ); \
    ZU_API ZU_BOOL zu___Charset##name##MapCharToByte( ZU_CHAR ch, uint8_t *byteOut );
ZU___CHARSET_MAPS( ZU___CHARSET_MAP_DECLARE )
#undef ZU___CHARSET_MAP_DECLARE

/// Returns a new sink that writes to `byteSink` what `mapFunc` makes of the text in NFC.  So a character that may still
/// compose with what follows waits for the next one or for a flush.  `mapFunc` is asked about a character of the BMP
/// once, and perhaps about ASCII that does not come.  `flags` are normalised; those of byte order marks mean nothing
/// here.
///
/// Under ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER what a write or a flush has settled ends at a character that the
/// set lacks.  The write fails, unless it has handed 1024 bytes over ahead of that character; a flush does not.
ZU_API ZU_CHAR_SINK *zu___CharsetMapCharSinkCreate( ZU_BYTE_SINK *byteSink, ZU_CHARSET_FLAGS flags,
                                                    ZU___CHARSET_MAP_CHAR_TO_BYTE_FUNC mapFunc );
/// Returns a new source that reads what `mapFunc` makes of the bytes of `byteSource`; nothing is normalised.  The
/// function is asked about a byte once, and perhaps about ASCII that does not come.  `flags` are as for the sink.
ZU_API ZU_CHAR_SOURCE *zu___CharsetMapCharSourceCreate( ZU_BYTE_SOURCE *byteSource, ZU_CHARSET_FLAGS flags,
                                                        ZU___CHARSET_MAP_BYTE_TO_CHAR_FUNC mapFunc );

ZU_END_DECLS
