// Equality, order and the search for one character, at 20 and at 1,000 code points, of which the last one decides:
// beside what the C library does with the same arrays, which is the least that it can take, and beside QString, whose
// text is half as long.

#include "zu/base/zu_string_search.h"
#include "zu/runtime/zu_runtime.h"

#include <benchmark/benchmark.h>
#include <cstring>
#include <cwchar>
#include <string>
#ifdef ZU_BENCHMARK_QT
#include <QString>
#endif

static const bool started = [] {
    zuRuntimeStartup( 0, -1, nullptr, "zu-benchmark", "Benchmarks of zu", "1.0" );
    return true;
}();

// Two texts of one length; `b` ends in "#".  They live as long as the process.
struct PAIR {
    ZU_STRING *a;
    ZU_STRING *b;
    const ZU_CHAR *charsA;
    const ZU_CHAR *charsB;
    size_t length;

    PAIR( int64_t count, bool equal )
    {
        std::string text( (size_t)count, 'e' );
        text.back() = '#';
        b = zuStringCreateFromAscii( text.data(), count );
        text.back() = equal ? '#' : '!';
        a = zuStringCreateFromAscii( text.data(), count );
        charsA = zuStringBacking( a );
        charsB = zuStringBacking( b );
        length = (size_t)count;
    }
    PAIR( const PAIR & ) = delete;
    PAIR &operator=( const PAIR & ) = delete;
    ~PAIR()
    {
        zuStringRelease( a );
        zuStringRelease( b );
    }
};

static void equalsZu( benchmark::State &state )
{
    PAIR pair( state.range( 0 ), true );
    for ( auto _ : state ) {
        benchmark::DoNotOptimize( zuStringEquals( pair.a, pair.b ) );
    }
}
static void equalsLibc( benchmark::State &state )
{
    PAIR pair( state.range( 0 ), true );
    for ( auto _ : state ) {
        benchmark::DoNotOptimize( pair.length );
        benchmark::DoNotOptimize( memcmp( pair.charsA, pair.charsB, pair.length * sizeof( ZU_CHAR ) ) );
    }
}
static void compareZu( benchmark::State &state )
{
    PAIR pair( state.range( 0 ), false );
    for ( auto _ : state ) {
        benchmark::DoNotOptimize( zuStringCompare( pair.a, pair.b ) );
    }
}
static void compareLibc( benchmark::State &state )
{
    PAIR pair( state.range( 0 ), false );
    for ( auto _ : state ) {
        benchmark::DoNotOptimize( pair.length );
        benchmark::DoNotOptimize( wmemcmp( (const wchar_t *)pair.charsA, (const wchar_t *)pair.charsB, pair.length ) );
    }
}
static void findZu( benchmark::State &state )
{
    PAIR pair( state.range( 0 ), false );
    for ( auto _ : state ) {
        benchmark::DoNotOptimize( zuStringFindChar( pair.b, 0, '#' ) );
    }
}
static void findLibc( benchmark::State &state )
{
    PAIR pair( state.range( 0 ), false );
    for ( auto _ : state ) {
        benchmark::DoNotOptimize( pair.length );
        benchmark::DoNotOptimize( wmemchr( (const wchar_t *)pair.charsB, L'#', pair.length ) );
    }
}
BENCHMARK( equalsZu )->Name( "Equals/zu" )->Arg( 20 )->Arg( 1000 );
BENCHMARK( equalsLibc )->Name( "Equals/libc" )->Arg( 20 )->Arg( 1000 );
BENCHMARK( compareZu )->Name( "CompareOrder/zu" )->Arg( 20 )->Arg( 1000 );
BENCHMARK( compareLibc )->Name( "CompareOrder/libc" )->Arg( 20 )->Arg( 1000 );
BENCHMARK( findZu )->Name( "FindChar/zu" )->Arg( 20 )->Arg( 1000 );
BENCHMARK( findLibc )->Name( "FindChar/libc" )->Arg( 20 )->Arg( 1000 );

#ifdef ZU_BENCHMARK_QT
static QString qtText( ZU_STRING *zus )
{
    return QString::fromUcs4( zuStringBacking( zus ), (int)zuStringLength( zus ) );
}
static void equalsQt( benchmark::State &state )
{
    PAIR pair( state.range( 0 ), true );
    QString a = qtText( pair.a );
    QString b = qtText( pair.b );
    for ( auto _ : state ) {
        benchmark::DoNotOptimize( a == b );
    }
}
static void compareQt( benchmark::State &state )
{
    PAIR pair( state.range( 0 ), false );
    QString a = qtText( pair.a );
    QString b = qtText( pair.b );
    for ( auto _ : state ) {
        benchmark::DoNotOptimize( QString::compare( a, b ) );
    }
}
static void findQt( benchmark::State &state )
{
    PAIR pair( state.range( 0 ), false );
    QString b = qtText( pair.b );
    for ( auto _ : state ) {
        benchmark::DoNotOptimize( b.indexOf( QChar( '#' ) ) );
    }
}
BENCHMARK( equalsQt )->Name( "Equals/qt" )->Arg( 20 )->Arg( 1000 );
BENCHMARK( compareQt )->Name( "CompareOrder/qt" )->Arg( 20 )->Arg( 1000 );
BENCHMARK( findQt )->Name( "FindChar/qt" )->Arg( 20 )->Arg( 1000 );
#endif
