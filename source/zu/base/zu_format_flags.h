// zu_format_flags.h: how a number or a text stands in its field, a ZU_INT of bits.
//
// Conversions of a format set them by the characters that zu_string_format.h lists; the encoders of zu_format.h take
// them as they are.  Callable from any thread.
#pragma once

#include "zu/sys/zu_int.h"

ZU_BEGIN_DECLS

typedef struct ZU_STRING ZU_STRING;

/// Pads with blanks on the right; cancels ZU_FORMAT_FLAG_ZEROPAD.
#define ZU_FORMAT_FLAG_LEFTALIGN    ( (ZU_INT)1 )
/// Pads with zeros between sign or base prefix and digits.
#define ZU_FORMAT_FLAG_ZEROPAD      ( (ZU_INT)2 )
/// Shows no sign, not even of a negative number; cancels both following flags.
#define ZU_FORMAT_FLAG_NOSIGN       ( (ZU_INT)4 )
/// Shows "+" on a number that is not negative; cancels ZU_FORMAT_FLAG_BLANKPOS.
#define ZU_FORMAT_FLAG_PLUSPOS      ( (ZU_INT)8 )
/// Shows a blank on a number that is not negative.
#define ZU_FORMAT_FLAG_BLANKPOS     ( (ZU_INT)16 )
/// Shows digits, base prefix, "TRUE" and "FALSE" in upper case.
#define ZU_FORMAT_FLAG_UPPERCASE    ( (ZU_INT)32 )
/// Shows base 2, 8, 10 or 16 as "0b", "0o", "0d" or "0x", and others as a number; cancels ZU_FORMAT_FLAG_BASENUMERIC.
#define ZU_FORMAT_FLAG_BASEMNEMONIC ( (ZU_INT)64 )
/// Shows the base as a decimal number and a colon: "16:".
#define ZU_FORMAT_FLAG_BASENUMERIC  ( (ZU_INT)128 )
/// Lets base 10 have its prefix too, which it has not by itself.
#define ZU_FORMAT_FLAG_BASEDECIMAL  ( (ZU_INT)256 )

/// Returns `flags` without those that others cancel, and without bits that have no meaning.
ZU_API ZU_INT zuFormatFlagsNormalize( ZU_INT flags );
/// Reads flags as zuFlagsetParse does, "ZU_FORMAT_FLAG_ZEROPAD|ZU_FORMAT_FLAG_UPPERCASE", and normalizes them.
ZU_API ZU_INT zuFormatFlagsFromString( ZU_STRING *zus );
/// Returns the names of the flags that normalizing leaves of `flags`.
ZU_API ZU_STRING *zuFormatFlagsToString( ZU_INT flags );

// For authors of classes and modules
/// Makes the names of the flags.
ZU_API void zu___FormatFlagsStartup( void );
/// Releases the names of the flags.
ZU_API void zu___FormatFlagsShutdown( void );

ZU_END_DECLS
