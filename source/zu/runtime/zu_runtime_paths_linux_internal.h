// zu_runtime_paths_linux_internal.h: where Linux keeps the records of installed products.
#pragma once

#include "zu/sys/zu_api.h"

ZU_BEGIN_DECLS

// The directory with a file for each product, terminated, with a solidus at its end.  Fixed by the build; tests put
// records elsewhere.
extern const char *zu___RuntimePathsRecords;

ZU_END_DECLS
