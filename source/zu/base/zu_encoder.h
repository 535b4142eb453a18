// ZU_ENCODER: appends values to a buffer in the library's own compact binary form, which ZU_DECODER reads back.
//
// The form tells nothing of itself, neither types nor a version: whoever reads must know what comes next.  It is whole
// bytes, and numbers have their most significant byte first:
//
//     Bool          00 or 01
//     Int           a byte with the sign in bit 7 and the number of bytes that follow, 0 to 8, below it; these are the
//                   absolute value without leading zeros.  0 is 00, 256 is 02 01 00, -1 is 81 01
//     Char          below U+0080 the one byte; otherwise three, of which the first has bit 7 set in addition.  U+20AC
//                   is 80 20 AC
//     Chars         each character as Char, and not how many there are
//     String        how many characters there are as Int, then each as Char.  "hi" is 02 68 69 behind a 01
//     Buffer        how many bytes there are as Int, then these
//     Identifier    the 32 bytes of its text as Buffer
//     StringVector  how many items there are as Int, then the text of each as String
//     Optional...   00 for null, 01 and the value for any other
//
// zu_store_binary.h adds stores.  One thread at a time uses an encoder.
#pragma once

#include "zu/base/zu_buffer.h"
#include "zu/base/zu_identifier.h"
#include "zu/base/zu_string.h"
#include "zu/base/zu_vector.h"

ZU_BEGIN_DECLS

typedef struct ZU_ENCODER ZU_ENCODER;
// zuEncoderRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_ENCODER, zuEncoder )

/// Returns a new encoder on the empty buffer.
ZU_API ZU_ENCODER *zuEncoderCreate( void );
/// Returns what has been appended so far.  The encoder can go on; that does not change the returned buffer.
ZU_API ZU_BUFFER *zuEncoderBuffer( ZU_ENCODER *enc );
/// Returns the number of bytes that have been appended.
ZU_API ZU_INT zuEncoderLength( ZU_ENCODER *enc );
/// Begins anew with the empty buffer.
ZU_API void zuEncoderClear( ZU_ENCODER *enc );

// Values
/// Appends a truth value; whatever is not 0 is true.
ZU_API void zuEncoderEncodeBool( ZU_ENCODER *enc, ZU_BOOL value );
/// Appends an integer.
ZU_API void zuEncoderEncodeInt( ZU_ENCODER *enc, ZU_INT value );
/// Appends a character; a value above 0x10FFFF aborts.
ZU_API void zuEncoderEncodeChar( ZU_ENCODER *enc, ZU_CHAR value );
/// Appends `valuesLength` characters; a value above 0x10FFFF aborts.
ZU_API void zuEncoderEncodeChars( ZU_ENCODER *enc, const ZU_CHAR *values, ZU_INT valuesLength );
/// Appends a string.
ZU_API void zuEncoderEncodeString( ZU_ENCODER *enc, ZU_STRING *value );
/// Appends a buffer; one that is not whole bytes aborts.
ZU_API void zuEncoderEncodeBuffer( ZU_ENCODER *enc, ZU_BUFFER *buf );
/// Appends an identifier.
ZU_API void zuEncoderEncodeIdentifier( ZU_ENCODER *enc, ZU_IDENTIFIER *value );
/// Appends a vector of strings; of an item of another class, the text that zuObjToString makes of it.
ZU_API void zuEncoderEncodeStringVector( ZU_ENCODER *enc, ZU_VECTOR *value );
/// Appends a buffer or null.
ZU_API void zuEncoderEncodeOptionalBuffer( ZU_ENCODER *enc, ZU_BUFFER *value );
/// Appends an identifier or null.
ZU_API void zuEncoderEncodeOptionalIdentifier( ZU_ENCODER *enc, ZU_IDENTIFIER *value );
/// Appends a string or null.
ZU_API void zuEncoderEncodeOptionalString( ZU_ENCODER *enc, ZU_STRING *value );
/// Appends a vector of strings or null.
ZU_API void zuEncoderEncodeOptionalStringVector( ZU_ENCODER *enc, ZU_VECTOR *value );

// Plain bytes, without anything that tells how many there are; a range outside `buf` aborts
/// Appends all of `buf`.  One that is not whole bytes brings everything behind it off the bytes' boundaries.
ZU_API void zuEncoderWrite( ZU_ENCODER *enc, ZU_BUFFER *buf );
/// Appends the `byteCount` bytes of `buf` from `byteOffset` on.
ZU_API void zuEncoderWriteInner( ZU_ENCODER *enc, ZU_BUFFER *buf, ZU_INT byteOffset, ZU_INT byteCount );
/// Appends `buf` without the `byteCount` bytes from `byteOffset` on.
ZU_API void zuEncoderWriteOuter( ZU_ENCODER *enc, ZU_BUFFER *buf, ZU_INT byteOffset, ZU_INT byteCount );
/// Appends the first `byteCount` bytes of `buf`.
ZU_API void zuEncoderWriteLeading( ZU_ENCODER *enc, ZU_BUFFER *buf, ZU_INT byteCount );
/// Appends the last `byteCount` bytes of `buf`.
ZU_API void zuEncoderWriteTrailing( ZU_ENCODER *enc, ZU_BUFFER *buf, ZU_INT byteCount );
/// Appends one byte.
ZU_API void zuEncoderWriteByte( ZU_ENCODER *enc, uint8_t byte );
/// Appends `byteCount` bytes of memory, null only if there are none.
ZU_API void zuEncoderWriteBytes( ZU_ENCODER *enc, const uint8_t *bytes, ZU_INT byteCount );
/// Appends `byteCount` zero bytes.
ZU_API void zuEncoderWriteZero( ZU_ENCODER *enc, ZU_INT byteCount );
/// Appends `byteCount` bytes of one bits.
ZU_API void zuEncoderWriteOne( ZU_ENCODER *enc, ZU_INT byteCount );
/// Appends all of another encoder, or of `enc` itself.
ZU_API void zuEncoderWriteEncoder( ZU_ENCODER *enc, ZU_ENCODER *src );

ZU_END_DECLS
