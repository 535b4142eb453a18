// A module tells of itself by plain data, its record, and not by a function: so it can be judged before any function of
// it is called.  What does not fit is named by the text of the condition that fails, which the checks return: false
// alone would leave its author to guess among two dozen.

#include "zu/runtime/zu_module.h"

#include "zu/base/zu_string.h"
#include "zu/runtime/zu_identity.h"
#include "zu/runtime/zu_module_internal.h"
#include "zu/runtime/zu_obj_internal.h"
#include "zu/runtime/zu_runtime_version.h"

#include <cstring>

static constexpr ZU_INT NAME_MAX_LENGTH = 32; // characters

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
    zu___module_build_time,
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

const ZU_INT zu___module_build_os = ZU___IDENTITY_OS;
const ZU_INT zu___module_build_hardware = ZU___IDENTITY_HARDWARE;
const ZU_INT zu___module_build_variant = ZU___IDENTITY_VARIANT;

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
    return zuModuleName( zuModuleFrom( thisObj ) );
}

ZU_STRING *zuModuleName( ZU_MODULE *module )
{
    ZU_ASSERT( module );
    ZU_ASSERT( module->moduleRecord );
    return zuStringCreateFromCstr( module->moduleRecord->name, -1 );
}
ZU_STRING *zuModuleDescription( ZU_MODULE *module )
{
    ZU_ASSERT( module );
    ZU_ASSERT( module->moduleRecord );
    return zuStringCreateFromCstr( module->moduleRecord->description, -1 );
}
ZU_MODULE_VERSION *zuModuleVersion( ZU_MODULE *module )
{
    ZU_ASSERT( module );
    ZU_ASSERT( module->moduleRecord );
    ZU_MODULE_VERSION *ver = zuModuleVersionTryCreateFromCstr( module->moduleRecord->version, -1 );
    ZU_ASSERT( ver );
    return ver;
}

ZU_BOOL zuModuleNameOk( ZU_STRING *moduleName )
{
    ZU_ASSERT( moduleName );
    const ZU_CHAR *chs = zuStringBacking( moduleName );
    ZU_INT length = zuStringLength( moduleName );
    if ( length < 1 || length > NAME_MAX_LENGTH ) {
        return ZU_FALSE;
    }
    bool underscore = false;
    for ( ZU_INT i = 0; i < length; i++ ) {
        ZU_CHAR ch = chs[ i ];
        if ( ch == ZU_CHAR_LOW_LINE && !underscore && i > 0 && i < length - 1 ) {
            underscore = true;
        } else if ( !( ch >= 'a' && ch <= 'z' ) && !( ch >= '0' && ch <= '9' && i > 0 ) ) {
            return ZU_FALSE;
        }
    }
    return ZU_TRUE;
}

ZU_BOOL zuModuleHasPersonality( ZU_MODULE *module )
{
    ZU_ASSERT( module );
    return module->personalityFunc != nullptr;
}
void *zuModuleRunPersonality( ZU_MODULE *module, void *argument1, void *argument2 )
{
    ZU_ASSERT( module );
    return module->personalityFunc( argument1, argument2 );
}

// Snapshots
void zu___ModuleSnapshotAppendSortsLocked( ZU___OBJ_SNAPSHOT *snapshot, ZU_MODULE *module )
{
    for ( ZU_SORT *sort = module->sortsFirst; sort; sort = sort->sortsNext ) {
        zu___ObjSnapshotAppendLocked( snapshot, zuSortObj( sort ) );
    }
}
void zu___ModuleSnapshotAppendObjectsLocked( ZU___OBJ_SNAPSHOT *snapshot, ZU_MODULE *module )
{
    for ( ZU_SORT *sort = module->sortsFirst; sort; sort = sort->sortsNext ) {
        zu___ObjSnapshotAppendSortLocked( snapshot, sort );
    }
}
static ZU_VECTOR *moduleSnapshot( ZU_MODULE *module, void ( *appendLocked )( ZU___OBJ_SNAPSHOT *, ZU_MODULE * ) )
{
    if ( !zu___ObjOdbEnabled() ) {
        return nullptr;
    }
    ZU___OBJ_SNAPSHOT snapshot = {};
    zu___ObjOdbLock();
    appendLocked( &snapshot, module );
    zu___ObjOdbUnlock();
    return zu___ObjSnapshotVector( &snapshot );
}
ZU_VECTOR *zuModuleSnapshotSorts( ZU_MODULE *module )
{
    ZU_ASSERT( module );
    return moduleSnapshot( module, zu___ModuleSnapshotAppendSortsLocked );
}
ZU_VECTOR *zuModuleSnapshotObjects( ZU_MODULE *module )
{
    ZU_ASSERT( module );
    return moduleSnapshot( module, zu___ModuleSnapshotAppendObjectsLocked );
}

// Lists of names in a record
ZU_STRING *zu___ModuleNextName( const char **rest )
{
    const char *begin = *rest;
    if ( !begin ) {
        return nullptr;
    }
    const char *blank = strchr( begin, ' ' );
    *rest = blank ? blank + 1 : nullptr;
    return zuStringCreateFromCstr( begin, blank ? blank - begin : -1 );
}

// Compatibility: one function for each group of fields, all of them asked in the order of the record.  Each returns the
// condition that fails, null if none does.

static const char *moduleMisfitOfHeader( ZU_MODULE *module )
{
    if ( module->obj.type != ZU___OBJ_TYPE_MODULE || module->obj.sort ) {
        return "module: no module object";
    }
    if ( !module->moduleRecord ) {
        return "moduleRecord: missing";
    }
    return module->moduleRecord->recordVersion == ZU___MODULE_RECORD_VERSION ? nullptr : "recordVersion: not 2";
}
// Whether a text is absent, or that of the process.
static bool moduleCheckProductText( const char *text, const char *processText )
{
    return !text || strcmp( text, processText ) == 0;
}
static bool moduleCheckProductNumber( ZU_INT number, ZU_INT processNumber )
{
    return number == ZU___MODULE_ANY_NUMBER || number == processNumber;
}
// The name, and the version, which may be left open from the right only.
static const char *moduleMisfitOfProductVersion( const ZU___MODULE_RECORD *record )
{
    bool anyMajor = record->productVersionMajor == ZU___MODULE_ANY_NUMBER;
    bool anyMinor = record->productVersionMinor == ZU___MODULE_ANY_NUMBER;
    bool anyRelease = record->productVersionRelease == ZU___MODULE_ANY_NUMBER;
    if ( !moduleCheckProductText( record->productName, zu___RuntimeVersionProductNameCstr() ) ) {
        return "productName: not the process's";
    }
    if ( !record->productName && !( anyMajor && anyMinor && anyRelease ) ) {
        return "productVersionMajor, Minor, Release: given without productName";
    }
    if ( anyMajor && !( anyMinor && anyRelease ) ) {
        return "productVersionMinor, Release: given without productVersionMajor";
    }
    if ( anyMinor && !anyRelease ) {
        return "productVersionRelease: given without productVersionMinor";
    }
    if ( !moduleCheckProductNumber( record->productVersionMajor, zuRuntimeVersionProductVersionMajor() ) ) {
        return "productVersionMajor: not the process's";
    }
    if ( !moduleCheckProductNumber( record->productVersionMinor, zuRuntimeVersionProductVersionMinor() ) ) {
        return "productVersionMinor: not the process's";
    }
    if ( !moduleCheckProductNumber( record->productVersionRelease, zuRuntimeVersionProductVersionRelease() ) ) {
        return "productVersionRelease: not the process's";
    }
    return nullptr;
}
static const char *moduleMisfitOfProductTexts( const ZU___MODULE_RECORD *record )
{
    if ( !record->productName ) {
        return record->productFriendlyName || record->productBuildTime || record->productVendorName ||
                       record->productCopyright
                   ? "productFriendlyName, BuildTime, VendorName, Copyright: given without productName"
                   : nullptr;
    }
    if ( !moduleCheckProductText( record->productFriendlyName, zu___RuntimeVersionProductFriendlyNameCstr() ) ) {
        return "productFriendlyName: not the process's";
    }
    if ( !moduleCheckProductText( record->productBuildTime, zu___RuntimeVersionProductBuildTimeCstr() ) ) {
        return "productBuildTime: not the process's";
    }
    if ( !moduleCheckProductText( record->productVendorName, zu___RuntimeVersionProductVendorNameCstr() ) ) {
        return "productVendorName: not the process's";
    }
    if ( !moduleCheckProductText( record->productCopyright, zu___RuntimeVersionProductCopyrightCstr() ) ) {
        return "productCopyright: not the process's";
    }
    return nullptr;
}
static bool moduleCheckVersion( const char *version )
{
    ZU_MODULE_VERSION *ver = version ? zuModuleVersionTryCreateFromCstr( version, -1 ) : nullptr;
    ZU_REF_RELEASE_OPT( ver );
    return ver != nullptr;
}
static bool moduleCheckName( const char *name )
{
    ZU_STRING *moduleName = name ? zuStringCreateFromCstr( name, -1 ) : nullptr;
    bool ok = moduleName && zuModuleNameOk( moduleName );
    ZU_REF_RELEASE_OPT( moduleName );
    return ok;
}
static bool moduleCheckNames( const char *names )
{
    const char *rest = zu___ModuleNames( names );
    bool ok = names != nullptr;
    while ( ZU_STRING *name = zu___ModuleNextName( &rest ) ) {
        ok = ok && zuModuleNameOk( name );
        zuStringRelease( name );
    }
    return ok;
}
static const char *moduleMisfitOfModule( const ZU___MODULE_RECORD *record )
{
    if ( !moduleCheckName( record->name ) ) {
        return "name: no module name";
    }
    if ( !record->description ) {
        return "description: missing";
    }
    if ( !moduleCheckVersion( record->version ) ) {
        return "version: no module version";
    }
    if ( !moduleCheckNames( record->deps ) ) {
        return "deps: no list of module names";
    }
    if ( !moduleCheckNames( record->exts ) ) {
        return "exts: no list of module names";
    }
    return nullptr;
}
const char *zu___ModuleMisfit( ZU_MODULE *module )
{
    const char *misfit = moduleMisfitOfHeader( module );
    misfit = misfit ? misfit : moduleMisfitOfProductVersion( module->moduleRecord );
    misfit = misfit ? misfit : moduleMisfitOfProductTexts( module->moduleRecord );
    return misfit ? misfit : moduleMisfitOfModule( module->moduleRecord );
}
ZU_BOOL zu___ModuleCheckCompatibility( ZU_MODULE *module )
{
    ZU_ASSERT( module );
    return !zu___ModuleMisfit( module );
}
