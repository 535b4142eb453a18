#include "zu_print_test.h"
#include "zu/runtime/zu_runtime_internal.h"
#include "zu_test_string.h"

// What the print function has received, one element a call
static std::vector<std::u32string> printed;

static void printFunction( const ZU_CHAR *chs, ZU_INT chsLength )
{
    printed.emplace_back( chs, chs + chsLength );
}

class Print : public testing::Test {
protected:
    void SetUp() override
    {
        printed.clear();
        logged.clear();
        zu___RuntimePrintFunc = printFunction;
    }
    void TearDown() override
    {
        zu___RuntimePrintFunc = nullptr;
    }
};

TEST_F( Print, LinesAndStackTraces )
{
    zu::Ref<ZU_VECTOR> lines = zu::adopt( zuVectorCreate() );
    zuPrintLines( lines.get() );
    zuDebugPrintLines( lines.get() );
    EXPECT_TRUE( printed.empty() && logged.empty() );
    zuVectorAppendStringCstr( lines.inOut(), "100 %s\n", -1 );
    zuVectorAppendInt( lines.inOut(), 7 );
    zuPrintLines( lines.get() );
    EXPECT_EQ( printed, ( std::vector<std::u32string>{ U"100 %s\n", U"7" } ) );
    zuDebugPrintLines( lines.get() );
    EXPECT_EQ( logged.size(), 2u );
    logged.clear();

    for ( void ( *printStackTrace )() : { zuPrintStackTrace, zuDebugPrintStackTrace } ) {
        printed.clear();
        printStackTrace();
        zu::Ref<ZU_STACK_TRACE> own = zu::adopt( zuStackTraceCreate( 1, -1 ) );
        ASSERT_EQ( (ZU_INT)printed.size(), zuStackTraceLength( own.get() ) + 1 ) << "the function itself is a line too";
        zu::Ref<ZU_STRING> last = zu::adopt( zuStackTraceAt( own.get(), zuStackTraceLength( own.get() ) - 1 ) );
        EXPECT_TRUE(
            zuStringEqualsChars( last.get(), (const ZU_CHAR *)printed.back().data(), (ZU_INT)printed.back().size() ) );
    }
    EXPECT_TRUE( logged.empty() );
}
TEST_F( Print, OnTheStreamsOfC )
{
    std::u32string text( 700, U'é' ); // more than is written at a time
    text += U"\xD83D\xDE00\xDE00\xD83D";
    std::string expected;
    for ( int i = 0; i < 700; i++ ) {
        expected += "é";
    }
    expected += "\U0001F600\uFFFD\uFFFD";
    for ( size_t shift : { 0, 2 } ) { // the last code point of a piece ends with it, or not
        testing::internal::CaptureStdout();
        zuPrintToStdout( (const ZU_CHAR *)text.data() + shift / 2, (ZU_INT)( text.size() - shift / 2 ) );
        EXPECT_EQ( testing::internal::GetCapturedStdout(), expected.substr( shift ) );
    }
    testing::internal::CaptureStderr();
    zuPrintToStderr( (const ZU_CHAR *)U"!", 1 );
    zuPrintToStderr( nullptr, 0 );
    EXPECT_EQ( testing::internal::GetCapturedStderr(), "!" );
    expectAbort( "chsLength == 0 || chs", [] { zuPrintToStderr( nullptr, 1 ); } );
}
TEST_F( Print, CallsComeOneAtATime )
{
    // The print function of this suite is not safe for threads: what it has lost or torn shows in the count.
    static constexpr int THREADS = 4;
    static constexpr int LINES = 2000;
    runThreads( THREADS, []( int ) {
        for ( int line = 0; line < LINES; line++ ) {
            zuRuntimePrint( (const ZU_CHAR *)U"line", 4 );
        }
    } );
    EXPECT_EQ( printed, std::vector<std::u32string>( (size_t)THREADS * LINES, U"line" ) );
}
TEST_F( Print, NowhereWithoutAPrintFunction )
{
    zu___RuntimePrintFunc = nullptr;
    // Held, the lock would stop a call that takes it.
    zu___LockAcquire( &zu___RuntimePrintLock );
    zuPrintCstr( "a", -1 );
    zu___LockRelease( &zu___RuntimePrintLock );
    EXPECT_TRUE( printed.empty() );
}
