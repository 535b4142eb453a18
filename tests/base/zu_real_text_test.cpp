// Against the C library, which rounds correctly: it reads what is written here, and says what is to be read.
// ZU_TEST_REALS is how many doubles at random come back, and three times how many other texts are compared; 300,000
// without it.

#include "zu/base/zu_real_text.h"

#include "zu_test_string.h"

#include <charconv>
#include <limits>

static int rounds()
{
    const char *wanted = getenv( "ZU_TEST_REALS" );
    return wanted ? atoi( wanted ) : 300000;
}
static double read( const std::string &text )
{
    double value;
    ZU_INT consumed;
    EXPECT_TRUE( zuRealTextTryReadUtf8( text.c_str(), -1, &value, &consumed ) ) << text;
    EXPECT_EQ( consumed, (ZU_INT)text.size() ) << text;
    return value;
}
static double anyDouble( uint64_t bits )
{
    double value;
    memcpy( &value, &bits, sizeof value );
    return value;
}
static uint64_t bitsOf( double value )
{
    uint64_t bits;
    memcpy( &bits, &value, sizeof bits );
    return bits;
}
// Written as short as can be, the nearest of these, and read back.
static void expectShortest( double value )
{
    char text[ ZU_REAL_TEXT_SHORTEST_MAX + 1 ] = {};
    ZU_INT length = zuRealTextWriteShortest( text, value );
    ASSERT_LE( length, ZU_REAL_TEXT_SHORTEST_MAX );
    double parsed = 0;
    std::from_chars( text, text + length, parsed ); // strtod does not round correctly everywhere
    ASSERT_EQ( bitsOf( parsed ), bitsOf( value ) ) << text;
    ASSERT_EQ( bitsOf( read( text ) ), bitsOf( value ) ) << text;
    char scientific[ 64 ];
    auto end = std::to_chars( scientific, scientific + sizeof scientific, value, std::chars_format::scientific ).ptr;
    auto digits = []( std::string all ) {
        all = all.substr( 0, all.find( 'e' ) );
        std::erase_if( all, []( char ch ) { return ch < '0' || ch > '9'; } );
        all.erase( 0, all.find_first_not_of( '0' ) );
        return all.erase( all.find_last_not_of( '0' ) + 1 );
    };
    ASSERT_EQ( digits( text ), digits( std::string( scientific, end ) ) ) << text;
}

TEST( RealText, ComesBack )
{
    SeededRandom random;
    for ( int exponent = -1074; exponent < 1024; exponent++ ) {
        expectShortest( std::ldexp( 1, exponent ) );
        expectShortest( std::nextafter( std::ldexp( 1, exponent ), 0 ) );
        expectShortest( -std::nextafter( std::ldexp( 1, exponent ), HUGE_VAL ) );
    }
    for ( int power = -323; power <= 308; power++ ) {
        expectShortest( strtod( ( "1e" + std::to_string( power ) ).c_str(), nullptr ) );
    }
    for ( int round = rounds(); round > 0 && !HasFatalFailure(); round-- ) {
        double value = anyDouble( random() );
        if ( std::isfinite( value ) ) {
            expectShortest( value );
        }
        expectShortest( (double)(int64_t)random() / (double)( 1ull << random() % 64 ) );
        expectShortest( (double)( random() % 1000000 ) / 1000 );
    }
}
TEST( RealText, TakesTheShorterForm )
{
    const std::pair<double, const char *> rows[] = {
        { 0.0, "0" },
        { -0.0, "-0" },
        { 1e-9, "1e-9" },
        { 12345.015625, "12345.015625" },
        { 0.001, "0.001" },
        { 0.00001, "1e-5" },
        { 100000.0, "1e5" },
        { 1000.0, "1000" },
        { 123456789012345680.0, "123456789012345680" },
        { 5e-324, "5e-324" },
        { -1.7976931348623157e308, "-1.7976931348623157e308" },
        { -HUGE_VAL, "-inf" },
        { std::numeric_limits<double>::quiet_NaN(), "nan" },
        { 9007199254740993.0, "9007199254740992" },
    };
    for ( const auto &[ value, text ] : rows ) {
        EXPECT_EQ( takeText( zuRealTextShortest( value ) ), text );
    }
}
TEST( RealText, RoundsGivenDigitsExactly )
{
    SeededRandom random;
    // By the C++ library, which does not ask the C library for this
    auto expectDigits = []( double value, int digits ) {
        char text[ 1600 ];
        auto end = std::to_chars( text, text + sizeof text, value, std::chars_format::fixed, digits ).ptr;
        ASSERT_EQ( takeText( zuRealTextFixed( value, digits ) ), std::string( text, end ) );
        end = std::to_chars( text, text + sizeof text, value, std::chars_format::scientific, digits ).ptr;
        std::string wanted( text, end );
        for ( size_t at = wanted.find( 'e' ) + 1; wanted[ at ] == '+' ||
                                                  ( wanted[ at ] == '-' && wanted[ at + 1 ] == '0' ) ||
                                                  ( wanted[ at ] == '0' && at + 1 < wanted.size() ); ) {
            wanted.erase( at + ( wanted[ at ] == '-' ), 1 );
        }
        ASSERT_EQ( takeText( zuRealTextScientific( value, digits + 1 ) ), wanted );
        ASSERT_TRUE( digits < 16 || bitsOf( read( wanted ) ) == bitsOf( value ) ) << wanted;
    };
    for ( int round = rounds() / 3; round > 0 && !HasFatalFailure(); round-- ) {
        double value = anyDouble( random() );
        if ( std::isfinite( value ) ) {
            expectDigits( value, (int)( random() % ( random() % 64 ? 25 : ZU_REAL_TEXT_DIGITS_MAX ) ) );
        }
        // Many are halves in their last digit.
        expectDigits( (double)(int64_t)( random() >> random() % 64 ) / (double)( 1 << random() % 12 ),
                      (int)( random() % 18 ) );
    }
    EXPECT_EQ( takeText( zuRealTextFixed( 0.125, 2 ) ), "0.12" );
    EXPECT_EQ( takeText( zuRealTextFixed( 0.375, 2 ) ), "0.38" );
    EXPECT_EQ( takeText( zuRealTextFixed( 2.5, 0 ) ), "2" );
    EXPECT_EQ( takeText( zuRealTextFixed( 1.005, 2 ) ), "1.00" );
    EXPECT_EQ( takeText( zuRealTextFixed( -HUGE_VAL, 2 ) ), "-inf" );
    EXPECT_EQ( takeText( zuRealTextFixed( 5e-324, 1074 ) ).size(), 1076u );
    EXPECT_EQ( takeText( zuRealTextScientific( 1.25e-9, 3 ) ), "1.25e-9" );
    EXPECT_EQ( takeText( zuRealTextScientific( 9.96e22, 2 ) ), "1.0e23" );
    EXPECT_EQ( takeText( zuRealTextScientific( 0, 1 ) ), "0e0" );
    expectAbort( "decimals <= ZU_REAL_TEXT_DIGITS_MAX", [] { zuRealTextFixed( 1, ZU_REAL_TEXT_DIGITS_MAX + 1 ); } );
    expectAbort( "digits >= 1", [] { zuRealTextScientific( 1, 0 ); } );
}

// Digits at random, of which many lie halfway between two doubles, or nearly so
TEST( RealText, ReadsAsTheLibraryDoes )
{
    SeededRandom random;
    for ( int round = rounds() / 3; round > 0 && !HasFailure(); round-- ) {
        std::string text = random() % 4 ? "" : "-";
        if ( random() % 3 == 0 ) { // the exact half of two neighbours, and perhaps a little more
            double value = anyDouble( random() % ( 0x7FEull << 52 ) );
            char exact[ 1600 ];
            snprintf( exact, sizeof exact, "%.1080Lf", ( (long double)value + std::nextafter( value, HUGE_VAL ) ) / 2 );
            text += exact;
            text += random() % 2 ? "1" : "";
        } else {
            size_t length = random() % 8 ? 1 + random() % 25 : 1 + random() % 900;
            size_t point = random() % ( length + 1 );
            for ( size_t i = 0; i < length; i++ ) {
                text += i == point ? "." : "";
                text += (char)( '0' + ( random() % 3 ? random() % 10 : 0 ) );
            }
            text += random() % 4 ? "e" + std::to_string( (int)( random() % 700 ) - 350 ) : "";
        }
        EXPECT_EQ( bitsOf( read( text ) ), bitsOf( strtod( text.c_str(), nullptr ) ) ) << text;
    }
    for ( const char *text :
          { "9007199254740993", "9007199254740993.0000000000000000000000000000000000000000001", "1e400", "1e-400",
            "2.4703282292062327e-324", "2.4703282292062328e-324", ".5", "5.", "0e99999999999999999999",
            "1e-99999999999999999999", "+1", "8.5e3", "1.7976931348623158e308", "1.7976931348623159e308" } ) {
        EXPECT_EQ( bitsOf( read( text ) ), bitsOf( strtod( text, nullptr ) ) ) << text;
    }
    EXPECT_EQ( read( "Infinity" ), HUGE_VAL );
    EXPECT_TRUE( std::isnan( read( "-NaN" ) ) );
}
TEST( RealText, StopsWhereTheNumberEnds )
{
    const std::pair<const char *, ZU_INT> rows[] = { { "", 0 },      { ".", 0 },     { "-", 0 },    { "e5", 0 },
                                                     { " 1", 0 },    { "1.2.3", 3 }, { "1e", 1 },   { "1e+", 1 },
                                                     { "1.e5x", 4 }, { "infin", 3 }, { "0x10", 1 }, { "na", 0 },
                                                     { "1,5", 1 } };
    for ( const auto &[ text, wanted ] : rows ) {
        double value;
        ZU_INT consumed;
        EXPECT_EQ( zuRealTextTryReadUtf8( text, -1, &value, &consumed ), wanted > 0 ) << text;
        EXPECT_EQ( consumed, wanted ) << text;
        EXPECT_FALSE( zuRealTextTryRead( string( text ).get(), &value ) ) << text;
        EXPECT_EQ( value, 0 );
    }
}
