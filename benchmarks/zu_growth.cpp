// Growth: what a series of doubling sizes takes, from 10,000 to 640,000, in each container, stream and kind of text; run
// by hand.  Prints the nanoseconds an element takes at either end, and the exponent by which the time of the whole grows.
// An exponent of 1 is linear; n log n is 1.09 over this range, and memory that is in no cache any more adds up to 0.4, as
// the plain copy of a dict shows.
//
//     zu_growth             all
//     zu_growth Dict Store  those whose name begins with one of these
//
// What is far above is an array in which each step moves all behind it, by its nature: insertion into the middle of a
// text or a vector.  In a dict, and what is made of dicts, the root of the length counts, and at these sizes no more than
// the search does.

#include "zu/zu.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <numeric>
#include <random>
#include <string>
#include <vector>

static constexpr ZU_INT FIRST = 10000;
static constexpr ZU_INT LAST = 640000;
static constexpr double SECONDS_MAX = 4; // of one size: what takes longer than that ends its series
static constexpr double SUSPECT = 1.6;

static std::clock_t begin; // processor time: others may use the machine
// Called by a case when its preparations are over.
static void start()
{
    begin = std::clock();
}

static std::vector<ZU_INT> shuffled( ZU_INT count )
{
    std::vector<ZU_INT> numbers( (size_t)count );
    std::iota( numbers.begin(), numbers.end(), 0 );
    std::shuffle( numbers.begin(), numbers.end(), std::mt19937( 1 ) );
    return numbers;
}
// Strings of numbers of one length, in any order
static std::vector<zu::Ref<ZU_STRING>> texts( ZU_INT count )
{
    std::vector<zu::Ref<ZU_STRING>> all;
    for ( ZU_INT number : shuffled( count ) ) {
        std::string chars = "key" + std::to_string( 1000000 + number );
        all.push_back( zu::adopt( zuStringCreateFromCstr( chars.c_str(), -1 ) ) );
    }
    return all;
}
static zu::Ref<ZU_OBJ> boxed( ZU_INT value )
{
    return zu::adopt( zuBoxedIntObj( zuBoxedIntCreate( value ) ) );
}
// A text of `count` times `unit`
static zu::Ref<ZU_STRING> repeated( const char *unit, ZU_INT count )
{
    zu::Ref<ZU_STRING> zus = zu::adopt( zuStringCreate() );
    for ( ZU_INT i = 0; i < count; i++ ) {
        zuStringAppendCstr( zus.inOut(), unit, -1 );
    }
    return zus;
}
static zu::Ref<ZU_DICT> dictOf( ZU_INT count )
{
    auto dict = zu::adopt( zuDictCreate() );
    for ( const auto &key : texts( count ) ) {
        zuDictSetStringKey( dict.inOut(), key.get(), zuStringObj( key.get() ) );
    }
    return dict;
}
static zu::Ref<ZU_STORE> storeOf( ZU_INT count )
{
    auto store = zu::adopt( zuStoreCreate() );
    for ( const auto &key : texts( count ) ) {
        zuStoreSetValue( store.inOut(), key.get(), key.get() );
    }
    return store;
}

static void dictInsert( ZU_INT count )
{
    auto keys = texts( count );
    start();
    auto dict = zu::adopt( zuDictCreate() );
    for ( const auto &key : keys ) {
        zuDictSetStringKey( dict.inOut(), key.get(), zuStringObj( key.get() ) );
    }
}
static void dictDelete( ZU_INT count )
{
    auto keys = texts( count );
    auto dict = dictOf( count );
    start();
    for ( const auto &key : keys ) {
        zuDictDelStringKey( dict.inOut(), key.get() );
    }
}
static void dictDeleteFront( ZU_INT count )
{
    auto dict = dictOf( count );
    start();
    for ( ZU_INT i = 0; i < count; i++ ) {
        zuDictDelAt( dict.inOut(), 0 );
    }
}
static void dictPrepend( ZU_INT count )
{
    start();
    auto dict = zu::adopt( zuDictCreate() );
    for ( ZU_INT i = count; i > 0; i-- ) {
        zuDictSetIntKey( dict.inOut(), i, boxed( i ).get() );
    }
}
static void dictCopy( ZU_INT count )
{
    auto dict = dictOf( count );
    start();
    auto copy = zu::adopt( zuDictCreateFrom( dict.get() ) );
}
static void dictInclude( ZU_INT count )
{
    auto dict = dictOf( count / 2 );
    auto other = dictOf( count );
    start();
    zuDictInclude( dict.inOut(), other.get(), ZU_TRUE );
}
static void priorityMapSet( ZU_INT count )
{
    auto map = zu::adopt( zuPriorityMapCreate() );
    std::vector<zu::Ref<ZU_OBJ>> objs;
    for ( ZU_INT i = 0; i < count; i++ ) {
        objs.push_back( boxed( i ) );
    }
    std::mt19937 random( 1 );
    start();
    for ( int round = 0; round < 2; round++ ) { // comes, then moves
        for ( ZU_INT at : shuffled( count ) ) {
            zuPriorityMapSet( map.inOut(), (ZU_INT)random(), objs[ (size_t)at ].get() );
        }
    }
    while ( zuPriorityMapLength( map.get() ) > 0 ) {
        zuPriorityMapDelAt( map.inOut(), 0 );
    }
}
static void storeSet( ZU_INT count )
{
    auto keys = texts( count );
    start();
    auto store = zu::adopt( zuStoreCreate() );
    for ( const auto &key : keys ) {
        zuStoreSetValue( store.inOut(), key.get(), key.get() );
    }
}
static void storeText( ZU_INT count )
{
    auto store = storeOf( count );
    start();
    auto lines = zu::adopt( zuStoreTextEncodeToStringVector( store.get() ) );
    auto read = zu::adopt( zuStoreTextDecodeFromStringVector( lines.get() ) );
}
static void storeBinary( ZU_INT count )
{
    auto store = storeOf( count );
    start();
    auto bytes = zu::adopt( zuStoreBinaryEncodeToBuffer( store.get() ) );
    auto read = zu::adopt( zuStoreBinaryTryDecodeFromBuffer( bytes.get() ) );
}
static void storeMerge( ZU_INT count )
{
    auto store = storeOf( count / 2 );
    auto other = storeOf( count );
    start();
    zuStoreMerge( store.inOut(), other.get() );
}
static void vectorAppend( ZU_INT count )
{
    auto obj = boxed( 1 );
    start();
    auto vec = zu::adopt( zuVectorCreate() );
    for ( ZU_INT i = 0; i < count; i++ ) {
        i % 2 == 0 ? zuVectorAppendObj( vec.inOut(), obj.get() ) : zuVectorPrependObj( vec.inOut(), obj.get() );
    }
}
static void vectorQueue( ZU_INT count )
{
    auto obj = boxed( 1 );
    auto vec = zu::adopt( zuVectorCreate() );
    for ( ZU_INT i = 0; i < count; i++ ) {
        zuVectorAppendObj( vec.inOut(), obj.get() );
    }
    start();
    for ( ZU_INT i = 0; i < count; i++ ) {
        zuVectorDelAt( vec.inOut(), 0 );
        zuVectorAppendObj( vec.inOut(), obj.get() );
    }
}
static void vectorInsert( ZU_INT count )
{
    auto obj = boxed( 1 );
    start();
    auto vec = zu::adopt( zuVectorCreate() );
    for ( ZU_INT i = 0; i < count; i++ ) {
        zuVectorInsertObj( vec.inOut(), i / 2, obj.get() );
    }
}
static void stringAppend( ZU_INT count )
{
    start();
    auto zus = zu::adopt( zuStringCreate() );
    for ( ZU_INT i = 0; i < count; i++ ) {
        i % 2 == 0 ? zuStringAppendChar( zus.inOut(), 'a' ) : zuStringPrependChar( zus.inOut(), 'b' );
    }
}
static void stringConsume( ZU_INT count )
{
    auto zus = repeated( "a", count );
    start();
    for ( ZU_INT i = 0; i < count; i++ ) {
        zuStringDelLeading( zus.inOut(), 1 );
    }
}
static void stringInsert( ZU_INT count )
{
    start();
    auto zus = zu::adopt( zuStringCreate() );
    for ( ZU_INT i = 0; i < count; i++ ) {
        zuStringInsertChar( zus.inOut(), i / 2, 'a' );
    }
}
static void stringSplit( ZU_INT count )
{
    auto zus = repeated( "word ", count );
    start();
    auto words = zu::adopt( zuStringSplitChar( zus.get(), ' ', -1 ) );
}
// The text that a search is slowest in
static void stringFind( ZU_INT count )
{
    auto zus = repeated( "a", count );
    auto sub = repeated( "a", count / 2 );
    zuStringAppendChar( sub.inOut(), 'b' );
    start();
    zuStringFind( zus.get(), 0, sub.get() );
}
static void stringFindFromRight( ZU_INT count )
{
    auto zus = repeated( "a", count );
    auto sub = repeated( "a", count / 2 );
    zuStringPrependChar( sub.inOut(), 'b' );
    start();
    zuStringFindFromRight( zus.get(), count, sub.get() );
}
static void stringNormalize( ZU_INT count )
{
    auto zus = repeated( "e\xCC\x81\xCC\xA3", count );
    start();
    zuStringNormalizeNFC( zus.inOut() );
    zuStringNormalizeNFD( zus.inOut() );
}
// One starter and marks of two classes in turn behind it
static void stringNormalizeMarks( ZU_INT count )
{
    auto zus = repeated( "\xCC\x81\xCC\xA3", count );
    zuStringPrependChar( zus.inOut(), 'e' );
    start();
    zuStringNormalizeNFC( zus.inOut() );
    zuStringNormalizeNFD( zus.inOut() );
}
static void bufferAppend( ZU_INT count )
{
    start();
    auto buf = zu::adopt( zuBufferCreate() );
    for ( ZU_INT i = 0; i < count; i++ ) {
        i % 2 == 0 ? zuBufferAppendByte( buf.inOut(), 1 ) : zuBufferPrependByte( buf.inOut(), 2 );
    }
}
static void bufferBitAppend( ZU_INT count )
{
    start();
    auto buf = zu::adopt( zuBufferCreate() );
    for ( ZU_INT i = 0; i < count; i++ ) {
        zuBufferBitAppendBits( buf.inOut(), i & 7, 3 );
    }
}
static void bufferConsume( ZU_INT count )
{
    auto buf = zu::adopt( zuBufferCreate() );
    zuBufferAppendZero( buf.inOut(), count );
    start();
    for ( ZU_INT i = 0; i < count; i++ ) {
        zuBufferDelLeading( buf.inOut(), 1 );
    }
}
static void byteStream( ZU_INT count )
{
    start();
    auto bbs = zu::adopt( zuBufferByteSinkCreate() );
    auto sink = zu::adopt( zuBufferByteSinkByteSink( bbs.get() ) );
    const uint8_t byte = 1;
    for ( ZU_INT i = 0; i < count; i++ ) {
        zuByteSinkWriteBytes( sink.get(), &byte, 1 );
    }
    auto bytes = zu::adopt( zuBufferByteSinkBuffer( bbs.get() ) );
    auto from = zu::adopt( zuBufferByteSourceCreate( bytes.get() ) );
    auto source = zu::adopt( zuBufferByteSourceByteSource( from.get() ) );
    uint8_t read;
    while ( zuByteSourceReadBytes( source.get(), &read, 1 ) > 0 ) {}
}
static void charStream( ZU_INT count )
{
    start();
    auto scs = zu::adopt( zuStringCharSinkCreate() );
    auto sink = zu::adopt( zuStringCharSinkCharSink( scs.get() ) );
    for ( ZU_INT i = 0; i < count; i++ ) {
        zuCharSinkWriteChar( sink.get(), 'a' );
    }
    auto zus = zu::adopt( zuStringCharSinkString( scs.get() ) );
    auto from = zu::adopt( zuStringCharSourceCreate( zus.get() ) );
    auto source = zu::adopt( zuStringCharSourceCharSource( from.get() ) );
    ZU_CHAR read;
    while ( zuCharSourceReadChars( source.get(), &read, 1 ) > 0 ) {}
}
static void lines( const zu::Ref<ZU_STRING> &text )
{
    start();
    auto nls = zu::adopt( zuNlfLineSourceCreateFromString( text.get(), ZU_NLF_FLAG_LF ) );
    auto source = zu::adopt( zuNlfLineSourceLineSource( nls.get() ) );
    while ( ZU_STRING *line = zuLineSourceRead( source.get() ) ) {
        zuStringRelease( line );
    }
}
static void lineStream( ZU_INT count )
{
    lines( repeated( "a line\n", count ) );
}
static void lineStreamOneLine( ZU_INT count )
{
    lines( repeated( "a line ", count ) );
}
static void eventQueue( ZU_INT count )
{
    std::vector<zu::Ref<ZU_OBJ>> events; // one that is in a queue already does not come in again
    for ( ZU_INT i = 0; i < count; i++ ) {
        events.push_back( boxed( i ) );
    }
    auto eq = zu::adopt( zuEventQueueCreate() );
    start();
    for ( const auto &event : events ) {
        zuEventQueueWriteEvent( eq.get(), event.get() );
    }
    for ( ZU_INT i = 0; i < count; i++ ) {
        zuObjRelease( zuEventQueueReadEvent( eq.get() ) );
    }
}
static void listeners( ZU_INT count )
{
    auto alert = zu::adopt( zuAlertCreate() );
    auto told = zu::adopt( zuAlertCreate() );
    std::vector<zu::Ref<ZU_ALERTABLE>> all;
    for ( ZU_INT i = 0; i < count; i++ ) {
        all.push_back( zu::adopt( zuAlertableCreateAlert( told.get() ) ) );
    }
    std::vector<ZU_INT> order = shuffled( count );
    start();
    for ( ZU_INT at : order ) {
        zuAlertAddAlertable( alert.get(), all[ (size_t)at ].get() );
    }
    for ( ZU_INT at = 0; at < count / 2; at++ ) {
        zuAlertDelAlertable( alert.get(), all[ (size_t)at ].get() );
    }
    zuAlertSet( alert.get() );
}
static void timers( ZU_INT count )
{
    std::vector<zu::Ref<ZU_TIMER>> all;
    for ( ZU_INT i = 0; i < count; i++ ) {
        all.push_back( zu::adopt( zuTimerCreate( nullptr, nullptr ) ) );
    }
    std::mt19937 random( 1 );
    start();
    for ( int round = 0; round < 2; round++ ) {
        for ( const auto &timer : all ) {
            zuTimerSchedule( timer.get(), 1000000 + (ZU_INT)( random() % 1000000 ) );
        }
    }
    all.clear();
}

static const struct {
    const char *name;
    void ( *run )( ZU_INT count );
} CASES[] = {
    { "Dict insert in any order", dictInsert },
    { "Dict delete in any order", dictDelete },
    { "Dict delete the first", dictDeleteFront },
    { "Dict insert descending", dictPrepend },
    { "Dict copy", dictCopy },
    { "Dict include", dictInclude },
    { "PriorityMap set, move, delete the first", priorityMapSet },
    { "Store set in any order", storeSet },
    { "Store to text and back", storeText },
    { "Store to bytes and back", storeBinary },
    { "Store merge", storeMerge },
    { "Vector append and prepend", vectorAppend },
    { "Vector as a queue", vectorQueue },
    { "Vector insert in the middle", vectorInsert },
    { "String append and prepend", stringAppend },
    { "String delete the first", stringConsume },
    { "String insert in the middle", stringInsert },
    { "String split", stringSplit },
    { "String find a periodic text", stringFind },
    { "String find it from the right", stringFindFromRight },
    { "String normalize", stringNormalize },
    { "String normalize one run of marks", stringNormalizeMarks },
    { "Buffer append and prepend", bufferAppend },
    { "Buffer append bits", bufferBitAppend },
    { "Buffer delete the first", bufferConsume },
    { "Byte stream", byteStream },
    { "Character stream", charStream },
    { "Line stream", lineStream },
    { "Line stream of one line", lineStreamOneLine },
    { "Event queue", eventQueue },
    { "Alert: listeners come, go, fire", listeners },
    { "Timer schedule, move, drop", timers },
};

// The seconds that one size takes, the least of several runs if they and their preparations are short
static double measure( void ( *run )( ZU_INT count ), ZU_INT count )
{
    double best = 1e9;
    const std::clock_t first = std::clock();
    for ( int round = 0; round < 5 && std::clock() - first < CLOCKS_PER_SEC / 4; round++ ) {
        start();
        run( count );
        best = std::min( best, (double)( std::clock() - begin ) / CLOCKS_PER_SEC );
    }
    return best;
}
// The slope of the line through the points of the logarithms
static double exponent( const std::vector<double> &seconds )
{
    const double count = (double)seconds.size();
    double mean = 0;
    for ( double value : seconds ) {
        mean += std::log2( value ) / count;
    }
    double above = 0;
    double below = 0;
    for ( size_t i = 0; i < seconds.size(); i++ ) {
        const double x = (double)i - ( count - 1 ) / 2;
        above += x * ( std::log2( seconds[ i ] ) - mean );
        below += x * x;
    }
    return above / below;
}
static bool isWanted( const std::string &name, int argc, char **argv )
{
    return argc < 2 ||
           std::any_of( argv + 1, argv + argc, [ & ]( const char *begins ) { return name.find( begins ) == 0; } );
}
int main( int argc, char **argv )
{
    zuRuntimeStartup( 0, -1, nullptr, nullptr, nullptr, nullptr );
    printf( "%-42s %10s %10s %8s %s\n", "", "ns first", "ns last", "last", "exponent" );
    for ( const auto &row : CASES ) {
        if ( !isWanted( row.name, argc, argv ) ) {
            continue;
        }
        std::vector<double> seconds;
        ZU_INT count = FIRST;
        for ( ; count <= LAST && ( seconds.size() < 2 || seconds.back() < SECONDS_MAX / 2 ); count *= 2 ) {
            seconds.push_back( measure( row.run, count ) );
        }
        count /= 2;
        const double grows = exponent( seconds );
        printf( "%-42s %10.1f %10.1f %8lld %8.2f%s\n", row.name, seconds.front() * 1e9 / (double)FIRST,
                seconds.back() * 1e9 / (double)count, (long long)count, grows, grows > SUSPECT ? " <" : "" );
        fflush( stdout );
    }
    zuRuntimeShutdown();
}
