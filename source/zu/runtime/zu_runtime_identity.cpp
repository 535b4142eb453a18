#include "zu/runtime/zu_runtime_identity_internal.h"

ZU_INT zu___RuntimeIdentityFind( const ZU___RUNTIME_IDENTITY *rows, ZU_INT count, ZU_STRING *identifier )
{
    for ( ZU_INT i = 0; i < count; i++ ) {
        if ( zuStringEqualsCstr( identifier, rows[ i ].identifier, -1 ) ) {
            return i;
        }
    }
    return -1;
}
