#include "zu/base/zu_boxed_bool.h"

#include "zu/base/zu_format.h"
#include "zu/runtime/zu_module.h"

struct ZU_BOXED_BOOL {
    ZU_OBJ obj;
    ZU_BOOL value; // ZU_TRUE or ZU_FALSE
};

static ZU_INT boxedBoolCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj );
static ZU_STRING *boxedBoolToString( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_BOXED_BOOL =
    ZU___SORT_INITIALIZER( "ZU_BOXED_BOOL", &zu___module, nullptr, boxedBoolCompare, boxedBoolToString );
ZU___STDFUNCS( ZU_BOXED_BOOL, zuBoxedBool )

static ZU_BOXED_BOOL *globalTrue = nullptr;
static ZU_BOXED_BOOL *globalFalse = nullptr;

// Start-up
static ZU_BOXED_BOOL *boxedBoolCreate( ZU_BOOL value )
{
    ZU_BOXED_BOOL *bbl = (ZU_BOXED_BOOL *)zu___ObjCreate( sizeof( ZU_BOXED_BOOL ), &zu___sort_ZU_BOXED_BOOL );
    bbl->value = value;
    return bbl;
}
void zu___BoxedBoolStartup( void )
{
    globalTrue = boxedBoolCreate( ZU_TRUE );
    globalFalse = boxedBoolCreate( ZU_FALSE );
}
void zu___BoxedBoolShutdown( void )
{
    ZU_ASSERT( globalTrue );
    ZU_ASSERT( globalFalse );
    ZU_REF_RELEASE( globalTrue );
    ZU_REF_RELEASE( globalFalse );
    ZU_REF_POISON( globalTrue );
    ZU_REF_POISON( globalFalse );
}

// Standard functions
static ZU_INT boxedBoolCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    return zuBoxedBoolValue( zuBoxedBoolFrom( thisObj ) ) - zuBoxedBoolValue( zuBoxedBoolFrom( thatObj ) );
}
static ZU_STRING *boxedBoolToString( ZU_OBJ *thisObj )
{
    return zuFormatEncodeBool( zuBoxedBoolValue( zuBoxedBoolFrom( thisObj ) ), 0, 0 );
}

ZU_BOXED_BOOL *zuBoxedBoolCreate( ZU_BOOL value )
{
    return zuBoxedBoolRetain( value ? globalTrue : globalFalse );
}
ZU_BOOL zuBoxedBoolValue( ZU_BOXED_BOOL *bbl )
{
    ZU_ASSERT( bbl );
    return bbl->value;
}
