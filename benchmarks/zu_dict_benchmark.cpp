// Maps with text keys: lookups that hit and that miss, insertion of keys in ascending and in any order, deletion, walking,
// and loading of keys in any order at once, at sizes from a handful to what exceeds the caches.  Peers hold the same texts in the form that they are made for.

#include "zu/base/zu_dict_cursor.h"

#include "zu/base/zu_boxed_int.h"
#include "zu/base/zu_string.h"
#include "zu/base/zu_vector.h"
#include "zu/runtime/zu_runtime.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <map>
#include <random>
#include <string>
#include <vector>
#ifdef ZU_BENCHMARK_ABSL
#include <absl/container/btree_map.h>
#endif
#ifdef ZU_BENCHMARK_GLIB
#include <glib.h>
#endif
#ifdef ZU_BENCHMARK_QT
#include <QMap>
#include <QString>
#endif

// Texts as keys are: a few beginnings, many ends.  Those at even places are keys, their neighbours at odd places are
// not.
static std::vector<std::string> texts( size_t keys )
{
    static const char *const BEGINNINGS[] = { "connection.server.", "user.", "x", "display.window.colour." };
    std::vector<std::string> all;
    for ( size_t i = 0; i < 2 * keys; i++ ) {
        char number[ 24 ];
        snprintf( number, sizeof number, "%07zu", i );
        all.push_back( BEGINNINGS[ i / 2 % 4 ] + std::string( number ) );
    }
    return all;
}
// The places of `count` keys, or of others, in any order.
static std::vector<size_t> shuffled( size_t keys, size_t first, size_t count )
{
    std::vector<size_t> places( count );
    std::mt19937 random( 1 );
    std::generate( places.begin(), places.end(), [ & ] { return random() % keys * 2 + first; } );
    return places;
}
static std::vector<size_t> ascending( const std::vector<std::string> &all )
{
    std::vector<size_t> places;
    for ( size_t i = 0; i < all.size(); i += 2 ) {
        places.push_back( i );
    }
    std::sort( places.begin(), places.end(), [ & ]( size_t a, size_t b ) { return all[ a ] < all[ b ]; } );
    return places;
}

// Each contestant makes keys of texts, and maps them to their places.
class ZU_MAP {
public:
    using KEY = ZU_STRING *;
    static KEY makeKey( const std::string &text )
    {
        return zuStringCreateFromAscii( text.data(), (ZU_INT)text.size() );
    }
    static void freeKey( KEY key )
    {
        zuStringRelease( key );
    }
    ~ZU_MAP()
    {
        zuDictRelease( dict );
    }
    void set( KEY key, ZU_OBJ *value )
    {
        zuDictSetStringKey( &dict, key, value );
    }
    void del( KEY key )
    {
        zuDictDelStringKey( &dict, key );
    }
    bool get( KEY key )
    {
        ZU_OBJ *value = zuDictStringKey( dict, key );
        ZU_REF_RELEASE_OPT( value );
        return value != nullptr;
    }
    size_t walk() // with no reference for each value, as the others do
    {
        size_t count = 0;
        ZU_DICT_CURSOR cursor = zuDictCursor( dict );
        while ( zuDictCursorNext( &cursor ) ) {
            count += cursor.value != nullptr;
        }
        return count;
    }

private:
    ZU_DICT *dict = zuDictCreate();
};
template <typename MAP>
class CXX_MAP {
public:
    using KEY = std::u32string;
    static KEY makeKey( const std::string &text )
    {
        return KEY( text.begin(), text.end() );
    }
    static void freeKey( const KEY & )
    {
    }
    void set( const KEY &key, ZU_OBJ *value )
    {
        map.insert_or_assign( key, value );
    }
    void del( const KEY &key )
    {
        map.erase( key );
    }
    bool get( const KEY &key )
    {
        auto at = map.find( key );
        return at != map.end() && at->second;
    }
    size_t walk()
    {
        size_t count = 0;
        for ( const auto &pair : map ) {
            count += pair.second != nullptr;
        }
        return count;
    }

private:
    MAP map;
};
using STD_MAP = CXX_MAP<std::map<std::u32string, ZU_OBJ *>>;
#ifdef ZU_BENCHMARK_ABSL
using ABSL_BTREE = CXX_MAP<absl::btree_map<std::u32string, ZU_OBJ *>>;
#endif
#ifdef ZU_BENCHMARK_GLIB
class GLIB_TREE {
public:
    using KEY = char *;
    static KEY makeKey( const std::string &text )
    {
        return g_strdup( text.c_str() );
    }
    static void freeKey( KEY key )
    {
        g_free( key );
    }
    ~GLIB_TREE()
    {
        g_tree_destroy( tree );
    }
    void set( KEY key, ZU_OBJ *value )
    {
        g_tree_insert( tree, g_strdup( key ), value );
    }
    void del( KEY key )
    {
        g_tree_remove( tree, key );
    }
    bool get( KEY key )
    {
        return g_tree_lookup( tree, key );
    }
    size_t walk()
    {
        size_t count = 0;
        g_tree_foreach( tree, countValue, &count );
        return count;
    }

private:
    static int compare( const void *a, const void *b, void * )
    {
        return strcmp( (const char *)a, (const char *)b );
    }
    static gboolean countValue( void *, void *value, void *count )
    {
        *(size_t *)count += value != nullptr;
        return FALSE;
    }
    GTree *tree = g_tree_new_full( compare, nullptr, g_free, nullptr );
};
#endif
#ifdef ZU_BENCHMARK_QT
class QT_MAP {
public:
    using KEY = QString;
    static KEY makeKey( const std::string &text )
    {
        return QString::fromStdString( text );
    }
    static void freeKey( const KEY & )
    {
    }
    void set( const KEY &key, ZU_OBJ *value )
    {
        map.insert( key, value );
    }
    void del( const KEY &key )
    {
        map.remove( key );
    }
    bool get( const KEY &key )
    {
        auto at = std::as_const( map ).find( key );
        return at != map.cend() && at.value();
    }
    size_t walk()
    {
        size_t count = 0;
        for ( ZU_OBJ *value : std::as_const( map ) ) {
            count += value != nullptr;
        }
        return count;
    }

private:
    QMap<KEY, ZU_OBJ *> map;
};
#endif

// Keys of all texts, and one value for all.
template <typename MAP>
struct KEYS {
    std::vector<typename MAP::KEY> all;
    ZU_OBJ *value = zuBoxedIntObj( zuBoxedIntCreate( 1 ) );

    explicit KEYS( const std::vector<std::string> &texts )
    {
        for ( const std::string &text : texts ) {
            all.push_back( MAP::makeKey( text ) );
        }
    }
    ~KEYS()
    {
        for ( auto &key : all ) {
            MAP::freeKey( key );
        }
        zuObjRelease( value );
    }
};

template <typename MAP>
static void lookUp( benchmark::State &state, size_t count, size_t first )
{
    KEYS<MAP> keys( texts( count ) );
    KEYS<MAP> asked( texts( count ) ); // equal to the keys, and others
    MAP map;
    for ( size_t i : ascending( texts( count ) ) ) {
        map.set( keys.all[ i ], keys.value );
    }
    // An order that the processor cannot learn: of 4,096 lookups, over and over, it knows each branch after a while.
    std::vector<size_t> places = shuffled( count, first, 1 << 18 );
    size_t round = 0;
    for ( auto _ : state ) {
        benchmark::DoNotOptimize( map.get( asked.all[ places[ round ] ] ) );
        round = round + 1 == places.size() ? 0 : round + 1;
    }
}
template <typename MAP>
static void hit( benchmark::State &state, size_t count )
{
    lookUp<MAP>( state, count, 0 );
}
template <typename MAP>
static void miss( benchmark::State &state, size_t count )
{
    lookUp<MAP>( state, count, 1 );
}
template <typename MAP>
static void insertAscending( benchmark::State &state, size_t count )
{
    KEYS<MAP> keys( texts( count ) );
    std::vector<size_t> places = ascending( texts( count ) );
    for ( auto _ : state ) {
        MAP map;
        for ( size_t i : places ) {
            map.set( keys.all[ i ], keys.value );
        }
        benchmark::ClobberMemory();
    }
}
// The places of all keys in any order
static std::vector<size_t> mixed( size_t keys )
{
    std::vector<size_t> places( keys );
    for ( size_t i = 0; i < keys; i++ ) {
        places[ i ] = 2 * i;
    }
    std::shuffle( places.begin(), places.end(), std::mt19937( 1 ) );
    return places;
}
template <typename MAP>
static void insertMixed( benchmark::State &state, size_t count )
{
    KEYS<MAP> keys( texts( count ) );
    std::vector<size_t> places = mixed( count );
    for ( auto _ : state ) {
        MAP map;
        for ( size_t i : places ) {
            map.set( keys.all[ i ], keys.value );
        }
        benchmark::ClobberMemory();
    }
}
// One key goes and comes back at a time, among all the others.
template <typename MAP>
static void exchange( benchmark::State &state, size_t count )
{
    KEYS<MAP> keys( texts( count ) );
    MAP map;
    for ( size_t i : mixed( count ) ) {
        map.set( keys.all[ i ], keys.value );
    }
    std::vector<size_t> places = shuffled( count, 0, 1 << 18 );
    size_t round = 0;
    for ( auto _ : state ) {
        const auto &key = keys.all[ places[ round ] ];
        map.del( key );
        map.set( key, keys.value );
        round = round + 1 == places.size() ? 0 : round + 1;
    }
}
template <typename MAP>
static void walk( benchmark::State &state, size_t count )
{
    KEYS<MAP> keys( texts( count ) );
    MAP map;
    for ( size_t i : mixed( count ) ) {
        map.set( keys.all[ i ], keys.value );
    }
    for ( auto _ : state ) {
        benchmark::DoNotOptimize( map.walk() );
    }
}
// Loading of shuffled keys at once
static void zuLoad( benchmark::State &state, size_t count )
{
    KEYS<ZU_MAP> keys( texts( count ) );
    ZU_VECTOR *keysVector = zuVectorCreate();
    ZU_VECTOR *valuesVector = zuVectorCreate();
    for ( size_t i : shuffled( count, 0, count ) ) {
        zuVectorAppendString( &keysVector, keys.all[ i ] );
        zuVectorAppendObj( &valuesVector, keys.value );
    }
    for ( auto _ : state ) {
        ZU_DICT *dict = zuDictCreateWithKeysAndValues( keysVector, valuesVector );
        benchmark::DoNotOptimize( dict );
        zuDictRelease( dict );
    }
    zuVectorRelease( keysVector );
    zuVectorRelease( valuesVector );
}
static void stdLoad( benchmark::State &state, size_t count )
{
    KEYS<STD_MAP> keys( texts( count ) );
    std::vector<size_t> places = shuffled( count, 0, count );
    for ( auto _ : state ) {
        STD_MAP map;
        for ( size_t i : places ) {
            map.set( keys.all[ i ], keys.value );
        }
        benchmark::ClobberMemory();
    }
}

template <typename FUNC>
static void add( const std::string &topic, size_t count, const std::string &contestant, FUNC func )
{
    benchmark::RegisterBenchmark( ( "Dict/" + topic + " " + std::to_string( count ) + "/" + contestant ).c_str(), func,
                                  count );
}
template <typename MAP>
static void addMap( const std::string &contestant )
{
    for ( size_t count : { 8, 32, 1000, 100000 } ) {
        add( "hit", count, contestant, hit<MAP> );
        add( "miss", count, contestant, miss<MAP> );
        add( "insert ascending", count, contestant, insertAscending<MAP> );
        add( "insert mixed", count, contestant, insertMixed<MAP> );
        add( "delete and insert", count, contestant, exchange<MAP> );
        add( "walk", count, contestant, walk<MAP> );
    }
}
int main( int argc, char **argv )
{
    zuRuntimeStartup( 0, -1, nullptr, "zu-benchmark", "Benchmarks of zu", "1.0" );
    addMap<ZU_MAP>( "zu" );
    addMap<STD_MAP>( "std" );
#ifdef ZU_BENCHMARK_ABSL
    addMap<ABSL_BTREE>( "absl" );
#endif
#ifdef ZU_BENCHMARK_GLIB
    addMap<GLIB_TREE>( "glib" );
#endif
#ifdef ZU_BENCHMARK_QT
    addMap<QT_MAP>( "qt" );
#endif
    add( "load", 200000, "zu", zuLoad );
    add( "load", 200000, "std", stdLoad );
    benchmark::Initialize( &argc, argv );
    benchmark::RunSpecifiedBenchmarks();
    zuRuntimeShutdown();
}
