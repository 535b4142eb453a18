// Locks and gates: monitor, region and barrier beside the standard library's mutexes and a bare futex.

#include "zu/base/zu_barrier.h"
#include "zu/base/zu_monitor.h"
#include "zu/base/zu_region.h"
#include "zu/runtime/zu_runtime.h"

#include <atomic>
#include <benchmark/benchmark.h>
#include <condition_variable>
#include <linux/futex.h>
#include <mutex>
#include <shared_mutex>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

// Each contestant has enter() and leave().
struct ZU_MONITOR_LOCK {
    ZU_MONITOR *monitor = zuMonitorCreate();
    void enter()
    {
        zuMonitorEnter( monitor );
    }
    void leave()
    {
        zuMonitorLeave( monitor );
    }
};
struct STD_MUTEX {
    std::mutex mutex;
    void enter()
    {
        mutex.lock();
    }
    void leave()
    {
        mutex.unlock();
    }
};
struct ZU_REGION_SHARED {
    ZU_REGION *region = zuRegionCreate();
    void enter()
    {
        zuRegionEnterShared( region );
    }
    void leave()
    {
        zuRegionLeave( region );
    }
};
struct STD_SHARED {
    std::shared_mutex mutex;
    void enter()
    {
        mutex.lock_shared();
    }
    void leave()
    {
        mutex.unlock_shared();
    }
};
struct ZU_REGION_EXCLUSIVE : ZU_REGION_SHARED {
    void enter()
    {
        zuRegionEnterExclusive( region );
    }
};
struct STD_EXCLUSIVE : STD_SHARED {
    void enter()
    {
        mutex.lock();
    }
    void leave()
    {
        mutex.unlock();
    }
};

template <typename Lock>
static void enterLeave( benchmark::State &state )
{
    static Lock lock; // of all threads of a run
    static int inside;
    for ( auto _ : state ) {
        lock.enter();
        benchmark::DoNotOptimize( inside );
        lock.leave();
    }
}
#define LOCK_BENCHMARK( contestant, name ) \
    BENCHMARK( enterLeave<contestant> )->Name( name )->Threads( 1 )->Threads( 2 )->UseRealTime()
LOCK_BENCHMARK( ZU_MONITOR_LOCK, "Monitor/zu" );
LOCK_BENCHMARK( STD_MUTEX, "Monitor/std" );
LOCK_BENCHMARK( ZU_REGION_SHARED, "Region/shared/zu" );
LOCK_BENCHMARK( STD_SHARED, "Region/shared/std" );
LOCK_BENCHMARK( ZU_REGION_EXCLUSIVE, "Region/exclusive/zu" );
LOCK_BENCHMARK( STD_EXCLUSIVE, "Region/exclusive/std" );

// Gates: pass() waits for the opening and closes again, open() lets one pass.
struct ZU_GATE {
    ZU_BARRIER *barrier = zuBarrierCreate( ZU_TRUE );
    ~ZU_GATE()
    {
        zuBarrierRelease( barrier );
    }
    void pass()
    {
        zuBarrierPass( barrier );
        zuBarrierBlock( barrier );
    }
    void open()
    {
        zuBarrierUnblock( barrier );
    }
};
struct FUTEX_GATE {
    std::atomic<uint32_t> word{ 0 };
    void pass()
    {
        while ( word.load() == 0 ) {
            syscall( SYS_futex, &word, FUTEX_WAIT_PRIVATE, 0, nullptr, nullptr, 0 );
        }
        word.store( 0 );
    }
    void open()
    {
        word.store( 1 );
        syscall( SYS_futex, &word, FUTEX_WAKE_PRIVATE, 1, nullptr, nullptr, 0 );
    }
};

// Through a gate that is open, beside a condition variable
static void passOpenZu( benchmark::State &state )
{
    ZU_BARRIER *barrier = zuBarrierCreate( ZU_FALSE );
    for ( auto _ : state ) {
        zuBarrierPass( barrier );
    }
    zuBarrierRelease( barrier );
}
static void passOpenStd( benchmark::State &state )
{
    std::mutex mutex;
    std::condition_variable opened;
    bool open = true;
    for ( auto _ : state ) {
        benchmark::DoNotOptimize( open );
        std::unique_lock<std::mutex> lock( mutex );
        opened.wait( lock, [ & ] { return open; } );
    }
}
BENCHMARK( passOpenZu )->Name( "Barrier/pass open/zu" );
BENCHMARK( passOpenStd )->Name( "Barrier/pass open/std" );

// There and back between two threads that sleep in between.
template <typename Gate>
static void roundTrip( benchmark::State &state )
{
    Gate there;
    Gate back;
    std::atomic<bool> done{ false };
    std::thread other( [ & ] {
        for ( ;; ) {
            there.pass();
            if ( done ) {
                return;
            }
            back.open();
        }
    } );
    for ( auto _ : state ) {
        there.open();
        back.pass();
    }
    done = true;
    there.open();
    other.join();
}
BENCHMARK( roundTrip<ZU_GATE> )->Name( "Barrier/round trip/zu" )->UseRealTime();
BENCHMARK( roundTrip<FUTEX_GATE> )->Name( "Barrier/round trip/futex" )->UseRealTime();

int main( int argc, char **argv )
{
    zuRuntimeStartup( 0, -1, nullptr, "zu-benchmark", "Benchmarks of zu", "1.0" );
    benchmark::Initialize( &argc, argv );
    benchmark::RunSpecifiedBenchmarks();
    zuRuntimeShutdown();
    return 0;
}
