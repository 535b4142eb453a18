// The module "area", which computes.
#include "figures.h"

#include <string.h>

ZU___MODULE_DECLARE( area )

static void *areaRun( void *argument1, void *argument2 )
{
    const FIGURE_REQUEST *request = (const FIGURE_REQUEST *)argument1;
    (void)argument2;
    double area = (double)( request->size * request->size );
    if ( strcmp( request->name, "circle" ) == 0 ) {
        area *= 3.141592653589793 / 4;
    }
    return zuStringCreateFromFormatCstr( "%.2r", -1, area );
}
ZU___MODULE_DEFINE( area, ZU___MODULE_ANY_PRODUCT, "Areas of figures", "1.0", "", "", "any product", NULL, NULL, NULL,
                    NULL, areaRun )
