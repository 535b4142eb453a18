// A sink adds three things to the functions of its backend: it remembers a failure, it calls them for nothing empty,
// and it flushes at its end.  It keeps no text, so that whoever needs a cache has it once, where its size can be
// chosen.

#include "zu/io/zu_char_sink.h"

#include "zu/base/zu_string_format.h"
#include "zu/io/zu_stream_internal.h"
#include "zu/runtime/zu_module.h"

struct ZU_CHAR_SINK {
    ZU_OBJ obj;
    ZU_CHAR_SINK_WRITE_FUNC writeFunc; // never null
    ZU_CHAR_SINK_FLUSH_FUNC flushFunc; // never null
    ZU_OBJ *closure;                   // the backend; may be null
    ZU_BOOL error;                     // never cleared
};

static void charSinkFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_CHAR_SINK =
    ZU___SORT_INITIALIZER( "ZU_CHAR_SINK", &zu___module, charSinkFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_CHAR_SINK, zuCharSink )

// Creation
ZU_CHAR_SINK *zu___CharSinkCreate( ZU_CHAR_SINK_WRITE_FUNC writeFunc, ZU_CHAR_SINK_FLUSH_FUNC flushFunc,
                                   ZU_OBJ *closure )
{
    ZU_ASSERT( writeFunc );
    ZU_ASSERT( flushFunc );
    return zu___SinkCreate<ZU_CHAR_SINK>( &zu___sort_ZU_CHAR_SINK, writeFunc, flushFunc, closure );
}
static void charSinkFree( ZU_OBJ *thisObj )
{
    ZU_CHAR_SINK *cs = zuCharSinkFrom( thisObj );
    ZU_ASSERT( cs );
    zu___SinkFinish( cs );
}

// State
ZU_BOOL zuCharSinkError( ZU_CHAR_SINK *cs )
{
    ZU_ASSERT( cs );
    return cs->error;
}
ZU_BOOL zuCharSinkFlush( ZU_CHAR_SINK *cs )
{
    ZU_ASSERT( cs );
    return zu___SinkFlush( cs );
}

// Writing parts of a string; zuCharSinkWriteInner serves all but Outer.

// The memory of a string that may be null.
static const ZU_CHAR *charSinkMemory( ZU_STRING *zus )
{
    return zus ? zuStringBacking( zus ) : nullptr;
}

ZU_BOOL zuCharSinkWrite( ZU_CHAR_SINK *cs, ZU_STRING *zus )
{
    ZU_ASSERT( cs );
    ZU_ASSERT( zus );
    return zuCharSinkWriteInner( cs, zus, 0, zuStringLength( zus ) );
}
ZU_BOOL zuCharSinkWriteInner( ZU_CHAR_SINK *cs, ZU_STRING *zus, ZU_INT charOffset, ZU_INT charCount )
{
    ZU_ASSERT( cs );
    ZU_ASSERT( charOffset >= 0 );
    ZU_ASSERT( charOffset == 0 || zus );
    ZU_ASSERT( charCount >= 0 );
    ZU_ASSERT( charCount == 0 || zus );
    ZU_ASSERT( ZU_INT_ADD_OK( charOffset, charCount ) );
    ZU_ASSERT( charOffset + charCount == 0 || charOffset + charCount <= zuStringLength( zus ) );
    return zu___SinkWriteUnits( cs, charSinkMemory( zus ) + charOffset, charCount );
}
ZU_BOOL zuCharSinkWriteOuter( ZU_CHAR_SINK *cs, ZU_STRING *zus, ZU_INT charOffset, ZU_INT charCount )
{
    ZU_ASSERT( cs );
    ZU_ASSERT( charOffset >= 0 );
    ZU_ASSERT( charOffset == 0 || zus );
    ZU_ASSERT( charCount >= 0 );
    ZU_ASSERT( charCount == 0 || zus );
    ZU_ASSERT( ZU_INT_ADD_OK( charOffset, charCount ) );
    ZU_ASSERT( charOffset + charCount == 0 || charOffset + charCount <= zuStringLength( zus ) );
    return zu___SinkWriteOuterUnits( cs, charSinkMemory( zus ), zus ? zuStringLength( zus ) : 0, charOffset,
                                     charCount );
}
ZU_BOOL zuCharSinkWriteLeading( ZU_CHAR_SINK *cs, ZU_STRING *zus, ZU_INT charCount )
{
    return zuCharSinkWriteInner( cs, zus, 0, charCount );
}
ZU_BOOL zuCharSinkWriteTrailing( ZU_CHAR_SINK *cs, ZU_STRING *zus, ZU_INT charCount )
{
    ZU_ASSERT( cs );
    ZU_ASSERT( charCount >= 0 );
    ZU_ASSERT( charCount == 0 || zus );
    if ( charCount == 0 ) {
        return zuCharSinkWriteInner( cs, zus, 0, 0 );
    }
    ZU_ASSERT( ZU_INT_SUB_OK( zuStringLength( zus ), charCount ) );
    return zuCharSinkWriteInner( cs, zus, zuStringLength( zus ) - charCount, charCount );
}

// Writing code points
ZU_BOOL zuCharSinkWriteChar( ZU_CHAR_SINK *cs, ZU_CHAR chr )
{
    ZU_ASSERT( cs );
    return zu___SinkWriteUnits( cs, &chr, 1 );
}
ZU_BOOL zuCharSinkWriteChars( ZU_CHAR_SINK *cs, const ZU_CHAR *chars, ZU_INT charCount )
{
    ZU_ASSERT( cs );
    ZU_ASSERT( charCount >= 0 );
    ZU_ASSERT( charCount == 0 || chars );
    return zu___SinkWriteUnits( cs, chars, charCount );
}

// Writing text that is made for the call
static ZU_BOOL charSinkTakeString( ZU_CHAR_SINK *cs, ZU_STRING *zus )
{
    ZU_BOOL ok = zuCharSinkWrite( cs, zus );
    ZU_REF_RELEASE( zus );
    return ok;
}
ZU_BOOL zuCharSinkWriteCstr( ZU_CHAR_SINK *cs, const char *cstr, ZU_INT length )
{
    ZU_ASSERT( cs );
    return charSinkTakeString( cs, zuStringCreateFromCstr( cstr, length ) );
}
ZU_BOOL zuCharSinkWriteWcstr( ZU_CHAR_SINK *cs, const char16_t *wcstr, ZU_INT length )
{
    ZU_ASSERT( cs );
    return charSinkTakeString( cs, zuStringCreateFromWcstr( wcstr, length ) );
}
ZU_BOOL zuCharSinkWriteFormat( ZU_CHAR_SINK *cs, ZU_STRING *format, ... )
{
    ZU_ASSERT( cs );
    va_list args;
    va_start( args, format );
    ZU_STRING *zus = zuStringCreateFromFormatArgList( format, args );
    va_end( args );
    return charSinkTakeString( cs, zus );
}
ZU_BOOL zuCharSinkWriteFormatCstr( ZU_CHAR_SINK *cs, const char *format, ZU_INT length, ... )
{
    ZU_ASSERT( cs );
    va_list args;
    va_start( args, length );
    ZU_STRING *zus = zuStringCreateFromFormatCstrArgList( format, length, args );
    va_end( args );
    return charSinkTakeString( cs, zus );
}
ZU_BOOL zuCharSinkWriteFormatWcstr( ZU_CHAR_SINK *cs, const char16_t *format, ZU_INT length, ... )
{
    ZU_ASSERT( cs );
    va_list args;
    va_start( args, length );
    ZU_STRING *zus = zuStringCreateFromFormatWcstrArgList( format, length, args );
    va_end( args );
    return charSinkTakeString( cs, zus );
}
