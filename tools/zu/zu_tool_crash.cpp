// zu crash: ends by a fault of the kind that is asked for, to show the report.  It is not on the list of commands.
//
// The faults are those of the language and the library, so that no system is asked for any.

#include "zu_tool_platform.h"

#include <cstdlib>
#include <iterator>

// What the compiler must not see through
static volatile bool always = true;
static void *volatile nowhere = nullptr;
static volatile int dividend = 100;
static volatile int zero = 0;

static void failCheck()
{
    zuStringLength( (ZU_STRING *)nowhere );
}
static void readNull()
{
    printf( "%i", *(volatile int *)nowhere );
}
static const int CONSTANT = 1;
static void writeConstant()
{
    *const_cast<volatile int *>( &CONSTANT ) = 2;
}
static int data[ 16 ] = { 1 };
static void executeData()
{
    void *volatile address = data;
    ( ( void ( * )() )(uintptr_t)address )();
}
static void divide()
{
    printf( "%i", dividend / zero );
}
static void executeNothing()
{
    __builtin_trap();
}
static int descend( int depth )
{
    volatile char room[ 4096 ];
    room[ 0 ] = (char)depth;
    return always ? descend( depth + 1 ) + room[ 0 ] : 0;
}
static void overflowStack()
{
    descend( 0 );
}
static void exhaustHeap()
{
    zuMemFree( zuMemAlloc( ZU_INT_MAX / 2 ) );
}

static constexpr struct {
    const char *name;
    void ( *run )();
} KINDS[] = {
    { "check", failCheck },     { "null", readNull },         { "write", writeConstant },    { "execute", executeData },
    { "divide", divide },       { "bus", toolRaiseBusError }, { "illegal", executeNothing }, { "abort", abort },
    { "stack", overflowStack }, { "heap", exhaustHeap },
};

static int crashRun( ToolArguments &arguments )
{
    if ( arguments.operands.size() != 1 ) {
        return toolMisuse( "takes one KIND, not %i", arguments.operands.size() );
    }
    const char *names[ std::size( KINDS ) ];
    for ( size_t i = 0; i < std::size( KINDS ); i++ ) {
        names[ i ] = KINDS[ i ].name;
    }
    int kind = toolReadWord( "KIND", arguments.operands[ 0 ].get(), names );
    if ( kind < 0 ) {
        return TOOL_MISUSE;
    }
    auto crash = KINDS[ kind ].run;
    if ( arguments.has( "thread" ) ) {
        if ( auto thread = zu::spawn( "crash", [ crash ] { crash(); } ) ) {
            zuThreadJoin( thread.get() );
        }
    } else {
        crash();
    }
    toolError( "this machine takes no offence at %lc", names[ kind ] );
    return TOOL_FAILED;
}

static constexpr TOOL_OPTION OPTIONS[] = {
    { "thread", 't', nullptr, "lets it happen on a thread that the library has started" },
};
const TOOL_COMMAND toolCrashCommand = {
    "crash",
    nullptr,
    "[--thread] KIND",
    R"(Ends by a fault of some KIND, to show what the library reports then, and where
the report goes:

  check      a check of the library that fails
  null       reading where nothing is
  write      writing where that is not allowed
  execute    executing what is no code
  divide     a division by zero, where the processor minds
  bus        a signal that memory is not there
  illegal    an instruction that does not exist
  abort      the function abort()
  stack      recursion without an end
  heap       asking for more memory than there is
)",
    OPTIONS,
    R"(The process ends by the signal of the fault, on Windows with the status 3; the
exit status is 2 if the use is wrong.
)",
    crashRun,
};
