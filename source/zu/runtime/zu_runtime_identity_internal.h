// zu_runtime_identity_internal.h: what operating systems, hardware and variants share.
#pragma once

#include "zu/base/zu_enum_internal.h"

ZU_BEGIN_DECLS

// What is known of a constant; the row in a table is the value.  cmake/identity.cmake reads the rows, as they stand in
// the source file.
typedef struct ZU___RUNTIME_IDENTITY {
    ZU___NAMED_VALUE name;
    char identifier[ 12 ];
    char friendlyName[ 20 ];
} ZU___RUNTIME_IDENTITY;

// Returns the row that has `identifier`, -1 if none has.
ZU_INT zu___RuntimeIdentityFind( const ZU___RUNTIME_IDENTITY *rows, ZU_INT count, ZU_STRING *identifier );

ZU_END_DECLS
