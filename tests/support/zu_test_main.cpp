#include "zu_test_support.h"

#include "zu/zu.h"

#include <cstdlib>

// The library runs for the whole of an executable; at its end no object may be left.
class LibraryEnvironment : public testing::Environment {
public:
    void SetUp() override
    {
        const char *flags = getenv( RESTARTED_FLAGS );
        zuRuntimeStartup( flags ? strtoll( flags, nullptr, 10 ) : 0, -1, nullptr, "zu-test", "Tests of zu", "1.0" );
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
