#include "zu/base/zu_boxed_null.h"

#include "zu/base/zu_string.h"
#include "zu/runtime/zu_module.h"

struct ZU_BOXED_NULL {
    ZU_OBJ obj;
};

static ZU_STRING *boxedNullToString( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_BOXED_NULL =
    ZU___SORT_INITIALIZER( "ZU_BOXED_NULL", &zu___module, nullptr, nullptr, boxedNullToString );
ZU___STDFUNCS( ZU_BOXED_NULL, zuBoxedNull )

static ZU_BOXED_NULL *globalNull = nullptr;

// Start-up
void zu___BoxedNullStartup( void )
{
    globalNull = (ZU_BOXED_NULL *)zu___ObjCreate( sizeof( ZU_BOXED_NULL ), &zu___sort_ZU_BOXED_NULL );
}
void zu___BoxedNullShutdown( void )
{
    ZU_REF_RELEASE( globalNull );
    ZU_REF_POISON( globalNull );
}

static ZU_STRING *boxedNullToString( ZU_OBJ * )
{
    return zuStringCreateFromAscii( "null", -1 );
}

ZU_BOXED_NULL *zuBoxedNullCreate( void )
{
    return zuBoxedNullRetain( globalNull );
}
