// zu_file_windows_internal.h: what the files for Windows share.
//
// Paths are terminated UTF-16.
#pragma once

#include "zu/io/zu_file_internal.h"

ZU_BEGIN_DECLS

// Returns the prepared name `fn` as a path, in memory of zuMemAlloc.
wchar_t *zu___FileWindowsPath( ZU_STRING *fn );

ZU_END_DECLS
