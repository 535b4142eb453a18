#include "zu_test_string.h"

#include <unistd.h>

static zu::Ref<ZU_THREAD> spawn( const char *name, ZU_THREAD_FUNC func, ZU_OBJ *argument = nullptr,
                                 ZU_THREAD_PRIORITY prio = ZU_THREAD_PRIORITY_NORMAL )
{
    auto thread = zu::adopt( zuThreadTrySpawnCstr( name, -1, func, argument, prio ) );
    EXPECT_TRUE( thread );
    return thread;
}
// Runs a function with an argument on a thread of its own and waits for its end.
static void runOnThread( ZU_THREAD_FUNC func, ZU_OBJ *argument = nullptr )
{
    zuThreadJoin( spawn( "test", func, argument ).get() );
}

// What a thread with a signal for an argument does.
static void assertArgument()
{
    auto signal = zu::adopt( zuSignalFrom( zuThreadUnlatchArgument() ) );
    zuSignalAssert( signal.get() );
}

TEST( Thread, KnowsItself )
{
    static zu::Ref<ZU_THREAD> self; // what the thread takes itself for
    static ZU_THREAD_PRIORITY prio;
    auto func = [] {
        self = zu::adopt( zuThreadThis() );
        prio = zuThreadPriority();
    };
    auto thread =
        spawn( "a name that is longer than debuggers and systems show", func, nullptr, ZU_THREAD_PRIORITY_LOW );
    zuThreadJoin( thread.get() );
    EXPECT_EQ( self.get(), thread.get() );
    EXPECT_EQ( prio, ZU_THREAD_PRIORITY_LOW );
    EXPECT_EQ( takeText( zuThreadName( thread.get() ) ).size(), 53u );
    EXPECT_EQ( textOf( zuThreadObj( thread.get() ) ), takeText( zuThreadName( thread.get() ) ) );
    EXPECT_NE( zu::adopt( zuThreadThis() ).get(), thread.get() );
    EXPECT_TRUE( zuThreadEncapsulated() );
    self = nullptr;
}

TEST( Thread, RunsAtEveryPriority )
{
    static std::atomic<int> runs;
    runs = 0;
    for ( ZU_THREAD_PRIORITY prio = 0; ZU_THREAD_PRIORITY_OK( prio ); prio++ ) {
        auto thread = spawn(
            "priority", [] { runs++; }, nullptr, prio );
        zuThreadJoin( thread.get() );
        EXPECT_EQ( zuThreadPriorityFromString( zu::adopt( zuThreadPriorityToString( prio ) ).get() ), prio );
    }
    EXPECT_EQ( runs, 7 );
    EXPECT_EQ( zuThreadPriorityFromString( string( "ZU_THREAD_PRIORITY_CRITICAL" ).get() ),
               ZU_THREAD_PRIORITY_CRITICAL );
    EXPECT_EQ( zuThreadPriorityFromString( string( "7" ).get() ), -1 );
}

TEST( Thread, HandsItsArgumentOutOnce )
{
    auto argument = string( "argument" );
    runOnThread(
        [] {
            auto first = zu::adopt( zuThreadUnlatchArgument() );
            EXPECT_EQ( textOf( first.get() ), "argument" );
            EXPECT_EQ( zuThreadUnlatchArgument(), nullptr );
        },
        zuStringObj( argument.get() ) );
    EXPECT_EQ( ZU_REF_RETAIN_COUNT( argument.get() ), 1u );
    runOnThread( [] {}, zuStringObj( argument.get() ) );
    EXPECT_EQ( ZU_REF_RETAIN_COUNT( argument.get() ), 1u ) << "released when nobody has taken it";
}

TEST( Thread, MayBeGivenAPointer )
{
    int runs = 0;
    auto run = []( void *argument ) { ++*(int *)argument; };
    zuThreadJoin( zu::adopt( zuThreadTrySpawnCallCstr( "call", -1, run, &runs, ZU_THREAD_PRIORITY_NORMAL ) ).get() );
    EXPECT_EQ( runs, 1 );
}

TEST( Thread, KeepsItsKeysToItself )
{
    static zu::Ref<ZU_STRING> key;
    static zu::Ref<ZU_STRING> value;
    key = string( "key" );
    value = string( "value" );
    auto work = [] {
        ZU_OBJ *keyObj = zuStringObj( key.get() );
        EXPECT_FALSE( zuThreadHasKey( keyObj ) );
        EXPECT_EQ( zuThreadKey( keyObj ), nullptr );
        zuThreadSetKey( keyObj, zuStringObj( value.get() ) );
        EXPECT_TRUE( zuThreadHasKey( keyObj ) );
        EXPECT_EQ( zu::adopt( zuThreadKey( keyObj ) ).get(), zuStringObj( value.get() ) );
        zuThreadDelKey( keyObj );
        EXPECT_FALSE( zuThreadHasKey( keyObj ) );
        zuThreadSetKey( keyObj, zuStringObj( value.get() ) );
    };
    runOnThread( work );
    runOnThread( work );
    std::thread( [ work ] { zuThreadEncapsulate( work, nullptr ); } ).join();
    EXPECT_EQ( ZU_REF_RETAIN_COUNT( value.get() ), 1u );
    key = nullptr;
    value = nullptr;
}

// A value whose end looks for itself and leaves another value, so many times.
static std::atomic<int> ends;
static ZU_OBJ *createFarewell( ZU_INT times );
static void sayFarewell( void *times )
{
    auto key = string( "farewell" );
    EXPECT_FALSE( zuThreadHasKey( zuStringObj( key.get() ) ) );
    ends++;
    if ( times ) {
        auto next = zu::adopt( createFarewell( (ZU_INT)times - 1 ) );
        zuThreadSetKey( zuStringObj( key.get() ), next.get() );
    }
}
static ZU_OBJ *createFarewell( ZU_INT times )
{
    return zu___BoxedPointerObj( zu___BoxedPointerCreate( (void *)times, sayFarewell ) );
}
TEST( Thread, KeysMayUseKeysAtTheirEnd )
{
    ends = 0;
    runOnThread( [] {
        auto value = zu::adopt( createFarewell( 3 ) );
        zuThreadSetKey( zuStringObj( string( "farewell" ).get() ), value.get() );
    } );
    EXPECT_EQ( ends, 4 );
}

TEST( Thread, TellsItsEnd )
{
    static zu::Ref<ZU_BARRIER> gate;
    gate = zu::adopt( zuBarrierCreate( ZU_TRUE ) );
    auto thread = spawn( "end", [] { zuBarrierPass( gate.get() ); } );
    auto early = zu::adopt( zuSignalCreate() );
    auto late = zu::adopt( zuSignalCreate() );
    auto earlyListener = zu::adopt( zuSignalableCreateSignal( early.get() ) );
    auto lateListener = zu::adopt( zuSignalableCreateSignal( late.get() ) );
    zuThreadEndAddSignalable( thread.get(), earlyListener.get() );
    zuThreadEndAddSignalable( thread.get(), lateListener.get() );
    zuThreadEndDelSignalable( thread.get(), lateListener.get() );
    EXPECT_FALSE( zuThreadEnd( thread.get() ) );
    zuBarrierUnblock( gate.get() );
    zuSignalWait( early.get() );
    EXPECT_TRUE( zuThreadEnd( thread.get() ) );
    EXPECT_FALSE( zu___ThreadTryFreeze( thread.get() ) );
    EXPECT_FALSE( zuSignalAsserted( late.get() ) );
    zuThreadEndAddSignalable( thread.get(), lateListener.get() );
    EXPECT_TRUE( zuSignalAsserted( late.get() ) );
    zuThreadJoin( thread.get() );
    zuThreadJoin( thread.get() ); // as often as one likes
    gate = nullptr;
}

TEST( Thread, ManyJoinManyAtOnce )
{
    static constexpr int WORKERS = 30;
    static std::atomic<int> ended;
    static std::vector<zu::Ref<ZU_THREAD>> workers;
    static zu::Ref<ZU_BARRIER> gate;
    gate = zu::adopt( zuBarrierCreate( ZU_TRUE ) );
    for ( int i = 0; i < WORKERS; i++ ) {
        workers.push_back( spawn( "worker", [] {
            zuBarrierPass( gate.get() );
            ended++;
        } ) );
    }
    std::vector<zu::Ref<ZU_THREAD>> joiners;
    for ( int i = 0; i < 4; i++ ) {
        joiners.push_back( spawn( "joiner", [] {
            for ( auto &worker : workers ) {
                zuThreadJoin( worker.get() );
            }
            EXPECT_EQ( ended, WORKERS );
        } ) );
    }
    zuBarrierUnblock( gate.get() );
    for ( auto &joiner : joiners ) {
        zuThreadJoin( joiner.get() );
    }
    workers.clear();
    gate = nullptr;
}

TEST( Thread, MayOutliveAllReferences )
{
    for ( int i = 0; i < 200; i++ ) {
        auto done = zu::adopt( zuSignalCreate() );
        spawn( "free", assertArgument, zuSignalObj( done.get() ) );
        zuSignalWait( done.get() );
    }
}

TEST( Thread, EncapsulatesForeignThreads )
{
    std::thread( [] {
        EXPECT_FALSE( zuThreadEncapsulated() );
        auto argument = string( "argument" );
        zuThreadEncapsulate(
            [] {
                EXPECT_TRUE( zuThreadEncapsulated() );
                zuThreadCheckEncapsulated();
                EXPECT_EQ( zuThreadPriority(), ZU_THREAD_PRIORITY_NORMAL );
                auto thread = zu::adopt( zuThreadThis() );
                EXPECT_EQ( takeText( zuThreadName( thread.get() ) ), "zu___ThreadEncapsulateBegin" );
                EXPECT_FALSE( zu___ThreadTryFreeze( thread.get() ) );
                EXPECT_FALSE( zuThreadEnd( thread.get() ) );
            },
            zuStringObj( argument.get() ) );
        EXPECT_EQ( ZU_REF_RETAIN_COUNT( argument.get() ), 1u );
        EXPECT_FALSE( zuThreadEncapsulated() );
    } ).join();
}

TEST( Thread, Sleeps )
{
    auto signal = zu::adopt( zuSignalCreate() );
    ZU_INT start = zuTimestamp();
    EXPECT_FALSE( zuSleepTimed( nullptr, 20 ) );
    EXPECT_GE( zuTimestamp() - start, 19 );
    EXPECT_FALSE( zuSleepTimed( signal.get(), 0 ) );
    EXPECT_FALSE( zuSignalHasSignalables( signal.get() ) ) << "nothing is left behind";
    auto thread = spawn( "waker", assertArgument, zuSignalObj( signal.get() ) );
    zuSleep( signal.get() );
    EXPECT_TRUE( zuSleepTimed( signal.get(), 0 ) ) << "asserted before";
    EXPECT_TRUE( zuSleepTimed( signal.get(), -1 ) );
    zuThreadJoin( thread.get() );
}

// In a process of its own, since the thread stays.
static void freezeACountingThread()
{
    static std::atomic<ZU_INT> count;
    auto thread = spawn( "counter", [] {
        for ( ;; ) {
            count++;
        }
    } );
    while ( count == 0 ) {
        zuThreadYield();
    }
    bool frozen = zu___ThreadTryFreeze( thread.get() );
    // The signal meets the thread when that runs next; from then on nothing moves.
    bool still = false;
    for ( int i = 0; i < 100 && !still; i++ ) {
        ZU_INT before = count;
        zuSleepTimed( nullptr, 20 );
        still = count == before;
    }
    _exit( frozen && still ? 0 : 1 );
}
TEST( Thread, FreezesForGood )
{
#ifdef __SANITIZE_THREAD__
    GTEST_SKIP() << "the sanitizer does not let a child process have threads";
#endif
    EXPECT_EXIT( freezeACountingThread(), testing::ExitedWithCode( 0 ), "" );
}

TEST( ThreadAborts, Misuse )
{
    static constexpr std::pair<const char *, void ( * )()> WITHOUT_A_THREAD[] = {
        { "thisThread", [] { zuThreadThis(); } },
        { "thisThread", [] { zuThreadUnlatchArgument(); } },
        { "thisThread", [] { zuSleepTimed( nullptr, 0 ); } },
        { "thisThread", zu___ThreadEncapsulateEnd },
        { "zuThreadEncapsulated()", zuThreadCheckEncapsulated },
    };
    for ( auto [ expression, func ] : WITHOUT_A_THREAD ) {
        expectAbort( expression, [ func = func ] {
            zu___ThreadEncapsulateEnd();
            func();
        } );
    }
    expectAbort( "!zuThreadEncapsulated()", [] { zu___ThreadEncapsulateBegin( nullptr ); } );
    expectAbort( "thisThread != thread", [] { zuThreadJoin( zu::adopt( zuThreadThis() ).get() ); } );
}
