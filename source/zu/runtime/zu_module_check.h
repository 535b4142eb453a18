// zu_module_check.h: why a module does not fit into the process, for tools and people.
//
// Loading itself says no more than that a module was not loaded; these tell which condition fails first, as a text such
// as "productVersionMajor: not the process's".  The texts are for reading and may change.
#pragma once

#include "zu/runtime/zu_module.h"

ZU_BEGIN_DECLS

/// Returns which condition of zu___ModuleCheckCompatibility the module fails, as a new string; null if it fails none.
ZU_API ZU_STRING *zuModuleCheck( ZU_MODULE *module );
/// Returns what would keep the file `fn` from being loaded as a module, as a new string; null if nothing would.
///
/// The module's name is taken from the file's.  The file is loaded, which runs its initialisers, and given back; no
/// function of the module is called, and what it depends on is not looked at.  A name without a solidus is looked for
/// where the platform looks for shared files.
ZU_API ZU_STRING *zuModuleCheckFile( ZU_STRING *fn );

ZU_END_DECLS
