// zu_abort_windows_internal.h: what the files of the failure path for Windows need of each other.
#pragma once

#include "zu/sys/zu_abort_internal.h"

#include <windows.h>

ZU_BEGIN_DECLS

// The code by which the dump tells a failed check from exceptions of the system.
#define ZU___ABORT_EXCEPTION_CODE UINT32_C( 0x52515441 )

// Stores what the dump tells of: the caller's exception, or one of the library with the registers at the failed check.
void zu___AbortException( const ZU___ABORT_CONTEXT *context, EXCEPTION_POINTERS *exception );

// Sets after how long a report is given up, from its beginning.
void zu___AbortLimit( DWORD millisec );

// Reads which dump the machine is set to have.
void zu___AbortDumpStartup( void );

ZU_END_DECLS
