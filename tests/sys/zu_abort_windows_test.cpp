#include "zu/sys/zu_abort_windows_internal.h"
#include "zu/zu.h"
#include "zu_test_platform.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <dbghelp.h>

static constexpr size_t COMMENT_WIDTH = 119;
static constexpr size_t TITLE_LINES = 11;
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
        dump.comments.erase( dump.comments.begin(), dump.comments.begin() + TITLE_LINES );
        EXPECT_EQ( dump.comments, commentsOf( report, exception ) );
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
TEST_F( AbortReport, OfAnotherException )
{
    expectReport( { "  EXCEPTION", "    ExceptionCode: 0xE0000001", "    ExceptionInformation[0]: 0x0000000000000007" },
                  0xE0000001, [] {
                      ULONG_PTR parameter = 7;
                      RaiseException( 0xE0000001, 0, 1, &parameter );
                  } );
}
