// The texts are a table of keys and validators, which reading, writing and checking go through.  An object is made ahead
// of its checks and given back whole if one refuses, so that nothing is half accepted.

#include "zu/runtime/zu_runtime_install_info.h"

#include "zu/base/zu_store_text.h"
#include "zu/base/zu_string_format.h"
#include "zu/charset/zu_charset.h"
#include "zu/charset/zu_charset_flags.h"
#include "zu/io/zu_file.h"
#include "zu/io/zu_line_source.h"
#include "zu/io/zu_nlf_flags.h"
#include "zu/runtime/zu_module.h"
#include "zu/runtime/zu_runtime_hardware.h"
#include "zu/runtime/zu_runtime_os.h"
#include "zu/runtime/zu_runtime_paths_internal.h"
#include "zu/runtime/zu_runtime_validate.h"
#include "zu/runtime/zu_runtime_variant.h"
#include "zu/runtime/zu_runtime_version.h"

// The texts, in the order of the file
enum INSTALL_INFO_TEXT { PRODUCT_NAME, PRODUCT_FRIENDLY_NAME, PRODUCT_VERSION, PRODUCT_VENDOR_NAME, PRODUCT_COPYRIGHT };

struct INSTALL_INFO_FIELD {
    const char *key;
    ZU_BOOL ( *validate )( ZU_STRING *text );
};
static constexpr INSTALL_INFO_FIELD TEXTS[] = {
    { "productName", zuRuntimeValidateProductName },
    { "productFriendlyName", zuRuntimeValidateProductFriendlyName },
    { "productVersion", zuRuntimeValidateProductVersion },
    { "productVendorName", zuRuntimeValidateProductVendorName },
    { "productCopyright", zuRuntimeValidateProductCopyright },
};
static constexpr ZU_INT TEXT_COUNT = sizeof TEXTS / sizeof TEXTS[ 0 ];

struct ZU_RUNTIME_INSTALL_INFO {
    ZU_OBJ obj;
    ZU_INT os;
    ZU_INT hardware;
    ZU_INT variant;
    ZU_STRING *texts[ TEXT_COUNT ]; // none null in an object that is handed out
};

static void installInfoFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_RUNTIME_INSTALL_INFO =
    ZU___SORT_INITIALIZER( "ZU_RUNTIME_INSTALL_INFO", &zu___module, installInfoFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_RUNTIME_INSTALL_INFO, zuRuntimeInstallInfo )

// Creation
static ZU_RUNTIME_INSTALL_INFO *installInfoCreateWithoutTexts( ZU_INT os, ZU_INT hardware, ZU_INT variant )
{
    ZU_RUNTIME_INSTALL_INFO *info =
        (ZU_RUNTIME_INSTALL_INFO *)zu___ObjCreate( sizeof( ZU_RUNTIME_INSTALL_INFO ), zuRuntimeInstallInfoSort() );
    info->os = os;
    info->hardware = hardware;
    info->variant = variant;
    for ( ZU_STRING *&text : info->texts ) {
        text = nullptr;
    }
    return info;
}
ZU_RUNTIME_INSTALL_INFO *zu___RuntimeInstallInfoCreate( ZU_INT os, ZU_INT hardware, ZU_INT variant,
                                                        ZU_STRING *productName, ZU_STRING *productFriendlyName,
                                                        ZU_STRING *productVersion, ZU_STRING *productVendorName,
                                                        ZU_STRING *productCopyright )
{
    ZU_ASSERT( ZU_RUNTIME_OS_OK( os ) );
    ZU_ASSERT( ZU_RUNTIME_HARDWARE_OK( hardware ) );
    ZU_ASSERT( ZU_RUNTIME_VARIANT_OK( variant ) );
    ZU_ASSERT( zuRuntimeValidateProductName( productName ) );
    ZU_ASSERT( zuRuntimeValidateProductFriendlyName( productFriendlyName ) );
    ZU_ASSERT( zuRuntimeValidateProductVersion( productVersion ) );
    ZU_ASSERT( zuRuntimeValidateProductVendorName( productVendorName ) );
    ZU_ASSERT( zuRuntimeValidateProductCopyright( productCopyright ) );
    ZU_RUNTIME_INSTALL_INFO *info = installInfoCreateWithoutTexts( os, hardware, variant );
    info->texts[ PRODUCT_NAME ] = zuStringRetain( productName );
    info->texts[ PRODUCT_FRIENDLY_NAME ] = zuStringRetain( productFriendlyName );
    info->texts[ PRODUCT_VERSION ] = zuStringRetain( productVersion );
    info->texts[ PRODUCT_VENDOR_NAME ] = zuStringRetain( productVendorName );
    info->texts[ PRODUCT_COPYRIGHT ] = zuStringRetain( productCopyright );
    return info;
}
static void installInfoFree( ZU_OBJ *thisObj )
{
    ZU_RUNTIME_INSTALL_INFO *info = zuRuntimeInstallInfoFrom( thisObj );
    ZU_ASSERT( info );
    for ( ZU_STRING *&text : info->texts ) {
        ZU_REF_RELEASE_OPT( text );
        ZU_REF_POISON( text );
    }
}

// Stores
static ZU_INT installInfoReadIdentifier( ZU_STORE *store, const char *key, ZU_INT ( *fromIdentifier )( ZU_STRING * ) )
{
    ZU_STRING *identifier = zuStoreValueCstr( store, key, -1 );
    ZU_INT value = identifier ? fromIdentifier( identifier ) : -1;
    ZU_REF_RELEASE_OPT( identifier );
    return value;
}
ZU_RUNTIME_INSTALL_INFO *zuRuntimeInstallInfoTryRestore( ZU_STORE *store )
{
    ZU_ASSERT( store );
    ZU_RUNTIME_INSTALL_INFO *info =
        installInfoCreateWithoutTexts( installInfoReadIdentifier( store, "os", zuRuntimeOsFromIdentifier ),
                                       installInfoReadIdentifier( store, "hardware", zuRuntimeHardwareFromIdentifier ),
                                       installInfoReadIdentifier( store, "variant", zuRuntimeVariantFromIdentifier ) );
    bool ok = ZU_RUNTIME_OS_OK( info->os ) && ZU_RUNTIME_HARDWARE_OK( info->hardware ) &&
              ZU_RUNTIME_VARIANT_OK( info->variant );
    for ( ZU_INT i = 0; ok && i < TEXT_COUNT; i++ ) {
        info->texts[ i ] = zuStoreValueCstr( store, TEXTS[ i ].key, -1 );
        ok = info->texts[ i ] && TEXTS[ i ].validate( info->texts[ i ] );
    }
    if ( !ok ) {
        zuRuntimeInstallInfoRelease( info );
        return nullptr;
    }
    return info;
}
// Takes the identifier over.
static void installInfoWriteIdentifier( ZU_STORE **store, const char *key, ZU_STRING *identifier )
{
    zuStoreSetValueCstr( store, key, -1, identifier );
    zuStringRelease( identifier );
}
ZU_STORE *zuRuntimeInstallInfoStore( ZU_RUNTIME_INSTALL_INFO *info )
{
    ZU_ASSERT( info );
    ZU_STORE *store = zuStoreCreate();
    installInfoWriteIdentifier( &store, "os", zuRuntimeOsToIdentifier( info->os ) );
    installInfoWriteIdentifier( &store, "hardware", zuRuntimeHardwareToIdentifier( info->hardware ) );
    installInfoWriteIdentifier( &store, "variant", zuRuntimeVariantToIdentifier( info->variant ) );
    for ( ZU_INT i = 0; i < TEXT_COUNT; i++ ) {
        zuStoreSetValueCstr( &store, TEXTS[ i ].key, -1, info->texts[ i ] );
    }
    return store;
}

// Loading
ZU_STORE *zu___RuntimeTryLoadStore( ZU_STRING *fn )
{
    ZU_LINE_SOURCE *ls = zuFileOpenLineSource( fn, ZU_CHARSET_UTF_8, ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER,
                                               ZU_NLF_FLAG_LF | ZU_NLF_FLAG_CR | ZU_NLF_FLAG_CRLF );
    if ( !ls ) {
        return nullptr;
    }
    ZU_VECTOR *lines = zuLineSourceReadLines( ls, -1 );
    ZU_STORE *store = zuLineSourceError( ls ) ? nullptr : zuStoreTextDecodeFromStringVector( lines );
    zuVectorRelease( lines );
    zuLineSourceRelease( ls );
    return store;
}
ZU_RUNTIME_INSTALL_INFO *zuRuntimeInstallInfoTryLoadFromFile( ZU_STRING *fn )
{
    ZU_ASSERT( fn );
    ZU_STORE *store = zu___RuntimeTryLoadStore( fn );
    ZU_RUNTIME_INSTALL_INFO *info = store ? zuRuntimeInstallInfoTryRestore( store ) : nullptr;
    ZU_REF_RELEASE_OPT( store );
    return info;
}
ZU_RUNTIME_INSTALL_INFO *zuRuntimeInstallInfoTryLoadForProduct( ZU_STRING *productName )
{
    ZU_RUNTIME_PATHS *paths = zu___RuntimePathsForProduct( 0, productName );
    ZU_STRING *install = zuRuntimePathsPath( paths, ZU_RUNTIME_PATH_INSTALL );
    zuRuntimePathsRelease( paths );
    if ( !install ) {
        return nullptr;
    }
    ZU_STRING *fn = zuStringCreateFromFormatCstr( "%~s/install-info", -1, install ); // one solidus more than it takes
    ZU_RUNTIME_INSTALL_INFO *info = zuRuntimeInstallInfoTryLoadFromFile( fn );
    zuStringRelease( fn );
    return info;
}
ZU_RUNTIME_INSTALL_INFO *zuRuntimeInstallInfoTryLoad( void )
{
    ZU_STRING *productName = zuRuntimeVersionProductName();
    ZU_RUNTIME_INSTALL_INFO *info = zuRuntimeInstallInfoTryLoadForProduct( productName );
    zuStringRelease( productName );
    return info;
}

// Values
ZU_INT zuRuntimeInstallInfoOs( ZU_RUNTIME_INSTALL_INFO *info )
{
    ZU_ASSERT( info );
    return info->os;
}
ZU_INT zuRuntimeInstallInfoHardware( ZU_RUNTIME_INSTALL_INFO *info )
{
    ZU_ASSERT( info );
    return info->hardware;
}
ZU_INT zuRuntimeInstallInfoVariant( ZU_RUNTIME_INSTALL_INFO *info )
{
    ZU_ASSERT( info );
    return info->variant;
}
ZU_STRING *zuRuntimeInstallInfoProductName( ZU_RUNTIME_INSTALL_INFO *info )
{
    ZU_ASSERT( info );
    return zuStringRetain( info->texts[ PRODUCT_NAME ] );
}
ZU_STRING *zuRuntimeInstallInfoProductFriendlyName( ZU_RUNTIME_INSTALL_INFO *info )
{
    ZU_ASSERT( info );
    return zuStringRetain( info->texts[ PRODUCT_FRIENDLY_NAME ] );
}
ZU_STRING *zuRuntimeInstallInfoProductVersion( ZU_RUNTIME_INSTALL_INFO *info )
{
    ZU_ASSERT( info );
    return zuStringRetain( info->texts[ PRODUCT_VERSION ] );
}
ZU_STRING *zuRuntimeInstallInfoProductVendorName( ZU_RUNTIME_INSTALL_INFO *info )
{
    ZU_ASSERT( info );
    return zuStringRetain( info->texts[ PRODUCT_VENDOR_NAME ] );
}
ZU_STRING *zuRuntimeInstallInfoProductCopyright( ZU_RUNTIME_INSTALL_INFO *info )
{
    ZU_ASSERT( info );
    return zuStringRetain( info->texts[ PRODUCT_COPYRIGHT ] );
}
