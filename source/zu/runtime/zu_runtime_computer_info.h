// zu_runtime_computer_info.h: the operating system and the processor that the process runs on, for human readers.
//
// This is what the computer tells of itself; what the library was built for is in zu_runtime_os.h and
// zu_runtime_hardware.h.
#pragma once

#include "zu/base/zu_string.h"

ZU_BEGIN_DECLS

/// Tells whether the operating system is known.
ZU_API ZU_BOOL zuRuntimeHasOperatingSystemInfo( void );
/// Returns name and version of the operating system, on Linux the distribution and the kernel's release in parentheses;
/// null if it is not known.
ZU_API ZU_STRING *zuRuntimeOperatingSystemInfo( void );
/// Tells whether the processor is known, as it is where it is an x86.
ZU_API ZU_BOOL zuRuntimeHasCpuInfo( void );
/// Returns vendor, family, model, number of processors and, if the processor tells, its frequencies, such as
/// "GenuineIntel, family:6, model:8e, cores:8, base:2000 MHz, max: 4000 MHz"; null if it is not known.  Family and
/// model are hexadecimal; the extended family stands ahead of the base family and is not added to it, so that 19 reads
/// "af".
ZU_API ZU_STRING *zuRuntimeCpuInfo( void );

// For authors of classes and modules

/// Asks system and processor.
ZU_API void zu___RuntimeComputerInfoStartup( void );
/// Releases what they have told.
ZU_API void zu___RuntimeComputerInfoShutdown( void );

ZU_END_DECLS
