// zu_nlf_flags_internal.h: newline functions as characters.
#pragma once

#include "zu/io/zu_nlf_flags.h"
#include "zu/sys/zu_chars.h"

ZU_BEGIN_DECLS

// Stores the newline function that a sink with these flags writes, and returns its length, 0 to 2.
ZU_INT zu___NlfFlagsNlf( ZU_NLF_FLAGS flags, ZU_CHAR nlf[ 2 ] );

ZU_END_DECLS
