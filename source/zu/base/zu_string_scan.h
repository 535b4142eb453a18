// zu_string_scan.h: reading values from within a string.
//
// Each function reads from `offset` on, 0 to the length, at most `maxChars` code points, -1: all the rest; other values
// abort.  What it accepts, stores and returns is told at the function of zu_format.h that it calls.
#pragma once

#include "zu/base/zu_string.h"

ZU_BEGIN_DECLS

/// Reads a truth value, as zuFormatTryDecodeBool does.
ZU_API ZU_BOOL zuStringScanBool( ZU_STRING *zus, ZU_INT offset, ZU_INT maxChars, ZU_BOOL numeric, ZU_BOOL *value,
                                 ZU_INT *consumed );
/// Reads an integer, as zuFormatTryDecodeInt does.
ZU_API ZU_BOOL zuStringScanInt( ZU_STRING *zus, ZU_INT offset, ZU_INT maxChars, ZU_INT base, ZU_INT *value,
                                ZU_INT *consumed );
/// Reads a real number, as zuFormatTryDecodeReal does.
ZU_API ZU_BOOL zuStringScanReal( ZU_STRING *zus, ZU_INT offset, ZU_INT maxChars, ZU_INT base, double *value,
                                 ZU_INT *consumed );

ZU_END_DECLS
