#include "zu/runtime/zu_module.h"

#include "zu/base/zu_string.h"
#include "zu/runtime/zu_identity.h"

#include <cstring>

static void moduleFree( ZU_OBJ *thisObj );
static ZU_INT moduleCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj );
static ZU_STRING *moduleToString( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_MODULE =
    ZU___SORT_INITIALIZER( "ZU_MODULE", &zu___module, moduleFree, moduleCompare, moduleToString );
ZU___STDFUNCS( ZU_MODULE, zuModule )

// The library's own module, built for the product that the build was told
#define MODULE_NAME    "zu"
#define MODULE_VERSION "0.0"

ZU___MODULE_RECORD zu___module_record = {
    ZU___MODULE_RECORD_VERSION,
    ZU___IDENTITY_PRODUCT_NAME,
    ZU___IDENTITY_PRODUCT_FRIENDLY_NAME,
    ZU___IDENTITY_PRODUCT_VERSION_MAJOR,
    ZU___IDENTITY_PRODUCT_VERSION_MINOR,
    ZU___IDENTITY_PRODUCT_VERSION_RELEASE,
    ZU___IDENTITY_PRODUCT_BUILD_TIME,
    ZU___IDENTITY_PRODUCT_VENDOR,
    ZU___IDENTITY_PRODUCT_COPYRIGHT,
    MODULE_NAME,
    "Portable base library",
    MODULE_VERSION,
    "",
    "",
};
ZU_MODULE zu___module = {
    ZU___OBJ_STATIC_INITIALIZER( ZU___OBJ_TYPE_MODULE ),
    &zu___module_record,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    0,
    nullptr,
    nullptr,
};
const char *const zu___module_version_string =
    "###RQ_VERSION### " ZU___IDENTITY_PRODUCT_NAME "-" ZU___IDENTITY_PRODUCT_VERSION_TEXT
    " (" ZU___IDENTITY_OS_FRIENDLY_NAME ", " ZU___IDENTITY_HARDWARE_FRIENDLY_NAME
    ", " ZU___IDENTITY_VARIANT_FRIENDLY_NAME "), " MODULE_NAME " " MODULE_VERSION;

ZU_MODULE *zuModule( void )
{
    return &zu___module;
}

// Modules are static and never die.
static void moduleFree( ZU_OBJ *thisObj )
{
    ZU_ASSERT( &zu___sort_ZU_MODULE == zuObjSort( thisObj ) );
    zu___Abort( "module free", __FILE__, __LINE__, nullptr );
}
// A name identifies a module, so two of one name are a fault.
static ZU_INT moduleCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    ZU_MODULE *moduleA = zuModuleFrom( thisObj );
    ZU_MODULE *moduleB = zuModuleFrom( thatObj );
    ZU_ASSERT( moduleA );
    ZU_ASSERT( moduleB );
    int order = strcmp( moduleA->moduleRecord->name, moduleB->moduleRecord->name );
    if ( order == 0 ) {
        ZU_ABORT();
    }
    return order < 0 ? -1 : 1;
}
static ZU_STRING *moduleToString( ZU_OBJ *thisObj )
{
    return zuStringCreateFromCstr( zuModuleFrom( thisObj )->moduleRecord->name, -1 );
}
