// zu_stack_trace_windows_internal.h: the steps of a walk, for the crash report.
#pragma once

#include "zu/base/zu_stack_trace_internal.h"

#include <windows.h>

ZU_BEGIN_DECLS

// A thread's stack
typedef struct ZU___STACK_TRACE_STACK {
    ULONG_PTR lowest;
    ULONG_PTR end;
} ZU___STACK_TRACE_STACK;

// Makes of the registers in a function those in its caller, where that goes on; false at the end of the stack.
bool zu___StackTraceUnwind( CONTEXT *registers, const ZU___STACK_TRACE_STACK *stack );

ZU_END_DECLS
