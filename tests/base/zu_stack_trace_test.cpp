#include "zu_test_support.h"

static std::vector<std::string> trace( ZU_INT skip, ZU_INT maxLength )
{
    zu::Ref<ZU_STACK_TRACE> trace = zu::adopt( zuStackTraceCreate( skip, maxLength ) );
    zu::Ref<ZU_VECTOR> vector = zu::adopt( zuStackTraceVector( trace.get() ) );
    EXPECT_EQ( zuVectorLength( vector.get() ), zuStackTraceLength( trace.get() ) );
    std::vector<std::string> lines;
    for ( ZU_INT i = 0; i < zuStackTraceLength( trace.get() ); i++ ) {
        zu::Ref<ZU_STRING> line = zu::adopt( zuStackTraceAt( trace.get(), i ) );
        EXPECT_EQ( zuObjCompare( zuStringObj( line.get() ), zuVectorBacking( vector.get() )[ i ] ), 0 );
        lines.push_back( zu::toUtf8( line ) );
    }
    return lines;
}

// Calls `function` from the innermost of `depth` frames of its own.
__attribute__( ( noinline ) ) static void callFromDepth( int depth, const std::function<void()> &function )
{
    if ( depth > 1 ) {
        callFromDepth( depth - 1, function );
    } else {
        function();
    }
    __asm__ volatile( "" ); // something is left to do: no call is a jump
}

TEST( StackTrace, LinesHaveOneOfTwoForms )
{
    const char *const form = "^(.+\\([1-9][0-9]*\\+0x[0-9a-f]+\\): )?[^ ].*\\+0x[0-9a-f]+ \\[[0-9A-F]{16}\\]$";
    for ( const std::string &line : trace( 0, -1 ) ) {
        EXPECT_TRUE( matchesForm( line, form ) ) << line;
    }
}
TEST( StackTrace, BeginsWithItself )
{
    std::vector<std::string> lines = trace( 0, -1 );
    ASSERT_GE( lines.size(), 3u );
#ifdef ZU_TEST_BACKTRACE
    EXPECT_EQ( lines[ 0 ].find( "source/zu/base/zu_stack_trace.cpp(" ), 0u ) << lines[ 0 ];
    EXPECT_NE( lines[ 0 ].find( ": zuStackTraceCreate+0x" ), std::string::npos ) << lines[ 0 ];
    EXPECT_NE( lines[ 2 ].find( "BeginsWithItself" ), std::string::npos ) << lines[ 2 ];
    EXPECT_NE( lines[ 2 ].find( "zu_stack_trace_test.cpp(" ), std::string::npos ) << lines[ 2 ];
#endif
    // Skipping takes lines away at the front, and a limit at the end; only the caller's own position differs.
    std::vector<std::string> skipped = trace( 3, -1 );
    EXPECT_EQ( skipped, std::vector<std::string>( lines.begin() + 3, lines.end() ) );
    std::vector<std::string> limited = trace( 3, 2 );
    EXPECT_EQ( limited, std::vector<std::string>( lines.begin() + 3, lines.begin() + 5 ) );
}
TEST( StackTrace, EveryFrameIsALine )
{
    std::vector<std::string> shallow;
    std::vector<std::string> deep;
    callFromDepth( 1, [ & ] { shallow = trace( 0, -1 ); } );
    callFromDepth( 101, [ & ] { deep = trace( 0, -1 ); } );
    EXPECT_EQ( deep.size(), shallow.size() + 100 );
#ifdef ZU_TEST_BACKTRACE
    const char *const own = "zu_stack_trace_test\\.cpp\\([0-9]+\\+0x[0-9a-f]+\\): callFromDepth\\(.*\\)\\+0x";
    EXPECT_EQ( std::count_if( deep.begin(), deep.end(), [ = ]( auto &line ) { return matchesForm( line, own ); } ),
               101 );
#endif
}
TEST( StackTrace, EndsAfterFourThousandLines )
{
    callFromDepth( 4100, [] {
        EXPECT_EQ( trace( 0, -1 ).size(), 4000u );
        EXPECT_EQ( trace( 100, 5000 ).size(), 4000u );
    } );
}
TEST( StackTrace, MayBeEmpty )
{
    EXPECT_TRUE( trace( 0, 0 ).empty() );
    EXPECT_TRUE( trace( 1000000, -1 ).empty() );
}
TEST( StackTrace, ByManyThreads )
{
    runThreads( 4, []( int ) {
        for ( int i = 0; i < 5; i++ ) {
            EXPECT_EQ( trace( 0, 2 ).size(), 2u );
            zu___StackTraceUpdateSymbols();
        }
    } );
}
