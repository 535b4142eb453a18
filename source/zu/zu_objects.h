// zu_objects.h: what all classes share, the classes themselves, modules, start and stop, and the one failure path.
//
// Each include has ahead of it the sentence with which the header begins.
#pragma once

// zu_version.h: which version of the library this is.
#include "zu/sys/zu_version.h"

// zu_abort.h: the one failure path.
#include "zu/sys/zu_abort.h"

// zu_lock.h: the plain lock that every object carries.
#include "zu/sys/zu_lock.h"

// zu_mem.h: the process heap and operations on blocks of memory.
#include "zu/sys/zu_mem.h"

// zu_unique.h: small numbers that are unique as long as they are out.
#include "zu/sys/zu_unique.h"

// zu_obj.h: reference-counted objects of declared sorts.
#include "zu/runtime/zu_obj.h"

// ZU_SORT: a class, as a record of its name and of up to three functions.
#include "zu/runtime/zu_sort.h"

// ZU_MODULE: a unit of code with an identity, a plug-in; the library itself is the module "zu".
#include "zu/runtime/zu_module.h"

// ZU_MODULE_VERSION: the version of a module, major and minor number.
#include "zu/runtime/zu_module_version.h"

// zu_module_check.h: why a module does not fit into the process, for tools and people.
#include "zu/runtime/zu_module_check.h"

// zu_runtime.h: start and stop of the library, and the modules that a process has loaded.
#include "zu/runtime/zu_runtime.h"

// zu_runtime_flags.h: what a process asks of the library as a whole, a ZU_INT of bits fixed at start-up.
#include "zu/runtime/zu_runtime_flags.h"

// ZU_BOXED_BOOL: a truth value as an object, to be held by a container as key or value.
#include "zu/base/zu_boxed_bool.h"

// ZU_BOXED_INT: an integer as an object, to be held by a container as key or value.
#include "zu/base/zu_boxed_int.h"

// ZU_BOXED_NULL: nothing as an object, to be held by a container where no item may be null.
#include "zu/base/zu_boxed_null.h"

// ZU___BOXED_POINTER: an address as an object, to be held by a container as key or value.
#include "zu/base/zu_boxed_pointer.h"

// ZU_BOXED_REAL: a real number as an object, to be held by a container as key or value.
#include "zu/base/zu_boxed_real.h"

// ZU_BOXED_UNIQUE: an object that is equal to itself alone, such as for a key that nobody else can have.
#include "zu/base/zu_boxed_unique.h"

// ZU_IDENTIFIER: an identity that nothing else has, 128 random bits.
#include "zu/base/zu_identifier.h"

// ZU_GENERATION: a node in a tree of creation order, which tells which of two is older and whether they are related.
#include "zu/base/zu_generation.h"

// ZU_GENERATION_MUTEX: a registry that admits a generation only while neither it nor one of its ancestors is admitted.
#include "zu/base/zu_generation_mutex.h"

// ZU_STACK_TRACE: where its creator was, a backtrace with one line of text for each function that was being called.
#include "zu/base/zu_stack_trace.h"
