// An installation is recorded in the registry, and data goes into the folders that the shell names.

#include "zu/base/zu_string_format.h"
#include "zu/base/zu_string_search.h"
#include "zu/runtime/zu_runtime_paths_internal.h"
#include "zu/sys/zu_mem.h"

#include <windows.h>

#include <shlobj.h>

static constexpr DWORD RECORD_TYPE = 1;           // of an installation in a directory
static constexpr ZU_INT RECORD_BYTES_MAX = 65536; // of a path, which has 32767 units at most

// Returns what the value of a record is, if it is text; null otherwise.
static ZU_STRING *pathsReadText( HKEY key, const wchar_t *value )
{
    DWORD type;
    DWORD byteCount = 0;
    if ( RegQueryValueExW( key, value, nullptr, &type, nullptr, &byteCount ) != ERROR_SUCCESS || type != REG_SZ ||
         byteCount > RECORD_BYTES_MAX ) {
        return nullptr;
    }
    // Whoever has written it need not have terminated it.
    wchar_t *text = (wchar_t *)zuMemAlloc( (ZU_INT)byteCount + 2 * (ZU_INT)sizeof( wchar_t ) );
    ZU_STRING *result = nullptr;
    if ( RegQueryValueExW( key, value, nullptr, &type, (BYTE *)text, &byteCount ) == ERROR_SUCCESS && type == REG_SZ ) {
        text[ byteCount / sizeof( wchar_t ) ] = 0;
        result = zuStringCreateFromWcstr( (const char16_t *)text, -1 );
    }
    zuMemFree( text );
    return result;
}
ZU_STRING *zu___RuntimePathsInstallRecord( ZU_STRING *productName )
{
    ZU_STRING *name = zuStringCreateFromFormatCstr( "SOFTWARE\\VELMORA\\Installed Products\\%s", -1, productName );
    char16_t *wide = zuStringConvertToWcstr( name, ZU_TRUE, nullptr );
    zuStringRelease( name );
    HKEY key;
    LSTATUS status = RegOpenKeyExW( HKEY_LOCAL_MACHINE, (const wchar_t *)wide, 0, KEY_READ, &key );
    zuMemFree( wide );
    if ( status != ERROR_SUCCESS ) {
        return nullptr;
    }
    DWORD type;
    DWORD record = 0;
    DWORD byteCount = sizeof record;
    ZU_STRING *pn = nullptr;
    if ( RegQueryValueExW( key, L"Type", nullptr, &type, (BYTE *)&record, &byteCount ) == ERROR_SUCCESS &&
         type == REG_DWORD && byteCount == sizeof record && record == RECORD_TYPE ) {
        pn = pathsReadText( key, L"Installation Path" );
    }
    RegCloseKey( key );
    return pn;
}

// The system has made these folders, and makes those of the user with the user.
ZU_STRING *zu___RuntimePathsApplicationData( ZU_BOOL ofSystem, ZU_BOOL )
{
    wchar_t path[ MAX_PATH ];
    if ( SHGetFolderPathW( nullptr, ofSystem ? CSIDL_COMMON_APPDATA : CSIDL_APPDATA, nullptr, SHGFP_TYPE_CURRENT,
                           path ) != S_OK ) {
        return nullptr;
    }
    ZU_STRING *pn = zuStringCreateFromWcstr( (const char16_t *)path, -1 );
    ZU_STRING *normalized = zu___RuntimePathsNormalize( pn );
    zuStringRelease( pn );
    return normalized;
}

// Only paths with a drive pass.
ZU_STRING *zu___RuntimePathsNormalize( ZU_STRING *pn )
{
    if ( zuStringLength( pn ) == 0 || zuStringBeginsWithChar( pn, ZU_CHAR_REVERSE_SOLIDUS ) ||
         zuStringBeginsWithChar( pn, ZU_CHAR_SOLIDUS ) ) {
        return nullptr;
    }
    ZU_STRING *normalized = zuStringRetain( pn );
    ZU_INT idx = -1;
    while ( ( idx = zuStringFindChar( normalized, idx + 1, ZU_CHAR_REVERSE_SOLIDUS ) ) != -1 ) {
        zuStringSetCharAt( &normalized, idx, ZU_CHAR_SOLIDUS );
    }
    if ( !zuStringEndsWithChar( normalized, ZU_CHAR_SOLIDUS ) ) {
        zuStringAppendChar( &normalized, ZU_CHAR_SOLIDUS );
    }
    return normalized;
}
