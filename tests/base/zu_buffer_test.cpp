#include "zu/base/zu_buffer_internal.h"

#include "zu_test_string.h"

#include <bitset>
#include <numeric>

typedef std::string BITS; // a '0' or '1' for each
typedef std::vector<uint8_t> BYTES;

static std::string textOf( ZU_BUFFER *buf )
{
    return takeText( zuBufferToString( buf ) );
}
static BITS numberBits( uint64_t value, size_t count )
{
    return std::bitset<64>( value ).to_string().substr( 64 - count );
}
static BITS bytesBits( const uint8_t *bytes, size_t byteCount )
{
    BITS bits;
    for ( size_t i = 0; i < byteCount; i++ ) {
        bits += numberBits( bytes[ i ], 8 );
    }
    return bits;
}
static BITS bitsOf( ZU_BUFFER *buf )
{
    size_t length = (size_t)zuBufferBitLength( buf );
    return bytesBits( zuBufferBacking( buf ), ( length + 7 ) / 8 ).substr( 0, length );
}

// Room: free bits at the front, those of content, free bits behind; nothing at all where there is no storage
typedef std::vector<uint64_t> ROOM;
static ROOM roomOf( ZU_BUFFER *buf )
{
    return buf->bytes ? ROOM{ buf->bitFspace, buf->bitLength, buf->bitBspace } : ROOM{};
}
static ROOM freshRoom( uint64_t length )
{
    return length ? ROOM{ 640, length, ( 8 - length % 8 ) % 8 + 1280 } : ROOM{};
}
// What is left of a room of one's own after `count` bits are inserted at `at`
static ROOM roomAfterInsertion( const ROOM &room, uint64_t at, uint64_t count )
{
    if ( count == 0 || room.empty() ) {
        return count == 0 ? room : freshRoom( count );
    }
    const uint64_t length = room[ 1 ] + count;
    const bool whole = at % 8 == 0 && count % 8 == 0;
    if ( at == 0 && whole && count <= room[ 0 ] + room[ 2 ] ) {
        uint64_t front = count <= room[ 0 ] ? room[ 0 ] - count : 0;
        return { front, length, room[ 0 ] + room[ 2 ] - count - front };
    }
    if ( at > 0 && ( whole || at == room[ 1 ] ) && count <= room[ 2 ] ) {
        return { room[ 0 ], length, room[ 2 ] - count };
    }
    ROOM fresh = freshRoom( length );
    fresh[ 0 ] = at > 0 && at == room[ 1 ] ? room[ 0 ] : 640;
    return fresh;
}
// What is left once `front` and `behind` bits more are free at the ends
static ROOM roomAfterDeletion( const ROOM &room, uint64_t front, uint64_t behind, bool foreign )
{
    ROOM left = { room[ 0 ] + front, room[ 1 ] - front - behind, room[ 2 ] + behind };
    return !foreign && ( left[ 0 ] > 1280 || left[ 2 ] > 2560 ) ? freshRoom( left[ 1 ] ) : left;
}

// Model test: several holders, some of which share an object or sit on foreign bytes, and a sequence of bits for each.
// Random operations of the whole grid are done to both.  All holders are compared after each, and the room that the one
// that changed is left with.
class BufferModel {
public:
    explicit BufferModel( uint64_t seed ) : random( seed ), foreignOwner( zuStringCreate() )
    {
        std::generate( foreign, std::end( foreign ), [ this ] { return (uint8_t)random(); } );
        foreignBefore.assign( foreign, std::end( foreign ) );
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
        EXPECT_EQ( foreignBefore, BYTES( foreign, std::end( foreign ) ) ) << "foreign bytes changed";
    }
    bool step()
    {
        HOLDER &holder = any();
        size_t kind = below( 100 );
        kind < 3    ? replace( holder )
        : kind < 15 ? share( holder )
        : kind < 35 ? remove( holder )
        : kind < 45 ? read( holder )
                    : change( holder );
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
    // Tells an operation, and expects what it leaves of a holder.
    void tell( const std::string &operation, bool bit, size_t at, size_t count, size_t length )
    {
        what = operation + ( bit ? ", bits, " : ", bytes, " ) + std::to_string( count ) + " at " +
               std::to_string( at ) + " of " + std::to_string( length );
    }
    void expectHolder( HOLDER &holder, ZU_BUFFER *before, const BITS &bits, const ROOM &room )
    {
        if ( bits.size() == holder.bits.size() ) {
            EXPECT_TRUE( holder.buf == before || what.starts_with( "Write" ) ) << "nothing copies nothing";
        } else if ( bits.empty() ) {
            zu::Ref<ZU_BUFFER> empty = zu::adopt( zuBufferCreate() );
            EXPECT_EQ( holder.buf, empty.get() ) << "whoever deletes everything holds the shared empty buffer";
        }
        holder.bits = bits;
        EXPECT_EQ( roomOf( holder.buf ), room );
    }

    void replace( HOLDER &holder )
    {
        what = "replace";
        const uint8_t *bytes = foreign + below( 200 );
        ZU_INT length = (ZU_INT)( below( 4 ) == 0 ? 0 : below( 500 ) );
        zuBufferRelease( holder.buf );
        holder.buf = below( 2 ) ? zuBufferCreateFromBytesUseWithRef( bytes, length, zuStringObj( foreignOwner ) )
                     : length   ? zuBufferCreateFromBytesUse( (uint8_t *)zuMemDup( bytes, length ), length )
                                : zuBufferCreate(); // forgets, so that lengths do not only grow
        holder.bits = bytesBits( bytes, (size_t)length );
    }
    void share( HOLDER &holder )
    {
        what = "share";
        HOLDER &other = any();
        zu::Ref<ZU_BUFFER> old = zu::adopt( holder.buf );
        holder.buf = below( 4 ) == 0 ? zuBufferCreateFrom( other.buf ) : zuBufferRetain( other.buf );
        holder.bits = other.bits;
    }
    void remove( HOLDER &holder )
    {
        const bool bit = below( 2 );
        const size_t unit = bit ? 1 : 8;
        const BITS before = holder.bits;
        const size_t length = before.size();
        const size_t kind = length > 6000 ? 4 : below( 4 );
        const ZU_INT n = (ZU_INT)units( length, bit );
        const size_t count = (size_t)n * unit;
        const ZU_INT o = (ZU_INT)units( length - count, bit );
        const size_t at = kind == 2 ? 0 : kind == 3 ? length - count : (size_t)o * unit;
        const size_t behind = length - at - count;
        const ROOM room = roomOf( holder.buf );
        const bool shared = ZU_REF_RETAIN_COUNT( holder.buf ) > 1;
        const bool onForeign = holder.buf->ref && !shared;
        const ROOM own = shared ? freshRoom( length ) : room;
        ZU_BUFFER **buf = &holder.buf, *old = *buf;
        tell( "del " + std::to_string( kind ), bit, at, count, length );
        if ( kind == 4 ) {
            zuBufferClear( buf );
            return expectHolder( holder, old, {}, {} );
        }
        if ( kind == 1 ) {
            bit ? zuBufferBitDelOuter( buf, o, n ) : zuBufferDelOuter( buf, o, n );
            return expectHolder( holder, old, before.substr( at, count ),
                                 count == length ? room
                                 : count == 0    ? ROOM{}
                                 : at % 8 == 0   ? roomAfterDeletion( own, at, behind, onForeign )
                                                 : freshRoom( count ) );
        }
        if ( kind == 0 ) {
            bit ? zuBufferBitDelInner( buf, o, n ) : zuBufferDelInner( buf, o, n );
        } else if ( kind == 2 ) {
            bit ? zuBufferBitDelLeading( buf, n ) : zuBufferDelLeading( buf, n );
        } else {
            bit ? zuBufferBitDelTrailing( buf, n ) : zuBufferDelTrailing( buf, n );
        }
        expectHolder( holder, old, before.substr( 0, at ) + before.substr( at + count ),
                      count == 0                  ? room
                      : count == length           ? ROOM{}
                      : at == 0 && count % 8 == 0 ? roomAfterDeletion( own, count, 0, onForeign )
                      : behind == 0               ? roomAfterDeletion( own, 0, count, onForeign )
                      : at > 0 && ( at | count ) % 8 == 0
                          ? roomAfterDeletion( onForeign ? freshRoom( length ) : own, 0, count, false )
                          : roomAfterInsertion( freshRoom( at ), at, behind ) );
    }
    void read( HOLDER &holder )
    {
        what = "read";
        const bool bit = below( 2 );
        const size_t unit = bit ? 1 : 8;
        const ZU_INT i = (ZU_INT)units( holder.bits.size(), bit );
        const BITS from = holder.bits.substr( (size_t)i * unit );
        const ZU_INT n = (ZU_INT)units( from.size(), bit );
        const size_t bitCount = below( std::min( from.size(), (size_t)64 ) + 1 );
        const size_t byteCount = from.size() / 8;
        ZU_BUFFER *buf = holder.buf;
        ZU_BUFFER *range = bit ? zuBufferBitRead( buf, i, n ) : zuBufferRead( buf, i, n );
        EXPECT_EQ( bitsOf( range ), from.substr( 0, (size_t)n * unit ) );
        EXPECT_EQ( ZU_REF_RETAIN_COUNT( range ), 1u );
        zuBufferRelease( range );
        uint64_t number = (uint64_t)( bit ? zuBufferBitReadBits( buf, i, (ZU_INT)bitCount )
                                          : zuBufferReadBits( buf, i, (ZU_INT)bitCount ) );
        EXPECT_EQ( numberBits( number, 64 ), BITS( 64 - bitCount, '0' ) + from.substr( 0, bitCount ) );
        BYTES bytes( byteCount + 1, 0xA5 );
        bit ? zuBufferBitReadBytes( buf, i, bytes.data(), (ZU_INT)byteCount )
            : zuBufferReadBytes( buf, i, bytes.data(), (ZU_INT)byteCount );
        EXPECT_EQ( bytesBits( bytes.data(), byteCount ), from.substr( 0, byteCount * 8 ) );
        EXPECT_EQ( bytes.back(), 0xA5 );
        if ( byteCount > 0 ) {
            EXPECT_EQ( bit ? zuBufferBitReadByte( buf, i ) : zuBufferReadByte( buf, i ), bytes[ 0 ] );
        }
    }

    // Picks a function of the grid, a place and an operand, and does to the bits what is told of it.
    void change( HOLDER &holder )
    {
        enum VERB { APPEND, PREPEND, INSERT, WRITE };
        static const char *const VERBS[] = { "Append", "Prepend", "Insert", "Write" };
        const VERB verb = (VERB)below( 4 );
        const bool bit = below( 2 );
        const size_t unit = bit ? 1 : 8;
        HOLDER &source = any();
        ZU_BUFFER *src = source.buf;
        const BITS whole = source.bits;
        const ZU_INT n = (ZU_INT)units( whole.size(), bit );
        const size_t count = (size_t)n * unit;
        const ZU_INT o = (ZU_INT)units( whole.size() - count, bit );
        const size_t offset = (size_t)o * unit;
        const size_t operand = below( verb == WRITE ? 10 : 11 );
        ZU_INT i = 0;
        auto doBoth = [ & ]( const char *name, const BITS taken, const std::function<void()> &call ) {
            BITS bits = holder.bits;
            const size_t length = bits.size();
            const size_t added = taken.size();
            if ( verb == WRITE && added > length ) {
                return;
            }
            i = (ZU_INT)units( verb == WRITE ? length - added : length, bit );
            const size_t at = verb == APPEND ? length : verb == PREPEND ? 0 : (size_t)i * unit;
            tell( std::string( VERBS[ verb ] ) + name, bit, at, added, length );
            const bool reads = operand < 5 && src == holder.buf;
            const bool copied = ZU_REF_RETAIN_COUNT( holder.buf ) > 1 || holder.buf->ref || reads;
            const ROOM own = copied && added > 0 ? freshRoom( length ) : roomOf( holder.buf );
            if ( verb == INSERT && at > 0 && at < length && ( at | added ) % 8 == 0 && added > own[ 2 ] &&
                 added <= own[ 0 ] + own[ 2 ] ) {
                return; // the one that is not as it should be, which has a test of its own
            }
            ZU_BUFFER *old = holder.buf;
            call();
            EXPECT_TRUE( added > 0 || holder.buf == old );
            expectHolder( holder, old, bits.replace( at, verb == WRITE ? added : 0, taken ),
                          verb == WRITE ? own : roomAfterInsertion( own, at, added ) );
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
        const ZU_INT fill = (ZU_INT)units( 4000, bit );
        const size_t bitCount = below( 65 );
        const size_t byteCount = below( 500 );
        const uint64_t number = random();
        switch ( operand ) {
        case 0:
            DO_BOTH(, whole, src );
        case 1:
            DO_BOTH( Inner, whole.substr( offset, count ), src, o, n );
        case 2:
            DO_BOTH( Outer, BITS( whole ).erase( offset, count ), src, o, n );
        case 3:
            DO_BOTH( Leading, whole.substr( 0, count ), src, n );
        case 4:
            DO_BOTH( Trailing, whole.substr( whole.size() - count ), src, n );
        case 5:
            DO_BOTH( Bits, numberBits( number, bitCount ), (ZU_INT)number, (ZU_INT)bitCount );
        case 6:
            DO_BOTH( Byte, numberBits( number, 8 ), (uint8_t)number );
        case 7:
            DO_BOTH( Bytes, bytesBits( foreign, byteCount ), foreign, (ZU_INT)byteCount );
        case 8:
            DO_BOTH( Zero, BITS( (size_t)fill * unit, '0' ), fill );
        case 9:
            DO_BOTH( One, BITS( (size_t)fill * unit, '1' ), fill );
        default:
            doBoth( "Alignment", BITS( ( 8 - holder.bits.size() % 8 ) % 8, '0' ),
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
            EXPECT_EQ( buf->ref != nullptr, buf->bytes >= foreign && buf->bytes < std::end( foreign ) );
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

TEST( Buffer, StaleBitsAreNeverSeen )
{
    zu::Ref<ZU_BUFFER> a = zu::adopt( zuBufferCreateFromBits( 0xABE0, 16 ) );
    zu::Ref<ZU_BUFFER> b = zu::adopt( zuBufferCreateFromBits( 0xABFF, 16 ) );
    zuBufferBitDelTrailing( a.inOut(), 5 );
    zuBufferBitDelTrailing( b.inOut(), 5 );
    EXPECT_NE( zuBufferBacking( a.get() )[ 1 ], zuBufferBacking( b.get() )[ 1 ] );
    EXPECT_TRUE( zuBufferEquals( a.get(), b.get() ) );
    EXPECT_EQ( textOf( a.get() ), textOf( b.get() ) );
    zuBufferBitAppendBits( b.inOut(), 0, 1 );
    EXPECT_EQ( zuBufferCompare( a.get(), b.get() ), -1 ) << "the shorter is the smaller";
}

// The three parts of the storage in bits, and the size that is reported, in bytes
static void expectRoom( ZU_BUFFER *buf, uint64_t fspace, uint64_t length, uint64_t bspace, ZU_INT size )
{
    EXPECT_EQ( roomOf( buf ), ( ROOM{ fspace, length, bspace } ) );
    EXPECT_EQ( zu___ObjDbgAllocationSize( zuBufferObj( buf ) ), size );
}

// A content of bytes 0, 1, 2..., `count` bytes inserted at byte 50 where there are 5 bytes of room behind.
static ZU_BUFFER *makeMisplaced( ZU_INT count )
{
    BYTES bytes( 255 );
    std::iota( bytes.begin(), bytes.end(), (uint8_t)0 );
    ZU_BUFFER *buf = zuBufferCreateFromBytesCopy( bytes.data(), 100 );
    zuBufferAppendBytes( &buf, bytes.data() + 100, 155 );
    zuBufferInsertOne( &buf, 50, count );
    return buf;
}
TEST( Buffer, AnInsertionOutOfBothEndsIsMisplaced )
{
    // 8 bytes come from the front room, but it shrinks by 8 bits: the content begins 7 bytes late.
    ZU_BUFFER *buf = makeMisplaced( 13 );
    expectRoom( buf, 632, 268 * 8, 0, 340 );
    const std::pair<int, int> places[] = { { 0, 7 },     { 42, 49 },   { 43, 42 }, { 49, 48 },
                                           { 50, 0xFF }, { 62, 0xFF }, { 63, 57 }, { 260, 254 } };
    for ( auto [ place, byte ] : places ) {
        EXPECT_EQ( zuBufferBacking( buf )[ place ], byte ) << place;
    }
    zuBufferPrependByte( &buf, 1 );
    EXPECT_EQ( zuBufferReadByte( buf, 1 ), 7 );
    zuBufferRelease( buf );

    zu::Ref<ZU_BUFFER> misplaced = zu::adopt( makeMisplaced( 12 ) );
    expectAbort( "BIT_AT_BOUND( (*buf)->bitFspace )", [ & ] { zuBufferAppendZero( misplaced.inOut(), 0 ); } );
    expectAbort( "BIT_AT_BOUND( buf->bitFspace )", [ & ] { zuBufferDelLeading( misplaced.inOut(), 1 ); } );
}

// New memory is full of ones there: none of them may get into the content, or into the rest of its last byte.
TEST( Buffer, WhatWasNeverWrittenIsNeverSeen )
{
    runRestarted( ZU_RUNTIME_FLAG_MEMORY_DEBUG, [] {
        for ( ZU_INT bits = 0; bits < 8; bits++ ) {
            for ( ZU_INT at : { 1, 2, 9, 60, 99 } ) { // 64 bytes come from the front room, ahead of a shorter head
                zu::Ref<ZU_BUFFER> buf = zu::adopt( zuBufferCreate() );
                zuBufferAppendZero( buf.inOut(), 100 );
                zuBufferBitAppendZero( buf.inOut(), 155 * 8 + bits );
                zuBufferInsertZero( buf.inOut(), at, ( buf.get()->bitBspace >> 3 ) + 64 );
                EXPECT_EQ( bitsOf( buf.get() ).find( '1' ), BITS::npos ) << bits << " at " << at;
                EXPECT_EQ( bits ? zuBufferBacking( buf.get() )[ buf.get()->bitLength >> 3 ] : 0, 0 );
            }
            zu::Ref<ZU_BUFFER> buf = zu::adopt( zuBufferCreateFromBits( 0, bits + 1 ) );
            EXPECT_EQ( zuBufferBacking( buf.get() )[ 0 ], 0 );
            zuBufferBitPrependZero( buf.inOut(), 9 );
            EXPECT_EQ( zuBufferBacking( buf.get() )[ 1 ], 0 );
        }
    } );
}

TEST( BufferAborts, Arguments )
{
    ZU_BUFFER *buf = zuBufferCreateFromBits( 0, 13 );
    const ZU_INT huge = 0x1FFFFFFFFFFFFFFF; // bytes whose number of bits the unsigned type just holds
    const std::pair<const char *, std::function<void()>> rows[] = {
        { "BYTES_TO_BITS_OK( byteIdx )", [ & ] { zuBufferInsertZero( &buf, huge + 1, 0 ); } },
        { "bitCount <= ZU_INT_BITS", [ & ] { zuBufferReadBits( buf, 0, 65 ); } },
        { "bitOffset + bitCount <= src->bitLength", [ & ] { zuBufferBitPrependInner( &buf, buf, 10, 4 ); } },
        { "bitOffset + bitCount <= src->bitLength", [ & ] { zuBufferWriteOuter( &buf, 0, buf, 1, 1 ); } },
        { "bitCount <= src->bitLength", [ & ] { zuBufferAppendTrailing( &buf, buf, 2 ); } },
        { "bitIdx + bitCount <= (*buf)->bitLength", [ & ] { zuBufferBitWriteByte( &buf, 6, 1 ); } },
        { "ZU___INT_UNSIGNED_TO_ZU_INT_CONV_OK( sizeBits )", [ & ] { zuBufferBitAppendZero( &buf, ZU_INT_MAX ); } },
        { "ZU___INT_UNSIGNED_ADD_OK( ZU_BUFFER_FSPACE + ZU_BUFFER_BSPACE + (*buf)->bitLength, bitCount )",
          [ & ] { zuBufferPrependZero( &buf, huge ); } },
        { "ZU___INT_UNSIGNED_ADD_OK( (*buf)->bitFspace + (*buf)->bitLength, bitCount )",
          [ & ] { zuBufferAppendZero( &buf, huge ); } },
    };
    for ( const auto &[ expression, statement ] : rows ) {
        SCOPED_TRACE( expression );
        expectAbort( expression, statement );
    }
    zuBufferRelease( buf );
}
