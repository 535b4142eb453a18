#include "zu_test_platform.h"

#include <cstdio>

std::string readAll( FILE *file )
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
    AbortedRun run = runAborting( statement );
    if ( run.elsewhere ) {
        return;
    }
    EXPECT_TRUE( run.aborted ) << "no abort: " << run.report;
    EXPECT_EQ( reportLine( run.report, "Expression: " ), expression ? expression : "" ) << run.report;
    EXPECT_EQ( reportLine( run.report, "Message   : " ), message ? message : "" ) << run.report;
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

std::vector<std::string> divided( const std::string &text )
{
    std::vector<std::string> all( 1 );
    for ( char ch : text ) {
        ch == '|' ? all.emplace_back() : all.back() += ch;
    }
    return all;
}

std::string thisTest()
{
    const testing::TestInfo *test = testing::UnitTest::GetInstance()->current_test_info();
    return std::string( test->test_suite_name() ) + "." + test->name();
}
void runRestarted( int64_t flags, const std::function<void()> &statement )
{
    if ( getenv( RESTARTED_FLAGS ) ) {
        statement();
    } else {
        runThisTest( RESTARTED_FLAGS, std::to_string( flags ) );
    }
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
