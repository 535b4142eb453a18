#include "zu_test_platform.h"

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <pthread.h>
#include <regex.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

AbortedRun runAborting( const std::function<void()> &statement )
{
    int channel[ 2 ];
    EXPECT_EQ( pipe( channel ), 0 );
    fflush( nullptr );
    pid_t child = fork();
    EXPECT_GE( child, 0 );
    if ( child == 0 ) {
        const rlimit noCore = { 0, 0 };
        setrlimit( RLIMIT_CORE, &noCore );
        signal( SIGABRT, SIG_DFL );
        dup2( channel[ 1 ], STDERR_FILENO );
        close( channel[ 0 ] );
        close( channel[ 1 ] );
        statement();
        _exit( 0 );
    }
    close( channel[ 1 ] );
    FILE *errors = fdopen( channel[ 0 ], "r" );
    AbortedRun run;
    run.report = readAll( errors );
    fclose( errors );
    int status = 0;
    waitpid( child, &status, 0 );
    run.aborted = WIFSIGNALED( status ) && WTERMSIG( status ) == SIGABRT;
    return run;
}

bool abortsInAFork()
{
    return true;
}

void runOnSmallStack( const std::function<void()> &body )
{
    pthread_attr_t attributes;
    pthread_t thread;
    pthread_attr_init( &attributes );
    ASSERT_EQ( pthread_attr_setstacksize( &attributes, 128 * 1024 ), 0 );
    auto run = []( void *argument ) -> void * {
        ( *(const std::function<void()> *)argument )();
        return nullptr;
    };
    ASSERT_EQ( pthread_create( &thread, &attributes, run, const_cast<std::function<void()> *>( &body ) ), 0 );
    pthread_join( thread, nullptr );
    pthread_attr_destroy( &attributes );
}

std::string runProgram( const std::string &commandLine )
{
    FILE *program = popen( commandLine.c_str(), "r" );
    if ( !program ) {
        ADD_FAILURE() << "cannot run " << commandLine;
        return "";
    }
    std::string output = readAll( program );
    EXPECT_EQ( pclose( program ), 0 ) << commandLine << "\n" << output;
    return output;
}

// A forked process lacks the threads of the library, and has its flags; a new one runs the test by itself.
void runThisTest( const std::string &variable, const std::string &value )
{
    runProgram( variable + "=" + value + " " ZU_TEST_EMULATOR " " +
                std::filesystem::read_symlink( "/proc/self/exe" ).string() + " --gtest_filter=" + thisTest() +
                " 2>&1" );
}

// By the functions of C: g++ 12 warns of std::regex under the sanitizers.
bool matchesForm( const std::string &line, const char *form )
{
    regex_t compiled;
    EXPECT_EQ( regcomp( &compiled, form, REG_EXTENDED | REG_NOSUB ), 0 );
    bool result = regexec( &compiled, line.c_str(), 0, nullptr, 0 ) == 0;
    regfree( &compiled );
    return result;
}

void endAfter( unsigned seconds )
{
    alarm( seconds );
}
