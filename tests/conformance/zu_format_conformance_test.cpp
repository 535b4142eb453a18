// The format language against the C library's printf wherever both say the same, over random values.

#include "zu/base/zu_format.h"
#include "zu/base/zu_string_format.h"
#include "zu/sys/zu_mem.h"
#include "zu_test_support.h"

#include <cmath>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <random>

static constexpr int ROUNDS = 20000;

static std::string takeText( ZU_STRING *zus )
{
    char *chars = zuStringConvertToUtf8( zus, ZU_TRUE, nullptr );
    std::string text = chars;
    zuMemFree( chars );
    zuStringRelease( zus );
    return text;
}
// The formats are put together at random.
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
static std::string printed( const char *fmt, ... )
{
    va_list args;
    va_start( args, fmt );
    char *text = nullptr;
    EXPECT_GE( vasprintf( &text, fmt, args ), 0 );
    va_end( args );
    std::string result = text;
    free( text );
    return result;
}

class FormatConformance : public testing::Test {
protected:
    int64_t below( int64_t end )
    {
        return (int64_t)( random() % (uint64_t)end );
    }
    // Every length of number is as likely as another.
    int64_t anyInt()
    {
        return (int64_t)random() >> below( 64 );
    }
    std::string anyFlags( const char *flags )
    {
        std::string result;
        for ( int64_t count = below( 4 ); count > 0; count-- ) {
            result += flags[ below( (int64_t)strlen( flags ) ) ];
        }
        return result;
    }
    std::string anyWidth()
    {
        return below( 2 ) ? std::to_string( 1 + below( 90 ) ) : "";
    }
    // Any finite double.
    double anyReal()
    {
        for ( ;; ) {
            uint64_t bits = random();
            double value;
            memcpy( &value, &bits, sizeof value );
            if ( std::isfinite( value ) ) {
                return value;
            }
        }
    }

    uint64_t seed = std::random_device()();
    std::mt19937_64 random{ seed };
};

TEST_F( FormatConformance, DecimalIntegersAsByPrintf )
{
    for ( int i = 0; i < ROUNDS; i++ ) {
        int64_t value = anyInt();
        std::string front = "%" + anyFlags( "-+ 0" ) + anyWidth();
        ASSERT_EQ( takeText( zuStringCreateFromFormatCstr( ( front + "i" ).c_str(), -1, value ) ),
                   printed( ( front + "ld" ).c_str(), value ) )
            << front << " seed " << seed;
    }
}
// The count of decimal digits is an estimate that is corrected, and each power of ten is where that may fail.
TEST_F( FormatConformance, PowersOfTenAsByPrintf )
{
    for ( int64_t power = 1; power <= INT64_MAX / 10; power *= 10 ) {
        for ( int64_t value : { power - 1, power, -power, power * 9, INT64_MAX / power } ) {
            ASSERT_EQ( takeText( zuFormatEncodeInt( value, 10, 0, 0 ) ), std::to_string( value ) );
        }
    }
}
TEST_F( FormatConformance, HexadecimalAndOctalIntegersAsByPrintf )
{
    for ( int i = 0; i < ROUNDS; i++ ) {
        int64_t value = anyInt() & INT64_MAX;
        std::string front = "%" + anyFlags( "-0" ) + anyWidth();
        ASSERT_EQ( takeText( zuStringCreateFromFormatCstr( ( front + "X" ).c_str(), -1, value ) ),
                   printed( ( front + "lx" ).c_str(), value ) )
            << front << " seed " << seed;
        ASSERT_EQ( takeText( zuStringCreateFromFormatCstr( ( front + "!8i" ).c_str(), -1, value ) ),
                   printed( ( front + "lo" ).c_str(), value ) )
            << front << " seed " << seed;
    }
}
TEST_F( FormatConformance, IntegersInAllBasesAreReadBack )
{
    for ( int i = 0; i < ROUNDS; i++ ) {
        int64_t value = anyInt();
        int64_t base = 2 + below( 35 );
        std::string text =
            takeText( zuStringCreateFromFormatCstr( ( "%" + anyFlags( "^+" ) + "!*i" ).c_str(), -1, base, value ) );
        ASSERT_EQ( strtoll( text.c_str(), nullptr, (int)base ), value ) << text << " base " << base << " seed " << seed;
        ZU_STRING *zus = zuStringCreateFromFormatCstr( "%##'!*i", -1, base, value );
        ZU_INT decoded;
        ZU_INT consumed;
        ASSERT_TRUE( zuFormatTryDecodeInt( zus, 0, zuStringLength( zus ), -1, &decoded, &consumed ) );
        ASSERT_EQ( decoded, value ) << takeText( zus ) << " seed " << seed;
        zuStringRelease( zus );
    }
}
TEST_F( FormatConformance, TextsAsByPrintf )
{
    for ( int i = 0; i < ROUNDS; i++ ) {
        std::string text;
        for ( int64_t length = below( 100 ); length > 0; length-- ) {
            text += (char)( ' ' + below( 95 ) );
        }
        std::string front = "%" + anyFlags( "-" ) + anyWidth();
        if ( below( 2 ) ) {
            front += "." + std::to_string( below( 100 ) );
        }
        std::string expected = printed( ( front + "s" ).c_str(), text.c_str() );
        ASSERT_EQ( takeText( zuStringCreateFromFormatCstr( ( front + "lc" ).c_str(), -1, text.c_str() ) ), expected )
            << front << " seed " << seed;
        ZU_STRING *zus = zuStringCreateFromAscii( text.data(), (ZU_INT)text.size() );
        ASSERT_EQ( takeText( zuStringCreateFromFormatCstr( ( "%~" + front.substr( 1 ) + "s" ).c_str(), -1, zus ) ),
                   expected )
            << front << " seed " << seed;
    }
}

// Where number * 10^precision is a double, no step rounds, and the digits are those of the exact value, cut off.
TEST_F( FormatConformance, ExactRealsAreCutOff )
{
    for ( int i = 0; i < ROUNDS; i++ ) {
        double value = std::ldexp( (double)( below( 1 << 20 ) - ( 1 << 19 ) ), -(int)below( 20 ) );
        int precision = 1 + (int)below( 10 );
        std::string exact = printed( "%.30f", value );
        std::string expected = exact.substr( 0, exact.find( '.' ) + 1 + (size_t)precision );
        ASSERT_EQ( takeText( zuStringCreateFromFormatCstr( "%.*r", -1, (ZU_INT)precision, value ) ), expected )
            << exact << " seed " << seed;
        std::string front = "%" + anyFlags( "-+ 0" ) + anyWidth();
        if ( printed( "%.6f", value ) == exact.substr( 0, exact.find( '.' ) + 7 ) ) {
            ASSERT_EQ( takeText( zuStringCreateFromFormatCstr( ( front + "r" ).c_str(), -1, value ) ),
                       printed( ( front + "f" ).c_str(), value ) )
                << front << " seed " << seed;
        }
    }
}

// The definition of the digits, step by step.
static std::string definedReal( double value, double base, int precision )
{
    const char *digits = "0123456789abcdefghijklmnopqrstuvwxyz";
    std::string text = value < 0.0 ? "-" : "";
    double power = 1.0;
    double rest = std::trunc( value / base );
    while ( rest != 0.0 ) {
        power *= base;
        rest = std::trunc( rest / base );
    }
    rest = value;
    while ( power >= 1.0 ) {
        double digit = std::trunc( rest / power );
        volatile double product = digit * power; // rounded ahead of the subtraction
        rest -= product;
        power = std::trunc( power / base );
        text += digits[ (int)std::fabs( digit ) ];
    }
    text += '.';
    for ( int i = 0; i < precision; i++ ) {
        double integer;
        double fraction = std::modf( value, &integer );
        text += digits[ (int)std::fabs( std::trunc( base * fraction ) ) ];
        value *= base;
    }
    return text;
}
TEST_F( FormatConformance, RealsAsDefined )
{
    for ( int i = 0; i < ROUNDS; i++ ) {
        // Half of them in the range of daily use; above 2^53 the definition is sound in these bases only.
        double value = below( 2 ) ? anyReal() : (double)anyInt() / (double)( 1 + below( 1000000 ) );
        double base = std::fabs( value ) < 0x1p53 ? (double)( 2 + below( 35 ) ) : below( 2 ) ? 10.0 : 16.0;
        int precision = 1 + (int)below( 40 );
        ASSERT_EQ( takeText( zuFormatEncodeReal( value, (ZU_INT)base, 0, precision, 0 ) ),
                   definedReal( value, base, precision ) )
            << printed( "%a", value ) << " base " << base << " seed " << seed;
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
        ASSERT_NEAR( decoded, value, std::fabs( value ) * 1e-12 + 1e-12 ) << takeText( zus ) << " seed " << seed;
        zuStringRelease( zus );
    }
}
