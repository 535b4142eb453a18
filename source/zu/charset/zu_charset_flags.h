// zu_charset_flags.h: what streams of a character set do about invalid input and byte order marks, a ZU_INT of bits.
//
// With neither of the first two, invalid input is replaced: a source delivers U+FFFD for it, a sink writes what stands
// for U+FFFD in its set, or else "?".
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

typedef ZU_INT ZU_CHARSET_FLAGS;

/// Invalid input makes the stream fail; nothing aborts.
#define ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER ( (ZU_CHARSET_FLAGS)0x1 )
/// Invalid input is dropped.
#define ZU_CHARSET_FLAG_IGNORE_INVALID_CHARACTERS  ( (ZU_CHARSET_FLAGS)0x2 )
/// Sources neither look for a byte order mark nor drop one: U+FEFF comes through as a character.
#define ZU_CHARSET_FLAG_IGNORE_BYTE_ORDER_MARK     ( (ZU_CHARSET_FLAGS)0x4 )
/// Sinks of the UTF family begin their output with a byte order mark.
#define ZU_CHARSET_FLAG_INSERT_BYTE_ORDER_MARK     ( (ZU_CHARSET_FLAGS)0x8 )

/// Returns `flags` without bits that have no meaning; ignoring wins over failing.
ZU_API ZU_CHARSET_FLAGS zuCharsetFlagsNormalize( ZU_CHARSET_FLAGS flags );
/// Returns the names of the flags, normalised, as a flag set writes them.
ZU_API ZU_STRING *zuCharsetFlagsToString( ZU_CHARSET_FLAGS flags );
/// Returns the flags that `zus` names, normalised, as a flag set reads them.
ZU_API ZU_CHARSET_FLAGS zuCharsetFlagsFromString( ZU_STRING *zus );

// For authors of classes and modules
/// Makes the flag set of the names.
ZU_API void zu___CharsetFlagsStartup( void );
/// Releases what zu___CharsetFlagsStartup made.
ZU_API void zu___CharsetFlagsShutdown( void );

ZU_END_DECLS
