#include "zu/charset/zu_charset_flags.h"

#include "zu/base/zu_flagset_internal.h"

static constexpr ZU_CHARSET_FLAGS KNOWN_FLAGS =
    ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER | ZU_CHARSET_FLAG_IGNORE_INVALID_CHARACTERS |
    ZU_CHARSET_FLAG_IGNORE_BYTE_ORDER_MARK | ZU_CHARSET_FLAG_INSERT_BYTE_ORDER_MARK;

static constexpr ZU___NAMED_VALUE NAMES[] = {
    ZU___NAMED_VALUE_OF( ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER ),
    ZU___NAMED_VALUE_OF( ZU_CHARSET_FLAG_IGNORE_INVALID_CHARACTERS ),
    ZU___NAMED_VALUE_OF( ZU_CHARSET_FLAG_IGNORE_BYTE_ORDER_MARK ),
    ZU___NAMED_VALUE_OF( ZU_CHARSET_FLAG_INSERT_BYTE_ORDER_MARK ),
};
static ZU_FLAGSET *zu___CharsetFlagsFlagset = nullptr;

// Start-up
void zu___CharsetFlagsStartup( void )
{
    zu___CharsetFlagsFlagset = ZU___FLAGSET_CREATE( zu___CharsetFlagsFlagset, NAMES );
}
void zu___CharsetFlagsShutdown( void )
{
    ZU_REF_RELEASE( zu___CharsetFlagsFlagset );
    ZU_REF_POISON( zu___CharsetFlagsFlagset );
}

ZU_CHARSET_FLAGS zuCharsetFlagsNormalize( ZU_CHARSET_FLAGS flags )
{
    flags &= KNOWN_FLAGS;
    if ( flags & ZU_CHARSET_FLAG_IGNORE_INVALID_CHARACTERS ) {
        flags &= ~ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER;
    }
    return flags;
}
ZU_STRING *zuCharsetFlagsToString( ZU_CHARSET_FLAGS flags )
{
    return zuFlagsetGenerate( zu___CharsetFlagsFlagset, zuCharsetFlagsNormalize( flags ) );
}
ZU_CHARSET_FLAGS zuCharsetFlagsFromString( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return zuCharsetFlagsNormalize( zuFlagsetParse( zu___CharsetFlagsFlagset, zus ) );
}
