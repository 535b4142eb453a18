// zu_runtime_computer_name.h: the name of the computer that the process runs on, as it was at start-up.
#pragma once

#include "zu/base/zu_string.h"

ZU_BEGIN_DECLS

/// Tells whether the computer's name is known.  One of more than 15 UTF-16 units counts as unknown.
ZU_API ZU_BOOL zuRuntimeHasComputerName( void );
/// Returns the computer's name, null if it is not known.
ZU_API ZU_STRING *zuRuntimeComputerName( void );

// For authors of classes and modules

/// Asks the system for the name.
ZU_API void zu___RuntimeComputerNameStartup( void );
/// Releases the name.
ZU_API void zu___RuntimeComputerNameShutdown( void );

ZU_END_DECLS
