// Start and stop of the whole library beside the object that a program of the peer begins with, and the texts of a
// stack trace.
//
// A program starts once, and much of what a library does for the first time it never does again.  So the first case is
// a whole program, loading included, and the second the calls alone in a process of their own for each time, a child
// that inherits the loaded libraries; the third repeats them in one process.

#include "zu/zu.hpp"

#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdlib>
#include <execinfo.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#ifdef ZU_BENCHMARK_QT
#include <QCoreApplication>
#endif

static void startStopZu()
{
    zuRuntimeStartup( 0, -1, nullptr, "benchmark", "Benchmark", "1.0" );
    zuRuntimeShutdown();
}
#ifdef ZU_BENCHMARK_QT
static void startStopQt()
{
    char name[] = "benchmark";
    char *arguments[] = { name, nullptr };
    int count = 1;
    QCoreApplication application( count, arguments );
    QCoreApplication::setApplicationName( "Benchmark" );
    QCoreApplication::setApplicationVersion( "1.0" );
}
#endif

static void runProgram( benchmark::State &state, const char *program )
{
    for ( auto _ : state ) {
        char name[] = "program";
        char *arguments[] = { name, nullptr };
        pid_t child;
        int status;
        if ( posix_spawn( &child, program, nullptr, nullptr, arguments, environ ) != 0 ||
             waitpid( child, &status, 0 ) != child || status != 0 ) {
            state.SkipWithError( "the program fails" );
            break;
        }
    }
}
BENCHMARK_CAPTURE( runProgram, zu, ZU_PROGRAM )->Name( "Runtime/program/zu" )->UseRealTime();
#ifdef QT_PROGRAM
BENCHMARK_CAPTURE( runProgram, qt, QT_PROGRAM )->Name( "Runtime/program/qt" )->UseRealTime();
#endif
#ifdef APR_PROGRAM
BENCHMARK_CAPTURE( runProgram, apr, APR_PROGRAM )->Name( "Runtime/program/apr" )->UseRealTime();
#endif

// Returns the seconds that `work` takes in a fresh child process, a negative number if there is none.
static double secondsInChild( void ( *work )() )
{
    int channel[ 2 ];
    if ( pipe( channel ) != 0 ) {
        return -1;
    }
    pid_t child = fork();
    if ( child == 0 ) {
        auto begin = std::chrono::steady_clock::now();
        work();
        double seconds = std::chrono::duration<double>( std::chrono::steady_clock::now() - begin ).count();
        _exit( write( channel[ 1 ], &seconds, sizeof seconds ) == sizeof seconds ? 0 : 1 );
    }
    close( channel[ 1 ] );
    double seconds = -1;
    if ( child < 0 || read( channel[ 0 ], &seconds, sizeof seconds ) != sizeof seconds ) {
        seconds = -1;
    }
    close( channel[ 0 ] );
    waitpid( child, nullptr, 0 );
    return seconds;
}
template <void ( *WORK )()>
static void runFirst( benchmark::State &state )
{
    for ( auto _ : state ) {
        double seconds = secondsInChild( WORK );
        if ( seconds < 0 ) {
            state.SkipWithError( "no child process" );
            break;
        }
        state.SetIterationTime( seconds );
    }
}
template <void ( *WORK )()>
static void runAgain( benchmark::State &state )
{
    for ( auto _ : state ) {
        WORK();
    }
}
BENCHMARK( runFirst<startStopZu> )->Name( "Runtime/startStopFirst/zu" )->UseManualTime();
#ifdef ZU_BENCHMARK_QT
BENCHMARK( runFirst<startStopQt> )->Name( "Runtime/startStopFirst/qt" )->UseManualTime();
#endif
BENCHMARK( runAgain<startStopZu> )->Name( "Runtime/startStopAgain/zu" );
#ifdef ZU_BENCHMARK_QT
BENCHMARK( runAgain<startStopQt> )->Name( "Runtime/startStopAgain/qt" );
#endif

// Both make the texts of all lines; the C library knows neither files nor lines.
static void StackTrace_zu( benchmark::State &state )
{
    zuRuntimeStartup( 0, -1, nullptr, nullptr, nullptr, nullptr );
    for ( auto _ : state ) {
        zu::Ref<ZU_STACK_TRACE> trace = zu::adopt( zuStackTraceCreate( 0, -1 ) );
        benchmark::DoNotOptimize( trace );
    }
    zuRuntimeShutdown();
}
BENCHMARK( StackTrace_zu )->Name( "StackTrace/lines/zu" );

static void StackTrace_libc( benchmark::State &state )
{
    for ( auto _ : state ) {
        void *addresses[ 4000 ];
        char **lines = backtrace_symbols( addresses, backtrace( addresses, 4000 ) );
        benchmark::DoNotOptimize( lines );
        free( lines );
    }
}
BENCHMARK( StackTrace_libc )->Name( "StackTrace/lines/libc" );
