// Splitting UTF-8 text in memory into lines of code points: the three levels of streams, beside std::getline with each
// line decoded to UTF-32, and QTextStream, which makes UTF-16.  The text has 8 MB; ZU_BENCHMARK_TEXT_MB sets another
// size.

#include "zu/charset/zu_charset.h"
#include "zu/io/zu_buffer_byte_source.h"
#include "zu/io/zu_nlf_line_source.h"
#include "zu/runtime/zu_runtime.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <istream>
#include <streambuf>
#include <string>
#ifdef ZU_BENCHMARK_QT
#include <QTextStream>
#endif

// Lines of 0 to 99 characters, a few of which lie beyond ASCII.
static const std::string &text()
{
    static const std::string made = [] {
        zuRuntimeStartup( 0, -1, nullptr, "zu-benchmark", "Benchmarks of zu", "1.0" );
        const char *megabytes = getenv( "ZU_BENCHMARK_TEXT_MB" );
        size_t size = ( megabytes ? (size_t)atoi( megabytes ) : 8 ) << 20;
        std::string lines;
        lines.reserve( size + 200 );
        uint64_t state = 1;
        while ( lines.size() < size ) {
            state = state * 6364136223846793005u + 1442695040888963407u;
            for ( size_t i = ( state >> 33 ) % 100; i > 0; i-- ) {
                if ( i % 31 == 7 ) {
                    lines += "\u00E9";
                } else {
                    lines += (char)( 'a' + i % 26 );
                }
            }
            lines += '\n';
        }
        return lines;
    }();
    return made;
}

// What all have to find
static void report( benchmark::State &state, size_t lines, size_t characters )
{
    state.SetBytesProcessed( state.iterations() * (int64_t)text().size() );
    state.counters[ "lines" ] = (double)lines;
    state.counters[ "characters" ] = (double)characters;
}

static void splitZu( benchmark::State &state )
{
    ZU_INT lines = 0;
    ZU_INT characters = 0;
    ZU_STRING *owner = ( text(), zuStringCreate() );
    for ( auto _ : state ) {
        ZU_BUFFER *buffer = zuBufferCreateFromBytesUseWithRef( (const uint8_t *)text().data(), (ZU_INT)text().size(),
                                                               zuStringObj( owner ) );
        ZU_BUFFER_BYTE_SOURCE *memory = zuBufferByteSourceCreate( buffer );
        ZU_BYTE_SOURCE *bytes = zuBufferByteSourceByteSource( memory );
        ZU_CHAR_SOURCE *chars = zuCharsetCreateCharSource( bytes, ZU_CHARSET_UTF_8, 0 );
        ZU_NLF_LINE_SOURCE *nls = zuNlfLineSourceCreate( chars, ZU_NLF_FLAG_LF | ZU_NLF_FLAG_CRLF );
        ZU_LINE_SOURCE *source = zuNlfLineSourceLineSource( nls );
        characters = 0;
        while ( ZU_STRING *line = zuLineSourceRead( source ) ) {
            characters += zuStringLength( line );
            zuStringRelease( line );
        }
        lines = zuLineSourceLinesRead( source );
        zuLineSourceRelease( source );
        zuNlfLineSourceRelease( nls );
        zuCharSourceRelease( chars );
        zuByteSourceRelease( bytes );
        zuBufferByteSourceRelease( memory );
        zuBufferRelease( buffer );
    }
    zuStringRelease( owner );
    report( state, (size_t)lines, (size_t)characters );
}
BENCHMARK( splitZu )->Name( "Lines/split/zu" )->Unit( benchmark::kMillisecond );

// Splitting alone, of text that has been decoded
static void splitStringZu( benchmark::State &state )
{
    ZU_STRING *decoded = zuStringCreateFromUtf8( text().data(), (ZU_INT)text().size() );
    ZU_INT lines = 0;
    ZU_INT characters = 0;
    for ( auto _ : state ) {
        ZU_NLF_LINE_SOURCE *nls = zuNlfLineSourceCreateFromString( decoded, ZU_NLF_FLAG_LF | ZU_NLF_FLAG_CRLF );
        ZU_LINE_SOURCE *source = zuNlfLineSourceLineSource( nls );
        characters = 0;
        while ( ZU_STRING *line = zuLineSourceRead( source ) ) {
            characters += zuStringLength( line );
            zuStringRelease( line );
        }
        lines = zuLineSourceLinesRead( source );
        zuLineSourceRelease( source );
        zuNlfLineSourceRelease( nls );
    }
    zuStringRelease( decoded );
    report( state, (size_t)lines, (size_t)characters );
}
BENCHMARK( splitStringZu )->Name( "Lines/splitDecoded/zu" )->Unit( benchmark::kMillisecond );

// A plain decoder for valid text, which beats the conversions of the standard library by far.
static void decode( std::u32string &dest, const std::string &src )
{
    dest.clear();
    for ( size_t i = 0; i < src.size(); ) {
        uint8_t lead = (uint8_t)src[ i++ ];
        char32_t ch = lead;
        int following = lead < 0x80 ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
        if ( following > 0 ) {
            ch = lead & 0x3F >> following;
            for ( ; following > 0; following-- ) {
                ch = ch << 6 | ( (uint8_t)src[ i++ ] & 0x3F );
            }
        }
        dest += ch;
    }
}
// Reads from memory as it is; a std::istringstream would copy it first.
struct TEXT_BUFFER : std::streambuf {
    TEXT_BUFFER()
    {
        char *begin = const_cast<char *>( text().data() );
        setg( begin, begin, begin + text().size() );
    }
};
static void splitStd( benchmark::State &state )
{
    size_t lines = 0;
    size_t characters = 0;
    for ( auto _ : state ) {
        TEXT_BUFFER memory;
        std::istream stream( &memory );
        std::string bytes;
        lines = 0;
        characters = 0;
        while ( std::getline( stream, bytes ) ) {
            std::u32string line; // each line is an object of its own, as with the others
            decode( line, bytes );
            characters += line.size();
            lines++;
        }
    }
    report( state, lines, characters );
}
BENCHMARK( splitStd )->Name( "Lines/split/std" )->Unit( benchmark::kMillisecond );
#ifdef ZU_BENCHMARK_QT
static void splitQt( benchmark::State &state )
{
    size_t lines = 0;
    size_t characters = 0;
    for ( auto _ : state ) {
        QByteArray bytes = QByteArray::fromRawData( text().data(), (int)text().size() );
        QTextStream stream( bytes );
        stream.setCodec( "UTF-8" );
        lines = 0;
        characters = 0;
        for ( QString line = stream.readLine(); !line.isNull(); line = stream.readLine() ) {
            characters += (size_t)line.size();
            lines++;
        }
    }
    report( state, lines, characters );
}
BENCHMARK( splitQt )->Name( "Lines/split/qt" )->Unit( benchmark::kMillisecond );
#endif
