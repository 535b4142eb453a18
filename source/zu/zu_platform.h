// zu_platform.h: product and machine, environment, and printing.
//
// Each include has ahead of it the sentence with which the header begins.
#pragma once

// zu_runtime_version.h: which product a process belongs to, and which application it is.
#include "zu/runtime/zu_runtime_version.h"

// ZU_RUNTIME_INSTALL_INFO: what an installed product says of itself: what it was built for, and what it is called.
#include "zu/runtime/zu_runtime_install_info.h"

// zu_runtime_path.h: the kinds of directories that an installed product has, a ZU_INT each.
#include "zu/runtime/zu_runtime_path.h"

// ZU_RUNTIME_PATHS: where a product is installed and where it may write, a directory for each kind of
// zu_runtime_path.h.
#include "zu/runtime/zu_runtime_paths.h"

// zu_runtime_os.h: the operating systems that products are built for, a ZU_INT each.
#include "zu/runtime/zu_runtime_os.h"

// zu_runtime_hardware.h: the kinds of hardware that products are built for, a ZU_INT each.
#include "zu/runtime/zu_runtime_hardware.h"

// zu_runtime_variant.h: the variants in which products are built, a ZU_INT each.
#include "zu/runtime/zu_runtime_variant.h"

// zu_runtime_info.h: all that the process knows of itself, in one store.
#include "zu/runtime/zu_runtime_info.h"

// zu_runtime_user_information.h: facts that a running system hangs on the process, for zuRuntimeInfo to tell.
#include "zu/runtime/zu_runtime_user_information.h"

// zu_runtime_computer_info.h: the operating system and the processor that the process runs on, for human readers.
#include "zu/runtime/zu_runtime_computer_info.h"

// zu_runtime_computer_name.h: the name of the computer that the process runs on, as it was at start-up.
#include "zu/runtime/zu_runtime_computer_name.h"

// zu_runtime_validate.h: whether texts from outside may serve as names, versions and notices of a product.
#include "zu/runtime/zu_runtime_validate.h"

// zu_env.h: variables of the environment.
#include "zu/io/zu_env.h"

// zu_arguments.h: the words of a command line as strings.
#include "zu/io/zu_arguments.h"

// zu_print.h: text to the print function that the process has given at start-up.
#include "zu/io/zu_print.h"

// zu_print_stdio.h: print functions for zuRuntimeStartup, on the standard streams of C.
#include "zu/io/zu_print_stdio.h"

// zu_debug_print.h: text for developers, on the channel of the debugger.
#include "zu/io/zu_debug_print.h"
