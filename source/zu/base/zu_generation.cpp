// A path is a copy of the parent's with one number more.  That costs memory by the square of a chain's length, but
// paths are short, and comparing two generations needs no walk and no lock.

#include "zu/base/zu_generation_internal.h"

#include "zu/base/zu_string_format.h"
#include "zu/base/zu_threading_fork_internal.h"
#include "zu/runtime/zu_module.h"

static void generationFree( ZU_OBJ *thisObj );
static ZU_INT generationCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj );
static ZU_STRING *generationToString( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_GENERATION =
    ZU___SORT_INITIALIZER( "ZU_GENERATION", &zu___module, generationFree, generationCompare, generationToString );
ZU___STDFUNCS( ZU_GENERATION, zuGeneration )

ZU_INT zu___GenerationGenerationNumber = 0;
static ZU_MONITOR *rootMonitor = nullptr; // held while a root takes its number

// Start-up
void zu___GenerationStartup( void )
{
    zu___GenerationGenerationNumber = 0;
    rootMonitor = zuMonitorCreate();
}
void zu___GenerationShutdown( void )
{
    ZU_REF_RELEASE( rootMonitor );
    ZU_REF_POISON( rootMonitor );
}

void zu___GenerationFork( ZU___FORK_STEP step )
{
    zu___MonitorFork( rootMonitor, step );
}

// Standard functions
static void generationFree( ZU_OBJ *thisObj )
{
    ZU_GENERATION *generation = zuGenerationFrom( thisObj );
    ZU_ASSERT( generation );
    ZU_REF_RELEASE_OPT( generation->parent );
    ZU_REF_POISON( generation->parent );
    ZU_REF_RELEASE( generation->monitor );
    ZU_REF_POISON( generation->monitor );
    ZU_REF_RELEASE( generation->path );
    ZU_REF_POISON( generation->path );
}
static ZU_INT generationCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    ZU_GENERATION *generationA = zuGenerationFrom( thisObj );
    ZU_GENERATION *generationB = zuGenerationFrom( thatObj );
    ZU_ASSERT( generationA );
    ZU_ASSERT( generationB );
    if ( generationA->path && generationB->path ) {
        return zuVectorCompare( generationA->path, generationB->path );
    }
    return ( generationA->path != nullptr ) - ( generationB->path != nullptr );
}
static ZU_STRING *generationToString( ZU_OBJ *thisObj )
{
    ZU_GENERATION *generation = zuGenerationFrom( thisObj );
    ZU_ASSERT( generation );
    ZU_STRING *text = zuStringCreate();
    for ( ZU_INT i = 0; i < zuVectorLength( generation->path ); i++ ) {
        zuStringAppendFormatCstr( &text, i == 0 ? "%~o" : ":%~o", -1, zuVectorObjAt( generation->path, i ) );
    }
    return text;
}

// Creation
static ZU_GENERATION *generationCreateUse( ZU_GENERATION *parent, ZU_VECTOR *path )
{
    ZU_GENERATION *generation = (ZU_GENERATION *)zu___ObjCreate( sizeof( ZU_GENERATION ), &zu___sort_ZU_GENERATION );
    generation->parent = parent;
    generation->monitor = zuMonitorCreate();
    generation->childGenerationNumber = 0;
    generation->path = path;
    return generation;
}
ZU_GENERATION *zuGenerationCreate( void )
{
    ZU_GENERATION *generation = generationCreateUse( nullptr, zuVectorCreate() );
    zuMonitorEnter( rootMonitor );
    zuVectorAppendInt( &generation->path, zu___GenerationGenerationNumber );
    ZU_ASSERT( ZU_INT_ADD_OK( zu___GenerationGenerationNumber, 1 ) );
    zu___GenerationGenerationNumber++;
    zuMonitorLeave( rootMonitor );
    return generation;
}
ZU_GENERATION *zuGenerationCreateWithParent( ZU_GENERATION *parentGeneration )
{
    ZU_ASSERT( parentGeneration );
    ZU_GENERATION *generation =
        generationCreateUse( zuGenerationRetain( parentGeneration ), zuVectorRetain( parentGeneration->path ) );
    zuMonitorEnter( parentGeneration->monitor );
    zuVectorAppendInt( &generation->path, parentGeneration->childGenerationNumber );
    ZU_ASSERT( ZU_INT_ADD_OK( parentGeneration->childGenerationNumber, 1 ) );
    parentGeneration->childGenerationNumber++;
    zuMonitorLeave( parentGeneration->monitor );
    return generation;
}

// Relations
ZU_BOOL zuGenerationHasParent( ZU_GENERATION *generation )
{
    ZU_ASSERT( generation );
    return generation->parent != nullptr;
}
ZU_GENERATION *zuGenerationParent( ZU_GENERATION *generation )
{
    ZU_ASSERT( generation );
    return generation->parent ? zuGenerationRetain( generation->parent ) : nullptr;
}
ZU_BOOL zuGenerationIsParent( ZU_GENERATION *generation, ZU_GENERATION *otherGeneration )
{
    ZU_ASSERT( generation );
    ZU_ASSERT( otherGeneration );
    return generation == otherGeneration->parent;
}
ZU_BOOL zuGenerationIsChild( ZU_GENERATION *generation, ZU_GENERATION *otherGeneration )
{
    ZU_ASSERT( generation );
    ZU_ASSERT( otherGeneration );
    return otherGeneration == generation->parent;
}
ZU_BOOL zuGenerationIsAncestor( ZU_GENERATION *generation, ZU_GENERATION *otherGeneration )
{
    ZU_ASSERT( generation );
    ZU_ASSERT( otherGeneration );
    ZU_GENERATION *ancestor = otherGeneration->parent;
    while ( ancestor && ancestor != generation ) {
        ancestor = ancestor->parent;
    }
    return ancestor != nullptr;
}
ZU_BOOL zuGenerationIsDescendant( ZU_GENERATION *generation, ZU_GENERATION *otherGeneration )
{
    ZU_ASSERT( generation );
    ZU_ASSERT( otherGeneration );
    return zuGenerationIsAncestor( otherGeneration, generation );
}

// Age
ZU_BOOL zuGenerationIsOlder( ZU_GENERATION *generation, ZU_GENERATION *otherGeneration )
{
    ZU_ASSERT( generation );
    ZU_ASSERT( otherGeneration );
    return zuGenerationCompare( generation, otherGeneration ) < 0;
}
ZU_BOOL zuGenerationIsYounger( ZU_GENERATION *generation, ZU_GENERATION *otherGeneration )
{
    ZU_ASSERT( generation );
    ZU_ASSERT( otherGeneration );
    return zuGenerationCompare( generation, otherGeneration ) > 0;
}
