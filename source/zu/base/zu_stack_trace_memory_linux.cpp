// libbacktrace reads all that it finds in the files of a process into memory that it keeps to the process's end: tens of
// megabytes with debugging data at hand.  What stands between it and the system are the seven functions below, a part
// of it (mmap.c and mmapio.c) that the build leaves out.  These remember everything, so that one call takes it down.
//
// A state grows up to some thousands of small blocks and is then only read, so memory is cut off chunks from the front
// on.  Nearly all that it frees is what it got last, which is then had again; anything else that is smaller than a chunk
// waits for the end.  Blocks from the system one by one, as in mmap.c, cost a call for each and a page at least.
//
// The engine's lock is around everything here, or nobody else is there: the crash report has memory apart, which is
// never given back.  Memory may be short: nothing aborts.

#ifdef ZU___WITH_BACKTRACE

#include "zu/base/zu_stack_trace_memory_internal.h"

#include "backtrace/backtrace.h"

#include <cerrno>
#include <cstring>
#include <sys/mman.h>
#include <unistd.h>

static constexpr size_t CHUNK_SIZE = 256 * 1024; // bytes; a request that does not fit gets a chunk of its own
static constexpr size_t ALIGNMENT = 16;          // bytes, of all blocks

struct alignas( ALIGNMENT ) MEMORY_CHUNK {
    MEMORY_CHUNK *next;
    size_t size; // bytes, this header included
};
// A part of a file that libbacktrace has mapped; lies in a chunk.
struct MEMORY_VIEW {
    MEMORY_VIEW *next;
    void *base;
    size_t length; // bytes
};

// All that one of the two symbol engines has got.
struct MEMORY_ARENA {
    MEMORY_CHUNK *chunks; // of CHUNK_SIZE, the one that blocks are cut off first
    char *chunkFree;      // the free rest of that one
    char *chunkEnd;
    MEMORY_CHUNK *ownChunks; // of one block each
    MEMORY_VIEW *views;
};
static MEMORY_ARENA engineArena;
static MEMORY_ARENA reportArena;
// libbacktrace does not tell for whom it asks, and while a report is written, other threads go on making traces.
static thread_local MEMORY_ARENA *arena __attribute__( ( tls_model( "initial-exec" ) ) ) = &engineArena;

// What libbacktrace shares among its own files (its internal.h), unchanged since its first version but for the size of a
// view, which has 64 bits since gcc 11.
struct backtrace_vector {
    void *base;
    size_t size; // bytes in use
    size_t alc;  // bytes free behind them
};
struct backtrace_view {
    const void *data; // what was asked for
    void *base;       // what is mapped for it
    size_t len;
};
extern "C" {
void *backtrace_alloc( backtrace_state *state, size_t size, backtrace_error_callback error, void *data );
void backtrace_free( backtrace_state *state, void *block, size_t size, backtrace_error_callback error, void *data );
void *backtrace_vector_grow( backtrace_state *state, size_t size, backtrace_error_callback error, void *data,
                             backtrace_vector *vector );
void *backtrace_vector_finish( backtrace_state *state, backtrace_vector *vector, backtrace_error_callback error,
                               void *data );
int backtrace_vector_release( backtrace_state *state, backtrace_vector *vector, backtrace_error_callback error,
                              void *data );
int backtrace_get_view( backtrace_state *state, int descriptor, off_t offset, uint64_t size,
                        backtrace_error_callback error, void *data, backtrace_view *view );
void backtrace_release_view( backtrace_state *state, backtrace_view *view, backtrace_error_callback error, void *data );
}

static size_t memoryRound( size_t size, size_t unit )
{
    return ( size + unit - 1 ) / unit * unit;
}

// Chunks
static MEMORY_CHUNK *memoryTryMapChunk( size_t size, MEMORY_CHUNK *next )
{
    void *memory = mmap( nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0 );
    if ( memory == MAP_FAILED ) {
        return nullptr;
    }
    MEMORY_CHUNK *chunk = (MEMORY_CHUNK *)memory;
    chunk->next = next;
    chunk->size = size;
    return chunk;
}
static void memoryUnmapChunks( MEMORY_CHUNK **first )
{
    while ( *first ) {
        MEMORY_CHUNK *chunk = *first;
        *first = chunk->next;
        munmap( chunk, chunk->size );
    }
}
static bool memoryNeedsOwnChunk( size_t size )
{
    return size > CHUNK_SIZE - sizeof( MEMORY_CHUNK );
}
static void *memoryTryOwnChunk( size_t size )
{
    size_t whole = memoryRound( size + sizeof( MEMORY_CHUNK ), (size_t)getpagesize() );
    MEMORY_CHUNK *chunk = whole > size ? memoryTryMapChunk( whole, arena->ownChunks ) : nullptr;
    if ( !chunk ) {
        return nullptr;
    }
    arena->ownChunks = chunk;
    return chunk + 1;
}
// Unmaps the chunk of a large block; what is the end of one only stays.
static void memoryFreeOwnChunk( void *block )
{
    for ( MEMORY_CHUNK **link = &arena->ownChunks; *link; link = &( *link )->next ) {
        MEMORY_CHUNK *chunk = *link;
        if ( chunk + 1 == block ) {
            *link = chunk->next;
            munmap( chunk, chunk->size );
            return;
        }
    }
}

// Blocks, of a size that is a multiple of ALIGNMENT
static void *memoryTryAllocate( size_t size )
{
    if ( memoryNeedsOwnChunk( size ) ) {
        return memoryTryOwnChunk( size );
    }
    if ( (size_t)( arena->chunkEnd - arena->chunkFree ) < size ) {
        MEMORY_CHUNK *chunk = memoryTryMapChunk( CHUNK_SIZE, arena->chunks );
        if ( !chunk ) {
            return nullptr;
        }
        arena->chunks = chunk;
        arena->chunkFree = (char *)( chunk + 1 );
        arena->chunkEnd = (char *)chunk + CHUNK_SIZE;
    }
    void *block = arena->chunkFree;
    arena->chunkFree += size;
    return block;
}
static void memoryFree( void *block, size_t size )
{
    if ( memoryNeedsOwnChunk( size ) ) {
        memoryFreeOwnChunk( block );
    } else if ( (char *)block + size == arena->chunkFree ) {
        arena->chunkFree = (char *)memoryRound( (size_t)block, ALIGNMENT ); // the rest of a vector begins anywhere
    }
}
void *backtrace_alloc( backtrace_state *, size_t size, backtrace_error_callback error, void *data )
{
    size_t rounded = memoryRound( size > 0 ? size : 1, ALIGNMENT );
    void *block = rounded >= size ? memoryTryAllocate( rounded ) : nullptr;
    if ( !block && error ) {
        error( data, "mmap", ENOMEM );
    }
    return block;
}
void backtrace_free( backtrace_state *, void *block, size_t size, backtrace_error_callback, void * )
{
    if ( block ) {
        memoryFree( block, memoryRound( size > 0 ? size : 1, ALIGNMENT ) );
    }
}

// Vectors.  Growing doubles, so that what is copied and left behind is as much as there is at most; the last block of a
// chunk grows where it is.
static bool memoryTryGrowInPlace( backtrace_vector *vector, size_t more )
{
    char *end = (char *)vector->base + vector->size + vector->alc;
    if ( !vector->base || end != arena->chunkFree || (size_t)( arena->chunkEnd - arena->chunkFree ) < more ) {
        return false;
    }
    arena->chunkFree += more;
    vector->alc += more;
    return true;
}
static bool memoryTryMoveVector( backtrace_state *state, size_t size, backtrace_error_callback error, void *data,
                                 backtrace_vector *vector )
{
    size_t room = memoryRound( 2 * ( vector->size + size ), ALIGNMENT );
    void *base = room > size ? backtrace_alloc( state, room, error, data ) : nullptr;
    if ( !base ) {
        return false;
    }
    if ( vector->base ) {
        memcpy( base, vector->base, vector->size );
        memoryFree( vector->base, vector->size + vector->alc );
    }
    vector->base = base;
    vector->alc = room - vector->size;
    return true;
}
void *backtrace_vector_grow( backtrace_state *state, size_t size, backtrace_error_callback error, void *data,
                             backtrace_vector *vector )
{
    if ( size > vector->alc && !memoryTryGrowInPlace( vector, memoryRound( size, ALIGNMENT ) ) &&
         !memoryTryMoveVector( state, size, error, data, vector ) ) {
        return nullptr;
    }
    void *added = (char *)vector->base + vector->size;
    vector->size += size;
    vector->alc -= size;
    return added;
}
// What is in the vector stays; it goes on behind that.
void *backtrace_vector_finish( backtrace_state *, backtrace_vector *vector, backtrace_error_callback, void * )
{
    void *finished = vector->base;
    vector->base = (char *)vector->base + vector->size;
    vector->size = 0;
    return finished;
}
int backtrace_vector_release( backtrace_state *, backtrace_vector *vector, backtrace_error_callback, void * )
{
    char *end = (char *)vector->base + vector->size;
    if ( vector->base && end + vector->alc == arena->chunkFree ) {
        arena->chunkFree = (char *)memoryRound( (size_t)end, ALIGNMENT );
    }
    vector->alc = 0;
    if ( vector->size == 0 ) {
        vector->base = nullptr;
    }
    return 1;
}

// Views
int backtrace_get_view( backtrace_state *state, int descriptor, off_t offset, uint64_t size,
                        backtrace_error_callback error, void *data, backtrace_view *view )
{
    off_t inPage = offset % getpagesize();
    view->len = memoryRound( (size_t)size + (size_t)inPage, (size_t)getpagesize() );
    if ( view->len < size ) {
        error( data, "file size too large", 0 );
        return 0;
    }
    MEMORY_VIEW *known = (MEMORY_VIEW *)backtrace_alloc( state, sizeof( MEMORY_VIEW ), error, data );
    if ( !known ) {
        return 0;
    }
    view->base = mmap( nullptr, view->len, PROT_READ, MAP_PRIVATE, descriptor, offset - inPage );
    if ( view->base == MAP_FAILED ) {
        error( data, "mmap", errno );
        backtrace_free( state, known, sizeof( MEMORY_VIEW ), error, data );
        return 0;
    }
    view->data = (char *)view->base + inPage;
    *known = { arena->views, view->base, view->len };
    arena->views = known;
    return 1;
}
void backtrace_release_view( backtrace_state *, backtrace_view *view, backtrace_error_callback, void * )
{
    for ( MEMORY_VIEW **link = &arena->views; *link; link = &( *link )->next ) {
        if ( ( *link )->base == view->base ) {
            *link = ( *link )->next;
            munmap( view->base, view->len );
            return;
        }
    }
}

void zu___StackTraceMemoryChoose( ZU_BOOL forReport )
{
    arena = forReport ? &reportArena : &engineArena;
}
void zu___StackTraceMemoryRelease( void )
{
    for ( ; arena->views; arena->views = arena->views->next ) {
        munmap( arena->views->base, arena->views->length );
    }
    memoryUnmapChunks( &arena->ownChunks );
    memoryUnmapChunks( &arena->chunks );
    arena->chunkFree = nullptr;
    arena->chunkEnd = nullptr;
}

#endif
