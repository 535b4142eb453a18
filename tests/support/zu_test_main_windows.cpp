#include "zu/base/zu_stack_trace_internal.h"
#include "zu_test_platform.h"

#include <windows.h>

#include <dbghelp.h>

// Such a process reads no symbols: behind the library's back its engine is taken down, and all stacks are addresses.
void prepareReports()
{
    if ( getenv( ABORT_NUMBER ) && zu___StackTraceReportStart() ) {
        SymCleanup( GetCurrentProcess() );
    }
}
