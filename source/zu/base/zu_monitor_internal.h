// zu_monitor_internal.h: the inside of ZU_MONITOR, and its ways in and out without a call.
#pragma once

#include "zu/base/zu_monitor.h"
#include "zu/sys/zu_lock_internal.h"

ZU_BEGIN_DECLS

struct ZU_MONITOR {
    ZU_OBJ obj;
    ZU_BOOL entered; // a thread is inside; written by that thread alone
};

// What zuMonitorEnter and zuMonitorLeave do, for a monitor that is not null.
static inline void zu___MonitorEnterInline( ZU_MONITOR *monitor )
{
    zu___LockAcquireInline( &monitor->obj.lock );
    ZU_ASSERT( !monitor->entered );
    monitor->entered = ZU_TRUE;
}
static inline void zu___MonitorLeaveInline( ZU_MONITOR *monitor )
{
    ZU_ASSERT( monitor->entered );
    monitor->entered = ZU_FALSE;
    zu___LockReleaseInline( &monitor->obj.lock );
}

ZU_END_DECLS
