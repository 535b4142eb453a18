#include "zu_test_module.h"
#include "zu_test_support.h"

#include <dlfcn.h>
#include <fstream>
#include <sys/wait.h>
#include <unistd.h>

static std::string printed; // what the library has printed, in ASCII
static std::atomic<bool> pinReported{ false };

static void printFunction( const ZU_CHAR *chs, ZU_INT chsLength )
{
    std::string text( chs, chs + chsLength );
    printed += text;
    if ( text == "TEST_PIN (2)\n" ) {
        pinReported = true;
        pinReported.notify_all();
    }
}
static std::string takePrinted()
{
    return std::exchange( printed, "" );
}

static const ZU_INT IMPLICIT = ZU_RUNTIME_FLAG_IMPLICIT_MODULE_PATH;

// The library, from start to stop.
class Life {
public:
    explicit Life( ZU_INT flags = IMPLICIT, ZU_INT unloadTimeout = -1 )
    {
        printed.clear();
        zuRuntimeStartup( flags, unloadTimeout, printFunction, nullptr, nullptr, nullptr );
    }
    ~Life()
    {
        stop();
    }
    void stop()
    {
        if ( std::exchange( running, false ) ) {
            EXPECT_EQ( zuRuntimeShutdown(), 0 );
        }
    }

private:
    bool running = true;
};

static bool load( const char *name )
{
    return zuRuntimeTryLoadModule( zu::text( name ).get() );
}
static ZU_MODULE *module( const char *name )
{
    return zu::adopt( zuRuntimeModule( zu::text( name ).get() ) ).get(); // static: outlives the reference
}
// The name of a module's file
static std::string fileOf( const std::string &name )
{
    return zu___module_record.productName + ( "-" + name + ".so" );
}
// The names of the loaded modules in their order
static std::string loaded()
{
    zu::Ref<ZU_VECTOR> modules = zu::adopt( zuRuntimeModulesVector() );
    std::string names;
    for ( ZU_INT i = 0; i < zuVectorLength( modules.get() ); i++ ) {
        names += ( names.empty() ? "" : " " ) +
                 std::string( zuModuleFrom( zuVectorBacking( modules.get() )[ i ] )->moduleRecord->name );
    }
    return names;
}
static ZU_OBJ *createPin()
{
    ZU_OBJ *pin = nullptr;
    int agreed;
    EXPECT_EQ( zuModuleRunPersonality( module( "gauge" ), &pin, &agreed ), &agreed );
    return pin;
}

TEST( RuntimeLife, FiveHundredTimes )
{
    for ( int i = 0; i < 500; i++ ) {
        zuRuntimeStartup( i % 2 ? 0 : ZU_RUNTIME_FLAG_OBJECT_DATABASE, -1, printFunction, i % 3 ? "a" : nullptr,
                          i % 5 ? "b" : nullptr, i % 7 ? "c" : nullptr );
        EXPECT_EQ( zuRuntimeVersionApplicationHasIdentifier(), i % 3 != 0 );
        zu::Ref<ZU_STORE> info = zu::adopt( zuRuntimeInfo() );
        zu::Ref<ZU_STACK_TRACE> trace = zu::adopt( zuStackTraceCreate( 0, i % 25 ? 0 : 1 ) ); // a slow start
        zuRuntimeSetUserInformationKey( zu::text( "key" ).get(), info.get() );
        info = nullptr;
        trace = nullptr;
        ASSERT_EQ( zuRuntimeShutdown(), 0 );
        ASSERT_EQ( zuModule()->sorts, 0u );
        EXPECT_EQ( zuRuntimeFlags(), 0 );
    }
    EXPECT_EQ( takePrinted(), "" );
}
static const ZU_INT AHEAD_OF_ALL = zuTimestamp();
TEST( RuntimeLife, HasItsClockAheadOfStart )
{
    Life life;
    EXPECT_GT( AHEAD_OF_ALL, 0 );
    EXPECT_LE( AHEAD_OF_ALL, zuTimestamp() );
}
static const std::string REPORT_LINE = std::string( 90, '-' ) + "\n";

static std::string productReport()
{
    const ZU___MODULE_RECORD &record = zu___module_record;
    std::stringstream report;
    report << REPORT_LINE << "Product   : " << record.productName << "\nFriendly  : " << record.productFriendlyName
           << "\nVersion   : " << record.productVersionMajor << "." << record.productVersionMinor << "."
           << record.productVersionRelease << "\nOS        : " << zu___RuntimeOsFriendlyNameCstr( zuRuntimeOs() )
           << "\nHardware  : " << zu___RuntimeHardwareFriendlyNameCstr( zuRuntimeHardware() )
           << "\nVariant   : " << zu___RuntimeVariantFriendlyNameCstr( zuRuntimeVariant() )
           << "\nBuild Time: " << record.productBuildTime << "\n";
    return report.str();
}
TEST( RuntimeLife, ReportsLeaks )
{
    const ZU_INT sorts = ZU_RUNTIME_FLAG_SNAPSHOT_SORT, objects = ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT,
                 texts = ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT_TOSTRING, logs = ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT_LOG;
    ZU_STRING *leak;
    ZU_OBJ *others[ 2 ];
    {
        Life quiet( ZU_RUNTIME_FLAG_OBJECT_DATABASE );
        leak = zuStringRetain( zuStringCreateFromAscii( "leak", -1 ) );
        others[ 0 ] = zuBarrierObj( zuBarrierCreate( ZU_TRUE ) );
        others[ 1 ] = zuBarrierObj( zuBarrierCreate( ZU_TRUE ) );
        zu___ObjLogAppend( others[ 0 ], zu::text( "raised" ).get() );
        zu___ObjLogAppend( others[ 0 ], zu::text( "" ).get() );
    }
    EXPECT_EQ( takePrinted(), "" );
    EXPECT_EQ( zuModule()->sorts, 2u );
    const std::string sortLines = "ZU_STRING  1\nZU_BARRIER 2\n";
    const std::tuple<ZU_INT, std::string> ROWS[] = {
        { sorts, sortLines },
        { objects, "ZU_STRING (2)\nZU_BARRIER (1)\nZU_BARRIER (1)\n" },
        { sorts | objects | texts, sortLines + "\nZU_STRING (2) \"leak\"\nZU_BARRIER (1)\nZU_BARRIER (1)\n" },
        { objects | logs, "ZU_STRING (2)\nZU_BARRIER (1)\n\traised\n\t\nZU_BARRIER (1)\n" },
    };
    for ( const auto &[ flags, text ] : ROWS ) {
        Life reporting( ZU_RUNTIME_FLAG_OBJECT_DATABASE | flags );
        EXPECT_EQ( zuRuntimeFlags(), ZU_RUNTIME_FLAG_OBJECT_DATABASE | flags );
        reporting.stop();
        EXPECT_EQ( takePrinted(), productReport() + REPORT_LINE + text );
        EXPECT_EQ( zuModule()->sorts, 2u );
    }
    {
        Life again( ZU_RUNTIME_FLAG_OBJECT_DATABASE ); // which the objects are in
        zuStringRelease( leak );
        zuStringRelease( leak );
        zuObjRelease( others[ 0 ] );
        zuObjRelease( others[ 1 ] );
    }
    EXPECT_EQ( zuModule()->sorts, 0u );
}

TEST( RuntimeModules, DependenciesAheadExtensionsBehind )
{
    Life life;
    EXPECT_TRUE( load( "gauge" ) );
    EXPECT_EQ( loaded(), "zu unit scale gauge plot ink" );
    EXPECT_EQ( takePrinted(), "unit load\nscale load\ngauge load\nplot load\nink load\n" );
    EXPECT_TRUE( load( "gauge" ) );
    EXPECT_TRUE( load( "plot" ) );
    EXPECT_EQ( takePrinted(), "" ) << "nothing is loaded twice";
    life.stop();
    EXPECT_EQ( takePrinted(),
               "plot prepare\nscale prepare\nunit prepare\nplot begin\nplot end\nscale begin\nscale end\n"
               "unit begin\nunit end\n" );
}
TEST( RuntimeModules, SeveralUpToTheFirstFailure )
{
    Life life;
    EXPECT_TRUE( zuRuntimeTryLoadModulesCstr( " unit  ink scale", 10 ) );
    EXPECT_EQ( loaded(), "zu unit ink" );
    EXPECT_FALSE( zuRuntimeTryLoadModulesWcstr( u"scale absent plot", -1 ) );
    EXPECT_EQ( loaded(), "zu unit ink scale" );
    zu::Ref<ZU_VECTOR> names = zu::adopt( zuVectorCreate() );
    EXPECT_TRUE( zuRuntimeTryLoadModulesVector( names.get() ) );
    zuVectorAppendString( names.inOut(), zu::text( "plot" ).get() );
    EXPECT_TRUE( zuRuntimeTryLoadModulesVector( names.get() ) );
    EXPECT_EQ( loaded(), "zu unit ink scale plot gauge" );
    zuRuntimeUnloadAllModules();
    EXPECT_EQ( loaded(), "zu" );
    EXPECT_EQ( module( "plot" ), nullptr );
    EXPECT_TRUE( zuRuntimeTryLoadModules( zu::text( "plot" ).get() ) ) << "after unloading all can be loaded again";
    EXPECT_EQ( loaded(), "zu plot unit scale gauge ink" );
}
TEST( RuntimeModules, ComeFromThePathOfBinaries )
{
    std::string variable = std::string( "RQ_" ) + zu___module_record.productName + "_BIN_PATH";
    std::transform( variable.begin(), variable.end(), variable.begin(), []( char ch ) { return (char)toupper( ch ); } );
    setenv( variable.c_str(), ZU_TEST_MODULES_DIR, 1 );
    {
        Life life( 0 );
        EXPECT_TRUE( load( "gauge" ) );
        EXPECT_EQ( loaded(), "zu unit scale gauge plot ink" );
    }
    setenv( variable.c_str(), "/nowhere", 1 );
    {
        Life life( ZU_RUNTIME_FLAG_MODULE_DEBUG );
        EXPECT_FALSE( load( "gauge" ) ) << "though it would be found without a path";
        EXPECT_NE( takePrinted().find( "dlopen(): null, dlerror(): /nowhere/" + fileOf( "gauge" ) ),
                   std::string::npos );
    }
    unsetenv( variable.c_str() );
}
TEST( RuntimeModules, TellWhyTheyAreRefused )
{
    // behind the line that says which module is being loaded
    // what stays loaded
    static const std::tuple<const char *, const char *, const char *> ROWS[] = {
        { "absent", "[zu___RuntimePlatformLoadModule()] dlopen(): null, dlerror(): ", "zu" },
        { "nothing", "[zu___RuntimePlatformLoadModule()] dlsym(): null, dlerror(): ", "zu" },
        { "null", "[zu___RuntimePlatformLoadModule()] zuModuleFrom(): null\n", "zu" },
        { "unwilling", "unwilling load\n", "zu" },
        { "needy",
          "[zu___RuntimeTryLoadModule()] module: unit\nunit load\n[zu___RuntimeTryLoadModule()] module: absent\n",
          "zu unit" },
    };
    for ( const auto &[ name, reason, left ] : ROWS ) {
        Life life( IMPLICIT | ZU_RUNTIME_FLAG_MODULE_DEBUG );
        EXPECT_FALSE( load( name ) ) << name;
        std::string expected = std::string( "[zu___RuntimeTryLoadModule()] module: " ) + name + "\n" + reason;
        EXPECT_EQ( takePrinted().substr( 0, expected.size() ), expected );
        EXPECT_EQ( loaded(), left ) << name;
        EXPECT_FALSE( load( name ) ) << "again: nothing is left half loaded";
    }
    Life life( IMPLICIT | ZU_RUNTIME_FLAG_MODULE_DEBUG );
    EXPECT_TRUE( load( "unit" ) );
    takePrinted();
    life.stop();
    EXPECT_EQ( takePrinted(), "unit prepare\n[zuRuntimeUnloadAllModules()] module: unit\nunit begin\nunit end\n" );
}
static std::string check( const std::string &fn )
{
    zu::Ref<ZU_STRING> misfit = zu::adopt( zuModuleCheckFile( zu::text( fn ).get() ) );
    return misfit ? zu::toUtf8( misfit ) : "";
}
TEST( RuntimeModules, MustFitIntoTheProcess )
{
    static const char *const MISFITS[] = {
#define TEST_MISFIT( change, text ) text,
#include "zu_test_module_misfits.h"
    };
    Life life( IMPLICIT | ZU_RUNTIME_FLAG_MODULE_DEBUG );
    for ( size_t i = 0; i < std::size( MISFITS ); i++ ) {
        SCOPED_TRACE( MISFITS[ i ] );
        setenv( TEST_MISFIT_VARIABLE, std::to_string( i ).c_str(), 1 );
        EXPECT_EQ( check( fileOf( "changing" ) ), MISFITS[ i ] );
        takePrinted();
        EXPECT_FALSE( load( "changing" ) );
        EXPECT_EQ( takePrinted(),
                   "[zu___RuntimeTryLoadModule()] module: changing\n[zu___RuntimePlatformLoadModule()] " +
                       std::string( i + 1 < std::size( MISFITS ) ? "zu___ModuleCheckCompatibility(): false\n"
                                                                 : "module name invalid\n" ) );
    }
    unsetenv( TEST_MISFIT_VARIABLE );
    EXPECT_EQ( check( fileOf( "changing" ) ), "" );
    EXPECT_TRUE( load( "changing" ) );
}
TEST( RuntimeModules, CanBeCheckedWithoutLoading )
{
    Life life;
    EXPECT_EQ( check( fileOf( "gauge" ) ), "" );
    EXPECT_EQ( check( fileOf( "absent" ) ).find( "dlopen(): null, dlerror(): " ), 0u );
    EXPECT_EQ( check( fileOf( "nothing" ) ).find( "dlsym(): null, dlerror(): " ), 0u );
    EXPECT_EQ( check( fileOf( "null" ) ), "module: null" );
    EXPECT_EQ( check( fileOf( "sort" ) ), "module: no module object" );
    for ( const std::string &fn :
          { std::string( "gauge.so" ), fileOf( "" ), fileOf( "A" ), fileOf( "gauge" ) + ".1", fileOf( "x/gauge" ) } ) {
        EXPECT_EQ( check( fn ), "file name: not of the form " + fileOf( "<module>" ) ) << fn;
    }
    EXPECT_EQ( loaded(), "zu" );
    EXPECT_EQ( takePrinted(), "" );
}
TEST( RuntimeModules, WaitForTheirObjects )
{
    Life life;
    ASSERT_TRUE( load( "gauge" ) );
    ZU_OBJ *pin = createPin();
    EXPECT_EQ( module( "gauge" )->sorts, 1u );
    takePrinted();
    // Unloading has begun when "plot" has ended; then the thread gives the object up.
    std::thread other( [ & ] {
        while ( zu::adopt( zuRuntimeModule( zu::text( "plot" ).get() ) ) ) {
            std::this_thread::yield();
        }
        zuObjRelease( pin );
    } );
    zuRuntimeUnloadAllModules();
    other.join();
    std::string text = takePrinted();
    EXPECT_LT( text.find( "plot end\n" ), text.find( "gauge free\n" ) );
    EXPECT_LT( text.find( "gauge free\n" ), text.find( "scale begin\n" ) );
}
static bool endsWell( pid_t child )
{
    int status = 0;
    return waitpid( child, &status, 0 ) == child && status == 0;
}
TEST( RuntimeModules, AreNotWaitedForInAForkedChild )
{
    Life life;
    ASSERT_TRUE( load( "gauge" ) );
    ZU_OBJ *pin = createPin(); // for the child that of a thread that is gone
    pid_t child = fork();
    if ( child == 0 ) {
        alarm( 30 ); // sooner than the time for objects is over
        _exit( zuRuntimeShutdown() == 0 ? 0 : 1 );
    }
    EXPECT_TRUE( endsWell( child ) );
    zuObjRelease( pin );
}
static bool printedInChild = false;
static void forkingPrintFunction( const ZU_CHAR *, ZU_INT )
{
    pid_t child = fork();
    if ( child == 0 ) {
        alarm( 30 );
        zuStringRelease( zuStringCreateFromAscii( "child", -1 ) );
        _exit( 0 );
    }
    printedInChild = endsWell( child );
}
TEST( RuntimeLife, PrintFunctionsMayFork )
{
    zuRuntimeStartup( 0, -1, forkingPrintFunction, nullptr, nullptr, nullptr );
    zuPrintCstr( "fork", -1 );
    EXPECT_TRUE( printedInChild );
    EXPECT_EQ( zuRuntimeShutdown(), 0 );
}
// The report comes after ten seconds; a time-out of as much never comes then.
TEST( RuntimeModules, AreReportedWhenStuck )
{
    Life life( IMPLICIT | ZU_RUNTIME_FLAG_OBJECT_DATABASE | ZU_RUNTIME_FLAG_SNAPSHOT_SORT |
                   ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT,
               10000 );
    ASSERT_TRUE( load( "gauge" ) );
    ZU_OBJ *pin = createPin();
    zuObjRetain( pin );
    takePrinted();
    pinReported = false;
    std::thread other( [ & ] {
        pinReported.wait( false );
        zuObjRelease( pin );
        zuObjRelease( pin );
    } );
    zuRuntimeUnloadAllModules();
    other.join();
    const std::string report = productReport() + REPORT_LINE + "TEST_PIN 1\n\nTEST_PIN (2)\n";
    EXPECT_EQ( takePrinted(), "plot prepare\nscale prepare\nunit prepare\nplot begin\nplot end\n" + report +
                                  "gauge free\nscale begin\nscale end\nunit begin\nunit end\n" );
}
TEST( RuntimeModules, ShowInStackTraces )
{
    Life life;
    zuPrintStackTrace(); // starts the engine ahead of the file that it has to find out about
    ASSERT_TRUE( load( "gauge" ) );
    takePrinted();
    zuModuleRunPersonality( module( "gauge" ), nullptr, nullptr );
#ifdef ZU_TEST_BACKTRACE
    EXPECT_NE( takePrinted().find( "testPersonality" ), std::string::npos );
#else
    EXPECT_NE( takePrinted().find( "zuPrintStackTrace" ), std::string::npos ); // only what is exported has a name
#endif
}
// The bytes of address space that the process has.
static ZU_INT mapped()
{
    ZU_INT pages = 0;
    std::ifstream( "/proc/self/statm" ) >> pages;
    return pages * sysconf( _SC_PAGESIZE );
}
TEST( RuntimeModules, LeaveNoSymbolsBehind )
{
    Life life;
    EXPECT_FALSE( load( "foreign" ) );
    ZU_INT before = mapped();
    for ( int i = 0; i < 10; i++ ) {
        zu::Ref<ZU_STACK_TRACE> trace = zu::adopt( zuStackTraceCreate( 0, -1 ) );
        EXPECT_GT( zuStackTraceLength( trace.get() ), 0 );
        EXPECT_FALSE( load( "foreign" ) );
    }
    EXPECT_LT( mapped() - before, 16 * 1024 * 1024 ); // a sanitizer maps some more
    zuPrintStackTrace();
    life.stop();
    EXPECT_LT( mapped() - before, 16 * 1024 * 1024 ); // a sanitizer maps some more
}
// While it is loaded, the module waits for a thread that takes a trace.
TEST( RuntimeModules, TakeTracesAsTheyLoad )
{
    Life life;
    EXPECT_TRUE( load( "tracing" ) );
}
TEST( RuntimeModulesAborts, StuckPastTheTimeout )
{
    static const char EXPRESSION[] = "msecs <= zu___RuntimeUnloadModuleTimeout";
    for ( ZU_INT timeout : { 0, 120 } ) {
        expectAbort(
            EXPRESSION,
            [ & ] {
                Life life( IMPLICIT, timeout );
                load( "gauge" );
                createPin();
                life.stop();
            },
            "gauge" );
    }
}
TEST( RuntimeModulesAborts, ByFaultsOfModules )
{
    expectAbort( "!zuDictHasStringKey( zu___RuntimeLoadingDict, moduleName )", [] {
        Life life;
        load( "circle_a" );
    } );
    expectAbort(
        "!obj || zuObjSort(obj)==&zu___sort_ZU_MODULE",
        [] {
            Life life;
            load( "sort" );
        },
        "stdfunc from" );
}
