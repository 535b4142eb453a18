#include "zu_test_support.h"

#include <numeric>

// An argument that says how often it was fired, and where.
struct Fired {
    std::atomic<int> count = 0;
    std::function<void()> then; // on the thread of the timers
};
static void fire( ZU_OBJ *arg )
{
    auto *fired = (Fired *)zu___BoxedPointerValue( zu___BoxedPointerFrom( arg ) );
    fired->count++;
    if ( fired->then ) {
        fired->then();
    }
}
static zu::Ref<ZU_TIMER> makeTimer( Fired *fired )
{
    auto arg = zu::adopt( zu___BoxedPointerCreate( fired, nullptr ) );
    return zu::adopt( zuTimerCreate( fire, zu___BoxedPointerObj( arg.get() ) ) );
}

// All timers share one thread, so when a timer that is due later has fired, those ahead of it have, and their calls
// have returned.
static void waitBehind( ZU_INT milliseconds )
{
    auto signal = zu::adopt( zuSignalCreate() );
    auto timer = zu::adopt( zuTimerCreateSignal( signal.get() ) );
    zuTimerSchedule( timer.get(), milliseconds );
    zuSignalWait( signal.get() );
}

// Holds the thread of the timers up, so that nothing fires meanwhile.
class Hold {
public:
    Hold()
    {
        fired.then = [ this ] {
            zuBarrierUnblock( held.get() );
            zuBarrierPass( gate.get() );
        };
        timer = makeTimer( &fired );
        zuTimerSchedule( timer.get(), 0 );
        zuBarrierPass( held.get() );
    }
    ~Hold()
    {
        zuBarrierUnblock( gate.get() );
        waitBehind( 1 );
    }

private:
    zu::Ref<ZU_BARRIER> held = zu::adopt( zuBarrierCreate( ZU_TRUE ) );
    zu::Ref<ZU_BARRIER> gate = zu::adopt( zuBarrierCreate( ZU_TRUE ) );
    Fired fired;
    zu::Ref<ZU_TIMER> timer;
};

static zu::Ref<ZU_TIME> secondsFromNow( ZU_INT seconds )
{
    ZU_TIME *time = zuTimeNow();
    zuTimeShiftSeconds( &time, seconds );
    return zu::adopt( time );
}

TEST( Timer, FiresEachKindOfTarget )
{
    auto signal = zu::adopt( zuSignalCreate() );
    auto barrier = zu::adopt( zuBarrierCreate( ZU_TRUE ) );
    auto alert = zu::adopt( zuAlertCreate() );
    auto queue = zu::adopt( zuEventQueueCreate() );
    auto event = zu::adopt( zuBoxedIntCreate( 7 ) );
    Fired fired;
    std::vector<zu::Ref<ZU_TIMER>> timers = {
        zu::adopt( zuTimerCreateSignal( signal.get() ) ),
        zu::adopt( zuTimerCreateBarrier( barrier.get() ) ),
        zu::adopt( zuTimerCreateAlert( alert.get() ) ),
        zu::adopt( zuTimerCreateEventQueue( queue.get(), zuBoxedIntObj( event.get() ) ) ),
        zu::adopt( zuTimerCreate( nullptr, nullptr ) ),
        makeTimer( &fired ),
    };
    for ( auto &timer : timers ) {
        EXPECT_FALSE( zuTimerScheduled( timer.get() ) );
        zuTimerSchedule( timer.get(), 0 );
    }
    waitBehind( 2 );
    EXPECT_TRUE( zuSignalAsserted( signal.get() ) );
    EXPECT_FALSE( zuBarrierIsBlocked( barrier.get() ) );
    EXPECT_TRUE( zuAlertIsSet( alert.get() ) );
    EXPECT_EQ( zu::adopt( zuEventQueueReadEvent( queue.get() ) ).get(), zuBoxedIntObj( event.get() ) );
    EXPECT_EQ( fired.count, 1 );
    for ( auto &timer : timers ) {
        EXPECT_FALSE( zuTimerScheduled( timer.get() ) );
    }
}

// Filed, moved, unscheduled and dropped at random while nothing fires, with many due at one time, and some not for long
TEST( Timer, ManyFireInOrderAfterAnyChanges )
{
    static constexpr ZU_INT NOT = -1, LATER = ZU_INT_MAX;
    SeededRandom random;
    std::vector<ZU_INT> order;
    std::vector<ZU_INT> due( 1000, NOT );
    std::vector<Fired> fired( due.size() );
    std::vector<zu::Ref<ZU_TIMER>> timers( due.size() );
    for ( size_t i = 0; i < due.size(); i++ ) {
        fired[ i ].then = [ &order, &due, i ] { order.push_back( due[ i ] ); };
        timers[ i ] = makeTimer( &fired[ i ] );
    }
    {
        Hold hold;
        for ( int step = 0; step < 20000; step++ ) {
            size_t i = random.below( due.size() );
            ZU_TIMER *timer = timers[ i ].get();
            ASSERT_EQ( zuTimerScheduled( timer ), due[ i ] != NOT );
            switch ( random.below( 8 ) ) {
            case 0:
                EXPECT_EQ( zuTimerUnschedule( timer ), due[ i ] != NOT );
                due[ i ] = NOT;
                break;
            case 1:
                timers[ i ] = makeTimer( &fired[ i ] );
                due[ i ] = NOT;
                break;
            case 2:
                zuTimerSchedule( timer, 100000 );
                due[ i ] = LATER;
                break;
            case 3:
                zuTimerScheduleAtTime( timer, secondsFromNow( 1000 + step ).get() ); // one of a second at the most
                due[ i ] = LATER;
                break;
            default:
                due[ i ] = (ZU_INT)random.below( 200 );
                zuTimerScheduleAt( timer, due[ i ] );
            }
        }
    }
    std::vector<ZU_INT> wanted;
    for ( size_t i = 0; i < due.size(); i++ ) {
        EXPECT_EQ( zuTimerScheduled( timers[ i ].get() ), due[ i ] == LATER );
        wanted.insert( wanted.end(), due[ i ] != NOT && due[ i ] != LATER, due[ i ] );
    }
    std::sort( wanted.begin(), wanted.end() );
    EXPECT_GT( wanted.size(), 0u );
    EXPECT_EQ( order, wanted );
}

TEST( Timer, TheLastReleaseDropsTheSchedule )
{
    Fired fired;
    auto arg = zu::adopt( zu___BoxedPointerCreate( &fired, nullptr ) );
    auto make = [ & ] { return zu::adopt( zuTimerCreate( fire, zu___BoxedPointerObj( arg.get() ) ) ); };
    auto relative = make();
    auto absolute = make();
    auto lingering = make();
    zu___TimerSetLinger( lingering.get(), ZU_TRUE );
    {
        Hold hold;
        zuTimerSchedule( relative.get(), 0 );
        zuTimerScheduleAtTime( absolute.get(), secondsFromNow( -1 ).get() );
        zuTimerSchedule( lingering.get(), 0 );
        relative = nullptr;
        absolute = nullptr;
        lingering = nullptr;
        EXPECT_EQ( ZU_REF_RETAIN_COUNT( arg.get() ), 2u );
    }
    EXPECT_EQ( fired.count, 1 );
    EXPECT_EQ( ZU_REF_RETAIN_COUNT( arg.get() ), 1u );
}

TEST( Timer, FollowsTheCalendar )
{
    Fired fired;
    auto past = makeTimer( &fired );
    zuTimerScheduleAtTime( past.get(), secondsFromNow( -5 ).get() ); // first in line: at once
    while ( zuTimerScheduled( past.get() ) ) {
        waitBehind( 1 );
    }
    waitBehind( 1 );
    EXPECT_EQ( fired.count, 1 );

    // What a call of the calendar schedules comes when the other timers have been looked at.
    auto done = zu::adopt( zuSignalCreate() );
    auto soon = secondsFromNow( 2 );
    auto last = zu::adopt( zuTimerCreateSignal( done.get() ) );
    Fired next;
    next.then = [ & ] { zuTimerSchedule( last.get(), 1 ); };
    auto nextTimer = makeTimer( &next );
    zuTimerScheduleAtTime( nextTimer.get(), soon.get() );
    zuSignalWait( done.get() );
    EXPECT_GE( zuTimeCompare( zu::adopt( zuTimeNow() ).get(), soon.get() ), 0 );
}

// A thread that sleeps until a timer far away is due wakes for each that is due ahead of it, however it is filed, and not
// too early.
TEST( Timer, WakesForWhatIsDueFirst )
{
    Fired unused;
    auto far = makeTimer( &unused );
    auto done = zu::adopt( zuAlertCreate() );
    auto gate = zu::adopt( zuBarrierCreate( ZU_TRUE ) );
    auto listener = zu::adopt( zuAlertableCreateBarrier( gate.get() ) );
    auto near = zu::adopt( zuTimerCreateAlert( done.get() ) );
    for ( int round = 0; round < 300; round++ ) {
        zuTimerSchedule( far.get(), 1000000 + round % 7 ); // moves the time of waking, or not
        zuTimerSchedule( near.get(), 1000000 - round % 5 );
        zuBarrierBlock( gate.get() );
        zuAlertUnset( done.get() );
        zuAlertAddAlertable( done.get(), listener.get() );
        ZU_INT due = zuTimestamp() + round % 3;
        round % 2 ? zuTimerSchedule( near.get(), round % 3 ) : zuTimerScheduleAt( near.get(), due );
        zuBarrierPass( gate.get() );
        EXPECT_GE( zuTimestamp(), due );
    }
    EXPECT_EQ( unused.count, 0 );
}

TEST( Timer, OfTwoAtOneSecondTheLaterFires )
{
    Fired first, second;
    auto firstTimer = makeTimer( &first );
    auto secondTimer = makeTimer( &second );
    auto time = secondsFromNow( 1 );
    zuTimerScheduleAtTime( firstTimer.get(), time.get() );
    zuTimerScheduleAtTime( secondTimer.get(), time.get() );
    while ( zuTimerScheduled( secondTimer.get() ) ) {
        waitBehind( 50 );
    }
    waitBehind( 1 );
    EXPECT_EQ( first.count, 0 );
    EXPECT_EQ( second.count, 1 );
    EXPECT_TRUE( zuTimerScheduled( firstTimer.get() ) );
}

TEST( Timer, ManyThreadsScheduleAndCancel )
{
    constexpr int THREADS = 4;
    constexpr int ROUNDS = 500;
    std::atomic<int> cancelled = 0;
    std::vector<Fired> fired( THREADS );
    runThreads( THREADS, [ & ]( int self ) {
        auto timer = makeTimer( &fired[ (size_t)self ] );
        for ( int round = 0; round < ROUNDS; round++ ) {
            zuTimerSchedule( timer.get(), round % 3 );
            if ( round % 2 ) {
                cancelled += zuTimerUnschedule( timer.get() );
            } else {
                while ( zuTimerScheduled( timer.get() ) ) {
                    zuThreadYield();
                }
            }
        }
    } );
    waitBehind( 5 );
    int all = cancelled;
    for ( Fired &each : fired ) {
        all += each.count;
    }
    EXPECT_EQ( all, THREADS * ROUNDS ) << "each was either cancelled or fired, once";
}

// The child process of an abort has no thread of timers until it starts one of its own.
TEST( TimerAborts, FiledTimersAndWatchdogs )
{
#ifdef __SANITIZE_THREAD__
    GTEST_SKIP() << "the sanitizer does not let a child process have threads";
#endif
    auto timer = zu::adopt( zuTimerCreate( nullptr, nullptr ) );
    auto between = []( const std::function<void()> &schedule ) {
        return [ schedule ] {
            if ( !abortsInAFork() ) {
                zu___TimerShutdown();
            }
            zu___TimerStartup();
            schedule();
            zu___TimerShutdown();
        };
    };
    expectAbort( "!zuPriorityMapLength( timerRelPrioMap )", between( [ & ] { zuTimerSchedule( timer.get(), 100000 ); } ) );
    expectAbort( "!zuDictLength( timerAbsDict )",
                 between( [ & ] { zuTimerScheduleAtTime( timer.get(), secondsFromNow( 1000 ).get() ); } ) );
    expectAbort( "!tcl->sched", between( [] { // a lingering timer that loses its second
                     auto time = secondsFromNow( 1000 );
                     auto first = zu::adopt( zuTimerCreate( nullptr, nullptr ) );
                     auto second = zu::adopt( zuTimerCreate( nullptr, nullptr ) );
                     zu___TimerSetLinger( first.get(), ZU_TRUE );
                     zuTimerScheduleAtTime( first.get(), time.get() );
                     zuTimerScheduleAtTime( second.get(), time.get() );
                     first = nullptr;
                 } ) );
    expectAbort( nullptr, between( [] {
                     auto watchdog = zu::adopt( zu___TimerCreateAbort() );
                     zuTimerSchedule( watchdog.get(), 1 );
                     zuSleep( nullptr );
                 } ) );
    expectAbort( nullptr, between( [] { // over the thread that has to abort
                     endAfter( 60 ); // the child, if that has frozen itself
                     Fired fired;
                     zu::Ref<ZU_TIMER> watchdog;
                     fired.then = [ & ] {
                         watchdog = zu::adopt( zu___TimerCreateAbort() );
                         zuTimerSchedule( watchdog.get(), 0 );
                     };
                     auto starter = makeTimer( &fired );
                     zuTimerSchedule( starter.get(), 0 );
                     zuSleep( nullptr );
                 } ) );
}
