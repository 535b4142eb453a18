#include "zu/base/zu_stack_trace_internal.h"
#include "zu_test_platform.h"

// The children inherit what their reports need to read, instead of reading it again.
void prepareReports()
{
    ZU___STACK_TRACE_PLACE place;
    zu___StackTraceReportStart();
    zu___StackTraceReportFind( (uintptr_t)zu___StackTraceReportFind + 1, &place );
}
