#include "zu/tag/zu_tag_color.h"

#include "zu/base/zu_enum_internal.h"

static constexpr ZU___NAMED_VALUE NAMES[] = {
    ZU___NAMED_VALUE_OF( ZU_TAG_COLOR_RED ),    ZU___NAMED_VALUE_OF( ZU_TAG_COLOR_ORANGE ),
    ZU___NAMED_VALUE_OF( ZU_TAG_COLOR_YELLOW ), ZU___NAMED_VALUE_OF( ZU_TAG_COLOR_GREEN ),
    ZU___NAMED_VALUE_OF( ZU_TAG_COLOR_BLUE ),   ZU___NAMED_VALUE_OF( ZU_TAG_COLOR_INDIGO ),
    ZU___NAMED_VALUE_OF( ZU_TAG_COLOR_VIOLET ), ZU___NAMED_VALUE_OF( ZU_TAG_COLOR_WHITE ),
    ZU___NAMED_VALUE_OF( ZU_TAG_COLOR_GREY ),   ZU___NAMED_VALUE_OF( ZU_TAG_COLOR_BLACK ),
};
static ZU_ENUM *zu___TagColorEnum = nullptr;

// Start-up
void zu___TagColorStartup( void )
{
    zu___TagColorEnum = ZU___ENUM_CREATE( zu___TagColorEnum, NAMES );
}
void zu___TagColorShutdown( void )
{
    ZU_REF_RELEASE( zu___TagColorEnum );
    ZU_REF_POISON( zu___TagColorEnum );
}

ZU_TAG_COLOR zuTagColorFromString( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return zuEnumParse( zu___TagColorEnum, zus );
}
ZU_STRING *zuTagColorToString( ZU_TAG_COLOR color )
{
    ZU_ASSERT( ZU_TAG_COLOR_OK( color ) );
    return zuEnumGenerate( zu___TagColorEnum, color );
}
