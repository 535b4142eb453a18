// Faults come as signals.  Their handler runs on a stack of its own, since the end of the thread's may be what they
// tell of; each thread that the library has to do with gets one for the rest of its life.
//
// The process ends by the signal that was its cause, with the system's action for it and its original information, so
// that core files, supervisors and shells see what they would see without the library.

#include "zu/base/zu_stack_trace_internal.h"
#include "zu/sys/zu_abort_posix_internal.h"
#include "zu/sys/zu_happens_internal.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <pthread.h>
#include <sys/auxv.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <ucontext.h>
#include <unistd.h>

// Of the program's abort() too: the C library calls it when it finds the heap destroyed.
static constexpr int SIGNALS[] = { SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGABRT };
static constexpr size_t SIGNAL_COUNT = sizeof SIGNALS / sizeof SIGNALS[ 0 ];

static struct sigaction previousActions[ SIGNAL_COUNT ]; // before start-up, in the order of SIGNALS
static bool handlersSet = false;

// For the thread that reports
static ZU___ABORT_CONTEXT reportContext;
static bool timerSet = false;
static timer_t timer;

const char *zu___AbortProgramName( void )
{
    return program_invocation_short_name;
}
uint32_t zu___AbortThreadIdentifier( void )
{
    return (uint32_t)syscall( SYS_gettid );
}
// A thread that somebody has cancelled would end in the first call that may wait, a write for instance: without a report,
// and with its process alive.  POSIX has this call on its list for signal handlers since 2024; the C library's has always
// been one for them.
void zu___AbortHoldThread( void )
{
    pthread_setcancelstate( PTHREAD_CANCEL_DISABLE, nullptr );
}

// Stacks of threads
//
// The record of a thread lies at the upper end of its second stack, away from where that grows to, and lives as long as
// the thread: encapsulations are begun too often to take memory from the system for each.
static constexpr size_t HANDLER_STACK_SIZE = 64 * 1024; // the symbol engine takes up to 20 KiB of it

struct ABORT_THREAD_STACK {
    size_t mapped;    // bytes from the beginning of the second stack's memory to the end of this record
    stack_t previous; // what the thread had for its handlers
};
static thread_local ABORT_THREAD_STACK *threadStack __attribute__( ( tls_model( "initial-exec" ) ) ) = nullptr;
static pthread_key_t threadStackKey; // for its end: the value is the record
static bool threadStackKeyMade = false;

static size_t abortRoundUp( size_t size, size_t grain )
{
    return ( size + grain - 1 ) / grain * grain;
}
// Stacks of threads that have ended, for those that come: making and unmaking one takes half as long as a thread.
static constexpr size_t SPARE_STACKS = 8;
static ABORT_THREAD_STACK *spareStacks[ SPARE_STACKS ];

static void abortUnmapStack( ABORT_THREAD_STACK *stack )
{
    size_t mapped = stack->mapped;
    munmap( (char *)( stack + 1 ) - mapped, mapped );
}
static void abortFreeThreadStack( void *argument )
{
    ABORT_THREAD_STACK *stack = (ABORT_THREAD_STACK *)argument;
    sigaltstack( &stack->previous, nullptr );
    threadStack = nullptr;
    // Release and acquire pass on to the next thread what this one has written there.
    for ( ABORT_THREAD_STACK *&spare : spareStacks ) {
        ABORT_THREAD_STACK *none = nullptr;
        ZU___HAPPENS_BEFORE( &spare );
        if ( __atomic_compare_exchange_n( &spare, &none, stack, false, __ATOMIC_RELEASE, __ATOMIC_RELAXED ) ) {
            return;
        }
    }
    abortUnmapStack( stack );
}
// Returns a second stack of the given size, null if there is no memory for it.
static ABORT_THREAD_STACK *abortMapStack( size_t page, size_t size )
{
    for ( ABORT_THREAD_STACK *&spare : spareStacks ) {
        ABORT_THREAD_STACK *stack = __atomic_exchange_n( &spare, nullptr, __ATOMIC_ACQUIRE );
        ZU___HAPPENS_AFTER( &spare );
        if ( stack ) {
            return stack;
        }
    }
    // Lowest a page that nobody may touch: a report that needs more than there is shall fail and not write elsewhere.
    size_t mapped = page + size;
    char *memory = (char *)mmap( nullptr, mapped, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_STACK, -1, 0 );
    if ( memory == MAP_FAILED ) {
        return nullptr;
    }
    if ( mprotect( memory + page, size, PROT_READ | PROT_WRITE ) != 0 ) {
        munmap( memory, mapped );
        return nullptr;
    }
    ABORT_THREAD_STACK *stack = (ABORT_THREAD_STACK *)( memory + mapped ) - 1;
    stack->mapped = mapped;
    return stack;
}
void zu___AbortPrepareThread( void )
{
    if ( threadStack ) {
        return;
    }
    // The first to come is the thread that starts the library, ahead of all others.
    if ( !threadStackKeyMade ) {
        threadStackKeyMade = pthread_key_create( &threadStackKey, abortFreeThreadStack ) == 0;
    }
    if ( !threadStackKeyMade ) {
        return;
    }
    stack_t previous = {};
    sigaltstack( nullptr, &previous );
    size_t page = (size_t)sysconf( _SC_PAGESIZE );
    size_t size = abortRoundUp( HANDLER_STACK_SIZE + getauxval( AT_MINSIGSTKSZ ), page );
    if ( !( previous.ss_flags & SS_DISABLE ) && previous.ss_size >= size / 2 ) {
        return; // a runtime has been here that knows what it does
    }
    ABORT_THREAD_STACK *stack = abortMapStack( page, size );
    if ( !stack ) {
        return;
    }
    stack->previous = previous;
    stack_t handlerStack = {};
    handlerStack.ss_sp = (char *)( stack + 1 ) - size;
    handlerStack.ss_size = size - abortRoundUp( sizeof( ABORT_THREAD_STACK ), 64 );
    sigaltstack( &handlerStack, nullptr );
    pthread_setspecific( threadStackKey, stack );
    threadStack = stack;
}
// The library may be unloaded while threads live that it has prepared; their stacks stay, since nobody is left to free
// them.
__attribute__( ( destructor ) ) static void abortForgetThreads( void )
{
    if ( threadStackKeyMade ) {
        pthread_key_delete( threadStackKey );
    }
    for ( ABORT_THREAD_STACK *&spare : spareStacks ) {
        ABORT_THREAD_STACK *stack = __atomic_exchange_n( &spare, nullptr, __ATOMIC_ACQUIRE );
        if ( stack ) {
            abortUnmapStack( stack );
        }
    }
}

// The end of a stack
//
// Where stacks end is asked when a fault has come: asked in each thread's beginning, the C library takes memory for the
// answer, and faults if there is none.
static constexpr uintptr_t GUARD_MAX = 1024 * 1024; // kept free below the first thread's stack; for others less

struct ABORT_MAPS {
    int file;
    ssize_t length;
    ssize_t position;
    char block[ 1024 ];
};
// Returns the next character of the list, a line end behind its last.
static char abortNextChar( ABORT_MAPS *maps )
{
    if ( maps->position == maps->length ) {
        maps->length = read( maps->file, maps->block, sizeof maps->block );
        maps->position = 0;
        if ( maps->length <= 0 ) {
            maps->length = 0;
            return '\n';
        }
    }
    return maps->block[ maps->position++ ];
}
// Reads a hexadecimal number, and returns the character behind it.
static char abortReadHex( ABORT_MAPS *maps, uintptr_t *value )
{
    *value = 0;
    for ( ;; ) {
        char ch = abortNextChar( maps );
        if ( ch >= '0' && ch <= '9' ) {
            *value = *value * 16 + (uintptr_t)( ch - '0' );
        } else if ( ch >= 'a' && ch <= 'f' ) {
            *value = *value * 16 + (uintptr_t)( ch - 'a' ) + 10;
        } else {
            return ch;
        }
    }
}
// Tells whether `address` is just below memory of which `stack`, the stack pointer, has come down to its beginning.
static bool abortIsStackOverflow( uintptr_t address, uintptr_t stack )
{
    ABORT_MAPS maps = {};
    maps.file = open( "/proc/self/maps", O_RDONLY | O_CLOEXEC );
    bool result = false;
    uintptr_t begin;
    uintptr_t end;
    // Lines in ascending order: <begin>-<end> <rights> ...
    while ( maps.file >= 0 && abortReadHex( &maps, &begin ) == '-' && abortReadHex( &maps, &end ) == ' ' ) {
        abortNextChar( &maps );
        bool writable = abortNextChar( &maps ) == 'w';
        if ( writable && ( begin > address || ( begin <= stack && stack < end ) ) ) {
            result = begin > address && begin - address <= GUARD_MAX && stack < end && stack + GUARD_MAX >= address;
            break;
        }
        while ( abortNextChar( &maps ) != '\n' ) {}
    }
    close( maps.file );
    return result;
}

// Faults
static void abortSetExceptionParameters( ZU___ABORT_EXCEPTION *exception, uintptr_t first, uintptr_t second )
{
    exception->parameters[ 0 ] = first;
    exception->parameters[ 1 ] = second;
    exception->parameterCount = 2;
}
static void abortClassify( ZU___ABORT_EXCEPTION *exception, const siginfo_t *info,
                           const ZU___ABORT_REGISTERS *registers )
{
    uintptr_t address = (uintptr_t)info->si_addr;
    bool sent = info->si_code <= 0; // by a process
    *exception = {};
    exception->code = (uint32_t)info->si_signo;
    if ( !sent && info->si_signo == SIGFPE && info->si_code == FPE_INTDIV ) {
        exception->fault = ZU___ABORT_FAULT_INT_DIVIDE_BY_ZERO;
    } else if ( !sent && ( info->si_signo == SIGSEGV || info->si_signo == SIGBUS ) ) {
        zu___AbortHoldThread(); // it reports in any case, and reads a file ahead of that
        bool overflow = info->si_signo == SIGSEGV && abortIsStackOverflow( address, registers->stack );
        exception->fault = overflow ? ZU___ABORT_FAULT_STACK_OVERFLOW : ZU___ABORT_FAULT_ACCESS_VIOLATION;
        // With this code the processor has not told the address.
        if ( info->si_code != SI_KERNEL && registers->access != ZU___ABORT_ACCESS_UNKNOWN ) {
            abortSetExceptionParameters( exception, registers->access, address );
        }
    } else {
        exception->fault = ZU___ABORT_FAULT_OTHER;
        abortSetExceptionParameters( exception, (uintptr_t)(intptr_t)info->si_code,
                                     sent ? (uintptr_t)info->si_pid : address );
    }
}
// Lets the handler that was there before start-up have the signal; false if there was none, and if that handler hands
// it on to this one, which it has found when the library ran before.  The registers are marked by a field that the system
// leaves null and does not read.
static bool abortHandledByPrevious( int signalNumber, siginfo_t *info, void *registers )
{
    ucontext_t *context = (ucontext_t *)registers;
    size_t i = 0;
    while ( SIGNALS[ i ] != signalNumber ) {
        i++;
    }
    const struct sigaction *previous = &previousActions[ i ];
    if ( !handlersSet || previous->sa_handler == SIG_DFL || context->uc_link ) {
        return false;
    }
    if ( previous->sa_handler == SIG_IGN ) {
        return info->si_code <= 0; // as the system: what comes of the machine cannot be ignored
    }
    context->uc_link = context;
    pthread_sigmask( SIG_BLOCK, &previous->sa_mask, nullptr );
    if ( previous->sa_flags & SA_SIGINFO ) {
        previous->sa_sigaction( signalNumber, info, registers );
    } else {
        previous->sa_handler( signalNumber );
    }
    context->uc_link = nullptr;
    return true;
}
static void abortHandle( int signalNumber, siginfo_t *info, void *registers )
{
    int error = errno;
    ZU___ABORT_REGISTERS machine = zu___AbortReadRegisters( registers, (uintptr_t)info->si_addr );
    if ( info->si_code > 0 && (uintptr_t)info->si_addr == machine.instruction && signalNumber == SIGSEGV ) {
        machine.access = ZU___ABORT_ACCESS_EXECUTE; // not every processor tells it
    }
    ZU___ABORT_EXCEPTION exception;
    abortClassify( &exception, info, &machine );
    if ( exception.fault == ZU___ABORT_FAULT_OTHER && !zu___AbortReporting() &&
         abortHandledByPrevious( signalNumber, info, registers ) ) {
        errno = error;
        return;
    }
    ZU___ABORT_CONTEXT context = { machine.instruction, ZU_TRUE, registers, info };
    zu___AbortEnter( nullptr, &exception, &context );
    zu___AbortLeave();
}
// A fault within the handler must reach it again, and so nothing is blocked meanwhile.
static void abortSetHandler( int signalNumber, struct sigaction *previous )
{
    struct sigaction action = {};
    action.sa_sigaction = abortHandle;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK | SA_NODEFER | SA_RESTART;
    sigaction( signalNumber, &action, previous );
}
static bool abortIsHandler( const struct sigaction &action )
{
    return ( action.sa_flags & SA_SIGINFO ) && action.sa_sigaction == abortHandle;
}
void zu___AbortPlatformStartup( ZU_BOOL handlers )
{
    zu___AbortLearnZone();
    for ( size_t i = 0; handlers && i < SIGNAL_COUNT; i++ ) {
        struct sigaction previous = {};
        abortSetHandler( SIGNALS[ i ], &previous );
        // Whoever has come later than an earlier start-up may have left again since, and given back what was there.
        if ( !abortIsHandler( previous ) ) {
            previousActions[ i ] = previous;
        }
    }
    handlersSet = handlers;
}
void zu___AbortPlatformShutdown( void )
{
    for ( size_t i = 0; handlersSet && i < SIGNAL_COUNT; i++ ) {
        // Whoever has come later stays.
        struct sigaction now = {};
        sigaction( SIGNALS[ i ], nullptr, &now );
        if ( abortIsHandler( now ) ) {
            sigaction( SIGNALS[ i ], &previousActions[ i ], nullptr );
        }
    }
    handlersSet = false;
}

// The thread that reports
static char spareStack[ HANDLER_STACK_SIZE ]; // for a fault in the report of a thread that has no second stack

// The time limit is for a report that hangs.  On a machine with far more to do than it can, a thread may get no processor
// for seconds, and that does not count: the report is short of nothing but time.
static constexpr ZU_INT CHECK_INTERVAL = 100;       // milliseconds, once the limit has come
static constexpr ZU_INT STARVATION_MAX = 60 * 1000; // milliseconds that may be left out at most
static ZU_INT timeLimit;                            // milliseconds
static ZU_INT timeBegin;                            // on the monotonic clock
static ZU_INT timeStarved;                          // ahead of timeBegin

static ZU_INT abortMillisec()
{
    struct timespec now = {};
    clock_gettime( CLOCK_MONOTONIC, &now );
    return (ZU_INT)now.tv_sec * 1000 + now.tv_nsec / 1000000;
}
// Returns the milliseconds that this thread has waited for a processor in its life; 0 if the system does not tell.
static ZU_INT abortStarvation()
{
    int file = open( "/proc/thread-self/schedstat", O_RDONLY | O_CLOEXEC );
    if ( file < 0 ) {
        return 0;
    }
    // Two numbers count here, both in nanoseconds: <time on a processor> <time of waiting for one> ...
    char text[ 64 ];
    ssize_t length = read( file, text, sizeof text );
    close( file );
    ssize_t pos = 0;
    while ( pos < length && text[ pos ] != ' ' ) {
        pos++;
    }
    ZU_INT nanosec = 0;
    while ( ++pos < length && text[ pos ] >= '0' && text[ pos ] <= '9' && nanosec < ZU_INT_MAX / 100 ) {
        nanosec = nanosec * 10 + ( text[ pos ] - '0' );
    }
    return nanosec / 1000000;
}
static void abortTimeOut( int, siginfo_t *info, void * )
{
    // The program's own alarms come as the same signal.
    if ( info->si_code != SI_TIMER || info->si_value.sival_ptr != &timer ) {
        return;
    }
    int error = errno;
    ZU_INT starved = zuIntMin( abortStarvation() - timeStarved, STARVATION_MAX );
    if ( abortMillisec() - timeBegin - starved >= timeLimit ) {
        timeBegin += timeLimit; // for what is still to be done, which may hang itself
        zu___AbortGiveUp();
    }
    errno = error;
}
static void abortSetTimer( ZU_INT millisec )
{
    timeLimit = millisec;
    timeBegin = abortMillisec();
    timeStarved = abortStarvation();
    struct sigaction action = {};
    action.sa_sigaction = abortTimeOut;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK | SA_NODEFER | SA_RESTART;
    sigaction( SIGALRM, &action, nullptr );
    struct sigevent event = {};
    event.sigev_notify = SIGEV_THREAD_ID;
    event.sigev_signo = SIGALRM;
    event.sigev_value.sival_ptr = &timer;
    event._sigev_un._tid = (pid_t)zu___AbortThreadIdentifier();
    struct itimerspec limit = {};
    limit.it_value.tv_sec = (time_t)( millisec / 1000 );
    limit.it_interval.tv_nsec = CHECK_INTERVAL * 1000000;
    timerSet = timer_create( CLOCK_MONOTONIC, &event, &timer ) == 0 && timer_settime( timer, 0, &limit, nullptr ) == 0;
}
void zu___AbortBegin( const ZU___ABORT_CONTEXT *context, ZU_INT millisec )
{
    reportContext = *context;
    // Writing to a pipe without a reader must fail and not end the process, and nothing else shall interrupt.
    sigset_t blocked;
    sigfillset( &blocked );
    sigdelset( &blocked, SIGALRM );
    for ( int signalNumber : SIGNALS ) {
        sigdelset( &blocked, signalNumber );
        abortSetHandler( signalNumber, nullptr );
    }
    pthread_sigmask( SIG_SETMASK, &blocked, nullptr );
    stack_t handlerStack = {};
    sigaltstack( nullptr, &handlerStack );
    if ( handlerStack.ss_flags & SS_DISABLE ) {
        handlerStack.ss_sp = spareStack;
        handlerStack.ss_size = sizeof spareStack;
        handlerStack.ss_flags = 0;
        sigaltstack( &handlerStack, nullptr );
    }
    abortSetTimer( millisec );
}
void zu___AbortSleep( void )
{
    sigset_t all;
    sigfillset( &all );
    for ( ;; ) {
        sigsuspend( &all );
    }
}
void zu___AbortEnd( void )
{
    siginfo_t *info = (siginfo_t *)reportContext.information;
    int signalNumber = info ? info->si_signo : SIGABRT;
    struct sigaction action = {};
    action.sa_handler = SIG_DFL;
    sigaction( signalNumber, &action, nullptr );
    sigset_t own;
    sigemptyset( &own );
    sigaddset( &own, signalNumber );
    pthread_sigmask( SIG_UNBLOCK, &own, nullptr );
    if ( info ) {
        syscall( SYS_rt_tgsigqueueinfo, getpid(), zu___AbortThreadIdentifier(), signalNumber, info );
    }
    syscall( SYS_tgkill, getpid(), zu___AbortThreadIdentifier(), signalNumber );
    _exit( 128 + signalNumber ); // a debugger has taken the signal
}

// Walk
struct ABORT_WALK {
    uintptr_t begin;
    bool begun; // what is ahead of there belongs to the report
    ZU___ABORT_FRAME_FUNC func;
    void *closure;
};
static ZU_BOOL abortWalkFrame( uintptr_t address, void *closure )
{
    ABORT_WALK *walk = (ABORT_WALK *)closure;
    walk->begun = walk->begun || address == walk->begin;
    return !walk->begun || walk->func( address, walk->closure );
}
void zu___AbortWalk( const ZU___ABORT_CONTEXT *context, ZU___ABORT_FRAME_FUNC func, void *closure )
{
    ABORT_WALK walk = { context->begin, false, func, closure };
    if ( context->registers ) {
        // Where there is no code, nothing tells how the function is left; but it has not done anything yet.
        const siginfo_t *info = (const siginfo_t *)context->information;
        bool noCode = info->si_code > 0 && ( info->si_signo == SIGSEGV || info->si_signo == SIGBUS ) &&
                      (uintptr_t)info->si_addr == context->begin;
        if ( noCode ) {
            if ( !func( context->begin, closure ) ) {
                return;
            }
            walk.begin = zu___AbortReturnToCaller( context->registers );
        }
    }
    zu___StackTraceWalk( abortWalkFrame, &walk );
    if ( !walk.begun ) {
        func( walk.begin, closure );
    }
}

// Debugger
ZU_BOOL zu___AbortDebuggerPresent( void )
{
    int file = open( "/proc/self/status", O_RDONLY | O_CLOEXEC );
    if ( file < 0 ) {
        return ZU_FALSE;
    }
    // The line stands within the first few hundred bytes; TracerPid is 0 where nobody traces.
    char status[ 2048 ];
    ssize_t length = read( file, status, sizeof status - 1 );
    close( file );
    if ( length < 0 ) {
        return ZU_FALSE;
    }
    status[ length ] = 0;
    const char *tracer = strstr( status, "\nTracerPid:\t" );
    return tracer && tracer[ strlen( "\nTracerPid:\t" ) ] != '0';
}
void zu___AbortBreak( void )
{
    if ( timerSet ) {
        timerSet = false;
        timer_delete( timer );
    }
    // A debugger sees ignored signals too.  One that lets this through, as tracers of system calls do, must not bring
    // the process to another end.
    struct sigaction action = {};
    action.sa_handler = SIG_IGN;
    sigaction( SIGTRAP, &action, nullptr );
    syscall( SYS_tgkill, getpid(), zu___AbortThreadIdentifier(), SIGTRAP );
}
