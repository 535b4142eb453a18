#include "zu/io/zu_nlf_line_sink.h"

#include "zu/io/zu_nlf_flags_internal.h"
#include "zu/runtime/zu_module.h"

struct ZU_NLF_LINE_SINK {
    ZU_OBJ obj;
    ZU_CHAR_SINK *dest;
    ZU_NLF_FLAGS nlfFlags;
};

static void nlfLineSinkFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_NLF_LINE_SINK =
    ZU___SORT_INITIALIZER( "ZU_NLF_LINE_SINK", &zu___module, nlfLineSinkFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_NLF_LINE_SINK, zuNlfLineSink )

ZU_NLF_LINE_SINK *zuNlfLineSinkCreate( ZU_CHAR_SINK *dest, ZU_NLF_FLAGS nlfFlags )
{
    ZU_ASSERT( dest );
    ZU_NLF_LINE_SINK *nls =
        (ZU_NLF_LINE_SINK *)zu___ObjCreate( sizeof( ZU_NLF_LINE_SINK ), &zu___sort_ZU_NLF_LINE_SINK );
    nls->dest = zuCharSinkRetain( dest );
    nls->nlfFlags = zuNlfFlagsNormalize( nlfFlags );
    return nls;
}
static void nlfLineSinkFree( ZU_OBJ *thisObj )
{
    ZU_NLF_LINE_SINK *nls = zuNlfLineSinkFrom( thisObj );
    ZU_ASSERT( nls );
    ZU_REF_RELEASE( nls->dest );
    ZU_REF_POISON( nls->dest );
}

// The functions of the sinks
static ZU_BOOL nlfLineSinkWrite( ZU_OBJ *closure, ZU_STRING *line )
{
    ZU_NLF_LINE_SINK *nls = zuNlfLineSinkFrom( closure );
    ZU_ASSERT( nls );
    ZU_ASSERT( line );
    ZU_BOOL ok = zuCharSinkWrite( nls->dest, line );
    ZU_CHAR nlf[ 2 ];
    ZU_INT length = zu___NlfFlagsNlf( nls->nlfFlags, nlf );
    for ( ZU_INT i = 0; i < length && ok; i++ ) {
        ok = zuCharSinkWriteChar( nls->dest, nlf[ i ] );
    }
    return ok;
}
static ZU_BOOL nlfLineSinkFlush( ZU_OBJ *closure )
{
    ZU_NLF_LINE_SINK *nls = zuNlfLineSinkFrom( closure );
    ZU_ASSERT( nls );
    return zuCharSinkFlush( nls->dest );
}

ZU_LINE_SINK *zuNlfLineSinkLineSink( ZU_NLF_LINE_SINK *nls )
{
    ZU_ASSERT( nls );
    return zu___LineSinkCreate( nlfLineSinkWrite, nlfLineSinkFlush, zuNlfLineSinkObj( nls ) );
}
ZU_NLF_FLAGS zuNlfLineSinkNlfFlags( ZU_NLF_LINE_SINK *nls )
{
    ZU_ASSERT( nls );
    return nls->nlfFlags;
}
