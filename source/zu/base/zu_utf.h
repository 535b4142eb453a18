// zu_utf.h: well-formed UTF-8, UTF-16 and UTF-32, as the Unicode Standard 14.0 has them in section 3.9.
//
// The conversions of zu_string.h are lenient by contract: they let overlong forms and surrogates pass, take a byte behind
// a broken sequence with it, and split characters beyond U+FFFF where text comes as UTF-16 or narrow.  These do none of
// that, and are the ones to take for whatever comes from outside or goes there.
//
// Each conversion exists in two forms.  Try forms fail on the first fault and say where it is, as an offset in units of
// the source, -1 if there is none.  Replacing forms put one U+FFFD in place of each maximal subpart of an ill-formed
// sequence, as the standard recommends (and browsers do), and always succeed.  In a string a surrogate is a fault:
// nothing is ever encoded of it but U+FFFD.  Lengths are in units, -1: terminated; what a conversion returns in an array
// comes from zuMemAlloc and is terminated, the terminator not counted in `length`, which may be null.
//
// UTF-16 and UTF-32 are units in the order of the machine here, and a byte order mark is a character like others.  Bytes
// in either order, with a mark or without, are zuExactCharSourceBufferToString's and zuExactCharSinkStringToBuffer's.
#pragma once

#include "zu/base/zu_string.h"

ZU_BEGIN_DECLS

// Testing; returns the offset of the first ill-formed sequence, -1 if all is well-formed
/// Tests UTF-8.
ZU_API ZU_INT zuUtf8Fault( const char *src, ZU_INT srcLength );
/// Tests UTF-16.
ZU_API ZU_INT zuUtf16Fault( const char16_t *src, ZU_INT srcLength );
/// Tests UTF-32.
ZU_API ZU_INT zuUtf32Fault( const ZU_CHAR *src, ZU_INT srcLength );
/// Tests a string, in which surrogates are faults.
ZU_API ZU_INT zuUtfStringFault( ZU_STRING *zus );

// Decoding
/// Returns a new string; null if `src` is ill-formed.  Stores the offset of the fault, or -1, in `fault`, which may be
/// null.
ZU_API ZU_STRING *zuUtf8TryDecode( const char *src, ZU_INT srcLength, ZU_INT *fault );
/// Returns a new string, with U+FFFD for what is ill-formed.
ZU_API ZU_STRING *zuUtf8Decode( const char *src, ZU_INT srcLength );
/// Appends to `*dest` instead; false, and no change, if `src` is ill-formed.
ZU_API ZU_BOOL zuUtf8TryAppend( ZU_STRING **dest, const char *src, ZU_INT srcLength, ZU_INT *fault );
/// Appends to `*dest` instead.
ZU_API void zuUtf8Append( ZU_STRING **dest, const char *src, ZU_INT srcLength );
/// Returns a new string of UTF-16; null if it is ill-formed.
ZU_API ZU_STRING *zuUtf16TryDecode( const char16_t *src, ZU_INT srcLength, ZU_INT *fault );
/// Returns a new string of UTF-16, with U+FFFD for each surrogate without its partner.
ZU_API ZU_STRING *zuUtf16Decode( const char16_t *src, ZU_INT srcLength );
/// Appends UTF-16 to `*dest` instead; false, and no change, if it is ill-formed.
ZU_API ZU_BOOL zuUtf16TryAppend( ZU_STRING **dest, const char16_t *src, ZU_INT srcLength, ZU_INT *fault );
/// Appends UTF-16 to `*dest` instead.
ZU_API void zuUtf16Append( ZU_STRING **dest, const char16_t *src, ZU_INT srcLength );
/// Returns a new string of UTF-32; null if it is ill-formed.
ZU_API ZU_STRING *zuUtf32TryDecode( const ZU_CHAR *src, ZU_INT srcLength, ZU_INT *fault );
/// Returns a new string of UTF-32, with U+FFFD for each surrogate and each value above U+10FFFF.
ZU_API ZU_STRING *zuUtf32Decode( const ZU_CHAR *src, ZU_INT srcLength );
/// Appends UTF-32 to `*dest` instead; false, and no change, if it is ill-formed.
ZU_API ZU_BOOL zuUtf32TryAppend( ZU_STRING **dest, const ZU_CHAR *src, ZU_INT srcLength, ZU_INT *fault );
/// Appends UTF-32 to `*dest` instead.
ZU_API void zuUtf32Append( ZU_STRING **dest, const ZU_CHAR *src, ZU_INT srcLength );

// Encoding
/// Returns UTF-8; null if the string has a surrogate, whose position is stored in `fault`.
ZU_API char *zuUtf8TryEncode( ZU_STRING *zus, ZU_INT *length, ZU_INT *fault );
/// Returns UTF-8, with U+FFFD for surrogates.
ZU_API char *zuUtf8Encode( ZU_STRING *zus, ZU_INT *length );
/// Returns UTF-16; null if the string has a surrogate.
ZU_API char16_t *zuUtf16TryEncode( ZU_STRING *zus, ZU_INT *length, ZU_INT *fault );
/// Returns UTF-16, with U+FFFD for surrogates.
ZU_API char16_t *zuUtf16Encode( ZU_STRING *zus, ZU_INT *length );
/// Returns UTF-32; null if the string has a surrogate.
ZU_API ZU_CHAR *zuUtf32TryEncode( ZU_STRING *zus, ZU_INT *length, ZU_INT *fault );
/// Returns UTF-32, with U+FFFD for surrogates.
ZU_API ZU_CHAR *zuUtf32Encode( ZU_STRING *zus, ZU_INT *length );

// Without a string in between
/// Tells whether the UTF-8 of `zus` is `src`; false too if either has a fault.
ZU_API ZU_BOOL zuUtf8Equals( ZU_STRING *zus, const char *src, ZU_INT srcLength );
/// Finds well-formed UTF-8 in `zus` from `offset` on, 0 to the length; returns its position, -1 if it is not there.  Empty
/// or ill-formed text aborts.
ZU_API ZU_INT zuUtf8Find( ZU_STRING *zus, ZU_INT offset, const char *sub, ZU_INT subLength );

ZU_END_DECLS
