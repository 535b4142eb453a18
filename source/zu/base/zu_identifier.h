// ZU_IDENTIFIER: an identity that nothing else has, 128 random bits.
//
// An immutable value, ordered by its text: 32 digits of "0123456789ABCDEF".
#pragma once

#include "zu/base/zu_buffer.h"
#include "zu/base/zu_dict.h"
#include "zu/base/zu_string.h"

ZU_BEGIN_DECLS

typedef struct ZU_IDENTIFIER ZU_IDENTIFIER;
// zuIdentifierRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_IDENTIFIER, zuIdentifier )

// Creation
/// Returns a new identity, of 16 bytes of zuRandomBytes.
ZU_API ZU_IDENTIFIER *zuIdentifierCreate( void );
/// Returns the identifier with the text `zus`, which it keeps; null if that is no identifier's.  Small letters are not
/// taken for digits.
ZU_API ZU_IDENTIFIER *zuIdentifierTryCreateFromString( ZU_STRING *zus );
/// Returns the identifier with the text in `buf`, in ASCII; null if that is no identifier's.
ZU_API ZU_IDENTIFIER *zuIdentifierTryCreateFromBuffer( ZU_BUFFER *buf );

// Inspection
/// Returns the text.
ZU_API ZU_STRING *zuIdentifierString( ZU_IDENTIFIER *ident );
/// Returns the text in ASCII, 32 bytes.
ZU_API ZU_BUFFER *zuIdentifierBuffer( ZU_IDENTIFIER *ident );

// Identifiers as keys, beside the other kinds of keys in zu_dict.h
/// Returns the value under the identifier `key`; null if there is none.
ZU_API ZU_OBJ *zuDictIdentifierKey( ZU_DICT *dict, ZU_IDENTIFIER *key );
/// Tells whether there is the identifier `key`.
ZU_API ZU_BOOL zuDictHasIdentifierKey( ZU_DICT *dict, ZU_IDENTIFIER *key );
/// Returns the position of the identifier `key`; -1 if there is none.
ZU_API ZU_INT zuDictIndexOfIdentifierKey( ZU_DICT *dict, ZU_IDENTIFIER *key );
/// Sets the value under the identifier `key`.
ZU_API void zuDictSetIdentifierKey( ZU_DICT **dict, ZU_IDENTIFIER *key, ZU_OBJ *value );
/// Removes the identifier `key` and its value.
ZU_API void zuDictDelIdentifierKey( ZU_DICT **dict, ZU_IDENTIFIER *key );

ZU_END_DECLS
