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

#include "zu/base/zu_stack_trace_memory_internal.h"

#include "backtrace/backtrace.h"

#include <cstdlib>
#include <cstring>

// A line's code is looked for back from an address this far at most, in bytes; lines have some ten.
static constexpr uintptr_t LINE_OFFSET_MAX = 4096;

// The state knows the files that were loaded when it was first asked.
static backtrace_state *engineState = nullptr;
static char *engineName = nullptr; // the name that the last search has made readable, from malloc

static void stackTraceIgnoreError( void *, const char *, int )
{
}

ZU_BOOL zu___StackTraceEngineStart( void )
{
    engineState = backtrace_create_state( nullptr, 0, stackTraceIgnoreError, nullptr );
    return engineState != nullptr;
}
void zu___StackTraceEngineStop( void )
{
    free( engineName );
    engineName = nullptr;
    engineState = nullptr;
    zu___StackTraceMemoryRelease();
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
static STACK_TRACE_LINE stackTraceFindLine( backtrace_state *state, uintptr_t address )
{
    STACK_TRACE_LINE line = {};
    backtrace_pcinfo( state, address, stackTraceTakeLine, stackTraceIgnoreError, &line );
    return line;
}
// Returns how many bytes ahead of `address`, `most` at most, belong to the same line without a break.
static uintptr_t stackTraceLineOffset( backtrace_state *state, uintptr_t address, const STACK_TRACE_LINE &line,
                                       uintptr_t most )
{
    uintptr_t offset = 0;
    while ( offset < most ) {
        STACK_TRACE_LINE ahead = stackTraceFindLine( state, address - offset - 1 );
        if ( !ahead.file || ahead.line != line.line || strcmp( ahead.file, line.file ) != 0 ) {
            break;
        }
        offset++;
    }
    return offset;
}
static void stackTraceFind( backtrace_state *state, uintptr_t address, ZU___STACK_TRACE_PLACE *place )
{
    // A call that never returns is the last of its function: what stands behind it belongs to another line or function.
    uintptr_t call = address - 1;
    STACK_TRACE_SYMBOL symbol = {};
    backtrace_syminfo( state, call, stackTraceTakeSymbol, stackTraceIgnoreError, &symbol );
    STACK_TRACE_LINE line = stackTraceFindLine( state, call );
    if ( symbol.name ) {
        place->symbol = symbol.name;
        place->symbolOffset = address - symbol.address;
    } else if ( line.function ) {
        place->symbol = line.function;
    }
    if ( line.file && line.line > 0 ) {
        uintptr_t inFunction = symbol.name ? call - symbol.address : LINE_OFFSET_MAX;
        place->file = line.file;
        place->line = (unsigned long)line.line;
        place->lineOffset =
            1 + stackTraceLineOffset( state, call, line, inFunction < LINE_OFFSET_MAX ? inFunction : LINE_OFFSET_MAX );
    }
}
void zu___StackTraceEngineFind( uintptr_t address, ZU___STACK_TRACE_PLACE *place )
{
    stackTraceFind( engineState, address, place );
    if ( place->symbol ) {
        place->symbol = stackTraceReadableName( place->symbol );
    }
}

// For the crash report.  What makes names readable takes its memory from the heap, and is left out.
static backtrace_state *reportState = nullptr;

ZU_BOOL zu___StackTraceReportStart( void )
{
    if ( !reportState ) {
        zu___StackTraceMemoryChoose( ZU_TRUE );
        reportState = backtrace_create_state( nullptr, 0, stackTraceIgnoreError, nullptr );
        zu___StackTraceMemoryChoose( ZU_FALSE );
    }
    return reportState != nullptr;
}
void zu___StackTraceReportFind( uintptr_t address, ZU___STACK_TRACE_PLACE *place )
{
    zu___StackTraceMemoryChoose( ZU_TRUE );
    stackTraceFind( reportState, address, place );
    zu___StackTraceMemoryChoose( ZU_FALSE );
}

#else

#include <link.h>

ZU_BOOL zu___StackTraceEngineStart( void )
{
    return ZU_TRUE;
}
void zu___StackTraceEngineStop( void )
{
}

// dladdr knows these names too, but waits for any loading of files to end: a trace by a thread that a constructor waits
// for would never return.  Walking the loaded files waits for an instant only.  The formats are those of the System V
// ABI (generic, chapter 5: dynamic section, symbol table, hash table) and of the GNU hash table.
struct STACK_TRACE_SYMBOLS {
    const ElfW( Sym ) * table;
    const char *names;
    const ElfW( Word ) * hash; // null: none
    const uint32_t *gnuHash;
};
struct STACK_TRACE_SEARCH {
    uintptr_t address;
    ZU___STACK_TRACE_PLACE *place;
};
static bool stackTraceHoldsAddress( const dl_phdr_info *info, uintptr_t address )
{
    for ( int i = 0; i < info->dlpi_phnum; i++ ) {
        const ElfW( Phdr ) &part = info->dlpi_phdr[ i ];
        if ( part.p_type == PT_LOAD && address - ( info->dlpi_addr + part.p_vaddr ) < part.p_memsz ) {
            return true;
        }
    }
    return false;
}
static STACK_TRACE_SYMBOLS stackTraceReadDynamic( uintptr_t base, const ElfW( Dyn ) * entry )
{
    STACK_TRACE_SYMBOLS symbols = {};
    for ( ; entry->d_tag != DT_NULL; entry++ ) {
        // The loader has made addresses of most offsets, but not in files that it may not write to.
        uintptr_t address = entry->d_un.d_ptr < base ? base + entry->d_un.d_ptr : entry->d_un.d_ptr;
        switch ( entry->d_tag ) {
        case DT_SYMTAB:
            symbols.table = (const ElfW( Sym ) *)address;
            break;
        case DT_STRTAB:
            symbols.names = (const char *)address;
            break;
        case DT_HASH:
            symbols.hash = (const ElfW( Word ) *)address;
            break;
        case DT_GNU_HASH:
            symbols.gnuHash = (const uint32_t *)address;
            break;
        default:
            break;
        }
    }
    return symbols;
}
// How many symbols there are.  The one table says so; in the other the last chain of the highest bucket ends there.
static size_t stackTraceCountSymbols( const STACK_TRACE_SYMBOLS &symbols )
{
    if ( symbols.hash || !symbols.gnuHash ) {
        return symbols.hash ? symbols.hash[ 1 ] : 0;
    }
    const uint32_t *header = symbols.gnuHash; // buckets, first symbol, words of the filter, its shift
    const uint32_t *buckets = header + 4 + header[ 2 ] * ( sizeof( ElfW( Addr ) ) / sizeof( uint32_t ) );
    const uint32_t *chains = buckets + header[ 0 ];
    uint32_t last = 0;
    for ( uint32_t i = 0; i < header[ 0 ]; i++ ) {
        last = buckets[ i ] > last ? buckets[ i ] : last;
    }
    if ( last < header[ 1 ] ) {
        return header[ 1 ];
    }
    while ( ( chains[ last - header[ 1 ] ] & 1 ) == 0 ) {
        last++;
    }
    return (size_t)last + 1;
}
static void stackTraceFindSymbol( const STACK_TRACE_SYMBOLS &symbols, uintptr_t base, STACK_TRACE_SEARCH *search )
{
    for ( size_t i = stackTraceCountSymbols( symbols ); i > 0; i-- ) {
        const ElfW( Sym ) &symbol = symbols.table[ i - 1 ];
        uintptr_t begin = base + symbol.st_value;
        if ( symbol.st_shndx != SHN_UNDEF && symbol.st_shndx != SHN_ABS && ELF64_ST_TYPE( symbol.st_info ) != STT_TLS &&
             search->address - begin < symbol.st_size ) {
            search->place->symbol = symbols.names + symbol.st_name;
            search->place->symbolOffset = search->address + 1 - begin;
        }
    }
}
static int stackTraceSearchFile( dl_phdr_info *info, size_t, void *argument )
{
    STACK_TRACE_SEARCH *search = (STACK_TRACE_SEARCH *)argument;
    if ( !stackTraceHoldsAddress( info, search->address ) ) {
        return 0;
    }
    for ( int i = 0; i < info->dlpi_phnum; i++ ) {
        if ( info->dlpi_phdr[ i ].p_type == PT_DYNAMIC ) {
            const ElfW( Dyn ) *entry = (const ElfW( Dyn ) *)( info->dlpi_addr + info->dlpi_phdr[ i ].p_vaddr );
            STACK_TRACE_SYMBOLS symbols = stackTraceReadDynamic( info->dlpi_addr, entry );
            if ( symbols.table && symbols.names ) {
                stackTraceFindSymbol( symbols, info->dlpi_addr, search );
            }
        }
    }
    return 1;
}
void zu___StackTraceEngineFind( uintptr_t address, ZU___STACK_TRACE_PLACE *place )
{
    // A call that never returns is the last of its function.
    STACK_TRACE_SEARCH search = { address - 1, place };
    dl_iterate_phdr( stackTraceSearchFile, &search );
}
ZU_BOOL zu___StackTraceReportStart( void )
{
    return ZU_TRUE;
}
void zu___StackTraceReportFind( uintptr_t address, ZU___STACK_TRACE_PLACE *place )
{
    zu___StackTraceEngineFind( address, place );
}

#endif
