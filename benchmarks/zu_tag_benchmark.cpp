// Sets of 20 tags: taking in and taking out the tags of another, asking how many two have in common, rewriting, and
// their text.  Peers have sets of strings and no more; what they lack is written out by hand, as users of theirs would.

#include "zu/zu.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <set>
#include <string>
#include <vector>
#ifdef ZU_BENCHMARK_QT
#include <QSet>
#include <QString>
#endif

static constexpr int TAGS = 20;

// Two thirds of the tags of either set are in the other too.
static std::vector<std::string> names( int set )
{
    static const char *const BEGINNINGS[] = { "draft", "reviewed", "urgent", "fromCustomer" };
    std::vector<std::string> all;
    for ( int i = 0; (int)all.size() < TAGS; i++ ) {
        if ( i % 4 != 2 * set ) {
            all.push_back( BEGINNINGS[ i * 7 % 4 ] + std::to_string( i * 13 % 30 ) );
        }
    }
    return all;
}

// Each contestant has two sets, and takes a copy of the first for each change.
class ZU_TAGS {
public:
    ZU_TAGS() : a( make( 0 ) ), b( make( 1 ) ), match( zuTagMatchCreate() ), text( zuTagSetEncode( a ) )
    {
        zuTagMatchSetType( &match, ZU_TAG_MATCH_TYPE_AND );
        zuTagMatchSetTagSet( &match, same = make( 0 ) );
    }
    ~ZU_TAGS()
    {
        zuTagSetRelease( a );
        zuTagSetRelease( b );
        zuTagSetRelease( same );
        zuTagMatchRelease( match );
        zuStringRelease( text );
    }
    void include()
    {
        change( zuTagSetInclude );
    }
    void exclude()
    {
        change( zuTagSetExclude );
    }
    void matchAll()
    {
        benchmark::DoNotOptimize( zuTagMatchTryMatch( match, a ) );
    }
    void decode()
    {
        ZU_TAG_SET *ts = zuTagSetDecode( text );
        benchmark::DoNotOptimize( ts );
        zuTagSetRelease( ts );
    }

private:
    static ZU_TAG_SET *make( int set )
    {
        ZU_TAG_SET *ts = zuTagSetCreate();
        for ( const std::string &name : names( set ) ) {
            ZU_STRING *tag = zuStringCreateFromAscii( name.data(), (ZU_INT)name.size() );
            zuTagSetSetTag( &ts, tag );
            zuStringRelease( tag );
        }
        return ts;
    }
    void change( void ( *func )( ZU_TAG_SET **, ZU_TAG_SET * ) )
    {
        ZU_TAG_SET *ts = zuTagSetRetain( a );
        func( &ts, b );
        benchmark::DoNotOptimize( ts );
        zuTagSetRelease( ts );
    }
    ZU_TAG_SET *a;
    ZU_TAG_SET *b;
    ZU_TAG_SET *same;
    ZU_TAG_MATCH *match;
    ZU_STRING *text;
};

class STD_TAGS {
public:
    STD_TAGS() : a( make( 0 ) ), b( make( 1 ) ), same( make( 0 ) )
    {
        for ( const std::string &name : a ) {
            text += ( text.empty() ? "" : " " ) + name;
        }
    }
    void include()
    {
        std::set<std::string> ts = a;
        ts.insert( b.begin(), b.end() );
        benchmark::DoNotOptimize( ts );
    }
    void exclude()
    {
        std::set<std::string> ts = a;
        for ( const std::string &name : b ) {
            ts.erase( name );
        }
        benchmark::DoNotOptimize( ts );
    }
    void matchAll()
    {
        benchmark::DoNotOptimize( std::includes( a.begin(), a.end(), same.begin(), same.end() ) );
    }
    void decode()
    {
        std::set<std::string> ts;
        for ( size_t begin = 0, end = 0; end != std::string::npos; begin = end + 1 ) {
            end = text.find( ' ', begin );
            ts.insert( text.substr( begin, end - begin ) );
        }
        benchmark::DoNotOptimize( ts );
    }

private:
    static std::set<std::string> make( int set )
    {
        std::vector<std::string> all = names( set );
        return { all.begin(), all.end() };
    }
    std::set<std::string> a;
    std::set<std::string> b;
    std::set<std::string> same;
    std::string text;
};

#ifdef ZU_BENCHMARK_QT
class QT_TAGS {
public:
    QT_TAGS() : a( make( 0 ) ), b( make( 1 ) ), same( make( 0 ) )
    {
        text = QStringList( a.begin(), a.end() ).join( ' ' );
    }
    void include()
    {
        QSet<QString> ts = a;
        ts.unite( b );
        benchmark::DoNotOptimize( ts );
    }
    void exclude()
    {
        QSet<QString> ts = a;
        ts.subtract( b );
        benchmark::DoNotOptimize( ts );
    }
    void matchAll()
    {
        benchmark::DoNotOptimize( a.contains( same ) );
    }
    void decode()
    {
        const QStringList parts = text.split( ' ' );
        QSet<QString> ts( parts.begin(), parts.end() );
        benchmark::DoNotOptimize( ts );
    }

private:
    static QSet<QString> make( int set )
    {
        QSet<QString> tags;
        for ( const std::string &name : names( set ) ) {
            tags.insert( QString::fromStdString( name ) );
        }
        return tags;
    }
    QSet<QString> a;
    QSet<QString> b;
    QSet<QString> same;
    QString text;
};
#endif

// A third of the operations change something.
static void rewrite( benchmark::State &state )
{
    static const ZU_TAG_REWRITE_OPERATION_TYPE TYPES[] = { ZU_TAG_REWRITE_OPERATION_TYPE_SET,
                                                           ZU_TAG_REWRITE_OPERATION_TYPE_DELETE,
                                                           ZU_TAG_REWRITE_OPERATION_TYPE_PASSTHROUGH };
    ZU_TAG_REWRITE *rewrite = zuTagRewriteCreate();
    ZU_TAG_SET *ts = zuTagSetCreate();
    for ( int i = 0; i < TAGS; i++ ) {
        ZU_STRING *tag = zuStringCreateFromAscii( names( 0 )[ i ].c_str(), -1 );
        zuTagSetSetTag( &ts, tag );
        zuStringRelease( tag );
        tag = zuStringCreateFromAscii( names( 1 )[ i ].c_str(), -1 );
        ZU_TAG_REWRITE_OPERATION *op = zuTagRewriteOperationCreate( TYPES[ i % 3 ], tag );
        zuTagRewriteSetOperation( &rewrite, op );
        zuTagRewriteOperationRelease( op );
        zuStringRelease( tag );
    }
    for ( auto _ : state ) {
        ZU_TAG_SET *result = zuTagRewriteApply( rewrite, ts );
        benchmark::DoNotOptimize( result );
        zuTagSetRelease( result );
    }
    zuTagRewriteRelease( rewrite );
    zuTagSetRelease( ts );
}

template <typename CONTESTANT>
static void add( const char *topic, const char *contestant, void ( CONTESTANT::*func )() )
{
    std::string name = std::string( "Tag/" ) + topic + "/" + contestant;
    benchmark::RegisterBenchmark( name.c_str(), [ = ]( benchmark::State &state ) {
        CONTESTANT tags;
        for ( auto _ : state ) {
            ( tags.*func )();
        }
    } );
}
template <typename CONTESTANT>
static void addAll( const char *contestant )
{
    add( "include 20", contestant, &CONTESTANT::include );
    add( "exclude 20", contestant, &CONTESTANT::exclude );
    add( "match 20", contestant, &CONTESTANT::matchAll );
    add( "decode 20", contestant, &CONTESTANT::decode );
}
int main( int argc, char **argv )
{
    zuRuntimeStartup( 0, -1, nullptr, "zu-benchmark", "Benchmarks of zu", "1.0" );
    addAll<ZU_TAGS>( "zu" );
    addAll<STD_TAGS>( "std" );
#ifdef ZU_BENCHMARK_QT
    addAll<QT_TAGS>( "qt" );
#endif
    benchmark::RegisterBenchmark( "Tag/rewrite 20/zu", rewrite );
    benchmark::Initialize( &argc, argv );
    benchmark::RunSpecifiedBenchmarks();
    zuRuntimeShutdown();
}
