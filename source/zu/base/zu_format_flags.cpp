#include "zu/base/zu_format_flags.h"

#include "zu/base/zu_flagset_internal.h"

static constexpr ZU_INT ALL_FLAGS = ZU_FORMAT_FLAG_LEFTALIGN | ZU_FORMAT_FLAG_ZEROPAD | ZU_FORMAT_FLAG_NOSIGN |
                                    ZU_FORMAT_FLAG_PLUSPOS | ZU_FORMAT_FLAG_BLANKPOS | ZU_FORMAT_FLAG_UPPERCASE |
                                    ZU_FORMAT_FLAG_BASEMNEMONIC | ZU_FORMAT_FLAG_BASENUMERIC |
                                    ZU_FORMAT_FLAG_BASEDECIMAL;

static constexpr ZU___NAMED_VALUE NAMES[] = {
    ZU___NAMED_VALUE_OF( ZU_FORMAT_FLAG_LEFTALIGN ),    ZU___NAMED_VALUE_OF( ZU_FORMAT_FLAG_ZEROPAD ),
    ZU___NAMED_VALUE_OF( ZU_FORMAT_FLAG_NOSIGN ),       ZU___NAMED_VALUE_OF( ZU_FORMAT_FLAG_PLUSPOS ),
    ZU___NAMED_VALUE_OF( ZU_FORMAT_FLAG_BLANKPOS ),     ZU___NAMED_VALUE_OF( ZU_FORMAT_FLAG_UPPERCASE ),
    ZU___NAMED_VALUE_OF( ZU_FORMAT_FLAG_BASEMNEMONIC ), ZU___NAMED_VALUE_OF( ZU_FORMAT_FLAG_BASENUMERIC ),
    ZU___NAMED_VALUE_OF( ZU_FORMAT_FLAG_BASEDECIMAL ),
};
static ZU_FLAGSET *zu___FormatFlagsFlagset = nullptr;

// Start-up
void zu___FormatFlagsStartup( void )
{
    zu___FormatFlagsFlagset = ZU___FLAGSET_CREATE( zu___FormatFlagsFlagset, NAMES );
}
void zu___FormatFlagsShutdown( void )
{
    ZU_REF_RELEASE( zu___FormatFlagsFlagset );
    ZU_REF_POISON( zu___FormatFlagsFlagset );
}

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
ZU_INT zuFormatFlagsFromString( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return zuFormatFlagsNormalize( zuFlagsetParse( zu___FormatFlagsFlagset, zus ) );
}
ZU_STRING *zuFormatFlagsToString( ZU_INT flags )
{
    return zuFlagsetGenerate( zu___FormatFlagsFlagset, zuFormatFlagsNormalize( flags ) );
}
