// The walk is that of the compiler's unwinder.  Names, files and lines come from the compiler's libbacktrace; a build
// without it knows the names that files export.

#include "zu/base/zu_stack_trace_internal.h"

#include <unwind.h>

// Walk
struct STACK_TRACE_UNWIND {
    ZU___STACK_TRACE_FRAME_FUNC func;
    void *closure;
    bool first; // the frame of zu___StackTraceWalk itself
};
static _Unwind_Reason_Code stackTraceUnwindFrame( struct _Unwind_Context *context, void *argument )
{
    STACK_TRACE_UNWIND *unwind = (STACK_TRACE_UNWIND *)argument;
    if ( unwind->first ) {
        unwind->first = false;
        return _URC_NO_REASON;
    }
    uintptr_t address = _Unwind_GetIP( context );
    return address && unwind->func( address, unwind->closure ) ? _URC_NO_REASON : _URC_END_OF_STACK;
}
// Not inlined, since its frame is counted.
__attribute__( ( noinline ) ) void zu___StackTraceWalk( ZU___STACK_TRACE_FRAME_FUNC func, void *closure )
{
    STACK_TRACE_UNWIND unwind = { func, closure, true };
    _Unwind_Backtrace( stackTraceUnwindFrame, &unwind );
}

#ifdef ZU___WITH_BACKTRACE

#include "backtrace/backtrace.h"

#include <cstdlib>
#include <cstring>
#include <link.h>

// A line's code is looked for back from an address this far at most, in bytes; lines have some ten.
static constexpr uintptr_t LINE_OFFSET_MAX = 4096;

// What the process has loaded at a time: how many files have come and gone up to then.
struct STACK_TRACE_FILES {
    unsigned long long added;
    unsigned long long removed;
};
// The state knows the files that were loaded when it was made, and cannot be given back.  So it is kept when the engine
// stops, and made anew only if files have come or gone since: however often the library starts and stops, there are no
// more states than there were changes.
static backtrace_state *engineState = nullptr;
static STACK_TRACE_FILES engineFiles;
static char *engineName = nullptr; // the name that the last search has made readable, from malloc

static int stackTraceReadFiles( struct dl_phdr_info *info, size_t, void *argument )
{
    *(STACK_TRACE_FILES *)argument = { info->dlpi_adds, info->dlpi_subs };
    return 1; // the counts are the same with every file
}
static void stackTraceIgnoreError( void *, const char *, int )
{
}

ZU_BOOL zu___StackTraceEngineStart( void )
{
    STACK_TRACE_FILES files = {};
    dl_iterate_phdr( stackTraceReadFiles, &files );
    if ( !engineState || files.added != engineFiles.added || files.removed != engineFiles.removed ) {
        engineState = backtrace_create_state( nullptr, 0, stackTraceIgnoreError, nullptr );
        engineFiles = files;
    }
    return engineState != nullptr;
}
void zu___StackTraceEngineStop( void )
{
    free( engineName );
    engineName = nullptr;
}

// Part of the C++ runtime, which is there if the program or one of its libraries needs it.
extern "C" char *__cxa_demangle( const char *mangledName, char *buffer, size_t *length, int *status )
    __attribute__( ( weak ) );

static const char *stackTraceReadableName( const char *symbol )
{
    free( engineName );
    engineName = nullptr;
    if ( strncmp( symbol, "_Z", 2 ) == 0 && &__cxa_demangle ) {
        int status = 0;
        engineName = __cxa_demangle( symbol, nullptr, nullptr, &status );
    }
    return engineName ? engineName : symbol;
}

struct STACK_TRACE_SYMBOL {
    const char *name;
    uintptr_t address;
};
static void stackTraceTakeSymbol( void *argument, uintptr_t, const char *name, uintptr_t address, uintptr_t )
{
    if ( name ) {
        *(STACK_TRACE_SYMBOL *)argument = { name, address };
    }
}
// Called for each of the functions that are inlined at an address, from the innermost on.  The last call is for the
// function that the symbol names, and the only one that counts.
struct STACK_TRACE_LINE {
    const char *file;
    int line;
    const char *function;
};
static int stackTraceTakeLine( void *argument, uintptr_t, const char *file, int line, const char *function )
{
    *(STACK_TRACE_LINE *)argument = { file, line, function };
    return 0;
}
static STACK_TRACE_LINE stackTraceFindLine( uintptr_t address )
{
    STACK_TRACE_LINE line = {};
    backtrace_pcinfo( engineState, address, stackTraceTakeLine, stackTraceIgnoreError, &line );
    return line;
}
// Returns how many bytes ahead of `address`, `most` at most, belong to the same line without a break.
static uintptr_t stackTraceLineOffset( uintptr_t address, const STACK_TRACE_LINE &line, uintptr_t most )
{
    uintptr_t offset = 0;
    while ( offset < most ) {
        STACK_TRACE_LINE ahead = stackTraceFindLine( address - offset - 1 );
        if ( !ahead.file || ahead.line != line.line || strcmp( ahead.file, line.file ) != 0 ) {
            break;
        }
        offset++;
    }
    return offset;
}

void zu___StackTraceEngineFind( uintptr_t address, ZU___STACK_TRACE_PLACE *place )
{
    // A call that never returns is the last of its function: what stands behind it belongs to another line or function.
    uintptr_t call = address - 1;
    STACK_TRACE_SYMBOL symbol = {};
    backtrace_syminfo( engineState, call, stackTraceTakeSymbol, stackTraceIgnoreError, &symbol );
    STACK_TRACE_LINE line = stackTraceFindLine( call );
    if ( symbol.name ) {
        place->symbol = stackTraceReadableName( symbol.name );
        place->symbolOffset = address - symbol.address;
    } else if ( line.function ) {
        place->symbol = stackTraceReadableName( line.function );
    }
    if ( line.file && line.line > 0 ) {
        uintptr_t inFunction = symbol.name ? call - symbol.address : LINE_OFFSET_MAX;
        place->file = line.file;
        place->line = (unsigned long)line.line;
        place->lineOffset =
            1 + stackTraceLineOffset( call, line, inFunction < LINE_OFFSET_MAX ? inFunction : LINE_OFFSET_MAX );
    }
}

#else

#include <dlfcn.h>

ZU_BOOL zu___StackTraceEngineStart( void )
{
    return ZU_TRUE;
}
void zu___StackTraceEngineStop( void )
{
}
void zu___StackTraceEngineFind( uintptr_t address, ZU___STACK_TRACE_PLACE *place )
{
    Dl_info info;
    if ( dladdr( (void *)( address - 1 ), &info ) && info.dli_sname ) {
        place->symbol = info.dli_sname;
        place->symbolOffset = address - (uintptr_t)info.dli_saddr;
    }
}

#endif
