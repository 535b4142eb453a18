// zu_runtime_paths_internal.h: what a platform must provide to find the directories of a product, and what it may use.
//
// All of it runs while the library starts, or by calls of any thread; what cannot be had is null, and nothing aborts.
#pragma once

#include "zu/runtime/zu_runtime_paths.h"

ZU_BEGIN_DECLS

// Returns where the system has recorded that the product is installed, as the record has it; null if there is none.
ZU_STRING *zu___RuntimePathsInstallRecord( ZU_STRING *productName );

// Returns the directory in which applications keep what belongs to the user, or to the system as a whole, normalized;
// null if the system does not tell.  With `create`, a directory that is the user's is created if it is missing.
ZU_STRING *zu___RuntimePathsApplicationData( ZU_BOOL ofSystem, ZU_BOOL create );

// Returns a directory that has come from outside as all of them are here: absolute, with solidi between its parts and
// at its end.  Null if it is empty or relative.
ZU_STRING *zu___RuntimePathsNormalize( ZU_STRING *pn );

// Returns `base`, a normalized directory, extended by `optionalPath`, which is relative, has solidi between its parts
// and at its end, and may be null.  With `create`, each directory on the way from `base` is created if it is missing.
ZU_STRING *zu___RuntimePathsJoin( ZU_STRING *base, ZU_STRING *optionalPath, ZU_BOOL create );

// Returns the store that a file has in text form, in UTF-8 with any of the usual ends of lines; null if it cannot be
// read, or is no text.
ZU_STORE *zu___RuntimeTryLoadStore( ZU_STRING *fn );

ZU_END_DECLS
