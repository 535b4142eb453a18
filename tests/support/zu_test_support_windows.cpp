// There is no fork here, so that a statement which is to end its process is reached anew, by the same test in a process
// of its own: it is told by its number among those of the test, and all others are passed over on the way.

#include "zu_test_platform.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>
#include <windows.h>

static constexpr DWORD ABORT_STATUS = 3;     // of abort()
static constexpr DWORD HOST_STEP = 5;        // milliseconds from one look at the files of a program to the next
static constexpr int HOST_PATIENCE = 20'000; // looks

// Runs this program for the current test; returns its status, and what it writes to the error stream, or to both.
static DWORD runSelf( const std::string &variable, const std::string &value, bool errorsOnly, std::string *output )
{
    wchar_t path[ MAX_PATH ] = {};
    GetModuleFileNameW( nullptr, path, MAX_PATH );
    std::string test = thisTest();
    std::wstring command =
        L"\"" + std::wstring( path ) + L"\" --gtest_filter=" + std::wstring( test.begin(), test.end() );
    SECURITY_ATTRIBUTES inherited = { sizeof inherited, nullptr, TRUE };
    HANDLE reading;
    HANDLE writing;
    EXPECT_TRUE( CreatePipe( &reading, &writing, &inherited, 0 ) );
    SetHandleInformation( reading, HANDLE_FLAG_INHERIT, 0 );
    HANDLE nothing = CreateFileW( L"NUL", GENERIC_WRITE, FILE_SHARE_WRITE, &inherited, OPEN_EXISTING, 0, nullptr );
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdOutput = errorsOnly ? nothing : writing;
    start.hStdError = writing;
    PROCESS_INFORMATION process = {};
    SetEnvironmentVariableA( variable.c_str(), value.c_str() );
    EXPECT_TRUE(
        CreateProcessW( nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &process ) );
    SetEnvironmentVariableA( variable.c_str(), nullptr );
    CloseHandle( writing );
    CloseHandle( nothing );
    char block[ 4096 ];
    for ( DWORD count; ReadFile( reading, block, sizeof block, &count, nullptr ) && count > 0; ) {
        output->append( block, count );
    }
    CloseHandle( reading );
    std::erase( *output, '\r' );
    WaitForSingleObject( process.hProcess, INFINITE );
    DWORD status = ~(DWORD)0;
    GetExitCodeProcess( process.hProcess, &status );
    CloseHandle( process.hThread );
    CloseHandle( process.hProcess );
    return status;
}

AbortedRun runAborting( const std::function<void()> &statement )
{
    static std::string test;
    static int number = 0; // of statements of the test so far
    if ( test != thisTest() ) {
        test = thisTest();
        number = 0;
    }
    number++;
    AbortedRun run;
    if ( const char *wanted = getenv( ABORT_NUMBER ) ) {
        if ( atoi( wanted ) == number ) {
            statement();
            _exit( 0 );
        }
        run.elsewhere = true;
        return run;
    }
    run.aborted = runSelf( ABORT_NUMBER, std::to_string( number ), true, &run.report ) == ABORT_STATUS;
    return run;
}
bool abortsInAFork()
{
    return false;
}
void runThisTest( const std::string &variable, const std::string &value )
{
    std::string output;
    EXPECT_EQ( runSelf( variable, value, false, &output ), 0u ) << output;
}

static DWORD WINAPI runOnThread( void *argument )
{
    ( *(const std::function<void()> *)argument )();
    return 0;
}
void runOnSmallStack( const std::function<void()> &body )
{
    HANDLE thread = CreateThread( nullptr, 128 * 1024, runOnThread, const_cast<std::function<void()> *>( &body ),
                                  STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr );
    ASSERT_TRUE( thread );
    WaitForSingleObject( thread, INFINITE );
    CloseHandle( thread );
}

// Under Wine the programs that tests ask are those of the system that it runs on.  What Wine tells of such a process is
// neither its end nor its output: both go to files.
static std::string runOnHost( const std::string &commandLine )
{
    static int number = 0;
    std::string name =
        ZU_TEST_HOST_FOLDER "/run_" + std::to_string( GetCurrentProcessId() ) + "_" + std::to_string( number++ );
    std::ofstream( "Z:" + name + ".sh", std::ios::binary )
        << "( " << commandLine << " ) > " << name << ".out\necho $? > " << name << ".end\nmv " << name << ".end "
        << name << ".status\n";
    std::string shell = "sh " + name + ".sh";
    STARTUPINFOA start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION process = {};
    EXPECT_TRUE(
        CreateProcessA( "Z:\\bin\\sh", shell.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process ) );
    std::string status = "Z:" + name + ".status";
    for ( int i = 0; i < HOST_PATIENCE && !std::filesystem::exists( status ); i++ ) {
        Sleep( HOST_STEP );
    }
    int result = -1;
    std::ifstream( status ) >> result;
    std::ifstream stream( "Z:" + name + ".out", std::ios::binary );
    std::string output{ std::istreambuf_iterator<char>( stream ), {} };
    stream.close();
    EXPECT_EQ( result, 0 ) << commandLine << "\n" << output;
    for ( const char *ending : { ".sh", ".out", ".status" } ) {
        std::filesystem::remove( "Z:" + name + ending );
    }
    return output;
}
std::string runProgram( const std::string &commandLine )
{
    if ( *ZU_TEST_EMULATOR ) {
        return runOnHost( commandLine );
    }
    FILE *program = _popen( commandLine.c_str(), "rb" );
    if ( !program ) {
        ADD_FAILURE() << "cannot run " << commandLine;
        return "";
    }
    std::string output = readAll( program );
    EXPECT_EQ( _pclose( program ), 0 ) << commandLine << "\n" << output;
    return output;
}

bool matchesForm( const std::string &line, const char *form )
{
    return std::regex_search( line, std::regex( form ) );
}

static DWORD WINAPI endAfterSleep( void *seconds )
{
    Sleep( (DWORD)(uintptr_t)seconds * 1000 );
    TerminateProcess( GetCurrentProcess(), 1 );
    return 0;
}
void endAfter( unsigned seconds )
{
    CloseHandle( CreateThread( nullptr, 0, endAfterSleep, (void *)(uintptr_t)seconds, 0, nullptr ) );
}
