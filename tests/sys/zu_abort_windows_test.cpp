#include "zu/sys/zu_abort_windows_internal.h"
#include "zu_test_platform.h"

#include <filesystem>
#include <fstream>

#include <dbghelp.h>

static constexpr size_t COMMENT_WIDTH = 119;
static constexpr size_t TITLE_LINES = 11;
static constexpr size_t LOCAL_TIME = 2; // behind the title
static constexpr const char *PRODUCT_KEY = "SOFTWARE\\VELMORA\\zelkaratr";

using LINES = std::vector<std::string>;

static LINES linesOf( const std::string &text )
{
    LINES lines;
    std::istringstream stream( text );
    for ( std::string line; std::getline( stream, line ); ) {
        lines.push_back( line );
    }
    return lines;
}
static std::string contentOf( const std::filesystem::path &file, std::ios::openmode mode )
{
    std::ifstream stream( file, mode );
    return { std::istreambuf_iterator<char>( stream ), {} };
}

// A dump, as far as it is read here
struct DUMP {
    ULONG64 type = 0;
    DWORD exception = 0;
    LINES comments;
};
static DUMP readDump( const std::string &bytes )
{
    DUMP dump;
    MINIDUMP_HEADER header = {};
    memcpy( &header, bytes.data(), std::min( bytes.size(), sizeof header ) );
    EXPECT_EQ( bytes.substr( 0, 4 ), "MDMP" );
    dump.type = header.Flags;
    for ( ULONG32 i = 0; i < header.NumberOfStreams; i++ ) {
        MINIDUMP_DIRECTORY entry;
        memcpy( &entry, bytes.data() + header.StreamDirectoryRva + i * sizeof entry, sizeof entry );
        const char *stream = bytes.data() + entry.Location.Rva;
        if ( entry.StreamType == CommentStreamA ) {
            dump.comments.emplace_back( stream, entry.Location.DataSize - 1 );
            EXPECT_EQ( stream[ COMMENT_WIDTH ], 0 );
        } else if ( entry.StreamType == ExceptionStream ) {
            MINIDUMP_EXCEPTION_STREAM exception;
            memcpy( &exception, stream, sizeof exception );
            dump.exception = exception.ExceptionRecord.ExceptionCode;
        }
    }
    return dump;
}
// What the comments must be: the sections of the report ahead of that on the dump, two columns further left.  Of an
// exception they tell but the code.
static LINES commentsOf( const LINES &report, DWORD exception )
{
    LINES comments;
    size_t i = 0;
    while ( i < report.size() && report[ i ] != "  SYSTEM" ) {
        i++;
    }
    for ( i--; i + 1 < report.size() && report[ i + 1 ] != "  MINIDUMP"; i++ ) {
        comments.push_back( report[ i ].substr( std::min<size_t>( report[ i ].size(), 2 ) ) );
        if ( report[ i ] == "  EXCEPTION" ) {
            char code[ 40 ];
            snprintf( code, sizeof code, "  ExceptionCode: 0x%08lX", exception );
            comments.emplace_back( code );
            while ( !report[ i + 1 ].empty() ) {
                i++;
            }
        }
    }
    comments.emplace_back();
    for ( std::string &comment : comments ) {
        comment.resize( COMMENT_WIDTH, ' ' );
    }
    return comments;
}

// The machine is set to have small dumps, in a folder of its own.
class AbortReport : public testing::Test {
protected:
    std::filesystem::path folder = std::filesystem::temp_directory_path() / "zu-abort-test";

    void SetUp() override
    {
        if ( !getenv( ABORT_NUMBER ) ) {
            std::filesystem::remove_all( folder );
            std::filesystem::create_directory( folder );
        }
        _putenv_s( "RQ_ZELKARATR_ABORT_PATH", folder.string().c_str() );
        DWORD type = MiniDumpWithHandleData;
        ASSERT_EQ( RegSetKeyValueA( HKEY_LOCAL_MACHINE, PRODUCT_KEY, "minidumpType", REG_DWORD, &type, sizeof type ),
                   0 );
    }
    void TearDown() override
    {
        _putenv_s( "RQ_ZELKARATR_ABORT_PATH", "" );
        RegDeleteKeyValueA( HKEY_LOCAL_MACHINE, PRODUCT_KEY, "minidumpType" );
        std::filesystem::remove_all( folder );
    }
    // Runs `statement` to its end, and compares error stream, file and dump, which has the exception.
    void expectReport( const LINES &cause, DWORD exception, const std::function<void()> &statement )
    {
        AbortedRun run = runAborting( statement );
        if ( run.elsewhere ) {
            return;
        }
        EXPECT_TRUE( run.aborted );
        LINES report = linesOf( run.report );
        EXPECT_NE( std::search( report.begin(), report.end(), cause.begin(), cause.end() ), report.end() )
            << run.report;
        LINES files;
        for ( const auto &entry : std::filesystem::directory_iterator( folder ) ) {
            files.push_back( entry.path().string() );
        }
        std::sort( files.begin(), files.end() ); // .dmp, .txt
        ASSERT_EQ( files.size(), 2u ) << run.report;
        EXPECT_EQ( linesOf( contentOf( files[ 1 ], std::ios::in ) ), report );
        std::string dumpName = files[ 0 ];
        std::replace( dumpName.begin(), dumpName.end(), '\\', '/' );
        EXPECT_NE( run.report.find( "\n  MINIDUMP\n    " + dumpName + "\n\n" ), std::string::npos ) << run.report;
        DUMP dump = readDump( contentOf( files[ 0 ], std::ios::binary ) );
        EXPECT_EQ( dump.type, (ULONG64)MiniDumpWithHandleData );
        EXPECT_EQ( dump.exception, exception );
        ASSERT_GE( dump.comments.size(), TITLE_LINES );
        for ( size_t i = 0; i < TITLE_LINES; i++ ) {
            const char *edge = i % ( TITLE_LINES - 1 ) == 0 ? "+" : "|";
            for ( size_t column : { 0, 51, 118 } ) {
                EXPECT_EQ( dump.comments[ i ].substr( column, 1 ), edge ) << dump.comments[ i ];
            }
        }
        EXPECT_NE( dump.comments[ 2 ].find( "RQTA System Minidump file" ), std::string::npos );
        EXPECT_NE( dump.comments[ 5 ].find( "Enter '.ecxr' at the debugger command prompt" ), std::string::npos );
        dump.comments.erase( dump.comments.begin(), dump.comments.begin() + TITLE_LINES );
        LINES wanted = commentsOf( report, exception );
        ASSERT_EQ( dump.comments.size(), wanted.size() );
        EXPECT_EQ( dump.comments[ LOCAL_TIME ].find( "  Local Time: 20" ), 0u );
        wanted[ LOCAL_TIME ] = dump.comments[ LOCAL_TIME ]; // the clock does not stand still
        EXPECT_EQ( dump.comments, wanted );
        std::filesystem::remove( files[ 0 ] );
        std::filesystem::remove( files[ 1 ] );
    }
    // Runs a failed check whose report is to have that name, and tells what there is of the dump's failure.
    void expectNoDump( const std::string &name, const std::string &failure )
    {
        AbortedRun run = runAborting( [ & ] {
            zu___AbortReset( name.c_str() );
            zuStringRetain( nullptr );
        } );
        if ( !run.elsewhere ) {
            EXPECT_TRUE( run.aborted );
            EXPECT_NE( run.report.find( "\n  MINIDUMP\n    " + failure + "\n\n\n\n" ), std::string::npos )
                << run.report;
        }
    }
};

TEST_F( AbortReport, OfAFailedCheck )
{
    expectReport( { "  ABORT", "    Message   : stdfunc retain" }, ZU___ABORT_EXCEPTION_CODE,
                  [] { zuStringRetain( nullptr ); } );
}
TEST_F( AbortReport, OfAnInvalidAccess )
{
    expectReport( { "  EXCEPTION", "    EXCEPTION_ACCESS_VIOLATION", "    write to address 0x0000000000000010" },
                  EXCEPTION_ACCESS_VIOLATION, [] {
                      static uintptr_t volatile address = 16;
                      *(int volatile *)address = 1;
                  } );
}
TEST_F( AbortReport, OfADivisionByZero )
{
    expectReport( { "  EXCEPTION", "    EXCEPTION_INT_DIVIDE_BY_ZERO" }, EXCEPTION_INT_DIVIDE_BY_ZERO, [] {
        int volatile zero = 0;
        zero = 7 / zero;
    } );
}
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winfinite-recursion"
static int overflow( int volatile *above )
{
    int volatile here[ 256 ];
    here[ 0 ] = *above + 1;
    return overflow( here ) + here[ 0 ];
}
#pragma GCC diagnostic pop
TEST_F( AbortReport, OfAnEndlessRecursion )
{
    expectReport( { "  EXCEPTION", "    EXCEPTION_STACK_OVERFLOW" }, EXCEPTION_STACK_OVERFLOW, [] {
        int volatile begin = 0;
        overflow( &begin );
    } );
}
TEST_F( AbortReport, OfOtherThreads )
{
    expectReport( { "  EXCEPTION", "    EXCEPTION_ACCESS_VIOLATION", "    read from address 0x0000000000000010" },
                  EXCEPTION_ACCESS_VIOLATION, [] {
                      zuThreadJoin( zuThreadTrySpawnCstr(
                          "reader", -1,
                          [] {
                              static uintptr_t volatile address = 16;
                              address = *(uintptr_t volatile *)address;
                          },
                          nullptr, ZU_THREAD_PRIORITY_NORMAL ) );
                  } );
    // Of those that fail at once, one reports; the others wait for the end.
    expectReport( { "  ABORT", "    Message   : stdfunc retain" }, ZU___ABORT_EXCEPTION_CODE,
                  [] { runThreads( 8, []( int ) { zuStringRetain( nullptr ); } ); } );
}
TEST_F( AbortReport, WithoutADump )
{
    std::string name = ( folder / "report" ).string();
    std::ofstream( name + ".dmp" ) << "old";
    expectNoDump( name + ".txt", name + ".dmp\n    <failed, GetLastError(): ERROR_FILE_EXISTS>" );
    EXPECT_EQ( contentOf( name + ".dmp", std::ios::binary ), "old" );
    std::string nowhere = ( folder / "none" / "report" ).string();
    expectNoDump( nowhere + ".txt", nowhere + ".dmp\n    <failed, GetLastError(): 0x3>" );
    expectNoDump( "", "(null)" );
}
// What is no fault of the machine belongs to whoever had the filter ahead of the library.
TEST_F( AbortReport, WhereAnEarlierFilterIs )
{
    auto restart = [] {
        zuRuntimeShutdown();
        SetUnhandledExceptionFilter( []( EXCEPTION_POINTERS * ) -> LONG { _exit( 4 ); } );
        zuRuntimeStartup( 0, -1, nullptr, "zu-test", nullptr, nullptr );
    };
    AbortedRun foreign = runAborting( [ & ] {
        restart();
        RaiseException( 0xE0000001, 0, 0, nullptr );
    } );
    EXPECT_FALSE( foreign.aborted );
    EXPECT_EQ( foreign.report, "" );
    expectReport( { "  EXCEPTION", "    EXCEPTION_INT_DIVIDE_BY_ZERO" }, EXCEPTION_INT_DIVIDE_BY_ZERO, [ & ] {
        restart();
        int volatile zero = 0;
        zero = 7 / zero;
    } );
}
// It may have found the library's when that ran before, and hand on to it.
TEST_F( AbortReport, WhereTheEarlierFilterHandsOn )
{
    expectReport( { "  EXCEPTION", "    ExceptionCode: 0xE0000001" }, 0xE0000001, [] {
        static LPTOP_LEVEL_EXCEPTION_FILTER found;
        found = SetUnhandledExceptionFilter( []( EXCEPTION_POINTERS *exception ) { return found( exception ); } );
        zuRuntimeShutdown();
        zuRuntimeStartup( 0, -1, nullptr, "zu-test", nullptr, nullptr );
        RaiseException( 0xE0000001, 0, 0, nullptr );
    } );
}
// A report that fails itself: where lines go to a debugger's channel, somebody listens and falls over.
TEST_F( AbortReport, OfAReportThatFails )
{
    AbortedRun run = runAborting( [] {
        AddVectoredExceptionHandler( 1, []( EXCEPTION_POINTERS *exception ) -> LONG {
            static int volatile *volatile nowhere = nullptr;
            return exception->ExceptionRecord->ExceptionCode == DBG_PRINTEXCEPTION_C ? *nowhere
                                                                                     : EXCEPTION_CONTINUE_SEARCH;
        } );
        zuStringRetain( nullptr );
    } );
    if ( !run.elsewhere ) {
        EXPECT_TRUE( run.aborted );
        size_t second = run.report.find( "  * DOUBLE FAULT   " );
        ASSERT_NE( second, std::string::npos ) << run.report;
        EXPECT_LT( run.report.find( "stdfunc retain" ), second );
        EXPECT_NE(
            run.report.find( "    EXCEPTION_ACCESS_VIOLATION\n    read from address 0x0000000000000000\n", second ),
            std::string::npos );
    }
}

TEST_F( AbortReport, OfAReportThatHangs )
{
    AbortedRun run = runAborting( [] {
        AddVectoredExceptionHandler( 1, []( EXCEPTION_POINTERS *exception ) -> LONG {
            while ( exception->ExceptionRecord->ExceptionCode == DBG_PRINTEXCEPTION_C ) {
                Sleep( INFINITE );
            }
            return EXCEPTION_CONTINUE_SEARCH;
        } );
        zuStringRetain( nullptr );
    } );
    EXPECT_TRUE( run.elsewhere || run.aborted );
    EXPECT_TRUE( run.elsewhere || run.report.find( "stdfunc retain" ) != std::string::npos );
}

// Whoever debugs a process sees the report, with directions at its end, and is asked in then.
struct DEBUGGED {
    LINES lines;
    int breaks = 0; // the first of them is the system's
    DWORD thread = 0;
    DWORD status = 0;
};
static DEBUGGED debugThisTest()
{
    DEBUGGED seen;
    char path[ MAX_PATH ] = {};
    GetModuleFileNameA( nullptr, path, MAX_PATH );
    std::string command = std::string( path ) + " --gtest_filter=" + thisTest();
    STARTUPINFOA start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION process = {};
    SetEnvironmentVariableA( ABORT_NUMBER, "1" );
    EXPECT_TRUE( CreateProcessA( nullptr, command.data(), nullptr, nullptr, FALSE, DEBUG_ONLY_THIS_PROCESS, nullptr,
                                 nullptr, &start, &process ) );
    SetEnvironmentVariableA( ABORT_NUMBER, nullptr );
    seen.thread = process.dwThreadId;
    DEBUG_EVENT event;
    do {
        if ( !WaitForDebugEvent( &event, 60'000 ) ) {
            ADD_FAILURE() << "nothing happens";
            TerminateProcess( process.hProcess, 1 );
            break;
        }
        DWORD answer = DBG_CONTINUE;
        if ( event.dwDebugEventCode == OUTPUT_DEBUG_STRING_EVENT ) {
            std::string line( event.u.DebugString.nDebugStringLength, 0 );
            ReadProcessMemory( process.hProcess, event.u.DebugString.lpDebugStringData, line.data(), line.size(),
                               nullptr );
            seen.lines.push_back( line.substr( 0, line.find_last_not_of( "\n\0", std::string::npos, 2 ) + 1 ) );
        } else if ( event.dwDebugEventCode == EXCEPTION_DEBUG_EVENT ) {
            bool isBreak = event.u.Exception.ExceptionRecord.ExceptionCode == EXCEPTION_BREAKPOINT;
            seen.breaks += isBreak;
            answer = isBreak ? DBG_CONTINUE : DBG_EXCEPTION_NOT_HANDLED;
        } else if ( event.dwDebugEventCode == EXIT_PROCESS_DEBUG_EVENT ) {
            seen.status = event.u.ExitProcess.dwExitCode;
        }
        ContinueDebugEvent( event.dwProcessId, event.dwThreadId, answer );
    } while ( event.dwDebugEventCode != EXIT_PROCESS_DEBUG_EVENT );
    CloseHandle( process.hThread );
    CloseHandle( process.hProcess );
    return seen;
}
TEST_F( AbortReport, GoesToADebugger )
{
    if ( getenv( ABORT_NUMBER ) ) {
        zuStringRetain( nullptr );
    }
    DEBUGGED seen = debugThisTest();
    EXPECT_EQ( seen.status, 3u );
    EXPECT_EQ( seen.breaks, 2 );
    LINES report;
    for ( const auto &entry : std::filesystem::directory_iterator( folder ) ) {
        if ( entry.path().extension() == ".txt" ) {
            report = linesOf( contentOf( entry.path(), std::ios::in ) );
        }
    }
    EXPECT_EQ( seen.lines, report );
    char thread[ 120 ];
    snprintf( thread, sizeof thread,
              "<?dml?>  live system. The thread ID of the faulting thread is 0x%04lx. If this thread", seen.thread );
    EXPECT_EQ( std::count( report.begin(), report.end(), thread ), 1 );
    EXPECT_EQ( std::count( report.begin(), report.end(),
                           "<?dml?>  While aborting, 0 different threads have tried to abort the system in parallel." ),
               1 );
}
TEST_F( AbortReport, OfAnotherException )
{
    expectReport( { "  EXCEPTION", "    ExceptionCode: 0xE0000001", "    ExceptionInformation[0]: 0x0000000000000007" },
                  0xE0000001, [] {
                      ULONG_PTR parameter = 7;
                      RaiseException( 0xE0000001, 0, 1, &parameter );
                  } );
}
