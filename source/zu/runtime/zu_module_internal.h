// zu_module_internal.h: what the build has told the library's own module, the lists of names in module records, and why
// a module does not fit.
#pragma once

#include "zu/runtime/zu_module.h"

ZU_BEGIN_DECLS

// What the library was built for, of the constants of zu_runtime_os.h, zu_runtime_hardware.h and zu_runtime_variant.h.
extern const ZU_INT zu___module_build_os;
extern const ZU_INT zu___module_build_hardware;
extern const ZU_INT zu___module_build_variant;

// When that was, as text.  The build writes the source file that defines it, and does so when it has compiled something.
extern const char zu___module_build_time[];

// Returns which condition of zu___ModuleCheckCompatibility the module fails first, as a static text; null: none.
const char *zu___ModuleMisfit( ZU_MODULE *module );

// Lists of names that single blanks divide: what is to be read of `names` to begin with, null if that is empty or null.
static inline const char *zu___ModuleNames( const char *names )
{
    return names && *names ? names : nullptr;
}
// Takes the next name, and moves `rest` behind it; null at the end.
ZU_STRING *zu___ModuleNextName( const char **rest );

ZU_END_DECLS
