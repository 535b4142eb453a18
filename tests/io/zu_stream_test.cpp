// Byte and character streams have one contract and differ in little, so that one suite runs on both.  Its backends
// count their calls, and fail and fall short when they are told to.

#include "zu_test_string.h"

typedef std::vector<ZU_INT> COUNTS;

// What differs between the two: names, and little else
#define FUNCTIONS( Unit, Units, Value )                                \
    static constexpr auto createSink = zu___##Unit##SinkCreate;        \
    static constexpr auto sinkError = zu##Unit##SinkError;             \
    static constexpr auto flush = zu##Unit##SinkFlush;                 \
    static constexpr auto write = zu##Unit##SinkWrite;                 \
    static constexpr auto writeInner = zu##Unit##SinkWriteInner;       \
    static constexpr auto writeOuter = zu##Unit##SinkWriteOuter;       \
    static constexpr auto writeLeading = zu##Unit##SinkWriteLeading;   \
    static constexpr auto writeTrailing = zu##Unit##SinkWriteTrailing; \
    static constexpr auto writeUnits = zu##Unit##SinkWrite##Units;     \
    static constexpr auto end = zu##Unit##SourceEnd;                   \
    static constexpr auto sourceError = zu##Unit##SourceError;         \
    static constexpr auto read = zu##Unit##SourceRead;                 \
    static constexpr auto readUnits = zu##Unit##SourceRead##Units;     \
    static constexpr auto valueLength = zu##Value##Length;             \
    static constexpr auto valueBacking = zu##Value##Backing;           \
    static constexpr auto createEmpty = zu##Value##Create
struct BYTE_STREAMS {
    typedef uint8_t UNIT;
    typedef ZU_BUFFER VALUE;
    typedef ZU_BYTE_SINK SINK;
    typedef ZU_BYTE_SOURCE SOURCE;
    static constexpr bool WRITE_UNITS_FAILS_FOR_GOOD = false; // zuByteSinkWriteBytes leaves the sink as it is
    static constexpr bool READS_NOTHING_BY_A_CALL = false;    // zuByteSourceReadBytes returns at once for 0
    static constexpr const char *NAME = "byte";
    static constexpr const char *MAXIMUM = "maxByteCount";
    FUNCTIONS( Byte, Bytes, Buffer );
    static constexpr auto createValue = zuBufferCreateFromBytesCopy;
    static SOURCE *createSource( ZU_BYTE_SOURCE_READ_FUNC readFunc, ZU_OBJ *closure )
    {
        return zu___ByteSourceCreate( readFunc, nullptr, closure );
    }
};
struct CHAR_STREAMS {
    typedef ZU_CHAR UNIT;
    typedef ZU_STRING VALUE;
    typedef ZU_CHAR_SINK SINK;
    typedef ZU_CHAR_SOURCE SOURCE;
    static constexpr bool WRITE_UNITS_FAILS_FOR_GOOD = true;
    static constexpr bool READS_NOTHING_BY_A_CALL = true;
    static constexpr const char *NAME = "char";
    static constexpr const char *MAXIMUM = "maxCharCount";
    FUNCTIONS( Char, Chars, String );
    static constexpr auto createValue = zuStringCreateFromCharsCopy;
    static constexpr auto createSource = zu___CharSourceCreate;
};

// A backend and a stream on it; the closure is an object that only has to be kept.
template <typename STREAMS>
class Stream : public testing::Test {
public:
    typedef typename STREAMS::UNIT UNIT;
    typedef std::vector<UNIT> UNITS;
    typedef typename STREAMS::VALUE VALUE;

    // What the writing backend has got, call by call, and the call from which on it fails
    static inline std::vector<UNITS> written;
    static inline size_t failingWrite;
    static inline int flushes;
    static inline ZU_BOOL flushResult;
    // What the reading backend has been asked for, what it has, and the calls that fail
    static inline COUNTS asked;
    static inline ZU_INT available;
    static inline size_t failingRead;

    ZU_STRING *closure = zuStringCreateFromAscii( "closure", -1 );
    typename STREAMS::SINK *sink = STREAMS::createSink( writeFunc, flushFunc, zuStringObj( closure ) );
    typename STREAMS::SOURCE *source = STREAMS::createSource( readFunc, zuStringObj( closure ) );
    VALUE *value = makeValue( 3000 );
    VALUE *dest = STREAMS::createEmpty();

    Stream()
    {
        written.clear();
        failingWrite = SIZE_MAX;
        flushes = 0;
        flushResult = ZU_TRUE;
        asked.clear();
        available = 0;
        failingRead = SIZE_MAX;
    }
    ~Stream() override
    {
        if ( sink ) {
            releaseAll( sink );
        }
        releaseAll( source );
        EXPECT_EQ( ZU_REF_RETAIN_COUNT( closure ), 1u );
        releaseAll( closure, value, dest );
    }

    static UNIT unitAt( ZU_INT i )
    {
        return (UNIT)( i % 251 );
    }
    static VALUE *makeValue( ZU_INT length )
    {
        UNITS units( (size_t)length );
        for ( ZU_INT i = 0; i < length; i++ ) {
            units[ (size_t)i ] = unitAt( i );
        }
        return STREAMS::createValue( units.data(), length );
    }
    UNITS part( ZU_INT begin, ZU_INT end ) const
    {
        return UNITS( STREAMS::valueBacking( value ) + begin, STREAMS::valueBacking( value ) + end );
    }
    // Expects `calls` to be all that has been written since the last time.
    void expectWritten( const std::vector<UNITS> &calls )
    {
        EXPECT_EQ( written, calls );
        written.clear();
    }
    // Expects that `dest` has the first units of what the backend has, and the calls that it took.
    void expectRead( ZU_INT length, const COUNTS &calls )
    {
        EXPECT_EQ( STREAMS::valueLength( dest ), length );
        const UNIT *units = STREAMS::valueBacking( dest );
        for ( ZU_INT i = 0; i < length; i++ ) {
            ASSERT_EQ( units[ i ], unitAt( i ) ) << i;
        }
        EXPECT_EQ( asked, calls );
    }

    static ZU_BOOL writeFunc( ZU_OBJ *, const UNIT *units, ZU_INT count )
    {
        written.push_back( UNITS( units, units + count ) );
        return written.size() <= failingWrite;
    }
    static ZU_BOOL flushFunc( ZU_OBJ * )
    {
        flushes++;
        return flushResult;
    }
    static ZU_BOOL readFunc( ZU_OBJ *, UNIT *units, ZU_INT maxCount, ZU_INT *count )
    {
        EXPECT_EQ( *count, 0 );
        static ZU_INT position;
        position = asked.empty() ? 0 : position;
        asked.push_back( maxCount );
        for ( ; *count < maxCount && position < available; position++ ) {
            units[ ( *count )++ ] = unitAt( position );
        }
        return asked.size() <= failingRead;
    }
};
typedef testing::Types<BYTE_STREAMS, CHAR_STREAMS> BOTH_STREAMS;
TYPED_TEST_SUITE( Stream, BOTH_STREAMS );

TYPED_TEST( Stream, WritersHandOverTheMemoryInAsFewCalls )
{
    typedef TypeParam S;
    auto *to = this->sink;
    auto *all = this->value;
    auto expect = [ this ]( ZU_BOOL result, std::initializer_list<std::pair<ZU_INT, ZU_INT>> parts ) {
        EXPECT_EQ( result, ZU_TRUE );
        std::vector<typename TestFixture::UNITS> calls;
        for ( auto [ begin, end ] : parts ) {
            calls.push_back( this->part( begin, end ) );
        }
        this->expectWritten( calls );
    };
    expect( S::write( to, all ), { { 0, 3000 } } );
    expect( S::writeInner( to, all, 5, 2 ), { { 5, 7 } } );
    expect( S::writeLeading( to, all, 2 ), { { 0, 2 } } );
    expect( S::writeTrailing( to, all, 2 ), { { 2998, 3000 } } );
    expect( S::writeOuter( to, all, 1, 2998 ), { { 0, 1 }, { 2999, 3000 } } );
    expect( S::writeOuter( to, all, 0, 2999 ), { { 2999, 3000 } } );
    expect( S::writeOuter( to, all, 1, 2999 ), { { 0, 1 } } );
    expect( S::writeUnits( to, this->part( 0, 9 ).data(), 9 ), { { 0, 9 } } );
    EXPECT_EQ( this->flushes, 0 );
}

TYPED_TEST( Stream, AFailedSinkRefusesEverything )
{
    const typename TestFixture::UNIT unit = 0;
    auto outer = [ this ]() { return TypeParam::writeOuter( this->sink, this->value, 10, 20 ); };
    auto units = [ & ]() { return TypeParam::writeUnits( this->sink, &unit, 1 ); };
    auto nothing = [ this ]() { return TypeParam::writeUnits( this->sink, nullptr, 0 ); };
    for ( size_t failing : { 0, 1 } ) {
        releaseAll( std::exchange( this->sink, TypeParam::createSink( this->writeFunc, this->flushFunc, nullptr ) ) );
        this->flushes = 0;
        this->written.clear();
        this->failingWrite = failing;
        EXPECT_FALSE( outer() );
        EXPECT_EQ( this->written.size(), failing + 1 ) << "no second piece behind a first that fails";
        EXPECT_TRUE( TypeParam::sinkError( this->sink ) );
        this->written.clear();
        EXPECT_FALSE( TypeParam::write( this->sink, this->value ) || outer() || units() || nothing() );
        EXPECT_FALSE( TypeParam::writeInner( this->sink, nullptr, 0, 0 ) || TypeParam::flush( this->sink ) );
        this->expectWritten( {} );
    }
    releaseAll( std::exchange( this->sink, TypeParam::createSink( this->writeFunc, this->flushFunc, nullptr ) ) );
    EXPECT_EQ( this->flushes, 0 ) << "a failed sink is not flushed at its end";
    this->failingWrite = 0;
    EXPECT_EQ( units(), ZU_FALSE );
    EXPECT_EQ( TypeParam::sinkError( this->sink ), TypeParam::WRITE_UNITS_FAILS_FOR_GOOD );
    EXPECT_EQ( nothing(), !TypeParam::WRITE_UNITS_FAILS_FOR_GOOD );
}

TYPED_TEST( Stream, FlushesOnDemandAndAtTheEnd )
{
    EXPECT_EQ( TypeParam::flush( this->sink ), ZU_TRUE );
    EXPECT_EQ( this->flushes, 1 );
    releaseAll( this->sink );
    EXPECT_EQ( this->flushes, 2 );
    this->sink = TypeParam::createSink( this->writeFunc, this->flushFunc, nullptr );
    this->flushResult = ZU_FALSE;
    EXPECT_EQ( TypeParam::flush( this->sink ), ZU_FALSE );
    EXPECT_TRUE( TypeParam::sinkError( this->sink ) );
    EXPECT_FALSE( TypeParam::write( this->sink, this->value ) );
    this->expectWritten( {} );
}

TYPED_TEST( Stream, ReadsInChunks )
{
    // What there is, what is asked for and comes, by which calls, and whether that is the end
    const std::tuple<ZU_INT, ZU_INT, ZU_INT, COUNTS, bool> rows[] = {
        { 3000, 2500, 2500, { 1024, 1024, 452 }, false },
        { 2500, 2500, 2500, { 1024, 1024, 452 }, false },
        { 2400, 2500, 2400, { 1024, 1024, 452 }, true },
        { 1024, -1, 1024, { 1024, 1024 }, true },
        { 5, 5, 5, { 5 }, false },
        { 0, 1, 0, { 1 }, true },
        { 10, 0, 0, {}, false },
    };
    for ( const auto &[ there, maxCount, length, calls, end ] : rows ) {
        SCOPED_TRACE( std::to_string( there ) + ", " + std::to_string( maxCount ) );
        auto fresh = TypeParam::createSource( this->readFunc, nullptr );
        releaseAll( this->dest );
        this->dest = TypeParam::createEmpty();
        this->asked.clear();
        this->available = there;
        EXPECT_EQ( TypeParam::read( fresh, &this->dest, maxCount ), length );
        this->expectRead( length, calls );
        EXPECT_EQ( TypeParam::end( fresh ), end );
        EXPECT_FALSE( TypeParam::sourceError( fresh ) );
        if ( end ) {
            this->available = 9000;
            EXPECT_EQ( TypeParam::read( fresh, &this->dest, -1 ), 0 );
            this->expectRead( length, calls );
        }
        releaseAll( fresh );
    }
}

TYPED_TEST( Stream, ReadsUnitsByOneCallEvenAfterTheEnd )
{
    typename TestFixture::UNITS units( 5000 );
    auto readUnits = [ & ]( ZU_INT maxCount ) { return TypeParam::readUnits( this->source, units.data(), maxCount ); };
    this->available = 3000;
    EXPECT_EQ( readUnits( 3000 ), 3000 );
    EXPECT_FALSE( TypeParam::end( this->source ) );
    EXPECT_EQ( TypeParam::readUnits( this->source, nullptr, 0 ), 0 );
    EXPECT_FALSE( TypeParam::end( this->source ) );
    EXPECT_EQ( readUnits( 1 ), 0 );
    EXPECT_TRUE( TypeParam::end( this->source ) );
    this->available = 3010;
    EXPECT_EQ( readUnits( 5000 ), 10 ) << "the input has grown";
    EXPECT_EQ( units[ 9 ], this->unitAt( 3009 ) );
    EXPECT_TRUE( TypeParam::end( this->source ) );
    EXPECT_EQ( this->asked,
               TypeParam::READS_NOTHING_BY_A_CALL ? COUNTS( { 3000, 0, 1, 5000 } ) : COUNTS( { 3000, 1, 5000 } ) );
}

TYPED_TEST( Stream, AFailingReadKeepsWhatItBrought )
{
    this->available = 3000;
    this->failingRead = 1;
    EXPECT_EQ( TypeParam::read( this->source, &this->dest, -1 ), 2048 );
    this->expectRead( 2048, { 1024, 1024 } );
    EXPECT_TRUE( TypeParam::end( this->source ) );
    EXPECT_TRUE( TypeParam::sourceError( this->source ) );
    EXPECT_EQ( TypeParam::read( this->source, &this->dest, -1 ), 0 );
    typename TestFixture::UNIT unit;
    this->failingRead = SIZE_MAX;
    EXPECT_EQ( TypeParam::readUnits( this->source, &unit, 1 ), 1 );
    EXPECT_TRUE( TypeParam::sourceError( this->source ) ) << "no success undoes a failure";
}

TYPED_TEST( Stream, Aborts )
{
    typedef TypeParam S;
    const std::string name = S::NAME;
    const std::string read = name + "sRead";
    typename S::UNIT unit = 0;
    static ZU_INT lie;
    auto liar = []( ZU_INT count ) {
        lie = count;
        return S::createSource( []( ZU_OBJ *, auto *, ZU_INT, ZU_INT *n ) { return *n = lie, ZU_TRUE; }, nullptr );
    };
    expectAbort( ( read + " >= 0" ).c_str(), [ & ] { S::read( liar( -1 ), &this->dest, 1 ); } );
    expectAbort( ( read + " <= " + name + "sToRead" ).c_str(), [ & ] { S::read( liar( 6 ), &this->dest, 5 ); } );
    expectAbort( ( read + " <= " + S::MAXIMUM ).c_str(), [ & ] { S::readUnits( liar( 6 ), &unit, 1 ); } );
}

// Skipping, which byte sources alone can do
TEST( ByteSource, SkipsByReadingIfItHasTo )
{
    typedef Stream<BYTE_STREAMS> BACKEND;
    zu::Ref<ZU_BYTE_SOURCE> source = zu::adopt( zu___ByteSourceCreate( BACKEND::readFunc, nullptr, nullptr ) );
    BACKEND::asked.clear();
    BACKEND::available = 3000;
    BACKEND::failingRead = SIZE_MAX;
    EXPECT_EQ( zuByteSourceSkip( source.get(), 0 ), 0 );
    EXPECT_EQ( zuByteSourceSkip( source.get(), 1500 ), 1500 );
    EXPECT_FALSE( zuByteSourceEnd( source.get() ) );
    uint8_t byte = 0;
    EXPECT_EQ( zuByteSourceReadBytes( source.get(), &byte, 1 ), 1 );
    EXPECT_EQ( byte, BACKEND::unitAt( 1500 ) );
    EXPECT_EQ( zuByteSourceSkip( source.get(), -1 ), 1499 );
    EXPECT_TRUE( zuByteSourceEnd( source.get() ) );
    EXPECT_EQ( zuByteSourceSkip( source.get(), -1 ), 0 );
    EXPECT_EQ( BACKEND::asked, COUNTS( { 1024, 476, 1, 1024, 1024 } ) );
}
TEST( ByteSource, SkipsByItsFunction )
{
    static COUNTS asked;
    static ZU_BOOL ok;
    ok = ZU_TRUE;
    ZU_BYTE_SOURCE *source = zu___ByteSourceCreate(
        Stream<BYTE_STREAMS>::readFunc,
        []( ZU_OBJ *, ZU_INT maxCount, ZU_INT *count ) {
            asked.push_back( maxCount );
            *count = maxCount == ZU_INT_MAX ? 7 : maxCount;
            return ok;
        },
        nullptr );
    EXPECT_EQ( zuByteSourceSkip( source, 5000 ), 5000 );
    EXPECT_FALSE( zuByteSourceEnd( source ) );
    ok = ZU_FALSE;
    EXPECT_EQ( zuByteSourceSkip( source, 3 ), 3 );
    EXPECT_TRUE( zuByteSourceEnd( source ) && zuByteSourceError( source ) );
    EXPECT_EQ( zuByteSourceSkip( source, -1 ), 0 );
    EXPECT_EQ( asked, COUNTS( { 5000, 3 } ) );
    zuByteSourceRelease( source );
}

// The backends in memory
TEST( BufferByteStreams, CollectAndDeliver )
{
    ZU_BUFFER_BYTE_SINK *collector = zuBufferByteSinkCreate();
    ZU_BYTE_SINK *first = zuBufferByteSinkByteSink( collector );
    ZU_BYTE_SINK *second = zuBufferByteSinkByteSink( collector );
    EXPECT_TRUE( zuByteSinkWriteBytes( first, (const uint8_t *)"ab", 2 ) );
    ZU_BUFFER *thirteen = zuBufferCreateFromBits( 0x1234, 13 );
    EXPECT_TRUE( zuByteSinkWrite( second, thirteen ) ) << "one byte of thirteen bits";
    EXPECT_TRUE( zuByteSinkFlush( first ) );
    ZU_BUFFER *collected = zuBufferByteSinkBuffer( collector );
    ZU_BUFFER *nothing = zuBufferByteSinkBuffer( collector );
    EXPECT_EQ( zuBufferReadBits( collected, 0, 24 ), 0x616291 );
    EXPECT_EQ( zuBufferBitLength( collected ), 24 );
    EXPECT_EQ( zuBufferBitLength( nothing ), 0 );

    ZU_BUFFER_BYTE_SOURCE *delivery = zuBufferByteSourceCreate( collected );
    ZU_BYTE_SOURCE *source = zuBufferByteSourceByteSource( delivery );
    ZU_BYTE_SOURCE *other = zuBufferByteSourceByteSource( delivery );
    uint8_t bytes[ 2 ];
    EXPECT_EQ( zuByteSourceReadBytes( source, bytes, 1 ), 1 );
    EXPECT_EQ( bytes[ 0 ], 0x61 );
    EXPECT_EQ( zuByteSourceSkip( other, 1 ), 1 ) << "both share one position";
    EXPECT_EQ( zuByteSourceReadBytes( source, bytes, 1 ), 1 );
    EXPECT_EQ( bytes[ 0 ], 0x91 );
    EXPECT_FALSE( zuByteSourceEnd( source ) );
    EXPECT_EQ( zuByteSourceSkip( source, 1 ), 0 );
    EXPECT_TRUE( zuByteSourceEnd( source ) && !zuByteSourceEnd( other ) && !zuByteSourceError( source ) );
    ZU_BUFFER *whole = zuBufferByteSourceBuffer( delivery );
    EXPECT_EQ( whole, collected );

    ZU_BUFFER_BYTE_SOURCE *partial = zuBufferByteSourceCreate( thirteen );
    ZU_BYTE_SOURCE *one = zuBufferByteSourceByteSource( partial );
    EXPECT_EQ( zuByteSourceReadBytes( one, bytes, 2 ), 1 );
    releaseAll( one, partial, whole, other, source, delivery, nothing, collected, thirteen, second, first, collector );
}
