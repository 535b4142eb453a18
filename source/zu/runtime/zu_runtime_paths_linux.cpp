// Data goes where the XDG base directories have it: $XDG_DATA_HOME, if that is an absolute path, and else
// .local/share in the home directory, which the one who writes first creates.

#include "zu/base/zu_string_format.h"
#include "zu/io/zu_env.h"
#include "zu/io/zu_file.h"
#include "zu/runtime/zu_runtime_paths_internal.h"
#include "zu/runtime/zu_runtime_paths_linux_internal.h"

const char *zu___RuntimePathsRecords = ZU___SYSCONFDIR "/velmora/installed-products/";

static constexpr ZU_INT RECORD_TYPE = 1; // of an installation in a directory

ZU_STRING *zu___RuntimePathsInstallRecord( ZU_STRING *productName )
{
    ZU_STRING *fn = zuStringCreateFromFormatCstr( "%lc%s", -1, zu___RuntimePathsRecords, productName );
    ZU_STORE *record = zu___RuntimeTryLoadStore( fn );
    zuStringRelease( fn );
    if ( !record ) {
        return nullptr;
    }
    ZU_INT type = 0;
    ZU_STRING *pn = zuStoreValueIntCstr( record, &type, "type", -1 ) && type == RECORD_TYPE
                        ? zuStoreValueCstr( record, "installationPath", -1 )
                        : nullptr;
    zuStoreRelease( record );
    return pn;
}

// Returns the directory that a variable names, null if that is none.
static ZU_STRING *pathsOfVariable( const char *variable )
{
    ZU_STRING *value = zuGetEnvCstr( variable, -1 );
    ZU_STRING *pn = value ? zu___RuntimePathsNormalize( value ) : nullptr;
    ZU_REF_RELEASE_OPT( value );
    return pn;
}
static ZU_STRING *pathsUserData( ZU_BOOL create )
{
    ZU_STRING *data = pathsOfVariable( "XDG_DATA_HOME" );
    if ( data ) {
        if ( create ) {
            zuFileCreateDirectory( data );
        }
        return data;
    }
    ZU_STRING *home = pathsOfVariable( "HOME" );
    if ( !home ) {
        return nullptr;
    }
    ZU_STRING *relative = zuStringCreateFromAscii( ".local/share/", -1 );
    data = zu___RuntimePathsJoin( home, relative, create );
    zuStringRelease( relative );
    zuStringRelease( home );
    return data;
}
ZU_STRING *zu___RuntimePathsApplicationData( ZU_BOOL ofSystem, ZU_BOOL create )
{
    return ofSystem ? zuStringCreateFromAscii( "/var/lib/", -1 ) : pathsUserData( create );
}
