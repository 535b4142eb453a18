#include "zu/tag/zu_tag_match_type.h"

#include "zu/base/zu_enum_internal.h"

static constexpr ZU___NAMED_VALUE NAMES[] = {
    ZU___NAMED_VALUE_OF( ZU_TAG_MATCH_TYPE_OR ),
    ZU___NAMED_VALUE_OF( ZU_TAG_MATCH_TYPE_XOR ),
    ZU___NAMED_VALUE_OF( ZU_TAG_MATCH_TYPE_AND ),
    ZU___NAMED_VALUE_OF( ZU_TAG_MATCH_TYPE_NOT ),
};
static ZU_ENUM *zu___TagMatchTypeEnum = nullptr;

// Start-up
void zu___TagMatchTypeStartup( void )
{
    zu___TagMatchTypeEnum = ZU___ENUM_CREATE( zu___TagMatchTypeEnum, NAMES );
}
void zu___TagMatchTypeShutdown( void )
{
    ZU_REF_RELEASE( zu___TagMatchTypeEnum );
    ZU_REF_POISON( zu___TagMatchTypeEnum );
}

ZU_TAG_MATCH_TYPE zuTagMatchTypeFromString( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return zuEnumParse( zu___TagMatchTypeEnum, zus );
}
ZU_STRING *zuTagMatchTypeToString( ZU_TAG_MATCH_TYPE type )
{
    ZU_ASSERT( ZU_TAG_MATCH_TYPE_OK( type ) );
    return zuEnumGenerate( zu___TagMatchTypeEnum, type );
}
