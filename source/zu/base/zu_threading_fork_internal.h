// zu_threading_fork_internal.h: the classes of locks, and the subsystems of this folder, around a fork of the process;
// zu_fork_internal.h tells how.
#pragma once

#include "zu/base/zu_barrier.h"
#include "zu/base/zu_counter.h"
#include "zu/base/zu_monitor.h"
#include "zu/base/zu_region.h"
#include "zu/sys/zu_fork_internal.h"

ZU_BEGIN_DECLS

// Enters and leaves; in the child nobody is inside.
void zu___MonitorFork( ZU_MONITOR *monitor, ZU___FORK_STEP step );
// Enters exclusively and leaves; in the child nobody is inside.
void zu___RegionFork( ZU_REGION *region, ZU___FORK_STEP step );
// Keeps the count as it is over the fork; in the child it becomes `childValue`, and nobody waits for it.
void zu___CounterFork( ZU_COUNTER *ctr, ZU___FORK_STEP step, ZU_INT childValue );
// In the child, makes a barrier that nobody is at, open or closed.
void zu___BarrierForkChild( ZU_BARRIER *barrier, ZU_BOOL open );

// Subsystems
void zu___GenerationFork( ZU___FORK_STEP step );
void zu___RandomFork( ZU___FORK_STEP step );
void zu___StackTraceFork( ZU___FORK_STEP step );
void zu___ThreadFork( ZU___FORK_STEP step );
void zu___TimerFork( ZU___FORK_STEP step );

ZU_END_DECLS
