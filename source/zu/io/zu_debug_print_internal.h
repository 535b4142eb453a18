// zu_debug_print_internal.h: what a platform must provide for debug print.
#pragma once

#include "zu/base/zu_string.h"

ZU_BEGIN_DECLS

// Hands `text` to the channel on which developers read, as it is.  Where nobody listens it is lost; nothing is
// reported.
void zu___DebugPrintSend( ZU_STRING *text );

ZU_END_DECLS
