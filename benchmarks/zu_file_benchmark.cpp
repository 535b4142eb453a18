// Reading a whole file into memory, beside a plain loop of read(2) into one block and the whole-file reads of the
// peers; lines of files of UTF-8, beside std::wifstream and QTextStream; replacing a small file for good.  The files
// have 100 MB; ZU_BENCHMARK_FILE_MB sets another size.

#include "zu/io/zu_file.h"
#include "zu/io/zu_file_replace.h"
#include "zu/runtime/zu_runtime.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <locale>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#ifdef ZU_BENCHMARK_GLIB
#include <glib.h>
#endif
#ifdef ZU_BENCHMARK_QT
#include <QFile>
#include <QTextStream>
#endif

// Lines of 0 to 99 characters: in ASCII, with a few letters beyond it, as in French, and in Greek.
enum class Texts { ASCII, FRENCH, GREEK };

struct SAMPLE {
    std::string path = "/tmp/zu-file-benchmark";
    size_t size = 0;
    ZU_STRING *name;

    explicit SAMPLE( Texts texts )
    {
        path += std::to_string( getpid() ) + "-" + std::to_string( (int)texts );
        name = zuStringCreateFromUtf8( path.c_str(), -1 );
        const char *megabytes = getenv( "ZU_BENCHMARK_FILE_MB" );
        size_t wanted = ( megabytes ? (size_t)atoi( megabytes ) : 100 ) * 1000000;
        std::ofstream file( path, std::ios::binary );
        uint64_t state = 1;
        std::string line;
        for ( ; size < wanted; size += line.size() ) {
            state = state * 6364136223846793005u + 1442695040888963407u;
            line.clear();
            for ( size_t i = ( state >> 33 ) % 100; i > 0; i-- ) {
                if ( texts == Texts::GREEK && i % 7 ) {
                    line += { '\xCE', (char)( 0xB1 + i % 13 ) };
                } else if ( texts == Texts::FRENCH && i % 31 == 7 ) {
                    line += "\u00E9";
                } else {
                    line += texts == Texts::GREEK ? ' ' : (char)( 'a' + i % 26 );
                }
            }
            line += '\n';
            file << line;
        }
    }
    ~SAMPLE()
    {
        unlink( path.c_str() );
        zuStringRelease( name );
    }
};
static const bool started = [] {
    zuRuntimeStartup( 0, -1, nullptr, "zu-benchmark", "Benchmarks of zu", "1.0" );
    return true;
}();
template <Texts TEXTS = Texts::FRENCH>
static const SAMPLE &sample()
{
    static const SAMPLE made( TEXTS );
    return made;
}
template <Texts TEXTS = Texts::FRENCH>
static void report( benchmark::State &state, size_t found )
{
    state.SetBytesProcessed( state.iterations() * (int64_t)sample<TEXTS>().size );
    state.counters[ "found" ] = (double)found;
}

// Whole files
static void wholeZu( benchmark::State &state )
{
    size_t found = ( sample(), 0 );
    for ( auto _ : state ) {
        ZU_BUFFER *buf = zuFileReadBuffer( sample().name, -1 );
        found = (size_t)zuBufferLength( buf );
        zuBufferRelease( buf );
    }
    report( state, found );
}
BENCHMARK( wholeZu )->Name( "File/whole/zu" )->Unit( benchmark::kMillisecond );
static void wholeRead( benchmark::State &state )
{
    size_t found = ( sample(), 0 );
    for ( auto _ : state ) {
        int file = open( sample().path.c_str(), O_RDONLY | O_CLOEXEC );
        struct stat status;
        fstat( file, &status );
        char *block = (char *)malloc( (size_t)status.st_size );
        found = 0;
        for ( ssize_t count; ( count = read( file, block + found, (size_t)status.st_size - found ) ) > 0; ) {
            found += (size_t)count;
        }
        close( file );
        benchmark::DoNotOptimize( block );
        free( block );
    }
    report( state, found );
}
BENCHMARK( wholeRead )->Name( "File/whole/read/std" )->Unit( benchmark::kMillisecond );
#ifdef ZU_BENCHMARK_GLIB
static void wholeGlib( benchmark::State &state )
{
    gsize found = ( sample(), 0 );
    for ( auto _ : state ) {
        gchar *content = nullptr;
        g_file_get_contents( sample().path.c_str(), &content, &found, nullptr );
        g_free( content );
    }
    report( state, found );
}
BENCHMARK( wholeGlib )->Name( "File/whole/glib" )->Unit( benchmark::kMillisecond );
#endif
#ifdef ZU_BENCHMARK_QT
static void wholeQt( benchmark::State &state )
{
    size_t found = ( sample(), 0 );
    for ( auto _ : state ) {
        QFile file( QString::fromStdString( sample().path ) );
        file.open( QIODevice::ReadOnly );
        found = (size_t)file.readAll().size();
    }
    report( state, found );
}
BENCHMARK( wholeQt )->Name( "File/whole/qt" )->Unit( benchmark::kMillisecond );
#endif

// Lines; all count the characters
#define LINES_BENCHMARKS( function, name )                                                                       \
    BENCHMARK( function<Texts::ASCII> )->Name( "File/lines in ASCII/" name )->Unit( benchmark::kMillisecond );   \
    BENCHMARK( function<Texts::FRENCH> )->Name( "File/lines in French/" name )->Unit( benchmark::kMillisecond ); \
    BENCHMARK( function<Texts::GREEK> )->Name( "File/lines in Greek/" name )->Unit( benchmark::kMillisecond )
template <Texts TEXTS>
static void linesZu( benchmark::State &state )
{
    size_t found = ( sample<TEXTS>(), 0 );
    for ( auto _ : state ) {
        ZU_LINE_SOURCE *source = zuFileOpenLineSource( sample<TEXTS>().name, ZU_CHARSET_UTF_8, 0, ZU_NLF_FLAG_LF );
        found = 0;
        while ( ZU_STRING *line = zuLineSourceRead( source ) ) {
            found += (size_t)zuStringLength( line );
            zuStringRelease( line );
        }
        zuLineSourceRelease( source );
    }
    report<TEXTS>( state, found );
}
LINES_BENCHMARKS( linesZu, "zu" );
template <Texts TEXTS>
static void linesStd( benchmark::State &state )
{
    size_t found = ( sample<TEXTS>(), 0 );
    for ( auto _ : state ) {
        std::wifstream file( sample<TEXTS>().path );
        file.imbue( std::locale( "C.UTF-8" ) );
        std::wstring line;
        found = 0;
        while ( std::getline( file, line ) ) {
            found += line.size();
        }
    }
    report<TEXTS>( state, found );
}
LINES_BENCHMARKS( linesStd, "std" );
#ifdef ZU_BENCHMARK_QT
template <Texts TEXTS>
static void linesQt( benchmark::State &state )
{
    size_t found = ( sample<TEXTS>(), 0 );
    for ( auto _ : state ) {
        QFile file( QString::fromStdString( sample<TEXTS>().path ) );
        file.open( QIODevice::ReadOnly );
        QTextStream stream( &file );
        stream.setCodec( "UTF-8" );
        found = 0;
        for ( QString line = stream.readLine(); !line.isNull(); line = stream.readLine() ) {
            found += (size_t)line.size();
        }
    }
    report<TEXTS>( state, found );
}
LINES_BENCHMARKS( linesQt, "qt" );
#endif

// Replacing a small file for good, as settings are
static const std::string SETTINGS( 4000, 's' );

static void replaceZu( benchmark::State &state )
{
    std::string path = sample().path + ".settings";
    ZU_STRING *name = zuStringCreateFromUtf8( path.c_str(), -1 );
    for ( auto _ : state ) {
        zuFileReplaceBytes( name, (const uint8_t *)SETTINGS.data(), (ZU_INT)SETTINGS.size() );
    }
    zuStringRelease( name );
    unlink( path.c_str() );
}
BENCHMARK( replaceZu )->Name( "File/replace/zu" )->Unit( benchmark::kMicrosecond );
#ifdef ZU_BENCHMARK_GLIB
static void replaceGlib( benchmark::State &state )
{
    std::string path = sample().path + ".settings";
    auto flags = (GFileSetContentsFlags)( G_FILE_SET_CONTENTS_CONSISTENT | G_FILE_SET_CONTENTS_DURABLE );
    for ( auto _ : state ) {
        g_file_set_contents_full( path.c_str(), SETTINGS.data(), (gssize)SETTINGS.size(), flags, 0666, nullptr );
    }
    unlink( path.c_str() );
}
BENCHMARK( replaceGlib )->Name( "File/replace/glib" )->Unit( benchmark::kMicrosecond );
#endif
