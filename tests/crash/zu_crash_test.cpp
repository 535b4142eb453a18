// Each case is a process of its own: this program, called with what is to happen to it.  What it writes is compared line
// by line.

#include "zu/base/zu_stack_trace_internal.h"
#include "zu/sys/zu_abort_internal.h"
#include "zu_crash_kinds.h"
#include "zu_test_support.h"

#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>

// The heap can be held by somebody who never lets go, and can come to its end at any time.  That of a sanitizer is its
// own.
static std::atomic<bool> heapHeld = false;
static std::atomic<long> allocationsLeft = -1; // -1: no end

#if !defined( __SANITIZE_ADDRESS__ ) && !defined( __SANITIZE_THREAD__ )
#define CRASH_OWN_HEAP
extern "C" void *__libc_malloc( size_t size );
extern "C" void *__libc_calloc( size_t count, size_t size );
extern "C" void *__libc_realloc( void *block, size_t size );
extern "C" void __libc_free( void *block );

static bool heapIsExhausted( size_t size )
{
    while ( heapHeld && size < (size_t)1 << 59 ) {
        pause();
    }
    if ( allocationsLeft > 0 ) {
        allocationsLeft--;
    }
    return allocationsLeft == 0;
}
void *malloc( size_t size ) noexcept
{
    return heapIsExhausted( size ) ? nullptr : __libc_malloc( size );
}
void *calloc( size_t count, size_t size ) noexcept
{
    return heapIsExhausted( size ) ? nullptr : __libc_calloc( count, size );
}
void *realloc( void *block, size_t size ) noexcept
{
    return heapIsExhausted( size ) ? nullptr : __libc_realloc( block, size );
}
void free( void *block ) noexcept
{
    while ( heapHeld ) {
        pause();
    }
    __libc_free( block );
}
#endif

// The process that crashes.  Every axis is a list of names; a case is one of each.
enum AXIS { KIND, THREAD, LOCK, COMPANY, TARGET, AXES };
static const std::vector<std::string> THREADS = { "main", "spawned", "encapsulated", "foreign", "cancelled" };
static const std::vector<std::string> LOCKS = { "none", "heap", "print", "object", "listener", "stream", "library" };
static const std::vector<std::string> COMPANIES = { "alone", "eight", "faulty" };
static const std::vector<std::string> TARGETS = { "fine", "none", "refused", "full", "gone", "link" };
using CASE = std::vector<std::string>;

static const CRASH_KIND *kind;
static CASE crash;
static std::atomic<int> waiting = 1;

static void crashTogether()
{
    waiting--;
    while ( waiting > 0 ) {
        std::this_thread::yield();
    }
    if ( crash[ THREAD ] == "cancelled" ) {
        pthread_cancel( pthread_self() ); // as soon as it waits for something
    }
    heapHeld = crash[ LOCK ] == "heap";
    kind->run();
}
static void crashPrinting( const ZU_CHAR *, ZU_INT )
{
    crashTogether();
}
static void crashListening( ZU_OBJ * )
{
    crashTogether();
}
static void crashUnderLock()
{
    if ( crash[ LOCK ] == "print" ) {
        zuRuntimePrint( nullptr, 0 );
    } else if ( crash[ LOCK ] == "listener" ) {
        ZU_ALERT *alert = zuAlertCreate();
        zuAlertAddAlertable( alert, zuAlertableCreate( crashListening, nullptr ) );
        zuAlertSet( alert );
    } else if ( crash[ LOCK ] == "object" ) {
        zuObjLockAcquire( zuStringObj( zuStringCreateFromAscii( "locked", -1 ) ) );
    } else if ( crash[ LOCK ] == "stream" ) {
        std::thread( [] {
            flockfile( stdout );
            flockfile( stderr );
        } ).join();
    } else if ( crash[ LOCK ] == "library" ) {
        while ( waiting > 1 ) { // whoever comes along needs some of these locks to do so
            std::this_thread::yield();
        }
        fork(); // ahead of which the library takes all of its own, and then comes what was registered before it
    }
    crashTogether();
}
static void crashOnThread()
{
    if ( crash[ THREAD ] == "main" ) {
        crashUnderLock();
    } else if ( crash[ THREAD ] == "spawned" ) {
        zuThreadJoin( zuThreadTrySpawnCstr( "crash", -1, crashUnderLock, nullptr, ZU_THREAD_PRIORITY_NORMAL ) );
    } else {
        std::thread( [] {
            crash[ THREAD ] == "foreign" ? crashUnderLock() : zuThreadEncapsulate( crashUnderLock, nullptr );
        } ).join();
    }
}
static void leaveEarly( int )
{
    _exit( 3 );
}
static struct sigaction relayed[ 2 ]; // for SIGILL and SIGABRT: what relay hands on to
static void relay( int signalNumber, siginfo_t *info, void *registers )
{
    relayed[ signalNumber == SIGABRT ].sa_sigaction( signalNumber, info, registers );
}
// crash <one of each axis> <folder of the target> <flags>
static int runCrash( char **argv )
{
    const rlimit noCore = { 0, 0 };
    setrlimit( RLIMIT_CORE, &noCore );
    crash = CASE( argv, argv + AXES );
    printf( "held back" );
    std::string folder = argv[ AXES ];
    for ( const CRASH_KIND &each : CRASH_KINDS ) {
        kind = crash[ KIND ] == each.name ? &each : kind;
    }
    if ( crash[ TARGET ] == "handled" ) {
        signal( SIGILL, leaveEarly );
        signal( SIGSEGV, leaveEarly );
    }
    if ( crash[ LOCK ] == "library" ) {
        pthread_atfork( crashTogether, nullptr, nullptr );
    }
    zuRuntimeStartup( strtoll( argv[ AXES + 1 ], nullptr, 10 ), -1, crashPrinting, "crash", nullptr, "1.0" );
    if ( crash[ TARGET ] == "relayed" ) {
        // One handler comes and stays, another one leaves again behind shut-down.
        struct sigaction action = {};
        action.sa_sigaction = relay;
        action.sa_flags = SA_SIGINFO | SA_ONSTACK;
        sigaction( SIGILL, &action, &relayed[ 0 ] );
        sigaction( SIGABRT, &action, &relayed[ 1 ] );
        zuRuntimeShutdown();
        sigaction( SIGABRT, &relayed[ 1 ], nullptr );
        zuRuntimeStartup( 0, -1, crashPrinting, "crash", nullptr, "1.0" );
    }
    if ( crash[ TARGET ] == "full" ) {
        const rlimit little = { 100, 100 };
        setrlimit( RLIMIT_FSIZE, &little );
    } else if ( crash[ TARGET ] == "gone" ) {
        rmdir( folder.c_str() );
    } else if ( crash[ TARGET ] == "link" ) {
        zu___AbortReset( ( folder + "link" ).c_str() );
    }
    if ( crash[ COMPANY ] == "faulty" ) {
        zu___AbortReportFile = (ZU___ABORT_FILE *)16; // fails a check in the report, and is no address either
    }
    if ( crash[ COMPANY ] == "eight" ) {
        waiting = 8;
        for ( int i = 0; i < 7; i++ ) {
            std::thread( [] { zuThreadEncapsulate( crashTogether, nullptr ); } ).detach();
        }
    }
    if ( crash[ COMPANY ] == "forked" ) {
        // Another thread reports, which the child does not have.
        std::thread( [] {
            const ZU___ABORT_RECORD record = {};
            const ZU___ABORT_CONTEXT context = {};
            zu___AbortEnter( &record, nullptr, &context );
        } ).join();
        pid_t child = fork();
        int status = 0;
        if ( child != 0 ) {
            _exit( waitpid( child, &status, 0 ) == child ? WTERMSIG( status ) : 0 );
        }
    }
    crashOnThread();
    return 0;
}

// Running it
struct FOLDER {
    std::string path = "/tmp/zu_crash_XXXXXX";
    FOLDER()
    {
        EXPECT_NE( mkdtemp( path.data() ), nullptr );
        path += "/";
    }
    ~FOLDER()
    {
        std::filesystem::remove_all( path );
    }
    // The only report; empty if there is none.
    std::string report() const
    {
        std::string text;
        for ( const auto &entry : std::filesystem::directory_iterator( path ) ) {
            if ( entry.path().extension() == ".txt" ) {
                EXPECT_EQ( text, "" ) << "two reports";
                EXPECT_EQ( entry.status().permissions(), std::filesystem::perms( 0600 ) );
                std::ifstream file( entry.path() );
                text.assign( std::istreambuf_iterator<char>( file ), {} );
            }
        }
        return text;
    }
};
static pid_t startCrash( const CASE &chosen, const std::string &folder, int errors, int output, ZU_INT flags = 0 )
{
    CASE arguments = { "zu_crash_test", "crash" };
    arguments.insert( arguments.end(), chosen.begin(), chosen.end() );
    arguments.insert( arguments.end(), { folder, std::to_string( flags ) } );
    std::vector<char *> argv;
    for ( std::string &argument : arguments ) {
        argv.push_back( argument.data() );
    }
    argv.push_back( nullptr );
    std::string variable = "RQ_" + std::string( zu___module_record.productName ) + "_ABORT_PATH";
    std::transform( variable.begin(), variable.end(), variable.begin(), toupper );
    pid_t child = fork();
    if ( child == 0 ) {
        chosen[ TARGET ] == "none"
            ? unsetenv( variable.c_str() )
            : setenv( variable.c_str(), chosen[ TARGET ] == "refused" ? "/proc/" : folder.c_str(), 1 );
        dup2( errors, STDERR_FILENO );
        dup2( output, STDOUT_FILENO );
        execv( "/proc/self/exe", argv.data() );
        _exit( 127 );
    }
    return child;
}
static std::string readToEnd( int file )
{
    std::string text;
    char block[ 4096 ];
    for ( ssize_t count; ( count = read( file, block, sizeof block ) ) > 0; ) {
        text.append( block, (size_t)count );
    }
    return text;
}
static int waitFor( pid_t child )
{
    int status = 0;
    waitpid( child, &status, 0 );
    return WIFSIGNALED( status ) ? WTERMSIG( status ) : -WEXITSTATUS( status );
}
struct PIPE {
    int reader;
    int writer;
    PIPE()
    {
        int ends[ 2 ];
        EXPECT_EQ( pipe2( ends, O_CLOEXEC ), 0 );
        reader = ends[ 0 ];
        writer = ends[ 1 ];
    }
    // Fills it to the last byte.
    void fill() const
    {
        fcntl( writer, F_SETFL, O_NONBLOCK );
        const std::vector<char> block( 65536 );
        while ( write( writer, block.data(), block.size() ) > 0 ) {}
        while ( write( writer, block.data(), 1 ) > 0 ) {}
        fcntl( writer, F_SETFL, 0 );
    }
};
struct OUTCOME {
    std::string errors;
    int signalNumber; // or minus the exit status
};
static OUTCOME runCase( const CASE &chosen, const std::string &folder, ZU_INT flags = 0 )
{
    PIPE errors;
    int nowhere = open( "/dev/null", O_WRONLY | O_CLOEXEC );
    pid_t child = startCrash( chosen, folder, errors.writer, nowhere, flags );
    close( errors.writer );
    close( nowhere );
    std::string text = readToEnd( errors.reader );
    close( errors.reader );
    // A sanitizer, or the C library, may have said something of its own.
    for ( const char *foreign : { "munmap_chunk(): ", "==" } ) {
        for ( size_t begin; ( begin = text.find( foreign ) ) != std::string::npos; ) {
            text.erase( begin, text.find( '\n', begin ) + 1 - begin );
        }
    }
    text.erase( 0, std::min( text.find( chosen[ COMPANY ] == "faulty" ? "\n  ***" : "\n\n  ***" ), text.size() ) );
    return { text, waitFor( child ) };
}

// Comparing
// Tells whether `text` has the form `form`, in which # stands for hexadecimal digits.
static bool hasForm( const std::string &text, const std::string &form )
{
    std::string expression = "^";
    for ( char ch : form ) {
        expression += ch == '#'                         ? "[0-9A-Fa-f]+"
                      : strchr( ".*+?()[]{}|^$\\", ch ) ? std::string{ '\\', ch }
                                                        : std::string{ ch };
    }
    return matchesForm( text, ( expression + "$" ).c_str() );
}
static std::vector<std::string> linesOf( const std::string &text )
{
    std::vector<std::string> lines;
    std::istringstream stream( text );
    for ( std::string each; std::getline( stream, each ); ) {
        lines.push_back( each );
    }
    return lines;
}
static std::string banner( const std::string &text )
{
    std::string stars = "  " + std::string( 70, '*' ) + "\n";
    return stars + "  * " + text + std::string( 67 - text.size(), ' ' ) + "*\n" + stars;
}
static std::string headOf( const CRASH_KIND &each )
{
    const ZU___MODULE_RECORD &record = zu___module_record;
    std::ostringstream head;
    head << "\n\n"
         << banner( strstr( each.lines, "EXCEPTION" ) ? "EXCEPTION" : "ABNORMAL PROGRAM TERMINATION" )
         << "\n  SYSTEM\n    Local Time: #-#-# #:#:#\n\n  PRODUCT\n    Name      : " << record.productName
         << "\n    Friendly  : " << record.productFriendlyName << "\n    Version   : " << record.productVersionMajor
         << "." << record.productVersionMinor << "." << record.productVersionRelease
         << "\n    OS        : " << zu___RuntimeOsFriendlyNameCstr( zuRuntimeOs() )
         << "\n    Hardware  : " << zu___RuntimeHardwareFriendlyNameCstr( zuRuntimeHardware() )
         << "\n    Variant   : " << zu___RuntimeVariantFriendlyNameCstr( zuRuntimeVariant() )
         << "\n    Build Time: " << record.productBuildTime
         << "\n\n  APPLICATION\n    Identifier: crash\n    Friendly  : (null)\n    Version   : 1.0\n"
         << each.lines << "\n  STACK\n";
    return head.str();
}
// Expects `report` to be one whole report, with `tail` behind the stack.
static void expectReport( const std::string &report, const CRASH_KIND &each, const std::string &tail = "" )
{
    SCOPED_TRACE( report );
    std::vector<std::string> lines = linesOf( report );
    std::vector<std::string> head = linesOf( headOf( each ) );
    std::vector<std::string> end = linesOf( tail + "\n\n\n" );
    ASSERT_GT( lines.size(), head.size() + end.size() );
    bool found = false;
    for ( size_t i = 0; i < lines.size(); i++ ) {
        size_t left = lines.size() - i;
        if ( i < head.size() ) {
            ASSERT_TRUE( hasForm( lines[ i ], head[ i ] ) ) << head[ i ];
        } else if ( left <= end.size() ) {
            ASSERT_TRUE( hasForm( lines[ i ], end[ end.size() - left ] ) ) << lines[ i ];
        } else {
            size_t offset = lines[ i ].rfind( "+0x" );
            ASSERT_TRUE( offset != std::string::npos && lines[ i ].substr( 0, 4 ) == "    " &&
                         hasForm( lines[ i ].substr( offset ), "+0x#" ) )
                << lines[ i ];
            found = found || ( lines[ i ].find( "tests/crash/zu_crash_" ) != std::string::npos && each.function &&
                               lines[ i ].find( each.function ) != std::string::npos );
        }
    }
#ifdef ZU_TEST_BACKTRACE
    EXPECT_TRUE( found || !each.function ) << "no line of " << each.function;
#endif
}
static const CRASH_KIND &kindOf( const std::string &name )
{
    return *std::find_if( std::begin( CRASH_KINDS ), std::end( CRASH_KINDS ),
                          [ & ]( const CRASH_KIND &each ) { return name == each.name; } );
}
static void expectCase( const CASE &chosen )
{
    std::string name;
    for ( const std::string &each : chosen ) {
        name += each + " ";
    }
    SCOPED_TRACE( name );
    FOLDER folder;
    std::string victim = folder.path + "victim";
    if ( chosen[ TARGET ] == "link" ) {
        std::filesystem::create_symlink( victim, folder.path + "link" );
    }
    const CRASH_KIND &each = kindOf( chosen[ KIND ] );
    OUTCOME outcome = runCase( chosen, folder.path );
    EXPECT_EQ( outcome.signalNumber, each.signalNumber );
    if ( chosen[ COMPANY ] == "faulty" ) {
        std::string form = "\n" + banner( "DOUBLE FAULT" ) +
                           "\n  ABORT\n    File      : source/zu/sys/zu_abort.cpp\n    Line      : #\n"
                           "    Expression: !zu___AbortReportFile\n";
        EXPECT_TRUE( hasForm( outcome.errors, form ) ) << outcome.errors;
    } else {
        expectReport( outcome.errors, each );
    }
    EXPECT_FALSE( std::filesystem::exists( victim ) );
    std::string kept = chosen[ TARGET ] == "fine"   ? outcome.errors
                       : chosen[ TARGET ] == "full" ? outcome.errors.substr( 0, 100 )
                                                    : "";
    if ( std::filesystem::exists( folder.path ) ) {
        EXPECT_EQ( folder.report(), kept );
    }
}
static bool isPossible( const CASE &chosen )
{
    // A foreign thread has no second stack; and a heap that is held for ever cannot be found destroyed.
    return !( chosen[ KIND ] == "recursion" && chosen[ THREAD ] == "foreign" ) &&
           !( chosen[ KIND ] == "heap" && chosen[ LOCK ] == "heap" );
}

TEST( Crash, EveryPairOfCircumstances )
{
    std::vector<std::vector<std::string>> axes = { {}, THREADS, LOCKS, COMPANIES, TARGETS };
    for ( const CRASH_KIND &each : CRASH_KINDS ) {
        axes[ KIND ].emplace_back( each.name );
    }
    auto pairsOf = [ & ]( const CASE &chosen ) {
        std::vector<std::string> pairs;
        for ( int a = 0; a < AXES; a++ ) {
            for ( int b = a + 1; b < AXES; b++ ) {
                pairs.push_back( std::to_string( a ) + chosen[ a ] + "+" + std::to_string( b ) + chosen[ b ] );
            }
        }
        return pairs;
    };
    std::mt19937_64 random( 1 ); // the same cases each time
    std::set<std::string> seen;
    auto newPairs = [ & ]( const CASE &chosen ) {
        std::vector<std::string> pairs = pairsOf( chosen );
        return std::count_if( pairs.begin(), pairs.end(), [ & ]( auto &pair ) { return !seen.count( pair ); } );
    };
    for ( int barren = 0; barren < 20; ) {
        CASE best;
        for ( int i = 0; i < 100; i++ ) {
            CASE chosen;
            for ( const std::vector<std::string> &axis : axes ) {
                chosen.push_back( axis[ random() % axis.size() ] );
            }
            if ( isPossible( chosen ) && ( best.empty() || newPairs( chosen ) > newPairs( best ) ) ) {
                best = chosen;
            }
        }
        if ( newPairs( best ) == 0 ) {
            barren++;
            continue;
        }
        for ( const std::string &pair : pairsOf( best ) ) {
            seen.insert( pair );
        }
        expectCase( best );
    }
}
TEST( Crash, NobodyReadsWhatItWrites )
{
    // Of the error stream the report lets go after a while; where the program's own output hangs, the time limit ends
    // the process.
    const CASE chosen = { "check", "main", "none", "alone", "fine" };
    for ( bool deaf : { false, true } ) {
        FOLDER folder;
        PIPE stuck;
        stuck.fill();
        pid_t child = startCrash( chosen, folder.path, stuck.writer, stuck.writer );
        close( stuck.writer );
        if ( deaf ) {
            close( stuck.reader );
        }
        EXPECT_EQ( waitFor( child ), SIGABRT );
        expectReport( folder.report(), kindOf( "check" ) );
        if ( !deaf ) {
            close( stuck.reader );
        }
    }
}
TEST( Crash, ForeignHandlersComeFirstForTheirOwn )
{
    FOLDER folder;
    EXPECT_EQ( runCase( { "illegal", "main", "none", "alone", "handled" }, folder.path ).signalNumber, -3 );
    EXPECT_EQ( folder.report(), "" );
    OUTCOME read = runCase( { "read", "main", "none", "alone", "handled" }, folder.path );
    EXPECT_EQ( read.signalNumber, SIGSEGV );
    expectReport( read.errors, kindOf( "read" ) );
    for ( const char *each : { "illegal", "abort" } ) {
        OUTCOME outcome = runCase( { each, "main", "none", "alone", "relayed" }, folder.path );
        EXPECT_EQ( outcome.signalNumber, kindOf( each ).signalNumber );
        expectReport( outcome.errors, kindOf( each ) );
    }
}
TEST( Crash, WithoutHandlersOnlyOfFailedChecks )
{
    FOLDER folder;
    const ZU_INT flags = ZU_RUNTIME_FLAG_NO_EXCEPTION_HANDLERS;
#ifdef CRASH_OWN_HEAP // a sanitizer has handlers of its own
    OUTCOME read = runCase( { "read", "main", "none", "alone", "fine" }, folder.path, flags );
    EXPECT_EQ( read.signalNumber, SIGSEGV );
    EXPECT_EQ( read.errors + folder.report(), "" );
#endif
    OUTCOME check = runCase( { "check", "main", "none", "alone", "fine" }, folder.path, flags );
    expectReport( check.errors, kindOf( "check" ) );
    OUTCOME faulty = runCase( { "check", "main", "none", "faulty", "none" }, folder.path, flags );
    EXPECT_EQ( faulty.signalNumber, SIGABRT );
    EXPECT_NE( faulty.errors.find( "DOUBLE FAULT" ), std::string::npos );
}
TEST( Crash, ForkedChildrenReportForThemselves )
{
    FOLDER folder;
    OUTCOME child = runCase( { "check", "main", "none", "forked", "none" }, folder.path );
    EXPECT_EQ( child.signalNumber, -SIGABRT );
    size_t own = child.errors.rfind( "\n\n  ***", child.errors.rfind( "ABNORMAL" ) );
    expectReport( child.errors.substr( own ), kindOf( "check" ) );
}

// Counts the threads of a process that are asleep for good.
static int countParked( pid_t process )
{
    int count = 0;
    for ( const auto &task : std::filesystem::directory_iterator( "/proc/" + std::to_string( process ) + "/task" ) ) {
        std::ifstream file( task.path() / "syscall" );
        long number = -1;
        file >> number;
        count += number == SYS_rt_sigsuspend;
    }
    return count;
}
TEST( Crash, DebuggersAreToldOfTheThreadsThatCameSecond )
{
    FOLDER folder;
    PIPE stuck; // the first thread waits at it until all others are there
    stuck.fill();
    int nowhere = open( "/dev/null", O_WRONLY | O_CLOEXEC );
    pid_t child = startCrash( { "check", "main", "none", "eight", "fine" }, folder.path, stuck.writer, nowhere );
    close( stuck.writer );
    bool traced = ptrace( PTRACE_SEIZE, child, 0, 0 ) == 0;
    int status = 0;
    bool stopped = false;
    for ( pid_t changed; ( changed = waitpid( child, &status, WNOHANG ) ) == 0 || WIFSTOPPED( status ); ) {
        if ( changed == child ) {
            stopped = stopped || WSTOPSIG( status ) == SIGTRAP;
            ptrace( PTRACE_CONT, child, 0, WSTOPSIG( status ) == SIGTRAP ? 0 : WSTOPSIG( status ) );
        }
        if ( stuck.reader >= 0 && countParked( child ) == 7 ) {
            close( std::exchange( stuck.reader, -1 ) );
        }
        std::this_thread::yield();
    }
    close( nowhere );
    if ( !traced ) {
        GTEST_SKIP() << "processes may not be traced here";
    }
    EXPECT_TRUE( stopped ) << "no stop in the debugger";
    EXPECT_TRUE( WIFSIGNALED( status ) && WTERMSIG( status ) == SIGABRT );
    expectReport(
        folder.report(), kindOf( "check" ),
        "\n\n<?dml?>  The system has halted and will now enter the debugger. <exec cmd=\"g\">Running</exec> the debuggee\n"
        "<?dml?>  will terminate the process immediately. This is your last chance to debug a\n"
        "<?dml?>  live system. The thread ID of the faulting thread is 0x#. If this thread\n"
        "<?dml?>  was not selected automatically, you should <exec cmd=\"~~[0x#] s\">activate</exec> it now.\n\n"
        "<?dml?>  While aborting, 7 different threads have tried to abort the system in parallel.\n"
        "<?dml?>  These threads have been trapped while executing <i>zu___AbortSecondary()</i>. Check\n"
        "<?dml?>  the call stack of all threads to identify these threads.\n" );
}
TEST( Crash, UnderTheRealDebugger )
{
    if ( system( "command -v gdb > /dev/null" ) != 0 ) {
        GTEST_SKIP() << "there is no gdb";
    }
    std::string output = runProgram( "gdb -nx -q -batch -ex run -ex bt -ex continue --args " +
                                     std::filesystem::read_symlink( "/proc/self/exe" ).string() +
                                     " crash check main none alone none / 0 2>&1" );
    EXPECT_NE( output.find( "<?dml?>  The system has halted and will now enter the debugger." ), std::string::npos );
    EXPECT_NE( output.find( "zu___AbortBreak" ), std::string::npos )
        << "it stops where the developer looks: " << output;
    EXPECT_NE( output.find( "SIGABRT" ), std::string::npos ) << output;
}

#ifdef CRASH_OWN_HEAP
// Some hundred operations that take memory, out of all folders; nothing is released, for the process ends soon.
static void performOperations()
{
    ZU_STRING *text = zuStringCreateFromUtf8( "Ångström, κόσμε,\tfiancé\r\nand many more, so that it is none of the "
                                              "texts that are short enough for their object",
                                              -1 );
    for ( ZU_CHARSET cs = ZU_CHARSET_ASCII; ZU_CHARSET_OK( cs ); cs += 5 ) {
        zuCharsetBufferToString( cs, zuCharsetStringToBuffer( cs, text ) );
    }
    for ( auto change : { zuStringNormalizeNFC, zuStringNormalizeNFD, zuStringNormalizeNFKC, zuStringNormalizeNFKD,
                          zuStringToUpper, zuStringToLower, zuStringToCaseFold } ) {
        ZU_STRING *changed = zuStringRetain( text );
        change( &changed );
    }
    ZU_VECTOR *parts = zuStringSplitChar( text, ',', -1 );
    zuLineSourceReadLines( zuNlfLineSourceLineSource( zuNlfLineSourceCreateFromString( text, ZU_NLF_FLAG_CRLF ) ), -1 );
    ZU_DICT *dict = zuDictCreateWithKeysAndValues( parts, parts );
    ZU_RANGE_MAP *ranges = zuRangeMapCreate();
    ZU_STORE *store = zuRuntimeInfo();
    ZU_BUFFER *buffer = zuBufferCreate();
    ZU_ENUM *names = zuEnumCreate();
    ZU_FLAGSET *flags = zuFlagsetCreate();
    for ( ZU_INT i = 0; i < 20; i++ ) {
        zuDictSetObjKey( &dict, zuBoxedIntObj( zuBoxedIntCreate( i ) ), zuStringObj( text ) );
        zuRangeMapSetRangeKey( &ranges, 10 * i, 10 * i + 5, zuStringObj( text ) );
        zuStoreSetValueFormatCstr( &store, "a%i", -1, text, i );
        zuBufferAppendZero( &buffer, 100 );
        ZU_STRING *name = zuStringCreateFromFormatCstr( "NAME_%i", -1, i );
        zuEnumSetEnumerant( &names, name, i );
        zuFlagsetSetFlag( &flags, name, (ZU_INT)1 << i );
    }
    zuEnumGenerate( names, 3 );
    zuFlagsetGenerate( flags, 0xFF );
    zuObjToString( zuTimeObj( zuTimeNow() ) );
    zuStackTraceVector( zuStackTraceCreate( 0, -1 ) );
    ZU_EVENT_QUEUE *queue = zuEventQueueCreate();
    ZU_SIGNAL *signal = zuSignalCreate();
    zuSignalAddSignalable( signal, zuEventQueueCreateSignalable( queue, zuStringObj( text ) ) );
    zuSignalAssert( signal );
    zuGenerationCreateWithParent( zuGenerationCreate() );
    ZU_ENCODER *enc = zuEncoderCreate();
    zuEncoderEncodeStringVector( enc, parts );
    zuEncoderEncodeStore( enc, store );
    ZU_DECODER *dec = zuDecoderCreate( zuEncoderBuffer( enc ) );
    zuDecoderTryDecodeStringVector( dec, &parts );
    zuDecoderTryDecodeStore( dec, &store );
    zuStoreTextDecodeFromStringVector( zuStoreTextEncodeToStringVector( store ) );
    zuStoreTextTryDecodeFromBuffer( zuStoreTextTryEncodeToBuffer( store, ZU_CHARSET_UTF_8, 0, ZU_NLF_FLAG_LF ),
                                    ZU_CHARSET_UTF_8, 0, ZU_NLF_FLAG_LF );
    zuIdentifierTryCreateFromString( zuIdentifierString( zuIdentifierCreate() ) );
    zuVectorShuffle( &parts );
    zuFileReadBuffer( zuStringCreateFromAscii( "/proc/self/status", -1 ), -1 );
    zuDirectoryContent( zuStringCreateFromAscii( "/proc/self", -1 ), ZU_TRUE, text );
    zuRuntimePathsPath( zuRuntimePaths(), ZU_RUNTIME_PATH_PRODUCT_BIN );
    ZU_TAG_SET *tags = zuTagSetCreate();
    zuTagSetSetTag( &tags, zuStringCreateFromAscii( "colorRed", -1 ) );
    ZU_TAG_MATCH *match = zuTagMatchCreate();
    zuTagMatchSetTagSet( &match, tags );
    zuTagMatchRestore( zuTagMatchStore( match ) );
    ZU_PRIORITY_MAP *priorities = zuPriorityMapCreate();
    zuPriorityMapSet( &priorities, 1, zuStringObj( text ) );
    ZU_OPT_DEF *options = zuOptDefCreate();
    zuOptDefSetLongOptCstr( &options, "name", -1, 1 );
    zuOptDefSetFlags( &options, 1, ZU_OPT_FLAG_ARGUMENT );
    zuOptSeqNext(
        zuOptSeqCreate( options, zuVectorCreateFromObj( zuStringObj( zuStringCreateFromAscii( "--name=x", -1 ) ) ) ) );
    zuTimerCreateSignal( signal );
    if ( ZU_THREAD *thread = zuThreadTrySpawnCstr(
             "short", -1, [] {}, nullptr, ZU_THREAD_PRIORITY_NORMAL ) ) {
        zuThreadJoin( thread );
    }
}
TEST( Crash, WhicheverAllocationFails )
{
    zuRuntimeStartup( 0, -1, nullptr, "crash", nullptr, "1.0" );
    ZU___STACK_TRACE_PLACE place; // so that the children inherit what the symbol engine has read
    ASSERT_TRUE( zu___StackTraceReportStart() );
    zu___StackTraceReportFind( (uintptr_t)performOperations + 1, &place );
    zuStackTraceRelease( zuStackTraceCreate( 0, 1 ) );
    static const CRASH_KIND failed = { "", nullptr, nullptr, SIGABRT,
                                       "\n  ABORT\n    File      : source/zu/sys/zu_mem.cpp\n    Line      : #\n"
                                       "    Expression: res\n" };
    int reports = 0;
    bool reached = true;
    for ( int allocation = 1; reached && !HasFailure(); allocation++ ) {
        SCOPED_TRACE( allocation );
        PIPE errors;
        pid_t child = fork();
        if ( child == 0 ) {
            dup2( errors.writer, STDERR_FILENO );
            allocationsLeft = allocation;
            performOperations();
            _exit( allocationsLeft == 0 ? 4 : 0 );
        }
        close( errors.writer );
        std::string report = readToEnd( errors.reader );
        close( errors.reader );
        int end = waitFor( child );
        reached = end != 0;
        if ( end == SIGABRT ) {
            expectReport( report, failed );
            reports++;
        } else {
            EXPECT_TRUE( end == -4 || end == 0 ) << end << report; // who asked can live without
        }
    }
    EXPECT_GT( reports, 600 );
    zuRuntimeShutdown();
}
#endif

int main( int argc, char **argv )
{
    if ( argc > 1 && strcmp( argv[ 1 ], "crash" ) == 0 ) {
        return runCrash( argv + 2 );
    }
    testing::InitGoogleTest( &argc, argv );
    return RUN_ALL_TESTS();
}
