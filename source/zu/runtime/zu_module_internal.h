// zu_module_internal.h: what the build has told the library's own module, and the lists of names in module records.
#pragma once

#include "zu/runtime/zu_module.h"

ZU_BEGIN_DECLS

// What the library was built for, of the constants of zu_runtime_os.h, zu_runtime_hardware.h and zu_runtime_variant.h.
extern const ZU_INT zu___module_build_os;
extern const ZU_INT zu___module_build_hardware;
extern const ZU_INT zu___module_build_variant;

// Takes the next name from a list of names that single blanks divide, and moves `rest` behind it; null at the end.  The
// caller sets `rest` to the list to begin with, or to null if that is empty.
ZU_STRING *zu___ModuleNextName( const char **rest );

ZU_END_DECLS
