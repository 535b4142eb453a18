// Who adds process-wide state to the library adds a row here.

#include "zu/base/zu_threading_fork_internal.h"
#include "zu/runtime/zu_obj_internal.h"
#include "zu/runtime/zu_runtime_internal.h"
#include "zu/sys/zu_abort_internal.h"

// In the order in which locks are taken: what a subsystem uses while it holds its own stands below it.  Given back they
// are from the end to the top, so that in the child each finds what it uses in order.
static void ( *const SUBSYSTEMS[] )( ZU___FORK_STEP step ) = {
    zu___RuntimeFork,    zu___RuntimeUserInformationFork,
    zu___TimerFork,      zu___ThreadFork,
    zu___GenerationFork, zu___RandomFork,
    zu___StackTraceFork, zu___ObjFork,
    zu___UniqueFork,     zu___AbortFork,
};
static constexpr size_t SUBSYSTEM_COUNT = sizeof SUBSYSTEMS / sizeof SUBSYSTEMS[ 0 ];

static bool forkRunning = false; // the library is up: there is something to be held together

static void runtimeForkStep( ZU___FORK_STEP step )
{
    if ( !forkRunning ) {
        return;
    }
    for ( size_t i = 0; i < SUBSYSTEM_COUNT; i++ ) {
        SUBSYSTEMS[ step == ZU___FORK_PREPARE ? i : SUBSYSTEM_COUNT - 1 - i ]( step );
    }
}
void zu___RuntimeForkStartup( void )
{
    static bool registered = false; // which cannot be taken back
    if ( !registered ) {
        zu___ForkRegister( runtimeForkStep );
        registered = true;
    }
    forkRunning = true;
}
void zu___RuntimeForkShutdown( void )
{
    forkRunning = false;
}
