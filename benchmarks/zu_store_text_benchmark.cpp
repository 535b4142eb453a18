// Settings to files and back: 10,000 entries in ten groups.  GLib has them in a GKeyFile, Qt in QSettings, which knows
// nothing but files (in memory, here), and for the binary form in a QJsonDocument, by way of CBOR.
//
// The heap keeps what is freed, as that of a program that has run for a while does.

#include "zu/base/zu_store_binary.h"
#include "zu/base/zu_store_text.h"
#include "zu/runtime/zu_runtime.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <random>
#include <string>
#include <vector>
#ifdef ZU_BENCHMARK_GLIB
#include <glib.h>
#endif
#ifdef ZU_BENCHMARK_QT
#include <QCborMap>
#include <QCborValue>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSettings>
#endif

static constexpr size_t GROUPS = 10;
static constexpr size_t ENTRIES = 1000; // of a group

struct ENTRY {
    std::string key;
    std::string value;
};
static std::string groupName( size_t group )
{
    return "group-" + std::to_string( group );
}
static std::vector<ENTRY> entriesOf( size_t group )
{
    static const char *const WORDS[] = { "true", "640", "0.125", "Helvetica, 12 pt", "/home/user/Documents/reports" };
    std::vector<ENTRY> entries;
    for ( size_t i = 0; i < ENTRIES; i++ ) {
        entries.push_back( { "setting-" + std::to_string( ENTRIES + i ), WORDS[ ( group + i ) % 5 ] } );
    }
    return entries;
}

static ZU_STORE *makeStore()
{
    ZU_STORE *store = zuStoreCreate();
    for ( size_t group = 0; group < GROUPS; group++ ) {
        ZU_STORE *sub = zuStoreCreate();
        for ( const ENTRY &entry : entriesOf( group ) ) {
            ZU_STRING *value = zuStringCreateFromUtf8( entry.value.data(), (ZU_INT)entry.value.size() );
            zuStoreSetValueCstr( &sub, entry.key.data(), (ZU_INT)entry.key.size(), value );
            zuStringRelease( value );
        }
        zuStoreSetStoreCstr( &store, groupName( group ).c_str(), -1, sub );
        zuStoreRelease( sub );
    }
    return store;
}
static ZU_BUFFER *encodeText( ZU_STORE *store )
{
    return zuStoreTextTryEncodeToBuffer( store, ZU_CHARSET_UTF_8, 0, ZU_NLF_FLAG_LF );
}
static ZU_STORE *decodeText( ZU_BUFFER *bytes )
{
    return zuStoreTextTryDecodeFromBuffer( bytes, ZU_CHARSET_UTF_8, 0, ZU_NLF_FLAG_LF );
}
template <ZU_BUFFER *( *ENCODE )( ZU_STORE * )>
static void encode( benchmark::State &state )
{
    ZU_STORE *store = makeStore();
    for ( auto _ : state ) {
        zuBufferRelease( ENCODE( store ) );
    }
    zuStoreRelease( store );
}
template <ZU_BUFFER *( *ENCODE )(ZU_STORE *), ZU_STORE *( *DECODE )( ZU_BUFFER * )>
static void decode( benchmark::State &state )
{
    ZU_STORE *store = makeStore();
    ZU_BUFFER *bytes = ENCODE( store );
    for ( auto _ : state ) {
        zuStoreRelease( DECODE( bytes ) );
    }
    zuBufferRelease( bytes );
    zuStoreRelease( store );
}
BENCHMARK( encode<encodeText> )->Name( "StoreText/write/zu" );
BENCHMARK( (decode<encodeText, decodeText>))->Name( "StoreText/read/zu" );
BENCHMARK( encode<zuStoreBinaryEncodeToBuffer> )->Name( "StoreBinary/write/zu" );
BENCHMARK( (decode<zuStoreBinaryEncodeToBuffer, zuStoreBinaryTryDecodeFromBuffer>))->Name( "StoreBinary/read/zu" );

// Lines in any order, each with an address of its own.
static void decodeShuffled( benchmark::State &state )
{
    std::vector<std::string> lines;
    for ( int64_t i = 0; i < state.range( 0 ); i++ ) {
        lines.push_back( "setting-" + std::to_string( i ) + "=value\n" );
    }
    std::shuffle( lines.begin(), lines.end(), std::mt19937( 1 ) );
    ZU_BUFFER *bytes = zuBufferCreate();
    for ( const std::string &line : lines ) {
        zuBufferAppendBytes( &bytes, (const uint8_t *)line.data(), (ZU_INT)line.size() );
    }
    for ( auto _ : state ) {
        zuStoreRelease( decodeText( bytes ) );
    }
    zuBufferRelease( bytes );
}
BENCHMARK( decodeShuffled )->Name( "StoreText/read shuffled/zu" )->Arg( 200000 );

#ifdef ZU_BENCHMARK_GLIB
static GKeyFile *makeKeyFile()
{
    GKeyFile *file = g_key_file_new();
    for ( size_t group = 0; group < GROUPS; group++ ) {
        for ( const ENTRY &entry : entriesOf( group ) ) {
            g_key_file_set_string( file, groupName( group ).c_str(), entry.key.c_str(), entry.value.c_str() );
        }
    }
    return file;
}
static void encodeKeyFile( benchmark::State &state )
{
    GKeyFile *file = makeKeyFile();
    for ( auto _ : state ) {
        g_free( g_key_file_to_data( file, nullptr, nullptr ) );
    }
    g_key_file_free( file );
}
static void decodeKeyFile( benchmark::State &state )
{
    GKeyFile *file = makeKeyFile();
    gsize length;
    char *data = g_key_file_to_data( file, &length, nullptr );
    for ( auto _ : state ) {
        GKeyFile *read = g_key_file_new();
        g_key_file_load_from_data( read, data, length, G_KEY_FILE_NONE, nullptr );
        g_key_file_free( read );
    }
    g_free( data );
    g_key_file_free( file );
}
BENCHMARK( encodeKeyFile )->Name( "StoreText/write/glib" );
BENCHMARK( decodeKeyFile )->Name( "StoreText/read/glib" );
#endif

#ifdef ZU_BENCHMARK_QT
static const char SETTINGS_FILE[] = "/dev/shm/zu-benchmark.ini";

static void fillSettings( QSettings &settings, int round )
{
    for ( size_t group = 0; group < GROUPS; group++ ) {
        settings.beginGroup( QString::fromStdString( groupName( group ) ) );
        for ( const ENTRY &entry : entriesOf( group ) ) {
            settings.setValue( QString::fromStdString( entry.key ), QString::fromStdString( entry.value ) );
        }
        settings.endGroup();
    }
    settings.setValue( "round", round ); // so that there is something to write
}
static void encodeSettings( benchmark::State &state )
{
    QFile::remove( SETTINGS_FILE );
    QSettings settings( SETTINGS_FILE, QSettings::IniFormat );
    fillSettings( settings, 0 );
    int round = 0;
    for ( auto _ : state ) {
        settings.setValue( "round", ++round );
        settings.sync();
    }
    QFile::remove( SETTINGS_FILE );
}
static void decodeSettings( benchmark::State &state )
{
    QFile::remove( SETTINGS_FILE );
    {
        QSettings settings( SETTINGS_FILE, QSettings::IniFormat );
        fillSettings( settings, 0 );
    }
    for ( auto _ : state ) {
        // Qt keeps what it has read of a file, unless that has another name.
        state.PauseTiming();
        QString name = QString( "/dev/shm/zu-benchmark-%1.ini" ).arg( rand() );
        QFile::copy( SETTINGS_FILE, name );
        state.ResumeTiming();
        {
            QSettings settings( name, QSettings::IniFormat );
            benchmark::DoNotOptimize( settings.allKeys() ); // until then Qt leaves what it has read as it is
        }
        state.PauseTiming();
        QFile::remove( name );
        state.ResumeTiming();
    }
    QFile::remove( SETTINGS_FILE );
}
BENCHMARK( encodeSettings )->Name( "StoreText/write/qt" );
BENCHMARK( decodeSettings )->Name( "StoreText/read/qt" );

static QJsonDocument makeDocument()
{
    QJsonObject root;
    for ( size_t group = 0; group < GROUPS; group++ ) {
        QJsonObject object;
        for ( const ENTRY &entry : entriesOf( group ) ) {
            object.insert( QString::fromStdString( entry.key ), QString::fromStdString( entry.value ) );
        }
        root.insert( QString::fromStdString( groupName( group ) ), object );
    }
    return QJsonDocument( root );
}
static void encodeDocument( benchmark::State &state )
{
    QJsonDocument document = makeDocument();
    for ( auto _ : state ) {
        benchmark::DoNotOptimize( QCborMap::fromJsonObject( document.object() ).toCborValue().toCbor() );
    }
}
static void decodeDocument( benchmark::State &state )
{
    QByteArray bytes = QCborMap::fromJsonObject( makeDocument().object() ).toCborValue().toCbor();
    for ( auto _ : state ) {
        benchmark::DoNotOptimize( QJsonDocument( QCborValue::fromCbor( bytes ).toMap().toJsonObject() ) );
    }
}
BENCHMARK( encodeDocument )->Name( "StoreBinary/write/qt" );
BENCHMARK( decodeDocument )->Name( "StoreBinary/read/qt" );
#endif

int main( int argc, char **argv )
{
    static constexpr int NEVER = 1 << 30; // bytes
    mallopt( M_TRIM_THRESHOLD, NEVER );
    mallopt( M_MMAP_THRESHOLD, NEVER );
    zuRuntimeStartup( 0, -1, nullptr, "zu-benchmark", "Benchmarks of zu", "1.0" );
    benchmark::Initialize( &argc, argv );
    benchmark::RunSpecifiedBenchmarks();
    zuRuntimeShutdown();
    return 0;
}
