#include "zu/sys/zu_real.h"

#include "zu_test_support.h"

#include <limits>

static constexpr double EPSILON = 0x1p-52;
static constexpr double INFINITE = std::numeric_limits<double>::infinity();
static constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

TEST( Real, ComparesWithinAnAbsoluteTolerance )
{
    static constexpr std::tuple<double, double, ZU_INT, ZU_INT> ROWS[] = {
        { 1.0, 1.0 + EPSILON, 0, 0 },
        { 1.0, 1.0 + 2 * EPSILON, -1, 1 },
        { 0.0, EPSILON, 0, 0 },
        { -EPSILON / 2, EPSILON / 2, 0, 0 },
        { 0.0, EPSILON * 1.5, -1, 1 },
        { 1e10, 1e10 + 0x1p-19, -1, 1 }, // the next double: the tolerance is lost in the sum
        { -1e10, 1e10, -1, 1 },
        { INFINITE, INFINITE, 0, 0 },
        { -INFINITE, INFINITE, -1, 1 },
        { NOT_A_NUMBER, 0.0, 1, 1 },
        { NOT_A_NUMBER, INFINITE, 1, 1 },
        { NOT_A_NUMBER, NOT_A_NUMBER, 1, 1 },
    };
    for ( const auto &[ a, b, order, reverse ] : ROWS ) {
        SCOPED_TRACE( testing::Message() << a << " and " << b );
        EXPECT_EQ( zuRealCompare( a, b ), order );
        EXPECT_EQ( zuRealCompare( b, a ), reverse );
        EXPECT_EQ( zuRealEquals( a, b ), order == 0 );
        EXPECT_EQ( zuRealEquals( b, a ), order == 0 );
    }
    EXPECT_EQ( zuRealCompareInt( 3.0, 3 ), 0 );
    EXPECT_EQ( zuRealCompareInt( 2.5, 3 ), -1 );
    EXPECT_EQ( zuRealCompareInt( NOT_A_NUMBER, 3 ), 1 );
    EXPECT_EQ( zuRealCompareInt( 0x1p63, ZU_INT_MAX ), 0 ); // which rounds up to it
    EXPECT_EQ( zuRealEqualsInt( -3.0, -3 ), ZU_TRUE );
    EXPECT_EQ( zuRealEqualsInt( 3.5, 3 ), ZU_FALSE );
}

TEST( Real, KindsTruncationAndConversion )
{
    static constexpr std::tuple<double, double, ZU_INT> ROWS[] = {
        { 2.9, 2.0, 2 },
        { -0.9, -0.0, 0 },
        { 0x1p53 + 2, 0x1p53 + 2, ( ZU_INT{ 1 } << 53 ) + 2 },
        { 0x1.fffffffffffffp62, 0x1.fffffffffffffp62, ZU_INT_MAX - 1023 },
        { 0x1p63, 0x1p63, ZU_INT_MIN }, // what the processor gives
        { 0x1.0000000000001p63, 0x1.0000000000001p63, ZU_INT_MAX },
        { -0x1.0000000000001p63, -0x1.0000000000001p63, ZU_INT_MIN },
        { INFINITE, INFINITE, ZU_INT_MAX },
        { -INFINITE, -INFINITE, ZU_INT_MIN },
    };
    for ( const auto &[ value, truncated, integer ] : ROWS ) {
        SCOPED_TRACE( value );
        EXPECT_EQ( zuRealToInt( value ), integer );
        EXPECT_EQ( zuRealTrunc( value ), truncated );
        EXPECT_EQ( std::signbit( zuRealTrunc( value ) ), std::signbit( truncated ) );
        bool finite = value != INFINITE && value != -INFINITE;
        EXPECT_EQ( zuRealIsFinite( value ), finite );
        EXPECT_EQ( zuRealOk( value ), finite );
        EXPECT_EQ( zuRealIsNan( value ), ZU_FALSE );
    }
    EXPECT_EQ( zuRealToInt( NOT_A_NUMBER ), ZU_INT_MIN );
    EXPECT_TRUE( zuRealIsNan( zuRealTrunc( NOT_A_NUMBER ) ) );
    EXPECT_TRUE( zuRealIsNan( NOT_A_NUMBER ) && !zuRealIsFinite( NOT_A_NUMBER ) && !zuRealOk( NOT_A_NUMBER ) );
}
