#include "zu_test_support.h"

TEST( Monitor, ExcludesOthers )
{
    static constexpr int THREADS = 4;
    static constexpr int ROUNDS = 20000;
    zu::Ref<ZU_MONITOR> monitor = zu::adopt( zuMonitorCreate() );
    int inside = 0;
    int entered = 0; // plain, so that two at a time lose steps and are seen by the thread sanitizer
    runThreads( THREADS, [ & ]( int ) {
        for ( int i = 0; i < ROUNDS; i++ ) {
            zuMonitorEnter( monitor.get() );
            ASSERT_EQ( ++inside, 1 );
            entered++;
            inside--;
            zuMonitorLeave( monitor.get() );
        }
    } );
    EXPECT_EQ( entered, THREADS * ROUNDS );
}

TEST( MonitorAborts, BrokenConditions )
{
    zu::Ref<ZU_MONITOR> monitor = zu::adopt( zuMonitorCreate() );
    expectAbort( "monitor->entered", [ & ] { zuMonitorLeave( monitor.get() ); } );
    zuMonitorEnter( monitor.get() );
    expectAbort( "!monitor->entered", [ & ] { monitor = nullptr; } );
    expectAbort( "!monitor->entered", [ & ] {
        zuObjLockRelease( zuMonitorObj( monitor.get() ) ); // behind the monitor's back
        zuMonitorEnter( monitor.get() );
    } );
    zuMonitorLeave( monitor.get() );
}
