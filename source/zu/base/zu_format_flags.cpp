#include "zu/base/zu_format_flags.h"

static constexpr ZU_INT ALL_FLAGS = ZU_FORMAT_FLAG_LEFTALIGN | ZU_FORMAT_FLAG_ZEROPAD | ZU_FORMAT_FLAG_NOSIGN |
                                    ZU_FORMAT_FLAG_PLUSPOS | ZU_FORMAT_FLAG_BLANKPOS | ZU_FORMAT_FLAG_UPPERCASE |
                                    ZU_FORMAT_FLAG_BASEMNEMONIC | ZU_FORMAT_FLAG_BASENUMERIC |
                                    ZU_FORMAT_FLAG_BASEDECIMAL;

ZU_INT zuFormatFlagsNormalize( ZU_INT flags )
{
    ZU_INT dropped = 0;
    if ( flags & ZU_FORMAT_FLAG_LEFTALIGN ) {
        dropped |= ZU_FORMAT_FLAG_ZEROPAD;
    }
    if ( flags & ZU_FORMAT_FLAG_NOSIGN ) {
        dropped |= ZU_FORMAT_FLAG_PLUSPOS | ZU_FORMAT_FLAG_BLANKPOS;
    } else if ( flags & ZU_FORMAT_FLAG_PLUSPOS ) {
        dropped |= ZU_FORMAT_FLAG_BLANKPOS;
    }
    if ( flags & ZU_FORMAT_FLAG_BASEMNEMONIC ) {
        dropped |= ZU_FORMAT_FLAG_BASENUMERIC;
    }
    return flags & ALL_FLAGS & ~dropped;
}
