// A program with two loadable modules: it knows one by name, which brings the other along.
#include "figures.h"

#include <stdio.h>

static void printLine( ZU_STRING *line )
{
    char *utf8 = zuStringConvertToUtf8( line, ZU_TRUE, NULL );
    puts( utf8 );
    zuMemFree( utf8 );
    zuStringRelease( line );
}
int main( void )
{
    zuRuntimeStartup( 0, -1, NULL, "figures", "Figures", "1.0" );
    if ( !zuRuntimeTryLoadModulesCstr( "prose", -1 ) ) {
        fputs( "The module \"prose\" cannot be loaded.\n", stderr );
        return 1;
    }
    ZU_VECTOR *modules = zuRuntimeModulesVector();
    for ( ZU_INT i = 1; i < zuVectorLength( modules ); i++ ) { // the first is the library's own
        ZU_MODULE *module = zuModuleFrom( zuVectorBacking( modules )[ i ] );
        // "%~o" prints the version and releases it.
        printLine( zuStringCreateFromFormatCstr( "%~s %~o: %~s", -1, zuModuleName( module ), zuModuleVersion( module ),
                                                 zuModuleDescription( module ) ) );
    }
    ZU_STRING *name = zuStringCreateFromAscii( "prose", -1 );
    ZU_MODULE *prose = zuRuntimeModule( name );
    FIGURE_REQUEST requests[] = { { "square", 3 }, { "circle", 2 } };
    for ( int i = 0; i < 2; i++ ) {
        printLine( (ZU_STRING *)zuModuleRunPersonality( prose, &requests[ i ], NULL ) );
    }
    zuStringRelease( name );
    zuVectorRelease( modules );
    return (int)zuRuntimeShutdown();
}
