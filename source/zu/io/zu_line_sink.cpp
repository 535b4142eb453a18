// Lines are strings already, so a sink of lines has no cache: each line is one call of its backend, and what that
// writes to has one.  A failure is kept for good and refuses everything further, as of the other sinks: a text that
// lacks a line in the middle is worse than one that ends early.

#include "zu/io/zu_line_sink.h"

#include "zu/base/zu_string_format.h"
#include "zu/io/zu_stream_internal.h"
#include "zu/runtime/zu_module.h"

struct ZU_LINE_SINK {
    ZU_OBJ obj;
    ZU_LINE_SINK_WRITE_FUNC writeFunc; // never null
    ZU_LINE_SINK_FLUSH_FUNC flushFunc; // never null
    ZU_OBJ *closure;                   // the backend; may be null
    ZU_BOOL error;                     // never cleared
    ZU_INT linesWritten;               // stops at ZU_INT_MAX
};

static void lineSinkFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_LINE_SINK =
    ZU___SORT_INITIALIZER( "ZU_LINE_SINK", &zu___module, lineSinkFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_LINE_SINK, zuLineSink )

// Creation
ZU_LINE_SINK *zu___LineSinkCreate( ZU_LINE_SINK_WRITE_FUNC writeFunc, ZU_LINE_SINK_FLUSH_FUNC flushFunc,
                                   ZU_OBJ *closure )
{
    ZU_ASSERT( writeFunc );
    ZU_ASSERT( flushFunc );
    ZU_LINE_SINK *ls = zu___SinkCreate<ZU_LINE_SINK>( &zu___sort_ZU_LINE_SINK, writeFunc, flushFunc, closure );
    ls->linesWritten = 0;
    return ls;
}
static void lineSinkFree( ZU_OBJ *thisObj )
{
    ZU_LINE_SINK *ls = zuLineSinkFrom( thisObj );
    ZU_ASSERT( ls );
    zu___SinkFinish( ls );
}

// State
ZU_BOOL zuLineSinkError( ZU_LINE_SINK *ls )
{
    ZU_ASSERT( ls );
    return ls->error;
}
ZU_INT zuLineSinkLinesWritten( ZU_LINE_SINK *ls )
{
    ZU_ASSERT( ls );
    return ls->linesWritten;
}
ZU_BOOL zuLineSinkFlush( ZU_LINE_SINK *ls )
{
    ZU_ASSERT( ls );
    return zu___SinkFlush( ls );
}

// Writing one line
ZU_BOOL zuLineSinkWrite( ZU_LINE_SINK *ls, ZU_STRING *zus )
{
    ZU_ASSERT( ls );
    ZU_ASSERT( zus );
    if ( ls->error ) {
        return ZU_FALSE;
    }
    if ( !ls->writeFunc( ls->closure, zus ) ) {
        ls->error = ZU_TRUE;
        return ZU_FALSE;
    }
    ls->linesWritten = zuIntAddSaturating( ls->linesWritten, 1 );
    return ZU_TRUE;
}

// The other forms make the text and hand it on.
static ZU_BOOL lineSinkTakeString( ZU_LINE_SINK *ls, ZU_STRING *zus )
{
    ZU_BOOL ok = zuLineSinkWrite( ls, zus );
    ZU_REF_RELEASE( zus );
    return ok;
}
ZU_BOOL zuLineSinkWriteInner( ZU_LINE_SINK *ls, ZU_STRING *zus, ZU_INT offset, ZU_INT count )
{
    ZU_ASSERT( ls );
    ZU_ASSERT( zus );
    return lineSinkTakeString( ls, zuStringCreateFromInner( zus, offset, count ) );
}
ZU_BOOL zuLineSinkWriteOuter( ZU_LINE_SINK *ls, ZU_STRING *zus, ZU_INT offset, ZU_INT count )
{
    ZU_ASSERT( ls );
    ZU_ASSERT( zus );
    return lineSinkTakeString( ls, zuStringCreateFromOuter( zus, offset, count ) );
}
ZU_BOOL zuLineSinkWriteLeading( ZU_LINE_SINK *ls, ZU_STRING *zus, ZU_INT count )
{
    ZU_ASSERT( ls );
    ZU_ASSERT( zus );
    return lineSinkTakeString( ls, zuStringCreateFromLeading( zus, count ) );
}
ZU_BOOL zuLineSinkWriteTrailing( ZU_LINE_SINK *ls, ZU_STRING *zus, ZU_INT count )
{
    ZU_ASSERT( ls );
    ZU_ASSERT( zus );
    return lineSinkTakeString( ls, zuStringCreateFromTrailing( zus, count ) );
}
ZU_BOOL zuLineSinkWriteCstr( ZU_LINE_SINK *ls, const char *cstr, ZU_INT length )
{
    ZU_ASSERT( ls );
    return lineSinkTakeString( ls, zuStringCreateFromCstr( cstr, length ) );
}
ZU_BOOL zuLineSinkWriteWcstr( ZU_LINE_SINK *ls, const char16_t *wcstr, ZU_INT length )
{
    ZU_ASSERT( ls );
    return lineSinkTakeString( ls, zuStringCreateFromWcstr( wcstr, length ) );
}
ZU_BOOL zuLineSinkWriteFormat( ZU_LINE_SINK *ls, ZU_STRING *format, ... )
{
    ZU_ASSERT( ls );
    va_list args;
    va_start( args, format );
    ZU_STRING *zus = zuStringCreateFromFormatArgList( format, args );
    va_end( args );
    return lineSinkTakeString( ls, zus );
}
ZU_BOOL zuLineSinkWriteFormatCstr( ZU_LINE_SINK *ls, const char *format, ZU_INT length, ... )
{
    ZU_ASSERT( ls );
    va_list args;
    va_start( args, length );
    ZU_STRING *zus = zuStringCreateFromFormatCstrArgList( format, length, args );
    va_end( args );
    return lineSinkTakeString( ls, zus );
}
ZU_BOOL zuLineSinkWriteFormatWcstr( ZU_LINE_SINK *ls, const char16_t *format, ZU_INT length, ... )
{
    ZU_ASSERT( ls );
    va_list args;
    va_start( args, length );
    ZU_STRING *zus = zuStringCreateFromFormatWcstrArgList( format, length, args );
    va_end( args );
    return lineSinkTakeString( ls, zus );
}

// Writing several lines
ZU_BOOL zuLineSinkWriteLines( ZU_LINE_SINK *ls, ZU_VECTOR *vec )
{
    ZU_ASSERT( ls );
    ZU_ASSERT( vec );
    if ( ls->error ) {
        return ZU_FALSE;
    }
    for ( ZU_INT i = 0; i < zuVectorLength( vec ); i++ ) {
        if ( !zuLineSinkWrite( ls, zuStringFrom( zuVectorBacking( vec )[ i ] ) ) ) {
            return ZU_FALSE;
        }
    }
    return ZU_TRUE;
}

// The other forms collect the lines and hand them on.
static ZU_BOOL lineSinkTakeLines( ZU_LINE_SINK *ls, ZU_VECTOR *vec )
{
    ZU_BOOL ok = zuLineSinkWriteLines( ls, vec );
    ZU_REF_RELEASE( vec );
    return ok;
}
ZU_BOOL zuLineSinkWriteLinesInner( ZU_LINE_SINK *ls, ZU_VECTOR *vec, ZU_INT offset, ZU_INT count )
{
    ZU_ASSERT( ls );
    ZU_ASSERT( vec );
    return lineSinkTakeLines( ls, zuVectorCreateFromInner( vec, offset, count ) );
}
ZU_BOOL zuLineSinkWriteLinesOuter( ZU_LINE_SINK *ls, ZU_VECTOR *vec, ZU_INT offset, ZU_INT count )
{
    ZU_ASSERT( ls );
    ZU_ASSERT( vec );
    return lineSinkTakeLines( ls, zuVectorCreateFromOuter( vec, offset, count ) );
}
ZU_BOOL zuLineSinkWriteLinesLeading( ZU_LINE_SINK *ls, ZU_VECTOR *vec, ZU_INT count )
{
    ZU_ASSERT( ls );
    ZU_ASSERT( vec );
    return lineSinkTakeLines( ls, zuVectorCreateFromLeading( vec, count ) );
}
ZU_BOOL zuLineSinkWriteLinesTrailing( ZU_LINE_SINK *ls, ZU_VECTOR *vec, ZU_INT count )
{
    ZU_ASSERT( ls );
    ZU_ASSERT( vec );
    return lineSinkTakeLines( ls, zuVectorCreateFromTrailing( vec, count ) );
}
