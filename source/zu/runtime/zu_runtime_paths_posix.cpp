#include "zu/runtime/zu_runtime_paths_internal.h"

// Absolute paths begin with a solidus; a reverse solidus is a character as any other.
ZU_STRING *zu___RuntimePathsNormalize( ZU_STRING *pn )
{
    if ( !zuStringBeginsWithChar( pn, ZU_CHAR_SOLIDUS ) ) {
        return nullptr;
    }
    ZU_STRING *normalized = zuStringRetain( pn );
    if ( !zuStringEndsWithChar( normalized, ZU_CHAR_SOLIDUS ) ) {
        zuStringAppendChar( &normalized, ZU_CHAR_SOLIDUS );
    }
    return normalized;
}
