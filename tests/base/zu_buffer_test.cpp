#include "zu/base/zu_buffer_internal.h"
#include "zu/base/zu_string.h"
#include "zu/sys/zu_mem.h"
#include "zu_test_support.h"

#include <algorithm>
#include <random>
#include <vector>

typedef std::vector<bool> BITS;
typedef std::vector<uint8_t> BYTES;

static ZU_BUFFER *makeBuffer( const BYTES &bytes )
{
    return zuBufferCreateFromBytesCopy( bytes.data(), (ZU_INT)bytes.size() );
}
static std::string textOf( ZU_BUFFER *buf )
{
    ZU_STRING *zus = zuBufferToString( buf );
    std::string text( zuStringBacking( zus ), zuStringBacking( zus ) + zuStringLength( zus ) );
    zuStringRelease( zus );
    return text;
}
static std::string takeText( ZU_BUFFER *buf )
{
    std::string text = textOf( buf );
    zuBufferRelease( buf );
    return text;
}
static BITS numberBits( uint64_t value, size_t count )
{
    BITS bits( count );
    for ( size_t i = 0; i < count; i++ ) {
        bits[ i ] = value >> ( count - 1 - i ) & 1;
    }
    return bits;
}
static BITS bytesBits( const uint8_t *bytes, size_t byteCount )
{
    BITS bits( byteCount * 8 );
    for ( size_t i = 0; i < bits.size(); i++ ) {
        bits[ i ] = bytes[ i / 8 ] & 0x80 >> i % 8;
    }
    return bits;
}
static BITS bitsOf( ZU_BUFFER *buf )
{
    size_t bitLength = (size_t)zuBufferBitLength( buf );
    BITS bits = bytesBits( zuBufferBacking( buf ), ( bitLength + 7 ) / 8 );
    bits.resize( bitLength );
    return bits;
}

// Model test: several holders, some of which share an object or sit on foreign bytes, and a sequence of bits for each.
// Random operations of the whole grid are done to both, and all holders are compared after each.
class BufferModel {
public:
    explicit BufferModel( uint64_t seed ) : random( seed ), foreignOwner( zuStringCreate() )
    {
        for ( size_t i = 0; i < sizeof foreign; i++ ) {
            foreign[ i ] = (uint8_t)random();
        }
        foreignBefore.assign( foreign, foreign + sizeof foreign );
        for ( HOLDER &holder : holders ) {
            holder.buf = zuBufferCreate();
        }
    }
    ~BufferModel()
    {
        for ( HOLDER &holder : holders ) {
            zuBufferRelease( holder.buf );
        }
        zuStringRelease( foreignOwner );
        EXPECT_TRUE( std::equal( foreignBefore.begin(), foreignBefore.end(), foreign ) ) << "foreign bytes changed";
    }
    bool step()
    {
        HOLDER &holder = any();
        what = "";
        size_t kind = below( 100 );
        if ( kind < 3 ) {
            replace( holder );
        } else if ( kind < 15 ) {
            share( holder );
        } else if ( kind < 35 ) {
            remove( holder );
        } else if ( kind < 45 ) {
            read( holder );
        } else {
            change( holder );
        }
        return check();
    }
    std::string what; // the last step

private:
    struct HOLDER {
        ZU_BUFFER *buf;
        BITS bits;
    };
    std::mt19937_64 random;
    HOLDER holders[ 4 ];
    uint8_t foreign[ 700 ];
    BYTES foreignBefore;
    ZU_STRING *foreignOwner;

    size_t below( size_t limit )
    {
        return (size_t)( random() % limit );
    }
    HOLDER &any()
    {
        return holders[ below( 4 ) ];
    }
    // A number of units up to `most` bits, seldom a large one.
    size_t units( size_t most, bool bit )
    {
        size_t limit = most / ( bit ? 1 : 8 ) + 1;
        static const size_t SCALES[] = { 2, 10, 100, 100000 };
        size_t units = below( std::min( limit, SCALES[ below( 4 ) ] ) );
        // In units of bits whole bytes are met often enough only if they are sought.
        return bit && below( 3 ) == 0 ? units & ~(size_t)7 : units;
    }

    void replace( HOLDER &holder )
    {
        size_t offset = below( 200 );
        size_t length = below( 500 );
        zuBufferRelease( holder.buf );
        switch ( below( 3 ) ) {
        case 0: // forgets, so that lengths do not only grow
            what = "create";
            holder.buf = zuBufferCreate();
            length = 0;
            break;
        case 1:
            what = "use";
            holder.buf = length ? zuBufferCreateFromBytesUse( (uint8_t *)zuMemDup( foreign + offset, (ZU_INT)length ),
                                                              (ZU_INT)length )
                                : zuBufferCreateFromBytesUse( nullptr, 0 );
            break;
        default:
            what = "use with ref";
            holder.buf =
                zuBufferCreateFromBytesUseWithRef( foreign + offset, (ZU_INT)length, zuStringObj( foreignOwner ) );
        }
        holder.bits = bytesBits( foreign + offset, length );
    }
    void share( HOLDER &holder )
    {
        what = "share";
        HOLDER &other = any();
        ZU_BUFFER *old = holder.buf;
        holder.buf = below( 4 ) == 0 ? zuBufferCreateFrom( other.buf ) : zuBufferRetain( other.buf );
        holder.bits = BITS( other.bits );
        zuBufferRelease( old );
    }
    void remove( HOLDER &holder )
    {
        what = "del";
        bool bit = below( 2 );
        size_t unit = bit ? 1 : 8;
        size_t length = holder.bits.size();
        // What goes is small as a rule, and once in a while nearly all.
        size_t count = units( length, bit );
        size_t offset = units( length - count * unit, bit );
        ZU_INT o = (ZU_INT)offset;
        ZU_INT n = (ZU_INT)count;
        ZU_BUFFER **buf = &holder.buf;
        auto erase = [ & ]( size_t from, size_t bits ) {
            auto begin = holder.bits.begin() + (ptrdiff_t)from;
            holder.bits.erase( begin, begin + (ptrdiff_t)bits );
        };
        switch ( below( 5 ) ) {
        case 0:
            bit ? zuBufferBitDelInner( buf, o, n ) : zuBufferDelInner( buf, o, n );
            return erase( offset * unit, count * unit );
        case 1:
            bit ? zuBufferBitDelOuter( buf, o, n ) : zuBufferDelOuter( buf, o, n );
            holder.bits.resize( ( offset + count ) * unit );
            return erase( 0, offset * unit );
        case 2:
            bit ? zuBufferBitDelLeading( buf, n ) : zuBufferDelLeading( buf, n );
            return erase( 0, count * unit );
        case 3:
            bit ? zuBufferBitDelTrailing( buf, n ) : zuBufferDelTrailing( buf, n );
            return holder.bits.resize( length - count * unit );
        default:
            // Keeps lengths in bounds.
            if ( length > 6000 ) {
                zuBufferClear( buf );
                holder.bits.clear();
            }
        }
    }
    void read( HOLDER &holder )
    {
        what = "read";
        bool bit = below( 2 );
        size_t unit = bit ? 1 : 8;
        size_t idx = units( holder.bits.size(), bit );
        size_t left = holder.bits.size() - idx * unit;
        size_t count = units( left, bit );
        size_t bitCount = below( std::min( left, (size_t)64 ) + 1 );
        auto begin = holder.bits.begin() + (ptrdiff_t)( idx * unit );
        ZU_INT i = (ZU_INT)idx;
        ZU_BUFFER *range =
            bit ? zuBufferBitRead( holder.buf, i, (ZU_INT)count ) : zuBufferRead( holder.buf, i, (ZU_INT)count );
        EXPECT_EQ( bitsOf( range ), BITS( begin, begin + (ptrdiff_t)( count * unit ) ) );
        EXPECT_EQ( ZU_REF_RETAIN_COUNT( range ), 1u );
        zuBufferRelease( range );
        uint64_t number = (uint64_t)( bit ? zuBufferBitReadBits( holder.buf, i, (ZU_INT)bitCount )
                                          : zuBufferReadBits( holder.buf, i, (ZU_INT)bitCount ) );
        EXPECT_EQ( numberBits( number, bitCount ), BITS( begin, begin + (ptrdiff_t)bitCount ) );
        EXPECT_TRUE( bitCount == 64 || number >> bitCount == 0 );
        BYTES bytes( left / 8 + 1, 0xA5 );
        bit ? zuBufferBitReadBytes( holder.buf, i, bytes.data(), (ZU_INT)( left / 8 ) )
            : zuBufferReadBytes( holder.buf, i, bytes.data(), (ZU_INT)( left / 8 ) );
        EXPECT_EQ( bytesBits( bytes.data(), left / 8 ), BITS( begin, begin + (ptrdiff_t)( left / 8 * 8 ) ) );
        EXPECT_EQ( bytes.back(), 0xA5 );
        if ( left >= 8 ) {
            EXPECT_EQ( bit ? zuBufferBitReadByte( holder.buf, i ) : zuBufferReadByte( holder.buf, i ), bytes[ 0 ] );
        }
    }

    // Tells whether this is the one insertion that is not as it should be, which has a test of its own: out of what is
    // there, or, as the holder may have to be copied first, out of the room of new storage.
    static bool misplaces( ZU_BUFFER *buf, size_t at, size_t count )
    {
        return at > 0 && at < buf->bitLength && at % 8 == 0 && count % 8 == 0 &&
               ( ( count > buf->bitBspace && count <= buf->bitBspace + buf->bitFspace ) ||
                 ( count > ZU_BUFFER_BSPACE && count <= ZU_BUFFER_BSPACE + ZU_BUFFER_FSPACE + 7 ) );
    }

    // Picks a function of the grid, a place and an operand, and does to the bits what is told of it.
    void change( HOLDER &holder )
    {
        enum VERB { APPEND, PREPEND, INSERT, WRITE };
        const VERB verb = (VERB)below( 4 );
        const bool bit = below( 2 );
        const size_t unit = bit ? 1 : 8;
        HOLDER &source = any();
        ZU_BUFFER *src = source.buf;
        const size_t length = source.bits.size();
        const size_t count = units( length, bit );
        const size_t offset = units( length - count * unit, bit );
        const ZU_INT n = (ZU_INT)count;
        const ZU_INT o = (ZU_INT)offset;
        ZU_INT i = 0;
        auto range = [ & ]( size_t begin, size_t end ) {
            return BITS( source.bits.begin() + (ptrdiff_t)begin, source.bits.begin() + (ptrdiff_t)end );
        };
        auto doBoth = [ & ]( const char *operand, const BITS taken, const std::function<void()> &call ) {
            if ( verb == WRITE && taken.size() > holder.bits.size() ) {
                return;
            }
            size_t idx = units( verb == WRITE ? holder.bits.size() - taken.size() : holder.bits.size(), bit );
            size_t at = verb == APPEND ? holder.bits.size() : verb == PREPEND ? 0 : idx * unit;
            i = (ZU_INT)idx;
            static const char *const VERBS[] = { "Append", "Prepend", "Insert", "Write" };
            what = std::string( bit ? "Bit" : "" ) + VERBS[ verb ] + operand + " at " + std::to_string( at ) + " of " +
                   std::to_string( holder.bits.size() ) + ", " + std::to_string( taken.size() ) + " bits";
            if ( verb == INSERT && misplaces( holder.buf, at, taken.size() ) ) {
                return;
            }
            call();
            auto place = holder.bits.begin() + (ptrdiff_t)at;
            if ( verb == WRITE ) {
                std::copy( taken.begin(), taken.end(), place );
            } else {
                holder.bits.insert( place, taken.begin(), taken.end() );
            }
        };

#define GROW( verbName, op, ... )                                             \
    bit ? zuBufferBit##verbName##op( &holder.buf __VA_OPT__(, ) __VA_ARGS__ ) \
        : zuBuffer##verbName##op( &holder.buf __VA_OPT__(, ) __VA_ARGS__ )
#define GRID( op, ... )                                  \
    verb == APPEND    ? GROW( Append, op, __VA_ARGS__ )  \
    : verb == PREPEND ? GROW( Prepend, op, __VA_ARGS__ ) \
                      : verb == INSERT                   \
        ? GROW( Insert, op, i __VA_OPT__(, ) __VA_ARGS__ )
#define DO_BOTH( op, taken, ... ) \
    return doBoth( #op, taken, [ & ] { GRID( op, __VA_ARGS__ ) : GROW( Write, op, i __VA_OPT__(, ) __VA_ARGS__ ); } )
        size_t fill = units( 4000, bit );
        size_t bitCount = below( 65 );
        size_t byteCount = below( 500 );
        ZU_INT number = (ZU_INT)random();
        BITS outer = range( 0, offset * unit );
        outer.insert( outer.end(), source.bits.begin() + (ptrdiff_t)( ( offset + count ) * unit ), source.bits.end() );
        switch ( below( verb == WRITE ? 10 : 11 ) ) {
        case 0:
            DO_BOTH(, source.bits, src );
        case 1:
            DO_BOTH( Inner, range( offset * unit, ( offset + count ) * unit ), src, o, n );
        case 2:
            DO_BOTH( Outer, outer, src, o, n );
        case 3:
            DO_BOTH( Leading, range( 0, count * unit ), src, n );
        case 4:
            DO_BOTH( Trailing, range( length - count * unit, length ), src, n );
        case 5:
            DO_BOTH( Bits, numberBits( (uint64_t)number, bitCount ), number, (ZU_INT)bitCount );
        case 6:
            DO_BOTH( Byte, numberBits( (uint64_t)number, 8 ), (uint8_t)number );
        case 7:
            DO_BOTH( Bytes, bytesBits( foreign, byteCount ), foreign, (ZU_INT)byteCount );
        case 8:
            DO_BOTH( Zero, BITS( fill * unit, false ), (ZU_INT)fill );
        case 9:
            DO_BOTH( One, BITS( fill * unit, true ), (ZU_INT)fill );
        default:
            doBoth( "Alignment", BITS( ( 8 - holder.bits.size() % 8 ) % 8, false ),
                    [ & ] { GRID( Alignment ) : (void)0; } );
        }
#undef DO_BOTH
#undef GRID
#undef GROW
    }

    bool check()
    {
        for ( HOLDER &holder : holders ) {
            ZU_BUFFER *buf = holder.buf;
            EXPECT_EQ( bitsOf( buf ), holder.bits );
            EXPECT_EQ( buf->bitFspace % 8, 0u );
            if ( !buf->ref ) {
                EXPECT_EQ( buf->bitFspace + buf->bitLength + buf->bitBspace,
                           (uint64_t)zu___ObjDbgAllocationSize( zuBufferObj( buf ) ) * 8 );
            }
        }
        const HOLDER &a = any();
        const HOLDER &b = any();
        EXPECT_EQ( zuBufferCompare( a.buf, b.buf ), ( a.bits > b.bits ) - ( a.bits < b.bits ) );
        return !testing::Test::HasFailure();
    }
};

TEST( Buffer, DoesAsBitsInASequence )
{
    for ( uint64_t seed = 1; seed <= 40; seed++ ) {
        BufferModel model( seed );
        for ( int step = 0; step < 500; step++ ) {
            ASSERT_TRUE( model.step() ) << "seed " << seed << ", step " << step << ": " << model.what;
        }
    }
}

// Copies of every length around words, between every two positions in a byte; what stands around stays.
TEST( Buffer, CopiesBetweenAllPositions )
{
    BYTES pattern;
    for ( int i = 0; i < 40; i++ ) {
        pattern.push_back( (uint8_t)( i * 37 + 11 ) );
    }
    ZU_BUFFER *src = makeBuffer( pattern );
    BITS srcBits = bitsOf( src );
    ZU_BUFFER *dest = zuBufferCreate();
    zuBufferAppendOne( &dest, 40 );
    for ( ptrdiff_t to = 0; to < 8; to++ ) {
        for ( ptrdiff_t from = 0; from < 8; from++ ) {
            for ( ptrdiff_t count = 0; count <= 300; count++ ) {
                zuBufferWriteOne( &dest, 0, 40 );
                zuBufferBitWriteInner( &dest, to, src, from, count );
                BITS expected( 320, true );
                std::copy( srcBits.begin() + from, srcBits.begin() + from + count, expected.begin() + to );
                ASSERT_EQ( bitsOf( dest ), expected ) << count << " bits from " << from << " to " << to;
            }
        }
    }
    zuBufferRelease( dest );
    zuBufferRelease( src );
}

TEST( Buffer, Texts )
{
    EXPECT_EQ( takeText( zuBufferCreate() ), "[]" );
    EXPECT_EQ( takeText( zuBufferCreateFromByte( 0x0F ) ), "[0f]" );
    EXPECT_EQ( takeText( makeBuffer( { 0xAB, 0x00, 0xC0 } ) ), "[ab 00 c0]" );
    EXPECT_EQ( takeText( zuBufferCreateFromBits( 0x55E, 11 ) ), "[ab c0/3]" );
    EXPECT_EQ( takeText( zuBufferCreateFromBits( -3, 3 ) ), "[a0/3]" ) << "bits above the count are ignored";
    EXPECT_EQ( takeText( zuBufferCreateFromBits( 1, 1 ) ), "[80/1]" );
    EXPECT_EQ( takeText( zuBufferCreateFromBits( ZU_INT_MIN, 64 ) ), "[80 00 00 00 00 00 00 00]" );
    EXPECT_EQ( takeText( zuBufferCreateFromBits( 1, 0 ) ), "[]" );
}

TEST( Buffer, LengthsAndSpace )
{
    ZU_BUFFER *buf = zuBufferCreateFromBits( 0, 13 );
    EXPECT_EQ( zuBufferLength( buf ), 1 );
    EXPECT_EQ( zuBufferBitLength( buf ), 13 );
    EXPECT_EQ( zuBufferBitSpace( buf ), ZU_INT_MAX - 13 );
    EXPECT_EQ( zuBufferSpace( buf ), ( ZU_INT_MAX - 13 ) >> 3 );
    EXPECT_FALSE( zuBufferBitIsAligned( buf ) );
    EXPECT_EQ( zuBufferBitBacking( buf ), zuBufferBacking( buf ) );
    zuBufferAppendAlignment( &buf );
    EXPECT_EQ( zuBufferBitLength( buf ), 16 );
    EXPECT_TRUE( zuBufferBitIsAligned( buf ) );
    zuBufferBitInsertAlignment( &buf, 3 );
    EXPECT_EQ( zuBufferBitLength( buf ), 16 );
    zuBufferRelease( buf );
}

TEST( Buffer, StaleBitsAreNeverSeen )
{
    ZU_BUFFER *a = zuBufferCreateFromBits( 0x55F, 11 );
    ZU_BUFFER *b = zuBufferCreateFromBits( 0xABDF, 16 );
    zuBufferBitDelTrailing( &b, 5 );
    zuBufferBitWriteBits( &a, 10, 0, 1 );
    zuBufferBitWriteBits( &b, 10, 0, 1 );
    EXPECT_NE( zuBufferBacking( a )[ 1 ], zuBufferBacking( b )[ 1 ] );
    EXPECT_TRUE( zuBufferEquals( a, b ) );
    EXPECT_EQ( textOf( a ), textOf( b ) );
    zuBufferBitAppendBits( &b, 0, 1 );
    EXPECT_EQ( zuBufferCompare( a, b ), -1 ) << "the shorter is the smaller";
    zuBufferRelease( b );
    zuBufferRelease( a );
}

// Room: lengths of the three parts in bits, and the size that is reported, in bytes
static void expectRoom( ZU_BUFFER *buf, uint64_t fspace, uint64_t length, uint64_t bspace, ZU_INT size )
{
    EXPECT_EQ( buf->bitFspace, fspace );
    EXPECT_EQ( buf->bitLength, length );
    EXPECT_EQ( buf->bitBspace, bspace );
    EXPECT_EQ( zu___ObjDbgAllocationSize( zuBufferObj( buf ) ), size );
}

TEST( BufferRoom, AtTheFront )
{
    ZU_BUFFER *buf = zuBufferCreate();
    zuBufferPrependZero( &buf, 100 );
    expectRoom( buf, 640, 800, 1280, 340 );
    zuBufferPrependZero( &buf, 80 );
    expectRoom( buf, 0, 1440, 1280, 340 );
    zuBufferPrependZero( &buf, 1 ); // out of both
    expectRoom( buf, 0, 1448, 1272, 340 );
    zuBufferPrependZero( &buf, 160 ); // new storage
    expectRoom( buf, 640, 2728, 1280, 581 );
    zuBufferBitPrependZero( &buf, 3 ); // a new buffer's storage, off the boundaries
    expectRoom( buf, 640, 2731, 1285, 582 );
    ZU_BUFFER *before = buf;
    zuBufferBitPrependZero( &buf, 5 );
    EXPECT_EQ( buf, before ) << "rebuilt in place";
    zuBufferRelease( buf );
}
TEST( BufferRoom, AtTheEnd )
{
    ZU_BUFFER *buf = zuBufferCreate();
    zuBufferBitAppendBits( &buf, 1, 1 );
    expectRoom( buf, 640, 1, 1287, 241 );
    zuBufferBitAppendOne( &buf, 1287 );
    expectRoom( buf, 640, 1288, 0, 241 );
    zuBufferBitAppendOne( &buf, 2 );
    expectRoom( buf, 640, 1290, 1286, 402 );
    zuBufferRelease( buf );
}
TEST( BufferRoom, Inside )
{
    ZU_BUFFER *buf = zuBufferCreate();
    zuBufferAppendZero( &buf, 100 );
    zuBufferInsertZero( &buf, 50, 160 );
    expectRoom( buf, 640, 2080, 0, 340 );
    zuBufferInsertZero( &buf, 50, 81 ); // more than both rooms: new storage
    expectRoom( buf, 640, 2728, 1280, 581 );
    zuBufferBitInsertZero( &buf, 8, 7 );
    expectRoom( buf, 640, 2735, 1281, 582 );
    zuBufferBitInsertZero( &buf, 7, 8 );
    expectRoom( buf, 640, 2743, 1281, 583 );
    zuBufferRelease( buf );
}

// A content of bytes 0, 1, 2..., `count` bytes inserted at byte 50 where there are 5 bytes of room behind.
static ZU_BUFFER *makeMisplaced( ZU_INT count )
{
    BYTES bytes( 255 );
    for ( size_t i = 0; i < bytes.size(); i++ ) {
        bytes[ i ] = (uint8_t)i;
    }
    ZU_BUFFER *buf = zuBufferCreateFromBytesCopy( bytes.data(), 100 );
    zuBufferAppendBytes( &buf, bytes.data() + 100, 155 );
    zuBufferInsertOne( &buf, 50, count );
    return buf;
}
TEST( BufferRoom, OutOfBothEndsInsideIsMisplaced )
{
    // 8 bytes come from the front room, but it shrinks by 8 bits: the content begins 7 bytes late.
    ZU_BUFFER *buf = makeMisplaced( 13 );
    expectRoom( buf, 632, 268 * 8, 0, 340 );
    const uint8_t *bytes = zuBufferBacking( buf );
    EXPECT_EQ( bytes[ 0 ], 7 );
    EXPECT_EQ( bytes[ 42 ], 49 );
    EXPECT_EQ( bytes[ 43 ], 42 );
    EXPECT_EQ( bytes[ 49 ], 48 );
    EXPECT_EQ( bytes[ 50 ], 0xFF );
    EXPECT_EQ( bytes[ 62 ], 0xFF );
    EXPECT_EQ( bytes[ 63 ], 57 );
    EXPECT_EQ( bytes[ 260 ], 254 );
    zuBufferPrependByte( &buf, 1 );
    EXPECT_EQ( zuBufferReadByte( buf, 1 ), 7 );
    zuBufferRelease( buf );

    expectAbort( "BIT_AT_BOUND( (*buf)->bitFspace )", [] {
        ZU_BUFFER *misplaced = makeMisplaced( 12 );
        zuBufferAppendZero( &misplaced, 0 );
    } );
    expectAbort( "BIT_AT_BOUND( buf->bitFspace )", [] {
        ZU_BUFFER *misplaced = makeMisplaced( 12 );
        zuBufferDelLeading( &misplaced, 1 );
    } );
}

TEST( BufferRoom, DeletionTrims )
{
    ZU_BUFFER *buf = zuBufferCreate();
    zuBufferAppendZero( &buf, 1000 );
    zuBufferDelLeading( &buf, 80 );
    expectRoom( buf, 1280, 7360, 1280, 1240 );
    zuBufferDelLeading( &buf, 1 );
    expectRoom( buf, 640, 7352, 1280, 1159 );
    zuBufferBitDelTrailing( &buf, 1280 );
    expectRoom( buf, 640, 6072, 2560, 1159 );
    zuBufferBitDelTrailing( &buf, 1 );
    expectRoom( buf, 640, 6071, 1281, 999 );
    zuBufferDelInner( &buf, 10, 500 );
    expectRoom( buf, 640, 2071, 1281, 499 );
    zuBufferBitDelInner( &buf, 1, 1 );
    expectRoom( buf, 640, 2070, 1282, 499 );
    zuBufferDelOuter( &buf, 1, 255 );
    expectRoom( buf, 648, 2040, 1304, 499 );
    zuBufferBitDelOuter( &buf, 1, 2038 );
    expectRoom( buf, 640, 2038, 1282, 495 );
    zuBufferBitDelOuter( &buf, 0, 0 );
    ZU_BUFFER *empty = zuBufferCreate();
    EXPECT_EQ( buf, empty ) << "whoever deletes everything holds the shared empty buffer";
    zuBufferRelease( empty );
    zuBufferRelease( buf );
}

TEST( Buffer, NothingCopiesNothing )
{
    ZU_BUFFER *buf = makeBuffer( { 1, 2, 3 } );
    ZU_BUFFER *other = zuBufferRetain( buf );
    zuBufferAppendZero( &buf, 0 );
    zuBufferBitInsertBits( &buf, 5, 0, 0 );
    zuBufferWriteBytes( &buf, 3, nullptr, 0 );
    zuBufferInsertOuter( &buf, 1, buf, 0, 3 );
    zuBufferDelInner( &buf, 1, 0 );
    zuBufferDelOuter( &buf, 0, 3 );
    zuBufferAppendAlignment( &buf );
    EXPECT_EQ( buf, other );
    zuBufferRelease( other );
    zuBufferRelease( buf );

    ZU_BUFFER *empty = zuBufferCreate();
    ZU_BUFFER *copy = zuBufferCreateFrom( empty );
    EXPECT_NE( copy, empty );
    EXPECT_EQ( copy->bytes, nullptr );
    zuBufferRelease( copy );
    zuBufferRelease( empty );
}

TEST( Buffer, ForeignBytesStayUntilTheContentChanges )
{
    static const uint8_t BYTES_[] = { 1, 2, 3, 4, 5, 6 };
    ZU_STRING *owner = zuStringCreateFromAscii( "owner", -1 );
    ZU_BUFFER *buf = zuBufferCreateFromBytesUseWithRef( BYTES_, 6, zuStringObj( owner ) );
    EXPECT_EQ( ZU_REF_RETAIN_COUNT( owner ), 2u );
    zuBufferDelLeading( &buf, 1 );
    zuBufferBitDelTrailing( &buf, 3 );
    zuBufferDelOuter( &buf, 1, 3 );
    EXPECT_EQ( zuBufferBacking( buf ), BYTES_ + 2 );
    ZU_BUFFER *shared = zuBufferRetain( buf );
    zuBufferDelLeading( &buf, 1 );
    EXPECT_NE( buf, shared ) << "a shared one is copied even so";
    EXPECT_EQ( textOf( shared ), "[03 04 05]" );
    EXPECT_EQ( textOf( buf ), "[04 05]" );
    EXPECT_EQ( ZU_REF_RETAIN_COUNT( owner ), 2u );
    zuBufferDelInner( &shared, 1, 1 );
    EXPECT_EQ( ZU_REF_RETAIN_COUNT( owner ), 1u ) << "closing a gap changes the content";
    EXPECT_EQ( textOf( shared ), "[03 05]" );
    zuBufferRelease( shared );
    zuBufferRelease( buf );
    zuStringRelease( owner );
}

TEST( BufferAborts, Arguments )
{
    ZU_BUFFER *buf = zuBufferCreateFromBits( 0, 13 );
    ZU_BUFFER *null = nullptr;
    const ZU_INT huge = 0x1FFFFFFFFFFFFFFF; // bytes whose number of bits the unsigned type just holds
    struct ROW {
        const char *expression;
        std::function<void()> statement;
    };
    const ROW rows[] = {
        { "buf", [ & ] { zuBufferAppendByte( nullptr, 0 ); } },
        { "*buf", [ & ] { zuBufferBitAppendZero( &null, 1 ); } },
        { "src", [ & ] { zuBufferInsert( &buf, 0, nullptr ); } },
        { "byteIdx >= 0", [ & ] { zuBufferWriteByte( &buf, -1, 0 ); } },
        { "BYTES_TO_BITS_OK( byteIdx )", [ & ] { zuBufferInsertZero( &buf, huge + 1, 0 ); } },
        { "ZU___INT_UNSIGNED_FROM_ZU_INT_CONV_OK( bitIdx )", [ & ] { zuBufferBitInsertByte( &buf, -1, 0 ); } },
        { "ZU___INT_UNSIGNED_FROM_ZU_INT_CONV_OK( bitOffset )", [ & ] { zuBufferBitAppendInner( &buf, buf, -1, 1 ); } },
        { "ZU___INT_UNSIGNED_FROM_ZU_INT_CONV_OK( bitCount )", [ & ] { zuBufferAppendBits( &buf, 0, -1 ); } },
        { "byteCount >= 0", [ & ] { zuBufferDelLeading( &buf, -1 ); } },
        { "bitCount <= ZU_INT_BITS", [ & ] { zuBufferCreateFromBits( 0, 65 ); } },
        { "bitCount <= ZU_INT_BITS", [ & ] { zuBufferReadBits( buf, 0, 65 ); } },
        { "ZU___INT_UNSIGNED_ADD_OK( bitOffset, bitCount )", [ & ] { zuBufferAppendInner( &buf, buf, huge, huge ); } },
        { "bitOffset + bitCount <= src->bitLength", [ & ] { zuBufferBitPrependInner( &buf, buf, 10, 4 ); } },
        { "bitOffset + bitCount <= src->bitLength", [ & ] { zuBufferWriteOuter( &buf, 0, buf, 1, 1 ); } },
        { "bitCount <= src->bitLength", [ & ] { zuBufferAppendTrailing( &buf, buf, 2 ); } },
        { "atBit <= (*buf)->bitLength", [ & ] { zuBufferBitInsertBits( &buf, 14, 1, 1 ); } },
        { "atBit <= (*buf)->bitLength", [ & ] { zuBufferInsertZero( &buf, 2, 0 ); } },
        { "bitIdx + bitCount <= (*buf)->bitLength", [ & ] { zuBufferBitWriteOne( &buf, 13, 1 ); } },
        { "bitIdx + bitCount <= (*buf)->bitLength", [ & ] { zuBufferBitWriteByte( &buf, 6, 1 ); } },
        { "bitIdx + (src->bitLength - bitCount) <= (*buf)->bitLength",
          [ & ] { zuBufferBitWriteOuter( &buf, 4, buf, 0, 3 ); } },
        { "bitIdx + BYTES_TO_BITS( byteCount ) <= (*buf)->bitLength",
          [ & ] { zuBufferWriteBytes( &buf, 1, (const uint8_t *)"", 1 ); } },
        { "bytes || !byteCount", [ & ] { zuBufferAppendBytes( &buf, nullptr, 1 ); } },
        { "ref", [ & ] { zuBufferCreateFromBytesUseWithRef( nullptr, 0, nullptr ); } },
        { "bitIdx + bitCount <= buf->bitLength", [ & ] { zuBufferReadByte( buf, 1 ); } },
        { "bitOffset + bitCount <= (*buf)->bitLength", [ & ] { zuBufferBitDelInner( &buf, 1, 13 ); } },
        { "bitCount <= (*buf)->bitLength", [ & ] { zuBufferDelTrailing( &buf, 2 ); } },
        { "ZU___INT_UNSIGNED_TO_ZU_INT_CONV_OK( sizeBits )", [ & ] { zuBufferBitAppendZero( &buf, ZU_INT_MAX ); } },
        { "ZU___INT_UNSIGNED_ADD_OK( ZU_BUFFER_FSPACE + ZU_BUFFER_BSPACE + (*buf)->bitLength, bitCount )",
          [ & ] { zuBufferPrependZero( &buf, huge ); } },
        { "ZU___INT_UNSIGNED_ADD_OK( (*buf)->bitFspace + (*buf)->bitLength, bitCount )",
          [ & ] { zuBufferAppendZero( &buf, huge ); } },
    };
    for ( const ROW &row : rows ) {
        SCOPED_TRACE( row.expression );
        expectAbort( row.expression, row.statement );
    }
    zuBufferRelease( buf );
}
