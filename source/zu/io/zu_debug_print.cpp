#include "zu/io/zu_debug_print.h"

#include "zu/base/zu_string_format.h"
#include "zu/io/zu_debug_print_internal.h"
#include "zu/io/zu_print.h"
#include "zu/runtime/zu_runtime_version.h"

void zu___DebugPrintStartup( void )
{
}
void zu___DebugPrintShutdown( void )
{
}

void zuDebugPrint( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    ZU_STRING *line = zuStringCreateFromFormatCstr( "%lc: %s", -1, zu___RuntimeVersionProductNameCstr(), zus );
    zu___DebugPrintSend( line );
    zuStringRelease( line );
}
static void debugPrintAndRelease( ZU_STRING *zus )
{
    zuDebugPrint( zus );
    zuStringRelease( zus );
}
void zuDebugPrintCstr( const char *cstr, ZU_INT length )
{
    debugPrintAndRelease( zuStringCreateFromCstr( cstr, length ) );
}
void zuDebugPrintWcstr( const char16_t *wcstr, ZU_INT length )
{
    debugPrintAndRelease( zuStringCreateFromWcstr( wcstr, length ) );
}
void zuDebugPrintFormat( ZU_STRING *format, ... )
{
    va_list args;
    va_start( args, format );
    zuDebugPrintFormatArgList( format, args );
    va_end( args );
}
void zuDebugPrintFormatArgList( ZU_STRING *format, va_list args )
{
    debugPrintAndRelease( zuStringCreateFromFormatArgList( format, args ) );
}
void zuDebugPrintFormatCstr( const char *format, ZU_INT length, ... )
{
    va_list args;
    va_start( args, length );
    zuDebugPrintFormatCstrArgList( format, length, args );
    va_end( args );
}
void zuDebugPrintFormatCstrArgList( const char *format, ZU_INT length, va_list args )
{
    debugPrintAndRelease( zuStringCreateFromFormatCstrArgList( format, length, args ) );
}
void zuDebugPrintFormatWcstr( const char16_t *format, ZU_INT length, ... )
{
    va_list args;
    va_start( args, length );
    zuDebugPrintFormatWcstrArgList( format, length, args );
    va_end( args );
}
void zuDebugPrintFormatWcstrArgList( const char16_t *format, ZU_INT length, va_list args )
{
    debugPrintAndRelease( zuStringCreateFromFormatWcstrArgList( format, length, args ) );
}

void zuDebugPrintLines( ZU_VECTOR *lines )
{
    ZU_ASSERT( lines );
    for ( ZU_INT i = 0; i < zuVectorLength( lines ); i++ ) {
        zuDebugPrintFormatCstr( "%~o", -1, zuVectorObjAt( lines, i ) );
    }
}
void zuDebugPrintStackTrace( void )
{
    ZU_STACK_TRACE *st = zuStackTraceCreate( 1, -1 );
    zuStackTracePrint( st );
    zuStackTraceRelease( st );
}
