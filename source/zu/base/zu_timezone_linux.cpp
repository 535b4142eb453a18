// The C library goes by the environment variable TZ and, where that is not set, by /etc/localtime; the latter is a link
// into the database, by whose target the zone is named.  Where it is a copy in place of a link, Debian and its kin tell
// the name in /etc/timezone.

#include "zu/base/zu_timezone_internal.h"

#include "zu/base/zu_timezone.h"

#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <time.h>
#include <unistd.h>

static constexpr size_t NAME_MAX_LENGTH = 255; // bytes; of a longer one no zone is known
static constexpr char DATABASE[] = "/zoneinfo/";

void zu___TimezoneStartupImp( void )
{
}
void zu___TimezoneShutdownImp( void )
{
}

// Returns the name that a path into the database ends with; null for any other path.
static const char *timezoneInDatabase( const char *path )
{
    const char *folder = strstr( path, DATABASE );
    return folder ? folder + strlen( DATABASE ) : nullptr;
}

// Fetches the target of /etc/localtime, terminated; returns whether it is a link.
static bool timezoneReadLink( char *target )
{
    ssize_t length = readlink( "/etc/localtime", target, NAME_MAX_LENGTH + 1 );
    if ( length < 0 || (size_t)length > NAME_MAX_LENGTH ) {
        return false;
    }
    target[ length ] = '\0';
    return true;
}
// Fetches the first line of /etc/timezone, terminated; returns whether there is one.
static bool timezoneReadFile( char *line )
{
    int file = open( "/etc/timezone", O_RDONLY | O_CLOEXEC );
    if ( file < 0 ) {
        return false;
    }
    ssize_t length = read( file, line, NAME_MAX_LENGTH );
    close( file );
    if ( length <= 0 ) {
        return false;
    }
    line[ length ] = '\0';
    line[ strcspn( line, " \t\r\n" ) ] = '\0';
    return true;
}

ZU_STRING *zu___TimezoneSystemName( void )
{
    char text[ NAME_MAX_LENGTH + 1 ];
    const char *name = getenv( "TZ" );
    if ( name ) {
        name += *name == ':'; // which says that no rule follows, as POSIX tells
        name = *name == '/' ? timezoneInDatabase( name ) : name;
    } else if ( timezoneReadLink( text ) && timezoneInDatabase( text ) ) {
        name = timezoneInDatabase( text );
    } else if ( timezoneReadFile( text ) ) {
        name = text;
    }
    return name ? zuStringCreateFromCstr( name, -1 ) : nullptr;
}

bool zu___TimezoneSystemOffset( ZU_INT *seconds )
{
    time_t now = time( nullptr );
    struct tm local;
    tzset(); // localtime_r need not, and then would keep to a TZ that has changed
    if ( !localtime_r( &now, &local ) ) {
        return false;
    }
    *seconds = local.tm_gmtoff;
    return true;
}
