// A trace may be wanted while memory is short, or by whoever looks for where memory went.  So its lines are plain texts
// from malloc, and if that fails the trace ends there; only the object itself comes from zuMemAlloc, as all objects do.

#include "zu/base/zu_stack_trace.h"

#include "zu/base/zu_stack_trace_internal.h"
#include "zu/base/zu_threading_fork_internal.h"
#include "zu/runtime/zu_module.h"

#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>

static constexpr size_t LINE_SIZE = 4096; // bytes of a line with its terminator; a longer one is cut

struct ZU_STACK_TRACE {
    ZU_OBJ obj;
    char **symbols;       // the lines, owned, each terminated; null if there is none
    ZU_INT symbolsLength; // 0 to ZU___STACK_TRACE_LENGTH_MAX
};

static void stackTraceFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_STACK_TRACE =
    ZU___SORT_INITIALIZER( "ZU_STACK_TRACE", &zu___module, stackTraceFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_STACK_TRACE, zuStackTrace )

// Start-up.  Symbol engines are not made for several threads, and the lock is around all use of this one.  Starting it
// is by far the slowest step: it stays up from trace to trace.
static ZU___LOCK engineLock;
static bool engineUp = false;

static void stackTraceStopEngineLocked()
{
    if ( engineUp ) {
        zu___StackTraceEngineStop();
        engineUp = false;
    }
}
void zu___StackTraceStartup( void )
{
    zu___LockInitialize( &engineLock );
    engineUp = false;
}
void zu___StackTraceShutdown( void )
{
    zu___LockFinalize( &engineLock );
    stackTraceStopEngineLocked();
}
void zu___StackTraceUpdateSymbols( void )
{
    zu___LockAcquire( &engineLock );
    stackTraceStopEngineLocked();
    zu___LockRelease( &engineLock );
}

void zu___StackTraceFork( ZU___FORK_STEP step )
{
    zu___LockFork( &engineLock, step );
}

// Creation
struct STACK_TRACE_WALK {
    ZU_STACK_TRACE *st;
    char **lines; // ZU___STACK_TRACE_LENGTH_MAX of them
    ZU_INT length;
    ZU_INT lengthMax;
    ZU_INT skip;  // functions still to be passed over
    char *buffer; // LINE_SIZE bytes
};

static void stackTraceFormat( char *line, uintptr_t address )
{
    ZU___STACK_TRACE_PLACE place = {};
    zu___StackTraceEngineFind( address, &place );
    if ( !place.symbol ) {
        place.symbol = "???";
        place.symbolOffset = 0;
    }
    int length = 0;
    if ( place.file ) {
        length = snprintf( line, LINE_SIZE, "%s(%lu+0x%lx): ", place.file, place.line, place.lineOffset );
    }
    if ( length >= 0 && (size_t)length < LINE_SIZE ) {
        snprintf( line + length, LINE_SIZE - (size_t)length, "%s+0x%" PRIxPTR " [%.16" PRIXPTR "]", place.symbol,
                  place.symbolOffset, address );
    }
}
static ZU_BOOL stackTraceAddFrame( uintptr_t address, void *closure )
{
    STACK_TRACE_WALK *walk = (STACK_TRACE_WALK *)closure;
    if ( walk->skip > 0 ) {
        walk->skip--;
        return ZU_TRUE;
    }
    if ( walk->length == walk->lengthMax ) {
        return ZU_FALSE;
    }
    stackTraceFormat( walk->buffer, address );
    char *line = strdup( walk->buffer );
    if ( !line ) {
        return ZU_FALSE;
    }
    walk->lines[ walk->length++ ] = line;
    return ZU_TRUE;
}
// Creates an empty trace and takes the engine for what is to come in; tells whether anything can.
static bool stackTraceBegin( STACK_TRACE_WALK *walk )
{
    walk->st = (ZU_STACK_TRACE *)zu___ObjCreate( sizeof( ZU_STACK_TRACE ), zuStackTraceSort() );
    walk->st->symbols = nullptr;
    walk->st->symbolsLength = 0;
    zu___LockAcquire( &engineLock );
    if ( walk->lengthMax == 0 || ( !engineUp && !zu___StackTraceEngineStart() ) ) {
        return false;
    }
    engineUp = true;
    walk->lines = (char **)malloc( (size_t)ZU___STACK_TRACE_LENGTH_MAX * sizeof( char * ) );
    walk->buffer = (char *)malloc( LINE_SIZE );
    return walk->lines && walk->buffer;
}
// Gives back what the lines have left free of the array, and tells how much memory the trace keeps.
static void stackTraceAdoptLines( ZU_STACK_TRACE *st, STACK_TRACE_WALK *walk )
{
    if ( walk->length == 0 ) {
        free( walk->lines );
        return;
    }
    size_t arraySize = (size_t)walk->length * sizeof( char * );
    char **lines = (char **)realloc( walk->lines, arraySize );
    st->symbols = lines ? lines : walk->lines;
    st->symbolsLength = walk->length;
    size_t size = arraySize;
    for ( ZU_INT i = 0; i < st->symbolsLength; i++ ) {
        size += strlen( st->symbols[ i ] ) + 1;
    }
    zu___ObjDbgSetAllocationSize( &st->obj, (ZU_INT)size );
}
static ZU_STACK_TRACE *stackTraceEnd( STACK_TRACE_WALK *walk )
{
    zu___LockRelease( &engineLock );
    free( walk->buffer );
    stackTraceAdoptLines( walk->st, walk );
    return walk->st;
}

ZU_STACK_TRACE *zuStackTraceCreate( ZU_INT skip, ZU_INT maxLength )
{
    ZU_ASSERT( skip >= 0 );
    ZU_ASSERT( maxLength >= -1 );
    STACK_TRACE_WALK walk = {};
    walk.lengthMax = maxLength < 0 || maxLength > ZU___STACK_TRACE_LENGTH_MAX ? ZU___STACK_TRACE_LENGTH_MAX : maxLength;
    walk.skip = skip;
    if ( stackTraceBegin( &walk ) ) {
        zu___StackTraceWalk( stackTraceAddFrame, &walk );
    }
    return stackTraceEnd( &walk );
}
ZU_STACK_TRACE *zu___StackTraceCreateFromAddresses( const uintptr_t *addresses, ZU_INT count )
{
    STACK_TRACE_WALK walk = {};
    walk.lengthMax = ZU___STACK_TRACE_LENGTH_MAX;
    if ( stackTraceBegin( &walk ) ) {
        for ( ZU_INT i = 0; i < count && stackTraceAddFrame( addresses[ i ], &walk ); i++ ) {}
    }
    return stackTraceEnd( &walk );
}
static void stackTraceFree( ZU_OBJ *thisObj )
{
    ZU_STACK_TRACE *st = zuStackTraceFrom( thisObj );
    ZU_ASSERT( st );
    for ( ZU_INT i = st->symbolsLength; i > 0; i-- ) {
        free( st->symbols[ i - 1 ] );
    }
    free( st->symbols );
    ZU_REF_POISON( st->symbols );
}

// Inspection
ZU_INT zuStackTraceLength( ZU_STACK_TRACE *st )
{
    ZU_ASSERT( st );
    return st->symbolsLength;
}
ZU_STRING *zuStackTraceAt( ZU_STACK_TRACE *st, ZU_INT idx )
{
    ZU_ASSERT( st );
    ZU_ASSERT( idx >= 0 && idx < st->symbolsLength );
    return zuStringCreateFromCstr( st->symbols[ idx ], -1 );
}
ZU_VECTOR *zuStackTraceVector( ZU_STACK_TRACE *st )
{
    ZU_ASSERT( st );
    ZU_VECTOR *vec = zuVectorCreate();
    ZU_ASSERT( vec );
    for ( ZU_INT i = 0; i < st->symbolsLength; i++ ) {
        zuVectorAppendStringCstr( &vec, st->symbols[ i ], -1 );
    }
    return vec;
}
