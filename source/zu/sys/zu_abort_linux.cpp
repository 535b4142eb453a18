#include "zu/sys/zu_abort_internal.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

void zu___AbortWrite( const char *text, size_t length )
{
    while ( length > 0 ) {
        ssize_t written = write( STDERR_FILENO, text, length );
        if ( written < 0 ) {
            if ( errno == EINTR ) {
                continue;
            }
            return;
        }
        text += written;
        length -= (size_t)written;
    }
}

ZU_BOOL zu___AbortDebuggerPresent( void )
{
    int file = open( "/proc/self/status", O_RDONLY | O_CLOEXEC );
    if ( file < 0 ) {
        return ZU_FALSE;
    }
    // The line stands within the first few hundred bytes; TracerPid is 0 where nobody traces.
    char status[ 2048 ];
    ssize_t length = read( file, status, sizeof status - 1 );
    close( file );
    if ( length < 0 ) {
        return ZU_FALSE;
    }
    status[ length ] = 0;
    const char *tracer = strstr( status, "\nTracerPid:\t" );
    return tracer && tracer[ strlen( "\nTracerPid:\t" ) ] != '0';
}

void zu___AbortBreak( void )
{
    raise( SIGTRAP );
}
