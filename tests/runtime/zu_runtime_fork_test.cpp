#include "zu_test_support.h"

#include <sys/wait.h>
#include <unistd.h>

// Takes and gives every lock that the library has for itself.
static void useTheLibrary( ZU_TIMER *timer )
{
    zu::Ref<ZU_VECTOR> vec = zu::adopt( zuVectorCreate() );
    zu::Ref<ZU_DICT> dict = zu::adopt( zuDictCreate() );
    zu::Ref<ZU_STORE> store = zu::adopt( zuStoreCreate() );
    for ( int i = 0; i < 10; i++ ) {
        zu::Ref<ZU_MONITOR> numbered = zu::adopt( zuMonitorCreate() );
        zu::Ref<ZU_STRING> name = zu::adopt( zuMonitorToString( numbered.get() ) );
        zuVectorAppendString( vec.inOut(), name.get() );
        zuDictSetObjKey( dict.inOut(), zuMonitorObj( numbered.get() ), zuStringObj( name.get() ) );
        zuStoreSetValueCstr( store.inOut(), "key", -1, name.get() );
    }
    zu::Ref<ZU_STRING> all = zu::adopt( zuVectorToString( vec.get() ) );
    zu::Ref<ZU_GENERATION> generation = zu::adopt( zuGenerationCreate() );
    zu::Ref<ZU_STACK_TRACE> trace = zu::adopt( zuStackTraceCreate( 0, 1 ) );
    zu::Ref<ZU_VECTOR> modules = zu::adopt( zuRuntimeModulesVector() );
    zuRuntimeSetUserInformationKey( zu::text( "key" ).get(), store.get() );
    if ( timer ) {
        zuTimerSchedule( timer, 1000000 );
    }
    zuTimerRelease( zuTimerCreate( nullptr, nullptr ) );
}

// What the child does, and whether it ended well.  The alarm ends one that waits for ever.
static bool childEndsWell()
{
    pid_t child = fork();
    if ( child == 0 ) {
        alarm( 30 );
        useTheLibrary( nullptr );
        _exit( zuRuntimeShutdown() == 0 ? 0 : 1 );
    }
    int status = 0;
    return waitpid( child, &status, 0 ) == child && status == 0;
}
static std::atomic<int> wellEnded;
static void forkOften()
{
    for ( int i = 0; i < 25 && childEndsWell(); i++ ) {
        wellEnded++;
    }
}

// The forking thread is the one that has started the library, one that it has started, one that is encapsulated, and
// one that it does not know.
[[maybe_unused]] static void forkAmongBusyThreads()
{
    std::atomic<bool> stop{ false };
    std::vector<std::thread> busy;
    for ( int i = 0; i < 3; i++ ) {
        busy.emplace_back( [ & ] {
            zu::Ref<ZU_TIMER> timer = zu::adopt( zuTimerCreate( nullptr, nullptr ) );
            while ( !stop ) {
                useTheLibrary( timer.get() );
                zuThreadEncapsulate( [] {}, nullptr );
            }
        } );
    }
    wellEnded = 0;
    forkOften();
    zuThreadJoin(
        zu::adopt( zuThreadTrySpawnCstr( "fork", -1, forkOften, nullptr, ZU_THREAD_PRIORITY_NORMAL ) ).get() );
    std::thread( [] { zuThreadEncapsulate( forkOften, nullptr ); } ).join();
    std::thread( forkOften ).join();
    stop = true;
    for ( std::thread &thread : busy ) {
        thread.join();
    }
    EXPECT_EQ( wellEnded, 100 );
    zuRuntimeDelUserInformationKey( zu::text( "key" ).get() );
}
// A sanitizer's heap is not made ready for a fork among threads that allocate: the child waits for ever.
#if !defined( __SANITIZE_ADDRESS__ ) && !defined( __SANITIZE_THREAD__ )
TEST( Fork, LeavesTheChildAWholeLibrary )
{
    runRestarted( 0, forkAmongBusyThreads );
}
TEST( Fork, LeavesTheChildAWholeObjectDatabase )
{
    runRestarted( ZU_RUNTIME_FLAG_OBJECT_DATABASE, forkAmongBusyThreads );
}
#endif

TEST( ForkAborts, WhatTheChildLacks )
{
    zu::Ref<ZU_TIMER> timer = zu::adopt( zuTimerCreate( nullptr, nullptr ) );
    zu::Ref<ZU_TIME> now = zu::adopt( zuTimeNow() );
    expectAbort( "timerThread", [ & ] { zuTimerSchedule( timer.get(), 1 ); } );
    expectAbort( "timerThread", [ & ] { zuTimerScheduleAt( timer.get(), 1 ); } );
    expectAbort( "timerThread", [ & ] { zuTimerScheduleAtTime( timer.get(), now.get() ); } );
    static zu::Ref<ZU_BARRIER> gate;
    gate = zu::adopt( zuBarrierCreate( ZU_TRUE ) );
    zu::Ref<ZU_THREAD> thread = zu::adopt( zuThreadTrySpawnCstr(
        "parent", -1, [] { zuBarrierPass( gate.get() ); }, nullptr, ZU_THREAD_PRIORITY_NORMAL ) );
    expectAbort( "!zu___ThreadHandleIsLost( thread->handle )", [ & ] { zuThreadJoin( thread.get() ); } );
    zuBarrierUnblock( gate.get() );
    zuThreadJoin( thread.get() );
    gate = nullptr;
}
