// A class of one's own, written with nothing but the installed headers: a point that the whole library can hold,
// compare and print.  A real program would put the first part into a header and the second into a source file.
#include "zu/zu.h"

#include <stdio.h>

// The header: an opaque type, its standard operations, and its own functions.
typedef struct MAP_POINT MAP_POINT;
ZU_STDFUNCS_DECLARE( MAP_POINT, mapPoint )
MAP_POINT *mapPointCreate( ZU_STRING *name, ZU_INT x, ZU_INT y );

// The source file.  Every object begins with the header ZU_OBJ.
struct MAP_POINT {
    ZU_OBJ obj;
    ZU_STRING *name; // never null
    ZU_INT x;
    ZU_INT y;
};

static void pointFree( ZU_OBJ *thisObj );
static ZU_INT pointCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj );
static ZU_STRING *pointToString( ZU_OBJ *thisObj );

// The record is all that makes a sort; nothing registers it.  A program is no module, so the module is null.
static ZU_SORT zu___sort_MAP_POINT = ZU___SORT_INITIALIZER( "MAP_POINT", NULL, pointFree, pointCompare, pointToString );
ZU___STDFUNCS( MAP_POINT, mapPoint )

MAP_POINT *mapPointCreate( ZU_STRING *name, ZU_INT x, ZU_INT y )
{
    ZU_ASSERT( name );
    MAP_POINT *point = (MAP_POINT *)zu___ObjCreate( sizeof( MAP_POINT ), mapPointSort() );
    point->name = zuStringRetain( name ); // an argument is borrowed: who keeps it retains it
    point->x = x;
    point->y = y;
    return point;
}
// Gives up what a dying point owns; the object itself is freed behind it.
static void pointFree( ZU_OBJ *thisObj )
{
    MAP_POINT *point = mapPointFrom( thisObj );
    ZU_ASSERT( point );
    ZU_REF_RELEASE( point->name );
    ZU_REF_POISON( point->name );
}
// By x, then by y; the name does not count.
static ZU_INT pointCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    MAP_POINT *pointA = mapPointFrom( thisObj );
    MAP_POINT *pointB = mapPointFrom( thatObj );
    if ( pointA->x != pointB->x ) {
        return pointA->x < pointB->x ? -1 : 1;
    }
    return ( pointA->y > pointB->y ) - ( pointA->y < pointB->y );
}
static ZU_STRING *pointToString( ZU_OBJ *thisObj )
{
    MAP_POINT *point = mapPointFrom( thisObj );
    return zuStringCreateFromFormatCstr( "%s(%i, %i)", -1, point->name, point->x, point->y );
}

// The program.  "%o" prints objects of any class, "%~s" takes over the string that it prints.
static void printLine( ZU_STRING *line )
{
    char *utf8 = zuStringConvertToUtf8( line, ZU_TRUE, NULL );
    puts( utf8 );
    zuMemFree( utf8 );
    zuStringRelease( line );
}
int main( void )
{
    zuRuntimeStartup( 0, -1, NULL, "sort", "A class of one's own", "1.0" );
    ZU_STRING *name = zuStringCreateFromAscii( "summit", -1 );
    MAP_POINT *summit = mapPointCreate( name, 3, 4 );
    MAP_POINT *valley = mapPointCreate( name, 3, -4 );
    ZU_INT order = zuObjCompare( mapPointObj( summit ), mapPointObj( valley ) );
    printLine( zuStringCreateFromFormatCstr( "%o against %~s: %i", -1, summit, pointToString( mapPointObj( valley ) ),
                                             order ) );
    printLine( zuStringCreateFromFormatCstr(
        "before any string: %b", -1, (ZU_INT)( zuObjCompare( mapPointObj( summit ), zuStringObj( name ) ) < 0 ) ) );
    printLine( zuStringCreateFromFormatCstr( "points alive: %i of sort %o", -1, zuSortObjects( mapPointSort() ),
                                             mapPointSort() ) );
    mapPointRelease( valley );
    mapPointRelease( summit );
    zuStringRelease( name );
    printf( "points alive: %d\n", (int)zuSortObjects( mapPointSort() ) );
    return (int)zuRuntimeShutdown();
}
