// The command zu on Windows, where words and names of files are UTF-16, whatever units they have.  What it prints is UTF-8
// with line feeds as everywhere, in files and pipes, and on the console, which is told so.

#include "zu_tool_platform.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <io.h>
#include <iterator>
#include <windows.h>

static UINT consoleCodePage; // ahead of the command

void toolPrepareStreams()
{
    for ( FILE *stream : { stdin, stdout, stderr } ) {
        _setmode( _fileno( stream ), _O_BINARY );
    }
    consoleCodePage = GetConsoleOutputCP();
    if ( consoleCodePage != 0 && SetConsoleOutputCP( CP_UTF8 ) ) {
        atexit( [] { SetConsoleOutputCP( consoleCodePage ); } );
    }
}

static HANDLE handleOf( FILE *stream )
{
    return (HANDLE)_get_osfhandle( _fileno( stream ) );
}
bool toolIsTerminal( FILE *stream )
{
    HANDLE console = handleOf( stream );
    DWORD mode;
    return GetConsoleMode( console, &mode ) &&
           SetConsoleMode( console, mode | ENABLE_PROCESSED_OUTPUT | ENABLE_VIRTUAL_TERMINAL_PROCESSING );
}

static TOOL_FILE fileOf( HANDLE file )
{
    BY_HANDLE_FILE_INFORMATION info;
    if ( GetFileType( file ) != FILE_TYPE_DISK || !GetFileInformationByHandle( file, &info ) ) {
        return {};
    }
    bool isOrdinary = !( info.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY );
    return { isOrdinary,
             (ZU_INT)info.nFileSizeHigh << 32 | info.nFileSizeLow,
             { info.dwVolumeSerialNumber, (uint64_t)info.nFileIndexHigh << 32 | info.nFileIndexLow } };
}
TOOL_FILE toolFindFile( ZU_STRING *name )
{
    char16_t *path = zuStringConvertToWcstr( name, ZU_TRUE, nullptr );
    HANDLE file = CreateFileW( (const wchar_t *)path, 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                               nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr );
    zuMemFree( path );
    if ( file == INVALID_HANDLE_VALUE ) {
        return {};
    }
    TOOL_FILE found = fileOf( file );
    CloseHandle( file );
    return found;
}
TOOL_FILE toolFindFile( FILE *stream )
{
    return fileOf( handleOf( stream ) );
}

// Of what the C runtime was asked errno tells in the words that other systems have for it.
void toolForgetFailure()
{
    errno = 0;
    SetLastError( ERROR_SUCCESS );
}
TEXT toolLastFailure()
{
    DWORD code = GetLastError();
    if ( errno ) {
        return zu::text( strerror( errno ) );
    }
    wchar_t text[ 256 ];
    DWORD length = FormatMessageW( FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0, text,
                                   (DWORD)std::size( text ), nullptr );
    while ( length > 0 && ( text[ length - 1 ] <= ' ' || text[ length - 1 ] == '.' ) ) {
        length--;
    }
    return code && length > 0 ? zu::text( std::u16string_view( (const char16_t *)text, length ) ) : TEXT{};
}

void toolRaiseBusError()
{
    RaiseException( (DWORD)EXCEPTION_IN_PAGE_ERROR, 0, 0, nullptr );
}
