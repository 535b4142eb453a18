// Alertables and signalables, which are alike: each test runs for both.

#include "zu_test_support.h"

#include <memory>

// The functions of both, under common names: `A` is Alert or Signal.
#define KIND( Name, A, UPPER, Fire )                                                   \
    struct Name {                                                                      \
        using Source = ZU_##UPPER;                                                     \
        using Listener = ZU_##UPPER##ABLE;                                             \
        using Imp = ZU___##UPPER##ABLE_IMP;                                            \
        static constexpr auto createSource = zu##A##Create;                            \
        static constexpr auto fireSource = zu##A##Fire;                                \
        static constexpr auto attach = zu##A##Add##A##able;                            \
        static constexpr auto create = zu##A##ableCreate;                              \
        static constexpr auto createBarrier = zu##A##ableCreateBarrier;                \
        static constexpr auto createEventQueue = zu##A##ableCreateEventQueue;          \
        static constexpr auto createOfQueue = zuEventQueueCreate##A##able;             \
        static constexpr auto createSignal = zu##A##ableCreateSignal;                  \
        static constexpr auto createAlert = zu##A##ableCreateAlert;                    \
        static constexpr auto fire = zu___##A##able##A;                                \
        static constexpr auto imp = zu___##A##ableImp;                                 \
        static constexpr auto impCreate = zu___##A##ableImpCreate;                     \
        static constexpr auto impCreateEventQueue = zu___##A##ableImpCreateEventQueue; \
        static constexpr auto impFire = zu___##A##ableImp##A;                          \
        static constexpr auto impHalt = zu___##A##ableImpHalt;                         \
    }
KIND( ALERTS, Alert, ALERT, Set );
KIND( SIGNALS, Signal, SIGNAL, Assert );

template <typename Kind>
class Listener : public testing::Test {
};
using Kinds = testing::Types<ALERTS, SIGNALS>;
TYPED_TEST_SUITE( Listener, Kinds, );

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
        for ( ZU_OBJ *target : { argObj(), zuBarrierObj( barrier.get() ), zuEventQueueObj( eq.get() ), evtObj(),
                                 zuSignalObj( sig.get() ), zuAlertObj( alert.get() ) } ) {
            EXPECT_EQ( ZU_REF_RETAIN_COUNT( target ), 1u );
        }
    }
};
template <typename Kind>
static std::vector<zu::Ref<typename Kind::Listener>> createEach( const TARGETS &targets )
{
    return {
        zu::adopt( Kind::create( countCall, targets.argObj() ) ),
        zu::adopt( Kind::create( nullptr, targets.argObj() ) ),
        zu::adopt( Kind::create( nullptr, nullptr ) ),
        zu::adopt( Kind::createBarrier( targets.barrier.get() ) ),
        zu::adopt( Kind::createEventQueue( targets.eq.get(), targets.evtObj() ) ),
        zu::adopt( Kind::createOfQueue( targets.eq.get(), targets.evtObj() ) ),
        zu::adopt( Kind::createSignal( targets.sig.get() ) ),
        zu::adopt( Kind::createAlert( targets.alert.get() ) ),
    };
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
