#include "zu/runtime/zu_runtime_internal.h"
#include "zu/zu.hpp"

#include "zu_test_support.h"

#include <cstdarg>
#include <syslog.h>

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
};

// What the two families have in common.
struct Forms {
    void ( *print )( ZU_STRING * );
    void ( *cstr )( const char *, ZU_INT );
    void ( *wcstr )( const char16_t *, ZU_INT );
    void ( *format )( ZU_STRING *, ... );
    void ( *formatArgList )( ZU_STRING *, va_list );
    void ( *formatCstr )( const char *, ZU_INT, ... );
    void ( *formatCstrArgList )( const char *, ZU_INT, va_list );
    void ( *formatWcstr )( const char16_t *, ZU_INT, ... );
    void ( *formatWcstrArgList )( const char16_t *, ZU_INT, va_list );
};
#define FORMS_OF( x )                                                                                           \
    {                                                                                                           \
        x, x##Cstr, x##Wcstr, x##Format, x##FormatArgList, x##FormatCstr, x##FormatCstrArgList, x##FormatWcstr, \
            x##FormatWcstrArgList                                                                               \
    }
static void withCursor( void ( *function )( ZU_STRING *, va_list ), ZU_STRING *format, ... )
{
    va_list args;
    va_start( args, format );
    function( format, args );
    va_end( args );
}
template <typename Char>
static void withTextCursor( void ( *function )( const Char *, ZU_INT, va_list ), const Char *format, ZU_INT length,
                            ... )
{
    va_list args;
    va_start( args, length );
    function( format, length, args );
    va_end( args );
}
static void printEveryForm( const Forms &forms )
{
    zu::Ref<ZU_STRING> format = zu::adopt( zuStringCreateFromAscii( "%i-%lc", -1 ) );
    zu::Ref<ZU_STRING> plain = zu::adopt( zuStringCreateFromUtf8( "100 %s\xE2\x82\xAC\n", -1 ) );
    forms.print( plain.get() );
    forms.cstr( "abc", 2 );
    forms.cstr( "", -1 );
    forms.wcstr( u"\u20ACbc", 2 );
    forms.format( format.get(), (ZU_INT)1, "a" );
    withCursor( forms.formatArgList, format.get(), (ZU_INT)2, "b" );
    forms.formatCstr( "%i-%lcx", 6, (ZU_INT)3, "c" );
    withTextCursor( forms.formatCstrArgList, "%i-%lcx", 6, (ZU_INT)4, "d" );
    forms.formatWcstr( u"%i-%lcx", 6, (ZU_INT)5, "e" );
    withTextCursor( forms.formatWcstrArgList, u"%i-%lcx", 6, (ZU_INT)6, "f" );
}

TEST_F( Print, EveryFormIsOneCall )
{
    printEveryForm( FORMS_OF( zuPrint ) );
    EXPECT_EQ( printed, ( std::vector<std::u32string>{ U"100 %s\u20AC\n", U"ab", U"", U"\u20ACb", U"1-a", U"2-b",
                                                       U"3-c", U"4-d", U"5-e", U"6-f" } ) );
    EXPECT_TRUE( logged.empty() );
}
TEST_F( Print, DebugNamesTheProduct )
{
    printEveryForm( FORMS_OF( zuDebugPrint ) );
    std::vector<std::string> expected = { "100 %s\xE2\x82\xAC\n",
                                          "ab",
                                          "",
                                          "\xE2\x82\xAC"
                                          "b",
                                          "1-a",
                                          "2-b",
                                          "3-c",
                                          "4-d",
                                          "5-e",
                                          "6-f" };
    for ( std::string &text : expected ) {
        text.insert( 0, std::string( zu___RuntimeVersionProductNameCstr() ) + ": " );
    }
    EXPECT_EQ( logged, expected );
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
