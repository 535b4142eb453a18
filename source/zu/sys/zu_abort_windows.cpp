// An exception that nobody handles comes to the filter of the process, on the stack of its thread.  Where that stack is
// what has come to an end, a thread made for it reports instead; each thread that the library has to do with keeps as much
// of its stack back as that takes.  A failed check needs no exception of its own: the registers are there to be captured,
// and no handler of the program gets in between.

#include "zu/sys/zu_abort_windows_internal.h"

#include "zu/base/zu_stack_trace_windows_internal.h"

#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <io.h>
#include <process.h>
#include <share.h>
#include <sys/stat.h>

static constexpr ULONG STACK_GUARANTEE = 16 * 1024; // bytes, to get from the end of a stack to another one
static constexpr size_t LINE_SIZE = 4096;           // of text, without the line's end

static constexpr DWORD WATCH_STEP = 50;               // milliseconds from one look at the reporting thread to the next
static constexpr uint64_t TICKS_PER_MILLISEC = 10000; // of the system's times

static constexpr int ABORT_STATUS = 3; // of a process that ends by abort()

static LPTOP_LEVEL_EXCEPTION_FILTER previousFilter = nullptr; // before start-up
static bool filterSet = false;
static EXCEPTION_POINTERS *asked = nullptr; // what the previous filter looks at; atomic

// For the thread that reports
static EXCEPTION_RECORD checkRecord; // of a failed check
static CONTEXT checkRegisters;       // likewise, where it was found
static HANDLE watched = nullptr;     // the thread, for its watchdog
static DWORD patience;               // of that one, in milliseconds; may grow

// A thread that has come to the end of its stack, and the one that reports in its place; 0: none
static DWORD overflowed = 0;
static DWORD substitute = 0;
static ZU___STACK_TRACE_STACK overflowedStack;

uint32_t zu___AbortThreadIdentifier( void )
{
    DWORD self = GetCurrentThreadId();
    return self == substitute ? overflowed : self;
}
// Threads are not cancelled here.
void zu___AbortHoldThread( void )
{
}
void zu___AbortPrepareThread( void )
{
    ULONG guarantee = 0; // asks
    if ( SetThreadStackGuarantee( &guarantee ) && guarantee < STACK_GUARANTEE ) {
        guarantee = STACK_GUARANTEE;
        SetThreadStackGuarantee( &guarantee );
    }
}

// Exceptions
static void abortClassify( ZU___ABORT_EXCEPTION *exception, const EXCEPTION_RECORD *record )
{
    *exception = {};
    exception->code = record->ExceptionCode;
    switch ( record->ExceptionCode ) {
    case EXCEPTION_ACCESS_VIOLATION:
        exception->fault = ZU___ABORT_FAULT_ACCESS_VIOLATION;
        break;
    case EXCEPTION_INT_DIVIDE_BY_ZERO:
        exception->fault = ZU___ABORT_FAULT_INT_DIVIDE_BY_ZERO;
        break;
    case EXCEPTION_STACK_OVERFLOW:
        exception->fault = ZU___ABORT_FAULT_STACK_OVERFLOW;
        break;
    default:
        exception->fault = ZU___ABORT_FAULT_OTHER;
        break;
    }
    int count = (int)record->NumberParameters;
    exception->parameterCount = count < ZU___ABORT_PARAMETERS_MAX ? count : ZU___ABORT_PARAMETERS_MAX;
    for ( int i = 0; i < exception->parameterCount; i++ ) {
        exception->parameters[ i ] = record->ExceptionInformation[ i ];
    }
}
ZU_NORETURN static void abortReport( EXCEPTION_POINTERS *pointers )
{
    ZU___ABORT_EXCEPTION exception;
    abortClassify( &exception, pointers->ExceptionRecord );
    ZU___ABORT_CONTEXT context = { (uintptr_t)pointers->ContextRecord->Rip, ZU_TRUE, pointers->ContextRecord,
                                   pointers->ExceptionRecord };
    zu___AbortEnter( nullptr, &exception, &context );
    zu___AbortLeave();
}
static DWORD WINAPI abortReportInPlace( void *pointers )
{
    abortReport( (EXCEPTION_POINTERS *)pointers );
}
static void abortReportOverflow( EXCEPTION_POINTERS *pointers )
{
    DWORD none = 0;
    if ( !__atomic_compare_exchange_n( &overflowed, &none, GetCurrentThreadId(), false, __ATOMIC_RELAXED,
                                       __ATOMIC_RELAXED ) ) {
        return; // one such thread at a time; this one comes second in any case
    }
    GetCurrentThreadStackLimits( &overflowedStack.lowest, &overflowedStack.end );
    HANDLE thread = CreateThread( nullptr, 0, abortReportInPlace, pointers, CREATE_SUSPENDED, &substitute );
    if ( thread ) {
        ResumeThread( thread );
        WaitForSingleObject( thread, INFINITE );
    }
}
static LONG WINAPI abortFilter( EXCEPTION_POINTERS *pointers )
{
    DWORD code = pointers->ExceptionRecord->ExceptionCode;
    bool always =
        code == EXCEPTION_ACCESS_VIOLATION || code == EXCEPTION_INT_DIVIDE_BY_ZERO || code == EXCEPTION_STACK_OVERFLOW;
    // A filter that has found this one, when the library ran before, hands on to it: then nobody is left to ask.
    if ( !always && previousFilter && __atomic_exchange_n( &asked, pointers, __ATOMIC_RELAXED ) != pointers ) {
        LONG result = previousFilter( pointers );
        __atomic_store_n( &asked, nullptr, __ATOMIC_RELAXED );
        if ( result != EXCEPTION_CONTINUE_SEARCH ) {
            return result;
        }
    }
    if ( code == EXCEPTION_STACK_OVERFLOW ) {
        abortReportOverflow( pointers );
    }
    abortReport( pointers );
}
void zu___AbortPlatformStartup( ZU_BOOL handlers )
{
    zu___AbortDumpStartup();
    if ( handlers ) {
        LPTOP_LEVEL_EXCEPTION_FILTER previous = SetUnhandledExceptionFilter( abortFilter );
        // Whoever has come later than an earlier start-up may have left again since, and given back what was there.
        previousFilter = previous == abortFilter ? nullptr : previous;
        filterSet = true;
    }
}
void zu___AbortPlatformShutdown( void )
{
    if ( filterSet ) {
        LPTOP_LEVEL_EXCEPTION_FILTER now = SetUnhandledExceptionFilter( previousFilter );
        if ( now != abortFilter ) {
            SetUnhandledExceptionFilter( now ); // whoever has come later stays
        }
    }
    previousFilter = nullptr;
    filterSet = false;
}

// The thread that reports
static uint64_t abortProcessorTime()
{
    FILETIME creation, end, kernel, user;
    if ( !watched || !GetThreadTimes( watched, &creation, &end, &kernel, &user ) ) {
        return 0;
    }
    uint64_t ticks = ( (uint64_t)kernel.dwHighDateTime << 32 | kernel.dwLowDateTime ) +
                     ( (uint64_t)user.dwHighDateTime << 32 | user.dwLowDateTime );
    return ticks / TICKS_PER_MILLISEC;
}
static DWORD WINAPI abortWatchAgain( void * )
{
    Sleep( __atomic_load_n( &patience, __ATOMIC_RELAXED ) );
    zu___AbortGiveUp();
}
static void abortStartThread( LPTHREAD_START_ROUTINE function )
{
    HANDLE thread = CreateThread( nullptr, 0, function, nullptr, 0, nullptr );
    if ( thread ) {
        CloseHandle( thread );
    }
}
// How long the thread has waited for a processor the system does not tell: what counts is the time that it has had of
// one, and for how long it has had nothing.
static DWORD WINAPI abortWatch( void * )
{
    uint64_t begin = abortProcessorTime();
    uint64_t used = begin;
    DWORD idle = 0;
    DWORD limit;
    do {
        Sleep( WATCH_STEP );
        uint64_t now = abortProcessorTime();
        idle = now == used ? idle + WATCH_STEP : 0;
        used = now;
        limit = __atomic_load_n( &patience, __ATOMIC_RELAXED );
    } while ( used - begin < limit && idle < limit );
    abortStartThread( abortWatchAgain );
    if ( watched ) {
        SuspendThread( watched );
    }
    zu___AbortGiveUp();
}
void zu___AbortBegin( const ZU___ABORT_CONTEXT *, ZU_INT millisec )
{
    SetUnhandledExceptionFilter( abortFilter );
    patience = (DWORD)millisec;
    DuplicateHandle( GetCurrentProcess(), GetCurrentThread(), GetCurrentProcess(), &watched, 0, FALSE,
                     DUPLICATE_SAME_ACCESS );
    abortStartThread( abortWatch );
}
void zu___AbortLimit( DWORD millisec )
{
    __atomic_store_n( &patience, millisec, __ATOMIC_RELAXED );
}
void zu___AbortSleep( void )
{
    for ( ;; ) {
        Sleep( INFINITE );
    }
}
// As abort() does it, but without a message and a report of the system's own: the oldest of the C runtimes cannot be told
// to leave them out.
void zu___AbortEnd( void )
{
    raise( SIGABRT );
    _exit( ABORT_STATUS );
}
void zu___AbortLocalTime( ZU___TIME_FIELDS *fields )
{
    SYSTEMTIME now;
    GetLocalTime( &now );
    *fields = { now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond };
}

// Walk
void zu___AbortException( const ZU___ABORT_CONTEXT *context, EXCEPTION_POINTERS *exception )
{
    if ( context->registers ) {
        *exception = { (EXCEPTION_RECORD *)context->information, (CONTEXT *)context->registers };
        return;
    }
    if ( checkRegisters.Rip != context->begin ) {
        RtlCaptureContext( &checkRegisters ); // the walk has not come by there
    }
    checkRecord.ExceptionCode = ZU___ABORT_EXCEPTION_CODE;
    checkRecord.ExceptionAddress = (void *)context->begin;
    *exception = { &checkRecord, &checkRegisters };
}
// What is ahead of the failed check belongs to the report.
static bool abortFindCheck( CONTEXT *registers, const ZU___STACK_TRACE_STACK *stack, uintptr_t begin )
{
    RtlCaptureContext( registers );
    while ( zu___StackTraceUnwind( registers, stack ) ) {
        if ( registers->Rip == begin ) {
            checkRegisters = *registers;
            return true;
        }
    }
    return false;
}
void zu___AbortWalk( const ZU___ABORT_CONTEXT *context, ZU___ABORT_FRAME_FUNC func, void *closure )
{
    ZU___STACK_TRACE_STACK stack = overflowedStack;
    if ( GetCurrentThreadId() != substitute ) {
        GetCurrentThreadStackLimits( &stack.lowest, &stack.end );
    }
    CONTEXT registers;
    if ( context->registers ) {
        registers = *(const CONTEXT *)context->registers;
    } else if ( !abortFindCheck( &registers, &stack, context->begin ) ) {
        func( context->begin, closure );
        return;
    }
    while ( func( registers.Rip, closure ) && zu___StackTraceUnwind( &registers, &stack ) ) {}
}

// Error stream, as the C runtime has it; who has redirected that means the report too.
void zu___AbortWriteError( const char *text, size_t length )
{
    while ( length > 0 ) {
        int written = _get_osfhandle( 2 ) > 0 ? _write( 2, text, (unsigned)length ) : -1;
        if ( written <= 0 ) {
            return;
        }
        text += written;
        length -= (size_t)written;
    }
}
void zu___AbortWriteDebugger( const char *text, size_t length )
{
    static char line[ LINE_SIZE + 2 ];
    length = length < LINE_SIZE ? length : LINE_SIZE;
    memcpy( line, text, length );
    line[ length ] = '\n';
    line[ length + 1 ] = 0;
    OutputDebugStringA( line );
}

// Report file, with the line ends of the system
struct ZU___ABORT_FILE {
    int file;
};
static ZU___ABORT_FILE reportFile;

ZU___ABORT_FILE *zu___AbortFileTryCreate( const char *name )
{
    int file = -1;
    if ( _sopen_s( &file, name, _O_WRONLY | _O_CREAT | _O_EXCL | _O_TEXT | _O_NOINHERIT, _SH_DENYWR,
                   _S_IREAD | _S_IWRITE ) != 0 ) {
        return nullptr;
    }
    reportFile.file = file;
    return &reportFile;
}
void zu___AbortFileWrite( ZU___ABORT_FILE *file, const char *text, size_t length )
{
    while ( length > 0 ) {
        int written = _write( file->file, text, (unsigned)length );
        if ( written <= 0 ) {
            return;
        }
        text += written;
        length -= (size_t)written;
    }
}
void zu___AbortFileClose( ZU___ABORT_FILE *file )
{
    _close( file->file );
}
void zu___AbortFlushStreams( const ZU___ABORT_CONTEXT * )
{
    // The locks of the streams may be taken by their own thread again; another's that hangs is the watchdog's.
    fflush( stdout );
    fflush( stderr );
}

// Debugger
ZU_BOOL zu___AbortDebuggerPresent( void )
{
    return IsDebuggerPresent() != FALSE;
}
void zu___AbortBreak( void )
{
    zu___AbortLimit( INFINITE );
    DebugBreak();
}
