// zu_runtime_computer_internal.h: what a platform must provide of the computer.
#pragma once

#include "zu/base/zu_string.h"

ZU_BEGIN_DECLS

// Returns the computer's name, made from narrow or UTF-16 text; null if the system does not tell.
ZU_STRING *zu___RuntimeQueryComputerName( void );

// Returns name and version of the running operating system for a human reader; null if the system does not tell.
ZU_STRING *zu___RuntimeQueryOperatingSystem( void );

// Returns the number of processors that are running.
ZU_INT zu___RuntimeQueryProcessors( void );

ZU_END_DECLS
