// Objects and strings: a reference to and fro, and a text of 1,000,000 code points that grows at its end.

#include "zu/zu.h"

#include <atomic>
#include <benchmark/benchmark.h>
#include <string>
#ifdef ZU_BENCHMARK_ICU
#include <unicode/unistr.h>
#endif
#ifdef ZU_BENCHMARK_QT
#include <QString>
#endif

static constexpr int LENGTH = 1000000;
static constexpr int PIECE = 20;

// References, beside the atomic operations that they cannot do without
static void zuReference( benchmark::State &state )
{
    ZU_STRING *zus = zuStringCreateFromAscii( "a", -1 );
    for ( auto _ : state ) {
        ZU_STRING *copy = zuStringRetain( zus );
        benchmark::DoNotOptimize( copy );
        zuStringRelease( copy );
    }
    zuStringRelease( zus );
}
static void stdReference( benchmark::State &state )
{
    std::atomic<uint32_t> count{ 1 };
    for ( auto _ : state ) {
        count.fetch_add( 1, std::memory_order_acq_rel );
        benchmark::DoNotOptimize( count );
        if ( count.fetch_sub( 1, std::memory_order_acq_rel ) == 1 ) {
            state.SkipWithError( "gone" );
        }
    }
}
BENCHMARK( zuReference )->Name( "Reference/zu" );
BENCHMARK( stdReference )->Name( "Reference/std" );
#ifdef ZU_BENCHMARK_QT
static void qtReference( benchmark::State &state )
{
    QString string( "a" );
    for ( auto _ : state ) {
        QString copy( string );
        benchmark::DoNotOptimize( copy );
    }
}
BENCHMARK( qtReference )->Name( "Reference/qt" );
#endif
#ifdef ZU_BENCHMARK_ICU
static void icuReference( benchmark::State &state )
{
    icu::UnicodeString string( "a text that is too long for the object itself" );
    for ( auto _ : state ) {
        icu::UnicodeString copy( string );
        benchmark::DoNotOptimize( copy );
    }
}
BENCHMARK( icuReference )->Name( "Reference/icu" );
#endif

// An object comes and goes, beside the memory alone
static void zuObject( benchmark::State &state )
{
    ZU_BOXED_INT *other = zuBoxedIntCreate( 0 ); // the first of a class and the last one take longer
    for ( auto _ : state ) {
        ZU_BOXED_INT *object = zuBoxedIntCreate( 1 );
        benchmark::DoNotOptimize( object );
        zuBoxedIntRelease( object );
    }
    zuBoxedIntRelease( other );
}
static void libcObject( benchmark::State &state )
{
    for ( auto _ : state ) {
        void *memory = malloc( sizeof( ZU_OBJ ) + sizeof( ZU_INT ) );
        benchmark::DoNotOptimize( memory );
        free( memory );
    }
}
BENCHMARK( zuObject )->Name( "Object/create/zu" );
BENCHMARK( libcObject )->Name( "Object/create/libc" );

// Short texts come and go
static void zuShort( benchmark::State &state )
{
    for ( auto _ : state ) {
        ZU_STRING *zus = zuStringCreateFromUtf8( "connection to the server", 24 );
        benchmark::DoNotOptimize( zus );
        zuStringRelease( zus );
    }
}
BENCHMARK( zuShort )->Name( "String/short/zu" );
#ifdef ZU_BENCHMARK_QT
static void qtShort( benchmark::State &state )
{
    for ( auto _ : state ) {
        QString string = QString::fromUtf8( "connection to the server", 24 );
        benchmark::DoNotOptimize( string );
    }
}
BENCHMARK( qtShort )->Name( "String/short/qt" );
#endif
#ifdef ZU_BENCHMARK_ICU
static void icuShort( benchmark::State &state )
{
    for ( auto _ : state ) {
        icu::UnicodeString string = icu::UnicodeString::fromUTF8( icu::StringPiece( "connection to the server", 24 ) );
        benchmark::DoNotOptimize( string );
    }
}
BENCHMARK( icuShort )->Name( "String/short/icu" );
#endif

// Appending
static void zuAppendChar( benchmark::State &state )
{
    for ( auto _ : state ) {
        ZU_STRING *zus = zuStringCreate();
        for ( int i = 0; i < LENGTH; i++ ) {
            zuStringAppendChar( &zus, 'a' + ( (ZU_CHAR)i & 15 ) );
        }
        benchmark::DoNotOptimize( zus );
        zuStringRelease( zus );
    }
}
static void zuAppendPiece( benchmark::State &state )
{
    ZU_STRING *piece = zuStringCreateFromAscii( "twenty characters, 1", PIECE );
    for ( auto _ : state ) {
        ZU_STRING *zus = zuStringCreate();
        for ( int i = 0; i < LENGTH; i += PIECE ) {
            zuStringAppend( &zus, piece );
        }
        benchmark::DoNotOptimize( zus );
        zuStringRelease( zus );
    }
    zuStringRelease( piece );
}
BENCHMARK( zuAppendChar )->Name( "String/append char/zu" );
BENCHMARK( zuAppendPiece )->Name( "String/append 20/zu" );

template <typename STRING, typename CHAR>
static void appendChars( benchmark::State &state )
{
    for ( auto _ : state ) {
        STRING string;
        for ( int i = 0; i < LENGTH; i++ ) {
            string += (CHAR)( 'a' + ( i & 15 ) );
        }
        benchmark::DoNotOptimize( string );
    }
}
template <typename STRING>
static void appendPieces( benchmark::State &state, const STRING &piece )
{
    for ( auto _ : state ) {
        STRING string;
        for ( int i = 0; i < LENGTH; i += PIECE ) {
            string += piece;
        }
        benchmark::DoNotOptimize( string );
    }
}
template <typename STRING, typename CHAR>
static void registerAppends( const std::string &contestant, const STRING &piece )
{
    benchmark::RegisterBenchmark( ( "String/append char/" + contestant ).c_str(), appendChars<STRING, CHAR> );
    benchmark::RegisterBenchmark( ( "String/append 20/" + contestant ).c_str(),
                                  [ piece ]( benchmark::State &state ) { appendPieces( state, piece ); } );
}

int main( int argc, char **argv )
{
    zuRuntimeStartup( 0, -1, nullptr, "zu-benchmark", "Benchmarks of zu", "1.0" );
    registerAppends<std::u32string, char32_t>( "std", U"twenty characters, 1" );
#ifdef ZU_BENCHMARK_QT
    registerAppends<QString, QChar>( "qt", "twenty characters, 1" );
#endif
#ifdef ZU_BENCHMARK_ICU
    registerAppends<icu::UnicodeString, UChar32>( "icu", "twenty characters, 1" );
#endif
    benchmark::Initialize( &argc, argv );
    benchmark::RunSpecifiedBenchmarks();
    return (int)zuRuntimeShutdown();
}
