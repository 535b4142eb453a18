// zu_abort.h: the one failure path.
//
// A broken precondition, an impossible state and an exhausted heap all end in zu___Abort, which says what failed and
// ends the process.  Assertions are part of the contract: they stand in place of error returns and are compiled into
// every build of the library.
//
// While the library runs, an invalid access to memory, an integer division by zero and the end of a stack are reported
// alike, on the threads that the library has started or encapsulates, and so are SIGBUS, SIGFPE, SIGILL, SIGTRAP and
// SIGABRT where nobody handled them before start-up.  The process ends by its signal in any case.
//
// The report tells the local time, product and application, what failed, and the stack of the thread.  It goes to the
// error stream, to the debugger's channel (on Linux the system log, at its debug level), and to a new file
// <product>-<version>-<system>-<hardware>-<random number>.txt in the folder ZU_RUNTIME_PATH_DATA_ABORT, if there is
// one.  Symbols stand there as the linker knows them.  Threads that fail meanwhile add nothing to it.
#pragma once

#include "zu/sys/zu_api.h"

ZU_BEGIN_DECLS

/// Reports a failed check and ends the process by SIGABRT.
///
/// `message` is a short word on what failed, null for an ordinary assertion; `file` and `line` tell where the check
/// stands; `expression` is the failed condition as written there, null for a check that has none.  Callable from any
/// thread at any time, before start-up and after shut-down too; an attached debugger gets control after the report.
ZU_API ZU_NORETURN void zu___Abort( const char *message, const char *file, int32_t line, const char *expression );

// For authors of classes and modules

/// Makes faults of the machine lead to a report too, unless ZU_RUNTIME_FLAG_NO_EXCEPTION_HANDLERS is set, and names the
/// file for one.
ZU_API void zu___AbortStartup( void );
/// Gives faults back to whoever handled them before.
ZU_API void zu___AbortShutdown( void );
/// Holds a thread that has failed while another one reports, for good.  In a debugger, this is where such threads are.
ZU_API ZU_NORETURN void zu___AbortSecondary( void );

ZU_END_DECLS

/// Ends the process unless `expr` is true, and reports the text of `expr` as it stands in the source.
#define ZU_ASSERT( expr )                                  \
    do {                                                   \
        if ( ZU___UNLIKELY( !( expr ) ) ) {                \
            zu___Abort( NULL, __FILE__, __LINE__, #expr ); \
        }                                                  \
    } while ( 0 )

/// Ends the process unless `condition` is true, and reports `text`.
///
/// For a check whose reported text is fixed and differs from what the code has to evaluate, such as
/// `ZU___ASSERT_AS( zu___GaugeReady( gauge ), "gauge->state == READY" )`.
#define ZU___ASSERT_AS( condition, text )                 \
    do {                                                  \
        if ( ZU___UNLIKELY( !( condition ) ) ) {          \
            zu___Abort( NULL, __FILE__, __LINE__, text ); \
        }                                                 \
    } while ( 0 )

/// Ends the process: closes a branch that cannot be reached.
#define ZU_ABORT() zu___Abort( NULL, __FILE__, __LINE__, NULL )
