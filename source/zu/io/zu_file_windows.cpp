// Files are those of the C runtime, without its streams; directories are the system's own.  Names are UTF-16 both ways,
// and whatever units a name has come back as they are.

#include "zu/base/zu_string_case.h"
#include "zu/base/zu_string_format.h"
#include "zu/base/zu_string_search.h"
#include "zu/io/zu_file_windows_internal.h"
#include "zu/sys/zu_mem.h"

#include <direct.h>
#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>
#include <windows.h>

#include <shlwapi.h>

static constexpr ZU_INT TRANSFER_BYTES = 1 << 30; // at a time; the C runtime counts in int
static constexpr size_t PART_UNITS = 1024;        // of a folder, a name or an ending, terminator included
static constexpr size_t DRIVE_UNITS = 3;          // a letter and a colon, likewise
static constexpr DWORD EXECUTABLE_UNITS = 259;    // as long as plain paths are

// Names

wchar_t *zu___FileWindowsPath( ZU_STRING *fn )
{
    ZU_STRING *name = zu___FileNamePrepare( fn );
    char16_t *path = zuStringConvertToWcstr( name, ZU_TRUE, nullptr );
    zuStringRelease( name );
    return (wchar_t *)path;
}
static ZU_STRING *fileWindowsString( const wchar_t *path )
{
    return zuStringCreateFromWcstr( (const char16_t *)path, -1 );
}
static ZU_STRING *fileWindowsJoin( const wchar_t *first, const wchar_t *second )
{
    return zuStringCreateFromFormatCstr( "%lw%lw", -1, first, second );
}
ZU_STRING *zu___FileBaseName( ZU_STRING *fn )
{
    wchar_t *path = zu___FileWindowsPath( fn );
    wchar_t name[ PART_UNITS ] = {};
    wchar_t ending[ PART_UNITS ] = {};
    _wsplitpath_s( path, nullptr, 0, nullptr, 0, name, PART_UNITS, ending, PART_UNITS );
    zuMemFree( path );
    return fileWindowsJoin( name, ending );
}
ZU_STRING *zu___FileDirName( ZU_STRING *fn )
{
    wchar_t *path = zu___FileWindowsPath( fn );
    wchar_t drive[ DRIVE_UNITS ] = {};
    wchar_t folder[ PART_UNITS ] = {};
    _wsplitpath_s( path, drive, DRIVE_UNITS, folder, PART_UNITS, nullptr, 0, nullptr, 0 );
    zuMemFree( path );
    return fileWindowsJoin( drive, folder );
}
ZU_CHAR zu___FilePathDelimiter( void )
{
    return ZU_CHAR_REVERSE_SOLIDUS;
}

// Calls with the path of `fn`.
template <typename CALL>
static auto fileWindowsWithPath( ZU_STRING *fn, CALL call ) -> decltype( call( L"" ) )
{
    wchar_t *path = zu___FileWindowsPath( fn );
    auto result = call( path );
    zuMemFree( path );
    return result;
}
ZU_BOOL zu___PathIsRelative( ZU_STRING *pn )
{
    return fileWindowsWithPath( pn, []( const wchar_t *path ) { return PathIsRelativeW( path ); } ) != FALSE;
}

// Open files

static ZU___FILE_HANDLE fileWindowsOpen( ZU_STRING *fn, int flags, int share )
{
    return fileWindowsWithPath( fn, [ & ]( const wchar_t *path ) -> ZU___FILE_HANDLE {
        int file = -1;
        int mode = flags & _O_CREAT ? _S_IREAD | _S_IWRITE : 0;
        return _wsopen_s( &file, path, flags | _O_BINARY | _O_SEQUENTIAL | _O_NOINHERIT, share, mode ) == 0
                   ? file
                   : ZU___FILE_HANDLE_NONE;
    } );
}
ZU___FILE_HANDLE zu___FileHandleOpenSource( ZU_STRING *fn )
{
    return fileWindowsOpen( fn, _O_RDONLY, _SH_DENYNO );
}
// A file that another sink has open is refused ahead of its being emptied.
ZU___FILE_HANDLE zu___FileHandleOpenSink( ZU_STRING *fn )
{
    return fileWindowsOpen( fn, _O_RDWR | _O_CREAT | _O_TRUNC, _SH_DENYWR );
}
ZU_INT zu___FileHandleSize( ZU___FILE_HANDLE handle )
{
    return zuIntMax( _filelengthi64( (int)handle ), 0 );
}
ZU_INT zu___FileHandleRead( ZU___FILE_HANDLE handle, uint8_t *bytes, ZU_INT maxByteCount )
{
    return _read( (int)handle, bytes, (unsigned)zuIntMin( maxByteCount, TRANSFER_BYTES ) );
}
ZU_BOOL zu___FileHandleWrite( ZU___FILE_HANDLE handle, const uint8_t *bytes, ZU_INT byteCount )
{
    while ( byteCount > 0 ) {
        int written = _write( (int)handle, bytes, (unsigned)zuIntMin( byteCount, TRANSFER_BYTES ) );
        if ( written <= 0 ) {
            return ZU_FALSE;
        }
        bytes += written;
        byteCount -= written;
    }
    return ZU_TRUE;
}
void zu___FileHandleClose( ZU___FILE_HANDLE handle )
{
    _close( (int)handle );
}

// State

static bool fileWindowsState( ZU_STRING *fn, struct _stat64 *state )
{
    return fileWindowsWithPath( fn, [ & ]( const wchar_t *path ) { return _wstat64( path, state ); } ) == 0;
}
ZU_BOOL zu___FileExists( ZU_STRING *fn )
{
    struct _stat64 state;
    return fileWindowsState( fn, &state );
}
ZU_BOOL zu___FileIsDirectory( ZU_STRING *fn )
{
    struct _stat64 state;
    return fileWindowsState( fn, &state ) && ( state.st_mode & _S_IFMT ) == _S_IFDIR;
}
ZU_INT zu___FileSize( ZU_STRING *fn )
{
    struct _stat64 state;
    return fileWindowsState( fn, &state ) ? state.st_size : -1;
}
ZU_TIME *zu___FileModificationTime( ZU_STRING *fn )
{
    struct _stat64 state;
    return fileWindowsState( fn, &state ) ? zuTimeTryCreateFromTimeT( state.st_mtime ) : nullptr;
}

// Changing directories

ZU_BOOL zu___FileDelete( ZU_STRING *fn )
{
    return fileWindowsWithPath( fn, []( const wchar_t *path ) { return _wunlink( path ); } ) == 0;
}
ZU_BOOL zu___FileRename( ZU_STRING *fn, ZU_STRING *newFn )
{
    wchar_t *newPath = zu___FileWindowsPath( newFn );
    ZU_BOOL ok =
        fileWindowsWithPath( fn, [ & ]( const wchar_t *path ) { return MoveFileW( path, newPath ); } ) != FALSE;
    zuMemFree( newPath );
    return ok;
}
ZU_BOOL zu___FileCreateDirectory( ZU_STRING *fn )
{
    return fileWindowsWithPath( fn, []( const wchar_t *path ) { return _wmkdir( path ); } ) == 0;
}
ZU_BOOL zu___FileDeleteDirectory( ZU_STRING *fn )
{
    return fileWindowsWithPath( fn, []( const wchar_t *path ) { return _wrmdir( path ); } ) == 0;
}

// Places

ZU_BOOL zu___FileSystemStats( ZU_STRING *pn, ZU_INT *total, ZU_INT *free, ZU_INT *used )
{
    ULARGE_INTEGER totalBytes;
    ULARGE_INTEGER freeBytes;
    if ( !fileWindowsWithPath( pn, [ & ]( const wchar_t *path ) {
             return GetDiskFreeSpaceExW( path, nullptr, &totalBytes, &freeBytes );
         } ) ) {
        return ZU_FALSE;
    }
    if ( total ) {
        *total = (ZU_INT)totalBytes.QuadPart;
    }
    if ( free ) {
        *free = (ZU_INT)freeBytes.QuadPart;
    }
    if ( used ) {
        *used = (ZU_INT)( totalBytes.QuadPart - freeBytes.QuadPart );
    }
    return ZU_TRUE;
}
ZU_STRING *zu___CurrentDirectory( void )
{
    DWORD supplied = GetCurrentDirectoryW( 0, nullptr );
    ZU___ASSERT_AS( supplied > 0, "count" );
    wchar_t *path = (wchar_t *)zuMemAllocN( supplied, sizeof( wchar_t ) );
    DWORD count = GetCurrentDirectoryW( supplied, path );
    ZU_ASSERT( ( count+1 ) == supplied );
    ZU_STRING *name = fileWindowsString( path );
    zuMemFree( path );
    return name;
}
ZU_STRING *zu___GetExecutablePath( void )
{
    wchar_t path[ EXECUTABLE_UNITS + 1 ] = {};
    DWORD ret = GetModuleFileNameW( nullptr, path, EXECUTABLE_UNITS );
    ZU_ASSERT( ret > 0 );
    return fileWindowsString( path );
}

// What is in a directory

static bool fileWindowsHasSuffix( ZU_STRING *name, ZU_STRING *foldedSuffix )
{
    ZU_STRING *folded = zuStringRetain( name );
    zuStringToCaseFold( &folded );
    bool has = zuStringEndsWith( folded, foldedSuffix );
    zuStringRelease( folded );
    return has;
}
static bool fileWindowsIsDots( const wchar_t *name )
{
    return name[ 0 ] == '.' && ( !name[ 1 ] || ( name[ 1 ] == '.' && !name[ 2 ] ) );
}
static void fileWindowsTakeEntry( ZU_VECTOR **content, const WIN32_FIND_DATAW *entry, ZU_STRING *prefix,
                                  ZU_BOOL noDirectories, ZU_STRING *foldedSuffix )
{
    if ( ( noDirectories && ( entry->dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY ) ) ||
         fileWindowsIsDots( entry->cFileName ) ) {
        return;
    }
    ZU_STRING *name = fileWindowsString( entry->cFileName );
    if ( !foldedSuffix || fileWindowsHasSuffix( name, foldedSuffix ) ) {
        zuStringPrepend( &name, prefix );
        zuVectorAppendString( content, name );
    }
    zuStringRelease( name );
}
ZU_VECTOR *zu___DirectoryContent( ZU_STRING *path, ZU_BOOL noDirectories, ZU_STRING *suffix )
{
    ZU_VECTOR *content = zuVectorCreate();
    ZU_STRING *prefix = zuStringRetain( path );
    zu___FilePathAppendDelimiter( &prefix );
    ZU_STRING *pattern = zuStringRetain( prefix );
    zuStringAppendChar( &pattern, ZU_CHAR_ASTERISK );
    ZU_STRING *foldedSuffix = suffix ? zuStringRetain( suffix ) : nullptr;
    if ( foldedSuffix ) {
        zuStringToCaseFold( &foldedSuffix );
    }
    WIN32_FIND_DATAW entry;
    HANDLE search =
        fileWindowsWithPath( pattern, [ & ]( const wchar_t *name ) { return FindFirstFileW( name, &entry ); } );
    if ( search != INVALID_HANDLE_VALUE ) {
        do {
            fileWindowsTakeEntry( &content, &entry, prefix, noDirectories, foldedSuffix );
        } while ( FindNextFileW( search, &entry ) );
        if ( GetLastError() != ERROR_NO_MORE_FILES ) {
            zuVectorClear( &content );
        }
        FindClose( search );
    }
    ZU_REF_RELEASE_OPT( foldedSuffix );
    zuStringRelease( pattern );
    zuStringRelease( prefix );
    return content;
}
