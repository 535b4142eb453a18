#include "zu/zu.hpp"

#include "zu_test_support.h"

static_assert( sizeof( zu::Ref<ZU_STRING> ) == sizeof( ZU_STRING * ) );

enum class Colour : uint8_t { red = 3 };

static bool equals( const zu::Ref<ZU_STRING> &text, const char *expected )
{
    return zuStringEqualsCstr( text.get(), expected, -1 );
}

TEST( Ref, CountsReferences )
{
    ZU_STRING *string = zuStringCreateFromAscii( "a", -1 );
    {
        zu::Ref<ZU_STRING> owner = zu::adopt( string );
        zu::Ref<ZU_STRING> copy = owner;
        zu::Ref<ZU_STRING> shared = zu::share( string );
        EXPECT_EQ( ZU_REF_RETAIN_COUNT( string ), 3u );
        zu::Ref<ZU_STRING> moved = std::move( copy );
        EXPECT_EQ( ZU_REF_RETAIN_COUNT( string ), 3u );
        moved = nullptr;
        EXPECT_EQ( ZU_REF_RETAIN_COUNT( string ), 2u );
        shared = *&shared;
        EXPECT_EQ( ZU_REF_RETAIN_COUNT( string ), 2u );
        zuStringAppendChar( shared.inOut(), 'b' );
        EXPECT_TRUE( equals( shared, "ab" ) );
        EXPECT_EQ( owner.release(), string );
        EXPECT_FALSE( owner );
    }
    EXPECT_EQ( ZU_REF_RETAIN_COUNT( string ), 1u );
    EXPECT_FALSE( zu::share<ZU_STRING>( nullptr ) );
    zuStringRelease( string );
}

TEST( HppFormat, WidensArguments )
{
    EXPECT_TRUE( equals( zu::format( "%i %i %i %i %i", (int8_t)-1, (uint16_t)65535, -2147483647 - 1, 7u, INT64_MIN ),
                         "-1 65535 -2147483648 7 -9223372036854775808" ) );
    EXPECT_TRUE( equals( zu::format( "%b %i %c %*i", true, Colour::red, U'x', 3, 'A' ), "true 3 x  65" ) );
    EXPECT_TRUE( equals( zu::format( "%r %.1r", 0.5f, 2.5L ), "0.500000 2.5" ) );
}
TEST( HppFormat, PassesPointersAsTheyAre )
{
    zu::Ref<ZU_STRING> text = zu::format( "%lc%lw", "ab", u"cd" );
    char array[] = "ef";
    EXPECT_TRUE(
        equals( zu::format( "%s %o %s %lc", text, zuStringObj( text.get() ), nullptr, array ), "abcd abcd null ef" ) );
    EXPECT_TRUE(
        equals( zu::format( "%~s%~s", zu::share( text.get() ).release(), zu::format( "%i", 1 ).release() ), "abcd1" ) );
    EXPECT_EQ( ZU_REF_RETAIN_COUNT( text.get() ), 1u );
}
TEST( HppFormat, ChangesStrings )
{
    zu::Ref<ZU_STRING> fmt = zu::adopt( zuStringCreateFromAscii( "<%i>", -1 ) );
    zu::Ref<ZU_STRING> text = zu::format( fmt.get(), 0 );
    zu::appendFormat( text.inOut(), "%i", 1 );
    zu::appendFormat( text.inOut(), fmt.get(), 2 );
    zu::insertFormat( text.inOut(), 3, "%i", 3 );
    zu::insertFormat( text.inOut(), 3, fmt.get(), 4 );
    zu::prependFormat( text.inOut(), "%i", 5 );
    zu::prependFormat( text.inOut(), fmt.get(), 6 );
    EXPECT_TRUE( equals( text, "<6>5<0><4>31<2>" ) );
}
