// zu_runtime_internal.h: the process-wide words behind zu_runtime.h.
#pragma once

#include "zu/base/zu_dict.h"
#include "zu/base/zu_monitor.h"
#include "zu/runtime/zu_runtime.h"
#include "zu/sys/zu_fork_internal.h"

ZU_BEGIN_DECLS

// The flags of the process, normalised.  Stored ahead of all start-up functions, and unchanged until shut-down, so that
// reading them takes no lock.
extern ZU_INT zu___RuntimeFlags;

// How long unloading waits for the objects of one module, in milliseconds.
extern ZU_INT zu___RuntimeUnloadModuleTimeout;

// Where output goes, null: nowhere.  The lock is held while the function runs.
extern ZU___LOCK zu___RuntimePrintLock;
extern ZU_RUNTIME_PRINT_FUNC zu___RuntimePrintFunc;

// Modules.  The load monitor is held for all of loading and unloading; the modules monitor for an instant only, around
// any change of dict and vector, and inside the load monitor where both are held.
extern ZU_MONITOR *zu___RuntimeLoadMonitor;
extern ZU_MONITOR *zu___RuntimeModulesMonitor;
extern ZU_DICT *zu___RuntimeModulesDict;     // loaded modules by name
extern ZU_VECTOR *zu___RuntimeModulesVector; // loaded modules, each behind what it depends on; the library's own first
extern ZU_DICT *zu___RuntimeLoadingDict;     // names of modules that are being loaded, each to itself
extern ZU_INT zu___RuntimeExtsIndex;         // the first module in the vector whose extensions are still to be loaded

// A fork: zu_fork_internal.h tells more.  The process is a forked child since the library has started: nobody is left who
// would release what other threads held.
extern ZU_BOOL zu___RuntimeForked;
void zu___RuntimeFork( ZU___FORK_STEP step );
void zu___RuntimeUserInformationFork( ZU___FORK_STEP step );
// Forks are looked after from here on, and up to here.
void zu___RuntimeForkStartup( void );
void zu___RuntimeForkShutdown( void );

// What each report begins with: 90 hyphens.
#define ZU___RUNTIME_REPORT_LINE \
    "------------------------------------------------------------------------------------------\n"

// Prints which product this is; ahead of reports on modules that refuse to unload and on leaks.
void zu___RuntimePrintProductReport( void );
// Prints what lives of a module's sorts, as far as the ZU_RUNTIME_FLAG_SNAPSHOT_... flags among `flags` ask for it.
void zu___RuntimePrintModuleReport( ZU_MODULE *module, ZU_INT flags );
// Prints what has outlived the library that kept the database, which is not kept now: of the bare library that prints
// there is nothing in the chains.
void zu___RuntimePrintLeakReport( ZU_MODULE *module, ZU_INT flags );

ZU_END_DECLS
