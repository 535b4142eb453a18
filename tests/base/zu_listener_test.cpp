// Alertables and signalables, which are alike: each test runs for both.

#include "zu/zu.hpp"

#include "zu_test_support.h"

#include <atomic>
#include <memory>

struct ALERTS {
    using Source = ZU_ALERT;
    using Listener = ZU_ALERTABLE;
    using Imp = ZU___ALERTABLE_IMP;
    static constexpr auto createSource = zuAlertCreate;
    static constexpr auto fireSource = zuAlertSet;
    static constexpr auto attach = zuAlertAddAlertable;
    static constexpr auto create = zuAlertableCreate;
    static constexpr auto createBarrier = zuAlertableCreateBarrier;
    static constexpr auto createEventQueue = zuAlertableCreateEventQueue;
    static constexpr auto createOfQueue = zuEventQueueCreateAlertable;
    static constexpr auto createSignal = zuAlertableCreateSignal;
    static constexpr auto createAlert = zuAlertableCreateAlert;
    static constexpr auto fire = zu___AlertableAlert;
    static constexpr auto imp = zu___AlertableImp;
    static constexpr auto impCreate = zu___AlertableImpCreate;
    static constexpr auto impCreateBarrier = zu___AlertableImpCreateBarrier;
    static constexpr auto impCreateEventQueue = zu___AlertableImpCreateEventQueue;
    static constexpr auto impCreateSignal = zu___AlertableImpCreateSignal;
    static constexpr auto impCreateAlert = zu___AlertableImpCreateAlert;
    static constexpr auto impFire = zu___AlertableImpAlert;
    static constexpr auto impHalt = zu___AlertableImpHalt;
    static constexpr const char *listenerName = "alb";
};
struct SIGNALS {
    using Source = ZU_SIGNAL;
    using Listener = ZU_SIGNALABLE;
    using Imp = ZU___SIGNALABLE_IMP;
    static constexpr auto createSource = zuSignalCreate;
    static constexpr auto fireSource = zuSignalAssert;
    static constexpr auto attach = zuSignalAddSignalable;
    static constexpr auto create = zuSignalableCreate;
    static constexpr auto createBarrier = zuSignalableCreateBarrier;
    static constexpr auto createEventQueue = zuSignalableCreateEventQueue;
    static constexpr auto createOfQueue = zuEventQueueCreateSignalable;
    static constexpr auto createSignal = zuSignalableCreateSignal;
    static constexpr auto createAlert = zuSignalableCreateAlert;
    static constexpr auto fire = zu___SignalableSignal;
    static constexpr auto imp = zu___SignalableImp;
    static constexpr auto impCreate = zu___SignalableImpCreate;
    static constexpr auto impCreateBarrier = zu___SignalableImpCreateBarrier;
    static constexpr auto impCreateEventQueue = zu___SignalableImpCreateEventQueue;
    static constexpr auto impCreateSignal = zu___SignalableImpCreateSignal;
    static constexpr auto impCreateAlert = zu___SignalableImpCreateAlert;
    static constexpr auto impFire = zu___SignalableImpSignal;
    static constexpr auto impHalt = zu___SignalableImpHalt;
    static constexpr const char *listenerName = "sigb";
};

template <typename Kind>
class Listener : public testing::Test {
};
template <typename Kind>
class ListenerAborts : public testing::Test {
};
using Kinds = testing::Types<ALERTS, SIGNALS>;
TYPED_TEST_SUITE( Listener, Kinds, );
TYPED_TEST_SUITE( ListenerAborts, Kinds, );

static std::atomic<int> calls;

static void countCall( ZU_OBJ * )
{
    calls++;
}

// One of each target, and a listener for each.
struct TARGETS {
    zu::Ref<ZU_BOXED_INT> arg = zu::adopt( zuBoxedIntCreate( 1 ) );
    zu::Ref<ZU_BARRIER> barrier = zu::adopt( zuBarrierCreate( ZU_TRUE ) );
    zu::Ref<ZU_EVENT_QUEUE> eq = zu::adopt( zuEventQueueCreate() );
    zu::Ref<ZU_BOXED_INT> evt = zu::adopt( zuBoxedIntCreate( 2 ) );
    zu::Ref<ZU_SIGNAL> sig = zu::adopt( zuSignalCreate() );
    zu::Ref<ZU_ALERT> alert = zu::adopt( zuAlertCreate() );

    ZU_OBJ *argObj() const
    {
        return zuBoxedIntObj( arg.get() );
    }
    ZU_OBJ *evtObj() const
    {
        return zuBoxedIntObj( evt.get() );
    }
    // Expects that each target has been reached, or none.
    void expectReached( bool reached ) const
    {
        EXPECT_EQ( calls.exchange( 0 ), reached ? 1 : 0 );
        EXPECT_EQ( zuBarrierIsBlocked( barrier.get() ), !reached );
        zu::Ref<ZU_OBJ> event = zu::adopt( zuEventQueueReadEvent( eq.get() ) );
        EXPECT_EQ( event.get(), reached ? evtObj() : nullptr );
        EXPECT_EQ( zuSignalAsserted( sig.get() ), reached );
        EXPECT_EQ( zuAlertIsSet( alert.get() ), reached );
    }
    void expectUnheld() const
    {
        EXPECT_EQ( ZU_REF_RETAIN_COUNT( arg.get() ), 1u );
        EXPECT_EQ( ZU_REF_RETAIN_COUNT( barrier.get() ), 1u );
        EXPECT_EQ( ZU_REF_RETAIN_COUNT( eq.get() ), 1u );
        EXPECT_EQ( ZU_REF_RETAIN_COUNT( evt.get() ), 1u );
        EXPECT_EQ( ZU_REF_RETAIN_COUNT( sig.get() ), 1u );
        EXPECT_EQ( ZU_REF_RETAIN_COUNT( alert.get() ), 1u );
    }
};
template <typename Kind>
static std::vector<zu::Ref<typename Kind::Listener>> createEach( const TARGETS &targets )
{
    std::vector<zu::Ref<typename Kind::Listener>> listeners;
    listeners.push_back( zu::adopt( Kind::create( countCall, targets.argObj() ) ) );
    listeners.push_back( zu::adopt( Kind::create( nullptr, targets.argObj() ) ) );
    listeners.push_back( zu::adopt( Kind::create( nullptr, nullptr ) ) );
    listeners.push_back( zu::adopt( Kind::createBarrier( targets.barrier.get() ) ) );
    listeners.push_back( zu::adopt( Kind::createEventQueue( targets.eq.get(), targets.evtObj() ) ) );
    listeners.push_back( zu::adopt( Kind::createOfQueue( targets.eq.get(), targets.evtObj() ) ) );
    listeners.push_back( zu::adopt( Kind::createSignal( targets.sig.get() ) ) );
    listeners.push_back( zu::adopt( Kind::createAlert( targets.alert.get() ) ) );
    return listeners;
}

TYPED_TEST( Listener, ReachesItsTarget )
{
    for ( bool bySource : { false, true } ) {
        TARGETS targets;
        zu::Ref<typename TypeParam::Source> source = zu::adopt( TypeParam::createSource() );
        for ( zu::Ref<typename TypeParam::Listener> &listener : createEach<TypeParam>( targets ) ) {
            if ( bySource ) {
                TypeParam::attach( source.get(), listener.get() );
                TypeParam::fireSource( source.get() );
            } else {
                TypeParam::fire( listener.get() );
            }
        }
        targets.expectReached( true );
        targets.expectUnheld();
    }
}
TYPED_TEST( Listener, IsInertAfterItsEnd )
{
    TARGETS targets;
    std::vector<zu::Ref<typename TypeParam::Imp>> imps;
    {
        std::vector<zu::Ref<typename TypeParam::Listener>> listeners = createEach<TypeParam>( targets );
        for ( zu::Ref<typename TypeParam::Listener> &listener : listeners ) {
            imps.push_back( zu::adopt( TypeParam::imp( listener.get() ) ) );
        }
        EXPECT_GT( ZU_REF_RETAIN_COUNT( targets.arg.get() ), 1u );
    }
    targets.expectUnheld();
    for ( zu::Ref<typename TypeParam::Imp> &imp : imps ) {
        TypeParam::impFire( imp.get() );
        TypeParam::impHalt( imp.get() );
    }
    targets.expectReached( false );
    // An inside of its own, without an owner to halt it
    TypeParam::impFire( zu::adopt( TypeParam::impCreate( countCall, targets.argObj() ) ).get() );
    EXPECT_EQ( calls.exchange( 0 ), 1 );
    targets.expectUnheld();
}
// What remains of a queue takes events without a word.
TYPED_TEST( Listener, OutlivesItsQueue )
{
    TARGETS targets;
    zu::Ref<typename TypeParam::Listener> listener =
        zu::adopt( TypeParam::createEventQueue( targets.eq.get(), targets.evtObj() ) );
    targets.eq = nullptr;
    TypeParam::fire( listener.get() );
    EXPECT_EQ( ZU_REF_RETAIN_COUNT( targets.evt.get() ), 2u );
}

// Races, many at a time: one thread goes along a row of sources and fires each, another along with it.
static constexpr int RACES = 1000;
static std::atomic<int> firings[ RACES ];
static bool ended[ RACES ]; // plain: who looks after the end has not been waited for

static void fireRacer( ZU_OBJ *arg )
{
    ZU_INT racer = zuBoxedIntValue( zuBoxedIntFrom( arg ) );
    EXPECT_FALSE( ended[ racer ] );
    firings[ racer ]++;
}
template <typename Kind>
struct RACERS {
    zu::Ref<typename Kind::Source> sources[ RACES ];
    zu::Ref<typename Kind::Listener> listeners[ RACES ];
    std::atomic<int> ready{ 0 };

    RACERS()
    {
        for ( int i = 0; i < RACES; i++ ) {
            zu::Ref<ZU_BOXED_INT> arg = zu::adopt( zuBoxedIntCreate( i ) );
            sources[ i ] = zu::adopt( Kind::createSource() );
            listeners[ i ] = zu::adopt( Kind::create( fireRacer, zuBoxedIntObj( arg.get() ) ) );
            firings[ i ] = 0;
            ended[ i ] = false;
        }
    }
    // Runs `other` for each race beside the firing.
    void run( const std::function<void( int i )> &other )
    {
        runThreads( 2, [ & ]( int self ) {
            for ( ready++; ready < 2; ) {
                std::this_thread::yield();
            }
            for ( int i = 0; i < RACES; i++ ) {
                if ( self == 0 ) {
                    Kind::fireSource( sources[ i ].get() );
                } else {
                    other( i );
                }
            }
        } );
    }
};
TYPED_TEST( Listener, IsNeverLost )
{
    for ( int round = 0; round < 100; round++ ) { // 100,000 races
        auto racers = std::make_unique<RACERS<TypeParam>>();
        racers->run(
            [ & ]( int i ) { TypeParam::attach( racers->sources[ i ].get(), racers->listeners[ i ].get() ); } );
        for ( int i = 0; i < RACES; i++ ) {
            ASSERT_EQ( firings[ i ], 1 ) << "round " << round << ", source " << i;
        }
    }
}
TYPED_TEST( Listener, EndsWhileItsSourceFires )
{
    for ( int round = 0; round < 20; round++ ) {
        auto racers = std::make_unique<RACERS<TypeParam>>();
        for ( int i = 0; i < RACES; i++ ) {
            TypeParam::attach( racers->sources[ i ].get(), racers->listeners[ i ].get() );
        }
        racers->run( [ & ]( int i ) {
            racers->listeners[ i ] = nullptr;
            ended[ i ] = true;
        } );
        for ( int i = 0; i < RACES; i++ ) {
            ASSERT_LE( firings[ i ], 1 ) << "round " << round << ", source " << i;
        }
    }
}

TYPED_TEST( ListenerAborts, Null )
{
    TARGETS targets;
    zu::Ref<ZU___EVENT_QUEUE_IMP> eqImp = zu::adopt( zu___EventQueueImp( targets.eq.get() ) );
    expectAbort( "barrier", [] { TypeParam::createBarrier( nullptr ); } );
    expectAbort( "eq", [ & ] { TypeParam::createEventQueue( nullptr, targets.evtObj() ); } );
    expectAbort( "evt", [ & ] { TypeParam::createEventQueue( targets.eq.get(), nullptr ); } );
    expectAbort( "eq", [ & ] { TypeParam::createOfQueue( nullptr, targets.evtObj() ); } );
    expectAbort( "evt", [ & ] { TypeParam::createOfQueue( targets.eq.get(), nullptr ); } );
    expectAbort( "sig", [] { TypeParam::createSignal( nullptr ); } );
    expectAbort( "alert", [] { TypeParam::createAlert( nullptr ); } );
    expectAbort( TypeParam::listenerName, [] { TypeParam::fire( nullptr ); } );
    expectAbort( TypeParam::listenerName, [] { TypeParam::imp( nullptr ); } );
    expectAbort( "barrier", [] { TypeParam::impCreateBarrier( nullptr ); } );
    expectAbort( "eq", [ & ] { TypeParam::impCreateEventQueue( nullptr, targets.evtObj() ); } );
    expectAbort( "evt", [ & ] { TypeParam::impCreateEventQueue( eqImp.get(), nullptr ); } );
    expectAbort( "sig", [] { TypeParam::impCreateSignal( nullptr ); } );
    expectAbort( "alert", [] { TypeParam::impCreateAlert( nullptr ); } );
    expectAbort( "imp", [] { TypeParam::impFire( nullptr ); } );
    expectAbort( "imp", [] { TypeParam::impHalt( nullptr ); } );
}
