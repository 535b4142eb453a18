// A record of integers and texts, and a message of a hundred of them, to bytes and back: each contestant has them in the texts that it is made
// for, and has them as values of its own again when it is done, so that nothing depends on the bytes any more.
//
// Texts are ASCII, or Greek words between it.

#include "zu/base/zu_decoder.h"
#include "zu/base/zu_encoder.h"
#include "zu/runtime/zu_runtime.h"

#include <benchmark/benchmark.h>
#include <cstring>
#include <memory>
#include <string>
#include <vector>
#ifdef ZU_BENCHMARK_MSGPACK
#include <msgpack.h>
#endif
#ifdef ZU_BENCHMARK_GLIB
#include <glib.h>
#endif
#ifdef ZU_BENCHMARK_QT
#include <QDataStream>
#include <QString>
#endif

static constexpr size_t NUMBERS = 6;
static constexpr size_t TEXTS = 5;

enum class Texts { ASCII, MIXED };

struct RECORD {
    int64_t numbers[ NUMBERS ];
    std::string texts[ TEXTS ];
};
static std::vector<RECORD> makeRecords( Texts texts, size_t count )
{
    static const char *const WORDS[] = { "id", "connection.server", "The quick river runs under old bridges",
                                         "2022-07-01T12:00:00Z",
                                         "every morning people walk along its banks, with dogs "
                                         "and newspapers" };
    std::vector<RECORD> records( count );
    for ( size_t i = 0; i < count; i++ ) {
        int64_t number = (int64_t)i;
        records[ i ] = { { number, -number, 1, 70000 + number, INT64_C( 1650000000000 ) + number, number << 50 }, {} };
        for ( size_t k = 0; k < TEXTS; k++ ) {
            const char *greek = texts == Texts::MIXED && k % 2 ? "Οι άνθρωποι " : "";
            records[ i ].texts[ k ] = greek + std::string( WORDS[ k ] ) + std::to_string( i );
        }
    }
    return records;
}

struct ZU {
    struct ROW {
        ZU_INT numbers[ NUMBERS ];
        ZU_STRING *texts[ TEXTS ];
    };
    std::vector<ROW> rows;

    explicit ZU( const std::vector<RECORD> &records )
    {
        for ( const RECORD &record : records ) {
            rows.emplace_back();
            memcpy( rows.back().numbers, record.numbers, sizeof record.numbers );
            for ( size_t k = 0; k < TEXTS; k++ ) {
                rows.back().texts[ k ] =
                    zuStringCreateFromUtf8( record.texts[ k ].data(), (ZU_INT)record.texts[ k ].size() );
            }
        }
    }
    ~ZU()
    {
        for ( ROW &row : rows ) {
            for ( ZU_STRING *text : row.texts ) {
                zuStringRelease( text );
            }
        }
    }
    std::shared_ptr<ZU_BUFFER> encode() const
    {
        ZU_ENCODER *enc = zuEncoderCreate();
        for ( const ROW &row : rows ) {
            for ( ZU_INT number : row.numbers ) {
                zuEncoderEncodeInt( enc, number );
            }
            for ( ZU_STRING *text : row.texts ) {
                zuEncoderEncodeString( enc, text );
            }
        }
        ZU_BUFFER *buffer = zuEncoderBuffer( enc );
        zuEncoderRelease( enc );
        return std::shared_ptr<ZU_BUFFER>( buffer, []( ZU_BUFFER *held ) { zuBufferRelease( held ); } );
    }
    static void decode( const std::shared_ptr<ZU_BUFFER> &bytes )
    {
        ZU_DECODER *dec = zuDecoderCreate( bytes.get() );
        while ( zuDecoderRemaining( dec ) > 0 ) {
            ROW row = {};
            for ( ZU_INT &number : row.numbers ) {
                zuDecoderTryDecodeInt( dec, &number );
            }
            for ( ZU_STRING *&text : row.texts ) {
                zuDecoderTryDecodeString( dec, &text );
            }
            benchmark::DoNotOptimize( row );
            for ( ZU_STRING *text : row.texts ) {
                zuStringRelease( text );
            }
        }
        zuDecoderRelease( dec );
    }
};

#ifdef ZU_BENCHMARK_MSGPACK
struct MSGPACK {
    const std::vector<RECORD> &records;

    explicit MSGPACK( const std::vector<RECORD> &source ) : records( source )
    {
    }
    std::shared_ptr<msgpack_sbuffer> encode() const
    {
        std::shared_ptr<msgpack_sbuffer> bytes( msgpack_sbuffer_new(), msgpack_sbuffer_free );
        msgpack_packer packer;
        msgpack_packer_init( &packer, bytes.get(), msgpack_sbuffer_write );
        for ( const RECORD &record : records ) {
            msgpack_pack_array( &packer, NUMBERS + TEXTS );
            for ( int64_t number : record.numbers ) {
                msgpack_pack_int64( &packer, number );
            }
            for ( const std::string &text : record.texts ) {
                msgpack_pack_str( &packer, text.size() );
                msgpack_pack_str_body( &packer, text.data(), text.size() );
            }
        }
        return bytes;
    }
    static void decode( const std::shared_ptr<msgpack_sbuffer> &bytes )
    {
        msgpack_unpacked result;
        msgpack_unpacked_init( &result );
        size_t offset = 0;
        while ( msgpack_unpack_next( &result, bytes->data, bytes->size, &offset ) == MSGPACK_UNPACK_SUCCESS ) {
            RECORD record;
            const msgpack_object *items = result.data.via.array.ptr;
            for ( size_t k = 0; k < NUMBERS; k++ ) {
                record.numbers[ k ] = items[ k ].via.i64;
            }
            for ( size_t k = 0; k < TEXTS; k++ ) {
                record.texts[ k ].assign( items[ NUMBERS + k ].via.str.ptr, items[ NUMBERS + k ].via.str.size );
            }
            benchmark::DoNotOptimize( record );
        }
        msgpack_unpacked_destroy( &result );
    }
};
#endif

#ifdef ZU_BENCHMARK_GLIB
struct GLIB {
    const std::vector<RECORD> &records;

    explicit GLIB( const std::vector<RECORD> &source ) : records( source )
    {
    }
    std::shared_ptr<GBytes> encode() const
    {
        GVariantBuilder builder;
        g_variant_builder_init( &builder, G_VARIANT_TYPE( "a(xxxxxxsssss)" ) );
        for ( const RECORD &record : records ) {
            const int64_t *n = record.numbers;
            const std::string *t = record.texts;
            g_variant_builder_add( &builder, "(xxxxxxsssss)", n[ 0 ], n[ 1 ], n[ 2 ], n[ 3 ], n[ 4 ], n[ 5 ],
                                   t[ 0 ].c_str(), t[ 1 ].c_str(), t[ 2 ].c_str(), t[ 3 ].c_str(), t[ 4 ].c_str() );
        }
        GVariant *variant = g_variant_ref_sink( g_variant_builder_end( &builder ) );
        GBytes *bytes = g_variant_get_data_as_bytes( variant );
        g_variant_unref( variant );
        return std::shared_ptr<GBytes>( bytes, g_bytes_unref );
    }
    static void decode( const std::shared_ptr<GBytes> &bytes )
    {
        GVariant *variant =
            g_variant_ref_sink( g_variant_new_from_bytes( G_VARIANT_TYPE( "a(xxxxxxsssss)" ), bytes.get(), FALSE ) );
        GVariantIter iter;
        g_variant_iter_init( &iter, variant );
        int64_t n[ NUMBERS ];
        const char *t[ TEXTS ];
        while ( g_variant_iter_next( &iter, "(xxxxxx&s&s&s&s&s)", &n[ 0 ], &n[ 1 ], &n[ 2 ], &n[ 3 ], &n[ 4 ], &n[ 5 ],
                                     &t[ 0 ], &t[ 1 ], &t[ 2 ], &t[ 3 ], &t[ 4 ] ) ) {
            RECORD record = { { n[ 0 ], n[ 1 ], n[ 2 ], n[ 3 ], n[ 4 ], n[ 5 ] },
                              { t[ 0 ], t[ 1 ], t[ 2 ], t[ 3 ], t[ 4 ] } };
            benchmark::DoNotOptimize( record );
        }
        g_variant_unref( variant );
    }
};
#endif

#ifdef ZU_BENCHMARK_QT
struct QT {
    struct ROW {
        qint64 numbers[ NUMBERS ];
        QString texts[ TEXTS ];
    };
    std::vector<ROW> rows;

    explicit QT( const std::vector<RECORD> &records )
    {
        for ( const RECORD &record : records ) {
            rows.emplace_back();
            std::copy( record.numbers, std::end( record.numbers ), rows.back().numbers );
            for ( size_t k = 0; k < TEXTS; k++ ) {
                rows.back().texts[ k ] = QString::fromStdString( record.texts[ k ] );
            }
        }
    }
    QByteArray encode() const
    {
        QByteArray bytes;
        QDataStream stream( &bytes, QIODevice::WriteOnly );
        for ( const ROW &row : rows ) {
            for ( qint64 number : row.numbers ) {
                stream << number;
            }
            for ( const QString &text : row.texts ) {
                stream << text;
            }
        }
        return bytes;
    }
    static void decode( const QByteArray &bytes )
    {
        QDataStream stream( bytes );
        while ( !stream.atEnd() ) {
            ROW row;
            for ( qint64 &number : row.numbers ) {
                stream >> number;
            }
            for ( QString &text : row.texts ) {
                stream >> text;
            }
            benchmark::DoNotOptimize( row );
        }
    }
};
#endif

template <typename CONTESTANT, Texts KIND>
static void encode( benchmark::State &state )
{
    const std::vector<RECORD> records = makeRecords( KIND, (size_t)state.range( 0 ) );
    CONTESTANT contestant( records );
    for ( auto _ : state ) {
        benchmark::DoNotOptimize( contestant.encode() );
    }
}
template <typename CONTESTANT, Texts KIND>
static void decode( benchmark::State &state )
{
    const std::vector<RECORD> records = makeRecords( KIND, (size_t)state.range( 0 ) );
    CONTESTANT contestant( records );
    auto bytes = contestant.encode();
    for ( auto _ : state ) {
        CONTESTANT::decode( bytes );
    }
}
#define CODEC_BENCHMARKS( CONTESTANT, name )                                                                  \
    BENCHMARK( (encode<CONTESTANT, Texts::ASCII>))->Name( "Codec/encode/" name )->Arg( 1 )->Arg( 100 );       \
    BENCHMARK( (decode<CONTESTANT, Texts::ASCII>))->Name( "Codec/decode/" name )->Arg( 1 )->Arg( 100 );       \
    BENCHMARK( (encode<CONTESTANT, Texts::MIXED>))->Name( "Codec/encode Greek/" name )->Arg( 1 )->Arg( 100 ); \
    BENCHMARK( (decode<CONTESTANT, Texts::MIXED>))->Name( "Codec/decode Greek/" name )->Arg( 1 )->Arg( 100 )

CODEC_BENCHMARKS( ZU, "zu" );
#ifdef ZU_BENCHMARK_MSGPACK
CODEC_BENCHMARKS( MSGPACK, "msgpack" );
#endif
#ifdef ZU_BENCHMARK_GLIB
CODEC_BENCHMARKS( GLIB, "glib" );
#endif
#ifdef ZU_BENCHMARK_QT
CODEC_BENCHMARKS( QT, "qt" );
#endif

int main( int argc, char **argv )
{
    zuRuntimeStartup( 0, -1, nullptr, "zu-benchmark", "Benchmarks of zu", "1.0" );
    benchmark::Initialize( &argc, argv );
    benchmark::RunSpecifiedBenchmarks();
    zuRuntimeShutdown();
    return 0;
}
