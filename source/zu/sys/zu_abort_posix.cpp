// Where the report goes, and what time it is there.  POSIX has a list of calls that may be made in a signal handler; no
// other is made here once a check has failed, with the exception of the flushes, for which there is no substitute.

#include "zu/sys/zu_abort_posix_internal.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <paths.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <syslog.h>
#include <unistd.h>

// Local time.  What the C library knows of the zone is behind a lock and in memory of the heap, so it is asked at
// start-up for what will be; a process that runs on beyond that stays at the last offset.
static constexpr time_t DAY = 86400;
static constexpr time_t ZONE_HORIZON = 3 * 365 * DAY;
static constexpr time_t ZONE_STEP = 14 * DAY; // shorter than any two changes are apart
static constexpr time_t ZONE_GRAIN = 900;     // clocks are changed on the quarter of an hour
static constexpr size_t ZONE_CHANGES_MAX = 16;

struct ABORT_ZONE_CHANGE {
    time_t from;
    long offset; // of local time from UTC, in seconds
};
static ABORT_ZONE_CHANGE zoneChanges[ ZONE_CHANGES_MAX ]; // ascending; the first holds for all time ahead, too
static size_t zoneChangeCount = 0;

static long abortOffsetAt( time_t moment )
{
    struct tm fields = {};
    return localtime_r( &moment, &fields ) ? fields.tm_gmtoff : 0;
}
void zu___AbortLearnZone( void )
{
    time_t now = time( nullptr ) / ZONE_GRAIN * ZONE_GRAIN;
    zoneChanges[ 0 ] = { now, abortOffsetAt( now ) };
    zoneChangeCount = 1;
    for ( time_t begin = now; begin < now + ZONE_HORIZON; begin += ZONE_STEP ) {
        long offset = zoneChanges[ zoneChangeCount - 1 ].offset;
        if ( zoneChangeCount == ZONE_CHANGES_MAX || abortOffsetAt( begin + ZONE_STEP ) == offset ) {
            continue;
        }
        time_t before = begin;
        time_t behind = begin + ZONE_STEP;
        while ( behind - before > ZONE_GRAIN ) {
            time_t middle = before + ( behind - before ) / ZONE_GRAIN / 2 * ZONE_GRAIN;
            ( abortOffsetAt( middle ) == offset ? before : behind ) = middle;
        }
        zoneChanges[ zoneChangeCount++ ] = { behind, abortOffsetAt( behind ) };
    }
}
void zu___AbortLocalTime( ZU___TIME_FIELDS *fields )
{
    ZU_INT now = zu___TimeWallClock();
    long offset = 0;
    for ( size_t i = 0; i < zoneChangeCount && ( i == 0 || zoneChanges[ i ].from <= now ); i++ ) {
        offset = zoneChanges[ i ].offset;
    }
    now += offset;
    zu___TimeBreakDown( fields, &now );
}

// Error stream.  The descriptor is shared with other processes, so it stays as it is; a pipe that takes anything takes
// up to PIPE_BUF bytes without waiting.
static constexpr int PATIENCE = 1000; // milliseconds, of a report with five seconds
static bool errorStreamDead = false;

void zu___AbortWriteError( const char *text, size_t length )
{
    while ( length > 0 && !errorStreamDead ) {
        struct pollfd stream = { STDERR_FILENO, POLLOUT, 0 };
        int ready = poll( &stream, 1, PATIENCE );
        ssize_t written = ready > 0 ? write( STDERR_FILENO, text, length ) : -1;
        if ( written > 0 ) {
            text += written;
            length -= (size_t)written;
        } else if ( ready == 0 || ( errno != EINTR && errno != EAGAIN ) ) {
            errorStreamDead = true;
        }
    }
}

// The debugger's channel is the system log, as for zuDebugPrint.  What syslog() does to get a line there is done here
// without its lock and its memory.
static constexpr size_t DATAGRAM_SIZE = 4096 + 256;
static int logSocket = -1;
static bool logTried = false;
static char datagram[ DATAGRAM_SIZE ];

static void abortConnectLog()
{
    logTried = true;
    logSocket = socket( AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0 );
    struct sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    memcpy( address.sun_path, _PATH_LOG, sizeof _PATH_LOG );
    if ( logSocket >= 0 && connect( logSocket, (struct sockaddr *)&address, sizeof address ) != 0 ) {
        close( logSocket );
        logSocket = -1;
    }
}
static size_t abortAppend( size_t length, const char *text, size_t textLength )
{
    textLength = textLength < DATAGRAM_SIZE - length ? textLength : DATAGRAM_SIZE - length;
    memcpy( datagram + length, text, textLength );
    return length + textLength;
}
static size_t abortAppendText( size_t length, const char *text )
{
    return abortAppend( length, text, strlen( text ) );
}
static size_t abortAppendDecimal( size_t length, ZU_INT value, size_t digitsMin )
{
    char digits[ 20 ];
    size_t count = 0;
    while ( value > 0 || count < digitsMin ) {
        digits[ sizeof digits - ++count ] = (char)( '0' + value % 10 );
        value /= 10;
    }
    return abortAppend( length, digits + sizeof digits - count, count );
}
void zu___AbortWriteDebugger( const char *line, size_t length )
{
    if ( !logTried ) {
        abortConnectLog();
    }
    if ( logSocket < 0 ) {
        return;
    }
    // The form of RFC 3164: <priority>Nov  5 09:08:07 program[process]: line
    static constexpr char MONTHS[] = "JanFebMarAprMayJunJulAugSepOctNovDec";
    ZU___TIME_FIELDS fields;
    zu___AbortLocalTime( &fields );
    size_t size = abortAppendText( 0, "<" );
    size = abortAppendDecimal( size, LOG_USER | LOG_DEBUG, 1 );
    size = abortAppendText( size, ">" );
    size = abortAppend( size, MONTHS + 3 * ( fields.month - 1 ), 3 );
    size = abortAppendText( size, fields.day < 10 ? "  " : " " );
    size = abortAppendDecimal( size, fields.day, 1 );
    size = abortAppendText( size, " " );
    size = abortAppendDecimal( size, fields.hour, 2 );
    size = abortAppendText( size, ":" );
    size = abortAppendDecimal( size, fields.minute, 2 );
    size = abortAppendText( size, ":" );
    size = abortAppendDecimal( size, fields.second, 2 );
    size = abortAppendText( size, " " );
    size = abortAppendText( size, zu___AbortProgramName() );
    size = abortAppendText( size, "[" );
    size = abortAppendDecimal( size, getpid(), 1 );
    size = abortAppendText( size, "]: " );
    size = abortAppend( size, line, length );
    send( logSocket, datagram, size, MSG_DONTWAIT | MSG_NOSIGNAL );
}

// Report file
struct ZU___ABORT_FILE {
    int descriptor;
    bool dead; // it has refused a write: what it has is the beginning of a report, and stays that
};
static ZU___ABORT_FILE reportFile;

ZU___ABORT_FILE *zu___AbortFileTryCreate( const char *name )
{
    // Whoever may write to the folder could have laid a link there, to have some other file overwritten.
    int descriptor = open( name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR );
    if ( descriptor < 0 ) {
        return nullptr;
    }
    flock( descriptor, LOCK_EX | LOCK_NB );
    reportFile = { descriptor, false };
    return &reportFile;
}
void zu___AbortFileWrite( ZU___ABORT_FILE *file, const char *text, size_t length )
{
    while ( length > 0 && !file->dead ) {
        ssize_t written = write( file->descriptor, text, length );
        if ( written > 0 ) {
            text += written;
            length -= (size_t)written;
        } else {
            file->dead = written == 0 || errno != EINTR;
        }
    }
}
void zu___AbortFileClose( ZU___ABORT_FILE *file )
{
    close( file->descriptor );
}

const ZU___ABORT_DUMPS *const zu___AbortDumps = nullptr;

void zu___AbortFlushStreams( const ZU___ABORT_CONTEXT *context )
{
    // A fault may be one within such a stream, whose lock its own thread would get once more.
    if ( context->registers ) {
        return;
    }
    FILE *const streams[] = { stdout, stderr };
    for ( FILE *stream : streams ) {
        if ( ftrylockfile( stream ) == 0 ) {
            fflush( stream );
            funlockfile( stream );
        }
    }
}
