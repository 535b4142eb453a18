#include "zu_test_support.h"

#include "zu/zu.h"

#include <array>
#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <pthread.h>
#include <random>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

static std::string readAll( FILE *file )
{
    std::string text;
    std::array<char, 4096> block;
    for ( size_t count; ( count = fread( block.data(), 1, block.size(), file ) ) > 0; ) {
        text.append( block.data(), count );
    }
    return text;
}

// The line of the report that begins with `label`, without the label; empty if there is none.
static std::string reportLine( const std::string &report, const std::string &label )
{
    size_t begin = report.find( "\n    " + label );
    if ( begin == std::string::npos ) {
        return "";
    }
    begin += 5 + label.size();
    return report.substr( begin, report.find( '\n', begin ) - begin );
}

void expectAbort( const char *expression, const std::function< void() > &statement, const char *message )
{
    int channel[ 2 ];
    ASSERT_EQ( pipe( channel ), 0 );
    fflush( nullptr );
    pid_t child = fork();
    ASSERT_GE( child, 0 );
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
    std::string report = readAll( errors );
    fclose( errors );
    int status = 0;
    waitpid( child, &status, 0 );
    EXPECT_TRUE( WIFSIGNALED( status ) && WTERMSIG( status ) == SIGABRT ) << "no abort: " << report;
    EXPECT_EQ( reportLine( report, "Expression: " ), expression ? expression : "" ) << report;
    EXPECT_EQ( reportLine( report, "Message   : " ), message ? message : "" ) << report;
}

void runThreads( int count, const std::function<void( int )> &body )
{
    // A thread is made in more time than many a test takes: without the gate one would be through before the next
    // begins.
    std::atomic<int> waiting{ count };
    std::vector<std::thread> threads;
    for ( int i = 0; i < count; i++ ) {
        threads.emplace_back( [ &, i ] {
            waiting--;
            while ( waiting > 0 ) {
                std::this_thread::yield();
            }
            body( i );
        } );
    }
    for ( std::thread &thread : threads ) {
        thread.join();
    }
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
void runRestarted( int64_t flags, const std::function<void()> &statement )
{
    if ( getenv( RESTARTED_FLAGS ) ) {
        statement();
        return;
    }
    const testing::TestInfo *test = testing::UnitTest::GetInstance()->current_test_info();
    std::string command = std::string( RESTARTED_FLAGS ) + "=" + std::to_string( flags ) + " " ZU_TEST_EMULATOR " " +
                          std::filesystem::read_symlink( "/proc/self/exe" ).string() +
                          " --gtest_filter=" + test->test_suite_name() + "." + test->name() + " 2>&1";
    runProgram( command );
}

int64_t startFlags()
{
    const char *flags = getenv( RESTARTED_FLAGS );
    flags = flags ? flags : getenv( COMMON_FLAGS );
    return flags ? strtoll( flags, nullptr, 0 ) : 0;
}

uint64_t testSeed()
{
    const char *seed = getenv( "ZU_TEST_SEED" );
    return seed ? strtoull( seed, nullptr, 10 ) : std::random_device{}();
}

// Under a sanitizer too an exhausted heap is the library's to report.
extern "C" const char *__asan_default_options();
extern "C" const char *__asan_default_options()
{
    return "allocator_may_return_null=1";
}
extern "C" const char *__tsan_default_options();
extern "C" const char *__tsan_default_options()
{
    return "allocator_may_return_null=1";
}
