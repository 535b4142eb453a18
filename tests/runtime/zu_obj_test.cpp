#include "zu_test_string.h"

static ZU___MODULE_RECORD testRecord = {
    ZU___MODULE_RECORD_VERSION, nullptr, nullptr, -1, -1, -1, nullptr, nullptr, nullptr, "objtest", "", "", "", ""
};
static ZU_MODULE testModule = {
    ZU___OBJ_STATIC_INITIALIZER( ZU___OBJ_TYPE_MODULE ), &testRecord, {}, {}, {}, {}, {}, 0, {}, {}
};

// A node of a graph: it holds others, and counts its end.
struct TEST_NODE {
    ZU_OBJ obj;
    std::vector<TEST_NODE *> *held; // null: none
    TEST_NODE *next;                // null: none
    std::atomic<int> *freed;        // null: nobody counts
};
ZU_STDFUNCS_DECLARE( TEST_NODE, testNode )
static void nodeFree( ZU_OBJ *thisObj );
static ZU_SORT zu___sort_TEST_NODE = ZU___SORT_INITIALIZER( "TEST_NODE", &testModule, nodeFree, nullptr, nullptr );
ZU___STDFUNCS( TEST_NODE, testNode )

static TEST_NODE *nodeCreate( std::atomic<int> *freed = nullptr, TEST_NODE *next = nullptr )
{
    TEST_NODE *node = (TEST_NODE *)zu___ObjCreate( sizeof( TEST_NODE ), testNodeSort() );
    node->held = nullptr;
    node->next = next;
    node->freed = freed;
    return node;
}
static void nodeFree( ZU_OBJ *thisObj )
{
    TEST_NODE *node = testNodeFrom( thisObj );
    ZU_REF_RELEASE_OPT( node->next );
    ZU_REF_POISON( node->next );
    if ( node->held ) {
        for ( TEST_NODE *each : *node->held ) {
            testNodeRelease( each );
        }
        delete node->held;
    }
    if ( node->freed ) {
        ( *node->freed )++;
    }
}

// A number, with an order and a text of its own.
struct TEST_NUMBER {
    ZU_OBJ obj;
    ZU_INT value;
};
ZU_STDFUNCS_DECLARE( TEST_NUMBER, testNumber )
static ZU_INT numberCompares = 0;
static ZU_INT numberCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj );
static ZU_STRING *numberToString( ZU_OBJ *thisObj );
static ZU_SORT zu___sort_TEST_NUMBER =
    ZU___SORT_INITIALIZER( "TEST_NUMBER", nullptr, nullptr, numberCompare, numberToString );
ZU___STDFUNCS( TEST_NUMBER, testNumber )

static TEST_NUMBER *numberCreate( ZU_INT value )
{
    TEST_NUMBER *number = (TEST_NUMBER *)zu___ObjCreate( sizeof( TEST_NUMBER ), testNumberSort() );
    number->value = value;
    return number;
}
static ZU_INT numberCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    numberCompares++;
    return zuIntConstrain( testNumberFrom( thisObj )->value - testNumberFrom( thatObj )->value, -1, 1 );
}
static ZU_STRING *numberToString( ZU_OBJ *thisObj )
{
    return zuStringCreateFromAscii( testNumberFrom( thisObj )->value < 0 ? "minus" : "plus", -1 );
}

// Order and identity

// The order over all objects is total, whatever their classes.
TEST( Obj, OrderIsTotal )
{
    SeededRandom random;
    std::vector<ZU_OBJ *> objs;
    for ( int i = 0; i < 60; i++ ) {
        ZU_CHAR letter = 'a' + (ZU_CHAR)( random() % 4 );
        ZU_OBJ *choices[] = { testNodeObj( nodeCreate() ),
                              testNumberObj( numberCreate( (ZU_INT)( random() % 5 ) - 2 ) ),
                              zuStringObj( zuStringCreateFromCharsCopy( &letter, 1 ) ) };
        std::shuffle( choices, choices + 3, random );
        objs.insert( objs.end(), choices, choices + 3 );
    }
    for ( ZU_OBJ *obj : { zuSortObj( testNodeSort() ), zuSortObj( zuStringSort() ), zuModuleObj( &testModule ) } ) {
        objs.push_back( zuObjRetain( obj ) );
    }
    for ( ZU_OBJ *a : objs ) {
        for ( ZU_OBJ *b : objs ) {
            ZU_INT order = zuObjCompare( a, b );
            ASSERT_EQ( order, -zuObjCompare( b, a ) );
            std::string nameA = zuObjSort( a )->name, nameB = zuObjSort( b )->name;
            if ( nameA != nameB || zuObjSort( a ) == testNodeSort() ) {
                ZU_INT byIdentity = zuIntConstrain( zu___ObjUnique( a ) - zu___ObjUnique( b ), -1, 1 );
                ASSERT_EQ( order, nameA == nameB ? byIdentity : nameA < nameB ? -1 : 1 ) << nameA << " and " << nameB;
                ASSERT_EQ( order, zuObjDefaultCompareFunc( a, b ) );
            }
            for ( ZU_OBJ *c : objs ) {
                if ( order <= 0 && zuObjCompare( b, c ) <= 0 ) {
                    ASSERT_LE( zuObjCompare( a, c ), 0 );
                }
            }
        }
    }
    for ( ZU_OBJ *each : objs ) {
        zuObjRelease( each );
    }
}

TEST( Obj, NumbersAreGivenOutOnDemandAndUsedAgain )
{
    TEST_NODE *first = nodeCreate(), *second = nodeCreate();
    EXPECT_EQ( first->obj.unique, -1 );
    std::string text = takeText( testNodeToString( second ) ), again = takeText( zuObjToString( &second->obj ) );
    ZU_INT unique = second->obj.unique;
    char expected[ 40 ];
    snprintf( expected, sizeof expected, "TEST_NODE(%llX)", (unsigned long long)unique );
    EXPECT_TRUE( text == expected && again == expected ) << text << " and " << again;
    testNodeRelease( second );
    EXPECT_EQ( zu___ObjUnique( &first->obj ), unique );
    testNodeRelease( first );
    EXPECT_EQ( zu___ObjUnique( zuSortObj( zuStringSort() ) ), -1 );
    EXPECT_EQ( takeText( zuObjDefaultToStringFunc( zuModuleObj( zuModule() ) ) ), "ZU_MODULE(-1)" );

    for ( int round = 0; round < 200; round++ ) {
        TEST_NODE *shared = nodeCreate();
        ZU_INT seen[ 2 ];
        runThreads( 2, [ & ]( int thread ) { seen[ thread ] = zu___ObjUnique( &shared->obj ); } );
        EXPECT_EQ( seen[ 0 ], seen[ 1 ] );
        testNodeRelease( shared );
    }
}

// Holders come and go on both sides; the last of all frees, once, and sees what the others did to the object.
TEST( Obj, ThreadsShareReferences )
{
    std::atomic<int> freed{ 0 };
    static constexpr int ROUNDS = 300;
    for ( int round = 0; round < ROUNDS; round++ ) {
        TEST_NODE *node = nodeCreate( &freed );
        node->held = new std::vector<TEST_NODE *>; // plain memory, for the thread sanitizer to watch
        testNodeRetain( node );
        runThreads( 2, [ & ]( int ) {
            for ( int i = 0; i < 50; i++ ) {
                testNodeRetain( node );
                zuObjRelease( &node->obj );
            }
            EXPECT_TRUE( node->held->empty() );
            testNodeRelease( node );
        } );
    }
    EXPECT_EQ( freed, ROUNDS );
    EXPECT_EQ( zuSortObjects( testNodeSort() ), 0 );
    EXPECT_EQ( testModule.sorts, 0u );
}

TEST( Obj, DeepGraphsGoInOneRelease )
{
    runOnSmallStack( [] {
        static constexpr int LENGTH = 1000000;
        std::atomic<int> freed{ 0 };
        TEST_NODE *chain = nullptr;
        for ( int i = 0; i < LENGTH; i++ ) {
            chain = nodeCreate( &freed, chain );
        }
        testNodeRelease( chain );
        EXPECT_EQ( freed, LENGTH ) << "a chain";
    } );
    runOnSmallStack( [] {
        // Each node is held by one or two of those behind it, mostly by near ones: deep, wide, and shared.
        SeededRandom random;
        std::atomic<int> freed{ 0 };
        std::vector<TEST_NODE *> nodes;
        for ( int i = 0; i < 20000; i++ ) {
            nodes.push_back( nodeCreate( &freed ) );
            nodes.back()->held = new std::vector<TEST_NODE *>;
        }
        for ( size_t i = 0; i + 1 < nodes.size(); i++ ) {
            for ( uint64_t holders = 1 + random() % 2; holders > 0; holders-- ) {
                size_t span = random() % 10 ? 2 : nodes.size();
                size_t holder = i + 1 + random() % std::min( span, nodes.size() - i - 1 );
                nodes[ holder ]->held->push_back( testNodeRetain( nodes[ i ] ) );
            }
        }
        TEST_NODE *survivor = testNodeRetain( nodes[ 10 ] );
        TEST_NODE *last = nodes.back();
        nodes.pop_back();
        for ( TEST_NODE *node : nodes ) {
            testNodeRelease( node );
        }
        EXPECT_EQ( freed, 0 );
        testNodeRelease( last );
        EXPECT_EQ( ZU_REF_RETAIN_COUNT( survivor ), 1u );
        testNodeRelease( survivor );
        EXPECT_EQ( freed, 20000 ) << "a graph";
    } );
    EXPECT_EQ( zuSortObjects( testNodeSort() ), 0 );
}

// Sorts
TEST( Sort, KnowsItsObjectsAndItsModule )
{
    EXPECT_TRUE( zuSortModule( testNodeSort() ) == &testModule && zuSortHasModule( testNodeSort() ) );
    EXPECT_TRUE( !zuSortModule( testNumberSort() ) && !zuSortHasModule( testNumberSort() ) );
    EXPECT_EQ( takeText( zuSortName( testNodeSort() ) ) + takeText( zuSortToString( zuSortSort() ) ),
               "TEST_NODEZU_SORT" );
    TEST_NODE *nodes[] = { nodeCreate(), nodeCreate() };
    EXPECT_TRUE( zuSortObjects( testNodeSort() ) == 2 && testModule.sorts == 1 );
    testNodeRelease( nodes[ 0 ] );
    EXPECT_TRUE( zuSortObjects( testNodeSort() ) == 1 && testModule.sorts == 1 );
    testNodeRelease( nodes[ 1 ] );
    EXPECT_TRUE( zuSortObjects( testNodeSort() ) == 0 && testModule.sorts == 0 );
    EXPECT_EQ( testModule.sortsFirst, nullptr ) << "chains are kept with the object database only";
}

TEST( ObjAborts, ChecksItsArguments )
{
    TEST_NODE *node = nodeCreate();
    ZU_OBJ *obj = &node->obj, *sortObj = zuSortObj( testNodeSort() ), *moduleObj = zuModuleObj( zuModule() );
    ZU_SORT twin = ZU___SORT_INITIALIZER( "TEST_NODE", nullptr, nullptr, nullptr, nullptr );
    const struct {
        const char *expression;
        std::function<void()> statement;
        const char *message = nullptr;
    } ROWS[] = {
        { "obj", [] { testNodeRelease( nullptr ); }, "stdfunc release" },
        { "!obj || zuObjSort(obj)==&zu___sort_TEST_NUMBER", [ & ] { testNumberFrom( obj ); }, "stdfunc from" },
        { "!obj || zuObjSort(obj)==&zu___sort_ZU_STRING", [ & ] { zuStringFrom( sortObj ); }, "stdfunc from" },
        { "objA", [ & ] { testNodeCompare( nullptr, node ); }, "stdfunc compare a" },
        { "zu___ref_release_tmp", [] { ZU_REF_RELEASE( (TEST_NODE *)nullptr ); } },
        { "thisObj->type != ZU___OBJ_TYPE_OBJECT || ZU___RETAIN_COUNT_VALUE( thisObj->retainCount ) == 0",
          [ & ] { zu___ObjFree( obj ); } },
        { nullptr, [ & ] { obj->sort = nullptr, zuObjSort( obj ); } },
        { "thisObj->sort || thisObj->type != ZU___OBJ_TYPE_OBJECT",
          [ & ] { obj->sort = nullptr, zu___ObjUnique( obj ); } },
        { "result",
          [ & ] {
              zu___sort_TEST_NODE.toStringFunc = []( ZU_OBJ * ) -> ZU_STRING * { return nullptr; };
              zuObjToString( obj );
          } },
        { "thisObj->sort", [ & ] { zuObjLockAcquire( sortObj ); } },
        { "ZU_INT_MUL_OK( count, size )", [ & ] { zu___ObjDbgSetAllocationSizeN( obj, ZU_INT_MAX, 2 ); } },
        { nullptr, [ & ] { zuSortSort()->freeFunc( sortObj ); }, "sort free" },
        { nullptr, [ & ] { zuModuleSort()->freeFunc( moduleObj ); }, "module free" },
        { nullptr, [ & ] { zuSortCompare( &twin, testNodeSort() ); } },
    };
    for ( const auto &row : ROWS ) {
        SCOPED_TRACE( testing::Message() << "row " << &row - ROWS );
        expectAbort( row.expression, row.statement, row.message );
    }
    testNodeRelease( node );
}
