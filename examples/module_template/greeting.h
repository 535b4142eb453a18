// greeting.h: what the module and the programs that load it have agreed on.
#pragma once

#include "zu/zu.h"

ZU_BEGIN_DECLS

// The module's object, which its sorts belong to; for the module's own sources.
ZU___MODULE_DECLARE( greeting )

// What zuModuleRunPersonality does with this module: `argument1` is a ZU_STRING, whom to greet; the second argument is
// null.  The result is a new object of the module's class GREETING, whose text is the greeting.

ZU_END_DECLS
