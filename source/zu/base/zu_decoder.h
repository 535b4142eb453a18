// ZU_DECODER: reads values from a buffer in the binary form of ZU_ENCODER, which zu_encoder.h tells.
//
// The content may come from anywhere: nothing in it aborts, and none of it has anything allocated that it could not
// hold, whatever counts it tells.  What is wrong with it puts the decoder into the error state, for good, in which every
// function that reads fails at once and changes nothing more; so a caller can read a whole record and ask once, at its
// end.  A decoder that has failed stands at the end, so that reading until nothing is left comes to an end too.
//
// The functions with Try return whether they have read a value.  First of all they clear what is behind `value`, which
// is 0 or null after a failure; a reference there is released.  If `value` itself is null, a value is read and checked
// all the same, and passed over.  Bits behind the last whole byte are not read.  One thread at a time uses a decoder.
#pragma once

#include "zu/base/zu_buffer.h"
#include "zu/base/zu_identifier.h"
#include "zu/base/zu_string.h"
#include "zu/base/zu_vector.h"

ZU_BEGIN_DECLS

typedef struct ZU_DECODER ZU_DECODER;
// zuDecoderRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_DECODER, zuDecoder )

/// Returns a new decoder that stands at the beginning of `buf`.
ZU_API ZU_DECODER *zuDecoderCreate( ZU_BUFFER *buf );
/// Returns the whole buffer, wherever reading has come to.
ZU_API ZU_BUFFER *zuDecoderBuffer( ZU_DECODER *dec );
/// Returns the number of bytes of the whole buffer.
ZU_API ZU_INT zuDecoderLength( ZU_DECODER *dec );
/// Returns the offset of the next byte; in the error state the length.
ZU_API ZU_INT zuDecoderOffset( ZU_DECODER *dec );
/// Returns how many bytes are left; in the error state 0.
ZU_API ZU_INT zuDecoderRemaining( ZU_DECODER *dec );
/// Tells whether the decoder is in the error state.
ZU_API ZU_BOOL zuDecoderError( ZU_DECODER *dec );
/// Puts the decoder into the error state: for a caller who finds that what it has read makes no sense.
ZU_API void zuDecoderSetError( ZU_DECODER *dec );

// Values
/// Reads a truth value.
ZU_API ZU_BOOL zuDecoderTryDecodeBool( ZU_DECODER *dec, ZU_BOOL *value );
/// Reads an integer.  Leading zero bytes and a negative 0 are taken, and the number of bytes may be 127 to tell that the
/// number itself follows as an integer; a value out of range is an error.
ZU_API ZU_BOOL zuDecoderTryDecodeInt( ZU_DECODER *dec, ZU_INT *value );
/// Reads a character; it may be any value up to 0x1FFFFF, so that it need be none.
ZU_API ZU_BOOL zuDecoderTryDecodeChar( ZU_DECODER *dec, ZU_CHAR *value );
/// Reads `length` characters, likewise, into an array, which may be null only if that is 0.
ZU_API ZU_BOOL zuDecoderTryDecodeChars( ZU_DECODER *dec, ZU_CHAR *value, ZU_INT length );
/// Reads a string; a value above 0x10FFFF in it is an error.
ZU_API ZU_BOOL zuDecoderTryDecodeString( ZU_DECODER *dec, ZU_STRING **value );
/// Reads a buffer.
ZU_API ZU_BOOL zuDecoderTryDecodeBuffer( ZU_DECODER *dec, ZU_BUFFER **value );
/// Reads an identifier.  Other than everywhere else, a buffer that is no identifier's makes this return false and does
/// not put the decoder into the error state.
ZU_API ZU_BOOL zuDecoderTryDecodeIdentifier( ZU_DECODER *dec, ZU_IDENTIFIER **value );
/// Reads a vector of strings; a negative number of them is taken for none.
ZU_API ZU_BOOL zuDecoderTryDecodeStringVector( ZU_DECODER *dec, ZU_VECTOR **value );
/// Reads a buffer or null.
ZU_API ZU_BOOL zuDecoderTryDecodeOptionalBuffer( ZU_DECODER *dec, ZU_BUFFER **value );
/// Reads an identifier or null; fails as zuDecoderTryDecodeIdentifier does.
ZU_API ZU_BOOL zuDecoderTryDecodeOptionalIdentifier( ZU_DECODER *dec, ZU_IDENTIFIER **value );
/// Reads a string or null.
ZU_API ZU_BOOL zuDecoderTryDecodeOptionalString( ZU_DECODER *dec, ZU_STRING **value );
/// Reads a vector of strings or null.
ZU_API ZU_BOOL zuDecoderTryDecodeOptionalStringVector( ZU_DECODER *dec, ZU_VECTOR **value );

// Plain bytes; a negative number of them aborts
/// Appends the next `length` bytes to `*dest`; either pointer may be null if that is 0.
ZU_API ZU_BOOL zuDecoderTryRead( ZU_DECODER *dec, ZU_BUFFER **dest, ZU_INT length );
/// Reads the next byte.
ZU_API ZU_BOOL zuDecoderTryReadByte( ZU_DECODER *dec, uint8_t *byte );
/// Reads the next `length` bytes to `bytes`, which may be null only if that is 0.
ZU_API ZU_BOOL zuDecoderTryReadBytes( ZU_DECODER *dec, uint8_t *bytes, ZU_INT length );
/// Passes over the next `length` bytes.
ZU_API ZU_BOOL zuDecoderTrySkip( ZU_DECODER *dec, ZU_INT length );

ZU_END_DECLS
