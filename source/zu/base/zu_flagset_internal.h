// zu_flagset_internal.h: the making of the flag sets that the library itself has.
#pragma once

#include "zu/base/zu_enum_internal.h"
#include "zu/base/zu_flagset.h"

ZU_BEGIN_DECLS

// Creates the flag set of a table for the process-wide variable `variable`, as ZU___ENUM_CREATE does.
#define ZU___FLAGSET_CREATE( variable, rows ) zu___FlagsetCreateFromTable( ZU___NAMED_TABLE_OF( variable, rows ) )

// Behind ZU___FLAGSET_CREATE.
ZU_FLAGSET *zu___FlagsetCreateFromTable( const ZU___NAMED_TABLE &table );

ZU_END_DECLS
