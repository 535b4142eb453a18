// A race that the tools must see by way of the library's twins: two threads change one string, with nothing between them.
#include "zu/zu.h"
static ZU_SIGNAL *ready;
static ZU_STRING *text;

static void extend( void )
{
    zuSignalAssert( ready );
    zuStringAppendChar( &text, 'x' );
}

int main( void )
{
    zuRuntimeStartup( 0, -1, NULL, "race", "Race", "1.0" );
    ready = zuSignalCreate();
    text = zuStringCreateFromAscii( "abc", -1 );
    ZU_THREAD *thread = zuThreadTrySpawnCstr( "other", -1, extend, NULL, ZU_THREAD_PRIORITY_NORMAL );
    zuSignalWait( ready );
    zuStringAppendChar( &text, 'y' );
    zuThreadJoin( thread );
    zuThreadRelease( thread );
    zuStringRelease( text );
    zuSignalRelease( ready );
    return (int)zuRuntimeShutdown();
}
