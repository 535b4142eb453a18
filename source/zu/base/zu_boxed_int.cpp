#include "zu/base/zu_boxed_int.h"

#include "zu/base/zu_format.h"
#include "zu/runtime/zu_module.h"

struct ZU_BOXED_INT {
    ZU_OBJ obj;
    ZU_INT value;
};

static ZU_INT boxedIntCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj );
static ZU_STRING *boxedIntToString( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_BOXED_INT =
    ZU___SORT_INITIALIZER( "ZU_BOXED_INT", &zu___module, nullptr, boxedIntCompare, boxedIntToString );
ZU___STDFUNCS( ZU_BOXED_INT, zuBoxedInt )

// Standard functions
static ZU_INT boxedIntCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    ZU_INT thisValue = zuBoxedIntValue( zuBoxedIntFrom( thisObj ) );
    ZU_INT thatValue = zuBoxedIntValue( zuBoxedIntFrom( thatObj ) );
    return ( thisValue > thatValue ) - ( thisValue < thatValue );
}
static ZU_STRING *boxedIntToString( ZU_OBJ *thisObj )
{
    return zuFormatEncodeInt( zuBoxedIntValue( zuBoxedIntFrom( thisObj ) ), 10, 0, 0 );
}

ZU_BOXED_INT *zuBoxedIntCreate( ZU_INT value )
{
    ZU_BOXED_INT *bi = (ZU_BOXED_INT *)zu___ObjCreate( sizeof( ZU_BOXED_INT ), &zu___sort_ZU_BOXED_INT );
    bi->value = value;
    return bi;
}
ZU_INT zuBoxedIntValue( ZU_BOXED_INT *bi )
{
    ZU_ASSERT( bi );
    return bi->value;
}
