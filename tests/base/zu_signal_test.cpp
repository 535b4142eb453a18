#include "zu_test_support.h"

static zu::Ref<ZU_SIGNAL> createSignal()
{
    return zu::adopt( zuSignalCreate() );
}

// A kind of object that can be attached: how to attach and detach object `i`, and whether that has been told.
struct KIND {
    std::function<void( ZU_SIGNAL *sig, int i )> add;
    std::function<void( ZU_SIGNAL *sig, int i )> del;
    std::function<bool( int i )> isTold;
};
template <typename T>
using THREE = std::array<zu::Ref<T>, 3>;

TEST( Signal, BehavesLikeAModel )
{
    for ( unsigned seed = 1; seed <= 300; seed++ ) {
        SeededRandom random( seed );
        zu::Ref<ZU_SIGNAL> sig = createSignal();
        std::array<int, 3> calls = {};
        THREE<ZU_SIGNALABLE> signalables;
        THREE<ZU_SIGNAL> signals;
        THREE<ZU_ALERT> alerts;
        THREE<ZU_BARRIER> barriers;
        for ( size_t i = 0; i < 3; i++ ) {
            auto call = []( ZU_OBJ *arg ) { ++*(int *)zu___BoxedPointerValue( zu___BoxedPointerFrom( arg ) ); };
            auto arg = zu::adopt( zu___BoxedPointerCreate( &calls[ i ], nullptr ) );
            signalables[ i ] = zu::adopt( zuSignalableCreate( call, zu___BoxedPointerObj( arg.get() ) ) );
            signals[ i ] = createSignal();
            alerts[ i ] = zu::adopt( zuAlertCreate() );
            barriers[ i ] = zu::adopt( zuBarrierCreate( ZU_TRUE ) );
        }
        auto kind = []( auto &objects, auto *add, auto *del, std::function<bool( int )> isTold ) {
            return KIND{ [ &objects, add ]( ZU_SIGNAL *to, int i ) { add( to, objects[ i ].get() ); },
                         [ &objects, del ]( ZU_SIGNAL *from, int i ) { del( from, objects[ i ].get() ); }, isTold };
        };
        const KIND kinds[] = {
            kind( signalables, zuSignalAddSignalable, zuSignalDelSignalable,
                  [ & ]( int i ) { return calls[ i ] > 0; } ),
            kind( signals, zuSignalAddSignal, zuSignalDelSignal,
                  [ & ]( int i ) { return zuSignalAsserted( signals[ i ].get() ); } ),
            kind( alerts, zuSignalAddAlert, zuSignalDelAlert,
                  [ & ]( int i ) { return zuAlertIsSet( alerts[ i ].get() ); } ),
            kind( barriers, zuSignalAddBarrier, zuSignalDelBarrier,
                  [ & ]( int i ) { return !zuBarrierIsBlocked( barriers[ i ].get() ); } ),
        };
        std::set<int> attached; // 3 times the kind and the object
        std::set<int> told;
        bool asserted = false;
        int steps = 1 + (int)( random() % 40 );
        for ( int step = 0; step < steps; step++ ) {
            if ( step == steps - 5 ) {
                asserted = true;
                zuSignalAssert( sig.get() );
                told = std::exchange( attached, {} );
            }
            int which = (int)( random() % 12 );
            if ( random() % 3 > 0 ) {
                ( asserted ? told : attached ).insert( which );
                kinds[ which / 3 ].add( sig.get(), which % 3 );
            } else {
                attached.erase( which );
                kinds[ which / 3 ].del( sig.get(), which % 3 );
            }
            ASSERT_EQ( zuSignalAsserted( sig.get() ), asserted );
            ASSERT_EQ( zuSignalHasSignalables( sig.get() ), !attached.empty() ) << "step " << step;
            for ( int i = 0; i < 12; i++ ) {
                ASSERT_EQ( kinds[ i / 3 ].isTold( i % 3 ), told.count( i ) > 0 ) << "step " << step << ", " << i;
            }
        }
        for ( size_t i = 0; asserted && i < 3; i++ ) {
            EXPECT_EQ( ZU_REF_RETAIN_COUNT( signals[ i ].get() ), 1u );
            EXPECT_EQ( ZU_REF_RETAIN_COUNT( alerts[ i ].get() ), 1u );
            EXPECT_EQ( ZU_REF_RETAIN_COUNT( barriers[ i ].get() ), 1u );
        }
    }
}

// Each kind sees which of the others have been told: 1 for signals, 2 for alerts, 4 for barriers.
TEST( Signal, TellsKindByKind )
{
    static std::vector<int> sequence;
    static zu::Ref<ZU_SIGNAL> chained;
    static zu::Ref<ZU_ALERT> alert;
    static zu::Ref<ZU_BARRIER> barrier;
    auto look = []( ZU_OBJ * ) {
        sequence.push_back( zuSignalAsserted( chained.get() ) + 2 * zuAlertIsSet( alert.get() ) +
                            4 * !zuBarrierIsBlocked( barrier.get() ) );
    };
    chained = createSignal();
    alert = zu::adopt( zuAlertCreate() );
    barrier = zu::adopt( zuBarrierCreate( ZU_TRUE ) );
    zu::Ref<ZU_SIGNALABLE> sigb = zu::adopt( zuSignalableCreate( look, nullptr ) );
    zu::Ref<ZU_ALERTABLE> alb = zu::adopt( zuAlertableCreate( look, nullptr ) );
    zuSignalAddSignalable( chained.get(), sigb.get() );
    zuAlertAddAlertable( alert.get(), alb.get() );
    zu::Ref<ZU_SIGNAL> sig = createSignal();
    zuSignalAddBarrier( sig.get(), barrier.get() );
    zuSignalAddAlert( sig.get(), alert.get() );
    zuSignalAddSignal( sig.get(), chained.get() );
    zuSignalAddSignalable( sig.get(), sigb.get() );
    zuSignalAssert( sig.get() );
    zuSignalAssert( sig.get() );
    EXPECT_EQ( sequence, std::vector<int>( { 0, 1, 3 } ) );
    EXPECT_FALSE( zuBarrierIsBlocked( barrier.get() ) );
    chained = nullptr;
    alert = nullptr;
    barrier = nullptr;
}

TEST( Signal, IsWaitedFor )
{
    zu::Ref<ZU_SIGNAL> sig = createSignal();
    EXPECT_FALSE( zuSignalWaitTimed( sig.get(), 0 ) );
    EXPECT_FALSE( zuSignalWaitTimed( sig.get(), 1 ) );
    EXPECT_FALSE( zuSignalHasSignalables( sig.get() ) ); // though it has made what threads wait at
    zuSignalAssert( sig.get() );
    zuSignalWait( sig.get() );
    for ( ZU_INT millisec : { ZU_INT_MIN, (ZU_INT)-2, (ZU_INT)-1, (ZU_INT)0, ZU_INT_MAX } ) {
        EXPECT_TRUE( zuSignalWaitTimed( sig.get(), millisec ) );
    }
}
