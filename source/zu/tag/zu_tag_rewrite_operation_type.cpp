#include "zu/tag/zu_tag_rewrite_operation_type.h"

#include "zu/base/zu_enum_internal.h"

static constexpr ZU___NAMED_VALUE NAMES[] = {
    ZU___NAMED_VALUE_OF( ZU_TAG_REWRITE_OPERATION_TYPE_SET ),
    ZU___NAMED_VALUE_OF( ZU_TAG_REWRITE_OPERATION_TYPE_DELETE ),
    ZU___NAMED_VALUE_OF( ZU_TAG_REWRITE_OPERATION_TYPE_PASSTHROUGH ),
};
static ZU_ENUM *zu___TagRewriteOperationTypeEnum = nullptr;

// Start-up
void zu___TagRewriteOperationTypeStartup( void )
{
    zu___TagRewriteOperationTypeEnum = ZU___ENUM_CREATE( zu___TagRewriteOperationTypeEnum, NAMES );
}
void zu___TagRewriteOperationTypeShutdown( void )
{
    ZU_REF_RELEASE( zu___TagRewriteOperationTypeEnum );
    ZU_REF_POISON( zu___TagRewriteOperationTypeEnum );
}

ZU_TAG_REWRITE_OPERATION_TYPE zuTagRewriteOperationTypeFromString( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return zuEnumParse( zu___TagRewriteOperationTypeEnum, zus );
}
ZU_STRING *zuTagRewriteOperationTypeToString( ZU_TAG_REWRITE_OPERATION_TYPE type )
{
    ZU_ASSERT( ZU_TAG_REWRITE_OPERATION_TYPE_OK( type ) );
    return zuEnumGenerate( zu___TagRewriteOperationTypeEnum, type );
}
