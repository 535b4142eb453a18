#include "zu/zu.hpp"

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

TEST( Monitor, ComparesByIdentity )
{
    zu::Ref<ZU_MONITOR> a = zu::adopt( zuMonitorCreate() );
    zu::Ref<ZU_MONITOR> b = zu::adopt( zuMonitorCreate() );
    EXPECT_EQ( zuMonitorCompare( a.get(), b.get() ), -zuMonitorCompare( b.get(), a.get() ) );
    EXPECT_FALSE( zuMonitorEquals( a.get(), b.get() ) );
    EXPECT_TRUE( zuMonitorEquals( a.get(), a.get() ) );
}

TEST( MonitorAborts, NobodyInside )
{
    zu::Ref<ZU_MONITOR> monitor = zu::adopt( zuMonitorCreate() );
    expectAbort( "monitor->entered", [ & ] { zuMonitorLeave( monitor.get() ); } );
    expectAbort( "monitor", [ & ] { zuMonitorEnter( nullptr ); } );
    expectAbort( "monitor", [ & ] { zuMonitorLeave( nullptr ); } );
}
TEST( MonitorAborts, SomebodyInside )
{
    ZU_MONITOR *monitor = zuMonitorCreate();
    zuMonitorEnter( monitor );
    expectAbort( "!monitor->entered", [ & ] { zuMonitorRelease( monitor ); } );
    expectAbort( "!monitor->entered", [ & ] {
        zuObjLockRelease( zuMonitorObj( monitor ) ); // behind the monitor's back
        zuMonitorEnter( monitor );
    } );
    zuMonitorLeave( monitor );
    zuMonitorRelease( monitor );
}
