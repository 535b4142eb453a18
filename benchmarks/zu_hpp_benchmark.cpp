// What zu.hpp costs: the same work by its references, ranges and checked formats, and by the calls of the C interface
// that a careful programmer would write, as the contestant "c".

#include "zu/zu.hpp"

#include <benchmark/benchmark.h>

static constexpr ZU_INT COUNT = 1000;

// Texts of numbers, and a dict from each to its number, which live as long as the program.
static ZU_VECTOR *texts = nullptr;
static ZU_DICT *numbers = nullptr;

static void setUp( const benchmark::State & )
{
    if ( !texts ) {
        zuRuntimeStartup( 0, -1, nullptr, "zu-benchmark", "Benchmarks of zu", "1.0" );
        texts = zuVectorCreate();
        numbers = zuDictCreate();
        for ( ZU_INT i = 0; i < COUNT; i++ ) {
            zu::Ref<ZU_STRING> text = zu::format( "%i", i );
            zuVectorAppendString( &texts, text.get() );
            zuDictSetStringKey( &numbers, text.get(), zuBoxedIntObj( zu::adopt( zuBoxedIntCreate( i ) ).get() ) );
        }
    }
}

static void walkVector( benchmark::State &state )
{
    for ( auto _ : state ) {
        ZU_INT length = 0;
        for ( ZU_STRING *text : zu::items<ZU_STRING>( texts ) ) {
            length += zuStringLength( text );
        }
        benchmark::DoNotOptimize( length );
    }
}
static void walkVectorC( benchmark::State &state )
{
    for ( auto _ : state ) {
        ZU_INT length = 0;
        ZU_VECTOR *held = zuVectorRetain( texts );
        ZU_OBJ *const *items = zuVectorBacking( held );
        ZU_INT count = zuVectorLength( held );
        for ( ZU_INT i = 0; i < count; i++ ) {
            length += zuStringLength( zuStringFrom( items[ i ] ) );
        }
        zuVectorRelease( held );
        benchmark::DoNotOptimize( length );
    }
}
BENCHMARK( walkVector )->Name( "Hpp/walk vector/zu" )->Setup( setUp );
BENCHMARK( walkVectorC )->Name( "Hpp/walk vector/c" )->Setup( setUp );

static void walkDict( benchmark::State &state )
{
    for ( auto _ : state ) {
        ZU_INT sum = 0;
        for ( auto [ text, number ] : zu::pairs<ZU_STRING, ZU_BOXED_INT>( numbers ) ) {
            sum += zuStringLength( text.get() ) + zuBoxedIntValue( number.get() );
        }
        benchmark::DoNotOptimize( sum );
    }
}
static void walkDictC( benchmark::State &state )
{
    for ( auto _ : state ) {
        ZU_INT sum = 0;
        ZU_DICT *held = zuDictRetain( numbers );
        ZU_INT count = zuDictLength( held );
        for ( ZU_INT i = 0; i < count; i++ ) {
            ZU_OBJ *text = zuDictKeyAt( held, i );
            ZU_OBJ *number = zuDictValueAt( held, i );
            sum += zuStringLength( zuStringFrom( text ) ) + zuBoxedIntValue( zuBoxedIntFrom( number ) );
            zuObjRelease( text );
            zuObjRelease( number );
        }
        zuDictRelease( held );
        benchmark::DoNotOptimize( sum );
    }
}
BENCHMARK( walkDict )->Name( "Hpp/walk dict/zu" )->Setup( setUp );
BENCHMARK( walkDictC )->Name( "Hpp/walk dict/c" )->Setup( setUp );

static void format( benchmark::State &state )
{
    zu::Ref<ZU_STRING> name = zu::format( "%i", COUNT );
    for ( auto _ : state ) {
        zu::Ref<ZU_STRING> line = zu::format( "%s: %i of %i", name, COUNT, COUNT );
        benchmark::DoNotOptimize( line.get() );
    }
}
static void formatC( benchmark::State &state )
{
    ZU_STRING *name = zuStringCreateFromFormatCstr( "%i", -1, COUNT );
    for ( auto _ : state ) {
        ZU_STRING *line = zuStringCreateFromFormatCstr( "%s: %i of %i", -1, name, COUNT, COUNT );
        benchmark::DoNotOptimize( line );
        zuStringRelease( line );
    }
    zuStringRelease( name );
}
BENCHMARK( format )->Name( "Hpp/format/zu" )->Setup( setUp );
BENCHMARK( formatC )->Name( "Hpp/format/c" )->Setup( setUp );
