// The shortest program that does something: a text made by a format, extended, and printed as UTF-8.
#include "zu/zu.h"
#include <stdio.h>

int main( void )
{
    zuRuntimeStartup( 0, -1, NULL, "first", "First steps", "1.0" );
    ZU_STRING *name = zuStringCreateFromUtf8( "κόσμε", -1 );
    ZU_STRING *text = zuStringCreateFromFormatCstr( "Hello, %s! That is %i letters", -1, name, zuStringLength( name ) );
    ZU_STRING *copy = zuStringRetain( text ); // retaining is copying: changing one leaves the other alone
    zuStringAppendFormatCstr( &text, ", or %!2i in binary.", -1, zuStringLength( name ) );
    char *utf8 = zuStringConvertToUtf8( text, ZU_TRUE, NULL );
    printf( "%s (%lld more than before)\n", utf8, (long long)( zuStringLength( text ) - zuStringLength( copy ) ) );
    zuMemFree( utf8 );
    zuStringRelease( copy );
    zuStringRelease( text );
    zuStringRelease( name );
    return (int)zuRuntimeShutdown();
}
