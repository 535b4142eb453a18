#include "zu/base/zu_boxed_pointer.h"

#include "zu/runtime/zu_module.h"

struct ZU___BOXED_POINTER {
    ZU_OBJ obj;
    void *value;
    ZU___BOXED_POINTER_DESTROY_FUNC destroyFunc; // may be null
};

static void boxedPointerFree( ZU_OBJ *thisObj );
static ZU_INT boxedPointerCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj );

static ZU_SORT zu___sort_ZU___BOXED_POINTER =
    ZU___SORT_INITIALIZER( "ZU___BOXED_POINTER", &zu___module, boxedPointerFree, boxedPointerCompare, nullptr );
ZU___STDFUNCS( ZU___BOXED_POINTER, zu___BoxedPointer )

// Standard functions
static void boxedPointerFree( ZU_OBJ *thisObj )
{
    ZU___BOXED_POINTER *bptr = zu___BoxedPointerFrom( thisObj );
    ZU_ASSERT( bptr );
    if ( bptr->destroyFunc ) {
        bptr->destroyFunc( bptr->value );
    }
}
static ZU_INT boxedPointerCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    uintptr_t thisValue = (uintptr_t)zu___BoxedPointerValue( zu___BoxedPointerFrom( thisObj ) );
    uintptr_t thatValue = (uintptr_t)zu___BoxedPointerValue( zu___BoxedPointerFrom( thatObj ) );
    return ( thisValue > thatValue ) - ( thisValue < thatValue );
}

ZU___BOXED_POINTER *zu___BoxedPointerCreate( void *value, ZU___BOXED_POINTER_DESTROY_FUNC destroyFunc )
{
    ZU___BOXED_POINTER *bptr =
        (ZU___BOXED_POINTER *)zu___ObjCreate( sizeof( ZU___BOXED_POINTER ), &zu___sort_ZU___BOXED_POINTER );
    bptr->value = value;
    bptr->destroyFunc = destroyFunc;
    return bptr;
}
void *zu___BoxedPointerValue( ZU___BOXED_POINTER *bptr )
{
    ZU_ASSERT( bptr );
    return bptr->value;
}
