// zu_charset.h: the 51 character sets (encodings), by number, by name and by Windows code page, and conversion from and
// to them.
//
// Texts are made of code points everywhere in the library; a character set comes in where bytes come from or go to.
// Streams do the work: a character sink encodes into a byte sink, a character source decodes from a byte source.  Whole
// texts are converted by way of them.  What becomes of invalid input the flags tell, by default a replacement:
// zu_charset_flags.h.
//
// The single-byte sets compose text (NFC) on the way out, and leave it alone on the way in.  Of UTF-16 the sinks write
// only the lower half of each unit, and the sources deliver surrogate pairs as two characters, which zuStringSanitize
// joins.  ISO 8859-8 is converted by the tables of ISO 8859-7.  All that is contract; zu_exact_char_source.h and
// zu_exact_char_sink.h convert by the letter of the standards.  A set that is out of range aborts.
//
// All functions are callable from any thread.
#pragma once

#include "zu/base/zu_buffer.h"
#include "zu/base/zu_vector.h"
#include "zu/charset/zu_charset_flags.h"
#include "zu/io/zu_byte_sink.h"
#include "zu/io/zu_byte_source.h"
#include "zu/io/zu_char_sink.h"
#include "zu/io/zu_char_source.h"

ZU_BEGIN_DECLS

/// The number of a character set; -1 stands for none.
typedef ZU_INT ZU_CHARSET;

#define ZU_CHARSET_ASCII       ( (ZU_CHARSET)0 )
#define ZU_CHARSET_ISO_8859_1  ( (ZU_CHARSET)1 )
#define ZU_CHARSET_ISO_8859_2  ( (ZU_CHARSET)2 )
#define ZU_CHARSET_ISO_8859_3  ( (ZU_CHARSET)3 )
#define ZU_CHARSET_ISO_8859_4  ( (ZU_CHARSET)4 )
#define ZU_CHARSET_ISO_8859_5  ( (ZU_CHARSET)5 )
#define ZU_CHARSET_ISO_8859_6  ( (ZU_CHARSET)6 )
#define ZU_CHARSET_ISO_8859_7  ( (ZU_CHARSET)7 )
#define ZU_CHARSET_ISO_8859_8  ( (ZU_CHARSET)8 )
#define ZU_CHARSET_ISO_8859_9  ( (ZU_CHARSET)9 )
#define ZU_CHARSET_ISO_8859_10 ( (ZU_CHARSET)10 )
#define ZU_CHARSET_ISO_8859_11 ( (ZU_CHARSET)11 )
#define ZU_CHARSET_ISO_8859_13 ( (ZU_CHARSET)12 )
#define ZU_CHARSET_ISO_8859_14 ( (ZU_CHARSET)13 )
#define ZU_CHARSET_ISO_8859_15 ( (ZU_CHARSET)14 )
#define ZU_CHARSET_ISO_8859_16 ( (ZU_CHARSET)15 )
#define ZU_CHARSET_KOI_8R      ( (ZU_CHARSET)16 )
#define ZU_CHARSET_MSFT_CP037  ( (ZU_CHARSET)17 )
#define ZU_CHARSET_MSFT_CP437  ( (ZU_CHARSET)18 )
#define ZU_CHARSET_MSFT_CP500  ( (ZU_CHARSET)19 )
#define ZU_CHARSET_MSFT_CP850  ( (ZU_CHARSET)20 )
#define ZU_CHARSET_MSFT_CP852  ( (ZU_CHARSET)21 )
#define ZU_CHARSET_MSFT_CP855  ( (ZU_CHARSET)22 )
#define ZU_CHARSET_MSFT_CP857  ( (ZU_CHARSET)23 )
#define ZU_CHARSET_MSFT_CP860  ( (ZU_CHARSET)24 )
#define ZU_CHARSET_MSFT_CP861  ( (ZU_CHARSET)25 )
#define ZU_CHARSET_MSFT_CP862  ( (ZU_CHARSET)26 )
#define ZU_CHARSET_MSFT_CP863  ( (ZU_CHARSET)27 )
#define ZU_CHARSET_MSFT_CP864  ( (ZU_CHARSET)28 )
#define ZU_CHARSET_MSFT_CP865  ( (ZU_CHARSET)29 )
#define ZU_CHARSET_MSFT_CP866  ( (ZU_CHARSET)30 )
#define ZU_CHARSET_MSFT_CP869  ( (ZU_CHARSET)31 )
#define ZU_CHARSET_MSFT_CP874  ( (ZU_CHARSET)32 )
#define ZU_CHARSET_MSFT_CP875  ( (ZU_CHARSET)33 )
#define ZU_CHARSET_MSFT_CP1026 ( (ZU_CHARSET)34 )
#define ZU_CHARSET_MSFT_CP1250 ( (ZU_CHARSET)35 )
#define ZU_CHARSET_MSFT_CP1251 ( (ZU_CHARSET)36 )
#define ZU_CHARSET_MSFT_CP1252 ( (ZU_CHARSET)37 )
#define ZU_CHARSET_MSFT_CP1253 ( (ZU_CHARSET)38 )
#define ZU_CHARSET_MSFT_CP1254 ( (ZU_CHARSET)39 )
#define ZU_CHARSET_MSFT_CP1255 ( (ZU_CHARSET)40 )
#define ZU_CHARSET_MSFT_CP1256 ( (ZU_CHARSET)41 )
#define ZU_CHARSET_MSFT_CP1257 ( (ZU_CHARSET)42 )
#define ZU_CHARSET_MSFT_CP1258 ( (ZU_CHARSET)43 )
#define ZU_CHARSET_UTF_8       ( (ZU_CHARSET)44 )
#define ZU_CHARSET_UTF_16      ( (ZU_CHARSET)45 )
#define ZU_CHARSET_UTF_16_BE   ( (ZU_CHARSET)46 )
#define ZU_CHARSET_UTF_16_LE   ( (ZU_CHARSET)47 )
#define ZU_CHARSET_UTF_32      ( (ZU_CHARSET)48 )
#define ZU_CHARSET_UTF_32_BE   ( (ZU_CHARSET)49 )
#define ZU_CHARSET_UTF_32_LE   ( (ZU_CHARSET)50 )

/// Tells whether `cs` is the number of a character set.
#define ZU_CHARSET_OK( cs ) ( ( cs ) >= ZU_CHARSET_ASCII && ( cs ) <= ZU_CHARSET_UTF_32_LE )

// Names and numbers
/// Returns the symbolic name, such as "ZU_CHARSET_UTF_8".
ZU_API ZU_STRING *zuCharsetToString( ZU_CHARSET cs );
/// Returns the set with the symbolic name or, in digits, the number `zus`, as an enumeration reads it; -1 if there is
/// none.
ZU_API ZU_CHARSET zuCharsetFromString( ZU_STRING *zus );
/// Returns the preferred name that the IANA has registered, such as "UTF-8".
ZU_API ZU_STRING *zuCharsetToIanaName( ZU_CHARSET cs );
/// Returns the registered name and all aliases, as strings, the preferred name first.
ZU_API ZU_VECTOR *zuCharsetIanaNamesVector( ZU_CHARSET cs );
/// Returns the set that has `name` among its IANA names and aliases, in letters of either case; -1 if there is none.
ZU_API ZU_CHARSET zuCharsetFromIanaName( ZU_STRING *name );
/// Returns the Windows code page of the set, -1 if it has none.
ZU_API ZU_INT zuCharsetToWindowsCodePage( ZU_CHARSET cs );
/// Returns the set that has the Windows code page `cp`, -1 if there is none; a negative `cp` aborts.
ZU_API ZU_CHARSET zuCharsetFromWindowsCodePage( ZU_INT cp );

// Streams; both retain the byte stream, and do what they do a block of about 1024 bytes at a time: the byte stream sees
// what a sink has collected when that is full, when the sink is flushed, and at the sink's last release
/// Returns a new sink that encodes into `byteSink`.
ZU_API ZU_CHAR_SINK *zuCharsetCreateCharSink( ZU_BYTE_SINK *byteSink, ZU_CHARSET charset, ZU_CHARSET_FLAGS flags );
/// Returns a new source that decodes from `byteSource`.
ZU_API ZU_CHAR_SOURCE *zuCharsetCreateCharSource( ZU_BYTE_SOURCE *byteSource, ZU_CHARSET charset,
                                                  ZU_CHARSET_FLAGS flags );

// Whole texts; without flags invalid input is replaced.  With ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER invalid input
// yields null, with an exception: what a single-byte set lacks ends the result and does not make it null if 1024 bytes
// stand ahead of it, or if it is among the last characters, which wait for what may compose with them.
/// Returns `zus` encoded.
ZU_API ZU_BUFFER *zuCharsetStringToBuffer( ZU_CHARSET charset, ZU_STRING *zus );
/// Returns `zus` encoded under `flags`; null if that fails.
ZU_API ZU_BUFFER *zuCharsetStringToBufferWithFlags( ZU_CHARSET charset, ZU_STRING *zus, ZU_CHARSET_FLAGS flags );
/// Returns the text in the whole bytes of `buffer`.
ZU_API ZU_STRING *zuCharsetBufferToString( ZU_CHARSET charset, ZU_BUFFER *buffer );
/// Returns the text in the whole bytes of `buffer` under `flags`; null if decoding fails.
ZU_API ZU_STRING *zuCharsetBufferToStringWithFlags( ZU_CHARSET charset, ZU_BUFFER *buffer, ZU_CHARSET_FLAGS flags );

// For authors of classes and modules
/// Makes the lookups of names and code pages.
ZU_API void zu___CharsetStartup( void );
/// Releases what zu___CharsetStartup made.
ZU_API void zu___CharsetShutdown( void );

ZU_END_DECLS
