// The dump has the report in it, as comments that a debugger shows to whoever opens it: one stream of comment a line,
// all of one width.

#include "zu/runtime/zu_runtime_version.h"
#include "zu/sys/zu_abort_windows_internal.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <dbghelp.h>

static constexpr DWORD TYPE_DEFAULT = 3;  // data segments of all modules, and handles
static constexpr DWORD PATIENCE = 120000; // milliseconds for a report with its dump, which may be of any size
static constexpr size_t COMMENT_WIDTH = 119;
static constexpr size_t KEY_SIZE = 256;

// The title stands in a box of two columns: a word in large letters, and what the file is.
static constexpr int WORD_WIDTH = 46;
static constexpr int TEXT_WIDTH = 64;
static constexpr char BORDER[] = "+ =================================================+"
                                 "================================================================= +";
static_assert( sizeof BORDER == COMMENT_WIDTH + 1 );
static constexpr const char *TITLE[][ 2 ] = {
    { "#######     #####    ########     ###   ", "RQTA System Minidump file" },
    { "##    ##   ##   ##      ##       ## ##  ", "Written by the VELMORA base library" },
    { "##    ##  ##     ##     ##      ##   ## ", "" },
    { "#######   ##     ##     ##     ##     ##", "Enter '.ecxr' at the debugger command prompt to retrieve an" },
    { "##   ##   ##  ## ##     ##     #########", "exception context record and with it the call stack of the" },
    { "##    ##   ##  ###      ##     ##     ##", "faulting code." },
    { "##     ##   ##### ##    ##     ##     ##", "" },
};

static DWORD dumpType = TYPE_DEFAULT;
static HANDLE dumpFile;
static MINIDUMP_USER_STREAM *comments = nullptr;
static ULONG commentCount = 0;

// Reads the type from one key; false if that has none.
static bool abortReadDumpType( const char *subKey )
{
    HKEY key;
    if ( RegOpenKeyExA( HKEY_LOCAL_MACHINE, subKey, 0, KEY_READ, &key ) != ERROR_SUCCESS ) {
        return false;
    }
    DWORD type;
    DWORD value;
    DWORD byteCount = sizeof value;
    bool ok = RegQueryValueExA( key, "minidumpType", nullptr, &type, (BYTE *)&value, &byteCount ) == ERROR_SUCCESS &&
              type == REG_DWORD && byteCount == sizeof value;
    RegCloseKey( key );
    if ( ok ) {
        dumpType = value;
    }
    return ok;
}
void zu___AbortDumpStartup( void )
{
    dumpType = TYPE_DEFAULT;
    const char *const names[] = { zu___RuntimeVersionProductNameCstr(), zu___RuntimeVersionProductFriendlyNameCstr() };
    for ( const char *name : names ) {
        char key[ KEY_SIZE ];
        snprintf( key, sizeof key, "SOFTWARE\\VELMORA\\%s", name );
        if ( abortReadDumpType( key ) ) {
            return;
        }
    }
    abortReadDumpType( "SOFTWARE\\VELMORA" );
}

// Adds a comment; without memory for it the dump does without.
static void abortDumpAddLine( const char *text, size_t length )
{
    char line[ COMMENT_WIDTH + 1 ];
    length = length < COMMENT_WIDTH ? length : COMMENT_WIDTH;
    memcpy( line, text, length );
    memset( line + length, ' ', COMMENT_WIDTH - length );
    line[ COMMENT_WIDTH ] = 0;
    MINIDUMP_USER_STREAM *larger =
        (MINIDUMP_USER_STREAM *)realloc( comments, ( commentCount + 1 ) * sizeof( MINIDUMP_USER_STREAM ) );
    if ( !larger ) {
        return;
    }
    comments = larger;
    char *copy = _strdup( line );
    if ( copy ) {
        comments[ commentCount++ ] = { CommentStreamA, (ULONG)sizeof line, copy };
    }
}
static void abortDumpAddTitleRow( const char *word, const char *text )
{
    char line[ COMMENT_WIDTH + 1 ];
    snprintf( line, sizeof line, "|    %-*s|  %-*s|", WORD_WIDTH, word, TEXT_WIDTH, text );
    abortDumpAddLine( line, COMMENT_WIDTH );
}
static void abortDumpAddTitle()
{
    abortDumpAddLine( BORDER, COMMENT_WIDTH );
    abortDumpAddTitleRow( "", "" );
    for ( const char *const( &row )[ 2 ] : TITLE ) {
        abortDumpAddTitleRow( row[ 0 ], row[ 1 ] );
    }
    abortDumpAddTitleRow( "", "" );
    abortDumpAddLine( BORDER, COMMENT_WIDTH );
}

static ZU_BOOL abortDumpBegin( const char *name, uint32_t *error )
{
    dumpFile = CreateFileA( name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, CREATE_NEW,
                            FILE_ATTRIBUTE_NORMAL, nullptr );
    if ( dumpFile == INVALID_HANDLE_VALUE ) {
        *error = GetLastError();
        return ZU_FALSE;
    }
    zu___AbortLimit( PATIENCE );
    abortDumpAddTitle();
    return ZU_TRUE;
}
static ZU_BOOL abortDumpEnd( const ZU___ABORT_CONTEXT *context, uint32_t *error )
{
    EXCEPTION_POINTERS pointers;
    zu___AbortException( context, &pointers );
    MINIDUMP_EXCEPTION_INFORMATION exception = { zu___AbortThreadIdentifier(), &pointers, FALSE };
    MINIDUMP_USER_STREAM_INFORMATION streams = { commentCount, comments };
    BOOL ok = MiniDumpWriteDump( GetCurrentProcess(), GetCurrentProcessId(), dumpFile, (MINIDUMP_TYPE)dumpType,
                                 &exception, &streams, nullptr );
    *error = ok ? 0 : GetLastError();
    CloseHandle( dumpFile );
    while ( commentCount > 0 ) {
        free( comments[ --commentCount ].Buffer );
    }
    free( comments );
    comments = nullptr;
    return ok != FALSE;
}

static const ZU___ABORT_DUMPS dumps = { abortDumpBegin, abortDumpAddLine, abortDumpEnd };
const ZU___ABORT_DUMPS *const zu___AbortDumps = &dumps;
