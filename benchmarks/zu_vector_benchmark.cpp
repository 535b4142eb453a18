// Vectors of 1,000,000 objects as stacks and queues, beside std::deque and QQueue of the same counted pointers, and the
// copy of a value, beside the implicitly shared QVector.

#include "zu/zu.hpp"

#include <benchmark/benchmark.h>
#include <deque>
#include <memory>
#include <vector>
#ifdef ZU_BENCHMARK_QT
#include <QQueue>
#include <QVector>
#endif

static constexpr size_t COUNT = 1000000;
static constexpr size_t QUEUE_LENGTH = 1000;
using REF = zu::Ref<ZU_OBJ>;

// The objects that go in, which live as long as the program.
static const std::vector<ZU_OBJ *> &objects()
{
    static const std::vector<ZU_OBJ *> all = [] {
        zuRuntimeStartup( 0, -1, nullptr, "zu-benchmark", "Benchmarks of zu", "1.0" );
        std::vector<ZU_OBJ *> made( COUNT );
        for ( size_t i = 0; i < COUNT; i++ ) {
            made[ i ] = zuBoxedIntObj( zuBoxedIntCreate( (ZU_INT)i ) );
        }
        return made;
    }();
    return all;
}

// The contestants, with one set of words.
struct zuVector {
    ZU_VECTOR *vec = zuVectorCreate();

    zuVector() = default;
    zuVector( const zuVector & ) = delete;
    zuVector &operator=( const zuVector & ) = delete;
    ~zuVector()
    {
        zuVectorRelease( vec );
    }
    void pushBack( ZU_OBJ *obj )
    {
        zuVectorPush( &vec, obj );
    }
    void pushFront( ZU_OBJ *obj )
    {
        zuVectorShift( &vec, obj );
    }
    REF popBack()
    {
        return zu::adopt( zuVectorPop( &vec ) );
    }
    REF popFront()
    {
        return zu::adopt( zuVectorUnshift( &vec ) );
    }
};
struct stdDeque {
    std::deque<REF> items;

    void pushBack( ZU_OBJ *obj )
    {
        items.push_back( zu::share( obj ) );
    }
    void pushFront( ZU_OBJ *obj )
    {
        items.push_front( zu::share( obj ) );
    }
    REF popBack()
    {
        REF ref = std::move( items.back() );
        items.pop_back();
        return ref;
    }
    REF popFront()
    {
        REF ref = std::move( items.front() );
        items.pop_front();
        return ref;
    }
};
#ifdef ZU_BENCHMARK_QT
Q_DECLARE_TYPEINFO( REF, Q_MOVABLE_TYPE );
struct qtQueue {
    QQueue<REF> items;

    void pushBack( ZU_OBJ *obj )
    {
        items.append( zu::share( obj ) );
    }
    void pushFront( ZU_OBJ *obj )
    {
        items.prepend( zu::share( obj ) );
    }
    REF popBack()
    {
        return items.takeLast();
    }
    REF popFront()
    {
        return items.takeFirst();
    }
};
#endif

template <typename CONTAINER>
static void push( benchmark::State &state )
{
    const std::vector<ZU_OBJ *> &objs = objects();
    for ( auto _ : state ) {
        CONTAINER container;
        for ( ZU_OBJ *obj : objs ) {
            container.pushBack( obj );
        }
    }
}
template <typename CONTAINER>
static void pushAndPop( benchmark::State &state )
{
    const std::vector<ZU_OBJ *> &objs = objects();
    for ( auto _ : state ) {
        CONTAINER container;
        for ( ZU_OBJ *obj : objs ) {
            container.pushBack( obj );
        }
        for ( size_t i = 0; i < COUNT; i++ ) {
            benchmark::DoNotOptimize( container.popBack().get() );
        }
    }
}
template <typename CONTAINER>
static void fifo( benchmark::State &state )
{
    const std::vector<ZU_OBJ *> &objs = objects();
    for ( auto _ : state ) {
        CONTAINER container;
        for ( ZU_OBJ *obj : objs ) {
            container.pushBack( obj );
        }
        for ( size_t i = 0; i < COUNT; i++ ) {
            benchmark::DoNotOptimize( container.popFront().get() );
        }
    }
}
template <typename CONTAINER>
static void fifoFromTheEnd( benchmark::State &state )
{
    const std::vector<ZU_OBJ *> &objs = objects();
    for ( auto _ : state ) {
        CONTAINER container;
        for ( ZU_OBJ *obj : objs ) {
            container.pushFront( obj );
        }
        for ( size_t i = 0; i < COUNT; i++ ) {
            benchmark::DoNotOptimize( container.popBack().get() );
        }
    }
}
template <typename CONTAINER>
static void fifoOf1000( benchmark::State &state )
{
    const std::vector<ZU_OBJ *> &objs = objects();
    for ( auto _ : state ) {
        CONTAINER container;
        for ( size_t i = 0; i < COUNT; i++ ) {
            container.pushBack( objs[ i ] );
            if ( i >= QUEUE_LENGTH ) {
                benchmark::DoNotOptimize( container.popFront().get() );
            }
        }
    }
}

#ifdef ZU_BENCHMARK_QT
#define BENCHMARK_QT( function ) \
    BENCHMARK( function<qtQueue> )->Name( "Vector/" #function "/qt" )->Unit( benchmark::kMillisecond )
#else
#define BENCHMARK_QT( function ) static_assert( true )
#endif
#define BENCHMARK_ALL( function )                                                                         \
    BENCHMARK( function<zuVector> )->Name( "Vector/" #function "/zu" )->Unit( benchmark::kMillisecond );  \
    BENCHMARK( function<stdDeque> )->Name( "Vector/" #function "/std" )->Unit( benchmark::kMillisecond ); \
    BENCHMARK_QT( function )
BENCHMARK_ALL( push );
BENCHMARK_ALL( pushAndPop );
BENCHMARK_ALL( fifo );
BENCHMARK_ALL( fifoFromTheEnd );
BENCHMARK_ALL( fifoOf1000 );

// The copy of a value that somebody else holds, and its end.
static void copyZu( benchmark::State &state )
{
    ZU_VECTOR *vec = zuVectorCreate();
    zuVectorAppendObjs( &vec, objects().data(), QUEUE_LENGTH );
    for ( auto _ : state ) {
        ZU_VECTOR *copy = zuVectorRetain( vec );
        benchmark::DoNotOptimize( copy );
        zuVectorRelease( copy );
    }
    zuVectorRelease( vec );
}
BENCHMARK( copyZu )->Name( "Vector/copy/zu" );
static void copyStd( benchmark::State &state )
{
    auto vec = std::make_shared<const std::vector<ZU_OBJ *>>( objects().begin(), objects().begin() + QUEUE_LENGTH );
    for ( auto _ : state ) {
        auto copy = vec;
        benchmark::DoNotOptimize( copy.get() );
    }
}
BENCHMARK( copyStd )->Name( "Vector/copy/std" );
#ifdef ZU_BENCHMARK_QT
static void copyQt( benchmark::State &state )
{
    QVector<REF> vec;
    for ( size_t i = 0; i < QUEUE_LENGTH; i++ ) {
        vec.append( zu::share( objects()[ i ] ) );
    }
    for ( auto _ : state ) {
        QVector<REF> copy = vec;
        benchmark::DoNotOptimize( copy.constData() );
    }
}
BENCHMARK( copyQt )->Name( "Vector/copy/qt" );
#endif
