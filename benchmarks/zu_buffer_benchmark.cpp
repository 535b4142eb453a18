// Buffers as a protocol stack uses them, a payload that gets five headers and loses them again, beside GByteArray,
// QByteArray and std::vector; and appending 1 MB on and off the bytes' boundaries, beside memcpy and the like.

#include "zu/base/zu_buffer.h"
#include "zu/runtime/zu_runtime.h"

#include <benchmark/benchmark.h>
#include <cstring>
#include <memory>
#include <vector>
#ifdef ZU_BENCHMARK_GLIB
#include <glib.h>
#endif
#ifdef ZU_BENCHMARK_QT
#include <QByteArray>
#endif

static constexpr ZU_INT HEADERS[] = { 12, 8, 20, 8, 14 }; // RTP, UDP, IPv4, LLC, Ethernet
static constexpr ZU_INT MEGABYTE = 1 << 20;
static uint8_t source[ MEGABYTE + 1 ];

static const bool started = [] {
    zuRuntimeStartup( 0, -1, nullptr, "zu-benchmark", "Benchmarks of zu", "1.0" );
    for ( size_t i = 0; i < sizeof source; i++ ) {
        source[ i ] = (uint8_t)( i * 7 + i / 256 );
    }
    return true;
}();

// The contestants, with one set of words.
struct zuBytes {
    ZU_BUFFER *buf = zuBufferCreate();

    zuBytes() = default;
    zuBytes( const zuBytes & ) = delete;
    zuBytes &operator=( const zuBytes & ) = delete;
    ~zuBytes()
    {
        zuBufferRelease( buf );
    }
    void append( const uint8_t *bytes, ZU_INT count )
    {
        zuBufferAppendBytes( &buf, bytes, count );
    }
    void prepend( const uint8_t *bytes, ZU_INT count )
    {
        zuBufferPrependBytes( &buf, bytes, count );
    }
    void strip( ZU_INT count )
    {
        zuBufferDelLeading( &buf, count );
    }
    const void *data()
    {
        return zuBufferBacking( buf );
    }
};
struct stdBytes {
    std::vector<uint8_t> bytes;

    void append( const uint8_t *added, ZU_INT count )
    {
        bytes.insert( bytes.end(), added, added + count );
    }
    void prepend( const uint8_t *added, ZU_INT count )
    {
        bytes.insert( bytes.begin(), added, added + count );
    }
    void strip( ZU_INT count )
    {
        bytes.erase( bytes.begin(), bytes.begin() + count );
    }
    const void *data()
    {
        return bytes.data();
    }
};
#ifdef ZU_BENCHMARK_GLIB
struct glibBytes {
    GByteArray *array = g_byte_array_new();

    glibBytes() = default;
    glibBytes( const glibBytes & ) = delete;
    glibBytes &operator=( const glibBytes & ) = delete;
    ~glibBytes()
    {
        g_byte_array_unref( array );
    }
    void append( const uint8_t *bytes, ZU_INT count )
    {
        g_byte_array_append( array, bytes, (guint)count );
    }
    void prepend( const uint8_t *bytes, ZU_INT count )
    {
        g_byte_array_prepend( array, bytes, (guint)count );
    }
    void strip( ZU_INT count )
    {
        g_byte_array_remove_range( array, 0, (guint)count );
    }
    const void *data()
    {
        return array->data;
    }
};
#endif
#ifdef ZU_BENCHMARK_QT
struct qtBytes {
    QByteArray array;

    void append( const uint8_t *bytes, ZU_INT count )
    {
        array.append( (const char *)bytes, (int)count );
    }
    void prepend( const uint8_t *bytes, ZU_INT count )
    {
        array.prepend( (const char *)bytes, (int)count );
    }
    void strip( ZU_INT count )
    {
        array.remove( 0, (int)count );
    }
    const void *data()
    {
        return array.constData();
    }
};
#endif

template <typename BYTES>
static void headers( benchmark::State &state )
{
    ZU_INT payload = state.range( 0 );
    for ( auto _ : state ) {
        BYTES bytes;
        bytes.append( source, payload );
        for ( ZU_INT header : HEADERS ) {
            bytes.prepend( source, header );
        }
        benchmark::DoNotOptimize( bytes.data() );
        for ( ZU_INT header : HEADERS ) {
            bytes.strip( header );
        }
        benchmark::DoNotOptimize( bytes.data() );
    }
}
template <typename BYTES>
static void appendMegabyte( benchmark::State &state )
{
    for ( auto _ : state ) {
        BYTES bytes;
        bytes.append( source, MEGABYTE );
        benchmark::DoNotOptimize( bytes.data() );
    }
    state.SetBytesProcessed( state.iterations() * MEGABYTE );
}
// A long content that comes off the front piece by piece, and one that is put together there
template <typename BYTES>
static void consume( benchmark::State &state )
{
    for ( auto _ : state ) {
        BYTES bytes;
        bytes.append( source, MEGABYTE );
        for ( ZU_INT left = MEGABYTE; left > 0; left -= 256 ) {
            bytes.strip( 256 );
        }
        benchmark::DoNotOptimize( bytes.data() );
    }
}
template <typename BYTES>
static void prepend( benchmark::State &state )
{
    for ( auto _ : state ) {
        BYTES bytes;
        for ( ZU_INT count = 0; count < MEGABYTE; count += 64 ) {
            bytes.prepend( source + count, 64 );
        }
        benchmark::DoNotOptimize( bytes.data() );
    }
}
#define CONTESTANT( type, name )                                                                              \
    BENCHMARK_TEMPLATE( headers, type )->Name( "Buffer/headers/" name )->Arg( 64 )->Arg( 1400 )->Arg( 9000 ); \
    BENCHMARK_TEMPLATE( consume, type )->Name( "Buffer/consume/" name )->Unit( benchmark::kMillisecond );     \
    BENCHMARK_TEMPLATE( prepend, type )->Name( "Buffer/prepend/" name )->Unit( benchmark::kMillisecond );     \
    BENCHMARK_TEMPLATE( appendMegabyte, type )->Name( "Buffer/appendMegabyte/" name )
CONTESTANT( zuBytes, "zu" );
CONTESTANT( stdBytes, "std" );
#ifdef ZU_BENCHMARK_GLIB
CONTESTANT( glibBytes, "glib" );
#endif
#ifdef ZU_BENCHMARK_QT
CONTESTANT( qtBytes, "qt" );
#endif

// Overwriting 1 MB on and off the bytes' boundaries, so that the copy alone is measured
static void writeMegabyte( benchmark::State &state, ZU_INT at, ZU_INT from )
{
    ZU_BUFFER *src = zuBufferCreateFromBytesCopy( source, sizeof source );
    ZU_BUFFER *buf = zuBufferCreateFrom( src );
    for ( auto _ : state ) {
        zuBufferBitWriteInner( &buf, at, src, from, MEGABYTE * 8 );
        benchmark::DoNotOptimize( zuBufferBacking( buf ) );
    }
    state.SetBytesProcessed( state.iterations() * MEGABYTE );
    zuBufferRelease( buf );
    zuBufferRelease( src );
}
BENCHMARK_CAPTURE( writeMegabyte, aligned, 0, 0 )->Name( "Buffer/writeAligned/zu" );
BENCHMARK_CAPTURE( writeMegabyte, samePhase, 3, 3 )->Name( "Buffer/writeSamePhase/zu" );
BENCHMARK_CAPTURE( writeMegabyte, otherPhase, 3, 0 )->Name( "Buffer/writeOtherPhase/zu" );
static void writeMegabyteStd( benchmark::State &state )
{
    std::vector<uint8_t> bytes( sizeof source );
    for ( auto _ : state ) {
        memcpy( bytes.data(), source, MEGABYTE );
        benchmark::DoNotOptimize( bytes.data() );
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed( state.iterations() * MEGABYTE );
}
BENCHMARK( writeMegabyteStd )->Name( "Buffer/writeAligned/std" );

// Appending 1 MB behind three bits, beside a sequence of bits of the standard library
static void appendUnaligned( benchmark::State &state )
{
    for ( auto _ : state ) {
        ZU_BUFFER *buf = zuBufferCreateFromBits( 5, 3 );
        zuBufferAppendBytes( &buf, source, MEGABYTE );
        benchmark::DoNotOptimize( zuBufferBacking( buf ) );
        zuBufferRelease( buf );
    }
    state.SetBytesProcessed( state.iterations() * MEGABYTE );
}
BENCHMARK( appendUnaligned )->Name( "Buffer/appendUnaligned/zu" );
static void appendUnalignedStd( benchmark::State &state )
{
    std::vector<bool> src( (size_t)MEGABYTE * 8, true );
    for ( auto _ : state ) {
        std::vector<bool> bits( { true, false, true } );
        bits.insert( bits.end(), src.begin(), src.end() );
        bool last = bits.back();
        benchmark::DoNotOptimize( last );
    }
    state.SetBytesProcessed( state.iterations() * MEGABYTE );
}
BENCHMARK( appendUnalignedStd )->Name( "Buffer/appendUnaligned/std" );

// A content of 1,400 bytes copied
static void copyZu( benchmark::State &state )
{
    ZU_BUFFER *from = zuBufferCreateFromBytesCopy( source, 1400 );
    for ( auto _ : state ) {
        ZU_BUFFER *copy = zuBufferCreateFrom( from );
        benchmark::DoNotOptimize( zuBufferBacking( copy ) );
        zuBufferRelease( copy );
    }
    zuBufferRelease( from );
}
BENCHMARK( copyZu )->Name( "Buffer/copy 1400/zu" );
static void copyStd( benchmark::State &state )
{
    std::vector<uint8_t> from( source, source + 1400 );
    for ( auto _ : state ) {
        std::vector<uint8_t> copy( from );
        benchmark::DoNotOptimize( copy.data() );
    }
}
BENCHMARK( copyStd )->Name( "Buffer/copy 1400/std" );
#ifdef ZU_BENCHMARK_QT
static void copyQt( benchmark::State &state )
{
    QByteArray from( (const char *)source, 1400 );
    for ( auto _ : state ) {
        QByteArray copy( from );
        benchmark::DoNotOptimize( copy.data() ); // which makes it a copy
    }
}
BENCHMARK( copyQt )->Name( "Buffer/copy 1400/qt" );
#endif

// Appending byte by byte, as encoders do, and eight at a time
template <typename BYTES>
static void appendEight( benchmark::State &state )
{
    for ( auto _ : state ) {
        BYTES bytes;
        for ( size_t i = 0; i < 65536; i += 8 ) {
            bytes.append( &source[ i ], 8 );
        }
        benchmark::DoNotOptimize( bytes.data() );
    }
    state.SetItemsProcessed( state.iterations() * 8192 );
}
BENCHMARK_TEMPLATE( appendEight, zuBytes )->Name( "Buffer/appendEight/zu" );
BENCHMARK_TEMPLATE( appendEight, stdBytes )->Name( "Buffer/appendEight/std" );
#ifdef ZU_BENCHMARK_GLIB
BENCHMARK_TEMPLATE( appendEight, glibBytes )->Name( "Buffer/appendEight/glib" );
#endif
#ifdef ZU_BENCHMARK_QT
BENCHMARK_TEMPLATE( appendEight, qtBytes )->Name( "Buffer/appendEight/qt" );
#endif
template <typename BYTES>
static void appendSingly( benchmark::State &state )
{
    for ( auto _ : state ) {
        BYTES bytes;
        for ( size_t i = 0; i < 65536; i++ ) {
            bytes.append( &source[ i ], 1 );
        }
        benchmark::DoNotOptimize( bytes.data() );
    }
    state.SetItemsProcessed( state.iterations() * 65536 );
}
BENCHMARK_TEMPLATE( appendSingly, zuBytes )->Name( "Buffer/appendSingly/zu" );
BENCHMARK_TEMPLATE( appendSingly, stdBytes )->Name( "Buffer/appendSingly/std" );
#ifdef ZU_BENCHMARK_GLIB
BENCHMARK_TEMPLATE( appendSingly, glibBytes )->Name( "Buffer/appendSingly/glib" );
#endif
#ifdef ZU_BENCHMARK_QT
BENCHMARK_TEMPLATE( appendSingly, qtBytes )->Name( "Buffer/appendSingly/qt" );
#endif
