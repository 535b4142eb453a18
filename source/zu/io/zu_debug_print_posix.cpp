#include "zu/io/zu_debug_print_internal.h"
#include "zu/sys/zu_mem.h"

#include <syslog.h>

// The log is not opened here: its identity, options and facility are the program's.
void zu___DebugPrintSend( ZU_STRING *text )
{
    char *cstr = zuStringConvertToCstr( text, ZU_TRUE, nullptr );
    syslog( LOG_DEBUG, "%s", cstr );
    zuMemFree( cstr );
}
