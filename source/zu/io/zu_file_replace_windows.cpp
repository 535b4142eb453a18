// ReplaceFileW exchanges a file for another and keeps attributes, owner and access lists of the old one; where there is
// none yet, MoveFileExW does.  The new content is on the disk before either is called.

#include "zu/io/zu_file_windows_internal.h"
#include "zu/sys/zu_mem.h"

#include <cstdio>
#include <cwchar>
#include <windows.h>

static constexpr int NAMES_MAX = 100;         // that are tried for the new file
static constexpr size_t TEMPORARY_UNITS = 24; // of such a name, delimiter and terminator included
static constexpr ZU_INT TRANSFER_BYTES = 1 << 30;

// Opens the file that is to be replaced, as for writing: the system answers whether the caller may.
static HANDLE replaceOpenOld( const wchar_t *path )
{
    return CreateFileW( path, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                        FILE_ATTRIBUTE_NORMAL, nullptr );
}
// Returns the path of the open file itself, links followed, in memory of zuMemAlloc; null if that fails.
static wchar_t *replaceFinalPath( HANDLE old )
{
    DWORD units = GetFinalPathNameByHandleW( old, nullptr, 0, FILE_NAME_NORMALIZED );
    wchar_t *path = units > 0 ? (wchar_t *)zuMemAllocN( units, sizeof( wchar_t ) ) : nullptr;
    if ( path && GetFinalPathNameByHandleW( old, path, units, FILE_NAME_NORMALIZED ) >= units ) {
        zuMemFree( path );
        return nullptr;
    }
    return path;
}
// Returns `path`, which is taken over, with its drive and from the root on: under Wine ReplaceFileW understands no other.
static wchar_t *replaceFullPath( wchar_t *path )
{
    DWORD units = GetFullPathNameW( path, 0, nullptr, nullptr );
    wchar_t *full = units > 0 ? (wchar_t *)zuMemAllocN( units, sizeof( wchar_t ) ) : nullptr;
    if ( !full ||
         GetFullPathNameW( path, units, full, nullptr ) - 1 >= units - 1 ) { // 0, or more than there is room for
        zuMemFree( full );
        return path;
    }
    zuMemFree( path );
    return full;
}
// Finds the file that `path`, which is taken over, leads to.  Returns its path, null if it is none that may be replaced.
static wchar_t *replaceFind( wchar_t *path, bool *exists )
{
    HANDLE old = replaceOpenOld( path );
    *exists = old != INVALID_HANDLE_VALUE;
    wchar_t *found = nullptr;
    if ( *exists ) {
        DWORD attributes = GetFileAttributesW( path );
        bool isLink = attributes != INVALID_FILE_ATTRIBUTES && ( attributes & FILE_ATTRIBUTE_REPARSE_POINT );
        bool isFile = GetFileType( old ) == FILE_TYPE_DISK;
        found = !isFile ? nullptr : isLink ? replaceFinalPath( old ) : path;
        CloseHandle( old );
    } else if ( GetLastError() == ERROR_FILE_NOT_FOUND ) {
        found = path;
    }
    if ( found != path ) {
        zuMemFree( path );
    }
    return found;
}

static bool replaceWrite( HANDLE file, const uint8_t *bytes, ZU_INT byteCount )
{
    while ( byteCount > 0 ) {
        DWORD written = 0;
        if ( !WriteFile( file, bytes, (DWORD)zuIntMin( byteCount, TRANSFER_BYTES ), &written, nullptr ) ||
             written == 0 ) {
            return false;
        }
        bytes += written;
        byteCount -= written;
    }
    return FlushFileBuffers( file );
}
// Creates a file of a new name in the folder of `path`; stores its path, in memory of zuMemAlloc.
static HANDLE replaceCreate( const wchar_t *path, wchar_t **temporary )
{
    static unsigned counter;
    size_t folder = wcslen( path );
    while ( folder > 0 && path[ folder - 1 ] != '\\' && path[ folder - 1 ] != '/' && path[ folder - 1 ] != ':' ) {
        folder--;
    }
    size_t units = folder + TEMPORARY_UNITS;
    *temporary = (wchar_t *)zuMemAllocN( (ZU_INT)units, sizeof( wchar_t ) );
    wmemcpy( *temporary, path, folder );
    HANDLE file = INVALID_HANDLE_VALUE;
    for ( int i = 0; i < NAMES_MAX && file == INVALID_HANDLE_VALUE; i++ ) {
        // Unlike every other of the moment; that nobody else has it the system sees to.
        LARGE_INTEGER now;
        QueryPerformanceCounter( &now );
        uint64_t number = (uint64_t)now.QuadPart ^ (uint64_t)GetCurrentProcessId() << 40;
        number += __atomic_fetch_add( &counter, 1, __ATOMIC_RELAXED ) * 0x9E3779B97F4A7C15;
        swprintf( *temporary + folder, TEMPORARY_UNITS, L".zu-%016llx", (unsigned long long)number );
        file = CreateFileW( *temporary, GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr );
        if ( file == INVALID_HANDLE_VALUE && GetLastError() != ERROR_FILE_EXISTS ) {
            break;
        }
    }
    return file;
}
static bool replaceExchange( const wchar_t *path, const wchar_t *temporary, bool exists )
{
    return exists ? ReplaceFileW( path, temporary, nullptr, REPLACEFILE_WRITE_THROUGH, nullptr, nullptr )
                  : MoveFileExW( temporary, path, MOVEFILE_WRITE_THROUGH );
}

ZU_BOOL zu___FileReplace( ZU_STRING *fn, const uint8_t *bytes, ZU_INT byteCount )
{
    bool exists;
    wchar_t *path = replaceFind( replaceFullPath( zu___FileWindowsPath( fn ) ), &exists );
    if ( !path ) {
        return ZU_FALSE;
    }
    wchar_t *temporary;
    HANDLE file = replaceCreate( path, &temporary );
    bool ok = false;
    if ( file != INVALID_HANDLE_VALUE ) {
        ok = replaceWrite( file, bytes, byteCount );
        CloseHandle( file );
        ok = ok && replaceExchange( path, temporary, exists );
        if ( !ok ) {
            DeleteFileW( temporary );
        }
    }
    zuMemFree( temporary );
    zuMemFree( path );
    return ok;
}
