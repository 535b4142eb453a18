// The names are constants, so that they cost neither start-up nor memory of each process: two tables, each sorted by
// its name and searched by bisection, whose rows refer to each other by index.  The compiler makes them of the rows in
// zu_timezone_table_internal.h.

#include "zu/base/zu_timezone.h"

#include "zu/base/zu_timezone_internal.h"
#include "zu/base/zu_timezone_table_internal.h"
#include "zu/base/zu_vector.h"
#include "zu/sys/zu_mem.h"

#include <algorithm>
#include <cstddef>

static constexpr ZU_INT WINDOWS_COUNT = 132;
static constexpr ZU_INT IANA_COUNT = 455;
static constexpr ZU_INT NAME_SIZE = 32; // of the longest name, terminated
static constexpr ZU_INT DAY = 86400;    // seconds

// Both ascending.
struct TIMEZONE_TABLES {
    char windowsNames[ WINDOWS_COUNT ][ NAME_SIZE ];
    uint16_t windowsIana[ WINDOWS_COUNT ]; // the index in the other table
    char ianaNames[ IANA_COUNT ][ NAME_SIZE ];
    uint8_t ianaWindows[ IANA_COUNT ];
};

// The compiler's part

struct TIMEZONE_NAME {
    std::string_view name;
    ZU_INT row;
};
constexpr bool timezoneIsLess( const TIMEZONE_NAME &a, const TIMEZONE_NAME &b )
{
    size_t common = std::min( a.name.size(), b.name.size() );
    int order = __builtin_memcmp( a.name.data(), b.name.data(), common );
    return order != 0 ? order < 0 : a.name.size() < b.name.size();
}
// Sorts names, of which no two are the same, and stores them.
template <size_t COUNT>
consteval void timezoneStore( char ( &names )[ COUNT ][ NAME_SIZE ], TIMEZONE_NAME ( &sorted )[ COUNT ] )
{
    std::sort( sorted, sorted + COUNT, timezoneIsLess );
    for ( size_t i = 0; i < COUNT; i++ ) {
        ZU_ASSERT( sorted[ i ].name.size() < NAME_SIZE );
        ZU_ASSERT( i == 0 || timezoneIsLess( sorted[ i - 1 ], sorted[ i ] ) );
        std::copy( sorted[ i ].name.begin(), sorted[ i ].name.end(), names[ i ] );
    }
}
consteval TIMEZONE_TABLES timezoneMakeTables()
{
    TIMEZONE_NAME windows[ WINDOWS_COUNT ] = {};
    TIMEZONE_NAME iana[ IANA_COUNT ] = {};
    std::string_view first[ WINDOWS_COUNT ] = {}; // by row
    ZU_INT row = 0;
    ZU_INT ianaCount = 0;
    for ( const ZU___TIMEZONE_ROW &source : ZU___TIMEZONE_ROWS ) {
        std::string_view rest = source.iana;
        windows[ row ] = { source.windows, row };
        first[ row ] = rest.substr( 0, rest.find( ',' ) );
        while ( !rest.empty() ) {
            size_t end = std::min( rest.find( ',' ), rest.size() );
            iana[ ianaCount++ ] = { rest.substr( 0, end ), row };
            rest.remove_prefix( std::min( end + 1, rest.size() ) );
        }
        row++;
    }
    ZU_ASSERT( row == WINDOWS_COUNT );
    ZU_ASSERT( ianaCount == IANA_COUNT );
    TIMEZONE_TABLES tables = {};
    timezoneStore( tables.windowsNames, windows );
    timezoneStore( tables.ianaNames, iana );
    ZU_INT placeOfRow[ WINDOWS_COUNT ] = {};
    for ( ZU_INT i = 0; i < WINDOWS_COUNT; i++ ) {
        placeOfRow[ windows[ i ].row ] = i;
    }
    for ( ZU_INT i = 0; i < IANA_COUNT; i++ ) {
        ZU_INT place = placeOfRow[ iana[ i ].row ];
        tables.ianaWindows[ i ] = (uint8_t)place;
        if ( iana[ i ].name == first[ iana[ i ].row ] ) {
            tables.windowsIana[ place ] = (uint16_t)i;
        }
    }
    return tables;
}
static constexpr TIMEZONE_TABLES TABLES = timezoneMakeTables();

// Start-up
void zu___TimezoneStartup( void )
{
    zu___TimezoneStartupImp();
}
void zu___TimezoneShutdown( void )
{
    zu___TimezoneShutdownImp();
}

// The machine
ZU_STRING *zuTimezone( void )
{
    ZU_STRING *name = zu___TimezoneSystemName();
    if ( name && !zuTimezoneIanaOk( name ) ) {
        ZU_REF_RELEASE( name );
        name = nullptr;
    }
    return name ? name : zuStringCreate();
}
ZU_INT zuTimezoneUtcOffset( void )
{
    ZU_INT seconds;
    if ( !zu___TimezoneSystemOffset( &seconds ) || seconds < -DAY || seconds > DAY ) {
        return 0;
    }
    return seconds;
}

// Names

// Orders a string and a name by code point.
static int timezoneCompare( ZU_STRING *zus, const char *name )
{
    const ZU_CHAR *chars = zuStringBacking( zus );
    ZU_INT length = zuStringLength( zus );
    for ( ZU_INT i = 0; i < length; i++ ) { // which the end of the name ends too
        ZU_CHAR ch = (unsigned char)name[ i ];
        if ( chars[ i ] != ch || ch == 0 ) {
            return ch == 0 || chars[ i ] > ch ? 1 : -1;
        }
    }
    return name[ length ] == '\0' ? 0 : -1;
}
// Returns the index of a name; -1 if it is unknown.
template <size_t COUNT>
static ZU_INT timezoneFind( const char ( &names )[ COUNT ][ NAME_SIZE ], ZU_STRING *zus )
{
    ZU_INT begin = 0;
    ZU_INT end = COUNT;
    while ( begin < end ) {
        ZU_INT middle = ( begin + end ) / 2;
        int order = timezoneCompare( zus, names[ middle ] );
        if ( order == 0 ) {
            return middle;
        }
        if ( order > 0 ) {
            begin = middle + 1;
        } else {
            end = middle;
        }
    }
    return -1;
}
ZU_VECTOR *zuTimezoneList( void )
{
    ZU_OBJ **names = (ZU_OBJ **)zuMemAllocN( IANA_COUNT, sizeof( ZU_OBJ * ) );
    for ( ZU_INT i = 0; i < IANA_COUNT; i++ ) {
        names[ i ] = zuStringObj( zuStringCreateFromAscii( TABLES.ianaNames[ i ], -1 ) );
    }
    return zuVectorCreateFromObjsUse( names, IANA_COUNT );
}
ZU_BOOL zuTimezoneIanaOk( ZU_STRING *zus )
{
    ZU___ASSERT_AS( zus, "key" );
    return timezoneFind( TABLES.ianaNames, zus ) != -1 ? ZU_TRUE : ZU_FALSE;
}
ZU_STRING *zuTimezoneIanaToWindows( ZU_STRING *zus )
{
    ZU___ASSERT_AS( zus, "key" );
    ZU_INT idx = timezoneFind( TABLES.ianaNames, zus );
    return idx == -1 ? nullptr : zuStringCreateFromAscii( TABLES.windowsNames[ TABLES.ianaWindows[ idx ] ], -1 );
}
ZU_BOOL zuTimezoneWindowsOk( ZU_STRING *zus )
{
    ZU___ASSERT_AS( zus, "key" );
    return timezoneFind( TABLES.windowsNames, zus ) != -1 ? ZU_TRUE : ZU_FALSE;
}
ZU_STRING *zuTimezoneWindowsToIana( ZU_STRING *zus )
{
    ZU___ASSERT_AS( zus, "key" );
    ZU_INT idx = timezoneFind( TABLES.windowsNames, zus );
    return idx == -1 ? nullptr : zuStringCreateFromAscii( TABLES.ianaNames[ TABLES.windowsIana[ idx ] ], -1 );
}
