// zu_string_trim_internal.h: how much white space there is, for who does not want it removed.
#pragma once

#include "zu/base/zu_string.h"
#include "zu/unicode/zu_unicode_properties.h"

ZU_BEGIN_DECLS

// Returns the number of white space characters at the front.
ZU_INT zu___StringLeadingBlanks( ZU_STRING *zus );
// Returns the number of white space characters at the end, without the first `begin` code points.
ZU_INT zu___StringTrailingBlanks( ZU_STRING *zus, ZU_INT begin );

ZU_END_DECLS
