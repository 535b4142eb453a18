// The product's identity stands in the record of the library's own module; what the application has told of itself is
// copied here.  That happens ahead of everything else, memory functions included, and so the copies come from malloc.

#include "zu/runtime/zu_runtime_version.h"

#include "zu/base/zu_string_format.h"
#include "zu/runtime/zu_module.h"

#include <cstdlib>
#include <cstring>

static char *applicationIdentifierCopy = nullptr; // each null if not given
static char *applicationFriendlyNameCopy = nullptr;
static char *applicationVersionCopy = nullptr;

static char *versionCopyText( const char *text )
{
    if ( !text ) {
        return nullptr;
    }
    size_t size = strlen( text ) + 1;
    char *copy = (char *)malloc( size );
    ZU_ASSERT( copy );
    memcpy( copy, text, size );
    return copy;
}
static void versionFreeText( char **text )
{
    free( *text );
    *text = nullptr;
}
void zu___RuntimeVersionStartup( const char *applicationIdentifier, const char *applicationFriendlyName,
                                 const char *applicationVersion )
{
    applicationIdentifierCopy = versionCopyText( applicationIdentifier );
    applicationFriendlyNameCopy = versionCopyText( applicationFriendlyName );
    applicationVersionCopy = versionCopyText( applicationVersion );
}
void zu___RuntimeVersionShutdown( void )
{
    versionFreeText( &applicationVersionCopy );
    versionFreeText( &applicationFriendlyNameCopy );
    versionFreeText( &applicationIdentifierCopy );
}

// Product
ZU_STRING *zuRuntimeVersionProductName( void )
{
    return zuStringCreateFromCstr( zu___RuntimeVersionProductNameCstr(), -1 );
}
ZU_STRING *zuRuntimeVersionProductFriendlyName( void )
{
    return zuStringCreateFromCstr( zu___RuntimeVersionProductFriendlyNameCstr(), -1 );
}
ZU_STRING *zuRuntimeVersionProductVendorName( void )
{
    return zuStringCreateFromCstr( zu___RuntimeVersionProductVendorNameCstr(), -1 );
}
ZU_STRING *zuRuntimeVersionProductCopyright( void )
{
    return zuStringCreateFromCstr( zu___RuntimeVersionProductCopyrightCstr(), -1 );
}
ZU_STRING *zuRuntimeVersionProductVersion( void )
{
    return zuStringCreateFromFormatCstr( "%i.%i.%i", -1, zuRuntimeVersionProductVersionMajor(),
                                         zuRuntimeVersionProductVersionMinor(),
                                         zuRuntimeVersionProductVersionRelease() );
}
ZU_INT zuRuntimeVersionProductVersionMajor( void )
{
    return zu___module_record.productVersionMajor;
}
ZU_INT zuRuntimeVersionProductVersionMinor( void )
{
    return zu___module_record.productVersionMinor;
}
ZU_INT zuRuntimeVersionProductVersionRelease( void )
{
    return zu___module_record.productVersionRelease;
}
ZU_TIME *zuRuntimeVersionProductBuildTime( void )
{
    ZU_STRING *text = zuStringCreateFromCstr( zu___RuntimeVersionProductBuildTimeCstr(), -1 );
    ZU_TIME *tm = zuTimeTryCreateFromString( text );
    zuStringRelease( text );
    ZU_ASSERT( tm );
    return tm;
}
const char *zu___RuntimeVersionProductNameCstr( void )
{
    return zu___module_record.productName;
}
const char *zu___RuntimeVersionProductFriendlyNameCstr( void )
{
    return zu___module_record.productFriendlyName;
}
const char *zu___RuntimeVersionProductBuildTimeCstr( void )
{
    return zu___module_record.productBuildTime;
}
const char *zu___RuntimeVersionProductVendorNameCstr( void )
{
    return zu___module_record.productVendorName;
}
const char *zu___RuntimeVersionProductCopyrightCstr( void )
{
    return zu___module_record.productCopyright;
}

// Application
static ZU_STRING *versionOptionalText( const char *text )
{
    return text ? zuStringCreateFromCstr( text, -1 ) : nullptr;
}
ZU_BOOL zuRuntimeVersionApplicationHasIdentifier( void )
{
    return applicationIdentifierCopy != nullptr;
}
ZU_BOOL zuRuntimeVersionApplicationHasFriendlyName( void )
{
    return applicationFriendlyNameCopy != nullptr;
}
ZU_BOOL zuRuntimeVersionApplicationHasVersion( void )
{
    return applicationVersionCopy != nullptr;
}
ZU_STRING *zuRuntimeVersionApplicationIdentifier( void )
{
    return versionOptionalText( applicationIdentifierCopy );
}
ZU_STRING *zuRuntimeVersionApplicationFriendlyName( void )
{
    return versionOptionalText( applicationFriendlyNameCopy );
}
ZU_STRING *zuRuntimeVersionApplicationVersion( void )
{
    return versionOptionalText( applicationVersionCopy );
}
const char *zu___RuntimeVersionApplicationIdentifierCstr( void )
{
    return applicationIdentifierCopy;
}
const char *zu___RuntimeVersionApplicationFriendlyNameCstr( void )
{
    return applicationFriendlyNameCopy;
}
const char *zu___RuntimeVersionApplicationVersionCstr( void )
{
    return applicationVersionCopy;
}
