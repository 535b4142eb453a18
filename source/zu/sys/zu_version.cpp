#include "zu/sys/zu_version.h"

ZU_INT zuVersionNumber( void )
{
    return ZU_VERSION_NUMBER;
}
const char *zuVersion( void )
{
    return ZU_VERSION;
}
