// The library finds the function by way of a pointer, as it does all of the system's: here that is another one.

#include "zu_test_platform.h"

#include <windows.h>

static bool refuses = false;

static BOOL WINAPI setPriority( HANDLE thread, int priority )
{
    static auto system = ( BOOL( WINAPI * )( HANDLE, int ) )(void *)GetProcAddress( GetModuleHandleA( "kernel32" ),
                                                                                    "SetThreadPriority" );
    return !refuses && system( thread, priority );
}
extern "C" {
BOOL( WINAPI *__imp_SetThreadPriority )( HANDLE, int ) = setPriority;
}

TEST( ThreadWindows, DoesNotRunWithoutItsPriority )
{
    AbortedRun run = runAborting( [] {
        static bool hasRun = false;
        refuses = true;
        ZU_THREAD *thread = zuThreadTrySpawnCstr(
            "x", -1, [] { hasRun = true; }, nullptr, ZU_THREAD_PRIORITY_HIGH );
        zu___Abort( thread || hasRun ? "has run" : "has not run", __FILE__, __LINE__, nullptr );
    } );
    EXPECT_TRUE( run.elsewhere || run.report.find( "has not run" ) != std::string::npos );
}
