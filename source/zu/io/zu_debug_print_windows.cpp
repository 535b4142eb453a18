#include "zu/io/zu_debug_print_internal.h"
#include "zu/sys/zu_mem.h"

#include <windows.h>

void zu___DebugPrintSend( ZU_STRING *text )
{
    char16_t *wide = zuStringConvertToWcstr( text, ZU_TRUE, nullptr );
    OutputDebugStringW( (const wchar_t *)wide );
    zuMemFree( wide );
}
