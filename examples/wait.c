// Waiting for several things at once: whatever comes first opens a barrier, and the thread that waits passes it.
#include "zu/zu.h"
#include <stdio.h>

static void count( void )
{
    ZU_OBJ *argument = zuThreadUnlatchArgument(); // ours from here on
    ZU_VECTOR *numbers = zuVectorFrom( argument );
    ZU_INT sum = 0;
    for ( ZU_INT i = 0; i < zuVectorLength( numbers ); i++ ) {
        ZU_OBJ *number = zuVectorObjAt( numbers, i );
        sum += zuBoxedIntValue( zuBoxedIntFrom( number ) );
        zuObjRelease( number );
    }
    printf( "the numbers make %lld\n", (long long)sum );
    zuObjRelease( argument );
}

int main( void )
{
    zuRuntimeStartup( 0, -1, NULL, "wait", "Waiting", "1.0" );
    ZU_VECTOR *numbers = zuVectorCreate();
    for ( ZU_INT i = 1; i <= 100; i++ ) {
        zuVectorAppendInt( &numbers, i );
    }
    ZU_THREAD *worker = zuThreadTrySpawnCstr( "worker", -1, count, zuVectorObj( numbers ), ZU_THREAD_PRIORITY_NORMAL );
    if ( !worker ) {
        fputs( "no thread to be had\n", stderr );
        return 1;
    }

    // The end of the worker and a minute's time-out open one barrier.
    ZU_BARRIER *either = zuBarrierCreate( ZU_TRUE );
    ZU_SIGNALABLE *ended = zuSignalableCreateBarrier( either );
    zuThreadEndAddSignalable( worker, ended );
    ZU_TIMER *timeout = zuTimerCreateBarrier( either );
    zuTimerSchedule( timeout, 60000 );
    zuBarrierPass( either );
    puts( zuThreadEnd( worker ) ? "the worker has ended" : "the worker takes too long" );

    zuTimerRelease( timeout ); // which also unschedules it
    zuSignalableRelease( ended );
    zuBarrierRelease( either );
    zuThreadJoin( worker );
    zuThreadRelease( worker );
    zuVectorRelease( numbers );
    return (int)zuRuntimeShutdown();
}
