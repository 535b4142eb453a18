// The numbers in use and the free ones share one array: a free entry names the next free number, so that both getting
// and giving back are a few stores.

#include "zu/sys/zu_unique.h"

#include "zu/sys/zu_fork_internal.h"
#include "zu/sys/zu_mem.h"

static constexpr ZU_INT ENLARGE = 4096; // numbers, each time that none is free
static constexpr ZU_INT IN_USE = -2;    // entry of a number that is out

static ZU___LOCK uniLock;
static ZU_INT *uniList = nullptr; // the next free number, ZU___UNIQUE_INVALID at the end of the chain, or IN_USE
static ZU_INT uniListSize = 0;
static ZU_INT uniFirstFree = ZU___UNIQUE_INVALID;
static ZU_INT uniUsed = 0;

void zu___UniqueStartup( void )
{
    zu___LockInitialize( &uniLock );
}
void zu___UniqueShutdown( void )
{
    zu___LockFinalize( &uniLock );
    zuMemFree( uniList );
    uniFirstFree = ZU___UNIQUE_INVALID;
    uniList = nullptr;
    uniListSize = 0;
}

void zu___UniqueFork( ZU___FORK_STEP step )
{
    zu___LockFork( &uniLock, step );
}

static void uniqueEnlargeLocked()
{
    ZU_ASSERT( ZU___UNIQUE_MAX - ENLARGE >= uniListSize );
    ZU_INT newSize = uniListSize + ENLARGE;
    uniList = (ZU_INT *)zuMemReallocN( uniList, newSize, sizeof( ZU_INT ) );
    for ( ZU_INT uni = uniListSize; uni < newSize - 1; uni++ ) {
        uniList[ uni ] = uni + 1;
    }
    uniList[ newSize - 1 ] = ZU___UNIQUE_INVALID;
    uniFirstFree = uniListSize;
    uniListSize = newSize;
}

ZU_INT zu___UniqueGet( void )
{
    zu___LockAcquire( &uniLock );
    if ( uniFirstFree == ZU___UNIQUE_INVALID ) {
        uniqueEnlargeLocked();
    }
    ZU_ASSERT( ZU___UNIQUE_INVALID != uniFirstFree );
    ZU_INT uni = uniFirstFree;
    uniFirstFree = uniList[ uni ];
    uniList[ uni ] = IN_USE;
    uniUsed++;
    zu___LockRelease( &uniLock );
    return uni;
}
void zu___UniquePut( ZU_INT uni )
{
    zu___LockAcquire( &uniLock );
    ZU_ASSERT( uniUsed > 0 );
    ZU_ASSERT( uni >= 0 );
    ZU_ASSERT( uni < uniListSize );
    ZU_ASSERT( uniList[uni] == IN_USE );
    uniList[ uni ] = uniFirstFree;
    uniFirstFree = uni;
    uniUsed--;
    zu___LockRelease( &uniLock );
}
