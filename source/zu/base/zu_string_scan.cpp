#include "zu/base/zu_string_scan.h"

#include "zu/base/zu_format.h"
#include "zu/base/zu_string_internal.h"

#include <algorithm>

// Returns how many code points there are to read.
static ZU_INT scanLength( ZU_STRING *zus, ZU_INT offset, ZU_INT maxChars )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( offset >= 0 );
    ZU_ASSERT( offset <= zus->length );
    ZU_ASSERT( maxChars >= -1 );
    ZU_INT rest = zus->length - offset;
    return maxChars == -1 ? rest : std::min( rest, maxChars );
}
ZU_BOOL zuStringScanBool( ZU_STRING *zus, ZU_INT offset, ZU_INT maxChars, ZU_BOOL numeric, ZU_BOOL *value,
                          ZU_INT *consumed )
{
    return zuFormatTryDecodeBool( zus, offset, scanLength( zus, offset, maxChars ), numeric, value, consumed );
}
ZU_BOOL zuStringScanInt( ZU_STRING *zus, ZU_INT offset, ZU_INT maxChars, ZU_INT base, ZU_INT *value, ZU_INT *consumed )
{
    return zuFormatTryDecodeInt( zus, offset, scanLength( zus, offset, maxChars ), base, value, consumed );
}
ZU_BOOL zuStringScanReal( ZU_STRING *zus, ZU_INT offset, ZU_INT maxChars, ZU_INT base, double *value, ZU_INT *consumed )
{
    return zuFormatTryDecodeReal( zus, offset, scanLength( zus, offset, maxChars ), base, value, consumed );
}
