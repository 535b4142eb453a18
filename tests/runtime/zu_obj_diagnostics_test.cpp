#include "zu/base/zu_stack_trace_internal.h"
#include "zu/runtime/zu_runtime_internal.h"
#include "zu_test_string.h"

static const ZU_INT DATABASE = ZU_RUNTIME_FLAG_OBJECT_DATABASE;

static ZU___MODULE_RECORD testRecord = {
    ZU___MODULE_RECORD_VERSION, ZU___MODULE_ANY_PRODUCT, "light", "", "1.0", "", ""
};
static ZU_MODULE testModule = {
    ZU___OBJ_STATIC_INITIALIZER( ZU___OBJ_TYPE_MODULE ), &testRecord, {}, {}, {}, {}, {}, 0, {}, {}
};

// A lamp prints, and writes to its own log whenever it does; a wire does neither.
struct TEST_LAMP {
    ZU_OBJ obj;
    std::atomic<int> *freed;
};
ZU_STDFUNCS_DECLARE( TEST_LAMP, testLamp )
static void lampFree( ZU_OBJ *thisObj );
static ZU_STRING *lampToString( ZU_OBJ *thisObj );
static ZU_SORT zu___sort_TEST_LAMP = ZU___SORT_INITIALIZER( "TEST_LAMP", &testModule, lampFree, nullptr, lampToString );
ZU___STDFUNCS( TEST_LAMP, testLamp )
static ZU_SORT zu___sort_TEST_WIRE_OF_COPPER =
    ZU___SORT_INITIALIZER( "TEST_WIRE_OF_COPPER", &testModule, nullptr, nullptr, nullptr );

static std::atomic<int> lampsFreed{ 0 };

[[gnu::noinline]] static TEST_LAMP *lampCreate()
{
    TEST_LAMP *lamp = (TEST_LAMP *)zu___ObjCreate( sizeof( TEST_LAMP ), testLampSort() );
    lamp->freed = &lampsFreed;
    return lamp;
}
static void lampFree( ZU_OBJ *thisObj )
{
    ( *testLampFrom( thisObj )->freed )++;
}
static ZU_STRING *lampToString( ZU_OBJ *thisObj )
{
    zu___ObjLogAppend( thisObj, string( "printed" ).get() );
    return zuStringCreateFromAscii( "lit", -1 );
}
static ZU_OBJ *wireCreate()
{
    return zu___ObjCreate( sizeof( ZU_OBJ ), &zu___sort_TEST_WIRE_OF_COPPER );
}

using Lines = std::vector<std::string>;
static Lines logOf( ZU_OBJ *obj )
{
    ZU_VECTOR *log = zu___ObjLog( obj );
    return log ? takeTexts( log ) : Lines();
}

// Database and snapshots
TEST( ObjDatabase, OffThereAreNoSnapshots )
{
    runRestarted( 0, [] {
        EXPECT_FALSE( zu___ObjOdbEnabled() );
        EXPECT_EQ( zuSortSnapshot( zuStringSort() ), nullptr );
        EXPECT_TRUE( !zuModuleSnapshotSorts( zuModule() ) && !zuModuleSnapshotObjects( zuModule() ) );
        EXPECT_TRUE( !zuRuntimeSnapshotSorts() && !zuRuntimeSnapshotObjects() );
        expectAbort( "odbEnabled", [] { zu___ObjOdbLock(); } );
        expectAbort( "odbEnabled", [] { zu___ObjOdbUnlock(); } );
    } );
}
// A snapshot has what lives, in the order of creation, and keeps it alive.
TEST( ObjDatabase, SnapshotsHaveWhatLives )
{
    runRestarted( DATABASE, [] {
        SeededRandom random;
        std::vector<ZU_OBJ *> lamps, wires;
        ZU_VECTOR *held = nullptr;
        for ( int step = 0; step < 500; step++ ) {
            std::vector<ZU_OBJ *> &kind = random() % 2 ? lamps : wires;
            if ( kind.size() < random() % 100 ) {
                kind.push_back( &kind == &lamps ? &lampCreate()->obj : wireCreate() );
            } else if ( !kind.empty() ) {
                auto which = kind.begin() + (ptrdiff_t)( random() % kind.size() );
                ASSERT_EQ( ZU_REF_RETAIN_COUNT( *which ), 2u ) << "the last snapshot has the other reference";
                zuObjRelease( *which );
                kind.erase( which );
            }
            ZU_REF_RELEASE_OPT( held );
            ZU_VECTOR *sorts = zuModuleSnapshotSorts( &testModule ), *objects = zuModuleSnapshotObjects( &testModule );
            ASSERT_EQ( zuVectorLength( sorts ), !lamps.empty() + !wires.empty() );
            std::vector<ZU_OBJ *> expected;
            for ( ZU_INT i = 0; i < zuVectorLength( sorts ); i++ ) {
                bool isLamps = zuVectorBacking( sorts )[ i ] == zuSortObj( testLampSort() );
                expected.insert( expected.end(), ( isLamps ? lamps : wires ).begin(),
                                 ( isLamps ? lamps : wires ).end() );
            }
            ZU_OBJ *const *items = zuVectorBacking( objects );
            ASSERT_EQ( std::vector<ZU_OBJ *>( items, items + zuVectorLength( objects ) ), expected );
            zuVectorRelease( sorts );
            held = objects;
        }
        ZU_REF_RELEASE_OPT( held );
        lamps.insert( lamps.end(), wires.begin(), wires.end() );
        for ( ZU_OBJ *obj : lamps ) {
            ASSERT_EQ( ZU_REF_RETAIN_COUNT( obj ), 1u );
            zuObjRelease( obj );
        }

        zu::Ref<ZU_VECTOR> first = zu::adopt( zuSortSnapshot( zuVectorSort() ) );
        zu::Ref<ZU_VECTOR> second = zu::adopt( zuRuntimeSnapshotObjects() );
        EXPECT_FALSE( zuVectorHasObj( first.get(), zuVectorObj( first.get() ), ZU_FALSE ) );
        EXPECT_TRUE( zuVectorHasObj( second.get(), zuVectorObj( first.get() ), ZU_FALSE ) );
        EXPECT_FALSE( zuVectorHasObj( second.get(), zuVectorObj( second.get() ), ZU_FALSE ) );
        zu::Ref<ZU_VECTOR> sorts = zu::adopt( zuRuntimeSnapshotSorts() );
        EXPECT_TRUE( zuVectorHasObj( sorts.get(), zuSortObj( zuMonitorSort() ), ZU_FALSE ) );
    } );
}
// An object that dies while a snapshot is taken is either in it and lives on, or it is not.
TEST( ObjDatabase, SnapshotsWhileObjectsComeAndGo )
{
    runRestarted( DATABASE, [] {
        static constexpr int ROUNDS = 3000;
        lampsFreed = 0;
        std::atomic<int> busy{ 2 };
        runThreads( 4, [ & ]( int thread ) {
            if ( thread < 2 ) {
                for ( int i = 0; i < ROUNDS; i++ ) {
                    testLampRelease( lampCreate() );
                }
                busy--;
            }
            while ( busy > 0 ) {
                zuVectorRelease( thread == 2 ? zuSortSnapshot( testLampSort() ) : zuRuntimeSnapshotObjects() );
                zuVectorRelease( zuModuleSnapshotObjects( &testModule ) );
            }
        } );
        EXPECT_EQ( lampsFreed, 2 * ROUNDS );
        EXPECT_TRUE( !testModule.sortsFirst && testModule.sorts == 0 );
    } );
}

// Logs
TEST( ObjLog, HasLinesInTheirOrder )
{
    runRestarted( 0, [] {
        TEST_LAMP *lamp = lampCreate();
        EXPECT_EQ( zu___ObjLog( &lamp->obj ), nullptr );
        zu::Ref<ZU_VECTOR> lines = zu::adopt( zuVectorCreate() );
        zu___ObjLogAppendVector( &lamp->obj, lines.get() );
        EXPECT_EQ( zu___ObjLog( &lamp->obj ), nullptr );
        zu___ObjLogAppend( &lamp->obj, string( "" ).get() );
        zu___ObjLogAppend( &lamp->obj, string( "κόσμε 🙂" ).get() );
        EXPECT_EQ( logOf( &lamp->obj ), ( Lines{ "", "κόσμε 🙂" } ) );
        zuVectorAppendInt( lines.inOut(), 7 );
        zuVectorAppendObj( lines.inOut(), &lamp->obj ); // whose text writes to the same log
        zu___ObjLogAppendVector( &lamp->obj, lines.get() );
        EXPECT_EQ( logOf( &lamp->obj ), ( Lines{ "", "κόσμε 🙂", "printed", "7", "lit" } ) );
        lines = nullptr;
        testLampRelease( lamp );
    } );
}
TEST( ObjLog, KeepsTogetherWhatCameTogether )
{
    ZU_OBJ *wire = zu___ObjCreate( sizeof( ZU_OBJ ), &zu___sort_TEST_WIRE_OF_COPPER );
    size_t ahead = logOf( wire ).size(); // the origin, where that is kept
    runThreads( 3, [ & ]( int thread ) {
        zu::Ref<ZU_VECTOR> block = zu::adopt( zuVectorCreate() );
        for ( ZU_INT i = 0; i < 3; i++ ) {
            zuVectorAppendInt( block.inOut(), 10 * thread + i );
        }
        for ( int i = 0; i < 200; i++ ) {
            zu___ObjLogAppendVector( wire, block.get() );
            if ( i % 20 == 0 ) {
                ZU_REF_RELEASE_OPT( zu___ObjLog( wire ) );
            }
        }
    } );
    Lines lines = logOf( wire );
    ASSERT_EQ( lines.size(), ahead + 3 * 3 * 200 );
    for ( size_t i = ahead; i < lines.size(); i++ ) {
        ASSERT_EQ( std::stoul( lines[ i ] ) % 10, ( i - ahead ) % 3 );
    }
    zuObjRelease( wire );
}

// Origins
static Lines afterFirst( Lines lines )
{
    lines.erase( lines.begin() );
    return lines;
}
// Calls itself `depth` times, and compares what the object's origin and a trace have of that.
[[gnu::noinline]] static int expectOrigin( int depth )
{
    if ( depth > 0 ) {
        return expectOrigin( depth - 1 ) + 1;
    }
    ZU_OBJ *wire = zu___ObjCreate( sizeof( ZU_OBJ ), &zu___sort_TEST_WIRE_OF_COPPER );
    ZU_STACK_TRACE *st = zuStackTraceCreate( 1, -1 );
    Lines trace = takeTexts( zuStackTraceVector( st ) ), origin = logOf( wire );
    trace.push_back( "" );
    EXPECT_EQ( afterFirst( origin ), afterFirst( trace ) ) << "what has called this function";
#ifdef ZU_TEST_BACKTRACE
    EXPECT_NE( origin[ 0 ].find( "expectOrigin" ), std::string::npos ) << origin[ 0 ];
#endif
    zuStackTraceRelease( st );
    zuObjRelease( wire );
    return 0;
}
TEST( ObjLog, BeginsWithTheOrigin )
{
    runRestarted( DATABASE | ZU_RUNTIME_FLAG_OBJECT_ORIGIN, [] {
        EXPECT_EQ( expectOrigin( 0 ) + expectOrigin( 300 ) + expectOrigin( 5000 ), 5300 );
        zu::Ref<ZU_STACK_TRACE> st = zu::adopt( zuStackTraceCreate( 0, 1 ) );
        zu::Ref<ZU_VECTOR> vec = zu::adopt( zuStackTraceVector( st.get() ) );
        zu::Ref<ZU_DICT> dict = zu::adopt( zuDictCreate() );
        zu::Ref<ZU_BUFFER> buffer = zu::adopt( zuBufferCreateFromBits( 1, 1 ) );
        zuDictSetStringKey( dict.inOut(), string( "a" ).get(), zuBufferObj( buffer.get() ) );
        for ( ZU_OBJ *obj : { zuStackTraceObj( st.get() ), zuVectorObj( vec.get() ), zuDictObj( dict.get() ),
                              zuBufferObj( buffer.get() ), zuVectorBacking( vec.get() )[ 0 ] } ) {
            EXPECT_EQ( zu___ObjLog( obj ), nullptr ) << zuObjSort( obj )->name;
        }
    } );
}
TEST( ObjLog, TakesCallStacks )
{
    runRestarted( 0, [] {
        ZU_OBJ *wire = wireCreate();
        zu___ObjLogAppendCallStack( wire, 0, 2 );
        zu___ObjLogAppendCallStack( wire, 1, 0 );
        zu___ObjLogAppendCallStack( wire, 1, -1 );
        Lines lines = logOf( wire );
        ASSERT_GT( lines.size(), 6u );
        EXPECT_TRUE( lines[ 2 ].empty() && lines[ 3 ].empty() && lines.back().empty() );
#ifdef ZU_TEST_BACKTRACE
        EXPECT_NE( lines[ 0 ].find( "zu___ObjLogAppendCallStack" ), std::string::npos ) << lines[ 0 ];
        EXPECT_EQ( lines[ 4 ].find( "zu___ObjLogAppendCallStack" ), std::string::npos ) << lines[ 4 ];
#endif
        zuObjRelease( wire );
    } );
}
