// The module "prose", which makes sentences of what the module "area" computes.  That it depends on it has the library load
// it first.
#include "figures.h"

ZU___MODULE_DECLARE( prose )

static void *proseRun( void *argument1, void *argument2 )
{
    const FIGURE_REQUEST *request = (const FIGURE_REQUEST *)argument1;
    ZU_STRING *name = zuStringCreateFromAscii( "area", -1 );
    ZU_STRING *area = (ZU_STRING *)zuModuleRunPersonality( zuRuntimeModule( name ), argument1, argument2 );
    zuStringRelease( name );
    return zuStringCreateFromFormatCstr( "A %lc of %i has an area of %~s.", -1, request->name, request->size, area );
}
ZU___MODULE_DEFINE( prose, ZU___MODULE_ANY_PRODUCT, "Sentences on figures", "1.0", "area", "", "any product", NULL,
                    NULL, NULL, NULL, proseRun )
