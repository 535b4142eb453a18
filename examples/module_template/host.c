// A program that loads the module "greeting" and lets it greet.
//
// With ZU_RUNTIME_FLAG_MODULE_DEBUG among the flags, and a print function, it would tell why a module is not loaded.
#include "zu/zu.h"

#include <stdio.h>

int main( void )
{
    zuRuntimeStartup( 0, -1, NULL, "host", "Loads a module", "1.0" );
    if ( !zuRuntimeTryLoadModulesCstr( "greeting", -1 ) ) {
        fputs( "The module \"greeting\" cannot be loaded.\n", stderr );
        return 1;
    }
    ZU_STRING *moduleName = zuStringCreateFromAscii( "greeting", -1 );
    ZU_STRING *name = zuStringCreateFromAscii( "world", -1 );
    ZU_OBJ *greeting = (ZU_OBJ *)zuModuleRunPersonality( zuRuntimeModule( moduleName ), name, NULL );
    ZU_STRING *text = zuObjToString( greeting );
    char *utf8 = zuStringConvertToUtf8( text, ZU_TRUE, NULL );
    puts( utf8 );

    zuMemFree( utf8 );
    zuStringRelease( text );
    zuObjRelease( greeting ); // the module cannot go before
    zuStringRelease( name );
    zuStringRelease( moduleName );
    return (int)zuRuntimeShutdown();
}
