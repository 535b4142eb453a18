// The lock beneath is told by its caller in which way it is left, the region is not: its holders share one function for
// that.  A flag that only an exclusive holder writes tells them apart, where a table of the threads inside would have
// to be kept by each that comes and goes.

#include "zu/base/zu_region.h"

#include "zu/base/zu_threading_fork_internal.h"
#include "zu/runtime/zu_module.h"
#include "zu/sys/zu_srw_internal.h"

// The flag lies between the ends of an exclusive hold, so that every holder can tell its own mode by it.
struct ZU_REGION {
    ZU_OBJ obj;
    ZU___SRW_LOCK srw;
    ZU_BOOL exclusive; // one thread holds `srw` in exclusive mode; guarded by `srw`
};

static ZU_SORT zu___sort_ZU_REGION = ZU___SORT_INITIALIZER( "ZU_REGION", &zu___module, nullptr, nullptr, nullptr );
ZU___STDFUNCS( ZU_REGION, zuRegion )

ZU_REGION *zuRegionCreate( void )
{
    ZU_REGION *region = (ZU_REGION *)zu___ObjCreate( sizeof( ZU_REGION ), &zu___sort_ZU_REGION );
    zu___SrwLockInitialize( &region->srw );
    region->exclusive = ZU_FALSE;
    return region;
}

void zuRegionEnterShared( ZU_REGION *region )
{
    ZU_ASSERT( region );
    zu___SrwLockAcquireShared( &region->srw );
}
void zuRegionEnterExclusive( ZU_REGION *region )
{
    ZU_ASSERT( region );
    zu___SrwLockAcquireExclusive( &region->srw );
    region->exclusive = ZU_TRUE;
}
void zuRegionEnter( ZU_REGION *region, ZU_BOOL exclusive )
{
    ZU_ASSERT( region );
    if ( exclusive ) {
        zuRegionEnterExclusive( region );
    } else {
        zuRegionEnterShared( region );
    }
}
void zuRegionLeave( ZU_REGION *region )
{
    ZU_ASSERT( region );
    if ( region->exclusive ) {
        region->exclusive = ZU_FALSE;
        zu___SrwLockReleaseExclusive( &region->srw );
    } else {
        zu___SrwLockReleaseShared( &region->srw );
    }
}

void zu___RegionFork( ZU_REGION *region, ZU___FORK_STEP step )
{
    switch ( step ) {
    case ZU___FORK_PREPARE:
        zuRegionEnterExclusive( region );
        break;
    case ZU___FORK_PARENT:
        zuRegionLeave( region );
        break;
    case ZU___FORK_CHILD:
        region->exclusive = ZU_FALSE;
        zu___SrwLockInitialize( &region->srw );
        break;
    }
}
