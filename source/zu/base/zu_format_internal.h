// zu_format_internal.h: what the encoders, the engine and the string functions share.
#pragma once

#include "zu/base/zu_format.h"

#include <stdarg.h>

ZU_BEGIN_DECLS

// Appends a field for a text of `length` code points, which is padded with blanks to `minWidth`, and returns the place
// of the text, which the caller fills.
ZU_CHAR *zu___FormatOpenField( ZU_STRING **dest, ZU_INT length, ZU_INT minWidth, ZU_INT flags );

// Each appends to `*dest` the text that the public function of the same name returns, with the same checks.
void zu___FormatEncodeBool( ZU_STRING **dest, ZU_BOOL value, ZU_INT minWidth, ZU_INT flags );
void zu___FormatEncodeInt( ZU_STRING **dest, ZU_INT value, ZU_INT base, ZU_INT minWidth, ZU_INT flags );
void zu___FormatEncodeReal( ZU_STRING **dest, double value, ZU_INT base, ZU_INT minWidth, ZU_INT precision,
                            ZU_INT flags );

// Returns the length of what zuFormatEncodeInt returns without a least width, with the same checks.
ZU_INT zu___FormatMeasureInt( ZU_INT value, ZU_INT base, ZU_INT flags );

// Works as zu___FormatArgList does, by a format of `fmtLength` code points that is in no string.
ZU_STRING *zu___FormatCharsArgList( const ZU_CHAR *fmt, ZU_INT fmtLength, va_list *argList );

ZU_END_DECLS
