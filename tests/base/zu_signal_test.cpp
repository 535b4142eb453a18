#include "zu/zu.hpp"

#include "zu_test_support.h"

#include <atomic>
#include <random>
#include <set>

static zu::Ref<ZU_SIGNAL> createSignal()
{
    return zu::adopt( zuSignalCreate() );
}

// What a signal keeps of one kind, and three objects of that kind that count how often they are told.
struct MODEL_KIND {
    int slot = -1; // none
    std::set<int> dict;
    int told[ 3 ] = {};

    void add( int i, bool asserted )
    {
        if ( asserted ) {
            told[ i ]++;
        } else if ( slot < 0 ) {
            slot = i;
        } else if ( slot != i ) {
            dict.insert( i );
        }
    }
    void del( int i )
    {
        if ( slot == i ) {
            slot = -1;
        }
        dict.erase( i );
    }
    void tell()
    {
        if ( slot >= 0 ) {
            told[ slot ]++;
        }
        for ( int i : dict ) {
            told[ i ]++;
        }
        slot = -1;
        dict.clear();
    }
};

TEST( Signal, BehavesLikeAModel )
{
    for ( unsigned seed = 1; seed <= 300; seed++ ) {
        SCOPED_TRACE( seed );
        std::minstd_rand random( seed );
        zu::Ref<ZU_SIGNAL> sig = createSignal();
        zu::Ref<ZU_COUNTER> counters[ 3 ]; // what the signalables count in
        zu::Ref<ZU_SIGNALABLE> signalables[ 3 ];
        zu::Ref<ZU_SIGNAL> signals[ 3 ];
        zu::Ref<ZU_ALERT> alerts[ 3 ];
        zu::Ref<ZU_BARRIER> barriers[ 3 ];
        for ( int i = 0; i < 3; i++ ) {
            counters[ i ] = zu::adopt( zuCounterCreate() );
            auto count = []( ZU_OBJ *arg ) { zuCounterIncrement( zuCounterFrom( arg ) ); };
            signalables[ i ] = zu::adopt( zuSignalableCreate( count, zuCounterObj( counters[ i ].get() ) ) );
            signals[ i ] = createSignal();
            alerts[ i ] = zu::adopt( zuAlertCreate() );
            barriers[ i ] = zu::adopt( zuBarrierCreate( ZU_TRUE ) );
        }
        MODEL_KIND kinds[ 4 ];
        bool asserted = false;
        int steps = 1 + (int)( random() % 40 );
        for ( int step = 0; step < steps; step++ ) {
            int i = (int)( random() % 3 );
            int kind = (int)( random() % 4 );
            bool add = random() % 3 > 0;
            if ( step == steps - 5 ) {
                asserted = true;
                zuSignalAssert( sig.get() );
                for ( MODEL_KIND &each : kinds ) {
                    each.tell();
                }
            }
            if ( add ) {
                kinds[ kind ].add( i, asserted );
            } else {
                kinds[ kind ].del( i );
            }
            switch ( kind ) {
            case 0:
                ( add ? zuSignalAddSignalable : zuSignalDelSignalable )( sig.get(), signalables[ i ].get() );
                break;
            case 1:
                ( add ? zuSignalAddSignal : zuSignalDelSignal )( sig.get(), signals[ i ].get() );
                break;
            case 2:
                ( add ? zuSignalAddAlert : zuSignalDelAlert )( sig.get(), alerts[ i ].get() );
                break;
            default:
                ( add ? zuSignalAddBarrier : zuSignalDelBarrier )( sig.get(), barriers[ i ].get() );
            }
            ASSERT_EQ( zuSignalAsserted( sig.get() ), asserted );
            bool any = false;
            for ( const MODEL_KIND &each : kinds ) {
                any = any || each.slot >= 0 || !each.dict.empty();
            }
            ASSERT_EQ( zuSignalHasSignalables( sig.get() ), any ) << "step " << step;
            for ( int object = 0; object < 3; object++ ) {
                ASSERT_EQ( zuCounterValue( counters[ object ].get() ), kinds[ 0 ].told[ object ] ) << "step " << step;
                ASSERT_EQ( zuSignalAsserted( signals[ object ].get() ), kinds[ 1 ].told[ object ] > 0 );
                ASSERT_EQ( zuAlertIsSet( alerts[ object ].get() ), kinds[ 2 ].told[ object ] > 0 );
                ASSERT_EQ( zuBarrierIsBlocked( barriers[ object ].get() ), kinds[ 3 ].told[ object ] == 0 );
            }
        }
        if ( asserted ) {
            for ( int i = 0; i < 3; i++ ) {
                EXPECT_EQ( ZU_REF_RETAIN_COUNT( signals[ i ].get() ), 1u );
                EXPECT_EQ( ZU_REF_RETAIN_COUNT( alerts[ i ].get() ), 1u );
                EXPECT_EQ( ZU_REF_RETAIN_COUNT( barriers[ i ].get() ), 1u );
            }
        }
    }
}

// Each kind sees that those ahead of it have been told, and those behind it not.
TEST( Signal, TellsKindByKind )
{
    static std::vector<int> sequence;
    sequence.clear();
    static zu::Ref<ZU_SIGNAL> chained;
    static zu::Ref<ZU_ALERT> alert;
    static zu::Ref<ZU_BARRIER> barrier;
    auto look = []( ZU_OBJ * ) {
        sequence.push_back( zuSignalAsserted( chained.get() ) + zuAlertIsSet( alert.get() ) +
                            !zuBarrierIsBlocked( barrier.get() ) );
    };
    chained = createSignal();
    alert = zu::adopt( zuAlertCreate() );
    barrier = zu::adopt( zuBarrierCreate( ZU_TRUE ) );
    zu::Ref<ZU_SIGNALABLE> sigb = zu::adopt( zuSignalableCreate( look, nullptr ) );
    zu::Ref<ZU_ALERTABLE> alb = zu::adopt( zuAlertableCreate( look, nullptr ) );
    zuSignalAddSignalable( chained.get(), sigb.get() );
    zuAlertAddAlertable( alert.get(), alb.get() );
    zu::Ref<ZU_SIGNAL> sig = createSignal();
    zu::Ref<ZU_SIGNALABLE> first = zu::adopt( zuSignalableCreate( look, nullptr ) );
    zuSignalAddBarrier( sig.get(), barrier.get() );
    zuSignalAddAlert( sig.get(), alert.get() );
    zuSignalAddSignal( sig.get(), chained.get() );
    zuSignalAddSignalable( sig.get(), first.get() );
    zuSignalAssert( sig.get() );
    zuSignalAssert( sig.get() );
    EXPECT_EQ( sequence, std::vector<int>( { 0, 1, 2 } ) );
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
// Signals in a row, each asserted by who has waited for the one ahead of it, with more threads that wait for it too.
TEST( Signal, WakesAllThatWait )
{
    static constexpr int LENGTH = 600;
    static constexpr int THREADS = 3;
    std::vector<zu::Ref<ZU_SIGNAL>> row;
    for ( int i = 0; i <= LENGTH; i++ ) {
        row.push_back( createSignal() );
    }
    int steps = 0; // plain: what is written ahead of an assertion is seen behind it
    std::atomic<int> waited{ 0 };
    zuSignalAssert( row[ 0 ].get() );
    runThreads( THREADS, [ & ]( int self ) {
        for ( int i = 0; i < LENGTH; i++ ) {
            if ( self == 1 ) {
                EXPECT_TRUE( zuSignalWaitTimed( row[ i ].get(), i % 2 ? -1 : ZU_INT_MAX ) );
            } else {
                zuSignalWait( row[ i ].get() );
            }
            waited++;
            if ( i % THREADS == self ) {
                ASSERT_EQ( steps++, i );
                zuSignalAssert( row[ i + 1 ].get() );
            }
        }
    } );
    EXPECT_EQ( waited, LENGTH * THREADS );
}
TEST( SignalAborts, Arguments )
{
    zu::Ref<ZU_SIGNAL> sig = createSignal();
    zu::Ref<ZU_SIGNALABLE> sigb = zu::adopt( zuSignalableCreate( nullptr, nullptr ) );
    zu::Ref<ZU_ALERT> al = zu::adopt( zuAlertCreate() );
    zu::Ref<ZU_BARRIER> barrier = zu::adopt( zuBarrierCreate( ZU_TRUE ) );
    expectAbort( "sig", [] { zuSignalAsserted( nullptr ); } );
    expectAbort( "sig", [] { zuSignalAssert( nullptr ); } );
    expectAbort( "sig", [] { zuSignalWait( nullptr ); } );
    expectAbort( "sig", [] { zuSignalWaitTimed( nullptr, 0 ); } );
    expectAbort( "sig", [] { zuSignalHasSignalables( nullptr ); } );
    expectAbort( "millisec == -1 || millisec >= 0", [ & ] { zuSignalWaitTimed( sig.get(), -2 ); } );
    for ( auto *function : { zuSignalAddSignalable, zuSignalDelSignalable } ) {
        expectAbort( "sig", [ & ] { function( nullptr, sigb.get() ); } );
        expectAbort( "sigb", [ & ] { function( sig.get(), nullptr ); } );
    }
    for ( auto *function : { zuSignalAddSignal, zuSignalDelSignal } ) {
        expectAbort( "sig", [ & ] { function( nullptr, sig.get() ); } );
        expectAbort( "chainedSignal", [ & ] { function( sig.get(), nullptr ); } );
    }
    for ( auto *function : { zuSignalAddAlert, zuSignalDelAlert } ) {
        expectAbort( "sig", [ & ] { function( nullptr, al.get() ); } );
        expectAbort( "al", [ & ] { function( sig.get(), nullptr ); } );
    }
    for ( auto *function : { zuSignalAddBarrier, zuSignalDelBarrier } ) {
        expectAbort( "sig", [ & ] { function( nullptr, barrier.get() ); } );
        expectAbort( "waitBarrier", [ & ] { function( sig.get(), nullptr ); } );
    }
}
