#include "zu/io/zu_file_exact.h"

#include "zu/io/zu_file_internal.h"

// Hands the caller's reference on, or gives it up.
template <typename EXACT>
static void fileExactHandOut( EXACT *ecs, EXACT **exact )
{
    if ( exact ) {
        *exact = ecs;
    } else {
        ZU_REF_RELEASE_OPT( ecs );
    }
}
ZU_CHAR_SOURCE *zuFileOpenExactCharSource( ZU_STRING *fn, ZU_CHARSET charset, ZU_CHARSET_FLAGS flags,
                                           ZU_EXACT_CHAR_SOURCE **exact )
{
    ZU_BYTE_SOURCE *bytes = zuFileOpenByteSource( fn );
    ZU_EXACT_CHAR_SOURCE *ecs = bytes ? zuExactCharSourceCreate( bytes, charset, flags ) : nullptr;
    ZU_CHAR_SOURCE *chars = ecs ? zuExactCharSourceCharSource( ecs ) : nullptr;
    ZU_REF_RELEASE_OPT( bytes );
    fileExactHandOut( ecs, exact );
    return chars;
}
ZU_CHAR_SINK *zuFileOpenExactCharSink( ZU_STRING *fn, ZU_CHARSET charset, ZU_CHARSET_FLAGS flags,
                                       ZU_EXACT_CHAR_SINK **exact )
{
    ZU_BYTE_SINK *bytes = zuFileOpenByteSink( fn );
    ZU_EXACT_CHAR_SINK *ecs = bytes ? zuExactCharSinkCreate( bytes, charset, flags ) : nullptr;
    ZU_CHAR_SINK *chars = ecs ? zu___FileCharSink( bytes, zuExactCharSinkCharSink( ecs ) ) : nullptr;
    fileExactHandOut( ecs, exact );
    return chars;
}
ZU_LINE_SOURCE *zuFileOpenExactLineSource( ZU_STRING *fn, ZU_CHARSET charset, ZU_CHARSET_FLAGS flags,
                                           ZU_NLF_FLAGS nlfFlags, ZU_EXACT_CHAR_SOURCE **exact )
{
    return zu___FileLineSource( zuFileOpenExactCharSource( fn, charset, flags, exact ), nlfFlags );
}
ZU_LINE_SINK *zuFileOpenExactLineSink( ZU_STRING *fn, ZU_CHARSET charset, ZU_CHARSET_FLAGS flags, ZU_NLF_FLAGS nlfFlags,
                                       ZU_EXACT_CHAR_SINK **exact )
{
    return zu___FileLineSink( zuFileOpenExactCharSink( fn, charset, flags, exact ), nlfFlags );
}
