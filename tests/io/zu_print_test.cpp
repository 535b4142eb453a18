#include "zu/runtime/zu_runtime_internal.h"
#include "zu/zu.hpp"

#include "zu_test_support.h"

#include <cstdarg>
#include <syslog.h>
#include <thread>

// What the print function and the system log have received, one element a call
static std::vector<std::u32string> printed;
static std::vector<std::string> logged;

static void printFunction( const ZU_CHAR *chs, ZU_INT chsLength )
{
    printed.emplace_back( chs, chs + chsLength );
}
// These take the place of the C library's.
extern "C" void syslog( int priority, const char *format, ... ) __attribute__( ( format( printf, 2, 3 ) ) );
extern "C" void __syslog_chk( int priority, int flag, const char *format, ... )
    __attribute__( ( format( printf, 3, 4 ) ) );
__attribute__( ( format( printf, 2, 0 ) ) ) static void logLine( int priority, const char *format, va_list args )
{
    char line[ 200 ];
    vsnprintf( line, sizeof line, format, args );
    EXPECT_EQ( priority, LOG_DEBUG );
    logged.emplace_back( line );
}
extern "C" void syslog( int priority, const char *format, ... )
{
    va_list args;
    va_start( args, format );
    logLine( priority, format, args );
    va_end( args );
}
extern "C" void __syslog_chk( int priority, int, const char *format, ... )
{
    va_list args;
    va_start( args, format );
    logLine( priority, format, args );
    va_end( args );
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
    // Expects one call each with `text`, and what the log adds, and forgets them.
    static void expectPrinted( const std::u32string &text )
    {
        EXPECT_EQ( printed, std::vector<std::u32string>{ text } );
        printed.clear();
    }
    static void expectLogged( const std::string &text )
    {
        EXPECT_EQ( logged,
                   std::vector<std::string>{ std::string( zu___RuntimeVersionProductNameCstr() ) + ": " + text } );
        logged.clear();
    }
};

template <void ( *function )( ZU_STRING *, va_list )>
static void withCursor( ZU_STRING *format, ... )
{
    va_list args;
    va_start( args, format );
    function( format, args );
    va_end( args );
}
template <auto function, typename Char>
static void withTextCursor( const Char *format, ZU_INT length, ... )
{
    va_list args;
    va_start( args, length );
    function( format, length, args );
    va_end( args );
}

TEST_F( Print, EveryFormIsOneCall )
{
    zu::Ref<ZU_STRING> format = zu::adopt( zuStringCreateFromAscii( "%i-%lc", -1 ) );
    zu::Ref<ZU_STRING> plain = zu::adopt( zuStringCreateFromUtf8( "a\xE2\x82\xAC\n", -1 ) );
    zuPrint( plain.get() );
    expectPrinted( U"a\u20AC\n" );
    zuPrintCstr( "abc", 2 );
    expectPrinted( U"ab" );
    zuPrintCstr( "abc", -1 );
    expectPrinted( U"abc" );
    zuPrintWcstr( u"\u20ACbc", 2 );
    expectPrinted( U"\u20ACb" );
    zuPrintFormat( format.get(), (ZU_INT)1, "a" );
    expectPrinted( U"1-a" );
    withCursor<zuPrintFormatArgList>( format.get(), (ZU_INT)2, "b" );
    expectPrinted( U"2-b" );
    zuPrintFormatCstr( "%i-%lcx", 6, (ZU_INT)3, "c" );
    expectPrinted( U"3-c" );
    withTextCursor<zuPrintFormatCstrArgList>( "%i-%lcx", 6, (ZU_INT)4, "d" );
    expectPrinted( U"4-d" );
    zuPrintFormatWcstr( u"%i-%lcx", 6, (ZU_INT)5, "e" );
    expectPrinted( U"5-e" );
    withTextCursor<zuPrintFormatWcstrArgList>( u"%i-%lcx", 6, (ZU_INT)6, "f" );
    expectPrinted( U"6-f" );
    zuPrintCstr( "", -1 );
    expectPrinted( U"" );
    EXPECT_TRUE( logged.empty() );
}
TEST_F( Print, DebugNamesTheProduct )
{
    zu::Ref<ZU_STRING> format = zu::adopt( zuStringCreateFromAscii( "%i-%lc", -1 ) );
    zu::Ref<ZU_STRING> plain = zu::adopt( zuStringCreateFromAscii( "100 %s", -1 ) );
    zuDebugPrint( plain.get() );
    expectLogged( "100 %s" );
    zuDebugPrintCstr( "abc", 2 );
    expectLogged( "ab" );
    zuDebugPrintWcstr( u"\u20ACbc", 2 );
    expectLogged( "\xE2\x82\xAC"
                  "b" );
    zuDebugPrintFormat( format.get(), (ZU_INT)1, "a" );
    expectLogged( "1-a" );
    withCursor<zuDebugPrintFormatArgList>( format.get(), (ZU_INT)2, "b" );
    expectLogged( "2-b" );
    zuDebugPrintFormatCstr( "%i-%lcx", 6, (ZU_INT)3, "c" );
    expectLogged( "3-c" );
    withTextCursor<zuDebugPrintFormatCstrArgList>( "%i-%lcx", 6, (ZU_INT)4, "d" );
    expectLogged( "4-d" );
    zuDebugPrintFormatWcstr( u"%i-%lcx", 6, (ZU_INT)5, "e" );
    expectLogged( "5-e" );
    withTextCursor<zuDebugPrintFormatWcstrArgList>( u"%i-%lcx", 6, (ZU_INT)6, "f" );
    expectLogged( "6-f" );
    EXPECT_TRUE( printed.empty() );
}
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
    ASSERT_EQ( logged.size(), 2u );
    EXPECT_NE( logged[ 1 ].find( ": 7" ), std::string::npos );
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
TEST_F( Print, CallsComeOneAtATime )
{
    // The print function of this suite is not safe for threads: what it has lost or torn shows in the count.
    static constexpr int THREADS = 4;
    static constexpr int LINES = 2000;
    std::vector<std::thread> threads;
    for ( int thread = 0; thread < THREADS; thread++ ) {
        threads.emplace_back( [] {
            for ( int line = 0; line < LINES; line++ ) {
                zuRuntimePrint( (const ZU_CHAR *)U"line", 4 );
            }
        } );
    }
    for ( std::thread &thread : threads ) {
        thread.join();
    }
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
TEST( PrintAborts, ByItsArguments )
{
    expectAbort( "zus", [] { zuPrint( nullptr ); } );
    expectAbort( "zus", [] { zuDebugPrint( nullptr ); } );
    expectAbort( "lines", [] { zuPrintLines( nullptr ); } );
    expectAbort( "lines", [] { zuDebugPrintLines( nullptr ); } );
    expectAbort( "st", [] { zuStackTracePrint( nullptr ); } );
    expectAbort( "chsLength >= 0", [] { zuRuntimePrint( nullptr, -1 ); } );
    expectAbort( "chs || chsLength == 0", [] { zuRuntimePrint( nullptr, 1 ); } );
}
