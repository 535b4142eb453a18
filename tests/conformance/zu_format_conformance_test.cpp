// Numbers against what the C library makes of them, and read back, over random values.

#include "zu_test_string.h"

#include <cstdio>

static constexpr int ROUNDS = 20000;

class FormatConformance : public testing::Test {
protected:
    int64_t below( int64_t end )
    {
        return (int64_t)random.below( (size_t)end );
    }
    // Every length of number is as likely as another.
    int64_t anyInt()
    {
        return (int64_t)random() >> below( 64 );
    }
    SeededRandom random;
};

// The count of decimal digits is an estimate that is corrected, and each power of ten is where that may fail.
TEST_F( FormatConformance, PowersOfTen )
{
    for ( int64_t power = 1; power <= INT64_MAX / 10; power *= 10 ) {
        for ( int64_t value : { power - 1, power, -power, power * 9, INT64_MAX / power } ) {
            ASSERT_EQ( takeText( zuFormatEncodeInt( value, 10, 0, 0 ) ), std::to_string( value ) );
        }
    }
}
TEST_F( FormatConformance, IntegersInAllBasesAreReadBack )
{
    for ( int i = 0; i < ROUNDS; i++ ) {
        int64_t value = anyInt();
        int64_t base = 2 + below( 35 );
        std::string text = takeText( zuStringCreateFromFormatCstr( "%^!*i", -1, base, value ) );
        ASSERT_EQ( strtoll( text.c_str(), nullptr, (int)base ), value ) << text << " base " << base;
        ZU_STRING *zus = zuStringCreateFromFormatCstr( "%##'!*i", -1, base, value );
        ZU_INT decoded;
        ZU_INT consumed;
        ASSERT_TRUE( zuFormatTryDecodeInt( zus, 0, zuStringLength( zus ), -1, &decoded, &consumed ) );
        ASSERT_EQ( decoded, value ) << takeText( zus );
        zuStringRelease( zus );
    }
}

// Where number * 10^precision is a double, no step rounds, and the digits are those of the exact value, cut off.
TEST_F( FormatConformance, ExactRealsAreCutOff )
{
    for ( int i = 0; i < ROUNDS; i++ ) {
        double value = std::ldexp( (double)( below( 1 << 20 ) - ( 1 << 19 ) ), -(int)below( 20 ) );
        int precision = 1 + (int)below( 10 );
        char exactChars[ 64 ];
        snprintf( exactChars, sizeof exactChars, "%.30f", value );
        std::string exact = exactChars;
        std::string expected = exact.substr( 0, exact.find( '.' ) + 1 + (size_t)precision );
        ASSERT_EQ( takeText( zuStringCreateFromFormatCstr( "%.*r", -1, (ZU_INT)precision, value ) ), expected )
            << exact;
    }
}

TEST_F( FormatConformance, RealsInAllBasesAreReadBack )
{
    for ( int i = 0; i < ROUNDS; i++ ) {
        double value = std::ldexp( (double)anyInt(), (int)below( 960 ) - 30 );
        int64_t base = 2 + below( 35 );
        ZU_STRING *zus = zuFormatEncodeReal( value, base, 0, 40, 0 );
        double decoded;
        ZU_INT consumed;
        ASSERT_TRUE( zuFormatTryDecodeReal( zus, 0, zuStringLength( zus ), base, &decoded, &consumed ) );
        ASSERT_EQ( consumed, zuStringLength( zus ) ) << "a digit that is none of the base";
        ASSERT_NEAR( decoded, value, std::fabs( value ) * 1e-12 + 1e-12 ) << takeText( zus );
        zuStringRelease( zus );
    }
}
