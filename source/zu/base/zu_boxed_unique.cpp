#include "zu/base/zu_boxed_unique.h"

#include "zu/runtime/zu_module.h"

struct ZU_BOXED_UNIQUE {
    ZU_OBJ obj;
};

static ZU_SORT zu___sort_ZU_BOXED_UNIQUE =
    ZU___SORT_INITIALIZER( "ZU_BOXED_UNIQUE", &zu___module, nullptr, nullptr, nullptr );
ZU___STDFUNCS( ZU_BOXED_UNIQUE, zuBoxedUnique )

ZU_BOXED_UNIQUE *zuBoxedUniqueCreate( void )
{
    return (ZU_BOXED_UNIQUE *)zu___ObjCreate( sizeof( ZU_BOXED_UNIQUE ), &zu___sort_ZU_BOXED_UNIQUE );
}
