#include "zu_test_support.h"

#include <sys/wait.h>
#include <unistd.h>

typedef std::vector<uint8_t> BYTES;

static BYTES drawBytes( size_t count )
{
    BYTES bytes( count );
    zuRandomBytes( bytes.data(), (ZU_INT)count );
    return bytes;
}

// A child shares no byte of the pool with its parent, and gets some even if another thread was drawing at the fork.
TEST( Random, ForkedChildHasItsOwn )
{
    std::atomic<bool> done{ false };
    std::thread drawing( [ & ] {
        while ( !done ) {
            zuRandomByte();
        }
    } );
    for ( int round = 0; round < 30; round++ ) {
        int channel[ 2 ];
        ASSERT_EQ( pipe( channel ), 0 );
        pid_t child = fork();
        if ( child == 0 ) {
            alarm( 20 );
            BYTES bytes = drawBytes( 128 );
            _exit( write( channel[ 1 ], bytes.data(), bytes.size() ) == 128 ? 0 : 1 );
        }
        BYTES mine = drawBytes( 128 );
        BYTES theirs( 128 );
        int status;
        ASSERT_EQ( waitpid( child, &status, 0 ), child );
        ASSERT_EQ( status, 0 );
        ASSERT_EQ( read( channel[ 0 ], theirs.data(), theirs.size() ), 128 );
        close( channel[ 0 ] );
        close( channel[ 1 ] );
        for ( size_t i = 0; i + 8 <= theirs.size(); i++ ) {
            EXPECT_EQ( std::search( mine.begin(), mine.end(), theirs.begin() + (long)i, theirs.begin() + (long)i + 8 ),
                       mine.end() );
        }
    }
    done = true;
    drawing.join();
}
