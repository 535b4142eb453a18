#include "zu/sys/zu_lock.h"

#include "zu_test_support.h"

#include <sched.h>

// The counters are plain: the lock alone keeps the threads apart, which the thread sanitizer watches too.
TEST( Lock, OneThreadAtATime )
{
    static constexpr int THREADS = 4;
    static constexpr int ROUNDS = 20000;
    ZU___LOCK lock;
    zu___LockInitialize( &lock );
    int inside = 0;
    int total = 0;
    int overlaps = 0;
    runThreads( THREADS, [ & ]( int thread ) {
        for ( int round = 0; round < ROUNDS; round++ ) {
            zu___LockAcquire( &lock );
            overlaps += ++inside != 1;
            total++;
            // Now and then the others pile up, and some go to sleep.
            if ( round % 100 == thread ) {
                sched_yield();
            }
            inside--;
            zu___LockRelease( &lock );
        }
    } );
    zu___LockFinalize( &lock );
    EXPECT_EQ( total, THREADS * ROUNDS );
    EXPECT_EQ( overlaps, 0 );
    expectAbort( "lock", [] { zu___LockInitialize( nullptr ); } );
}
