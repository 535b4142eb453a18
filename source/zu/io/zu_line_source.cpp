#include "zu/io/zu_line_source.h"

#include "zu/io/zu_stream_internal.h"
#include "zu/runtime/zu_module.h"

struct ZU_LINE_SOURCE {
    ZU_OBJ obj;
    ZU_LINE_SOURCE_READ_FUNC readFunc; // never null
    ZU_OBJ *closure;                   // the backend; may be null
    ZU_BOOL end;                       // never cleared
    ZU_BOOL error;                     // never cleared; implies end
    ZU_INT linesRead;                  // stops at ZU_INT_MAX
};

static void lineSourceFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_LINE_SOURCE =
    ZU___SORT_INITIALIZER( "ZU_LINE_SOURCE", &zu___module, lineSourceFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_LINE_SOURCE, zuLineSource )

// Creation
ZU_LINE_SOURCE *zu___LineSourceCreate( ZU_LINE_SOURCE_READ_FUNC readFunc, ZU_OBJ *closure )
{
    ZU_ASSERT( readFunc );
    ZU_LINE_SOURCE *ls = zu___SourceCreate<ZU_LINE_SOURCE>( &zu___sort_ZU_LINE_SOURCE, readFunc, closure );
    ls->linesRead = 0;
    return ls;
}
static void lineSourceFree( ZU_OBJ *thisObj )
{
    ZU_LINE_SOURCE *ls = zuLineSourceFrom( thisObj );
    ZU_ASSERT( ls );
    zu___SourceFinish( ls );
}

// State
ZU_BOOL zuLineSourceEnd( ZU_LINE_SOURCE *ls )
{
    ZU_ASSERT( ls );
    return ls->end;
}
ZU_BOOL zuLineSourceError( ZU_LINE_SOURCE *ls )
{
    ZU_ASSERT( ls );
    return ls->error;
}
ZU_INT zuLineSourceLinesRead( ZU_LINE_SOURCE *ls )
{
    ZU_ASSERT( ls );
    return ls->linesRead;
}

// Reading
ZU_STRING *zuLineSourceRead( ZU_LINE_SOURCE *ls )
{
    ZU_ASSERT( ls );
    if ( ls->end ) {
        return nullptr;
    }
    ZU_STRING *line = nullptr;
    ZU_BOOL ok = ls->readFunc( ls->closure, &line );
    if ( line ) {
        ls->linesRead = zuIntAddSaturating( ls->linesRead, 1 );
    }
    zu___SourceNote( ls, ok, line );
    return line;
}
ZU_VECTOR *zuLineSourceReadLines( ZU_LINE_SOURCE *ls, ZU_INT maxLineCount )
{
    ZU_ASSERT( ls );
    ZU_ASSERT( maxLineCount >= -1 );
    ZU_VECTOR *vec = zuVectorCreate();
    ZU_INT remaining = maxLineCount == -1 ? ZU_INT_MAX : maxLineCount;
    for ( ; remaining > 0 && !ls->end; remaining-- ) {
        ZU_STRING *line = zuLineSourceRead( ls );
        if ( line ) {
            zuVectorAppendString( &vec, line );
            ZU_REF_RELEASE( line );
        }
    }
    return vec;
}
