// zu_runtime_identity_internal.h: what operating systems, hardware and variants share.
#pragma once

#include "zu/base/zu_string.h"

ZU_BEGIN_DECLS

// The texts of a constant beside its name; the row in a table is the value.  They are part of the row, so that a table
// needs no relocation.
typedef struct ZU___RUNTIME_IDENTITY {
    char identifier[ 12 ];
    char friendlyName[ 20 ];
} ZU___RUNTIME_IDENTITY;

// Returns the row that has `identifier`, -1 if none has.
ZU_INT zu___RuntimeIdentityFind( const ZU___RUNTIME_IDENTITY *rows, ZU_INT count, ZU_STRING *identifier );

ZU_END_DECLS
