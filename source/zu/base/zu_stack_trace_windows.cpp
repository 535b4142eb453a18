// The walk is that of the system's unwinder, by the tables that each file has of its functions; DbgHelp's own walk would
// have to be made under the lock of the symbol engine.  Names and lines come from DbgHelp, which keeps one engine a
// process: trace and crash report share it.

#include "zu/base/zu_stack_trace_windows_internal.h"

#include <dbghelp.h>

static constexpr size_t NAME_SIZE = 4008; // bytes of a symbol's name, terminator included

// Walk
bool zu___StackTraceUnwind( CONTEXT *registers, const ZU___STACK_TRACE_STACK *stack )
{
    if ( registers->Rsp < stack->lowest || registers->Rsp >= stack->end ) {
        return false;
    }
    DWORD64 image;
    RUNTIME_FUNCTION *function = RtlLookupFunctionEntry( registers->Rip, &image, nullptr );
    if ( function ) {
        void *data;
        DWORD64 frame;
        RtlVirtualUnwind( UNW_FLAG_NHANDLER, image, registers->Rip, function, registers, &data, &frame, nullptr );
    } else {
        // A function without an entry has not touched the stack; what is no code at all has neither.
        registers->Rip = *(const DWORD64 *)registers->Rsp;
        registers->Rsp += sizeof( DWORD64 );
    }
    return registers->Rip != 0;
}
// Not inlined, since its frame is counted.
__attribute__( ( noinline ) ) void zu___StackTraceWalk( ZU___STACK_TRACE_FRAME_FUNC func, void *closure )
{
    ZU___STACK_TRACE_STACK stack;
    GetCurrentThreadStackLimits( &stack.lowest, &stack.end );
    CONTEXT registers;
    RtlCaptureContext( &registers );
    while ( zu___StackTraceUnwind( &registers, &stack ) && func( registers.Rip, closure ) ) {}
}

// Symbols
static bool engineUp = false;
static struct {
    SYMBOL_INFO symbol;
    char room[ NAME_SIZE ]; // behind the beginning of the name
} engineSymbol;

static bool stackTraceInitialize()
{
    SymSetOptions( SYMOPT_LOAD_LINES | SYMOPT_UNDNAME | SYMOPT_DEFERRED_LOADS );
    engineUp = SymInitialize( GetCurrentProcess(), nullptr, TRUE );
    return engineUp;
}
ZU_BOOL zu___StackTraceEngineStart( void )
{
    return engineUp ? SymRefreshModuleList( GetCurrentProcess() ) : stackTraceInitialize();
}
void zu___StackTraceEngineStop( void )
{
    SymCleanup( GetCurrentProcess() );
    engineUp = false;
}
void zu___StackTraceEngineFind( uintptr_t address, ZU___STACK_TRACE_PLACE *place )
{
    // A call that never returns is the last of its function: what stands behind it belongs to another line or function.
    uintptr_t call = address - 1;
    DWORD64 symbolOffset;
    engineSymbol.symbol.SizeOfStruct = sizeof( SYMBOL_INFO );
    engineSymbol.symbol.MaxNameLen = NAME_SIZE;
    if ( SymFromAddr( GetCurrentProcess(), call, &symbolOffset, &engineSymbol.symbol ) ) {
        place->symbol = engineSymbol.symbol.Name;
        place->symbolOffset = symbolOffset + 1;
    }
    DWORD lineOffset;
    IMAGEHLP_LINE64 line = {};
    line.SizeOfStruct = sizeof line;
    if ( SymGetLineFromAddr64( GetCurrentProcess(), call, &lineOffset, &line ) ) {
        place->file = line.FileName;
        place->line = line.LineNumber;
        place->lineOffset = lineOffset + 1;
    }
}

// For the crash report
ZU_BOOL zu___StackTraceReportStart( void )
{
    return engineUp || stackTraceInitialize();
}
void zu___StackTraceReportFind( uintptr_t address, ZU___STACK_TRACE_PLACE *place )
{
    zu___StackTraceEngineFind( address, place );
}
