#include "zu/base/zu_boxed_real.h"

#include "zu/base/zu_format.h"
#include "zu/runtime/zu_module.h"
#include "zu/sys/zu_real.h"

struct ZU_BOXED_REAL {
    ZU_OBJ obj;
    double value;
};

static ZU_INT boxedRealCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj );
static ZU_STRING *boxedRealToString( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_BOXED_REAL =
    ZU___SORT_INITIALIZER( "ZU_BOXED_REAL", &zu___module, nullptr, boxedRealCompare, boxedRealToString );
ZU___STDFUNCS( ZU_BOXED_REAL, zuBoxedReal )

// Standard functions
static ZU_INT boxedRealCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    return zuRealCompare( zuBoxedRealValue( zuBoxedRealFrom( thisObj ) ),
                          zuBoxedRealValue( zuBoxedRealFrom( thatObj ) ) );
}
static ZU_STRING *boxedRealToString( ZU_OBJ *thisObj )
{
    return zuFormatEncodeReal( zuBoxedRealValue( zuBoxedRealFrom( thisObj ) ), 10, 0, -1, 0 );
}

ZU_BOXED_REAL *zuBoxedRealCreate( double value )
{
    ZU_BOXED_REAL *br = (ZU_BOXED_REAL *)zu___ObjCreate( sizeof( ZU_BOXED_REAL ), &zu___sort_ZU_BOXED_REAL );
    br->value = value;
    return br;
}
double zuBoxedRealValue( ZU_BOXED_REAL *br )
{
    ZU_ASSERT( br );
    return br->value;
}
