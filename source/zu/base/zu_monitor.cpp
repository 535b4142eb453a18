// The lock of the object's header does the work, so that a monitor is no larger than its header and a flag.

#include "zu/base/zu_monitor_internal.h"

#include "zu/base/zu_threading_fork_internal.h"
#include "zu/runtime/zu_module.h"

static void monitorFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_MONITOR =
    ZU___SORT_INITIALIZER( "ZU_MONITOR", &zu___module, monitorFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_MONITOR, zuMonitor )

ZU_MONITOR *zuMonitorCreate( void )
{
    ZU_MONITOR *monitor = (ZU_MONITOR *)zu___ObjCreate( sizeof( ZU_MONITOR ), &zu___sort_ZU_MONITOR );
    monitor->entered = ZU_FALSE;
    return monitor;
}
static void monitorFree( ZU_OBJ *thisObj )
{
    ZU_MONITOR *monitor = zuMonitorFrom( thisObj );
    ZU_ASSERT( monitor );
    ZU_ASSERT( !monitor->entered );
}

void zuMonitorEnter( ZU_MONITOR *monitor )
{
    ZU_ASSERT( monitor );
    zu___LockAcquireInline( &monitor->obj.lock );
    ZU_ASSERT( !monitor->entered );
    monitor->entered = ZU_TRUE;
}
void zuMonitorLeave( ZU_MONITOR *monitor )
{
    ZU_ASSERT( monitor );
    ZU_ASSERT( monitor->entered );
    monitor->entered = ZU_FALSE;
    zu___LockReleaseInline( &monitor->obj.lock );
}

void zu___MonitorFork( ZU_MONITOR *monitor, ZU___FORK_STEP step )
{
    switch ( step ) {
    case ZU___FORK_PREPARE:
        zuMonitorEnter( monitor );
        break;
    case ZU___FORK_PARENT:
        zuMonitorLeave( monitor );
        break;
    case ZU___FORK_CHILD:
        monitor->entered = ZU_FALSE;
        zu___LockFork( &monitor->obj.lock, step );
        break;
    }
}
