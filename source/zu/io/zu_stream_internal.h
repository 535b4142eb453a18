// zu_stream_internal.h: the steps that streams of bytes, characters and lines have in common.
//
// A sink has the fields writeFunc, flushFunc, closure and error, a source closure, end and error.  The functions here
// keep the flags; what a caller can do wrong is checked by the classes.
#pragma once

#include "zu/runtime/zu_obj.h"

// Makes the object of a sink or a source: what they all have set, and whatever else its structure has left to the
// caller.
template <typename SINK>
static inline SINK *zu___SinkCreate( ZU_SORT *sort, decltype( SINK::writeFunc ) writeFunc,
                                     decltype( SINK::flushFunc ) flushFunc, ZU_OBJ *closure )
{
    SINK *sink = (SINK *)zu___ObjCreate( sizeof( SINK ), sort );
    sink->writeFunc = writeFunc;
    sink->flushFunc = flushFunc;
    sink->closure = closure ? zuObjRetain( closure ) : nullptr;
    sink->error = ZU_FALSE;
    return sink;
}
template <typename SOURCE>
static inline SOURCE *zu___SourceCreate( ZU_SORT *sort, decltype( SOURCE::readFunc ) readFunc, ZU_OBJ *closure )
{
    SOURCE *source = (SOURCE *)zu___ObjCreate( sizeof( SOURCE ), sort );
    source->readFunc = readFunc;
    source->closure = closure ? zuObjRetain( closure ) : nullptr;
    source->end = ZU_FALSE;
    source->error = ZU_FALSE;
    return source;
}

// Hands `count` units to the backend, unless there are none.
template <typename SINK, typename UNIT>
static inline ZU_BOOL zu___SinkWriteUnits( SINK *sink, const UNIT *units, ZU_INT count )
{
    if ( sink->error ) {
        return ZU_FALSE;
    }
    if ( count > 0 && !sink->writeFunc( sink->closure, units, count ) ) {
        sink->error = ZU_TRUE;
        return ZU_FALSE;
    }
    return ZU_TRUE;
}

// Hands over `length` units without the `count` ones from `offset` on.
template <typename SINK, typename UNIT>
static inline ZU_BOOL zu___SinkWriteOuterUnits( SINK *sink, const UNIT *units, ZU_INT length, ZU_INT offset,
                                                ZU_INT count )
{
    return zu___SinkWriteUnits( sink, units, offset ) &&
           zu___SinkWriteUnits( sink, units + offset + count, length - offset - count );
}

template <typename SINK>
static inline ZU_BOOL zu___SinkFlush( SINK *sink )
{
    if ( sink->error ) {
        return ZU_FALSE;
    }
    if ( !sink->flushFunc( sink->closure ) ) {
        sink->error = ZU_TRUE;
        return ZU_FALSE;
    }
    return ZU_TRUE;
}

// Ends a stream whose last reference is gone.
template <typename SOURCE>
static inline void zu___SourceFinish( SOURCE *source )
{
    ZU_REF_RELEASE_OPT( source->closure );
    ZU_REF_POISON( source->closure );
}
template <typename SINK>
static inline void zu___SinkFinish( SINK *sink )
{
    zu___SinkFlush( sink );
    ZU_REF_RELEASE_OPT( sink->closure );
    ZU_REF_POISON( sink->closure );
}

// Takes note of what a call of the backend has told: `ok` that it did not fail, `complete` that it delivered all that
// it was asked for.
template <typename SOURCE>
static inline void zu___SourceNote( SOURCE *source, bool ok, bool complete )
{
    if ( !ok || !complete ) {
        source->end = ZU_TRUE;
    }
    if ( !ok ) {
        source->error = ZU_TRUE;
    }
}
