// A pool of threads with timers: jobs are lambdas, which threads take from a blocking queue; a timer hands in one more when
// its time has come.
#include "zu/zu.hpp"

#include <functional>
#include <iostream>
#include <queue>
#include <vector>

// A queue of jobs at which threads wait.  What it holds are functions, no objects, so it is made of a monitor and a
// barrier that is open as long as there is something to take.
class Jobs {
public:
    void add( std::function<void()> job )
    {
        zu::MonitorGuard inside( monitor );
        waiting.push( std::move( job ) );
        zuBarrierUnblock( filled.get() );
    }
    // Takes the next job; an empty one tells the thread to end.
    std::function<void()> take()
    {
        for ( ;; ) {
            zuBarrierPass( filled.get() );
            zu::MonitorGuard inside( monitor );
            if ( waiting.empty() ) {
                continue; // another thread was faster
            }
            std::function<void()> job = std::move( waiting.front() );
            waiting.pop();
            if ( waiting.empty() ) {
                zuBarrierBlock( filled.get() );
            }
            return job;
        }
    }

private:
    zu::Ref<ZU_MONITOR> monitor = zu::adopt( zuMonitorCreate() );
    zu::Ref<ZU_BARRIER> filled = zu::adopt( zuBarrierCreate( ZU_TRUE ) );
    std::queue<std::function<void()>> waiting;
};

int main()
{
    zu::Runtime runtime( "pool", "Pool of threads", "1.0" );
    Jobs jobs;
    std::vector<zu::Ref<ZU_THREAD>> threads;
    for ( int i = 0; i < 3; i++ ) {
        threads.push_back( zu::spawn( "worker " + std::to_string( i ), [ &jobs ] {
            while ( std::function<void()> job = jobs.take() ) {
                job();
            }
        } ) );
    }

    // What is still to be done, so that somebody can wait for all of it.
    zu::Ref<ZU_COUNTER> open = zu::adopt( zuCounterCreate() );
    std::vector<ZU_INT> squares( 10 );
    for ( ZU_INT i = 0; i < 10; i++ ) {
        zuCounterIncrement( open.get() );
        jobs.add( [ &squares, i, open ] {
            squares[ static_cast<std::size_t>( i ) ] = i * i;
            zuCounterDecrement( open.get() );
        } );
    }
    zuCounterIncrement( open.get() );
    zu::Ref<ZU_TIMER> late =
        zu::timer( [ &jobs, open ] { jobs.add( [ open ] { zuCounterDecrement( open.get() ); } ); } );
    zuTimerSchedule( late.get(), 20 );
    zuCounterWaitZero( open.get() );

    for ( ZU_INT square : squares ) {
        std::cout << square << ' ';
    }
    std::cout << "and one job that a timer has handed in\n";
    for ( std::size_t i = 0; i < threads.size(); i++ ) {
        jobs.add( nullptr );
    }
    for ( const zu::Ref<ZU_THREAD> &thread : threads ) {
        zuThreadJoin( thread.get() );
    }
}
