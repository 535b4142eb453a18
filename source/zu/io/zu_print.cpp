// Each function makes one text and hands it to the print function in one call, since that is what is not torn apart by
// other threads: zuRuntimePrint lets one in at a time.  Lines of a vector and of a stack trace are a call each; a long
// one is no reason to keep all others waiting.

#include "zu/io/zu_print.h"

#include "zu/base/zu_string_format.h"
#include "zu/runtime/zu_runtime.h"

void zuPrint( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    zuRuntimePrint( zuStringBacking( zus ), zuStringLength( zus ) );
}
static void printAndRelease( ZU_STRING *zus )
{
    zuPrint( zus );
    zuStringRelease( zus );
}
void zuPrintCstr( const char *cstr, ZU_INT length )
{
    printAndRelease( zuStringCreateFromCstr( cstr, length ) );
}
void zuPrintWcstr( const char16_t *wcstr, ZU_INT length )
{
    printAndRelease( zuStringCreateFromWcstr( wcstr, length ) );
}
void zuPrintFormat( ZU_STRING *format, ... )
{
    va_list args;
    va_start( args, format );
    zuPrintFormatArgList( format, args );
    va_end( args );
}
void zuPrintFormatArgList( ZU_STRING *format, va_list args )
{
    printAndRelease( zuStringCreateFromFormatArgList( format, args ) );
}
void zuPrintFormatCstr( const char *format, ZU_INT length, ... )
{
    va_list args;
    va_start( args, length );
    zuPrintFormatCstrArgList( format, length, args );
    va_end( args );
}
void zuPrintFormatCstrArgList( const char *format, ZU_INT length, va_list args )
{
    printAndRelease( zuStringCreateFromFormatCstrArgList( format, length, args ) );
}
void zuPrintFormatWcstr( const char16_t *format, ZU_INT length, ... )
{
    va_list args;
    va_start( args, length );
    zuPrintFormatWcstrArgList( format, length, args );
    va_end( args );
}
void zuPrintFormatWcstrArgList( const char16_t *format, ZU_INT length, va_list args )
{
    printAndRelease( zuStringCreateFromFormatWcstrArgList( format, length, args ) );
}

void zuPrintLines( ZU_VECTOR *lines )
{
    ZU_ASSERT( lines );
    for ( ZU_INT i = 0; i < zuVectorLength( lines ); i++ ) {
        zuPrintFormatCstr( "%~o", -1, zuVectorObjAt( lines, i ) );
    }
}
void zuPrintStackTrace( void )
{
    ZU_STACK_TRACE *st = zuStackTraceCreate( 1, -1 );
    zuStackTracePrint( st );
    zuStackTraceRelease( st );
}
void zuStackTracePrint( ZU_STACK_TRACE *st )
{
    ZU_ASSERT( st );
    for ( ZU_INT i = 0; i < zuStackTraceLength( st ); i++ ) {
        printAndRelease( zuStackTraceAt( st, i ) );
    }
}
