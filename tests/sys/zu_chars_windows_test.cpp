#include "zu/zu.h"

#include <gtest/gtest.h>
#include <string>
#include <windows.h>

// Of the thread, which may have another one than the process
class CharsCodePage : public testing::Test {
protected:
    LCID before = GetThreadLocale();

    void SetUp() override
    {
        ASSERT_TRUE( SetThreadLocale( MAKELCID( MAKELANGID( LANG_GREEK, SUBLANG_DEFAULT ), SORT_DEFAULT ) ) );
    }
    void TearDown() override
    {
        SetThreadLocale( before );
    }
};
static std::u32string read( const std::string &bytes )
{
    ZU_CHAR chars[ 300 ];
    ZU_INT length = zuCharsConvertFromCstr( chars, 300, bytes.data(), (ZU_INT)bytes.size() );
    return { chars, chars + length };
}
static std::string write( const std::u32string &chars )
{
    char bytes[ 300 ];
    ZU_INT length = zuCharsConvertToCstr( bytes, 300, (const ZU_CHAR *)chars.data(), (ZU_INT)chars.size(), ZU_FALSE );
    return { bytes, (size_t)length };
}
TEST_F( CharsCodePage, IsThatOfTheThread )
{
    EXPECT_EQ( read( "\xE1\x80"
                     "a" ),
               U"\u03B1\u20ACa" );
    EXPECT_EQ( write( U"\u03B1\u20ACa" ), "\xE1\x80"
                                          "a" );
    std::string bytes;
    for ( int i = 0; i < 250; i++ ) {
        bytes += (char)( 0xE1 + i % 20 );
    }
    EXPECT_EQ( write( read( bytes ) ), bytes );
    // Nothing that merely looks alike, and one for each unit of UTF-16
    EXPECT_EQ( write( U"\u0101\u4E00\U0001F600x" ), "????x" );
    char part[ 2 ] = {};
    EXPECT_EQ( zuCharsConvertToCstr( part, 1, (const ZU_CHAR *)U"\u03B1\u03B2", 2, ZU_FALSE ), 2 );
    EXPECT_EQ( part, std::string( "\xE1" ) ) << "as much as there is room for";
}
