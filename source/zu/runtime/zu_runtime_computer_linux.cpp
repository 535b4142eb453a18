#include "zu/base/zu_string_format.h"
#include "zu/runtime/zu_runtime_computer_internal.h"

#include <cstring>
#include <fcntl.h>
#include <sys/utsname.h>
#include <unistd.h>

ZU_STRING *zu___RuntimeQueryComputerName( void )
{
    struct utsname system;
    if ( uname( &system ) != 0 || !*system.nodename ) {
        return nullptr;
    }
    return zuStringCreateFromCstr( system.nodename, -1 );
}

// The distribution's name, from a file of assignments as a shell would read them (os-release(5)).

static constexpr size_t RELEASE_FILE_SIZE = 4096; // bytes that are read; the files have some 300
static constexpr char RELEASE_KEY[] = "\nPRETTY_NAME=";

// Reads the file behind a line end, so that each line begins behind one, and terminates it; false if it is not there.
static bool computerReadFile( const char *path, char *text )
{
    int file = open( path, O_RDONLY | O_CLOEXEC );
    if ( file < 0 ) {
        return false;
    }
    text[ 0 ] = '\n';
    ssize_t length = read( file, text + 1, RELEASE_FILE_SIZE - 2 );
    close( file );
    text[ 1 + ( length > 0 ? length : 0 ) ] = 0;
    return true;
}
// Takes quotes off a value and terminates it, in place.
static void computerUnquote( char *value )
{
    char quote = *value == '"' || *value == '\'' ? *value : 0;
    char *out = value;
    for ( const char *in = quote ? value + 1 : value; *in && *in != '\n' && *in != quote; in++ ) {
        if ( *in == '\\' && quote != '\'' && in[ 1 ] && in[ 1 ] != '\n' ) {
            in++;
        }
        *out++ = *in;
    }
    *out = 0;
}
ZU_STRING *zu___RuntimeQueryOperatingSystem( void )
{
    struct utsname system;
    if ( uname( &system ) != 0 ) {
        return nullptr;
    }
    const char *name = system.sysname;
    char text[ RELEASE_FILE_SIZE ];
    if ( computerReadFile( "/etc/os-release", text ) || computerReadFile( "/usr/lib/os-release", text ) ) {
        char *assignment = strstr( text, RELEASE_KEY );
        if ( assignment ) {
            char *value = assignment + strlen( RELEASE_KEY );
            computerUnquote( value );
            name = value;
        }
    }
    return zuStringCreateFromFormatCstr( "%lc (%lc)", -1, name, system.release );
}

ZU_INT zu___RuntimeQueryProcessors( void )
{
    return sysconf( _SC_NPROCESSORS_ONLN );
}
