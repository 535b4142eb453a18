#include "zu_test_platform.h"

#include <cstdio>

// Where reports of the library go, which ask for flags that print.
static void printToErrors( const ZU_CHAR *chs, ZU_INT chsLength )
{
    std::string text( chs, chs + chsLength ); // such reports are in ASCII, or not to be compared
    fwrite( text.data(), 1, text.size(), stderr );
}

// The library runs for the whole of an executable; at its end no object may be left.
class LibraryEnvironment : public testing::Environment {
public:
    void SetUp() override
    {
        prepareReports();
        zuRuntimeStartup( startFlags(), -1, getenv( COMMON_FLAGS ) ? printToErrors : nullptr, "zu-test", "Tests of zu",
                          "1.0" );
    }
    void TearDown() override
    {
        zuRuntimeShutdown();
        EXPECT_EQ( zuModule()->sorts, 0u ) << "sorts with live objects";
    }
};

int main( int argc, char **argv )
{
    testing::InitGoogleTest( &argc, argv );
    testing::AddGlobalTestEnvironment( new LibraryEnvironment );
    return RUN_ALL_TESTS();
}
