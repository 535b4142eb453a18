#include "zu/runtime/zu_runtime_internal.h"
#include "zu_test_support.h"

using SWITCH = zu::Ref<ZU_TOOL_SWITCH>;
using VECTOR = zu::Ref<ZU_VECTOR>;

// What the tools have received and the print function was given
static std::string seen;

static std::string textOf( const ZU_CHAR *chs, ZU_INT chsLength )
{
    return std::string( chs, chs + chsLength );
}
static ZU_BOOL echo( ZU_VECTOR *argv, void *context )
{
    zu::Ref<ZU_STRING> text = zu::adopt( zuVectorToString( argv ) );
    seen += (const char *)context + textOf( zuStringBacking( text.get() ), zuStringLength( text.get() ) );
    return ZU_TRUE;
}
static ZU_BOOL fail( ZU_VECTOR *, void * )
{
    seen += "failed";
    return ZU_FALSE;
}

class ToolSwitch : public testing::Test {
protected:
    void SetUp() override
    {
        zu___RuntimePrintFunc = []( const ZU_CHAR *chs, ZU_INT chsLength ) { seen += textOf( chs, chsLength ) + "/"; };
    }
    void TearDown() override
    {
        zu___RuntimePrintFunc = nullptr;
    }
    // Runs a command line of a switch; the number behind a first word is left to the tool.
    static void expectRun( ZU_TOOL_SWITCH *ts, const char *word, ZU_BOOL result, const std::string &wanted )
    {
        VECTOR argv = zu::adopt( zuVectorCreate() );
        if ( word ) {
            zuVectorAppendStringCstr( argv.inOut(), word, -1 );
            zuVectorAppendInt( argv.inOut(), 5 );
        }
        seen.clear();
        char context[] = "tool:";
        EXPECT_EQ( zuToolSwitchRunTool( ts, argv.get(), context ), result );
        EXPECT_EQ( seen, wanted ) << ( word ? word : "nothing" );
        EXPECT_EQ( zuVectorLength( argv.get() ), word ? 2 : 0 );
    }
};
TEST_F( ToolSwitch, RunsWhatTheFirstWordMeans )
{
    SWITCH ts = zu::adopt( zuToolSwitchCreate() );
    expectRun( ts.get(), nullptr, ZU_FALSE, "missing argument/" );
    expectRun( ts.get(), "x", ZU_FALSE, "x: invalid argument/" );
    zuToolSwitchSetToolCstr( ts.inOut(), "stopped", 4, echo );
    expectRun( ts.get(), "", ZU_TRUE, "tool:<5>" );
    zuToolSwitchSetToolWcstr( ts.inOut(), u"start", -1, fail );
    zuToolSwitchSetToolCstr( ts.inOut(), "status", -1, nullptr );
    zuToolSwitchSetToolCstr( ts.inOut(), "stat", -1, echo );
    expectRun( ts.get(), nullptr, ZU_FALSE, "missing argument/<start, stat, status, stop>/" );
    expectRun( ts.get(), "x", ZU_FALSE, "x: invalid argument/<start, stat, status, stop>/" );
    expectRun( ts.get(), "stops", ZU_FALSE, "stops: invalid argument/<start, stat, status, stop>/" );
    expectRun( ts.get(), "sta", ZU_FALSE, "sta: ambiguous/<start, stat, status, stop>/" );
    expectRun( ts.get(), "", ZU_FALSE, ": ambiguous/<start, stat, status, stop>/" );
    expectRun( ts.get(), "sto", ZU_TRUE, "tool:<5>" );
    expectRun( ts.get(), "stat", ZU_TRUE, "tool:<5>" );
    expectRun( ts.get(), "star", ZU_FALSE, "failed" );
    expectRun( ts.get(), "statu", ZU_TRUE, "" );
}
TEST_F( ToolSwitch, IsAValue )
{
    SWITCH ts = zu::adopt( zuToolSwitchCreate() );
    zuToolSwitchSetToolCstr( ts.inOut(), "a", -1, echo );
    zuToolSwitchSetToolCstr( ts.inOut(), "b", -1, echo );
    SWITCH kept = ts;
    zuToolSwitchDelToolCstr( ts.inOut(), "c", -1 );
    EXPECT_NE( ts.get(), kept.get() ); // copied for nothing
    zuToolSwitchDelToolWcstr( ts.inOut(), u"ab", 1 );
    EXPECT_FALSE( zuToolSwitchHasToolCstr( ts.get(), "a", -1 ) );
    EXPECT_TRUE( zuToolSwitchHasToolWcstr( ts.get(), u"b", -1 ) );
    EXPECT_TRUE( zuToolSwitchHasTool( kept.get(), zu::adopt( zuStringCreateFromAscii( "a", -1 ) ).get() ) );
    EXPECT_EQ( zuVectorLength( zu::adopt( zuToolSwitchToolsVector( kept.get() ) ).get() ), 2 );
    expectAbort( "tool", [ & ] { zuToolSwitchHasToolCstr( ts.get(), nullptr, 0 ); } );
    expectAbort( "argv", [ & ] { zuToolSwitchRunTool( ts.get(), nullptr, nullptr ); } );
}
