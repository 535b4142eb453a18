#include "zu/io/zu_env.h"

#include "zu/sys/zu_mem.h"

#include <cstdlib>

ZU_STRING *zuGetEnv( ZU_STRING *variable )
{
    ZU_ASSERT( variable );
    char *name = zuStringConvertToCstr( variable, ZU_TRUE, nullptr );
    const char *value = getenv( name );
    zuMemFree( name );
    return value ? zuStringCreateFromCstr( value, -1 ) : nullptr;
}
ZU_STRING *zuGetEnvCstr( const char *cstr, ZU_INT length )
{
    ZU_ASSERT( cstr );
    ZU_STRING *variable = zuStringCreateFromCstr( cstr, length );
    ZU_STRING *value = zuGetEnv( variable );
    zuStringRelease( variable );
    return value;
}
