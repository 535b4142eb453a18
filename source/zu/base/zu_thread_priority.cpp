#include "zu/base/zu_thread_priority.h"

#include "zu/base/zu_enum_internal.h"

static constexpr ZU___NAMED_VALUE NAMES[] = {
    ZU___NAMED_VALUE_OF( ZU_THREAD_PRIORITY_IDLE ),     ZU___NAMED_VALUE_OF( ZU_THREAD_PRIORITY_LOWEST ),
    ZU___NAMED_VALUE_OF( ZU_THREAD_PRIORITY_LOW ),      ZU___NAMED_VALUE_OF( ZU_THREAD_PRIORITY_NORMAL ),
    ZU___NAMED_VALUE_OF( ZU_THREAD_PRIORITY_HIGH ),     ZU___NAMED_VALUE_OF( ZU_THREAD_PRIORITY_HIGHEST ),
    ZU___NAMED_VALUE_OF( ZU_THREAD_PRIORITY_CRITICAL ),
};
static ZU_ENUM *zu___ThreadPriorityEnum = nullptr;

// Start-up
void zu___ThreadPriorityStartup( void )
{
    zu___ThreadPriorityEnum = ZU___ENUM_CREATE( zu___ThreadPriorityEnum, NAMES );
}
void zu___ThreadPriorityShutdown( void )
{
    ZU_REF_RELEASE( zu___ThreadPriorityEnum );
    ZU_REF_POISON( zu___ThreadPriorityEnum );
}

ZU_THREAD_PRIORITY zuThreadPriorityFromString( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return zuEnumParse( zu___ThreadPriorityEnum, zus );
}
ZU_STRING *zuThreadPriorityToString( ZU_THREAD_PRIORITY prio )
{
    ZU_ASSERT( ZU_THREAD_PRIORITY_OK( prio ) );
    return zuEnumGenerate( zu___ThreadPriorityEnum, prio );
}
