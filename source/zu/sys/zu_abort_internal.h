// zu_abort_internal.h: what a platform must provide for the failure path.
//
// All that is called once a check has failed or a fault has come meets a broken process: it allocates nothing, takes no
// lock, uses no object, and calls nothing of the system that might do so.
#pragma once

#include "zu/base/zu_time_internal.h"
#include "zu/sys/zu_fork_internal.h"

ZU_BEGIN_DECLS

// A failed check: what zu___Abort was given.
typedef struct ZU___ABORT_RECORD {
    const char *message;
    const char *file;
    const char *expression;
    int32_t line;
} ZU___ABORT_RECORD;

// A fault of the machine, or a signal that nobody else handles.
typedef enum ZU___ABORT_FAULT {
    ZU___ABORT_FAULT_ACCESS_VIOLATION,
    ZU___ABORT_FAULT_INT_DIVIDE_BY_ZERO,
    ZU___ABORT_FAULT_STACK_OVERFLOW,
    ZU___ABORT_FAULT_OTHER,
} ZU___ABORT_FAULT;

#define ZU___ABORT_ACCESS_READ    ( (uintptr_t)0 )
#define ZU___ABORT_ACCESS_WRITE   ( (uintptr_t)1 )
#define ZU___ABORT_ACCESS_EXECUTE ( (uintptr_t)8 )
#define ZU___ABORT_PARAMETERS_MAX 10

typedef struct ZU___ABORT_EXCEPTION {
    ZU___ABORT_FAULT fault;
    uint32_t code;      // of the system; for the report if `fault` is none of those with a name
    int parameterCount; // 0 to ZU___ABORT_PARAMETERS_MAX
    // An access violation has two, or none if they are not known: one of ZU___ABORT_ACCESS_..., and the address.
    uintptr_t parameters[ ZU___ABORT_PARAMETERS_MAX ];
} ZU___ABORT_EXCEPTION;

// Where it happened
typedef struct ZU___ABORT_CONTEXT {
    uintptr_t begin;   // the address where the walk begins
    ZU_BOOL exact;     // that is the instruction that failed, not the one where a function goes on
    void *registers;   // the platform's own; null: of a failed check
    void *information; // likewise, on the cause
} ZU___ABORT_CONTEXT;

// The report, in zu_abort.cpp.

// Enters the report.  Exactly one of `record` and `exception` is there.  Does not return in a thread that comes second.
void zu___AbortEnter( const ZU___ABORT_RECORD *record, const ZU___ABORT_EXCEPTION *exception,
                      const ZU___ABORT_CONTEXT *context );
// Hands the thread to a debugger, if there is one, and ends the process.
ZU_NORETURN void zu___AbortLeave( void );
// Called when a report has taken too long, on whatever the thread that writes it is doing: hands on what has been
// written and ends the process.  Called during that, it ends the process at once.
ZU_NORETURN void zu___AbortGiveUp( void );
// Clears the state, and keeps the name of the report file; null, and a name that is too long: there will be none.
void zu___AbortReset( const char *reportFileName );
// Tells whether a report has begun.
ZU_BOOL zu___AbortReporting( void );
// In a forked child, clears the state but for the name.
void zu___AbortFork( ZU___FORK_STEP step );

// The platform, as long as all is well.

// Learns what local time will be, and lets faults of the machine lead to the report where `handlers` says so.
void zu___AbortPlatformStartup( ZU_BOOL handlers );
// Gives faults back to whoever had them before.
void zu___AbortPlatformShutdown( void );
// Prepares the calling thread for running out of stack, until it ends.  May be called any number of times, and costs
// next to nothing from the second on.
void zu___AbortPrepareThread( void );

// The platform, in a broken process.

// Called first of all by each thread that has failed: nobody can end it any more without the process.
void zu___AbortHoldThread( void );
// Called by the thread that reports, ahead of all others: nothing disturbs it any more, a fault of its own comes back
// to zu___AbortEnter, and zu___AbortGiveUp is called after `millisec` milliseconds, and again if it has not ended the
// process after as many more.  Time in which the thread waits for a processor does not count.  The context stays until
// the end.
void zu___AbortBegin( const ZU___ABORT_CONTEXT *context, ZU_INT millisec );
// Returns the identifier of the calling thread, never 0.
uint32_t zu___AbortThreadIdentifier( void );
// Passes the time for ever.
ZU_NORETURN void zu___AbortSleep( void );
// Ends the process as the system ends one that has no handler for what zu___AbortBegin was told of; that of a failed
// check ends as by abort().
ZU_NORETURN void zu___AbortEnd( void );

// Returns local time; universal time ahead of start-up.
void zu___AbortLocalTime( ZU___TIME_FIELDS *fields );

// Calls `func` with the address of each function from where `context` begins outwards, until it returns false.  The
// first is as `context->exact` tells; all others are where functions go on.
typedef ZU_BOOL ( *ZU___ABORT_FRAME_FUNC )( uintptr_t address, void *closure );
void zu___AbortWalk( const ZU___ABORT_CONTEXT *context, ZU___ABORT_FRAME_FUNC func, void *closure );

// Writes text of up to 4096 bytes to the error stream of the process.  Who does not take it for a while gets no more.
void zu___AbortWriteError( const char *text, size_t length );
// Sends one line, without its end, to the debugger's channel.  Never waits.
void zu___AbortWriteDebugger( const char *line, size_t length );
// Creates the file for the report, for the eyes of its user only; null if there is one already, or if it cannot be had.
typedef struct ZU___ABORT_FILE ZU___ABORT_FILE;
ZU___ABORT_FILE *zu___AbortFileTryCreate( const char *name );
void zu___AbortFileWrite( ZU___ABORT_FILE *file, const char *text, size_t length );
void zu___AbortFileClose( ZU___ABORT_FILE *file );
// Writes what the program's output streams hold back, where nobody is within them.
void zu___AbortFlushStreams( const ZU___ABORT_CONTEXT *context );

// A dump of the process for debuggers, with the report in it as comments.  It may take memory, and is written when all
// else is out.
typedef struct ZU___ABORT_DUMPS {
    // Creates the file; false if that fails, which `error` tells of in the system's numbers.
    ZU_BOOL ( *begin )( const char *name, uint32_t *error );
    // Adds a line to the comments.
    void ( *addLine )( const char *text, size_t length );
    // Writes the dump and closes the file; false likewise.
    ZU_BOOL ( *end )( const ZU___ABORT_CONTEXT *context, uint32_t *error );
} ZU___ABORT_DUMPS;
extern const ZU___ABORT_DUMPS *const zu___AbortDumps; // null: the platform has none

// Tells whether a debugger is attached to the process.
ZU_BOOL zu___AbortDebuggerPresent( void );
// Stops in the debugger; when the developer goes on, it returns.  The time limit of the report holds no longer.
void zu___AbortBreak( void );

// The file of the report while it is open; null otherwise.
extern ZU___ABORT_FILE *zu___AbortReportFile;

ZU_END_DECLS
