// Arithmetic against 128-bit integers, in which no result of two operands is out of range.

#include "zu/sys/zu_int.h"

#include "zu_test_support.h"

#include <bitset>

__extension__ typedef __int128 WIDE;

// Pairs of the numbers at which something changes, and random ones of all magnitudes.
static std::vector<std::pair<ZU_INT, ZU_INT>> operandPairs( SeededRandom &random )
{
    std::vector<ZU_INT> edges;
    for ( int bit : { 0, 1, 2, 15, 30, 31, 32, 33, 61, 62 } ) {
        for ( ZU_INT off : { -1, 0, 1 } ) {
            edges.push_back( ( ZU_INT{ 1 } << bit ) + off );
            edges.push_back( -( ZU_INT{ 1 } << bit ) + off );
        }
    }
    edges.insert( edges.end(), { ZU_INT_MIN, ZU_INT_MIN + 1, ZU_INT_MIN / 2, ZU_INT_MAX / 2, ZU_INT_MAX - 1, ZU_INT_MAX,
                                 3037000499, 3037000500, 7 } ); // two of them around the root of 2^63
    std::vector<std::pair<ZU_INT, ZU_INT>> pairs;
    for ( ZU_INT a : edges ) {
        for ( ZU_INT b : edges ) {
            pairs.emplace_back( a, b );
        }
    }
    for ( int i = 0; i < 100000; i++ ) {
        ZU_INT a = (ZU_INT)random() >> random() % 64;
        pairs.emplace_back( a, (ZU_INT)random() >> random() % 64 );
    }
    return pairs;
}
static bool inRange( WIDE value )
{
    return value >= ZU_INT_MIN && value <= ZU_INT_MAX;
}
static ZU_INT saturated( WIDE value )
{
    return (ZU_INT)std::clamp<WIDE>( value, ZU_INT_MIN, ZU_INT_MAX );
}
// Rounded down between numbers that are not negative, up (toward zero) between negative ones and across zero.
static ZU_INT midpoint( WIDE a, WIDE b )
{
    WIDE sum = a + b;
    bool roundsUp = a < 0 || b < 0;
    return (ZU_INT)( ( sum - ( sum & 1 ) ) / 2 + ( roundsUp ? sum & 1 : 0 ) );
}

TEST( Int, ArithmeticIsThatOfWiderIntegers )
{
    SeededRandom random;
    for ( auto [ a, b ] : operandPairs( random ) ) {
        SCOPED_TRACE( testing::Message() << a << " and " << b );
        WIDE wideA = a, wideB = b;
        ASSERT_EQ( zuIntAddOk( a, b ), inRange( wideA + wideB ) );
        ASSERT_EQ( zuIntSubOk( a, b ), inRange( wideA - wideB ) );
        ASSERT_EQ( zuIntMulOk( a, b ), inRange( wideA * wideB ) );
        ASSERT_EQ( ZU_INT_ADD_OK( a, b ), inRange( wideA + wideB ) );
        ASSERT_EQ( ZU_INT_SUB_OK( a, b ), inRange( wideA - wideB ) );
        ASSERT_EQ( ZU_INT_MUL_OK( a, b ), inRange( wideA * wideB ) );
        ASSERT_EQ( zuIntAddSaturating( a, b ), saturated( wideA + wideB ) );
        ASSERT_EQ( zuIntSubSaturating( a, b ), saturated( wideA - wideB ) );
        ASSERT_EQ( zuIntMulSaturating( a, b ), saturated( wideA * wideB ) );
        ASSERT_EQ( zuIntDivOk( a, b ), b != 0 && inRange( wideA / wideB ) );
        if ( b != 0 ) {
            ASSERT_EQ( zuIntDivSaturating( a, b ), saturated( wideA / wideB ) );
        }
        ASSERT_EQ( zuIntMid( a, b ), midpoint( a, b ) );
        ASSERT_EQ( zuIntMin( a, b ), std::min( a, b ) );
        ASSERT_EQ( zuIntMax( a, b ), std::max( a, b ) );
        ASSERT_EQ( zuIntAbsSaturating( a ), saturated( wideA < 0 ? -wideA : wideA ) );
        if ( a != ZU_INT_MIN ) {
            ASSERT_EQ( zuIntAbs( a ), wideA < 0 ? -wideA : wideA );
        }
        ZU_INT limits[] = { std::min( a, b ), std::max( a, b ) };
        for ( ZU_INT value : { ZU_INT_MIN, ZU_INT{ -3 }, a, b, ZU_INT_MAX } ) {
            ASSERT_EQ( zuIntConstrain( value, a, b ), std::clamp( value, limits[ 0 ], limits[ 1 ] ) );
        }
        ZU_INT x = a, y = b;
        ASSERT_TRUE( zuIntExchange( &x, &y ) == b && x == b && y == a );
        zuIntSortPair( &x, &y );
        ASSERT_TRUE( x == limits[ 0 ] && y == limits[ 1 ] );
        // The unsigned twin
        uint64_t unsignedA = (uint64_t)a, unsignedB = (uint64_t)b;
        ASSERT_EQ( ZU___INT_UNSIGNED_ADD_OK( unsignedA, unsignedB ), unsignedA + unsignedB >= unsignedA );
        ASSERT_EQ( ZU___INT_UNSIGNED_FROM_ZU_INT_CONV_OK( a ), a >= 0 );
        ASSERT_EQ( ZU___INT_UNSIGNED_TO_ZU_INT_CONV_OK( unsignedA ), a >= 0 );
        ASSERT_EQ( ZU_INT_FROM_SIZET_CONV_OK( unsignedA ), a >= 0 );
        ASSERT_EQ( ZU_INT_TO_SIGNED_INT_CONV_OK( a ), (int32_t)a == a );
    }
}

TEST( Int, BitsAreThoseOfABitset )
{
    SeededRandom random;
    std::vector<uint64_t> values = { 0, 1, UINT64_MAX, 0x5555555555555555, uint64_t{ 1 } << 63 };
    for ( int i = 0; i < 100; i++ ) {
        values.push_back( random() >> random() % 64 & random() );
    }
    auto bits = []( ZU_INT value ) { return std::bitset<64>( (uint64_t)value ); };
    for ( uint64_t each : values ) {
        std::bitset<64> model( each );
        ZU_INT value = (ZU_INT)each;
        EXPECT_EQ( zuIntBitCount( value ), (ZU_INT)model.count() );
        ZU_INT lowest = -1, highest = -1;
        for ( size_t bit = 0; bit < 64; bit++ ) {
            lowest = lowest < 0 && model[ bit ] ? (ZU_INT)bit : lowest;
            highest = model[ bit ] ? (ZU_INT)bit : highest;
            EXPECT_EQ( zuIntBitIsSet( value, (ZU_INT)bit ), model[ bit ] );
            EXPECT_EQ( bits( zuIntBitSet( value, (ZU_INT)bit ) ), std::bitset<64>( model ).set( bit ) );
            EXPECT_EQ( bits( zuIntBitClear( value, (ZU_INT)bit ) ), std::bitset<64>( model ).reset( bit ) );
        }
        EXPECT_EQ( zuIntBitLowest( value ), lowest );
        EXPECT_EQ( zuIntBitHighest( value ), highest );
        const std::bitset<64> all( UINT64_MAX );
        for ( ZU_INT a = 0; a < 64; a++ ) {
            ZU_INT b = (ZU_INT)( random() % 64 );
            ZU_INT first = std::min( a, b ), last = std::max( a, b );
            std::bitset<64> range = all >> (size_t)( 63 - ( last - first ) ) << (size_t)first;
            EXPECT_EQ( bits( zuIntBitSetRange( value, a, b ) ), model | range );
            EXPECT_EQ( bits( zuIntBitClearRange( value, a, b ) ), model & ~range );
            EXPECT_EQ( bits( zuIntBitSetLowest( value, a + 1 ) ), model | all >> (size_t)( 63 - a ) );
            EXPECT_EQ( bits( zuIntBitClearLowest( value, a + 1 ) ), model & ~( all >> (size_t)( 63 - a ) ) );
            EXPECT_EQ( bits( zuIntBitSetHighest( value, a + 1 ) ), model | all << (size_t)( 63 - a ) );
            EXPECT_EQ( bits( zuIntBitClearHighest( value, a + 1 ) ), model & ~( all << (size_t)( 63 - a ) ) );
        }
        EXPECT_EQ( zuIntBitSetLowest( value, 0 ), value );
        EXPECT_EQ( zuIntBitClearLowest( value, 0 ), value );
    }
}
