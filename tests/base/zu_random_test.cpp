#include "zu_test_support.h"

typedef std::vector<uint8_t> BYTES;

// What each draw can set it does, and nothing else: a bit that 400 draws have missed is missing.
TEST( Random, CoversItsRange )
{
    static constexpr int DRAWS = 400;
    for ( ZU_INT bitCount = 0; bitCount <= 64; bitCount++ ) {
        uint64_t set = 0;
        uint64_t clear = 0;
        for ( int i = 0; i < DRAWS; i++ ) {
            uint64_t bits = (uint64_t)( bitCount == 1    ? zuRandomBit()
                                        : bitCount == 63 ? zuRandomNonNegativeInt()
                                        : bitCount == 64 ? zuRandomInt()
                                                         : zuRandomBits( bitCount ) );
            set |= bits;
            clear |= ~bits;
        }
        uint64_t all = bitCount == 64 ? ~(uint64_t)0 : ( (uint64_t)1 << bitCount ) - 1;
        EXPECT_EQ( set, all );
        EXPECT_EQ( clear, ~(uint64_t)0 );
    }
    std::set<ZU_INT> inRange, inBytes;
    for ( int i = 0; i < 20 * 256; i++ ) {
        inRange.insert( i % 2 ? zuRandomNonNegativeIntRange( 2, 9 ) : zuRandomNonNegativeIntRange( 9, 2 ) );
        inBytes.insert( zuRandomByte() );
    }
    EXPECT_EQ( inRange, ( std::set<ZU_INT>{ 2, 3, 4, 5, 6, 7, 8, 9 } ) );
    EXPECT_EQ( inBytes.size(), 256u );
    EXPECT_EQ( *inBytes.rbegin(), 255 );
    EXPECT_EQ( zuRandomNonNegativeIntRange( 7, 7 ), 7 );
    EXPECT_GE( zuRandomNonNegativeIntRange( 0, ZU_INT_MAX ), 0 );
    EXPECT_GT( zuRandomNonNegativeIntRange( ZU_INT_MAX, 1 ), 0 );
}

// Requests of all lengths over several refills; behind whatever a buffer holds, on its bytes' boundaries and off them.
TEST( Random, FillsAndAppends )
{
    for ( ZU_INT length = 0; length <= 300; length += 1 + length / 20 ) {
        BYTES united( (size_t)length + 1 );
        for ( int round = 0; round < 12; round++ ) {
            BYTES bytes( (size_t)length + 1 );
            if ( round % 2 ) {
                zuRandomBytes( bytes.data(), length );
            } else {
                zu::Ref<ZU_BUFFER> buf = zu::adopt( zuBufferCreateFromBits( 5, round ) );
                zu::Ref<ZU_BUFFER> before = buf;
                zuRandom( buf.inOut(), length );
                ASSERT_EQ( zuBufferBitLength( buf.get() ), round + 8 * length );
                EXPECT_EQ( zuBufferBitReadBits( buf.get(), 0, round ), zuBufferBitReadBits( before.get(), 0, round ) );
                EXPECT_EQ( zuBufferBitLength( before.get() ), round );
                zuBufferBitReadBytes( buf.get(), round, bytes.data(), length );
            }
            std::transform( bytes.begin(), bytes.end(), united.begin(), united.begin(), std::bit_or<int>() );
        }
        EXPECT_EQ( united.back(), 0 ) << "beyond the end";
        EXPECT_LE( std::count( united.begin(), united.end(), 0 ), 1 );
    }
    ZU_BUFFER *none = nullptr;
    zuRandom( &none, 0 );
    zuRandomBytes( nullptr, 0 );
}

TEST( Random, HandsEachByteOutOnce )
{
    static constexpr int THREADS = 4;
    std::array<std::vector<ZU_INT>, THREADS> drawn;
    runThreads( THREADS, [ & ]( int thread ) {
        for ( int i = 0; i < 20000; i++ ) {
            drawn[ (size_t)thread ].push_back( zuRandomInt() );
        }
    } );
    std::set<ZU_INT> all;
    for ( const std::vector<ZU_INT> &each : drawn ) {
        all.insert( each.begin(), each.end() );
    }
    EXPECT_EQ( all.size(), 20000u * THREADS );
}

// Each of the 24 orders of four items comes up as often as any other: 1000 times, with a deviation of 31.
TEST( VectorShuffle, MakesAllOrdersAlike )
{
    zu::Ref<ZU_VECTOR> ordered = zu::adopt( zuVectorCreate() );
    for ( ZU_INT i = 0; i < 4; i++ ) {
        zuVectorAppendInt( ordered.inOut(), i );
    }
    std::string before = zu::toUtf8( zu::adopt( zuVectorToString( ordered.get() ) ) );
    std::map<std::string, int> seen;
    for ( int i = 0; i < 24000; i++ ) {
        zu::Ref<ZU_VECTOR> vec = ordered;
        zuVectorShuffle( vec.inOut() );
        seen[ zu::toUtf8( zu::adopt( zuVectorToString( vec.get() ) ) ) ]++;
    }
    EXPECT_EQ( zu::toUtf8( zu::adopt( zuVectorToString( ordered.get() ) ) ), before );
    EXPECT_EQ( seen.size(), 24u );
    for ( const auto &[ order, count ] : seen ) {
        EXPECT_NEAR( count, 1000, 250 ) << order;
    }
    zu::Ref<ZU_VECTOR> empty = zu::adopt( zuVectorCreate() );
    ZU_VECTOR *shared = empty.get();
    zuVectorShuffle( empty.inOut() );
    EXPECT_EQ( empty.get(), shared );
}
