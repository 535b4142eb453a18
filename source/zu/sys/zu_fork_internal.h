// zu_fork_internal.h: what is done around a fork of the process, so that the child can use the library.
//
// The child has the forking thread alone.  A lock that another one held would stay taken there, and what it guards half
// changed; so each subsystem with process-wide state has a function zu___XFork, which is called with the three steps
// below for every fork, in the order of the table in zu_runtime_fork.cpp.  Ahead of the fork it takes its locks, and
// afterwards it gives them back in the parent.  In the child nobody is inside of anything or waits for it: locks are
// made anew rather than given back, and what belonged to other threads is forgotten.
//
// Only locks that are held for an instant are taken, under none of which a program's code runs: a fork waits for nothing
// else, and does not wait for itself.
#pragma once

#include "zu/sys/zu_lock.h"

ZU_BEGIN_DECLS

typedef enum ZU___FORK_STEP {
    ZU___FORK_PREPARE, // ahead of it
    ZU___FORK_PARENT,  // behind it, on the thread that has forked
    ZU___FORK_CHILD,   // behind it, on the only thread of the child
} ZU___FORK_STEP;

// Has `func` called with these steps for each fork of the process from now on.  For the platform; one whose processes do
// not fork does nothing.
void zu___ForkRegister( void ( *func )( ZU___FORK_STEP step ) );

// Takes `lock`, gives it back, or makes it a free one.
void zu___LockFork( ZU___LOCK *lock, ZU___FORK_STEP step );

// Subsystems
void zu___UniqueFork( ZU___FORK_STEP step );

ZU_END_DECLS
