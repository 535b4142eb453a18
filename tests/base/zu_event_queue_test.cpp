#include "zu_test_string.h"

#include <deque>

static int wakings;

static zu::Ref<ZU_EVENT_QUEUE> createQueue()
{
    return zu::adopt( zuEventQueueCreate() );
}
static zu::Ref<ZU_ALERTABLE> createCounting()
{
    return zu::adopt( zuAlertableCreate( []( ZU_OBJ * ) { wakings++; }, nullptr ) );
}
// Returns event `number`: of three classes in turn, two with an order by value, whose events are made anew each time,
// and one without.
static zu::Ref<ZU_OBJ> createEvent( const std::vector<zu::Ref<ZU_MONITOR>> &monitors, size_t number )
{
    size_t which = number / 3;
    switch ( number % 3 ) {
    case 0:
        return zu::share( zuMonitorObj( monitors[ which ].get() ) );
    case 1:
        return boxed( (ZU_INT)which );
    default:
        return zu::adopt( zuStringObj( zu::format( "%i", which ).release() ) );
    }
}

TEST( EventQueue, BehavesLikeAModel )
{
    for ( unsigned seed = 1; seed <= 40; seed++ ) {
        SCOPED_TRACE( seed );
        std::minstd_rand random( seed );
        size_t range = seed % 2 ? 3 : 900; // of events of each class: most are there already, or many wait
        std::vector<zu::Ref<ZU_MONITOR>> monitors( range );
        for ( auto &monitor : monitors ) {
            monitor = zu::adopt( zuMonitorCreate() );
        }
        zu::Ref<ZU_EVENT_QUEUE> eq = createQueue();
        zu::Ref<ZU_ALERTABLE> alb = createCounting();
        std::deque<size_t> waiting;
        std::set<size_t> members;
        bool attached = false;
        size_t ascending = 0;
        for ( int step = 0; step < 4000; step++ ) {
            int expected = 0;
            bool growing = step % 2000 < 1000;
            unsigned action = (unsigned)( random() % 16 );
            if ( action == 0 ) {
                expected = !waiting.empty();
                attached = waiting.empty();
                zuEventQueueReadEventAddAlertable( eq.get(), alb.get() );
            } else if ( action == 1 ) {
                attached = false;
                zuEventQueueReadEventDelAlertable( eq.get(), alb.get() );
            } else if ( action < ( growing ? 13u : 5u ) ) {
                size_t number = ( random() % 2 ? random() : ascending++ ) % ( 3 * range );
                if ( members.insert( number ).second ) {
                    expected = waiting.empty() && attached;
                    attached = attached && !waiting.empty();
                    waiting.push_back( number );
                }
                zuEventQueueWriteEvent( eq.get(), createEvent( monitors, number ).get() );
            } else {
                zu::Ref<ZU_OBJ> event = zu::adopt( zuEventQueueReadEvent( eq.get() ) );
                ASSERT_EQ( (bool)event, !waiting.empty() ) << "step " << step;
                if ( event ) {
                    ASSERT_EQ( zuObjCompare( event.get(), createEvent( monitors, waiting.front() ).get() ), 0 )
                        << "step " << step;
                    members.erase( waiting.front() );
                    waiting.pop_front();
                }
            }
            ASSERT_EQ( std::exchange( wakings, 0 ), expected ) << "step " << step;
        }
    }
}

TEST( EventQueue, TakesAndGivesReferences )
{
    zu::Ref<ZU_OBJ> a = boxed( 1 );
    zu::Ref<ZU_OBJ> b = boxed( 2 );
    zu::Ref<ZU_EVENT_QUEUE> eq = createQueue();
    for ( int i = 0; i < 2; i++ ) { // a queue that has been emptied is as good as new
        for ( ZU_OBJ *event : { a.get(), b.get(), a.get() } ) {
            zuEventQueueWriteEvent( eq.get(), event );
        }
        EXPECT_EQ( zu::adopt( zuEventQueueReadEvent( eq.get() ) ).get(), a.get() );
        EXPECT_EQ( ZU_REF_RETAIN_COUNT( a.get() ), 1u );
        EXPECT_EQ( zu::adopt( zuEventQueueReadEvent( eq.get() ) ).get(), b.get() );
        EXPECT_EQ( zuEventQueueReadEvent( eq.get() ), nullptr );
    }
    for ( ZU_INT i = 0; i < 1000; i++ ) {
        zuEventQueueWriteEvent( eq.get(), boxed( i ).get() );
    }
    zuEventQueueWriteEvent( eq.get(), a.get() );
    zuEventQueueWriteEvent( eq.get(), zuEventQueueObj( createQueue().get() ) );
    eq = nullptr; // with all that waits
    EXPECT_EQ( ZU_REF_RETAIN_COUNT( a.get() ), 1u );
    EXPECT_EQ( ZU_REF_RETAIN_COUNT( b.get() ), 1u );
}

// Objects whose order contradicts itself: what got in comes out all the same, each once.
struct ZU_TEST_FICKLE {
    ZU_OBJ obj;
};
static ZU_INT fickleCompare( ZU_OBJ *, ZU_OBJ * )
{
    static std::minstd_rand random( 1 );
    return random() % 16 ? ( random() % 2 ? 1 : -1 ) : 0;
}
static ZU_SORT fickleSort = ZU___SORT_INITIALIZER( "ZU_TEST_FICKLE", nullptr, nullptr, fickleCompare, nullptr );

TEST( EventQueue, BearsContradictoryOrders )
{
    zu::Ref<ZU_EVENT_QUEUE> eq = createQueue();
    std::deque<ZU_OBJ *> waiting;
    for ( int step = 0; step < 4000; step++ ) {
        if ( step < 1000 || step % 2 ) {
            zu::Ref<ZU_OBJ> event = zu::adopt( zu___ObjCreate( sizeof( ZU_TEST_FICKLE ), &fickleSort ) );
            zuEventQueueWriteEvent( eq.get(), event.get() );
            if ( ZU_REF_RETAIN_COUNT( event.get() ) > 1 ) {
                waiting.push_back( event.get() );
            }
        } else if ( zu::Ref<ZU_OBJ> event = zu::adopt( zuEventQueueReadEvent( eq.get() ) ) ) {
            ASSERT_EQ( event.get(), waiting.front() );
            EXPECT_EQ( ZU_REF_RETAIN_COUNT( event.get() ), 1u );
            waiting.pop_front();
        }
    }
    eq = nullptr;
    EXPECT_EQ( zuSortObjects( &fickleSort ), 0 );
}

TEST( EventQueue, ServesManyWriters )
{
    static constexpr ZU_INT WRITERS = 3, EVENTS_EACH = 5000;
    zu::Ref<ZU_EVENT_QUEUE> eq = createQueue();
    zu::Ref<ZU_BARRIER> barrier = zu::adopt( zuBarrierCreate( ZU_TRUE ) );
    zu::Ref<ZU_ALERTABLE> alb = zu::adopt( zuAlertableCreateBarrier( barrier.get() ) );
    zu::Ref<ZU_OBJ> same = boxed( -1 );
    ZU_INT next[ WRITERS ] = {};
    ZU_INT sames = 0;
    runThreads( (int)WRITERS + 1, [ & ]( int self ) {
        if ( self < WRITERS ) {
            for ( ZU_INT i = 0; i < EVENTS_EACH; i++ ) {
                zuEventQueueWriteEvent( eq.get(), boxed( i * WRITERS + self ).get() );
                zuEventQueueWriteEvent( eq.get(), same.get() );
            }
            return;
        }
        while ( std::any_of( next, next + WRITERS, []( ZU_INT count ) { return count < EVENTS_EACH; } ) ) {
            zuBarrierBlock( barrier.get() );
            zuEventQueueReadEventAddAlertable( eq.get(), alb.get() );
            zuBarrierPass( barrier.get() );
            while ( zu::Ref<ZU_OBJ> event = zu::adopt( zuEventQueueReadEvent( eq.get() ) ) ) {
                ZU_INT value = zuBoxedIntValue( zuBoxedIntFrom( event.get() ) );
                if ( value < 0 ) {
                    sames++;
                } else {
                    ASSERT_EQ( value / WRITERS, next[ value % WRITERS ]++ );
                }
            }
        }
    } );
    EXPECT_GE( sames, 1 );
    EXPECT_LE( sames, WRITERS * EVENTS_EACH );
}

// A reader that detaches while a writer fires its listener, which reads: nobody waits for the other.
TEST( EventQueue, DetachesWhileItsListenerReads )
{
    zu::Ref<ZU_EVENT_QUEUE> eq = createQueue();
    auto read = []( ZU_OBJ *arg ) { ZU_REF_RELEASE_OPT( zuEventQueueReadEvent( zuEventQueueFrom( arg ) ) ); };
    zu::Ref<ZU_ALERTABLE> alb = zu::adopt( zuAlertableCreate( read, zuEventQueueObj( eq.get() ) ) );
    zu::Ref<ZU_OBJ> event = boxed( 1 );
    runThreads( 2, [ & ]( int self ) {
        for ( int i = 0; i < 5000; i++ ) {
            if ( self == 0 ) {
                zuEventQueueWriteEvent( eq.get(), event.get() );
            } else {
                zuEventQueueReadEventAddAlertable( eq.get(), alb.get() );
                zuEventQueueReadEventDelAlertable( eq.get(), alb.get() );
            }
        }
    } );
}

TEST( EventQueueAborts, Halted )
{
    zu::Ref<ZU_ALERTABLE> alb = createCounting();
    zu::Ref<ZU___EVENT_QUEUE_IMP> imp = zu::adopt( zu___EventQueueImp( createQueue().get() ) );
    zu___EventQueueImpWriteEvent( imp.get(), boxed( 1 ).get() );
    expectAbort( "!imp->halted", [ & ] { zu___EventQueueImpReadEvent( imp.get() ); } );
    expectAbort( "!imp->halted", [ & ] { zu___EventQueueImpReadEventAddAlertable( imp.get(), alb.get() ); } );
    expectAbort( "!imp->halted", [ & ] { zu___EventQueueImpReadEventDelAlertable( imp.get(), alb.get() ); } );
    expectAbort( "!imp->halted", [ & ] { zu___EventQueueImpHalt( imp.get() ); } );
    expectAbort( "imp->halted", [] { zu___EventQueueImpRelease( zu___EventQueueImpCreate() ); } );
}
