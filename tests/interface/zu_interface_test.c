// A class that is written in C, outside the library and its module, with the macros that its headers offer.  Linked
// with the shared library, so that it also shows what that one exports.

#include "zu/zu.h"

#include <stdio.h>

typedef struct TEST_CELL TEST_CELL;
ZU_STDFUNCS_DECLARE( TEST_CELL, testCell )

struct TEST_CELL {
    ZU_OBJ obj;
    ZU_INT value;
    TEST_CELL *next; // null at the end
};

static void cellFree( ZU_OBJ *thisObj );
static ZU_INT cellCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj );
static ZU_SORT zu___sort_TEST_CELL = ZU___SORT_INITIALIZER( "TEST_CELL", NULL, cellFree, cellCompare, NULL );
ZU___STDFUNCS( TEST_CELL, testCell )

static void cellFree( ZU_OBJ *thisObj )
{
    TEST_CELL *cell = testCellFrom( thisObj );
    ZU_REF_RELEASE_OPT( cell->next );
    ZU_REF_POISON( cell->next );
}
static ZU_INT cellCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    return zuIntConstrain( testCellFrom( thisObj )->value - testCellFrom( thatObj )->value, -1, 1 );
}
// Takes over the reference `next`.
static TEST_CELL *cellCreate( ZU_INT value, TEST_CELL *next )
{
    TEST_CELL *cell = (TEST_CELL *)zu___ObjCreate( sizeof( TEST_CELL ), testCellSort() );
    cell->value = value;
    cell->next = next;
    return cell;
}

static int failures = 0;
#define EXPECT( condition )                                                   \
    do {                                                                      \
        if ( !( condition ) ) {                                               \
            fprintf( stderr, "%s:%d: %s\n", __FILE__, __LINE__, #condition ); \
            failures++;                                                       \
        }                                                                     \
    } while ( 0 )

static void testStandardOperations( void )
{
    TEST_CELL *one = cellCreate( 1, NULL );
    TEST_CELL *two = cellCreate( 2, testCellRetain( one ) );
    EXPECT( zuSortObjects( testCellSort() ) == 2 );
    EXPECT( ZU_REF_RETAIN_COUNT( one ) == 2 );
    EXPECT( testCellFrom( testCellObj( one ) ) == one );
    EXPECT( testCellFrom( NULL ) == NULL );
    EXPECT( testCellCompare( one, two ) == -1 );
    EXPECT( zuObjCompare( testCellObj( two ), testCellObj( one ) ) == 1 );
    EXPECT( testCellEquals( one, one ) && !testCellEquals( one, two ) );
    // Not inlined: through pointers the exported bodies are called.
    TEST_CELL *( *volatile retain )( TEST_CELL * ) = testCellRetain;
    void ( *volatile release )( TEST_CELL * ) = testCellRelease;
    release( retain( one ) );
    ZU_STRING *( *volatile retainString )( ZU_STRING * ) = zuStringRetain;
    void ( *volatile releaseString )( ZU_STRING * ) = zuStringRelease;
    ZU_STRING *text = testCellToString( two );
    EXPECT( zuStringBeginsWithCstr( text, "TEST_CELL(", -1 ) );
    releaseString( retainString( text ) );
    ZU_REF_RELEASE( text );
    // The macro is one statement, and evaluates its argument once.
    TEST_CELL *cells[] = { one, two };
    int next = 0;
    if ( failures == 0 )
        ZU_REF_RELEASE( cells[ next++ ] );
    else
        testCellRelease( one );
    EXPECT( next == 1 );
    EXPECT( zuSortObjects( testCellSort() ) == 2 );
    testCellRelease( two );
    EXPECT( zuSortObjects( testCellSort() ) == 0 );
}

static void testFormat( void )
{
    ZU_STRING *text =
        zuStringCreateFromFormatCstr( "%lw %lc %i %c", -1, u"wide", "narrow", (ZU_INT)-7, (ZU_INT)0x20AC );
    char *utf8 = zuStringConvertToUtf8( text, ZU_TRUE, NULL );
    EXPECT( zuMemCompare( utf8, "wide narrow -7 \xE2\x82\xAC", sizeof "wide narrow -7 \xE2\x82\xAC" ) == 0 );
    zuMemFree( utf8 );
    zuStringRelease( text );
}

static void testChecks( void )
{
    int evaluations = 0;
    ZU_ASSERT( ++evaluations );
    EXPECT( evaluations == 1 );
    EXPECT( ZU_INT_ADD_OK( ZU_INT_MAX, 0 ) && !ZU_INT_ADD_OK( ZU_INT_MAX, 1 ) );
    EXPECT( ZU_INT_SUB_OK( ZU_INT_MIN, 0 ) && !ZU_INT_SUB_OK( ZU_INT_MIN, 1 ) );
    EXPECT( ZU_INT_MUL_OK( ZU_INT_MIN, 1 ) && !ZU_INT_MUL_OK( ZU_INT_MIN, -1 ) );
    EXPECT( ZU_CHAR_OK( 0x10FFFF ) && !ZU_CHAR_OK( 0x110000 ) );
}

int main( void )
{
    zuRuntimeStartup( 0, -1, NULL, "interface", "The interface in C", "1.0" );
    testStandardOperations();
    testFormat();
    testChecks();
    zuRuntimeShutdown();
    printf( "%d failures\n", failures );
    return failures > 0;
}
