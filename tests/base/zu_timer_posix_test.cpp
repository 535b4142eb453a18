#include "zu_test_support.h"

#include <csignal>
#include <unistd.h>

// What is sent to the process is for the program's threads: a signal that all of those block waits for them.
TEST( Timer, LeavesSignalsToTheProgram )
{
    runRestarted( 0, [] {
        for ( int number : { SIGTERM, SIGINT, SIGHUP, SIGUSR1, SIGCHLD, SIGRTMIN } ) {
            sigset_t one;
            sigemptyset( &one );
            sigaddset( &one, number );
            pthread_sigmask( SIG_BLOCK, &one, nullptr );
            kill( getpid(), number );
            int received = 0;
            EXPECT_EQ( sigwait( &one, &received ), 0 );
            EXPECT_EQ( received, number );
        }
    } );
}
