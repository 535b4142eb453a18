// Defaults build on other paths, which may be forced: so the kinds are settled one after the other, in the order of
// their constants, and each row of the table names the kind ahead that it builds on.

#include "zu/runtime/zu_runtime_paths.h"

#include "zu/base/zu_range_map.h"
#include "zu/base/zu_string_case.h"
#include "zu/base/zu_string_format.h"
#include "zu/base/zu_string_search.h"
#include "zu/base/zu_string_split.h"
#include "zu/io/zu_env.h"
#include "zu/io/zu_file.h"
#include "zu/runtime/zu_module.h"
#include "zu/runtime/zu_runtime_install_info.h"
#include "zu/runtime/zu_runtime_internal.h"
#include "zu/runtime/zu_runtime_paths_internal.h"
#include "zu/runtime/zu_runtime_validate.h"
#include "zu/runtime/zu_runtime_version.h"

struct ZU_RUNTIME_PATHS {
    ZU_OBJ obj;
    ZU_RANGE_MAP *map; // from kinds to strings
};

static void pathsFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_RUNTIME_PATHS =
    ZU___SORT_INITIALIZER( "ZU_RUNTIME_PATHS", &zu___module, pathsFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_RUNTIME_PATHS, zuRuntimePaths )

// Start-up
static ZU_RUNTIME_PATHS *ownPaths = nullptr;

void zu___RuntimePlatformStartup( void )
{
    ZU_STRING *productName = zuRuntimeVersionProductName();
    ownPaths = zu___RuntimePlatformPathsForProduct( zu___RuntimeFlags, productName );
    zuStringRelease( productName );
}
void zu___RuntimePlatformShutdown( void )
{
    ZU_REF_RELEASE( ownPaths );
    ZU_REF_POISON( ownPaths );
}
ZU_RUNTIME_PATHS *zuRuntimePaths( void )
{
    return zuRuntimePathsRetain( ownPaths );
}

// Creation
static ZU_RUNTIME_PATHS *pathsCreateOwning( ZU_RANGE_MAP *map )
{
    ZU_RUNTIME_PATHS *paths = (ZU_RUNTIME_PATHS *)zu___ObjCreate( sizeof( ZU_RUNTIME_PATHS ), zuRuntimePathsSort() );
    paths->map = map;
    return paths;
}
ZU_RUNTIME_PATHS *zuRuntimePathsCreate( void )
{
    return pathsCreateOwning( zuRangeMapCreate() );
}
ZU_RUNTIME_PATHS *zuRuntimePathsCreateFrom( ZU_RUNTIME_PATHS *source )
{
    ZU_ASSERT( source );
    return pathsCreateOwning( zuRangeMapRetain( source->map ) );
}
static void pathsFree( ZU_OBJ *thisObj )
{
    ZU_RUNTIME_PATHS *paths = zuRuntimePathsFrom( thisObj );
    ZU_ASSERT( paths );
    ZU_REF_RELEASE( paths->map );
    ZU_REF_POISON( paths->map );
}

// Directories
static void pathsUnshare( ZU_RUNTIME_PATHS **paths )
{
    if ( ZU_REF_RETAIN_COUNT( *paths ) > 1 ) {
        ZU_RUNTIME_PATHS *old = *paths;
        *paths = zuRuntimePathsCreateFrom( old );
        ZU_REF_RELEASE( old );
    }
}
ZU_STRING *zuRuntimePathsPath( ZU_RUNTIME_PATHS *paths, ZU_INT path )
{
    ZU_ASSERT( paths );
    ZU_ASSERT( ZU_RUNTIME_PATH_OK( path ) );
    return zuStringFrom( zuRangeMapIntKey( paths->map, path ) );
}
ZU_BOOL zuRuntimePathsHasPath( ZU_RUNTIME_PATHS *paths, ZU_INT path )
{
    ZU_ASSERT( paths );
    ZU_ASSERT( ZU_RUNTIME_PATH_OK( path ) );
    return zuRangeMapHasIntKey( paths->map, path );
}
void zuRuntimePathsSetPath( ZU_RUNTIME_PATHS **paths, ZU_INT path, ZU_STRING *pn )
{
    ZU_ASSERT( paths );
    ZU_ASSERT( *paths );
    ZU_ASSERT( ZU_RUNTIME_PATH_OK( path ) );
    ZU_ASSERT( pn );
    ZU_ASSERT( zuStringEndsWithChar( pn, ZU_CHAR_SOLIDUS ) );
    pathsUnshare( paths );
    zuRangeMapSetIntKey( &( *paths )->map, path, zuStringObj( pn ) );
}
void zuRuntimePathsDelPath( ZU_RUNTIME_PATHS **paths, ZU_INT path )
{
    ZU_ASSERT( paths );
    ZU_ASSERT( *paths );
    ZU_ASSERT( ZU_RUNTIME_PATH_OK( path ) );
    pathsUnshare( paths );
    zuRangeMapDelIntKey( &( *paths )->map, path );
}

// Stores
ZU_STORE *zuRuntimePathsStore( ZU_RUNTIME_PATHS *paths )
{
    ZU_ASSERT( paths );
    ZU_STORE *store = zuStoreCreate();
    for ( ZU_INT path = ZU_RUNTIME_PATH_INSTALL; ZU_RUNTIME_PATH_OK( path ); path++ ) {
        ZU_STRING *pn = zuRuntimePathsPath( paths, path );
        if ( pn ) {
            ZU_STRING *name = zuRuntimePathToString( path );
            zuStoreSetValue( &store, name, pn );
            zuStringRelease( name );
            zuStringRelease( pn );
        }
    }
    return store;
}
ZU_RUNTIME_PATHS *zuRuntimePathsRestore( ZU_STORE *store )
{
    ZU_ASSERT( store );
    ZU_RUNTIME_PATHS *paths = zuRuntimePathsCreate();
    for ( ZU_INT i = 0; i < zuStoreLength( store ); i++ ) {
        ZU_STRING *name = zuStoreAddressAt( store, i );
        ZU_STRING *pn = zuStoreValueAt( store, i );
        ZU_INT path = zuRuntimePathFromString( name );
        if ( ZU_RUNTIME_PATH_OK( path ) && pn && zuStringEndsWithChar( pn, ZU_CHAR_SOLIDUS ) ) {
            zuRuntimePathsSetPath( &paths, path, pn );
        }
        ZU_REF_RELEASE_OPT( pn );
        zuStringRelease( name );
    }
    return paths;
}

// Finding out
struct PATHS_RULE {
    ZU_INT path;
    const char *variable;     // a format, of the product's name in capitals
    ZU_INT base;              // what the default builds on; ZU_RUNTIME_PATH_DATA builds on the application data
    const char *optionalPath; // within that; null: the same
    ZU_BOOL data;             // whether it is for data, and so is created
};
static constexpr PATHS_RULE RULES[] = {
    { ZU_RUNTIME_PATH_PRODUCT, "RQ_%s_PRODUCT_PATH", ZU_RUNTIME_PATH_INSTALL, nullptr, ZU_FALSE },
    { ZU_RUNTIME_PATH_PRODUCT_BIN, "RQ_%s_BIN_PATH", ZU_RUNTIME_PATH_PRODUCT, "bin/", ZU_FALSE },
    { ZU_RUNTIME_PATH_PRODUCT_RES, "RQ_%s_RES_PATH", ZU_RUNTIME_PATH_PRODUCT, "res/", ZU_FALSE },
    { ZU_RUNTIME_PATH_DATA, "RQ_%s_DATA_PATH", ZU_RUNTIME_PATH_INSTALL, nullptr, ZU_TRUE },
    { ZU_RUNTIME_PATH_DATA_STORAGE, "RQ_%s_STORAGE_PATH", ZU_RUNTIME_PATH_DATA, "storage/", ZU_TRUE },
    { ZU_RUNTIME_PATH_DATA_TRACE, "RQ_%s_TRACE_PATH", ZU_RUNTIME_PATH_DATA, "trace/", ZU_TRUE },
    { ZU_RUNTIME_PATH_DATA_ABORT, "RQ_%s_ABORT_PATH", ZU_RUNTIME_PATH_DATA, "abort/", ZU_TRUE },
    { ZU_RUNTIME_PATH_DATA_TEMP, "RQ_%s_TEMP_PATH", ZU_RUNTIME_PATH_DATA, "temp/", ZU_TRUE },
};

ZU_STRING *zu___RuntimePathsJoin( ZU_STRING *base, ZU_STRING *optionalPath, ZU_BOOL create )
{
    ZU_ASSERT( base );
    ZU_ASSERT( zuStringEndsWithChar( base, ZU_CHAR_SOLIDUS ) );
    ZU_ASSERT( !optionalPath || zuStringFindChar( optionalPath, 0, ZU_CHAR_REVERSE_SOLIDUS ) == -1 );
    ZU_ASSERT( !optionalPath || !zuStringBeginsWithChar( optionalPath, ZU_CHAR_SOLIDUS ) );
    ZU_ASSERT( !optionalPath || zuStringEndsWithChar( optionalPath, ZU_CHAR_SOLIDUS ) );
    ZU_STRING *joined = zuStringRetain( base );
    if ( !optionalPath ) {
        return joined;
    }
    ZU_VECTOR *pieces = zuStringSplitChar( optionalPath, ZU_CHAR_SOLIDUS, -1 );
    for ( ZU_INT i = 0; i < zuVectorLength( pieces ); i++ ) {
        ZU_STRING *piece = zuStringFrom( zuVectorBacking( pieces )[ i ] );
        if ( zuStringLength( piece ) == 0 ) {
            continue;
        }
        zuStringAppendFormatCstr( &joined, "%s/", -1, piece );
        if ( create ) {
            zuFileCreateDirectory( joined );
        }
    }
    zuVectorRelease( pieces );
    return joined;
}
// Takes `base` over; null, like each that follows, if that is.
static ZU_STRING *pathsJoinAndRelease( ZU_STRING *base, ZU_STRING *optionalPath, ZU_BOOL create )
{
    ZU_STRING *joined = base ? zu___RuntimePathsJoin( base, optionalPath, create ) : nullptr;
    ZU_REF_RELEASE_OPT( base );
    ZU_REF_RELEASE_OPT( optionalPath );
    return joined;
}
static ZU_STRING *pathsNormalizeAndRelease( ZU_STRING *pn )
{
    ZU_STRING *normalized = pn ? zu___RuntimePathsNormalize( pn ) : nullptr;
    ZU_REF_RELEASE_OPT( pn );
    return normalized;
}
static ZU_STRING *pathsForced( const char *variable, ZU_STRING *upperName )
{
    ZU_STRING *name = zuStringCreateFromFormatCstr( variable, -1, upperName );
    ZU_STRING *pn = pathsNormalizeAndRelease( zuGetEnv( name ) );
    zuStringRelease( name );
    return pn;
}
// The friendly name is known only to the installation, and without one there is no data path.
static ZU_STRING *pathsDefaultData( ZU_STRING *install, ZU_INT flags, ZU_BOOL create )
{
    ZU_STRING *fn = zuStringCreateFromFormatCstr( "%sinstall-info", -1, install );
    ZU_RUNTIME_INSTALL_INFO *info = zuRuntimeInstallInfoTryLoadFromFile( fn );
    zuStringRelease( fn );
    if ( !info ) {
        return nullptr;
    }
    ZU_STRING *relative =
        zuStringCreateFromFormatCstr( "VELMORA/%~s/", -1, zuRuntimeInstallInfoProductFriendlyName( info ) );
    zuRuntimeInstallInfoRelease( info );
    ZU_BOOL ofSystem = ( flags & ZU_RUNTIME_FLAG_SYSTEM ) != 0;
    return pathsJoinAndRelease( pathsNormalizeAndRelease( zu___RuntimePathsApplicationData( ofSystem, create ) ),
                                relative, create );
}
static ZU_STRING *pathsDefault( const PATHS_RULE *rule, ZU_RUNTIME_PATHS *paths, ZU_INT flags, ZU_BOOL own )
{
    ZU_STRING *base = zuRuntimePathsPath( paths, rule->base );
    ZU_BOOL create = own && rule->data;
    if ( base && rule->path == ZU_RUNTIME_PATH_DATA ) {
        ZU_STRING *pn = pathsDefaultData( base, flags, create );
        zuStringRelease( base );
        return pn;
    }
    ZU_STRING *optionalPath = rule->optionalPath ? zuStringCreateFromAscii( rule->optionalPath, -1 ) : nullptr;
    return pathsJoinAndRelease( base, optionalPath, create );
}
// Takes the directory over; null leaves the kind absent.
static void pathsTake( ZU_RUNTIME_PATHS **paths, ZU_INT path, ZU_STRING *pn )
{
    if ( pn ) {
        zuRuntimePathsSetPath( paths, path, pn );
        zuStringRelease( pn );
    }
}
ZU_RUNTIME_PATHS *zu___RuntimePlatformPathsForProduct( ZU_INT flags, ZU_STRING *productName )
{
    ZU_ASSERT( zuRuntimeValidateProductName( productName ) );
    ZU_RUNTIME_PATHS *paths = zuRuntimePathsCreate();
    if ( flags & ZU_RUNTIME_FLAG_MINIMAL ) {
        return paths;
    }
    ZU_STRING *ownName = zuRuntimeVersionProductName();
    ZU_BOOL own = zuStringEquals( productName, ownName );
    zuStringRelease( ownName );
    pathsTake( &paths, ZU_RUNTIME_PATH_INSTALL,
               pathsNormalizeAndRelease( zu___RuntimePathsInstallRecord( productName ) ) );
    ZU_STRING *upperName = zuStringRetain( productName );
    zuStringToUpper( &upperName );
    for ( const PATHS_RULE &rule : RULES ) {
        ZU_STRING *pn = pathsForced( rule.variable, upperName );
        pathsTake( &paths, rule.path, pn ? pn : pathsDefault( &rule, paths, flags, own ) );
    }
    zuStringRelease( upperName );
    return paths;
}
ZU_RUNTIME_PATHS *zu___RuntimePathsForProduct( ZU_INT flags, ZU_STRING *productName )
{
    ZU_ASSERT( zuRuntimeValidateProductName( productName ) );
    return zu___RuntimePlatformPathsForProduct( flags, productName );
}
