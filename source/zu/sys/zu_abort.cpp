// The report is plain text, a line at a time through a buffer on the stack, since heap and objects may be what failed.
// Each line is on its way before the next is made.

#include "zu/sys/zu_abort.h"

#include "zu/sys/zu_abort_internal.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

static constexpr size_t LINE_SIZE = 4096; // of text and line end; longer lines are cut

// Writes a label and a text as one line; a missing text leaves the line out.
static void abortWriteLine( const char *label, const char *text )
{
    if ( !text ) {
        return;
    }
    char line[ LINE_SIZE ];
    size_t length = strlen( label );
    memcpy( line, label, length );
    size_t textLength = strnlen( text, LINE_SIZE - length - 1 );
    memcpy( line + length, text, textLength );
    length += textLength;
    line[ length++ ] = '\n';
    zu___AbortWrite( line, length );
}

static void abortWriteReport( const char *message, const char *file, int32_t line, const char *expression )
{
    char number[ 16 ];
    snprintf( number, sizeof number, "%d", (int)line );
    abortWriteLine( "", "" );
    abortWriteLine( "", "  **********************************************************************" );
    abortWriteLine( "", "  * ABNORMAL PROGRAM TERMINATION                                       *" );
    abortWriteLine( "", "  **********************************************************************" );
    if ( message || file || expression ) {
        abortWriteLine( "", "" );
        abortWriteLine( "", "  ABORT" );
        abortWriteLine( "    Message   : ", message );
        abortWriteLine( "    File      : ", file );
        abortWriteLine( "    Line      : ", file ? number : nullptr );
        abortWriteLine( "    Expression: ", expression );
    }
    abortWriteLine( "", "" );
}

void zu___Abort( const char *message, const char *file, int32_t line, const char *expression )
{
    abortWriteReport( message, file, line, expression );
    if ( zu___AbortDebuggerPresent() ) {
        zu___AbortBreak();
    }
    abort();
}
