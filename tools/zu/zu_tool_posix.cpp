// The command zu on Linux and macOS, where words and names of files are bytes.

#include "zu_tool_platform.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

void toolPrepareStreams()
{
}

bool toolIsTerminal( FILE *stream )
{
    TEXT kind = zu::adopt( zuGetEnvCstr( "TERM", -1 ) );
    return isatty( fileno( stream ) ) && kind && kind != "dumb";
}

static TOOL_FILE fileOf( const struct stat &info )
{
    return { S_ISREG( info.st_mode ), info.st_size, { info.st_dev, info.st_ino } };
}
TOOL_FILE toolFindFile( ZU_STRING *name )
{
    struct stat info;
    return stat( toolBytesOfText( name ).c_str(), &info ) == 0 ? fileOf( info ) : TOOL_FILE();
}
TOOL_FILE toolFindFile( FILE *stream )
{
    struct stat info;
    return fstat( fileno( stream ), &info ) == 0 ? fileOf( info ) : TOOL_FILE();
}

void toolForgetFailure()
{
    errno = 0;
}
TEXT toolLastFailure()
{
    return errno ? zu::text( strerror( errno ) ) : TEXT();
}

void toolRaiseBusError()
{
    raise( SIGBUS );
}
