// Byte and character streams have one contract and differ in little, so that one suite runs on both, beside a model.

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
    static constexpr bool WRITE_UNITS_FAILS_FOR_GOOD = false; // zuByteSinkWriteBytes leaves the sink as it is
    static constexpr bool READS_NOTHING_BY_A_CALL = false;    // zuByteSourceReadBytes returns at once for 0
    static constexpr const char *NAME = "byte";
    static constexpr const char *MAXIMUM = "maxByteCount";
    FUNCTIONS( Byte, Bytes, Buffer );
    static constexpr auto createValue = zuBufferCreateFromBytesCopy;
    static constexpr bool SKIPS = true; // which byte sources alone can do
    static constexpr auto skip = zuByteSourceSkip;
    static constexpr auto createSource = zu___ByteSourceCreate;
};
struct CHAR_STREAMS {
    typedef ZU_CHAR UNIT;
    typedef ZU_STRING VALUE;
    static constexpr bool WRITE_UNITS_FAILS_FOR_GOOD = true;
    static constexpr bool READS_NOTHING_BY_A_CALL = true;
    static constexpr const char *NAME = "char";
    static constexpr const char *MAXIMUM = "maxCharCount";
    FUNCTIONS( Char, Chars, String );
    static constexpr auto createValue = zuStringCreateFromCharsCopy;
    static constexpr bool SKIPS = false;
    static ZU_CHAR_SOURCE *createSource( ZU_CHAR_SOURCE_READ_FUNC readFunc, std::nullptr_t, ZU_OBJ *closure )
    {
        return zu___CharSourceCreate( readFunc, closure );
    }
};

// A backend that notes its calls, and what a model of it expects.  Units tell where they stand.
template <typename STREAMS>
class Stream : public testing::Test {
public:
    typedef typename STREAMS::UNIT UNIT;
    typedef std::vector<UNIT> UNITS;
    static constexpr ZU_INT LENGTH = 3000; // of what is written
    struct CALLS {
        std::vector<UNITS> written;
        int flushes = 0;
        COUNTS asked;
        ZU_INT position = 0;
        int toFailure = -1; // how many more succeed; -1: all

        bool succeeds()
        {
            return toFailure-- != 0;
        }
    };
    static inline CALLS made;
    static inline ZU_INT available; // to be read
    CALLS wanted;
    bool end = false, error = false; // of the stream
    SeededRandom random;
    zu::Ref<ZU_STRING> closure = string( "closure" ); // an object that only has to be kept

    Stream()
    {
        made = {};
    }
    ~Stream() override
    {
        EXPECT_EQ( ZU_REF_RETAIN_COUNT( closure.get() ), 1u );
    }
    static UNITS units( ZU_INT from, ZU_INT to )
    {
        UNITS all;
        for ( ZU_INT i = from; i < to; i++ ) {
            all.push_back( (UNIT)( i % 251 ) );
        }
        return all;
    }
    static ZU_BOOL writeFunc( ZU_OBJ *, const UNIT *from, ZU_INT count )
    {
        made.written.push_back( UNITS( from, from + count ) );
        return made.succeeds();
    }
    static ZU_BOOL flushFunc( ZU_OBJ * )
    {
        made.flushes++;
        return made.succeeds();
    }
    static ZU_BOOL skipFunc( ZU_OBJ *, ZU_INT maxCount, ZU_INT *count )
    {
        EXPECT_EQ( *count, 0 );
        made.asked.push_back( maxCount );
        *count = std::min( maxCount, available - made.position );
        made.position += *count;
        return made.succeeds();
    }
    static ZU_BOOL readFunc( ZU_OBJ *kept, UNIT *to, ZU_INT maxCount, ZU_INT *count )
    {
        UNITS all = units( made.position, std::min( available, made.position + std::min( maxCount, available ) ) );
        std::copy( all.begin(), all.end(), to );
        return skipFunc( kept, maxCount, count );
    }

    // Begins a stream, or an operation on it, at which the backend may fail.
    void begin( bool anew )
    {
        if ( anew ) {
            made = wanted = {};
            end = error = false;
        }
        made.toFailure = wanted.toFailure = random.below( 6 ) ? -1 : (int)random.below( 3 );
    }
    // The model of one piece that is handed over, as one call or none.
    bool hand( ZU_INT from, ZU_INT to, bool failsForGood = true )
    {
        if ( error || from == to ) {
            return !error;
        }
        wanted.written.push_back( units( from, to ) );
        bool ok = wanted.succeeds();
        error = !ok && failsForGood;
        return ok;
    }
    // The model of one call that asks for so much; returns what is left of that.
    ZU_INT ask( ZU_INT count )
    {
        wanted.asked.push_back( count );
        ZU_INT got = std::min( count, available - wanted.position );
        wanted.position += got;
        bool ok = wanted.succeeds();
        end = end || !ok || got < count;
        error = error || !ok;
        return count - got;
    }
    void askInChunks( ZU_INT count )
    {
        while ( count > 0 && !end ) {
            ZU_INT chunk = std::min<ZU_INT>( count, 1024 );
            count -= chunk - ask( chunk );
        }
    }
};
typedef testing::Types<BYTE_STREAMS, CHAR_STREAMS> BOTH_STREAMS;
TYPED_TEST_SUITE( Stream, BOTH_STREAMS );

TYPED_TEST( Stream, WritesLikeItsModel )
{
    typedef TypeParam S;
    constexpr ZU_INT END = TestFixture::LENGTH;
    const auto all = this->units( 0, END );
    auto owner = zu::adopt( S::createValue( all.data(), END ) );
    auto *value = owner.get();
    for ( int round = 0; round < 500; round++ ) {
        this->begin( true );
        auto *sink = S::createSink( this->writeFunc, this->flushFunc, zuStringObj( this->closure.get() ) );
        for ( int step = 0; step < 12; step++ ) {
            this->begin( false );
            ZU_INT count = (ZU_INT)this->random.below( this->random.below( 2 ) ? 3 : END + 1 );
            ZU_INT offset = this->random.below( 3 ) ? (ZU_INT)this->random.below( (size_t)( END - count ) + 1 ) : 0;
            ZU_BOOL result;
            bool ok;
            switch ( this->random.below( 8 ) ) {
            case 0:
                result = S::write( sink, value );
                ok = this->hand( 0, END );
                break;
            case 1:
                result = S::writeInner( sink, value, offset, count );
                ok = this->hand( offset, offset + count );
                break;
            case 2:
                result = S::writeOuter( sink, value, offset, count );
                ok = this->hand( 0, offset ) && this->hand( offset + count, END );
                break;
            case 3:
                result = S::writeLeading( sink, value, count );
                ok = this->hand( 0, count );
                break;
            case 4:
                result = S::writeTrailing( sink, value, count );
                ok = this->hand( END - count, END );
                break;
            case 5:
                result = S::writeUnits( sink, all.data() + offset, count );
                ok = this->hand( offset, offset + count, S::WRITE_UNITS_FAILS_FOR_GOOD );
                break;
            case 6:
                result = S::writeInner( sink, nullptr, 0, 0 );
                ok = !this->error;
                break;
            default:
                result = S::flush( sink );
                this->wanted.flushes += !this->error;
                this->error = this->error || !this->wanted.succeeds();
                ok = !this->error;
            }
            ASSERT_EQ( result, ok );
            ASSERT_EQ( S::sinkError( sink ), this->error );
            ASSERT_EQ( this->made.written, this->wanted.written );
            ASSERT_EQ( this->made.flushes, this->wanted.flushes );
        }
        releaseAll( sink );
        ASSERT_EQ( this->made.flushes, this->wanted.flushes + !this->error ) << "its end";
    }
}
TYPED_TEST( Stream, ReadsLikeItsModel )
{
    typedef TypeParam S;
    static constexpr ZU_INT MOST[] = { 0, 1, 5, 1024, 2500, -1 };
    for ( int round = 0; round < 500; round++ ) {
        this->begin( true );
        const bool skips = round % 2 && S::SKIPS;
        ZU_OBJ *kept = zuStringObj( this->closure.get() );
        auto *source = S::createSource( this->readFunc, nullptr, kept );
        if constexpr ( S::SKIPS ) {
            if ( skips ) {
                releaseAll( std::exchange( source, S::createSource( this->readFunc, this->skipFunc, kept ) ) );
            }
        }
        this->available = (ZU_INT)this->random.below( 5000 );
        for ( int step = 0; step < 8; step++ ) {
            this->begin( false );
            this->available += this->random.below( 4 ) ? 0 : 700; // what is read may grow
            const ZU_INT most = MOST[ this->random.below( std::size( MOST ) ) ];
            const ZU_INT all = most < 0 ? ZU_INT_MAX : most;
            const ZU_INT before = this->wanted.position;
            typename TestFixture::UNITS units;
            ZU_INT count = 0;
            size_t kind = this->random.below( S::SKIPS ? 3 : 2 );
            if ( kind == 0 ) {
                auto dest = zu::adopt( S::createEmpty() );
                count = S::read( source, dest.inOut(), most );
                units.assign( S::valueBacking( dest.get() ),
                              S::valueBacking( dest.get() ) + S::valueLength( dest.get() ) );
                this->askInChunks( all );
            } else if ( kind == 1 ) {
                units.resize( (size_t)this->available + 3000 );
                count = S::readUnits( source, units.data(), most );
                units.resize( (size_t)count );
                if ( most != 0 || S::READS_NOTHING_BY_A_CALL ) {
                    this->ask( all );
                }
            } else if constexpr ( S::SKIPS ) {
                count = S::skip( source, most );
                skips &&all > 0 && !this->end ? (void)this->ask( all ) : this->askInChunks( all );
                units = this->units( before, before + count );
            }
            ASSERT_EQ( count, this->wanted.position - before );
            ASSERT_EQ( units, this->units( before, before + count ) );
            ASSERT_EQ( this->made.asked, this->wanted.asked );
            ASSERT_EQ( S::end( source ), this->end );
            ASSERT_EQ( S::sourceError( source ), this->error );
        }
        releaseAll( source );
    }
}
TYPED_TEST( Stream, Aborts )
{
    typedef TypeParam S;
    const std::string name = S::NAME;
    const std::string read = name + "sRead";
    typename S::UNIT unit = 0;
    auto dest = zu::adopt( S::createEmpty() );
    static ZU_INT lie;
    auto liar = []( ZU_INT count ) {
        lie = count;
        return S::createSource( []( ZU_OBJ *, auto *, ZU_INT, ZU_INT *n ) { return *n = lie, ZU_TRUE; }, nullptr,
                                nullptr );
    };
    expectAbort( ( read + " >= 0" ).c_str(), [ & ] { S::read( liar( -1 ), dest.inOut(), 1 ); } );
    expectAbort( ( read + " <= " + name + "sToRead" ).c_str(), [ & ] { S::read( liar( 6 ), dest.inOut(), 5 ); } );
    expectAbort( ( read + " <= " + S::MAXIMUM ).c_str(), [ & ] { S::readUnits( liar( 6 ), &unit, 1 ); } );
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
